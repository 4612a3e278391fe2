// bgpdt show: everything about one value.
#include "bgp_standalone_host.h"
#include "commands.h"
#include "explain.h"
#include "script.h"
#include "values.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include <cstdio>
#include <memory>

namespace bgpdt {

namespace {

using Json = nlohmann::ordered_json;

struct Arguments {
    std::string type;
    std::vector<std::string> words;
    bool hex = false;
    int mode = -1;
};

std::string Join(const std::vector<std::string> &words)
{
    std::string text;
    for (const std::string &word : words) {
        text += (text.empty() ? "" : " ") + word;
    }
    return text;
}

Json PrintedIn(const DataTypeDescriptor &type, const std::string &value, uint8_t mode)
{
    const Printed printed = Print(type, value, mode);
    Json json{{"mode", mode}, {"code", printed.code}};
    if (printed.code != DT_OK) {
        json["error"] = CodeName(printed.code);
    } else if (printed.typeId == DT_TYPE_TEXT) {
        json["text"] = printed.text;
    } else {
        json["raw"] = Hex(printed.text);
    }
    return json;
}

// The value as one JSON object; the text form below is written from the same object.
Json Describe(const DataTypeDescriptor &type, const std::string &value)
{
    Json json{{"type", type.Name}, {"id", type.TypeId}, {"length", value.size()}, {"stored", Hex(value)}};
    if (type.FormatOut != nullptr) {
        json["prints"] = Json::array();
        for (uint8_t mode = 0; mode <= 6; ++mode) {
            json["prints"].push_back(PrintedIn(type, value, mode));
        }
    }
    if (type.Check != nullptr) {
        json["check"] = CodeName(Check(type, value));
    }
    if (type.LuaSet != nullptr) {
        json["lua"] = LuaTable(type, value);
    }
    if (const auto network = Network(type, value)) {
        json["network"] = Hex(*network);
    }
    if (const std::string help = Help(type); !help.empty()) {
        json["help"] = help;
    }
    json["fields"] = Json::array();
    for (const FieldText &field : Fields(type.TypeId, value)) {
        json["fields"].push_back(
            {{"name", field.name}, {"offset", field.offset}, {"length", field.length}, {"value", field.value}});
    }
    json["meaning"] = Explain(type.TypeId, value);
    return json;
}

void Label(const char *label)
{
    std::printf("  %-9s ", label);
}

void PrintModes(const Json &prints)
{
    // Modes that print alike share a line.
    std::vector<std::pair<std::string, std::string>> lines;
    for (const Json &print : prints) {
        std::string what = print.contains("text")  ? "\"" + print["text"].get<std::string>() + "\""
                           : print.contains("raw") ? "raw " + print["raw"].get<std::string>()
                                                   : print["error"].get<std::string>();
        const std::string mode = std::to_string(print["mode"].get<int>());
        bool shared = false;
        for (auto &[modes, text] : lines) {
            if (text == what) {
                modes += ',' + mode;
                shared = true;
            }
        }
        if (!shared) {
            lines.emplace_back(mode, what);
        }
    }
    const char *label = "prints";
    for (const auto &[modes, text] : lines) {
        Label(label);
        std::printf("%s (mode %s)\n", text.c_str(), modes.c_str());
        label = "";
    }
}

void Write(const Json &json)
{
    std::printf("%s, type id %d\n", json["type"].get<std::string>().c_str(), json["id"].get<int>());
    if (json.contains("text")) {
        Label("text");
        std::printf("\"%s\"\n", json["text"].get<std::string>().c_str());
    }
    Label("stored");
    std::printf("%s (%zu bytes)\n", json["stored"].get<std::string>().c_str(), json["length"].get<size_t>());
    if (json.contains("prints")) {
        PrintModes(json["prints"]);
    }
    for (const char *key : {"check", "lua", "network", "help"}) {
        if (json.contains(key)) {
            Label(key);
            std::printf("%s\n", json[key].get<std::string>().c_str());
        }
    }
    const char *label = "fields";
    for (const Json &field : json["fields"]) {
        Label(label);
        std::printf("%-26s at %3zu, %2zu: %s\n", field["name"].get<std::string>().c_str(),
                    field["offset"].get<size_t>(), field["length"].get<size_t>(),
                    field["value"].get<std::string>().c_str());
        label = "";
    }
    label = "meaning";
    for (const Json &line : json["meaning"]) {
        Label(label);
        std::printf("%s\n", line.get<std::string>().c_str());
        label = "";
    }
}

int Refused(const DataTypeDescriptor &type, const std::string &text, uint32_t code, const Options &options)
{
    const std::string help = Help(type);
    const std::vector<std::string> why = ExplainRefusal(type.TypeId, text);
    if (options.json) {
        const Json json{{"type", type.Name},
                        {"text", text},
                        {"code", code},
                        {"error", CodeName(code)},
                        {"meaning", CodeMeaning(code)},
                        {"help", help},
                        {"why", why}};
        std::printf("%s\n", json.dump(2, ' ', false, Json::error_handler_t::replace).c_str());
    }
    Complain(kRefused, std::string(type.Name) + " \"" + text + "\" refused: " + CodeMeaning(code) + " (" +
                           CodeName(code) + ")" + (help.empty() ? "" : "; expected " + help));
    for (const std::string &line : why) {
        std::fprintf(stderr, "  %s\n", line.c_str());
    }
    return kRefused;
}

int Run(const Arguments &arguments, const Options &options)
{
    const DataTypeDescriptor *type = FindType(arguments.type);
    if (type == nullptr) {
        return UnknownType(arguments.type);
    }
    const std::string text = Join(arguments.words);
    std::string value;
    if (arguments.hex) {
        const auto bytes = FromHex(text);
        if (!bytes) {
            return Complain(kUsage, "not hexadecimal bytes: " + text);
        }
        value = *bytes;
    } else if (type->FormatIn == nullptr) {
        return Complain(kUsage, std::string(type->Name) + " cannot be typed in; give its bytes with --hex");
    } else {
        const uint8_t mode = arguments.mode < 0 ? TypingMode(*type) : static_cast<uint8_t>(arguments.mode);
        const Parsed parsed = Parse(*type, text, mode);
        if (parsed.code != DT_OK) {
            return Refused(*type, text, parsed.code, options);
        }
        value = parsed.value;
    }
    Json json = Describe(*type, value);
    if (!arguments.hex) {
        json["text"] = text;
    }
    if (options.json) {
        std::printf("%s\n", json.dump(2, ' ', false, Json::error_handler_t::replace).c_str());
    } else {
        Write(json);
    }
    return std::fflush(stdout) == 0 ? kFine : kInputOutput;
}

} // namespace

std::function<int()> SetUpShow(CLI::App &command, const Options &options)
{
    auto arguments = std::make_shared<Arguments>();
    command.add_option("TYPE", arguments->type, "The data type")->required();
    command.add_option("TEXT", arguments->words, "The value; several words are joined by blanks")->required();
    command.add_flag("-x,--hex", arguments->hex, "TEXT is the stored bytes in hexadecimal");
    command.add_option("-m,--mode", arguments->mode, "Format mode in which the text is read")
        ->check(CLI::Range(0, 255));
    return [arguments, &options] { return Run(*arguments, options); };
}

} // namespace bgpdt
