// The address field: set, read, print, compare, and to and from Lua.
#include "host/address_field.h"

#include "host/bytes.h"
#include "host/contract.h"
#include "host/format.h"

namespace bgp {

void SetIpv4(uint8_t *field, uint32_t address)
{
    Store(field, address);
    field[kAddressFamilyAt] = kIpv4Family;
}

void SetIpv6(uint8_t *field, const uint8_t *address16)
{
    std::memcpy(field + kAddressIpv6At, address16, kIpv6Size);
    field[kAddressFamilyAt] = kIpv6Family;
}

bool ReadIpv4(const char *copy, Text piece, uint8_t *field, const AddressWords &words, Why *why)
{
    uint32_t address = 0;
    if (SYSDT_Str2Ipv4(copy, &address) != 0) {
        return RefuseIpv4(why, piece, words);
    }
    SetIpv4(field, address);
    return true;
}

bool AddressText(const uint8_t *field, char *text)
{
    return AddressTextAs(field, field[kAddressFamilyAt], text);
}

bool AddressTextAs(const uint8_t *field, uint32_t family, char *text)
{
    if (family == kIpv4Family) {
        const auto address = Load<uint32_t>(field);
        static_assert(kRoom<"%u.%u.%u.%u", uint8_t, uint8_t, uint8_t, uint8_t> <= kAddressTextSize);
        *Write<"%u.%u.%u.%u">(text, OctetOf<0>(address), OctetOf<1>(address), OctetOf<2>(address),
                              OctetOf<3>(address)) = '\0';
        return true;
    }
    if (family != kIpv6Family) {
        return false;
    }
    std::memset(text, 0, kAddressTextSize);
    Ipv6Text(field + kAddressIpv6At, text);
    text[kAddressTextSize - 1] = '\0';
    return true;
}

void Ipv6Text(const uint8_t *address16, char *text)
{
    uint32_t words[4]; // the eight 16-bit groups in host order, as the service takes them
    std::memcpy(words, address16, sizeof words);
    for (uint32_t &word : words) {
        word = (word & 0x00FF00FF) << 8 | (word >> 8 & 0x00FF00FF);
    }
    QOV_Inet_ntoa_b_ipv6(words[0], words[1], words[2], words[3], text);
}

int32_t CompareAddresses(const uint8_t *left, const uint8_t *right)
{
    return SYSDT_Ipv4Ipv6Compare(nullptr, kAddressFieldSize, left, right);
}

void LuaPushAddress(lua_State *L, const uint8_t *field, uint32_t family)
{
    if (family == kIpv6Family) {
        LuaPushArray(L, field + kAddressIpv6At, kIpv6Size, 1);
    } else {
        SYSDT_SPTI_PushUInt(L, Load<uint32_t>(field));
    }
}

uint32_t LuaReadAddress(lua_State *L, uint32_t family, uint8_t *field)
{
    if (family == kIpv4Family) {
        if (SYSDT_SPTI_IsNumber(L, -1) == 0) {
            return DT_ERR_INVALID_PARAM;
        }
        SetIpv4(field, SYSDT_SPTI_ToUInt(L, -1));
    } else if (family == kIpv6Family) {
        if (SYSDT_SPTI_IsTable(L, -1) == 0) {
            return DT_ERR_INVALID_PARAM;
        }
        if (const uint32_t code = LuaReadArray(L, SYSDT_SPTI_GetTop(L), field + kAddressIpv6At, kIpv6Size, 1);
            code != DT_OK) {
            return code;
        }
        SYSDT_SPTI_Pop(L, kIpv6Size + 1); // the elements and the array
        field[kAddressFamilyAt] = kIpv6Family;
    }
    return DT_OK;
}

} // namespace bgp
