#include "json_text.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

namespace bgpdt {

namespace {

constexpr size_t kLongestEscape = 6; // of one byte of the text: \u and four digits
constexpr uint32_t kReplacement = 0xFFFD;
constexpr uint32_t kFirstOfTwoUnits = 0x10000; // from here on UTF-16 needs a pair

// Characters that stand for themselves.
constexpr auto kPlain = [] {
    std::array<bool, 256> plain{};
    for (size_t byte = 0x20; byte < 0x7f; ++byte) {
        plain[byte] = byte != '"' && byte != '\\';
    }
    return plain;
}();

// Whether eight characters all stand for themselves.
bool AllPlain(uint64_t eight)
{
    constexpr uint64_t kEach = 0x0101010101010101u;
    // The top bit of the first byte that is such, counted from the lowest, and perhaps of bytes above it.
    const uint64_t control = eight - kEach * 0x20;
    const uint64_t deleteOrAbove = eight | (eight + kEach);
    const uint64_t quote = (eight ^ kEach * '"') - kEach;
    const uint64_t backslash = (eight ^ kEach * '\\') - kEach;
    return ((control | deleteOrAbove | quote | backslash) & kEach * 0x80) == 0;
}

// Which bytes begin a character of more than one, and which may come second: RFC 3629, section 4. The further ones are
// 80 to BF.
struct Beginning {
    uint8_t first, last;          // of the first byte
    uint8_t secondFrom, secondTo; // of the second
    uint8_t length;
    uint8_t bits; // of the first byte that belong to the code point
};

constexpr Beginning kBeginnings[] = {
    {0xC2, 0xDF, 0x80, 0xBF, 2, 0x1F}, {0xE0, 0xE0, 0xA0, 0xBF, 3, 0x0F}, {0xE1, 0xEC, 0x80, 0xBF, 3, 0x0F},
    {0xED, 0xED, 0x80, 0x9F, 3, 0x0F}, {0xEE, 0xEF, 0x80, 0xBF, 3, 0x0F}, {0xF0, 0xF0, 0x90, 0xBF, 4, 0x07},
    {0xF1, 0xF3, 0x80, 0xBF, 4, 0x07}, {0xF4, 0xF4, 0x80, 0x8F, 4, 0x07},
};

struct Character {
    uint32_t code;
    size_t length; // in bytes
};

const Beginning *FindBeginning(uint8_t byte)
{
    for (const Beginning &row : kBeginnings) {
        if (byte >= row.first && byte <= row.last) {
            return &row;
        }
    }
    return nullptr;
}

// The character with which the text begins, which is none of ASCII; kReplacement for bytes that are no character.
Character First(std::string_view text)
{
    const auto byte = [text](size_t at) { return static_cast<uint8_t>(text[at]); };
    const Beginning *row = FindBeginning(byte(0));
    if (row == nullptr) {
        return {kReplacement, 1};
    }
    uint32_t code = byte(0) & row->bits;
    for (size_t at = 1; at < row->length; ++at) {
        const uint8_t from = at == 1 ? row->secondFrom : 0x80, to = at == 1 ? row->secondTo : 0xBF;
        if (at == text.size() || byte(at) < from || byte(at) > to) {
            return {kReplacement, at};
        }
        code = code << 6 | (byte(at) & 0x3F);
    }
    return {code, row->length};
}

char *PutUnit(char *at, uint32_t unit)
{
    constexpr char kDigits[] = "0123456789abcdef";
    *at++ = '\\';
    *at++ = 'u';
    for (int shift = 12; shift >= 0; shift -= 4) {
        *at++ = kDigits[unit >> shift & 15];
    }
    return at;
}

char *PutCode(char *at, uint32_t code)
{
    if (code < kFirstOfTwoUnits) {
        return PutUnit(at, code);
    }
    const uint32_t rest = code - kFirstOfTwoUnits;
    return PutUnit(PutUnit(at, 0xD800 | rest >> 10), 0xDC00 | (rest & 0x3FF));
}

// A character of ASCII that does not stand for itself.
char *PutEscape(char *at, char character)
{
    constexpr std::string_view kNamed = "\b\t\n\f\r\"\\", kNames = "btnfr\"\\";
    const size_t named = kNamed.find(character);
    if (named == kNamed.npos) {
        return PutUnit(at, static_cast<uint8_t>(character));
    }
    *at++ = '\\';
    *at++ = kNames[named];
    return at;
}

// Takes the characters that stand for themselves from the beginning of the text.
char *TakePlain(char *at, std::string_view &text)
{
    uint64_t eight;
    size_t taken = 0;
    while (text.size() >= sizeof eight && taken < text.size()) {
        const size_t from = std::min(taken, text.size() - sizeof eight); // the last eight, some of them once more
        std::memcpy(&eight, text.data() + from, sizeof eight);
        if (!AllPlain(eight)) {
            break;
        }
        std::memcpy(at + from, &eight, sizeof eight);
        taken = from + sizeof eight;
    }
    for (; taken < text.size() && kPlain[static_cast<uint8_t>(text[taken])]; ++taken) {
        at[taken] = text[taken];
    }
    text.remove_prefix(taken);
    return at + taken;
}

// Takes one that does not.
char *TakeOther(char *at, std::string_view &text)
{
    if (static_cast<uint8_t>(text[0]) < 0x80) {
        at = PutEscape(at, text[0]);
        text.remove_prefix(1);
    } else {
        const Character character = First(text);
        at = PutCode(at, character.code);
        text.remove_prefix(character.length);
    }
    return at;
}

} // namespace

void PutJsonText(Sink &sink, std::string_view text)
{
    char *at = sink.Room(text.size() * kLongestEscape + 2);
    *at++ = '"';
    while (true) {
        at = TakePlain(at, text);
        if (text.empty()) {
            break;
        }
        at = TakeOther(at, text);
    }
    *at++ = '"';
    sink.End(at);
}

} // namespace bgpdt
