// Injected faults strike the call they name and no other, and every call is counted.
#include "bgp_host_services.h"
#include "bgp_standalone_host.hpp"

#include <gtest/gtest.h>

#include <cstring>
#include <thread>

namespace {

using namespace bgp::standalone;

class FaultsTest : public testing::Test {
protected:
    void SetUp() override { SetFaults({}); }
    void TearDown() override
    {
        SetFaults({});
        CloseHandle(handle);
    }
    bool ByHandle() { return SYS_DataTypeMallocByHandle(handle, 4) != nullptr; }
    static bool Plain()
    {
        void *memory = SYS_DataTypeMalloc(4);
        SYS_DataTypeFree(memory);
        return memory != nullptr;
    }
    uint32_t handle = OpenHandle();
};

TEST_F(FaultsTest, OneAllocationOfEitherKindFails)
{
    SetFaults({.failAllocation = 3});
    EXPECT_TRUE(ByHandle());
    EXPECT_TRUE(Plain());
    EXPECT_FALSE(ByHandle());
    EXPECT_TRUE(ByHandle());
    SetFaults({.failAllocation = 1});
    EXPECT_FALSE(Plain());
    EXPECT_TRUE(Plain());
}

TEST_F(FaultsTest, EveryLaterAllocationFailsToo)
{
    SetFaults({.failAllocation = 2, .failAllAfter = true});
    EXPECT_TRUE(ByHandle());
    EXPECT_FALSE(ByHandle());
    EXPECT_FALSE(Plain());
    EXPECT_FALSE(ByHandle());
    SetFaults({});
    EXPECT_TRUE(ByHandle());
}

TEST_F(FaultsTest, AnotherThreadIsNotStruck)
{
    SetFaults({.failAllocation = 1, .failAllAfter = true});
    std::thread([this] { EXPECT_TRUE(ByHandle()); }).join();
    EXPECT_FALSE(ByHandle());
}

TEST_F(FaultsTest, PrintsFailUntouched)
{
    char text[8] = "before";
    SetFaults({.failPrint = 2});
    EXPECT_EQ(snprintf_truncated_s(text, sizeof text, "%s", "one"), 3);
    EXPECT_EQ(snprintf_truncated_s(text, sizeof text, "%s", "two"), -1);
    EXPECT_STREQ(text, "one");
    EXPECT_EQ(sprintf_s(text, sizeof text, "%u", 3u), 1);
    SetFaults({.failPrint = 1});
    EXPECT_EQ(sprintf_s(text, sizeof text, "%u", 4u), -1);
    SetFaults({.failPrint = 1});
    EXPECT_EQ(snprintf_s(text, sizeof text, 7, "%u", 4u), -1);
    EXPECT_STREQ(text, "3");
}

TEST_F(FaultsTest, CopiesFailUntouched)
{
    char text[8] = "before";
    SetFaults({.failCopy = 1});
    EXPECT_NE(memcpy_s(text, sizeof text, "x", 2), 0);
    SetFaults({.failCopy = 1});
    EXPECT_NE(memset_s(text, sizeof text, 0, 2), 0);
    SetFaults({.failCopy = 1});
    EXPECT_NE(strcpy_s(text, sizeof text, "x"), 0);
    SetFaults({.failCopy = 1});
    EXPECT_NE(strncpy_s(text, sizeof text, "x", 1), 0);
    EXPECT_STREQ(text, "before");
    EXPECT_EQ(strcpy_s(text, sizeof text, "x"), 0);
}

TEST_F(FaultsTest, ScansFailUntouched)
{
    uint32_t number = 7;
    SetFaults({.failScan = 2});
    EXPECT_EQ(sscanf_s("8", "%u", &number), 1);
    EXPECT_EQ(sscanf_s("9", "%u", &number), 0);
    EXPECT_EQ(number, 8u);
    EXPECT_EQ(sscanf_s("9", "%u", &number), 1);
}

TEST_F(FaultsTest, AddressPrintsFailUntouched)
{
    const uint8_t address[16] = {};
    char text[46] = "before";
    SetFaults({.failAddressPrint = 2});
    EXPECT_EQ(inet_ntop6(address, text, sizeof text), text);
    EXPECT_STREQ(text, "::");
    std::strcpy(text, "before");
    EXPECT_EQ(inet_ntop6(address, text, sizeof text), nullptr);
    EXPECT_STREQ(text, "before");
    EXPECT_EQ(inet_ntop6(address, text, sizeof text), text);
}

TEST_F(FaultsTest, CallsAreCounted)
{
    char text[8];
    char address[46];
    const uint8_t source[16] = {};
    uint32_t number;
    DataTypeHelpInfo help{};
    ByHandle();
    ByHandle();
    Plain();
    snprintf_truncated_s(text, sizeof text, "x");
    sprintf_s(text, sizeof text, "x");
    snprintf_s(text, sizeof text, 3, "x");
    strcpy_s(text, sizeof text, "x");
    strncpy_s(text, sizeof text, "x", 1);
    memset_s(text, sizeof text, 0, 1);
    memcpy_s(text, sizeof text, "x", 1);
    sscanf_s("1", "%u", &number);
    inet_ntop6(source, address, sizeof address);
    inet_ntop6(source, address, sizeof address);
    SYSDT_InitHelpInfo(handle, &help, 1, 0x1234);
    SYSDT_ClearHelpInfo(&help);
    SYSDT_ClearHelpInfo(nullptr);
    const Counters counters = TakeCounters();
    EXPECT_EQ(counters.allocations, 3u);
    EXPECT_EQ(counters.plainAllocations, 1u);
    EXPECT_EQ(counters.frees, 1u);
    EXPECT_EQ(counters.prints, 3u);
    EXPECT_EQ(counters.copies, 4u);
    EXPECT_EQ(counters.scans, 1u);
    EXPECT_EQ(counters.addressPrints, 2u);
    EXPECT_EQ(counters.helpInits, 1u);
    EXPECT_EQ(counters.helpClears, 2u);
    EXPECT_EQ(counters.lastHelpWord, 0x1234u);
    const Counters next = TakeCounters();
    EXPECT_EQ(next.allocations + next.prints + next.copies + next.scans + next.helpInits + next.lastHelpWord, 0u);
    ByHandle();
    SetFaults({});
    EXPECT_EQ(TakeCounters().allocations, 0u);
}

} // namespace
