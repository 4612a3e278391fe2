// The floors against the plug-in, floors that are spoilt and must be found out, and the texts that rings are made of.
#include "calls.h"
#include "floors.h"
#include "pattern.h"

#include "bgp_standalone_host.hpp"

#include <gtest/gtest.h>

#include <cstring>
#include <set>
#include <string>

namespace {

using namespace bgp::bench;
namespace host = bgp::standalone;

constexpr uint32_t kFew = 2048;

class Floors : public testing::Test {
protected:
    static void SetUpTestSuite()
    {
        std::string error;
        ASSERT_TRUE(host::LoadPlugIn(BGP_PLUGIN_PATH, &error)) << error;
        handle = host::OpenHandle();
    }
    static void TearDownTestSuite()
    {
        host::CloseHandle(handle);
        host::UnloadPlugIn();
    }
    static uint32_t handle;
};
uint32_t Floors::handle = 0;

TEST_F(Floors, DoWhatThePlugInDoes)
{
    std::set<const Floor *> seen;
    const Rows rows = AllRows();
    for (const Row *row = rows.at; row < rows.at + rows.count; ++row) {
        if (row->floor != nullptr) {
            Ring ring = MakeRing(*row, kFew, handle);
            EXPECT_EQ(ring.count, kFew);
            EXPECT_EQ(FindDifference(*row, *row->floor, ring, handle), "");
            seen.insert(row->floor);
        }
    }
    EXPECT_EQ(seen.size(), 9u);
    EXPECT_EQ(host::ScratchBlocks(), 0u);
}

TEST_F(Floors, AreMeasuredForEveryTypeOfTheTable)
{
    const std::string table[] = {"VRFRD AS:n",       "VRFRD a.b.c.d:n",      "VRFRD x.y:n",    "VRFRT AS:n",
                                 "VRFRT a.b.c.d:n",  "VRFRT x.y:n",          "COMMUNITY n:n",  "LARGECOMMUNITY n:n:n",
                                 "ASNUM plain",      "ASNUM dotted",         "BOLPREFIX IPv4", "BOLPREFIX IPv6",
                                 "BGPLSPREFIX node", "BOLPREFIX EVPN MAC/IP"};
    const Rows rows = AllRows();
    for (const std::string &name : table) {
        uint32_t found = 0;
        for (const Row *row = rows.at; row < rows.at + rows.count; ++row) {
            found += std::string(row->type) + ' ' + row->notation == name && row->floor != nullptr;
        }
        EXPECT_EQ(found, 1u) << name;
    }
}

// Each of the rows that the benchmarks were written for has one, and the composite one for each sub-type, EVPN route
// type and NLRI type. A type that is registered behind them may have one.
TEST_F(Floors, AndTheOtherRowsMissNothing)
{
    std::set<std::string> types;
    std::set<std::string> kinds;
    const Rows rows = AllRows();
    for (const Row *row = rows.at; row < rows.at + rows.count; ++row) {
        types.insert(row->type);
        if (row->begins != nullptr) {
            kinds.insert(std::string(row->type) + ' ' + row->begins);
        }
    }
    constexpr size_t kMeasured = 35;
    const auto registered = host::Rows();
    ASSERT_GE(registered.size(), kMeasured);
    for (size_t i = 0; i < kMeasured; ++i) {
        EXPECT_EQ(types.count(registered[i]->Name), 1u) << registered[i]->Name;
    }
    for (const std::string &type : types) {
        EXPECT_NE(host::FindRow(type.c_str()), nullptr) << type;
    }
    const auto expect = [&kinds](const char *format, uint32_t number) {
        char name[64];
        std::snprintf(name, sizeof name, format, number);
        EXPECT_EQ(kinds.count(name), 1u) << name;
    };
    for (uint32_t subType = 0; subType <= 16; ++subType) {
        if (subType != 1) {
            expect("BOLPREFIX %02x000000", subType);
        }
    }
    for (uint32_t routeType = 1; routeType <= 8; ++routeType) {
        expect("BOLPREFIX 01000000%02x", routeType);
    }
    for (uint32_t nlriType = 1; nlriType <= 6; ++nlriType) {
        expect("BGPLSPREFIX %02x000000", nlriType);
    }
}

// Every operation that a row names is offered by its type, and can be called over a ring.
TEST_F(Floors, TheLoopsRun)
{
    lua_State *lua = host::NewLua();
    const Rows rows = AllRows();
    const Calls calls = AllCalls();
    std::set<std::string> run;
    for (const Row *row = rows.at; row < rows.at + rows.count; ++row) {
        Subject subject{*row, MakeRing(*row, 16, handle), handle, lua};
        const std::vector<uint8_t> values = subject.ring.values;
        for (const Call *call = calls.at; call < calls.at + calls.count; ++call) {
            if (IsWanted(*call, subject)) {
                call->run(subject, 20);
                run.insert(std::string(call->operation) + ' ' + call->by);
            }
        }
        EXPECT_EQ(subject.ring.values, values) << row->type << ' ' << row->notation;
        EXPECT_EQ(host::HandleBlocks(handle), 0u) << row->type << ' ' << row->notation;
    }
    host::CloseLua(lua);
    EXPECT_EQ(host::ScratchBlocks(), 0u);
    EXPECT_EQ(run.size(), calls.count - 1); // libyang is for the benchmarks alone
}

// ------------------------------------------------------------------------------------------------------------ spoilt

bool RefusesAll(const char *, uint8_t *)
{
    return false;
}

// Does not look at what stands behind the number.
bool ReadsTheFront(const char *text, uint8_t *value)
{
    const std::string front(text, std::strspn(text, " \t0123456789.:"));
    return kTargetFloor.read(front.c_str(), value);
}

// Has no limits.
bool ReadsTooLarge(const char *text, uint8_t *value)
{
    unsigned long long as = 0;
    unsigned long long assigned = 0;
    char more = '\0';
    if (std::sscanf(text, "%llu:%llu%c", &as, &assigned, &more) == 2 && as <= UINT16_MAX && assigned > UINT32_MAX) {
        std::memset(value, 0, 12);
        return true;
    }
    return kTargetFloor.read(text, value);
}

bool ForgetsTheNotation(const char *text, uint8_t *value)
{
    const bool isRead = kTargetFloor.read(text, value);
    value[8] = 0;
    return isRead;
}

// Prints every value as if it were typed as AS:n.
int PrintsOneNotation(const uint8_t *value, char *text)
{
    return std::snprintf(text, kMostText, "%u:%u", value[2] << 8 | value[3],
                         static_cast<uint32_t>(value[4]) << 24 | value[5] << 16 | value[6] << 8 | value[7]);
}

int PrintsABlank(const uint8_t *value, char *text)
{
    const int length = kTargetFloor.print(value, text);
    text[length] = ' ';
    text[length + 1] = '\0';
    return length + 1;
}

TEST_F(Floors, SpoiltOnesAreFoundOut)
{
    const Out print = kTargetFloor.print;
    const In read = kTargetFloor.read;
    const Rows rows = AllRows();
    const Row *row = rows.at;
    while (std::string(row->type) != "VRFRT") {
        ++row;
    }
    Ring ring = MakeRing(*row, kFew, handle);
    const auto spoilt = [](In reader, Out printer) {
        Floor floor = kTargetFloor;
        floor.read = reader;
        floor.print = printer;
        return floor;
    };
    EXPECT_EQ(FindDifference(*row, spoilt(read, print), ring, handle), "");
    for (const In reader : {RefusesAll, ReadsTheFront, ReadsTooLarge, ForgetsTheNotation}) {
        EXPECT_NE(FindDifference(*row, spoilt(reader, print), ring, handle), "");
    }
    for (const Out printer : {PrintsOneNotation, PrintsABlank}) {
        EXPECT_NE(FindDifference(*row, spoilt(read, printer), ring, handle), "");
    }
    const auto [withoutHost, withHost] = std::pair{kTargetFloor, kDistinguisherFloor}; // of one length
    Floor mixed = withoutHost;
    mixed.readForHost = withHost.readForHost;
    EXPECT_NE(FindDifference(*row, mixed, ring, handle), "");
    mixed = withoutHost;
    mixed.printForHost = withHost.printForHost;
    EXPECT_NE(FindDifference(*row, mixed, ring, handle), "");
}

// ------------------------------------------------------------------------------------------------------------- texts

TEST(Patterns, NumbersAreOfEveryWidth)
{
    Random random{1};
    uint32_t widths[11] = {};
    for (int i = 0; i < 1000; ++i) {
        const std::string text = MakeText("{u32}", random);
        ASSERT_LE(std::stoull(text), UINT32_MAX);
        ++widths[text.size()];
    }
    for (uint32_t width = 1; width <= 10; ++width) {
        EXPECT_GT(widths[width], 50u) << width;
    }
}

TEST(Patterns, NumbersAreEvenIfSoAsked)
{
    Random random{1, true};
    uint32_t longest = 0;
    for (int i = 0; i < 1000; ++i) {
        longest += MakeText("{u16}", random).size() == 5;
    }
    EXPECT_GT(longest, 800u);
    EXPECT_LT(longest, 900u);
}

TEST(Patterns, AddressesAreCompressedShortAndInFull)
{
    Random random{1};
    uint32_t compressed = 0;
    uint32_t full = 0;
    for (int i = 0; i < 300; ++i) {
        const std::string text = MakeText("{ip6}", random);
        compressed += text.find("::") != std::string::npos;
        full += text.size() == 39;
    }
    EXPECT_GT(compressed, 150u);
    EXPECT_LT(compressed, 250u);
    EXPECT_GT(full, 10u);
}

TEST(Patterns, PiecesAreWhatTheySay)
{
    Random random{1};
    for (int i = 0; i < 100; ++i) {
        const unsigned long number = std::stoul(MakeText("{24-26}", random));
        EXPECT_TRUE(number >= 24 && number <= 26);
        EXPECT_GE(std::stoul(MakeText("{as4}", random)), 65536u);
        EXPECT_GE(std::stoul(MakeText("{group}", random)), 224u);
        EXPECT_EQ(MakeText("[{x4}]{mac}:{esi}", random).size(), 6u + 14 + 1 + 24);
        EXPECT_NE(MakeText("{h6}", random)[0], '0');
        EXPECT_EQ(MakeText("plain", random), "plain");
    }
}

} // namespace
