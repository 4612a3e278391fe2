#include "support/harness.h"

#include <cstring>

namespace bgp::test {
namespace {

class Helpers : public PlugIn {};

TEST_F(Helpers, Atoul)
{
    const struct {
        const char *text;
        uint32_t code;
        uint32_t value;
    } rows[] = {
        {"0", 0, 0},
        {"12", 0, 12},
        {"12h", 0, 12},
        {"  12", 0, 12},
        {"4294967295", 0, 4294967295u},
        {"4294967296", 0xFFFFFFFF, 0},
        {"", 0xFFFFFFFF, 0},
        {"h12", 0xFFFFFFFF, 0},
        {"-1", 0xFFFFFFFF, 0},
        {"+1", 0xFFFFFFFF, 0},
    };
    for (const auto &row : rows) {
        uint32_t value = 77;
        EXPECT_EQ(SYSDT_atoul(row.text, &value), row.code) << row.text;
        EXPECT_EQ(value, row.value) << row.text;
    }
    uint32_t value = 77;
    EXPECT_EQ(SYSDT_atoul(nullptr, &value), 0xFFFFFFFF);
    EXPECT_EQ(value, 77u);
    EXPECT_EQ(SYSDT_atoul("1", nullptr), 0xFFFFFFFF);
}

TEST_F(Helpers, DotNumber)
{
    EXPECT_EQ(SYSDT_getStrDotNum(""), 0u);
    EXPECT_EQ(SYSDT_getStrDotNum("123"), 0u);
    EXPECT_EQ(SYSDT_getStrDotNum("1.2"), 1u);
    EXPECT_EQ(SYSDT_getStrDotNum("1.2.3.4"), 3u);
    EXPECT_EQ(SYSDT_getStrDotNum("...."), 4u);
    EXPECT_EQ(SYSDT_getStrDotNum("1.2:3"), DT_ERR_FAIL);
    EXPECT_EQ(SYSDT_getStrDotNum("a"), DT_ERR_FAIL);
    EXPECT_EQ(SYSDT_getStrDotNum("1 2"), DT_ERR_FAIL);
}

TEST_F(Helpers, IsHex)
{
    for (int character = 0; character < 256; ++character) {
        const bool expected = character != 0 && std::strchr("0123456789abcdefABCDEF", character) != nullptr;
        EXPECT_EQ(BGP_DATATYPE_IsHex(static_cast<char>(character)), expected ? 1u : 0u) << character;
    }
}

TEST_F(Helpers, Ipv6AddressOfAnSrPolicyBody)
{
    const std::string body = Bytes("000000000000000000000000 20010db8000000000000000000000001 01");
    uint16_t words[8];
    SYSDT_Ipv6AddrNtoH(body.data(), words);
    const uint16_t expected[8] = {0x2001, 0x0db8, 0, 0, 0, 0, 0, 1};
    EXPECT_EQ(std::memcmp(words, expected, sizeof words), 0);
}

TEST_F(Helpers, UnspecifiedAddress)
{
    uint8_t address[16] = {};
    EXPECT_EQ(SYSDT_ipv6AddrUnSpecified(address), 1u);
    for (uint8_t &byte : address) {
        byte = 0x80;
        EXPECT_EQ(SYSDT_ipv6AddrUnSpecified(address), 0u);
        byte = 0;
    }
}

TEST_F(Helpers, MulticastAddress)
{
    EXPECT_EQ(SYSDT_IsIpv6MultiCastAddr("ff0e::1"), 1u);
    EXPECT_EQ(SYSDT_IsIpv6MultiCastAddr("fe80::1"), 0u);
    EXPECT_EQ(SYSDT_IsIpv6MultiCastAddr("::"), 0u);
    EXPECT_EQ(SYSDT_IsIpv6MultiCastAddr("10.1.1.1"), DT_ERR_FAIL);
    EXPECT_EQ(SYSDT_IsIpv6MultiCastAddr(""), DT_ERR_FAIL);
}

TEST_F(Helpers, AddressOfEitherFamily)
{
    BgpAddressRecord record{};
    EXPECT_EQ(SYSDT_Str2IPv4IPv6("10.1.2.3", &record), DT_OK);
    EXPECT_EQ(Hex(&record, sizeof record), "0302010a" + std::string(32, '0') + "00000000");
    record = {};
    EXPECT_EQ(SYSDT_Str2IPv4IPv6("2001:db8::1", &record), DT_OK);
    EXPECT_EQ(Hex(&record, sizeof record), "00000000"
                                           "20010db8000000000000000000000001"
                                           "01000000");
    EXPECT_EQ(SYSDT_Str2IPv4IPv6("10.1.2", &record), DT_ERR_FAIL);
    EXPECT_EQ(SYSDT_Str2IPv4IPv6("2001:", &record), DT_ERR_FAIL);

    record = {};
    EXPECT_EQ(SYSDT_Str2SysIpv4Ipv6("10.1.2.3", 0, &record), DT_OK);
    EXPECT_EQ(record.Ipv4, 0x0a010203u);
    EXPECT_EQ(record.Family, 0u);
    EXPECT_EQ(SYSDT_Str2SysIpv4Ipv6("::1", 0, &record), DT_OK);
    EXPECT_EQ(Hex(record.Ipv6, 16), "00000000000000000000000000000001");
    EXPECT_EQ(record.Family, 1u);
    EXPECT_EQ(SYSDT_Str2SysIpv4Ipv6("10.1.2", 0, &record), DT_ERR_FAIL);
    EXPECT_EQ(SYSDT_Str2SysIpv4Ipv6(":::", 0, &record), DT_ERR_INVALID_PARAM);

    uint32_t ipv4 = 0;
    uint8_t ipv6[16] = {};
    EXPECT_EQ(SYSDT_Str2Ipv4Ipv6("10.1.2.3", &ipv4, ipv6), DT_OK);
    EXPECT_EQ(ipv4, 0x0a010203u);
    EXPECT_EQ(SYSDT_Str2Ipv4Ipv6("::2", &ipv4, ipv6), DT_OK);
    EXPECT_EQ(Hex(ipv6, 16), "00000000000000000000000000000002");
    EXPECT_NE(SYSDT_Str2Ipv4Ipv6("10.1.2", &ipv4, ipv6), DT_OK);
    EXPECT_NE(SYSDT_Str2Ipv4Ipv6("::g", &ipv4, ipv6), DT_OK);
}

TEST_F(Helpers, ARefusedAddressLeavesTheRecordAlone)
{
    for (const uint8_t fill : {uint8_t{0x00}, uint8_t{0xA5}}) {
        for (const char *text : {"", "10.1.2", "10.1.2.3.4", "x", "2001:", "::g", ":", "1.2.3.4:5"}) {
            BgpAddressRecord record;
            std::memset(&record, fill, sizeof record);
            const std::string before = Hex(&record, sizeof record);
            EXPECT_NE(SYSDT_Str2IPv4IPv6(text, &record), DT_OK) << text;
            EXPECT_EQ(Hex(&record, sizeof record), before) << text;
            EXPECT_NE(SYSDT_Str2SysIpv4Ipv6(text, 0, &record), DT_OK) << text;
            EXPECT_EQ(Hex(&record, sizeof record), before) << text;
        }
    }
    // An accepted one changes its own family's field alone.
    BgpAddressRecord record;
    std::memset(&record, 0xA5, sizeof record);
    EXPECT_EQ(SYSDT_Str2IPv4IPv6("10.1.2.3", &record), DT_OK);
    EXPECT_EQ(Hex(&record, sizeof record), "0302010aa5a5a5a5a5a5a5a5a5a5a5a5a5a5a5a500000000");
    EXPECT_EQ(SYSDT_Str2SysIpv4Ipv6("::1", 0, &record), DT_OK);
    EXPECT_EQ(Hex(&record, sizeof record), "0302010a0000000000000000000000000000000101000000");
}

} // namespace
} // namespace bgp::test
