#include "rdrt/notation.h"

namespace bgp {

namespace {

// The notations in the order of their numbers. A plain AS number takes the first of its two rows that has room for both
// numbers.
struct NotationRow {
    uint32_t shape;
    Administrator administrator;
    Split split;
};

constexpr NotationRow kNotations[] = {
    {Shape("...:"), kByIpv4, kIpv4Split},
    {Shape(":"), kByAs2, kAs2Split},
    {Shape(":"), kByAs4, kAs4Split},
    {Shape(".:"), kByAs4, kDottedSplit},
};

constexpr uint32_t Largest(uint32_t width)
{
    return UINT32_MAX >> (32 - 8 * width);
}

bool HasRoom(const Split &split, const Numbers &numbers)
{
    for (uint32_t i = 0; i < kMostNumbers && split.at[i].width != 0; ++i) {
        if (numbers.at[i] > Largest(split.at[i].width)) {
            return false;
        }
    }
    return true;
}

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

bool Encode(const NotationRule &rule, const Numbers &numbers, uint8_t *eight, uint8_t *notation)
{
    uint8_t number = rule.firstNotation;
    for (const NotationRow &row : kNotations) {
        if (row.shape == numbers.shape && HasRoom(row.split, numbers)) {
            StoreBig(eight, rule.kinds[row.administrator], 2);
            *notation = number;
            const bool any = StoreSplit(row.split, numbers, eight);
            return any || !rule.refusesZero || row.administrator == kByIpv4;
        }
        ++number;
    }
    return false;
}

uint32_t ParseNotation(const NotationRule &rule, const char *text, void *value)
{
    if (text == nullptr || value == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    auto *bytes = static_cast<uint8_t *>(value);
    const Text trimmed = Trim(text);
    Numbers numbers;
    uint8_t notation = 0;
    if (!IsLong(trimmed, kShortestNotation, kLongestNotation) || !ReadNumbers(trimmed, ".:", numbers, nullptr) ||
        !Encode(rule, numbers, bytes, &notation)) {
        return DT_ERR_FAIL;
    }
    Store(bytes + 8, uint32_t{notation});
    return DT_OK;
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
