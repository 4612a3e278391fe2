// MDT, sub-type 11 of BOLPREFIX, and the type MDTPREFIX: the key of a multicast distribution tree route (RFC 6037, MDT
// SAFI), the address of a PE and the group of its default tree.
//
//   bytes  field        width  meaning
//   0-3    sub-type     u32    11
//   4-7    prefix       u32    IPv4 address of the PE, first octet most significant
//   8-11   group        u32    IPv4 multicast group, 0 in typed values
//   12-15  mask length  u32    0 to 32
//   16-88  -                   zero
//
// Typed as "a.b.c.d/m" (only as MDTPREFIX), printed as the prefix alone. MDTPREFIX is registered with a length of 12,
// the fields behind the sub-type; only Endian works on that form, and leaves the group as it is. All memory comes from
// the host's plain allocator instead of the request's handle.
#include "host/bytes.h"
#include "host/operations.h"
#include "prefix/route_keys.h"

namespace bgp {

namespace {

constexpr uint16_t kGroupAt = kPayloadAt + 4;
constexpr uint16_t kMaskAt = kPayloadAt + 8;

constexpr BgpField kFields[] = {
    Number("bolType", 0, 4),
    Ipv4Word("bolMdtPrefix", kPayloadAt),
    Ipv4Word("bolMdtGrpAddr", kGroupAt),
    Number("bolMdtMaskLen", kMaskAt, 4),
};

constexpr BgpField kShortFields[] = {
    Ipv4Word("bolMdtPrefix", 0),
    Number("bolMdtMaskLen", 8, 4),
};

constexpr BgpLayout kShortLayout = Layout(kShortFields, 12);

constexpr BgpLayout kLayout = Layout(kFields, kBolPrefixLength);

constexpr NumbersRule kText = NumbersText(7, 35, "./", kMaskedPrefix);

bool Read(const char *text, uint8_t *payload, Why *why)
{
    return ReadMaskedPrefix(kText, kMaskAt - kPayloadAt, text, payload, why);
}

constexpr FormatInRule kIn = InPlainMemory(RouteKeyIn(ReadKey<kMdtSubType, Read>));
constexpr FormatOutRule kOut = InPlainMemory(RouteKeyOut(PrintKey<SYSDT_MdtPrefix2Str>));
constexpr HelpRule kHelp{.text = "X.X.X.X/M or X.X.X.X", .memory = Memory::kPlain};
constexpr LuaRule kLua{.layout = kLayout, .pops = 0};
constexpr KeyLuaRule kLuaGet{.layout = kLayout, .subType = kMdtSubType, .pops = 4};
constexpr ReaderRule kReader{.layout = kLayout, .pops = 4};

} // namespace

constinit const Type kMdt = MakeSubType({
    .name = "MDT",
    .description = "the key of a multicast distribution tree route",
    .reference = "RFC 6037",
    .out = &kOut,
    .layout = &kLayout,
    .subType = kMdtSubType,
    .lua = BGP_LUA_LOSES,
    .traits = BGP_TRAIT_NO_TEXT,
});

constinit const Type kMdtPrefix = MakeType({
    .name = "MDTPREFIX",
    .description = "the key of a multicast distribution tree route",
    .reference = "RFC 6037",
    .in = &kIn,
    .out = &kOut,
    .layout = &kLayout,
    .text = &kText,
    .rules = kMaskedPrefixRules,
    .typeId = 296,
    .network = BGP_NETWORK_PAYLOAD,
    .lua = BGP_LUA_TYPED,
});

} // namespace bgp

uint32_t SYSDT_Str2MdtPrefix(const char *text, void *payload)
{
    return bgp::ParsePayload<bgp::Read>(text, payload);
}

uint32_t SYSDT_MdtPrefix2Str(const void *payload, char *buffer, uint32_t *printed)
{
    return bgp::PrintIpv4Word(payload, buffer, printed);
}

BGP_FORMAT_IN(SYSDT_MdtPrefixFormatIn, bgp::kIn)
BGP_FORMAT_OUT(SYSDT_MdtPrefixFormatOut, bgp::kOut)
BGP_KEY_CHECK(SYSDT_MdtPrefixCheck)
BGP_HELP(SYSDT_MdtPrefixHelp, bgp::kHelp)
BGP_COMPARE_BYTES(SYSDT_MdtPrefixCompare)
BGP_LUA_SET(SYSDT_MdtPrefixLuaSet, bgp::kLua)
BGP_KEY_LUA_GET(SYSDT_MdtPrefixLuaGet, bgp::kLuaGet)
BGP_ENDIAN(SYSDT_MdtLuaEndian, bgp::kShortLayout)
BGP_KEY_READER(SYSDT_MdtPrefixNewLuaGet, bgp::kReader)
