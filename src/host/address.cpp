#include "host/address.h"

#include "host/numbers.h"

namespace bgp {

namespace {

constexpr uint32_t kOctets = 4;
constexpr uint32_t kGroups = 8;
constexpr uint32_t kGroupDigits = 4;

// Where a text departs from the form of an address; no rule when it does not.
struct Slip {
    Text piece;
    const BgpRule *rule;
};

constexpr Slip kNoSlip{};

// The character at the place, or nothing where the text ends.
Text CharacterAt(Text text, uint32_t place)
{
    return {text.at + place, place < text.length};
}

// A run of digits from the place on.
Text RunAt(Text text, uint32_t place, bool (*isDigit)(char))
{
    uint32_t end = place;
    while (end < text.length && isDigit(text.at[end])) {
        ++end;
    }
    return {text.at + place, end - place};
}

bool HoldsAt(Text text, uint32_t place, char character)
{
    return place < text.length && text.at[place] == character;
}

// A text without its separator is no address at all, wherever one looks.
bool Holds(Text text, char separator)
{
    return std::memchr(text.at, separator, text.length) != nullptr;
}

Slip FindIpv4Slip(Text address)
{
    if (!Holds(address, '.')) {
        return {address, &kNoIpv4};
    }
    uint32_t place = 0;
    for (uint32_t i = 0; i < kOctets; ++i) {
        if (i > 0) {
            if (!HoldsAt(address, place, '.')) {
                return {CharacterAt(address, place), &kNoIpv4};
            }
            ++place;
        }
        const Text octet = RunAt(address, place, IsDigit);
        uint64_t number = 0;
        if (ReadNumber(octet.at, octet.at + octet.length, &number) == nullptr) {
            return {CharacterAt(address, place), &kNoIpv4};
        }
        if (octet.length > 1 && *octet.at == '0') {
            return {octet, &kLeadingZero};
        }
        if (number > UINT8_MAX) {
            return {octet, &kTooLarge};
        }
        place += octet.length;
    }
    return place == address.length ? kNoSlip : Slip{CharacterAt(address, place), &kNoIpv4};
}

// An IPv4 address may stand in place of the last two groups.
Slip FindIpv6Slip(Text address)
{
    const auto slipAt = [address](uint32_t place) { return Slip{CharacterAt(address, place), &kNoIpv6}; };
    if (!Holds(address, ':')) {
        return {address, &kNoIpv6};
    }
    bool gap = false;        // "::" stood there: one group or more
    uint32_t left = kGroups; // that may come
    uint32_t place = HoldsAt(address, 0, ':') && HoldsAt(address, 1, ':') ? 1 : 0;
    for (;;) {
        if (place > 0 && HoldsAt(address, place, ':')) { // the second of "::"
            if (gap || left == 0) {
                return slipAt(place);
            }
            gap = true;
            --left;
            if (++place == address.length) {
                return kNoSlip;
            }
        }
        const Text group = RunAt(address, place, IsHexDigit);
        if (place > 0 && left >= 2 && HoldsAt(address, place + group.length, '.')) {
            const Slip slip = FindIpv4Slip({group.at, address.length - place});
            return slip.rule != nullptr || gap || left == 2 ? slip : slipAt(address.length);
        }
        if (group.length == 0) {
            return slipAt(place);
        }
        if (group.length > kGroupDigits || left == 0) {
            return {group, &kNoIpv6};
        }
        --left;
        place += group.length;
        if (place == address.length) {
            return gap || left == 0 ? kNoSlip : slipAt(place);
        }
        if (!HoldsAt(address, place, ':')) {
            return slipAt(place);
        }
        ++place;
    }
}

// The slip may be a blank. The whole is told when there is no separator, unless a blank ends its first digits, and when
// this host wants more than the form.
void RefuseUnlessBlank(Why &why, const Slip &slip, Text address, bool (*isDigit)(char), const BgpRule &rule,
                       const char *what)
{
    const Text piece = slip.rule != nullptr ? slip.piece : address;
    const bool whole = piece.length == address.length;
    const Text place = whole ? CharacterAt(address, RunAt(address, 0, isDigit).length) : piece;
    if (place.length != 1 || HasNoBlank(place, &why)) {
        Refuse(&why, piece, rule, 0, what);
    }
}

} // namespace

void NoteIpv4(Why &why, Text address, const AddressWords &words)
{
    const Slip slip = FindIpv4Slip(address);
    if (address.length == 0) {
        Refuse(&why, address, kEmpty, 0, words.address);
    } else if (slip.rule == &kTooLarge || slip.rule == &kLeadingZero) {
        Refuse(&why, slip.piece, *slip.rule, slip.rule == &kTooLarge ? UINT8_MAX : 0, words.octet);
    } else {
        RefuseUnlessBlank(why, slip, address, IsDigit, kNoIpv4, words.address);
    }
}

void NoteIpv6(Why &why, Text address, const char *what)
{
    const Slip slip = FindIpv6Slip(address);
    if (address.length == 0) {
        Refuse(&why, address, kEmpty, 0, what);
    } else {
        RefuseUnlessBlank(why, slip, address, IsHexDigit, kNoIpv6, what);
    }
}

} // namespace bgp
