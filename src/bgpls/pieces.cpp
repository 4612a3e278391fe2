#include "bgpls/pieces.h"

#include "asnum/asnum.h"
#include "host/address_field.h"

namespace bgp {

namespace {

uint32_t CopyName(const char *name, char *buffer)
{
    if (buffer == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    if (*name != '\0') {
        std::memcpy(buffer, name, std::strlen(name) + 1);
    }
    return DT_OK;
}

uint32_t BgpLsIdToStr(uint32_t identifier, bool isGiven, char *buffer)
{
    if (buffer == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    buffer[0] = '\0';
    if (isGiven) {
        GrowingText text = GrowIn(buffer, kIdPiece);
        Put<"[bgp-ls-identifier%s]">(text, Dotted(identifier).text);
        *text.at = '\0';
    }
    return DT_OK;
}

} // namespace

const char *LsTypeName(uint32_t nlriType)
{
    return FindLsNlri(nlriType) != nullptr ? g_bgplsPrefixPattern[nlriType - 1].Keyword : "";
}

const char *LsProtocolName(uint32_t protocolId)
{
    if (protocolId < kLsIsisLevel1 || protocolId > kLsSegmentRouting) {
        return "";
    }
    const BgpLsKeyword &row = g_bgplsPrefixPattern[kLsNlriTypes - 1 + protocolId - 1]; // behind the NLRI types
    return row.Handler != nullptr ? row.Keyword : "";
}

void IgpRouterIdToStr(const uint8_t *area, char (&text)[kNodePiece])
{
    const size_t length = strnlen(reinterpret_cast<const char *>(area), kNodePiece - 1);
    std::memcpy(text, area, length);
    text[length] = '\0';
}

} // namespace bgp

uint32_t SYSDT_LS_RouteTypeEnum2Str(uint32_t nlriType, char *buffer)
{
    return bgp::CopyName(bgp::LsTypeName(nlriType), buffer);
}

uint32_t SYSDT_LS_ProtclTypeEnum2Str(uint32_t protocolId, char *buffer)
{
    return bgp::CopyName(bgp::LsProtocolName(protocolId), buffer);
}

uint32_t SYSDT_AsNumToStr(const void *as, char *buffer)
{
    if (as == nullptr || buffer == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    const auto [number, notation] = bgp::Load<BgpLsAsNumber>(as);
    buffer[0] = '\0';
    if (number == 0) {
        return DT_ERR_FAIL;
    }
    bgp::GrowingText text = bgp::GrowIn(buffer, bgp::kSmallPiece);
    if (notation != 0) {
        bgp::Put<"%u.%u">(text, bgp::HighHalf(number), bgp::LowHalf(number));
    } else {
        bgp::Put<"%u">(text, number);
    }
    *text.at = '\0';
    return DT_OK;
}

uint32_t SYSDT_OriginatorAsNumToStr(const void *as, char *buffer)
{
    const uint32_t code = SYSDT_AsNumToStr(as, buffer);
    if (code != DT_ERR_FAIL) {
        return code;
    }
    std::memcpy(buffer, "0", sizeof "0");
    return DT_OK;
}

uint32_t SYSDT_MemberAsNumToStr(const void *as, char *buffer)
{
    if (as == nullptr || buffer == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    char number[bgp::kSmallPiece];
    buffer[0] = '\0';
    if (SYSDT_AsNumToStr(as, number) != DT_OK) {
        return DT_OK;
    }
    return snprintf_s(buffer, bgp::kSmallPiece, bgp::kSmallPiece - 1, "[member-as%s]", number) < 0 ? DT_ERR_FAIL
                                                                                                   : DT_OK;
}

uint32_t SYSDT_LocalBgpLsIdToStr(uint32_t identifier, uint32_t existFlag, char *buffer)
{
    return bgp::BgpLsIdToStr(identifier, (existFlag & bgp::kLsLocalIdGiven) != 0, buffer);
}

uint32_t SYSDT_RemoteBgpLsIdToStr(uint32_t identifier, uint32_t existFlag, char *buffer)
{
    return bgp::BgpLsIdToStr(identifier, (existFlag & bgp::kLsRemoteIdGiven) != 0, buffer);
}

uint32_t SYSDT_LS_Ipv4Ipv6ToStr(const void *address, char *buffer, uint32_t size)
{
    constexpr uint32_t kLongestIpv4 = 15;
    constexpr uint32_t kLongestIpv6 = 45;
    if (address == nullptr || buffer == nullptr || size == 0) {
        return DT_ERR_NULL_PTR;
    }
    const auto *field = static_cast<const uint8_t *>(address);
    const uint8_t family = field[bgp::kAddressFamilyAt];
    buffer[0] = '\0';
    if (family == bgp::kIpv4Family && size > kLongestIpv4) {
        QOV_IpAddrToStr(bgp::Load<uint32_t>(field), buffer);
    } else if (family == bgp::kIpv6Family && size > kLongestIpv6) {
        inet_ntop6(field + bgp::kAddressIpv6At, buffer, size);
    }
    return DT_OK;
}
