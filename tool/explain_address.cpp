// Addresses and prefixes of either family, with what is odd about them.
#include "explainers.h"

#include <algorithm>

namespace bgpdt {

namespace {

size_t Bits(const Address &address)
{
    return 8 * address.size();
}

bool HasBitsBehind(const Address &address, uint64_t length)
{
    for (size_t bit = length; bit < Bits(address); ++bit) {
        if ((static_cast<uint8_t>(address[bit / 8]) >> (7 - bit % 8) & 1) != 0) {
            return true;
        }
    }
    return false;
}

} // namespace

Address Ipv4Address(uint32_t word)
{
    Address address;
    for (int shift = 24; shift >= 0; shift -= 8) {
        address += static_cast<char>(word >> shift);
    }
    return address;
}

// IPv4 word u32 in host order, 16 IPv6 bytes, family u8 (0 IPv4, 1 IPv6).
Address AddressAt(const std::string &value, size_t offset)
{
    switch (HostNumber(value, offset + 20, 1)) {
    case 0:
        return Ipv4Address(static_cast<uint32_t>(HostNumber(value, offset, 4)));
    case 1:
        return Bytes(value, offset + 4, 16);
    default:
        return "";
    }
}

std::string AddressText(const Address &address)
{
    switch (address.size()) {
    case 4:
        return Ipv4Text(static_cast<uint32_t>(WireNumber(address, 0, 4)));
    case 16:
        return Ipv6Text(address, 0);
    default:
        return "an address of unknown family";
    }
}

bool IsMulticast(const Address &address)
{
    const uint64_t first = WireNumber(address, 0, 1);
    return address.size() == 4 ? first >> 4 == 0xE : first == 0xFF;
}

bool IsUnspecified(const Address &address)
{
    return std::all_of(address.begin(), address.end(), [](char byte) { return byte == '\0'; });
}

std::string PrefixText(const Address &address, uint64_t length)
{
    const std::string text = AddressText(address) + '/' + std::to_string(length);
    if (length > Bits(address)) {
        return text + " (longer than the " + std::to_string(Bits(address)) + " bits of an address)";
    }
    if (HasBitsBehind(address, length)) {
        return text + " (with bits set behind the prefix)";
    }
    return length == 0 ? text + " (the default route)" : text;
}

std::string HostText(const Address &address, uint64_t length)
{
    const std::string text = AddressText(address);
    return length == Bits(address) ? text
                                   : text + " (length " + std::to_string(length) + ", not the " +
                                         std::to_string(Bits(address)) + " bits of an address)";
}

} // namespace bgpdt
