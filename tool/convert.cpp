// bgpdt convert: the main job. One value a line, text to stored form and back, in constant memory however long the
// input.
#include "commands.h"
#include "explain/explain.h"
#include "lines.h"
#include "report.h"
#include "values.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include <chrono>
#include <cstdio>
#include <map>
#include <memory>
#include <unistd.h>

namespace bgpdt {

namespace {

struct Record {
    uint64_t line = 0;
    std::string type;
    std::string text;
    uint32_t code = DT_OK;
    size_t column = 1;    // of the line, at which the text begins
    std::string reason;   // why it was refused, empty when it was not: the code's name, or words
    explain::Refusal why; // by the plug-in, where it tells
    std::string value;
    std::string kind;    // of a composite type
    bool prints = false; // the type has a FormatOut and it succeeded
    std::string printed;
};

// ------------------------------------------------------------------------------------------------- output back-ends

std::string Json(const Record &record)
{
    nlohmann::ordered_json json{
        {"line", record.line}, {"type", record.type}, {"text", record.text}, {"code", record.code}};
    if (!record.reason.empty()) {
        json["error"] = record.reason;
        json["reason"] = ToJson(record.why.reason);
        if (!record.why.closest.empty()) {
            json["closest"] = record.why.closest;
        }
    } else {
        if (!record.kind.empty()) {
            json["kind"] = record.kind;
        }
        json["value"] = Hex(record.value);
        json["printed"] = record.prints ? nlohmann::ordered_json(record.printed) : nlohmann::ordered_json(nullptr);
    }
    return Dumped(json);
}

std::string Tsv(const Record &record)
{
    return std::to_string(record.line) + '\t' + Escaped(record.type) + '\t' + Escaped(record.text) + '\t' +
           (record.reason.empty()  ? "0"
            : record.code == DT_OK ? record.reason
                                   : CodeName(record.code)) +
           '\t' + Hex(record.value) + '\t' + Escaped(record.printed);
}

struct BackEnd {
    const char *name;
    std::string (*write)(const Record &record);
};

constexpr BackEnd kBackEnds[] = {{"jsonl", Json}, {"tsv", Tsv}, {"none", nullptr}};

// ------------------------------------------------------------------------------------------------------- the command

struct Arguments {
    std::string type;
    std::string file = "-";
    std::string format = "jsonl";
    std::string output;
    int mode = -1; // -1: the type's typing mode
    bool quiet = false;
};

struct Sum {
    uint64_t read = 0, accepted = 0, refused = 0, skipped = 0, changed = 0;
    std::map<std::string, uint64_t> reasons, kinds;
    std::chrono::steady_clock::time_point start = std::chrono::steady_clock::now();

    double Seconds() const { return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count(); }
};

void Refuse(Record &record, uint32_t code, const std::string &reason)
{
    record.code = code;
    record.reason = reason;
}

void Convert(Record &record, const Arguments &arguments)
{
    const DataTypeDescriptor *type = FindType(record.type);
    if (type == nullptr) {
        return Refuse(record, DT_ERR_TYPE_MISMATCH, "no such type");
    }
    if (type->FormatIn == nullptr) {
        return Refuse(record, DT_ERR_INVALID_PARAM, "the type cannot be typed in");
    }
    if (record.text.find('\0') != std::string::npos) {
        return Refuse(record, DT_ERR_INVALID_VALUE, "a NUL character in the text");
    }
    const uint8_t mode = arguments.mode < 0 ? Facts(*type).TypingMode : static_cast<uint8_t>(arguments.mode);
    Parsed parsed = Parse(*type, record.text, mode);
    if (parsed.code != DT_OK) {
        record.why = WhyRefused(*type, record.text, mode);
        return Refuse(record, parsed.code, CodeName(parsed.code));
    }
    if (parsed.NoValue()) {
        return Refuse(record, parsed.code, kNoValue);
    }
    record.value = std::move(parsed.value);
    record.kind = explain::KindOf(PlugInFunctions(), *type, record.value);
    if (type->FormatOut != nullptr && !record.value.empty()) {
        Printed printed = Print(*type, record.value, mode);
        record.prints = printed.code == DT_OK;
        record.printed = std::move(printed.text);
    }
}

// FILE:LINE:COLUMN where the type tells a place, else FILE:LINE.
std::string Place(const Record &record, const std::string &file)
{
    const explain::Reason &reason = record.why.reason;
    return Escaped(file) + ':' + std::to_string(record.line) +
           (reason.placed ? ':' + std::to_string(record.column + reason.offset) : "");
}

void Report(const Record &record, const std::string &file)
{
    const DataTypeDescriptor *type = FindType(record.type);
    const bool byCode = record.reason == CodeName(record.code);
    const Refused refused{record.code, record.reason, byCode ? CodeMeaning(record.code) : "",
                          type == nullptr ? "" : Help(*type, record.text), record.why};
    std::fprintf(stderr, "%s: %s\n", Place(record, file).c_str(), Headline(record.type, record.text, refused).c_str());
}

// "EVN type 2 40, RPD 3" behind what begins it.
void Enumerate(const char *before, const std::map<std::string, uint64_t> &counts)
{
    for (const auto &[name, count] : counts) {
        std::fprintf(stderr, "%s%s %llu", before, name.c_str(), static_cast<unsigned long long>(count));
        before = ", ";
    }
}

void Summarise(const Sum &sum, bool json)
{
    const double seconds = sum.Seconds();
    const auto rate = static_cast<uint64_t>(seconds > 0 ? static_cast<double>(sum.read) / seconds : 0);
    if (json) {
        const nlohmann::ordered_json summary{
            {"read", sum.read},       {"accepted", sum.accepted}, {"changed", sum.changed},
            {"refused", sum.refused}, {"reasons", sum.reasons},   {"kinds", sum.kinds},
            {"skipped", sum.skipped}, {"seconds", seconds},       {"perSecond", rate}};
        std::fprintf(stderr, "%s\n", summary.dump().c_str());
        return;
    }
    std::fprintf(stderr, "read %llu values: %llu accepted (%llu printed otherwise than typed), %llu refused",
                 static_cast<unsigned long long>(sum.read), static_cast<unsigned long long>(sum.accepted),
                 static_cast<unsigned long long>(sum.changed), static_cast<unsigned long long>(sum.refused));
    Enumerate(" (", sum.reasons);
    std::fprintf(stderr, "%s; %llu comment and blank lines; %llu values a second\n", sum.reasons.empty() ? "" : ")",
                 static_cast<unsigned long long>(sum.skipped), static_cast<unsigned long long>(rate));
    if (!sum.kinds.empty()) {
        Enumerate("accepted: ", sum.kinds);
        std::fputc('\n', stderr);
    }
}

// One line on a terminal, a few times a second.
class Progress {
public:
    void Show(const Sum &sum)
    {
        if (!terminal_ || sum.read % 4096 != 0) {
            return;
        }
        const auto now = std::chrono::steady_clock::now();
        if (now - last_ >= std::chrono::milliseconds(250)) {
            last_ = now;
            std::fprintf(stderr, "\r%llu values, %llu refused ", static_cast<unsigned long long>(sum.read),
                         static_cast<unsigned long long>(sum.refused));
            shown_ = true;
        }
    }
    void Clear()
    {
        if (shown_) {
            std::fprintf(stderr, "\r\x1b[K");
            shown_ = false;
        }
    }

private:
    bool terminal_ = isatty(STDERR_FILENO) != 0;
    bool shown_ = false;
    std::chrono::steady_clock::time_point last_ = std::chrono::steady_clock::now();
};

// A line is "TYPE<tab>TEXT", or the text alone when the type is given.
void Split(const Line &line, const Arguments &arguments, Record &record)
{
    record.line = line.number;
    if (!arguments.type.empty()) {
        record.type = arguments.type;
        record.text = line.text;
    } else if (const size_t tab = line.text.find('\t'); tab != std::string::npos) {
        record.type = line.text.substr(0, tab);
        record.text = line.text.substr(tab + 1);
        record.column = tab + 2;
    } else {
        record.text = line.text;
        Refuse(record, DT_ERR_INVALID_PARAM, "no tab between type and text");
    }
    if (line.cut) {
        Refuse(record, DT_ERR_TOO_LONG, "the line is too long");
    }
}

void Count(Sum &sum, const Record &record)
{
    ++sum.read;
    if (record.reason.empty()) {
        ++sum.accepted;
        if (!record.kind.empty()) {
            ++sum.kinds[record.kind];
        }
        sum.changed += record.prints && record.printed != record.text;
    } else {
        ++sum.refused;
        ++sum.reasons[record.reason];
    }
}

int ConvertAll(std::FILE *input, std::FILE *output, const BackEnd &backEnd, const Arguments &arguments,
               const Options &options)
{
    const std::string name = arguments.file == "-" ? "standard input" : arguments.file;
    Lines lines(input);
    Line line;
    Sum sum;
    Progress progress;
    while (lines.Next(line)) {
        if (line.text.empty() || line.text[0] == '#') {
            ++sum.skipped;
            continue;
        }
        Record record;
        Split(line, arguments, record);
        if (record.reason.empty()) {
            Convert(record, arguments);
        }
        Count(sum, record);
        if (!record.reason.empty() && !arguments.quiet) {
            progress.Clear();
            Report(record, name);
        }
        if (backEnd.write != nullptr) {
            const std::string text = backEnd.write(record) + '\n';
            if (std::fwrite(text.data(), 1, text.size(), output) != text.size()) {
                return Complain(kInputOutput, "cannot write: " + std::string(std::strerror(errno)));
            }
        }
        progress.Show(sum);
    }
    progress.Clear();
    if (lines.Failed()) {
        return Complain(kInputOutput, name + ": cannot read: " + std::strerror(errno));
    }
    if (std::fflush(output) != 0) {
        return Complain(kInputOutput, "cannot write: " + std::string(std::strerror(errno)));
    }
    Summarise(sum, options.json);
    return sum.refused == 0 ? kFine : kRefused;
}

using File = std::unique_ptr<std::FILE, int (*)(std::FILE *)>;

// "-" and the empty name are the standard stream.
File Open(const std::string &name, const char *how, std::FILE *standard)
{
    const auto keep = [](std::FILE *) { return 0; };
    return name.empty() || name == "-" ? File(standard, keep) : File(std::fopen(name.c_str(), how), std::fclose);
}

int Run(const Arguments &arguments, const Options &options)
{
    if (!arguments.type.empty() && FindType(arguments.type) == nullptr) {
        return UnknownType(arguments.type);
    }
    const File input = Open(arguments.file, "rb", stdin);
    if (input == nullptr) {
        return Complain(kInputOutput, arguments.file + ": " + std::strerror(errno));
    }
    const File output = Open(arguments.output, "wb", stdout);
    if (output == nullptr) {
        return Complain(kInputOutput, arguments.output + ": " + std::strerror(errno));
    }
    for (const BackEnd &backEnd : kBackEnds) {
        if (arguments.format == backEnd.name) {
            return ConvertAll(input.get(), output.get(), backEnd, arguments, options);
        }
    }
    return kUsage;
}

} // namespace

std::function<int()> SetUpConvert(CLI::App &command, const Options &options)
{
    auto arguments = std::make_shared<Arguments>();
    std::vector<std::string> formats;
    for (const BackEnd &backEnd : kBackEnds) {
        formats.emplace_back(backEnd.name);
    }
    command.add_option("FILE", arguments->file, "Lines TYPE<tab>TEXT, or texts with --type; - is standard input")
        ->capture_default_str();
    command.add_option("-t,--type", arguments->type, "The type of every line");
    command.add_option("-f,--format", arguments->format, "What is written")
        ->check(CLI::IsMember(formats))
        ->capture_default_str();
    command.add_option("-o,--output", arguments->output, "Where to (default: standard output)");
    command.add_option("-m,--mode", arguments->mode, "Format mode 0 to 255 (default: the one that people type in)")
        ->check(CLI::Range(0, 255));
    command.add_flag("-q,--quiet", arguments->quiet, "Do not report refused lines, only sum up");
    return [arguments, &options] { return Run(*arguments, options); };
}

} // namespace bgpdt
