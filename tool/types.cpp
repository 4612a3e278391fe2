// bgpdt types: the rows of the plug-in.
#include "bgp_standalone_host.hpp"
#include "commands.h"
#include "values.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include <cstdio>

namespace bgpdt {

namespace {

std::vector<std::string> Operations(const DataTypeDescriptor &type)
{
    const std::pair<const char *, bool> slots[] = {
        {"FormatIn", type.FormatIn != nullptr}, {"FormatOut", type.FormatOut != nullptr},
        {"Check", type.Check != nullptr},       {"Help", type.Help != nullptr},
        {"Compare", type.Compare != nullptr},   {"LuaSet", type.LuaSet != nullptr},
        {"LuaGet", type.LuaGet != nullptr},     {"Endian", type.Endian != nullptr},
    };
    std::vector<std::string> names;
    for (const auto &[name, present] : slots) {
        if (present) {
            names.emplace_back(name);
        }
    }
    return names;
}

int Run(const Options &options)
{
    if (!options.json) {
        std::printf("%-16s %6s %6s %5s  %-20s %s\n", "name", "id", "length", "kind", "help", "operations");
    }
    nlohmann::ordered_json all = nlohmann::ordered_json::array();
    for (const DataTypeDescriptor *type : bgp::standalone::Rows()) {
        const std::vector<std::string> operations = Operations(*type);
        if (options.json) {
            all.push_back({{"name", type->Name},
                           {"id", type->TypeId},
                           {"length", type->BinaryLength},
                           {"baseKind", type->BaseKind},
                           {"help", Help(*type)},
                           {"operations", operations}});
            continue;
        }
        std::string joined;
        for (const std::string &operation : operations) {
            joined += (joined.empty() ? "" : " ") + operation;
        }
        std::printf("%-16s %6u %6u %5u  %-20s %s\n", type->Name, type->TypeId, type->BinaryLength, type->BaseKind,
                    Help(*type).c_str(), joined.c_str());
    }
    if (options.json) {
        std::printf("%s\n", all.dump(2).c_str());
    }
    return std::fflush(stdout) == 0 ? kFine : kInputOutput;
}

} // namespace

std::function<int()> SetUpTypes(CLI::App &, const Options &options)
{
    return [&options] { return Run(options); };
}

} // namespace bgpdt
