// Templates: texts with the conversions of C's printf, filled with values one after another. A template comes from the
// routing software and is never handed to a formatter of variable arguments: it is read here, and a conversion that
// does not fit its value prints nothing.
#ifndef BGP_COMMUNITY_TEXT_TEMPLATE_H
#define BGP_COMMUNITY_TEXT_TEMPLATE_H

#include "host/text.h"

namespace bgp {

// What fills a conversion: a text when there is one, else a number.
struct Filling {
    const char *text; // null for a number
    uint32_t number;
};

// Takes the next part off a template: all up to its second "%", so that a part holds at most one conversion.
Text TakePart(Text &rest);

// Appends a part with its conversion filled, and a terminator. False, with nothing written, when the conversion does
// not fit the filling: numbers fit d i u o x X c, texts fit s, with flags, width and precision in digits; h, hh and l
// narrow a number as they do in C. Whatever takes another argument (*, ll, n, p, the floating-point conversions) fits
// nothing.
bool FillPart(Text part, const Filling &filling, GrowingText &to);

} // namespace bgp

#endif
