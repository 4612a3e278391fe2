// SID_STRUCTURE: the six lengths of the SRv6 SID Structure sub-sub-TLV (RFC 9252 section 3.2.1) and a present flag.
// Output only.
#include "rdrt/printing.h"

namespace {

using namespace bgp::test;

class SidStructure : public PlugIn {};

constexpr uint8_t kPrintModes[] = {0, 1, 2, 3, 5, 6};

// Every mode reports type 25, mode 3 as well.
void ExpectSidText(const std::string &value, uint8_t mode, const std::string &text)
{
    SCOPED_TRACE(value + " in mode " + std::to_string(mode));
    const Into into = FormatOutInto(Row("SID_STRUCTURE"), value, mode, 257);
    EXPECT_EQ(into.out.code, DT_OK);
    EXPECT_EQ(into.out.typeId, 25);
    EXPECT_EQ(into.out.length, text.size() + 1);
    EXPECT_EQ(into.buffer.substr(0, text.size() + 1), text + '\0');
    EXPECT_TRUE(into.sameBuffer);
    EXPECT_TRUE(into.guardsIntact);
    EXPECT_FALSE(into.released);
    EXPECT_EQ(into.allocations, 0u);
    EXPECT_EQ(FormatOut("SID_STRUCTURE", value, mode).text, text);
}

TEST_F(SidStructure, Row)
{
    const DataTypeDescriptor &row = Row("SID_STRUCTURE");
    EXPECT_EQ(row.TypeId, 0x148);
    EXPECT_EQ(row.BinaryLength, 7);
    EXPECT_EQ(row.BaseKind, 26);
    EXPECT_EQ(row.FormatIn, nullptr);
    EXPECT_EQ(row.FormatOut, &SYSDT_PrefixSidStructureFormatOut);
    EXPECT_EQ(row.Check, nullptr);
    EXPECT_EQ(row.Help, nullptr);
    EXPECT_EQ(row.Compare, nullptr);
    EXPECT_EQ(row.Reserved, nullptr);
    EXPECT_EQ(row.LuaSet, &SYSDT_PrefixSidStructureLuaSet);
    EXPECT_EQ(row.LuaGet, nullptr);
    EXPECT_EQ(row.Endian, nullptr);
}

TEST_F(SidStructure, Contract)
{
    Sweep(Row("SID_STRUCTURE"), {.text = "",
                                 .value = "20101000000001",
                                 .inModes = "",
                                 .outModes = "TTTTUTTU",
                                 .helpModes = "",
                                 .helpText = "",
                                 .resultTypeId = 0,
                                 .resultLength = 0,
                                 .textSize = 257,
                                 .clearsFirst = true});
}

TEST_F(SidStructure, Layout)
{
    ExpectLayout(0x148, std::string(14, '0'),
                 {{nullptr, 0, 1, 1},
                  {nullptr, 1, 1, 1},
                  {nullptr, 2, 1, 1},
                  {nullptr, 3, 1, 1},
                  {nullptr, 4, 1, 1},
                  {nullptr, 5, 1, 1},
                  {"strcExist", 6, 1, 1}});
}

TEST_F(SidStructure, Prints)
{
    static const std::vector<TextCase> cases = {
        {"32-16-16-0-0-0", "20101000000001"},
        {"0-0-0-0-0-0", "00000000000001"},
        {"1-2-3-4-5-6", "01020304050601"},
        {"255-255-255-255-255-255", "ffffffffffff01"},
        {"128-127-129-254-10-100", "807f81fe0a6401"},
        {"-", "20101000000000"},
        {"-", "20101000000002"},
        {"-", "201010000000ff"},
        {"-", "00000000000000"},
        {"-", "ffffffffffffff"},
    };
    for (const TextCase &c : cases) {
        for (const uint8_t mode : kPrintModes) {
            ExpectSidText(c.value, mode, c.text);
        }
    }
}

TEST_F(SidStructure, OnlyFlagOneMeansPresent)
{
    for (unsigned flag = 0; flag < 256; ++flag) {
        const std::string value = std::string("\x01\x02\x03\x04\x05\x06", 6) + static_cast<char>(flag);
        EXPECT_EQ(Text("SID_STRUCTURE", Hex(value)), flag == 1 ? "1-2-3-4-5-6" : "-") << flag;
    }
}

TEST_F(SidStructure, EveryLength)
{
    for (unsigned n = 0; n < 256; ++n) {
        const std::string number = std::to_string(n);
        std::string value = std::string("\x01\x02\x03\x04\x05\x06\x01", 7);
        value[0] = static_cast<char>(n);
        EXPECT_EQ(Text("SID_STRUCTURE", Hex(value)), number + "-2-3-4-5-6");
        value = std::string("\x01\x02\x03\x04\x05\x06\x01", 7);
        value[5] = static_cast<char>(n);
        EXPECT_EQ(Text("SID_STRUCTURE", Hex(value)), "1-2-3-4-5-" + number);
    }
}

TEST_F(SidStructure, ShortValuesHaveNoStructure)
{
    const std::string value = "01010101010101";
    for (uint32_t length = 0; length < 7; ++length) {
        for (const uint8_t mode : kPrintModes) {
            ExpectSidText(value.substr(0, 2 * static_cast<size_t>(length)), mode, "-");
        }
        EXPECT_EQ(FormatOut("SID_STRUCTURE", value, 1, length).text, "-");
    }
    for (const uint32_t length : {7u, 8u, 65536u, 4294967294u}) {
        EXPECT_EQ(FormatOut("SID_STRUCTURE", value, 1, length).text, "1-1-1-1-1-1");
    }
}

TEST_F(SidStructure, PrintFailures)
{
    // The printer says so; FormatOut does not pass it on.
    for (const char *value : {"20101000000001", "20101000000000"}) {
        const std::string bytes = Bytes(value);
        char text[257];
        uint32_t printed = 0;
        host::SetFaults({.failPrint = 1});
        EXPECT_EQ(SYSDT_PrefixSidStruct2Str(bytes.data(), text, &printed), DT_ERR_LENGTH);
        for (const uint8_t mode : kPrintModes) {
            host::SetFaults({.failPrint = 1});
            const Out out = FormatOut("SID_STRUCTURE", value, mode);
            host::SetFaults({});
            EXPECT_EQ(out.code, DT_OK);
            EXPECT_EQ(out.typeId, 25);
            EXPECT_EQ(out.length, 1);
        }
    }
}

TEST_F(SidStructure, Printer)
{
    char text[257];
    uint32_t printed = 4711;
    EXPECT_EQ(SYSDT_PrefixSidStruct2Str(Bytes("20101000000001").data(), text, &printed), DT_OK);
    EXPECT_STREQ(text, "32-16-16-0-0-0");
    EXPECT_EQ(printed, 14u);
    EXPECT_EQ(SYSDT_PrefixSidStruct2Str(Bytes("20101000000002").data(), text, &printed), DT_OK);
    EXPECT_STREQ(text, "-");
    EXPECT_EQ(printed, 1u);
}

TEST_F(SidStructure, LuaSet)
{
    struct SetCase {
        const char *value, *table;
    };
    static constexpr SetCase kCases[] = {
        {"20101000000001", "{sidStructure=\"32-16-16-0-0-0\", strcExist=1}"},
        {"20101000000000", "{sidStructure=\"-\", strcExist=0}"},
        {"20101000000002", "{sidStructure=\"-\", strcExist=2}"},
        {"ffffffffffff01", "{sidStructure=\"255-255-255-255-255-255\", strcExist=1}"},
        {"ffffffffffffff", "{sidStructure=\"-\", strcExist=255}"},
    };
    for (const SetCase &c : kCases) {
        const LuaOut out = LuaSet("SID_STRUCTURE", c.value);
        EXPECT_EQ(out.code, DT_OK);
        EXPECT_EQ(out.table, c.table);
        EXPECT_EQ(out.growth, 0);
    }
    EXPECT_EQ(LuaSet(Row("SID_STRUCTURE"), kCases[0].value, 65535).table, kCases[0].table);
    ExpectShortLuaRefused(Row("SID_STRUCTURE"), 7, "");
    char value[7] = {};
    EXPECT_EQ(SYSDT_PrefixSidStructureLuaSet(nullptr, 1, "v", 0, 0, value), DT_ERR_NULL_PTR);
}

} // namespace
