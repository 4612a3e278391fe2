#include "explain.h"

#include "bgp_host_services.h"
#include "bgp_standalone_host.hpp"
#include "explainers.h"
#include "values.h"

#include <arpa/inet.h>
#include <cstring>

namespace bgpdt {

uint64_t HostNumber(const std::string &value, size_t offset, size_t width)
{
    uint64_t number = 0;
    for (size_t i = width; i-- > 0;) {
        number = number << 8 | static_cast<uint8_t>(offset + i < value.size() ? value[offset + i] : 0);
    }
    return number;
}

uint64_t WireNumber(const std::string &value, size_t offset, size_t width)
{
    uint64_t number = 0;
    for (size_t i = 0; i < width; ++i) {
        number = number << 8 | static_cast<uint8_t>(offset + i < value.size() ? value[offset + i] : 0);
    }
    return number;
}

std::string Ipv4Text(uint32_t address)
{
    char text[INET_ADDRSTRLEN];
    const uint32_t wire = htonl(address);
    return inet_ntop(AF_INET, &wire, text, sizeof text);
}

std::string Ipv6Text(const std::string &value, size_t offset)
{
    char text[INET6_ADDRSTRLEN];
    return inet_ntop(AF_INET6, Bytes(value, offset, 16).data(), text, sizeof text);
}

std::string Bytes(const std::string &value, size_t offset, size_t count)
{
    std::string bytes = offset < value.size() ? value.substr(offset, count) : "";
    bytes.resize(count);
    return bytes;
}

namespace {

uint64_t NumberOf(const BgpLayout &layout, const std::string &value, std::string_view name)
{
    for (uint32_t i = 0; i < layout.FieldCount; ++i) {
        if (layout.Fields[i].Name == name) {
            return HostNumber(value, layout.Fields[i].Offset, layout.Fields[i].Width);
        }
    }
    return 0;
}

std::string NumberText(const BgpField &field, const std::string &value)
{
    std::string text;
    for (size_t i = 0; i < field.Count; ++i) {
        text += (i == 0 ? "" : " ") + std::to_string(HostNumber(value, field.Offset + i * field.Width, field.Width));
    }
    return text;
}

std::string AsText(const std::string &value, size_t offset)
{
    const auto number = static_cast<uint32_t>(HostNumber(value, offset, 4));
    const bool dotted = HostNumber(value, offset + 4, 4) != 0;
    return dotted ? std::to_string(number >> 16) + '.' + std::to_string(number & 0xFFFF) : std::to_string(number);
}

std::string ValueText(const BgpField &field, const BgpLayout &layout, const std::string &value)
{
    switch (field.Kind) {
    case BGP_FIELD_NUMBER:
        return NumberText(field, value);
    case BGP_FIELD_ADDRESS:
        return AddressText(AddressAt(value, field.Offset));
    case BGP_FIELD_AS:
        return AsText(value, field.Offset);
    case BGP_FIELD_IPV4:
        return Ipv4Text(static_cast<uint32_t>(HostNumber(value, field.Offset, 4)));
    case BGP_FIELD_TEXT:
        return std::string(value.c_str() + field.Offset, strnlen(value.c_str() + field.Offset, field.Count));
    case BGP_FIELD_IGP_ID:
        return IgpRouterIdText(value, field.Offset, NumberOf(layout, value, "uiProtocolId"));
    default:
        if (field.Count <= 1) {
            return NumberText(field, value);
        }
        return Hex(value.substr(field.Offset, field.Count));
    }
}

} // namespace

std::vector<FieldText> Fields(uint32_t typeId, const std::string &value)
{
    using Describe = const BgpLayout *(*)(uint32_t, const void *, uint32_t);
    const auto describe = reinterpret_cast<Describe>(bgp::standalone::PlugInSymbol("Bgp_DescribeValue"));
    const BgpLayout *layout =
        describe == nullptr ? nullptr : describe(typeId, value.data(), static_cast<uint32_t>(value.size()));
    std::vector<FieldText> fields;
    for (uint32_t i = 0; layout != nullptr && i < layout->FieldCount; ++i) {
        const BgpField &field = layout->Fields[i];
        const size_t length = size_t{field.Width} * field.Count;
        if (field.Offset + length <= value.size()) {
            fields.push_back({field.Name, field.Offset, length, ValueText(field, *layout, value)});
        }
    }
    return fields;
}

std::vector<std::string> Explain(uint32_t typeId, const std::string &value)
{
    std::vector<std::string> lines;
    for (const Explainer &explainer : kExplainers) {
        if (explainer.typeId == typeId) {
            explainer.explain(value, lines);
        }
    }
    return lines;
}

std::string KindOf(uint32_t typeId, const std::string &value)
{
    constexpr uint32_t kBolPrefix = 279, kEvnPrefix = 281, kBgpLsPrefix = 1299;
    constexpr uint64_t kEvn = 1;
    constexpr const char *kNlriTypes[] = {"unknown",     "NODE",     "LINK",    "IPV4-PREFIX",
                                          "IPV6-PREFIX", "TEPOLICY", "SRV6-SID"};
    const uint64_t kind = HostNumber(value, 0, 4);
    if (typeId == kBgpLsPrefix) {
        return kNlriTypes[kind < std::size(kNlriTypes) ? kind : 0];
    }
    if (typeId != kBolPrefix && typeId != kEvnPrefix) {
        return "";
    }
    const std::string name = SubTypeName(kind);
    return kind == kEvn ? name + " type " + std::to_string(HostNumber(value, 4, 1)) : name;
}

const FieldText *FindField(const std::vector<FieldText> &fields, std::string_view name)
{
    for (const FieldText &field : fields) {
        if (field.name == name) {
            return &field;
        }
    }
    return nullptr;
}

} // namespace bgpdt
