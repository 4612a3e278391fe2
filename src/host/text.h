// Text as every type reads and prints it: trimming that leaves the caller's text alone, runs of numbers joined by
// separators, and printing from format strings through the host's bounded formatter.
#ifndef BGP_HOST_TEXT_H
#define BGP_HOST_TEXT_H

#include "bgp_host_services.h"
#include "host/refusal.h"

#include <cstdint>
#include <cstring>
#include <initializer_list>

namespace bgp {

// ------------------------------------------------------------------------------------------------------------- input

// No host takes a graphic ASCII character for a blank. About any other the host is asked.
inline bool IsGraphic(char character)
{
    return character >= '!' && character <= '~';
}

constexpr bool IsDigit(char character)
{
    return character >= '0' && character <= '9';
}

constexpr bool IsHexDigit(char character)
{
    return IsDigit(character) || (character >= 'A' && character <= 'F') || (character >= 'a' && character <= 'f');
}

// The white space of the C locale, vertical kinds included, which a scan by format skips before a number or a word:
// wider than the blanks that are trimmed, and the same for all hosts.
inline bool IsWhiteSpace(char character)
{
    return character == ' ' || (character >= '\t' && character <= '\r');
}

// The text without what the host's service trims at its ends. The service works on copies of the characters there that
// are not graphic, and need not be asked about a text that begins and ends with a graphic one; the caller's text is
// left alone. A service that answers null gives a null piece.
using TrimService = char *(*)(char *text);
Text TrimEnds(TrimService service, Text text);

inline Text TrimBy(TrimService service, Text text)
{
    const bool bare = text.length == 0 || (IsGraphic(text.at[0]) && IsGraphic(text.at[text.length - 1]));
    return bare ? text : TrimEnds(service, text);
}

char *TrimBlanks(char *text); // SYSDT_BTrim()

// The text without the blanks around it, however many. Of a text that the host answers null for, nothing is left.
inline Text Trim(Text text)
{
    const Text trimmed = TrimBy(TrimBlanks, text);
    return trimmed.at != nullptr ? trimmed : Text{text.at, 0};
}

inline Text Trim(const char *text)
{
    return Trim(Text{text, static_cast<uint32_t>(std::strlen(text))});
}

// Whether the host (NCF_IsSpaceInString) finds a blank in the piece.
bool HostFindsBlank(Text text);

// The characters at the start of a piece that are graphic, in whole words of eight.
uint32_t GraphicWords(Text text);

inline bool HasBlank(Text text)
{
    constexpr uint32_t kLong = 32; // where a scan by words pays
    for (uint32_t i = text.length < kLong ? 0 : GraphicWords(text); i < text.length; ++i) {
        if (!IsGraphic(text.at[i])) {
            return HostFindsBlank({text.at + i, text.length - i});
        }
    }
    return false;
}

// The first blank of a piece that has one; where the host finds it in several characters together, the first that is
// not graphic.
[[gnu::cold]] void NoteBlank(const Why &why, Text text);

// The same as !HasBlank(), with a reason.
inline bool HasNoBlank(Text text, Why *why)
{
    if (!HasBlank(text)) {
        return true;
    }
    if (why != nullptr) [[unlikely]] {
        NoteBlank(*why, text);
    }
    return false;
}

[[gnu::cold]] void NoteCharacter(const Why &why, Text character, const BgpRule &rule);

// Refuses a character by the rule, or because it is a blank: for parsers that want something else at the place.
inline bool RefuseCharacter(Why *why, Text character, const BgpRule &rule)
{
    if (why != nullptr) [[unlikely]] {
        NoteCharacter(*why, character, rule);
    }
    return false;
}

// The characters that part the items of a list. The host is asked once about each kind that a text has in a row.
struct Blanks {
    char asked = '!';
    bool isBlank = false;
};

bool IsHostsBlank(char character);

inline bool IsBlank(Blanks &blanks, char character)
{
    if (IsGraphic(character)) {
        return false;
    }
    if (character != blanks.asked) {
        blanks = {character, IsHostsBlank(character)};
    }
    return blanks.isBlank;
}

// Does the length lie in [least, most]?
inline bool IsLong(Text text, uint32_t least, uint32_t most)
{
    return text.length >= least && text.length <= most;
}

[[gnu::cold]] void NoteLength(const Why &why, Text text, uint32_t least, uint32_t most);

// The same, with a reason.
inline bool HasLength(Text text, uint32_t least, uint32_t most, Why *why)
{
    if (IsLong(text, least, most)) {
        return true;
    }
    if (why != nullptr) [[unlikely]] {
        NoteLength(*why, text, least, most);
    }
    return false;
}

// Copies the piece, terminated, for host services that want a terminated text. False when it does not fit in `size`.
bool Terminate(Text text, char *to, uint32_t size);

// ------------------------------------------------------------------------------------------------------------ output

// One argument of a format: a number or a text.
struct Argument {
    constexpr Argument(uint64_t value) : number(value), text(nullptr) {}
    constexpr Argument(const char *value) : number(0), text(value) {}
    uint64_t number;
    const char *text;
};

// A text that grows at its end; what does not fit is cut. Putting leaves it without a terminator, formatting and
// printing terminate it.
struct GrowingText {
    char *start;
    char *at;  // where the next character goes
    char *end; // the last place, kept for the terminator
};

// An empty text in `size` bytes, of which there is at least one.
inline GrowingText GrowIn(char *buffer, uint32_t size)
{
    return {buffer, buffer, buffer + size - 1};
}

inline uint32_t Length(const GrowingText &text)
{
    return static_cast<uint32_t>(text.at - text.start);
}

inline void Put(GrowingText &text, char character)
{
    if (text.at < text.end) {
        *text.at++ = character;
    }
}

void Put(GrowingText &text, Text piece);
void Put(GrowingText &text, const char *words);

inline void PutTimes(GrowingText &text, char character, uint32_t count)
{
    for (; count > 0 && text.at < text.end; --count) {
        *text.at++ = character;
    }
}

// Appends format with its arguments. The conversions are those of the types' formats: a number (%u %hu %hhu %llu %d),
// two-digit hexadecimal (%02x %.2x %02hx), plain hexadecimal (%x), a text (%s), a character (%c).
void Format(GrowingText &text, const char *format, const Argument *arguments);

inline void Format(GrowingText &text, const char *format, std::initializer_list<Argument> arguments)
{
    Format(text, format, arguments.begin());
}

// The same into `room` bytes, terminator included; returns the characters written.
uint32_t Format(char *to, uint32_t room, const char *format, const Argument *arguments);

// Formats into buffer: at most size - 1 characters and a terminator, through the host's bounded formatter, which has
// the last word. Returns the characters written, negative when the host refuses.
int32_t Print(char *buffer, uint32_t size, const char *format, const Argument *arguments);

inline int32_t Print(char *buffer, uint32_t size, const char *format, std::initializer_list<Argument> arguments)
{
    return Print(buffer, size, format, arguments.begin());
}

// A ready text through the host's bounded formatter, the one road by which text leaves the plug-in.
inline int32_t PrintText(char *buffer, uint32_t size, const char *text)
{
    return snprintf_truncated_s(buffer, size, "%s", text);
}

// The longest text that is printed at once: a section of a BGP-LS key.
inline constexpr uint32_t kLongestLine = 1024;

// Appends a ready text so. False, with the text as it was, when the host refuses, or has filled more than there was
// room for.
bool PrintLine(GrowingText &text, const char *line);

// The result of Print as an operation reports it: a count through *printed, or DT_ERR_FAIL.
inline uint32_t Printed(int32_t result, uint32_t *printed)
{
    if (result < 0) {
        return DT_ERR_FAIL;
    }
    *printed = static_cast<uint32_t>(result);
    return DT_OK;
}

} // namespace bgp

#endif
