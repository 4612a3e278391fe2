// VRFRD: type (2), administrator and assigned number (6), notation word (4). RFC 4364 section 4.2.
#include "rdrt/printing.h"

#include <cstdio>
#include <cstring>

namespace {

using namespace bgp::test;

class VrfRd : public PlugIn {};

constexpr uint8_t kPrintModes[] = {1, 2, 3, 6};
constexpr uint8_t kOtherModes[] = {1, 3, 6}; // where an all-zero value has no text of its own

const std::vector<TextCase> &Accepted()
{
    static const std::vector<TextCase> cases = {
        // AS:n, type 0, notation 1
        {"100:1", "0000 0064 00000001 01000000"},
        {"0:1", "0000 0000 00000001 01000000"},
        {"1:0", "0000 0001 00000000 01000000"},
        {"0:4294967295", "0000 0000 ffffffff 01000000"},
        {"65535:0", "0000 ffff 00000000 01000000"},
        {"65535:65535", "0000 ffff 0000ffff 01000000"},
        {"65535:65536", "0000 ffff 00010000 01000000"},
        {"65535:4294967295", "0000 ffff ffffffff 01000000"},
        {"258:50595078", "0000 0102 03040506 01000000"},
        {"00100:0001", "0000 0064 00000001 01000000"},
        {"0000000000000000100:1", "0000 0064 00000001 01000000"}, // 21 characters
        {"1:0000000000000000002", "0000 0001 00000002 01000000"},
        // AS:n, type 2, notation 2
        {"65536:0", "0002 00010000 0000 02000000"},
        {"65536:1", "0002 00010000 0001 02000000"},
        {"65536:65535", "0002 00010000 ffff 02000000"},
        {"16909060:1286", "0002 01020304 0506 02000000"},
        {"4294967295:0", "0002 ffffffff 0000 02000000"},
        {"4294967295:65535", "0002 ffffffff ffff 02000000"},
        {"00000000000065536:001", "0002 00010000 0001 02000000"},
        // x.y:n, type 2, notation 3
        {"1.2:3", "0002 0001 0002 0003 03000000"},
        {"0.100:1", "0002 0000 0064 0001 03000000"},
        {"0.0:1", "0002 0000 0000 0001 03000000"},
        {"0.1:0", "0002 0000 0001 0000 03000000"},
        {"1.0:0", "0002 0001 0000 0000 03000000"},
        {"65535.0:0", "0002 ffff 0000 0000 03000000"},
        {"0.65535:0", "0002 0000 ffff 0000 03000000"},
        {"0.0:65535", "0002 0000 0000 ffff 03000000"},
        {"65535.65535:65535", "0002 ffff ffff ffff 03000000"},
        {"258.772:1286", "0002 0102 0304 0506 03000000"},
        {"00001.00002:000000003", "0002 0001 0002 0003 03000000"}, // 21 characters
        // a.b.c.d:n, type 1, notation 0
        {"1.2.3.4:0", "0001 01020304 0000 00000000"},
        {"1.2.3.4:65535", "0001 01020304 ffff 00000000"},
        {"0.0.0.0:0", "0001 00000000 0000 00000000"},
        {"0.0.0.0:1", "0001 00000000 0001 00000000"},
        {"0.0.0.1:0", "0001 00000001 0000 00000000"},
        {"255.0.0.0:0", "0001 ff000000 0000 00000000"},
        {"0.255.0.0:0", "0001 00ff0000 0000 00000000"},
        {"0.0.255.0:0", "0001 0000ff00 0000 00000000"},
        {"255.255.255.255:65535", "0001 ffffffff ffff 00000000"}, // 21 characters
        {"010.001.000.007:0005", "0001 0a010007 0005 00000000"},
        // blanks around
        {" 1:2", "0000 0001 00000002 01000000"},
        {"1:2 ", "0000 0001 00000002 01000000"},
        {"\t 1:2 \t", "0000 0001 00000002 01000000"},
        {"  255.255.255.255:65535  ", "0001 ffffffff ffff 00000000"},
    };
    return cases;
}

const std::vector<TextCase> &Refused()
{
    static const std::vector<TextCase> cases = {
        // nothing there
        {"", ""},
        {" ", ""},
        {":", ""},
        {".", ""},
        {"1", ""},
        {"1:", ""},
        {":1", ""},
        {".:", ""},
        {"...:", ""},
        // all zero
        {"0:0", ""},
        {"00:000", ""},
        {"0.0:0", ""},
        {"00.0:00", ""},
        // 16 and 32 bits
        {"65535:4294967296", ""},
        {"0:4294967296", ""},
        {"1:4294967297", ""},
        {"0:9999999999999999999", ""},
        {"65536:65536", ""},
        {"65536:65537", ""},
        {"65536:4294967296", ""},
        {"4294967295:65536", ""},
        {"4294967296:1", ""},
        {"4294967297:1", ""},
        {"4294967296:0", ""},
        {"9999999999999999999:1", ""},
        {"65536.0:1", ""},
        {"0.65536:1", ""},
        {"1.2:65536", ""},
        {"65537.2:3", ""},
        {"1.65537:3", ""},
        {"1.2:65537", ""},
        {"4294967295.2:3", ""},
        {"4294967296.2:3", ""},
        {"4294967297.2:3", ""},
        {"1.4294967298:3", ""},
        {"1.2:4294967299", ""},
        {"4294967296.0:1", ""},
        {"256.2.3.4:1", ""},
        {"1.256.3.4:1", ""},
        {"1.2.256.4:1", ""},
        {"1.2.3.256:1", ""},
        {"1.2.3.4:65536", ""},
        {"257.2.3.4:1", ""},
        {"65537.2.3.4:5", ""},
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
        {"::", ""},
        {"1.2.3:4", ""},
        {"1..2:3", ""},
        {"1.2.3.4.5:6", ""},
        {"1.2.3.4:5:6", ""},
        {"1.2:3:4", ""},
        {".1:2", ""},
        {"1.:2", ""},
        {"1.2:", ""},
        {"1:2.3", ""},
        {"1:.2", ""},
        {"1:2.", ""},
        {":1.2", ""},
        {"1.2.3:4.5", ""},
        {"1:2.3.4.5", ""},
        {"1.2.3.:4", ""},
        {".1.2.3:4", ""},
        {"1..2.3:4", ""},
        {"1...2:3", ""},
        {"1.2.3.4:", ""},
        {":1.2.3.4", ""},
        // blanks inside
        {"1: 2", ""},
        {"1 :2", ""},
        {"1 2:3", ""},
        {"1\t:2", ""},
        {"1:\t2", ""},
        {"1.2.3.4 :5", ""},
        {"1. 2:3", ""},
        // other characters
        {"a:1", ""},
        {"1:a", ""},
        {"1:2a", ""},
        {"1-2", ""},
        {"1-2:3", ""},
        {"-1:2", ""},
        {"1:-2", ""},
        {"+1:2", ""},
        {"1:+2", ""},
        {"0x1:2", ""},
        {"1:*", ""},
        {"*:*", ""},
        {"1:2\n", ""},
        {"\n1:2", ""},
        {"1:2\r", ""},
        {"1:2,", ""},
        {"1:2/", ""},
        {"1:2;", ""},
        {"1,2:3", ""},
        {"100:1\xb2", ""},
        {"\xb1:1", ""},
        {"\xff\xfe:1", ""},
        {"\xc2\xa0"
         "1:2",
         ""},
        {"65412L:8000", ""},
        {"77765000L:1000", ""},
        {"%u:%u", ""},
        // 22 characters, all fields within their ranges
        {"0000000000000000100:01", ""},
        {"00000000000000000100:1", ""},
        {"0255.255.255.255:65535", ""},
        {"255.255.255.255:065535", ""},
        {"00001.00002:0000000003", ""},
        {"00000000000065536:0001", ""},
        // texts of the other types
        {"2001:db8::1.1", ""},
        {"0a0b-0c0d-0e0f", ""},
        {"no-export", ""},
        {"1:2:3:4", ""},
        {"65535.1", ""},
        {"1d2h3m4s", ""},
        {"1a2b3c:10", ""},
        {"100:*", ""},
        {"RT <1 : 2>", ""},
    };
    return cases;
}

TEST_F(VrfRd, Row)
{
    const DataTypeDescriptor &row = Row("VRFRD");
    EXPECT_EQ(row.TypeId, 0x103);
    EXPECT_EQ(row.BinaryLength, 12);
    EXPECT_EQ(row.BaseKind, 26);
    EXPECT_EQ(row.FormatIn, &SYSDT_VrfRdFormatIn);
    EXPECT_EQ(row.FormatOut, &SYSDT_VrfRdFormatOut);
    EXPECT_EQ(row.Check, &SYSDT_VrfRdCheck);
    EXPECT_EQ(row.Help, &SYSDT_VrfRdHelp);
    EXPECT_EQ(row.Compare, &SYSDT_VrfRdCompare);
    EXPECT_EQ(row.Reserved, nullptr);
    EXPECT_EQ(row.LuaSet, &SYSDT_VrfRdLuaSet);
    EXPECT_EQ(row.LuaGet, &SYSDT_VrfRdLuaGet);
    EXPECT_EQ(row.Endian, &SYSDT_VrfRdEndian);
}

TEST_F(VrfRd, Contract)
{
    Sweep(Row("VRFRD"), {.text = "100:1",
                         .value = "000000640000000101000000",
                         .inModes = "FPPFUFPU",
                         .outModes = "FTTRUFTU",
                         .helpModes = "-H----H-",
                         .helpText = "STRING<3-21>",
                         .resultTypeId = 0x103,
                         .resultLength = 12,
                         .textSize = 257});
}

TEST_F(VrfRd, Layout)
{
    ExpectLayout(0x103, std::string(24, '0'), {{"RdValue", 0, 1, 8}, {"RdType", 8, 4, 1}});
}

// ------------------------------------------------------------------------------------------------------------ text in

TEST_F(VrfRd, AcceptedTexts)
{
    ExpectTexts(Row("VRFRD"), Accepted(), 0x103);
    ExpectParses(&SYSDT_Str2VrfRd, 12, Accepted(), DT_ERR_FAIL);
}

TEST_F(VrfRd, RefusedTexts)
{
    ExpectTexts(Row("VRFRD"), Refused(), 0x103);
    ExpectParses(&SYSDT_Str2VrfRd, 12, Refused(), DT_ERR_FAIL);
}

TEST_F(VrfRd, OuterBlanks)
{
    for (const char *text : {"100:1", "65536:1", "1.2:3", "1.2.3.4:5", "255.255.255.255:65535"}) {
        ExpectBlanksDropped(Row("VRFRD"), text);
    }
    const std::string blanks(500, ' ');
    char value[12] = {};
    EXPECT_EQ(SYSDT_Str2VrfRd((blanks + "100:1" + blanks).c_str(), value), 0u);
    EXPECT_EQ(Hex(value, 12), "000000640000000101000000");
    EXPECT_EQ(SYSDT_Str2VrfRd(blanks.c_str(), value), DT_ERR_FAIL);
}

TEST_F(VrfRd, EveryCharacterOutsideTheSetIsRefused)
{
    for (int c = 1; c < 256; ++c) {
        if ((c >= '0' && c <= '9') || c == '.' || c == ':') {
            continue;
        }
        const std::string odd(1, static_cast<char>(c));
        EXPECT_EQ(CodeOf("VRFRD", "1" + odd + "2:3"), DT_ERR_INVALID_VALUE) << c;
        if (c != ' ' && c != '\t') {
            EXPECT_EQ(CodeOf("VRFRD", odd + "1:2"), DT_ERR_INVALID_VALUE) << c;
            EXPECT_EQ(CodeOf("VRFRD", "1:2" + odd), DT_ERR_INVALID_VALUE) << c;
        }
    }
}

TEST_F(VrfRd, EverySixteenBitField)
{
    ExpectEverySixteenBitField(&SYSDT_Str2VrfRd, {
                                                     {"", ":1", "000000000000000101000000", 2},
                                                     {"65536:", "", "000200010000000002000000", 6},
                                                     {"", ".1:2", "000200000001000203000000", 2},
                                                     {"1.", ":2", "000200010000000203000000", 4},
                                                     {"1.2:", "", "000200010002000003000000", 6},
                                                     {"1.2.3.4:", "", "000101020304000000000000", 6},
                                                 });
}

TEST_F(VrfRd, EveryOctet)
{
    for (unsigned n = 0; n < 1000; ++n) {
        const std::string octet = std::to_string(n);
        const uint32_t code = n < 256 ? DT_OK : DT_ERR_INVALID_VALUE;
        ASSERT_EQ(CodeOf("VRFRD", octet + ".2.3.4:5"), code) << n;
        ASSERT_EQ(CodeOf("VRFRD", "1." + octet + ".3.4:5"), code) << n;
        ASSERT_EQ(CodeOf("VRFRD", "1.2." + octet + ".4:5"), code) << n;
        ASSERT_EQ(CodeOf("VRFRD", "1.2.3." + octet + ":5"), code) << n;
    }
}

// ----------------------------------------------------------------------------------------------------------- text out

// Bytes 2 to 7 of the values below, and what each split of them reads as.
constexpr const char *kFields = "fffefdfcfbfa";

TEST_F(VrfRd, PrintTable)
{
    struct PrintRow {
        const char *type, *notation, *text;
    };
    static constexpr PrintRow kRows[] = {
        {"0001", "00000000", "255.254.253.252:64506"}, {"0001", "01000000", "255.254.253.252:64506"},
        {"0001", "02000000", "255.254.253.252:64506"}, {"0001", "03000000", "255.254.253.252:64506"},
        {"0001", "04000000", "255.254.253.252:64506"}, {"0001", "ffffffff", "255.254.253.252:64506"},
        {"0000", "01000000", "65534:4261215226"},      {"0000", "02000000", "4294901244:64506"},
        {"0000", "03000000", "65534.65020:64506"},     {"0002", "02000000", "4294901244:64506"},
        {"0002", "03000000", "65534.65020:64506"},
    };
    for (const PrintRow &r : kRows) {
        for (const uint8_t mode : kPrintModes) {
            ExpectPrints(Row("VRFRD"), std::string(r.type) + kFields + r.notation, mode, r.text);
        }
    }
}

TEST_F(VrfRd, NotationOfAnotherTypePrintsNothing)
{
    static constexpr const char *kStrange[] = {"00000000", "04000000", "05000000", "80000000", "ff000000", "00010000",
                                               "01010000", "02010000", "03010000", "01000100", "02000001", "03000080",
                                               "00000001", "00000002", "00000003", "ffffffff"};
    for (const uint8_t mode : kPrintModes) {
        for (const char *notation : kStrange) {
            ExpectNothingWritten(Row("VRFRD"), std::string("0000") + kFields + notation, mode);
            ExpectNothingWritten(Row("VRFRD"), std::string("0002") + kFields + notation, mode);
        }
        ExpectNothingWritten(Row("VRFRD"), std::string("0002") + kFields + "01000000", mode);
    }
}

TEST_F(VrfRd, EveryNotationByte)
{
    for (unsigned n = 0; n < 256; ++n) {
        char digits[9];
        std::snprintf(digits, sizeof digits, "%02x000000", n);
        for (const uint8_t mode : kPrintModes) {
            ExpectPrints(Row("VRFRD"), std::string("0001") + kFields + digits, mode, "255.254.253.252:64506");
            if (n == 0 || n > 3) {
                ExpectNothingWritten(Row("VRFRD"), std::string("0000") + kFields + digits, mode);
            }
            if (n < 2 || n > 3) {
                ExpectNothingWritten(Row("VRFRD"), std::string("0002") + kFields + digits, mode);
            }
        }
    }
}

TEST_F(VrfRd, SmallAndLargeFields)
{
    static const std::vector<TextCase> cases = {
        {"0:0", "0000 0000 00000000 01000000"},
        {"0:0", "0000 0000 00000000 02000000"},
        {"0.0:0", "0000 0000 00000000 03000000"},
        {"0:0", "0002 0000 00000000 02000000"},
        {"0.0:0", "0002 0000 00000000 03000000"},
        {"0.0.0.0:0", "0001 0000 00000000 00000000"},
        {"65535:4294967295", "0000 ffff ffffffff 01000000"},
        {"4294967295:65535", "0000 ffff ffffffff 02000000"},
        {"65535.65535:65535", "0000 ffff ffffffff 03000000"},
        {"4294967295:65535", "0002 ffff ffffffff 02000000"},
        {"65535.65535:65535", "0002 ffff ffffffff 03000000"},
        {"255.255.255.255:65535", "0001 ffff ffffffff 00000000"},
    };
    for (const TextCase &c : cases) {
        for (const uint8_t mode : kOtherModes) {
            ExpectPrints(Row("VRFRD"), c.value, mode, c.text);
        }
    }
    // Outside the all-zero distinguisher mode 2 prints the same.
    for (size_t i = 3; i < cases.size(); ++i) {
        ExpectPrints(Row("VRFRD"), cases[i].value, 2, cases[i].text);
    }
}

TEST_F(VrfRd, AllZeroIsEmptyInModeTwo)
{
    for (const char *notation : {"00000000", "01000000", "02000000", "03000000", "04000000", "ffffffff"}) {
        ExpectPrints(Row("VRFRD"), std::string("0000000000000000") + notation, 2, "");
    }
    for (const uint8_t mode : kOtherModes) {
        ExpectNothingWritten(Row("VRFRD"), "000000000000000000000000", mode);
        ExpectNothingWritten(Row("VRFRD"), "000000000000000004000000", mode);
        ExpectPrints(Row("VRFRD"), "000000000000000001000000", mode, "0:0");
    }
}

TEST_F(VrfRd, UnknownTypes)
{
    for (const char *type : {"0003", "0004", "0100", "0200", "00ff", "0102", "8000", "ffff"}) {
        for (const char *notation : {"00000000", "01000000", "02000000", "03000000", "04000000"}) {
            for (const uint8_t mode : kPrintModes) {
                ExpectNoSuchKind(Row("VRFRD"), std::string(type) + kFields + notation, mode);
                ExpectNoSuchKind(Row("VRFRD"), std::string(type) + "000000000000" + notation, mode);
            }
        }
    }
}

TEST_F(VrfRd, EveryUnknownType)
{
    const DataTypeDescriptor &row = Row("VRFRD");
    const DataTypeRequest request{1, Handle()};
    for (unsigned type = 3; type < 65536; ++type) {
        uint8_t value[12] = {static_cast<uint8_t>(type >> 8), static_cast<uint8_t>(type), 1, 2, 3, 4, 5, 6, 1, 0, 0, 0};
        char text[257];
        uint16_t typeId = kUntouched;
        uint16_t length = kUntouched;
        void *buffer = text;
        ASSERT_EQ(row.FormatOut(&request, 0, 12, value, &typeId, &length, &buffer), DT_ERR_FAIL) << type;
        ASSERT_EQ(typeId, kUntouched);
        ASSERT_EQ(length, kUntouched);
        ASSERT_EQ(buffer, text);
    }
}

TEST_F(VrfRd, LengthArgumentIsNotLookedAt)
{
    for (const uint32_t length : {0u, 1u, 11u, 13u, 65536u, 4294967294u}) {
        const Out out = FormatOut("VRFRD", "000000640000000101000000", 1, length);
        EXPECT_EQ(out.code, DT_OK);
        EXPECT_EQ(out.text, "100:1");
    }
}

TEST_F(VrfRd, RoundTrips)
{
    for (const char *text : {"100:1",
                             "65535:4294967295",
                             "65536:1",
                             "4294967295:65535",
                             "1.2:3",
                             "0.100:1",
                             "0.0:1",
                             "65535.65535:65535",
                             "1.2.3.4:65535",
                             "0.0.0.0:0",
                             "0:1",
                             "1:0",
                             "0:10",
                             "1.0.0.1:2",
                             "1.0.1.1:101",
                             "1.1.1.112:20",
                             "1.1.1.1:10001",
                             "1.1.1.1:32787",
                             "10.100:100",
                             "100.1000:10000",
                             "201627:241",
                             "4200000001:1",
                             "4226809879:15",
                             "64512:100001",
                             "65001:2000000",
                             "172.16.255.1:3",
                             "192.0.2.255:65",
                             "65000:429496729",
                             "255.255.255.255:65535"}) {
        for (const uint8_t mode : kTextInModes) {
            EXPECT_EQ(RoundTrip("VRFRD", text, mode), text);
            EXPECT_EQ(Value("VRFRD", Text("VRFRD", Value("VRFRD", text), mode)), Value("VRFRD", text));
        }
    }
}

TEST_F(VrfRd, PrintFailures)
{
    for (const char *value : {"000000640000000101000000", "000200010002000303000000", "000101020304000500000000",
                              "000200010000000102000000"}) {
        for (const uint8_t mode : kPrintModes) {
            host::SetFaults({.failPrint = 1});
            const Out out = FormatOut("VRFRD", value, mode);
            host::SetFaults({});
            EXPECT_EQ(out.code, DT_ERR_FAIL) << value;
            EXPECT_EQ(out.typeId, kUntouched);
            EXPECT_EQ(out.length, kUntouched);
        }
    }
}

// ------------------------------------------------------------------------------------------------- printer by words

TEST_F(VrfRd, PrinterTakesWordsAsTheyLie)
{
    struct WordCase {
        const char *value;
        uint32_t code, length;
        const char *text; // null: nothing written
    };
    static constexpr WordCase kCases[] = {
        {"000000640000000101000000", DT_OK, 5, "100:1"},
        {"000200010000000102000000", DT_OK, 7, "65536:1"},
        {"000200010002000303000000", DT_OK, 5, "1.2:3"},
        {"000101020304fffe00000000", DT_OK, 13, "1.2.3.4:65534"},
        {"0001fffffffffffffffefdfc", DT_OK, 21, "255.255.255.255:65535"},
        {"000000000000000001000000", DT_OK, 3, "0:0"},
        {"000000000000000003000000", DT_OK, 5, "0.0:0"},
        {"000000000000000000000000", DT_OK, 0, nullptr},
        {"000000640000000104000000", DT_OK, 0, nullptr},
        {"000200010002000301000000", DT_OK, 0, nullptr},
        {"000200010002000300000000", DT_OK, 0, nullptr},
        {"000300010002000303000000", DT_ERR_FAIL, 0, nullptr},
        {"ffff00010002000301000000", DT_ERR_FAIL, 0, nullptr},
    };
    for (const WordCase &c : kCases) {
        SCOPED_TRACE(c.value);
        uint32_t words[3];
        std::memcpy(words, Bytes(c.value).data(), sizeof words);
        std::string buffer(257, '\xA5');
        uint32_t printed = 4711;
        EXPECT_EQ(SYSDT_VrfRd2Str(words[0], words[1], words[2], &printed, buffer.data()), c.code);
        if (c.code == DT_OK) {
            EXPECT_EQ(printed, c.length);
        }
        if (c.text != nullptr) {
            EXPECT_STREQ(buffer.c_str(), c.text);
        } else if (c.code == DT_OK) {
            EXPECT_EQ(buffer, std::string(257, '\xA5'));
        }
    }
    host::SetFaults({.failPrint = 1});
    uint32_t printed = 0;
    char buffer[257];
    EXPECT_EQ(SYSDT_VrfRd2Str(0x64000000, 0x01000000, 1, &printed, buffer), DT_ERR_FAIL);
}

TEST_F(VrfRd, FormatOutEx)
{
    const std::string value = Bytes("000000640000000101000000");
    for (const uint8_t mode : kPrintModes) {
        const DataTypeRequest request{mode, Handle()};
        uint16_t typeId = kUntouched;
        uint16_t length = kUntouched;
        void *buffer = nullptr;
        EXPECT_EQ(SYSDT_VrfRdFormatOutEx(&request, value.data(), &typeId, &length, &buffer), 0u);
        EXPECT_EQ(typeId, mode == 3 ? 6 : 25);
        EXPECT_EQ(length, mode == 3 ? 5 : 6);
        ASSERT_NE(buffer, nullptr);
        EXPECT_STREQ(static_cast<char *>(buffer), "100:1");
    }
}

TEST_F(VrfRd, IsInValidRdOrRtFindsAnySetBit)
{
    uint8_t bytes[8] = {};
    EXPECT_EQ(SYSDT_IsInValidRdOrRt(bytes), 0u);
    for (size_t at = 0; at < 8; ++at) {
        for (unsigned bit = 0; bit < 8; ++bit) {
            bytes[at] = static_cast<uint8_t>(1u << bit);
            EXPECT_EQ(SYSDT_IsInValidRdOrRt(bytes), 1u) << at << ' ' << bit;
        }
        bytes[at] = 0;
    }
    std::memset(bytes, 0xFF, sizeof bytes);
    EXPECT_EQ(SYSDT_IsInValidRdOrRt(bytes), 1u);
    const uint8_t notationOnly[12] = {0, 0, 0, 0, 0, 0, 0, 0, 1, 2, 3, 4};
    EXPECT_EQ(SYSDT_IsInValidRdOrRt(notationOnly), 0u);
}

// ------------------------------------------------------------------------------------- Check, Help, Compare, Endian

TEST_F(VrfRd, Check)
{
    for (uint32_t length = 0; length < 64; ++length) {
        EXPECT_EQ(CheckLength("VRFRD", length), length == 12 ? DT_OK : DT_ERR_LENGTH) << length;
    }
    for (const char *value : {"000000000000000000000000", "ffffffffffffffffffffffff", "000300000000000007000000"}) {
        EXPECT_EQ(Check("VRFRD", value), DT_OK);
    }
    const DataTypeDescriptor &row = Row("VRFRD");
    EXPECT_EQ(row.Check(nullptr, 0, 12, nullptr), DT_ERR_NULL_PTR);
    EXPECT_EQ(row.Check(&row, row.TypeId, 11, nullptr), DT_ERR_NULL_PTR);
    EXPECT_EQ(row.Check(nullptr, 0, 12, "123456789012"), DT_OK);
}

TEST_F(VrfRd, Help)
{
    const Helped helped = Help("VRFRD", 1, 11, 22);
    EXPECT_EQ(helped.text, "STRING<3-21>");
    EXPECT_EQ(helped.helpWord, 22u);
    EXPECT_EQ(Help("VRFRD", 1, 0, 0).code, DT_ERR_INVALID_PARAM);
    EXPECT_EQ(Help("VRFRD", 1, 0, 1).helpInits, 0u);
    EXPECT_EQ(Help("VRFRD", 2, 0, 0).code, DT_OK);
    host::SetFaults({.helpInitCode = 0x1234});
    const Helped refused = Help("VRFRD", 6);
    EXPECT_EQ(refused.code, 0x1234u);
    EXPECT_FALSE(refused.supplied);
    EXPECT_EQ(refused.helpClears, 0u);
}

TEST_F(VrfRd, Compare)
{
    static const std::vector<std::string> ascending = {
        "000000000000000000000000", "000000000000000001000000", "000000000000000002000000", "0000000000000000ff000000",
        "000000000000000100000000", "00000000000000ff00000000", "000000000000010000000000", "00007fffffffffffffffffff",
        "000080000000000000000000", "0000ffffffffffffffffffff", "000100000000000000000000", "000200000000000000000000",
        "00ff00000000000000000000", "010000000000000000000000", "7fffffffffffffffffffffff", "800000000000000000000000",
        "ffffffffffffffffffffffff"};
    for (size_t i = 0; i < ascending.size(); ++i) {
        for (size_t j = 0; j < ascending.size(); ++j) {
            EXPECT_EQ(Compare("VRFRD", ascending[i], ascending[j]), i < j   ? -1
                                                                    : i > j ? 1
                                                                            : 0)
                << ascending[i] << ' ' << ascending[j];
        }
    }
    // Only `length` bytes count.
    const DataTypeDescriptor &row = Row("VRFRD");
    const std::string left = Bytes("000000640000000101000000");
    const std::string right = Bytes("000000640000000102000000");
    EXPECT_EQ(row.Compare(nullptr, 12, left.data(), right.data()), -1);
    EXPECT_EQ(row.Compare(nullptr, 9, right.data(), left.data()), 1);
    EXPECT_EQ(row.Compare(nullptr, 8, left.data(), right.data()), 0);
    EXPECT_EQ(row.Compare(nullptr, 0, left.data(), right.data()), 0);
}

TEST_F(VrfRd, EndianSwapsTheNotationWord)
{
    EXPECT_EQ(Endian("VRFRD", "000000640000000101000000"), "000000640000000100000001");
    EXPECT_EQ(Endian("VRFRD", "010203040506070801020304"), "010203040506070804030201");
    EXPECT_EQ(Endian("VRFRD", Endian("VRFRD", "fffefdfcfbfaf9f8f7f6f5f4")), "fffefdfcfbfaf9f8f7f6f5f4");
}

// ---------------------------------------------------------------------------------------------------------------- Lua

TEST_F(VrfRd, LuaSet)
{
    struct SetCase {
        const char *value, *table;
    };
    static constexpr SetCase kCases[] = {
        {"000000640000000101000000", "{RdType=1, RdValue={0,0,0,100,0,0,0,1}}"},
        {"000101020304fffe00000000", "{RdType=0, RdValue={0,1,1,2,3,4,255,254}}"},
        {"00020001000000010200ff80", "{RdType=2164195330, RdValue={0,2,0,1,0,0,0,1}}"},
        {"ffffffffffffffffffffffff", "{RdType=4294967295, RdValue={255,255,255,255,255,255,255,255}}"},
    };
    for (const SetCase &c : kCases) {
        const LuaOut out = LuaSet("VRFRD", c.value);
        EXPECT_EQ(out.code, DT_OK);
        EXPECT_EQ(out.table, c.table);
        EXPECT_EQ(out.growth, 0);
    }
    EXPECT_EQ(LuaSet(Row("VRFRD"), "000000640000000101000000aa", 13).table, kCases[0].table);
    EXPECT_EQ(LuaSet(Row("VRFRD"), "000000640000000101000000", 65535).table, kCases[0].table);
}

TEST_F(VrfRd, LuaGet)
{
    ExpectLuaGet(
        Row("VRFRD"), 12,
        {
            {"{RdType=1, RdValue={0,0,0,100,0,0,0,1}}", DT_OK, "000000640000000101000000", 0},
            {"{RdType=258, RdValue={0,2,0,1,0,2,0,3}}", DT_OK, "000200010002000302000000", 0},
            {"{RdType=256, RdValue={256,257,511,512,65535,65536,-1,4294967295}}", DT_OK, "0001ff00ff00ffff00000000", 0},
            {"{RdType=4294967295, RdValue={1,2,3,4,5,6,7,8,9,10}}", DT_OK, "0102030405060708ff000000", 0},
            {"{RdType='3', RdValue={'1','2',3,4,5,6,7,8}, other=1}", DT_OK, "010203040506070803000000", 0},
            // the field is no table
            {"nil", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeeeeeeeeeee", 1},
            {"5", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeeeeeeeeeee", 1},
            {"'100:1'", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeeeeeeeeeee", 1},
            // its RdValue is no table
            {"{RdType=1}", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeeeeeeeeeee", 2},
            {"{RdType=1, RdValue=5}", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeeeeeeeeeee", 2},
            {"{RdType=1, RdValue='12345678'}", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeeeeeeeeeee", 2},
            {"{RdType=1, rdvalue={1,2,3,4,5,6,7,8}}", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeeeeeeeeeee", 2},
            // too few items
            {"{RdType=1, RdValue={}}", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeeeeeeeeeee", 3},
            {"{RdType=1, RdValue={1,2,3,4,5,6,7}}", DT_ERR_INVALID_PARAM, "01020304050607eeeeeeeeee", 10},
            // its RdType is no number
            {"{RdValue={1,2,3,4,5,6,7,8}}", DT_ERR_INVALID_PARAM, "0102030405060708eeeeeeee", 2},
            {"{RdType='x', RdValue={1,2,3,4,5,6,7,8}}", DT_ERR_INVALID_PARAM, "0102030405060708eeeeeeee", 2},
            {"{RdType={}, RdValue={1,2,3,4,5,6,7,8}}", DT_ERR_INVALID_PARAM, "0102030405060708eeeeeeee", 2},
            {"{RdType=true, RdValue={1,2,3,4,5,6,7,8}}", DT_ERR_INVALID_PARAM, "0102030405060708eeeeeeee", 2},
        });
    ExpectItemsAreNumbers(Row("VRFRD"), 12, {"{RdType=1, RdValue=", "}", 8, 0, 3});
    EXPECT_EQ(LuaGet(Row("VRFRD"), "{RdType=1, RdValue={1,2,3,4,5,6,7,8}}", 14).value, "010203040506070801000000eeee");
}

TEST_F(VrfRd, LuaLengths)
{
    ExpectShortLuaRefused(Row("VRFRD"), 12, "{RdType=1, RdValue={1,2,3,4,5,6,7,8}}");
    lua_State *L = host::NewLua();
    char value[12] = {};
    EXPECT_EQ(SYSDT_VrfRdLuaSet(nullptr, 1, "v", 0, 0, value), DT_ERR_NULL_PTR); // pointers before lengths
    EXPECT_EQ(SYSDT_VrfRdLuaSet(L, 1, nullptr, 0, 0, value), DT_ERR_NULL_PTR);
    EXPECT_EQ(SYSDT_VrfRdLuaGet(L, 1, "v", 0, 0, nullptr), DT_ERR_NULL_PTR);
    host::CloseLua(L);
}

TEST_F(VrfRd, LuaRoundTrip)
{
    for (const TextCase &c : Accepted()) {
        const std::string value = Hex(Bytes(c.value));
        const LuaOut out = LuaSet("VRFRD", value);
        EXPECT_EQ(LuaGet("VRFRD", out.table).value, value) << c.text;
    }
}

} // namespace
