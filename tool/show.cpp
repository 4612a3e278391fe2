// bgpdt show: everything about one value.
#include "bgp_standalone_host.hpp"
#include "commands.h"
#include "explain.h"
#include "script.h"
#include "values.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include <cstdio>
#include <memory>
#include <optional>

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
    for (const FieldText &field : Fields(type.TypeId, value)) {
        json["fields"].push_back(
            {{"name", field.name}, {"offset", field.offset}, {"length", field.length}, {"value", field.value}});
    }
    json["meaning"] = Explain(type.TypeId, value);
    return json;
}

// What is not printable ASCII as \r, \n, \t or \xNN, a backslash as two: a value may hold bytes that a terminal obeys.
std::string Escaped(const std::string &text)
{
    std::string escaped;
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        constexpr std::string_view kNamed = "\r\n\t\\", kNames = "rnt\\";
        char piece[8];
        if (const size_t named = kNamed.find(character); named != kNamed.npos) {
            std::snprintf(piece, sizeof piece, "\\%c", kNames[named]);
        } else {
            std::snprintf(piece, sizeof piece, byte < 0x20 || byte > 0x7e ? "\\x%02x" : "%c", byte);
        }
        escaped += piece;
    }
    return escaped;
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

void PrintLines(const char *label, const Json &lines)
{
    for (const Json &line : lines) {
        Label(label);
        std::printf("%s\n", Escaped(line.get<std::string>()).c_str());
        label = "";
    }
}

void Write(const Json &json)
{
    std::printf("%s, type id %d\n", json["type"].get<std::string>().c_str(), json["id"].get<int>());
    if (json.contains("text")) {
        Label("text");
        std::printf("\"%s\"\n", Escaped(json["text"].get<std::string>()).c_str());
    }
    PrintLines("tried", json["tried"]);
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
    PrintLines("meaning", json["meaning"]);
}

std::string Dumped(const Json &json)
{
    return json.dump(2, ' ', false, Json::error_handler_t::replace);
}

// A refused text or value: what was wrong on standard error, behind it the lines that tell why; with --json the same on
// standard output.
struct Refusal {
    uint32_t code;
    std::string error;   // the code's name, or the reason where the type gives no code
    std::string meaning; // in words
    std::string help;    // what is expected
    std::vector<std::string> why, tried;
};

int Refuse(const DataTypeDescriptor &type, const std::string &text, const Refusal &refusal, const Options &options)
{
    if (options.json) {
        const Json json{
            {"type", type.Name},          {"text", text},         {"code", refusal.code}, {"error", refusal.error},
            {"meaning", refusal.meaning}, {"help", refusal.help}, {"why", refusal.why},   {"tried", refusal.tried}};
        std::printf("%s\n", Dumped(json).c_str());
    }
    Complain(kRefused, std::string(type.Name) + " \"" + Escaped(text) + "\" refused: " + refusal.meaning + " (" +
                           refusal.error + ")" + (refusal.help.empty() ? "" : "; expected " + refusal.help));
    for (const auto *lines : {&refusal.why, &refusal.tried}) {
        for (const std::string &line : *lines) {
            std::fprintf(stderr, "  %s\n", Escaped(line).c_str());
        }
    }
    return kRefused;
}

// What is wrong with a value of the given bytes; nothing when it can be shown. The operations read a value at its full
// length, whatever they are told.
std::optional<Refusal> Judge(const DataTypeDescriptor &type, const std::string &value)
{
    constexpr uint16_t kNameType = 292; // shown with its number and kind too
    const size_t length = ValueLength(type);
    if (value.size() == length || (type.TypeId == kNameType && value.size() == 40)) {
        return std::nullopt;
    }
    const std::string expected = std::to_string(length) + " bytes, not " + std::to_string(value.size());
    return Refusal{DT_ERR_LENGTH,
                   CodeName(DT_ERR_LENGTH),
                   CodeMeaning(DT_ERR_LENGTH),
                   expected + " (\"...\" at the end stands for zeros)",
                   {},
                   {}};
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
    if (bytes && padded && bytes->size() < ValueLength(type)) {
        bytes->resize(ValueLength(type));
    }
    return bytes;
}

int Show(const DataTypeDescriptor &type, const std::string &value, const std::string *text,
         const std::vector<std::string> &tried, const Options &options)
{
    Json json = Describe(type, value);
    if (text != nullptr) {
        json["text"] = *text;
    }
    json["tried"] = tried;
    if (options.json) {
        std::printf("%s\n", Dumped(json).c_str());
    } else {
        Write(json);
    }
    return std::fflush(stdout) == 0 ? kFine : kInputOutput;
}

int ShowStored(const DataTypeDescriptor &type, const std::string &text, const Options &options)
{
    const auto value = FromStored(type, text);
    if (!value) {
        return Complain(kUsage, "not hexadecimal bytes: " + Escaped(text));
    }
    if (const auto refusal = Judge(type, *value)) {
        return Refuse(type, text, *refusal, options);
    }
    return Show(type, *value, nullptr, {}, options);
}

int ShowText(const DataTypeDescriptor &type, const std::string &text, uint8_t mode, const Options &options)
{
    if (type.FormatIn == nullptr) {
        return Complain(kUsage, std::string(type.Name) + " cannot be typed in; give its bytes with --hex");
    }
    const Parsed parsed = Parse(type, text, mode);
    const std::vector<std::string> tried = Tried(type.TypeId, text, mode);
    if (parsed.code != DT_OK) {
        return Refuse(type, text,
                      {parsed.code, CodeName(parsed.code), CodeMeaning(parsed.code), Help(type, text),
                       ExplainRefusal(type.TypeId, text), tried},
                      options);
    }
    if (parsed.NoValue()) {
        return Refuse(type, text,
                      {parsed.code, kNoValue, "the type answers 0 to any text", "its bytes, with --hex", {}, tried},
                      options);
    }
    return Show(type, parsed.value, &text, tried, options);
}

int Run(const Arguments &arguments, const Options &options)
{
    const DataTypeDescriptor *type = FindType(arguments.type);
    if (type == nullptr) {
        return UnknownType(arguments.type);
    }
    const std::string text = Join(arguments.words);
    const uint8_t mode = arguments.mode < 0 ? TypingMode(*type) : static_cast<uint8_t>(arguments.mode);
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
