// What other types use of the AS numbers.
#ifndef BGP_ASNUM_ASNUM_H
#define BGP_ASNUM_ASNUM_H

#include "bgp_datatypes/asnum.h"
#include "host/text.h"
#include "host/type.h"

namespace bgp {

extern const Type kAsNum;
extern const Type kAsNumExt;
extern const Type kAsNumList; // ASNUM_ENHANCE

inline constexpr uint32_t kLongestAsNumber = 11; // "65535.65535"

// An AS number, by its notation.
struct AsNumber {
    uint32_t number;
    uint32_t notation; // 0 plain, 1 dotted (RFC 5396 asdot)
};

// A trimmed text, plain or dotted. False when it is no AS number, or 0 and zero is not welcome.
bool ReadAsNumber(Text text, bool zeroWelcome, AsNumber &as);

// The number, other than 0, that a text begins with, and the place behind it. Null says only that ReadAsNumber() has to
// tell.
const char *ReadBareAsNumber(const char *text, AsNumber &as);

// Says why such a text is none, by reading it again with a place for the reason. Always false.
[[gnu::cold]] bool RefuseAsNumber(Text text, bool zeroWelcome, Why *why);

inline bool ReadAsNumber(Text text, bool zeroWelcome, AsNumber &as, Why *why)
{
    return ReadAsNumber(text, zeroWelcome, as) || RefuseAsNumber(text, zeroWelcome, why);
}

// "%u.%u" with the two halves when the notation is not 0, else "%u".
int32_t PrintAsNumber(char *buffer, uint32_t size, AsNumber as);

} // namespace bgp

#endif
