#include "address.h"

#include "bytes.h"

#include <algorithm>
#include <arpa/inet.h>

namespace bgp::explain {

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

std::string Ipv4Text(uint32_t word)
{
    return AddressText(Ipv4Address(word));
}

std::string AddressText(const Address &address)
{
    if (address.size() != 4 && address.size() != 16) {
        return "an address of unknown family";
    }
    char text[INET6_ADDRSTRLEN];
    return inet_ntop(address.size() == 4 ? AF_INET : AF_INET6, address.data(), text, sizeof text);
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

} // namespace bgp::explain
