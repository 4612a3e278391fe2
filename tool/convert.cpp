// bgpdt convert: the main job. One value a line, text to stored form and back, in constant memory however long the
// input: a block of lines at a time, or a few with several jobs, and all in the order of the lines.
#include "commands.h"
#include "in_order.h"
#include "lines.h"
#include "output.h"
#include "record.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <map>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace bgpdt {

namespace {

struct Arguments {
    Reading reading;
    std::string file = "-";
    std::string format = "jsonl";
    std::vector<std::string> fields;
    std::string output;
    unsigned jobs = 1;
    bool quiet = false;
};

// ----------------------------------------------------------------------------------------------------------- counting

struct Sum {
    uint64_t read = 0, accepted = 0, refused = 0, skipped = 0, changed = 0;
    std::map<std::string, uint64_t> reasons, kinds;
};

void Count(Sum &sum, const Record &record)
{
    ++sum.read;
    if (record.Accepted()) {
        ++sum.accepted;
        if (!record.kind.empty()) {
            ++sum.kinds[record.kind];
        }
        sum.changed += record.prints && record.printed != record.text;
    } else {
        ++sum.refused;
        ++sum.reasons[record.error];
    }
}

void Add(std::map<std::string, uint64_t> &counts, const std::map<std::string, uint64_t> &more)
{
    for (const auto &[name, count] : more) {
        counts[name] += count;
    }
}

void Add(Sum &sum, const Sum &more)
{
    sum.read += more.read;
    sum.accepted += more.accepted;
    sum.refused += more.refused;
    sum.skipped += more.skipped;
    sum.changed += more.changed;
    Add(sum.reasons, more.reasons);
    Add(sum.kinds, more.kinds);
}

// "EVN type 2 40, RPD 3" behind what begins it.
void Enumerate(const char *before, const std::map<std::string, uint64_t> &counts)
{
    for (const auto &[name, count] : counts) {
        std::fprintf(stderr, "%s%s %llu", before, name.c_str(), static_cast<unsigned long long>(count));
        before = ", ";
    }
}

void Summarise(const Sum &sum, double seconds, bool json)
{
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
        const auto now = std::chrono::steady_clock::now();
        if (terminal_ && now - last_ >= std::chrono::milliseconds(250)) {
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

// -------------------------------------------------------------------------------------------------------------- files

// A file descriptor: the standard one for "-" and the empty name, which stays open.
class File {
public:
    File(const std::string &name, int flags, int standard)
        : own_(!name.empty() && name != "-"), number_(own_ ? open(name.c_str(), flags | O_CLOEXEC, 0666) : standard)
    {
    }
    ~File() { Close(); }
    File(const File &) = delete;
    File &operator=(const File &) = delete;
    int Number() const { return number_; } // -1 when it could not be opened
    // False when what was written may be lost.
    bool Close()
    {
        const int number = std::exchange(number_, -1);
        return !own_ || number < 0 || close(number) == 0;
    }

private:
    bool own_;
    int number_;
};

bool WriteAll(int file, std::string_view text)
{
    while (!text.empty()) {
        const ssize_t count = write(file, text.data(), text.size());
        if (count >= 0) {
            text.remove_prefix(static_cast<size_t>(count));
        } else if (errno != EINTR) {
            return false;
        }
    }
    return true;
}

bool SameFile(int left, int right)
{
    struct stat one, other;
    return fstat(left, &one) == 0 && fstat(right, &other) == 0 && one.st_dev == other.st_dev &&
           one.st_ino == other.st_ino;
}

int CannotWrite()
{
    return Complain(kInputOutput, "cannot write: " + std::string(std::strerror(errno)));
}

// ------------------------------------------------------------------------------------------------------- the command

// A block of lines on its way: what is needed to convert it, and what comes of it.
struct Piece {
    struct Place {
        size_t output, reports;
    };
    Block block;
    Converter converter;
    Sink output;
    Sink reports;              // of refused lines
    std::vector<Place> places; // how far both are to be written in turn, the output first
    Sum sum;
};

// What is alike for all of them.
struct Job {
    const Arguments &arguments;
    const std::string name; // of the input
    const Output format;
    const int output;
    const bool together; // reports and output go to the same file
    Blocks input;
    Sum sum = {};
    Progress progress = {};
};

void Convert(const Job &job, Piece &piece)
{
    piece.output.Empty();
    piece.reports.Empty();
    piece.places.clear();
    piece.sum = {};
    ForEachLine(piece.block, [&job, &piece](const Line &line) {
        if (line.text.empty() || line.text[0] == '#') {
            ++piece.sum.skipped;
            return;
        }
        const Record &record = piece.converter.Convert(line, job.arguments.reading);
        Count(piece.sum, record);
        if (!record.Accepted() && !job.arguments.quiet) {
            piece.reports.Put(Report(record, job.name));
            if (job.together) {
                piece.places.push_back({piece.output.Size(), piece.reports.Size()});
            }
        }
        if (job.format.write != nullptr) {
            job.format.write(job.format, record, piece.output);
        }
    });
    if (!job.together) {
        piece.places.push_back({0, piece.reports.Size()});
    }
    piece.places.push_back({piece.output.Size(), piece.reports.Size()});
}

// Writes what came of a piece: the reports, then the output; in one file each report before its record.
void Finish(Job &job, Piece &piece)
{
    if (piece.reports.Size() != 0) {
        job.progress.Clear();
    }
    Piece::Place from{0, 0};
    for (const Piece::Place &to : piece.places) {
        if (!WriteAll(job.output, piece.output.Text().substr(from.output, to.output - from.output))) {
            // The process ends here, for another job may wait for input that never comes.
            std::_Exit(CannotWrite());
        }
        WriteAll(STDERR_FILENO, piece.reports.Text().substr(from.reports, to.reports - from.reports));
        from = to;
    }
    Add(job.sum, piece.sum);
    job.progress.Show(job.sum);
}

int ConvertAll(Job &job, const Options &options)
{
    const auto start = std::chrono::steady_clock::now();
    InOrder<Piece>(job.arguments.jobs,
                   {[&job](Piece &piece) { return job.input.Next(piece.block); },
                    [&job](Piece &piece) { Convert(job, piece); }, [&job](Piece &piece) { Finish(job, piece); }})
        .Run();
    job.progress.Clear();
    if (job.input.Error() != 0) {
        return Complain(kInputOutput, job.name + ": cannot read: " + std::strerror(job.input.Error()));
    }
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
    Summarise(job.sum, seconds.count(), options.json);
    return job.sum.refused == 0 ? kFine : kRefused;
}

// Null when each is named once.
const std::string *NamedTwice(const std::vector<std::string> &names)
{
    for (const std::string &name : names) {
        if (std::count(names.begin(), names.end(), name) > 1) {
            return &name;
        }
    }
    return nullptr;
}

int Run(Arguments &arguments, const Options &options)
{
    if (Reading &reading = arguments.reading; !reading.typeName.empty()) {
        const DataTypeDescriptor *type = FindType(reading.typeName);
        if (type == nullptr) {
            return UnknownType(reading.typeName);
        }
        reading.type.emplace(*type);
    }
    if (const std::string *name = NamedTwice(arguments.fields)) {
        return Complain(kUsage, "the field " + *name + " is named twice");
    }
    const File input(arguments.file, O_RDONLY, STDIN_FILENO);
    if (input.Number() < 0) {
        return Complain(kInputOutput, arguments.file + ": " + std::strerror(errno));
    }
    File output(arguments.output, O_WRONLY | O_CREAT | O_TRUNC, STDOUT_FILENO);
    if (output.Number() < 0) {
        return Complain(kInputOutput, arguments.output + ": " + std::strerror(errno));
    }
    Job job{arguments,
            arguments.file == "-" ? "standard input" : arguments.file,
            MakeOutput(arguments.format, arguments.fields),
            output.Number(),
            SameFile(output.Number(), STDERR_FILENO),
            Blocks(input.Number())};
    const int status = ConvertAll(job, options);
    return output.Close() ? status : CannotWrite();
}

} // namespace

std::function<int()> SetUpConvert(CLI::App &command, const Options &options)
{
    constexpr unsigned kMostJobs = 64;
    auto arguments = std::make_shared<Arguments>();
    command.add_option("FILE", arguments->file, "Lines TYPE<tab>TEXT, or texts with --type; - is standard input")
        ->capture_default_str();
    command.add_option("-t,--type", arguments->reading.typeName, "The type of every line");
    command.add_option("-f,--format", arguments->format, "What is written")
        ->check(CLI::IsMember(FormatNames()))
        ->capture_default_str();
    command.add_option("--fields", arguments->fields, "Which fields, parted by commas (default: those of the format)")
        ->delimiter(',')
        ->allow_extra_args(false)
        ->check(CLI::IsMember(FieldNames()));
    command.add_option("-o,--output", arguments->output, "Where to (default: standard output)");
    command
        .add_option("-m,--mode", arguments->reading.mode, "Format mode 0 to 255 (default: the one that people type in)")
        ->check(CLI::Range(0, 255));
    command.add_option("-j,--jobs", arguments->jobs, "How many threads convert; the order stays")
        ->check(CLI::Range(1u, kMostJobs))
        ->capture_default_str();
    command.add_flag("-q,--quiet", arguments->quiet, "Do not report refused lines, only sum up");
    return [arguments, &options] { return Run(*arguments, options); };
}

} // namespace bgpdt
