#include "bgpls/pieces.h"

#include "asnum/asnum.h"

namespace bgp {

namespace {

constexpr const char *kTypeNames[] = {"", "NODE", "LINK", "IPV4-PREFIX", "IPV6-PREFIX", "TEPOLICY", "SRV6-SID"};
constexpr const char *kProtocolNames[] = {"",       "ISIS-LEVEL-1", "ISIS-LEVEL-2", "OSPFv2", "DIRECT",
                                          "STATIC", "OSPFv3",       "BGP",          "",       "SEGMENT-ROUTING"};

template <uint32_t Count>
constexpr const char *NameOf(const char *const (&names)[Count], uint32_t value)
{
    return value < Count ? names[value] : "";
}

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

} // namespace

const char *LsTypeName(uint32_t nlriType)
{
    return NameOf(kTypeNames, nlriType);
}

const char *LsProtocolName(uint32_t protocolId)
{
    return NameOf(kProtocolNames, protocolId);
}

uint32_t SYSDT_AsNumToStr(const uint8_t *at, char (&text)[kSmallPiece])
{
    const auto as = Load<AsNumber>(at);
    text[0] = '\0';
    if (as.number == 0) {
        return DT_ERR_FAIL;
    }
    const Argument halves[] = {as.number >> 16, as.number & 0xFFFF};
    const Argument whole[] = {as.number};
    Format(text, sizeof text, as.notation != 0 ? "%u.%u" : "%u", as.notation != 0 ? halves : whole);
    return DT_OK;
}

void SYSDT_OriginatorAsNumToStr(const uint8_t *at, char (&text)[kSmallPiece])
{
    if (SYSDT_AsNumToStr(at, text) != DT_OK) {
        std::memcpy(text, "0", sizeof "0");
    }
}

uint32_t SYSDT_MemberAsNumToStr(const uint8_t *at, char (&text)[kNodePiece])
{
    char as[kSmallPiece];
    text[0] = '\0';
    if (SYSDT_AsNumToStr(at, as) != DT_OK) {
        return DT_OK;
    }
    return snprintf_s(text, kSmallPiece, kSmallPiece - 1, "[member-as%s]", as) < 0 ? DT_ERR_FAIL : DT_OK;
}

void BgpLsIdToStr(const uint8_t *at, const uint8_t *existFlag, uint32_t existBit, char (&text)[kIdPiece])
{
    text[0] = '\0';
    if ((Load<uint32_t>(existFlag) & existBit) != 0) {
        const Dotted identifier(at);
        const Argument arguments[] = {identifier.text};
        Format(text, sizeof text, "[bgp-ls-identifier%s]", arguments);
    }
}

void IgpRouterIdToStr(const uint8_t *area, char (&text)[kNodePiece])
{
    const size_t length = strnlen(reinterpret_cast<const char *>(area), kNodePiece - 1);
    std::memcpy(text, area, length);
    text[length] = '\0';
}

void SYSDT_LS_Ipv4Ipv6ToStr(const uint8_t *at, char (&text)[kAddressPiece])
{
    const auto address = Load<BgpLsAddress>(at);
    text[0] = '\0';
    if (address.flag == 0) {
        QOV_IpAddrToStr(Load<uint32_t>(address.ipv4), text);
    } else if (address.flag == 1) {
        inet_ntop6(address.ipv6, text, sizeof text);
    }
}

uint32_t Append(const Output &output, const char *format, const Argument *arguments)
{
    if (*output.printed >= output.limit) {
        return DT_ERR_FAIL;
    }
    const int32_t written = Print(output.buffer + *output.printed, output.limit - *output.printed, format, arguments);
    if (written < 0) {
        return DT_ERR_FAIL;
    }
    *output.printed += static_cast<uint32_t>(written);
    return DT_OK;
}

uint32_t AppendMt(const Output &output, const MtFormats &formats, uint32_t mtId, const Argument *arguments)
{
    return mtId != kLsNoMtId ? Append(output, formats.with, arguments)
                             : Append(output, formats.without, arguments + formats.skip);
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
