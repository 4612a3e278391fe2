// Why a text is no address: the leftmost departure from the standard form. What the host's services take has none.
#include "host/address.h"

#include "support/harness.h"

#include "bgp_datatypes/helpers.h"
#include "bgp_host_services.h"

namespace bgp::test {
namespace {

class Address : public PlugIn {};

std::string Reason(const char *text, bool (*refuse)(Why *, bgp::Text))
{
    BgpReason reason{};
    Why why{&reason, text, 0};
    EXPECT_FALSE(refuse(&why, {text, static_cast<uint32_t>(std::strlen(text))})) << text;
    EXPECT_FALSE(refuse(nullptr, {text, static_cast<uint32_t>(std::strlen(text))})) << text;
    const std::string limit = reason.Limit == 0 ? "" : " " + std::to_string(reason.Limit);
    return reason.Rule->Name + (" " + std::to_string(reason.Offset) + "+" + std::to_string(reason.Length)) + limit +
           " " + (reason.What == nullptr ? "" : reason.What);
}

std::string Ipv4Reason(const char *text)
{
    return Reason(text, [](Why *why, bgp::Text piece) {
        return RefuseIpv4(why, piece, {"the peer", "an octet of the peer"});
    });
}

std::string Ipv6Reason(const char *text)
{
    return Reason(text, [](Why *why, bgp::Text piece) { return RefuseIpv6(why, piece, "the node"); });
}

// clang-format off
constexpr const char *kIpv4[][2] = {
    {"",                 "empty 0+0 the peer"},
    {"10.1.1",           "ipv4 6+0 the peer"},
    {"10.1.1.",          "ipv4 7+0 the peer"},
    {"10.1..1",          "ipv4 5+1 the peer"},
    {".1.1.1",           "ipv4 0+1 the peer"},
    {"10.1.1.1.",        "ipv4 8+1 the peer"},
    {"10.1.1.1/24",      "ipv4 8+1 the peer"},
    {"10.1,1.1",         "ipv4 4+1 the peer"},
    {"10.1.x.1",         "ipv4 5+1 the peer"},
    {"10.1. 1.1",        "blank 5+1 "},
    {"10.1.1.1\t1",      "blank 8+1 "},
    {"10.1.1.256",       "too-large 7+3 255 an octet of the peer"},
    {"300.1.1.256",      "too-large 0+3 255 an octet of the peer"},
    {"99999999999999999999999.1.1.1", "too-large 0+23 255 an octet of the peer"},
    {"10.01.1.1",        "leading-zero 3+2 an octet of the peer"},
    {"10.1.1.00",        "leading-zero 7+2 an octet of the peer"},
    {"2001::1",          "ipv4 0+7 the peer"}, // no dot: no address at all
    {"65000x",           "ipv4 0+6 the peer"},
    {"10 1",             "blank 2+1 "},
};

constexpr const char *kIpv6[][2] = {
    {"",                  "empty 0+0 the node"},
    {"1",                 "ipv6 0+1 the node"},
    {":",                 "ipv6 0+1 the node"},
    {":1::",              "ipv6 0+1 the node"},
    {":::",               "ipv6 2+1 the node"},
    {"1:2:3:4:5:6:7",     "ipv6 13+0 the node"},
    {"1:2:3:4:5:6:7:",    "ipv6 14+0 the node"},
    {"1:2:3:4:5:6:7:8:",  "ipv6 16+0 the node"},
    {"1:2:3:4:5:6:7:8:9", "ipv6 16+1 the node"},
    {"1:2:3:4:5:6:7::8",  "ipv6 15+1 the node"},
    {"1:2:3:4:5:6:7:8::", "ipv6 16+1 the node"},
    {"2001:db8::1::2",    "ipv6 12+1 the node"},
    {"2001::1:",          "ipv6 8+0 the node"},
    {"2001:db8::12345",   "ipv6 10+5 the node"},
    {"2001:db8::g",       "ipv6 10+1 the node"},
    {"2001:db8::1/64",    "ipv6 11+1 the node"},
    {"2001:db8: :1",      "blank 9+1 "},
    {"fe80::1%eth0",      "ipv6 7+1 the node"},
    {"::10.1.1.256",      "ipv6 9+3 the node"},
    {"::10.1.1",          "ipv6 8+0 the node"},
    {"1:2:3:10.1.1.1",    "ipv6 14+0 the node"},
    {"1:2:3:4:5:6:7:1.1.1.1", "ipv6 15+1 the node"},
    {"10.1.1.1",          "ipv6 0+8 the node"},
    {"0a0b-0c0d",         "ipv6 0+9 the node"},
    {"10.1.1.1:80",       "ipv6 2+1 the node"},
};
// clang-format on

TEST_F(Address, Ipv4)
{
    for (const auto &row : kIpv4) {
        uint32_t address = 0;
        EXPECT_NE(SYSDT_Str2Ipv4(row[0], &address), 0u) << row[0];
        EXPECT_EQ(Ipv4Reason(row[0]), row[1]) << '"' << row[0] << '"';
    }
}

TEST_F(Address, Ipv6)
{
    for (const auto &row : kIpv6) {
        uint8_t address[16];
        EXPECT_NE(SYSDT_Str2Ipv6(row[0], address, 0), 0u) << row[0];
        EXPECT_EQ(Ipv6Reason(row[0]), row[1]) << '"' << row[0] << '"';
    }
}

// A host may want more than the form: then it is the whole text that it does not take.
TEST_F(Address, WhatHasTheFormHasNoPlace)
{
    for (const char *text : {"10.1.1.1", "0.0.0.0", "255.255.255.255"}) {
        const std::string whole = "ipv4 0+" + std::to_string(std::strlen(text)) + " the peer";
        EXPECT_EQ(Ipv4Reason(text), whole);
    }
    for (const char *text : {"::", "::1", "1::", "2001:DB8::1", "1:2:3:4:5:6:7:8", "1:2:3:4:5:6:7::", "::2:3:4:5:6:7:8",
                             "::10.1.1.1", "1:2:3:4:5:6:10.1.1.1", "1:2:3:4:5::10.1.1.1", "::ffff:10.1.1.1"}) {
        const std::string whole = "ipv6 0+" + std::to_string(std::strlen(text)) + " the node";
        uint8_t address[16];
        EXPECT_EQ(SYSDT_Str2Ipv6(text, address, 0), 0u) << text;
        EXPECT_EQ(Ipv6Reason(text), whole);
    }
}

} // namespace
} // namespace bgp::test
