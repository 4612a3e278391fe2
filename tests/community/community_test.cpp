#include "support/harness.h"

#include <cstring>

namespace bgp::test {
namespace {

// COMMUNITY: community (u32) and form (u32), both host order.
constexpr const char *kType = "COMMUNITY";

class Community : public PlugIn {};

struct Accepted {
    const char *text;
    const char *value;
    const char *printed;
};

constexpr Accepted kAccepted[] = {
    {"internet", "00000000 00000000", "internet"},
    {"no-export", "01ffffff 00000000", "no-export"},
    {"no-advertise", "02ffffff 00000000", "no-advertise"},
    {"no-export-subconfed", "03ffffff 00000000", "no-export-subconfed"},
    {"No-Export", "01ffffff 00000000", "no-export"},
    {"NO-EXPORT", "01ffffff 00000000", "no-export"},
    {"nO-aDvErTiSe", "02ffffff 00000000", "no-advertise"},
    {"NO-EXPORT-SUBCONFED", "03ffffff 00000000", "no-export-subconfed"},
    {"Internet", "00000000 00000000", "internet"},
    {"0", "00000000 00000000", "internet"},
    {"0:0", "00000000 01000000", "internet"},
    {"1", "01000000 00000000", "1"},
    {"100", "64000000 00000000", "100"},
    {"65536", "00000100 00000000", "65536"},
    {"4294967040", "00ffffff 00000000", "4294967040"},
    {"4294967041", "01ffffff 00000000", "no-export"},
    {"4294967042", "02ffffff 00000000", "no-advertise"},
    {"4294967043", "03ffffff 00000000", "no-export-subconfed"},
    {"4294967044", "04ffffff 00000000", "4294967044"},
    {"4294967295", "ffffffff 00000000", "4294967295"},
    {"0:1", "01000000 01000000", "0:1"},
    {"1:0", "00000100 01000000", "1:0"},
    {"100:1", "01006400 01000000", "100:1"},
    {"65535:0", "0000ffff 01000000", "65535:0"},
    {"65535:65280", "00ffffff 01000000", "65535:65280"},
    {"65535:65281", "01ffffff 01000000", "no-export"},
    {"65535:65282", "02ffffff 01000000", "no-advertise"},
    {"65535:65283", "03ffffff 01000000", "no-export-subconfed"},
    {"65535:65284", "04ffffff 01000000", "65535:65284"},
    {"65535:65535", "ffffffff 01000000", "65535:65535"},
    {"00100:00001", "01006400 01000000", "100:1"},
    {"0000000001:00000001", "01000100 01000000", "1:1"}, // 19 characters
    {"0000000004294967295", "ffffffff 00000000", "4294967295"},
    {" 100:1 ", "01006400 01000000", "100:1"},
    {"\t no-export\t", "01ffffff 00000000", "no-export"},
};

constexpr const char *kRefused[] = {
    "",
    " ",
    "\t",
    "4294967296",
    "4294967297",
    "9999999999",
    "9999999999999999999",
    "18446744073709551616",
    "00000000000000000001", // 20 characters
    "0000000001:000000001",
    "65536:1",
    "1:65536",
    "65536:65536",
    "4294967296:1",
    "1:4294967296",
    "4294967297:1",
    "1:4294967297",
    "1:2:3",
    "1::2",
    ":",
    "::",
    "1:",
    ":1",
    "1:2:",
    "100 :1",
    "100: 1",
    "1 2",
    "1\t2",
    "no export",
    "no -export",
    "no-exp",
    "no-exporT-",
    "no-exports",
    "no-export-",
    "no-export-subconfe",
    "no-export-subconfedx",
    "no-advertised",
    "no-advertis",
    "no_export",
    "noexport",
    "no",
    "no-",
    "n",
    "-",
    "export",
    "o-export",
    "no-exportno-export",
    "internet2",
    "interne",
    "nternet",
    "internetinternet",
    "local-as",
    "no-peer",
    "blackhole",
    "no-export:1",
    "internet:0",
    "100:1x",
    "x100:1",
    "0x10",
    "1.2",
    "1.2:3",
    "10.1.1.1:5",
    "+1",
    "-1",
    "1e5",
    "1\n",
    "no-export\n",
    "no-export\r",
    "\xe9nternet",
    "no-export\xff",
    "1\xb2",
    "100\xa0:1",
};

TEST_F(Community, ReadsNamesHalvesAndNumbers)
{
    for (const Accepted &row : kAccepted) {
        for (const uint8_t mode : kTextModes) {
            SCOPED_TRACE(row.text);
            const In in = FormatIn(kType, row.text, mode);
            EXPECT_EQ(in.code, DT_OK);
            EXPECT_EQ(in.typeId, 256);
            EXPECT_EQ(in.length, 8);
            EXPECT_EQ(in.value, Hex(Bytes(row.value)));
            EXPECT_TRUE(in.textKept);
            EXPECT_EQ(Text(kType, row.value, mode), row.printed);
        }
    }
}

TEST_F(Community, RefusesWhatIsNoCommunity)
{
    for (const char *text : kRefused) {
        const In in = FormatIn(kType, text);
        EXPECT_EQ(in.code, DT_ERR_INVALID_VALUE) << '"' << text << '"';
        EXPECT_EQ(in.typeId, kUntouched);
        EXPECT_EQ(in.length, kUntouched);
        EXPECT_FALSE(in.bufferSet);
        EXPECT_TRUE(in.textKept);
    }
    EXPECT_EQ(host::HandleBlocks(Handle()), 0u); // the copies of the looked-up names are given back
}

TEST_F(Community, AllHalvesRoundTrip)
{
    for (uint32_t half = 0; half <= 65535; ++half) {
        const std::string number = std::to_string(half);
        const std::string bytes = Le16(static_cast<uint16_t>(half));
        const struct {
            std::string text;
            std::string value;
        } rows[] = {
            {number + ":1", "0100" + bytes + "01000000"},
            {"1:" + number, bytes + "010001000000"},
            {number + ":65535", "ffff" + bytes + "01000000"},
            {"65534:" + number, bytes + "feff01000000"},
        };
        for (const auto &row : rows) {
            const std::string value = Value(kType, row.text);
            ASSERT_EQ(value, row.value) << row.text;
            ASSERT_EQ(Text(kType, value), row.text);
        }
        if (half % 1024 == 0) {
            host::ResetHandle(Handle());
        }
    }
}

TEST_F(Community, AllPlainLowAndHighHalvesRoundTrip)
{
    for (uint32_t half = 1; half <= 65535; ++half) {
        const std::string low = std::to_string(half);
        const std::string lowValue = Value(kType, low);
        ASSERT_EQ(lowValue, Le16(static_cast<uint16_t>(half)) + "000000000000");
        ASSERT_EQ(Text(kType, lowValue), low);
        const std::string high = std::to_string(half * 65536);
        const std::string highValue = Value(kType, high);
        ASSERT_EQ(highValue, "0000" + Le16(static_cast<uint16_t>(half)) + "00000000");
        ASSERT_EQ(Text(kType, highValue), high);
        if (half % 1024 == 0) {
            host::ResetHandle(Handle());
        }
    }
}

TEST_F(Community, AnyAmountOfOuterBlanksIsTrimmed)
{
    const std::string blanks(500, ' ');
    const std::string tabs(500, '\t');
    EXPECT_EQ(Value(kType, blanks + "100:1" + tabs), "0100640001000000");
    EXPECT_EQ(Value(kType, tabs + "no-export-subconfed" + blanks), "03ffffff00000000");
    EXPECT_EQ(CodeOf(kType, blanks + tabs), DT_ERR_INVALID_VALUE);
    EXPECT_EQ(CodeOf(kType, std::string(100000, '1')), DT_ERR_INVALID_VALUE);
    EXPECT_EQ(CodeOf(kType, std::string(100000, 'n')), DT_ERR_INVALID_VALUE);
}

TEST_F(Community, TheParserReportsItsOwnCodes)
{
    uint8_t value[8];
    EXPECT_EQ(SYSDT_Str2Community(Handle(), nullptr, value), DT_ERR_NULL_PTR);
    EXPECT_EQ(SYSDT_Str2Community(Handle(), "1", nullptr), DT_ERR_NULL_PTR);
    EXPECT_EQ(SYSDT_Str2Community(Handle(), "", value), DT_ERR_FAIL);
    EXPECT_EQ(SYSDT_Str2Community(Handle(), "1 2", value), DT_ERR_FAIL);
    EXPECT_EQ(SYSDT_Str2Community(Handle(), "1:2:3", value), DT_ERR_FAIL);
    EXPECT_EQ(SYSDT_Str2Community(Handle(), "4294967296", value), DT_ERR_FAIL);
    EXPECT_EQ(SYSDT_Str2Community(Handle(), "no-exp", value), DT_ERR_FAIL);
    EXPECT_EQ(SYSDT_Str2Community(Handle(), "100:1", value), DT_OK);
    EXPECT_EQ(Hex(value, sizeof value), "0100640001000000");
    EXPECT_EQ(SYSDT_Str2Community(Handle(), "No-Export", value), DT_OK);
    EXPECT_EQ(Hex(value, sizeof value), "01ffffff00000000");
    host::SetFaults({.failAllocation = 1});
    EXPECT_EQ(SYSDT_Str2Community(Handle(), "no-export", value), DT_ERR_NO_MEMORY);
    host::SetFaults({.failAllocation = 1});
    EXPECT_EQ(SYSDT_Str2Community(Handle(), "xyz", value), DT_ERR_NO_MEMORY);
    host::SetFaults({});
    EXPECT_EQ(host::HandleBlocks(Handle()), 0u);
}

TEST_F(Community, OnlyNamesCostMemory)
{
    uint8_t value[8];
    host::TakeCounters();
    for (const char *text : {"1", "100:1", "1:2:3", "4294967296", "no-export-subconfedx", "no export", ""}) {
        (void)SYSDT_Str2Community(Handle(), text, value);
        EXPECT_EQ(host::TakeCounters().allocations, 0u) << text;
    }
    for (const char *text : {"no-export", "internet", "no-exp", "1.2"}) {
        (void)SYSDT_Str2Community(Handle(), text, value);
        const host::Counters counters = host::TakeCounters();
        EXPECT_EQ(counters.allocations, 1u) << text;
        EXPECT_EQ(counters.plainAllocations, 0u) << text;
        EXPECT_EQ(counters.frees, 1u) << text;
    }
}

TEST_F(Community, TheNameLookupGivesItsCopyBack)
{
    host::RecordReleases(true);
    for (const char *text : {"no-export", "internet", "NO-EXPORT-SUBCONFED", "no-such-name"}) {
        host::TakeReleases();
        const In in = FormatIn(kType, text);
        const std::vector<host::Release> releases = host::TakeReleases();
        ASSERT_EQ(releases.size(), 1u) << text;
        EXPECT_TRUE(releases[0].known) << text;
        EXPECT_EQ(host::HandleBlocks(Handle()), in.code == DT_OK ? 1u : 0u) << text; // the value alone
        host::ResetHandle(Handle());
    }
}

TEST_F(Community, TheNameLookupAlone)
{
    uint32_t word[2] = {0, 0};
    EXPECT_EQ(BRM_GetWellKnownCmyVal(Handle(), 8, word, "internet"), DT_OK);
    EXPECT_EQ(word[0], 0u);
    EXPECT_EQ(BRM_GetWellKnownCmyVal(Handle(), 9, word, "No-Export"), DT_OK);
    EXPECT_EQ(word[0], 0xFFFFFF01u);
    EXPECT_EQ(BRM_GetWellKnownCmyVal(Handle(), 12, word, "NO-ADVERTISE"), DT_OK);
    EXPECT_EQ(word[0], 0xFFFFFF02u);
    EXPECT_EQ(BRM_GetWellKnownCmyVal(Handle(), 19, word, "no-export-subconfed"), DT_OK);
    EXPECT_EQ(word[0], 0xFFFFFF03u);
    EXPECT_EQ(BRM_GetWellKnownCmyVal(Handle(), 6, word, "no-exp"), DT_ERR_FAIL);
    EXPECT_EQ(BRM_GetWellKnownCmyVal(Handle(), 9, word, "internet2"), DT_ERR_FAIL);
    host::SetFaults({.failAllocation = 1});
    EXPECT_EQ(BRM_GetWellKnownCmyVal(Handle(), 9, word, "no-export"), DT_ERR_NO_MEMORY);
    host::SetFaults({});
    EXPECT_EQ(host::HandleBlocks(Handle()), 0u);
}

TEST_F(Community, NamesNeedTwoAllocationsNumbersOne)
{
    const auto codes = [](const char *text) {
        return CodesWhileAllocationsFail([text] { return FormatIn(kType, text).code; });
    };
    EXPECT_EQ(codes("no-export"), (std::vector<uint32_t>{DT_ERR_INVALID_VALUE, DT_ERR_NO_MEMORY}));
    EXPECT_EQ(codes("100:1"), (std::vector<uint32_t>{DT_ERR_NO_MEMORY}));
    EXPECT_EQ(codes("100"), (std::vector<uint32_t>{DT_ERR_NO_MEMORY}));
    host::SetFaults({.failAllocation = 2});
    const In in = FormatIn(kType, "no-export");
    EXPECT_EQ(in.code, DT_ERR_NO_MEMORY);
    EXPECT_EQ(in.typeId, 256);
    EXPECT_EQ(in.length, 0);
    EXPECT_FALSE(in.bufferSet);
    host::SetFaults({.failAllocation = 1});
    const In refused = FormatIn(kType, "no-export");
    EXPECT_EQ(refused.code, DT_ERR_INVALID_VALUE);
    EXPECT_EQ(refused.typeId, kUntouched);
    EXPECT_EQ(refused.length, kUntouched);
}

TEST_F(Community, TheValuePrintsFirstAndTheFormSecond)
{
    const struct {
        const char *value;
        const char *text;
    } rows[] = {
        {"01ffffff 00000000", "no-export"},
        {"01ffffff 01000000", "no-export"},
        {"01ffffff 02000000", "no-export"},
        {"01ffffff ffffffff", "no-export"},
        {"02ffffff 03000000", "no-advertise"},
        {"03ffffff 00010000", "no-export-subconfed"},
        {"00000000 00000000", "internet"},
        {"00000000 01000000", "internet"},
        {"00000000 02000000", ""},
        {"00000000 03000000", "internet"},
        {"00000000 02000001", "internet"},
        {"05000000 00000000", "5"},
        {"05000000 01000000", "0:5"},
        {"ffffffff 00000000", "4294967295"},
        {"ffffffff 01000000", "65535:65535"},
        {"00ffffff 01000000", "65535:65280"},
        {"04ffffff 00000000", "4294967044"},
    };
    for (const auto &row : rows) {
        for (const uint8_t mode : kTextModes) {
            SCOPED_TRACE(row.value);
            const Out out = FormatOut(kType, row.value, mode);
            EXPECT_EQ(out.code, DT_OK);
            EXPECT_EQ(out.typeId, 25);
            EXPECT_EQ(out.text, row.text);
            EXPECT_EQ(out.length, std::strlen(row.text) + 1);
        }
    }
    EXPECT_EQ(FormatOutInto(Row(kType), "00000000 02000000", 1, 33).buffer[0], '\0');
}

TEST_F(Community, AnUnknownFormHandsTheBufferOver)
{
    for (const char *value : {"05000000 03000000", "05000000 02000000", "04ffffff ffffffff", "01000000 00000001"}) {
        for (const uint8_t mode : kTextModes) {
            SCOPED_TRACE(value);
            const Out out = FormatOut(kType, value, mode);
            EXPECT_EQ(out.code, DT_ERR_INVALID_VALUE);
            EXPECT_TRUE(out.bufferSet);
            EXPECT_EQ(out.typeId, kUntouched);
            EXPECT_EQ(out.length, kUntouched);
            const Into into = FormatOutInto(Row(kType), value, mode, 33);
            EXPECT_EQ(into.out.code, DT_ERR_INVALID_VALUE);
            EXPECT_TRUE(into.sameBuffer);
            EXPECT_FALSE(into.released);
            EXPECT_TRUE(into.guardsIntact);
            EXPECT_EQ(into.allocations, 0u);
        }
    }
}

TEST_F(Community, ThePrinterOfNamelessValues)
{
    const uint32_t plain[2] = {100, 0};
    const uint32_t halves[2] = {0x00640001, 1};
    const uint32_t unknown[2] = {100, 3};
    char text[33];
    uint32_t printed = 0;
    void *buffer = nullptr;
    EXPECT_EQ(SYSDT_FormatNoWellKnowCmy(&printed, text, &buffer, plain), DT_OK);
    EXPECT_STREQ(text, "100");
    EXPECT_EQ(printed, 3u);
    EXPECT_EQ(SYSDT_FormatNoWellKnowCmy(&printed, text, &buffer, halves), DT_OK);
    EXPECT_STREQ(text, "100:1");
    EXPECT_EQ(printed, 5u);
    buffer = nullptr;
    EXPECT_EQ(SYSDT_FormatNoWellKnowCmy(&printed, text, &buffer, unknown), DT_ERR_INVALID_VALUE);
    EXPECT_EQ(buffer, text);
}

TEST_F(Community, TextModesReadEightBytesWhateverTheLengthSays)
{
    EXPECT_EQ(FormatOut(Row(kType), "0100640001000000", 1, 0).text, "100:1");
    EXPECT_EQ(FormatOut(Row(kType), "0100640001000000", 1, 100000).text, "100:1");
}

TEST_F(Community, AFailingPrintIsAFailure)
{
    for (const char *value : {"01ffffff 00000000", "00000000 00000000", "05000000 00000000", "05000000 01000000"}) {
        host::SetFaults({.failPrint = 1});
        EXPECT_EQ(FormatOut(kType, value).code, DT_ERR_FAIL) << value;
    }
}

TEST_F(Community, ObeysTheContract)
{
    Sweep(Row(kType), {.text = "65535:65535",
                       .value = "ffffffff01000000",
                       .inModes = "FPPFUFPU",
                       .outModes = "FTTFUFTU",
                       .helpModes = "-H----H-",
                       .helpText = "STRING<3-11>",
                       .resultTypeId = 256,
                       .resultLength = 8,
                       .textSize = 33});
}

TEST_F(Community, HelpPassesTheFirstWordAndTheHostsCode)
{
    EXPECT_EQ(Help(kType, 1, 11, 22).helpWord, 11u);
    EXPECT_EQ(Help(kType, 6, 4294967295, 1).helpWord, 4294967295u);
    EXPECT_EQ(Help(kType, 1, 11, 0).code, DT_ERR_INVALID_PARAM);
    EXPECT_EQ(Help(kType, 1, 0, 0).code, DT_ERR_INVALID_PARAM);
    EXPECT_EQ(Help(kType, 1, 0, 22).helpInits, 0u);
    host::SetFaults({.helpInitCode = 0x1234});
    EXPECT_EQ(Help(kType).code, 0x1234u);
}

TEST_F(Community, CheckLooksAtTheLengthAlone)
{
    EXPECT_EQ(Row(kType).Check(nullptr, 256, 8, nullptr), DT_ERR_NULL_PTR);
    EXPECT_EQ(Row(kType).Check(nullptr, 256, 7, nullptr), DT_ERR_NULL_PTR);
    for (const uint32_t length : {0u, 4u, 7u, 9u, 65544u}) {
        EXPECT_EQ(CheckLength(kType, length), DT_ERR_LENGTH) << length;
    }
    EXPECT_EQ(Check(kType, "0000000000000000"), DT_OK);
    EXPECT_EQ(Check(kType, "05000000ffffffff"), DT_OK);
}

TEST_F(Community, ComparesTheStoredBytes)
{
    EXPECT_EQ(Compare(kType, "0001000000000000", "ff00000000000000"), -1); // 256 and 255
    EXPECT_EQ(Compare(kType, "ff00000000000000", "0001000000000000"), 1);
    EXPECT_EQ(Compare(kType, "8000000000000000", "7f00000000000000"), 1); // unsigned bytes
    EXPECT_EQ(Compare(kType, "0500000001000000", "0500000000000000"), 1);
    EXPECT_EQ(Compare(kType, "0500000000000000", "0500000001000000"), -1);
    EXPECT_EQ(Compare(kType, "0500000001000000", "0500000001000000"), 0);
    EXPECT_EQ(Row(kType).Compare(nullptr, 4, "\5\0\0\0\1\0\0\0", "\5\0\0\0\2\0\0\0"), 0); // `length` bytes
    EXPECT_EQ(Row(kType).Compare(nullptr, 5, "\5\0\0\0\1\0\0\0", "\5\0\0\0\2\0\0\0"), -1);
}

TEST_F(Community, ToLua)
{
    const LuaOut out = LuaSet(kType, "01ffffff01000000");
    EXPECT_EQ(out.code, DT_OK);
    EXPECT_EQ(out.table, "{community=4294967041, type=1}");
    EXPECT_EQ(out.growth, 0);
    EXPECT_EQ(LuaSet(kType, "00000000ffffffff").table, "{community=0, type=4294967295}");
    EXPECT_EQ(LuaSet(Row(kType), "640000000000000000", 9).table, "{community=100, type=0}");
    const LuaOut tooShort = LuaSet(Row(kType), "01ffffff01000000", 7);
    EXPECT_EQ(tooShort.code, DT_ERR_INVALID_PARAM);
    EXPECT_EQ(tooShort.table, "nil");
    EXPECT_EQ(tooShort.growth, 0);
}

TEST_F(Community, FromLua)
{
    const struct {
        const char *table;
        uint32_t code;
        const char *value;
        int32_t growth;
    } rows[] = {
        {"{community = 4294967041, type = 1}", DT_OK, "01ffffff01000000", 1}, // the fetched table stays
        {"{community = 0, type = 77}", DT_OK, "000000004d000000", 1},
        {"{community = '5', type = '0'}", DT_OK, "0500000000000000", 1},
        {"{community = 4294967296, type = 4294967297}", DT_OK, "0000000001000000", 1},
        {"{community = 5, type = 'halves'}", DT_ERR_INVALID_PARAM, "05000000eeeeeeee", 3},
        {"{community = 5, type = true}", DT_ERR_INVALID_PARAM, "05000000eeeeeeee", 3},
        {"{community = 5}", DT_ERR_INVALID_PARAM, "05000000eeeeeeee", 3},
        {"{type = 0}", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeee", 2},
        {"{community = {}, type = 0}", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeee", 2},
        {"{community = 'no-export', type = 0}", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeee", 2},
        {"{}", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeee", 2},
        {"7", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeee", 1},
        {"nil", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeee", 1},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.table);
        const LuaIn in = LuaGet(kType, row.table);
        EXPECT_EQ(in.code, row.code);
        EXPECT_EQ(in.value, row.value);
        EXPECT_EQ(in.growth, row.growth);
    }
    const LuaIn tooShort = LuaGet(Row(kType), "{community = 1, type = 0}", 7);
    EXPECT_EQ(tooShort.code, DT_ERR_INVALID_PARAM);
    EXPECT_EQ(tooShort.value, "eeeeeeeeeeeeee");
    EXPECT_EQ(tooShort.growth, 0);
}

TEST_F(Community, EndianSwapsBothWords)
{
    EXPECT_EQ(Endian(kType, "0102030405060708"), "0403020108070605");
    EXPECT_EQ(Endian(kType, "0403020108070605"), "0102030405060708");
}

TEST_F(Community, TheRowOffersEverything)
{
    const DataTypeDescriptor &row = Row(kType);
    EXPECT_EQ(row.TypeId, 256);
    EXPECT_EQ(row.BinaryLength, 8);
    EXPECT_EQ(row.BaseKind, 26);
    EXPECT_TRUE(row.FormatIn && row.FormatOut && row.Check && row.Help && row.Compare && row.LuaSet && row.LuaGet &&
                row.Endian);
    EXPECT_EQ(row.Reserved, nullptr);
}

} // namespace
} // namespace bgp::test
