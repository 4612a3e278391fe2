#include "fields.h"

#include "bytes.h"
#include "igp_router_id.h"

#include <cstring>

namespace bgp::explain {

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

std::string NumbersText(const BgpField &field, const std::string &value)
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
        return NumbersText(field, value);
    case BGP_FIELD_ADDRESS:
        return AddressText(AddressAt(value, field.Offset));
    case BGP_FIELD_AS:
        return AsText(value, field.Offset);
    case BGP_FIELD_IPV4:
        return Ipv4Text(static_cast<uint32_t>(HostNumber(value, field.Offset, 4)));
    case BGP_FIELD_TEXT:
        return std::string(value.c_str() + field.Offset, strnlen(value.c_str() + field.Offset, field.Count));
    case BGP_FIELD_IGP_ID:
        return IgpRouterIdText(value.substr(field.Offset, size_t{field.Width} * field.Count),
                               NumberOf(layout, value, "uiProtocolId"));
    default:
        return field.Count <= 1 ? NumbersText(field, value) : Hex(value.substr(field.Offset, field.Count));
    }
}

const BgpLayout *LayoutOf(const PlugIn &plugIn, uint32_t typeId, const std::string &value)
{
    return plugIn.describeValue(typeId, value.data(), static_cast<uint32_t>(value.size()));
}

size_t UnitOf(const BgpLayout *layout, const std::string &value)
{
    return layout == nullptr || layout->Length == 0 ? value.size() : layout->Length;
}

} // namespace

std::vector<Field> Fields(const PlugIn &plugIn, uint32_t typeId, const std::string &value)
{
    const BgpLayout *layout = LayoutOf(plugIn, typeId, value);
    std::vector<Field> fields;
    for (uint32_t i = 0; layout != nullptr && i < layout->FieldCount; ++i) {
        const BgpField &field = layout->Fields[i];
        const size_t length = size_t{field.Width} * field.Count;
        if (field.Offset + length <= value.size()) {
            fields.push_back({field.Name, field.Offset, length, ValueText(field, *layout, value)});
        }
    }
    return fields;
}

Record::Record(const PlugIn &from, uint32_t typeId, const std::string &stored)
    : plugIn(from), value(stored), unit(UnitOf(LayoutOf(from, typeId, stored), stored)),
      fields(Fields(from, typeId, stored))
{
}

const Field *Record::Find(std::string_view name) const
{
    for (const Field &field : fields) {
        if (field.name == name) {
            return &field;
        }
    }
    return nullptr;
}

uint64_t Record::Number(std::string_view name) const
{
    const Field *field = Find(name);
    return field == nullptr ? 0 : HostNumber(value, field->offset, field->length);
}

std::string Record::BytesOf(std::string_view name) const
{
    const Field *field = Find(name);
    return field == nullptr ? "" : Bytes(value, field->offset, field->length);
}

Address Record::AddressOf(std::string_view name) const
{
    const Field *field = Find(name);
    return field == nullptr ? Address() : AddressAt(value, field->offset);
}

Address Record::EitherAddress(std::string_view ipv4, std::string_view ipv6, std::string_view family) const
{
    return Number(family) == 0 ? Ipv4(ipv4) : BytesOf(ipv6);
}

uint32_t Record::As(std::string_view name) const
{
    const Field *field = Find(name);
    return field == nullptr ? 0 : static_cast<uint32_t>(HostNumber(value, field->offset, 4));
}

} // namespace bgp::explain
