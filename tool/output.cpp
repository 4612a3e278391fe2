#include "output.h"

#include "json_text.h"
#include "report.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <cstring>

namespace bgpdt {

namespace {

// When a field applies: in records of some of these kinds.
constexpr unsigned kAlways = 1, kAccepted = 2, kRefused = 4, kWithClosest = 8, kWithKind = 16;

unsigned KindsOf(const Record &record)
{
    return kAlways | (record.Accepted() ? kAccepted : kRefused) | (record.why.closest.empty() ? 0 : kWithClosest) |
           (record.kind.empty() ? 0 : kWithKind);
}

} // namespace

// JSON leaves a field out where it does not apply; in TSV it is empty there, for the columns are fixed.
struct Field {
    std::string_view name;
    unsigned when;
    bool usual; // in a format that usually has not all of them
    void (*json)(const Record &record, Sink &sink);
    void (*tsv)(const Record &record, Sink &sink);
};

namespace {

void PutLine(const Record &record, Sink &sink)
{
    sink.PutNumber(record.line);
}

void PutCode(const Record &record, Sink &sink)
{
    sink.PutNumber(record.code);
}

void PutCodeName(const Record &record, Sink &sink)
{
    if (record.Accepted()) {
        sink.Put('0');
    } else {
        sink.Put(record.code == DT_OK ? record.error : CodeName(record.code));
    }
}

constexpr auto kHexPairs = [] {
    std::array<std::array<char, 2>, 256> pairs{};
    for (size_t byte = 0; byte < pairs.size(); ++byte) {
        pairs[byte] = {"0123456789abcdef"[byte >> 4], "0123456789abcdef"[byte & 15]};
    }
    return pairs;
}();

void PutHex(const Record &record, Sink &sink)
{
    char *at = sink.Room(2 * record.value.size());
    for (const char byte : record.value) {
        std::memcpy(at, kHexPairs[static_cast<uint8_t>(byte)].data(), 2);
        at += 2;
    }
    sink.End(at);
}

void PutQuotedHex(const Record &record, Sink &sink)
{
    sink.Put('"');
    PutHex(record, sink);
    sink.Put('"');
}

void PutReason(const Record &record, Sink &sink)
{
    sink.Put(Dumped(ToJson(record.why.reason)));
}

void PutReasonWords(const Record &record, Sink &sink)
{
    PutEscaped(sink, record.why.reason.words);
}

void PutJsonClosest(const Record &record, Sink &sink)
{
    PutJsonText(sink, record.why.closest);
}

void PutTsvClosest(const Record &record, Sink &sink)
{
    PutEscaped(sink, record.why.closest);
}

void PutPrinted(const Record &record, Sink &sink)
{
    if (record.prints) {
        PutJsonText(sink, record.printed);
    } else {
        sink.Put("null");
    }
}

// One of the texts of a record, in either format.
template <auto Member>
void PutJson(const Record &record, Sink &sink)
{
    PutJsonText(sink, record.*Member);
}

template <auto Member>
void PutTsv(const Record &record, Sink &sink)
{
    PutEscaped(sink, record.*Member);
}

constexpr Field kFields[] = {
    {"line", kAlways, true, PutLine, PutLine},
    {"type", kAlways, true, PutJson<&Record::type>, PutTsv<&Record::type>},
    {"text", kAlways, true, PutJson<&Record::text>, PutTsv<&Record::text>},
    {"code", kAlways, true, PutCode, PutCodeName},
    {"error", kRefused, false, PutJson<&Record::error>, PutTsv<&Record::error>},
    {"reason", kRefused, false, PutReason, PutReasonWords},
    {"closest", kWithClosest, false, PutJsonClosest, PutTsvClosest},
    {"kind", kWithKind, false, PutJson<&Record::kind>, PutTsv<&Record::kind>},
    {"value", kAccepted, true, PutQuotedHex, PutHex},
    {"printed", kAccepted, true, PutPrinted, PutTsv<&Record::printed>},
};

void WriteJson(const Output &output, const Record &record, Sink &sink)
{
    const unsigned kinds = KindsOf(record);
    const size_t from = sink.Size();
    for (const Column &column : output.columns) {
        if ((column.field->when & kinds) != 0) {
            std::memcpy(sink.Room(column.key.size()), column.key.data(), column.key.size());
            sink.Used(column.keyLength);
            column.field->json(record, sink);
        }
    }
    if (sink.Size() == from) {
        sink.Put(',');
    }
    sink.At(from) = '{'; // instead of the comma
    sink.Put("}\n");
}

void WriteTsv(const Output &output, const Record &record, Sink &sink)
{
    const unsigned kinds = KindsOf(record);
    for (const Column &column : output.columns) {
        if (&column != &output.columns.front()) {
            sink.Put('\t');
        }
        if ((column.field->when & kinds) != 0) {
            column.field->tsv(record, sink);
        }
    }
    sink.Put('\n');
}

struct Format {
    const char *name;
    void (*write)(const Output &output, const Record &record, Sink &sink);
    bool all; // whether it usually has all fields
};

constexpr Format kFormats[] = {{"jsonl", WriteJson, true}, {"tsv", WriteTsv, false}, {"none", nullptr, false}};

template <class Row, size_t Count>
std::vector<std::string> Names(const Row (&rows)[Count])
{
    std::vector<std::string> names;
    for (const Row &row : rows) {
        names.emplace_back(row.name);
    }
    return names;
}

template <class Row, size_t Count>
const Row &Named(const Row (&rows)[Count], const std::string &name)
{
    return *std::find_if(std::begin(rows), std::end(rows), [&name](const Row &row) { return row.name == name; });
}

Column MakeColumn(const Field &field)
{
    const std::string key = ",\"" + std::string(field.name) + "\":";
    Column column{&field, {}, key.size()};
    key.copy(column.key.data(), column.key.size());
    return column;
}

} // namespace

std::vector<std::string> FormatNames()
{
    return Names(kFormats);
}

std::vector<std::string> FieldNames()
{
    return Names(kFields);
}

Output MakeOutput(const std::string &formatName, const std::vector<std::string> &fields)
{
    const Format &format = Named(kFormats, formatName);
    Output output{format.write, {}};
    const auto add = [&output](const Field &field) { output.columns.push_back(MakeColumn(field)); };
    for (const std::string &name : fields) {
        add(Named(kFields, name));
    }
    for (const Field &field : kFields) {
        if (fields.empty() && (format.all || field.usual)) {
            add(field);
        }
    }
    return output;
}

} // namespace bgpdt
