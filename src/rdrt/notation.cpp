#include "rdrt/notation.h"

namespace bgp {

namespace {

// Returns whether any number is other than zero.
template <Split S, uint32_t... I>
bool StoreSlices(const Numbers &numbers, uint8_t *eight, std::integer_sequence<uint32_t, I...>)
{
    (StoreBig(eight + S.at[I].offset, static_cast<SliceNumber<S.at[I].width>>(numbers.at[I])), ...);
    return (numbers.at[I] | ...) != 0;
}

template <uint32_t Index>
bool StoreSplit(const Numbers &numbers, uint8_t *eight)
{
    constexpr uint32_t kCount = CountSlices(kStorage[Index].split);
    return StoreSlices<kStorage[Index].split>(numbers, eight, std::make_integer_sequence<uint32_t, kCount>());
}

// The same by the index of a notation.
bool StoreNumbers(uint32_t notation, const Numbers &numbers, uint8_t *eight)
{
    static_assert(kSharedCount == 4);
    switch (notation) {
    case 0:
        return StoreSplit<0>(numbers, eight);
    case 1:
        return StoreSplit<1>(numbers, eight);
    case 2:
        return StoreSplit<2>(numbers, eight);
    default:
        return StoreSplit<3>(numbers, eight);
    }
}

} // namespace

uint32_t Encode(const NotationRule &rule, Text text, const Numbers &numbers, uint8_t *eight, Why *why)
{
    const uint32_t found = FindNotation(kSharedText, text, numbers, why);
    if (found == kNoFit) {
        return kNoFit;
    }
    const Storage &stored = kStorage[found];
    StoreBig(eight, rule.kinds[stored.administrator]);
    const bool any = StoreNumbers(found, numbers, eight);
    if (!any && rule.refusesZero && stored.administrator != kByIpv4) {
        Refuse(why, text, kAllZero);
        return kNoFit;
    }
    return rule.firstNotation + found;
}

bool ReadShared(const NotationRule &rule, const char *text, void *value, Why *why)
{
    auto *bytes = static_cast<uint8_t *>(value);
    Text trimmed;
    Numbers numbers;
    if (!ReadNumbersOf(kSharedText, text, trimmed, numbers, why)) {
        return false;
    }
    const uint32_t notation = Encode(rule, trimmed, numbers, bytes, why);
    if (notation == kNoFit) {
        return false;
    }
    Store(bytes + 8, notation);
    return true;
}

namespace {

const PrintRow *Find(const PrintTable &table, const Stored &stored)
{
    for (uint32_t i = 0; i < table.count; ++i) {
        const PrintRow &row = table.rows[i];
        if ((row.kind == stored.kind || row.kind == kAny) &&
            (row.notation == stored.notation || row.notation == kAny)) {
            return &row;
        }
    }
    return nullptr;
}

} // namespace

uint32_t PrintStored(const PrintTable &table, const Stored &stored, uint32_t style, char *buffer, uint32_t *printed)
{
    const PrintRow *row = Find(table, stored);
    if (row == nullptr) {
        return DT_ERR_FAIL;
    }
    if (row->write[style] == nullptr) {
        return DT_OK;
    }
    char line[kLongestNotation];
    *row->write[style](stored.eight, line) = '\0';
    return Printed(PrintText(buffer, kPrintLimit, line), printed);
}

uint32_t PrintNotation(const PrintTable &table, const uint8_t *value, uint32_t mode, char *buffer, uint32_t *printed)
{
    if (mode == kPlainMode && IsUnset(value)) {
        return Printed(PrintText(buffer, kPrintLimit, ""), printed);
    }
    return PrintStored(table, StoredAt(value), 0, buffer, printed);
}

} // namespace bgp
