// A host without Lua and without objects: the types that work on numbers alone are served, the others refused.
#include "bgp_datatypes.h"
#include "bgp_host_services.h"

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(Without, TheStackIsEmpty)
{
    size_t length = 7;
    SYSDT_SPTI_CreateTable(nullptr, 0, 2);
    SYSDT_SPTI_PushUInt(nullptr, 1);
    SYSDT_SPTI_PushInt64(nullptr, 1);
    SYSDT_SPTI_PushString(nullptr, "a");
    SYSDT_SPTI_PushLString(nullptr, "a", 1);
    SYSDT_SPTI_SetField(nullptr, -1, "a");
    SYSDT_SPTI_GetField(nullptr, -1, "a");
    SYSDT_SPTI_SetTable(nullptr, -1);
    SYSDT_SPTI_GetTable(nullptr, -1);
    SYSDT_SPTI_Pop(nullptr, 1);
    EXPECT_EQ(SYSDT_SPTI_GetTop(nullptr), 0);
    EXPECT_EQ(SYSDT_SPTI_IsTable(nullptr, -1) + SYSDT_SPTI_IsNumber(nullptr, -1) + SYSDT_SPTI_IsString(nullptr, -1), 0);
    EXPECT_EQ(SYSDT_SPTI_ToUInt(nullptr, -1), 0u);
    EXPECT_EQ(SYSDT_SPTI_ToInt64(nullptr, -1), 0);
    EXPECT_EQ(SYSDT_SPTI_ToString(nullptr, -1), nullptr);
    EXPECT_EQ(SYSDT_SPTI_ToLString(nullptr, -1, &length), nullptr);
    EXPECT_EQ(length, 0u);
    EXPECT_EQ(SYSDT_SPTI_ObjLen(nullptr, -1), 0u);
}

TEST(Without, NamesAndStringsAreRefused)
{
    const DataTypeRequest request{1, 1};
    char text[] = "red";
    uint16_t typeId = 7;
    uint16_t length = 7;
    void *value = nullptr;
    for (DataTypeFormatIn in : {SYS_DT_UINT32IndexFormatIn, SYSDT_StringFormatIn}) {
        EXPECT_EQ(in(&request, 292, 32, text, &typeId, &length, &value), DT_ERR_MODE_UNSUPPORTED);
    }
    for (DataTypeFormatOut out : {SYS_DT_IndexFormatOut, SYSDT_StringFormatOut}) {
        EXPECT_EQ(out(&request, 292, 32, text, &typeId, &length, &value), DT_ERR_MODE_UNSUPPORTED);
    }
    for (DataTypeLuaSet set : {SYSDT_Uint32LuaSet, SYSDT_StringLuaSet}) {
        EXPECT_EQ(set(nullptr, 1, "v", 292, 32, text), DT_ERR_INVALID_PARAM);
    }
    for (DataTypeLuaGet get : {SYSDT_Uint32LuaGet, SYSDT_StringLuaGet}) {
        EXPECT_EQ(get(nullptr, 1, "v", 292, 32, text), DT_ERR_INVALID_PARAM);
    }
    const uint32_t words[2] = {1, 1};
    DataTypeHelpInfo help{7, nullptr};
    EXPECT_EQ(SYSDT_StringHelp(&request, 292, 32, "", words, &help), DT_OK);
    EXPECT_EQ(help.EntryCount, 7u);
    EXPECT_EQ(typeId, 7u);
    EXPECT_EQ(length, 7u);
    EXPECT_EQ(value, nullptr);
    EXPECT_STREQ(text, "red");
}

} // namespace
