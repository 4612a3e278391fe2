// What textbook code starts with: trimming into a buffer of its own, length limits, a character set.
#ifndef BGP_BENCH_TEXTBOOK_H
#define BGP_BENCH_TEXTBOOK_H

#include <cstring>

namespace bgp::bench {

// The text without the blanks around it, when it is least to most characters long and made of `allowed` alone (null: of
// anything but blanks).
template <size_t Size>
bool Trimmed(const char *text, size_t least, size_t most, const char *allowed, char (&to)[Size])
{
    text += std::strspn(text, " \t");
    size_t length = std::strlen(text);
    while (length > 0 && std::strchr(" \t", text[length - 1]) != nullptr) {
        --length;
    }
    if (length < least || length > most || length >= Size) {
        return false;
    }
    std::memcpy(to, text, length);
    to[length] = '\0';
    return allowed != nullptr ? std::strspn(to, allowed) == length : std::strcspn(to, " \t") == length;
}

} // namespace bgp::bench

#endif
