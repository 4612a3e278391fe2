// The examples of the reference pages, run: the tables of the section "Examples", which docs/reference/README.md tells
// how to read. Every row is run for all that the page is about; of several sub-types, for the one that the value names.
// On a page of sub-types alone texts are typed and printed as BOLPREFIX too.
#ifndef BGP_TESTS_DOCS_EXAMPLES_H
#define BGP_TESTS_DOCS_EXAMPLES_H

#include "docs/notation.h"
#include "docs/subjects.h"

#include <set>

namespace bgp::test {

// Operations of types and sub-types: "ASNUM Check".
using Operations = std::set<std::string>;

struct Report {
    std::vector<std::string> faults;
    Operations covered;
    size_t rows = 0;
};

struct Context {
    const Page &page;
    std::vector<Subject> subjects;
    uint32_t length; // bytes of a value
    Report report;
};

inline void Complain(Context &context, const TableRow &row, const std::string &what)
{
    context.report.faults.push_back(At(context.page, row) + what);
}

inline void Cover(Context &context, const Subject &subject, const char *operation)
{
    context.report.covered.insert(subject.name + ' ' + operation);
}

// ----------------------------------------------------------------------------------------------------------- values

// Of sub-types only the one that the value's first word names.
inline bool Concerns(const std::string &value, const Subject &subject)
{
    return subject.subType == kNoSubType || value.substr(0, 8) == Le32(static_cast<uint32_t>(subject.subType));
}

inline std::optional<std::string> TypedValue(const Context &context, const std::string &text)
{
    for (const Subject &subject : context.subjects) {
        if (subject.row.FormatIn != nullptr) {
            const In in = FormatIn(subject.row, Meant(text));
            return in.code == DT_OK && in.bufferSet ? std::optional(in.value) : std::nullopt;
        }
    }
    return std::nullopt;
}

// In hex; nothing when the page gives no value.
inline std::optional<std::string> GivenValue(const Context &context, const std::string &said)
{
    if (said.size() >= 2 && said.front() == '"' && said.back() == '"') {
        return TypedValue(context, said.substr(1, said.size() - 2));
    }
    const std::optional<PageBytes> bytes = ReadBytes(said);
    if (!bytes) {
        return std::nullopt;
    }
    return bytes->open && bytes->hex.size() < 2 * size_t{context.length} ? Padded(bytes->hex, context.length)
                                                                         : bytes->hex;
}

// -------------------------------------------------------------------------------------- | Text | Stored | Prints |

struct TextExample {
    std::string text, stored, prints;
    bool hasPrints; // does the table have the column?
};

// For whom a text is typed and a value printed.
inline std::vector<Subject> Typing(const Context &context)
{
    std::vector<Subject> typing = context.subjects;
    if (typing.front().subType != kNoSubType) {
        typing.insert(typing.begin(), TypeSubject(Row("BOLPREFIX")));
    }
    return typing;
}

// What is wrong with the text; empty when nothing is.
inline std::string TextFault(const TextExample &example, const In &in)
{
    if (example.stored == "refused") {
        return in.code == DT_OK ? "accepts" : "";
    }
    if (in.code != DT_OK) {
        return "refuses";
    }
    return ReadBytes(example.stored) && Agrees(example.stored, in.value) ? "" : "stores " + in.value + " for";
}

// Gives the value that the text stands for.
inline std::optional<std::string> RunText(Context &context, const TableRow &row, const TextExample &example)
{
    std::optional<std::string> value;
    bool typed = false;
    for (const Subject &subject : Typing(context)) {
        if (subject.row.FormatIn == nullptr || (value && !Concerns(*value, subject))) {
            continue;
        }
        typed = true;
        const In in = FormatIn(subject.row, Meant(example.text));
        if (const std::string fault = TextFault(example, in); !fault.empty()) {
            Complain(context, row, subject.name + ' ' + fault + ' ' + example.text);
        } else if (in.code == DT_OK) {
            value = in.value;
            Cover(context, subject, "FormatIn");
        }
    }
    if (!typed) {
        Complain(context, row, "nothing can be typed here");
    }
    return value;
}

inline void RunPrint(Context &context, const TableRow &row, const std::string &value, const std::string &prints)
{
    bool printed = false;
    for (const Subject &subject : Typing(context)) {
        if (subject.row.FormatOut == nullptr || !Concerns(value, subject)) {
            continue;
        }
        printed = true;
        const Out out = FormatOut(subject.row, value);
        if (out.code != DT_OK) {
            Complain(context, row, subject.name + " does not print " + value);
        } else if (Shown(out.text) != prints) {
            Complain(context, row, subject.name + " prints " + Shown(out.text));
        } else {
            Cover(context, subject, "FormatOut");
        }
    }
    if (!printed) {
        Complain(context, row, "nothing prints here");
    }
}

inline void RunTextRow(Context &context, const TableRow &row, const TextExample &example)
{
    const std::optional<std::string> value =
        example.text.empty() ? GivenValue(context, example.stored) : RunText(context, row, example);
    if (example.text.empty() && !value) {
        Complain(context, row, "no value: " + example.stored);
    }
    if (value && example.hasPrints) {
        RunPrint(context, row, *value, example.prints);
    }
}

inline void RunTexts(Context &context, const Table &table)
{
    const int text = Column(table, "Text");
    const int stored = Column(table, "Stored");
    const int prints = Column(table, "Prints");
    for (const TableRow &row : table.rows) {
        const auto cell = [&row](int column) { return column < 0 ? std::string() : Plain(row.cells[column]); };
        RunTextRow(context, row, {cell(text), cell(stored), cell(prints), prints >= 0});
    }
}

// ------------------------------------------------------------------------------------ | Operation | Given | Answer |

struct Call {
    uint8_t mode;
    std::vector<std::string> given; // values in hex, a text, a Lua expression
    uint32_t length;                // bytes of a value
};

inline constexpr const char *kNothing = "nothing";

inline std::string FormatInAnswer(const Subject &subject, const Call &call)
{
    const In in = FormatIn(subject.row, Meant(call.given[0]), call.mode);
    return in.code != DT_OK ? CodeName(in.code) : in.bufferSet ? in.value : kNothing;
}

inline std::string FormatOutAnswer(const Subject &subject, const Call &call)
{
    const Out out = FormatOut(subject.row, call.given[0], call.mode);
    if (out.code != DT_OK || out.bytes.empty()) {
        return out.code != DT_OK ? CodeName(out.code) : kNothing;
    }
    return out.typeId == DT_TYPE_TEXT ? '"' + Shown(out.text) + '"' : out.bytes;
}

inline std::string CheckAnswer(const Subject &subject, const Call &call)
{
    return CodeName(Check(subject.row, call.given[0]));
}

inline std::string HelpAnswer(const Subject &subject, const Call &call)
{
    const std::string soFar = call.given.empty() ? "" : Meant(call.given[0]);
    const Helped helped = Help(subject.row, call.mode, 11, 22, soFar.c_str());
    return helped.code != DT_OK ? CodeName(helped.code) : helped.supplied ? helped.text : kNothing;
}

inline std::string CompareAnswer(const Subject &subject, const Call &call)
{
    const int32_t order = Compare(subject.row, call.given[0], call.given[1]);
    return order == 0 ? "0" : CodeName(static_cast<uint32_t>(order));
}

inline std::string LuaSetAnswer(const Subject &subject, const Call &call)
{
    const LuaOut out = LuaSet(subject.row, call.given[0], static_cast<uint16_t>(call.given[0].size() / 2));
    return out.code == DT_OK ? out.table : CodeName(out.code);
}

inline std::string ReadLua(const DataTypeDescriptor &row, const Call &call)
{
    const LuaIn in = LuaGetInto(row, call.given[0], Padded("", call.length));
    return in.code == DT_OK ? in.value : CodeName(in.code);
}

inline std::string LuaGetAnswer(const Subject &subject, const Call &call)
{
    return ReadLua(subject.row, call);
}

inline std::string ReaderAnswer(const Subject &, const Call &call)
{
    return ReadLua(Row("BOLPREFIX"), call);
}

inline std::string EndianAnswer(const Subject &subject, const Call &call)
{
    const Swapped swapped = Endian(subject.row, call.given[0]);
    return swapped.code == DT_OK ? swapped.value : CodeName(swapped.code);
}

enum class Given : uint8_t { kText, kValue, kLua };

// When a row tells of one sub-type and not of all that the page is about.
enum class Names : uint8_t {
    kNone,
    kByValue, // the given value names it
    kByAnswer // the bytes that come out do
};

struct Operation {
    const char *word;
    bool (*has)(const Subject &subject);
    std::string (*answer)(const Subject &subject, const Call &call);
    Given given;
    size_t least, most; // how many are given
    Names names;
    bool takesRefusals; // is an example of a refusal enough?
};

template <auto Slot>
bool Offers(const Subject &subject)
{
    return subject.row.*Slot != nullptr;
}

inline bool IsSubType(const Subject &subject)
{
    return subject.subType != kNoSubType;
}

inline bool IsTypeWithLuaGet(const Subject &subject)
{
    return !IsSubType(subject) && subject.row.LuaGet != nullptr;
}

using Slots = DataTypeDescriptor;

// clang-format off
inline constexpr Operation kOperations[] = {
    {"FormatIn",  Offers<&Slots::FormatIn>,  FormatInAnswer,  Given::kText,  1, 1, Names::kNone, false},
    {"FormatOut", Offers<&Slots::FormatOut>, FormatOutAnswer, Given::kValue, 1, 1, Names::kByValue, false},
    {"Check",     Offers<&Slots::Check>,     CheckAnswer,     Given::kValue, 1, 1, Names::kNone, true},
    {"Help",      Offers<&Slots::Help>,      HelpAnswer,      Given::kText,  0, 1, Names::kNone, false},
    {"Compare",   Offers<&Slots::Compare>,   CompareAnswer,   Given::kValue, 2, 2, Names::kNone, true},
    {"LuaSet",    Offers<&Slots::LuaSet>,    LuaSetAnswer,    Given::kValue, 1, 1, Names::kByValue, false},
    {"LuaGet",    Offers<&Slots::LuaGet>,    LuaGetAnswer,    Given::kLua,   1, 1, Names::kNone, true},
    {"Reader",    IsSubType,                 ReaderAnswer,    Given::kLua,   1, 1, Names::kByAnswer, false},
    {"Endian",    Offers<&Slots::Endian>,    EndianAnswer,    Given::kValue, 1, 1, Names::kNone, false},
};

// How a script's table comes back: to a type by LuaGet, to a sub-type by its reader.
inline constexpr Operation kWayBack[] = {
    {"LuaGet", IsTypeWithLuaGet, LuaGetAnswer, Given::kLua, 1, 1, Names::kNone, true},
    {"Reader", IsSubType,        ReaderAnswer, Given::kLua, 1, 1, Names::kByAnswer, false},
};
// clang-format on

inline const Operation *FindOperation(std::string_view word)
{
    for (const Operation &operation : kOperations) {
        if (word == operation.word) {
            return &operation;
        }
    }
    return nullptr;
}

// Every operation that the plug-in's own rows have.
inline Operations Demanded(const std::vector<Subject> &subjects)
{
    Operations demanded;
    for (const Subject &subject : subjects) {
        for (const Operation &operation : kOperations) {
            if (operation.has(subject)) {
                demanded.insert(subject.name + ' ' + operation.word);
            }
        }
    }
    return demanded;
}

inline bool HasSeveralSubTypes(const Context &context)
{
    return 1 < std::count_if(context.subjects.begin(), context.subjects.end(),
                             [](const Subject &subject) { return subject.subType != kNoSubType; });
}

// Runs one operation for all that it concerns.
inline void RunOperation(Context &context, const TableRow &row, const Operation &operation, const Call &call,
                         const std::string &said)
{
    bool asked = false;
    for (const Subject &subject : context.subjects) {
        const bool picks = operation.names == Names::kByValue && HasSeveralSubTypes(context);
        if (!operation.has(subject) || (picks && !Concerns(call.given[0], subject))) {
            continue;
        }
        const std::string answer = operation.answer(subject, call);
        if (operation.names == Names::kByAnswer && ReadBytes(answer) && !Concerns(answer, subject)) {
            continue;
        }
        asked = true;
        if (!Agrees(said, answer)) {
            Complain(context, row, subject.name + ' ' + operation.word + " answers " + answer);
        } else if (operation.takesRefusals || answer.rfind("DT_ERR", 0) != 0) {
            Cover(context, subject, operation.word);
        }
    }
    if (!asked) {
        Complain(context, row, std::string("nothing here has ") + operation.word);
    }
}

inline void RunBothWays(Context &context, const TableRow &row, const Call &call, const std::string &said)
{
    RunOperation(context, row, *FindOperation("LuaSet"), call, said);
    for (const Operation &back : kWayBack) {
        if (std::any_of(context.subjects.begin(), context.subjects.end(), back.has)) {
            RunOperation(context, row, back, {call.mode, {said}, call.length}, call.given[0]);
        }
    }
}

// "Help, mode 6".
struct OperationCell {
    std::string word;
    uint8_t mode;
};

inline OperationCell ReadOperationCell(const std::string &cell)
{
    const size_t comma = cell.find(", mode ");
    return comma == std::string::npos
               ? OperationCell{cell, 1}
               : OperationCell{cell.substr(0, comma), static_cast<uint8_t>(std::atoi(cell.c_str() + comma + 7))};
}

// False when the cell does not hold what the operation is given.
inline bool ReadGiven(const Context &context, const Operation &operation, const std::string &cell, Call &call)
{
    const std::vector<std::string> spans = CodeSpans(cell);
    if (spans.size() < operation.least || spans.size() > operation.most || (spans.empty() && !cell.empty())) {
        return false;
    }
    for (const std::string &span : spans) {
        const std::optional<std::string> given = operation.given == Given::kValue ? GivenValue(context, span) : span;
        if (!given) {
            return false;
        }
        call.given.push_back(*given);
    }
    return call.given.size() != 2 || call.given[0].size() == call.given[1].size();
}

inline void RunOperationRow(Context &context, const TableRow &row)
{
    const auto [word, mode] = ReadOperationCell(row.cells[0]);
    const bool bothWays = word == "Lua";
    const Operation *operation = FindOperation(bothWays ? "LuaSet" : word);
    if (operation == nullptr) {
        Complain(context, row, "no operation: " + word);
        return;
    }
    Call call{mode, {}, context.length};
    if (!ReadGiven(context, *operation, row.cells[1], call)) {
        Complain(context, row, word + " cannot be given " + row.cells[1]);
        return;
    }
    const std::string said = Plain(row.cells[2]);
    if (bothWays) {
        RunBothWays(context, row, call, said);
    } else {
        RunOperation(context, row, *operation, call, said);
    }
}

// ------------------------------------------------------------------------------------------------------------- pages

inline bool IsTextTable(const std::vector<std::string> &header)
{
    using Header = std::vector<std::string>;
    return header == Header{"Text", "Stored", "Prints"} || header == Header{"Text", "Stored"} ||
           header == Header{"Stored", "Prints"};
}

inline void RunTable(Context &context, Table table)
{
    const std::vector<std::string> &header = table.header.cells;
    context.report.rows += table.rows.size();
    std::erase_if(table.rows, [&](const TableRow &row) {
        if (row.cells.size() != header.size()) {
            Complain(context, row, "not as many cells as the table has columns");
        }
        return row.cells.size() != header.size();
    });
    if (IsTextTable(header)) {
        RunTexts(context, table);
    } else if (header == std::vector<std::string>{"Operation", "Given", "Answer"}) {
        for (const TableRow &row : table.rows) {
            RunOperationRow(context, row);
        }
    } else {
        Complain(context, table.header, "no table of examples");
    }
}

inline Report RunExamples(const Page &page)
{
    Context context{page, SubjectsOf(page), StoredLengthOf(page).bytes, {}};
    const Section *section = FindSection(page, "Examples");
    if (context.subjects.empty()) {
        context.report.faults.push_back(page.name + ": the page of no type");
    } else if (section == nullptr) {
        context.report.faults.push_back(page.name + ": no section \"Examples\"");
    } else {
        for (const Table &table : section->tables) {
            RunTable(context, table);
        }
    }
    for (const std::string &operation : Demanded(context.subjects)) {
        if (!context.report.covered.contains(operation)) {
            context.report.faults.push_back(page.name + ": no example of " + operation);
        }
    }
    return context.report;
}

} // namespace bgp::test

#endif
