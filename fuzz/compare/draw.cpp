#include "fuzz/compare/draw.h"

#include "fuzz/item_list.h"
#include "fuzz/text_changes.h"

#include <algorithm>
#include <cctype>
#include <cstring>
#include <string_view>

namespace bgp::compare {
namespace {

constexpr uint8_t kModes[] = {0, 1, 2, 3, 4, 5, 6, 7, 255};
constexpr uint8_t kTextModes[] = {1, 2, 6};

// Numbers that follow on one another give unlike results.
uint64_t Mixed(uint64_t number)
{
    number += 0x9E3779B97F4A7C15;
    number = (number ^ number >> 30) * 0xBF58476D1CE4E5B9;
    number = (number ^ number >> 27) * 0x94D049BB133111EB;
    return number ^ number >> 31;
}

std::string Blanks(Draw &draw)
{
    std::string blanks;
    for (size_t count = Below(draw, 4); count != 0; --count) {
        blanks += " \t\t\r"[Below(draw, 4)];
    }
    return blanks;
}

// Once as a rule: what is changed often is soon refused.
size_t SomeTimes(Draw &draw)
{
    size_t times = 1;
    while (times < 5 && OneIn(draw, 2)) {
        ++times;
    }
    return times;
}

void ChangeSome(Draw &draw, std::string &text)
{
    Bytes bytes(text.begin(), text.end());
    for (size_t change = SomeTimes(draw); change != 0; --change) {
        if (OneIn(draw, 2)) {
            fuzz::ChangeText(bytes, 0, draw.random);
        } else {
            fuzz::ChangeBytes(bytes, draw.material.words, draw.random);
        }
    }
    text.assign(bytes.begin(), bytes.end());
}

// A number at the edge of a field, or one that stands for something: 23456 is AS_TRANS (RFC 6793), those at 0xFFFFFF00
// are well-known communities (RFC 1997).
void PutWord(Draw &draw, Bytes &value)
{
    constexpr uint32_t kWords[] = {0, 1, 23456, 0xFFFF, 0x10000, 0x7FFFFFFF, 0x80000000, 0xFFFFFF01, 0xFFFFFFFF};
    const uint32_t word = Any(draw, kWords);
    const size_t width = OneIn(draw, 2) ? sizeof(uint16_t) : sizeof(uint32_t);
    const bool bigEndian = OneIn(draw, 2);
    const size_t from = Below(draw, value.size());
    for (size_t i = 0; i < width && from + i < value.size(); ++i) {
        value[from + i] = static_cast<uint8_t>(word >> 8 * (bigEndian ? width - 1 - i : i));
    }
}

void ChangeSome(Draw &draw, Bytes &value)
{
    constexpr uint8_t kLimits[] = {0, 1, 2, 32, 127, 128, 255};
    for (size_t change = SomeTimes(draw); change != 0 && !value.empty(); --change) {
        // What is at the front decides what the rest is.
        const size_t span = OneIn(draw, 2) ? std::min<size_t>(8, value.size()) : value.size();
        uint8_t &byte = value[Below(draw, span)];
        switch (Below(draw, 4)) {
        case 0:
            byte = Any(draw, kLimits);
            break;
        case 1:
            byte = static_cast<uint8_t>(Below(draw, 20));
            break;
        case 2:
            PutWord(draw, value);
            break;
        default:
            byte = static_cast<uint8_t>(draw.random());
        }
    }
}

// The two words that name kinds (of key, of route) hold small numbers.
Bytes NamedKind(Draw &draw, Bytes value)
{
    constexpr size_t kKindsAt[] = {0, 4};
    for (const size_t at : kKindsAt) {
        if (value.size() >= at + sizeof(uint32_t)) {
            const auto kind = static_cast<uint32_t>(Below(draw, 18));
            std::memcpy(value.data() + at, &kind, sizeof kind);
        }
    }
    return value;
}

} // namespace

Draw DrawFor(const Material &material, uint64_t seed, uint64_t number)
{
    return {material, std::minstd_rand(static_cast<uint32_t>(Mixed(Mixed(seed) + number)))};
}

size_t Below(Draw &draw, size_t limit)
{
    return draw.random() % limit;
}

bool OneIn(Draw &draw, size_t count)
{
    return Below(draw, count) == 0;
}

size_t DrawMissing(Draw &draw, size_t pointers)
{
    return OneIn(draw, 32) ? Below(draw, pointers) : kNone;
}

uint8_t DrawMode(Draw &draw)
{
    return OneIn(draw, 2) ? Any(draw, kTextModes) : Any(draw, kModes);
}

uint16_t DrawTypeId(Draw &draw, uint16_t usual)
{
    return OneIn(draw, 16) ? static_cast<uint16_t>(draw.random()) : usual;
}

std::string DrawPiece(Draw &draw, const std::string &text)
{
    std::vector<size_t> borders = {0, text.size()};
    for (size_t at = 0; at < text.size(); ++at) {
        if (std::isalnum(static_cast<unsigned char>(text[at])) == 0) {
            borders.push_back(at);
            borders.push_back(at + 1);
        }
    }
    const size_t one = Any(draw, borders), other = Any(draw, borders);
    return text.substr(std::min(one, other), std::max(one, other) - std::min(one, other));
}

namespace {

const std::vector<std::string> &DrawSource(Draw &draw, const Subject &subject)
{
    if (!subject.prints.empty() && OneIn(draw, 8)) {
        return subject.prints;
    }
    return subject.texts.empty() || OneIn(draw, 8) ? draw.material.texts : subject.texts;
}

std::string DrawNoise(Draw &draw)
{
    constexpr size_t kLongest = 60;
    const Bytes noise = DrawBytes(draw, Below(draw, kLongest));
    return {noise.begin(), noise.end()};
}

} // namespace

std::string DrawText(Draw &draw, const Subject &subject)
{
    std::string text = OneIn(draw, 16) ? DrawNoise(draw) : Any(draw, DrawSource(draw, subject));
    if (OneIn(draw, 16)) {
        text = DrawPiece(draw, text);
    }
    if (!OneIn(draw, 3)) {
        ChangeSome(draw, text);
    }
    if (OneIn(draw, 16)) {
        text = '"' + text + '"';
    }
    if (OneIn(draw, 8)) {
        text = Blanks(draw) + text + Blanks(draw);
    }
    return text.c_str(); // up to its first NUL
}

Bytes DrawValue(Draw &draw, const Subject &subject)
{
    const size_t size = SizeOfValues(subject);
    if (OneIn(draw, subject.values.empty() ? 2 : 8)) {
        const Bytes value = OneIn(draw, 2) ? Bytes(size) : DrawBytes(draw, size);
        return OneIn(draw, 2) ? value : NamedKind(draw, value);
    }
    const Subject &other = Any(draw, draw.material.subjects);
    const bool foreign = subject.values.empty() || OneIn(draw, 8);
    Bytes value = !foreign ? Any(draw, subject.values) : other.values.empty() ? Bytes(size) : Any(draw, other.values);
    if (foreign) {
        value.resize(size);
    }
    if (OneIn(draw, 2)) {
        ChangeSome(draw, value);
    }
    return value;
}

namespace {

// A printf conversion, of the kinds there are and of some that there are not.
std::string DrawConversion(Draw &draw)
{
    constexpr std::string_view kFlags[] = {"", "", "-", "0", "#", "+", " ", "#0", "-0"};
    constexpr std::string_view kNumbers[] = {"", "", "1", "5", "12", "300"};
    constexpr std::string_view kLetters = "dduuxXosscpnhi%";
    std::string conversion = "%" + std::string(Any(draw, kFlags)) + std::string(Any(draw, kNumbers));
    if (OneIn(draw, 3)) {
        conversion += '.' + std::string(Any(draw, kNumbers));
    }
    return conversion + Any(draw, kLetters);
}

// What an item list is made from: a template, a set, and items to fill it.
Bytes DrawItems(Draw &draw)
{
    constexpr std::string_view kPieces[] = {"Peer ", "", "###", "as", "%%", ": "};
    constexpr size_t kSet = 32, kTail = 80;
    std::string pattern;
    for (size_t pieces = Below(draw, 7); pieces != 0; --pieces) {
        pattern += std::string(Any(draw, kPieces)) + (OneIn(draw, 2) ? DrawConversion(draw) : "");
    }
    Bytes items = {static_cast<uint8_t>(Below(draw, 9)), 0, static_cast<uint8_t>(pattern.size()), 0};
    items.insert(items.end(), pattern.begin(), pattern.end());
    const Bytes set = DrawBytes(draw, kSet);
    Bytes tail = DrawBytes(draw, kTail);
    for (uint8_t &byte : tail) {
        byte = static_cast<uint8_t>(OneIn(draw, 2) ? byte : Below(draw, 3)); // families, flags, short lengths
    }
    items.insert(items.end(), 3, 0);
    items.insert(items.end(), set.begin(), set.end());
    items.insert(items.end(), tail.begin(), tail.end());
    return items;
}

} // namespace

Bytes DrawPrintable(Draw &draw, const Subject &subject)
{
    if (!PrintsItems(subject)) {
        return DrawValue(draw, subject);
    }
    const Bytes items = OneIn(draw, 4) ? DrawValue(draw, subject) : DrawItems(draw);
    return fuzz::ItemList(items.data(), items.size());
}

Bytes DrawOther(Draw &draw, const Subject &subject, const Bytes &value)
{
    Bytes other = OneIn(draw, 3) ? DrawValue(draw, subject) : value;
    other.resize(value.size());
    if (OneIn(draw, 2)) {
        ChangeSome(draw, other);
    }
    return other;
}

uint32_t DrawLength(Draw &draw, const Subject &subject, size_t size)
{
    const size_t lengths[] = {subject.rows[kOld].BinaryLength, 0, Below(draw, size + 1), size + 1, Below(draw, kRoom)};
    return static_cast<uint32_t>(std::min(kRoom, OneIn(draw, 4) ? Any(draw, lengths) : size));
}

Bytes DrawBytes(Draw &draw, size_t count)
{
    Bytes bytes(count);
    for (uint8_t &byte : bytes) {
        byte = static_cast<uint8_t>(draw.random() >> 8);
    }
    return bytes;
}

} // namespace bgp::compare
