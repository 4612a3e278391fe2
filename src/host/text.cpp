#include "host/text.h"

#include "host/format.h"

namespace bgp {

// ------------------------------------------------------------------------------------------------------------- input

namespace {

constexpr uint32_t kCopied = 63; // characters that the host is asked about at a time

constexpr char kKept = 'x'; // what no host trims: stands for the text beside the characters in question

// How many of the `count` characters in front of (or, at the end, behind) the rest of a text the service leaves there.
// False when it answers null.
bool Left(TrimService service, const char *characters, uint32_t count, bool atEnd, uint32_t &left)
{
    char copy[kCopied + 2];
    std::memcpy(copy + (atEnd ? 1 : 0), characters, count);
    copy[atEnd ? 0 : count] = kKept;
    copy[count + 1] = '\0';
    const char *trimmed = service(copy);
    left = trimmed == nullptr ? 0 : static_cast<uint32_t>(std::strlen(trimmed)) - 1;
    return trimmed != nullptr;
}

uint32_t Piece(const char *at, const char *end)
{
    return static_cast<size_t>(end - at) < kCopied ? static_cast<uint32_t>(end - at) : kCopied;
}

} // namespace

Text TrimEnds(TrimService service, Text whole)
{
    const char *text = whole.at;
    const char *end = text + whole.length;
    const char *graphic = text; // the first, or the end
    while (graphic < end && !IsGraphic(*graphic)) {
        ++graphic;
    }
    uint32_t left = 0;
    while (text < graphic && left == 0) {
        const uint32_t count = Piece(text, graphic);
        if (!Left(service, text, count, false, left)) {
            return {nullptr, 0};
        }
        text += count - left;
    }
    graphic = end; // the one behind the last, or the text's start
    while (graphic > text && !IsGraphic(graphic[-1])) {
        --graphic;
    }
    left = 0;
    while (end > graphic && left == 0) {
        const uint32_t count = Piece(graphic, end);
        if (!Left(service, end - count, count, true, left)) {
            return {nullptr, 0};
        }
        end -= count - left;
    }
    return {text, static_cast<uint32_t>(end - text)};
}

char *TrimBlanks(char *text)
{
    return SYSDT_BTrim(text, nullptr);
}

uint32_t GraphicWords(Text text)
{
    constexpr uint64_t kEach = 0x0101010101010101;
    uint32_t length = 0;
    for (uint64_t eight = 0; text.length - length >= sizeof eight; length += sizeof eight) {
        std::memcpy(&eight, text.at + length, sizeof eight);
        // Adding 1 carries 0x7F into the high bit, taking '!' away borrows it from what is smaller. What is carried or
        // borrowed further comes from a character that is not graphic itself.
        if ((((eight + kEach) | (eight - kEach * '!') | eight) & kEach * 0x80) != 0) {
            break;
        }
    }
    return length;
}

bool HostFindsBlank(Text text)
{
    for (uint32_t at = 0; at < text.length; at += kCopied) {
        char copy[kCopied + 1];
        const uint32_t count = Piece(text.at + at, text.at + text.length);
        std::memcpy(copy, text.at + at, count);
        copy[count] = '\0';
        uint32_t found = 0;
        NCF_IsSpaceInString(copy, &found);
        if (found != 0) {
            return true;
        }
    }
    return false;
}

bool IsHostsBlank(char character)
{
    return HostFindsBlank({&character, 1});
}

bool Terminate(Text text, char *to, uint32_t size)
{
    if (text.length >= size) {
        return false;
    }
    std::memcpy(to, text.at, text.length);
    to[text.length] = '\0';
    return true;
}

void NoteBlank(const Why &why, Text text)
{
    Text odd{text.at, 0}; // the first that is not graphic
    for (uint32_t i = 0; i < text.length; ++i) {
        const Text character{text.at + i, 1};
        if (HasBlank(character)) {
            Note(why, character, {.rule = &kBlank});
            return;
        }
        if (odd.length == 0 && !IsGraphic(text.at[i])) {
            odd = character;
        }
    }
    Note(why, odd, {.rule = &kBlank});
}

void NoteCharacter(const Why &why, Text character, const BgpRule &rule)
{
    Note(why, character, {.rule = HasBlank(character) ? &kBlank : &rule});
}

void NoteLength(const Why &why, Text text, uint32_t least, uint32_t most)
{
    if (text.length == 0) {
        Note(why, text, {.rule = &kEmpty});
    } else if (text.length < least) {
        Note(why, text, {.rule = &kTooShort, .limit = least});
    } else {
        Note(why, text, {.rule = &kTooLong, .limit = most});
    }
}

// ------------------------------------------------------------------------------------------------------------ output

namespace {

inline void PutHex(GrowingText &text, uint64_t number, uint32_t least)
{
    uint32_t count = 1;
    while (count < 16 && (count < least || number >> (4 * count) != 0)) {
        ++count;
    }
    while (count-- > 0) {
        Put(text, kHexDigits[number >> (4 * count) & 0xF]);
    }
}

} // namespace

void Put(GrowingText &text, Text piece)
{
    const auto room = static_cast<size_t>(text.end - text.at);
    const size_t length = piece.length < room ? piece.length : room;
    if (length != 0) { // of no characters the place may be null
        std::memcpy(text.at, piece.at, length);
        text.at += length;
    }
}

void Put(GrowingText &text, const char *words)
{
    Put(text, Text{words, static_cast<uint32_t>(std::strlen(words))});
}

void Format(GrowingText &text, const char *format, const Argument *arguments)
{
    GrowingText growing = text; // no character that is written can be a part of it
    for (; *format != '\0'; ++format) {
        if (*format != '%') {
            Put(growing, *format);
            continue;
        }
        uint32_t digits = 1;
        ++format;
        for (; *format == '0' || *format == '.' || *format == '2' || *format == 'h' || *format == 'l'; ++format) {
            if (*format == '2') {
                digits = 2;
            }
        }
        const Argument &argument = *arguments++;
        switch (*format) {
        case 's':
            Put(growing, argument.text);
            break;
        case 'x':
            PutHex(growing, argument.number, digits);
            break;
        case 'c':
            Put(growing, static_cast<char>(argument.number));
            break;
        default:
            PutNumber(growing, argument.number);
            break;
        }
    }
    *growing.at = '\0';
    text.at = growing.at;
}

uint32_t Format(char *to, uint32_t room, const char *format, const Argument *arguments)
{
    GrowingText text = GrowIn(to, room);
    Format(text, format, arguments);
    return Length(text);
}

int32_t Print(char *buffer, uint32_t size, const char *format, const Argument *arguments)
{
    char text[kLongestLine];
    Format(text, sizeof text, format, arguments);
    return PrintText(buffer, size, text);
}

bool PrintLine(GrowingText &text, const char *line)
{
    if (text.at > text.end) {
        return false;
    }
    const int32_t printed = PrintText(text.at, static_cast<uint32_t>(text.end - text.at) + 1, line);
    text.at += printed > 0 ? printed : 0;
    return printed >= 0;
}

} // namespace bgp
