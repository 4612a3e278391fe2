// What a reference page is about: rows of the plug-in, and rows of the composite type's sub-types.
//
// A page bears the name of its type. Sub-types have the page that the table "Sub-types" of BOLPREFIX.md names. A page
// of neither lists its types in a table | name | type id |.
#ifndef BGP_TESTS_DOCS_SUBJECTS_H
#define BGP_TESTS_DOCS_SUBJECTS_H

#include "docs/page.h"
#include "support/harness.h"

#include <map>

namespace bgp::test {

inline constexpr uint16_t kComposite = 279;
inline constexpr int kNoSubType = -1;

struct Subject {
    std::string name; // "ASNUM", "BOLPREFIX EVN"
    DataTypeDescriptor row;
    int subType; // of the composite
};

inline Subject TypeSubject(const DataTypeDescriptor &row)
{
    return {row.Name, row, kNoSubType};
}

inline Subject SubTypeSubject(const BolPrefixSubtypeEntry &entry)
{
    return {std::string("BOLPREFIX ") + entry.Name, Row(entry), static_cast<int>(entry.SubType)};
}

// Everything that must have a page.
inline std::vector<Subject> AllSubjects()
{
    std::vector<Subject> subjects;
    for (const DataTypeDescriptor *row : host::Rows()) {
        subjects.push_back(TypeSubject(*row));
    }
    for (const BolPrefixSubtypeEntry &entry : g_astBOL_PREFIX_ProcTable) {
        subjects.push_back(SubTypeSubject(entry));
    }
    return subjects;
}

// "[EVNPREFIX](EVNPREFIX.md)" leads to "EVNPREFIX.md".
inline std::string LinkedPage(const std::string &cell)
{
    const size_t open = cell.find("](");
    return open == std::string::npos ? "" : cell.substr(open + 2, cell.find(')', open) - open - 2);
}

// The page of each sub-type name.
inline std::map<std::string, std::string> SubTypePages()
{
    std::map<std::string, std::string> pages;
    const Page composite = ReadMarkdown("BOLPREFIX.md", ReadFile(kPages / "BOLPREFIX.md"));
    const Section *section = FindSection(composite, "Sub-types");
    if (section == nullptr || section->tables.empty()) {
        return pages;
    }
    const Table &table = section->tables[0];
    const int name = Column(table, "name");
    const int page = Column(table, "page");
    for (const TableRow &row : table.rows) {
        if (name >= 0 && page >= 0 && row.cells.size() == table.header.cells.size()) {
            pages[Plain(row.cells[name])] = LinkedPage(row.cells[page]);
        }
    }
    return pages;
}

// The types of a table | name | type id |, where name and id belong together.
inline std::vector<Subject> ListedTypes(const Page &page)
{
    std::vector<Subject> subjects;
    for (const Section &section : page.sections) {
        for (const Table &table : section.tables) {
            if (table.header.cells != std::vector<std::string>{"name", "type id"}) {
                continue;
            }
            for (const TableRow &row : table.rows) {
                const DataTypeDescriptor *type = host::FindRow(row.cells[0]);
                if (type != nullptr && row.cells.size() == 2 && std::to_string(type->TypeId) == row.cells[1]) {
                    subjects.push_back(TypeSubject(*type));
                }
            }
        }
    }
    return subjects;
}

inline std::vector<Subject> SubjectsOf(const Page &page)
{
    std::vector<Subject> subjects;
    const std::string stem = page.name.substr(0, page.name.find(".md"));
    if (const DataTypeDescriptor *row = host::FindRow(stem); row != nullptr) {
        subjects.push_back(TypeSubject(*row));
    }
    const std::map<std::string, std::string> pages = SubTypePages();
    for (const BolPrefixSubtypeEntry &entry : g_astBOL_PREFIX_ProcTable) {
        const auto found = pages.find(entry.Name);
        if (found != pages.end() && found->second == page.name) {
            subjects.push_back(SubTypeSubject(entry));
        }
    }
    return subjects.empty() ? ListedTypes(page) : subjects;
}

// "12 bytes." or "89 bytes; the registered length is 85." begins the section "Stored form".
struct StoredLength {
    uint32_t bytes;      // that the operations work on; 0 when the page does not tell
    uint32_t registered; // what the page tells of the row; the same unless it tells another number
};

inline StoredLength StoredLengthOf(const Page &page)
{
    const Section *section = FindSection(page, "Stored form");
    if (section == nullptr || section->paragraphs.empty()) {
        return {};
    }
    StoredLength length{};
    int end = 0;
    const char *text = section->paragraphs[0].c_str();
    if (std::sscanf(text, "%u bytes; the registered length is %u.%n", &length.bytes, &length.registered, &end) == 2 &&
        end != 0) {
        return length;
    }
    end = 0;
    if (std::sscanf(text, "%u bytes.%n", &length.bytes, &end) == 1 && end != 0) {
        return {length.bytes, length.bytes};
    }
    return {};
}

} // namespace bgp::test

#endif
