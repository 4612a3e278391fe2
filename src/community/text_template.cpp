#include "community/text_template.h"

namespace bgp {

namespace {

constexpr uint32_t kMost = 0xFFFF; // wider than any buffer: widths and precisions stop here

// The conversions that are known.
enum Takes : uint8_t { kNumber, kCharacter, kText };

struct ConversionRow {
    char letter;
    Takes takes;
    uint32_t base;
    bool isSigned;
    const char *prefix; // of the "#" flag
};

constexpr ConversionRow kConversions[] = {
    {'d', kNumber, 10, true, ""},    //
    {'i', kNumber, 10, true, ""},    //
    {'u', kNumber, 10, false, ""},   //
    {'o', kNumber, 8, false, "0"},   //
    {'x', kNumber, 16, false, "0x"}, //
    {'X', kNumber, 16, false, "0X"}, //
    {'c', kCharacter, 0, false, ""}, //
    {'s', kText, 0, false, ""},      //
};

struct SizeRow {
    const char *modifier;
    uint32_t bits;
};

constexpr SizeRow kSizes[] = {{"hh", 8}, {"h", 16}, {"l", 32}, {"", 32}}; // the longer first

struct Conversion {
    const ConversionRow *row;
    bool left, zeros, plus, space, alternate; // the flags - 0 + blank #
    bool precise;                             // is there a precision?
    uint32_t width;
    uint32_t precision;
    const SizeRow *size;
};

// A field before padding: sign or base prefix, leading zeros, digits or text.
struct Field {
    char digits[12]; // an octal 32-bit number has 11
    Text prefix;
    uint32_t zeros;
    Text body;
};

// ---------------------------------------------------------------------------------------------------------- reading

bool *FlagOf(char character, Conversion &conversion)
{
    switch (character) {
    case '-':
        return &conversion.left;
    case '0':
        return &conversion.zeros;
    case '+':
        return &conversion.plus;
    case ' ':
        return &conversion.space;
    case '#':
        return &conversion.alternate;
    default:
        return nullptr;
    }
}

const char *ReadLimit(const char *at, const char *end, uint32_t *limit)
{
    uint32_t value = 0;
    for (; at < end && IsDigit(*at); ++at) {
        value = value * 10 + static_cast<uint32_t>(*at - '0');
        value = value < kMost ? value : kMost;
    }
    *limit = value;
    return at;
}

const char *ReadSize(const char *at, const char *end, const SizeRow **found)
{
    const SizeRow *size = kSizes; // the last, which is empty, always fits
    size_t length = std::strlen(size->modifier);
    while (static_cast<size_t>(end - at) < length || std::memcmp(at, size->modifier, length) != 0) {
        ++size;
        length = std::strlen(size->modifier);
    }
    *found = size;
    return at + length;
}

// Reads what stands behind a "%". Returns the first character behind the conversion, null when it is none that is
// known.
const char *ReadConversion(const char *at, const char *end, Conversion &conversion)
{
    conversion = {};
    for (bool *flag; at < end && (flag = FlagOf(*at, conversion)) != nullptr; ++at) {
        *flag = true;
    }
    at = ReadLimit(at, end, &conversion.width);
    if (at < end && *at == '.') {
        conversion.precise = true;
        at = ReadLimit(at + 1, end, &conversion.precision);
    }
    at = ReadSize(at, end, &conversion.size);
    for (const ConversionRow &row : kConversions) {
        if (at < end && row.letter == *at) {
            conversion.row = &row;
            return at + 1;
        }
    }
    return nullptr;
}

// ---------------------------------------------------------------------------------------------------------- printing

Text TextOf(const char *text)
{
    return {text, static_cast<uint32_t>(std::strlen(text))};
}

void SetNumber(const Conversion &conversion, uint32_t number, Field &field)
{
    const ConversionRow &row = *conversion.row;
    const uint32_t bits = conversion.size->bits;
    const uint32_t unused = 32 - bits;
    number = number << unused >> unused;
    if (row.isSigned) {
        const bool negative = number >> (bits - 1) != 0;
        number = negative ? (0 - number) << unused >> unused : number;
        field.prefix = TextOf(negative ? "-" : conversion.plus ? "+" : conversion.space ? " " : "");
    } else if (conversion.alternate && (number != 0 || (row.base == 8 && conversion.precise))) {
        field.prefix = TextOf(row.prefix);
    }
    const char *const figures = row.letter == 'X' ? "0123456789ABCDEF" : "0123456789abcdef";
    uint32_t length = 0;
    char *const end = field.digits + sizeof field.digits;
    for (uint32_t rest = number; rest != 0 || (length == 0 && !conversion.precise); rest /= row.base) {
        *(end - ++length) = figures[rest % row.base];
    }
    field.body = {end - length, length};
    // An octal prefix is a digit: it counts towards the precision, which is 1 unless one is given.
    const uint32_t octal = row.base == 8 ? field.prefix.length : 0;
    if (conversion.precise && conversion.precision > length + octal) {
        field.zeros = conversion.precision - length - octal;
    } else if (conversion.zeros && !conversion.precise && !conversion.left) {
        const uint32_t taken = length + field.prefix.length;
        field.zeros = conversion.width > taken ? conversion.width - taken : 0;
    }
}

void SetText(const Conversion &conversion, const char *text, Field &field)
{
    field.body = TextOf(text);
    if (conversion.precise && conversion.precision < field.body.length) {
        field.body.length = conversion.precision;
    }
}

// False when the conversion takes something else.
bool SetField(const Conversion &conversion, const Filling &filling, Field &field)
{
    field = {};
    const bool isText = filling.text != nullptr;
    const bool sized = conversion.size->modifier[0] != '\0';
    if (isText != (conversion.row->takes == kText) || (sized && conversion.row->takes != kNumber)) {
        return false;
    }
    if (isText) {
        SetText(conversion, filling.text, field);
    } else if (conversion.row->takes == kCharacter) {
        field.digits[0] = static_cast<char>(filling.number);
        field.body = {field.digits, field.digits[0] != '\0'}; // a terminator would end the text
    } else {
        SetNumber(conversion, filling.number, field);
    }
    return true;
}

void PutField(GrowingText &to, const Conversion &conversion, const Field &field)
{
    const uint32_t length = field.prefix.length + field.zeros + field.body.length;
    const uint32_t padding = conversion.width > length ? conversion.width - length : 0;
    PutTimes(to, ' ', conversion.left ? 0 : padding);
    Put(to, field.prefix);
    PutTimes(to, '0', field.zeros);
    Put(to, field.body);
    PutTimes(to, ' ', conversion.left ? padding : 0);
}

const char *Find(Text text, uint32_t from, char character)
{
    return static_cast<const char *>(std::memchr(text.at + from, character, text.length - from));
}

} // namespace

Text TakePart(Text &rest)
{
    const char *const first = Find(rest, 0, '%');
    const char *const second = first == nullptr ? nullptr : Find(rest, static_cast<uint32_t>(first + 1 - rest.at), '%');
    const uint32_t length = second == nullptr ? rest.length : static_cast<uint32_t>(second - rest.at);
    const Text part{rest.at, length};
    rest = {rest.at + length, rest.length - length};
    return part;
}

bool FillPart(Text part, const Filling &filling, GrowingText &to)
{
    const char *const end = part.at + part.length;
    const char *const percent = Find(part, 0, '%');
    const char *behind = end;
    Conversion conversion{};
    Field field{};
    if (percent != nullptr) {
        behind = ReadConversion(percent + 1, end, conversion);
        if (behind == nullptr || !SetField(conversion, filling, field)) {
            return false;
        }
    }
    Put(to, Text{part.at, static_cast<uint32_t>((percent == nullptr ? end : percent) - part.at)});
    PutField(to, conversion, field);
    Put(to, Text{behind, static_cast<uint32_t>(end - behind)});
    *to.at = '\0';
    return true;
}

} // namespace bgp
