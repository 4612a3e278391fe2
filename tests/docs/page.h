// Markdown as the tests of the documentation read it: sections, paragraphs, tables, code spans.
#ifndef BGP_TESTS_DOCS_PAGE_H
#define BGP_TESTS_DOCS_PAGE_H

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace bgp::test {

struct TableRow {
    int line;
    std::vector<std::string> cells;
};

struct Table {
    TableRow header;
    std::vector<TableRow> rows;
};

// From a "## " heading to the next one.
struct Section {
    std::string title;
    std::vector<std::string> paragraphs; // lines joined by blanks
    std::vector<Table> tables;
};

struct Page {
    std::string name; // "ASNUM.md"
    std::vector<Section> sections;
};

inline std::string Trimmed(std::string_view text)
{
    const size_t first = text.find_first_not_of(' ');
    const size_t last = text.find_last_not_of(' ');
    return first == std::string_view::npos ? "" : std::string(text.substr(first, last - first + 1));
}

// What stands between the bars of a table's line; "\|" is a bar within a cell.
inline std::vector<std::string> Cells(std::string_view line)
{
    std::vector<std::string> cells;
    std::string cell;
    for (size_t i = 1; i < line.size(); ++i) {
        if (line[i] == '\\' && i + 1 < line.size() && line[i + 1] == '|') {
            cell += line[++i];
        } else if (line[i] == '|') {
            cells.push_back(Trimmed(cell));
            cell.clear();
        } else {
            cell += line[i];
        }
    }
    return cells;
}

// The pieces of a text that stand in backquotes.
inline std::vector<std::string> CodeSpans(std::string_view text)
{
    std::vector<std::string> spans;
    for (size_t open = text.find('`'); open != std::string_view::npos;) {
        const size_t close = text.find('`', open + 1);
        if (close == std::string_view::npos) {
            break;
        }
        spans.emplace_back(text.substr(open + 1, close - open - 1));
        open = text.find('`', close + 1);
    }
    return spans;
}

// A cell without the backquotes around it.
inline std::string Plain(const std::string &cell)
{
    const std::vector<std::string> spans = CodeSpans(cell);
    return spans.size() == 1 && cell.size() == spans[0].size() + 2 ? spans[0] : cell;
}

inline Page ReadMarkdown(const std::string &name, const std::string &markdown)
{
    Page page{name, {}};
    std::istringstream lines(markdown);
    enum { kNothing, kParagraph, kTable, kCode } in = kNothing;
    std::string line;
    for (int number = 1; std::getline(lines, line); ++number) {
        const std::string text = Trimmed(line);
        if (text.rfind("```", 0) == 0) {
            in = in == kCode ? kNothing : kCode;
        } else if (in == kCode) {
            continue;
        } else if (line.rfind("## ", 0) == 0) {
            page.sections.push_back({Trimmed(line.substr(3)), {}, {}});
            in = kNothing;
        } else if (page.sections.empty() || text.empty() || text[0] == '#') {
            in = kNothing;
        } else if (text[0] == '|') {
            Section &section = page.sections.back();
            if (in != kTable) {
                section.tables.push_back({{number, Cells(text)}, {}});
            } else if (text.rfind("|-", 0) != 0) {
                section.tables.back().rows.push_back({number, Cells(text)});
            }
            in = kTable;
        } else if (in == kParagraph) {
            page.sections.back().paragraphs.back() += ' ' + text;
        } else {
            page.sections.back().paragraphs.push_back(text);
            in = kParagraph;
        }
    }
    return page;
}

inline std::string ReadFile(const std::filesystem::path &path)
{
    std::ifstream file(path);
    EXPECT_TRUE(file.is_open()) << path;
    std::ostringstream content;
    content << file.rdbuf();
    return content.str();
}

// Null when there is none of that title.
inline const Section *FindSection(const Page &page, std::string_view title)
{
    for (const Section &section : page.sections) {
        if (section.title == title) {
            return &section;
        }
    }
    return nullptr;
}

// The column of that name, or -1.
inline int Column(const Table &table, std::string_view name)
{
    for (size_t i = 0; i < table.header.cells.size(); ++i) {
        if (table.header.cells[i] == name) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

// Where a complaint belongs: "ASNUM.md:54: ".
inline std::string At(const Page &page, const TableRow &row)
{
    return page.name + ':' + std::to_string(row.line) + ": ";
}

inline const std::filesystem::path kSource = BGP_SOURCE_DIR;
inline const std::filesystem::path kPages = kSource / "docs" / "reference";

// All but README.md, which tells how to read them.
inline std::vector<Page> ReferencePages()
{
    std::vector<Page> pages;
    for (const auto &entry : std::filesystem::directory_iterator(kPages)) {
        if (entry.path().filename() != "README.md") {
            pages.push_back(ReadMarkdown(entry.path().filename(), ReadFile(entry.path())));
        }
    }
    std::sort(pages.begin(), pages.end(), [](const Page &a, const Page &b) { return a.name < b.name; });
    return pages;
}

} // namespace bgp::test

#endif
