// The floors of all types but the BGP-LS key. A value's layout is told on the type's reference page.
#include "floor.h"
#include "floors.h"

#include <strings.h>

namespace bgp::bench {

namespace {

// ------------------------------------------------------------------------------------------------------- AS numbers

constexpr ptrdiff_t kLongestAsNumber = 11;

bool AsNumberIn(const char *text, uint8_t *value)
{
    const char *const start = SkipBlanks(text);
    uint64_t number = 0;
    uint32_t notation = 0;
    const char *at = TakeDigits(start, number);
    if (at != nullptr && *at == '.') {
        uint64_t low = 0;
        at = TakeDigits(at + 1, low);
        if (number > 65535 || low > 65535 || number == 0) {
            return false;
        }
        number = number << 16 | low;
        notation = 1;
    }
    if (!EndsIn(start, at, kLongestAsNumber) || number - 1 >= UINT32_MAX) {
        return false;
    }
    Store(value, static_cast<uint32_t>(number));
    Store(value + 4, notation);
    return true;
}

int AsNumberOut(const uint8_t *value, char *text)
{
    const auto number = Load<uint32_t>(value);
    char *at = text;
    if (number != 0) {
        if (Load<uint32_t>(value + 4) != 0) {
            at = PutNumber(at, number >> 16);
            *at++ = '.';
            at = PutNumber(at, number & 0xFFFF);
        } else {
            at = PutNumber(at, number);
        }
    }
    *at = '\0';
    return static_cast<int>(at - text);
}

// ------------------------------------------------------------------------------------------------------- communities

struct WellKnown {
    const char *name;
    uint32_t community;
};

constexpr WellKnown kWellKnown[] = {
    {"internet", 0}, {"no-advertise", 0xFFFFFF02}, {"no-export", 0xFFFFFF01}, {"no-export-subconfed", 0xFFFFFF03}};

bool NameIn(const char *name, uint8_t *value)
{
    for (const WellKnown &known : kWellKnown) {
        const size_t length = std::strlen(known.name);
        if (strncasecmp(name, known.name, length) == 0 && *SkipBlanks(name + length) == '\0') {
            Store(value, known.community);
            Store(value + 4, uint32_t{0});
            return true;
        }
    }
    return false;
}

bool CommunityIn(const char *text, uint8_t *value)
{
    constexpr ptrdiff_t kLongest = 19;
    const char *const start = SkipBlanks(text);
    if (Digit(*start) > 9) {
        return NameIn(start, value);
    }
    uint64_t number = 0;
    uint32_t form = 0;
    const char *at = TakeDigits(start, number);
    if (at != nullptr && *at == ':') {
        uint64_t second = 0;
        at = TakeDigits(at + 1, second);
        if (number > 65535 || second > 65535) {
            return false;
        }
        number = number << 16 | second;
        form = 1;
    }
    if (!EndsIn(start, at, kLongest) || number > UINT32_MAX) {
        return false;
    }
    Store(value, static_cast<uint32_t>(number));
    Store(value + 4, form);
    return true;
}

int CommunityOut(const uint8_t *value, char *text)
{
    const auto community = Load<uint32_t>(value);
    const auto form = Load<uint32_t>(value + 4);
    if (community == 0 || community - 0xFFFFFF01 < 3) {
        if (community == 0 && form == 2) { // never typed
            *text = '\0';
            return 0;
        }
        for (const WellKnown &known : kWellKnown) {
            if (known.community == community) {
                std::strcpy(text, known.name);
                return static_cast<int>(std::strlen(known.name));
            }
        }
    }
    if (form > 1) {
        return -1;
    }
    char *at = text;
    if (form == 1) {
        at = PutNumber(at, community >> 16);
        *at++ = ':';
        at = PutNumber(at, community & 0xFFFF);
    } else {
        at = PutNumber(at, community);
    }
    *at = '\0';
    return static_cast<int>(at - text);
}

bool LargeCommunityIn(const char *text, uint8_t *value)
{
    constexpr ptrdiff_t kLongest = 32;
    const char *const start = SkipBlanks(text);
    const char *at = start;
    for (int i = 0; i < 3; ++i) {
        if (i > 0 && *at++ != ':') {
            return false;
        }
        uint64_t number = 0;
        at = TakeDigits(at, number);
        if (at == nullptr || number > UINT32_MAX) {
            return false;
        }
        Store(value + 4 * i, static_cast<uint32_t>(number));
    }
    Store(value + 12, uint32_t{0});
    return EndsIn(start, at, kLongest);
}

int LargeCommunityOut(const uint8_t *value, char *text)
{
    char *at = PutNumber(text, Load<uint32_t>(value));
    *at++ = ':';
    at = PutNumber(at, Load<uint32_t>(value + 4));
    *at++ = ':';
    at = PutNumber(at, Load<uint32_t>(value + 8));
    *at = '\0';
    return static_cast<int>(at - text);
}

// -------------------------------------------------------------------------- route distinguishers and route targets

// The first two bytes, by administrator: an IPv4 address, a 2-byte and a 4-byte AS number.
struct Kinds {
    uint16_t ipv4, as2, as4;
};

constexpr Kinds kDistinguisher{1, 0, 2};
constexpr Kinds kTarget{0x0102, 0x0002, 0x0202};

enum Notation : uint32_t { kByIpv4, kByAs2, kByAs4, kByHalves };

// What stands behind the first number and its colon: AS:n.
template <Kinds Which>
inline const char *AssignedByAs(const char *at, uint64_t as, uint8_t *value)
{
    uint64_t assigned = 0;
    at = TakeDigits(at, assigned);
    const bool isWide = as > UINT16_MAX;
    if (as > UINT32_MAX || assigned > (isWide ? UINT16_MAX : UINT32_MAX) || (as | assigned) == 0) {
        return nullptr;
    }
    StoreBig64(value, isWide ? uint64_t{Which.as4} << 48 | as << 16 | assigned
                             : uint64_t{Which.as2} << 48 | as << 32 | assigned);
    Store(value + 8, uint32_t{isWide ? kByAs4 : kByAs2});
    return at;
}

// What stands behind the first number and its dot: x.y:n or a.b.c.d:n.
template <Kinds Which>
inline const char *AssignedByDots(const char *at, uint64_t first, uint8_t *value)
{
    uint64_t second = 0;
    uint64_t third = 0;
    at = TakeDigits(at, second);
    if (at == nullptr) {
        return nullptr;
    }
    if (*at == ':') {
        at = TakeDigits(at + 1, third);
        if (first > UINT16_MAX || second > UINT16_MAX || third > UINT16_MAX || (first | second | third) == 0) {
            return nullptr;
        }
        StoreBig64(value, uint64_t{Which.as4} << 48 | first << 32 | second << 16 | third);
        Store(value + 8, uint32_t{kByHalves});
        return at;
    }
    uint64_t fourth = 0;
    uint64_t assigned = 0;
    if (*at != '.' || (at = TakeDigits(at + 1, third)) == nullptr || *at != '.' ||
        (at = TakeDigits(at + 1, fourth)) == nullptr || *at != ':' || (at = TakeDigits(at + 1, assigned)) == nullptr ||
        (first | second | third | fourth) > UINT8_MAX || assigned > UINT16_MAX) {
        return nullptr;
    }
    StoreBig64(value, uint64_t{Which.ipv4} << 48 | first << 40 | second << 32 | third << 24 | fourth << 16 | assigned);
    Store(value + 8, uint32_t{kByIpv4});
    return at;
}

template <Kinds Which>
bool AssignedIn(const char *text, uint8_t *value)
{
    constexpr ptrdiff_t kLongest = 21;
    const char *const start = SkipBlanks(text);
    uint64_t first = 0;
    const char *at = TakeDigits(start, first);
    if (at == nullptr) {
        return false;
    }
    if (*at == ':') {
        at = AssignedByAs<Which>(at + 1, first, value);
    } else if (*at == '.') {
        at = AssignedByDots<Which>(at + 1, first, value);
    } else {
        return false;
    }
    return EndsIn(start, at, kLongest);
}

// A value whose notation does not belong to its kind prints as nothing.
template <Kinds Which>
int AssignedOut(const uint8_t *value, char *text)
{
    const uint64_t eight = LoadBig64(value);
    const auto kind = static_cast<uint16_t>(eight >> 48);
    const auto low = static_cast<uint32_t>(eight);
    const auto notation = Load<uint32_t>(value + 8);
    char *at = text;
    if (eight == 0) { // never set
        *at = '\0';
        return 0;
    }
    if (kind == Which.ipv4) {
        at = PutIpv4(at, static_cast<uint32_t>(eight >> 16));
        *at++ = ':';
        at = PutNumber(at, low & 0xFFFF);
    } else if (kind != Which.as2 && kind != Which.as4) {
        return -1;
    } else if (notation == kByAs2 && kind == Which.as2) {
        at = PutNumber(at, static_cast<uint16_t>(eight >> 32));
        *at++ = ':';
        at = PutNumber(at, low);
    } else if (notation == kByAs4) {
        at = PutNumber(at, static_cast<uint32_t>(eight >> 16));
        *at++ = ':';
        at = PutNumber(at, low & 0xFFFF);
    } else if (notation == kByHalves) {
        at = PutNumber(at, static_cast<uint16_t>(eight >> 32));
        *at++ = '.';
        at = PutNumber(at, low >> 16);
        *at++ = ':';
        at = PutNumber(at, low & 0xFFFF);
    }
    *at = '\0';
    return static_cast<int>(at - text);
}

// -------------------------------------------------------------------------------------------------------- route keys

constexpr size_t kKeyLength = 89;
constexpr size_t kPayloadAt = 4; // behind the sub-type word
constexpr uint32_t kIpv4Key = 0;
constexpr uint32_t kEvpnKey = 1;
constexpr uint32_t kIpv6Key = 15;

bool Ipv4KeyIn(const char *text, uint8_t *value)
{
    uint32_t address = 0;
    const char *const at = TakeIpv4(SkipBlanks(text), address);
    if (at == nullptr || *SkipBlanks(at) != '\0') {
        return false;
    }
    std::memset(value, 0, kKeyLength);
    Store(value + kPayloadAt, address);
    return true;
}

int Ipv4KeyOut(const uint8_t *value, char *text)
{
    if (Load<uint32_t>(value) != kIpv4Key) {
        return -1;
    }
    char *const at = PutIpv4(text, Load<uint32_t>(value + kPayloadAt));
    *at = '\0';
    return static_cast<int>(at - text);
}

bool Ipv6KeyIn(const char *text, uint8_t *value)
{
    std::memset(value, 0, kKeyLength);
    Store(value, kIpv6Key);
    const char *const at = TakeIpv6(SkipBlanks(text), value + kPayloadAt);
    return at != nullptr && *SkipBlanks(at) == '\0';
}

int Ipv6KeyOut(const uint8_t *value, char *text)
{
    if (Load<uint32_t>(value) != kIpv6Key) {
        return -1;
    }
    char *const at = PutIpv6(text, value + kPayloadAt);
    *at = '\0';
    return static_cast<int>(at - text);
}

// An EVPN MAC/IP advertisement, route type 2: tag:maclen:MAC:iplen:IP.
constexpr uint8_t kMacIp = 2;
constexpr size_t kRouteTypeAt = 4;
constexpr size_t kTagAt = 5;
constexpr size_t kMacLengthAt = 9;
constexpr size_t kMacAt = 10;
constexpr size_t kIpLengthAt = 16;
constexpr size_t kIpv4At = 17;
constexpr size_t kIpv6At = 21;
constexpr size_t kFamilyAt = 37; // 0 IPv4, 1 IPv6

const char *TakeMac(const char *at, uint8_t *mac)
{
    for (int i = 0; i < 3; ++i) {
        uint32_t group = 0;
        if (i > 0 && *at++ != '-') {
            return nullptr;
        }
        at = TakeHexGroup(at, group);
        if (at == nullptr) {
            return nullptr;
        }
        mac[2 * i] = static_cast<uint8_t>(group >> 8);
        mac[2 * i + 1] = static_cast<uint8_t>(group);
    }
    return at;
}

const char *TakeBracketed(const char *at, uint32_t length, uint8_t *value)
{
    if (length > 128) {
        return nullptr;
    }
    at = TakeIpv6(at + 1, value + kIpv6At);
    value[kFamilyAt] = 1;
    return at != nullptr && *at == ']' ? at + 1 : nullptr;
}

bool MacIpIn(const char *text, uint8_t *value)
{
    uint32_t tag = 0;
    uint32_t macLength = 0;
    uint32_t ipLength = 0;
    std::memset(value, 0, kKeyLength);
    const char *at = TakeNumber(SkipBlanks(text), 10, UINT32_MAX, tag);
    if (at == nullptr || *at != ':' || (at = TakeNumber(at + 1, 3, UINT8_MAX, macLength)) == nullptr || *at != ':' ||
        (at = TakeMac(at + 1, value + kMacAt)) == nullptr || *at != ':' ||
        (at = TakeNumber(at + 1, 3, UINT8_MAX, ipLength)) == nullptr || *at != ':') {
        return false;
    }
    ++at;
    if (*at == '[') {
        at = TakeBracketed(at, ipLength, value);
    } else {
        uint32_t address = 0;
        at = TakeIpv4(at, address);
        Store(value + kIpv4At, address);
    }
    if (at == nullptr || *SkipBlanks(at) != '\0') {
        return false;
    }
    Store(value, kEvpnKey);
    value[kRouteTypeAt] = kMacIp;
    Store(value + kTagAt, tag);
    value[kMacLengthAt] = static_cast<uint8_t>(macLength);
    value[kIpLengthAt] = static_cast<uint8_t>(ipLength);
    return true;
}

char *PutMac(char *to, const uint8_t *mac)
{
    to = PutHexPair(PutHexPair(to, mac[0]), mac[1]);
    *to++ = '-';
    to = PutHexPair(PutHexPair(to, mac[2]), mac[3]);
    *to++ = '-';
    return PutHexPair(PutHexPair(to, mac[4]), mac[5]);
}

// An address of no family is left out with its length.
int MacIpOut(const uint8_t *value, char *text)
{
    if (Load<uint32_t>(value) != kEvpnKey || value[kRouteTypeAt] != kMacIp) {
        return -1;
    }
    char *at = PutNumber(text, Load<uint32_t>(value + kTagAt));
    *at++ = ':';
    at = PutOctet(at, value[kMacLengthAt]);
    *at++ = ':';
    at = PutMac(at, value + kMacAt);
    if (value[kFamilyAt] <= 1) {
        *at++ = ':';
        at = PutOctet(at, value[kIpLengthAt]);
        *at++ = ':';
        if (value[kFamilyAt] == 0) {
            at = PutIpv4(at, Load<uint32_t>(value + kIpv4At));
        } else {
            *at++ = '[';
            at = PutIpv6(at, value + kIpv6At);
            *at++ = ']';
        }
    }
    *at = '\0';
    return static_cast<int>(at - text);
}

} // namespace

const Floor kAsNumberFloor = MakeFloor<AsNumberIn, AsNumberOut, 8>(0);
const Floor kCommunityFloor = MakeFloor<CommunityIn, CommunityOut, 8>(0);
const Floor kLargeCommunityFloor = MakeFloor<LargeCommunityIn, LargeCommunityOut, 16>(0);
const Floor kDistinguisherFloor = MakeFloor<AssignedIn<kDistinguisher>, AssignedOut<kDistinguisher>, 12>(0);
const Floor kTargetFloor = MakeFloor<AssignedIn<kTarget>, AssignedOut<kTarget>, 12>(0);
const Floor kIpv4KeyFloor = MakeFloor<Ipv4KeyIn, Ipv4KeyOut, kKeyLength>(4);
const Floor kIpv6KeyFloor = MakeFloor<Ipv6KeyIn, Ipv6KeyOut, kKeyLength>(4);
const Floor kMacIpFloor = MakeFloor<MacIpIn, MacIpOut, kKeyLength>(5);

} // namespace bgp::bench
