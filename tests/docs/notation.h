// Bytes, texts and answers as docs/reference/README.md tells that pages write them.
#ifndef BGP_TESTS_DOCS_NOTATION_H
#define BGP_TESTS_DOCS_NOTATION_H

#include "bgp_datatypes.h"

#include <algorithm>
#include <cstdio>
#include <optional>
#include <sstream>
#include <string>

namespace bgp::test {

struct PageBytes {
    std::string hex;
    bool open; // "..." stood behind them
};

// Nothing when it is something else.
inline std::optional<PageBytes> ReadBytes(std::string text)
{
    PageBytes bytes{"", false};
    if (text.size() >= 3 && text.compare(text.size() - 3, 3, "...") == 0) {
        bytes.open = true;
        text.resize(text.size() - 3);
    }
    std::istringstream pieces(text);
    for (std::string piece; pieces >> piece;) {
        const size_t star = piece.find('*');
        const std::string digits = piece.substr(0, star);
        uint32_t times = 1;
        if (digits.size() % 2 != 0 || digits.find_first_not_of("0123456789abcdef") != std::string::npos ||
            (star != std::string::npos && std::sscanf(piece.c_str() + star, "*%u", &times) != 1)) {
            return std::nullopt;
        }
        while (times-- > 0) {
            bytes.hex += digits;
        }
    }
    return bytes.hex.empty() ? std::nullopt : std::optional(bytes);
}

struct Escape {
    char character, letter;
};
inline constexpr Escape kEscapes[] = {{'\t', 't'}, {'\r', 'r'}, {'\n', 'n'}};

// A text as a page shows it, and back.
inline std::string Shown(const std::string &text)
{
    std::string shown;
    for (const char character : text) {
        const auto *escape = std::find_if(std::begin(kEscapes), std::end(kEscapes),
                                          [character](const Escape &e) { return e.character == character; });
        shown += escape == std::end(kEscapes) ? std::string(1, character) : std::string{'\\', escape->letter};
    }
    return shown;
}

inline std::string Meant(std::string text)
{
    for (const Escape &escape : kEscapes) {
        for (size_t at; (at = text.find(std::string{'\\', escape.letter})) != std::string::npos;) {
            text.replace(at, 2, 1, escape.character);
        }
    }
    return text;
}

// Without the blanks outside of double quotes: how a Lua table is spaced says nothing.
inline std::string Unspaced(const std::string &text)
{
    std::string kept;
    bool quoted = false;
    for (const char character : text) {
        quoted = quoted != (character == '"');
        if (quoted || character != ' ') {
            kept += character;
        }
    }
    return kept;
}

// Is the answer what the page says?
inline bool Agrees(const std::string &said, const std::string &answer)
{
    if (const std::optional<PageBytes> bytes = ReadBytes(said)) {
        return bytes->open ? answer.compare(0, bytes->hex.size(), bytes->hex) == 0 : answer == bytes->hex;
    }
    const std::string wanted = Unspaced(said);
    const std::string given = Unspaced(answer);
    const size_t dots = wanted.find("...");
    return dots == std::string::npos ? given == wanted : dots != 0 && given.compare(0, dots, wanted, 0, dots) == 0;
}

struct NamedCode {
    const char *name;
    uint32_t code;
};

#define BGP_CODE(name)                                                                                                 \
    {                                                                                                                  \
#name, name                                                                                                    \
    }
inline constexpr NamedCode kCodes[] = {
    BGP_CODE(DT_OK),
    BGP_CODE(DT_ERR_FAIL),
    BGP_CODE(DT_ERR_NULL_PTR),
    BGP_CODE(DT_ERR_NO_MEMORY),
    BGP_CODE(DT_ERR_INVALID_PARAM),
    BGP_CODE(DT_ERR_MODE_UNSUPPORTED),
    BGP_CODE(DT_ERR_LENGTH),
    BGP_CODE(DT_ERR_INVALID_VALUE),
    BGP_CODE(DT_ERR_TYPE_MISMATCH),
    BGP_CODE(DT_ERR_CONVERT),
    BGP_CODE(DT_ERR_TOO_LONG),
};
#undef BGP_CODE

inline std::string CodeName(uint32_t code)
{
    const auto *known =
        std::find_if(std::begin(kCodes), std::end(kCodes), [code](const NamedCode &c) { return c.code == code; });
    return known != std::end(kCodes) ? known->name : std::to_string(static_cast<int32_t>(code));
}

} // namespace bgp::test

#endif
