// The group loop beneath the BGP-LS parser, with keyword rows of the caller's own.
#include "support/harness.h"

#include <string>
#include <vector>

namespace bgp::test {
namespace {

struct Call {
    uint32_t flag;
    std::string value;
    const void *context;
    bool operator==(const Call &) const = default;
};

uint32_t Note(uint32_t flag, char *value, void *target, BgpLsParseContext *context)
{
    static_cast<std::vector<Call> *>(target)->push_back({flag, value, context});
    *value = '!'; // the value is the handler's own to change
    return DT_OK;
}

uint32_t Refuse(uint32_t, char *, void *, BgpLsParseContext *)
{
    return DT_ERR_TOO_LONG;
}

constexpr BgpLsKeyword kRows[] = {{"A", 1, 1, Note}, {"AB", 2, 0, Note}, {"A", 4, 0, Note}, {"no", 8, 0, Refuse}};

struct Outcome {
    uint32_t code;
    std::vector<Call> calls;
    bool operator==(const Outcome &) const = default;
};

void PrintTo(const Outcome &outcome, std::ostream *to)
{
    *to << std::hex << outcome.code;
    for (const Call &call : outcome.calls) {
        *to << " " << call.flag << "'" << call.value << "'";
    }
}

Outcome Groups(const std::string &text, uint32_t rows = 4, BgpLsParseContext *context = nullptr)
{
    Outcome outcome{0, {}};
    outcome.code = SYSDT_ParseLsPrefixStr(text.c_str(), kRows, rows, &outcome.calls, context);
    return outcome;
}

TEST(BgpLsGroups, TheFirstRowWhoseKeywordBeginsTheContentGetsTheRest)
{
    EXPECT_EQ(Groups("[A]"), (Outcome{0, {{1, "", nullptr}}}));
    EXPECT_EQ(Groups("[ABc]"), (Outcome{0, {{2, "c", nullptr}}}));
    EXPECT_EQ(Groups("[AB]"), (Outcome{0, {{2, "", nullptr}}}));
    EXPECT_EQ(Groups("[Ac]"), (Outcome{0, {{4, "c", nullptr}}}));
    EXPECT_EQ(Groups("[A][AA][A[x][y[z]]]"),
              (Outcome{0, {{1, "", nullptr}, {4, "A", nullptr}, {4, "[x][y[z]]", nullptr}}}));
    int place = 0;
    auto *context = reinterpret_cast<BgpLsParseContext *>(&place); // passed on, not looked at
    EXPECT_EQ(Groups("[A]", 4, context), (Outcome{0, {{1, "", context}}}));
}

TEST(BgpLsGroups, TheFirstErrorEndsTheLoop)
{
    EXPECT_EQ(Groups("[A][no][A]"), (Outcome{DT_ERR_TOO_LONG, {{1, "", nullptr}}}));
    EXPECT_EQ(Groups("[A]x"), (Outcome{DT_ERR_FAIL, {{1, "", nullptr}}}));
    EXPECT_EQ(Groups("[A][A"), (Outcome{DT_ERR_FAIL, {{1, "", nullptr}}}));
    for (const char *text : {"", "A", "x[A]", "[", "[]", "]", "[a]", "[b]", "[A[]", "[n]"}) {
        EXPECT_EQ(Groups(text), (Outcome{DT_ERR_FAIL, {}})) << text;
    }
    EXPECT_EQ(Groups("[no]", 3), (Outcome{DT_ERR_FAIL, {}})) << "a row beyond the count";
    EXPECT_EQ(Groups("[A]", 0), (Outcome{DT_ERR_FAIL, {}}));
}

TEST(BgpLsGroups, ARowWithoutAHandlerRefusesItsGroup)
{
    constexpr BgpLsKeyword kNone[] = {{"none", 16, 1, nullptr}};
    EXPECT_EQ(SYSDT_ParseLsPrefixStr("[none]", kNone, 1, nullptr, nullptr), DT_ERR_FAIL);
}

TEST(BgpLsGroups, AnEmptyKeywordBeginsEveryContent)
{
    constexpr BgpLsKeyword kAny[] = {{"", 1, 1, Note}, {"", 2, 0, Note}};
    std::vector<Call> calls;
    EXPECT_EQ(SYSDT_ParseLsPrefixStr("[][x]", kAny, 2, &calls, nullptr), DT_OK);
    EXPECT_EQ(calls, (std::vector<Call>{{1, "", nullptr}, {2, "x", nullptr}}));
}

TEST(BgpLsGroups, AGroupHoldsAtMost498Characters)
{
    EXPECT_EQ(Groups("[AB" + std::string(496, 'x') + "]"), (Outcome{0, {{2, std::string(496, 'x'), nullptr}}}));
    EXPECT_EQ(Groups("[AB" + std::string(497, 'x') + "]"), (Outcome{DT_ERR_FAIL, {}}));
}

// Rows as another language sees them: keyword, flag, exact, handler.
TEST(BgpLsGroups, TheTopLevelTableIsReadableAsCRows)
{
    struct Expected {
        const char *keyword;
        uint32_t flag;
        uint32_t exact;
        bool handled;
    };
    constexpr Expected kExpected[] = {
        {"NODE", 1, 1, true},         {"LINK", 1, 1, true},         {"IPV4-PREFIX", 1, 1, true},
        {"IPV6-PREFIX", 1, 1, true},  {"TEPOLICY", 1, 1, true},     {"SRV6-SID", 1, 1, true},
        {"ISIS-LEVEL-1", 2, 1, true}, {"ISIS-LEVEL-2", 2, 1, true}, {"OSPFv2", 2, 1, true},
        {"DIRECT", 2, 1, true},       {"STATIC", 2, 1, true},       {"OSPFv3", 2, 1, true},
        {"BGP", 2, 1, true},          {"RSVP-TE", 2, 1, false},     {"SEGMENT-ROUTING", 2, 1, true},
        {"IDENTIFIER", 4, 0, true},   {"LOCAL", 8, 0, true},        {"REMOTE", 16, 0, true},
        {"LINK", 32, 0, true},        {"UNKNOWN", 64, 0, true},     {"index", 128, 0, true},
        {"PREFIX", 256, 0, true},     {"TE", 512, 0, true},         {"SID", 1024, 0, true},
    };
    static_assert(sizeof kExpected / sizeof *kExpected == 24);
    for (uint32_t i = 0; i < 24; ++i) {
        EXPECT_STREQ(g_bgplsPrefixPattern[i].Keyword, kExpected[i].keyword);
        EXPECT_EQ(g_bgplsPrefixPattern[i].Flag, kExpected[i].flag) << i;
        EXPECT_EQ(g_bgplsPrefixPattern[i].Exact, kExpected[i].exact) << i;
        EXPECT_EQ(g_bgplsPrefixPattern[i].Handler != nullptr, kExpected[i].handled) << i;
    }
}

} // namespace
} // namespace bgp::test
