// Why the texts of the notations that route distinguishers, route targets and their kin share are refused.
#ifndef BGP_TESTS_NOTATION_REFUSALS_H
#define BGP_TESTS_NOTATION_REFUSALS_H

#include "support/refusals.h"

#include <iterator>
#include <vector>

namespace bgp::test {

inline constexpr std::string_view kNotationForms = "a.b.c.d:n AS:n x.y:n";
inline constexpr std::string_view kSmallAs = "with an AS number up to 65535";
inline constexpr std::string_view kLargeAs = "with an AS number above 65535";

// clang-format off
inline constexpr Refused kNotationRefusals[] = {
    // text                     rule               at  length
    {"",                        "empty",            0,  0},
    {" \t",                     "empty",            2,  0},
    {"0000000000000000100:01",  "too-long",         0, 22, 21},
    {" 00000000000000000000:1\t", "too-long",       1, 22, 21},
    {"1: 2",                    "blank",            2,  1},
    {"1\t:2",                   "blank",            1,  1},
    {"  1.2.3.4 :5 ",           "blank",            9,  1},
    {":1",                      "digit",            0,  1},
    {"1:",                      "digit",            2,  0},
    {" 1: ",                    "digit",            3,  0},
    {"1..2:3",                  "digit",            2,  1},
    {"-1:2",                    "digit",            0,  1},
    {"1:+2",                    "digit",            2,  1},
    {"a:1",                     "digit",            0,  1},
    {"1-2:3",                   "character",        1,  1},
    {"1:2a",                    "character",        3,  1},
    {"1:2\n",                   "character",        3,  1},
    {"1:2\xb2",                 "character",        3,  1},
    {"1.2.3.4.5:6",             "too-many-numbers", 9,  1, 5},
    {"1.2.3.4:5:6",             "too-many-numbers", 9,  1, 5},
    {"12",                      "notation",         0,  2, 0, "", "", 0, 2, kNotationForms},
    {" 1:2:3",                  "notation",         1,  5, 0, "", "", 0, 2, kNotationForms},
    {"1:2.3",                   "notation",         0,  5, 0, "", "", 0, 2, kNotationForms},
    {"1.2.3:4",                 "notation",         0,  7, 0, "", "", 0, 2, kNotationForms},
    {"256.2.3.4:1",             "too-large",        0,  3, 255, "octet 1 of the address"},
    {"1.256.3.4:1",             "too-large",        2,  3, 255, "octet 2 of the address"},
    {"1.2.999.4:1",             "too-large",        4,  3, 255, "octet 3 of the address"},
    {"  1.2.3.256:65536",       "too-large",        8,  3, 255, "octet 4 of the address"},
    {"1.2.3.4:65536",           "too-large",        8,  5, 65535, "the assigned number"},
    {"65535:4294967296",        "too-large",        6, 10, 4294967295, "the assigned number", kSmallAs},
    {" 0:9999999999999999999 ", "too-large",        3, 19, 4294967295, "the assigned number", kSmallAs},
    {"65536:65536",             "too-large",        6,  5, 65535, "the assigned number", kLargeAs},
    {"4294967295:4294967296",   "too-large",       11, 10, 65535, "the assigned number", kLargeAs},
    {"4294967296:1",            "too-large",        0, 10, 4294967295, "the AS number", kLargeAs},
    {"9999999999:9999999999",   "too-large",        0, 10, 4294967295, "the AS number", kLargeAs},
    {"65536.0:1",               "too-large",        0,  5, 65535, "the high half of the AS number"},
    {"0.65536:1",               "too-large",        2,  5, 65535, "the low half of the AS number"},
    {"1.2:65536",               "too-large",        4,  5, 65535, "the assigned number"},
};

// Of the types to which numbers that are all 0 mean nothing.
inline constexpr Refused kZeroRefusals[] = {
    {"0:0",                     "all-numbers-zero", 0,  3},
    {" 00:000\t",               "all-numbers-zero", 1,  6},
    {"0.0:0",                   "all-numbers-zero", 0,  5},
};

// Of the types that read text in modes 1, 2 and 6.
inline constexpr Refused kModeRefusals[] = {
    {"1:2",                     "mode",             0,  0, 0, "", "", 0, 0},
    {"1:2",                     "mode",             0,  0, 3, "", "", 0, 3},
    {"1:2",                     "mode",             0,  0, 4, "", "", 0, 4},
    {"1:2",                     "mode",             0,  0, 5, "", "", 0, 5},
    {"1:2",                     "mode",             0,  0, 7, "", "", 0, 7},
    {"x",                       "digit",            0,  1, 0, "", "", 0, 1},
    {"x",                       "digit",            0,  1, 0, "", "", 0, 6},
};
// clang-format on

// What no type of these notations refuses.
inline constexpr std::string_view kNotationsTaken[] = {
    "100:1",   "65535:4294967295", " 65536:0\t", "4294967295:65535",     "65535.65535:0",
    "0.100:1", "1.2.3.4:5",        "0.0.0.0:0",  "255.255.255.255:65535"};

// The rows of several tables.
template <class... Rows>
std::vector<Refused> All(const Rows &...rows)
{
    std::vector<Refused> all;
    (all.insert(all.end(), std::begin(rows), std::end(rows)), ...);
    return all;
}

} // namespace bgp::test

#endif
