// IPV4, sub-type 0 of the composite route key: the VPLS auto-discovery key (RFC 6074), an IPv4 word at byte 4. Its row
// is the first of the table, so that texts, checks, helps and comparisons are offered to it before all others.
#include "prefix/route_key.h"

namespace {

using namespace bgp::test;

class VplsAd : public PlugIn {};

DataTypeDescriptor Vpls()
{
    return SubType(0);
}

TEST_F(VplsAd, FillsTheFirstRow)
{
    const BolPrefixSubtypeEntry &row = g_astBOL_PREFIX_ProcTable[0];
    EXPECT_EQ(row.SubType, 0u);
    EXPECT_STREQ(row.Name, "IPV4");
    EXPECT_EQ(row.FormatIn, SYSDT_VplsAdPrefixFormatIn);
    EXPECT_EQ(row.FormatOut, SYSDT_VplsAdPrefixFormatOut);
    EXPECT_EQ(row.Check, SYSDT_VplsAdPrefixCheck);
    EXPECT_EQ(row.Help, SYSDT_VplsAdPrefixHelp);
    EXPECT_EQ(row.Compare, SYSDT_VplsAdPrefixCompare);
    EXPECT_EQ(row.LuaSet, SYSDT_VplsAdPrefixLuaSet);
    EXPECT_EQ(row.LuaGet, SYSDT_VplsAdPrefixLuaGet);
    EXPECT_EQ(g_astBOL_PREFIX_LuaGetTable[0].Reader, SYSDT_VplsAdPrefixNewLuaGet);
}

TEST_F(VplsAd, ReadsAndPrintsAddresses)
{
    const std::vector<KeyText> texts = {
        {"10.1.2.3", Key("00000000 0302010a"), ""},
        {"0.0.0.0", Key(""), ""},
        {"255.255.255.255", Key("00000000 ffffffff"), ""},
        {"1.0.0.0", Key("00000000 00000001"), ""},
        {"0.0.0.1", Key("00000000 01000000"), ""},
        {"224.0.0.1", Key("00000000 010000e0"), ""},
        {" \t10.1.2.3 \t", Key("00000000 0302010a"), "10.1.2.3"},
        {std::string(500, ' ') + "10.1.2.3" + std::string(500, '\t'), Key("00000000 0302010a"), "10.1.2.3"},
    };
    ExpectKeys(Vpls(), texts);
    ExpectKeys(Row("BOLPREFIX"), texts);
}

TEST_F(VplsAd, EveryOctetStandsInItsPlace)
{
    for (uint32_t octet = 0; octet < 256; ++octet) {
        const std::string text = std::to_string(octet);
        const std::string hex = Le32(octet).substr(0, 2);
        EXPECT_EQ(FormatIn(Vpls(), text + ".1.2.3").value, Key("00000000 030201" + hex));
        EXPECT_EQ(FormatIn(Vpls(), "1.2.3." + text).value, Key("00000000" + hex + "030201"));
        EXPECT_EQ(FormatOut(Vpls(), Key("00000000 0302" + hex + "01")).text, "1." + text + ".2.3");
        EXPECT_EQ(FormatOut(Vpls(), Key("00000000 03" + hex + "0201")).text, "1.2." + text + ".3");
    }
}

TEST_F(VplsAd, RefusesWhatIsNoAddress)
{
    ExpectRefused(Vpls(), {"",
                           " ",
                           "10",
                           "10.1",
                           "10.1.2",
                           "10.1.2.3.4",
                           "10.1.2.",
                           ".10.1.2",
                           "10..1.2",
                           "...",
                           "256.1.1.1",
                           "1.256.1.1",
                           "1.1.256.1",
                           "1.1.1.256",
                           "1.1.1.4294967296",
                           "01.1.1.1",
                           "1.1.1.01",
                           "1.1.1.1x",
                           "x1.1.1.1",
                           "+1.1.1.1",
                           "-1.1.1.1",
                           "0x1.1.1.1",
                           "1.1.1. 1",
                           "1.1.1\t.1",
                           "1 1.1.1.1",
                           "1.1.1.1\n",
                           "1.1.1.1/32",
                           "1.1.1.1:1.1.1.1",
                           "::",
                           "2001:db8::1",
                           "::ffff:1.1.1.1",
                           "\xb1.1.1.1",
                           "1.1.1.1\xff",
                           "10/3",
                           "100:1",
                           "1-100-200-10.1.1.1",
                           "[1][2][10.0.0.1]"});
}

TEST_F(VplsAd, PrintsWhateverTheSubTypeWordIs)
{
    for (const char *word : {"01000000", "02000000", "09000000", "10000000", "ffffffff"}) {
        EXPECT_EQ(FormatOut(Vpls(), Key(std::string(word) + "0302010a")).text, "10.1.2.3");
    }
}

TEST_F(VplsAd, AShorterValueIsExtendedByZeros)
{
    const std::string value = Key("00000000 0302010a");
    EXPECT_EQ(FormatOut(Vpls(), "000000000302010a").text, "10.1.2.3");
    EXPECT_EQ(FormatOut(Vpls(), "0000000003").text, "0.0.0.3");
    EXPECT_EQ(FormatOut(Vpls(), value, 1, 7).text, "0.1.2.3");
    EXPECT_EQ(FormatOut(Vpls(), value, 1, 4).text, "0.0.0.0");
    EXPECT_EQ(FormatOut(Vpls(), value, 1, 0).text, "0.0.0.0");
    EXPECT_EQ(FormatOut(Vpls(), Padded("000000000302010a", 90)).text, "10.1.2.3");
}

TEST_F(VplsAd, AFailingPrintFails)
{
    host::SetFaults({.failPrint = 1});
    EXPECT_EQ(FormatOut(Vpls(), Key("")).code, DT_ERR_FAIL);
    host::SetFaults({.failPrint = 1});
    const Into into = FormatOutInto(Vpls(), Key(""), 1, kKeyTextSize);
    EXPECT_EQ(into.out.code, DT_ERR_FAIL);
    EXPECT_FALSE(into.released);
}

TEST_F(VplsAd, ObeysTheContract)
{
    Sweep(Vpls(), {.text = "10.1.2.3",
                   .value = Key("00000000 0302010a"),
                   .inModes = "PPPPUPPU",
                   .outModes = "TTTTUTTU",
                   .helpModes = "-H----H-",
                   .helpText = "X.X.X.X",
                   .resultTypeId = kKeyType,
                   .resultLength = kKeyLength,
                   .textSize = kKeyTextSize,
                   .clearsFirst = true});
}

TEST_F(VplsAd, CheckSeesTheLengthAlone)
{
    const DataTypeDescriptor row = Vpls();
    const std::string garbage(200, '\xff');
    for (uint32_t length = 0; length < 200; ++length) {
        EXPECT_EQ(row.Check(nullptr, 0, length, garbage.data()), length == 89 ? DT_OK : DT_ERR_LENGTH) << length;
    }
    EXPECT_EQ(row.Check(nullptr, 0, 89, nullptr), DT_OK);
    EXPECT_EQ(row.Check(nullptr, 0, 88, nullptr), DT_ERR_LENGTH);
    EXPECT_EQ(row.Check(nullptr, 0, 89 + 65536, garbage.data()), DT_ERR_LENGTH);
}

TEST_F(VplsAd, HelpsWithWhatLooksLikeAnAddress)
{
    for (const char *typed : {"", "1", "10.1.2.3", "...", "999.999.999.999.999"}) {
        const Helped helped = Help(Vpls(), 1, 11, 22, typed);
        EXPECT_EQ(helped.code, DT_OK) << typed;
        EXPECT_EQ(helped.text, "X.X.X.X");
        EXPECT_EQ(helped.helpWord, 22u);
    }
    for (const char *typed : {"a", "10.1.2.3/24", "::1", " 1", "1 ", "-", "\xff"}) {
        const Helped helped = Help(Vpls(), 6, 11, 22, typed);
        EXPECT_NE(helped.code, DT_OK) << typed;
        EXPECT_EQ(helped.code, ZOL_CheckBySymbolForIPV4(typed)) << "the host's own answer";
        EXPECT_FALSE(helped.supplied);
        EXPECT_EQ(helped.helpInits, 0u);
    }
    const Helped untold = Help(Vpls(), 1, 11, 22, nullptr);
    EXPECT_EQ(untold.code, ZOL_CheckBySymbolForIPV4(nullptr));
    EXPECT_EQ(untold.supplied, untold.code == DT_OK);
}

TEST_F(VplsAd, HelpJudgesModeThenWordsThenText)
{
    for (const uint8_t mode : std::initializer_list<uint8_t>{0, 2, 3, 4, 5, 7, 255}) {
        EXPECT_EQ(Help(Vpls(), mode, 0, 0, "abc").code, DT_OK) << int{mode};
    }
    EXPECT_EQ(Help(Vpls(), 1, 0, 22, "abc").code, DT_ERR_INVALID_PARAM);
    EXPECT_EQ(Help(Vpls(), 6, 11, 0, "abc").code, DT_ERR_INVALID_PARAM);
    host::SetFaults({.helpInitCode = 0x1234});
    EXPECT_EQ(Help(Vpls()).code, 0x1234u);
    host::SetFaults({});
    EXPECT_EQ(AllocationsOfHelp(Vpls()).plain, 0u);
}

TEST_F(VplsAd, ComparesAddressesAsNumbers)
{
    const std::string ten = Key("00000000 0000000a");       // 10.0.0.0
    const std::string nine = Key("00000000 ffffff09");      // 9.255.255.255
    const std::string high = Key("00000000 00000080");      // 128.0.0.0
    const std::string highest = Key("00000000 ffffffff");   // 255.255.255.255
    const std::string behind = Key("00000000 0000000a ff"); // bytes behind the address do not count
    EXPECT_EQ(CompareKeys(Vpls(), Key("00000000 0100000a"), nine), 1);
    EXPECT_EQ(CompareKeys(Vpls(), ten, nine), 1);
    EXPECT_EQ(CompareKeys(Vpls(), nine, ten), -1);
    EXPECT_EQ(CompareKeys(Vpls(), ten, ten), 0);
    EXPECT_EQ(CompareKeys(Vpls(), ten, behind), 0);
    EXPECT_EQ(CompareKeys(Vpls(), high, ten), 1);
    EXPECT_EQ(CompareKeys(Vpls(), highest, high), 1);
    EXPECT_EQ(CompareKeys(Vpls(), Key(""), highest), -1);
    // Short lengths compare what they show.
    EXPECT_EQ(CompareKeys(Vpls(), ten, nine, 4), 0);
    EXPECT_EQ(CompareKeys(Vpls(), ten, nine, 0), 0);
    EXPECT_EQ(CompareKeys(Vpls(), ten, nine, 7), -1); // 0.0.0.0 and 0.255.255.255
    EXPECT_EQ(CompareKeys(Vpls(), Padded("000000000000000a", 100), Padded("00000000ffffff09", 100), 100), 1);
}

TEST_F(VplsAd, OtherSubTypesDoNotCompare)
{
    const std::string own = Key("00000000 0000000a");
    for (const char *word : {"01000000", "09000000", "00010000", "00000001", "ffffffff"}) {
        const std::string other = Key(std::string(word) + "0000000a");
        EXPECT_EQ(static_cast<uint32_t>(CompareKeys(Vpls(), own, other)), DT_ERR_FAIL) << word;
        EXPECT_EQ(static_cast<uint32_t>(CompareKeys(Vpls(), other, own)), DT_ERR_FAIL) << word;
        EXPECT_EQ(static_cast<uint32_t>(CompareKeys(Vpls(), other, other)), DT_ERR_FAIL) << word;
    }
    EXPECT_EQ(CompareKeys(Vpls(), Key("01000000"), own, 0), 0); // no sub-type is seen
}

TEST_F(VplsAd, ToLua)
{
    ExpectSets(Vpls(), Key("00000000 0302010a"), "{bolPrefix=167838211, bolType=0}");
    ExpectSets(Vpls(), Key("00000000 ffffffff"), "{bolPrefix=4294967295, bolType=0}");
    ExpectSets(Vpls(), Key("07000100 00000080"), "{bolPrefix=2147483648, bolType=65543}");
}

TEST_F(VplsAd, FromLua)
{
    const std::string typed = Unwritten("00000000");
    ExpectGets(Vpls(), {
                           {"{bolType = 0, bolPrefix = 167838211}", DT_OK, Unwritten("00000000 0302010a"), 0},
                           {"{bolType = '0', bolPrefix = '4294967295'}", DT_OK, Unwritten("00000000 ffffffff"), 0},
                           {"{bolType = 0, bolPrefix = 4294967296}", DT_OK, Unwritten("00000000 00000000"), 0},
                           {"{bolType = 1, bolPrefix = 1}", DT_ERR_FAIL, Unwritten("01000000"), 2},
                           {"{bolType = 4294967295, bolPrefix = 1}", DT_ERR_FAIL, Unwritten("ffffffff"), 2},
                           {"{bolPrefix = 1}", DT_ERR_INVALID_PARAM, Unwritten(), 2},
                           {"{bolType = 'x', bolPrefix = 1}", DT_ERR_INVALID_PARAM, Unwritten(), 2},
                           {"{bolType = {}, bolPrefix = 1}", DT_ERR_INVALID_PARAM, Unwritten(), 2},
                           {"{bolType = 0}", DT_ERR_INVALID_PARAM, typed, 2},
                           {"{bolType = 0, bolPrefix = 'x'}", DT_ERR_INVALID_PARAM, typed, 2},
                           {"{bolType = 0, bolPrefix = {1}}", DT_ERR_INVALID_PARAM, typed, 2},
                           {"{bolType = 0, bolPrefix = true}", DT_ERR_INVALID_PARAM, typed, 2},
                           {"{}", DT_ERR_INVALID_PARAM, Unwritten(), 2},
                           {"nil", DT_ERR_INVALID_PARAM, Unwritten(), 1},
                           {"7", DT_ERR_INVALID_PARAM, Unwritten(), 1},
                           {"'10.1.2.3'", DT_ERR_INVALID_PARAM, Unwritten(), 1},
                       });
    const LuaIn tooShort = LuaGet(Vpls(), "{bolType = 0, bolPrefix = 1}", 88);
    EXPECT_EQ(tooShort.code, DT_ERR_INVALID_PARAM);
    EXPECT_EQ(tooShort.value, Unwritten().substr(2));
    EXPECT_EQ(tooShort.growth, 0);
}

TEST_F(VplsAd, Reader)
{
    ExpectReaderPointers(0);
    ExpectReads(0, {
                       {"bolPrefix = 167838211", DT_OK, With(Unwritten(), 4, "0302010a"), -1},
                       {"bolPrefix = '4294967295'", DT_OK, With(Unwritten(), 4, "ffffffff"), -1},
                       {"bolPrefix = 4294967297", DT_OK, With(Unwritten(), 4, "01000000"), -1},
                       {"", DT_ERR_INVALID_PARAM, Unwritten(), 1},
                       {"bolPrefix = 'x'", DT_ERR_INVALID_PARAM, Unwritten(), 1},
                       {"bolPrefix = {167838211}", DT_ERR_INVALID_PARAM, Unwritten(), 1},
                       {"bolPrefix = false", DT_ERR_INVALID_PARAM, Unwritten(), 1},
                   });
}

} // namespace
