#include "host/numbers.h"

namespace bgp {

Text NumberAt(Text text, uint32_t index)
{
    const char *at = text.at;
    const char *const end = at + text.length;
    for (;; ++at) { // past a separator
        const char *start = at;
        while (at < end && (IsDigit(*at) || (*at >= 'a' && *at <= 'f'))) {
            ++at;
        }
        if (index-- == 0 || at == end) {
            return {start, static_cast<uint32_t>(at - start)};
        }
    }
}

bool ReadTrimmedNumbers(const NumbersRule &rule, const char *typed, Text &text, Numbers &numbers, Why *why)
{
    text = Trim(typed);
    return ReadNumbersOf(rule, text, numbers, why);
}

namespace {

// The first number that is too small or too large; the count of numbers when none is.
uint32_t FirstMisfit(const BgpNotation &notation, const Numbers &numbers)
{
    uint32_t i = 0;
    while (HasNumber(numbers.shape, i) && numbers.at[i] >= notation.Smallest[i] &&
           numbers.at[i] <= notation.Largest[i]) {
        ++i;
    }
    return i;
}

} // namespace

void RefuseNotation(const NumbersRule &rule, Text text, const Numbers &numbers, Why &why)
{
    const BgpNotation *meant = nullptr;
    uint32_t misfit = 0;
    for (uint32_t i = 0; i < rule.count; ++i) {
        const BgpNotation &notation = rule.notations[i];
        if (rule.shapes[i] != numbers.shape) {
            continue;
        }
        const uint32_t first = FirstMisfit(notation, numbers);
        if (first >= misfit) {
            meant = &notation;
            misfit = first;
        }
    }
    if (meant == nullptr) {
        RefuseChoice(&why, text, kNoNotation, {rule.notations, rule.count, sizeof *rule.notations});
        return;
    }
    if (meant->When != nullptr) {
        StandsIn(&why, meant->When);
    }
    const bool small = numbers.at[misfit] < meant->Smallest[misfit];
    Refuse(&why, NumberAt(text, misfit),
           small             ? kTooSmall
           : rule.base == 16 ? kTooLargeHex
                             : kTooLarge,
           small ? meant->Smallest[misfit] : meant->Largest[misfit], meant->Names[misfit]);
}

} // namespace bgp
