// bgpdt show: everything about one value.
#include "bgp_standalone_host.hpp"
#include "commands.h"
#include "explain/explain.h"
#include "report.h"
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
    } else if (printed.typeId != 0) {
        json["raw"] = Hex(printed.text);
    } // else it succeeded and made nothing
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
    for (const explain::Field &field : explain::Fields(PlugInFunctions(), type.TypeId, value)) {
        json["fields"].push_back(
            {{"name", field.name}, {"offset", field.offset}, {"length", field.length}, {"value", field.text}});
    }
    json["meaning"] = explain::Explain(PlugInFunctions(), type, value);
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
        std::string what = print.contains("text")    ? '"' + Escaped(print["text"].get<std::string>()) + '"'
                           : print.contains("raw")   ? "raw " + print["raw"].get<std::string>()
                           : print.contains("error") ? print["error"].get<std::string>()
                                                     : "nothing";
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

void PrintLines(const char *label, const std::vector<std::string> &lines)
{
    for (const std::string &line : lines) {
        Label(label);
        std::printf("%s\n", Escaped(line).c_str());
        label = "";
    }
}

void Write(const Json &json, const std::vector<explain::Answer> &tried)
{
    std::printf("%s, type id %d\n", json["type"].get<std::string>().c_str(), json["id"].get<int>());
    if (json.contains("text")) {
        Label("text");
        std::printf("\"%s\"\n", Escaped(json["text"].get<std::string>()).c_str());
    }
    PrintLines("tried", AnswerLines(tried));
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
                    Escaped(field["value"].get<std::string>()).c_str());
        label = "";
    }
    PrintLines("meaning", json["meaning"].get<std::vector<std::string>>());
}

// On standard error the headline, the place in the text, and what the sub-types of a composite type answer; with --json
// the same as one object on standard output.
int Refuse(const DataTypeDescriptor &type, const std::string &text, const Refused &refused, const Options &options)
{
    const explain::Refusal &why = refused.why;
    if (options.json) {
        const Json json{{"type", type.Name},
                        {"text", text},
                        {"code", refused.code},
                        {"error", refused.error},
                        {"meaning", refused.meaning},
                        {"help", refused.expected},
                        {"reason", ToJson(why.reason)},
                        {"closest", why.closest.empty() ? Json(nullptr) : Json(why.closest)},
                        {"tried", ToJson(why.answers)}};
        std::printf("%s\n", Dumped(json, 2).c_str());
    }
    Complain(kRefused, Headline(type.Name, text, refused));
    for (const auto &lines : {Marked(text, why.reason), AnswerLines(why.answers)}) {
        for (const std::string &line : lines) {
            std::fprintf(stderr, "  %s\n", line.c_str());
        }
    }
    return kRefused;
}

// Stored bytes as the reference pages write them: "..." at the end stands for zeros up to the length of a value.
std::optional<std::string> FromStored(const DataTypeDescriptor &type, std::string text)
{
    constexpr std::string_view kZeros = "...";
    const size_t end = text.find_last_not_of(' ');
    const bool padded = end != text.npos && end >= 2 && std::string_view(text).substr(end - 2, 3) == kZeros;
    if (padded) {
        text.resize(end - 2);
    }
    auto bytes = FromHex(text);
    if (bytes && padded && bytes->size() < Facts(type).ValueLength) {
        bytes->resize(Facts(type).ValueLength);
    }
    return bytes;
}

int Show(const DataTypeDescriptor &type, const std::string &value, const std::string *text,
         const std::vector<explain::Answer> &tried, const Options &options)
{
    Json json = Describe(type, value);
    if (text != nullptr) {
        json["text"] = *text;
    }
    json["tried"] = ToJson(tried);
    if (options.json) {
        std::printf("%s\n", Dumped(json, 2).c_str());
    } else {
        Write(json, tried);
    }
    return std::fflush(stdout) == 0 ? kFine : kInputOutput;
}

int ShowStored(const DataTypeDescriptor &type, const std::string &text, const Options &options)
{
    const auto value = FromStored(type, text);
    if (!value) {
        return Complain(kUsage, "not hexadecimal bytes: " + Escaped(text));
    }
    if (!IsValueLength(type, value->size())) {
        const std::string expected = std::to_string(Facts(type).ValueLength) + " bytes, not " +
                                     std::to_string(value->size()) + " (\"...\" at the end stands for zeros)";
        return Refuse(type, text, {DT_ERR_LENGTH, CodeName(DT_ERR_LENGTH), CodeMeaning(DT_ERR_LENGTH), expected, {}},
                      options);
    }
    return Show(type, *value, nullptr, {}, options);
}

int ShowText(const DataTypeDescriptor &type, const std::string &text, uint8_t mode, const Options &options)
{
    if (type.FormatIn == nullptr) {
        return Complain(kUsage, std::string(type.Name) + " cannot be typed in; give its bytes with --hex");
    }
    const Parsed parsed = Parse(type, text, mode);
    const explain::Refusal why = WhyRefused(type, text, mode);
    if (parsed.code != DT_OK) {
        return Refuse(type, text, {parsed.code, CodeName(parsed.code), CodeMeaning(parsed.code), Help(type, text), why},
                      options);
    }
    if (parsed.NoValue()) {
        return Refuse(type, text,
                      {parsed.code, kNoValue, "the type answers 0 to any text", "its bytes, with --hex", why}, options);
    }
    return Show(type, parsed.value, &text, why.answers, options);
}

int Run(const Arguments &arguments, const Options &options)
{
    const DataTypeDescriptor *type = FindType(arguments.type);
    if (type == nullptr) {
        return UnknownType(arguments.type);
    }
    const std::string text = Join(arguments.words);
    const uint8_t mode = arguments.mode < 0 ? Facts(*type).TypingMode : static_cast<uint8_t>(arguments.mode);
    return arguments.hex ? ShowStored(*type, text, options) : ShowText(*type, text, mode, options);
}

} // namespace

std::function<int()> SetUpShow(CLI::App &command, const Options &options)
{
    auto arguments = std::make_shared<Arguments>();
    command.add_option("TYPE", arguments->type, "The data type")->required();
    command.add_option("TEXT", arguments->words, "The value; several words are joined by blanks")->required();
    command.add_flag("-x,--hex", arguments->hex, "TEXT is the stored bytes in hexadecimal; ... at the end: zeros");
    command.add_option("-m,--mode", arguments->mode, "Format mode in which the text is read")
        ->check(CLI::Range(0, 255));
    return [arguments, &options] { return Run(*arguments, options); };
}

} // namespace bgpdt
