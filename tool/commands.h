// The commands of bgpdt: one source each, one row each in the table of main.cpp.
#ifndef BGPDT_COMMANDS_H
#define BGPDT_COMMANDS_H

#include <functional>
#include <string>

namespace CLI {
class App;
}

namespace bgpdt {

enum Status {
    kFine = 0,
    kRefused = 1, // some value was refused
    kUsage = 2,   // the command line is wrong
    kTrouble = 3, // the plug-in or the host
    kInputOutput = 4
};

// What every command is told.
struct Options {
    bool json = false;
    std::string plugIn; // path, empty for the usual one
};

// Adds its own options to the command and returns what runs it; the plug-in is loaded by then.
using SetUp = std::function<int()> (*)(CLI::App &command, const Options &options);

std::function<int()> SetUpTypes(CLI::App &command, const Options &options);
std::function<int()> SetUpShow(CLI::App &command, const Options &options);
std::function<int()> SetUpConvert(CLI::App &command, const Options &options);
std::function<int()> SetUpLua(CLI::App &command, const Options &options);

// "bgpdt: MESSAGE" on standard error; returns status.
int Complain(Status status, const std::string &message);
// Complains that there is no such type, with the names that are near.
int UnknownType(const std::string &name);

} // namespace bgpdt

#endif
