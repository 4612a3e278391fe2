// MDT, sub-type 11 of the composite route key, and the type MDTPREFIX (RFC 6037): prefix IPv4 word at byte 4, group
// IPv4 word at byte 8 (0 when typed), mask length u32 at byte 12. Only the type can be typed; its value is the
// composite's. The prefix alone is printed.
#include "prefix/route_key.h"

namespace {

using namespace bgp::test;

class Mdt : public PlugIn {};

std::vector<DataTypeDescriptor> Both()
{
    return {SubType(11), Row("MDTPREFIX")};
}

TEST_F(Mdt, Rows)
{
    const BolPrefixSubtypeEntry &row = g_astBOL_PREFIX_ProcTable[11];
    EXPECT_EQ(row.SubType, 11u);
    EXPECT_STREQ(row.Name, "MDT");
    EXPECT_EQ(row.FormatIn, nullptr);
    EXPECT_EQ(row.FormatOut, SYSDT_MdtPrefixFormatOut);
    EXPECT_EQ(row.Check, SYSDT_MdtPrefixCheck);
    EXPECT_EQ(row.Help, SYSDT_MdtPrefixHelp);
    EXPECT_EQ(row.Compare, SYSDT_MdtPrefixCompare);
    EXPECT_EQ(row.LuaSet, SYSDT_MdtPrefixLuaSet);
    EXPECT_EQ(row.LuaGet, SYSDT_MdtPrefixLuaGet);
    EXPECT_EQ(g_astBOL_PREFIX_LuaGetTable[11].Reader, SYSDT_MdtPrefixNewLuaGet);

    const DataTypeDescriptor &type = Row("MDTPREFIX");
    EXPECT_EQ(type.TypeId, 296);
    EXPECT_EQ(type.BinaryLength, 12);
    EXPECT_EQ(type.BaseKind, 26);
    EXPECT_EQ(type.FormatIn, SYSDT_MdtPrefixFormatIn);
    EXPECT_EQ(type.FormatOut, row.FormatOut);
    EXPECT_EQ(type.Check, row.Check);
    EXPECT_EQ(type.Help, row.Help);
    EXPECT_EQ(type.Compare, row.Compare);
    EXPECT_EQ(type.Reserved, nullptr);
    EXPECT_EQ(type.LuaSet, row.LuaSet);
    EXPECT_EQ(type.LuaGet, row.LuaGet);
    EXPECT_EQ(type.Endian, SYSDT_MdtLuaEndian);
}

TEST_F(Mdt, ReadsPrefixAndMaskAndPrintsThePrefix)
{
    ExpectKeys(Row("MDTPREFIX"),
               {
                   {"10.1.1.0/24", Key("0b000000 0001010a 00000000 18000000"), "10.1.1.0"},
                   {"1.1.1.1/1", Key("0b000000 01010101 00000000 01000000"), "1.1.1.1"},
                   {"0.0.0.0/0", Key("0b000000"), "0.0.0.0"},
                   {"255.255.255.255/32", Key("0b000000 ffffffff 00000000 20000000"), "255.255.255.255"},
                   {"10.1.2.3/8", Key("0b000000 0302010a 00000000 08000000"), "10.1.2.3"},
                   {" \t10.1.1.0/24\t ", Key("0b000000 0001010a 00000000 18000000"), "10.1.1.0"},
                   // numbers are scanned: leading zeros count for the length alone, and what follows is not looked at
                   {"010.001.001.000/0024", Key("0b000000 0001010a 00000000 18000000"), "10.1.1.0"},
                   {"255.255.255.255/032", Key("0b000000 ffffffff 00000000 20000000"), "255.255.255.255"},
                   {"10.1.1.0/\n24", Key("0b000000 0001010a 00000000 18000000"), "10.1.1.0"},
                   {"10.1.1.0/24x", Key("0b000000 0001010a 00000000 18000000"), "10.1.1.0"},
                   {"10.1.1.0/24:225.1.1.1", Key("0b000000 0001010a 00000000 18000000"), "10.1.1.0"},
                   {"10.1.1.0/24\x80", Key("0b000000 0001010a 00000000 18000000"), "10.1.1.0"},
                   {std::string(26, '0') + "1.1.1.1/8", Key("0b000000 01010101 00000000 08000000"), "1.1.1.1"},
                   {"1.1.1.1/8" + std::string(26, 'x'), Key("0b000000 01010101 00000000 08000000"), "1.1.1.1"},
               });
    for (uint32_t mask = 0; mask <= 32; ++mask) {
        EXPECT_EQ(Value("MDTPREFIX", "10.1.1.0/" + std::to_string(mask)),
                  Key("0b000000 0001010a 00000000" + Le32(mask)));
    }
}

TEST_F(Mdt, RefusesWhatIsNoPrefixWithMask)
{
    ExpectRefused(Row("MDTPREFIX"), {
                                        "",
                                        " ",
                                        "/",
                                        "10.1.1.0",
                                        "10.1.1.0/",
                                        "10.1.1.0/x",
                                        "10.1.1/24",
                                        "10.1.1.0.0/24",
                                        "1.1/241",
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
                                        "x1.1.1.1/24",
                                        "10.1.1.0/ 24",
                                        "10.1.1.0 /24",
                                        "10.1.1.0/24 225.1.1.1",
                                        "10.1.1.0/2\t4",
                                        "10.1.1.0:24",
                                        "2001:db8::/32",
                                        "1/10.1.1.1/100",
                                        "\xff.1.1.1/24",
                                        "1-100-200-10.1.1.1",
                                        // 6 and 7 characters, and 36
                                        "1.1.1/",
                                        "1.1.1.1",
                                        std::string(27, '0') + "1.1.1.1/8",
                                        "1.1.1.1/8" + std::string(27, 'x'),
                                        std::string(3000, '0') + "1.1.1.1/8",
                                    });
    EXPECT_EQ(CodeOf("MDTPREFIX", std::string(400, '\t') + "1.1.1.1/8" + std::string(400, ' ')), DT_OK);
}

TEST_F(Mdt, ParserFillsThePayload)
{
    ExpectParserPointers(SYSDT_Str2MdtPrefix, "10.1.1.0/24");
    const Parsed parsed = Parse(SYSDT_Str2MdtPrefix, "\t10.1.1.0/24 ", 12);
    EXPECT_EQ(parsed.code, DT_OK);
    EXPECT_EQ(parsed.bytes, "0001010a0000000018000000");
    for (const char *text : {"", "10.1.1.0", "1.1.1.1/33", "1.1.1.256/8", "10.1.1.0/ 24"}) {
        const Parsed refused = Parse(SYSDT_Str2MdtPrefix, text, 12);
        EXPECT_EQ(refused.code, DT_ERR_FAIL) << text;
        EXPECT_EQ(refused.bytes, "000000000000000000000000") << text;
    }
}

TEST_F(Mdt, CannotBeTypedIntoTheComposite)
{
    EXPECT_EQ(CodeOf("BOLPREFIX", "255.255.255.255/032"), DT_ERR_INVALID_VALUE);
    EXPECT_EQ(Text("BOLPREFIX", Key("0b000000 0001010a 010101e1 18000000")), "10.1.1.0");
}

TEST_F(Mdt, PrintsWhateverTheSubTypeWordIs)
{
    for (const DataTypeDescriptor &row : Both()) {
        for (const char *word : {"00000000", "0a000000", "ffffffff"}) {
            EXPECT_EQ(FormatOut(row, Key(std::string(word) + "fcfdfeff 01020304 ffffffff")).text, "255.254.253.252");
        }
        EXPECT_EQ(FormatOut(row, "0b0000000001010a").text, "10.1.1.0");
        EXPECT_EQ(FormatOut(row, "0b000000fc").text, "0.0.0.252");
        EXPECT_EQ(FormatOut(row, Key("0b000000 0001010a"), 1, 0).text, "0.0.0.0");
        EXPECT_EQ(FormatOut(row, Padded("0b0000000001010a", 90)).text, "10.1.1.0");
        host::SetFaults({.failPrint = 1});
        EXPECT_EQ(FormatOut(row, Key("0b000000")).code, DT_ERR_FAIL); // and no scratch memory is left
        host::SetFaults({.failPrint = 1});
        EXPECT_FALSE(FormatOutInto(row, Key("0b000000"), 1, kKeyTextSize).released);
        host::SetFaults({});
    }
    const Printed printed = Print(SYSDT_MdtPrefix2Str, "0001010a010101e118000000");
    EXPECT_EQ(printed.code, DT_OK);
    EXPECT_EQ(printed.text, "10.1.1.0");
    EXPECT_EQ(printed.length, 8u);
    host::SetFaults({.failPrint = 1});
    EXPECT_EQ(Print(SYSDT_MdtPrefix2Str, "0001010a010101e118000000").code, DT_ERR_FAIL);
}

TEST_F(Mdt, ObeysTheContract)
{
    const Contract contract{.text = "10.1.1.0/24",
                            .value = Key("0b000000 0001010a 00000000 18000000"),
                            .inModes = "PPPPUPPU",
                            .outModes = "TTTTUTTU",
                            .helpModes = "-H----H-",
                            .helpText = "X.X.X.X/M or X.X.X.X",
                            .resultTypeId = kKeyType,
                            .resultLength = kKeyLength,
                            .textSize = kKeyTextSize,
                            .plainMemory = true,
                            .helpPlainMemory = true,
                            .clearsFirst = true};
    for (const DataTypeDescriptor &row : Both()) {
        Sweep(row, contract);
    }
}

TEST_F(Mdt, ResultsAreNotBoundToTheHandle)
{
    host::TakeCounters();
    EXPECT_EQ(CodeOf("MDTPREFIX", "10.1.1.0/24"), DT_OK);
    EXPECT_EQ(FormatOut("MDTPREFIX", Key("0b000000")).code, DT_OK);
    const host::Counters counters = host::TakeCounters();
    EXPECT_EQ(counters.allocations, 2u);
    EXPECT_EQ(counters.plainAllocations, 2u);
    EXPECT_EQ(AllocationsOfHelp(SubType(11)).plain, 1u);
}

TEST_F(Mdt, CheckSeesTheLengthAlone)
{
    for (const DataTypeDescriptor &row : Both()) {
        for (uint32_t length = 0; length < 200; ++length) {
            EXPECT_EQ(row.Check(nullptr, 0, length, nullptr), length == 89 ? DT_OK : DT_ERR_LENGTH) << length;
        }
    }
    EXPECT_EQ(CheckLength("MDTPREFIX", 12), DT_ERR_LENGTH);
    EXPECT_EQ(Check("MDTPREFIX", Key("ffffffff")), DT_OK);
}

TEST_F(Mdt, HelpPassesTheSecondWordAndTheHostsCode)
{
    EXPECT_EQ(Help(SubType(11), 1, 11, 22).helpWord, 22u);
    host::SetFaults({.helpInitCode = 0x1234});
    EXPECT_EQ(Help(SubType(11)).code, 0x1234u);
}

TEST_F(Mdt, AFailedCopyGivesTheHelpTextBack)
{
    host::SetFaults({.failCopy = 1});
    host::RecordReleases(true);
    host::TakeReleases();
    const Helped helped = Help(SubType(11));
    const std::vector<host::Release> releases = host::TakeReleases();
    host::RecordReleases(false);
    EXPECT_EQ(helped.code, DT_ERR_INVALID_PARAM);
    EXPECT_FALSE(helped.supplied);
    ASSERT_EQ(releases.size(), 1u);
    EXPECT_TRUE(releases[0].known);
    EXPECT_NE(releases[0].memory, nullptr);
}

TEST_F(Mdt, ComparesBytes)
{
    for (const DataTypeDescriptor &row : Both()) {
        const std::string value = Key("0b000000 0001010a 010101e1 18000000");
        EXPECT_EQ(CompareKeys(row, value, value), 0);
        EXPECT_EQ(CompareKeys(row, Key("0b000000 0001010a 020101e1 18000000"), value), 1);
        EXPECT_EQ(CompareKeys(row, value, Key("0b000000 0001010a 010101e1 19000000")), -1);
        // In memory the least significant byte comes first.
        EXPECT_EQ(CompareKeys(row, Key("0b000000 01000000"), Key("0b000000 000000ff")), 1);
        EXPECT_EQ(CompareKeys(row, Key("0b000000 80"), Key("0b000000 7f")), 1);
        EXPECT_EQ(CompareKeys(row, Key("0c000000"), Key("0b000000 ff")), 1);
        EXPECT_EQ(CompareKeys(row, With(value, 88, "01"), value), 1);
        EXPECT_EQ(CompareKeys(row, With(value, 88, "01"), value, 88), 0);
        EXPECT_EQ(CompareKeys(row, Key("ff"), value, 0), 0);
    }
}

TEST_F(Mdt, ToLua)
{
    for (const DataTypeDescriptor &row : Both()) {
        ExpectSets(row, Key("0b000000 0302010a 010101e1 18000000"),
                   "{bolMdtGrpAddr=3774939393, bolMdtMaskLen=24, bolMdtPrefix=167838211, bolType=11}");
        ExpectSets(row, Key("0a000100 ffffffff feffffff fdffffff"),
                   "{bolMdtGrpAddr=4294967294, bolMdtMaskLen=4294967293, bolMdtPrefix=4294967295, bolType=65546}");
    }
}

TEST_F(Mdt, FromLua)
{
    const std::string typed = Unwritten("0b000000");
    const std::string prefix = Unwritten("0b000000 0302010a");
    const std::string group = Unwritten("0b000000 0302010a 010101e1");
    const std::string three = "bolMdtPrefix = 0x0A010203, bolMdtGrpAddr = 0xE1010101, bolMdtMaskLen = 24}";
    for (const DataTypeDescriptor &row : Both()) {
        ExpectGets(
            row,
            {
                {"{bolType = 11, " + three, DT_OK, Unwritten("0b000000 0302010a 010101e1 18000000"), 1},
                {"{bolType = 11, bolMdtPrefix = 4294967295, bolMdtGrpAddr = 4294967296, bolMdtMaskLen = 4294967295}",
                 DT_OK, Unwritten("0b000000 ffffffff 00000000 ffffffff"), 1},
                {"{bolType = '11', bolMdtPrefix = '1', bolMdtGrpAddr = '2', bolMdtMaskLen = '3'}", DT_OK,
                 Unwritten("0b000000 01000000 02000000 03000000"), 1},
                {"{bolType = 10, " + three, DT_ERR_FAIL, Unwritten("0a000000"), 2},
                {"{bolType = 267, " + three, DT_ERR_FAIL, Unwritten("0b010000"), 2},
                {"{" + three, DT_ERR_INVALID_PARAM, Unwritten(), 2},
                {"{bolType = 'x', " + three, DT_ERR_INVALID_PARAM, Unwritten(), 2},
                {"{bolType = {}, " + three, DT_ERR_INVALID_PARAM, Unwritten(), 2},
                {"{bolType = 11, bolMdtGrpAddr = 2, bolMdtMaskLen = 3}", DT_ERR_INVALID_PARAM, typed, 3},
                {"{bolType = 11, bolMdtPrefix = 'x', bolMdtGrpAddr = 2, bolMdtMaskLen = 3}", DT_ERR_INVALID_PARAM,
                 typed, 3},
                {"{bolType = 11, bolMdtPrefix = {}, bolMdtGrpAddr = 2, bolMdtMaskLen = 3}", DT_ERR_INVALID_PARAM, typed,
                 3},
                {"{bolType = 11, bolMdtPrefix = 0x0A010203, bolMdtMaskLen = 3}", DT_ERR_INVALID_PARAM, prefix, 4},
                {"{bolType = 11, bolMdtPrefix = 0x0A010203, bolMdtGrpAddr = 'x', bolMdtMaskLen = 3}",
                 DT_ERR_INVALID_PARAM, prefix, 4},
                {"{bolType = 11, bolMdtPrefix = 0x0A010203, bolMdtGrpAddr = {}, bolMdtMaskLen = 3}",
                 DT_ERR_INVALID_PARAM, prefix, 4},
                {"{bolType = 11, bolMdtPrefix = 0x0A010203, bolMdtGrpAddr = 0xE1010101}", DT_ERR_INVALID_PARAM, group,
                 5},
                {"{bolType = 11, bolMdtPrefix = 0x0A010203, bolMdtGrpAddr = 0xE1010101, bolMdtMaskLen = 'x'}",
                 DT_ERR_INVALID_PARAM, group, 5},
                {"{bolType = 11, bolMdtPrefix = 0x0A010203, bolMdtGrpAddr = 0xE1010101, bolMdtMaskLen = {}}",
                 DT_ERR_INVALID_PARAM, group, 5},
                {"{}", DT_ERR_INVALID_PARAM, Unwritten(), 2},
                {"nil", DT_ERR_INVALID_PARAM, Unwritten(), 1},
                {"11", DT_ERR_INVALID_PARAM, Unwritten(), 1},
                {"'10.1.1.0/24'", DT_ERR_INVALID_PARAM, Unwritten(), 1},
            });
        const LuaIn tooShort = LuaGet(row, "{bolType = 11, " + three, 88);
        EXPECT_EQ(tooShort.code, DT_ERR_INVALID_PARAM);
        EXPECT_EQ(tooShort.value, Unwritten().substr(2));
        EXPECT_EQ(tooShort.growth, 0);
    }
    EXPECT_EQ(LuaGet("MDTPREFIX", "{bolType = 11, " + three).code, DT_ERR_INVALID_PARAM); // with its registered length
}

TEST_F(Mdt, Reader)
{
    const std::string none = Unwritten();
    const std::string prefix = With(none, 4, "0302010a");
    const std::string group = With(prefix, 8, "010101e1");
    const std::string two = "bolMdtPrefix = 0x0A010203, bolMdtGrpAddr = 0xE1010101";
    ExpectReaderPointers(11);
    ExpectReads(
        11, {
                {two + ", bolMdtMaskLen = 24", DT_OK, With(group, 12, "18000000"), -1},
                {two + ", bolMdtMaskLen = '4294967295'", DT_OK, With(group, 12, "ffffffff"), -1},
                {two + ", bolMdtMaskLen = 4294967297", DT_OK, With(group, 12, "01000000"), -1},
                {"bolMdtGrpAddr = 2, bolMdtMaskLen = 3", DT_ERR_INVALID_PARAM, none, 1},
                {"bolMdtPrefix = 'x', bolMdtGrpAddr = 2, bolMdtMaskLen = 3", DT_ERR_INVALID_PARAM, none, 1},
                {"bolMdtPrefix = {}, bolMdtGrpAddr = 2, bolMdtMaskLen = 3", DT_ERR_INVALID_PARAM, none, 1},
                {"bolMdtPrefix = 0x0A010203, bolMdtMaskLen = 3", DT_ERR_INVALID_PARAM, prefix, 2},
                {"bolMdtPrefix = 0x0A010203, bolMdtGrpAddr = 'x', bolMdtMaskLen = 3", DT_ERR_INVALID_PARAM, prefix, 2},
                {"bolMdtPrefix = 0x0A010203, bolMdtGrpAddr = {}, bolMdtMaskLen = 3", DT_ERR_INVALID_PARAM, prefix, 2},
                {two, DT_ERR_INVALID_PARAM, group, 3},
                {two + ", bolMdtMaskLen = 'x'", DT_ERR_INVALID_PARAM, group, 3},
                {two + ", bolMdtMaskLen = {}", DT_ERR_INVALID_PARAM, group, 3},
                {"", DT_ERR_INVALID_PARAM, none, 1},
            });
}

TEST_F(Mdt, EndianSwapsPrefixAndMaskOfTheRegisteredLayout)
{
    EXPECT_EQ(Endian("MDTPREFIX", "0102030405060708090a0b0c"), "04030201050607080c0b0a09");
    EXPECT_EQ(Endian("MDTPREFIX", "04030201050607080c0b0a09"), "0102030405060708090a0b0c");
}

} // namespace
