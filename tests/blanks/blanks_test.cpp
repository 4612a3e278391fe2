// Which characters are blanks is the host's to say. In this program the three services that know are the test's own,
// and everything else is the stand-alone host's: the same texts are read under hosts with other blanks, by every parser
// of the plug-in.
#include "bgp_host_services.h"
#include "docs/notation.h"
#include "docs/page.h"
#include "support/harness.h"
#include "support/refusals.h"

#include <algorithm>
#include <cstring>
#include <set>
#include <string>
#include <vector>

namespace {

// The host of the moment.
struct BlankHost {
    const char *blanks;
    bool answersNull; // when it is asked to trim
};

BlankHost theHost;

// What the services were asked since the last look.
struct Asked {
    uint32_t trims, searches;
    bool ofGraphicTextOnly; // a text without a character in question
    bool ofCallersMemory;   // which the services could write to
};

Asked theAsked;
const char *theCallersText; // from here ...
const char *theCallersEnd;  // ... to here

bool IsGraphic(char character)
{
    return character >= '!' && character <= '~';
}

bool IsHostsBlank(char character)
{
    return character != '\0' && std::strchr(theHost.blanks, character) != nullptr;
}

void Record(uint32_t &count, const char *text)
{
    ++count;
    bool graphic = true;
    for (const char *at = text; *at != '\0'; ++at) {
        graphic &= IsGraphic(*at);
    }
    theAsked.ofGraphicTextOnly |= graphic;
    theAsked.ofCallersMemory |= text >= theCallersText && text < theCallersEnd;
}

char *TrimEnd(char *text)
{
    size_t length = std::strlen(text);
    while (length > 0 && IsHostsBlank(text[length - 1])) {
        --length;
    }
    text[length] = '\0';
    return text;
}

} // namespace

char *SYSDT_BTrim(char *text, char *)
{
    Record(theAsked.trims, text);
    while (IsHostsBlank(*text)) {
        ++text;
    }
    return theHost.answersNull ? nullptr : TrimEnd(text);
}

char *QOV_StrTrim(char *text)
{
    Record(theAsked.trims, text);
    const char *first = text;
    while (IsHostsBlank(*first)) {
        ++first;
    }
    std::memmove(text, first, std::strlen(first) + 1);
    return theHost.answersNull ? nullptr : TrimEnd(text);
}

void NCF_IsSpaceInString(const char *text, uint32_t *flag)
{
    Record(theAsked.searches, text);
    *flag = std::strpbrk(text, theHost.blanks) != nullptr;
}

namespace bgp::test {
namespace {

constexpr BlankHost kUsual{" \t", false};
constexpr BlankHost kWide{" \t\r\xA0", false};
constexpr BlankHost kNone{"", false};
constexpr BlankHost kNull{" \t", true};

class Blanks : public PlugIn {
protected:
    void TearDown() override
    {
        theHost = kUsual;
        PlugIn::TearDown();
    }
};

// -------------------------------------------------------------------------------------------------------- the parsers

struct Parser {
    DataTypeDescriptor row;
    const BgpTypeFacts *facts; // null where the type tells none
    std::string_view type;     // under whose name it is registered
    std::vector<std::string> texts;
};

// Is a text of the row read by the plug-in? Some types are not typed, and the texts of others the host reads.
bool IsTyped(const DataTypeDescriptor &row, const BgpTypeFacts *facts)
{
    constexpr uint32_t kNotHere = BGP_TRAIT_NO_TEXT | BGP_TRAIT_HOST_TEXT;
    return row.FormatIn != nullptr && row.FormatIn != SYSDT_StringFormatIn &&
           (facts == nullptr || (facts->Traits & kNotHere) == 0);
}

struct Answer {
    uint32_t code;
    std::string value;
    Asked asked;
};

// What FormatIn makes of a text under a host; the text must be left alone.
Answer Read(const Parser &parser, const BlankHost &host, const std::string &text)
{
    std::string callers = text;
    theHost = host;
    theAsked = {};
    theCallersText = callers.data();
    theCallersEnd = callers.data() + callers.size() + 1;
    const DataTypeRequest request{2, Handle()};
    const size_t scratch = host::ScratchBlocks();
    uint16_t typeId = 0;
    uint16_t length = 0;
    void *value = nullptr;
    const uint32_t code = parser.row.FormatIn(&request, parser.row.TypeId, static_cast<uint32_t>(callers.size() + 1),
                                              callers.data(), &typeId, &length, &value);
    Answer answer{code, value == nullptr ? "" : Hex(value, length), theAsked};
    theCallersText = theCallersEnd = nullptr;
    if (host::ScratchBlocks() > scratch) {
        SYS_DataTypeFree(value);
    }
    EXPECT_EQ(callers, text) << parser.row.Name;
    return answer;
}

// The texts of all examples of the reference pages that have no character in question.
std::vector<std::string> GraphicExamples()
{
    std::vector<std::string> texts;
    for (const Page &page : ReferencePages()) {
        const Section *examples = FindSection(page, "Examples");
        for (const Table &table : examples != nullptr ? examples->tables : std::vector<Table>()) {
            const int column = Column(table, "Text");
            for (const TableRow &row : table.rows) {
                const std::string text = column < 0 ? "" : Meant(Plain(row.cells[static_cast<size_t>(column)]));
                if (!text.empty() && std::all_of(text.begin(), text.end(), IsGraphic)) {
                    texts.push_back(text);
                }
            }
        }
    }
    return texts;
}

void Add(std::vector<Parser> &parsers, const Parser &parser)
{
    static const std::vector<std::string> kTexts = GraphicExamples();
    if (!IsTyped(parser.row, parser.facts)) {
        return;
    }
    parsers.push_back(parser);
    for (const std::string &text : kTexts) {
        if (Read(parser, kUsual, text).code == DT_OK) {
            parsers.back().texts.push_back(text);
        }
    }
    EXPECT_FALSE(parsers.back().texts.empty()) << "no page has a text of " << parser.row.Name;
}

// All that are registered, and all of the composites' sub-types, with the examples that they accept.
std::vector<Parser> AllParsers()
{
    std::vector<Parser> parsers;
    for (uint32_t i = 0; Bgp_TypeAt(BGP_NAME_INDEX_ROWS + i) != nullptr; ++i) {
        const DataTypeDescriptor &row = g_astBgpDataTypeExtendDefineTbl[i];
        Add(parsers, {row, Bgp_DescribeType(row.TypeId), row.Name, {}});
    }
    for (const BolPrefixSubtypeEntry &entry : g_astBOL_PREFIX_ProcTable) {
        Add(parsers, {Row(entry), Bgp_DescribeSubType(279, entry.SubType), "BOLPREFIX", {}});
    }
    for (const BolPrefixSubtypeEntry &entry : g_astBOL_RD_ProcTable) {
        Add(parsers, {Row(entry), Bgp_DescribeSubType(280, entry.SubType), "BOLRD", {}});
    }
    return parsers;
}

// Calls check(parser, text) for every text of every parser.
template <class Check>
void ForEachText(Check check)
{
    const std::vector<Parser> parsers = AllParsers();
    EXPECT_FALSE(parsers.empty());
    for (const Parser &parser : parsers) {
        for (const std::string &text : parser.texts) {
            SCOPED_TRACE(std::string(parser.row.Name) + " '" + text + "'");
            check(parser, text);
        }
    }
}

// ---------------------------------------------------------------------------------------------------------- the tests

TEST_F(Blanks, GraphicTextsNeverReachTheHost)
{
    ForEachText([](const Parser &parser, const std::string &text) {
        for (const BlankHost &host : {kUsual, kWide, kNone, kNull}) {
            for (const std::string bad : {"", "$", "$$$$"}) {
                const Answer answer = Read(parser, host, bad + text);
                EXPECT_EQ(answer.code == DT_OK, bad.empty());
                EXPECT_EQ(answer.asked.trims, 0u);
                EXPECT_EQ(answer.asked.searches, 0u);
            }
        }
    });
}

void ExpectCopiesOfWhatIsInQuestion(const Asked &asked)
{
    EXPECT_FALSE(asked.ofGraphicTextOnly);
    EXPECT_FALSE(asked.ofCallersMemory);
}

// These are scanned by a format, which skips white space in front of a number, the same for all hosts, and does not
// look at what follows the last.
bool IsScanned(const Parser &parser)
{
    static const std::set<std::string_view> kScanned = {"VPNV4MCPREFIX", "MDTPREFIX"};
    return kScanned.contains(parser.row.Name);
}

TEST_F(Blanks, AroundATextAreTheHosts)
{
    ForEachText([](const Parser &parser, const std::string &text) {
        const std::string value = Read(parser, kUsual, text).value;
        for (const std::string blank : {" ", "\t", "\r", "\xA0"}) {
            SCOPED_TRACE(Hex(blank));
            for (const std::string &blanked : {blank + text, text + blank, blank + blank + text + blank}) {
                const Answer wide = Read(parser, kWide, blanked);
                EXPECT_EQ(wide.code, DT_OK);
                EXPECT_EQ(wide.value, value);
                EXPECT_GT(wide.asked.trims, 0u);
                ExpectCopiesOfWhatIsInQuestion(wide.asked);
            }
            if (blank == "\xA0" || !IsScanned(parser)) {
                const bool usual = blank == " " || blank == "\t";
                EXPECT_EQ(Read(parser, kUsual, blank + text).code == DT_OK, usual);
                EXPECT_NE(Read(parser, kNone, blank + text).code, DT_OK);
            }
        }
    });
}

// More than the host is asked about at a time.
TEST_F(Blanks, ManyAroundAText)
{
    std::string many;
    for (uint32_t i = 0; i < 200; ++i) {
        many += "\r\xA0 \t"[i % 4];
    }
    ForEachText([&many](const Parser &parser, const std::string &text) {
        const Answer answer = Read(parser, kWide, many + text + many);
        EXPECT_EQ(answer.code, DT_OK);
        EXPECT_EQ(answer.value, Read(parser, kUsual, text).value);
        ExpectCopiesOfWhatIsInQuestion(answer.asked);
        EXPECT_NE(Read(parser, kWide, many).code, DT_OK);
        EXPECT_NE(Read(parser, kUsual, many + text).code, DT_OK);
    });
}

// What parts the items of a list under the usual host is done by another host's blanks under that one; where no blank
// may stand, neither host's may.
TEST_F(Blanks, InsideATextAreTheHosts)
{
    ForEachText([](const Parser &parser, const std::string &text) {
        for (const std::string &parted : {text + " " + text, text.substr(0, 1) + " " + text.substr(1) + "0"}) {
            std::string other = parted;
            std::replace(other.begin(), other.end(), ' ', '\xA0');
            const Answer usual = Read(parser, kUsual, parted);
            const Answer wide = Read(parser, kWide, other);
            EXPECT_EQ(wide.code, usual.code);
            EXPECT_EQ(wide.value, usual.value);
            ExpectCopiesOfWhatIsInQuestion(wide.asked);
            if (!IsScanned(parser)) {
                EXPECT_NE(Read(parser, kUsual, other).code, DT_OK);
                EXPECT_NE(Read(parser, kNone, parted).code, DT_OK);
            }
        }
    });
}

bool CanBreak(const BgpTypeFacts *facts, std::string_view rule)
{
    for (uint32_t i = 0; facts != nullptr && i < facts->RuleCount; ++i) {
        if (facts->Rules[i]->Name == rule) {
            return true;
        }
    }
    return false;
}

// The reason for a refusal under a host, of a sub-type by its composite.
BgpReason ReasonFor(const Parser &parser, const BlankHost &host, const std::string &text)
{
    theHost = host;
    const BgpRefusal refusal = Explained(parser.type, text);
    return parser.type == parser.row.Name ? refusal.Reason : refusal.SubTypes[parser.facts->SubType];
}

TEST_F(Blanks, InsideATextAreTheReason)
{
    uint32_t told = 0;
    uint32_t untold = 0;
    ForEachText([&told, &untold](const Parser &parser, const std::string &text) {
        const std::string parted = text.substr(0, 1) + "\xA0" + text.substr(1) + "0";
        if (CanBreak(parser.facts, "blank") && parted.size() <= parser.facts->LongestText) {
            const std::string usual = Describe(ReasonFor(parser, kUsual, parted));
            const std::string wide = Describe(ReasonFor(parser, kWide, parted));
            EXPECT_NE(usual.substr(0, 5), "blank");
            if (wide.substr(0, 9) == "blank 1+1") {
                ++told;
                return;
            }
            // Something is wrong already where the text begins, whatever the host calls a blank: too little of a route
            // is read, or a section is too long.
            EXPECT_EQ(wide, usual);
            EXPECT_NE(wide.find(" 0+"), std::string::npos) << wide;
            ++untold;
        }
    });
    EXPECT_GT(told, 10 * untold) << told << ", " << untold;
}

// A host that answers null when it is asked to trim leaves nothing to read.
TEST_F(Blanks, HostThatAnswersNull)
{
    ForEachText([](const Parser &parser, const std::string &text) {
        const std::string blanked = " " + text + " ";
        const Answer answer = Read(parser, kNull, blanked);
        EXPECT_NE(answer.code, DT_OK);
        EXPECT_GT(answer.asked.trims, 0u);
        if (parser.facts != nullptr) {
            const BgpReason reason = ReasonFor(parser, kNull, blanked);
            EXPECT_NE(reason.Rule, nullptr);
            EXPECT_LE(reason.Offset + reason.Length, blanked.size());
        }
    });
}

} // namespace
} // namespace bgp::test
