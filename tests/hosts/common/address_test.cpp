// Address texts, inside and outside of what the host accepts.
#include "bgp_host_services.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>

namespace {

using Bytes16 = std::array<uint8_t, 16>;

TEST(Address, Ipv4TextHasFourPlainParts)
{
    uint32_t address = 0;
    EXPECT_EQ(SYSDT_Str2Ipv4("1.2.3.4", &address), 0u);
    EXPECT_EQ(address, 0x01020304u);
    EXPECT_EQ(QOV_StrToIpAddr("255.255.255.255", &address), 0u);
    EXPECT_EQ(address, 0xFFFFFFFFu);
    EXPECT_EQ(SYSDT_Str2Ipv4("0.0.0.0", &address), 0u);
    EXPECT_EQ(address, 0u);
    address = 77;
    for (const char *text : {"", "1", "1.2.3", "1.2.3.4.5", "1.2.3.256", "01.2.3.4", "1.2.3.00", " 1.2.3.4", "1.2.3.4 ",
                             "1.2.3.4x", "1..3.4", "1.2.3.", "-1.2.3.4", "0x1.2.3.4", "4294967296"}) {
        EXPECT_NE(SYSDT_Str2Ipv4(text, &address), 0u) << text;
        EXPECT_NE(QOV_StrToIpAddr(text, &address), 0u) << text;
        EXPECT_NE(SMP_InetAToN(text, &address, 2), 0u) << text;
    }
    EXPECT_EQ(address, 77u);
    EXPECT_NE(SYSDT_Str2Ipv4(nullptr, &address), 0u);
    EXPECT_NE(SYSDT_Str2Ipv4("1.2.3.4", nullptr), 0u);
}

TEST(Address, Ipv6TextIsTheStandardOne)
{
    const Bytes16 expected{0x20, 0x01, 0x0d, 0xb8, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0x0a};
    for (const char *text : {"2001:db8::a", "2001:0DB8:0:0:0:0:0:A", "2001:db8::0.0.0.10"}) {
        Bytes16 address{};
        EXPECT_EQ(SYSDT_Str2Ipv6(text, address.data(), 0), 0u) << text;
        EXPECT_EQ(address, expected) << text;
        address = {};
        EXPECT_EQ(SMP_InetAToN6(text, address.data()), 0u) << text;
        EXPECT_EQ(address, expected) << text;
    }
    Bytes16 address{9};
    for (const char *text : {"", ":", ":::", "1::2::3", "12345::", "1:2:3:4:5:6:7", "1:2:3:4:5:6:7:8:9", " ::1", "::1 ",
                             "::g", "fe80::1%eth0", "1.2.3.4", "::1/64"}) {
        EXPECT_NE(SYSDT_Str2Ipv6(text, address.data(), 0), 0u) << text;
        EXPECT_NE(SMP_InetAToN6(text, address.data()), 0u) << text;
    }
    EXPECT_EQ(address, Bytes16{9});
    EXPECT_NE(SYSDT_Str2Ipv6(nullptr, address.data(), 0), 0u);
    EXPECT_NE(SMP_InetAToN6("::", nullptr), 0u);
}

TEST(Address, NetworkFormByFamily)
{
    uint8_t bytes[17];
    std::memset(bytes, 0xEE, sizeof bytes);
    EXPECT_EQ(SMP_InetAToN("1.2.3.4", bytes, 2), 0u);
    const uint8_t ipv4[] = {1, 2, 3, 4, 0xEE};
    EXPECT_EQ(std::memcmp(bytes, ipv4, sizeof ipv4), 0);
    EXPECT_EQ(SMP_InetAToN("ff02::1", bytes, 10), 0u);
    EXPECT_EQ(bytes[0], 0xff);
    EXPECT_EQ(bytes[15], 1);
    EXPECT_EQ(bytes[16], 0xEE);
    EXPECT_NE(SMP_InetAToN("1.2.3.4", bytes, 10), 0u);
    EXPECT_NE(SMP_InetAToN("::", bytes, 2), 0u);
    EXPECT_NE(SMP_InetAToN("1.2.3.4", bytes, 0), 0u);
    EXPECT_NE(SMP_InetAToN("1.2.3.4", nullptr, 2), 0u);
}

TEST(Address, PrintedForms)
{
    char text[64];
    EXPECT_STREQ(QOV_IpAddrToStr(0x01020304u, text), "1.2.3.4");
    EXPECT_STREQ(QOV_IpAddrToStr(0xFFFFFFFFu, text), "255.255.255.255");
    EXPECT_EQ(QOV_IpAddrToStr(0, nullptr), nullptr);

    const uint16_t groups[8] = {0x2001, 0x0db8, 0, 0, 0, 0, 0x00ab, 1};
    uint32_t words[4];
    std::memcpy(words, groups, sizeof words);
    EXPECT_STREQ(QOV_Inet_ntoa_b_ipv6(words[0], words[1], words[2], words[3], text), "2001:db8::ab:1");
    EXPECT_EQ(QOV_Inet_ntoa_b_ipv6(0, 0, 0, 0, nullptr), nullptr);

    const Bytes16 address{0x20, 0x01, 0x0d, 0xb8, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0xAB, 0xCD};
    EXPECT_EQ(inet_ntop6(address.data(), text, 256), text);
    EXPECT_STREQ(text, "2001:db8:0:1::abcd");
    EXPECT_EQ(inet_ntop6(address.data(), text, 19), text); // 18 characters and the terminator
    EXPECT_EQ(inet_ntop6(address.data(), text, 18), nullptr);
    EXPECT_EQ(inet_ntop6(nullptr, text, 256), nullptr);
    EXPECT_EQ(inet_ntop6(address.data(), nullptr, 256), nullptr);
}

TEST(Address, CharactersOfAnIpv4Text)
{
    for (const char *text : {"", "1.2.3.4", "....", "999"}) {
        EXPECT_EQ(ZOL_CheckBySymbolForIPV4(text), 0u) << text;
    }
    for (const char *text : {" 1.2.3.4", "1.2.3.a", "1,2", "::"}) {
        EXPECT_NE(ZOL_CheckBySymbolForIPV4(text), 0u) << text;
    }
    EXPECT_NE(ZOL_CheckBySymbolForIPV4(nullptr), 0u);
}

TEST(Address, MacTextHasThreeGroups)
{
    uint8_t mac[6];
    EXPECT_EQ(SMP_Str2Mac("0011-2233-aAfF", mac), 0u);
    const uint8_t full[] = {0x00, 0x11, 0x22, 0x33, 0xAA, 0xFF};
    EXPECT_EQ(std::memcmp(mac, full, 6), 0);
    EXPECT_EQ(SMP_Str2Mac("1-22-333", mac), 0u);
    const uint8_t brief[] = {0, 1, 0, 0x22, 3, 0x33};
    EXPECT_EQ(std::memcmp(mac, brief, 6), 0);
    for (const char *text : {"", "1-2", "1-2-3-4", "1-2-", "-1-2-3", "12345-1-1", "1-1-12345", "g-1-1", "1:2:3",
                             "1-2-3 ", " 1-2-3", "00:11:22:33:44:55", "1--3"}) {
        EXPECT_NE(SMP_Str2Mac(text, mac), 0u) << text;
    }
    EXPECT_EQ(std::memcmp(mac, brief, 6), 0);
    EXPECT_NE(SMP_Str2Mac(nullptr, mac), 0u);
    EXPECT_NE(SMP_Str2Mac("1-2-3", nullptr), 0u);
}

} // namespace
