// VPNV4MCAST, sub-type 10 of the composite route key, and the type VPNV4MCPREFIX: prefix IPv4 word at byte 4, mask
// length u32 at byte 8. Only the type can be typed; its value is the composite's. The mask is not printed.
#include "prefix/route_key.h"

namespace {

using namespace bgp::test;

class Vpnv4Mcast : public PlugIn {};

std::vector<DataTypeDescriptor> Both()
{
    return {SubType(10), Row("VPNV4MCPREFIX")};
}

TEST_F(Vpnv4Mcast, Rows)
{
    const BolPrefixSubtypeEntry &row = g_astBOL_PREFIX_ProcTable[10];
    EXPECT_EQ(row.SubType, 10u);
    EXPECT_STREQ(row.Name, "VPNV4MCAST");
    EXPECT_EQ(row.FormatIn, nullptr);
    EXPECT_EQ(row.FormatOut, SYSDT_VPNV4MCASTPrefixFormatOut);
    EXPECT_EQ(row.Check, SYSDT_VPNV4MCASTPrefixCheck);
    EXPECT_EQ(row.Help, SYSDT_VPNV4MCASTPrefixHelp);
    EXPECT_EQ(row.Compare, SYSDT_VPNV4MCASTPrefixCompare);
    EXPECT_EQ(row.LuaSet, SYSDT_VPNV4MCASTPrefixLuaSet);
    EXPECT_EQ(row.LuaGet, SYSDT_VPNV4MCASTPrefixLuaGet);
    EXPECT_EQ(g_astBOL_PREFIX_LuaGetTable[10].Reader, SYSDT_VPNV4MCASTPrefixNewLuaGet);

    const DataTypeDescriptor &type = Row("VPNV4MCPREFIX");
    EXPECT_EQ(type.TypeId, 295);
    EXPECT_EQ(type.BinaryLength, 8);
    EXPECT_EQ(type.BaseKind, 26);
    EXPECT_EQ(type.FormatIn, SYSDT_VPNV4MCASTPrefixFormatIn);
    EXPECT_EQ(type.FormatOut, row.FormatOut);
    EXPECT_EQ(type.Check, row.Check);
    EXPECT_EQ(type.Help, row.Help);
    EXPECT_EQ(type.Compare, row.Compare);
    EXPECT_EQ(type.Reserved, nullptr);
    EXPECT_EQ(type.LuaSet, row.LuaSet);
    EXPECT_EQ(type.LuaGet, row.LuaGet);
    EXPECT_EQ(type.Endian, SYSDT_VPNV4MCASTLuaEndian);
}

TEST_F(Vpnv4Mcast, ReadsPrefixAndMaskAndPrintsThePrefix)
{
    ExpectKeys(Row("VPNV4MCPREFIX"),
               {
                   {"10.1.1.0/24", Key("0a000000 0001010a 18000000"), "10.1.1.0"},
                   {"1.1.1.1/1", Key("0a000000 01010101 01000000"), "1.1.1.1"},
                   {"0.0.0.0/0", Key("0a000000"), "0.0.0.0"},
                   {"10.1.2.3/32", Key("0a000000 0302010a 20000000"), "10.1.2.3"},
                   {"255.255.255.255/32", Key("0a000000 ffffffff 20000000"), "255.255.255.255"},
                   {"10.1.2.3/8", Key("0a000000 0302010a 08000000"), "10.1.2.3"}, // host bits stay
                   {"\t 10.1.1.0/24 \t", Key("0a000000 0001010a 18000000"), "10.1.1.0"},
                   // numbers are scanned: leading zeros count for the length alone, and what follows is not looked at
                   {"010.001.001.000/24", Key("0a000000 0001010a 18000000"), "10.1.1.0"},
                   {"10.1.1.0/0000024", Key("0a000000 0001010a 18000000"), "10.1.1.0"},
                   {"10.1.1.0/\n24", Key("0a000000 0001010a 18000000"), "10.1.1.0"},
                   {"10.1.1.0/24x", Key("0a000000 0001010a 18000000"), "10.1.1.0"},
                   {"10.1.1.0/24/24", Key("0a000000 0001010a 18000000"), "10.1.1.0"},
                   {"10.1.1.0/2.4", Key("0a000000 0001010a 02000000"), "10.1.1.0"},
                   {"10.1.1.0/24\xff", Key("0a000000 0001010a 18000000"), "10.1.1.0"},
                   {std::string(9, '0') + "1.1.1.1/8", Key("0a000000 01010101 08000000"), "1.1.1.1"},
                   {"1.1.1.1/8abcdefghi", Key("0a000000 01010101 08000000"), "1.1.1.1"},
               });
    for (uint32_t mask = 0; mask <= 32; ++mask) {
        EXPECT_EQ(Value("VPNV4MCPREFIX", "10.1.1.0/" + std::to_string(mask)), Key("0a000000 0001010a" + Le32(mask)));
    }
}

TEST_F(Vpnv4Mcast, RefusesWhatIsNoPrefixWithMask)
{
    ExpectRefused(Row("VPNV4MCPREFIX"), {
                                            "",
                                            " ",
                                            "/",
                                            "10.1.1.0",
                                            "10.1.1.0/",
                                            "10.1.1.0/x",
                                            "10.1.1/24",
                                            "10.1.1.0.0/24",
                                            "10.1/24",
                                            "1.1.1.1/33",
                                            "1.1.1.1/4294967295",
                                            "1.1.1.1/4294967296",
                                            "1.1.1.1/-1",
                                            "1.1.1.1/+1",
                                            "256.1.1.1/8",
                                            "1.256.1.1/8",
                                            "1.1.256.1/8",
                                            "1.1.1.256/8",
                                            "4294967296.1.1.1/8",
                                            "4294967297.1.1.1/8",
                                            "+1.1.1.1/24",
                                            "-1.1.1.1/24",
                                            "x1.1.1.1/24",
                                            "10.1.1.0/ 24",
                                            "10.1.1.0 /24",
                                            "10. 1.1.0/24",
                                            "10.1.1.0/24 x",
                                            "10.1.1.0/2\t4",
                                            "10.1.1.0:24",
                                            "10,1,1,0/24",
                                            "2001:db8::/32",
                                            "1/10.1.1.1/100",
                                            "\xb1.1.1.1/24",
                                            "10.1.1.0-24-10",
                                            "[1][2][10.0.0.1]",
                                            // 8 characters, and 19
                                            "1.1.1.1/",
                                            std::string(10, '0') + "1.1.1.1/8",
                                            "255.255.255.255/032",
                                            "1.1.1.1/8abcdefghij",
                                            std::string(3000, '0') + "1.1.1.1/8",
                                        });
    EXPECT_EQ(CodeOf("VPNV4MCPREFIX", std::string(400, ' ') + "1.1.1.1/8" + std::string(400, '\t')), DT_OK);
}

TEST_F(Vpnv4Mcast, ParserFillsThePayload)
{
    ExpectParserPointers(SYSDT_Str2Vpnv4McastPrefix, "10.1.1.0/24");
    const Parsed parsed = Parse(SYSDT_Str2Vpnv4McastPrefix, " 10.1.1.0/24\t", 8);
    EXPECT_EQ(parsed.code, DT_OK);
    EXPECT_EQ(parsed.bytes, "0001010a18000000");
    for (const char *text : {"", "10.1.1.0", "1.1.1.1/33", "1.1.1.256/8", "10.1.1.0/ 24", "255.255.255.255/032"}) {
        const Parsed refused = Parse(SYSDT_Str2Vpnv4McastPrefix, text, 8);
        EXPECT_EQ(refused.code, DT_ERR_FAIL) << text;
        EXPECT_EQ(refused.bytes, "0000000000000000") << text;
    }
}

TEST_F(Vpnv4Mcast, CannotBeTypedIntoTheComposite)
{
    EXPECT_EQ(CodeOf("BOLPREFIX", "10.1.1.0/24"), DT_ERR_INVALID_VALUE);
    EXPECT_EQ(Text("BOLPREFIX", Key("0a000000 0001010a 18000000")), "10.1.1.0");
}

TEST_F(Vpnv4Mcast, PrintsWhateverTheSubTypeWordIs)
{
    for (const DataTypeDescriptor &row : Both()) {
        for (const char *word : {"00000000", "0b000000", "ffffffff"}) {
            EXPECT_EQ(FormatOut(row, Key(std::string(word) + "fcfdfeff ffffffff")).text, "255.254.253.252");
        }
        EXPECT_EQ(FormatOut(row, "0a0000000001010a").text, "10.1.1.0");
        EXPECT_EQ(FormatOut(row, "0a000000fc").text, "0.0.0.252");
        EXPECT_EQ(FormatOut(row, Key("0a000000 0001010a"), 1, 0).text, "0.0.0.0");
        EXPECT_EQ(FormatOut(row, Padded("0a0000000001010a", 90)).text, "10.1.1.0");
        host::SetFaults({.failPrint = 1});
        EXPECT_EQ(FormatOut(row, Key("0a000000")).code, DT_ERR_FAIL);
        host::SetFaults({.failPrint = 1});
        EXPECT_FALSE(FormatOutInto(row, Key("0a000000"), 1, kKeyTextSize).released);
        host::SetFaults({});
    }
    const Printed printed = Print(SYSDT_Vpnv4McastPrefix2Str, "0001010a18000000");
    EXPECT_EQ(printed.code, DT_OK);
    EXPECT_EQ(printed.text, "10.1.1.0");
    EXPECT_EQ(printed.length, 8u);
    host::SetFaults({.failPrint = 1});
    EXPECT_EQ(Print(SYSDT_Vpnv4McastPrefix2Str, "0001010a18000000").code, DT_ERR_FAIL);
}

TEST_F(Vpnv4Mcast, ObeysTheContract)
{
    const Contract contract{.text = "10.1.1.0/24",
                            .value = Key("0a000000 0001010a 18000000"),
                            .inModes = "PPPPUPPU",
                            .outModes = "TTTTUTTU",
                            .helpModes = "-H----H-",
                            .helpText = "X.X.X.X/M or X.X.X.X",
                            .resultTypeId = kKeyType,
                            .resultLength = kKeyLength,
                            .textSize = kKeyTextSize,
                            .clearsFirst = true};
    for (const DataTypeDescriptor &row : Both()) {
        Sweep(row, contract);
    }
}

TEST_F(Vpnv4Mcast, ResultsComeFromTheHandle)
{
    host::TakeCounters();
    EXPECT_EQ(CodeOf("VPNV4MCPREFIX", "10.1.1.0/24"), DT_OK);
    EXPECT_EQ(FormatOut("VPNV4MCPREFIX", Key("0a000000")).code, DT_OK);
    const host::Counters counters = host::TakeCounters();
    EXPECT_EQ(counters.allocations, 2u);
    EXPECT_EQ(counters.plainAllocations, 0u);
    EXPECT_EQ(AllocationsOfHelp(SubType(10)).plain, 0u);
}

TEST_F(Vpnv4Mcast, CheckSeesTheLengthAlone)
{
    for (const DataTypeDescriptor &row : Both()) {
        for (uint32_t length = 0; length < 200; ++length) {
            EXPECT_EQ(row.Check(nullptr, 0, length, nullptr), length == 89 ? DT_OK : DT_ERR_LENGTH) << length;
        }
    }
    EXPECT_EQ(CheckLength("VPNV4MCPREFIX", 8), DT_ERR_LENGTH);
    EXPECT_EQ(Check("VPNV4MCPREFIX", Key("ffffffff")), DT_OK);
}

TEST_F(Vpnv4Mcast, HelpPassesTheSecondWordAndTheHostsCode)
{
    EXPECT_EQ(Help(SubType(10), 1, 11, 22).helpWord, 22u);
    host::SetFaults({.helpInitCode = 0x1234});
    EXPECT_EQ(Help(SubType(10)).code, 0x1234u);
}

TEST_F(Vpnv4Mcast, AFailedCopyGivesTheHelpTextBack)
{
    host::SetFaults({.failCopy = 1});
    host::RecordReleases(true);
    host::TakeReleases();
    const Helped helped = Help(SubType(10));
    const std::vector<host::Release> releases = host::TakeReleases();
    host::RecordReleases(false);
    EXPECT_EQ(helped.code, DT_ERR_INVALID_PARAM);
    EXPECT_FALSE(helped.supplied);
    ASSERT_EQ(releases.size(), 1u);
    EXPECT_TRUE(releases[0].known);
    EXPECT_NE(releases[0].memory, nullptr);
}

TEST_F(Vpnv4Mcast, ComparesBytes)
{
    for (const DataTypeDescriptor &row : Both()) {
        const std::string value = Key("0a000000 0001010a 18000000");
        EXPECT_EQ(CompareKeys(row, value, value), 0);
        EXPECT_EQ(CompareKeys(row, Key("0a000000 0001010a 19000000"), value), 1);
        EXPECT_EQ(CompareKeys(row, value, Key("0a000000 0001010a 19000000")), -1);
        // In memory the least significant byte comes first.
        EXPECT_EQ(CompareKeys(row, Key("0a000000 01000000"), Key("0a000000 000000ff")), 1);
        EXPECT_EQ(CompareKeys(row, Key("0a000000 80"), Key("0a000000 7f")), 1);
        EXPECT_EQ(CompareKeys(row, Key("0b000000"), Key("0a000000 ff")), 1);
        EXPECT_EQ(CompareKeys(row, With(value, 88, "01"), value), 1);
        EXPECT_EQ(CompareKeys(row, With(value, 88, "01"), value, 88), 0);
        EXPECT_EQ(CompareKeys(row, Key("ff"), value, 0), 0);
    }
}

TEST_F(Vpnv4Mcast, ToLua)
{
    for (const DataTypeDescriptor &row : Both()) {
        ExpectSets(row, Key("0a000000 0302010a 18000000"),
                   "{bolType=10, bolVpnv4McastMaskLen=24, bolVpnv4McastPrefix=167838211}");
        ExpectSets(row, Key("0b000100 ffffffff feffffff"),
                   "{bolType=65547, bolVpnv4McastMaskLen=4294967294, bolVpnv4McastPrefix=4294967295}");
    }
}

TEST_F(Vpnv4Mcast, LuaGetKeepsTheLowHalvesOfItsNumbers)
{
    const std::string typed = Unwritten("0a000000");
    const std::string prefix = Unwritten("0a000000 03020000");
    for (const DataTypeDescriptor &row : Both()) {
        ExpectGets(
            row,
            {
                {"{bolType = 10, bolVpnv4McastPrefix = 0x0A010203, bolVpnv4McastMaskLen = 24}", DT_OK,
                 Unwritten("0a000000 03020000 18000000"), 1},
                {"{bolType = 10, bolVpnv4McastPrefix = 65535, bolVpnv4McastMaskLen = 65536}", DT_OK,
                 Unwritten("0a000000 ffff0000 00000000"), 1},
                {"{bolType = 10, bolVpnv4McastPrefix = 4294967295, bolVpnv4McastMaskLen = 4294967295}", DT_OK,
                 Unwritten("0a000000 ffff0000 ffff0000"), 1},
                {"{bolType = '10', bolVpnv4McastPrefix = '1', bolVpnv4McastMaskLen = '2'}", DT_OK,
                 Unwritten("0a000000 01000000 02000000"), 1},
                {"{bolType = 11, bolVpnv4McastPrefix = 1, bolVpnv4McastMaskLen = 2}", DT_ERR_FAIL,
                 Unwritten("0b000000"), 2},
                {"{bolType = 65546, bolVpnv4McastPrefix = 1, bolVpnv4McastMaskLen = 2}", DT_ERR_FAIL,
                 Unwritten("0a000100"), 2},
                {"{bolVpnv4McastPrefix = 1, bolVpnv4McastMaskLen = 2}", DT_ERR_INVALID_PARAM, Unwritten(), 2},
                {"{bolType = 'x', bolVpnv4McastPrefix = 1, bolVpnv4McastMaskLen = 2}", DT_ERR_INVALID_PARAM,
                 Unwritten(), 2},
                {"{bolType = {}, bolVpnv4McastPrefix = 1, bolVpnv4McastMaskLen = 2}", DT_ERR_INVALID_PARAM, Unwritten(),
                 2},
                {"{bolType = 10, bolVpnv4McastMaskLen = 2}", DT_ERR_INVALID_PARAM, typed, 3},
                {"{bolType = 10, bolVpnv4McastPrefix = 'x', bolVpnv4McastMaskLen = 2}", DT_ERR_INVALID_PARAM, typed, 3},
                {"{bolType = 10, bolVpnv4McastPrefix = {}, bolVpnv4McastMaskLen = 2}", DT_ERR_INVALID_PARAM, typed, 3},
                {"{bolType = 10, bolVpnv4McastPrefix = 0x0203}", DT_ERR_INVALID_PARAM, prefix, 4},
                {"{bolType = 10, bolVpnv4McastPrefix = 0x0203, bolVpnv4McastMaskLen = 'x'}", DT_ERR_INVALID_PARAM,
                 prefix, 4},
                {"{bolType = 10, bolVpnv4McastPrefix = 0x0203, bolVpnv4McastMaskLen = {}}", DT_ERR_INVALID_PARAM,
                 prefix, 4},
                {"{}", DT_ERR_INVALID_PARAM, Unwritten(), 2},
                {"nil", DT_ERR_INVALID_PARAM, Unwritten(), 1},
                {"10", DT_ERR_INVALID_PARAM, Unwritten(), 1},
                {"'10.1.1.0/24'", DT_ERR_INVALID_PARAM, Unwritten(), 1},
            });
        const LuaIn tooShort = LuaGet(row, "{bolType = 10, bolVpnv4McastPrefix = 1, bolVpnv4McastMaskLen = 2}", 88);
        EXPECT_EQ(tooShort.code, DT_ERR_INVALID_PARAM);
        EXPECT_EQ(tooShort.value, Unwritten().substr(2));
        EXPECT_EQ(tooShort.growth, 0);
    }
    EXPECT_EQ(LuaGet("VPNV4MCPREFIX", "{bolType = 10, bolVpnv4McastPrefix = 1, bolVpnv4McastMaskLen = 2}").code,
              DT_ERR_INVALID_PARAM); // with its registered length
}

TEST_F(Vpnv4Mcast, TheReaderKeepsWholeNumbers)
{
    const std::string none = Unwritten();
    const std::string prefix = With(none, 4, "0302010a");
    ExpectReaderPointers(10);
    ExpectReads(
        10, {
                {"bolVpnv4McastPrefix = 0x0A010203, bolVpnv4McastMaskLen = 24", DT_OK, With(prefix, 8, "18000000"), -1},
                {"bolVpnv4McastPrefix = 0x0A010203, bolVpnv4McastMaskLen = 4294967295", DT_OK,
                 With(prefix, 8, "ffffffff"), -1},
                {"bolVpnv4McastPrefix = '167838211', bolVpnv4McastMaskLen = '65536'", DT_OK,
                 With(prefix, 8, "00000100"), -1},
                {"bolVpnv4McastMaskLen = 24", DT_ERR_INVALID_PARAM, none, 1},
                {"bolVpnv4McastPrefix = 'x', bolVpnv4McastMaskLen = 24", DT_ERR_INVALID_PARAM, none, 1},
                {"bolVpnv4McastPrefix = {}, bolVpnv4McastMaskLen = 24", DT_ERR_INVALID_PARAM, none, 1},
                {"bolVpnv4McastPrefix = 0x0A010203", DT_ERR_INVALID_PARAM, prefix, 2},
                {"bolVpnv4McastPrefix = 0x0A010203, bolVpnv4McastMaskLen = 'x'", DT_ERR_INVALID_PARAM, prefix, 2},
                {"bolVpnv4McastPrefix = 0x0A010203, bolVpnv4McastMaskLen = {24}", DT_ERR_INVALID_PARAM, prefix, 2},
                {"", DT_ERR_INVALID_PARAM, none, 1},
            });
}

TEST_F(Vpnv4Mcast, EndianSwapsTheTwoWordsOfTheRegisteredLayout)
{
    EXPECT_EQ(Endian("VPNV4MCPREFIX", "0102030405060708"), "0403020108070605");
    EXPECT_EQ(Endian("VPNV4MCPREFIX", "0403020108070605"), "0102030405060708");
    EXPECT_EQ(Endian("VPNV4MCPREFIX", "0102030405060708090a"), "0403020108070605090a");
}

} // namespace
