#include "bgp_standalone_host.hpp"
#include "commands.h"
#include "report.h"
#include "values.h"

#include <CLI/CLI.hpp>

#include <cstdio>
#include <memory>
#include <vector>

namespace bgpdt {

namespace {

struct Command {
    const char *name;
    const char *summary;
    SetUp setUp;
};

constexpr Command kCommands[] = {
    {"types", "List the data types: names, ids, lengths, operations, help", SetUpTypes},
    {"show", "Show everything about one value", SetUpShow},
    {"convert", "Convert texts by the million: text, stored form, text", SetUpConvert},
    {"lua", "Run a Lua script that sees the types", SetUpLua},
};

// The option parser takes a word in brackets for a list and splits it, but a route key may be such a word. So every
// word that begins with a bracket goes by it behind a mark, which the first thing that sees an option's words takes
// off.
constexpr char kMark = '\1';

std::vector<std::string> MarkedWords(int argc, char **argv)
{
    std::vector<std::string> words(argv + 1, argv + argc);
    for (std::string &word : words) {
        if (word.starts_with('[') || word.starts_with(kMark)) {
            word.insert(word.begin(), kMark);
        }
    }
    return {words.rbegin(), words.rend()}; // the parser wants the last word first
}

std::string Unmarked(const std::string &word)
{
    return word.starts_with(kMark) ? word.substr(1) : word;
}

void TakeMarksOff(CLI::App &command)
{
    for (CLI::Option *option : command.get_options()) {
        option->transform(Unmarked);
    }
}

constexpr const char *kFooter =
    "Exit status: 0 fine, 1 some value was refused, 2 usage, 3 plug-in or host, 4 input or output.";

} // namespace

int Complain(Status status, const std::string &message)
{
    std::fprintf(stderr, "bgpdt: %s\n", message.c_str());
    return status;
}

int UnknownType(const std::string &name)
{
    std::string known;
    for (const DataTypeDescriptor *row : bgp::standalone::Rows()) {
        known += std::string(" ") + row->Name;
    }
    return Complain(kUsage, "no data type " + Escaped(name) + "; there are" + known);
}

} // namespace bgpdt

int main(int argc, char **argv)
{
    using namespace bgpdt;
    CLI::App app{"bgpdt: type, see, explain, convert and script the BGP data types", "bgpdt"};
    app.set_version_flag("--version", "bgpdt " BGPDT_VERSION);
    app.require_subcommand(1);
    app.fallthrough();
    app.footer(kFooter);
    Options options;
    app.add_flag("--json", options.json, "Answer in JSON");
    app.add_option("--plugin", options.plugIn, "The plug-in to load (default: $BGPDT_PLUGIN, else the usual one)");

    std::vector<std::pair<CLI::App *, std::function<int()>>> runs;
    for (const Command &command : kCommands) {
        CLI::App *added = app.add_subcommand(command.name, command.summary);
        added->footer(kFooter);
        runs.emplace_back(added, command.setUp(*added, options));
        TakeMarksOff(*added);
    }
    TakeMarksOff(app);
    try {
        app.parse(MarkedWords(argc, argv));
    } catch (const CLI::ParseError &error) {
        return app.exit(error) == 0 ? kFine : kUsage;
    }
    std::string reason;
    if (!Load(options.plugIn, &reason)) {
        return Complain(kTrouble, "the plug-in does not load: " + reason);
    }
    for (const auto &[command, run] : runs) {
        if (command->parsed()) {
            return run();
        }
    }
    return kUsage;
}
