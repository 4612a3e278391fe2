// BOLRD: a sub-type word and a route distinguisher. The type hands every operation to the one row of its table, the
// route distinguisher of VPLS instances, and turns any answer but 0 into DT_ERR_INVALID_VALUE.
#include "rdrt/printing.h"

#include <cstdio>
#include <cstring>

namespace {

using namespace bgp::test;

class BolRd : public PlugIn {};

constexpr uint8_t kEveryMode[] = {0, 1, 2, 3, 4, 5, 6, 7, 255};
constexpr uint8_t kServedModes[] = {0, 1, 2, 3, 5, 6};
constexpr uint8_t kOtherModes[] = {0, 1, 3, 5, 6};                 // where an all-zero value has no text of its own
constexpr const char *kValue = "00000000000000640000000101000000"; // 100:1

DataTypeDescriptor VplsRd()
{
    return Row(g_astBOL_RD_ProcTable[0]);
}

const std::vector<TextCase> &Accepted()
{
    static const std::vector<TextCase> cases = {
        {"100:1", "00000000 0000 0064 00000001 01000000"},
        {"0:1", "00000000 0000 0000 00000001 01000000"},
        {"1:0", "00000000 0000 0001 00000000 01000000"},
        {"65535:4294967295", "00000000 0000 ffff ffffffff 01000000"},
        {"65536:0", "00000000 0002 00010000 0000 02000000"},
        {"65536:1", "00000000 0002 00010000 0001 02000000"},
        {"4294967295:65535", "00000000 0002 ffffffff ffff 02000000"},
        {"1.2:3", "00000000 0002 0001 0002 0003 03000000"},
        {"0.100:1", "00000000 0002 0000 0064 0001 03000000"},
        {"65535.65535:65535", "00000000 0002 ffff ffff ffff 03000000"},
        {"1.2.3.4:65535", "00000000 0001 01020304 ffff 00000000"},
        {"0.0.0.0:0", "00000000 0001 00000000 0000 00000000"},
        {"255.255.255.255:65535", "00000000 0001 ffffffff ffff 00000000"},
        {"0000000000000000100:1", "00000000 0000 0064 00000001 01000000"},
        {" \t 100:1 \t", "00000000 0000 0064 00000001 01000000"},
    };
    return cases;
}

const std::vector<TextCase> &Refused()
{
    static const std::vector<TextCase> cases = {
        {"", ""},
        {" ", ""},
        {"1", ""},
        {"1:", ""},
        {":1", ""},
        {"0:0", ""},
        {"0.0:0", ""},
        {"65535:4294967296", ""},
        {"65536:65536", ""},
        {"4294967296:1", ""},
        {"4294967297:1", ""},
        {"65536.0:1", ""},
        {"0.65536:1", ""},
        {"1.2:65536", ""},
        {"4294967297.2:3", ""},
        {"1.2:4294967299", ""},
        {"256.2.3.4:1", ""},
        {"1.2.3.256:1", ""},
        {"1.2.3.4:65536", ""},
        {"4294967297.2.3.4:5", ""},
        {"1:2:3", ""},
        {"1.2.3:4", ""},
        {"1.2.3.4.5:6", ""},
        {"1: 2", ""},
        {"1 :2", ""},
        {"a:1", ""},
        {"1-2", ""},
        {"1:*", ""},
        {"100:1\xb2", ""},
        {"0000000000000000100:01", ""},
        {"0255.255.255.255:65535", ""},
        {"2001:db8::1.1", ""},
        {"0a0b-0c0d-0e0f", ""},
    };
    return cases;
}

TEST_F(BolRd, Rows)
{
    const DataTypeDescriptor &row = Row("BOLRD");
    EXPECT_EQ(row.TypeId, 0x118);
    EXPECT_EQ(row.BinaryLength, 16);
    EXPECT_EQ(row.BaseKind, 26);
    EXPECT_EQ(row.FormatIn, &SYSDT_BolRdFormatIn);
    EXPECT_EQ(row.FormatOut, &SYSDT_BolRdFormatOut);
    EXPECT_EQ(row.Check, &SYSDT_BolRdCheck);
    EXPECT_EQ(row.Help, &SYSDT_BolRdHelp);
    EXPECT_EQ(row.Compare, &SYSDT_BolRdCompare);
    EXPECT_EQ(row.Reserved, nullptr);
    EXPECT_EQ(row.LuaSet, &SYSDT_BolRdLuaSet);
    EXPECT_EQ(row.LuaGet, &SYSDT_BolRdLuaGet);
    EXPECT_EQ(row.Endian, nullptr);

    const BolPrefixSubtypeEntry &entry = g_astBOL_RD_ProcTable[0];
    EXPECT_EQ(entry.SubType, 0u);
    EXPECT_EQ(std::string(entry.Name, sizeof entry.Name), std::string("RT") + std::string(18, '\0'));
    EXPECT_EQ(entry.FormatIn, &SYSDT_VplsRDFormatIn);
    EXPECT_EQ(entry.FormatOut, &SYSDT_VplsRDFormatOut);
    EXPECT_EQ(entry.Check, &SYSDT_VplsRDCheck);
    EXPECT_EQ(entry.Help, &SYSDT_VplsRDHelp);
    EXPECT_EQ(entry.Compare, &SYSDT_VplsRDCompare);
    EXPECT_EQ(entry.LuaSet, &SYSDT_VplsRDLuaSet);
    EXPECT_EQ(entry.LuaGet, &SYSDT_VplsRDLuaGet);
}

TEST_F(BolRd, RowContract)
{
    Sweep(VplsRd(), {.text = "100:1",
                     .value = kValue,
                     .inModes = "PPPPUPPU",
                     .outModes = "TTTRUTTU",
                     .helpModes = "-H----H-",
                     .helpText = "STRING<3-21>",
                     .resultTypeId = 0x118,
                     .resultLength = 16,
                     .textSize = 257});
}

TEST_F(BolRd, Layout)
{
    // The two levels of the Lua table share their names; the layout has the sub-type, the distinguisher, its notation.
    ExpectLayout(0x118, std::string(32, '0'), {{nullptr, 0, 4, 1}, {nullptr, 4, 1, 8}, {nullptr, 12, 4, 1}});
}

// ----------------------------------------------------------------------------------------------------------- FormatIn

TEST_F(BolRd, AcceptedTexts)
{
    ExpectTexts(Row("BOLRD"), Accepted(), 0x118);
    ExpectTexts(VplsRd(), Accepted(), 0x118);
    for (const uint8_t mode : kServedModes) {
        for (const TextCase &c : Accepted()) {
            EXPECT_EQ(Value("BOLRD", c.text, mode), Hex(Bytes(c.value))) << c.text;
        }
    }
}

TEST_F(BolRd, RefusedTexts)
{
    ExpectTexts(Row("BOLRD"), Refused(), 0x118);
    ExpectTexts(VplsRd(), Refused(), 0x118);
    for (const uint8_t mode : kServedModes) {
        for (const TextCase &c : Refused()) {
            EXPECT_EQ(CodeOf("BOLRD", c.text, mode), DT_ERR_INVALID_VALUE) << c.text;
        }
    }
}

TEST_F(BolRd, OuterBlanks)
{
    for (const char *text : {"100:1", "255.255.255.255:65535"}) {
        ExpectBlanksDropped(VplsRd(), text);
    }
    const std::string blanks(500, ' ');
    EXPECT_EQ(Value("BOLRD", blanks + "100:1" + blanks), kValue);
    EXPECT_EQ(CodeOf("BOLRD", blanks), DT_ERR_INVALID_VALUE);
}

TEST_F(BolRd, FormatInModes)
{
    for (const uint8_t mode : kEveryMode) {
        SCOPED_TRACE(int{mode});
        const In in = FormatIn("BOLRD", "100:1", mode);
        if (mode == 4 || mode > 6) {
            EXPECT_EQ(in.code, DT_ERR_INVALID_VALUE);
            EXPECT_EQ(in.typeId, kUntouched);
            EXPECT_EQ(in.length, kUntouched);
            EXPECT_FALSE(in.bufferSet);
        } else {
            EXPECT_EQ(in.code, DT_OK);
            EXPECT_EQ(in.typeId, 0x118);
            EXPECT_EQ(in.length, 16);
            EXPECT_EQ(in.value, kValue);
        }
    }
}

TEST_F(BolRd, FormatInPointers)
{
    const DataTypeDescriptor &row = Row("BOLRD");
    for (const uint8_t mode : kEveryMode) {
        const DataTypeRequest request{mode, Handle()};
        for (int missing = 0; missing < 5; ++missing) {
            char text[] = "100:1";
            uint16_t typeId = kUntouched;
            uint16_t length = kUntouched;
            void *buffer = text;
            EXPECT_EQ(row.FormatIn(missing == 0 ? nullptr : &request, 0, 0, missing == 1 ? nullptr : text,
                                   missing == 2 ? nullptr : &typeId, missing == 3 ? nullptr : &length,
                                   missing == 4 ? nullptr : &buffer),
                      DT_ERR_NULL_PTR)
                << missing << " in mode " << int{mode};
            EXPECT_EQ(typeId, kUntouched);
            EXPECT_EQ(length, kUntouched);
            EXPECT_EQ(buffer, text);
        }
    }
}

TEST_F(BolRd, FormatInWithoutMemory)
{
    for (const uint8_t mode : kServedModes) {
        host::SetFaults({.failAllocation = 1, .failAllAfter = true});
        const In in = FormatIn("BOLRD", "100:1", mode);
        host::SetFaults({});
        EXPECT_EQ(in.code, DT_ERR_INVALID_VALUE);
        EXPECT_EQ(in.typeId, 0x118); // what the row wrote stays
        EXPECT_EQ(in.length, 0);
        EXPECT_FALSE(in.bufferSet);
    }
    EXPECT_EQ(CodesWhileAllocationsFail([] { return FormatIn("BOLRD", "100:1").code; }),
              std::vector<uint32_t>{DT_ERR_INVALID_VALUE});
}

// ---------------------------------------------------------------------------------------------------------- FormatOut

constexpr const char *kFields = "fffefdfcfbfa"; // bytes 6 to 11

TEST_F(BolRd, PrintTable)
{
    struct PrintRow {
        const char *type, *notation, *text;
    };
    static constexpr PrintRow kRows[] = {
        {"0001", "00000000", "255.254.253.252:64506"}, {"0001", "01000000", "255.254.253.252:64506"},
        {"0001", "03000000", "255.254.253.252:64506"}, {"0001", "ffffffff", "255.254.253.252:64506"},
        {"0000", "01000000", "65534:4261215226"},      {"0000", "02000000", "4294901244:64506"},
        {"0000", "03000000", "65534.65020:64506"},     {"0002", "02000000", "4294901244:64506"},
        {"0002", "03000000", "65534.65020:64506"},
    };
    for (const PrintRow &r : kRows) {
        for (const uint8_t mode : kServedModes) {
            const std::string value = std::string("00000000") + r.type + kFields + r.notation;
            ExpectPrints(Row("BOLRD"), value, mode, r.text);
            ExpectPrints(VplsRd(), value, mode, r.text);
        }
    }
}

TEST_F(BolRd, NotationOfAnotherTypePrintsNothing)
{
    for (unsigned n = 0; n < 256; ++n) {
        char digits[9];
        std::snprintf(digits, sizeof digits, "%02x000000", n);
        for (const uint8_t mode : kServedModes) {
            if (n == 0 || n > 3) {
                ExpectNothingWritten(Row("BOLRD"), std::string("000000000000") + kFields + digits, mode);
                ExpectNothingWritten(VplsRd(), std::string("000000000000") + kFields + digits, mode);
            }
            if (n < 2 || n > 3) {
                ExpectNothingWritten(Row("BOLRD"), std::string("000000000002") + kFields + digits, mode);
                ExpectNothingWritten(VplsRd(), std::string("000000000002") + kFields + digits, mode);
            }
        }
    }
    for (const char *notation : {"01010000", "02000100", "03000001", "00000001", "ffffffff"}) {
        for (const uint8_t mode : kServedModes) {
            ExpectNothingWritten(Row("BOLRD"), std::string("000000000000") + kFields + notation, mode);
            ExpectNothingWritten(Row("BOLRD"), std::string("000000000002") + kFields + notation, mode);
        }
    }
}

TEST_F(BolRd, AllZeroIsEmptyInModeTwo)
{
    for (const char *notation : {"00000000", "01000000", "02000000", "03000000", "04000000", "ffffffff"}) {
        ExpectPrints(Row("BOLRD"), std::string("000000000000000000000000") + notation, 2, "");
        ExpectPrints(VplsRd(), std::string("000000000000000000000000") + notation, 2, "");
    }
    for (const uint8_t mode : kOtherModes) {
        ExpectNothingWritten(Row("BOLRD"), "00000000000000000000000000000000", mode);
        ExpectPrints(Row("BOLRD"), "00000000000000000000000001000000", mode, "0:0");
    }
}

TEST_F(BolRd, UnknownTypes)
{
    for (const char *type : {"0003", "0004", "0100", "0200", "0102", "ffff"}) {
        for (const char *notation : {"00000000", "01000000", "02000000", "03000000"}) {
            for (const uint8_t mode : kServedModes) {
                const std::string value = std::string("00000000") + type + kFields + notation;
                ExpectNoSuchKind(Row("BOLRD"), value, mode, DT_ERR_INVALID_VALUE);
                ExpectNoSuchKind(VplsRd(), value, mode, DT_ERR_FAIL);
            }
        }
    }
}

TEST_F(BolRd, OtherSubTypesAreRefused)
{
    for (const char *subType : {"01000000", "02000000", "00010000", "00000100", "00000001", "ffffffff"}) {
        const std::string value = std::string(subType) + "000000640000000101000000";
        for (const uint8_t mode : kEveryMode) {
            const Out out = FormatOut("BOLRD", value, mode);
            EXPECT_EQ(out.code, DT_ERR_INVALID_VALUE);
            EXPECT_EQ(out.typeId, kUntouched);
            EXPECT_EQ(out.length, kUntouched);
            EXPECT_FALSE(out.bufferSet);
            const Into into = FormatOutInto(Row("BOLRD"), value, mode, 257);
            EXPECT_EQ(into.buffer, std::string(257, '\xA5'));
            EXPECT_TRUE(into.sameBuffer);
            EXPECT_FALSE(into.released);
        }
        // The row itself does not look at the word.
        ExpectPrints(VplsRd(), value, 1, "100:1");
    }
}

TEST_F(BolRd, FormatOutModes)
{
    for (const uint8_t mode : kEveryMode) {
        SCOPED_TRACE(int{mode});
        if (mode == 4 || mode > 6) {
            const Out out = FormatOut("BOLRD", kValue, mode);
            EXPECT_EQ(out.code, DT_ERR_INVALID_VALUE);
            EXPECT_EQ(out.typeId, kUntouched);
            EXPECT_EQ(out.length, kUntouched);
            EXPECT_FALSE(out.bufferSet);
        } else {
            ExpectPrints(Row("BOLRD"), kValue, mode, "100:1");
        }
    }
}

TEST_F(BolRd, FormatOutPointers)
{
    const DataTypeDescriptor &row = Row("BOLRD");
    std::string value = Bytes(kValue);
    for (const uint8_t mode : kEveryMode) {
        const DataTypeRequest request{mode, Handle()};
        for (int missing = 0; missing < 5; ++missing) {
            uint16_t typeId = kUntouched;
            uint16_t length = kUntouched;
            void *buffer = nullptr;
            EXPECT_EQ(row.FormatOut(missing == 0 ? nullptr : &request, 0, 16, missing == 1 ? nullptr : value.data(),
                                    missing == 2 ? nullptr : &typeId, missing == 3 ? nullptr : &length,
                                    missing == 4 ? nullptr : &buffer),
                      DT_ERR_NULL_PTR)
                << missing << " in mode " << int{mode};
            EXPECT_EQ(typeId, kUntouched);
            EXPECT_EQ(length, kUntouched);
            EXPECT_EQ(buffer, nullptr);
        }
    }
}

TEST_F(BolRd, FormatOutWithoutMemory)
{
    for (const uint8_t mode : kServedModes) {
        host::SetFaults({.failAllocation = 1, .failAllAfter = true});
        const Out out = FormatOut("BOLRD", kValue, mode);
        host::SetFaults({});
        EXPECT_EQ(out.code, DT_ERR_INVALID_VALUE);
        EXPECT_EQ(out.typeId, 0);
        EXPECT_EQ(out.length, 0);
        EXPECT_FALSE(out.bufferSet);
    }
}

TEST_F(BolRd, PrintFailures)
{
    for (const uint8_t mode : kServedModes) {
        host::SetFaults({.failPrint = 1});
        EXPECT_EQ(FormatOut("BOLRD", kValue, mode).code, DT_ERR_INVALID_VALUE);
        host::SetFaults({.failPrint = 1});
        EXPECT_EQ(FormatOut(VplsRd(), kValue, mode).code, DT_ERR_FAIL);
        host::SetFaults({});
    }
}

TEST_F(BolRd, LengthArgumentIsNotLookedAt)
{
    for (const uint32_t length : {0u, 3u, 15u, 17u, 4294967294u}) {
        EXPECT_EQ(FormatOut("BOLRD", kValue, 1, length).text, "100:1");
        EXPECT_EQ(FormatOut(VplsRd(), kValue, 1, length).text, "100:1");
    }
}

TEST_F(BolRd, RoundTrips)
{
    for (const char *text : {"100:1", "65535:4294967295", "65536:1", "4294967295:65535", "1.2:3", "0.100:1",
                             "1.2.3.4:65535", "0.0.0.0:0", "255.255.255.255:65535"}) {
        for (const uint8_t mode : kServedModes) {
            EXPECT_EQ(Text("BOLRD", Value("BOLRD", text, mode), mode), text);
        }
    }
}

// ---------------------------------------------------------------------------------------------- Check, Help, Compare

TEST_F(BolRd, Check)
{
    for (uint32_t length = 0; length < 64; ++length) {
        EXPECT_EQ(CheckLength("BOLRD", length), length == 16 ? DT_OK : DT_ERR_INVALID_VALUE) << length;
        const std::string value(length + 1, '\xFF');
        EXPECT_EQ(SYSDT_VplsRDCheck(nullptr, 0, length, value.data()), length == 16 ? DT_OK : DT_ERR_LENGTH) << length;
    }
    EXPECT_EQ(Check("BOLRD", "ffffffffffffffffffffffffffffffff"), DT_OK);
    const DataTypeDescriptor &row = Row("BOLRD");
    EXPECT_EQ(row.Check(nullptr, 0, 16, "1234567890123456"), DT_ERR_NULL_PTR);
    EXPECT_EQ(row.Check(&row, 0, 16, nullptr), DT_ERR_NULL_PTR);
    EXPECT_EQ(row.Check(&row, 0, 15, nullptr), DT_ERR_NULL_PTR);
    EXPECT_EQ(SYSDT_VplsRDCheck(nullptr, 0, 16, nullptr), DT_ERR_NULL_PTR);
    EXPECT_EQ(SYSDT_VplsRDCheck(nullptr, 0, 1, nullptr), DT_ERR_NULL_PTR);
}

TEST_F(BolRd, Help)
{
    for (const uint8_t mode : kEveryMode) {
        SCOPED_TRACE(int{mode});
        const bool answers = mode == 1 || mode == 6;
        const Helped helped = Help("BOLRD", mode, 11, 22);
        EXPECT_EQ(helped.code, DT_OK);
        EXPECT_EQ(helped.supplied, answers);
        EXPECT_EQ(helped.text, answers ? "STRING<3-21>" : "");
        EXPECT_EQ(helped.helpWord, answers ? 22u : 0u);
        EXPECT_EQ(Help("BOLRD", mode, 0, 22).code, answers ? DT_ERR_INVALID_VALUE : DT_OK);
        EXPECT_EQ(Help("BOLRD", mode, 11, 0).code, answers ? DT_ERR_INVALID_VALUE : DT_OK);
    }
    host::SetFaults({.helpInitCode = 77});
    EXPECT_EQ(Help("BOLRD", 1).code, DT_ERR_INVALID_VALUE);
    EXPECT_EQ(Help("BOLRD", 2).code, DT_OK);
    EXPECT_EQ(Help(VplsRd(), 1).code, 77u);
}

TEST_F(BolRd, HelpPointers)
{
    const DataTypeDescriptor &row = Row("BOLRD");
    const uint32_t words[2] = {11, 22};
    for (const uint8_t mode : kEveryMode) {
        const DataTypeRequest request{mode, Handle()};
        DataTypeHelpInfo info{0, nullptr};
        EXPECT_EQ(row.Help(nullptr, 0, 0, "", words, &info), DT_ERR_NULL_PTR);
        EXPECT_EQ(row.Help(&request, 0, 0, nullptr, words, &info), DT_ERR_NULL_PTR);
        EXPECT_EQ(row.Help(&request, 0, 0, "", nullptr, &info), DT_ERR_NULL_PTR);
        EXPECT_EQ(row.Help(&request, 0, 0, "", words, nullptr), DT_ERR_NULL_PTR);
        EXPECT_EQ(info.EntryCount, 0u);
        // The row needs no typed text.
        EXPECT_EQ(SYSDT_VplsRDHelp(&request, 0, 0, nullptr, words, &info), DT_OK);
    }
}

TEST_F(BolRd, HelpWithoutMemory)
{
    bool refused = false;
    for (uint32_t allowed = 0; allowed < 3 && !refused; ++allowed) {
        host::SetFaults({.failAllocation = allowed + 1, .failAllAfter = true});
        const Helped helped = Help("BOLRD", 1);
        host::SetFaults({});
        refused = helped.code == DT_ERR_INVALID_VALUE && helped.helpClears == 1;
        EXPECT_FALSE(helped.supplied && helped.code != DT_OK);
    }
    EXPECT_TRUE(refused);
}

TEST_F(BolRd, Compare)
{
    static const std::vector<std::string> ascending = {
        "00000000000000000000000000000000", "00000000000000000000000000000001", "00000000000000000000000001000000",
        "00000000000000640000000101000000", "000000000000ffff0000000000000000", "00000000000200000000000000000000",
        "00000001000000000000000000000000", "01000000000000000000000000000000", "7fffffffffffffffffffffffffffffff",
        "ffffffffffffffffffffffffffffffff"};
    for (size_t i = 0; i < ascending.size(); ++i) {
        for (size_t j = 0; j < ascending.size(); ++j) {
            const std::string left = Bytes(ascending[i]);
            const std::string right = Bytes(ascending[j]);
            EXPECT_EQ(SYSDT_VplsRDCompare(nullptr, 16, left.data(), right.data()), i < j ? -1 : i > j ? 1 : 0);
            EXPECT_EQ(Compare("BOLRD", ascending[i], ascending[j]), i == j ? 0 : 0x80170d);
        }
    }
    const std::string left = Bytes(ascending[0]);
    const std::string right = Bytes(ascending[1]);
    const DataTypeDescriptor &row = Row("BOLRD");
    EXPECT_EQ(row.Compare(nullptr, 15, left.data(), right.data()), 0);
    EXPECT_EQ(row.Compare(nullptr, 16, left.data(), right.data()), 0x80170d);
    EXPECT_EQ(row.Compare(&row, 16, nullptr, right.data()), 0x801705);
    EXPECT_EQ(row.Compare(&row, 16, left.data(), nullptr), 0x801705);
    EXPECT_EQ(row.Compare(&row, 0, nullptr, nullptr), 0x801705);
}

// ---------------------------------------------------------------------------------------------------------------- Lua

TEST_F(BolRd, LuaSet)
{
    struct SetCase {
        const char *value, *table;
    };
    static constexpr SetCase kCases[] = {
        {kValue, "{RdType=0, RdValue={RdType=1, RdValue={0,0,0,100,0,0,0,1}}}"},
        {"01000080000101020304fffeffffffff",
         "{RdType=2147483649, RdValue={RdType=4294967295, RdValue={0,1,1,2,3,4,255,254}}}"},
    };
    for (const SetCase &c : kCases) {
        for (const LuaOut &out : {LuaSet("BOLRD", c.value), LuaSet(VplsRd(), c.value, 16)}) {
            EXPECT_EQ(out.code, DT_OK);
            EXPECT_EQ(out.table, c.table);
            EXPECT_EQ(out.growth, 0);
        }
    }
}

TEST_F(BolRd, LuaGet)
{
    const std::string nothing = Unwritten(16);
    const std::string items = "{0,0,0,100,0,0,0,1}";
    struct Dispatched {
        DataTypeDescriptor row;
        uint32_t refusal;
    };
    for (const Dispatched &d :
         {Dispatched{Row("BOLRD"), DT_ERR_INVALID_VALUE}, Dispatched{VplsRd(), DT_ERR_INVALID_PARAM}}) {
        ExpectLuaGet(d.row, 16,
                     {
                         {"{RdType=0, RdValue={RdType=1, RdValue=" + items + "}}", DT_OK, kValue, 0},
                         {"{RdType=258, RdValue={RdType=259, RdValue=" + items + "}}", DT_OK,
                          "02000000000000640000000103000000", 0},
                         {"{RdType=256, RdValue={RdType=4294967295, RdValue={256,257,511,-1,1,2,65535,65536,5}}}",
                          DT_OK, "000000000001ffff0102ff00ff000000", 0},
                         // no table at one of the three levels
                         {"nil", d.refusal, nothing, kAnyGrowth},
                         {"5", d.refusal, nothing, kAnyGrowth},
                         {"'100:1'", d.refusal, nothing, kAnyGrowth},
                         {"{RdType=0}", d.refusal, nothing, kAnyGrowth},
                         {"{RdType=0, RdValue=5}", d.refusal, nothing, kAnyGrowth},
                         {"{RdType=0, RdValue='x'}", d.refusal, nothing, kAnyGrowth},
                         {"{RdType=0, RdValue={}}", d.refusal, nothing, kAnyGrowth},
                         {"{RdType=0, RdValue={RdType=1}}", d.refusal, nothing, kAnyGrowth},
                         {"{RdType=0, RdValue={RdType=1, RdValue=5}}", d.refusal, nothing, kAnyGrowth},
                         {"{RdType=0, RdValue={RdType=1, RdValue='x'}}", d.refusal, nothing, kAnyGrowth},
                         {"{RdType=0, RdValue=" + items + "}", d.refusal, nothing, kAnyGrowth}, // one level short
                         // too few items
                         {"{RdType=0, RdValue={RdType=1, RdValue={}}}", d.refusal, nothing, kAnyGrowth},
                         {"{RdType=0, RdValue={RdType=1, RdValue={1,2,3,4,5,6,7}}}", d.refusal,
                          "eeeeeeee01020304050607eeeeeeeeee", kAnyGrowth},
                         // the inner notation, then the outer sub-type
                         {"{RdType=0, RdValue={RdValue=" + items + "}}", d.refusal, "eeeeeeee0000006400000001eeeeeeee",
                          kAnyGrowth},
                         {"{RdType=0, RdValue={RdType='x', RdValue=" + items + "}}", d.refusal,
                          "eeeeeeee0000006400000001eeeeeeee", kAnyGrowth},
                         {"{RdType=0, RdValue={RdType={}, RdValue=" + items + "}}", d.refusal,
                          "eeeeeeee0000006400000001eeeeeeee", kAnyGrowth},
                         {"{RdValue={RdType=1, RdValue=" + items + "}}", d.refusal, "eeeeeeee000000640000000101000000",
                          kAnyGrowth},
                         {"{RdType='x', RdValue={RdType=1, RdValue=" + items + "}}", d.refusal,
                          "eeeeeeee000000640000000101000000", kAnyGrowth},
                         {"{RdType={}, RdValue={RdType=1, RdValue=" + items + "}}", d.refusal,
                          "eeeeeeee000000640000000101000000", kAnyGrowth},
                     });
        ExpectItemsAreNumbers(d.row, 16, {"{RdType=0, RdValue={RdType=1, RdValue=", "}}", 8, 4, kAnyGrowth}, d.refusal);
    }
}

TEST_F(BolRd, LuaLengths)
{
    const char *table = "{RdType=0, RdValue={RdType=1, RdValue={1,2,3,4,5,6,7,8}}}";
    ExpectShortLuaRefused(Row("BOLRD"), 16, table, DT_ERR_INVALID_VALUE);
    ExpectShortLuaRefused(VplsRd(), 16, table, DT_ERR_INVALID_PARAM);
}

TEST_F(BolRd, LuaPointers)
{
    const DataTypeDescriptor &row = Row("BOLRD");
    lua_State *L = host::NewLua();
    char value[16] = {};
    EXPECT_EQ(row.LuaSet(nullptr, 1, "v", 0, 16, value), DT_ERR_NULL_PTR);
    EXPECT_EQ(row.LuaSet(L, 1, nullptr, 0, 16, value), DT_ERR_NULL_PTR);
    EXPECT_EQ(row.LuaSet(L, 1, "v", 0, 16, nullptr), DT_ERR_NULL_PTR);
    EXPECT_EQ(row.LuaSet(L, 1, "v", 0, 0, nullptr), DT_ERR_NULL_PTR);
    EXPECT_EQ(row.LuaGet(nullptr, 1, "v", 0, 16, value), DT_ERR_NULL_PTR);
    EXPECT_EQ(row.LuaGet(L, 1, nullptr, 0, 16, value), DT_ERR_NULL_PTR);
    EXPECT_EQ(row.LuaGet(L, 1, "v", 0, 16, nullptr), DT_ERR_NULL_PTR);
    EXPECT_EQ(row.LuaGet(L, 1, "v", 0, 0, nullptr), DT_ERR_NULL_PTR);
    host::CloseLua(L);
}

TEST_F(BolRd, LuaRoundTrip)
{
    for (const TextCase &c : Accepted()) {
        const std::string value = Hex(Bytes(c.value));
        EXPECT_EQ(LuaGet("BOLRD", LuaSet("BOLRD", value).table).value, value) << c.text;
    }
}

} // namespace
