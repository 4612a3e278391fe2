#include "rdrt/notation.h"

namespace bgp {

namespace {

// Returns whether any number is other than zero.
bool StoreSplit(const Split &split, const Numbers &numbers, uint8_t *eight)
{
    uint64_t any = 0;
    for (uint32_t i = 0; i < kMostNumbers && split.at[i].width != 0; ++i) {
        StoreBig(eight + split.at[i].offset, numbers.at[i], split.at[i].width);
        any |= numbers.at[i];
    }
    return any != 0;
}

} // namespace

uint32_t Encode(const NotationRule &rule, Text text, const Numbers &numbers, uint8_t *eight, Why *why)
{
    const uint32_t found = FindNotation(kSharedText, text, numbers, why);
    if (found == kNoFit) {
        return kNoFit;
    }
    const Storage &stored = kStorage[found];
    StoreBig(eight, rule.kinds[stored.administrator], 2);
    const bool any = StoreSplit(stored.split, numbers, eight);
    if (!any && rule.refusesZero && stored.administrator != kByIpv4) {
        Refuse(why, text, kAllZero);
        return kNoFit;
    }
    return rule.firstNotation + found;
}

bool ReadShared(const NotationRule &rule, const char *text, void *value, Why *why)
{
    auto *bytes = static_cast<uint8_t *>(value);
    const Text trimmed = Trim(text);
    Numbers numbers;
    if (!ReadNumbersOf(kSharedText, trimmed, numbers, why)) {
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
    if (row->format[style] == nullptr) {
        return DT_OK;
    }
    const auto number = [&](uint32_t i) -> uint64_t {
        return LoadBig(stored.eight + row->split.at[i].offset, row->split.at[i].width);
    };
    const Argument arguments[kMostSlices] = {number(0), number(1), number(2), number(3), number(4), number(5)};
    return Printed(Print(buffer, kPrintLimit, row->format[style], arguments), printed);
}

uint32_t PrintNotation(const PrintTable &table, const uint8_t *value, uint32_t mode, char *buffer, uint32_t *printed)
{
    if (mode == kPlainMode && IsUnset(value)) {
        return Printed(PrintText(buffer, kPrintLimit, ""), printed);
    }
    return PrintStored(table, StoredAt(value), 0, buffer, printed);
}

} // namespace bgp
