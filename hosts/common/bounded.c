/*
 * Bounded copies and prints. A call that would not fit is refused as a whole, with the target zeroed or made an empty
 * text, so that no caller goes on with half a value.
 */
#include "bgp_host_common.h"

#include <stdbool.h>
#include <stdio.h>
#include <string.h>

enum { BAD_ARGUMENT = 22, OUT_OF_RANGE = 34 };

#define LARGEST_SIZE (SIZE_MAX / 2) /* above it a "size" is a negative number gone astray */

static bool Overlap(const void *one, size_t oneSize, const void *other, size_t otherSize)
{
    const uintptr_t first = (uintptr_t)one;
    const uintptr_t second = (uintptr_t)other;
    return first < second ? second - first < oneSize : first - second < otherSize;
}

/* What all copies refuse about their target before they look further. */
static int32_t CheckTarget(const void *to, size_t toSize)
{
    if (to == NULL) {
        return BAD_ARGUMENT;
    }
    return toSize > LARGEST_SIZE ? OUT_OF_RANGE : 0;
}

/* Copies length characters and a terminator. */
static int32_t CopyText(char *to, size_t toSize, const char *from, size_t length)
{
    if (length >= toSize || Overlap(to, length + 1, from, length + 1)) {
        *to = '\0';
        return OUT_OF_RANGE;
    }
    memcpy(to, from, length);
    to[length] = '\0';
    return 0;
}

/* vsnprintf() with the refusals that all prints share; -1 on error, else the length that the whole text has. */
static int Print(char *to, size_t toSize, const char *format, va_list values)
{
    if (to == NULL || toSize == 0 || toSize > LARGEST_SIZE) {
        return -1;
    }
    const int length = format == NULL ? -1 : vsnprintf(to, toSize, format, values);
    if (length < 0) {
        *to = '\0';
    }
    return length;
}

int32_t BgpCommon_memcpy_s(void *to, size_t toSize, const void *from, size_t count)
{
    const int32_t refusal = CheckTarget(to, toSize);
    if (refusal != 0) {
        return refusal;
    }
    if (from != NULL && count <= toSize && !Overlap(to, count, from, count)) {
        memcpy(to, from, count);
        return 0;
    }
    memset(to, 0, toSize);
    return from == NULL ? BAD_ARGUMENT : OUT_OF_RANGE;
}

int32_t BgpCommon_memset_s(void *to, size_t toSize, int32_t byte, size_t count)
{
    const int32_t refusal = CheckTarget(to, toSize);
    if (refusal != 0) {
        return refusal;
    }
    memset(to, byte, count <= toSize ? count : toSize);
    return count <= toSize ? 0 : OUT_OF_RANGE;
}

int32_t BgpCommon_strcpy_s(char *to, size_t toSize, const char *from)
{
    return BgpCommon_strncpy_s(to, toSize, from, LARGEST_SIZE);
}

int32_t BgpCommon_strncpy_s(char *to, size_t toSize, const char *from, size_t count)
{
    const int32_t refusal = CheckTarget(to, toSize);
    if (refusal != 0) {
        return refusal;
    }
    if (toSize == 0) {
        return OUT_OF_RANGE;
    }
    if (from == NULL || count > LARGEST_SIZE) {
        *to = '\0';
        return from == NULL ? BAD_ARGUMENT : OUT_OF_RANGE;
    }
    return CopyText(to, toSize, from, strnlen(from, count < toSize ? count : toSize));
}

int32_t BgpCommon_vsprintf_s(char *to, size_t toSize, const char *format, va_list values)
{
    const int length = Print(to, toSize, format, values);
    if (length < 0 || (size_t)length < toSize) {
        return length;
    }
    *to = '\0';
    return -1;
}

int32_t BgpCommon_vsnprintf_s(char *to, size_t toSize, size_t count, const char *format, va_list values)
{
    const size_t limit = count < toSize ? count + 1 : toSize;
    const int length = Print(to, limit, format, values);
    if (length < 0 || (size_t)length < limit) {
        return length;
    }
    if (count >= toSize) { /* the target is too small, not the caller's limit */
        *to = '\0';
    }
    return -1;
}

/* The format "%s" alone, which is most of what is printed, without the formatter. */
static int32_t PrintText(char *to, size_t toSize, const char *text)
{
    const size_t length = strnlen(text, toSize - 1);
    memcpy(to, text, length);
    to[length] = '\0';
    return (int32_t)length;
}

int32_t BgpCommon_vsnprintf_truncated_s(char *to, size_t toSize, const char *format, va_list values)
{
    if (to != NULL && format != NULL && strcmp(format, "%s") == 0 && toSize - 1 < INT32_MAX) {
        const char *text = va_arg(values, const char *);
        return PrintText(to, toSize, text == NULL ? "(null)" : text);
    }
    const int32_t length = Print(to, toSize, format, values);
    return length > 0 && (size_t)length >= toSize ? (int32_t)(toSize - 1) : length;
}
