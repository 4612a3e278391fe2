// SID_STRUCTURE: the six lengths of the SRv6 SID Structure sub-sub-TLV (RFC 9252 section 3.2.1) and a present flag.
// Output only.
#include "support/refusals.h"
#include "support/type_case.h"

namespace {

using namespace bgp::test;

class SidStructure : public PlugIn {};

constexpr uint8_t kPrintModes[] = {0, 1, 2, 3, 5, 6};

TypeCase Case()
{
    return {
        .row = {0x148, 7, 26, "SID_STRUCTURE", nullptr, &SYSDT_PrefixSidStructureFormatOut, nullptr, nullptr, nullptr,
                nullptr, &SYSDT_PrefixSidStructureLuaSet, nullptr, nullptr},
        .contract = {.value = "01010101010101", .outModes = "TTTTUTTU", .textSize = 257, .clearsFirst = true},
        .layout = {{nullptr, 0, 1, 1},
                   {nullptr, 1, 1, 1},
                   {nullptr, 2, 1, 1},
                   {nullptr, 3, 1, 1},
                   {nullptr, 4, 1, 1},
                   {nullptr, 5, 1, 1},
                   {"strcExist", 6, 1, 1}},
        .prints =
            {
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
                // a shorter value has no structure
                {"-", ""},
                {"-", "01"},
                {"-", "0101"},
                {"-", "010101"},
                {"-", "01010101"},
                {"-", "0101010101"},
                {"-", "010101010101"},
            },
        .readsWhole = false,
        .lengths =
            {
                {0, "-"},
                {1, "-"},
                {2, "-"},
                {3, "-"},
                {4, "-"},
                {5, "-"},
                {6, "-"},
                {7, "1-1-1-1-1-1"},
                {8, "1-1-1-1-1-1"},
                {65536, "1-1-1-1-1-1"},
                {4294967294, "1-1-1-1-1-1"},
            },
        .luaSets =
            {
                {"20101000000001", "{sidStructure=\"32-16-16-0-0-0\", strcExist=1}"},
                {"20101000000000", "{sidStructure=\"-\", strcExist=0}"},
                {"20101000000002", "{sidStructure=\"-\", strcExist=2}"},
                {"ffffffffffff01", "{sidStructure=\"255-255-255-255-255-255\", strcExist=1}"},
                {"ffffffffffffff", "{sidStructure=\"-\", strcExist=255}"},
            },
    };
}

[[maybe_unused]] const bool kStated = StateTests<SidStructure>("SidStructure", Case());

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

TEST_F(SidStructure, PrintersFailureIsNotPassedOn)
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

TEST_F(SidStructure, LuaSetTestsItsPointersBeforeTheLength)
{
    char value[7] = {};
    EXPECT_EQ(SYSDT_PrefixSidStructureLuaSet(nullptr, 1, "v", 0, 0, value), DT_ERR_NULL_PTR);
}

// ---------------------------------------------------------------------------------------------------------- refusals

TEST_F(SidStructure, IsNotTyped)
{
    const BgpRefusal refusal = Explained("SID_STRUCTURE", "32-16-16-0-0-0");
    EXPECT_EQ(refusal.Reason.Code, DT_ERR_FAIL);
    EXPECT_EQ(Describe(refusal.Reason), "not-typed 0+0 limit 0 what '' where '' element 0 expected ''");
    EXPECT_EQ(Sentence("SID_STRUCTURE", "32-16-16-0-0-0"), "values of this type cannot be typed");
}

} // namespace
