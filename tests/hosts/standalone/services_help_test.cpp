// Help records.
#include "bgp_host_services.h"
#include "bgp_standalone_host.hpp"

#include <gtest/gtest.h>

namespace {

using namespace bgp::standalone;

TEST(Help, EntriesLiveInTheHandle)
{
    SetFaults({});
    const uint32_t handle = OpenHandle();
    DataTypeHelpInfo info{};
    EXPECT_EQ(SYSDT_InitHelpInfo(handle, &info, 3, 9), DT_OK);
    ASSERT_EQ(info.EntryCount, 3u);
    for (uint32_t entry = 0; entry < 3; ++entry) {
        EXPECT_EQ(info.Entries[entry].Text, nullptr);
    }
    EXPECT_EQ(HandleBlocks(handle), 0u);
    EXPECT_EQ(TakeCounters().allocations, 0u);
    SYSDT_ClearHelpInfo(&info);
    EXPECT_EQ(info.EntryCount, 0u);
    EXPECT_EQ(info.Entries, nullptr);
    EXPECT_EQ(HandleBlocks(handle), 0u);
    CloseHandle(handle);
}

TEST(Help, RefusalsLeaveTheRecord)
{
    const uint32_t handle = OpenHandle();
    DataTypeHelpEntry entry{nullptr};
    DataTypeHelpInfo info{7, &entry};
    EXPECT_EQ(SYSDT_InitHelpInfo(handle, nullptr, 1, 1), DT_ERR_NULL_PTR);
    EXPECT_EQ(SYSDT_InitHelpInfo(handle, &info, 0, 1), DT_ERR_INVALID_PARAM);
    EXPECT_EQ(SYSDT_InitHelpInfo(0, &info, 1, 1), DT_ERR_NO_MEMORY);
    SetFaults({.helpInitCode = 0x99});
    EXPECT_EQ(SYSDT_InitHelpInfo(handle, &info, 1, 5), 0x99u);
    EXPECT_EQ(TakeCounters().lastHelpWord, 5u);
    SetFaults({});
    EXPECT_EQ(info.EntryCount, 7u);
    EXPECT_EQ(info.Entries, &entry);
    SYSDT_ClearHelpInfo(&info); // entries of someone else
    EXPECT_EQ(info.Entries, nullptr);
    CloseHandle(handle);
}

} // namespace
