// BOLPREFIX: the two tables, the walk over the rows, and the Lua readers. Who takes a text that several rows know is
// part of the syntax. The sub-types have tests of their own.
#include "support/harness.h"

#include "bgp_host_services.h"

#include <cstring>
#include <memory>

namespace bgp::test {
namespace {

class BolPrefix : public PlugIn {};

const std::string kNo6 = "00000000000000000000000000000000";
const std::string kSome6 = "20010db8000000000000000000000001"; // 2001:db8::1
const std::string kEvpnHelp =
    "xxxx.xxxx.xxxx.xxxx.xxxx:X or X:M:X-X-X:M:X.X.X.X or X:M:X.X.X.X or xxxx.xxxx.xxxx.xxxx.xxxx";

constexpr uint8_t kServedModes[] = {0, 1, 2, 3, 5, 6};
constexpr uint8_t kRefusedModes[] = {4, 7, 255};

std::string Whole(const std::string &hex)
{
    return Padded(hex, 89);
}

// ---------------------------------------------------------------------------------------------------------- the tables

TEST_F(BolPrefix, TheSubTypeTable)
{
    const struct {
        const char *name;
        DataTypeFormatIn in;
        DataTypeFormatOut out;
        DataTypeCheck check;
        DataTypeHelp help;
        DataTypeCompare compare;
        DataTypeLuaSet luaSet;
        DataTypeLuaGet luaGet;
    } rows[] = {
        {"IPV4", SYSDT_VplsAdPrefixFormatIn, SYSDT_VplsAdPrefixFormatOut, SYSDT_VplsAdPrefixCheck,
         SYSDT_VplsAdPrefixHelp, SYSDT_VplsAdPrefixCompare, SYSDT_VplsAdPrefixLuaSet, SYSDT_VplsAdPrefixLuaGet},
        {"EVN", SYSDT_EVNPrefixFormatIn, SYSDT_EVNPrefixFormatOut, SYSDT_EVNPrefixCheck, SYSDT_EVNPrefixHelp,
         SYSDT_EVNPrefixCompare, SYSDT_EVNPrefixLuaSet, SYSDT_EVNPrefixLuaGet},
        {"NG_TYPE_2", SYSDT_NGPrefixFormatIn, SYSDT_NGPrefixFormatOut, SYSDT_EVNPrefixCheck, SYSDT_EVNPrefixHelp,
         SYSDT_EVNPrefixCompare, SYSDT_NGPrefix2LuaSet, SYSDT_EVNPrefixLuaGet},
        {"NG_TYPE_3", SYSDT_NGPrefixFormatIn, SYSDT_NGPrefixFormatOut, SYSDT_EVNPrefixCheck, SYSDT_EVNPrefixHelp,
         SYSDT_EVNPrefixCompare, SYSDT_NGPrefix3LuaSet, SYSDT_EVNPrefixLuaGet},
        {"NG_TYPE_4_2", SYSDT_NGPrefixFormatIn, SYSDT_NGPrefixFormatOut, SYSDT_EVNPrefixCheck, SYSDT_EVNPrefixHelp,
         SYSDT_EVNPrefixCompare, SYSDT_NGPrefix42LuaSet, SYSDT_EVNPrefixLuaGet},
        {"NG_TYPE_4-3", SYSDT_NGPrefixFormatIn, SYSDT_NGPrefixFormatOut, SYSDT_EVNPrefixCheck, SYSDT_EVNPrefixHelp,
         SYSDT_EVNPrefixCompare, SYSDT_NGPrefix43LuaSet, SYSDT_EVNPrefixLuaGet},
        {"NG_TYPE_5", SYSDT_NGPrefixFormatIn, SYSDT_NGPrefixFormatOut, SYSDT_EVNPrefixCheck, SYSDT_EVNPrefixHelp,
         SYSDT_EVNPrefixCompare, SYSDT_NGPrefix5LuaSet, SYSDT_EVNPrefixLuaGet},
        {"NG_TYPE_6", SYSDT_NGPrefixFormatIn, SYSDT_NGPrefixFormatOut, SYSDT_EVNPrefixCheck, SYSDT_EVNPrefixHelp,
         SYSDT_EVNPrefixCompare, SYSDT_NGPrefix6LuaSet, SYSDT_EVNPrefixLuaGet},
        {"VRFRTEXT", SYSDT_VrfRtExtFormatIn, SYSDT_VrfRtExtFormatOut, SYSDT_EVNPrefixCheck, SYSDT_VrfRtHelp,
         SYSDT_VrfRtCompare, SYSDT_VrfRtExtLuaSet, SYSDT_VrfRtExtLuaGet},
        {"L2VPN", nullptr, SYSDT_L2VPNPrefixFormatOut, SYSDT_VplsAdPrefixCheck, SYSDT_VplsAdPrefixHelp,
         SYSDT_VplsAdPrefixCompare, SYSDT_L2VPNPrefixLuaSet, SYSDT_L2VPNPrefixLuaGet},
        {"VPNV4MCAST", nullptr, SYSDT_VPNV4MCASTPrefixFormatOut, SYSDT_VPNV4MCASTPrefixCheck,
         SYSDT_VPNV4MCASTPrefixHelp, SYSDT_VPNV4MCASTPrefixCompare, SYSDT_VPNV4MCASTPrefixLuaSet,
         SYSDT_VPNV4MCASTPrefixLuaGet},
        {"MDT", nullptr, SYSDT_MdtPrefixFormatOut, SYSDT_MdtPrefixCheck, SYSDT_MdtPrefixHelp, SYSDT_MdtPrefixCompare,
         SYSDT_MdtPrefixLuaSet, SYSDT_MdtPrefixLuaGet},
        {"RPD", SYSDT_RpdPrefixFormatIn, SYSDT_RpdPrefixFormatOut, SYSDT_RpdPrefixCheck, SYSDT_RpdPrefixHelp,
         SYSDT_RpdPrefixCompare, SYSDT_RpdPrefixLuaSet, SYSDT_RpdPrefixLuaGet},
        {"NG_TYPE_4-1", SYSDT_NGPrefixFormatIn, SYSDT_NGPrefixFormatOut, SYSDT_EVNPrefixCheck, SYSDT_EVNPrefixHelp,
         SYSDT_EVNPrefixCompare, SYSDT_NGPrefix41LuaSet, SYSDT_EVNPrefixLuaGet},
        {"SRPOLICY", SYSDT_SrPolicyPrefixFormatIn, SYSDT_SrPolicyPrefixFormatOut, SYSDT_SrPolicyPrefixCheck,
         SYSDT_SrPolicyPrefixHelp, SYSDT_SrPolicyPrefixCompare, SYSDT_SrPolicyPrefixLuaSet, nullptr},
        {"IPV6", SYSDT_Ipv6BolPrefixFormatIn, SYSDT_Ipv6BolPrefixFormatOut, SYSDT_EVNPrefixCheck, SYSDT_EVNPrefixHelp,
         SYSDT_EVNPrefixCompare, SYSDT_Ipv6BolPrefixLuaSet, nullptr},
        {"SD-WAN", SYSDT_SdwanPrefixFormatIn, SYSDT_SdwanPrefixFormatOut, SYSDT_SdwanPrefixCheck, SYSDT_SdwanPrefixHelp,
         SYSDT_SdwanPrefixCompare, SYSDT_SdwanPrefixLuaSet, nullptr},
    };
    static_assert(sizeof rows / sizeof rows[0] == BOL_PREFIX_SUBTYPES);
    for (uint32_t i = 0; i < BOL_PREFIX_SUBTYPES; ++i) {
        const BolPrefixSubtypeEntry &entry = g_astBOL_PREFIX_ProcTable[i];
        SCOPED_TRACE(rows[i].name);
        EXPECT_EQ(entry.SubType, i);
        EXPECT_EQ(sizeof entry.Name, 20u);
        EXPECT_EQ(std::string(entry.Name, sizeof entry.Name),
                  std::string(rows[i].name) + std::string(20 - std::strlen(rows[i].name), '\0'));
        EXPECT_EQ(entry.FormatIn, rows[i].in);
        EXPECT_EQ(entry.FormatOut, rows[i].out);
        EXPECT_EQ(entry.Check, rows[i].check);
        EXPECT_EQ(entry.Help, rows[i].help);
        EXPECT_EQ(entry.Compare, rows[i].compare);
        EXPECT_EQ(entry.LuaSet, rows[i].luaSet);
        EXPECT_EQ(entry.LuaGet, rows[i].luaGet);
    }
}

TEST_F(BolPrefix, TheReaderTable)
{
    const BolPrefixLuaReader readers[] = {
        SYSDT_VplsAdPrefixNewLuaGet,  SYSDT_EVNPrefixNewLuaGet,        SYSDT_NGPrefix2NewLuaGet,
        SYSDT_NGPrefix3NewLuaGet,     SYSDT_NGPrefix42NewLuaGet,       SYSDT_NGPrefix43NewLuaGet,
        SYSDT_NGPrefix5NewLuaGet,     SYSDT_NGPrefix6NewLuaGet,        SSYSDT_VrfRtExtNewLuaGet,
        SYSDT_L2VPNPrefixNewLuaGet,   SYSDT_VPNV4MCASTPrefixNewLuaGet, SYSDT_MdtPrefixNewLuaGet,
        SYSDT_RpdPrefixNewLuaGet,     SYSDT_NGPrefix41NewLuaGet,       SYSDT_SrPolicyPrefixNewLuaGet,
        SYSDT_Ipv6BolPrefixNewLuaGet, SYSDT_SdwanPrefixNewLuaGet,
    };
    static_assert(sizeof readers / sizeof readers[0] == BOL_PREFIX_SUBTYPES);
    for (uint32_t i = 0; i < BOL_PREFIX_SUBTYPES; ++i) {
        EXPECT_EQ(g_astBOL_PREFIX_LuaGetTable[i].SubType, i);
        EXPECT_EQ(g_astBOL_PREFIX_LuaGetTable[i].Reader, readers[i]) << i;
    }
}

TEST_F(BolPrefix, TheRow)
{
    const DataTypeDescriptor &row = Row("BOLPREFIX");
    EXPECT_EQ(row.TypeId, 0x117);
    EXPECT_EQ(row.BinaryLength, 89);
    EXPECT_EQ(row.BaseKind, 26);
    EXPECT_EQ(row.FormatIn, SYSDT_BolPrefixFormatIn);
    EXPECT_EQ(row.FormatOut, SYSDT_BolPrefixFormatOut);
    EXPECT_EQ(row.Check, SYSDT_BolPrefixCheck);
    EXPECT_EQ(row.Help, SYSDT_BolPrefixHelp);
    EXPECT_EQ(row.Compare, SYSDT_BolPrefixCompare);
    EXPECT_EQ(row.Reserved, nullptr);
    EXPECT_EQ(row.LuaSet, SYSDT_BolPrefixLuaSet);
    EXPECT_EQ(row.LuaGet, SYSDT_BolPrefixLuaGet);
    EXPECT_EQ(row.Endian, nullptr);
}

// ------------------------------------------------------------------------------------------------------------ text in

// Rows that read text, and a letter for each. The seven NG rows share one operation.
constexpr struct {
    uint32_t row;
    char letter;
} kReaders[] = {{0, '4'}, {1, 'E'}, {2, 'N'},  {3, 'N'},  {4, 'N'},  {5, 'N'},  {6, 'N'},
                {7, 'N'}, {8, 'T'}, {12, 'R'}, {13, 'N'}, {14, 'S'}, {15, '6'}, {16, 'W'}};

constexpr struct {
    const char *text;
    uint8_t subType;     // what the walk makes of it
    const char *takenBy; // letters of all rows that take it; "" when nobody does
} kTexts[] = {
    // IPV4, which the NG rows know too
    {"10.1.1.1", 0, "4N"},
    {"0.0.0.0", 0, "4N"},
    {"255.255.255.255", 0, "4N"},
    // EVN
    {"0000.0000.0000.0000.0000:7", 1, "E"},
    {"0100.0000.0000.0000.0001", 1, "E"},
    {"0100.0000.0000.0000.0001:32:10.1.1.1", 1, "E"},
    {"0100.0000.0000.0000.0001:128:[2001::1]", 1, "E"},
    {"1:48:00e0-fc12-3456:32:10.1.1.1", 1, "E"},
    {"1:48:00e0-fc12-3456:128:[2001::1]", 1, "E"},
    {"10:32:1.1.1.1", 1, "E"},
    {"10:128:[2001::1]", 1, "E"},
    {"10:1.1.1.0:24", 1, "E"},
    {"10:[2001::]:64", 1, "E"},
    {"10:32:1.1.1.1:32:239.1.1.1:32:2.2.2.2", 1, "E"},
    {"0100.0000.0000.0000.0001:10:32:1.1.1.1:32:239.1.1.1:32:2.2.2.2", 1, "E"},
    {"0100.0000.0000.0000.0001:10:32:1.1.1.1:32:239.1.1.1:32:2.2.2.2:5", 1, "E"},
    // NG
    {"100", 2, "N"},
    {"1.5", 2, "N"},
    {"65536", 2, "N"},
    {"1.1.1.1:2.2.2.2:3.3.3.3", 3, "N"},
    {"2001::1-ff0e::1-2001::2", 3, "N"},
    {"100:10.1.1.1", 4, "N"},
    {"1.2:10.1.1.1", 4, "N"}, // four dots and a colon, as an EVPN route has them
    {"100-2001::1", 4, "N"},
    {"100-10.1.1.1", 4, "N"},
    {"1.1.1.1:2.2.2.2:3.3.3.3:4.4.4.4", 5, "N"},
    {"2001::1-2001::2-ff0e::1-2001::3", 5, "N"},
    {"10.1.1.1:225.1.1.1", 6, "N"},
    {"2001::1-ff0e::1", 6, "N"},
    {"100:1.1.1.1:2.2.2.2", 7, "N"},
    {"1.2:1.1.1.1:2.2.2.2", 7, "N"},
    {"100-2001::1-ff0e::1", 7, "N"},
    {"10.1.1.1:10.2.2.2", 13, "N"},
    {"2001::1-2001::2", 13, "N"},
    // VRFRTEXT
    {"100:1", 8, "T"},
    {"0:0", 8, "T"},
    {"65536:1", 8, "T"},
    {"1.2:3", 8, "T"},
    {"10.1.1.1:5", 8, "T"},
    {"0a0b-0c0d-0e0f", 8, "T"},
    {"1234-1234-1234", 8, "T"}, // an AS number first, but no addresses behind it
    {"1:2ab", 8, "T"},
    // RPD
    {"1/10.1.1.1/100", 12, "R"},
    {"0/255.255.255.255/4294967295", 12, "R"},
    // SRPOLICY
    {"[1][2][10.0.0.1]", 14, "S"},
    {"[1][2][2001:db8::1]", 14, "S"},
    {"[4294967295][4294967295][255.255.255.255]", 14, "S"},
    // IPV6
    {"2001:db8::1", 15, "6"},
    {"2001::1", 15, "6"},
    {"::", 15, "6"},
    {"::1", 15, "6"},
    {"1:2:3:4:5:6:7:8", 15, "6"}, // as many colons as a multicast join
    {"1:2:3:4:5:6::", 15, "6"},
    {"2001:0DB8:0:0:0:0:0:1", 15, "6"},
    {"::10.1.1.1", 15, "6"},
    {"::ffff:10.1.1.1", 15, "6"},
    // SD-WAN
    {"1-100-200-10.1.1.1", 16, "W"},
    {"1-100-200-2001:db8::1", 16, "W"},
    {"65535-4294967295-4294967295-255.255.255.255", 16, "W"},
    // nobody
    {"", 0, ""},
    {" ", 0, ""},
    {"x", 0, ""},
    {"10.1.1.256", 0, ""},
    {"10.1.1.0/24", 0, ""}, // the forms of MDT and VPNV4MCAST cannot be typed here
    {"10/3", 0, ""},        // nor that of L2VPN
    {"0", 0, ""},
    {"4294967296", 0, ""},
    {"1.2.3", 0, ""},
    {"1:2:3", 0, ""},
    {"1:2:3:4:5:6:7", 0, ""},
    {"1:2:3:4:5:6:7:8:9", 0, ""},
    {"1-2", 0, ""},
    {"2/10.1.1.1/100", 0, ""},
    {"[1][2][10.0.0.01]", 0, ""},
    {"2001:db8::1/64", 0, ""},
    {"2001:db8::12345", 0, ""},
    {"fe80::1%eth0", 0, ""},
    {"0000.0000.0000.0000.0000", 0, ""},
    {"10:32:1.1.1.1 a", 0, ""},
    {"10.1.1. 1", 0, ""},
    {"10.1.1.1\n", 0, ""},
    {"\xb1", 0, ""},
    {"10.1.1.1\xff", 0, ""},
};

TEST_F(BolPrefix, EveryRowIsOfferedEveryText)
{
    for (const auto &c : kTexts) {
        SCOPED_TRACE('"' + std::string(c.text) + '"');
        for (const auto &reader : kReaders) {
            const In in = FormatIn(Row(g_astBOL_PREFIX_ProcTable[reader.row]), c.text);
            if (std::strchr(c.takenBy, reader.letter) == nullptr) {
                EXPECT_NE(in.code, DT_OK) << g_astBOL_PREFIX_ProcTable[reader.row].Name;
                continue;
            }
            EXPECT_EQ(in.code, DT_OK) << g_astBOL_PREFIX_ProcTable[reader.row].Name;
            EXPECT_EQ(in.typeId, 279);
            EXPECT_EQ(in.length, 89);
            EXPECT_EQ(in.value.substr(0, 8), Le32(c.subType)) << g_astBOL_PREFIX_ProcTable[reader.row].Name;
        }
    }
}

TEST_F(BolPrefix, TheFirstRowThatTakesTheTextWins)
{
    for (const auto &c : kTexts) {
        SCOPED_TRACE('"' + std::string(c.text) + '"');
        const In in = FormatIn("BOLPREFIX", c.text);
        EXPECT_TRUE(in.textKept);
        if (*c.takenBy == '\0') {
            EXPECT_EQ(in.code, DT_ERR_INVALID_VALUE);
            EXPECT_EQ(in.typeId, kUntouched);
            EXPECT_EQ(in.length, kUntouched);
            EXPECT_FALSE(in.bufferSet);
            continue;
        }
        EXPECT_EQ(in.code, DT_OK);
        EXPECT_EQ(in.typeId, 279);
        EXPECT_EQ(in.length, 89);
        EXPECT_EQ(in.value.substr(0, 8), Le32(c.subType));
        for (const auto &reader : kReaders) {
            if (*c.takenBy == reader.letter) {
                EXPECT_EQ(in.value, FormatIn(Row(g_astBOL_PREFIX_ProcTable[reader.row]), c.text).value);
                break;
            }
        }
    }
}

TEST_F(BolPrefix, TextToValue)
{
    const struct {
        const char *text;
        std::string value;
        const char *printed;
    } rows[] = {
        {"10.1.2.3", "00000000 0302010a", "10.1.2.3"},
        {" \t10.1.2.3 ", "00000000 0302010a", "10.1.2.3"},
        {"10:1.1.1.0:24", "01000000 05 0a000000 18 00010101", "10:1.1.1.0:24"},
        {"100", "02000000 64000000 00000000", "100"},
        {"1.5", "02000000 05000100 01000000", "1.5"},
        {"10.1.1.1:10.2.3.4", "0d000000 0101010a" + kNo6 + "00 0403020a" + kNo6 + "00", "10.1.1.1:10.2.3.4"},
        {"100:1", "08000000 0002 0064 00000001 01000000", "RT <100 : 1>"},
        {"1/10.1.2.3/100", "0c000000 01 00 64000000 0302010a", "1/10.1.2.3/100"},
        {"[1][2][10.1.2.3]", "0e000000 01000000 02000000 0302010a", "[1][2][10.1.2.3]"},
        {"2001:DB8::1", "0f000000" + kSome6, "2001:db8::1"},
        {"1-100-200-10.1.2.3", "10000000 0100 0000 64000000 c8000000 0302010a", "1-100-200-10.1.2.3"},
        {"1-100-200-2001:db8::1", "10000000 0100 0000 64000000 c8000000 00000000" + kSome6 + "01",
         "1-100-200-2001:db8::1"},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(Value("BOLPREFIX", row.text), Whole(row.value));
        EXPECT_EQ(Text("BOLPREFIX", Whole(row.value)), row.printed);
    }
}

TEST_F(BolPrefix, OuterBlanksAreDroppedByEveryRow)
{
    const std::string spaces(400, ' ');
    const std::string tabs(400, '\t');
    for (const auto &c : kTexts) {
        if (*c.takenBy == '\0') {
            continue;
        }
        SCOPED_TRACE(c.text);
        const In in = FormatIn("BOLPREFIX", spaces + tabs + c.text + tabs + spaces);
        EXPECT_EQ(in.code, DT_OK);
        EXPECT_EQ(in.value, Value("BOLPREFIX", c.text));
        EXPECT_TRUE(in.textKept);
    }
    EXPECT_EQ(CodeOf("BOLPREFIX", spaces + tabs), DT_ERR_INVALID_VALUE);
    EXPECT_EQ(CodeOf("BOLPREFIX", std::string(5000, '1')), DT_ERR_INVALID_VALUE);
}

TEST_F(BolPrefix, EachRowJudgesTheModeForItself)
{
    for (const uint8_t mode : kServedModes) {
        for (const char *text : {"10.1.1.1", "10:1.1.1.0:24", "100", "1/10.1.1.1/100", "[1][2][10.0.0.1]",
                                 "2001:db8::1", "1-100-200-10.1.1.1"}) {
            EXPECT_EQ(CodeOf("BOLPREFIX", text, mode), DT_OK) << text << " in mode " << int{mode};
        }
        const bool text = mode == 1 || mode == 2 || mode == 6; // VRFRTEXT knows the text modes only
        EXPECT_EQ(CodeOf("BOLPREFIX", "100:1", mode), text ? DT_OK : DT_ERR_INVALID_VALUE) << int{mode};
    }
    for (const uint8_t mode : kRefusedModes) {
        for (const auto &c : kTexts) {
            const In in = FormatIn("BOLPREFIX", c.text, mode);
            EXPECT_EQ(in.code, DT_ERR_INVALID_VALUE) << c.text << " in mode " << int{mode};
            EXPECT_EQ(in.typeId, kUntouched);
            EXPECT_EQ(in.length, kUntouched);
            EXPECT_FALSE(in.bufferSet);
        }
    }
}

TEST_F(BolPrefix, FormatInTestsItsPointersFirst)
{
    const DataTypeDescriptor &row = Row("BOLPREFIX");
    for (const uint8_t mode : kAllModes) {
        const DataTypeRequest request{mode, Handle()};
        for (int missing = 0; missing < 5; ++missing) {
            char text[] = "10.1.1.1";
            uint16_t typeId = kUntouched;
            uint16_t length = kUntouched;
            void *buffer = text;
            EXPECT_EQ(row.FormatIn(missing == 0 ? nullptr : &request, 279, 0, missing == 1 ? nullptr : text,
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

// A row that finds no memory has not taken the text, so the later ones are asked too.
TEST_F(BolPrefix, WithoutMemoryTheWalkGoesOn)
{
    const struct {
        const char *text;
        uint32_t tries; // rows that would take it
    } rows[] = {
        {"10.1.1.1", 8}, // IPV4 and seven NG rows
        {"100", 7},         {"10:1.1.1.0:24", 1},      {"100:1", 1}, {"1/10.1.1.1/100", 1}, {"[1][2][10.0.0.1]", 1},
        {"2001:db8::1", 1}, {"1-100-200-10.1.1.1", 1},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.text);
        host::SetFaults({.failAllocation = 1, .failAllAfter = true});
        const In none = FormatIn("BOLPREFIX", row.text);
        const uint32_t tries = host::TakeCounters().allocations;
        host::SetFaults({});
        EXPECT_EQ(none.code, DT_ERR_INVALID_VALUE);
        EXPECT_EQ(none.typeId, 279);
        EXPECT_EQ(none.length, 0);
        EXPECT_FALSE(none.bufferSet);
        EXPECT_EQ(tries, row.tries);

        for (uint32_t failing = 1; failing <= row.tries + 1; ++failing) {
            host::SetFaults({.failAllocation = failing});
            const In once = FormatIn("BOLPREFIX", row.text);
            host::SetFaults({});
            const bool served = row.tries > 1 || failing > row.tries;
            EXPECT_EQ(once.code, served ? DT_OK : DT_ERR_INVALID_VALUE) << failing;
            EXPECT_EQ(once.length, served ? 89 : 0);
            EXPECT_EQ(once.value, served ? Value("BOLPREFIX", row.text) : "");
        }
        EXPECT_EQ(CodesWhileAllocationsFail([&] { return FormatIn("BOLPREFIX", row.text).code; }),
                  std::vector<uint32_t>{DT_ERR_INVALID_VALUE});
    }
}

// ----------------------------------------------------------------------------------------------------------- text out

struct Printed {
    std::string value;
    const char *text;
};

const std::vector<Printed> &EverySubType()
{
    static const std::vector<Printed> values = {
        {"00000000 0302010a", "10.1.2.3"},
        {"01000000 03 0a000000 20 0403020a", "10:32:10.2.3.4"},
        {"02000000 64000000 00000000", "100"},
        {"03000000 01010101" + kNo6 + "00 02020202" + kNo6 + "00 03030303", "1.1.1.1:2.2.2.2:3.3.3.3"},
        {"04000000 64000000 00000000 0403020a", "100:10.2.3.4"},
        {"05000000 01010101" + kNo6 + "00 02020202" + kNo6 + "00 03030303" + kNo6 + "00 04040404",
         "1.1.1.1:2.2.2.2:3.3.3.3:4.4.4.4"},
        {"06000000 0403020a" + kNo6 + "00 010101e1", "10.2.3.4:225.1.1.1"},
        {"07000000 64000000 00000000 01010101" + kNo6 + "00 02020202", "100:1.1.1.1:2.2.2.2"},
        {"08000000 0002 0064 00000001 01000000", "RT <100 : 1>"},
        {"09000000 0a00 0300", "10/3"},
        {"0a000000 0302010a 18000000", "10.1.2.3"},
        {"0b000000 0302010a 010101ef 18000000", "10.1.2.3"},
        {"0c000000 01 00 64000000 0302010a", "1/10.1.2.3/100"},
        {"0d000000 01010101" + kNo6 + "00 02020202", "1.1.1.1:2.2.2.2"},
        {"0e000000 01000000 02000000 0100000a", "[1][2][10.0.0.1]"},
        {"0f000000" + kSome6, "2001:db8::1"},
        {"10000000 0100 0000 64000000 c8000000 0101010a", "1-100-200-10.1.1.1"},
    };
    return values;
}

TEST_F(BolPrefix, PrintsBySubType)
{
    ASSERT_EQ(EverySubType().size(), size_t{BOL_PREFIX_SUBTYPES});
    for (const Printed &row : EverySubType()) {
        SCOPED_TRACE(row.text);
        const Out out = FormatOut("BOLPREFIX", Whole(row.value), 1);
        EXPECT_EQ(out.code, DT_OK);
        EXPECT_EQ(out.typeId, 25);
        EXPECT_EQ(out.text, row.text);
        EXPECT_EQ(out.length, std::strlen(row.text) + 1);
        const Into into = FormatOutInto(Row("BOLPREFIX"), Whole(row.value), 1, 257);
        EXPECT_EQ(into.out.text, row.text);
        EXPECT_TRUE(into.sameBuffer);
        EXPECT_TRUE(into.guardsIntact);
        EXPECT_FALSE(into.released);
        EXPECT_EQ(into.allocations, 0u);
    }
}

TEST_F(BolPrefix, EachSubTypeJudgesTheModeForItself)
{
    for (const Printed &row : EverySubType()) {
        const bool routeTarget = row.value.substr(0, 2) == "08";
        for (const uint8_t mode : kServedModes) {
            SCOPED_TRACE(row.text + std::string(" in mode ") + std::to_string(mode));
            const Out out = FormatOut("BOLPREFIX", Whole(row.value), mode);
            if (!routeTarget) {
                EXPECT_EQ(out.code, DT_OK);
                EXPECT_EQ(out.typeId, 25);
                EXPECT_EQ(out.text, row.text);
                EXPECT_EQ(out.length, std::strlen(row.text) + 1);
            } else if (mode == 0 || mode == 5) {
                EXPECT_EQ(out.code, DT_ERR_INVALID_VALUE);
            } else {
                EXPECT_EQ(out.code, DT_OK);
                EXPECT_EQ(out.typeId, mode == 3 ? 6 : 25);
                EXPECT_EQ(out.text, mode == 2 ? "100:1" : "RT <100 : 1>");
            }
        }
        for (const uint8_t mode : kRefusedModes) {
            const Out out = FormatOut("BOLPREFIX", Whole(row.value), mode);
            EXPECT_EQ(out.code, DT_ERR_INVALID_VALUE) << row.text << " in mode " << int{mode};
            EXPECT_FALSE(out.bufferSet);
        }
    }
}

TEST_F(BolPrefix, UnknownSubTypesDoNotPrint)
{
    for (const char *word :
         {"11000000", "12000000", "ff000000", "00010000", "01010000", "00000100", "01000001", "00000080", "ffffffff"}) {
        SCOPED_TRACE(word);
        const Out out = FormatOut("BOLPREFIX", Whole(word));
        EXPECT_EQ(out.code, DT_ERR_INVALID_VALUE);
        EXPECT_FALSE(out.bufferSet);
        const Into into = FormatOutInto(Row("BOLPREFIX"), Whole(word), 1, 257);
        EXPECT_EQ(into.out.code, DT_ERR_INVALID_VALUE);
        EXPECT_TRUE(into.sameBuffer);
        EXPECT_FALSE(into.released);
        EXPECT_TRUE(into.guardsIntact);
    }
}

TEST_F(BolPrefix, AnyFailureOfTheSubTypeIsAnInvalidValue)
{
    EXPECT_EQ(FormatOut("BOLPREFIX", Whole("01000000 00")).code, DT_ERR_INVALID_VALUE); // no such route type
    for (const Printed &row : EverySubType()) {
        SCOPED_TRACE(row.text);
        host::SetFaults({.failAllocation = 1, .failAllAfter = true});
        EXPECT_EQ(FormatOut("BOLPREFIX", Whole(row.value)).code, DT_ERR_INVALID_VALUE);
        host::SetFaults({});
        EXPECT_EQ(CodesWhileAllocationsFail([&] { return FormatOut("BOLPREFIX", Whole(row.value)).code; }),
                  std::vector<uint32_t>{DT_ERR_INVALID_VALUE});
    }
}

TEST_F(BolPrefix, ShortValuesAreFilledWithZeros)
{
    EXPECT_EQ(FormatOut("BOLPREFIX", "").text, "0.0.0.0");
    EXPECT_EQ(FormatOut("BOLPREFIX", "00000000").text, "0.0.0.0");
    EXPECT_EQ(FormatOut("BOLPREFIX", "00000000 0302").text, "0.0.2.3");
    EXPECT_EQ(FormatOut("BOLPREFIX", "0f").text, "::");
    EXPECT_EQ(FormatOut("BOLPREFIX", "0f000000 2001").text, "2001::");
    EXPECT_EQ(FormatOut("BOLPREFIX", "09000000").text, "0/0");
    EXPECT_EQ(FormatOut("BOLPREFIX", "0100").code, DT_ERR_INVALID_VALUE);
    EXPECT_EQ(FormatOut("BOLPREFIX", "01000000 03").text, "0:0:0.0.0.0");
    EXPECT_EQ(FormatOut("BOLPREFIX", "11").code, DT_ERR_INVALID_VALUE);
    EXPECT_EQ(FormatOut(Row("BOLPREFIX"), Whole("0f000000" + kSome6), 1, 8).text, "2001:db8::");
    EXPECT_EQ(FormatOut("BOLPREFIX", Whole("0f000000" + kSome6) + "ffff").text, "2001:db8::1");
}

TEST_F(BolPrefix, FormatOutTestsItsPointersFirst)
{
    const DataTypeDescriptor &row = Row("BOLPREFIX");
    const std::string value = Bytes(Whole("0f000000" + kSome6));
    for (const uint8_t mode : kAllModes) {
        const DataTypeRequest request{mode, Handle()};
        for (int missing = 0; missing < 5; ++missing) {
            uint16_t typeId = kUntouched;
            uint16_t length = kUntouched;
            void *buffer = nullptr;
            EXPECT_EQ(row.FormatOut(missing == 0 ? nullptr : &request, 279, 89, missing == 1 ? nullptr : value.data(),
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

// ------------------------------------------------------------------------------------------------- check, help,
// compare

// Every row may say yes, whatever the sub-type: RPD wants 27 bytes, the others 89.
TEST_F(BolPrefix, CheckAsksEveryRow)
{
    for (uint32_t length = 0; length <= 300; ++length) {
        EXPECT_EQ(CheckLength("BOLPREFIX", length), length == 89 || length == 27 ? DT_OK : DT_ERR_INVALID_VALUE)
            << length;
    }
    EXPECT_EQ(Check("BOLPREFIX", Hex(std::string(89, '\xFF'))), DT_OK); // no sub-type is looked at
    EXPECT_EQ(Check("BOLPREFIX", Hex(std::string(27, '\xFF'))), DT_OK);
    const DataTypeDescriptor &row = Row("BOLPREFIX");
    const char value[89] = {};
    EXPECT_EQ(row.Check(nullptr, 0, 89, value), DT_ERR_NULL_PTR);
    EXPECT_EQ(row.Check(&row, 0, 89, nullptr), DT_ERR_NULL_PTR);
    EXPECT_EQ(row.Check(nullptr, 0, 1, nullptr), DT_ERR_NULL_PTR);
    EXPECT_EQ(row.Check(&row, 0, 89, value), DT_OK);
}

TEST_F(BolPrefix, HelpIsTheFirstThatIsGiven)
{
    const DataTypeDescriptor &row = Row("BOLPREFIX");
    for (const uint8_t mode : {uint8_t{1}, uint8_t{6}}) {
        for (const char *address : {"", "1", "10.1.1.1", "...", "999"}) {
            const Helped helped = Help(row, mode, 11, 22, address);
            EXPECT_EQ(helped.code, DT_OK);
            EXPECT_EQ(helped.text, "X.X.X.X") << address;
            EXPECT_EQ(helped.helpInits, 1u);
            EXPECT_EQ(helped.helpWord, 22u);
        }
        for (const char *other : {"a", "10:", "2001:db8::1", " ", "10.1.1.1/"}) {
            const Helped helped = Help(row, mode, 11, 22, other);
            EXPECT_EQ(helped.code, DT_OK);
            EXPECT_EQ(helped.text, kEvpnHelp) << other;
            EXPECT_EQ(helped.helpInits, 1u);
        }
        EXPECT_EQ(Help(row, mode, 0, 22, "10.1").code, DT_ERR_INVALID_VALUE);
        EXPECT_EQ(Help(row, mode, 11, 0, "10.1").code, DT_ERR_INVALID_VALUE);
        EXPECT_EQ(Help(row, mode, 0, 0, "a").code, DT_ERR_INVALID_VALUE);
        EXPECT_FALSE(Help(row, mode, 0, 22, "10.1").supplied);
    }
    for (const uint8_t mode : {uint8_t{0}, uint8_t{2}, uint8_t{3}, uint8_t{4}, uint8_t{5}, uint8_t{7}, uint8_t{255}}) {
        const Helped helped = Help(row, mode, 0, 0, "10.1");
        EXPECT_EQ(helped.code, DT_OK) << int{mode};
        EXPECT_FALSE(helped.supplied);
        EXPECT_EQ(helped.helpInits, 0u);
    }
}

TEST_F(BolPrefix, HelpTestsItsPointersFirst)
{
    const DataTypeDescriptor &row = Row("BOLPREFIX");
    for (const uint8_t mode : kAllModes) {
        const DataTypeRequest request{mode, Handle()};
        const uint32_t words[2] = {11, 22};
        DataTypeHelpInfo info{0, nullptr};
        EXPECT_EQ(row.Help(nullptr, 0, 0, "", words, &info), DT_ERR_NULL_PTR);
        EXPECT_EQ(row.Help(&request, 0, 0, nullptr, words, &info), DT_ERR_NULL_PTR);
        EXPECT_EQ(row.Help(&request, 0, 0, "", nullptr, &info), DT_ERR_NULL_PTR);
        EXPECT_EQ(row.Help(&request, 0, 0, "", words, nullptr), DT_ERR_NULL_PTR);
        EXPECT_EQ(info.EntryCount, 0u);
    }
}

TEST_F(BolPrefix, HelpThatFailsIsSoughtInTheNextRow)
{
    const DataTypeDescriptor &row = Row("BOLPREFIX");
    host::SetFaults({.failAllocation = 1});
    const Helped once = Help(row, 1, 11, 22, "10.1");
    host::SetFaults({});
    EXPECT_EQ(once.code, DT_OK);
    EXPECT_EQ(once.text, kEvpnHelp);

    // The EVPN row takes a host that prepares no record for a success.
    host::SetFaults({.helpInitCode = 0x1234});
    const Helped refused = Help(row, 1, 11, 22, "10.1");
    host::SetFaults({});
    EXPECT_EQ(refused.code, DT_OK);
    EXPECT_FALSE(refused.supplied);
    EXPECT_EQ(refused.helpInits, 2u);
}

TEST_F(BolPrefix, HelpWithoutAnyMemory)
{
    host::SetFaults({.failAllocation = 1, .failAllAfter = true});
    const Helped helped = Help(Row("BOLPREFIX"), 1, 11, 22, "10.1");
    host::SetFaults({});
    EXPECT_EQ(helped.code, DT_ERR_INVALID_VALUE);
    EXPECT_FALSE(helped.supplied);
    EXPECT_EQ(helped.helpInits, 17u); // every row tried
    EXPECT_EQ(helped.helpClears, 17u);
}

TEST_F(BolPrefix, CompareTellsEqualAndNoMore)
{
    const auto different = static_cast<int32_t>(DT_ERR_INVALID_VALUE);
    const struct {
        std::string left, right;
        int32_t result;
    } rows[] = {
        {"00000000 0302010a", "00000000 0302010a", 0},
        {"00000000 0302010a", "00000000 0402010a", different},
        {"00000000 0302010a ff", "00000000 0302010a", 0},                            // IPV4 looks at the address alone
        {"01000000 05 0a000000 18 00010101", "01000000 05 0a000000 18 00020202", 0}, // EVPN's weak order
        {"01000000 05 0a000000 18 00010101", "01000000 05 0b000000 18 00010101", different},
        {"01000000 04 01", "01000000 04 02", 0},
        {"01000000 03", "01000000 05", different},
        {"01000000 06 0a000000 20" + kNo6, "01000000 06 0a000000 20" + kSome6, different},
        {"02000000 64000000", "02000000 64000000", 0},
        {"02000000 64000000", "02000000 65000000", different},
        {"08000000 00020064", "08000000 00020064", 0},
        {"08000000 00020064", "08000000 00020065", different},
        {"09000000 0a000300", "09000000 0a000300", 0},
        {"0a000000 0302010a", "0a000000 0302010b", different},
        {"0f000000" + kSome6, "0f000000" + kSome6, 0},
        {"0f000000" + kSome6, "0f000000" + kNo6, different},
        {"0f000000" + kSome6 + "01", "0f000000" + kSome6, different},
        {"10000000 01", "10000000 01", 0},
        {"00000000 0302010a", "01000000 0302010a", different},
        {"11000000 01", "11000000 01", 0}, // no sub-type is asked for
        {"11000000 01", "11000000 02", different},
        {"ffffffff", "ffffffff", 0},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.left + " and " + row.right);
        EXPECT_EQ(Compare("BOLPREFIX", Whole(row.left), Whole(row.right)), row.result);
        EXPECT_EQ(Compare("BOLPREFIX", Whole(row.right), Whole(row.left)), row.result);
    }
    const DataTypeDescriptor &row = Row("BOLPREFIX");
    const std::string left = Bytes(Whole("0f000000 01"));
    const std::string right = Bytes(Whole("0f000000 02"));
    const auto null = static_cast<int32_t>(DT_ERR_NULL_PTR);
    EXPECT_EQ(row.Compare(&row, 89, nullptr, right.data()), null);
    EXPECT_EQ(row.Compare(&row, 89, left.data(), nullptr), null);
    EXPECT_EQ(row.Compare(nullptr, 89, nullptr, nullptr), null);
    EXPECT_EQ(row.Compare(nullptr, 89, left.data(), right.data()), different);
    EXPECT_EQ(row.Compare(nullptr, 4, left.data(), right.data()), 0);
    EXPECT_EQ(row.Compare(nullptr, 5, left.data(), right.data()), different);
    EXPECT_EQ(row.Compare(nullptr, 0, left.data(), right.data()), 0);
}

// ------------------------------------------------------------------------------------------------------------- to Lua

TEST_F(BolPrefix, ToLua)
{
    const std::string no6 = "{0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0}";
    const std::string tables[] = {
        "{bolPrefix=167838211, bolType=0}",
        "{bolPrefixRtType=3, bolPrefixRtValue=\"10:32:10.2.3.4\", bolType=1}",
        "{bolNgAsNumType=0, bolNgAsNumValue=100, bolType=2}",
        "{bolNgCGIpType=0, bolNgCSIpType=0, bolNgOriIpType=0, bolNgPrefixCG=33686018, bolNgPrefixCS=16843009, "
        "bolNgPrefixOriIP=50529027, bolType=3}",
        "{bolNgAsNumType=0, bolNgAsNumValue=100, bolNgOriIpType=0, bolNgPrefixOriIP=167904004, bolType=4}",
        "{bolNgCGIpType=0, bolNgCSIpType=0, bolNgOriIpType=0, bolNgPrefixCG=33686018, bolNgPrefixCS=16843009, "
        "bolNgPrefixOriIP1=50529027, bolNgPrefixOriIP2=67372036, bolType=5}",
        "{bolNgCGIpType=0, bolNgCSIpType=0, bolNgPrefixCG=3774939393, bolNgPrefixCS=167904004, bolType=6}",
        "{bolNgAsNumType=0, bolNgAsNumValue=100, bolNgCGIpType=0, bolNgCSIpType=0, bolNgPrefixCG=33686018, "
        "bolNgPrefixCS=16843009, bolType=7}",
        "{RtType=1, RtValue={0,2,0,100,0,0,0,1}, bolType=8}",
        "{bolLabelOffSet=3, bolSiteId=10, bolType=9}",
        "{bolType=10, bolVpnv4McastMaskLen=24, bolVpnv4McastPrefix=167838211}",
        "{bolMdtGrpAddr=4009820417, bolMdtMaskLen=24, bolMdtPrefix=167838211, bolType=11}",
        "{bolRpdDistinguisher=100, bolRpdPeerAddr=167838211, bolRpdPolicyType=1, bolType=12}",
        "{bolNgOriIpType=0, bolNgPrefixOriIP1=16843009, bolNgPrefixOriIP2=33686018, bolType=13}",
        "{bolSrPolicyDistinguisher=1, bolSrPolicyEndpointv4=167772161, bolSrPolicyEndpointv6=" + no6 +
            ", bolSrPolicyPolicyColor=2, bolSrPolicyPolicyType=0, bolType=14}",
        "{bolPrefix={32,1,13,184,0,0,0,0,0,0,0,0,0,0,0,1}, bolType=15}",
        "{bolSdwanNodeIDv4=167837953, bolSdwanNodeIDv6=" + no6 +
            ", bolSdwanPortLocalID=100, bolSdwanPrefixType=0, bolSdwanSiteID=200, bolSdwanType=1, bolType=16}",
    };
    static_assert(sizeof tables / sizeof tables[0] == BOL_PREFIX_SUBTYPES);
    for (size_t i = 0; i < BOL_PREFIX_SUBTYPES; ++i) {
        SCOPED_TRACE(i);
        const LuaOut out = LuaSet("BOLPREFIX", Whole(EverySubType()[i].value));
        EXPECT_EQ(out.code, DT_OK);
        EXPECT_EQ(out.table, tables[i]);
        EXPECT_EQ(out.growth, 0);
        // The length is the sub-type's to judge, the code the dispatcher's.
        const LuaOut tooShort = LuaSet(Row("BOLPREFIX"), Whole(EverySubType()[i].value), 88);
        EXPECT_EQ(tooShort.code, DT_ERR_INVALID_VALUE);
        EXPECT_EQ(tooShort.table, "nil");
        EXPECT_EQ(tooShort.growth, 0);
    }
    for (const char *word : {"11000000", "ff000000", "00010000", "01000001", "ffffffff"}) {
        const LuaOut out = LuaSet("BOLPREFIX", Whole(word));
        EXPECT_EQ(out.code, DT_ERR_INVALID_VALUE) << word;
        EXPECT_EQ(out.table, "nil");
        EXPECT_EQ(out.growth, 0);
    }
}

TEST_F(BolPrefix, LuaOperationsTestTheirPointers)
{
    Sweep(Row("BOLPREFIX"), Contract{.text = "",
                                     .value = Whole("0f000000" + kSome6),
                                     .inModes = "",
                                     .outModes = "",
                                     .helpModes = "",
                                     .helpText = "",
                                     .resultTypeId = 279,
                                     .resultLength = 89,
                                     .textSize = 257});
}

// ----------------------------------------------------------------------------------------------------------- from Lua

struct Patch {
    size_t at;
    std::string bytes;
};

// 89 bytes that nothing was written to, but for the patches.
std::string Patched(const std::vector<Patch> &patches)
{
    std::string value(89, '\xEE');
    for (const Patch &patch : patches) {
        const std::string bytes = Bytes(patch.bytes);
        value.replace(patch.at, bytes.size(), bytes);
    }
    return Hex(value);
}

// What a reader does, one fetched field after the other.
enum class Fetch {
    kNumber,   // refused when it is none
    kIpv4,     // a number into an address field; ignored when it is none
    kIpv6,     // 16 numbers into an address field; ignored when they are not; popped when they are
    kArray,    // `items` numbers; refused when they are not; they are popped, the array stays
    kArrayToo, // the same, and the array is popped with them
};

struct Step {
    Fetch fetch;
    const char *name;
    std::string good; // a Lua expression
    std::vector<Patch> written;
    size_t items = 0;
};

struct Reader {
    uint32_t subType;
    int32_t pops; // at the end
    std::vector<Step> steps;
};

const std::string kIn6 = "{32,1,13,184,0,0,0,0,0,0,0,0,0,0,0,1}";

Step Kind(const char *name, uint32_t kind)
{
    return {Fetch::kNumber, name, std::to_string(kind), {}};
}

Step Ipv4(const char *name, size_t at)
{
    return {Fetch::kIpv4, name, "167838211", {{at, "0302010a"}, {at + 20, "00"}}};
}

Step Ipv6(const char *name, size_t at)
{
    return {Fetch::kIpv6, name, kIn6, {{at + 4, kSome6 + "01"}}, 16};
}

// The seven NG readers with their addresses in one family.
std::vector<Reader> NgReaders(uint32_t family)
{
    const auto address = [family](const char *name, size_t at) {
        return family == 0 ? Ipv4(name, at) : Ipv6(name, at);
    };
    const Step asType{Fetch::kNumber, "bolNgAsNumType", "1", {{8, "01000000"}}};
    const Step asNumber{Fetch::kNumber, "bolNgAsNumValue", "4294967295", {{4, "ffffffff"}}};
    const Step origin = Kind("bolNgOriIpType", family);
    const Step source = Kind("bolNgCSIpType", family);
    const Step group = Kind("bolNgCGIpType", family);
    return {
        {2, 3, {asType, asNumber}},
        {3,
         4,
         {origin, address("bolNgPrefixOriIP", 46), source, address("bolNgPrefixCS", 4), group,
          address("bolNgPrefixCG", 25)}},
        {4, 4, {origin, address("bolNgPrefixOriIP", 12), asType, asNumber}},
        {5,
         5,
         {origin, address("bolNgPrefixOriIP2", 67), address("bolNgPrefixOriIP1", 46), source,
          address("bolNgPrefixCS", 4), group, address("bolNgPrefixCG", 25)}},
        {6, 3, {source, address("bolNgPrefixCS", 4), group, address("bolNgPrefixCG", 25)}},
        {7, 5, {source, address("bolNgPrefixCS", 12), group, address("bolNgPrefixCG", 33), asType, asNumber}},
        {13, 3, {origin, address("bolNgPrefixOriIP2", 25), address("bolNgPrefixOriIP1", 4)}},
    };
}

// All but row 1, which has a text, in both families where there are two.
std::vector<Reader> Readers()
{
    std::vector<Reader> readers = {
        {0, 2, {{Fetch::kNumber, "bolPrefix", "167838211", {{4, "0302010a"}}}}},
        {8,
         3,
         {{Fetch::kArrayToo, "RtValue", "{0,2,0,100,256,257,511,1}", {{4, "00020064 0001ff01"}}, 8},
          {Fetch::kNumber, "RtType", "259", {{12, "03000000"}}}}}, // its low 8 bits fill the word
        {9,
         3,
         {{Fetch::kNumber, "bolSiteId", "65546", {{4, "0a00"}}},
          {Fetch::kNumber, "bolLabelOffSet", "131075", {{6, "0300"}}}}},
        {10,
         3,
         {{Fetch::kNumber, "bolVpnv4McastPrefix", "167838211", {{4, "0302010a"}}},
          {Fetch::kNumber, "bolVpnv4McastMaskLen", "4294967295", {{8, "ffffffff"}}}}},
        {11,
         4,
         {{Fetch::kNumber, "bolMdtPrefix", "167838211", {{4, "0302010a"}}},
          {Fetch::kNumber, "bolMdtGrpAddr", "4009820417", {{8, "010101ef"}}},
          {Fetch::kNumber, "bolMdtMaskLen", "24", {{12, "18000000"}}}}},
        {12,
         4,
         {{Fetch::kNumber, "bolRpdPolicyType", "257", {{4, "01"}}},
          {Fetch::kNumber, "bolRpdPeerAddr", "167838211", {{10, "0302010a"}}},
          {Fetch::kNumber, "bolRpdDistinguisher", "4294967295", {{6, "ffffffff"}}}}},
        {14,
         6,
         {{Fetch::kNumber, "bolSrPolicyDistinguisher", "1", {{4, "01000000"}}},
          {Fetch::kNumber, "bolSrPolicyPolicyColor", "4294967295", {{8, "ffffffff"}}},
          {Fetch::kNumber, "bolSrPolicyEndpointv4", "167838211", {{12, "0302010a"}}},
          {Fetch::kArray, "bolSrPolicyEndpointv6", kIn6, {{16, kSome6}}, 16},
          {Fetch::kNumber, "bolSrPolicyPolicyType", "257", {{32, "01"}}}}},
        {15, 0, {{Fetch::kArrayToo, "bolPrefix", kIn6, {{4, kSome6}}, 16}}},
        {16,
         6,
         {{Fetch::kNumber, "bolSdwanType", "65537", {{4, "0100"}}},
          {Fetch::kNumber, "bolSdwanPortLocalID", "100", {{8, "64000000"}}},
          {Fetch::kNumber, "bolSdwanSiteID", "4294967295", {{12, "ffffffff"}}},
          {Fetch::kNumber, "bolSdwanNodeIDv4", "167838211", {{16, "0302010a"}}},
          {Fetch::kArray, "bolSdwanNodeIDv6", kIn6, {{20, kSome6}}, 16},
          {Fetch::kNumber, "bolSdwanPrefixType", "257", {{36, "01"}}}}},
    };
    for (const uint32_t family : {0u, 1u}) {
        for (Reader &reader : NgReaders(family)) {
            readers.push_back(std::move(reader));
        }
    }
    return readers;
}

// Stack slots that a step adds when all is well.
int32_t Pushed(const Step &step)
{
    return step.fetch == Fetch::kIpv6 || step.fetch == Fetch::kArrayToo ? 0 : 1;
}

BolPrefixLuaReader theReader;

// A row whose LuaGet fetches the field and hands its table to `theReader`, with a slot in between for "bolType".
DataTypeDescriptor ReaderAlone(uint32_t subType)
{
    theReader = g_astBOL_PREFIX_LuaGetTable[subType].Reader;
    DataTypeDescriptor row{};
    row.LuaGet = [](lua_State *L, int32_t index, const char *name, uint32_t, uint16_t, void *value) -> uint32_t {
        SYSDT_SPTI_GetField(L, index, name);
        const int32_t table = SYSDT_SPTI_GetTop(L);
        SYSDT_SPTI_GetField(L, table, "bolType");
        return theReader(L, value, table);
    };
    return row;
}

// The table with field number `changed` replaced ("" leaves it out).
std::string TableOf(const Reader &reader, size_t changed, const std::string &value)
{
    std::string table = "{bolType=" + std::to_string(reader.subType);
    for (size_t i = 0; i < reader.steps.size(); ++i) {
        const std::string &good = reader.steps[i].good;
        table += std::string(", ") + reader.steps[i].name + "=" + (i == changed ? value : good);
    }
    return table + "}";
}

void ExpectRead(const Reader &reader, const std::string &table, uint32_t code, std::vector<Patch> patches,
                int32_t growth)
{
    SCOPED_TRACE(table);
    const LuaIn alone = LuaGet(ReaderAlone(reader.subType), table, 89);
    EXPECT_EQ(alone.code, code);
    EXPECT_EQ(alone.value, Patched(patches));
    EXPECT_EQ(alone.growth, growth);
    patches.push_back({0, Le32(reader.subType)});
    const LuaIn whole = LuaGet("BOLPREFIX", table);
    EXPECT_EQ(whole.code, code == DT_OK ? DT_OK : DT_ERR_INVALID_VALUE);
    EXPECT_EQ(whole.value, Patched(patches));
    EXPECT_EQ(whole.growth, growth);
}

std::vector<Patch> Written(const Reader &reader, size_t before, size_t without = SIZE_MAX)
{
    std::vector<Patch> patches;
    for (size_t i = 0; i < before; ++i) {
        if (i != without) {
            patches.insert(patches.end(), reader.steps[i].written.begin(), reader.steps[i].written.end());
        }
    }
    return patches;
}

// The slots on the stack, the table and "bolType" included, when `before` steps went well.
int32_t Slots(const Reader &reader, size_t before)
{
    int32_t slots = 2;
    for (size_t i = 0; i < before; ++i) {
        slots += Pushed(reader.steps[i]);
    }
    return slots;
}

TEST_F(BolPrefix, ReadersFillTheirFields)
{
    for (const Reader &reader : Readers()) {
        const size_t all = reader.steps.size();
        ExpectRead(reader, TableOf(reader, SIZE_MAX, ""), DT_OK, Written(reader, all),
                   Slots(reader, all) - reader.pops);
    }
}

// A field that must be a number and is none ends the reader; what was read before it stays written, and pushed.
TEST_F(BolPrefix, ReadersWantNumbers)
{
    for (const Reader &reader : Readers()) {
        for (size_t i = 0; i < reader.steps.size(); ++i) {
            if (reader.steps[i].fetch != Fetch::kNumber) {
                continue;
            }
            for (const char *bad : {"nil", "'x'", "''", "{}", "true"}) {
                ExpectRead(reader, TableOf(reader, i, bad), DT_ERR_INVALID_PARAM, Written(reader, i),
                           Slots(reader, i) + 1);
            }
        }
    }
}

TEST_F(BolPrefix, ReadersWantArraysOfNumbers)
{
    for (const Reader &reader : Readers()) {
        for (size_t i = 0; i < reader.steps.size(); ++i) {
            const Step &step = reader.steps[i];
            if (step.fetch != Fetch::kArray && step.fetch != Fetch::kArrayToo) {
                continue;
            }
            for (const char *bad : {"nil", "'x'", "7", "true"}) {
                ExpectRead(reader, TableOf(reader, i, bad), DT_ERR_INVALID_PARAM, Written(reader, i),
                           Slots(reader, i) + 1);
            }
            for (size_t badItem = 1; badItem <= step.items; ++badItem) {
                for (const char *bad : {"nil", "'x'", "{}"}) {
                    std::string items;
                    std::vector<Patch> patches = Written(reader, i);
                    for (size_t item = 1; item <= step.items; ++item) {
                        items += (item == badItem ? bad : std::to_string(item)) + ",";
                        if (item < badItem) {
                            patches.push_back({step.written[0].at + item - 1, Hex(std::string(1, char(item)))});
                        }
                    }
                    ExpectRead(reader, TableOf(reader, i, "{" + items + "}"), DT_ERR_INVALID_PARAM, patches,
                               Slots(reader, i) + 1 + static_cast<int32_t>(badItem));
                }
            }
        }
    }
}

// Addresses that are none are passed over.
TEST_F(BolPrefix, ReadersIgnoreBadAddresses)
{
    for (const Reader &reader : Readers()) {
        const size_t all = reader.steps.size();
        const int32_t growth = Slots(reader, all) - reader.pops;
        for (size_t i = 0; i < all; ++i) {
            const Step &step = reader.steps[i];
            if (step.fetch == Fetch::kIpv4) {
                for (const char *bad : {"nil", "'x'", "{}", "true"}) {
                    ExpectRead(reader, TableOf(reader, i, bad), DT_OK, Written(reader, all, i), growth);
                }
            }
            if (step.fetch != Fetch::kIpv6) {
                continue;
            }
            for (const char *bad : {"nil", "'x'", "7", "true"}) {
                ExpectRead(reader, TableOf(reader, i, bad), DT_OK, Written(reader, all, i), growth + 1);
            }
            // Items before the bad one are written and stay on the stack with it.
            std::vector<Patch> patches = Written(reader, all, i);
            const size_t at = step.written[0].at;
            ExpectRead(reader, TableOf(reader, i, "{}"), DT_OK, patches, growth + 2);
            patches.push_back({at, "0102"});
            ExpectRead(reader, TableOf(reader, i, "{1,2,'x',4,5,6,7,8,9,10,11,12,13,14,15,16}"), DT_OK, patches,
                       growth + 4);
            patches.push_back({at, "0102030405060708090a0b0c0d0e0f"});
            ExpectRead(reader, TableOf(reader, i, "{1,2,3,4,5,6,7,8,9,10,11,12,13,14,15}"), DT_OK, patches,
                       growth + 17);
        }
    }
}

// An address kind that is neither IPv4 nor IPv6 reads no address.
TEST_F(BolPrefix, ReadersPassOverAddressesOfOtherKinds)
{
    for (Reader &reader : NgReaders(2)) {
        std::vector<Patch> patches;
        for (const Step &step : reader.steps) {
            if (step.fetch == Fetch::kNumber) {
                patches.insert(patches.end(), step.written.begin(), step.written.end());
            }
        }
        const auto fields = static_cast<int32_t>(reader.steps.size());
        ExpectRead(reader, TableOf(reader, SIZE_MAX, ""), DT_OK, patches, 2 + fields - reader.pops);
    }
}

TEST_F(BolPrefix, ReadersOfTwoFamiliesAtOnce)
{
    const LuaIn in = LuaGet("BOLPREFIX", "{bolType=6, bolNgCSIpType=1, bolNgPrefixCS=" + kIn6 +
                                             ", bolNgCGIpType=0, bolNgPrefixCG=167838211}");
    EXPECT_EQ(in.code, DT_OK);
    EXPECT_EQ(in.value, Patched({{0, "06000000"}, {8, kSome6 + "01"}, {25, "0302010a"}, {45, "00"}}));
    EXPECT_EQ(in.growth, 2);
}

TEST_F(BolPrefix, ReadersTestTheirPointers)
{
    const std::unique_ptr<lua_State, void (*)(lua_State *)> lua(host::NewLua(), host::CloseLua);
    SYSDT_SPTI_CreateTable(lua.get(), 0, 0);
    char value[89] = {};
    for (const BolPrefixLuaGetEntry &entry : g_astBOL_PREFIX_LuaGetTable) {
        EXPECT_EQ(entry.Reader(nullptr, value, 1), DT_ERR_NULL_PTR) << entry.SubType;
        EXPECT_EQ(entry.Reader(lua.get(), nullptr, 1), DT_ERR_NULL_PTR) << entry.SubType;
        EXPECT_EQ(SYSDT_SPTI_GetTop(lua.get()), 1) << entry.SubType;
    }
}

TEST_F(BolPrefix, NumericStringsAreNumbersToLua)
{
    EXPECT_EQ(LuaGet("BOLPREFIX", "{bolType='10', bolVpnv4McastPrefix='167838211', bolVpnv4McastMaskLen='24'}").value,
              Patched({{0, "0a000000 0302010a 18000000"}}));
    EXPECT_EQ(LuaGet("BOLPREFIX", "{bolType=0, bolPrefix=4294967301}").value, Patched({{0, "00000000 05000000"}}));
}

// Row 1 reads a text. Its route type is a word over bytes 4 to 7, so that the field behind it loses three bytes.
TEST_F(BolPrefix, TheEvpnReader)
{
    const struct {
        const char *table;
        uint32_t code;
        std::vector<Patch> value;
        int32_t growth;
    } rows[] = {
        {"{bolType=1, bolPrefixRtType=5, bolPrefixRtValue='10:1.1.1.0:24'}",
         DT_OK,
         {{4, "05 00000000 18 00010101"}, {30, "00"}},
         1},
        {"{bolType=1, bolPrefixRtType=5, bolPrefixRtValue='4294967295:1.1.1.0:24'}",
         DT_OK,
         {{4, "05 000000ff 18 00010101"}, {30, "00"}},
         1},
        {"{bolType=1, bolPrefixRtType=0x04030201, bolPrefixRtValue='10:1.1.1.0:24'}",
         DT_OK,
         {{4, "01 02030400 18 00010101"}, {30, "00"}},
         1},
        // The ESI type is not checked here.
        {"{bolType=1, bolPrefixRtType=4, bolPrefixRtValue='ff11.2233.4455.6677.8899'}",
         DT_OK,
         {{4, "04 00000033445566778899"}},
         1},
        {"{bolType=1, bolPrefixRtType=1, bolPrefixRtValue='ff11.2233.4455.6677.8899:7'}",
         DT_OK,
         {{4, "01 00000033445566778899 07000000"}},
         1},
        {"{bolType=1, bolPrefixRtType=5, bolPrefixRtValue='no route'}", DT_OK, {{4, "05000000"}}, 1},
        {"{bolType=1, bolPrefixRtType=5, bolPrefixRtValue=''}", DT_OK, {{4, "05000000"}}, 1},
        {"{bolType=1, bolPrefixRtType=5, bolPrefixRtValue={}}", DT_OK, {{4, "05000000"}}, 1},
        {"{bolType=1, bolPrefixRtType=5, bolPrefixRtValue=7}", DT_OK, {{4, "05000000"}}, 1},
        {"{bolType=1, bolPrefixRtType=5}", DT_OK, {{4, "05000000"}}, 1},
        {"{bolType=1, bolPrefixRtValue='10:1.1.1.0:24'}",
         DT_ERR_INVALID_PARAM,
         {{4, "05 0a000000 18 00010101"}, {30, "00"}},
         4},
        {"{bolType=1, bolPrefixRtType={}, bolPrefixRtValue='10:1.1.1.0:24'}",
         DT_ERR_INVALID_PARAM,
         {{4, "05 0a000000 18 00010101"}, {30, "00"}},
         4},
        {"{bolType=1, bolPrefixRtType='x'}", DT_ERR_INVALID_PARAM, {}, 4},
    };
    const Reader reader{1, 3, {}};
    for (const auto &row : rows) {
        ExpectRead(reader, row.table, row.code, row.value, row.growth);
    }
}

TEST_F(BolPrefix, TheEvpnReaderTakesTextsOf183Characters)
{
    const Reader reader{1, 3, {}};
    const auto table = [](size_t length) {
        return "{bolType=1, bolPrefixRtType=1, bolPrefixRtValue='ff11.2233.4455.6677.8899:" +
               std::string(length - 26, '0') + "7'}";
    };
    ExpectRead(reader, table(183), DT_OK, {{4, "01 00000033445566778899 07000000"}}, 1);
    ExpectRead(reader, table(184), DT_ERR_TOO_LONG, {}, 3);
    ExpectRead(reader, table(185), DT_ERR_TOO_LONG, {}, 3);
    ExpectRead(reader, table(3000), DT_ERR_TOO_LONG, {}, 3);
}

TEST_F(BolPrefix, FromLuaWantsATableWithASubType)
{
    const struct {
        const char *value;
        uint32_t code;
        int32_t growth; // nothing is popped
    } rows[] = {
        {"nil", DT_ERR_INVALID_PARAM, 1},
        {"7", DT_ERR_INVALID_PARAM, 1},
        {"'text'", DT_ERR_INVALID_PARAM, 1},
        {"{}", DT_ERR_INVALID_PARAM, 2},
        {"{bolPrefix=7}", DT_ERR_INVALID_PARAM, 2},
        {"{bolType='x', bolPrefix=7}", DT_ERR_INVALID_PARAM, 2},
        {"{bolType={}, bolPrefix=7}", DT_ERR_INVALID_PARAM, 2},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.value);
        const LuaIn in = LuaGet("BOLPREFIX", row.value);
        EXPECT_EQ(in.code, row.code);
        EXPECT_EQ(in.value, Patched({}));
        EXPECT_EQ(in.growth, row.growth);
    }
    for (const char *subType : {"17", "18", "255", "256", "65536", "0x01000001", "4294967295", "-1"}) {
        SCOPED_TRACE(subType);
        const LuaIn in = LuaGet("BOLPREFIX", "{bolType=" + std::string(subType) + ", bolPrefix=7}");
        EXPECT_EQ(in.code, DT_ERR_INVALID_VALUE);
        EXPECT_EQ(in.value.substr(8), Patched({}).substr(8));
        EXPECT_EQ(in.growth, 2);
    }
}

TEST_F(BolPrefix, FromLuaWants89Bytes)
{
    for (const uint16_t length : {uint16_t{0}, uint16_t{4}, uint16_t{20}, uint16_t{88}}) {
        const LuaIn in = LuaGet(Row("BOLPREFIX"), "{bolType=0, bolPrefix=7}", length);
        EXPECT_EQ(in.code, DT_ERR_INVALID_PARAM) << length;
        EXPECT_EQ(in.value, Hex(std::string(length, '\xEE')));
        EXPECT_EQ(in.growth, 0);
    }
    EXPECT_EQ(LuaGet(Row("BOLPREFIX"), "{bolType=0, bolPrefix=7}", 89).code, DT_OK);
    EXPECT_EQ(LuaGet(Row("BOLPREFIX"), "{bolType=0, bolPrefix=7}", 100).code, DT_OK);
}

TEST_F(BolPrefix, FromLuaAtANegativeIndex)
{
    const std::unique_ptr<lua_State, void (*)(lua_State *)> lua(host::NewLua(), host::CloseLua);
    lua_State *L = lua.get();
    const DataTypeDescriptor &row = Row("BOLPREFIX");
    SYSDT_SPTI_CreateTable(L, 0, 1);
    SYSDT_SPTI_CreateTable(L, 0, 2);
    SYSDT_SPTI_PushUInt(L, 10);
    SYSDT_SPTI_SetField(L, -2, "bolType");
    SYSDT_SPTI_PushUInt(L, 167838211);
    SYSDT_SPTI_SetField(L, -2, "bolVpnv4McastPrefix");
    SYSDT_SPTI_PushUInt(L, 24);
    SYSDT_SPTI_SetField(L, -2, "bolVpnv4McastMaskLen");
    SYSDT_SPTI_SetField(L, -2, "v");
    char value[89];
    std::memset(value, 0xEE, sizeof value);
    EXPECT_EQ(row.LuaGet(L, -1, "v", row.TypeId, sizeof value, value), DT_OK);
    EXPECT_EQ(Hex(value, sizeof value), Patched({{0, "0a000000 0302010a 18000000"}}));
    EXPECT_EQ(SYSDT_SPTI_GetTop(L), 2);
}

// What LuaSet wrote, LuaGet reads; bytes without a field keep what was there.
TEST_F(BolPrefix, ToLuaAndBack)
{
    for (const Printed &row : EverySubType()) {
        SCOPED_TRACE(row.text);
        const LuaIn in = LuaGet("BOLPREFIX", LuaSet("BOLPREFIX", Whole(row.value)).table);
        EXPECT_EQ(in.code, DT_OK);
        const std::string expected = Bytes(Whole(row.value));
        std::string value = Bytes(in.value);
        for (size_t i = 0; i < value.size(); ++i) {
            const bool routeTypeWord = value[0] == 1 && i >= 5 && i <= 7; // lost to the route type, see above
            EXPECT_TRUE(value[i] == expected[i] || routeTypeWord || (value[i] == '\xEE' && expected[i] == 0)) << i;
        }
    }
}

} // namespace
} // namespace bgp::test
