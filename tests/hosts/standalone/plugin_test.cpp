// Loading, registration and reports.
//
// BGP_DATATYPES_LIBRARY, given by the build, is the path of the plug-in to load.
#include "bgp_host_services.h"
#include "bgp_standalone_host.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <string_view>
#include <thread>

namespace {

using namespace bgp::standalone;

constexpr DataTypeDescriptor Row(uint16_t typeId, std::string_view name)
{
    DataTypeDescriptor row{};
    row.TypeId = typeId;
    std::copy(name.begin(), name.end(), row.Name);
    return row;
}

constexpr DataTypeDescriptor kFirst = Row(101, "FIRST");
constexpr DataTypeDescriptor kSecond = Row(102, "ABCDEFGHIJKLMNOPQR"); // a name that fills its field

uint32_t Init(uint32_t handle)
{
    for (const DataTypeDescriptor *row : {&kFirst, &kSecond}) {
        if (const uint32_t code = SYS_Drm_RegisterDataType(handle, row)) {
            ZOL_Assert("init", 12, ("code " + std::to_string(code)).c_str());
        }
    }
    return 0;
}

class PlugIn : public testing::Test {
protected:
    void SetUp() override { Clear(); }
    void TearDown() override { Clear(); }
    static void Clear()
    {
        UnloadPlugIn();
        BgpHost_SetAssertHook(nullptr, nullptr);
        TakeDiagnostics();
        ForgetRegistrations();
        RefuseRow(101, 0);
    }
};

TEST_F(PlugIn, RowsAreFoundByNameAndTypeId)
{
    EXPECT_EQ(InitLinkedPlugIn(Init), 0u);
    EXPECT_EQ(Rows(), (std::vector<const DataTypeDescriptor *>{&kFirst, &kSecond}));
    EXPECT_EQ(FindRow("FIRST"), &kFirst);
    EXPECT_EQ(FindRow("ABCDEFGHIJKLMNOPQR"), &kSecond);
    EXPECT_EQ(FindRow(102u), &kSecond);
    EXPECT_EQ(FindRow("FIRS"), nullptr);
    EXPECT_EQ(FindRow("FIRSTS"), nullptr);
    EXPECT_EQ(FindRow(""), nullptr);
    EXPECT_EQ(FindRow(103u), nullptr);
    EXPECT_EQ(BgpHost_FindRow(nullptr), nullptr);
    EXPECT_EQ(BgpHost_RowAt(1), &kSecond);
    EXPECT_EQ(BgpHost_RowAt(2), nullptr);
    EXPECT_EQ(InitLinkedPlugIn(Init), 0u); // anew, not in addition
    EXPECT_EQ(Rows().size(), 2u);
    EXPECT_TRUE(TakeDiagnostics().empty());
    EXPECT_EQ(InitLinkedPlugIn(nullptr), DT_ERR_NULL_PTR);
}

TEST_F(PlugIn, ARefusedRowIsRecordedAndNotFound)
{
    RefuseRow(101, 0x4711);
    InitLinkedPlugIn(Init);
    const auto registrations = Registrations();
    ASSERT_EQ(registrations.size(), 2u);
    EXPECT_EQ(registrations[0].row, &kFirst);
    EXPECT_EQ(registrations[0].answer, 0x4711u);
    EXPECT_EQ(registrations[0].handle, RegistrationHandle);
    EXPECT_EQ(registrations[1].answer, 0u);
    EXPECT_EQ(FindRow("FIRST"), nullptr);
    EXPECT_EQ(FindRow(101u), nullptr);
    EXPECT_EQ(Rows().size(), 1u);
    const auto diagnostics = TakeDiagnostics();
    ASSERT_EQ(diagnostics.size(), 1u);
    EXPECT_EQ(diagnostics[0].source, "init");
    EXPECT_EQ(diagnostics[0].line, 12u);
    EXPECT_EQ(diagnostics[0].message, "code 18193");
    EXPECT_TRUE(TakeDiagnostics().empty());
    RefuseRow(101, 0);
    InitLinkedPlugIn(Init);
    EXPECT_EQ(FindRow(101u), &kFirst);
}

TEST_F(PlugIn, ANullRowIsRefused)
{
    EXPECT_EQ(SYS_Drm_RegisterDataType(9, nullptr), DT_ERR_NULL_PTR);
    ASSERT_EQ(Registrations().size(), 1u);
    EXPECT_EQ(Registrations()[0].handle, 9u);
    EXPECT_TRUE(Rows().empty());
    EXPECT_EQ(FindRow(0u), nullptr);
}

TEST_F(PlugIn, AHookTakesTheDiagnostics)
{
    std::vector<Diagnostic> seen;
    BgpHost_SetAssertHook(
        [](void *list, const char *source, uint32_t line, const char *message) {
            static_cast<std::vector<Diagnostic> *>(list)->push_back({source, line, message});
        },
        &seen);
    ZOL_Assert("here", 3, "what");
    ZOL_Assert(nullptr, 0, nullptr);
    ASSERT_EQ(seen.size(), 2u);
    EXPECT_EQ(seen[0].source, "here");
    EXPECT_EQ(seen[0].line, 3u);
    EXPECT_EQ(seen[0].message, "what");
    EXPECT_EQ(seen[1].source, "");
    EXPECT_TRUE(TakeDiagnostics().empty());
    BgpHost_SetAssertHook([](void *, const char *, uint32_t, const char *) { throw 1; }, nullptr);
    ZOL_Assert("here", 4, "lost");
    BgpHost_SetAssertHook(nullptr, nullptr);
    ZOL_Assert("here", 5, "kept");
    ASSERT_EQ(TakeDiagnostics().size(), 1u);
    EXPECT_EQ(seen.size(), 2u);
}

TEST_F(PlugIn, ReportsFromManyThreadsAreAllKept)
{
    std::vector<std::thread> threads;
    for (uint32_t thread = 0; thread < 4; ++thread) {
        threads.emplace_back([=] {
            for (uint32_t call = 0; call < 200; ++call) {
                ZOL_Assert("thread", thread, "x");
                SYS_Drm_RegisterDataType(thread, &kFirst);
            }
        });
    }
    for (std::thread &thread : threads) {
        thread.join();
    }
    EXPECT_EQ(TakeDiagnostics().size(), 800u);
    EXPECT_EQ(Rows().size(), 800u);
}

TEST_F(PlugIn, WhatCannotBeLoadedLeavesTheRows)
{
    InitLinkedPlugIn(Init);
    std::string error;
    EXPECT_FALSE(LoadPlugIn("/no/such/plug-in.so", &error));
    EXPECT_NE(error.find("/no/such/plug-in.so"), std::string::npos) << error;
    EXPECT_FALSE(LoadPlugIn("libm.so.6", &error)); // a library, but none with the entry point
    EXPECT_NE(error.find("Bgp_InitDataType"), std::string::npos) << error;
    EXPECT_FALSE(LoadPlugIn(nullptr, &error));
    EXPECT_FALSE(LoadPlugIn("/no/such/plug-in.so", nullptr));
    char reason[8] = "before";
    EXPECT_EQ(BgpHost_LoadPlugIn("/no/such/plug-in.so", reason, sizeof reason), DT_ERR_FAIL);
    EXPECT_STREQ(reason, "/no/suc"); // cut
    EXPECT_EQ(BgpHost_LoadPlugIn("/no/such/plug-in.so", reason, 0), DT_ERR_FAIL);
    EXPECT_EQ(BgpHost_LoadPlugIn("/no/such/plug-in.so", nullptr, 9), DT_ERR_FAIL);
    EXPECT_STREQ(reason, "/no/suc");
    EXPECT_EQ(Rows().size(), 2u);
    EXPECT_EQ(PlugInSymbol("no_such_symbol_anywhere"), nullptr);
    EXPECT_EQ(PlugInSymbol(nullptr), nullptr);
    EXPECT_NE(PlugInSymbol("snprintf_truncated_s"), nullptr); // no plug-in loaded: the process answers
}

TEST_F(PlugIn, APlugInRegistersItsRows)
{
#ifdef BGP_DATATYPES_LIBRARY
    std::string error;
    for (int round = 0; round < 2; ++round) { // the second unloads the first
        ASSERT_TRUE(LoadPlugIn(BGP_DATATYPES_LIBRARY, &error)) << error;
        EXPECT_EQ(Rows().size(), 35u);
        EXPECT_TRUE(TakeDiagnostics().empty());
        ASSERT_NE(FindRow("ASNUM"), nullptr);
        EXPECT_EQ(FindRow("ASNUM"), FindRow(255u));
        EXPECT_NE(PlugInSymbol("Bgp_InitDataType"), nullptr);
        EXPECT_EQ(PlugInSymbol("no_such_symbol_anywhere"), nullptr);
    }
    UnloadPlugIn();
    EXPECT_TRUE(Rows().empty());
    ASSERT_TRUE(LoadPlugIn("libbgp_datatypes.so.1", &error)) << error; // beside the host's own library
    EXPECT_EQ(Rows().size(), 35u);
    UnloadPlugIn();
#else
    GTEST_SKIP() << "the build names no plug-in";
#endif
}

} // namespace
