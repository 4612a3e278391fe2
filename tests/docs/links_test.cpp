// Every link of README.md, CONTRIBUTING.md, CHANGELOG.md and docs/ leads to a file of the source, and to a heading of
// it where it names one. Links to other hosts are not followed.
#include "docs/page.h"

#include <cctype>
#include <map>

namespace bgp::test {
namespace {

namespace fs = std::filesystem;

// Without the lines between ``` and ```.
std::string WithoutBlocks(const std::string &markdown)
{
    std::istringstream lines(markdown);
    std::string kept;
    bool inBlock = false;
    for (std::string line; std::getline(lines, line);) {
        const bool isFence = Trimmed(line).rfind("```", 0) == 0;
        inBlock = inBlock != isFence;
        kept += inBlock || isFence ? "" : line + '\n';
    }
    return kept;
}

// Without what stands in backquotes either, where brackets are no links.
std::string WithoutCode(const std::string &markdown)
{
    const std::string text = WithoutBlocks(markdown);
    std::string kept;
    bool inCode = false;
    for (const char character : text) {
        inCode = inCode != (character == '`');
        kept += inCode || character == '`' ? "" : std::string(1, character);
    }
    return kept;
}

// Of [text](target).
std::vector<std::string> Targets(const std::string &markdown)
{
    const std::string prose = WithoutCode(markdown);
    std::vector<std::string> targets;
    for (size_t at = prose.find("]("); at != std::string::npos; at = prose.find("](", at + 1)) {
        const std::string target = prose.substr(at + 2, prose.find(')', at) - at - 2);
        targets.push_back(target.substr(0, target.find_first_of(" \n"))); // a title may stand behind it
    }
    return targets;
}

// What a heading is called in a link: "Embedding, in ten lines of C" is embedding-in-ten-lines-of-c.
std::string Anchor(const std::string &heading)
{
    std::string anchor;
    for (const char character : heading) {
        if (std::isalnum(static_cast<unsigned char>(character)) != 0 || character == '-' || character == '_') {
            anchor += static_cast<char>(std::tolower(static_cast<unsigned char>(character)));
        } else if (character == ' ') {
            anchor += '-';
        }
    }
    return anchor;
}

// Headings of one name are told apart by a number.
std::vector<std::string> Anchors(const std::string &markdown)
{
    std::istringstream lines(WithoutBlocks(markdown));
    std::map<std::string, int> seen;
    std::vector<std::string> anchors;
    for (std::string line; std::getline(lines, line);) {
        const size_t title = line.find_first_not_of('#');
        if (title == 0 || title == std::string::npos || line[title] != ' ') {
            continue;
        }
        const std::string anchor = Anchor(line.substr(title + 1));
        const int before = seen[anchor]++;
        anchors.push_back(before == 0 ? anchor : anchor + '-' + std::to_string(before));
    }
    return anchors;
}

bool IsElsewhere(const std::string &target)
{
    return target.find("://") != std::string::npos || target.rfind("mailto:", 0) == 0;
}

// What is wrong with a link in that file; empty when nothing is.
std::string Fault(const fs::path &file, const std::string &target)
{
    const size_t hash = target.find('#');
    const std::string path = target.substr(0, hash);
    const fs::path led = path.empty() ? file : (file.parent_path() / path).lexically_normal();
    if (path.rfind('/', 0) == 0 || led.string().rfind(kSource.string(), 0) != 0) {
        return "leads out of the source";
    }
    if (!fs::exists(led)) {
        return "leads to no file";
    }
    if (hash == std::string::npos) {
        return "";
    }
    const std::vector<std::string> anchors =
        fs::is_directory(led) ? std::vector<std::string>() : Anchors(ReadFile(led));
    return std::count(anchors.begin(), anchors.end(), target.substr(hash + 1)) == 1 ? "" : "leads to no heading";
}

std::vector<fs::path> Documents()
{
    std::vector<fs::path> documents = {kSource / "README.md", kSource / "CONTRIBUTING.md", kSource / "CHANGELOG.md"};
    for (const auto &entry : fs::recursive_directory_iterator(kSource / "docs")) {
        if (entry.path().extension() == ".md") {
            documents.push_back(entry.path());
        }
    }
    return documents;
}

TEST(Links, LeadSomewhere)
{
    size_t followed = 0;
    for (const fs::path &document : Documents()) {
        for (const std::string &target : Targets(ReadFile(document))) {
            EXPECT_TRUE(IsElsewhere(target) || Fault(document, target).empty())
                << document << ": " << target << ' ' << Fault(document, target);
            ++followed;
        }
    }
    EXPECT_GT(followed, 0u) << "none was found";
    std::printf("%zu links\n", followed);
}

TEST(Links, ADeadOneIsFound)
{
    const fs::path page = kPages / "BOLPREFIX-NG-MVPN.md";
    EXPECT_EQ(Fault(page, "EVNPREFIX.md"), "");
    EXPECT_EQ(Fault(page, "EVNPREFIX.md#stored-form"), "");
    EXPECT_EQ(Fault(page, "#stored-form"), "");
    EXPECT_EQ(Fault(page, "../../README.md#what-is-here"), "");
    EXPECT_EQ(Fault(kSource / "README.md", "docs/reference/"), "");
    EXPECT_EQ(Fault(page, "BOLPREFIX-EVN.md"), "leads to no file");
    EXPECT_EQ(Fault(page, "docs/reference/EVNPREFIX.md"), "leads to no file");
    EXPECT_EQ(Fault(page, "EVNPREFIX.md#stored"), "leads to no heading");
    EXPECT_EQ(Fault(page, "#nothing"), "leads to no heading");
    EXPECT_EQ(Fault(page, "../reference#stored-form"), "leads to no heading");
    EXPECT_EQ(Fault(page, "/etc/passwd"), "leads out of the source");
    EXPECT_EQ(Fault(page, "../../../README.md"), "leads out of the source");
}

TEST(Links, AreFoundInProseAndNotInCode)
{
    using Found = std::vector<std::string>;
    EXPECT_EQ(Targets("a [b](c.md), [`d`](e.md#f) and ![g](h.png)"), (Found{"c.md", "e.md#f", "h.png"}));
    EXPECT_EQ(Targets("[over two\nlines](a.md) [titled](b.md \"title\")"), (Found{"a.md", "b.md"}));
    EXPECT_EQ(Targets("`[a](b.md)` and\n```\n[c](d.md)\n```\n[e](f.md)"), (Found{"f.md"}));
    EXPECT_EQ(Anchors("# A, b\n## `C` d\n```\n# no\n```\n## A, b\n"), (Found{"a-b", "c-d", "a-b-1"}));
    EXPECT_TRUE(IsElsewhere("https://example.org/"));
    EXPECT_FALSE(IsElsewhere("docs/reference/"));
}

} // namespace
} // namespace bgp::test
