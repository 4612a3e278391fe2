#include "pattern.h"

#include <arpa/inet.h>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>

namespace bgp::bench {

uint64_t Random::Next()
{
    state += 0x9E3779B97F4A7C15u;
    uint64_t mixed = state;
    mixed = (mixed ^ mixed >> 30) * 0xBF58476D1CE4E5B9u;
    mixed = (mixed ^ mixed >> 27) * 0x94D049BB133111EBu;
    return mixed ^ mixed >> 31;
}

namespace {

std::string Between(uint64_t least, uint64_t most, Random &random)
{
    return std::to_string(least + random.Below(most - least + 1));
}

// Of each number of digits as many as of any other, or of each number as many as of any other.
std::string Spread(uint64_t largest, Random &random)
{
    if (random.evenNumbers) {
        return Between(1, largest, random);
    }
    const auto widest = static_cast<uint64_t>(std::to_string(largest).size());
    uint64_t least = 1;
    for (uint64_t width = 1 + random.Below(widest); width > 1; --width) {
        least *= 10;
    }
    const uint64_t most = least * 10 - 1;
    return Between(least, most < largest ? most : largest, random);
}

std::string Hex(uint32_t digits, Random &random)
{
    std::string text;
    while (digits-- > 0) {
        text += "0123456789abcdef"[random.Below(16)];
    }
    return text;
}

std::string HexUpTo(uint32_t digits, Random &random)
{
    const auto width = static_cast<uint32_t>(1 + random.Below(digits));
    return "123456789abcdef"[random.Below(15)] + Hex(width - 1, random);
}

std::string Ipv4(uint64_t firstLeast, uint64_t firstMost, Random &random)
{
    std::string text = Between(firstLeast, firstMost, random);
    for (int i = 0; i < 3; ++i) {
        text += '.' + Between(0, 255, random);
    }
    return text;
}

// A third each: a router's or host's address with a gap, a subnet's, and one of eight full groups; of the last, one in
// four is written with all its digits.
std::string Ipv6(Random &random)
{
    const std::string site = "2001:db8:" + HexUpTo(4, random);
    switch (random.Below(3)) {
    case 0:
        return site + "::" + HexUpTo(4, random);
    case 1:
        return site + ':' + HexUpTo(4, random) + "::" + (random.Below(2) == 0 ? "" : HexUpTo(2, random));
    default:
        std::string text = random.Below(4) == 0 ? "2001:0db8" : "2001:db8";
        const bool full = text.size() == 9;
        for (int i = 0; i < 6; ++i) {
            text += ':' + (full ? Hex(4, random) : HexUpTo(4, random));
        }
        return text;
    }
}

std::string Grouped(uint32_t groups, char separator, Random &random)
{
    std::string text = Hex(4, random);
    while (--groups > 0) {
        text += separator + Hex(4, random);
    }
    return text;
}

std::string Name(Random &random)
{
    std::string text;
    for (uint64_t length = 1 + random.Below(15); length > 0; --length) {
        text += static_cast<char>('a' + random.Below(26));
    }
    return text;
}

std::string MakePiece(std::string_view piece, Random &random)
{
    const auto number = [](std::string_view digits) { return std::strtoull(std::string(digits).c_str(), nullptr, 10); };
    const size_t dash = piece.find('-');
    if (dash != std::string_view::npos) {
        return Between(number(piece.substr(0, dash)), number(piece.substr(dash + 1)), random);
    }
    if (piece == "ip4") {
        return Ipv4(1, 223, random);
    }
    if (piece == "group") {
        return Ipv4(224, 239, random);
    }
    if (piece == "ip6") {
        return Ipv6(random);
    }
    if (piece == "as4") {
        return Between(65536, UINT32_MAX, random);
    }
    if (piece == "mac") {
        return Grouped(3, '-', random);
    }
    if (piece == "esi") { // of type 00, which every route takes
        return "00" + Hex(2, random) + '.' + Grouped(4, '.', random);
    }
    if (piece == "name") {
        return Name(random);
    }
    const uint64_t width = number(piece.substr(1));
    switch (piece[0]) {
    case 'u':
        return Spread(UINT64_MAX >> (64 - width), random);
    case 'x':
        return Hex(static_cast<uint32_t>(width), random);
    case 'h':
        return HexUpTo(static_cast<uint32_t>(width), random);
    default:
        std::fprintf(stderr, "bench: no piece {%.*s}\n", static_cast<int>(piece.size()), piece.data());
        std::exit(3);
    }
}

} // namespace

std::string MakeText(const char *pattern, Random &random)
{
    std::string text;
    for (const char *at = pattern; *at != '\0'; ++at) {
        if (*at != '{') {
            text += *at;
            continue;
        }
        const char *const end = std::strchr(at, '}');
        text += MakePiece({at + 1, static_cast<size_t>(end - at - 1)}, random);
        at = end;
    }
    return text;
}

} // namespace bgp::bench
