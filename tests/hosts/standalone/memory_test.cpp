// Memory handles, scratch blocks, releases and guards.
#include "bgp_host_services.h"
#include "bgp_standalone_host.hpp"

#include <gtest/gtest.h>

#include <cstring>
#include <set>
#include <thread>

namespace {

using namespace bgp::standalone;

#if defined(__SANITIZE_ADDRESS__)
constexpr bool kUnderAsan = true;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
constexpr bool kUnderAsan = true;
#else
constexpr bool kUnderAsan = false;
#endif
#else
constexpr bool kUnderAsan = false;
#endif

class Memory : public testing::TestWithParam<bool> {
protected:
    void SetUp() override
    {
        SetCheckedBlocks(GetParam());
        SetFaults({});
        BlocksIntact(nullptr);
        handle = OpenHandle();
        ASSERT_NE(handle, 0u);
    }
    void TearDown() override
    {
        CloseHandle(handle);
        RecordReleases(false);
        SetCheckedBlocks(false);
    }
    uint32_t handle = 0;
};

INSTANTIATE_TEST_SUITE_P(PlainAndChecked, Memory, testing::Bool(),
                         [](const auto &mode) { return mode.param ? "Checked" : "Plain"; });

TEST_P(Memory, BlocksAreDistinctAlignedAndWritable)
{
    std::vector<uint8_t *> blocks;
    for (uint32_t size = 0; size < 3000; ++size) { // past several chunks
        auto *block = static_cast<uint8_t *>(SYS_DataTypeMallocByHandle(handle, size));
        ASSERT_NE(block, nullptr) << size;
        EXPECT_EQ(reinterpret_cast<uintptr_t>(block) % alignof(std::max_align_t), 0u);
        std::memset(block, static_cast<int>(size), size);
        blocks.push_back(block);
    }
    for (uint32_t size = 0; size < 3000; ++size) {
        for (uint32_t at = 0; at < size; ++at) {
            ASSERT_EQ(blocks[size][at], static_cast<uint8_t>(size));
        }
    }
    EXPECT_EQ(std::set<uint8_t *>(blocks.begin(), blocks.end()).size(), 3000u);
    EXPECT_EQ(HandleBlocks(handle), 3000u);
    EXPECT_TRUE(BlocksIntact(nullptr));
}

TEST_P(Memory, UnknownHandlesGetNothing)
{
    EXPECT_EQ(SYS_DataTypeMallocByHandle(0, 4), nullptr);
    EXPECT_EQ(SYS_DataTypeMallocByHandle(handle + 1, 4), nullptr);
    EXPECT_EQ(SYS_DataTypeMallocByHandle(0xFFFFFFFFu, 4), nullptr);
    EXPECT_EQ(HandleBlocks(0), 0u);
    const uint32_t closed = OpenHandle();
    CloseHandle(closed);
    CloseHandle(closed);
    ResetHandle(closed);
    EXPECT_EQ(SYS_DataTypeMallocByHandle(closed, 4), nullptr);
    EXPECT_NE(OpenHandle(), closed);
}

TEST_P(Memory, TheLargestBlockIsOneGibibyte)
{
    EXPECT_EQ(SYS_DataTypeMallocByHandle(handle, (1u << 30) + 1), nullptr);
    EXPECT_EQ(SYS_DataTypeMallocByHandle(handle, 0xFFFFFFFFu), nullptr);
    EXPECT_EQ(SYS_DataTypeMalloc((1u << 30) + 1), nullptr);
    EXPECT_EQ(HandleBlocks(handle), 0u);
    void *large = SYS_DataTypeMallocByHandle(handle, 4u << 20);
    ASSERT_NE(large, nullptr);
    std::memset(large, 1, 4u << 20);
}

TEST_P(Memory, ResetEmptiesTheHandleAndKeepsIt)
{
    for (int round = 0; round < 3; ++round) {
        for (int block = 0; block < 5000; ++block) {
            ASSERT_NE(SYS_DataTypeMallocByHandle(handle, 100), nullptr);
        }
        EXPECT_EQ(HandleBlocks(handle), 5000u);
        ResetHandle(handle);
        EXPECT_EQ(HandleBlocks(handle), 0u);
    }
    EXPECT_NE(SYS_DataTypeMallocByHandle(handle, 1), nullptr);
}

TEST_P(Memory, FreeingAHandlesBlockMarksItOnce)
{
    void *first = SYS_DataTypeMallocByHandle(handle, 10);
    void *second = SYS_DataTypeMallocByHandle(handle, 10);
    RecordReleases(true);
    SYS_DataTypeFree(first);
    EXPECT_EQ(HandleBlocks(handle), 1u);
    SYS_DataTypeFree(first);
    EXPECT_EQ(HandleBlocks(handle), 1u);
    SYS_DataTypeFree(static_cast<char *>(second) + 1);
    SYS_DataTypeFree(second);
    EXPECT_EQ(HandleBlocks(handle), 0u);
    const auto releases = TakeReleases();
    ASSERT_EQ(releases.size(), 4u);
    EXPECT_EQ(releases[0].memory, first);
    EXPECT_TRUE(releases[0].known);
    EXPECT_FALSE(releases[1].known);
    EXPECT_FALSE(releases[2].known);
    EXPECT_TRUE(releases[3].known);
    EXPECT_TRUE(TakeReleases().empty());
}

TEST_P(Memory, ABlockOfAnEarlierRoundIsNotKnown)
{
    void *block = SYS_DataTypeMallocByHandle(handle, 10);
    ResetHandle(handle);
    for (int other = 0; other < 3 && !kUnderAsan; ++other) { // with the old block's header well inside the bytes in use
        SYS_DataTypeMallocByHandle(handle, 200);
    }
    const size_t blocks = HandleBlocks(handle);
    RecordReleases(true);
    int local = 0;
    SYS_DataTypeFree(&local);
    SYS_DataTypeFree(nullptr);
    auto releases = TakeReleases();
    ASSERT_EQ(releases.size(), 2u);
    EXPECT_EQ(releases[0].memory, &local);
    EXPECT_FALSE(releases[0].known);
    EXPECT_TRUE(releases[1].known);
    EXPECT_EQ(HandleBlocks(handle), blocks);
    CloseHandle(handle);
    SYS_DataTypeFree(block);
    releases = TakeReleases();
    ASSERT_EQ(releases.size(), 1u);
    EXPECT_FALSE(releases[0].known);
}

TEST_P(Memory, ScratchIsCountedForTheThreadThatTookIt)
{
    EXPECT_EQ(ScratchBlocks(), 0u);
    void *mine = SYS_DataTypeMalloc(70000);
    void *empty = SYS_DataTypeMalloc(0);
    ASSERT_NE(mine, nullptr);
    ASSERT_NE(empty, nullptr);
    std::memset(mine, 7, 70000);
    EXPECT_EQ(ScratchBlocks(), 2u);
    std::thread([] {
        EXPECT_EQ(ScratchBlocks(), 0u);
        void *other = SYS_DataTypeMalloc(1);
        EXPECT_EQ(ScratchBlocks(), 1u);
        SYS_DataTypeFree(other);
    }).join();
    std::thread([=] { SYS_DataTypeFree(empty); }).join(); // any thread may give it back
    EXPECT_EQ(ScratchBlocks(), 1u);
    RecordReleases(true);
    SYS_DataTypeFree(mine);
    EXPECT_EQ(ScratchBlocks(), 0u);
    ASSERT_TRUE(TakeReleases().at(0).known);
}

TEST_P(Memory, ReleasesAreRecordedOnlyWhenAsked)
{
    SYS_DataTypeFree(SYS_DataTypeMalloc(1));
    EXPECT_TRUE(TakeReleases().empty());
}

TEST_P(Memory, ThreadsShareOneHandle)
{
    constexpr int kThreads = 4, kEach = 5000;
    std::vector<std::vector<uint32_t *>> blocks(kThreads);
    std::vector<std::thread> threads;
    for (int thread = 0; thread < kThreads; ++thread) {
        threads.emplace_back([&, thread] {
            for (int block = 0; block < kEach; ++block) {
                auto *memory = static_cast<uint32_t *>(SYS_DataTypeMallocByHandle(handle, sizeof(uint32_t)));
                *memory = static_cast<uint32_t>(thread * kEach + block);
                blocks[static_cast<size_t>(thread)].push_back(memory);
                if (block % 10 == 0) {
                    SYS_DataTypeFree(SYS_DataTypeMallocByHandle(handle, 3));
                }
            }
        });
    }
    for (std::thread &thread : threads) {
        thread.join();
    }
    EXPECT_EQ(HandleBlocks(handle), size_t{kThreads} * kEach);
    for (size_t thread = 0; thread < kThreads; ++thread) {
        for (size_t block = 0; block < kEach; ++block) {
            ASSERT_EQ(*blocks[thread][block], thread * kEach + block);
        }
    }
}

TEST_P(Memory, ThreadsOpenUseAndCloseTheirOwn)
{
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([] {
            for (int round = 0; round < 300; ++round) {
                const uint32_t own = OpenHandle();
                for (int block = 0; block < 50; ++block) {
                    ASSERT_NE(SYS_DataTypeMallocByHandle(own, 64), nullptr);
                }
                ASSERT_EQ(HandleBlocks(own), 50u);
                SYS_DataTypeFree(SYS_DataTypeMalloc(16));
                CloseHandle(own);
            }
        });
    }
    for (std::thread &thread : threads) {
        thread.join();
    }
}

TEST_P(Memory, HandlesRunOutAndComeBack)
{
    std::vector<uint32_t> handles;
    while (const uint32_t next = OpenHandle()) {
        ASSERT_LT(handles.size(), 4096u);
        handles.push_back(next);
    }
    EXPECT_GT(handles.size(), 4000u);
    EXPECT_EQ(std::set<uint32_t>(handles.begin(), handles.end()).size(), handles.size());
    for (const uint32_t each : handles) {
        CloseHandle(each);
    }
    const uint32_t again = OpenHandle();
    EXPECT_NE(again, 0u);
    CloseHandle(again);
}

class Checked : public testing::Test {
protected:
    void SetUp() override
    {
        SetCheckedBlocks(true);
        BlocksIntact(nullptr);
        handle = OpenHandle();
    }
    void TearDown() override
    {
        CloseHandle(handle);
        BlocksIntact(nullptr);
        SetCheckedBlocks(false);
    }
    uint8_t *Take(uint32_t size) { return static_cast<uint8_t *>(SYS_DataTypeMallocByHandle(handle, size)); }
    uint32_t handle = 0;
};

TEST_F(Checked, FreshBlocksAreFilled)
{
    const uint8_t *block = Take(3);
    auto *scratch = static_cast<uint8_t *>(SYS_DataTypeMalloc(2));
    EXPECT_EQ(block[0], 0xA5);
    EXPECT_EQ(block[2], 0xA5);
    EXPECT_EQ(scratch[1], 0xA5);
    SYS_DataTypeFree(scratch);
}

// Planted damage: each of these must be noticed, or the guards guard nothing. AddressSanitizer stops the process at the
// write itself.
void WriteAt(uint8_t *block, ptrdiff_t at, uint8_t value)
{
    volatile uint8_t *bytes = block;
    bytes[at] = value;
}

using CheckedDeathTest = Checked;

TEST_F(CheckedDeathTest, AnOverrunIsSeen)
{
    uint8_t *block = Take(12);
    if (kUnderAsan) {
        EXPECT_DEATH(WriteAt(block, 12, 0), "heap-buffer-overflow");
        return;
    }
    EXPECT_TRUE(BlocksIntact(nullptr));
    WriteAt(block, 12, 0);
    std::string report;
    EXPECT_FALSE(BlocksIntact(&report));
    EXPECT_EQ(report, "block of handle " + std::to_string(handle) +
                          ", 12 bytes: 0 guard bytes before and 1 behind it overwritten\n");
    WriteAt(block, 12, 0xFD);
    EXPECT_TRUE(BlocksIntact(&report));
    EXPECT_EQ(report, "");
}

TEST_F(CheckedDeathTest, AnUnderrunIsSeenEvenAfterTheHandleIsGone)
{
    uint8_t *block = Take(12);
    if (kUnderAsan) {
        EXPECT_DEATH(WriteAt(block, -1, 0), "heap-buffer-overflow");
        return;
    }
    WriteAt(block, -1, 0);
    ResetHandle(handle);
    EXPECT_FALSE(BlocksIntact(nullptr));
    EXPECT_TRUE(BlocksIntact(nullptr)); // reported once
}

TEST_F(CheckedDeathTest, AScratchOverrunIsSeenEvenAfterItIsFreed)
{
    auto *scratch = static_cast<uint8_t *>(SYS_DataTypeMalloc(8));
    if (kUnderAsan) {
        EXPECT_DEATH(WriteAt(scratch, 8, 0), "heap-buffer-overflow");
        SYS_DataTypeFree(scratch);
        return;
    }
    WriteAt(scratch, 8, 0);
    EXPECT_FALSE(BlocksIntact(nullptr));
    SYS_DataTypeFree(scratch);
    std::string report;
    EXPECT_FALSE(BlocksIntact(&report));
    EXPECT_EQ(report, "scratch block, 8 bytes: 0 guard bytes before and 1 behind it overwritten\n");
}

TEST_F(CheckedDeathTest, AWriteToAFreedBlockIsSeen)
{
    uint8_t *block = Take(8);
    SYS_DataTypeFree(block);
    if (kUnderAsan) {
        EXPECT_DEATH(WriteAt(block, 3, 0), "use-after-poison");
        return;
    }
    EXPECT_EQ(block[3], 0x5A);
    WriteAt(block, 3, 0);
    std::string report;
    EXPECT_FALSE(BlocksIntact(&report));
    EXPECT_NE(report.find("1 bytes written after it was freed"), std::string::npos) << report;
}

} // namespace
