// L2VPN, sub-type 9 of BOLPREFIX, and the type L2VPNPREFIX: the key of a BGP layer-2 VPN or VPLS route (RFC 4761), a
// site and a label block.
//
//   bytes  field         width  meaning
//   0-3    sub-type      u32    9
//   4-5    site          u16    site (VE) identifier
//   6-7    label offset  u16    first of the sites that the label block serves
//   8-88   -                    zero
//
// It prints as "site/offset" and cannot be typed in. L2VPNPREFIX is registered with a length of 4, yet all operations
// work on this layout of 89 bytes; its Check, Help and Compare are those of the VPLS auto-discovery key.
#include "host/bytes.h"
#include "host/format.h"
#include "host/operations.h"
#include "prefix/route_keys.h"

namespace bgp {

namespace {

constexpr BgpField kFields[] = {
    Number("bolType", 0, 4),
    Number("bolSiteId", kPayloadAt, 2),
    Number("bolLabelOffSet", kPayloadAt + 2, 2),
};

constexpr BgpLayout kLayout = Layout(kFields, kBolPrefixLength);

constexpr FormatOutRule kOut = OfSubType(RouteKeyOut(PrintKey<SYSDT_L2VPNPrefix2Str>), kL2vpnSubType, false);
constexpr LuaRule kLua{.layout = kLayout, .pops = 0};
constexpr KeyLuaRule kLuaGet{.layout = kLayout, .subType = kL2vpnSubType, .pops = 3};
constexpr ReaderRule kReader{.layout = kLayout, .pops = 3};

} // namespace

constinit const Type kL2vpn = MakeSubType({
    .name = "L2VPN",
    .description = "the key of a BGP layer-2 VPN route",
    .reference = "RFC 4761",
    .out = &kOut,
    .layout = &kLayout,
    .subType = kL2vpnSubType,
    .order = BGP_ORDER_NONE, // Compare is that of sub-type 0
    .lua = BGP_LUA_LOSES,
    .traits = BGP_TRAIT_NO_TEXT,
});

constinit const Type kL2vpnPrefix = MakeType({
    .name = "L2VPNPREFIX",
    .description = "the key of a BGP layer-2 VPN route",
    .reference = "RFC 4761",
    .out = &kOut,
    .layout = &kLayout,
    .typeId = 294,
    .order = BGP_ORDER_NONE,
    .network = BGP_NETWORK_LAYOUT,
    .lua = BGP_LUA_LOSES,
    .traits = BGP_TRAIT_NO_TEXT,
    .explain = [](const DataTypeRequest &, const char *, BgpRefusal &) -> uint32_t { return DT_OK; },
});

} // namespace bgp

uint32_t SYSDT_L2VPNPrefix2Str(const void *payload, char *buffer, uint32_t *printed)
{
    const auto *bytes = static_cast<const uint8_t *>(payload);
    bgp::GrowingText text = bgp::GrowIn(buffer, bgp::kPrintLimit);
    if (!bgp::Print<"%u">(text, bgp::Load<uint16_t>(bytes)) ||
        !bgp::Print<"/%u">(text, bgp::Load<uint16_t>(bytes + sizeof(uint16_t)))) {
        return DT_ERR_FAIL;
    }
    *printed = bgp::Length(text);
    return DT_OK;
}

// Such keys are not typed in; the type's row needs an operation here all the same, and hosts count on its success.
uint32_t SYSDT_L2VPNPrefixFormatIn(const DataTypeRequest *, uint32_t, uint32_t, char *, uint16_t *, uint16_t *, void **)
{
    return DT_OK;
}

uint32_t SYSDT_L2VPNPrefixFormatOutEx(const DataTypeRequest *request, uint32_t length, const void *value,
                                      uint16_t *outTypeId, uint16_t *outLength, void **outBuffer)
{
    return bgp::FormatOut(bgp::kOut, request, length, value, {outTypeId, outLength, outBuffer});
}

BGP_FORMAT_OUT(SYSDT_L2VPNPrefixFormatOut, bgp::kOut)
BGP_LUA_SET(SYSDT_L2VPNPrefixLuaSet, bgp::kLua)
BGP_KEY_LUA_GET(SYSDT_L2VPNPrefixLuaGet, bgp::kLuaGet)
BGP_KEY_READER(SYSDT_L2VPNPrefixNewLuaGet, bgp::kReader)
