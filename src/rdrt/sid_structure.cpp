// SID_STRUCTURE: the structure of an SRv6 SID as BGP carries it with a prefix (SRv6 SID Structure, RFC 9252). It can be
// printed and scripted, not typed.
//
//   bytes  field                  width  meaning
//   0      locator block length   u8     bits
//   1      locator node length    u8     bits
//   2      function length        u8     bits
//   3      argument length        u8     bits
//   4      transposition length   u8     bits
//   5      transposition offset   u8     bits
//   6      present                u8     1 a structure is present; any other value none
#include "host/format.h"
#include "host/layout.h"
#include "host/operations.h"
#include "host/text.h"
#include "rdrt/rdrt.h"

namespace bgp {

namespace {

constexpr uint16_t kLength = 7;
constexpr uint32_t kPresentAt = 6;

constexpr BgpField kFields[] = {
    Byte("locatorBlockLength", 0), Byte("locatorNodeLength", 1),   Byte("functionLength", 2),
    Byte("argumentLength", 3),     Byte("transpositionLength", 4), Byte("transpositionOffset", 5),
    Byte("strcExist", kPresentAt),
};
constexpr BgpLayout kLayout = Layout(kFields, kLength);

constexpr const BgpField &kPresentField = kFields[6];

int32_t PrintLengths(const uint8_t *value, char *buffer)
{
    if (value[kPresentAt] != 1) {
        return PrintText(buffer, kPrintLimit, "-");
    }
    return Print<"%u-%u-%u-%u-%u-%u">(buffer, kPrintLimit, value[0], value[1], value[2], value[3], value[4], value[5]);
}

// A failing print is not the operation's failure: it reports what was printed, nothing.
uint32_t PrintIfPossible(const uint8_t *value, uint32_t, char *buffer, uint32_t *printed)
{
    Printed(PrintLengths(value, buffer), printed);
    return DT_OK;
}

constexpr FormatOutRule kOut{.modes = kAllButFour,
                             .print = PrintIfPossible,
                             .textSize = kTextSize,
                             .valueSize = kLength,
                             .clearsFirst = true,
                             .zeroExtends = true};

constexpr const BgpRule *kRules[] = {&kNotTyped};

} // namespace

constinit const Type kSidStructure = MakeType({
    .name = "SID_STRUCTURE",
    .description = "the structure of an SRv6 SID",
    .reference = "RFC 9252",
    .out = &kOut,
    .layout = &kLayout,
    .rules = kRules,
    .typeId = 328,
    .checkedLength = 0,
    .order = BGP_ORDER_NONE,
    .network = BGP_NETWORK_LAYOUT,
    .lua = BGP_LUA_LOSES, // the printed text in place of the lengths
    .traits = BGP_TRAIT_NO_TEXT,
});

} // namespace bgp

uint32_t SYSDT_PrefixSidStruct2Str(const void *value, char *buffer, uint32_t *printed)
{
    const uint32_t code = bgp::Printed(bgp::PrintLengths(static_cast<const uint8_t *>(value), buffer), printed);
    return code == DT_OK ? DT_OK : DT_ERR_LENGTH;
}

BGP_FORMAT_OUT(SYSDT_PrefixSidStructureFormatOut, bgp::kOut)

// A script gets the printed text, not the six lengths.
uint32_t SYSDT_PrefixSidStructureLuaSet(lua_State *L, int32_t tableIndex, const char *fieldName, uint32_t,
                                        uint16_t length, const void *value)
{
    if (const uint32_t code = bgp::LuaJudge(L, fieldName, value, length, bgp::kLength); code != DT_OK) {
        return code;
    }
    SYSDT_SPTI_CreateTable(L, 0, 3);
    const int32_t table = SYSDT_SPTI_GetTop(L);
    char text[bgp::kPrintLimit];
    uint32_t printed = 0;
    SYSDT_PrefixSidStruct2Str(value, text, &printed);
    SYSDT_SPTI_PushLString(L, text, printed);
    SYSDT_SPTI_SetField(L, table, "sidStructure");
    bgp::LuaSetOne(L, table, bgp::kPresentField, static_cast<const uint8_t *>(value));
    SYSDT_SPTI_SetField(L, tableIndex, fieldName);
    return DT_OK;
}
