// Random keys after the grammar, each carried through everything the type does. Draws come from RapidCheck where it is
// built in (it shrinks what it finds), and in any case from a generator with a fixed seed.
#include "bgpls/samples.h"

#if defined(BGP_HAVE_RAPIDCHECK) && __has_include(<rapidcheck.h>)
#include <rapidcheck.h>
#define BGP_RUN_RAPIDCHECK 1
#endif

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <random>

namespace bgp::test {
namespace {

class BgpLsProperty : public PlugIn {};

// A number below the bound.
using Draw = std::function<uint64_t(uint64_t bound)>;

struct Place {
    size_t offset;
    size_t bytes;
};

void Put32(std::string &record, size_t offset, uint32_t value)
{
    std::memcpy(record.data() + offset, &value, sizeof value);
}

uint32_t Get32(const std::string &record, size_t offset)
{
    uint32_t value;
    std::memcpy(&value, record.data() + offset, sizeof value);
    return value;
}

void Clear(std::string &record, const std::vector<Place> &places)
{
    for (const Place &place : places) {
        std::fill_n(record.begin() + static_cast<std::ptrdiff_t>(place.offset), place.bytes, '\0');
    }
}

// --------------------------------------------------------------------------------------------------------- the grammar

// A key as text together with the record that it must give.
struct Key {
    std::string text;
    std::string record = std::string(228, '\0');
    std::vector<std::string> igpTexts; // of LOCAL and REMOTE, as typed; "" for none
};

// Where a node descriptor goes.
struct NodePlaces {
    size_t as, bgpLsId, memberAs, area, igp, routerId; // 0 for what the layout has no place for
    size_t existFlag;
    uint32_t existBit;
};

class Generator {
public:
    explicit Generator(Draw draw) : draw_(std::move(draw)) {}

    Key Make()
    {
        type_ = Number(6) + 1;
        static constexpr uint32_t kProtocols[] = {1, 2, 3, 4, 5, 6, 7, 9};
        protocol_ = kProtocols[draw_(8)];
        Put32(key_.record, 0, type_);
        Put32(key_.record, 4, protocol_);
        std::vector<std::string> groups = {Identifier(), Local()};
        if (type_ == 2) {
            groups.push_back(Remote());
            groups.push_back(Link());
        } else if (type_ == 3 || type_ == 4) {
            groups.push_back(Prefix());
        } else if (type_ == 5) {
            groups.push_back(Te());
        } else if (type_ == 6) {
            groups.push_back(Sid());
        }
        if (Chance()) {
            groups.push_back("[UNKNOWN]");
        }
        if (Chance()) {
            groups.push_back("[index" + std::to_string(draw_(1000)) + "]");
        }
        Shuffle(groups);
        static constexpr const char *kTypes[] = {"NODE", "LINK", "IPV4-PREFIX", "IPV6-PREFIX", "TEPOLICY", "SRV6-SID"};
        static constexpr const char *kNames[] = {"",       "ISIS-LEVEL-1", "ISIS-LEVEL-2", "OSPFv2", "DIRECT",
                                                 "STATIC", "OSPFv3",       "BGP",          "",       "SEGMENT-ROUTING"};
        key_.text = std::string("[") + kTypes[type_ - 1] + "][" + kNames[protocol_] + "]" + Joined(groups);
        return key_;
    }

private:
    uint32_t Number(uint64_t bound) { return static_cast<uint32_t>(draw_(bound)); }
    bool Chance() { return draw_(2) == 1; }

    void Shuffle(std::vector<std::string> &items)
    {
        for (size_t i = items.size(); i > 1; --i) {
            std::swap(items[i - 1], items[Number(i)]);
        }
    }

    static std::string Joined(const std::vector<std::string> &items)
    {
        std::string joined;
        for (const std::string &item : items) {
            joined += item;
        }
        return joined;
    }

    static std::string Dotted(uint32_t address)
    {
        char text[16];
        std::snprintf(text, sizeof text, "%u.%u.%u.%u", address >> 24, address >> 16 & 255, address >> 8 & 255,
                      address & 255);
        return text;
    }

    std::string Ipv4(size_t offset)
    {
        const uint32_t address = Number(uint64_t{1} << 32);
        if (offset != 0) {
            Put32(key_.record, offset, address);
        }
        return Dotted(address);
    }

    std::string Ipv6(size_t offset)
    {
        // Few groups that are not zero keep the text short.
        uint16_t groups[8] = {};
        for (int i = 0; i < 2; ++i) {
            groups[draw_(8)] = static_cast<uint16_t>(draw_(65536));
        }
        std::string text;
        for (int i = 0; i < 8; ++i) {
            char group[6];
            std::snprintf(group, sizeof group, i == 0 ? "%x" : ":%x", groups[i]);
            text += group;
            if (offset != 0) {
                key_.record[offset + 2 * static_cast<size_t>(i)] = static_cast<char>(groups[i] >> 8);
                key_.record[offset + 2 * static_cast<size_t>(i) + 1] = static_cast<char>(groups[i] & 255);
            }
        }
        return text;
    }

    // An AS number in one of its notations.
    std::string As(size_t offset)
    {
        const uint32_t low = Number(65536);
        const uint32_t high = Number(65535) + 1;
        const bool dotted = Chance();
        const uint32_t value = dotted || Chance() ? high << 16 | low : std::max(low, 1u);
        if (offset != 0) {
            Put32(key_.record, offset, value);
            Put32(key_.record, offset + 4, dotted ? 1 : 0);
        }
        return dotted ? std::to_string(high) + "." + std::to_string(low) : std::to_string(value);
    }

    std::string Identifier()
    {
        const uint64_t high = draw_(4) == 0 ? draw_(uint64_t{1} << 32) : 0;
        const uint32_t low = Number(uint64_t{1} << 32);
        Put32(key_.record, 8, low);
        return "[IDENTIFIER" + std::to_string(high << 32 | low) + "]";
    }

    bool Isis() const { return protocol_ == 1 || protocol_ == 2; }
    bool Ospf() const { return protocol_ == 3 || protocol_ == 6; }

    std::string IgpRouterId(size_t offset)
    {
        uint8_t bytes[8];
        for (uint8_t &byte : bytes) {
            byte = static_cast<uint8_t>(draw_(256));
        }
        char text[40];
        size_t used = 7;
        if (Isis()) {
            std::snprintf(text, sizeof text, "%02x%02x.%02x%02x.%02x%02x.%02x", bytes[0], bytes[1], bytes[2], bytes[3],
                          bytes[4], bytes[5], bytes[6]);
        } else if (Chance()) {
            used = 8;
            std::snprintf(text, sizeof text, "%u.%u.%u.%u/%u.%u.%u.%u", bytes[0], bytes[1], bytes[2], bytes[3],
                          bytes[4], bytes[5], bytes[6], bytes[7]);
        } else {
            used = 4;
            std::snprintf(text, sizeof text, "%u.%u.%u.%u", bytes[0], bytes[1], bytes[2], bytes[3]);
        }
        if (offset != 0) {
            std::memcpy(key_.record.data() + offset, bytes, used);
        }
        return text;
    }

    std::string BgpRouterId(size_t offset)
    {
        if (type_ != 5 && Chance()) {
            const uint32_t number = Number(uint64_t{1} << 32);
            Put32(key_.record, offset, number);
            return std::to_string(number);
        }
        return Ipv4(offset);
    }

    std::string Node(const NodePlaces &places, bool routerId, bool area, bool igp, bool memberAs)
    {
        std::vector<std::string> fields;
        if (Chance()) {
            fields.push_back("[as" + As(places.as) + "]");
        }
        if (Chance()) {
            fields.push_back("[bgp-ls-identifier" + Ipv4(places.bgpLsId) + "]");
            Put32(key_.record, places.existFlag, Get32(key_.record, places.existFlag) | places.existBit);
        }
        if (routerId) {
            fields.push_back("[bgp-router-id" + BgpRouterId(places.routerId) + "]");
        }
        if (area) {
            fields.push_back("[ospf-area-id" + Ipv4(places.area) + "]");
        }
        key_.igpTexts.push_back("");
        if (igp && (Isis() || Ospf())) {
            key_.igpTexts.back() = IgpRouterId(places.igp);
            fields.push_back("[igp-router-id" + key_.igpTexts.back() + "]");
        }
        if (memberAs) {
            fields.push_back("[member-as" + As(places.memberAs) + "]");
        }
        if (type_ == 5 || draw_(8) == 0) {
            fields.push_back("[ipv4-router-id" + Ipv4(type_ == 5 ? 32 : 0) + "]");
        }
        if (type_ == 5 && Chance()) {
            fields.push_back("[ipv6-router-id" + Ipv6(36) + "]");
        }
        if (fields.empty()) {
            fields.push_back("[as]");
        }
        Shuffle(fields);
        return Joined(fields);
    }

    std::string Local()
    {
        static constexpr NodePlaces kPlaces[] = {
            {16, 24, 0, 28, 32, 0, 82, 1},  {16, 24, 28, 36, 40, 216, 224, 1}, {16, 24, 0, 28, 32, 0, 95, 1},
            {16, 24, 0, 28, 32, 0, 107, 1}, {16, 24, 0, 0, 0, 28, 112, 1},     {16, 24, 28, 36, 40, 110, 114, 1},
        };
        const NodePlaces &places = kPlaces[type_ - 1];
        if (type_ == 2 || type_ == 6) {
            return "[LOCAL" + Node(places, protocol_ == 7, protocol_ != 7, Chance(), Chance()) + "]";
        }
        return "[LOCAL" + Node(places, type_ == 5 && Chance(), Chance(), Chance(), false) + "]";
    }

    std::string Remote()
    {
        static constexpr NodePlaces kPlaces = {90, 98, 102, 110, 114, 220, 224, 2};
        return "[REMOTE" + Node(kPlaces, Chance(), Chance(), Chance(), Chance()) + "]";
    }

    std::string Address(size_t ipv4, size_t ipv6) { return Chance() ? Ipv4(ipv4) : Ipv6(ipv6); }

    std::string Mt(size_t offset)
    {
        const uint32_t mt = Number(0xFFFFFFFF);
        Put32(key_.record, offset, mt);
        return "[mt-id" + std::to_string(mt) + "]";
    }

    std::string Link()
    {
        const bool bgp = protocol_ == 7;
        std::vector<std::string> fields;
        Put32(key_.record, 212, bgp ? 0 : 0xFFFFFFFF);
        if (bgp || draw_(4) == 0) {
            fields.push_back("[identifier" + Ipv4(164) + ".");
            fields.back() += Ipv4(168) + "]";
        } else if (Chance()) {
            fields.push_back("[link-local-id" + Ipv4(164) + "]");
            fields.push_back("[link-remote-id" + Ipv4(168) + "]");
        }
        if (bgp || Chance()) {
            fields.push_back("[local" + Address(172, 180) + "]");
            fields.push_back("[remote" + Address(176, 196) + "]");
        } else if (Chance()) {
            // Twice is allowed: one of each family.
            fields.push_back("[if-address" + Ipv4(172) + "]");
            fields.push_back("[if-address" + Ipv6(180) + "]");
            fields.push_back("[peer-address" + Ipv4(176) + "]");
            fields.push_back("[peer-address" + Ipv6(196) + "]");
        }
        if (fields.empty() || Chance()) {
            fields.push_back(Mt(212));
        }
        Shuffle(fields);
        return "[LINK" + Joined(fields) + "]";
    }

    std::string Prefix()
    {
        const bool ipv4 = type_ == 3;
        const uint32_t routeType = Number(uint64_t{1} << 32);
        const uint32_t length = Number(1000);
        Put32(key_.record, 82, 0xFFFFFFFF);
        Put32(key_.record, 86, routeType);
        key_.record[ipv4 ? 94 : 106] = static_cast<char>(length & 255);
        std::vector<std::string> fields = {"[ospf-route-type" + std::to_string(routeType) + "]"};
        fields.push_back("[prefix" + (ipv4 ? Ipv4(90) : Ipv6(90)) + "/" + std::to_string(length) + "]");
        if ((!ipv4 && protocol_ != 6) || Chance()) {
            fields.push_back(Mt(82));
        }
        Shuffle(fields);
        return "[PREFIX" + Joined(fields) + "]";
    }

    std::string FamilyAddress(size_t offset)
    {
        if (Chance()) {
            return Ipv4(offset);
        }
        key_.record[offset + 20] = 1;
        return Ipv6(offset + 4);
    }

    std::string Te()
    {
        const uint32_t origin = Number(256);
        const uint32_t flags = Number(256);
        const uint32_t color = Number(uint64_t{1} << 32);
        const uint32_t discriminator = Number(uint64_t{1} << 32);
        key_.record[52] = static_cast<char>(origin);
        key_.record[53] = static_cast<char>(flags);
        Put32(key_.record, 75, color);
        Put32(key_.record, 108, discriminator);
        std::vector<std::string> fields = {
            "[protocol-origin" + std::to_string(origin) + "]", "[Flag" + std::to_string(flags) + "]",
            "[color" + std::to_string(color) + "]", "[discriminator" + std::to_string(discriminator) + "]"};
        fields.push_back("[endpoint" + FamilyAddress(54) + "]");
        fields.push_back("[originator-as" + As(79) + "]");
        fields.push_back("[originator-address" + FamilyAddress(87) + "]");
        Shuffle(fields);
        return "[TE" + Joined(fields) + "]";
    }

    std::string Sid()
    {
        Put32(key_.record, 90, 0xFFFFFFFF);
        std::vector<std::string> fields = {"[sid" + Ipv6(94) + "]"};
        if (protocol_ == 7) {
            fields.push_back("[mt-id" + std::to_string(draw_(100)) + "]"); // not looked at
        } else if (Chance()) {
            fields.push_back(Mt(90));
        }
        Shuffle(fields);
        return "[SID" + Joined(fields) + "]";
    }

    Draw draw_;
    Key key_;
    uint32_t type_ = 0;
    uint32_t protocol_ = 0;
};

// -------------------------------------------------------------------------------------------------------- the property

// What the printed form of a record does not show, set to what reading it back gives.
std::string AsPrinted(std::string record)
{
    const bool bgp = Get32(record, 4) == 7;
    const uint32_t type = Get32(record, 0);
    if (type == 6 && !bgp) {
        Clear(record, {{28, 8}});
    }
    if (type != 2) {
        return record;
    }
    const bool ids = Get32(record, 164) != 0 || Get32(record, 168) != 0;
    const bool ipv4 = Get32(record, 172) != 0 || Get32(record, 176) != 0;
    if (bgp) {
        Clear(record, {{110, 4}, {212, 4}}); // the remote area and the MT id
        if (ipv4) {
            Clear(record, {{180, 32}});
        }
    } else {
        Clear(record, {{28, 8}, {102, 8}, {220, 4}}); // the member ASs and the remote BGP router id
        if (ids) {
            Clear(record, {{172, 40}});
        }
    }
    return record;
}

// The printed text with the raw IGP router ids as they were typed; without them where none was typed.
std::string Readable(const Key &key, std::string text)
{
    static const std::string kHead = "[igp-router-id";
    const uint32_t type = Get32(key.record, 0);
    const size_t areas[] = {type == 2 || type == 6 ? 40u : 32u, 114u};
    size_t at = 0;
    for (size_t node = 0; node < key.igpTexts.size(); ++node) {
        at = text.find(kHead, at);
        if (at == std::string::npos) {
            return text; // a form without them
        }
        const size_t raw = strnlen(key.record.data() + areas[node], 49);
        const std::string typed = key.igpTexts[node].empty() ? "" : kHead + key.igpTexts[node] + "]";
        text.replace(at, kHead.size() + raw + 1, typed);
        at += typed.size();
    }
    return text;
}

// The record in network order: the words below reversed, the identifier as one number.
std::string InNetworkOrder(const std::string &record)
{
    static const std::vector<size_t> kWords[] = {
        {28, 82},
        {28, 32, 36, 90, 94, 98, 102, 106, 110, 164, 168, 172, 176, 212, 216, 220, 224},
        {28, 82, 86, 90, 95},
        {28, 82, 86, 107},
        {28, 32, 75, 79, 83, 108, 112},
        {28, 32, 36, 90, 110, 114},
    };
    std::string network = record;
    const auto reverse = [&network](size_t offset, size_t bytes) {
        const auto at = network.begin() + static_cast<std::ptrdiff_t>(offset);
        std::reverse(at, at + static_cast<std::ptrdiff_t>(bytes));
    };
    for (const size_t offset : {0u, 4u, 16u, 20u, 24u}) {
        reverse(offset, 4);
    }
    reverse(8, 8);
    const uint32_t type = Get32(record, 0);
    for (const size_t offset : kWords[type - 1]) {
        reverse(offset, 4);
    }
    if (type == 5 && record[74] == 0) {
        reverse(54, 4);
    }
    if (type == 5 && record[107] == 0) {
        reverse(87, 4);
    }
    return network;
}

std::string Different(const char *what, const std::string &wanted, const std::string &got)
{
    return std::string(what) + ": wanted " + wanted + ", got " + got;
}

std::string EndianProblem(const std::string &record)
{
    const std::string host = Hex(record);
    const std::string network = Hex(InNetworkOrder(record));
    if (Endian(kBgpLs, network) != host) {
        return Different("to host order", host, Endian(kBgpLs, network));
    }
    // In host order only the type word turns; once it has, the rest follows.
    const std::string once = Endian(kBgpLs, host);
    if (once != network.substr(0, 8) + host.substr(8)) {
        return Different("host order", network.substr(0, 8) + host.substr(8), once);
    }
    const std::string twice = Endian(kBgpLs, once);
    if (twice != host.substr(0, 8) + network.substr(8)) {
        return Different("and back", host.substr(0, 8) + network.substr(8), twice);
    }
    return "";
}

// What does not hold for the key; "" when everything does.
std::string Problem(const Key &key)
{
    const In in = FormatIn(kBgpLs, key.text);
    if (key.text.size() > 500) {
        return in.code == DT_ERR_INVALID_VALUE ? "" : "accepted with more than 500 characters";
    }
    if (in.code != DT_OK) {
        return "refused";
    }
    if (in.value != Hex(key.record)) {
        return Different("record", Hex(key.record), in.value);
    }
    const Out out = FormatOut(kBgpLs, in.value);
    if (out.code != DT_OK || out.text.size() + 1 != out.length) {
        return "not printed";
    }
    const std::string readable = Readable(key, out.text);
    const In back = FormatIn(kBgpLs, readable);
    const std::string wanted = Hex(AsPrinted(key.record));
    if (back.code != DT_OK || back.value != wanted) {
        return "prints " + out.text + ", read as " + readable + Different("", wanted, back.value);
    }
    // What was read from a printed text prints the same.
    if (Readable(key, FormatOut(kBgpLs, back.value).text) != readable) {
        return "prints " + FormatOut(kBgpLs, back.value).text + " instead of " + out.text;
    }
    if (Compare(kBgpLs, in.value, in.value) != 0 || Check(kBgpLs, in.value) != DT_OK) {
        return "not equal to itself";
    }
    const std::string lua = LuaProblem(key.record);
    return lua.empty() ? EndianProblem(key.record) : lua;
}

TEST_F(BgpLsProperty, FixedSeed)
{
    std::mt19937_64 random(20260101);
    size_t types[7] = {};
    size_t tooLong = 0;
    for (int i = 0; i < 5000; ++i) {
        const bool small = i % 4 == 0;
        const Draw draw = [&random, small](uint64_t bound) {
            // A quarter of the keys is made of small numbers and first choices.
            return small && bound > 16 ? random() % 16 : random() % bound;
        };
        const Key key = Generator(draw).Make();
        ++types[Get32(key.record, 0)];
        tooLong += key.text.size() > 500 ? 1 : 0;
        ASSERT_EQ(Problem(key), "") << key.text;
    }
    for (int type = 1; type <= 6; ++type) {
        EXPECT_GT(types[type], 500u) << type;
    }
    EXPECT_LT(tooLong, 500u);
}

// Keys with one character changed are refused or give a record; nothing else happens, and what is accepted obeys the
// printing rules still.
TEST_F(BgpLsProperty, DamagedKeysAreRefusedOrRead)
{
    static constexpr char kCharacters[] = "[]./:-09afgIL x\xff\t";
    std::mt19937_64 random(7);
    for (int i = 0; i < 20000; ++i) {
        std::string text = Generator([&random](uint64_t bound) { return random() % bound; }).Make().text;
        const auto at = static_cast<size_t>(random() % text.size());
        const char character = kCharacters[random() % (sizeof kCharacters - 1)];
        switch (random() % 3) {
        case 0:
            text[at] = character;
            break;
        case 1:
            text.erase(at, 1);
            break;
        default:
            text.insert(at, 1, character);
            break;
        }
        const In in = FormatIn(kBgpLs, text);
        ASSERT_TRUE(in.code == DT_OK || in.code == DT_ERR_INVALID_VALUE) << text;
        ASSERT_TRUE(in.textKept) << text;
        if (in.code == DT_OK) {
            const Out out = FormatOut(kBgpLs, in.value);
            ASSERT_EQ(out.code, DT_OK) << text;
            ASSERT_EQ(out.text.size() + 1, out.length) << text;
            ASSERT_EQ(EndianProblem(Bytes(in.value)), "") << text;
            ASSERT_EQ(LuaProblem(Bytes(in.value)), "") << text;
        }
    }
}

#ifdef BGP_RUN_RAPIDCHECK
TEST_F(BgpLsProperty, RapidCheck)
{
    setenv("RC_PARAMS", "max_success=1000", 0); // unless the caller has parameters of his own
    EXPECT_TRUE(rc::check("a key survives text, Lua and byte order", [] {
        const Key key = Generator([](uint64_t bound) { return *rc::gen::inRange<uint64_t>(0, bound); }).Make();
        const std::string problem = Problem(key);
        if (!problem.empty()) {
            RC_LOG() << key.text << "\n" << problem << "\n";
        }
        RC_ASSERT(problem.empty());
    }));
}
#endif

} // namespace
} // namespace bgp::test
