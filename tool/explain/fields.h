// The fields of a value, by the plug-in's own description of its layout.
#ifndef BGP_EXPLAIN_FIELDS_H
#define BGP_EXPLAIN_FIELDS_H

#include "address.h"
#include "plugin.h"

#include <string>
#include <string_view>
#include <vector>

namespace bgp::explain {

struct Field {
    std::string name;
    size_t offset, length; // bytes
    std::string text;      // in words: numbers, addresses, bytes
};

// Empty for a value without a layout.
std::vector<Field> Fields(const PlugIn &plugIn, uint32_t typeId, const std::string &value);

// A value and its fields, found by the names of its layout. What it does not have is zero.
struct Record {
    const PlugIn &plugIn;
    const std::string &value;
    size_t unit; // bytes of a whole value; of the lists those of one entry
    std::vector<Field> fields;

    Record(const PlugIn &from, uint32_t typeId, const std::string &stored);
    const Field *Find(std::string_view name) const; // null when there is none
    bool Has(std::string_view name) const { return Find(name) != nullptr; }
    uint64_t Number(std::string_view name) const;
    std::string NumberText(std::string_view name) const { return std::to_string(Number(name)); }
    std::string BytesOf(std::string_view name) const;
    bool IsZero(std::string_view name) const { return IsUnspecified(BytesOf(name)); }
    Address Ipv4(std::string_view name) const { return Ipv4Address(static_cast<uint32_t>(Number(name))); }
    Address AddressOf(std::string_view name) const;
    // Of two fields instead of one address field, the one that the family says.
    Address EitherAddress(std::string_view ipv4, std::string_view ipv6, std::string_view family) const;
    uint32_t As(std::string_view name) const; // the number alone; the notation is in the fields
};

} // namespace bgp::explain

#endif
