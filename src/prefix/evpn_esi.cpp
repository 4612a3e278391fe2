// The Ethernet segment identifier of EVPN routes (RFC 7432, section 5): 10 bytes, the first of which is the ESI type,
// written as five groups of four hexadecimal digits joined by ".". The bytes keep the order in which they are written.
// All zeros (a single-homed site) and all ones (reserved) name no segment and are refused.
#include "bgp_host_services.h"
#include "host/bytes.h"
#include "prefix/evpn.h"

namespace bgp {

namespace {

constexpr uint32_t kGroups = 5;
constexpr uint32_t kGroupDigits = 4;
constexpr uint32_t kDigits = kGroups * kGroupDigits;

// What the first two characters may be when the ESI type is checked: "0", then any digit up to this one.
constexpr char kArbitrary = '0';  // type 0, configured by the operator
constexpr char kLacp = '1';       // ... or type 1, generated from LACP
constexpr char kAsBased = '5';    // types 0 to 5: all that are defined
constexpr char kAnyType = '\x7f'; // not checked

struct EsiDigits {
    char group[kGroupDigits + 1];
    uint32_t count; // in the group
    uint32_t zeros; // in the whole text
    uint32_t ones;  // digits F, in the whole text
};

bool IsTypeDigit(uint32_t position, char digit, char highest)
{
    return highest == kAnyType || position > 1 || digit == '0' || (position == 1 && digit <= highest);
}

bool TakeDigit(EsiDigits &digits, char digit)
{
    if (digits.count == kGroupDigits) {
        return false;
    }
    digits.group[digits.count++] = digit;
    digits.zeros += digit == '0';
    digits.ones += digit == 'F' || digit == 'f';
    return true;
}

// Ends a group: its digits become two bytes, high end first.
bool TakeGroup(EsiDigits &digits, uint8_t *at)
{
    uint32_t number = 0;
    digits.group[digits.count] = '\0';
    if (digits.count == 0 || SMP_atoulx(digits.group, &number) != 0) {
        return false;
    }
    StoreBig(at, number, 2);
    digits.count = 0;
    return true;
}

bool ReadEsi(Text text, char highest, uint8_t *esi)
{
    EsiDigits digits{};
    uint32_t groups = 0;
    for (uint32_t i = 0; i <= text.length; ++i) {
        const char character = i < text.length ? text.at[i] : '.'; // the end ends a group as a dot does
        if (IsHexDigit(character)) {
            if (!IsTypeDigit(i, character, highest) || !TakeDigit(digits, character)) {
                return false;
            }
        } else if (character != '.' || groups == kGroups || !TakeGroup(digits, esi + 2 * groups++)) {
            return false;
        }
    }
    return digits.zeros != kDigits && digits.ones != kDigits;
}

uint32_t Str2Esi(const char *text, void *esi, char highest)
{
    if (text == nullptr || esi == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    uint8_t bytes[kEsiSize] = {}; // the caller's ESI is only written when all of it is good
    if (std::strlen(text) != kEsiChars || !ReadEsi(Trim(text), highest, bytes)) {
        return DT_ERR_FAIL;
    }
    std::memcpy(esi, bytes, sizeof bytes);
    return DT_OK;
}

} // namespace

} // namespace bgp

uint32_t SYSDT_Str2EsiBas(const char *text, void *esi, uint32_t flag, uint32_t checkMode)
{
    const char checked = flag == 0 ? bgp::kArbitrary : bgp::kLacp;
    return bgp::Str2Esi(text, esi, checkMode == bgp::kAnyEsiType ? bgp::kAnyType : checked);
}

// An auto-discovery route may come from a segment of any type.
uint32_t SYSDT_Str2EsiForAd(const char *text, void *esi, uint32_t, uint32_t checkMode)
{
    return bgp::Str2Esi(text, esi, checkMode == bgp::kAnyEsiType ? bgp::kAnyType : bgp::kAsBased);
}
