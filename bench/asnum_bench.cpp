#include "bench.h"

#include <cstdio>
#include <cstring>

namespace bgp::bench {

namespace {

std::string Plain(uint32_t seed)
{
    return std::to_string(Scatter(seed) | 1);
}

std::string Dotted(uint32_t seed)
{
    const uint32_t number = Scatter(seed) | 0x10000;
    return std::to_string(number >> 16) + '.' + std::to_string(number & 0xFFFF);
}

struct AsNumber {
    uint32_t number, notation;
};

// The C library's scanner behind the same trimming, length, character and range checks.
bool TextbookIn(const char *text, uint8_t *value)
{
    text += std::strspn(text, " \t");
    size_t length = std::strlen(text);
    while (length > 0 && std::strchr(" \t", text[length - 1]) != nullptr) {
        --length;
    }
    if (length < 1 || length > 11) {
        return false;
    }
    char trimmed[12];
    std::memcpy(trimmed, text, length);
    trimmed[length] = '\0';
    if (std::strspn(trimmed, "0123456789.") != length) {
        return false;
    }
    AsNumber as{};
    const char *dot = std::strchr(trimmed, '.');
    if (dot == nullptr) {
        unsigned long long number = 0;
        if (std::sscanf(trimmed, "%llu", &number) != 1 || number < 1 || number > UINT32_MAX) {
            return false;
        }
        as = {static_cast<uint32_t>(number), 0};
    } else {
        unsigned int high = 0;
        unsigned long long low = 0;
        if (std::strchr(dot + 1, '.') != nullptr || std::sscanf(trimmed, "%u.%llu", &high, &low) != 2 || high < 1 ||
            high > 65535 || low > 65535) {
            return false;
        }
        as = {high << 16 | static_cast<uint32_t>(low), 1};
    }
    std::memcpy(value, &as, sizeof as);
    return true;
}

int TextbookOut(const uint8_t *value, char *text)
{
    AsNumber as;
    std::memcpy(&as, value, sizeof as);
    return as.notation != 0 ? std::snprintf(text, 33, "%u.%u", as.number >> 16, as.number & 0xFFFF)
                            : std::snprintf(text, 33, "%u", as.number);
}

const char *FloorNumber(const char *at, uint64_t *number)
{
    const char *start = at;
    uint64_t sum = 0;
    for (; *at >= '0' && *at <= '9'; ++at) {
        sum = sum * 10 + static_cast<uint64_t>(*at - '0');
    }
    *number = sum;
    return at - start > 11 ? start : at;
}

bool FloorIn(const char *text, uint8_t *value)
{
    while (*text == ' ' || *text == '\t') {
        ++text;
    }
    uint64_t first = 0;
    uint64_t second = 0;
    const char *at = FloorNumber(text, &first);
    AsNumber as{static_cast<uint32_t>(first), 0};
    bool fits = at != text && first >= 1 && first <= UINT32_MAX;
    if (*at == '.') {
        const char *low = ++at;
        at = FloorNumber(low, &second);
        fits = at != low && first >= 1 && first <= 65535 && second <= 65535;
        as = {static_cast<uint32_t>(first << 16 | second), 1};
    }
    while (*at == ' ' || *at == '\t') {
        ++at;
    }
    std::memcpy(value, &as, sizeof as);
    return fits && *at == '\0';
}

char *FloorPut(char *to, uint32_t number)
{
    char digits[10];
    char *first = digits + sizeof digits;
    do {
        *--first = static_cast<char>('0' + number % 10);
        number /= 10;
    } while (number != 0);
    const auto length = static_cast<size_t>(digits + sizeof digits - first);
    std::memcpy(to, first, length);
    return to + length;
}

int FloorOut(const uint8_t *value, char *text)
{
    AsNumber as;
    std::memcpy(&as, value, sizeof as);
    char *end = text;
    if (as.notation != 0) {
        end = FloorPut(end, as.number >> 16);
        *end++ = '.';
        end = FloorPut(end, as.number & 0xFFFF);
    } else {
        end = FloorPut(end, as.number);
    }
    *end = '\0';
    return static_cast<int>(end - text);
}

} // namespace

std::vector<Row> AsNumberRows()
{
    return {
        {"ASNUM", "plain", Plain, TextbookIn, TextbookOut, FloorIn, FloorOut},
        {"ASNUM", "dotted", Dotted, TextbookIn, TextbookOut, FloorIn, FloorOut},
    };
}

} // namespace bgp::bench
