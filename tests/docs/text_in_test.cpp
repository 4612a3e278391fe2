// The sections "Text in" of the reference pages say what the facts of the types say: how long a text may be, and of
// texts that are numbers with separators each notation, with the smallest and largest value of each number.
#include "docs/subjects.h"

namespace bgp::test {
namespace {

const BgpTypeFacts *FactsOf(const Subject &subject)
{
    return subject.subType == kNoSubType ? Bgp_DescribeType(subject.row.TypeId)
                                         : Bgp_DescribeSubType(kComposite, static_cast<uint32_t>(subject.subType));
}

// "15 to 42 characters for an IPv4 key, 8 to 67 characters for an IPv6 key": 8 and 67. False when no range is told.
bool TextLengths(const Section &section, uint32_t &shortest, uint32_t &longest)
{
    shortest = UINT32_MAX;
    longest = 0;
    const std::string text = section.paragraphs.empty() ? "" : section.paragraphs[0];
    for (size_t at = text.find(" to "); at != std::string::npos; at = text.find(" to ", at + 1)) {
        const size_t start = text.find_last_not_of("0123456789", at == 0 ? 0 : at - 1) + 1;
        uint32_t least = 0;
        uint32_t most = 0;
        int end = 0;
        if (std::sscanf(text.c_str() + start, "%u to %u characters%n", &least, &most, &end) == 2 && end != 0) {
            shortest = std::min(shortest, least);
            longest = std::max(longest, most);
        }
    }
    return longest != 0;
}

// "a.b.c.d:n": "...:". Words are numbers, all else separates them.
std::string SeparatorsOf(const std::string &form)
{
    std::string separators;
    for (const char character : form) {
        if (std::isalnum(static_cast<unsigned char>(character)) == 0) {
            separators += character;
        }
    }
    return separators;
}

// "65535, 0xff"; empty when a word is no number.
std::vector<uint64_t> NumbersOf(const std::string &cell)
{
    std::vector<uint64_t> numbers;
    std::istringstream words(cell);
    for (std::string word; std::getline(words, word, ',');) {
        word = Trimmed(word);
        if (word.empty() || std::isdigit(static_cast<unsigned char>(word[0])) == 0) {
            return {};
        }
        numbers.push_back(std::stoull(word, nullptr, 0));
    }
    return numbers;
}

std::vector<uint64_t> Front(const uint64_t (&numbers)[BGP_MOST_NUMBERS], size_t count)
{
    return {numbers, numbers + count};
}

// What a row of the table tells otherwise than the notation.
std::string RowFault(const Table &table, const TableRow &row, const BgpNotation &notation)
{
    const std::string form = Plain(row.cells[static_cast<size_t>(Column(table, "typed as"))]);
    const std::vector<uint64_t> most = NumbersOf(row.cells[static_cast<size_t>(Column(table, "at most"))]);
    const size_t count = std::string_view(notation.Separators).size() + 1;
    if (SeparatorsOf(form) != notation.Separators) {
        return form + " is written " + notation.Form;
    }
    if (most != Front(notation.Largest, count)) {
        return form + " has other largest numbers";
    }
    const int least = Column(table, "at least");
    std::vector<uint64_t> smallest(count, 0);
    if (least >= 0 && !row.cells[static_cast<size_t>(least)].empty()) {
        smallest = NumbersOf(row.cells[static_cast<size_t>(least)]);
    }
    return smallest == Front(notation.Smallest, count) ? "" : form + " has other smallest numbers";
}

std::vector<std::string> NotationFaults(const Page &page, const Section &section, const BgpTypeFacts &facts)
{
    std::vector<std::string> faults;
    uint32_t told = 0;
    for (const Table &table : section.tables) {
        if (Column(table, "typed as") < 0 || Column(table, "at most") < 0) {
            continue;
        }
        for (const TableRow &row : table.rows) {
            if (NumbersOf(row.cells[static_cast<size_t>(Column(table, "at most"))]).empty()) {
                continue; // a name
            }
            if (told == facts.NotationCount) {
                faults.push_back(At(page, row) + "there is no such notation");
            } else if (const std::string fault = RowFault(table, row, facts.Notations[told++]); !fault.empty()) {
                faults.push_back(At(page, row) + fault);
            }
        }
    }
    if (told != facts.NotationCount) {
        faults.push_back(page.name + ": " + std::to_string(told) + " notations of " +
                         std::to_string(facts.NotationCount) + " are told");
    }
    return faults;
}

std::vector<std::string> FaultsOf(const Page &page)
{
    std::vector<std::string> faults;
    const Section *section = FindSection(page, "Text in");
    for (const Subject &subject : SubjectsOf(page)) {
        const BgpTypeFacts *facts = FactsOf(subject);
        if (facts == nullptr) {
            faults.push_back(subject.name + " has no facts");
            continue;
        }
        if (facts->ShortestText == 0 || (facts->Traits & BGP_TRAIT_HOST_TEXT) != 0) {
            continue; // cannot be typed, or the host reads it
        }
        uint32_t shortest = 0;
        uint32_t longest = 0;
        if (section == nullptr || !TextLengths(*section, shortest, longest)) {
            faults.push_back(page.name + " does not tell how long a text is");
            continue;
        }
        if (shortest != facts->ShortestText || longest != facts->LongestText) {
            faults.push_back(page.name + ": texts of " + subject.name + " have " + std::to_string(facts->ShortestText) +
                             " to " + std::to_string(facts->LongestText) + " characters");
        }
        if (facts->NotationCount != 0) {
            const std::vector<std::string> more = NotationFaults(page, *section, *facts);
            faults.insert(faults.end(), more.begin(), more.end());
        }
    }
    return faults;
}

class TextsIn : public PlugIn {};

TEST_F(TextsIn, AreThoseOfTheFacts)
{
    size_t types = 0;
    size_t notations = 0;
    for (const Page &page : ReferencePages()) {
        for (const std::string &fault : FaultsOf(page)) {
            ADD_FAILURE() << fault;
        }
        for (const Subject &subject : SubjectsOf(page)) {
            const BgpTypeFacts *facts = FactsOf(subject);
            types += facts != nullptr && facts->ShortestText != 0;
            notations += facts != nullptr ? facts->NotationCount : 0;
        }
    }
    EXPECT_GT(types, 20u);
    EXPECT_GT(notations, 20u);
    std::printf("%zu types and sub-types that are typed, %zu notations\n", types, notations);
}

TEST_F(TextsIn, AFalseOneIsFound)
{
    const struct {
        const char *page, *piece, *by, *fault;
    } canaries[] = {
        {"ASNUM.md", "1 to 11 characters", "1 to 12 characters", "have 1 to 11 characters"},
        {"ASNUM.md", "1 to 11 characters", "Some characters", "does not tell how long"},
        {"ASNUM.md", "| 4294967295 | 1 |", "| 4294967295 | 0 |", "other smallest numbers"},
        {"VRFRT.md", "| `a.b.c.d:n` |", "| `a.b.c.d.n` |", "is written"},
        {"VRFRT.md", "| 255, 255, 255, 255, 65535 |", "| 255, 255, 255, 255, 65536 |", "other largest numbers"},
        {"VRFRT.md", "| `x.y:n` | 65535, 65535, 65535 |", "| `x.y:n` | |", "3 notations of 4"},
        {"VPNID.md", "0xffffffff", "0xfffffff", "other largest numbers"},
        {"BOLPREFIX-SRPOLICY.md", "8 to 67", "9 to 67", "have 8 to 67 characters"},
    };
    for (const auto &canary : canaries) {
        std::string markdown = ReadFile(kPages / canary.page);
        const size_t at = markdown.find(canary.piece);
        ASSERT_NE(at, std::string::npos) << canary.page << " has nothing to edit: " << canary.piece;
        markdown.replace(at, std::string_view(canary.piece).size(), canary.by);
        const std::vector<std::string> faults = FaultsOf(ReadMarkdown(canary.page, markdown));
        EXPECT_TRUE(
            std::any_of(faults.begin(), faults.end(),
                        [&](const std::string &fault) { return fault.find(canary.fault) != std::string::npos; }))
            << canary.page << ", " << canary.piece << " -> " << canary.by << ": " << ::testing::PrintToString(faults);
    }
}

} // namespace
} // namespace bgp::test
