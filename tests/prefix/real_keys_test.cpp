// Real EVPN routes, as they stood in BGP UPDATEs, through text and value. The file holds NLRI as on the wire: route
// type, length, body (RFC 7432 section 7, RFC 9136 section 3, RFC 9251 section 9). A route key leaves out what is no
// part of the key here: the route distinguisher, labels, the ESI of MAC and prefix routes, gateways and flags.
#include "support/harness.h"

#include <arpa/inet.h>

#include <cstdio>
#include <fstream>
#include <map>

namespace bgp::test {
namespace {

class RealKeys : public PlugIn {};

// Takes a body apart from its front. All numbers are in network order.
class Wire {
public:
    explicit Wire(std::string bytes) : bytes_(std::move(bytes)) {}
    std::string Take(size_t count)
    {
        EXPECT_LE(at_ + count, bytes_.size());
        const std::string part = bytes_.substr(at_, count);
        at_ += count;
        return part;
    }
    uint32_t Number(size_t count)
    {
        uint32_t number = 0;
        for (const char byte : Take(count)) {
            number = number << 8 | static_cast<uint8_t>(byte);
        }
        return number;
    }
    size_t Left() const { return bytes_.size() - at_; }

private:
    std::string bytes_;
    size_t at_ = 0;
};

// The key in both forms: text as it is typed, and the value's bytes (hex) from the route type on.
struct Key {
    std::string text, value;
};

void AddEsi(Key &key, Wire &wire)
{
    const std::string esi = wire.Take(10);
    const std::string hex = Hex(esi);
    for (size_t group = 0; group < 5; ++group) {
        key.text += (group == 0 ? "" : ".") + hex.substr(4 * group, 4);
    }
    key.value += hex;
}

void AddNumber(Key &key, Wire &wire, const char *before = "")
{
    const uint32_t number = wire.Number(4);
    key.text += before + std::to_string(number);
    key.value += Le32(number);
}

struct Address {
    std::string text, field;
    bool ipv6;
};

Address TakeAddress(Wire &wire, size_t bytes)
{
    if (bytes == 16) {
        const std::string address = wire.Take(16);
        char text[INET6_ADDRSTRLEN];
        inet_ntop(AF_INET6, address.data(), text, sizeof text);
        return {'[' + std::string(text) + ']', Le32(0) + Hex(address) + "01", true};
    }
    const uint32_t word = bytes == 4 ? wire.Number(4) : 0; // a missing address is the address zero of length zero
    char text[16];
    std::snprintf(text, sizeof text, "%u.%u.%u.%u", word >> 24, word >> 16 & 255, word >> 8 & 255, word & 255);
    return {text, Le32(word) + std::string(32, '0') + "00", false};
}

// A length in bits and an address of that many.
void AddAddress(Key &key, Wire &wire)
{
    const uint32_t bits = wire.Number(1);
    const Address address = TakeAddress(wire, bits / 8);
    key.text += ':' + std::to_string(bits) + ':' + address.text;
    key.value += Hex(std::string(1, static_cast<char>(bits))) + address.field;
}

Key Discovery(Wire &wire)
{
    Key key{"", "01"};
    AddEsi(key, wire);
    AddNumber(key, wire, ":");
    EXPECT_EQ(wire.Left(), 3u); // a label
    return key;
}

Key Mac(Wire &wire)
{
    Key key{"", "02"};
    wire.Take(10); // ESI
    AddNumber(key, wire);
    const uint32_t bits = wire.Number(1);
    const std::string mac = Hex(wire.Take(6));
    key.text += ':' + std::to_string(bits) + ':' + mac.substr(0, 4) + '-' + mac.substr(4, 4) + '-' + mac.substr(8);
    key.value += Hex(std::string(1, static_cast<char>(bits))) + mac;
    AddAddress(key, wire);
    EXPECT_TRUE(wire.Left() == 3 || wire.Left() == 6) << wire.Left(); // one label or two
    return key;
}

Key Inclusive(Wire &wire)
{
    Key key{"", "03"};
    AddNumber(key, wire);
    AddAddress(key, wire);
    return key;
}

Key Segment(Wire &wire)
{
    Key key{"", "04"};
    AddEsi(key, wire);
    AddAddress(key, wire);
    return key;
}

Key Prefix(Wire &wire)
{
    Key key{"", "05"};
    wire.Take(10); // ESI
    AddNumber(key, wire);
    const uint32_t bits = wire.Number(1);
    const bool ipv6 = wire.Left() > 16; // two addresses, one family, and a label
    const Address address = TakeAddress(wire, ipv6 ? 16 : 4);
    EXPECT_EQ(wire.Left(), ipv6 ? 19u : 7u);
    key.text += ':' + address.text + ':' + std::to_string(bits);
    key.value += Hex(std::string(1, static_cast<char>(bits))) + address.field;
    return key;
}

Key Multicast(Wire &wire, unsigned routeType)
{
    Key key{"", "0" + std::to_string(routeType)};
    if (routeType != 6) {
        AddEsi(key, wire);
    }
    AddNumber(key, wire, routeType == 6 ? "" : ":");
    AddAddress(key, wire); // source, group, originator
    AddAddress(key, wire);
    AddAddress(key, wire);
    if (routeType == 8) {
        AddNumber(key, wire, ":"); // the leave group synchronisation
    }
    return key;
}

Key Decode(unsigned routeType, Wire &wire)
{
    wire.Take(8); // route distinguisher
    switch (routeType) {
    case 1:
        return Discovery(wire);
    case 2:
        return Mac(wire);
    case 3:
        return Inclusive(wire);
    case 4:
        return Segment(wire);
    case 5:
        return Prefix(wire);
    default:
        return Multicast(wire, routeType);
    }
}

std::vector<std::string> Lines()
{
    std::ifstream file(BGP_SOURCE_DIR "/tests/data/evpn-nlri-hex.txt");
    EXPECT_TRUE(file.is_open());
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);) {
        if (!line.empty() && line[0] != '#') {
            lines.push_back(line);
        }
    }
    return lines;
}

struct Real {
    unsigned routeType;
    Key key;
    bool zeroEsi; // in a route whose ESI the grammar wants to be one
};

std::vector<Real> Routes()
{
    std::vector<Real> routes;
    for (const std::string &line : Lines()) {
        const std::string nlri = Bytes(line);
        const unsigned routeType = static_cast<uint8_t>(nlri[0]);
        SCOPED_TRACE(line);
        EXPECT_EQ(static_cast<uint8_t>(nlri[1]) + 2u, nlri.size());
        if (routeType < 1 || routeType > 8) {
            continue;
        }
        Wire wire(nlri.substr(2));
        const Key key = Decode(routeType, wire);
        const bool wantsEsi = routeType == 4 || routeType >= 7;
        routes.push_back({routeType, key, wantsEsi && key.value.substr(2, 20) == std::string(20, '0')});
    }
    return routes;
}

TEST_F(RealKeys, TheDecoderKnowsThem)
{
    EXPECT_EQ(Lines().size(), 44u);
    std::map<unsigned, int> counts;
    for (const Real &route : Routes()) {
        ++counts[route.routeType];
    }
    const std::map<unsigned, int> expected = {{1, 11}, {2, 14}, {3, 4}, {4, 7}, {5, 5}, {7, 1}, {8, 1}};
    EXPECT_EQ(counts, expected); // and one of type 10, which has no key

    // Some of each kind, by hand.
    const std::pair<size_t, const char *> texts[] = {
        {0, "0000.0000.0000.0000.0000:4294967295"},
        {1, "02aa.bbcc.ddee.ff23.4500:4369"},
        {11, "42:48:aabb-ccdd-eeff:0:0.0.0.0"},
        {19, "0:48:0081-c4bc-778a:32:10.10.10.1"},
        {24, "2:48:ccaa-029c-d829:128:[c0b4:102:c0b4:102:c0b4:102:c0b4:102]"},
        {25, "0:32:172.31.101.6"},
        {28, "3:128:[2001:db8::1]"},
        {31, "02f2.0cdd.809f.f702.0200:32:127.0.0.1"},
        {37, "0:198.51.100.0:26"},
        {39, "0:[2001:db8:0:b::]:64"},
        {41, "0000.0000.0000.0000.0000:0:0:0.0.0.0:32:239.1.1.1:32:10.0.0.1"},
        {42, "0000.0200.1600.0000.0003:2141:0:0.0.0.0:32:239.255.255.255:32:37.44.55.118:0"},
    };
    const std::vector<Real> routes = Routes();
    for (const auto &[index, text] : texts) {
        ASSERT_LT(index, routes.size());
        EXPECT_EQ(routes[index].key.text, text);
    }
}

TEST_F(RealKeys, TextToValueToText)
{
    int taken = 0;
    int refused = 0;
    for (const Real &route : Routes()) {
        SCOPED_TRACE(route.key.text);
        const std::string value = Padded("01000000" + route.key.value, 89);
        for (const char *type : {"EVNPREFIX", "BOLPREFIX"}) {
            const In in = FormatIn(type, route.key.text);
            if (route.zeroEsi) { // a segment of all zeros is none
                EXPECT_NE(in.code, DT_OK);
            } else {
                EXPECT_EQ(in.code, DT_OK);
                EXPECT_EQ(in.value, value);
            }
            EXPECT_EQ(Text(type, value), route.key.text); // it prints either way
        }
        ++(route.zeroEsi ? refused : taken);
    }
    EXPECT_EQ(taken, 38);
    EXPECT_EQ(refused, 5);
}

TEST_F(RealKeys, ThroughLuaAndBack)
{
    for (const Real &route : Routes()) {
        SCOPED_TRACE(route.key.text);
        const std::string value = Padded("01000000" + route.key.value, 89);
        const LuaOut out = LuaSet("EVNPREFIX", value);
        EXPECT_EQ(out.code, DT_OK);
        EXPECT_EQ(out.table, "{bolPrefixRtType=" + std::to_string(route.routeType) + ", bolPrefixRtValue=\"" +
                                 route.key.text + "\", bolType=1}");
        const LuaIn in = LuaGet(Row("EVNPREFIX"), out.table, 89);
        EXPECT_EQ(in.code, DT_OK);
        EXPECT_EQ(in.value.substr(0, 10), value.substr(0, 10));
        // From Lua a segment's ESI must be of type 00 or 01; the text is passed over otherwise.
        const bool checkedOut = route.routeType == 4 && route.key.value.substr(2, 2) > "01";
        const std::string rest = Bytes(in.value).substr(5);
        const std::string expected = Bytes(value).substr(5);
        if (route.zeroEsi || checkedOut) {
            EXPECT_EQ(rest, std::string(84, '\xEE'));
            continue;
        }
        for (size_t i = 0; i < rest.size(); ++i) { // bytes without a field stay as they were
            EXPECT_TRUE(rest[i] == expected[i] || (rest[i] == '\xEE' && expected[i] == 0)) << i;
        }
    }
}

TEST_F(RealKeys, EqualToThemselvesAndOrderedWithinTheirType)
{
    const std::vector<Real> routes = Routes();
    for (const Real &left : routes) {
        for (const Real &right : routes) {
            const std::string leftValue = Padded("01000000" + left.key.value, 89);
            const std::string rightValue = Padded("01000000" + right.key.value, 89);
            const int32_t order = Compare("EVNPREFIX", leftValue, rightValue);
            SCOPED_TRACE(left.key.text + " and " + right.key.text);
            if (left.routeType != right.routeType) {
                EXPECT_EQ(order, static_cast<int32_t>(DT_ERR_FAIL));
            } else {
                EXPECT_TRUE(order >= -1 && order <= 1);
                EXPECT_EQ(Compare("EVNPREFIX", rightValue, leftValue), -order);
                EXPECT_TRUE(leftValue != rightValue || order == 0);
            }
        }
    }
}

} // namespace
} // namespace bgp::test
