// The exported pieces of the BGP-LS key, called as a program in C calls them (pieces_in_c_test.c).
#include "bgp_host_services.h"
#include "support/harness.h"

extern "C" {
const char *BgpLsDescriptorsInC();
const char *BgpLsGroupsInC();
const char *BgpLsStepsInC();
const char *BgpLsRoutinesInC();
const char *BgpLsRouterIdsInC();
const char *BgpLsPrintersInC();
const char *BgpLsTextsInC();
const char *BgpLsLuaInC(lua_State *L);
}

namespace bgp::test {
namespace {

class BgpLsPieces : public PlugIn {};

TEST_F(BgpLsPieces, HaveTheShapesThatTheHeaderTells)
{
    const char *(*const parts[])() = {BgpLsDescriptorsInC, BgpLsGroupsInC,   BgpLsStepsInC, BgpLsRoutinesInC,
                                      BgpLsRouterIdsInC,   BgpLsPrintersInC, BgpLsTextsInC};
    for (const auto part : parts) {
        const char *broken = part();
        EXPECT_EQ(broken, nullptr) << broken;
    }
}

TEST_F(BgpLsPieces, ConvertSingleFieldsToAndFromLua)
{
    lua_State *const L = host::NewLua();
    const char *broken = BgpLsLuaInC(L);
    EXPECT_EQ(broken, nullptr) << broken;
    host::CloseLua(L);
}

TEST_F(BgpLsPieces, AContextIsPlainMemoryOfTheHost)
{
    uint8_t record[228];
    host::TakeCounters();
    BgpLsParseContext *context = SYSDT_CreateLsPrefixParseContext("[NODE]", record);
    SYS_DataTypeFree(context);
    const host::Counters counters = host::TakeCounters();
    EXPECT_EQ(counters.allocations, 1u);
    EXPECT_EQ(counters.plainAllocations, 1u);
    EXPECT_EQ(counters.frees, 1u);
    host::SetFaults({.failAllocation = 1});
    EXPECT_EQ(SYSDT_CreateLsPrefixParseContext("[NODE]", record), nullptr);
    host::SetFaults({});
}

TEST_F(BgpLsPieces, AFailingFormatterIsReported)
{
    const BgpLsAsNumber as = {100, 0};
    char text[48];
    host::SetFaults({.failPrint = 1});
    EXPECT_EQ(SYSDT_MemberAsNumToStr(&as, text), DT_ERR_FAIL);
    host::SetFaults({});
}

} // namespace
} // namespace bgp::test
