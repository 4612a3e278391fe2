/*
 * The scanner behind sscanf_s(), read strictly.
 *
 * The C library's scanner takes "-1" and "0x10" for unsigned numbers and folds what does not fit. This one reads digits
 * of the base and ends before a number that its target cannot hold, so that no text means a number it does not spell.
 *
 * Conversions: u d x X (with hh h l ll and a width), c s [ and %%; "*" drops an item.
 */
#include "bgp_host_common.h"
#include "digits.h"

#include <limits.h>
#include <stdbool.h>
#include <string.h>

typedef enum { MATCHED, MISMATCH, TEXT_ENDED, BAD_CALL } Outcome;
typedef enum { SIZE_CHAR, SIZE_SHORT, SIZE_INT, SIZE_LONG, SIZE_LONG_LONG } Size;

typedef struct {
    bool drop;    /* scan the item and store nothing */
    size_t width; /* 0 = not given */
    Size size;
    char kind;
    const char *set; /* of "[": behind the bracket and any "^" */
    size_t setLength;
    bool excluded;
} Conversion;

typedef struct {
    va_list list;
} Values;

static bool IsSpace(char character)
{
    return character != '\0' && strchr(" \t\n\v\f\r", character) != NULL;
}

static const char *BehindSpace(const char *text)
{
    while (IsSpace(*text)) {
        ++text;
    }
    return text;
}

/* ------------------------------------------------------------------------------------- what the format asks for */

static const char *ReadSize(const char *format, Size *size)
{
    *size = SIZE_INT;
    if (*format == 'h') {
        *size = format[1] == 'h' ? SIZE_CHAR : SIZE_SHORT;
    } else if (*format == 'l') {
        *size = format[1] == 'l' ? SIZE_LONG_LONG : SIZE_LONG;
    }
    return format + (*size != SIZE_INT) + (*size == SIZE_CHAR || *size == SIZE_LONG_LONG);
}

/* The set behind a "["; null when it has no end. A "]" that comes first is a member. */
static const char *ReadSet(const char *format, Conversion *conversion)
{
    conversion->excluded = *format == '^';
    format += conversion->excluded;
    conversion->set = format;
    const char *end = *format == '\0' ? NULL : strchr(format + 1, ']');
    if (end == NULL) {
        return NULL;
    }
    conversion->setLength = (size_t)(end - format);
    return end + 1;
}

/* The conversion behind a "%". Returns what stands behind it; null when it is malformed. */
static const char *ReadConversion(const char *format, Conversion *conversion)
{
    enum { WIDEST = 100000 };
    memset(conversion, 0, sizeof *conversion);
    conversion->drop = *format == '*';
    format += conversion->drop;
    for (; *format >= '0' && *format <= '9' && conversion->width < WIDEST; ++format) {
        conversion->width = conversion->width * 10 + (size_t)(*format - '0');
    }
    format = ReadSize(format, &conversion->size);
    conversion->kind = *format;
    if (*format == '\0') {
        return NULL;
    }
    ++format;
    return conversion->kind == '[' ? ReadSet(format, conversion) : format;
}

/* ------------------------------------------------------------------------------------------------------ numbers */

typedef struct {
    uint64_t largestUnsigned, largestSigned;
} Range;

static const Range kRanges[] = {
    [SIZE_CHAR] = {UCHAR_MAX, SCHAR_MAX}, [SIZE_SHORT] = {USHRT_MAX, SHRT_MAX},       [SIZE_INT] = {UINT_MAX, INT_MAX},
    [SIZE_LONG] = {ULONG_MAX, LONG_MAX},  [SIZE_LONG_LONG] = {ULLONG_MAX, LLONG_MAX},
};

static void PutNumber(void *target, Size size, uint64_t value)
{
    const unsigned char asChar = (unsigned char)value;
    const unsigned short asShort = (unsigned short)value;
    const unsigned int asInt = (unsigned int)value;
    const unsigned long asLong = (unsigned long)value;
    switch (size) {
    case SIZE_CHAR:
        memcpy(target, &asChar, sizeof asChar);
        break;
    case SIZE_SHORT:
        memcpy(target, &asShort, sizeof asShort);
        break;
    case SIZE_INT:
        memcpy(target, &asInt, sizeof asInt);
        break;
    case SIZE_LONG:
        memcpy(target, &asLong, sizeof asLong);
        break;
    case SIZE_LONG_LONG:
        memcpy(target, &value, sizeof value);
        break;
    }
}

static Outcome ScanNumber(const char **text, const Conversion *conversion, void *target)
{
    *text = BehindSpace(*text);
    if (**text == '\0') {
        return TEXT_ENDED;
    }
    const unsigned base = conversion->kind == 'u' || conversion->kind == 'd' ? 10 : 16;
    const Range *range = &kRanges[conversion->size];
    const uint64_t largest = conversion->kind == 'd' ? range->largestSigned : range->largestUnsigned;
    uint64_t value = 0;
    size_t digits = 0;
    for (; conversion->width == 0 || digits < conversion->width; ++digits, ++*text) {
        const unsigned digit = DigitValue(**text);
        if (digit >= base) {
            break;
        }
        if (value > (largest - digit) / base) {
            return MISMATCH;
        }
        value = value * base + digit;
    }
    if (digits == 0) {
        return MISMATCH;
    }
    if (!conversion->drop) {
        PutNumber(target, conversion->size, value);
    }
    return MATCHED;
}

/* -------------------------------------------------------------------------------------------------------- texts */

static bool InSet(const Conversion *conversion, char character)
{
    const unsigned char wanted = (unsigned char)character;
    bool found = false;
    for (size_t at = 0; at < conversion->setLength && !found; ++at) {
        const unsigned char low = (unsigned char)conversion->set[at];
        unsigned char high = low;
        if (at + 2 < conversion->setLength && conversion->set[at + 1] == '-') {
            high = (unsigned char)conversion->set[at + 2];
            at += 2;
        }
        found = low <= wanted && wanted <= high;
    }
    return found != conversion->excluded;
}

static bool Takes(const Conversion *conversion, char character)
{
    return conversion->kind == 'c' || (conversion->kind == 's' ? !IsSpace(character) : InSet(conversion, character));
}

/* c, s and [. Only c takes exactly its width and adds no terminator. */
static Outcome ScanText(const char **text, const Conversion *conversion, char *target, size_t size)
{
    const bool characters = conversion->kind == 'c';
    if (conversion->kind == 's') {
        *text = BehindSpace(*text);
    }
    if (**text == '\0') {
        return TEXT_ENDED;
    }
    const size_t unbounded = characters ? 1 : SIZE_MAX;
    const size_t width = conversion->width != 0 ? conversion->width : unbounded;
    size_t length = 0;
    while (length < width && (*text)[length] != '\0' && Takes(conversion, (*text)[length])) {
        ++length;
    }
    if (characters ? length < width : length == 0) {
        return MISMATCH;
    }
    if (!conversion->drop) {
        if (length + !characters > size) {
            return MISMATCH;
        }
        memcpy(target, *text, length);
        if (!characters) {
            target[length] = '\0';
        }
    }
    *text += length;
    return MATCHED;
}

/* ----------------------------------------------------------------------------------------------------- the walk */

static Outcome ScanCharacter(const char **text, char wanted)
{
    if (**text == '\0') {
        return TEXT_ENDED;
    }
    return *(*text)++ == wanted ? MATCHED : MISMATCH;
}

static Outcome ScanItem(const char **text, const Conversion *conversion, Values *values)
{
    void *target = NULL;
    size_t size = 0;
    switch (conversion->kind) {
    case '%':
        *text = BehindSpace(*text);
        return ScanCharacter(text, '%');
    case 'u':
    case 'd':
    case 'x':
    case 'X':
        if (!conversion->drop && (target = va_arg(values->list, void *)) == NULL) {
            return BAD_CALL;
        }
        return ScanNumber(text, conversion, target);
    case 'c':
    case 's':
    case '[':
        if (!conversion->drop) {
            target = va_arg(values->list, void *);
            size = va_arg(values->list, size_t);
            if (target == NULL || size == 0) {
                return BAD_CALL;
            }
        }
        return ScanText(text, conversion, target, size);
    default:
        return BAD_CALL;
    }
}

/* One step of the format: blanks, a character of its own, or an item. *counted becomes 1 where an item was stored. */
static Outcome Step(const char **text, const char **format, Values *values, int32_t *counted)
{
    if (IsSpace(**format)) {
        *format = BehindSpace(*format);
        *text = BehindSpace(*text);
        return MATCHED;
    }
    if (**format != '%') {
        return ScanCharacter(text, *(*format)++);
    }
    Conversion conversion;
    *format = ReadConversion(*format + 1, &conversion);
    if (*format == NULL) {
        return BAD_CALL;
    }
    *counted = !conversion.drop && conversion.kind != '%';
    return ScanItem(text, &conversion, values);
}

static int32_t Scan(const char *text, const char *format, Values *values)
{
    int32_t items = 0;
    while (*format != '\0') {
        int32_t counted = 0;
        const Outcome outcome = Step(&text, &format, values, &counted);
        if (outcome == BAD_CALL || (outcome == TEXT_ENDED && items == 0)) {
            return -1;
        }
        if (outcome != MATCHED) {
            break;
        }
        items += counted;
    }
    return items;
}

int32_t BgpCommon_vsscanf_s(const char *text, const char *format, va_list values)
{
    if (text == NULL || format == NULL) {
        return -1;
    }
    Values copy; /* va_list may be an array, whose address a parameter does not give */
    va_copy(copy.list, values);
    const int32_t items = Scan(text, format, &copy);
    va_end(copy.list);
    return items;
}
