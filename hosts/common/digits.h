/* The value of a digit, for every base up to 16; for any other character a number that is no digit of any base. */
#ifndef BGP_HOST_DIGITS_H
#define BGP_HOST_DIGITS_H

#include <stdint.h>

/* One more than the value, so that the rest of the table is what is left of it. */
static const uint8_t kDigits[256] = {
    ['0'] = 1,  ['1'] = 2,  ['2'] = 3,  ['3'] = 4,  ['4'] = 5,  ['5'] = 6,  ['6'] = 7,  ['7'] = 8,
    ['8'] = 9,  ['9'] = 10, ['a'] = 11, ['b'] = 12, ['c'] = 13, ['d'] = 14, ['e'] = 15, ['f'] = 16,
    ['A'] = 11, ['B'] = 12, ['C'] = 13, ['D'] = 14, ['E'] = 15, ['F'] = 16,
};

static inline unsigned DigitValue(char character)
{
    return kDigits[(unsigned char)character] - 1U;
}

#endif
