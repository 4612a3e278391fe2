// VRFRTV6: IPv6-address-specific route target (20) and notation word (4). RFC 5701.
#include "rdrt/printing.h"

namespace {

using namespace bgp::test;

class VrfRtV6 : public PlugIn {};

constexpr uint8_t kPrintModes[] = {1, 2, 3, 6};

const std::vector<TextCase> &Accepted()
{
    static const std::vector<TextCase> cases = {
        {"2001:db8::1.1", "000c 20010db8000000000000000000000001 0001 00000000"},
        {"2001:db8::1.0", "000c 20010db8000000000000000000000001 0000 00000000"},
        {"2001:DB8::AbCd.1", "000c 20010db800000000000000000000abcd 0001 00000000"},
        {"::.0", "000c 00000000000000000000000000000000 0000 00000000"},
        {"::.1", "000c 00000000000000000000000000000000 0001 00000000"},
        {"::1.1", "000c 00000000000000000000000000000001 0001 00000000"},
        {"1::.1", "000c 00010000000000000000000000000000 0001 00000000"},
        {"1:2:3:4:5:6:7:8.0", "000c 00010002000300040005000600070008 0000 00000000"},
        {"ffff:ffff:ffff:ffff:ffff:ffff:ffff:ffff.1", "000c ffffffffffffffffffffffffffffffff 0001 00000000"},
        // a dotted tail: only the last dot separates
        {"::ffff:1.2.3.4.1", "000c 00000000000000000000ffff01020304 0001 00000000"},
        {"::1.2.3.4.0", "000c 00000000000000000000000001020304 0000 00000000"},
        {"64:ff9b::192.0.2.33.1", "000c 0064ff9b0000000000000000c0000221 0001 00000000"},
        {"0000:0000:0000:0000:0000:ffff:255.255.255.255.1", // 47 characters
         "000c 00000000000000000000ffffffffffff 0001 00000000"},
        // blanks around
        {" 2001:db8::1.1", "000c 20010db8000000000000000000000001 0001 00000000"},
        {"2001:db8::1.1 \t", "000c 20010db8000000000000000000000001 0001 00000000"},
        {"   0000:0000:0000:0000:0000:ffff:255.255.255.255.1   ",
         "000c 00000000000000000000ffffffffffff 0001 00000000"},
    };
    return cases;
}

const std::vector<TextCase> &Refused()
{
    static const std::vector<TextCase> cases = {
        {"", ""},
        {"  ", ""},
        {".", ""},
        {".1", ""},
        {"..1", ""},
        {"1", ""},
        {"1.1", ""},
        // the local administrator
        {"2001:db8::1", ""},
        {"2001:db8::1.", ""},
        {"2001:db8::1.2", ""},
        {"2001:db8::1.9", ""},
        {"2001:db8::1.10", ""},
        {"2001:db8::1.01", ""},
        {"2001:db8::1.00", ""},
        {"2001:db8::1.65535", ""},
        {"2001:db8::1.a", ""},
        {"2001:db8::1.-", ""},
        {"2001:db8::1.+", ""},
        {"2001:db8::1.:", ""},
        {"2001:db8::1.\xb1", ""},
        {"2001:db8::1.*", ""},
        {"2001:db8::1..1", ""},
        {"2001:db8::1.1.1", ""},
        {"2001:db8::1:100", ""},
        {"2001:db8::1:0", ""},
        {"2001:db8::1.4294967297", ""},
        // the address
        {"2001:db8:::1.1", ""},
        {":1.1", ""},
        {"1:.1", ""},
        {"1:2:3:4:5:6:7.1", ""},
        {"1:2:3:4:5:6:7:8:9.1", ""},
        {"1::2::3.1", ""},
        {"12345::1.1", ""},
        {"g::1.1", ""},
        {"::1%1.1", ""},
        {"::1/128.1", ""},
        {"[::1].1", ""},
        {"::ffff:1.2.3.4", ""},
        {"::ffff:1.2.3.1", ""},
        {"::ffff:1.2.3.256.1", ""},
        {"::ffff:1.2.3.4.5.1", ""},
        {"1.2.3.4.1", ""},
        {"1.2.3.4:1", ""},
        {"\xb1::1.1", ""},
        {"::\xff.1", ""},
        // blanks inside
        {"2001:db8::1 .1", ""},
        {"2001:db8::1. 1", ""},
        {"2001: db8::1.1", ""},
        {"2001:db8::1\t.1", ""},
        // 48 characters
        {"00000:0000:0000:0000:0000:ffff:255.255.255.255.1", ""},
        {"0000:0000:0000:0000:0000:ffff:255.255.255.255.01", ""},
        {"0000:0000:0000:0000:0000:ffff:255.255.255.255.10", ""},
        // texts of the other types
        {"100:1", ""},
        {"1.2:3", ""},
        {"1.2.3.4:5", ""},
        {"0a0b-0c0d-0e0f", ""},
        {"100:*", ""},
        {"no-export", ""},
    };
    return cases;
}

TEST_F(VrfRtV6, Row)
{
    const DataTypeDescriptor &row = Row("VRFRTV6");
    EXPECT_EQ(row.TypeId, 0x140);
    EXPECT_EQ(row.BinaryLength, 24);
    EXPECT_EQ(row.BaseKind, 26);
    EXPECT_EQ(row.FormatIn, &SYSDT_VrfRtV6FormatIn);
    EXPECT_EQ(row.FormatOut, &SYSDT_VrfRtV6FormatOut);
    EXPECT_EQ(row.Check, &SYSDT_VrfRtV6Check);
    EXPECT_EQ(row.Help, &SYSDT_VrfRtV6Help);
    EXPECT_EQ(row.Compare, &SYSDT_VrfRtV6Compare);
    EXPECT_EQ(row.Reserved, nullptr);
    EXPECT_EQ(row.LuaSet, &SYSDT_VrfRtV6LuaSet);
    EXPECT_EQ(row.LuaGet, &SYSDT_VrfRtV6LuaGet);
    EXPECT_EQ(row.Endian, &SYSDT_VrfRtV6Endian);
}

TEST_F(VrfRtV6, Contract)
{
    Sweep(Row("VRFRTV6"), {.text = "2001:db8::1.1",
                           .value = "000c20010db8000000000000000000000001000100000000",
                           .inModes = "FPPFUFPU",
                           .outModes = "FTTRUFTU",
                           .helpModes = "-H----H-",
                           .helpText = "STRING<4-47>",
                           .resultTypeId = 0x140,
                           .resultLength = 24,
                           .textSize = 257});
}

TEST_F(VrfRtV6, Layout)
{
    ExpectLayout(0x140, std::string(48, '0'), {{"RtV6Value", 0, 1, 20}, {"RtV6Type", 20, 4, 1}});
}

// ------------------------------------------------------------------------------------------------------------ text in

TEST_F(VrfRtV6, AcceptedTexts)
{
    ExpectTexts(Row("VRFRTV6"), Accepted(), 0x140);
    ExpectParses(&SYSDT_Str2VrfRtV6, 24, Accepted(), DT_ERR_INVALID_PARAM);
}

TEST_F(VrfRtV6, RefusedTexts)
{
    ExpectTexts(Row("VRFRTV6"), Refused(), 0x140);
    ExpectParses(&SYSDT_Str2VrfRtV6, 24, Refused(), DT_ERR_INVALID_PARAM);
}

TEST_F(VrfRtV6, LongTextsAreRefused)
{
    for (const size_t length : {48u, 255u, 256u, 257u, 300u, 5000u, 70000u}) {
        EXPECT_EQ(CodeOf("VRFRTV6", std::string(length - 2, '1') + ".1"), DT_ERR_INVALID_VALUE) << length;
        EXPECT_EQ(CodeOf("VRFRTV6", std::string(length - 4, ':') + "::.1"), DT_ERR_INVALID_VALUE) << length;
    }
}

TEST_F(VrfRtV6, OuterBlanks)
{
    ExpectBlanksDropped(Row("VRFRTV6"), "2001:db8::1.1");
    ExpectBlanksDropped(Row("VRFRTV6"), "0000:0000:0000:0000:0000:ffff:255.255.255.255.1");
}

TEST_F(VrfRtV6, EveryLocalAdministratorCharacter)
{
    for (int c = 1; c < 256; ++c) {
        const std::string text = std::string("2001:db8::1.") + static_cast<char>(c);
        EXPECT_EQ(CodeOf("VRFRTV6", text), c == '0' || c == '1' ? DT_OK : DT_ERR_INVALID_VALUE) << c;
    }
}

TEST_F(VrfRtV6, NeedsAHandle)
{
    std::string text = "2001:db8::1.1";
    const DataTypeRequest request{1, 0};
    uint16_t typeId = kUntouched;
    uint16_t length = kUntouched;
    void *buffer = nullptr;
    EXPECT_EQ(Row("VRFRTV6").FormatIn(&request, 0, 0, text.data(), &typeId, &length, &buffer), DT_ERR_NO_MEMORY);
    EXPECT_EQ(typeId, 0x140);
    EXPECT_EQ(length, 0);
    EXPECT_EQ(buffer, nullptr);
}

// ----------------------------------------------------------------------------------------------------------- text out

TEST_F(VrfRtV6, Prints)
{
    static const std::vector<TextCase> cases = {
        {"2001:db8::1.1", "000c 20010db8000000000000000000000001 0001 00000000"},
        {"::.0", "0000 00000000000000000000000000000000 0000 00000000"},
        {"::.0", "0000 00000000000000000000000000000000 0000 01000000"},
        {"::.1", "000c 00000000000000000000000000000000 0001 00000000"},
        {"1:2:3:4:5:6:7:8.1", "000c 00010002000300040005000600070008 0001 00000000"},
        {"ffff:ffff:ffff:ffff:ffff:ffff:ffff:ffff.65535", "ffff ffffffffffffffffffffffffffffffff ffff ffffffff"},
        // the local administrator in network order, all 16 bits
        {"::1.2", "000c 00000000000000000000000000000001 0002 00000000"},
        {"::1.256", "000c 00000000000000000000000000000001 0100 00000000"},
        {"::1.4660", "000c 00000000000000000000000000000001 1234 00000000"},
        // kind and notation do not count
        {"2001:db8::1.1", "0002 20010db8000000000000000000000001 0001 00000000"},
        {"2001:db8::1.1", "ffff 20010db8000000000000000000000001 0001 ffffffff"},
        {"2001:db8::1.1", "0c00 20010db8000000000000000000000001 0001 03000000"},
    };
    for (const TextCase &c : cases) {
        for (const uint8_t mode : kPrintModes) { // no empty text in mode 2, all-zero values included
            ExpectPrints(Row("VRFRTV6"), Hex(Bytes(c.value)), mode, c.text);
        }
    }
}

TEST_F(VrfRtV6, ShortValuesReadAsZeroExtended)
{
    struct LengthCase {
        uint32_t length;
        const char *text;
    };
    static constexpr LengthCase kCases[] = {
        {0, "::.0"},
        {1, "::.0"},
        {2, "::.0"},
        {3, "2000::.0"},
        {4, "2001::.0"},
        {5, "2001:d00::.0"},
        {10, "2001:db8:1:2::.0"},
        {17, "2001:db8:1:2:3:4:5:600.0"},
        {18, "2001:db8:1:2:3:4:5:607.0"},
        {19, "2001:db8:1:2:3:4:5:607.4608"},
        {20, "2001:db8:1:2:3:4:5:607.4660"},
        {23, "2001:db8:1:2:3:4:5:607.4660"},
        {24, "2001:db8:1:2:3:4:5:607.4660"},
    };
    const std::string value = "000c20010db8000100020003000400050607123400000000";
    for (const LengthCase &c : kCases) {
        // The copy that is handed over is as short as its length says.
        const std::string shortened = value.substr(0, 2 * static_cast<size_t>(c.length));
        for (const uint8_t mode : kPrintModes) {
            ExpectPrints(Row("VRFRTV6"), shortened, mode, c.text);
        }
    }
    for (const uint32_t length : {25u, 65536u, 4294967294u}) {
        EXPECT_EQ(FormatOut("VRFRTV6", value, 1, length).text, "2001:db8:1:2:3:4:5:607.4660");
    }
}

TEST_F(VrfRtV6, NoHandleNoBuffer)
{
    std::string value(24, '\0');
    for (const uint8_t mode : kPrintModes) {
        const DataTypeRequest request{mode, 0};
        uint16_t typeId = kUntouched;
        uint16_t length = kUntouched;
        void *buffer = nullptr;
        EXPECT_EQ(Row("VRFRTV6").FormatOut(&request, 0, 24, value.data(), &typeId, &length, &buffer), DT_ERR_NO_MEMORY);
        EXPECT_EQ(typeId, 0);
        EXPECT_EQ(length, 0);
        EXPECT_EQ(buffer, nullptr);
        // A caller's buffer needs no handle.
        char text[257];
        buffer = text;
        EXPECT_EQ(Row("VRFRTV6").FormatOut(&request, 0, 24, value.data(), &typeId, &length, &buffer), 0u);
        EXPECT_STREQ(text, "::.0");
        EXPECT_EQ(buffer, text);
    }
}

TEST_F(VrfRtV6, BufferRoutine)
{
    char mine = 0;
    void *slot = &mine;
    SYSDT_VrfRtV6FormatOutGetMem(&slot, Handle(), 257);
    EXPECT_EQ(slot, &mine);
    slot = nullptr;
    SYSDT_VrfRtV6FormatOutGetMem(&slot, 0, 257);
    EXPECT_EQ(slot, nullptr);
    SYSDT_VrfRtV6FormatOutGetMem(&slot, Handle(), 0);
    EXPECT_EQ(slot, nullptr);
    EXPECT_EQ(host::TakeCounters().allocations, 0u);
    host::SetFaults({.failAllocation = 1});
    SYSDT_VrfRtV6FormatOutGetMem(&slot, Handle(), 257);
    EXPECT_EQ(slot, nullptr);
    host::SetFaults({});
    SYSDT_VrfRtV6FormatOutGetMem(&slot, Handle(), 257);
    EXPECT_NE(slot, nullptr);
    const host::Counters counters = host::TakeCounters();
    EXPECT_EQ(counters.allocations, 1u);
    EXPECT_EQ(counters.plainAllocations, 0u);
}

TEST_F(VrfRtV6, PrintFailures)
{
    for (const uint8_t mode : kPrintModes) {
        host::SetFaults({.failPrint = 1});
        const Out out = FormatOut("VRFRTV6", "000c20010db8000000000000000000000001000100000000", mode);
        host::SetFaults({});
        EXPECT_EQ(out.code, DT_ERR_FAIL);
    }
}

TEST_F(VrfRtV6, RoundTrips)
{
    for (const char *text : {"2001:db8::1.1", "2001:db8::1.0", "::.1", "::1.1", "fe80::1:2.0", "ff02::1.1",
                             "1:2:3:4:5:6:7:8.1", "::ffff:1.2.3.4.1", "2001:db8:0:1::.0"}) {
        for (const uint8_t mode : kTextInModes) {
            EXPECT_EQ(RoundTrip("VRFRTV6", text, mode), text);
        }
    }
    EXPECT_EQ(RoundTrip("VRFRTV6", "2001:0DB8:0:0:0:0:0:1.1"), "2001:db8::1.1");
}

// ------------------------------------------------------------------------------------- Check, Help, Compare, Endian

TEST_F(VrfRtV6, Check)
{
    for (uint32_t length = 0; length < 64; ++length) {
        EXPECT_EQ(CheckLength("VRFRTV6", length), length == 24 ? DT_OK : DT_ERR_LENGTH) << length;
    }
    EXPECT_EQ(Check("VRFRTV6", std::string(48, 'f')), DT_OK);
    const DataTypeDescriptor &row = Row("VRFRTV6");
    EXPECT_EQ(row.Check(&row, 0, 24, nullptr), DT_ERR_NULL_PTR);
    EXPECT_EQ(row.Check(nullptr, 0, 12, nullptr), DT_ERR_NULL_PTR);
}

TEST_F(VrfRtV6, Help)
{
    const Helped helped = Help("VRFRTV6", 1, 7, 8);
    EXPECT_EQ(helped.text, "STRING<4-47>");
    EXPECT_EQ(helped.helpWord, 8u);
    EXPECT_EQ(Help("VRFRTV6", 6, 1, 0).helpInits, 0u);
    host::SetFaults({.helpInitCode = 77});
    EXPECT_EQ(Help("VRFRTV6", 1).code, 77u);
}

TEST_F(VrfRtV6, Compare)
{
    static const std::vector<std::string> ascending = {
        "000000000000000000000000000000000000000000000000", "000000000000000000000000000000000000000000000001",
        "000000000000000000000000000000000000000001000000", "000000000000000000000000000000000000000100000000",
        "000000000000000000000000000000000000ff0000000000", "000000000000000000000000000000000001000000000000",
        "00007fffffffffffffffffffffffffffffffffffffffffff", "000080000000000000000000000000000000000000000000",
        "000c20010db8000000000000000000000001000100000000", "ff0000000000000000000000000000000000000000000000"};
    for (size_t i = 0; i < ascending.size(); ++i) {
        for (size_t j = 0; j < ascending.size(); ++j) {
            EXPECT_EQ(Compare("VRFRTV6", ascending[i], ascending[j]), i < j ? -1 : i > j ? 1 : 0) << i << ' ' << j;
        }
    }
    const std::string left = Bytes(ascending[0]);
    const std::string right = Bytes(ascending[1]);
    EXPECT_EQ(Row("VRFRTV6").Compare(nullptr, 23, left.data(), right.data()), 0);
    EXPECT_EQ(Row("VRFRTV6").Compare(nullptr, 24, right.data(), left.data()), 1);
}

TEST_F(VrfRtV6, EndianSwapsTheNotationWord)
{
    EXPECT_EQ(Endian("VRFRTV6", "000c20010db8000000000000000000000001000101020304"),
              "000c20010db8000000000000000000000001000104030201");
    EXPECT_EQ(Endian("VRFRTV6", Endian("VRFRTV6", "000102030405060708090a0b0c0d0e0f1011121314151617")),
              "000102030405060708090a0b0c0d0e0f1011121314151617");
}

// ---------------------------------------------------------------------------------------------------------------- Lua

TEST_F(VrfRtV6, LuaSet)
{
    struct SetCase {
        const char *value, *table;
    };
    static constexpr SetCase kCases[] = {
        {"000c20010db8000000000000000000000001000100000000",
         "{RtV6Type=0, RtV6Value={0,12,32,1,13,184,0,0,0,0,0,0,0,0,0,0,0,1,0,1}}"},
        {"000102030405060708090a0b0c0d0e0f10111213fffefdfc",
         "{RtV6Type=4244504319, RtV6Value={0,1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17,18,19}}"},
    };
    for (const SetCase &c : kCases) {
        const LuaOut out = LuaSet("VRFRTV6", c.value);
        EXPECT_EQ(out.code, DT_OK);
        EXPECT_EQ(out.table, c.table);
        EXPECT_EQ(out.growth, 0);
    }
}

TEST_F(VrfRtV6, LuaGet)
{
    const std::string nothing = Unwritten(24);
    const std::string items = "{0,12,32,1,13,184,0,0,0,0,0,0,0,0,0,0,0,1,0,1}";
    const std::string bytes = "000c20010db80000000000000000000000010001";
    ExpectLuaGet(Row("VRFRTV6"), 24,
                 {
                     {"{RtV6Type=0, RtV6Value=" + items + "}", DT_OK, bytes + "00000000", 0},
                     {"{RtV6Type=258, RtV6Value=" + items + "}", DT_OK, bytes + "02000000", 0},
                     {"{RtV6Type=255, RtV6Value={256,257,511,-1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,65535,4294967295,7}}",
                      DT_OK, "0001ffff0101010101010101010101010101ffffff000000", 0},
                     {"nil", DT_ERR_INVALID_PARAM, nothing, 1},
                     {"'::1.1'", DT_ERR_INVALID_PARAM, nothing, 1},
                     {"{RtV6Type=0}", DT_ERR_INVALID_PARAM, nothing, 2},
                     {"{RtV6Type=0, RtV6Value=1}", DT_ERR_INVALID_PARAM, nothing, 2},
                     {"{RtType=0, RtValue=" + items + "}", DT_ERR_INVALID_PARAM, nothing, 2},
                     {"{RtV6Type=0, RtV6Value={}}", DT_ERR_INVALID_PARAM, nothing, 3},
                     {"{RtV6Value=" + items + "}", DT_ERR_INVALID_PARAM, bytes + "eeeeeeee", 2},
                     {"{RtV6Type='x', RtV6Value=" + items + "}", DT_ERR_INVALID_PARAM, bytes + "eeeeeeee", 2},
                     {"{RtV6Type={}, RtV6Value=" + items + "}", DT_ERR_INVALID_PARAM, bytes + "eeeeeeee", 2},
                 });
    ExpectItemsAreNumbers(Row("VRFRTV6"), 24, {"{RtV6Type=0, RtV6Value=", "}", 20, 0, 3});
}

TEST_F(VrfRtV6, LuaLengths)
{
    ExpectShortLuaRefused(Row("VRFRTV6"), 24,
                          "{RtV6Type=0, RtV6Value={1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17,18,19,20}}");
}

TEST_F(VrfRtV6, LuaRoundTrip)
{
    for (const TextCase &c : Accepted()) {
        const std::string value = Hex(Bytes(c.value));
        EXPECT_EQ(LuaGet("VRFRTV6", LuaSet("VRFRTV6", value).table).value, value) << c.text;
    }
}

} // namespace
