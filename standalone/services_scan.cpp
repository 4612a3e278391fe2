// sscanf_s: the scanner, read strictly.
//
// The C library's scanner takes "-1" and "0x10" for unsigned numbers and folds what does not fit. This one reads digits
// of the base and ends before a number that its target cannot hold, so that no text means a number it does not spell.
#include "bgp_host_services.h"
#include "thread_state.h"

#include <cstdarg>
#include <cstdint>
#include <cstring>
#include <limits>

using namespace bgp::standalone;

namespace {

enum class Outcome { Matched, Mismatch, TextEnded, BadCall };
enum class Size { Char, Short, Int, Long, LongLong };

struct Conversion {
    bool store = true;
    size_t width = 0; // 0 = not given
    Size size = Size::Int;
    char kind = '\0';
    const char *set = nullptr; // of "[": behind the bracket and any "^"
    size_t setLength = 0;
    bool excluded = false;
};

bool IsSpace(char character)
{
    return character != '\0' && std::strchr(" \t\n\v\f\r", character) != nullptr;
}

void SkipSpace(const char *&text)
{
    while (IsSpace(*text))
        ++text;
}

unsigned DigitValue(char character)
{
    if (character >= '0' && character <= '9')
        return static_cast<unsigned>(character - '0');
    const char lower = static_cast<char>(character | 0x20);
    return lower >= 'a' && lower <= 'f' ? static_cast<unsigned>(lower - 'a') + 10 : 16;
}

// The conversion behind a "%"; moves format behind it. False when it is malformed.
bool ReadConversion(const char *&format, Conversion &conversion)
{
    if (*format == '*') {
        conversion.store = false;
        ++format;
    }
    for (; *format >= '0' && *format <= '9' && conversion.width < 100000; ++format)
        conversion.width = conversion.width * 10 + static_cast<size_t>(*format - '0');
    if (*format == 'h')
        conversion.size = *++format == 'h' ? (++format, Size::Char) : Size::Short;
    else if (*format == 'l')
        conversion.size = *++format == 'l' ? (++format, Size::LongLong) : Size::Long;
    conversion.kind = *format;
    if (*format == '\0')
        return false;
    ++format;
    if (conversion.kind != '[')
        return true;
    conversion.excluded = *format == '^';
    conversion.set = format += conversion.excluded;
    const char *end = *format == '\0' ? nullptr : std::strchr(format + 1, ']'); // a leading "]" is a member
    if (end == nullptr)
        return false;
    conversion.setLength = static_cast<size_t>(end - format);
    format = end + 1;
    return true;
}

bool InSet(const Conversion &conversion, char character)
{
    bool found = false;
    for (size_t at = 0; at < conversion.setLength && !found; ++at) {
        const auto low = static_cast<unsigned char>(conversion.set[at]);
        auto high = low;
        if (at + 2 < conversion.setLength && conversion.set[at + 1] == '-') {
            high = static_cast<unsigned char>(conversion.set[at + 2]);
            at += 2;
        }
        const auto wanted = static_cast<unsigned char>(character);
        found = low <= wanted && wanted <= high;
    }
    return found != conversion.excluded;
}

template <class Unsigned, class Signed>
uint64_t Largest(bool isSigned)
{
    return isSigned ? static_cast<uint64_t>(std::numeric_limits<Signed>::max()) : std::numeric_limits<Unsigned>::max();
}

uint64_t LargestOf(Size size, bool isSigned)
{
    switch (size) {
    case Size::Char:
        return Largest<unsigned char, signed char>(isSigned);
    case Size::Short:
        return Largest<unsigned short, short>(isSigned);
    case Size::Int:
        return Largest<unsigned int, int>(isSigned);
    case Size::Long:
        return Largest<unsigned long, long>(isSigned);
    case Size::LongLong:
        break;
    }
    return Largest<unsigned long long, long long>(isSigned);
}

template <class Number>
void Put(void *target, uint64_t value)
{
    const auto number = static_cast<Number>(value);
    std::memcpy(target, &number, sizeof number);
}

void PutNumber(void *target, Size size, uint64_t value)
{
    switch (size) {
    case Size::Char:
        return Put<unsigned char>(target, value);
    case Size::Short:
        return Put<unsigned short>(target, value);
    case Size::Int:
        return Put<unsigned int>(target, value);
    case Size::Long:
        return Put<unsigned long>(target, value);
    case Size::LongLong:
        return Put<unsigned long long>(target, value);
    }
}

Outcome ScanNumber(const char *&text, const Conversion &conversion, void *target)
{
    SkipSpace(text);
    if (*text == '\0')
        return Outcome::TextEnded;
    const unsigned base = conversion.kind == 'u' || conversion.kind == 'd' ? 10 : 16;
    const uint64_t largest = LargestOf(conversion.size, conversion.kind == 'd');
    uint64_t value = 0;
    size_t digits = 0;
    for (; (conversion.width == 0 || digits < conversion.width) && DigitValue(*text) < base; ++digits, ++text) {
        const unsigned digit = DigitValue(*text);
        if (value > (largest - digit) / base)
            return Outcome::Mismatch;
        value = value * base + digit;
    }
    if (digits == 0)
        return Outcome::Mismatch;
    if (conversion.store)
        PutNumber(target, conversion.size, value);
    return Outcome::Matched;
}

// c, s and [. Only c takes exactly its width and adds no terminator.
Outcome ScanText(const char *&text, const Conversion &conversion, char *target, size_t size)
{
    const bool characters = conversion.kind == 'c';
    if (conversion.kind == 's')
        SkipSpace(text);
    if (*text == '\0')
        return Outcome::TextEnded;
    const size_t width = conversion.width != 0 ? conversion.width : characters ? 1 : SIZE_MAX;
    size_t length = 0;
    while (length < width && text[length] != '\0' &&
           (characters || (conversion.kind == 's' ? !IsSpace(text[length]) : InSet(conversion, text[length]))))
        ++length;
    if (characters ? length < width : length == 0)
        return Outcome::Mismatch;
    if (conversion.store) {
        if (length + !characters > size)
            return Outcome::Mismatch;
        std::memcpy(target, text, length);
        if (!characters)
            target[length] = '\0';
    }
    text += length;
    return Outcome::Matched;
}

struct Values {
    va_list list;
};

Outcome ScanItem(const char *&text, const Conversion &conversion, Values &values)
{
    void *target = nullptr;
    switch (conversion.kind) {
    case '%':
        SkipSpace(text);
        if (*text == '\0')
            return Outcome::TextEnded;
        return *text == '%' ? (++text, Outcome::Matched) : Outcome::Mismatch;
    case 'u':
    case 'd':
    case 'x':
    case 'X':
        if (conversion.store && (target = va_arg(values.list, void *)) == nullptr)
            return Outcome::BadCall;
        return ScanNumber(text, conversion, target);
    case 'c':
    case 's':
    case '[': {
        size_t size = 0;
        if (conversion.store) {
            target = va_arg(values.list, void *);
            size = va_arg(values.list, size_t);
            if (target == nullptr || size == 0)
                return Outcome::BadCall;
        }
        return ScanText(text, conversion, static_cast<char *>(target), size);
    }
    default:
        return Outcome::BadCall;
    }
}

int32_t Scan(const char *text, const char *format, Values &values)
{
    int32_t items = 0;
    while (*format != '\0') {
        Outcome outcome = Outcome::Matched;
        bool counted = false;
        if (IsSpace(*format)) {
            ++format;
            SkipSpace(text);
        } else if (*format != '%') {
            outcome = *text == '\0' ? Outcome::TextEnded : *text == *format ? Outcome::Matched : Outcome::Mismatch;
            ++format;
            ++text;
        } else {
            Conversion conversion;
            if (!ReadConversion(++format, conversion))
                return -1;
            outcome = ScanItem(text, conversion, values);
            counted = conversion.store && conversion.kind != '%';
        }
        if (outcome == Outcome::BadCall || (outcome == Outcome::TextEnded && items == 0))
            return -1;
        if (outcome != Outcome::Matched)
            break;
        items += counted;
    }
    return items;
}

} // namespace

int32_t sscanf_s(const char *text, const char *format, ...)
{
    if (detail::ScanFails())
        return 0;
    if (text == nullptr || format == nullptr)
        return -1;
    Values values;
    va_start(values.list, format);
    const int32_t items = Scan(text, format, values);
    va_end(values.list);
    return items;
}
