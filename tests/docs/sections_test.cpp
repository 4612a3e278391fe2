// All reference pages have the same sections, as far as their type has what they are about.
#include "docs/subjects.h"

namespace bgp::test {
namespace {

class Sections : public PlugIn {};

// What a page lacks.
std::vector<std::string> Missing(const Page &page)
{
    const std::vector<Subject> subjects = SubjectsOf(page);
    const auto any = [&subjects](bool (*has)(const Subject &)) {
        return std::any_of(subjects.begin(), subjects.end(), has);
    };
    const struct {
        const char *title;
        bool wanted;
    } sections[] = {
        {"Stored form", true},
        {"Text in", any([](const Subject &subject) { return subject.row.FormatIn != nullptr; })},
        {"Text out", any([](const Subject &subject) { return subject.row.FormatOut != nullptr; })},
        {"The other operations", true},
        {"Examples", true},
    };
    std::vector<std::string> missing;
    for (const auto &section : sections) {
        if (section.wanted && FindSection(page, section.title) == nullptr) {
            missing.emplace_back(section.title);
        }
    }
    return missing;
}

TEST_F(Sections, AreTheSameOnAllPages)
{
    EXPECT_FALSE(ReferencePages().empty());
    for (const Page &page : ReferencePages()) {
        EXPECT_EQ(Missing(page), std::vector<std::string>()) << page.name;
    }
}

TEST_F(Sections, AMissingOneIsFound)
{
    using Titles = std::vector<std::string>;
    EXPECT_EQ(Missing(ReadMarkdown("ASNUM.md", "## Stored form\n## Text in\n## Text out\n## Examples\n")),
              Titles{"The other operations"});
    EXPECT_EQ(Missing(ReadMarkdown("SID_STRUCTURE.md", "## Stored form\n## The other operations\n## Example\n")),
              (Titles{"Text out", "Examples"}));
    EXPECT_EQ(Missing(ReadMarkdown("TIME_RANGE.md", "")),
              (Titles{"Stored form", "Text in", "The other operations", "Examples"}));
}

} // namespace
} // namespace bgp::test
