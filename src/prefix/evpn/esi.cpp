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

// The value of a hexadecimal digit of either case, larger for any other character.
uint32_t HexDigit(char character)
{
    const uint32_t decimal = static_cast<uint8_t>(character) - static_cast<uint32_t>('0');
    const uint32_t letter = static_cast<uint8_t>(character | 0x20) - static_cast<uint32_t>('a');
    return decimal < 10 ? decimal : letter < 6 ? letter + 10 : 0x10;
}

bool IsTypeDigit(uint32_t position, char digit, EsiTypes types)
{
    return types == kEsiAnyType || position > 1 || digit == '0' || (position == 1 && digit <= types);
}

// What a group's number is, the host says. Groups of one to four digits, five at most: with 24 characters, five of four
// digits each, unless blanks around them fill up the length.
bool ReadGroups(Text text, EsiTypes types, uint8_t *esi)
{
    uint32_t groups = 0;
    uint32_t digits = 0; // in the group
    char group[kGroupDigits + 1];
    uint32_t zeros = 0;
    uint32_t ones = 0; // digits F
    for (uint32_t i = 0; i <= text.length; ++i) {
        const char character = i < text.length ? text.at[i] : '.'; // the end ends a group as a dot does
        if (character == '.') {
            uint32_t number = 0;
            group[digits] = '\0';
            if (groups == kGroups || digits == 0 || SMP_atoulx(group, &number) != 0) {
                return false;
            }
            StoreBig(esi + 2 * groups++, static_cast<uint16_t>(number));
            digits = 0;
            continue;
        }
        const uint32_t digit = HexDigit(character);
        if (digit > 0xF || digits == kGroupDigits || !IsTypeDigit(i, character, types)) {
            return false;
        }
        group[digits++] = character;
        zeros += digit == 0;
        ones += digit == 0xF;
    }
    return zeros != kDigits && ones != kDigits;
}

} // namespace

bool ReadEsi(Text piece, EsiTypes types, uint8_t *esi)
{
    uint8_t bytes[kEsiSize] = {};
    if (piece.length != kEsiChars || !ReadGroups(Trim(piece), types, bytes)) {
        return false;
    }
    std::memcpy(esi, bytes, sizeof bytes);
    return true;
}

void NoteEsi(const Why &why, Text piece, EsiTypes types)
{
    for (uint32_t i = 0; i < piece.length; ++i) {
        const char character = piece.at[i];
        const bool dotHere = i % (kGroupDigits + 1) == kGroupDigits;
        if (character != '.' && !IsHexDigit(character)) {
            return NoteCharacter(why, {piece.at + i, 1}, kWrongCharacter);
        }
        if (i == kEsiChars && character == '.') {
            return Note(why, {piece.at + i, 1}, {.rule = &kEsiGroups, .limit = kGroups});
        }
        if (i == kEsiChars || dotHere != (character == '.')) {
            return Note(why, {piece.at + i, 1}, {.rule = &kEsiGroup});
        }
        if (!IsTypeDigit(i, character, types)) {
            return Note(why, {piece.at, i + 1}, {.rule = &kEsiType, .limit = static_cast<uint64_t>(types - '0')});
        }
    }
    const Text end{piece.at + piece.length, 0};
    if (piece.length == 0) {
        Note(why, piece, {.rule = &kEmpty, .what = kTheEsi});
    } else if (piece.length < kEsiChars) {
        const bool groupEnds = piece.length % (kGroupDigits + 1) == kGroupDigits;
        Note(why, end, groupEnds ? Said{.rule = &kEsiGroups, .limit = kGroups} : Said{.rule = &kEsiGroup});
    } else {
        Note(why, piece, {.rule = *piece.at == '0' ? &kZeroEsi : &kReservedEsi});
    }
}

} // namespace bgp

uint32_t SYSDT_Str2EsiBas(const char *text, void *esi, uint32_t flag, uint32_t checkMode)
{
    if (text == nullptr || esi == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    const bgp::EsiTypes types = bgp::TypesFor(checkMode, flag == 0 ? bgp::kEsiArbitrary : bgp::kEsiLacp);
    return bgp::ReadEsi(bgp::Rest(bgp::CursorOn(text)), types, static_cast<uint8_t *>(esi)) ? DT_OK : DT_ERR_FAIL;
}

// An auto-discovery route may come from a segment of any type.
uint32_t SYSDT_Str2EsiForAd(const char *text, void *esi, uint32_t, uint32_t checkMode)
{
    if (text == nullptr || esi == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    const bgp::EsiTypes types = bgp::TypesFor(checkMode, bgp::kEsiAsBased);
    return bgp::ReadEsi(bgp::Rest(bgp::CursorOn(text)), types, static_cast<uint8_t *>(esi)) ? DT_OK : DT_ERR_FAIL;
}
