#include "record.h"

#include "explain/explain.h"
#include "report.h"

namespace bgpdt {

namespace {

constexpr uint64_t kRound = 16; // records whose results share the memory

} // namespace

// Of a type with kinds any value has one, zeros too.
KnownType::KnownType(const DataTypeDescriptor &descriptor)
    : Subject(descriptor),
      hasKinds(!explain::KindOf(PlugInFunctions(), descriptor, std::string(facts->ValueLength, '\0')).empty())
{
}

const Record &Converter::Convert(const Line &line, const Reading &reading)
{
    if (++converted_ % kRound == 0) {
        results_.Empty();
    }
    Begin(line.number);
    Split(line.text, reading);
    if (line.cut) {
        Refuse(DT_ERR_TOO_LONG, "the line is too long");
    }
    if (!record_.Accepted()) {
        return record_;
    }
    if (const KnownType *type = reading.type ? &*reading.type : Find(record_.type)) {
        ConvertText(*type, line, reading.mode);
    } else {
        Refuse(DT_ERR_TYPE_MISMATCH, "no such type");
    }
    return record_;
}

// A new record in the memory of the old one.
void Converter::Begin(uint64_t line)
{
    if (!record_.Accepted()) {
        record_.error.clear();
        record_.why = {};
    }
    record_.line = line;
    record_.code = DT_OK;
    record_.kind.clear();
    record_.value = {};
    record_.prints = false;
    record_.printed = {};
}

void Converter::Split(std::string_view line, const Reading &reading)
{
    record_.type = reading.typeName;
    record_.text = line;
    record_.column = 1;
    if (reading.type) {
        return;
    }
    if (const size_t tab = line.find('\t'); tab != line.npos) {
        record_.type = line.substr(0, tab);
        record_.text = line.substr(tab + 1);
        record_.column = tab + 2;
    } else {
        Refuse(DT_ERR_INVALID_PARAM, "no tab between type and text");
    }
}

void Converter::Refuse(uint32_t code, std::string_view error)
{
    record_.code = code;
    record_.error = error;
}

// Null when there is no such type. Lines of one type follow each other as a rule, so the latest is kept.
const KnownType *Converter::Find(std::string_view name)
{
    if (!found_ || name != foundName_) {
        const DataTypeDescriptor *row = FindType(name);
        if (row == nullptr) {
            return nullptr;
        }
        found_.emplace(*row);
        foundName_ = name;
    }
    return &*found_;
}

void Converter::ConvertText(const KnownType &type, const Line &line, int mode)
{
    const DataTypeDescriptor &row = *type.row;
    const std::string_view text = record_.text;
    if (row.FormatIn == nullptr) {
        return Refuse(DT_ERR_INVALID_PARAM, "the type cannot be typed in");
    }
    if (line.mayHaveNul && text.find('\0') != text.npos) {
        return Refuse(DT_ERR_INVALID_VALUE, "a NUL character in the text");
    }
    const uint8_t formatMode = mode < 0 ? type.facts->TypingMode : static_cast<uint8_t>(mode);
    text_[text.copy(text_.data(), text.size())] = '\0';
    const ParsedThere parsed = Parse(results_, type, text_.data(), text.size(), formatMode);
    if (parsed.code != DT_OK) {
        record_.why = WhyRefused(row, std::string(text), formatMode);
        return Refuse(parsed.code, CodeName(parsed.code));
    }
    if (parsed.NoValue()) {
        return Refuse(parsed.code, kNoValue);
    }
    record_.value = parsed.value;
    if (type.hasKinds) {
        record_.kind = explain::KindOf(PlugInFunctions(), row, std::string(parsed.value));
    }
    if (row.FormatOut != nullptr) {
        const PrintedThere printed = Print(results_, type, parsed.value, formatMode);
        record_.prints = printed.code == DT_OK;
        record_.printed = printed.text;
    }
}

namespace {

// FILE:LINE:COLUMN where the type tells a place, else FILE:LINE.
std::string Place(const Record &record, const std::string &file)
{
    const explain::Reason &reason = record.why.reason;
    return Escaped(file) + ':' + std::to_string(record.line) +
           (reason.placed ? ':' + std::to_string(record.column + reason.offset) : "");
}

} // namespace

std::string Report(const Record &record, const std::string &file)
{
    const DataTypeDescriptor *type = FindType(record.type);
    const bool byCode = record.error == CodeName(record.code);
    const Refused refused{record.code, record.error, byCode ? CodeMeaning(record.code) : "",
                          type == nullptr ? "" : Help(*type, std::string(record.text)), record.why};
    return Place(record, file) + ": " + Headline(record.type, record.text, refused) + '\n';
}

} // namespace bgpdt
