// VRFRD: the route distinguisher of a VPN instance (RFC 4364), typed as administrator and assigned number and printed
// back the way it was typed.
//
//   bytes  field     width  meaning
//   0-1    RD type   u16    network order: 0 2-byte AS number, 1 IPv4 address, 2 4-byte AS number
//   2-7    RD value  6      network order: administrator and assigned number, split by RD type
//   8-11   notation  u32    host order: 0 a.b.c.d:n, 1 AS:n, 2 AS:n with AS above 65535, 3 x.y:n
//
// Bytes 0 to 7 are the distinguisher as BGP carries it. 0.100:1 stays RD type 2: the notation decides, not the size.
#include "host/layout.h"
#include "host/operations.h"
#include "rdrt/notation.h"
#include "rdrt/rdrt.h"

namespace bgp {

namespace {

constexpr uint16_t kLength = 12;

constexpr BgpField kFields[] = {
    ByteArray("RdValue", 0, 8),
    Number("RdType", 8, 4, 1),
};
constexpr BgpLayout kLayout = Layout(kFields, kLength);

constexpr NotationRule kTyped{.kinds = {1, 0, 2}, .refusesZero = true};

// clang-format off
constexpr PrintRow kPrintRows[] = {
    // RD type, notation, format
    {1, kAny, {Prints<"%u.%u.%u.%u:%u", kIpv4Split>}},
    {0, 1,    {Prints<"%u:%u", kAs2Split>}},
    {0, 2,    {Prints<"%u:%u", kAs4Split>}}, // the notation picks the split
    {0, 3,    {Prints<"%u.%u:%u", kDottedSplit>}},
    {0, kAny, {}},
    {2, 2,    {Prints<"%u:%u", kAs4Split>}},
    {2, 3,    {Prints<"%u.%u:%u", kDottedSplit>}},
    {2, kAny, {}},
};
// clang-format on

} // namespace

bool ReadVrfRd(const char *text, void *value, Why *why)
{
    return ReadShared(kTyped, text, value, why);
}

uint32_t PrintVrfRd(const uint8_t *value, uint32_t mode, char *buffer, uint32_t *printed)
{
    return PrintNotation(Table(kPrintRows), value, mode, buffer, printed);
}

namespace {

constexpr FormatInRule kIn{.typeId = 259, .length = kLength, .modes = kTextOnly, .read = ReadVrfRd};
constexpr FormatOutRule kOut{
    .modes = kTextOrRaw, .print = PrintVrfRd, .textSize = kTextSize, .valueSize = kLength, .mode3 = Mode3::kTextAsRaw};
constexpr HelpRule kHelp{.text = "STRING<3-21>"};
constexpr LuaRule kLua{.layout = kLayout, .pops = 2};

} // namespace

constinit const Type kVrfRd = MakeType({
    .name = "VRFRD",
    .description = "the route distinguisher of a VPN instance",
    .reference = "RFC 4364",
    .in = &kIn,
    .out = &kOut,
    .layout = &kLayout,
    .text = &kSharedText,
    .rules = kSharedRules,
    .lua = BGP_LUA_TYPED, // a script's notation is cut to a byte
});

} // namespace bgp

BGP_STR2(SYSDT_Str2VrfRd, bgp::ReadVrfRd)

uint32_t SYSDT_VrfRd2Str(uint32_t word0, uint32_t word1, uint32_t word2, uint32_t *printed, char *buffer)
{
    const uint32_t words[] = {word0, word1, word2};
    uint8_t value[bgp::kLength];
    std::memcpy(value, words, sizeof value);
    *printed = 0;
    return bgp::PrintStored(bgp::Table(bgp::kPrintRows), bgp::StoredAt(value), 0, buffer, printed);
}

uint32_t SYSDT_IsInValidRdOrRt(const void *eight)
{
    return bgp::IsUnset(static_cast<const uint8_t *>(eight)) ? 0 : 1;
}

BGP_FORMAT_IN(SYSDT_VrfRdFormatIn, bgp::kIn)
BGP_FORMAT_OUT(SYSDT_VrfRdFormatOut, bgp::kOut)

uint32_t SYSDT_VrfRdFormatOutEx(const DataTypeRequest *request, const void *value, uint16_t *outTypeId,
                                uint16_t *outLength, void **outBuffer)
{
    return bgp::FormatOut(bgp::kOut, request, bgp::kLength, value, {outTypeId, outLength, outBuffer});
}

BGP_CHECK_LENGTH(SYSDT_VrfRdCheck, bgp::kLength)
BGP_HELP(SYSDT_VrfRdHelp, bgp::kHelp)
BGP_COMPARE_BYTES(SYSDT_VrfRdCompare)
BGP_LUA_SET(SYSDT_VrfRdLuaSet, bgp::kLua)
BGP_LUA_GET(SYSDT_VrfRdLuaGet, bgp::kLua)
BGP_ENDIAN(SYSDT_VrfRdEndian, bgp::kLayout)
