// The examples of the reference pages, run. A row of an "## Examples" table is | `text` | `stored bytes` | `printed` |:
// the text gives those bytes, and those bytes print so, in mode 1. `refused` in the second column is a text that is
// refused. A text that is left out is a value that cannot be typed; "..." behind bytes stands for any more bytes.
#include "support/harness.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace bgp::test {
namespace {

struct Example {
    std::string page;
    int line;
    std::string text, stored, prints;
};

// What stands between the bars, without blanks and backquotes around it. "\|" is a bar within a cell.
std::vector<std::string> Cells(const std::string &line)
{
    std::vector<std::string> cells;
    std::string cell;
    for (size_t i = 1; i < line.size(); ++i) {
        if (line[i] != '|' || line[i - 1] == '\\') {
            cell += line[i];
            continue;
        }
        const size_t first = cell.find_first_not_of(' ');
        const size_t last = cell.find_last_not_of(' ');
        cell = first == std::string::npos ? "" : cell.substr(first, last - first + 1);
        if (cell.size() >= 2 && cell.front() == '`' && cell.back() == '`') {
            cell = cell.substr(1, cell.size() - 2);
        }
        cells.push_back(cell);
        cell.clear();
    }
    return cells;
}

std::vector<Example> ExamplesOf(const std::filesystem::path &page)
{
    std::vector<Example> examples;
    std::ifstream file(page);
    std::string line;
    bool inside = false;
    for (int number = 1; std::getline(file, line); ++number) {
        if (line.rfind("## ", 0) == 0) {
            inside = line == "## Examples";
        }
        if (!inside || line.rfind("|", 0) != 0 || line.rfind("|-", 0) == 0 || line.rfind("| Text", 0) == 0) {
            continue;
        }
        const std::vector<std::string> cells = Cells(line);
        EXPECT_EQ(cells.size(), 3u) << page << ':' << number;
        if (cells.size() == 3) {
            examples.push_back({page.filename(), number, cells[0], cells[1], cells[2]});
        }
    }
    return examples;
}

std::string TypeOf(const std::string &page)
{
    const std::string stem = page.substr(0, page.find(".md"));
    return stem.substr(0, stem.find('-'));
}

// What is wrong with an example; empty when nothing is.
std::string Fault(const Example &example)
{
    const std::string type = TypeOf(example.page);
    std::string value = example.stored;
    if (!example.text.empty()) {
        // Pages show a tab as \t.
        std::string text = example.text;
        for (size_t at; (at = text.find("\\t")) != std::string::npos;) {
            text.replace(at, 2, "\t");
        }
        const In in = FormatIn(type, text);
        if (example.stored == "refused") {
            return in.code == 0 ? "accepted" : "";
        }
        if (in.code != 0) {
            return "refused";
        }
        value = in.value;
        std::string stored = example.stored;
        stored.erase(std::remove(stored.begin(), stored.end(), ' '), stored.end());
        const size_t dots = stored.find("...");
        if (dots == std::string::npos ? value != stored : value.compare(0, dots, stored, 0, dots) != 0) {
            return "stored as " + value;
        }
    }
    const Out out = FormatOut(type, value);
    if (out.code != 0) {
        return "does not print";
    }
    return out.text == example.prints ? "" : "prints " + out.text;
}

const std::filesystem::path kPages = std::filesystem::path(BGP_SOURCE_DIR) / "docs" / "reference";

class ReferencePages : public PlugIn {};

TEST_F(ReferencePages, EveryExampleIsTrue)
{
    size_t count = 0;
    for (const auto &entry : std::filesystem::directory_iterator(kPages)) {
        for (const Example &example : ExamplesOf(entry.path())) {
            EXPECT_EQ(Fault(example), "") << example.page << ':' << example.line << ' ' << example.text;
            ++count;
        }
    }
    EXPECT_GT(count, 5u);
}

TEST_F(ReferencePages, AFalseExampleIsFound)
{
    EXPECT_EQ(Fault({"ASNUM.md", 1, "1.0", "0000010001000000", "1.0"}), "");
    EXPECT_EQ(Fault({"ASNUM.md", 1, "1.0", "000001...", "1.0"}), "");
    EXPECT_NE(Fault({"ASNUM.md", 1, "1.0", "000002...", "1.0"}), "");
    EXPECT_NE(Fault({"ASNUM.md", 1, "1.0", "0000010000000000", "1.0"}), "");
    EXPECT_NE(Fault({"ASNUM.md", 1, "1.0", "0000010001000000", "65536"}), "");
    EXPECT_NE(Fault({"ASNUM.md", 1, "1.0", "refused", ""}), "");
    EXPECT_NE(Fault({"ASNUM.md", 1, "x", "0000010001000000", "1.0"}), "");
}

TEST_F(ReferencePages, EveryTypeHasAPage)
{
    for (const DataTypeDescriptor *row : host::Rows()) {
        if (row->FormatIn == nullptr && row->FormatOut == nullptr) {
            continue;
        }
        const bool nameIndex = row->TypeId >= 0x6000;
        const std::filesystem::path page =
            kPages / (nameIndex ? "name-index-types.md" : std::string(row->Name) + ".md");
        EXPECT_TRUE(std::filesystem::exists(page)) << page;
    }
}

} // namespace
} // namespace bgp::test
