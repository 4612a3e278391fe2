// The text and address helpers that several types share, under their own exported names.
#include "bgp_datatypes/helpers.h"
#include "host/bytes.h"
#include "bgp_host_services.h"
#include "host/numbers.h"

uint32_t SYSDT_atoul(const char *text, uint32_t *value)
{
    constexpr uint32_t kFailed = 0xFFFFFFFF;
    if (text == nullptr || value == nullptr) {
        return kFailed;
    }
    *value = 0;
    while (bgp::IsWhiteSpace(*text)) {
        ++text;
    }
    uint64_t number = 0;
    if (bgp::ReadNumber(text, text + std::strlen(text), &number) == nullptr || number > UINT32_MAX) {
        return kFailed;
    }
    *value = static_cast<uint32_t>(number);
    return DT_OK;
}

uint32_t SYSDT_getStrDotNum(const char *text)
{
    uint32_t dots = 0;
    for (; *text != '\0'; ++text) {
        if (*text == '.') {
            ++dots;
        } else if (!bgp::IsDigit(*text)) {
            return DT_ERR_FAIL;
        }
    }
    return dots;
}

uint32_t BGP_DATATYPE_IsHex(char character)
{
    return bgp::IsHexDigit(character);
}

void SYSDT_Ipv6AddrNtoH(const void *body, uint16_t *words)
{
    constexpr uint32_t kEndpoint = 12; // behind distinguisher, colour and IPv4 endpoint
    const auto *address = static_cast<const uint8_t *>(body) + kEndpoint;
    for (uint32_t i = 0; i < 8; ++i) {
        words[i] = static_cast<uint16_t>(bgp::LoadBig(address + 2 * i, 2));
    }
}

uint32_t SYSDT_ipv6AddrUnSpecified(const uint8_t *address16)
{
    uint8_t any = 0;
    for (uint32_t i = 0; i < 16; ++i) {
        any |= address16[i];
    }
    return any == 0;
}

uint32_t SYSDT_IsIpv6MultiCastAddr(const char *text)
{
    uint8_t address[16];
    if (SYSDT_Str2Ipv6(text, address, 0) != 0) {
        return DT_ERR_FAIL;
    }
    return address[0] == 0xFF;
}

uint32_t SYSDT_Str2IPv4IPv6(const char *text, BgpAddressRecord *record)
{
    record->Family = QOV_StrChr(text, ':') != nullptr;
    const uint32_t code =
        record->Family != 0 ? SYSDT_Str2Ipv6(text, record->Ipv6, 0) : SYSDT_Str2Ipv4(text, &record->Ipv4);
    return code == 0 ? DT_OK : DT_ERR_FAIL;
}

// The two failures report differently; callers tell by the code which family was tried.
uint32_t SYSDT_Str2SysIpv4Ipv6(const char *text, uint32_t, BgpAddressRecord *record)
{
    record->Family = QOV_StrChr(text, ':') != nullptr;
    if (record->Family != 0) {
        return SMP_InetAToN6(text, record->Ipv6) == 0 ? DT_OK : DT_ERR_INVALID_PARAM;
    }
    return QOV_StrToIpAddr(text, &record->Ipv4) == 0 ? DT_OK : DT_ERR_FAIL;
}

uint32_t SYSDT_Str2Ipv4Ipv6(const char *text, uint32_t *ipv4, uint8_t *ipv6)
{
    return QOV_StrChr(text, ':') != nullptr ? SYSDT_Str2Ipv6(text, ipv6, 0) : SYSDT_Str2Ipv4(text, ipv4);
}
