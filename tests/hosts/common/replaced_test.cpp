// A program's own service goes before the library's, one by one, and may end in the library's by its second name.
#include "bgp_host_common.h"
#include "bgp_host_services.h"

#include <gtest/gtest.h>

#include <cstdarg>

namespace {

int prints = 0;

}

int32_t snprintf_truncated_s(char *to, size_t toSize, const char *format, ...)
{
    ++prints;
    va_list values;
    va_start(values, format);
    const int32_t written = BgpCommon_vsnprintf_truncated_s(to, toSize, format, values);
    va_end(values);
    return written;
}

namespace {

TEST(Replaced, TheProgramsServiceGoesFirst)
{
    char text[8];
    prints = 0;
    EXPECT_EQ(snprintf_truncated_s(text, sizeof text, "%s:%u", "12", 3456u), 7);
    EXPECT_STREQ(text, "12:3456");
    EXPECT_EQ(prints, 1);
    EXPECT_EQ(sprintf_s(text, sizeof text, "%s", "12345"), 5); // its neighbour is the library's
    EXPECT_EQ(prints, 1);
}

} // namespace
