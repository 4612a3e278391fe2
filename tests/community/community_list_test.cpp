#include "support/refusals.h"
#include "support/type_case.h"

#include "bgp_host_services.h"

namespace bgp::test {
namespace {

// CMNTY_ENHANCE: 32 entries of 5 bytes, community (host order) and form; an unused entry has form 2.
constexpr const char *kType = "CMNTY_ENHANCE";
constexpr size_t kEntries = 32;
constexpr const char *kUnused = "0000000002";

class CommunityList : public PlugIn {};

// The entries, and unused ones behind them.
std::string List(std::string_view entries)
{
    const std::string bytes = Bytes(entries);
    EXPECT_EQ(bytes.size() % 5, 0u) << entries;
    return Hex(bytes) + Repeated(kUnused, kEntries - bytes.size() / 5);
}

const std::vector<TextCase> kAccepted = {
    {"no-export 100:1 0", List("01ffffff00 0100640001 0000000000"), "no-export 100:1 internet"},
    {"No-Advertise", List("02ffffff00"), "no-advertise"},
    {"INTERNET NO-EXPORT no-export-subconfed", List("0000000000 01ffffff00 03ffffff00"),
     "internet no-export no-export-subconfed"},
    {"1", List("0100000000")},
    {"1 1 1", List("0100000000 0100000000 0100000000")},
    {"3 2:1 1", List("0300000000 0100020001 0100000000")},
    {"0:0 0", List("0000000001 0000000000"), "internet internet"},
    {"0:1 1:0", List("0100000001 0000010001")},
    {"65535:65281 4294967042 65535:65283", List("01ffffff01 02ffffff00 03ffffff01"),
     "no-export no-advertise no-export-subconfed"},
    {"65535:65535 4294967295", List("ffffffff01 ffffffff00")},
    {"100:1\t200:2", List("0100640001 0200c80001"), "100:1 200:2"},
    {"  100:1 \t \t 7  ", List("0100640001 0700000000"), "100:1 7"},
    {"0000000000000000001 00100:0000000000001", List("0100000000 0100640001"), "1 100:1"}, // of 19 characters
};

const std::vector<std::string> kRefused = {
    "",
    " ",
    "\t \t",
    "no_export",
    "100:1 no_export",
    "1:2:3",
    "7 1:2:3",
    "1::2",
    "::",
    ":",
    "1:",
    ":1",
    "7 : 8",
    "65536:1",
    "1:65536",
    "4294967296:1",
    "1:4294967297",
    "4294967296",
    "9999999999",
    "9999999999999999999",
    "00000000000000000001", // 20 characters
    "7 00000000000000000001",
    "00100:00000000000001",
    "no-export-subconfedx",
    "no-export no-exp",
    "no-exp no-export",
    "no-expor",
    "no-exports",
    "no export",
    "noexport",
    "internet2",
    "internetinternet",
    "interne",
    "local-as",
    "no-peer",
    "-",
    "-1",
    "1-",
    "no-",
    "no-export:1",
    "internet:0",
    "a:b",
    "a:b:c",
    "1x",
    "0x10",
    "100,200",
    "100:1,",
    "1.2",
    "1.2:3",
    "10.1.1.1:5",
    "\"100:1\"",
    "{100:1}",
    "(100:1)",
    "+1",
    "1\n2",
    "1\r",
    "1\v2",
    "no-export\n",
    "\xe9nternet",
    "100:1 \xb2",
    "1\xa0",
    "@",
    "[",
    "`",
    "/",
    ";",
};

// What a table leaves out is 0, and form 0 is a used entry.
std::vector<LuaCase> LuaTables()
{
    const std::string all = "{community=16909060, type=5}";
    const std::vector<TextCase> read = {
        // table, entries
        {"{stCmnty={" + Repeated(all, 32, ",") + "}}", Repeated("0403020105", 32)},
        {"{stCmnty={" + Repeated(all, 33, ",") + "}}", Repeated("0403020105", 32)}, // the last one is not read
        {"{stCmnty={{community=4294967041, type=1}, {community=100, type=0}}}", "01ffffff01 6400000000"},
        {"{stCmnty={}}", ""},
        {"{stCmnty={{community=7}, {type=2}, {}}}", "0700000000 0000000002"},
        {"{stCmnty={5, 'x', true, {community=9, type=1}}}", "0000000000 0000000000 0000000000 0900000001"},
        {"{stCmnty={{community='x', type={}}, {community='8', type='1'}}}", "0000000000 0800000001"},
        {"{stCmnty={{community=4294967296, type=256}, {community=4294967297, type=258}}}", "0000000000 0100000002"},
        {"{stCmnty={{community=-1, type=-1}}}", "ffffffffff"},
        {"{stCmnty={[2]={community=2, type=1}, [32]={community=6, type=0}}}",
         "0000000000 0200000001" + Repeated("0000000000", 29) + "0600000000"},
    };
    std::vector<LuaCase> cases;
    for (const TextCase &c : read) {
        cases.push_back({c.text, DT_OK, Padded(c.value, 160), 1}); // the fetched table stays
    }
    for (const auto &[table, growth] :
         {std::pair("nil", 1), std::pair("7", 1), std::pair("'x'", 1), std::pair("{}", 2), std::pair("{stCmnty=5}", 2),
          std::pair("{stCmnty='x'}", 2), std::pair("{stcmnty={}}", 2)}) {
        cases.push_back({table, DT_ERR_INVALID_PARAM, Unwritten(160), growth});
    }
    return cases;
}

TypeCase Case()
{
    return {
        .row = {326, 160, 26, "CMNTY_ENHANCE", &SYSDT_CMNTYEnhanceFormatIn, &SYSDT_CMNTYEnhanceFormatOut,
                &SYSDT_CMNTYEnhanceCheck, &SYSDT_CMNTYEnhanceHelp, &SYSDT_BlockCompare, nullptr, &SYSDT_CmntyEnLuaSet,
                &SYSDT_CmntyEnLuaGet, &SYSDT_CmntyEnhanceLuaEndian},
        // More modes parse than print.
        .contract = {.text = "65535:65535 7",
                     .value = List("ffffffff01 0700000000"),
                     .inModes = "PPPPUPPU",
                     .outModes = "FTTFUFTU",
                     .helpModes = "-H----H-",
                     .helpText = "STRING<3-392>",
                     .textSize = 393},
        .accepted = kAccepted,
        .refused = kRefused,
        .prints =
            {
                {"", List("")},
                {"", List("0700000002")}, // the form alone says that an entry is unused
                {"", List("01ffffff02")},
                {"7", List("0000000002 0700000000")},
                {"7 8:1", List("0700000000 0000000002 ffffffff02 0100080001")},
                {"internet internet", List("0000000000 0000000001")},
                {"internet internet", List("0000000003 00000000ff")},
                {"no-export no-export no-export", List("01ffffff00 01ffffff01 01ffffff03")},
                {"no-advertise no-advertise", List("02ffffff00 02ffffffff")},
                {"no-export-subconfed no-export-subconfed", List("03ffffff01 03ffffff04")},
                {"4294967040 65535:65284", List("00ffffff00 04ffffff01")},
                {"0:5 5", List("0500000001 0500000000")},
                // An unknown form prints nothing, and counts as printed.
                {"", List("0500000003")},
                {"7 ", List("0700000000 0500000003")},
                {"7  9", List("0700000000 0500000003 0900000000")},
                {" 9", List("0500000003 0900000000")},
                {"  100:1", List("0500000003 0500000004 0100640001")},
                {" 9", List("0000000002 05000000ff 0000000002 0900000000")},
                {std::string(31, ' '), Repeated("0500000003", 32)},
                {Repeated("internet", 32, " "), Repeated("0000000000", 32)},
            },
        .helpHostCode = DT_OK,
        .compares =
            {
                {List("0001000000"), List("ff00000000"), -1},
                {List("0700000001"), List("0700000000"), 1},
                {List("0700000001"), List("0700000001"), 0},
            },
        .swaps =
            {
                {Repeated("0102030405", 32), Repeated("0403020105", 32)},
                {Repeated("04030201ff", 32), Repeated("01020304ff", 32)},
            },
        .luaSets =
            {
                {List("01ffffff01 6400000000 00000000ff"),
                 "{stCmnty={{community=4294967041, type=1},{community=100, type=0},{community=0, type=255}" +
                     Repeated(",{community=0, type=2}", 29) + "}}"},
                {Repeated("0403020105", 32), "{stCmnty={" + Repeated("{community=16909060, type=5}", 32, ",") + "}}"},
            },
        .luaGets = LuaTables(),
    };
}

[[maybe_unused]] const bool kStated = StateTests<CommunityList>("CommunityList", Case());

TEST_F(CommunityList, TakesUpTo32Items)
{
    for (const auto &[item, entry] : {std::pair("9", "0900000000"), std::pair("65535:65535", "ffffffff01"),
                                      std::pair("internet", "0000000000"), std::pair("no-export", "01ffffff00")}) {
        SCOPED_TRACE(item);
        const std::string most = Repeated(item, 32, " ");
        EXPECT_EQ(Value(kType, most), Repeated(entry, 32));
        EXPECT_EQ(Text(kType, Repeated(entry, 32)), most);
        EXPECT_EQ(CodeOf(kType, most + " 9"), DT_ERR_INVALID_VALUE);
        EXPECT_EQ(Value(kType, "\t" + most + " "), Repeated(entry, 32));
        EXPECT_EQ(Value(kType, Repeated(item, 31, "\t")), List(Repeated(entry, 31)));
    }
    EXPECT_EQ(CodeOf(kType, Repeated("9", 100, " ")), DT_ERR_INVALID_VALUE);
}

TEST_F(CommunityList, EveryPlaceOfTheListIsRead)
{
    for (size_t place = 0; place < kEntries; ++place) {
        const std::string text = Repeated("1", place, " ") + (place == 0 ? "" : " ") + "65535:2";
        EXPECT_EQ(Value(kType, text), List(Repeated("0100000000", place) + "0200ffff01")) << place;
        EXPECT_EQ(CodeOf(kType, text + ":"), DT_ERR_INVALID_VALUE) << place;
    }
}

TEST_F(CommunityList, TakesUpTo392Characters)
{
    EXPECT_EQ(Value(kType, "1" + std::string(390, ' ') + "2"), List("0100000000 0200000000"));
    EXPECT_EQ(CodeOf(kType, "1" + std::string(391, ' ') + "2"), DT_ERR_INVALID_VALUE);
    EXPECT_EQ(Value(kType, "1" + std::string(390, '\t') + "2"), List("0100000000 0200000000"));
    const std::string longest = Repeated("no-export-subconfed", 19, " ") + " 65535:65535"; // 379 and 12
    ASSERT_EQ(longest.size(), 391u);
    std::string longer = longest;
    longer.insert(19, " ");
    EXPECT_EQ(Value(kType, longer), List(Repeated("03ffffff00", 19) + "ffffffff01"));
    longer.insert(19, "\t");
    EXPECT_EQ(CodeOf(kType, longer), DT_ERR_INVALID_VALUE);                                   // 393
    EXPECT_EQ(CodeOf(kType, Repeated("no-export-subconfed", 20, " ")), DT_ERR_INVALID_VALUE); // 399
    // What is trimmed does not count.
    EXPECT_EQ(Value(kType, std::string(400, ' ') + "1" + std::string(400, '\t')), List("0100000000"));
    EXPECT_EQ(CodeOf(kType, std::string(1000, ' ')), DT_ERR_INVALID_VALUE);
    EXPECT_EQ(CodeOf(kType, std::string(100000, '1')), DT_ERR_INVALID_VALUE);
}

TEST_F(CommunityList, AllHalvesRoundTrip)
{
    // Each list carries eight of them, four times each.
    for (uint32_t base = 0; base <= 65535; base += 8) {
        std::string text;
        std::string value;
        for (uint32_t half = base; half < base + 8; ++half) {
            const std::string number = std::to_string(half);
            const std::string bytes = Le16(static_cast<uint16_t>(half));
            text += (half == base ? "" : " ") + number + ":1 7:" + number + " " + std::to_string(half + 131072) + " " +
                    number + ":65535";
            value += "0100" + bytes + "01" + bytes + "070001" + bytes + "020000" + "ffff" + bytes + "01";
        }
        ASSERT_EQ(Value(kType, text), value);
        ASSERT_EQ(Text(kType, value), text);
        if (base % 1024 == 0) {
            host::ResetHandle(Handle());
        }
    }
}

TEST_F(CommunityList, PrintsAtMost392Characters)
{
    const struct {
        std::string value;
        std::string whole;
    } rows[] = {
        {Repeated("03ffffff00", 32), Repeated("no-export-subconfed", 32, " ")},
        {Repeated("02ffffff00", 32), Repeated("no-advertise", 32, " ")},
        {Repeated("03ffffff00", 19) + Repeated("ffffffff01", 13),
         Repeated("no-export-subconfed", 19, " ") + Repeated(" 65535:65535", 13)},
        // 391 characters, then a blank at the last place
        {Repeated("03ffffff00", 19) + "ffffffff01" + Repeated("0100000000", 12),
         Repeated("no-export-subconfed", 19, " ") + " 65535:65535" + Repeated(" 1", 12)},
        // 390 characters, then a blank and one digit
        {Repeated("03ffffff00", 19) + "feffff0f01" + Repeated("0700000000", 12),
         Repeated("no-export-subconfed", 19, " ") + " 4095:65534" + Repeated(" 7", 12)},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.whole);
        ASSERT_GT(row.whole.size(), 392u);
        const Into into = FormatOutInto(Row(kType), row.value, 1, 393);
        EXPECT_EQ(into.out.code, DT_OK);
        EXPECT_EQ(into.out.length, 393);
        EXPECT_EQ(into.out.text, row.whole.substr(0, 392));
        EXPECT_TRUE(into.guardsIntact);
        EXPECT_EQ(Text(kType, row.value), row.whole.substr(0, 392));
    }
}

TEST_F(CommunityList, AFailingPrintIsAFailure)
{
    const std::string value = List("01ffffff00 0000000000 0700000000 0100640001");
    host::TakeCounters();
    EXPECT_EQ(Text(kType, value), "no-export internet 7 100:1");
    const uint32_t prints = host::TakeCounters().prints;
    EXPECT_GE(prints, 1u);
    for (uint32_t print = 1; print <= prints; ++print) {
        host::SetFaults({.failPrint = print});
        EXPECT_EQ(FormatOut(kType, value).code, DT_ERR_FAIL) << print;
    }
    for (const char *entries : {"01ffffff00", "0000000000", "0700000000", "0100640001"}) {
        host::SetFaults({.failPrint = 1});
        EXPECT_EQ(FormatOut(kType, List(entries)).code, DT_ERR_FAIL) << entries;
    }
}

TEST_F(CommunityList, EveryParsingModeRefusesAlike)
{
    constexpr uint8_t kParsing[] = {0, 1, 2, 3, 5, 6};
    for (const uint8_t mode : kParsing) {
        EXPECT_EQ(CodeOf(kType, "no_export", mode), DT_ERR_INVALID_VALUE) << int{mode};
        EXPECT_EQ(Value(kType, "no-export 1:1", mode), List("01ffffff00 0100010001")) << int{mode};
    }
    EXPECT_EQ(CodeOf(kType, "no_export", 4), DT_ERR_MODE_UNSUPPORTED);
    EXPECT_EQ(CodeOf(kType, "no_export", 7), DT_ERR_MODE_UNSUPPORTED);
}

TEST_F(CommunityList, EveryNameLookupNeedsACopyAndGivesItBack)
{
    EXPECT_EQ(CodesWhileAllocationsFail([] { return FormatIn(kType, "no-export 100:1 internet").code; }),
              (std::vector<uint32_t>{DT_ERR_INVALID_VALUE, DT_ERR_INVALID_VALUE, DT_ERR_NO_MEMORY}));
    EXPECT_EQ(CodesWhileAllocationsFail([] { return FormatIn(kType, "1 100:1 0").code; }),
              (std::vector<uint32_t>{DT_ERR_NO_MEMORY}));
    host::ResetHandle(Handle());

    host::TakeCounters();
    EXPECT_EQ(CodeOf(kType, "no-export 100:1 internet NO-ADVERTISE"), DT_OK);
    host::Counters counters = host::TakeCounters();
    EXPECT_EQ(counters.allocations, 4u);
    EXPECT_EQ(counters.plainAllocations, 0u);
    EXPECT_EQ(counters.frees, 3u);
    EXPECT_EQ(host::HandleBlocks(Handle()), 1u);

    EXPECT_EQ(CodeOf(kType, "no-export no-such-name internet"), DT_ERR_INVALID_VALUE);
    counters = host::TakeCounters();
    EXPECT_EQ(counters.allocations, 2u);
    EXPECT_EQ(counters.frees, 2u);
    EXPECT_EQ(host::HandleBlocks(Handle()), 1u);

    // The whole text is cut into items before the first one is looked up.
    EXPECT_EQ(CodeOf(kType, "no-export no_export"), DT_ERR_INVALID_VALUE);
    EXPECT_EQ(host::TakeCounters().allocations, 0u);

    host::SetFaults({.failAllocation = 1});
    const In in = FormatIn(kType, "no-export");
    EXPECT_EQ(in.code, DT_ERR_INVALID_VALUE);
    EXPECT_EQ(in.typeId, kUntouched);
    EXPECT_EQ(in.length, kUntouched);
    EXPECT_FALSE(in.bufferSet);
}

constexpr const char *kNames = "internet no-advertise no-export no-export-subconfed";

// clang-format off
constexpr Refused kReasons[] = {
    // text                     rule                at  length
    {"",                        "empty",             0,  0},
    {"\t \t",                   "empty",             3,  0},
    {"7 00000000000000000001",  "too-long",          2, 20, 19, "a community", "", 2},
    {"1 no_export",             "character",         4,  1, 0, "", "", 2},
    {"100:1,100:2",             "character",         5,  1, 0, "", "", 1},
    {"7 100:1x",                "character",         7,  1, 0, "", "", 2},
    {"no-exp \xe9",             "character",         7,  1, 0, "", "", 2}, // the whole text is cut first
    {"7 1: 2",                  "digit",             4,  0, 0, "", "", 2},
    {"7 : 8",                   "digit",             2,  1, 0, "", "", 2},
    {"1:2:3:4:5:6",             "too-many-numbers",  3,  1, 2, "", "", 1},
    {" 7 1:2:3",                "notation",          3,  5, 0, "", "", 2, 2, "number first:second"},
    {"7 a:b:c",                 "notation",          2,  5, 0, "", "", 2, 2, "number first:second"},
    {"100:1\t65536:1",          "too-large",         6,  5, 65535, "the first half", "", 2},
    {"1:65536",                 "too-large",         2,  5, 65535, "the second half", "", 1},
    {"7 8 4294967296",          "too-large",         4, 10, 4294967295, "the community", "", 3},
    {"no-export no-exp",        "unknown-name",     10,  6, 0, "", "", 2, 2, kNames},
    {"no-exp no-export",        "unknown-name",      0,  6, 0, "", "", 1, 2, kNames},
    {"internet:0",              "unknown-name",      0, 10, 0, "", "", 1, 2, kNames},
    {"no-exp",                  "unknown-name",      0,  6, 0, "", "", 1, 3, kNames},
    {"1",                       "mode",              0,  0, 4, "", "", 0, 4},
    {"1",                       "mode",              0,  0, 7, "", "", 0, 7},
};
// clang-format on

TEST_F(CommunityList, Reasons)
{
    const std::string many = '\t' + Repeated("9", 33, " ");
    const std::string longer = " 1" + std::string(391, ' ') + "2";
    std::vector<Refused> rows(std::begin(kReasons), std::end(kReasons));
    rows.push_back({many, "too-many-items", 65, 1, 32, "", "", 33});
    rows.push_back({longer, "too-long", 1, 393, 392});
    CheckRefusals(kType, rows);
    constexpr std::string_view kGood[] = {"0", " no-export\t100:1 4294967295 ", "INTERNET"};
    for (const uint8_t mode : {uint8_t{0}, uint8_t{1}, uint8_t{2}, uint8_t{3}, uint8_t{5}, uint8_t{6}}) {
        CheckAccepted(kType, kGood, mode);
    }
}

TEST_F(CommunityList, LackOfMemoryIsAReason)
{
    host::SetFaults({.failAllocation = 2});
    const BgpRefusal refusal = Explained(kType, "no-export 1 internet");
    EXPECT_EQ(Describe(refusal.Reason), "memory 12+8 limit 0 what 'the name' where '' element 3 expected ''");
    EXPECT_EQ(refusal.Reason.Code, DT_ERR_INVALID_VALUE);
}

TEST_F(CommunityList, NoItemWithTwoColonsIsLookedUp)
{
    for (const char *text : {"a:b:c", "no-export:1:2", "1:2:x", "::x"}) {
        host::TakeCounters();
        EXPECT_EQ(CodeOf(kType, text), DT_ERR_INVALID_VALUE) << text;
        EXPECT_EQ(host::TakeCounters().allocations, 0u) << text;
    }
    EXPECT_EQ(CodeOf(kType, "a:b"), DT_ERR_INVALID_VALUE); // one colon is looked up
    EXPECT_EQ(host::TakeCounters().allocations, 1u);
    EXPECT_EQ(CodeOf(kType, "no-export a:b:c no-export"), DT_ERR_INVALID_VALUE); // and so are the items before
    EXPECT_EQ(host::TakeCounters().allocations, 1u);
}

TEST_F(CommunityList, Facts)
{
    const BgpTypeFacts *facts = Bgp_DescribeType(326);
    ASSERT_NE(facts, nullptr);
    EXPECT_STREQ(facts->Name, kType);
    EXPECT_STREQ(facts->Reference, "RFC 1997");
    EXPECT_EQ(facts->ResultTypeId, 326);
    EXPECT_EQ(facts->ValueLength, 160);
    EXPECT_EQ(facts->CheckedLength, 160);
    EXPECT_EQ(facts->TextSize, 393);
    EXPECT_EQ(facts->ShortestText, 1);
    EXPECT_EQ(facts->LongestText, 392);
    EXPECT_EQ(facts->TypingMode, 2);
    EXPECT_EQ(facts->Order, BGP_ORDER_TOTAL);
    EXPECT_EQ(facts->Network, BGP_NETWORK_ENDIAN);
    EXPECT_EQ(facts->Lua, BGP_LUA_ALL);
    EXPECT_EQ(facts->Traits, 0u);
    EXPECT_EQ(facts->NotationCount, 0u);
    EXPECT_EQ(facts->Layout->Length, 5u);
    EXPECT_EQ(Bgp_DescribeValue(326, nullptr, 0), facts->Layout);
}

} // namespace
} // namespace bgp::test
