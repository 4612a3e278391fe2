#include "support/notation_refusals.h"
#include "support/notation_texts.h"
#include "support/type_case.h"

namespace bgp::test {
namespace {

// EXTCOMMUNITY: eight bytes as on the wire (type, sub-type, value) and the form word (u32, host order).
constexpr const char *kType = "EXTCOMMUNITY";

class ExtCommunity : public PlugIn {};

const std::vector<TextCase> kAccepted = {
    // AS of two bytes, number of four
    {"100:1", "0002 0064 00000001 01000000"},
    {"0:0", "0002 0000 00000000 01000000"},
    {"0:5", "0002 0000 00000005 01000000"},
    {"1:65536", "0002 0001 00010000 01000000"},
    {"65535:4294967295", "0002 ffff ffffffff 01000000"},
    {"23456:1000", "0002 5ba0 000003e8 01000000"},
    // AS of four bytes, number of two
    {"65536:0", "0202 00010000 0000 02000000"},
    {"65536:1", "0202 00010000 0001 02000000"},
    {"65536:65535", "0202 00010000 ffff 02000000"},
    {"4294967295:65535", "0202 ffffffff ffff 02000000"},
    {"16909060:1286", "0202 01020304 0506 02000000"},
    // the same, dotted
    {"1.2:3", "0202 0001 0002 0003 03000000"},
    {"1.0:0", "0202 0001 0000 0000 03000000"},
    {"0.5:1", "0202 0000 0005 0001 03000000"},
    {"0.0:0", "0202 0000 0000 0000 03000000"},
    {"65535.65535:65535", "0202 ffff ffff ffff 03000000"},
    // IPv4 address, number of two bytes
    {"10.1.1.1:5", "0102 0a010101 0005 00000000"},
    {"0.0.0.0:0", "0102 00000000 0000 00000000"},
    {"1.2.3.4:1286", "0102 01020304 0506 00000000"},
    {"255.255.255.255:65535", "0102 ffffffff ffff 00000000"}, // 21 characters
    // leading zeros and outer blanks
    {"00100:00001", "0002 0064 00000001 01000000", "100:1"},
    {"0000000000000000100:1", "0002 0064 00000001 01000000", "100:1"},
    {"00001.00002:00003", "0202 0001 0002 0003 03000000", "1.2:3"},
    {"010.001.001.001:00005", "0102 0a010101 0005 00000000", "10.1.1.1:5"},
    {" 100:1 ", "0002 0064 00000001 01000000", "100:1"},
    {"\t1.2:3\t \t", "0202 0001 0002 0003 03000000", "1.2:3"},
};

// Every kind that prints, with the value bytes 1, 2, 3, 4, 5, 6: 258 is bytes 2-3, 50595078 bytes 4-7, 16909060 bytes
// 2-5, 772 bytes 4-5, 1286 bytes 6-7. All but 0202 print alike whatever the form.
const std::vector<KindCase> kKinds = {
    {"0002", {}, "258:50595078"},
    {"030b", {}, "258:50595078"},
    {"0003", {}, "SoO <258 : 50595078>"},
    {"0102", {}, "1.2.3.4:1286"},
    {"0103", {}, "SoO <1.2.3.4 : 1286>"},
    {"0005", {}, "OSPF DOMAIN ID <1.2.3.4 : 1286>"},
    {"0105", {}, "OSPF DOMAIN ID <1.2.3.4 : 1286>"},
    {"0205", {}, "OSPF DOMAIN ID <1.2.3.4 : 1286>"},
    {"8005", {}, "OSPF DOMAIN ID <1.2.3.4 : 1286>"},
    {"0107", {}, "OSPF ROUTER ID <1.2.3.4 : 1286>"},
    {"8001", {}, "OSPF ROUTER ID <1.2.3.4 : 1286>"},
    {"0203", {}, "SoO <258.772 : 1286>"},
    {"0306", {}, "OSPF RT <1.2.3.4 : 6 : 5>"},
    {"8000", {}, "OSPF RT <1.2.3.4 : 6 : 5>"},
    {"030e", {}, "258:50595078"},
    {"0202", {{"02000000", "16909060:1286"}, {"03000000", "258.772:1286"}}},
};

TypeCase Case()
{
    return {
        .row = {257, 12, 26, "EXTCOMMUNITY", &SYSDT_ExtCommunityFormatIn, &SYSDT_ExtCommunityFormatOut,
                &SYSDT_ExtCommunityCheck, &SYSDT_ExtCommunityHelp, &SYSDT_ExtCommunityCompare, nullptr,
                &SYSDT_ExtCommunityLuaSet, &SYSDT_ExtCommunityLuaGet, &SYSDT_EXTCommunityEndian},
        .contract = {.text = "255.255.255.255:65535",
                     .value = "0102ffffffffffff00000000",
                     .inModes = "FPPFUFPU",
                     .outModes = "FTTFUFTU",
                     .helpModes = "-H----H-",
                     .helpText = "STRING<3-21>",
                     .textSize = 257},
        .accepted = kAccepted,
        .refused = kNoNotations,
        .blanked = {"100:1"},
        .parser = &SYSDT_Str2ExtCommunity,
        .fields =
            {
                {"", ":7", "0002 0000 00000007 01000000", 2},
                {"7:", "", "0002 0007 0000 0000 01000000", 6},
                {"", ":7", "0202 0001 0000 0007 02000000", 4, false, 65536},
                {"65536:", "", "0202 00010000 0000 02000000", 6},
                {"", ".7:8", "0202 0000 0007 0008 03000000", 2},
                {"7.", ":8", "0202 0007 0000 0008 03000000", 4},
                {"7.8:", "", "0202 0007 0008 0000 03000000", 6},
                {"1.2.3.4:", "", "0102 01020304 0000 00000000", 6},
            },
        .octets = {{"", ".2.3.4:5"}, {"1.", ".3.4:5"}, {"1.2.", ".4:5"}, {"1.2.3.", ":5"}},
        .prints =
            {
                {"65535:4294967295", "0002 ffffffffffff 00000000"},
                {"0:0", "0002 000000000000 00000000"},
                {"65535:4294967295", "030b ffffffffffff 00000000"},
                {"0:0", "030b 000000000000 00000000"},
                {"SoO <65535 : 4294967295>", "0003 ffffffffffff 00000000"},
                {"SoO <0 : 0>", "0003 000000000000 00000000"},
                {"255.255.255.255:65535", "0102 ffffffffffff 00000000"},
                {"0.0.0.0:0", "0102 000000000000 00000000"},
                {"SoO <255.255.255.255 : 65535>", "0103 ffffffffffff 00000000"},
                {"SoO <0.0.0.0 : 0>", "0103 000000000000 00000000"},
                {"OSPF DOMAIN ID <255.255.255.255 : 65535>", "0005 ffffffffffff 00000000"},
                {"OSPF DOMAIN ID <0.0.0.0 : 0>", "0005 000000000000 00000000"},
                {"OSPF DOMAIN ID <255.255.255.255 : 65535>", "0105 ffffffffffff 00000000"},
                {"OSPF DOMAIN ID <0.0.0.0 : 0>", "0105 000000000000 00000000"},
                {"OSPF DOMAIN ID <255.255.255.255 : 65535>", "0205 ffffffffffff 00000000"},
                {"OSPF DOMAIN ID <0.0.0.0 : 0>", "0205 000000000000 00000000"},
                {"OSPF DOMAIN ID <255.255.255.255 : 65535>", "8005 ffffffffffff 00000000"},
                {"OSPF DOMAIN ID <0.0.0.0 : 0>", "8005 000000000000 00000000"},
                {"OSPF ROUTER ID <255.255.255.255 : 65535>", "0107 ffffffffffff 00000000"},
                {"OSPF ROUTER ID <0.0.0.0 : 0>", "0107 000000000000 00000000"},
                {"OSPF ROUTER ID <255.255.255.255 : 65535>", "8001 ffffffffffff 00000000"},
                {"OSPF ROUTER ID <0.0.0.0 : 0>", "8001 000000000000 00000000"},
                {"SoO <65535.65535 : 65535>", "0203 ffffffffffff 00000000"},
                {"SoO <0.0 : 0>", "0203 000000000000 00000000"},
                {"OSPF RT <255.255.255.255 : 255 : 255>", "0306 ffffffffffff 00000000"},
                {"OSPF RT <0.0.0.0 : 0 : 0>", "0306 000000000000 00000000"},
                {"OSPF RT <255.255.255.255 : 255 : 255>", "8000 ffffffffffff 00000000"},
                {"OSPF RT <0.0.0.0 : 0 : 0>", "8000 000000000000 00000000"},
                {"65535:4294967295", "030e ffffffffffff 00000000"},
                {"0:0", "030e 000000000000 00000000"},
                {"OSPF RT <0.0.0.1 : 7 : 5>", "0306 00000001 05 07 00000000"},
                {"SoO <100 : 9>", "0003 0064 00000009 00000000"},
                {"100:1", "0002 0064 00000001 00000000"}, // whatever the form
                // AS_TRANS is named in a bandwidth and nowhere else.
                {"as-trans:1000", "030e 5ba0 000003e8 00000000"},
                {"as-trans:0", "030e 5ba0 00000000 00000000"},
                {"as-trans:4294967295", "030e 5ba0 ffffffff 00000000"},
                {"23455:1000", "030e 5b9f 000003e8 00000000"},
                {"23457:1000", "030e 5ba1 000003e8 00000000"},
                {"41051:1000", "030e a05b 000003e8 00000000"},
                {"23456:1000", "0002 5ba0 000003e8 01000000"},
                {"23456:1000", "030b 5ba0 000003e8 01000000"},
                {"SoO <23456 : 1000>", "0003 5ba0 000003e8 01000000"},
                {"4294967295:65535", "0202ffffffffffff02000000"},
                {"65535.65535:65535", "0202ffffffffffff03000000"},
                {"0:0", "020200000000000002000000"},
                {"0.0:0", "020200000000000003000000"},
            },
        .kindTable = {.fields = "010203040506",
                      .kinds = kKinds,
                      .unknown = {"4004"},
                      .others = {"0000"},
                      .becomes = UnknownKind::kGivesBack},
        .printFailures = {"020201020304050602000000", "020201020304050603000000", "030e5ba00000000100000000"},
        .compares =
            {
                {"000200640000000101000000", "000200640000000001000000", 1},
                {"000200640000000001000000", "000200640000000101000000", -1},
                {"800200640000000001000000", "7f0200640000000101000000", 1}, // unsigned bytes
                {"000200640000000102000000", "000200640000000101000000", 1}, // the form takes part
                {"000200640000000101000000", "000200640000000101000000", 0},
                {"01020304", "01020305", 0, 3},
                {"01020304", "01020305", -1},
            },
        .swaps = {{"0102030405060708090a0b0c", "01020304050607080c0b0a09"}},
        .luaSets =
            {
                {"0002ff6400000001 03020100", "{extcommunity={0,2,255,100,0,0,0,1}, type=66051}"},
                {"000000000000000000000000", "{extcommunity={0,0,0,0,0,0,0,0}, type=0}"},
            },
        .luaGets =
            {
                {"{extcommunity = {0, 2, 0, 100, 0, 0, 0, 1}, type = 1}", DT_OK, "0002006400000001 01000000", 0},
                {"{extcommunity = {255, 254, 3, 4, 5, 6, 7, 8, 9}, type = 255}", DT_OK, "fffe030405060708 ff000000", 0},
                {"{extcommunity = {256, 257, -1, 4294967295, 511, 6, 7, 8}, type = 256}", DT_OK,
                 "0001ffffff060708 00000000", 0},
                {"{extcommunity = {1, 2, 3, 4, 5, 6, 7, 8}, type = 66051}", DT_OK, "0102030405060708 03000000", 0},
                {"{extcommunity = {'1', '2', '3', '4', '5', '6', '7', '8'}, type = '3'}", DT_OK,
                 "0102030405060708 03000000", 0},
                {"{extcommunity = {1, 2, 3, 4, 5, 6, 7, 8}}", DT_ERR_INVALID_PARAM, "0102030405060708 eeeeeeee", 2},
                {"{extcommunity = {1, 2, 3, 4, 5, 6, 7, 8}, type = 'x'}", DT_ERR_INVALID_PARAM,
                 "0102030405060708 eeeeeeee", 2},
                {"{extcommunity = {}, type = 1}", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeee eeeeeeee", 3},
                {"{extcommunity = {1, 2, 3, 4, 5, 6, 7}, type = 1}", DT_ERR_INVALID_PARAM, "01020304050607ee eeeeeeee",
                 10},
                {"{extcommunity = '12345678', type = 1}", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeee eeeeeeee", 2},
                {"{type = 1}", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeee eeeeeeee", 2},
                {"'100:1'", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeee eeeeeeee", 1},
                {"nil", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeee eeeeeeee", 1},
            },
        .luaArrays = {{"{type = 1, extcommunity = ", "}", 8, 0, 3}},
    };
}

[[maybe_unused]] const bool kStated = StateTests<ExtCommunity>("ExtCommunity", Case());

TEST_F(ExtCommunity, KindZeroPrintsNothing)
{
    const TextBuffer buffer{257, "FTTFUFTU"};
    for (const char *value : {"000000000000000000000000", "000001020304050601000000", "0000ffffffffffffffffffff"}) {
        ExpectNothingWritten(Row(kType), value, 1, buffer);
        ExpectNothingWritten(Row(kType), value, 6, buffer);
        ExpectPrints(Row(kType), value, 2, "", buffer);
    }
}

TEST_F(ExtCommunity, AFailingPrintOfAnyKindIsAFailure)
{
    for (const KindCase &kind : kKinds) {
        if (!kind.always.empty()) {
            host::SetFaults({.failPrint = 1});
            EXPECT_EQ(FormatOut(kType, kind.kind + "01020304050600000000").code, DT_ERR_FAIL) << kind.kind;
        }
    }
}

// ---------------------------------------------------------------------------------------------------------- refusals

TEST_F(ExtCommunity, Reasons)
{
    CheckRefusals("EXTCOMMUNITY", All(kNotationRefusals, kModeRefusals));
    CheckAccepted("EXTCOMMUNITY", kNotationsTaken);
    constexpr std::string_view kZeros[] = {"0:0", "0.0:0"};
    CheckAccepted("EXTCOMMUNITY", kZeros);
}

} // namespace
} // namespace bgp::test
