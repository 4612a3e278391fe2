#include "fuzz/item_list.h"

#include "fuzz/input.h"

#include <cstring>

namespace bgp::fuzz {
namespace {

// Item types, and the bytes of their data; 0 takes what the input says.
struct ItemKind {
    uint16_t type;
    uint16_t width;
};

constexpr ItemKind kItemKinds[] = {{25, 0},  {290, 32}, {2, 1},   {4, 2}, {6, 4},  {21, 4}, {22, 16},
                                   {38, 21}, {25, 0},   {290, 0}, {6, 0}, {38, 0}, {99, 0}};
constexpr uint32_t kCountAt = 24;
constexpr uint32_t kItemsAt = 44;
constexpr uint32_t kUsual = 200; // selectors below it make item 1 a text and item 2 a set

void AddWord(std::vector<uint8_t> &bytes, uint16_t word)
{
    uint8_t stored[sizeof word];
    std::memcpy(stored, &word, sizeof word);
    bytes.insert(bytes.end(), stored, stored + sizeof word);
}

void AddItem(std::vector<uint8_t> &list, size_t number, Input &input)
{
    const uint8_t selector = input.Byte();
    const size_t kinds = sizeof kItemKinds / sizeof kItemKinds[0];
    const ItemKind kind = number < 2 && selector < kUsual ? kItemKinds[number] : kItemKinds[selector % kinds];
    const auto asked = static_cast<uint16_t>(input.Number(2) % 400);
    const uint16_t length = kind.width != 0 ? kind.width : asked;
    const std::string data = input.Take(length);
    AddWord(list, kind.type);
    AddWord(list, length);
    list.insert(list.end(), data.begin(), data.end());
    list.resize(list.size() + length - data.size());
}

} // namespace

std::vector<uint8_t> ItemList(const uint8_t *data, size_t size)
{
    Input input{data, size};
    const uint16_t count = input.Byte() % 16;
    std::vector<uint8_t> list(kItemsAt, 0x5B); // what stands around the count is never read
    std::memcpy(list.data() + kCountAt, &count, sizeof count);
    for (size_t number = 0; number < count; ++number) {
        AddItem(list, number, input);
    }
    return list;
}

} // namespace bgp::fuzz
