// The 21-byte address field of route keys, BGP-LS keys and typed items: an address of either family, and which one it
// is.
//
//   bytes  field   width  meaning
//   0-3    IPv4    u32    host order, first octet most significant
//   4-19   IPv6    16     in address order
//   20     family  u8     0 IPv4, 1 IPv6; only the member that it names is filled
#ifndef BGP_HOST_ADDRESS_FIELD_H
#define BGP_HOST_ADDRESS_FIELD_H

#include "bgp_datatypes.h"
#include "host/address.h"

#include <cstdint>

namespace bgp {

inline constexpr uint32_t kAddressFieldSize = 21;
inline constexpr uint32_t kAddressIpv6At = 4;
inline constexpr uint32_t kAddressFamilyAt = 20;
inline constexpr uint32_t kIpv6Size = 16;
inline constexpr uint8_t kIpv4Family = 0;
inline constexpr uint8_t kIpv6Family = 1;
inline constexpr uint32_t kAddressTextSize = 64; // room for the text of any address

// The row of an address field in a layout.
constexpr BgpField AddressField(const char *name, uint16_t offset)
{
    return {name, offset, kAddressFieldSize, 1, BGP_FIELD_ADDRESS, 0, 0};
}

// Address and family; the other member stays as it is.
void SetIpv4(uint8_t *field, uint32_t address);
void SetIpv6(uint8_t *field, const uint8_t *address16);

// An IPv4 address, as the host reads it, into the field. `copy` is the piece, terminated. False with a reason when it
// is none.
bool ReadIpv4(const char *copy, Text piece, uint8_t *field, const AddressWords &words, Why *why);

// The address as text of kAddressTextSize characters at most: four decimal octets, or the host's IPv6 text. The family
// is the field's own or the given one. False for families other than the two: nothing is written.
bool AddressText(const uint8_t *field, char *text);
bool AddressTextAs(const uint8_t *field, uint32_t family, char *text);

// 16 bytes in address order as the host's QOV_Inet_ntoa_b_ipv6() writes them, which decides about the room: 46
// characters.
void Ipv6Text(const uint8_t *address16, char *text);

// -1, 0 or 1 as the host orders two address fields.
int32_t CompareAddresses(const uint8_t *left, const uint8_t *right);

// Leaves the address on the stack: 16 numbers in an array for IPv6, the IPv4 word as a number otherwise.
void LuaPushAddress(lua_State *L, const uint8_t *field, uint32_t family);

// The item on top of the stack into the field: a number for IPv4, which stays on the stack; an array of 16 numbers for
// IPv6, which is popped with its elements. Other families name no address: nothing is read. DT_ERR_INVALID_PARAM for an
// item of the wrong kind, which stays with the elements that were fetched.
uint32_t LuaReadAddress(lua_State *L, uint32_t family, uint8_t *field);

} // namespace bgp

#endif
