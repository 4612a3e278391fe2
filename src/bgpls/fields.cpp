// The fields of sections, by keyword, and what reads each. The first row whose keyword begins the group's content wins.
#include "bgpls/fields.h"

#include "asnum/asnum.h"
#include "bgpls/context.h"
#include "bgpls/record.h"
#include "host/address_field.h"
#include "host/bytes.h"
#include "host/text.h"

namespace bgp {

namespace {

// ------------------------------------------------------------------------------------------------------------ values

// Readers of one value, which say why they refuse it.

bool Dotted(const char *value, uint32_t &address, BgpLsParseContext *context)
{
    return QOV_StrToIpAddr(value, &address) == 0 || RefuseIpv4Value(context, value);
}

bool Decimal(const char *value, uint32_t &number, BgpLsParseContext *context)
{
    return QOV_StrToUint32(value, &number) == 0 || RefuseNumber(context, value, UINT32_MAX);
}

bool DecimalByte(const char *value, uint8_t &number, BgpLsParseContext *context)
{
    uint32_t wide = 0;
    const bool isRead = QOV_StrToUint32(value, &wide) == 0 && wide <= UINT8_MAX;
    number = static_cast<uint8_t>(wide);
    return isRead || RefuseNumber(context, value, UINT8_MAX);
}

bool Ipv6(const char *value, uint8_t (&address)[16], BgpLsParseContext *context)
{
    return SMP_InetAToN6(value, address) == 0 || RefuseIpv6Value(context, value);
}

bool EitherFamily(const char *value, uint8_t (&field)[kAddressFieldSize], BgpLsParseContext *context)
{
    if (QOV_StrChr(value, ':') != nullptr) {
        field[kAddressFamilyAt] = kIpv6Family;
        return SMP_InetAToN6(value, field + kAddressIpv6At) == 0 || RefuseIpv6Value(context, value);
    }
    uint32_t address = 0;
    const bool isRead = Dotted(value, address, context);
    SetIpv4(field, address);
    return isRead;
}

template <bool ZeroWelcome>
bool As(const char *value, BgpLsAsNumber &as, BgpLsParseContext *context)
{
    AsNumber number;
    if (!ReadAsNumber(Trim(value), ZeroWelcome, number, WhyOf(context))) {
        return RefusedByOther(context);
    }
    as = {number.number, number.notation};
    return true;
}

// ---------------------------------------------------------------------------------------------------- field handlers

// Most handlers are made of a reader and the member that it fills: Field<&Descriptor::member, Reader>.

template <class Descriptor, class Member>
Descriptor OwnerOf(Member Descriptor::*);

// Marks the field as given; false when it was before.
bool Claim(uint32_t &fields, uint32_t flag, BgpLsParseContext *context)
{
    const bool isFirst = (fields & flag) == 0;
    fields |= flag;
    return isFirst || RefuseGroup(context, kTwice);
}

template <auto Member, auto Read>
uint32_t Field(uint32_t flag, char *value, void *target, BgpLsParseContext *context)
{
    auto &descriptor = *static_cast<decltype(OwnerOf(Member)) *>(target);
    return Code(Claim(descriptor.Fields, flag, context) && Read(value, descriptor.*Member, context));
}

// ------------------------------------------------------------------------------------------------- node descriptors

using Node = BgpLsNodeDescriptor;

// An empty value leaves the field absent.
uint32_t NodeAs(uint32_t flag, char *value, void *target, BgpLsParseContext *context)
{
    const auto &node = *static_cast<const Node *>(target);
    const bool isAbsent = (node.Fields & flag) == 0 && Trim(value).length == 0;
    return isAbsent ? DT_OK : Field<&Node::As, As<false>>(flag, value, target, context);
}

uint32_t NodeBgpLsIdentifier(uint32_t flag, char *value, void *target, BgpLsParseContext *context)
{
    static_cast<Node *>(target)->IdentifierGiven = 1;
    return Field<&Node::BgpLsIdentifier, Dotted>(flag, value, target, context);
}

// Only TE policies insist on the dotted form.
bool BgpRouterId(const char *value, uint32_t &id, BgpLsParseContext *context)
{
    if (context->nlriType == kLsTePolicy) {
        return Dotted(value, id, context);
    }
    return QOV_StrToIpAddr(value, &id) == 0 || QOV_StrToUint32(value, &id) == 0 ||
           RefuseValue(context, value, kNoRouterId);
}

// At most two hexadecimal digits behind any white space, as "%2x" scans them.
bool HexByte(const char *value, uint8_t &byte, BgpLsParseContext *context)
{
    while (IsWhiteSpace(*value)) {
        ++value;
    }
    uint32_t number = 0;
    uint32_t digits = 0;
    for (; digits < 2 && IsHexDigit(value[digits]); ++digits) {
        const auto digit = static_cast<uint32_t>(value[digits]);
        number = number << 4 | (IsDigit(value[digits]) ? digit - '0' : (digit & 0x0F) + 9);
    }
    byte = static_cast<uint8_t>(number);
    return digits != 0 || RefusePiece(context, {value, *value != '\0'}, kNoHexDigit);
}

// System id and pseudonode, byte for byte. The separators and what follows the 17 characters are not looked at.
bool IsIsRouterId(const char *value, uint8_t *area, BgpLsParseContext *context)
{
    constexpr uint8_t kPlaces[] = {0, 2, 5, 7, 10, 12, 15};
    constexpr uint32_t kShortest = 17;
    if (std::strlen(value) < kShortest) {
        return RefuseValue(context, value, kTooShort, kShortest);
    }
    for (const uint8_t place : kPlaces) {
        if (!HexByte(value + place, *area++, context)) {
            return false;
        }
    }
    return true;
}

// "router-id" or "router-id/address", in network order. A host that takes the whole for a number has its value used for
// the address.
bool OspfRouterId(char *value, uint8_t *area, BgpLsParseContext *context)
{
    uint32_t address = 0;
    if (char *slash = std::strchr(value, '/'); slash != nullptr) {
        if (QOV_StrToIpAddr(slash + 1, &address) != 0 && QOV_StrToUint32(value, &address) != 0) {
            return RefuseIpv4Value(context, slash + 1);
        }
        StoreBig(area + sizeof address, address, sizeof address);
        *slash = '\0';
    }
    if (!Dotted(value, address, context)) {
        return false;
    }
    StoreBig(area, address, sizeof address);
    return true;
}

bool IgpRouterId(char *value, uint8_t *area, BgpLsParseContext *context)
{
    switch (context->protocolId) {
    case kLsIsisLevel1:
    case kLsIsisLevel2:
        return IsIsRouterId(value, area, context);
    case kLsOspfv2:
    case kLsOspfv3:
        return OspfRouterId(value, area, context);
    default:
        return RefuseGroup(context, kNotOfProtocol);
    }
}

// -------------------------------------------------------------------------------- link, prefix and SID descriptors

using Link = BgpLsLinkDescriptor;

// Two dotted values joined by a dot, the fourth.
uint32_t LinkIdentifier(uint32_t flag, char *value, void *target, BgpLsParseContext *context)
{
    constexpr uint32_t kCut = 4;
    auto &link = *static_cast<Link *>(target);
    char *dot = value - 1;
    for (uint32_t dots = 0; dots < kCut; ++dots) {
        dot = std::strchr(dot + 1, '.');
        if (dot == nullptr) {
            return Code(RefuseValue(context, value, kNoIdentifiers));
        }
    }
    *dot = '\0';
    return Code(Claim(link.Fields, flag, context) && Dotted(value, link.LocalId, context) &&
                Dotted(dot + 1, link.RemoteId, context));
}

enum Times { kOnce, kAgain };

// An address of either family, each kept in a place of its own. kAgain: also behind another one.
template <uint32_t Link::*Ipv4Member, uint8_t (Link::*Ipv6Member)[16], Times Which>
uint32_t LinkAddress(uint32_t flag, char *value, void *target, BgpLsParseContext *context)
{
    auto &link = *static_cast<Link *>(target);
    if (Which == kAgain) {
        link.Fields |= flag;
    } else if (!Claim(link.Fields, flag, context)) {
        return DT_ERR_FAIL;
    }
    const bool isIpv6 = QOV_StrChr(value, ':') != nullptr;
    return Code(isIpv6 ? Ipv6(value, link.*Ipv6Member, context) : Dotted(value, link.*Ipv4Member, context));
}

template <Times Which>
constexpr BgpLsHandler *kLinkInterface = LinkAddress<&Link::Ipv4Interface, &Link::Ipv6Interface, Which>;
template <Times Which>
constexpr BgpLsHandler *kLinkNeighbour = LinkAddress<&Link::Ipv4Neighbour, &Link::Ipv6Neighbour, Which>;

bool PrefixLength(const char *slash, const char *value, uint32_t &length, BgpLsParseContext *context)
{
    if (slash == nullptr) {
        return RefusePiece(context, {value + std::strlen(value), 0}, kNoSlash);
    }
    return QOV_StrToUint32(slash + 1, &length) == 0 ||
           RefuseNumber(context, slash + 1, UINT32_MAX, "the prefix length");
}

// "address/length". Of the length the low eight bits are kept, whatever it is.
uint32_t Prefix(uint32_t flag, char *value, void *target, BgpLsParseContext *context)
{
    auto &prefix = *static_cast<BgpLsPrefixDescriptor *>(target);
    char *slash = std::strchr(value, '/');
    uint32_t length = 0;
    if (!Claim(prefix.Fields, flag, context) || !PrefixLength(slash, value, length, context)) {
        return DT_ERR_FAIL;
    }
    *slash = '\0';
    prefix.Length = static_cast<uint8_t>(length);
    return Code(context->nlriType == kLsIpv4Prefix ? Dotted(value, prefix.Ipv4, context)
                                                   : Ipv6(value, prefix.Ipv6, context));
}

// Under BGP the field is not looked at.
uint32_t SidMtId(uint32_t flag, char *value, void *target, BgpLsParseContext *context)
{
    return context->protocolId == kLsBgp ? DT_OK
                                         : Field<&BgpLsSidDescriptor::MtId, Decimal>(flag, value, target, context);
}

using Te = BgpLsTeDescriptor;

} // namespace

// clang-format off
//   keyword                 flag exact handler
constinit const BgpLsKeyword kLsNodeFields[kLsNodeFieldCount] = {
    {"as",                      1, 0, NodeAs},
    {"bgp-ls-identifier",       2, 0, NodeBgpLsIdentifier},
    {"bgp-router-id",          16, 0, Field<&Node::BgpRouterId, BgpRouterId>},
    {"ospf-area-id",            4, 0, Field<&Node::OspfAreaId, Dotted>},
    {"igp-router-id",           8, 0, BgpLsParseNodeDescIgpRouterId},
    {"member-as",              32, 0, Field<&Node::MemberAs, As<false>>},
    {"ipv4-router-id",         64, 0, Field<&Node::Ipv4RouterId, Dotted>},
    {"ipv6-router-id",        128, 0, Field<&Node::Ipv6RouterId, Ipv6>},
};

constinit const BgpLsKeyword kLsLinkFields[kLsLinkFieldCount] = {
    {"identifier",              1, 0, LinkIdentifier},
    {"local",                   2, 0, kLinkInterface<kOnce>},
    {"remote",                  4, 0, kLinkNeighbour<kOnce>},
    {"link-local-id",           8, 0, Field<&Link::LocalId, Dotted>},
    {"link-remote-id",         16, 0, Field<&Link::RemoteId, Dotted>},
    {"if-address",             32, 0, kLinkInterface<kAgain>},
    {"peer-address",           64, 0, kLinkNeighbour<kAgain>},
    {"mt-id",                 128, 0, Field<&Link::MtId, Decimal>},
};

constinit const BgpLsKeyword kLsPrefixFields[kLsPrefixFieldCount] = {
    {"mt-id",                   1, 0, Field<&BgpLsPrefixDescriptor::MtId, Decimal>},
    {"ospf-route-type",         2, 0, Field<&BgpLsPrefixDescriptor::OspfRouteType, Decimal>},
    {"prefix",                  4, 0, Prefix},
};

constinit const BgpLsKeyword kLsTeFields[kLsTeFieldCount] = {
    {"protocol-origin",         1, 0, Field<&Te::ProtocolOrigin, DecimalByte>},
    {"Flag",                    2, 0, Field<&Te::Flags, DecimalByte>},
    {"endpoint",                4, 0, Field<&Te::Endpoint, EitherFamily>},
    {"color",                   8, 0, Field<&Te::Color, Decimal>},
    {"originator-as",          16, 0, Field<&Te::OriginatorAs, As<true>>},
    {"originator-address",     32, 0, Field<&Te::OriginatorAddress, EitherFamily>},
    {"discriminator",          64, 0, Field<&Te::Discriminator, Decimal>},
};

constinit const BgpLsKeyword kLsSidFields[kLsSidFieldCount] = {
    {"mt-id",                   1, 0, SidMtId},
    {"sid",                     2, 0, Field<&BgpLsSidDescriptor::Sid, Ipv6>},
};
// clang-format on

} // namespace bgp

uint32_t BgpLsStr2IsIsIgpRouterId(const char *value, uint8_t *area)
{
    return bgp::Code(bgp::IsIsRouterId(value, area, nullptr));
}

uint32_t SYSDT_Str2LocIgpRouterId(char *value, uint8_t *area)
{
    return bgp::Code(bgp::OspfRouterId(value, area, nullptr));
}

// Its form is the protocol's, which must have been named before.
uint32_t BgpLsParseNodeDescIgpRouterId(uint32_t flag, char *value, void *target, BgpLsParseContext *context)
{
    auto &node = *static_cast<BgpLsNodeDescriptor *>(target);
    if ((context->sections & bgp::kLsProtocolSection) == 0) {
        return bgp::Code(bgp::RefuseGroup(context, bgp::kProtocolFirst));
    }
    return bgp::Code(bgp::Claim(node.Fields, flag, context) && bgp::IgpRouterId(value, node.IgpRouterId, context));
}
