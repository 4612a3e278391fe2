/* The value of a digit, for every base up to 16; 16 for any other character. */
#ifndef BGP_HOST_DIGITS_H
#define BGP_HOST_DIGITS_H

static inline unsigned DigitValue(char character)
{
    if (character >= '0' && character <= '9') {
        return (unsigned)(character - '0');
    }
    const char lower = (char)(character | 0x20);
    return lower >= 'a' && lower <= 'f' ? (unsigned)(lower - 'a') + 10 : 16;
}

#endif
