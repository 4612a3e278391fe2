/* Numbers: read strictly, digits of the base and nothing else. */
#include "bgp_host_services.h"
#include "digits.h"
#include "replaceable.h"

#include <errno.h>
#include <stdbool.h>
#include <stdlib.h>
#include <string.h>

enum { REFUSED = 1 };

static uint32_t ReadNumber32(const char *text, unsigned base, uint32_t *value)
{
    if (text == NULL || value == NULL || *text == '\0') {
        return REFUSED;
    }
    uint64_t number = 0; /* wide enough for one digit too many */
    for (; *text != '\0'; ++text) {
        const unsigned digit = DigitValue(*text);
        number = number * base + digit;
        if (digit >= base || number > UINT32_MAX) {
            return REFUSED;
        }
    }
    const uint32_t narrow = (uint32_t)number;
    memcpy(value, &narrow, sizeof narrow);
    return 0;
}

BGP_REPLACEABLE uint32_t QOV_StrToUint32(const char *text, uint32_t *value)
{
    return ReadNumber32(text, 10, value);
}

BGP_REPLACEABLE uint32_t SMP_StrToUint32(const char *text, uint32_t *value)
{
    return ReadNumber32(text, 10, value);
}

BGP_REPLACEABLE uint32_t SMP_atoulx(const char *text, uint32_t *value)
{
    enum { MOST_DIGITS = 8 };
    return text == NULL || strnlen(text, MOST_DIGITS + 1) > MOST_DIGITS ? (uint32_t)REFUSED
                                                                        : ReadNumber32(text, 16, value);
}

BGP_REPLACEABLE uint32_t QOV_StrToUint64(const char *text, uint64_t *value)
{
    if (text == NULL || value == NULL || *text == '\0') {
        return REFUSED;
    }
    uint64_t number = 0;
    for (; *text != '\0'; ++text) {
        const unsigned digit = DigitValue(*text);
        if (digit >= 10 || number > (UINT64_MAX - digit) / 10) {
            return REFUSED;
        }
        number = number * 10 + digit;
    }
    memcpy(value, &number, sizeof number);
    return 0;
}

/* As strtoul() where unsigned long has 32 bits: a "-" negates. errno stays as it was. */
BGP_REPLACEABLE uint32_t QOV_strtoul(const char *text, char **end, int32_t base)
{
    const char *behind = text;
    unsigned long long number = 0;
    if (text != NULL) {
        const int before = errno;
        errno = 0;
        char *stop = NULL;
        number = strtoull(text, &stop, base);
        behind = stop;
        const bool negative = text[strspn(text, " \t\n\v\f\r")] == '-';
        if (errno == ERANGE || (negative ? 0 - number : number) > UINT32_MAX) {
            number = UINT32_MAX;
        }
        errno = before;
    }
    if (end != NULL) {
        memcpy(end, &behind, sizeof behind);
    }
    return (uint32_t)number;
}

BGP_REPLACEABLE uint32_t NCF_IsHex(const char *text)
{
    return text != NULL && *text != '\0' && text[strspn(text, "0123456789abcdefABCDEF")] == '\0';
}

BGP_REPLACEABLE char *QOV_Uint32ToStr(uint32_t value, char *buffer, uint32_t base)
{
    if (buffer == NULL || base < 2 || base > 36) {
        return NULL;
    }
    char digits[32];
    size_t at = sizeof digits;
    do {
        digits[--at] = "0123456789abcdefghijklmnopqrstuvwxyz"[value % base];
        value /= base;
    } while (value != 0);
    memcpy(buffer, digits + at, sizeof digits - at);
    buffer[sizeof digits - at] = '\0';
    return buffer;
}
