// TOY: a shelf and a place on it (u32 each), host order.
#include "support/refusals.h"
#include "support/type_case.h"

namespace bgp::test {
namespace {

class Toy : public PlugIn {};

TypeCase Case()
{
    return {
        .row = {1999, 8, 26, "TOY", &SYSDT_ToyFormatIn, &SYSDT_ToyFormatOut, &SYSDT_ToyCheck, &SYSDT_ToyHelp,
                &SYSDT_ToyCompare, nullptr, &SYSDT_ToyLuaSet, &SYSDT_ToyLuaGet, &SYSDT_ToyEndian},
        .contract = {.inModes = "FPPFUFPU",
                     .outModes = "TTTTUTTU",
                     .helpModes = "-H----H-",
                     .helpText = "STRING<3-21>",
                     .textSize = 257},
        .layout = {{"shelf", 0, 4, 1}, {"place", 4, 4, 1}},
        .accepted = {{"12/7", "0c000000 07000000"},
                     {"4095/4294967295", "ff0f0000 ffffffff"},
                     {"0/0", "00000000 00000000"},
                     {"001/002", "01000000 02000000", "1/2"}},
        .refused = {"", "1", "1/", "/1", "1/2/3", "4096/0", "0/4294967296", "1 /2", "1:2", "a/1"},
        .blanked = {"12/7"},
        .roundTrips = {"12/7", "0/1", "4095/0"},
        .prints = {{"4294967295/0", "ffffffff 00000000"}}, // more than text can give
        .ascending = {"0000000000000000", "0000000001000000", "0100000000000000", "ffffffffffffffff"},
        .swaps = {{"0102030405060708", "0403020108070605"}},
        .luaSets = {{"0c00000007000000", "{place=7, shelf=12}"}},
        .luaGets =
            {
                {"{place=7, shelf=12}", DT_OK, "0c00000007000000", 0},
                {"{place=7}", DT_ERR_INVALID_PARAM, "eeeeeeeeeeeeeeee", kAnyGrowth},
                {"{place='x', shelf=12}", DT_ERR_INVALID_PARAM, "0c000000eeeeeeee", kAnyGrowth},
            },
    };
}

[[maybe_unused]] const bool kStated = StateTests<Toy>("Toy", Case());

// clang-format off
constexpr Refused kReasons[] = {
    // text                     rule                at  length
    {"",                        "empty",            0,  0},
    {"1/",                      "too-short",        0,  2, 3},
    {"1/00000000000000000002",  "too-long",         0, 22, 21},
    {"1/x2",                    "digit",            2,  1},
    {"1 /2",                    "blank",            1,  1},
    {"1:2",                     "character",        1,  1},
    {"1/2/3/4/5/6",             "too-many-numbers", 3,  1, 2},
    {"1/2/3",                   "notation",         0,  5, 0, "", "", 0, 2, "shelf/place"},
    {"4096/2",                  "too-large",        0,  4, 4095, "the shelf"},
    {"1/4294967296",            "too-large",        2, 10, 4294967295, "the place"},
};
// clang-format on

TEST_F(Toy, Reasons)
{
    CheckRefusals("TOY", kReasons);
}

} // namespace
} // namespace bgp::test
