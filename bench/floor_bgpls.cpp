// The floor of a BGP-LS node key: its groups in any order, every rule that a NODE key obeys. Keys of other NLRI types
// are none of its own.
#include "floor.h"
#include "floors.h"

namespace bgp::bench {

namespace {

constexpr size_t kLength = 228;
constexpr size_t kProtocolAt = 4;
constexpr size_t kIdentifierAt = 8; // 64 bits, of which texts fill the low 32
constexpr size_t kAsAt = 16;        // number and notation
constexpr size_t kBgpLsIdAt = 24;
constexpr size_t kOspfAreaAt = 28;
constexpr size_t kRouterIdAt = 32; // 50 bytes
constexpr size_t kExistFlagAt = 82;
constexpr uint32_t kRouterIdSize = 50;

constexpr const char *kProtocols[] = {"",       "ISIS-LEVEL-1", "ISIS-LEVEL-2", "OSPFv2", "DIRECT",
                                      "STATIC", "OSPFv3",       "BGP",          "",       "SEGMENT-ROUTING"};
enum Protocol : uint32_t {
    kIsisLevel1 = 1,
    kIsisLevel2 = 2,
    kOspfv2 = 3,
    kDirect = 4,
    kStatic = 5,
    kOspfv3 = 6,
    kBgp = 7,
    kSegmentRouting = 9
};

// What a key may have once.
enum Group : uint32_t { kType = 1, kProtocol = 2, kIdentifier = 4, kLocal = 8, kUnknown = 16, kIndex = 32 };
constexpr uint32_t kRequired = kType | kProtocol | kIdentifier | kLocal;
enum Field : uint32_t { kAs = 1, kBgpLsId = 2, kOspfArea = 4, kRouterId = 8, kIpv4RouterId = 16, kIpv6RouterId = 32 };

struct Reading {
    uint8_t *value;
    uint32_t protocol; // 0 until it is named
    uint32_t groups;
    uint32_t fields;
    const char *end; // of the text, blanks aside
};

bool IsFirst(uint32_t &seen, uint32_t flag)
{
    const bool isFirst = (seen & flag) == 0;
    seen |= flag;
    return isFirst;
}

// The place behind the words when the text has them there; null otherwise.
template <size_t Size>
const char *Behind(const Reading &reading, const char *at, const char (&words)[Size])
{
    const size_t length = Size - 1;
    return static_cast<size_t>(reading.end - at) >= length && std::memcmp(at, words, length) == 0 ? at + length
                                                                                                  : nullptr;
}

// The bracket that closes the group that `at` stands in; null when none does, or a blank comes first.
const char *Closing(const Reading &reading, const char *at)
{
    for (int depth = 1; at < reading.end; ++at) {
        depth += (*at == '[') - (*at == ']');
        if (depth == 0) {
            return at;
        }
        if (IsBlank(*at)) {
            return nullptr;
        }
    }
    return nullptr;
}

// ------------------------------------------------------------------------------------------------- fields of a node

const char *TakeAs(Reading &reading, const char *at)
{
    if (*at == ']' && (reading.fields & kAs) == 0) {
        return at; // an empty one is none
    }
    const char *const start = at;
    uint64_t number = 0;
    uint32_t notation = 0;
    at = TakeDigits(at, number);
    if (at != nullptr && *at == '.') {
        uint64_t low = 0;
        at = TakeDigits(at + 1, low);
        if (number > 65535 || low > 65535 || number == 0) {
            return nullptr;
        }
        number = number << 16 | low;
        notation = 1;
    }
    if (at == nullptr || at - start > 11 || number == 0 || number > UINT32_MAX || !IsFirst(reading.fields, kAs)) {
        return nullptr;
    }
    Store(reading.value + kAsAt, static_cast<uint32_t>(number));
    Store(reading.value + kAsAt + 4, notation);
    return at;
}

const char *TakeDotted(Reading &reading, const char *at, Field field, size_t place)
{
    uint32_t address = 0;
    at = TakeIpv4(at, address);
    Store(reading.value + place, address);
    return IsFirst(reading.fields, field) ? at : nullptr;
}

// One or two digits behind any white space, within the value.
bool TakeHexByte(const char *at, const char *end, uint8_t &byte)
{
    while (at < end && *at >= '\t' && *at <= '\r') {
        ++at;
    }
    const uint32_t first = at < end ? HexDigit(at[0]) : 0xFF;
    const uint32_t second = at + 1 < end ? HexDigit(at[1]) : 0xFF;
    byte = static_cast<uint8_t>(second < 16 ? first << 4 | second : first);
    return first < 16;
}

const char *TakeIsIsRouterId(Reading &reading, const char *at)
{
    constexpr uint8_t kPlaces[] = {0, 2, 5, 7, 10, 12, 15};
    const char *const end = Closing(reading, at);
    if (end == nullptr || end - at < 17) {
        return nullptr;
    }
    uint8_t *to = reading.value + kRouterIdAt;
    for (const uint8_t place : kPlaces) {
        if (!TakeHexByte(at + place, end, *to++)) {
            return nullptr;
        }
    }
    return end;
}

const char *TakeOspfRouterId(Reading &reading, const char *at)
{
    uint32_t id = 0;
    at = TakeIpv4(at, id);
    if (at == nullptr) {
        return nullptr;
    }
    StoreBig32(reading.value + kRouterIdAt, id);
    if (*at != '/') {
        return at;
    }
    at = TakeIpv4(at + 1, id);
    StoreBig32(reading.value + kRouterIdAt + 4, id);
    return at;
}

const char *TakeRouterId(Reading &reading, const char *at)
{
    if (!IsFirst(reading.fields, kRouterId)) {
        return nullptr;
    }
    switch (reading.protocol) {
    case kIsisLevel1:
    case kIsisLevel2:
        return TakeIsIsRouterId(reading, at);
    case kOspfv2:
    case kOspfv3:
        return TakeOspfRouterId(reading, at);
    default:
        return nullptr;
    }
}

// Read and dropped: a NODE key has no place for these.
const char *DropRouterId(Reading &reading, const char *at, Field field)
{
    uint8_t ipv6[16];
    uint32_t ipv4 = 0;
    at = field == kIpv4RouterId ? TakeIpv4(at, ipv4) : TakeIpv6(at, ipv6);
    return IsFirst(reading.fields, field) ? at : nullptr;
}

const char *TakeField(Reading &reading, const char *at)
{
    const char *behind = nullptr;
    switch (*at) {
    case 'a':
        return (behind = Behind(reading, at, "as")) != nullptr ? TakeAs(reading, behind) : nullptr;
    case 'b':
        behind = Behind(reading, at, "bgp-ls-identifier");
        if (behind == nullptr) {
            return nullptr;
        }
        reading.value[kExistFlagAt] = 1;
        return TakeDotted(reading, behind, kBgpLsId, kBgpLsIdAt);
    case 'o':
        behind = Behind(reading, at, "ospf-area-id");
        return behind != nullptr ? TakeDotted(reading, behind, kOspfArea, kOspfAreaAt) : nullptr;
    case 'i':
        if ((behind = Behind(reading, at, "igp-router-id")) != nullptr) {
            return TakeRouterId(reading, behind);
        }
        if ((behind = Behind(reading, at, "ipv4-router-id")) != nullptr) {
            return DropRouterId(reading, behind, kIpv4RouterId);
        }
        behind = Behind(reading, at, "ipv6-router-id");
        return behind != nullptr ? DropRouterId(reading, behind, kIpv6RouterId) : nullptr;
    default:
        return nullptr;
    }
}

// ------------------------------------------------------------------------------------------------- groups of a key

const char *TakeLocal(Reading &reading, const char *at)
{
    do {
        if (*at != '[' || (at = TakeField(reading, at + 1)) == nullptr || *at != ']') {
            return nullptr;
        }
        ++at;
    } while (*at != ']');
    return IsFirst(reading.groups, kLocal) ? at : nullptr;
}

const char *TakeIdentifier(Reading &reading, const char *at)
{
    uint64_t identifier = 0;
    at = TakeDigits(at, identifier);
    Store(reading.value + kIdentifierAt, identifier & UINT32_MAX);
    return IsFirst(reading.groups, kIdentifier) ? at : nullptr;
}

const char *TakeProtocol(Reading &reading, const char *behind, Protocol protocol)
{
    reading.protocol = protocol;
    Store(reading.value + kProtocolAt, uint32_t{protocol});
    return IsFirst(reading.groups, kProtocol) ? behind : nullptr;
}

// Anything up to the closing bracket.
const char *Skip(Reading &reading, const char *behind, Group group)
{
    return behind != nullptr && IsFirst(reading.groups, group) ? Closing(reading, behind) : nullptr;
}

const char *TakeGroup(Reading &reading, const char *at)
{
    const char *behind = nullptr;
    switch (*at) {
    case 'I':
        if ((behind = Behind(reading, at, "IDENTIFIER")) != nullptr) {
            return TakeIdentifier(reading, behind);
        }
        if ((behind = Behind(reading, at, "ISIS-LEVEL-1")) != nullptr) {
            return TakeProtocol(reading, behind, kIsisLevel1);
        }
        behind = Behind(reading, at, "ISIS-LEVEL-2");
        return behind != nullptr ? TakeProtocol(reading, behind, kIsisLevel2) : nullptr;
    case 'L':
        return (behind = Behind(reading, at, "LOCAL")) != nullptr ? TakeLocal(reading, behind) : nullptr;
    case 'O':
        if ((behind = Behind(reading, at, "OSPFv2")) != nullptr) {
            return TakeProtocol(reading, behind, kOspfv2);
        }
        behind = Behind(reading, at, "OSPFv3");
        return behind != nullptr ? TakeProtocol(reading, behind, kOspfv3) : nullptr;
    case 'D':
        return (behind = Behind(reading, at, "DIRECT")) != nullptr ? TakeProtocol(reading, behind, kDirect) : nullptr;
    case 'S':
        if ((behind = Behind(reading, at, "STATIC")) != nullptr) {
            return TakeProtocol(reading, behind, kStatic);
        }
        behind = Behind(reading, at, "SEGMENT-ROUTING");
        return behind != nullptr ? TakeProtocol(reading, behind, kSegmentRouting) : nullptr;
    case 'B':
        return (behind = Behind(reading, at, "BGP")) != nullptr ? TakeProtocol(reading, behind, kBgp) : nullptr;
    case 'U':
        return Skip(reading, Behind(reading, at, "UNKNOWN"), kUnknown);
    case 'i':
        return Skip(reading, Behind(reading, at, "index"), kIndex);
    default:
        return nullptr;
    }
}

bool NodeIn(const char *text, uint8_t *value)
{
    constexpr ptrdiff_t kLongest = 500;
    const char *const start = SkipBlanks(text);
    const char *end = start + std::strlen(start);
    while (end > start && IsBlank(end[-1])) {
        --end;
    }
    Reading reading{value, 0, kType, 0, end};
    const char *at = Behind(reading, start, "[NODE]");
    if (at == nullptr || end - start > kLongest) {
        return false;
    }
    std::memset(value, 0, kLength);
    Store(value, uint32_t{1});
    while (at < end) {
        if (*at != '[' || (at = TakeGroup(reading, at + 1)) == nullptr || *at != ']') {
            return false;
        }
        ++at;
    }
    return (reading.groups & kRequired) == kRequired;
}

// ------------------------------------------------------------------------------------------------------------ text out

template <size_t Size>
char *Put(char *to, const char (&words)[Size])
{
    std::memcpy(to, words, Size - 1);
    return to + Size - 1;
}

char *PutAs(char *to, const uint8_t *as)
{
    const auto number = Load<uint32_t>(as);
    if (number == 0) {
        return to;
    }
    if (Load<uint32_t>(as + 4) == 0) {
        return PutNumber(to, number);
    }
    to = PutNumber(to, number >> 16);
    *to++ = '.';
    return PutNumber(to, number & 0xFFFF);
}

char *PutWide(char *to, uint64_t number)
{
    constexpr uint64_t kBillion = 1000000000;
    if (number <= UINT32_MAX) {
        return PutNumber(to, static_cast<uint32_t>(number));
    }
    to = PutWide(to, number / kBillion);
    const auto low = static_cast<uint32_t>(number % kBillion);
    *to++ = static_cast<char>('0' + low / 100000000);
    return PutEight(to, low % 100000000);
}

// The raw bytes up to the first zero byte, at most 49 of them.
char *PutRouterId(char *to, const uint8_t *area)
{
    for (uint32_t i = 0; i < kRouterIdSize - 1 && area[i] != 0; ++i) {
        *to++ = static_cast<char>(area[i]);
    }
    return to;
}

int NodeOut(const uint8_t *value, char *text)
{
    if (Load<uint32_t>(value) != 1) {
        return -1;
    }
    const auto protocol = Load<uint32_t>(value + kProtocolAt);
    const char *const name = protocol < std::size(kProtocols) ? kProtocols[protocol] : "";
    char *at = Put(text, "[NODE][");
    const size_t length = std::strlen(name);
    std::memcpy(at, name, length);
    at = Put(at + length, "][IDENTIFIER");
    at = PutWide(at, Load<uint64_t>(value + kIdentifierAt));
    at = PutAs(Put(at, "][LOCAL[as"), value + kAsAt);
    if ((value[kExistFlagAt] & 1) != 0) {
        at = PutIpv4(Put(at, "][bgp-ls-identifier"), Load<uint32_t>(value + kBgpLsIdAt));
    }
    at = PutIpv4(Put(at, "][ospf-area-id"), Load<uint32_t>(value + kOspfAreaAt));
    at = PutRouterId(Put(at, "][igp-router-id"), value + kRouterIdAt);
    at = Put(at, "]]");
    *at = '\0';
    return static_cast<int>(at - text);
}

} // namespace

const Floor kLsNodeFloor = MakeFloor<NodeIn, NodeOut, kLength, true>(4);

} // namespace bgp::bench
