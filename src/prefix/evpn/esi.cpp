// The Ethernet segment identifier of EVPN routes (RFC 7432, section 5): 10 bytes, the first of which is the ESI type,
// written as five groups of four hexadecimal digits joined by ".". The bytes keep the order in which they are written.
// All zeros (a single-homed site) and all ones (reserved) name no segment and are refused.
#include "bgp_datatypes/evpn.h"
#include "host/bytes.h"
#include "prefix/evpn/pieces.h"

namespace bgp {

namespace {

constexpr uint32_t kGroups = 5;
constexpr uint32_t kGroupDigits = 4;
constexpr uint32_t kDigits = kGroups * kGroupDigits;

struct EsiDigits {
    char group[kGroupDigits + 1];
    uint32_t count; // in the group
    uint32_t zeros; // in the whole text
    uint32_t ones;  // digits F, in the whole text
};

bool IsTypeDigit(uint32_t position, char digit, EsiTypes types)
{
    return types == kEsiAnyType || position > 1 || digit == '0' || (position == 1 && digit <= types);
}

bool TakeDigit(EsiDigits &digits, Text place, Why *why)
{
    if (digits.count == kGroupDigits) {
        return Refuse(why, place, kEsiGroup);
    }
    const char digit = *place.at;
    digits.group[digits.count++] = digit;
    digits.zeros += digit == '0';
    digits.ones += digit == 'F' || digit == 'f';
    return true;
}

// Ends a group: its digits become two bytes, high end first.
bool TakeGroup(EsiDigits &digits, uint8_t *at, Text place, Why *why)
{
    uint32_t number = 0;
    digits.group[digits.count] = '\0';
    if (digits.count == 0 || SMP_atoulx(digits.group, &number) != 0) {
        return Refuse(why, place, kEsiGroup);
    }
    StoreBig(at, number, 2);
    digits.count = 0;
    return true;
}

bool ReadGroups(Text text, EsiTypes types, uint8_t *esi, Why *why)
{
    EsiDigits digits{};
    uint32_t groups = 0;
    for (uint32_t i = 0; i <= text.length; ++i) {
        const Text place{text.at + i, i < text.length};
        const char character = place.length != 0 ? *place.at : '.'; // the end ends a group as a dot does
        if (IsHexDigit(character)) {
            if (!IsTypeDigit(i, character, types)) {
                return Refuse(why, {text.at, i + 1}, kEsiType, static_cast<uint64_t>(types - '0'));
            }
            if (!TakeDigit(digits, place, why)) {
                return false;
            }
        } else if (character != '.') {
            return RefuseCharacter(why, place, kWrongCharacter);
        } else if (groups == kGroups) {
            return Refuse(why, place, kEsiGroups, kGroups);
        } else if (!TakeGroup(digits, esi + 2 * groups++, place, why)) {
            return false;
        }
    }
    if (digits.zeros == kDigits) {
        return Refuse(why, text, kZeroEsi);
    }
    return digits.ones != kDigits || Refuse(why, text, kReservedEsi);
}

} // namespace

bool ReadEsi(const char *text, EsiTypes types, uint8_t *esi, Why *why)
{
    const auto length = static_cast<uint32_t>(std::strlen(text));
    if (length != kEsiChars) {
        return Refuse(why, {text, length}, kWrongLength, kEsiChars, kTheEsi);
    }
    uint8_t bytes[kEsiSize] = {};
    if (!ReadGroups(Trim(text), types, bytes, why)) {
        return false;
    }
    std::memcpy(esi, bytes, sizeof bytes);
    return true;
}

bool ReadEsiPiece(Text piece, EsiTypes types, uint8_t *esi, Why *why)
{
    char copy[kEsiChars + 1];
    if (!Terminate(piece, copy, sizeof copy)) {
        return Refuse(why, piece, kWrongLength, kEsiChars, kTheEsi);
    }
    const Why kept = Moved(why, piece, copy);
    const bool read = ReadEsi(copy, types, esi, why);
    GoBack(why, kept);
    return read;
}

} // namespace bgp

uint32_t SYSDT_Str2EsiBas(const char *text, void *esi, uint32_t flag, uint32_t checkMode)
{
    if (text == nullptr || esi == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    const bgp::EsiTypes types = bgp::TypesFor(checkMode, flag == 0 ? bgp::kEsiArbitrary : bgp::kEsiLacp);
    return bgp::ReadEsi(text, types, static_cast<uint8_t *>(esi), nullptr) ? DT_OK : DT_ERR_FAIL;
}

// An auto-discovery route may come from a segment of any type.
uint32_t SYSDT_Str2EsiForAd(const char *text, void *esi, uint32_t, uint32_t checkMode)
{
    if (text == nullptr || esi == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    const bgp::EsiTypes types = bgp::TypesFor(checkMode, bgp::kEsiAsBased);
    return bgp::ReadEsi(text, types, static_cast<uint8_t *>(esi), nullptr) ? DT_OK : DT_ERR_FAIL;
}
