// The section "Stored form" of a reference page, held against the layout that the plug-in publishes. Its layout tables
// are those with a column "field"; docs/reference/README.md tells how to read them. For a list the column of bytes is
// "bytes of an entry".
#ifndef BGP_TESTS_DOCS_STORED_FORM_H
#define BGP_TESTS_DOCS_STORED_FORM_H

#include "docs/subjects.h"

#include <optional>
#include <set>

namespace bgp::test {

// ------------------------------------------------------------------------------------------------------ what is said

struct SaidField {
    TableRow row;
    uint32_t first, last; // bytes
    std::string width, order;
    bool hasOrder;
    std::string name; // "" when no field stands there
    uint32_t element; // of an array, from 1; 0 for all of it
    uint32_t elements;
};

constexpr int kEveryValue = -1; // the column "bytes"
constexpr int kNoColumn = -2;

// Which values a column in front of "field" is about.
inline int VariantOf(const std::string &header)
{
    int number = kNoColumn;
    if (header == "bytes" || header == "bytes of an entry") {
        return kEveryValue;
    }
    return std::sscanf(header.c_str(), "%d", &number) == 1 && number >= 0 ? number : kNoColumn;
}

inline std::vector<Table> LayoutTables(const Page &page)
{
    std::vector<Table> tables;
    if (const Section *section = FindSection(page, "Stored form")) {
        for (const Table &table : section->tables) {
            if (Column(table, "field") >= 0) {
                tables.push_back(table);
            }
        }
    }
    return tables;
}

inline std::set<int> Variants(const std::vector<Table> &tables)
{
    std::set<int> variants;
    for (const Table &table : tables) {
        for (int i = 0; i < Column(table, "field"); ++i) {
            variants.insert(VariantOf(table.header.cells[i]));
        }
    }
    variants.erase(kEveryValue);
    variants.erase(kNoColumn);
    return variants;
}

inline std::vector<std::string> ColumnFaults(const Page &page, const std::vector<Table> &tables)
{
    std::vector<std::string> faults;
    for (const Table &table : tables) {
        for (int i = 0; i < Column(table, "field"); ++i) {
            if (VariantOf(table.header.cells[i]) == kNoColumn) {
                faults.push_back(At(page, table.header) + "no column of bytes: " + table.header.cells[i]);
            }
        }
    }
    return faults;
}

// "`RtValue[3..8]`" is elements 3 to 8 of RtValue.
inline void ReadName(const std::string &cell, SaidField &field)
{
    const std::vector<std::string> spans = CodeSpans(cell);
    field.name = spans.empty() ? "" : spans[0];
    const size_t bracket = field.name.find('[');
    if (bracket == std::string::npos) {
        return;
    }
    uint32_t last = 0;
    const int read = std::sscanf(field.name.c_str() + bracket, "[%u..%u]", &field.element, &last);
    field.elements = read == 2 ? last - field.element + 1 : 1;
    field.name.resize(bracket);
}

// False when it is no line about bytes.
inline bool ReadField(const Table &table, const TableRow &row, int place, SaidField &field)
{
    const int width = Column(table, "width");
    const int order = Column(table, "order");
    const int lua = Column(table, "Lua");
    field = {row, 0, 0, "", "", order >= 0, "", 0, 0};
    const int read = std::sscanf(row.cells[place].c_str(), "%u-%u", &field.first, &field.last);
    if (read < 1 || width < 0) {
        return false;
    }
    field.last = read == 1 ? field.first : field.last;
    field.width = row.cells[width];
    field.order = order < 0 ? "" : row.cells[order];
    ReadName(row.cells[lua < 0 ? Column(table, "field") : lua], field);
    return true;
}

struct Said {
    std::vector<std::string> faults;
    std::vector<SaidField> fields;
};

// What the page says of values of one variant.
inline Said Read(const Page &page, const std::vector<Table> &tables, int variant)
{
    Said said;
    for (const Table &table : tables) {
        for (const TableRow &row : table.rows) {
            if (row.cells.size() != table.header.cells.size()) {
                said.faults.push_back(At(page, row) + "not as many cells as the table has columns");
                continue;
            }
            for (int i = 0; i < Column(table, "field"); ++i) {
                const int about = VariantOf(table.header.cells[i]);
                SaidField field;
                if ((about != kEveryValue && about != variant) || row.cells[i].empty()) {
                    continue;
                }
                if (ReadField(table, row, i, field)) {
                    said.fields.push_back(field);
                } else {
                    said.faults.push_back(At(page, row) + "cannot be read");
                }
            }
        }
    }
    return said;
}

// -------------------------------------------------------------------------------------------------- what is published

inline std::string LayoutValue(int word, int behind)
{
    std::string value = Bytes(Le32(static_cast<uint32_t>(word)));
    value.resize(4096);
    value[4] = static_cast<char>(behind);
    return value;
}

inline const BgpLayout *Describe(uint32_t typeId, const std::string &value)
{
    return Bgp_DescribeValue(typeId, value.data(), static_cast<uint32_t>(value.size()));
}

// The number that picks the layout is the first word; behind a sub-type that is given it is the byte after that.
inline const BgpLayout *LayoutOf(const std::vector<Subject> &subjects, int variant)
{
    const bool isType = subjects.front().subType == kNoSubType;
    const uint32_t typeId = isType ? subjects.front().row.TypeId : kComposite;
    const bool subTypeGiven = subjects.size() == (isType ? 2u : 1u) && subjects.back().subType != kNoSubType;
    return subTypeGiven ? Describe(typeId, LayoutValue(subjects.back().subType, std::max(variant, 0)))
                        : Describe(typeId, LayoutValue(std::max(variant, 0), 0));
}

inline bool IsAbout(const std::vector<Subject> &subjects, int variant)
{
    return subjects.front().subType == kNoSubType ||
           std::any_of(subjects.begin(), subjects.end(), [variant](const Subject &s) { return s.subType == variant; });
}

struct Published {
    uint32_t length;
    std::vector<BgpField> fields;
};

inline std::optional<Published> Copied(const BgpLayout *layout)
{
    return layout == nullptr
               ? std::nullopt
               : std::optional(Published{layout->Length, {layout->Fields, layout->Fields + layout->FieldCount}});
}

// What all sub-types of the composite have in common.
inline Published CompositeLayout()
{
    Published common = *Copied(Describe(kComposite, LayoutValue(0, 0)));
    for (uint32_t subType = 0; subType < BOL_PREFIX_SUBTYPES; ++subType) {
        const Published one = *Copied(Describe(kComposite, LayoutValue(static_cast<int>(subType), 1)));
        std::erase_if(common.fields, [&one](const BgpField &field) {
            return std::none_of(one.fields.begin(), one.fields.end(), [&field](const BgpField &other) {
                return std::string_view(other.Name) == field.Name && other.Offset == field.Offset &&
                       other.Width == field.Width && other.Count == field.Count;
            });
        });
    }
    return common;
}

// ---------------------------------------------------------------------------------------------------- holding together

struct Width {
    const char *word;
    uint32_t bytes;
    BgpFieldKind kind;
};

constexpr Width kWidths[] = {
    {"u8", 1, BGP_FIELD_NUMBER},  {"u16", 2, BGP_FIELD_NUMBER},       {"u32", 4, BGP_FIELD_NUMBER},
    {"u64", 8, BGP_FIELD_NUMBER}, {"u8", 1, BGP_FIELD_BYTES},         {"u16", 2, BGP_FIELD_BYTES},
    {"u32", 4, BGP_FIELD_IPV4},   {"dotted", 4, BGP_FIELD_IPV4},      {"IPv6", 16, BGP_FIELD_BYTES},
    {"AS", 8, BGP_FIELD_AS},      {"address", 21, BGP_FIELD_ADDRESS}, {"IGP id", 50, BGP_FIELD_IGP_ID},
};

inline bool IsWidth(const std::string &word, uint32_t bytes, const BgpField &field)
{
    if (field.Kind == BGP_FIELD_TEXT) {
        return word == "char[" + std::to_string(bytes) + ']';
    }
    if (field.Kind == BGP_FIELD_BYTES && word == std::to_string(bytes)) {
        return true;
    }
    return std::any_of(std::begin(kWidths), std::end(kWidths), [&](const Width &width) {
        return word == width.word && bytes == width.bytes && field.Kind == width.kind &&
               (field.Kind != BGP_FIELD_NUMBER || bytes == field.Width);
    });
}

inline const char *OrderOf(const BgpField &field, uint32_t bytes)
{
    return bytes == 1 ? "" : field.Kind == BGP_FIELD_BYTES ? "network" : "host";
}

inline uint32_t End(const BgpField &field)
{
    return field.Offset + uint32_t{field.Width} * field.Count;
}

inline const BgpField *FindField(const Published &published, const std::string &name)
{
    for (const BgpField &field : published.fields) {
        if (name == field.Name) {
            return &field;
        }
    }
    return nullptr;
}

// What is wrong with one row; empty when nothing is.
inline std::string RowFault(const SaidField &said, const Published &published)
{
    const uint32_t bytes = said.last - said.first + 1;
    if (said.name.empty()) {
        for (const BgpField &field : published.fields) {
            if (said.first < End(field) && field.Offset <= said.last) {
                return std::string("does not name ") + field.Name;
            }
        }
        return "";
    }
    const BgpField *field = FindField(published, said.name);
    if (field == nullptr) {
        return "no field " + said.name;
    }
    const uint32_t offset = field->Offset + (said.element == 0 ? 0 : (said.element - 1) * field->Width);
    const uint32_t count = said.element == 0 ? field->Count : said.elements;
    if (said.first != offset || bytes != count * field->Width) {
        return said.name + " stands at " + std::to_string(offset) + ", " + std::to_string(count * field->Width) +
               " bytes";
    }
    if (!IsWidth(said.width, bytes, *field)) {
        return said.name + " is not of width " + said.width;
    }
    return said.hasOrder && said.order != OrderOf(*field, bytes) ? said.name + " is not in this order" : "";
}

// Bytes that are told twice, bytes that are not told, fields that are not.
inline std::vector<std::string> GapFaults(std::vector<SaidField> fields, const Published &published, bool toTheEnd)
{
    std::vector<std::string> faults;
    std::sort(fields.begin(), fields.end(), [](const SaidField &a, const SaidField &b) { return a.first < b.first; });
    uint32_t next = 0;
    for (const SaidField &field : fields) {
        if (field.first != next) {
            faults.push_back("byte " + std::to_string(next) + " is not told, or told twice");
        }
        next = field.last + 1;
    }
    if (toTheEnd ? next != published.length : next > published.length) {
        faults.push_back("the last byte told is " + std::to_string(next - 1));
    }
    for (const BgpField &field : published.fields) {
        uint32_t told = 0;
        for (const SaidField &said : fields) {
            told += said.name == field.Name ? said.last - said.first + 1 : 0;
        }
        if (told != End(field) - field.Offset) {
            faults.push_back("not all of " + std::string(field.Name) + " is told");
        }
    }
    return faults;
}

inline std::vector<std::string> LengthFaults(const Page &page, const std::vector<Subject> &subjects,
                                             const Published &published, bool isList)
{
    const StoredLength said = StoredLengthOf(page);
    std::vector<std::string> faults;
    if (said.bytes == 0) {
        faults.push_back("the length of a value does not stand in front");
    } else if (isList ? said.bytes % published.length != 0 || said.bytes == published.length
                      : said.bytes != published.length) {
        faults.push_back("the length is not " + std::to_string(said.bytes));
    }
    for (const Subject &subject : subjects) {
        const uint32_t registered = subject.subType == kNoSubType ? subject.row.BinaryLength : said.bytes;
        if ((subject.subType == kNoSubType || subjects.front().subType != kNoSubType) &&
            said.registered != registered) {
            faults.push_back("the registered length of " + subject.name + " is not " + std::to_string(said.registered));
        }
    }
    return faults;
}

struct Form {
    std::vector<std::string> faults;
    size_t fields = 0; // published ones that were compared
};

inline void HoldVariant(const Page &page, const std::vector<Table> &tables, int variant, const Published &published,
                        Form &form)
{
    const std::string who = page.name + (variant < 0 ? ": " : ", " + std::to_string(variant) + ": ");
    const Said said = Read(page, tables, variant);
    form.faults.insert(form.faults.end(), said.faults.begin(), said.faults.end());
    for (const SaidField &field : said.fields) {
        if (const std::string fault = RowFault(field, published); !fault.empty()) {
            form.faults.push_back(At(page, field.row) + fault);
        }
    }
    for (const std::string &fault : GapFaults(said.fields, published, variant < 0)) {
        form.faults.push_back(who + fault);
    }
    form.fields += published.fields.size();
}

using Layouts = std::map<int, Published>; // by variant

// Of a page without a column for each variant. A type without a published layout has a value without fields.
inline Published OnlyLayout(const std::vector<Subject> &subjects)
{
    const bool isComposite = subjects.size() == 1 && subjects.front().row.TypeId == kComposite;
    const Published none{subjects.front().row.BinaryLength, {}};
    return isComposite ? CompositeLayout() : Copied(LayoutOf(subjects, kEveryValue)).value_or(none);
}

inline Layouts LayoutsOf(const std::vector<Subject> &subjects, bool byVariant)
{
    if (!byVariant) {
        return {{kEveryValue, OnlyLayout(subjects)}};
    }
    constexpr int kMostVariants = 256;
    Layouts layouts;
    for (int variant = 0; variant < kMostVariants; ++variant) {
        const std::optional<Published> published = Copied(LayoutOf(subjects, variant));
        if (published && IsAbout(subjects, variant)) {
            layouts[variant] = *published;
        }
    }
    return layouts;
}

inline std::vector<std::string> VariantFaults(const std::set<int> &said, const Layouts &layouts)
{
    std::vector<std::string> faults;
    for (const int variant : said) {
        if (!layouts.contains(variant)) {
            faults.push_back("there is no " + std::to_string(variant));
        }
    }
    for (const auto &[variant, published] : layouts) {
        if (!said.empty() && !said.contains(variant)) {
            faults.push_back("no column tells of " + std::to_string(variant));
        }
    }
    return faults;
}

inline Form StoredForm(const Page &page)
{
    const std::vector<Subject> subjects = SubjectsOf(page);
    const std::vector<Table> tables = LayoutTables(page);
    if (subjects.empty() || tables.empty()) {
        return {{page.name + ": no table in a section \"Stored form\", or the page of no type"}, 0};
    }
    const std::set<int> variants = Variants(tables);
    const Layouts layouts = LayoutsOf(subjects, !variants.empty());
    Form form{ColumnFaults(page, tables), 0};
    std::vector<std::string> faults = VariantFaults(variants, layouts);
    for (const auto &[variant, published] : layouts) {
        HoldVariant(page, tables, variant, published, form);
    }
    const bool isList = Column(tables[0], "bytes of an entry") >= 0;
    for (const auto &[variant, published] : layouts) {
        for (const std::string &fault : LengthFaults(page, subjects, published, isList)) {
            faults.push_back(fault);
        }
    }
    for (const std::string &fault : faults) {
        form.faults.push_back(page.name + ": " + fault);
    }
    return form;
}

} // namespace bgp::test

#endif
