// Why a text is not what a format scans.
#include "prefix/scan.h"

namespace bgp {

namespace {

constexpr const char *kSeparators[] = {"-", ".", "/", ":", "[", "]"};

const char *NameOf(char separator)
{
    const char *const *name = kSeparators;
    while (**name != separator) {
        ++name;
    }
    return *name;
}

Text Rest(const char *at, const char *end)
{
    return {at, static_cast<uint32_t>(end - at)};
}

} // namespace

void NoteSeparator(const Why &why, Text place, char separator)
{
    Note(why, place, {.rule = &kSeparator, .what = NameOf(separator)});
}

void NoteBlankIn(const Why &why, const ScanForm &form, Text text)
{
    NoteBlank(why, text);
    const BgpReason blank = *why.reason;
    Why front = why;
    Scanned scanned;
    const Text before{text.at, blank.Offset - why.offset - static_cast<uint32_t>(text.at - why.from)};
    if (Scan(form, before, scanned, &front) || why.reason->Length == 0) { // what is missing is the blank's fault
        *why.reason = blank;
    }
}

void NoteSpelling(const Why &why, const ScanForm &form, Text text, Text word)
{
    const char *at = text.at;
    const char *const end = at + text.length;
    const ScanItem *item = form.items;
    for (const char *format = form.format; *format != '\0'; ++format) {
        if (*format != '%') {
            if (at == end || *at != *format) {
                return NoteSeparator(why, {at, at < end}, *format);
            }
            ++at;
            continue;
        }
        format += *++format == 'h';
        if (IsWhiteSpace(*at)) {
            return Note(why, {at, 1}, {.rule = &kWrongCharacter});
        }
        const char *const start = at;
        if (*format == 's') {
            while (at < end && !IsWhiteSpace(*at)) {
                ++at;
            }
        } else {
            uint64_t number = 0;
            at = ReadNumber(at, end, &number);
            if (*start == '0' && at - start > 1) {
                return Note(why, Rest(start, at), {.rule = &kLeadingZero, .what = item->what});
            }
        }
        ++item;
    }
    const char *const what = (item - 1)->what;
    if (at < end) {
        return Note(why, Rest(at, end), {.rule = &kSomethingBehind, .what = what});
    }
    Note(why, word, {.rule = &kSpelling, .what = what});
}

} // namespace bgp
