#include "support/refusals.h"
#include "support/type_case.h"

#include "bgp_host_services.h"

namespace bgp::test {
namespace {

// ASNUM_ENHANCE: 256 entries of 5 bytes, AS number (host order) and notation; zeros are unused entries.
constexpr const char *kType = "ASNUM_ENHANCE";
constexpr size_t kLength = 1280;

class AsNumList : public PlugIn {};

std::string List(std::string_view entries)
{
    return Padded(entries, kLength);
}

std::string Quoted(const std::string &text)
{
    return '"' + text + '"';
}

const std::vector<TextCase> kAccepted = {
    {"1", List("0100000000")},
    {"100 200  1.5", List("6400000000 c800000000 0500010001"), "100 200 1.5"},
    {"100\t200", List("6400000000 c800000000"), "100 200"},
    {"100 \t \t 200", List("6400000000 c800000000"), "100 200"},
    {"  7  ", List("0700000000"), "7"},
    {"\t7\t8\t", List("0700000000 0800000000"), "7 8"},
    {"7 7 7", List("0700000000 0700000000 0700000000")},
    {"3 2 1", List("0300000000 0200000000 0100000000")},
    {"65535 65536", List("ffff000000 0000010000")},
    {"1.0 65536", List("0000010001 0000010000")},
    {"4294967295 65535.65535", List("ffffffff00 ffffffff01")},
    {"2147483648", List("0000008000")},
    {"1.65535 65535.0", List("ffff010001 0000ffff01")},
    {"00000000001 00001.00002", List("0100000000 0200010001"), "1 1.2"},
};

const std::vector<std::string> kRefused = {
    "",
    " ",
    "\t \t",
    "0",
    "100 0",
    "0 100",
    "00000000000",
    "100,200",
    "100, 200",
    "100;200",
    "4294967296",
    "1 4294967296",
    "99999999999",
    "000000000001", // 12 characters
    "1 100000000000",
    "0.5",
    "0.0",
    "1 0.1",
    "1.65536",
    "65536.1",
    "65536.0",
    "999999999.1",
    "1.4294967297",
    "1.",
    ".1",
    ".",
    "1 . 2",
    "1..2",
    "1.2.3",
    "10.1.1.1",
    "1 2.3.4",
    "a",
    "1 a",
    "100:1",
    "1e5",
    "+5",
    "-1",
    "0x10",
    "1\n2",
    "1\r",
    "1\v2",
    "1\xa0"
    "2",
    "\xb1",
    "\"1\"",
    "internet",
    "{1,2}",
};

std::vector<LuaCase> LuaTables()
{
    const std::string all = "{asNumValue=16909060, asType=5}";
    const std::vector<TextCase> read = {
        // table, entries
        {"{stAsNum={" + Repeated(all, 256, ",") + "}}", Repeated("0403020105", 256)},
        {"{stAsNum={" + Repeated(all, 257, ",") + "}}", Repeated("0403020105", 256)}, // the last one is not read
        {"{stAsNum={{asNumValue=4294967295, asType=1}, {asNumValue=100, asType=0}}}", "ffffffff01 6400000000"},
        {"{stAsNum={}}", ""},
        {"{stAsNum={{asNumValue=7}, {asType=1}, {}}}", "0700000000 0000000001"},
        {"{stAsNum={5, 'x', true, {asNumValue=9, asType=1}}}", "0000000000 0000000000 0000000000 0900000001"},
        {"{stAsNum={{asNumValue='x', asType={}}, {asNumValue='8', asType='1'}}}", "0000000000 0800000001"},
        {"{stAsNum={{asNumValue=4294967296, asType=256}, {asNumValue=4294967297, asType=258}}}",
         "0000000000 0100000002"},
        {"{stAsNum={{asNumValue=-1, asType=-1}}}", "ffffffffff"},
        {"{stAsNum={[2]={asNumValue=2, asType=1}, [256]={asNumValue=6, asType=0}}}",
         "0000000000 0200000001" + Repeated("0000000000", 253) + "0600000000"},
    };
    std::vector<LuaCase> cases;
    for (const TextCase &c : read) {
        cases.push_back({c.text, DT_OK, List(c.value), 1}); // the fetched table stays
    }
    for (const auto &[table, growth] :
         {std::pair("nil", 1), std::pair("7", 1), std::pair("'x'", 1), std::pair("{}", 2), std::pair("{stAsNum=5}", 2),
          std::pair("{stAsNum='x'}", 2), std::pair("{stasnum={}}", 2)}) {
        cases.push_back({table, DT_ERR_INVALID_PARAM, Unwritten(kLength), growth});
    }
    return cases;
}

TypeCase Case()
{
    return {
        .row = {325, 1280, 26, "ASNUM_ENHANCE", &SYSDT_AsNumEnhanceFormatIn, &SYSDT_AsNumEnhanceFormatOut,
                &SYSDT_AsNumEnhanceCheck, &SYSDT_AsNumEnhanceHelp, &SYSDT_BlockCompare, nullptr, &SYSDT_AsNumEnLuaSet,
                &SYSDT_AsNumEnLuaGet, &SYSDT_AsNumEnhanceLuaEndian},
        // FormatIn takes quotes in mode 1, and has its own sweep below.
        .contract = {.value = List("6400000000 0000010001"),
                     .inModes = "F-PFUFPU",
                     .outModes = "FTTFUFTU",
                     .helpModes = "-H----H-",
                     .helpText = "STRING<1-3071>",
                     .textSize = 3072},
        .swept = false,
        .accepted = kAccepted,
        .refused = kRefused,
        .prints =
            {
                {"", List("")},
                {"", List("0000000001")}, // the notation of an unused entry says nothing
                {"7", List("0000000000 0700000000")},
                {"1.0", List("0000000001 0000010001")},
                {"7 8", List("0700000000 0000000000 0000000000 0800000000")},
                {"65536 1.0 1.0 1.0", List("0000010000 0000010001 0000010002 00000100ff")},
                {"0.5", List("0500000001")},
                {"4294967295 65535.65535", List("ffffffff00 ffffffff01")},
                {"0.9", Repeated("0000000000", 255) + "0900000001"},
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
                {Repeated("0102030405", 256), Repeated("0403020105", 256)},
                {Repeated("04030201ff", 256), Repeated("01020304ff", 256)},
            },
        .luaSets =
            {
                {List("ffffffff01 6400000000 00000000ff"),
                 "{stAsNum={{asNumValue=4294967295, asType=1},{asNumValue=100, asType=0},{asNumValue=0, asType=255}" +
                     Repeated(",{asNumValue=0, asType=0}", 253) + "}}"},
                {Repeated("0403020105", 256),
                 "{stAsNum={" + Repeated("{asNumValue=16909060, asType=5}", 256, ",") + "}}"},
            },
        .luaGets = LuaTables(),
    };
}

[[maybe_unused]] const bool kStated = StateTests<AsNumList>("AsNumList", Case());

TEST_F(AsNumList, ModeOneReadsTheSameInQuotes)
{
    for (const TextCase &c : kAccepted) {
        EXPECT_EQ(Value(kType, Quoted(c.text), 1), c.value) << c.text;
    }
    for (const std::string &text : kRefused) {
        SCOPED_TRACE(text);
        ExpectRefused(FormatIn(kType, Quoted(text), 1), DT_ERR_INVALID_VALUE);
    }
}

TEST_F(AsNumList, ModeOneWantsQuotes)
{
    for (const char *text : {"100 200", "100", "1", "", "\"", "\"100", "100\"", " \"100\"", "\"100\" ", "'100'", "\t",
                             "\"\"\t", "0", "x", "\"100\"\n"}) {
        SCOPED_TRACE(text);
        const In in = FormatIn(kType, text, 1);
        ExpectRefused(in, DT_ERR_MODE_UNSUPPORTED);
        EXPECT_TRUE(in.textKept);
    }
    ExpectRefused(FormatIn(kType, "\"\"", 1), DT_ERR_INVALID_VALUE); // quoted, and empty
    ExpectRefused(FormatIn(kType, "\" \"", 1), DT_ERR_INVALID_VALUE);
    ExpectRefused(FormatIn(kType, "\"\"100\"\"", 1), DT_ERR_INVALID_VALUE);
    EXPECT_EQ(Value(kType, "\"  100 \t\"", 1), List("6400000000"));
}

TEST_F(AsNumList, TheLengthArgumentCountsInModeOneAlone)
{
    const DataTypeDescriptor &row = Row(kType);
    ExpectRefused(FormatIn(row, "\"100\"", 1, 1), DT_ERR_MODE_UNSUPPORTED);
    ExpectRefused(FormatIn(row, "\"100\"", 1, 2), DT_ERR_MODE_UNSUPPORTED);
    // From 3 on the text's own terminator tells where the closing quote stands.
    for (const uint32_t length : {3u, 5u, 6u, 7u, 1000u, 0xFFFFFFFFu}) {
        EXPECT_EQ(FormatIn(row, "\"100\"", 1, length).value, List("6400000000")) << length;
        ExpectRefused(FormatIn(row, "", 1, length), DT_ERR_MODE_UNSUPPORTED);
        ExpectRefused(FormatIn(row, "100", 1, length), DT_ERR_MODE_UNSUPPORTED);
        ExpectRefused(FormatIn(row, "\"100", 1, length), DT_ERR_MODE_UNSUPPORTED);
        EXPECT_NE(FormatIn(row, "\"", 1, length).code, DT_OK);
    }
    EXPECT_EQ(FormatIn(row, "100", 2, 1).value, List("6400000000"));
    EXPECT_EQ(FormatIn(row, "100", 6, 1000).value, List("6400000000"));

    char text[] = "\"100\"";
    const DataTypeRequest request{1, Handle()};
    uint16_t typeId = kUntouched;
    uint16_t length = kUntouched;
    void *buffer = nullptr;
    EXPECT_EQ(row.FormatIn(&request, 325, 0, text, &typeId, &length, &buffer), DT_ERR_MODE_UNSUPPORTED);
    EXPECT_STREQ(text, "\"100\"");
}

TEST_F(AsNumList, ModeOneEndsTheTextAtItsClosingQuote)
{
    const struct {
        const char *text;
        uint32_t code;
    } rows[] = {
        {"\"100 \"", DT_OK}, {"\" 1 2\"", DT_OK}, {"\"1,2\"", DT_ERR_INVALID_VALUE}, {"\"\"", DT_ERR_INVALID_VALUE}};
    for (const auto &row : rows) {
        SCOPED_TRACE(row.text);
        std::string text = row.text;
        std::string expected = text;
        expected.back() = '\0';
        const DataTypeRequest request{1, Handle()};
        uint16_t typeId = kUntouched;
        uint16_t length = kUntouched;
        void *buffer = nullptr;
        EXPECT_EQ(Row(kType).FormatIn(&request, 325, static_cast<uint32_t>(text.size() + 1), text.data(), &typeId,
                                      &length, &buffer),
                  row.code);
        EXPECT_EQ(text, expected); // nothing but the quote
    }
}

TEST_F(AsNumList, TakesUpTo256Numbers)
{
    for (const uint8_t mode : {uint8_t{1}, uint8_t{2}, uint8_t{6}}) {
        SCOPED_TRACE(int{mode});
        const auto typed = [mode](const std::string &text) { return mode == 1 ? Quoted(text) : text; };
        const std::string most = Repeated("9", 256, " ");
        EXPECT_EQ(Value(kType, typed(most), mode), Repeated("0900000000", 256));
        EXPECT_EQ(Text(kType, Repeated("0900000000", 256), mode), most);
        EXPECT_EQ(CodeOf(kType, typed(most + " 9"), mode), DT_ERR_INVALID_VALUE);
        EXPECT_EQ(CodeOf(kType, typed(Repeated("9", 400, " ")), mode), DT_ERR_INVALID_VALUE);
        EXPECT_EQ(Value(kType, typed(" \t" + most + "  "), mode), Repeated("0900000000", 256));
        EXPECT_EQ(Value(kType, typed(Repeated("9", 255, " ")), mode), List(Repeated("0900000000", 255)));
    }
}

TEST_F(AsNumList, TakesUpTo3071Characters)
{
    const std::string longest = Repeated("65535.65535", 256, " ");
    ASSERT_EQ(longest.size(), 3071u);
    EXPECT_EQ(Value(kType, longest, 2), Repeated("ffffffff01", 256));
    EXPECT_EQ(Value(kType, Quoted(longest), 1), Repeated("ffffffff01", 256));
    std::string longer = longest;
    longer.insert(11, " ");
    EXPECT_EQ(CodeOf(kType, longer, 2), DT_ERR_INVALID_VALUE);
    EXPECT_EQ(CodeOf(kType, Quoted(longer), 1), DT_ERR_INVALID_VALUE);

    EXPECT_EQ(Value(kType, "1" + std::string(3069, ' ') + "2", 2), List("0100000000 0200000000"));
    EXPECT_EQ(CodeOf(kType, "1" + std::string(3070, ' ') + "2", 2), DT_ERR_INVALID_VALUE);
    EXPECT_EQ(CodeOf(kType, std::string(100000, '1'), 2), DT_ERR_INVALID_VALUE);
    // What is trimmed does not count.
    EXPECT_EQ(Value(kType, std::string(4000, ' ') + "1" + std::string(4000, '\t'), 2), List("0100000000"));
    EXPECT_EQ(CodeOf(kType, std::string(70000, ' '), 2), DT_ERR_INVALID_VALUE);
}

TEST_F(AsNumList, EveryPlaceOfTheListIsRead)
{
    for (size_t place = 0; place < 256; ++place) {
        std::string text = Repeated("1", place, " ") + (place == 0 ? "" : " ") + "65535.2";
        EXPECT_EQ(Value(kType, text, 2), List(Repeated("0100000000", place) + "0200ffff01")) << place;
        EXPECT_EQ(CodeOf(kType, text + ".", 2), DT_ERR_INVALID_VALUE) << place;
        host::ResetHandle(Handle());
    }
}

TEST_F(AsNumList, AllLowAndHighHalvesRoundTrip)
{
    // 771 lists of 85 halves, each in three places; 0 stands in one of them only.
    EXPECT_EQ(RoundTrip(kType, "7.0", 2), "7.0");
    for (uint32_t first = 1; first <= 65535; first += 85) {
        std::string text;
        std::string value;
        for (uint32_t half = first; half < first + 85; ++half) {
            const std::string number = std::to_string(half);
            const std::string bytes = Le16(static_cast<uint16_t>(half));
            text += (half == first ? "7." : " 7.") + number + " " + number + " " + number + ".9";
            value += bytes + "070001" + bytes + "000000" + "0900" + bytes + "01";
        }
        ASSERT_EQ(Value(kType, text, 2), List(value));
        ASSERT_EQ(Text(kType, List(value), 2), text);
        host::ResetHandle(Handle());
    }
}

TEST_F(AsNumList, TheLongestTextFillsItsBuffer)
{
    const std::string value = Repeated("ffffffff01", 256);
    const Out out = FormatOut(kType, value);
    EXPECT_EQ(out.code, DT_OK);
    EXPECT_EQ(out.length, 3072);
    EXPECT_EQ(out.text, Repeated("65535.65535", 256, " "));
    const Into into = FormatOutInto(Row(kType), value, 1, 3072);
    EXPECT_EQ(into.out.code, DT_OK);
    EXPECT_EQ(into.out.text, out.text);
    EXPECT_TRUE(into.guardsIntact);
    EXPECT_EQ(into.buffer.back(), '\0');
    // Plain numbers are at most as long.
    EXPECT_EQ(Text(kType, Repeated("ffffffff00", 256)), Repeated("4294967295", 256, " "));
}

TEST_F(AsNumList, AFailingPrintOrCopyIsAFailure)
{
    const std::string value = List("0700000000 0800000001 0900000000");
    host::TakeCounters();
    EXPECT_EQ(Text(kType, value), "7 0.8 9");
    const uint32_t prints = host::TakeCounters().prints;
    EXPECT_GE(prints, 1u);
    for (uint32_t print = 1; print <= prints; ++print) {
        host::SetFaults({.failPrint = print});
        EXPECT_EQ(FormatOut(kType, value).code, DT_ERR_FAIL) << print;
    }
    host::SetFaults({.failCopy = 1});
    EXPECT_EQ(FormatOut(kType, value).code, DT_ERR_FAIL);
}

TEST_F(AsNumList, ObeysTheContract)
{
    // FormatIn takes quotes in mode 1 only and has its own sweep below.
    Sweep(Row(kType), {.text = "",
                       .value = List("6400000000 0000010001"),
                       .inModes = "",
                       .outModes = "FTTFUFTU",
                       .helpModes = "-H----H-",
                       .helpText = "STRING<1-3071>",
                       .resultTypeId = 325,
                       .resultLength = 1280,
                       .textSize = 3072});
}

TEST_F(AsNumList, FormatInByMode)
{
    for (const uint8_t mode : kAllModes) {
        SCOPED_TRACE(int{mode});
        const bool parses = mode == 1 || mode == 2 || mode == 6;
        const char *text = mode == 1 ? "\"100\"" : "100";
        const In in = FormatIn(kType, text, mode);
        if (!parses) {
            ExpectRefused(in, mode == 4 || mode > 6 ? DT_ERR_MODE_UNSUPPORTED : DT_ERR_FAIL);
            EXPECT_TRUE(in.textKept);
            ExpectRefused(FormatIn(kType, "\"100\"", mode),
                          mode == 4 || mode > 6 ? DT_ERR_MODE_UNSUPPORTED : DT_ERR_FAIL);
            continue;
        }
        EXPECT_EQ(in.value, List("6400000000"));
        host::SetFaults({.failAllocation = 1, .failAllAfter = true});
        const In failed = FormatIn(kType, text, mode);
        host::SetFaults({});
        EXPECT_EQ(failed.code, DT_ERR_NO_MEMORY);
        EXPECT_EQ(failed.typeId, 325);
        EXPECT_EQ(failed.length, 0);
        EXPECT_FALSE(failed.bufferSet);
        EXPECT_EQ(CodesWhileAllocationsFail([&] { return FormatIn(kType, text, mode).code; }),
                  std::vector<uint32_t>{DT_ERR_NO_MEMORY});
        host::TakeCounters();
        ExpectRefused(FormatIn(kType, mode == 1 ? "\"x\"" : "x", mode), DT_ERR_INVALID_VALUE);
        EXPECT_EQ(host::TakeCounters().allocations, 0u);
    }
}

TEST_F(AsNumList, FormatInNeedsEveryPointerInEveryMode)
{
    for (const uint8_t mode : kAllModes) {
        for (int missing = 0; missing < 5; ++missing) {
            SCOPED_TRACE("mode " + std::to_string(mode) + ", argument " + std::to_string(missing));
            const DataTypeRequest request{mode, Handle()};
            char text[] = "\"100\"";
            uint16_t typeId = kUntouched;
            uint16_t length = kUntouched;
            void *buffer = text;
            EXPECT_EQ(Row(kType).FormatIn(missing == 0 ? nullptr : &request, 325, sizeof text,
                                          missing == 1 ? nullptr : text, missing == 2 ? nullptr : &typeId,
                                          missing == 3 ? nullptr : &length, missing == 4 ? nullptr : &buffer),
                      DT_ERR_NULL_PTR);
            EXPECT_STREQ(text, "\"100\"");
            EXPECT_EQ(typeId, kUntouched);
            EXPECT_EQ(length, kUntouched);
            EXPECT_EQ(buffer, text);
        }
    }
}

// clang-format off
constexpr Refused kReasons[] = {
    // text               rule                at  length
    {"",                  "empty",             0,  0},
    {"\t \t",             "empty",             3,  0},
    {"1 100000000000",    "too-long",          2, 12, 11, "the AS number", "", 2},
    {"1 2 a",             "digit",             4,  1, 0, "", "", 3},
    {"1 2. 3",            "digit",             4,  0, 0, "", "", 2},
    {"1 . 2",             "digit",             2,  1, 0, "", "", 2},
    {"100,200",           "character",         3,  1, 0, "", "", 1},
    {" 100 200,",         "character",         8,  1, 0, "", "", 2},
    {"1\r",               "character",         1,  1, 0, "", "", 1},
    {"1.2.3.4.5.6",       "too-many-numbers",  3,  1, 2, "", "", 1},
    {"1 2.3.4",           "notation",          2,  5, 0, "", "", 2, 2, "number high.low"},
    {"100 0",             "too-small",         4,  1, 1, "the AS number", "", 2},
    {"1\t0.5",            "too-small",         2,  1, 1, "the high part", "", 2},
    {"1 4294967296 x",    "too-large",         2, 10, 4294967295, "the AS number", "", 2},
    {"7  1.65536",        "too-large",         5,  5, 65535, "the low part", "", 2},
    {"\"100\"",           "digit",             0,  1, 0, "", "", 1},
    // in double quotes
    {"",                  "quote",             0,  0, 0, "", "", 0, 1},
    {"100 200",           "quote",             0,  0, 0, "", "", 0, 1},
    {" \"100\"",          "quote",             0,  0, 0, "", "", 0, 1},
    {"\"",                "quote",             1,  0, 0, "", "", 0, 1},
    {"\"100",             "quote",             4,  0, 0, "", "", 0, 1},
    {"\"100\" ",          "quote",             6,  0, 0, "", "", 0, 1},
    {"\"\"",              "empty",             1,  0, 0, "", "", 0, 1},
    {"\" \t\"",           "empty",             3,  0, 0, "", "", 0, 1},
    {"\"100 0\"",         "too-small",         5,  1, 1, "the AS number", "", 2, 1},
    {"\" 1 x \"",         "digit",             4,  1, 0, "", "", 2, 1},
    {"\"\"1\"",           "digit",             1,  1, 0, "", "", 1, 1},
    {"1",                 "mode",              0,  0, 0, "", "", 0, 0},
    {"1",                 "mode",              0,  0, 3, "", "", 0, 3},
    {"1",                 "mode",              0,  0, 4, "", "", 0, 4},
    {"1",                 "mode",              0,  0, 7, "", "", 0, 7},
};
// clang-format on

TEST_F(AsNumList, Reasons)
{
    const std::string many = Repeated("9", 257, " ");
    const std::string quotedMany = Quoted(' ' + many);
    const std::string longer = " 1" + std::string(3070, ' ') + "2";
    std::vector<Refused> rows(std::begin(kReasons), std::end(kReasons));
    rows.push_back({many, "too-many-items", 512, 1, 256, "", "", 257});
    rows.push_back({quotedMany, "too-many-items", 514, 1, 256, "", "", 257, 1});
    rows.push_back({longer, "too-long", 1, 3072, 3071});
    CheckRefusals(kType, rows);
    constexpr std::string_view kGood[] = {"1", " 100 200\t1.5 ", "4294967295 65535.65535"};
    CheckAccepted(kType, kGood, 2);
    CheckAccepted(kType, kGood, 6);
    constexpr std::string_view kQuoted[] = {"\"1\"", "\" 100 200\t1.5 \""}; // Explained() holds them to be left alone
    CheckAccepted(kType, kQuoted, 1);
}

TEST_F(AsNumList, Facts)
{
    const BgpTypeFacts *facts = Bgp_DescribeType(325);
    ASSERT_NE(facts, nullptr);
    EXPECT_STREQ(facts->Name, kType);
    EXPECT_EQ(facts->ResultTypeId, 325);
    EXPECT_EQ(facts->ValueLength, 1280);
    EXPECT_EQ(facts->CheckedLength, 1280);
    EXPECT_EQ(facts->TextSize, 3072);
    EXPECT_EQ(facts->ShortestText, 1);
    EXPECT_EQ(facts->LongestText, 3071);
    EXPECT_EQ(facts->TypingMode, 2);
    EXPECT_EQ(facts->Order, BGP_ORDER_TOTAL);
    EXPECT_EQ(facts->Network, BGP_NETWORK_ENDIAN);
    EXPECT_EQ(facts->Lua, BGP_LUA_ALL);
    EXPECT_EQ(facts->Traits, BGP_TRAIT_WRITES_TEXT);
    EXPECT_EQ(facts->NotationCount, 0u);
    EXPECT_EQ(facts->Layout->Length, 5u);
    EXPECT_EQ(Bgp_DescribeValue(325, nullptr, 0), facts->Layout);
}

} // namespace
} // namespace bgp::test
