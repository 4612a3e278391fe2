// L2VPN, sub-type 9 of the composite route key, and the type L2VPNPREFIX: the key of a BGP layer-2 VPN route (RFC
// 4761), site u16 at byte 4 and label offset u16 at byte 6. It is printed and scripted, never typed.
#include "support/route_key.h"

namespace {

using namespace bgp::test;

class L2Vpn : public PlugIn {};

// The sub-type row and the type of its own run the same operations.
std::vector<DataTypeDescriptor> Both()
{
    return {SubType(9), Row("L2VPNPREFIX")};
}

std::vector<LuaCase> LuaTables()
{
    const std::string typed = Unwritten("09000000");
    return {
        {"{bolType = 9, bolSiteId = 10, bolLabelOffSet = 3}", DT_OK, Unwritten("09000000 0a00 0300"), 1},
        {"{bolType = 9, bolSiteId = 65535, bolLabelOffSet = 65535}", DT_OK, Unwritten("09000000 ffff ffff"), 1},
        {"{bolType = 9, bolSiteId = 65536, bolLabelOffSet = 65537}", DT_OK, Unwritten("09000000 0000 0100"), 1},
        {"{bolType = 9, bolSiteId = 4294967295, bolLabelOffSet = 4294967296}", DT_OK, Unwritten("09000000 ffff 0000"),
         1},
        {"{bolType = '9', bolSiteId = '258', bolLabelOffSet = '772'}", DT_OK, Unwritten("09000000 0201 0403"), 1},
        {"{bolType = 8, bolSiteId = 10, bolLabelOffSet = 3}", DT_ERR_FAIL, Unwritten("08000000"), 2},
        {"{bolType = 265, bolSiteId = 10, bolLabelOffSet = 3}", DT_ERR_FAIL, Unwritten("09010000"), 2},
        {"{bolSiteId = 10, bolLabelOffSet = 3}", DT_ERR_INVALID_PARAM, Unwritten(), 2},
        {"{bolType = 'x', bolSiteId = 10, bolLabelOffSet = 3}", DT_ERR_INVALID_PARAM, Unwritten(), 2},
        {"{bolType = {}, bolSiteId = 10, bolLabelOffSet = 3}", DT_ERR_INVALID_PARAM, Unwritten(), 2},
        {"{bolType = 9, bolLabelOffSet = 3}", DT_ERR_INVALID_PARAM, typed, 3},
        {"{bolType = 9, bolSiteId = 'x', bolLabelOffSet = 3}", DT_ERR_INVALID_PARAM, typed, 3},
        {"{bolType = 9, bolSiteId = {}, bolLabelOffSet = 3}", DT_ERR_INVALID_PARAM, typed, 3},
        {"{bolType = 9, bolSiteId = 10}", DT_ERR_INVALID_PARAM, Unwritten("09000000 0a00"), 4},
        {"{bolType = 9, bolSiteId = 10, bolLabelOffSet = 'x'}", DT_ERR_INVALID_PARAM, Unwritten("09000000 0a00"), 4},
        {"{bolType = 9, bolSiteId = 10, bolLabelOffSet = {3}}", DT_ERR_INVALID_PARAM, Unwritten("09000000 0a00"), 4},
        {"{}", DT_ERR_INVALID_PARAM, Unwritten(), 2},
        {"nil", DT_ERR_INVALID_PARAM, Unwritten(), 1},
        {"9", DT_ERR_INVALID_PARAM, Unwritten(), 1},
        {"'10/3'", DT_ERR_INVALID_PARAM, Unwritten(), 1},
    };
}

TypeCase Case()
{
    return KeyCase({
        .row = {294, 4, 26, "L2VPNPREFIX", &SYSDT_L2VPNPrefixFormatIn, &SYSDT_L2VPNPrefixFormatOut,
                &SYSDT_VplsAdPrefixCheck, &SYSDT_VplsAdPrefixHelp, &SYSDT_VplsAdPrefixCompare, nullptr,
                &SYSDT_L2VPNPrefixLuaSet, &SYSDT_L2VPNPrefixLuaGet, nullptr},
        .contract = {.value = Key("09000000 0a00 0300"), .helpText = "X.X.X.X"},
        .prints =
            {
                // a shorter value reads as if zeros followed
                {"10/3", Key("09000000 0a00 0300")},
                {"0/0", Key("09000000 0000 0000")},
                {"1/0", Key("09000000 0100 0000")},
                {"0/1", Key("09000000 0000 0100")},
                {"258/772", Key("09000000 0201 0403")},
                {"65535/65535", Key("09000000 ffff ffff")},
                {"65535/0", Key("09000000 ffff 0000")},
                {"32768/32767", Key("09000000 0080 ff7f")},
                {"0/0", "09000000"},
                {"1/0", "0900000001"},
                {"10/0", "090000000a00"},
                {"10/3", "090000000a000300"},
                {"10/3", Padded("090000000a000300", 120)},
            },
        .printFailures = {Key("09000000 0a00 0300")},
        .lengths = {{4, "0/0"}},
        .checkTestsPointer = false,
        .untypedHelp = {},
        .compares =
            {
                // it does not compare
                {Key("09000000 0a00 0300"), Key("09000000 0a00 0300"), static_cast<int32_t>(DT_ERR_FAIL)},
                {Key("09000000 0a00 0300"), Key(""), static_cast<int32_t>(DT_ERR_FAIL)},
                {Key(""), Key("09000000 0a00 0300"), static_cast<int32_t>(DT_ERR_FAIL)},
                {Key("00000000 02"), Key("00000000 01"), 1},
            },
        .luaSets =
            {
                {Key("09000000 0a00 0300"), "{bolLabelOffSet=3, bolSiteId=10, bolType=9}"},
                {Key("09000000 ffff 0080"), "{bolLabelOffSet=32768, bolSiteId=65535, bolType=9}"},
                {Key("08000100 0201 0403"), "{bolLabelOffSet=772, bolSiteId=258, bolType=65544}"},
            },
        .luaGets = LuaTables(),
    });
}

[[maybe_unused]] const bool kStated =
    StateTests<L2Vpn>("L2Vpn", Case()) &&
    StateTests("L2VpnEntry", EntryCase(Case(), 9, "L2VPN", &SYSDT_L2VPNPrefixNewLuaGet));

TEST_F(L2Vpn, TypingSucceedsAndDoesNothing)
{
    const DataTypeDescriptor &type = Row("L2VPNPREFIX");
    for (const uint8_t mode : kAllModes) {
        for (const char *text : {"10/3", "", "garbage", "10.1.2.3", "\xff"}) {
            host::TakeCounters();
            const In in = FormatIn(type, text, mode);
            EXPECT_EQ(in.code, DT_OK);
            EXPECT_EQ(in.typeId, kUntouched);
            EXPECT_EQ(in.length, kUntouched);
            EXPECT_FALSE(in.bufferSet);
            EXPECT_TRUE(in.textKept);
            EXPECT_EQ(host::TakeCounters().allocations, 0u);
        }
        const DataTypeRequest request{mode, Handle()};
        for (int missing = 0; missing < 6; ++missing) {
            std::string text = "10/3";
            uint16_t typeId = kUntouched;
            uint16_t length = kUntouched;
            void *buffer = &text;
            const bool all = missing == 5;
            EXPECT_EQ(type.FormatIn(all || missing == 0 ? nullptr : &request, 294, 0,
                                    all || missing == 1 ? nullptr : text.data(),
                                    all || missing == 2 ? nullptr : &typeId, all || missing == 3 ? nullptr : &length,
                                    all || missing == 4 ? nullptr : &buffer),
                      DT_OK)
                << "null argument " << missing;
            EXPECT_EQ(typeId, kUntouched);
            EXPECT_EQ(length, kUntouched);
            EXPECT_EQ(buffer, &text);
        }
    }
    EXPECT_EQ(CodeOf("BOLPREFIX", "10/3"), DT_ERR_INVALID_VALUE);
}

TEST_F(L2Vpn, TheCompositePrintsItToo)
{
    EXPECT_EQ(Text("BOLPREFIX", Key("09000000 0a00 0300")), "10/3");
}

TEST_F(L2Vpn, AValueWithoutItsSubTypeFails)
{
    for (const DataTypeDescriptor &row : Both()) {
        ExpectFailedAndFreed(FormatOutFreeing(row, "0a000000"));
        EXPECT_EQ(FormatOut(row, Key("090000000a000300"), 1, 0).code, DT_ERR_FAIL); // sub-type 0
    }
}

TEST_F(L2Vpn, AnotherSubTypeFailsAndKeepsTheCallersBuffer)
{
    for (const DataTypeDescriptor &row : Both()) {
        for (const char *word : {"08000000", "00000000", "0a000000", "09010000", "09000001", "ffffffff"}) {
            SCOPED_TRACE(word);
            const std::string value = Key(std::string(word) + "0a00 0300");
            ExpectFailedAndFreed(FormatOutFreeing(row, value));
            const Into into = FormatOutInto(row, value, 1, kKeyTextSize);
            EXPECT_EQ(into.out.code, DT_ERR_FAIL);
            EXPECT_EQ(into.out.typeId, 0);
            EXPECT_EQ(into.out.length, 0);
            EXPECT_FALSE(into.released);
            EXPECT_TRUE(into.sameBuffer);
            EXPECT_EQ(into.allocations, 0u);
        }
    }
}

TEST_F(L2Vpn, BothPrintsMayFail)
{
    for (const DataTypeDescriptor &row : Both()) {
        ExpectPrintFailures(row, Key("09000000 0a00 0300"), 2);
    }
    for (const uint32_t n : {1u, 2u}) {
        host::SetFaults({.failPrint = n});
        EXPECT_EQ(Print(SYSDT_L2VPNPrefix2Str, "0a000300").code, DT_ERR_FAIL);
    }
    host::SetFaults({});
    const Printed printed = Print(SYSDT_L2VPNPrefix2Str, "0a000300");
    EXPECT_EQ(printed.code, DT_OK);
    EXPECT_EQ(printed.text, "10/3");
    EXPECT_EQ(printed.length, 4u);
}

TEST_F(L2Vpn, FormatOutExIsFormatOutWithoutTheTypeId)
{
    const std::string value = Bytes(Key("09000000 0a00 0300"));
    for (const uint8_t mode : kAllModes) {
        const DataTypeRequest request{mode, Handle()};
        const bool served = mode != 4 && mode <= 6;
        uint16_t typeId = kUntouched;
        uint16_t length = kUntouched;
        void *buffer = nullptr;
        EXPECT_EQ(SYSDT_L2VPNPrefixFormatOutEx(&request, 89, value.data(), &typeId, &length, &buffer),
                  served ? DT_OK : DT_ERR_MODE_UNSUPPORTED);
        EXPECT_EQ(typeId, served ? 25 : 0);
        EXPECT_EQ(length, served ? 5 : 0);
        if (served) {
            EXPECT_STREQ(static_cast<const char *>(buffer), "10/3");
        } else {
            EXPECT_EQ(buffer, nullptr);
        }
        for (int missing = 0; missing < 5; ++missing) {
            typeId = kUntouched;
            length = kUntouched;
            buffer = nullptr;
            EXPECT_EQ(SYSDT_L2VPNPrefixFormatOutEx(missing == 0 ? nullptr : &request, 89,
                                                   missing == 1 ? nullptr : value.data(),
                                                   missing == 2 ? nullptr : &typeId, missing == 3 ? nullptr : &length,
                                                   missing == 4 ? nullptr : &buffer),
                      DT_ERR_NULL_PTR);
            EXPECT_EQ(typeId, kUntouched);
            EXPECT_EQ(length, kUntouched);
        }
    }
}

TEST_F(L2Vpn, ItsRegisteredLengthHoldsForNoOperation)
{
    EXPECT_EQ(CheckLength("L2VPNPREFIX", 4), DT_ERR_LENGTH);
    EXPECT_EQ(CheckLength("L2VPNPREFIX", 88), DT_ERR_LENGTH);
    EXPECT_EQ(CheckLength("L2VPNPREFIX", 90), DT_ERR_LENGTH);
    EXPECT_EQ(CheckLength("L2VPNPREFIX", 89), DT_OK);
    const DataTypeDescriptor &type = Row("L2VPNPREFIX");
    EXPECT_EQ(LuaSet(type, "09000000", 4).code, DT_ERR_INVALID_PARAM);
    EXPECT_EQ(LuaGet("L2VPNPREFIX", "{bolType = 9, bolSiteId = 1, bolLabelOffSet = 2}").code, DT_ERR_INVALID_PARAM);
    EXPECT_EQ(LuaGet(type, "{bolType = 9, bolSiteId = 1, bolLabelOffSet = 2}", 88).code, DT_ERR_INVALID_PARAM);
}

TEST_F(L2Vpn, Reader)
{
    const std::string none = Unwritten();
    const std::string site = With(none, 4, "0a00");
    ExpectReaderPointers(9);
    ExpectReads(9, {
                       {"bolSiteId = 10, bolLabelOffSet = 3", DT_OK, With(none, 4, "0a00 0300"), -1},
                       {"bolSiteId = 65535, bolLabelOffSet = 65536", DT_OK, With(none, 4, "ffff 0000"), -1},
                       {"bolSiteId = '258', bolLabelOffSet = '772'", DT_OK, With(none, 4, "0201 0403"), -1},
                       {"bolLabelOffSet = 3", DT_ERR_INVALID_PARAM, none, 1},
                       {"bolSiteId = 'x', bolLabelOffSet = 3", DT_ERR_INVALID_PARAM, none, 1},
                       {"bolSiteId = {}, bolLabelOffSet = 3", DT_ERR_INVALID_PARAM, none, 1},
                       {"bolSiteId = 10", DT_ERR_INVALID_PARAM, site, 2},
                       {"bolSiteId = 10, bolLabelOffSet = 'x'", DT_ERR_INVALID_PARAM, site, 2},
                       {"bolSiteId = 10, bolLabelOffSet = true", DT_ERR_INVALID_PARAM, site, 2},
                       {"", DT_ERR_INVALID_PARAM, none, 1},
                   });
}

} // namespace
