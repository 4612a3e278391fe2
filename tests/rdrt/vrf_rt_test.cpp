// VRFRT: route-target extended community (8) and notation word (4). RFC 4360 section 4, RFC 5668.
#include "rdrt/printing.h"

#include <cstdio>

namespace {

using namespace bgp::test;

class VrfRt : public PlugIn {};

constexpr uint8_t kPrintModes[] = {1, 2, 3, 6};
constexpr uint8_t kOtherModes[] = {1, 3, 6}; // where an all-zero value has no text of its own

const std::vector<TextCase> &Accepted()
{
    static const std::vector<TextCase> cases = {
        // AS:n, kind 0x0002, notation 1
        {"100:1", "0002 0064 00000001 01000000"},
        {"0:5", "0002 0000 00000005 01000000"},
        {"5:0", "0002 0005 00000000 01000000"},
        {"0:4294967295", "0002 0000 ffffffff 01000000"},
        {"65535:0", "0002 ffff 00000000 01000000"},
        {"65535:65536", "0002 ffff 00010000 01000000"},
        {"65535:4294967295", "0002 ffff ffffffff 01000000"},
        {"258:50595078", "0002 0102 03040506 01000000"},
        {"00100:0001", "0002 0064 00000001 01000000"},
        {"0000000000000000100:1", "0002 0064 00000001 01000000"}, // 21 characters
        // AS:n, kind 0x0202, notation 2
        {"65536:0", "0202 00010000 0000 02000000"},
        {"65536:1", "0202 00010000 0001 02000000"},
        {"65536:65535", "0202 00010000 ffff 02000000"},
        {"16909060:1286", "0202 01020304 0506 02000000"},
        {"4294967295:65535", "0202 ffffffff ffff 02000000"},
        // x.y:n, kind 0x0202, notation 3
        {"1.2:3", "0202 0001 0002 0003 03000000"},
        {"0.100:1", "0202 0000 0064 0001 03000000"},
        {"0.0:1", "0202 0000 0000 0001 03000000"},
        {"0.1:0", "0202 0000 0001 0000 03000000"},
        {"1.0:0", "0202 0001 0000 0000 03000000"},
        {"65535.0:0", "0202 ffff 0000 0000 03000000"},
        {"0.65535:0", "0202 0000 ffff 0000 03000000"},
        {"0.0:65535", "0202 0000 0000 ffff 03000000"},
        {"65535.65535:65535", "0202 ffff ffff ffff 03000000"},
        {"00001.00002:000000003", "0202 0001 0002 0003 03000000"}, // 21 characters
        // a.b.c.d:n, kind 0x0102, notation 0
        {"10.1.1.1:65535", "0102 0a010101 ffff 00000000"},
        {"1.2.3.4:0", "0102 01020304 0000 00000000"},
        {"0.0.0.0:0", "0102 00000000 0000 00000000"},
        {"0.0.0.0:1", "0102 00000000 0001 00000000"},
        {"255.255.255.255:65535", "0102 ffffffff ffff 00000000"}, // 21 characters
        {"010.001.000.007:0005", "0102 0a010007 0005 00000000"},
        // blanks around
        {" 100:1", "0002 0064 00000001 01000000"},
        {"100:1\t ", "0002 0064 00000001 01000000"},
        {"\t\t1.2.3.4:5  ", "0102 01020304 0005 00000000"},
    };
    return cases;
}

const std::vector<TextCase> &Refused()
{
    static const std::vector<TextCase> cases = {
        // nothing there
        {"", ""},
        {"\t", ""},
        {":", ""},
        {"1", ""},
        {"1:", ""},
        {":1", ""},
        {".:", ""},
        {"...:", ""},
        // all zero
        {"0:0", ""},
        {"000:0", ""},
        {"0.0:0", ""},
        {"000.0:00", ""},
        // 16 and 32 bits
        {"65535:4294967296", ""},
        {"0:4294967296", ""},
        {"1:4294967297", ""},
        {"0:9999999999999999999", ""},
        {"65536:65536", ""},
        {"65536:65537", ""},
        {"4294967295:65536", ""},
        {"4294967296:1", ""},
        {"4294967297:1", ""},
        {"4294967296:0", ""},
        {"9999999999999999999:1", ""},
        {"65536.0:1", ""},
        {"0.65536:1", ""},
        {"1.2:65536", ""},
        {"65537.2:3", ""},
        {"4294967296.0:1", ""},
        {"4294967297.2:3", ""},
        {"1.4294967298:3", ""},
        {"1.2:4294967299", ""},
        {"256.2.3.4:1", ""},
        {"1.256.3.4:1", ""},
        {"1.2.256.4:1", ""},
        {"1.2.3.256:1", ""},
        {"10.1.1.1:65536", ""},
        {"4294967297.2.3.4:5", ""},
        {"1.4294967298.3.4:5", ""},
        {"1.2.4294967299.4:5", ""},
        {"1.2.3.4294967300:5", ""},
        {"1.2.3.4:4294967301", ""},
        // separators: too few, too many, misplaced
        {"12", ""},
        {"1.2", ""},
        {"1.2.3.4", ""},
        {"1:2:3", ""},
        {"1::2", ""},
        {"1.2.3:4", ""},
        {"1..2:3", ""},
        {"1.2.3.4.5:6", ""},
        {"1.2.3.4:5:6", ""},
        {".1:2", ""},
        {"1.:2", ""},
        {"1.2:", ""},
        {"1:2.3", ""},
        {"1:.2", ""},
        {"1.2.3:4.5", ""},
        {"1:2.3.4.5", ""},
        {"1.2.3.:4", ""},
        {".1.2.3:4", ""},
        {"1...2:3", ""},
        // blanks inside
        {"1: 2", ""},
        {"1 :2", ""},
        {"1 2:3", ""},
        {"1\t:2", ""},
        {"1.2.3.4 :5", ""},
        {"1. 2:3", ""},
        // other characters
        {"a:1", ""},
        {"1:a", ""},
        {"1:2a", ""},
        {"1-2", ""},
        {"-1:2", ""},
        {"1:-2", ""},
        {"+1:2", ""},
        {"0x1:2", ""},
        {"1:*", ""},
        {"1:2\n", ""},
        {"\n1:2", ""},
        {"100:1\xb2", ""},
        {"\xb1:1", ""},
        {"\xff\xfe:1", ""},
        {"65412L:32768", ""},
        {"target:100:1", ""},
        {"%u:%u", ""},
        // 22 characters, all fields within their ranges
        {"0000000000000000100:01", ""},
        {"0255.255.255.255:65535", ""},
        {"00001.00002:0000000003", ""},
        // texts of the other types
        {"2001:db8::1.1", ""},
        {"2001:db8::1:100", ""},
        {"0a0b-0c0d-0e0f", ""},
        {"no-export", ""},
        {"65535.1", ""},
        {"1a2b3c:10", ""},
        {"100:*", ""},
        {"RT <1 : 2>", ""},
    };
    return cases;
}

TEST_F(VrfRt, Row)
{
    const DataTypeDescriptor &row = Row("VRFRT");
    EXPECT_EQ(row.TypeId, 0x102);
    EXPECT_EQ(row.BinaryLength, 12);
    EXPECT_EQ(row.BaseKind, 26);
    EXPECT_EQ(row.FormatIn, &SYSDT_VrfRtFormatIn);
    EXPECT_EQ(row.FormatOut, &SYSDT_VrfRtFormatOut);
    EXPECT_EQ(row.Check, &SYSDT_VrfRtCheck);
    EXPECT_EQ(row.Help, &SYSDT_VrfRtHelp);
    EXPECT_EQ(row.Compare, &SYSDT_VrfRtCompare);
    EXPECT_EQ(row.Reserved, nullptr);
    EXPECT_EQ(row.LuaSet, &SYSDT_VrfRtLuaSet);
    EXPECT_EQ(row.LuaGet, &SYSDT_VrfRtLuaGet);
    EXPECT_EQ(row.Endian, &SYSDT_VrfRtEndian);
}

TEST_F(VrfRt, Contract)
{
    Sweep(Row("VRFRT"), {.text = "100:1",
                         .value = "000200640000000101000000",
                         .inModes = "FPPFUFPU",
                         .outModes = "FTTRUFTU",
                         .helpModes = "-H----H-",
                         .helpText = "STRING<3-21>",
                         .resultTypeId = 0x102,
                         .resultLength = 12,
                         .textSize = 257});
}

TEST_F(VrfRt, Layout)
{
    ExpectLayout(0x102, std::string(24, '0'), {{"RtValue", 0, 1, 8}, {"RtType", 8, 4, 1}});
}

// ------------------------------------------------------------------------------------------------------------ text in

TEST_F(VrfRt, AcceptedTexts)
{
    ExpectTexts(Row("VRFRT"), Accepted(), 0x102);
    ExpectParses(&SYSDT_Str2VrfRt, 12, Accepted(), DT_ERR_FAIL);
}

TEST_F(VrfRt, RefusedTexts)
{
    ExpectTexts(Row("VRFRT"), Refused(), 0x102);
    ExpectParses(&SYSDT_Str2VrfRt, 12, Refused(), DT_ERR_FAIL);
}

TEST_F(VrfRt, OuterBlanks)
{
    for (const char *text : {"100:1", "65536:1", "1.2:3", "1.2.3.4:5", "255.255.255.255:65535"}) {
        ExpectBlanksDropped(Row("VRFRT"), text);
    }
}

TEST_F(VrfRt, EveryCharacterOutsideTheSetIsRefused)
{
    for (int c = 1; c < 256; ++c) {
        if ((c >= '0' && c <= '9') || c == '.' || c == ':') {
            continue;
        }
        const std::string odd(1, static_cast<char>(c));
        EXPECT_EQ(CodeOf("VRFRT", "1" + odd + "2:3"), DT_ERR_INVALID_VALUE) << c;
        if (c != ' ' && c != '\t') {
            EXPECT_EQ(CodeOf("VRFRT", odd + "1:2"), DT_ERR_INVALID_VALUE) << c;
            EXPECT_EQ(CodeOf("VRFRT", "1:2" + odd), DT_ERR_INVALID_VALUE) << c;
        }
    }
}

TEST_F(VrfRt, EverySixteenBitField)
{
    ExpectEverySixteenBitField(&SYSDT_Str2VrfRt, {
                                                     {"", ":1", "000200000000000101000000", 2},
                                                     {"65536:", "", "020200010000000002000000", 6},
                                                     {"", ".1:2", "020200000001000203000000", 2},
                                                     {"1.", ":2", "020200010000000203000000", 4},
                                                     {"1.2:", "", "020200010002000003000000", 6},
                                                     {"1.2.3.4:", "", "010201020304000000000000", 6},
                                                 });
}

// ----------------------------------------------------------------------------------------------------------- text out

constexpr const char *kFields = "fffefdfcfbfa"; // bytes 2 to 7

TEST_F(VrfRt, PrintTable)
{
    struct PrintRow {
        const char *kind, *notation, *text;
    };
    static constexpr PrintRow kRows[] = {
        {"0102", "00000000", "255.254.253.252:64506"}, {"0102", "01000000", "255.254.253.252:64506"},
        {"0102", "02000000", "255.254.253.252:64506"}, {"0102", "03000000", "255.254.253.252:64506"},
        {"0102", "04000000", "255.254.253.252:64506"}, {"0102", "ffffffff", "255.254.253.252:64506"},
        {"0202", "02000000", "4294901244:64506"},      {"0202", "03000000", "65534.65020:64506"},
        {"0002", "01000000", "65534:4261215226"},      {"0002", "02000000", "4294901244:64506"},
        {"0002", "03000000", "65534.65020:64506"},
    };
    for (const PrintRow &r : kRows) {
        for (const uint8_t mode : kPrintModes) {
            ExpectPrints(Row("VRFRT"), std::string(r.kind) + kFields + r.notation, mode, r.text);
        }
    }
}

TEST_F(VrfRt, NotationOfAnotherKindPrintsNothing)
{
    static constexpr const char *kStrange[] = {"00000000", "04000000", "05000000", "80000000", "ff000000", "00010000",
                                               "01010000", "02010000", "03010000", "01000100", "02000001", "03000080",
                                               "00000001", "00000002", "00000003", "ffffffff"};
    for (const uint8_t mode : kPrintModes) {
        for (const char *notation : kStrange) {
            ExpectNothingWritten(Row("VRFRT"), std::string("0002") + kFields + notation, mode);
            ExpectNothingWritten(Row("VRFRT"), std::string("0202") + kFields + notation, mode);
        }
        ExpectNothingWritten(Row("VRFRT"), std::string("0202") + kFields + "01000000", mode);
    }
}

TEST_F(VrfRt, EveryNotationByte)
{
    for (unsigned n = 0; n < 256; ++n) {
        char digits[9];
        std::snprintf(digits, sizeof digits, "%02x000000", n);
        for (const uint8_t mode : kPrintModes) {
            ExpectPrints(Row("VRFRT"), std::string("0102") + kFields + digits, mode, "255.254.253.252:64506");
            if (n == 0 || n > 3) {
                ExpectNothingWritten(Row("VRFRT"), std::string("0002") + kFields + digits, mode);
            }
            if (n < 2 || n > 3) {
                ExpectNothingWritten(Row("VRFRT"), std::string("0202") + kFields + digits, mode);
            }
        }
    }
}

TEST_F(VrfRt, SmallAndLargeFields)
{
    static const std::vector<TextCase> cases = {
        {"0:0", "0002 0000 00000000 01000000"},
        {"0:0", "0002 0000 00000000 02000000"},
        {"0.0:0", "0002 0000 00000000 03000000"},
        {"0:0", "0202 0000 00000000 02000000"},
        {"0.0:0", "0202 0000 00000000 03000000"},
        {"0.0.0.0:0", "0102 0000 00000000 00000000"},
        {"65535:4294967295", "0002 ffff ffffffff 01000000"},
        {"4294967295:65535", "0002 ffff ffffffff 02000000"},
        {"65535.65535:65535", "0002 ffff ffffffff 03000000"},
        {"4294967295:65535", "0202 ffff ffffffff 02000000"},
        {"65535.65535:65535", "0202 ffff ffffffff 03000000"},
        {"255.255.255.255:65535", "0102 ffff ffffffff 00000000"},
    };
    for (const TextCase &c : cases) {
        for (const uint8_t mode : kPrintModes) { // the kind is not zero: mode 2 prints as the others
            ExpectPrints(Row("VRFRT"), c.value, mode, c.text);
        }
    }
}

TEST_F(VrfRt, AllZeroIsEmptyInModeTwoAndOfNoKindElsewhere)
{
    for (const char *notation : {"00000000", "01000000", "02000000", "03000000", "04000000", "ffffffff"}) {
        const std::string value = std::string("0000000000000000") + notation;
        ExpectPrints(Row("VRFRT"), value, 2, "");
        for (const uint8_t mode : kOtherModes) {
            ExpectNoSuchKind(Row("VRFRT"), value, mode);
        }
    }
}

TEST_F(VrfRt, UnknownKinds)
{
    for (const char *kind : {"0000", "0001", "0003", "0100", "0101", "0103", "0200", "0201", "0203", "0602", "0302",
                             "4002", "8002", "0b02", "000c", "ffff"}) {
        for (const char *notation : {"00000000", "01000000", "02000000", "03000000", "04000000"}) {
            for (const uint8_t mode : kPrintModes) {
                ExpectNoSuchKind(Row("VRFRT"), std::string(kind) + kFields + notation, mode);
            }
        }
    }
}

TEST_F(VrfRt, EveryUnknownKind)
{
    const DataTypeDescriptor &row = Row("VRFRT");
    const DataTypeRequest request{1, Handle()};
    for (unsigned kind = 0; kind < 65536; ++kind) {
        if (kind == 0x0002 || kind == 0x0102 || kind == 0x0202) {
            continue;
        }
        uint8_t value[12] = {static_cast<uint8_t>(kind >> 8), static_cast<uint8_t>(kind), 1, 2, 3, 4, 5, 6, 1, 0, 0, 0};
        char text[257];
        uint16_t typeId = kUntouched;
        uint16_t length = kUntouched;
        void *buffer = text;
        ASSERT_EQ(row.FormatOut(&request, 0, 12, value, &typeId, &length, &buffer), DT_ERR_FAIL) << kind;
        ASSERT_EQ(typeId, kUntouched);
        ASSERT_EQ(length, kUntouched);
        ASSERT_EQ(buffer, text);
    }
}

TEST_F(VrfRt, LengthArgumentIsNotLookedAt)
{
    for (const uint32_t length : {0u, 1u, 11u, 13u, 65536u, 4294967294u}) {
        const Out out = FormatOut("VRFRT", "000200640000000101000000", 1, length);
        EXPECT_EQ(out.code, DT_OK);
        EXPECT_EQ(out.text, "100:1");
    }
}

TEST_F(VrfRt, RoundTrips)
{
    for (const char *text : {"100:1",
                             "65535:4294967295",
                             "65536:1",
                             "4294967295:65535",
                             "1.2:3",
                             "0.100:1",
                             "0.0:1",
                             "65535.65535:65535",
                             "10.1.1.1:65535",
                             "0.0.0.0:0",
                             "0:5",
                             "5:0",
                             "0:203040",
                             "0.1.22.32:12000",
                             "1.1.1.1:100",
                             "10.0.0.1:300",
                             "10.1.1.1:17185",
                             "12.34:56",
                             "10.100:100",
                             "100000:41",
                             "126576008:65510",
                             "131072:100",
                             "132579:1",
                             "64512:100001",
                             "65000:65000",
                             "192.0.2.1:65535",
                             "255.255.255.255:65535"}) {
        for (const uint8_t mode : kTextInModes) {
            EXPECT_EQ(RoundTrip("VRFRT", text, mode), text);
        }
    }
}

TEST_F(VrfRt, PrintFailures)
{
    for (const char *value : {"000200640000000101000000", "000200640000000102000000", "000200640000000103000000",
                              "020200010002000302000000", "020200010002000303000000", "010201020304000500000000"}) {
        for (const uint8_t mode : kPrintModes) {
            host::SetFaults({.failPrint = 1});
            const Out out = FormatOut("VRFRT", value, mode);
            host::SetFaults({});
            EXPECT_EQ(out.code, DT_ERR_FAIL) << value;
            EXPECT_EQ(out.typeId, kUntouched);
            EXPECT_EQ(out.length, kUntouched);
        }
    }
}

// ------------------------------------------------------------------------------------- Check, Help, Compare, Endian

TEST_F(VrfRt, Check)
{
    for (uint32_t length = 0; length < 64; ++length) {
        EXPECT_EQ(CheckLength("VRFRT", length), length == 12 ? DT_OK : DT_ERR_LENGTH) << length;
    }
    EXPECT_EQ(Check("VRFRT", "ffffffffffffffffffffffff"), DT_OK);
    const DataTypeDescriptor &row = Row("VRFRT");
    EXPECT_EQ(row.Check(nullptr, 0, 12, nullptr), DT_ERR_NULL_PTR);
    EXPECT_EQ(row.Check(&row, 0, 11, nullptr), DT_ERR_NULL_PTR);
    EXPECT_EQ(row.Check(nullptr, 0, 12, "123456789012"), DT_OK);
}

TEST_F(VrfRt, Help)
{
    const Helped helped = Help("VRFRT", 6, 1, 4294967295u);
    EXPECT_EQ(helped.text, "STRING<3-21>");
    EXPECT_EQ(helped.helpWord, 4294967295u);
    EXPECT_EQ(Help("VRFRT", 1, 0, 1).helpInits, 0u);
    host::SetFaults({.helpInitCode = 77});
    EXPECT_EQ(Help("VRFRT", 1).code, 77u);
}

TEST_F(VrfRt, Compare)
{
    static const std::vector<std::string> ascending = {
        "000000000000000000000000", "000000000000000000000001", "000000000000000001000000", "000000000000000100000000",
        "0000000000ff000000000000", "0000800000000000000000ff", "000200640000000101000000", "000200640000000102000000",
        "0002ffff0000000101000000", "010200000000000000000000", "020200000000000000000000", "7fffffffffffffffffffffff",
        "800000000000000000000000", "ffffffffffffffffffffffff"};
    for (size_t i = 0; i < ascending.size(); ++i) {
        for (size_t j = 0; j < ascending.size(); ++j) {
            EXPECT_EQ(Compare("VRFRT", ascending[i], ascending[j]), i < j   ? -1
                                                                    : i > j ? 1
                                                                            : 0)
                << ascending[i] << ' ' << ascending[j];
        }
    }
    const DataTypeDescriptor &row = Row("VRFRT");
    const std::string left = Bytes("000200640000000101000000");
    const std::string right = Bytes("000200640000000102000000");
    EXPECT_EQ(row.Compare(nullptr, 12, left.data(), right.data()), -1);
    EXPECT_EQ(row.Compare(nullptr, 8, left.data(), right.data()), 0);
    EXPECT_EQ(row.Compare(nullptr, 0, left.data(), right.data()), 0);
}

TEST_F(VrfRt, EndianSwapsTheNotationWord)
{
    EXPECT_EQ(Endian("VRFRT", "000200640000000101000000"), "000200640000000100000001");
    EXPECT_EQ(Endian("VRFRT", "010203040506070801020304"), "010203040506070804030201");
    EXPECT_EQ(Endian("VRFRT", Endian("VRFRT", "fffefdfcfbfaf9f8f7f6f5f4")), "fffefdfcfbfaf9f8f7f6f5f4");
}

// ---------------------------------------------------------------------------------------------------------------- Lua

TEST_F(VrfRt, LuaSet)
{
    struct SetCase {
        const char *value, *table;
    };
    static constexpr SetCase kCases[] = {
        {"000200640000000101000000", "{RtType=1, RtValue={0,2,0,100,0,0,0,1}}"},
        {"010201020304fffe00000000", "{RtType=0, RtValue={1,2,1,2,3,4,255,254}}"},
        {"ffffffffffffffffffffff7f", "{RtType=2147483647, RtValue={255,255,255,255,255,255,255,255}}"},
        {"000000000000000000000080", "{RtType=2147483648, RtValue={0,0,0,0,0,0,0,0}}"},
    };
    for (const SetCase &c : kCases) {
        const LuaOut out = LuaSet("VRFRT", c.value);
        EXPECT_EQ(out.code, DT_OK);
        EXPECT_EQ(out.table, c.table);
        EXPECT_EQ(out.growth, 0);
    }
    EXPECT_EQ(LuaSet(Row("VRFRT"), "000200640000000101000000", 65535).table, kCases[0].table);
}

TEST_F(VrfRt, LuaGet)
{
    ExpectLuaGet(
        Row("VRFRT"), 12,
        {
            {"{RtType=1, RtValue={0,2,0,100,0,0,0,1}}", DT_OK, "000200640000000101000000", 0},
            {"{RtType=258, RtValue={2,2,0,1,0,2,0,3}}", DT_OK, "020200010002000302000000", 0},
            {"{RtType=256, RtValue={256,257,511,512,65535,65536,-1,4294967295}}", DT_OK, "0001ff00ff00ffff00000000", 0},
            {"{RtType=4294967295, RtValue={1,2,3,4,5,6,7,8,9}}", DT_OK, "0102030405060708ff000000", 0},
            {"nil", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeeeeeeeeeee", 1},
            {"5", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeeeeeeeeeee", 1},
            {"'100:1'", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeeeeeeeeeee", 1},
            {"{RtType=1}", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeeeeeeeeeee", 2},
            {"{RtType=1, RtValue=5}", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeeeeeeeeeee", 2},
            {"{RtType=1, RtValue='12345678'}", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeeeeeeeeeee", 2},
            {"{RdType=1, RdValue={1,2,3,4,5,6,7,8}}", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeeeeeeeeeee", 2},
            {"{RtType=1, RtValue={}}", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeeeeeeeeeee", 3},
            {"{RtType=1, RtValue={1,2,3,4,5,6,7}}", DT_ERR_INVALID_PARAM, "01020304050607eeeeeeeeee", 10},
            {"{RtValue={1,2,3,4,5,6,7,8}}", DT_ERR_INVALID_PARAM, "0102030405060708eeeeeeee", 2},
            {"{RtType='x', RtValue={1,2,3,4,5,6,7,8}}", DT_ERR_INVALID_PARAM, "0102030405060708eeeeeeee", 2},
            {"{RtType={}, RtValue={1,2,3,4,5,6,7,8}}", DT_ERR_INVALID_PARAM, "0102030405060708eeeeeeee", 2},
        });
    ExpectItemsAreNumbers(Row("VRFRT"), 12, {"{RtType=1, RtValue=", "}", 8, 0, 3});
    EXPECT_EQ(LuaGet(Row("VRFRT"), "{RtType=1, RtValue={1,2,3,4,5,6,7,8}}", 14).value, "010203040506070801000000eeee");
}

TEST_F(VrfRt, LuaLengths)
{
    ExpectShortLuaRefused(Row("VRFRT"), 12, "{RtType=1, RtValue={1,2,3,4,5,6,7,8}}");
}

TEST_F(VrfRt, LuaRoundTrip)
{
    for (const TextCase &c : Accepted()) {
        const std::string value = Hex(Bytes(c.value));
        EXPECT_EQ(LuaGet("VRFRT", LuaSet("VRFRT", value).table).value, value) << c.text;
    }
}

} // namespace
