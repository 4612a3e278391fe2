// The host's own type operations: index, block and string.
#include "bgp_host_services.h"
#include "bgp_standalone_host.hpp"

#include <gtest/gtest.h>

#include <cstring>
#include <initializer_list>
#include <string>

namespace {

using namespace bgp::standalone;

constexpr uint32_t kVrfNames = 24579, kOtherNames = 24590;

class Types : public testing::Test {
protected:
    void SetUp() override
    {
        SetFaults({});
        ForgetObjectNames();
    }
    void TearDown() override
    {
        SetFaults({});
        ForgetObjectNames();
        CloseHandle(request.MemoryHandle);
        CloseLua(L);
    }
    uint32_t In(DataTypeFormatIn formatIn, uint32_t id, const char *text, uint32_t size = 0)
    {
        std::string copy = text;
        value = nullptr;
        return formatIn(&request, id, size, copy.data(), &typeId, &length, &value);
    }
    uint32_t Out(DataTypeFormatOut formatOut, uint32_t id, const void *from, uint32_t size)
    {
        value = nullptr;
        return formatOut(&request, id, size, from, &typeId, &length, &value);
    }
    uint32_t Number() const
    {
        uint32_t number;
        std::memcpy(&number, value, sizeof number);
        return number;
    }
    const char *Text() const { return static_cast<const char *>(value); }

    DataTypeRequest request{1, OpenHandle()};
    lua_State *L = NewLua();
    uint16_t typeId = 0, length = 0;
    void *value = nullptr;
};

TEST_F(Types, AnIndexIsReadByNameOrNumber)
{
    SetObjectName(kVrfNames, 17, "red");
    SetObjectName(kVrfNames, 18, "42");
    EXPECT_EQ(In(SYS_DT_UINT32IndexFormatIn, kVrfNames, "red"), DT_OK);
    EXPECT_EQ(typeId, kVrfNames);
    EXPECT_EQ(length, 4);
    EXPECT_EQ(Number(), 17u);
    EXPECT_EQ(In(SYS_DT_UINT32IndexFormatIn, kVrfNames, " red\t"), DT_OK);
    EXPECT_EQ(Number(), 17u);
    EXPECT_EQ(In(SYS_DT_UINT32IndexFormatIn, kVrfNames, "42"), DT_OK); // a name goes before a number
    EXPECT_EQ(Number(), 18u);
    EXPECT_EQ(In(SYS_DT_UINT32IndexFormatIn, kOtherNames, "42"), DT_OK);
    EXPECT_EQ(Number(), 42u);
    EXPECT_EQ(In(SYS_DT_UINT32IndexFormatIn, kVrfNames, "4294967295"), DT_OK);
    EXPECT_EQ(Number(), 4294967295u);
    for (const char *text : {"", " ", "blue", "Red", "4294967296", "-1", "+1", "1x", "1 2"}) {
        EXPECT_EQ(In(SYS_DT_UINT32IndexFormatIn, kVrfNames, text), DT_ERR_INVALID_VALUE) << text;
    }
    EXPECT_EQ(In(SYS_DT_UINT32IndexFormatIn, kOtherNames, "red"), DT_ERR_INVALID_VALUE);
    EXPECT_EQ(value, nullptr);
}

TEST_F(Types, AnIndexIsPrintedByNameOrNumber)
{
    SetObjectName(kVrfNames, 17, "red");
    const uint32_t index = 17;
    EXPECT_EQ(Out(SYS_DT_IndexFormatOut, kVrfNames, &index, 4), DT_OK);
    EXPECT_EQ(typeId, 25);
    EXPECT_EQ(length, 4);
    EXPECT_STREQ(Text(), "red");
    EXPECT_EQ(Out(SYS_DT_IndexFormatOut, kOtherNames, &index, 4), DT_OK);
    EXPECT_STREQ(Text(), "17");
    EXPECT_EQ(length, 3);
    request.FormatMode = 3;
    EXPECT_EQ(Out(SYS_DT_IndexFormatOut, kVrfNames, &index, 4), DT_OK);
    EXPECT_EQ(typeId, 6);
    EXPECT_EQ(length, 4);
    EXPECT_EQ(Number(), 17u);
}

TEST_F(Types, ObjectNamesAreOneToOne)
{
    SetObjectName(kVrfNames, 1, "red");
    SetObjectName(kVrfNames, 2, "red"); // the name moves
    uint32_t index = 1;
    EXPECT_EQ(Out(SYS_DT_IndexFormatOut, kVrfNames, &index, 4), DT_OK);
    EXPECT_STREQ(Text(), "1");
    SetObjectName(kVrfNames, 2, "blue");
    EXPECT_EQ(In(SYS_DT_UINT32IndexFormatIn, kVrfNames, "red"), DT_ERR_INVALID_VALUE);
    EXPECT_EQ(In(SYS_DT_UINT32IndexFormatIn, kVrfNames, "blue"), DT_OK);
    SetObjectName(kVrfNames, 2, "");
    EXPECT_EQ(In(SYS_DT_UINT32IndexFormatIn, kVrfNames, "blue"), DT_ERR_INVALID_VALUE);
}

TEST_F(Types, ModesAreRefusedAfterPointersAndBeforeContent)
{
    char text[] = "";
    const uint32_t index = 1;
    struct Row {
        uint8_t mode;
        uint32_t in, out;
    };
    for (const Row &row : {Row{0, DT_ERR_FAIL, DT_ERR_FAIL},
                           {3, DT_ERR_FAIL, DT_OK},
                           {4, DT_ERR_MODE_UNSUPPORTED, DT_ERR_MODE_UNSUPPORTED},
                           {5, DT_ERR_FAIL, DT_ERR_FAIL},
                           {7, DT_ERR_MODE_UNSUPPORTED, DT_ERR_MODE_UNSUPPORTED},
                           {255, DT_ERR_MODE_UNSUPPORTED, DT_ERR_MODE_UNSUPPORTED},
                           {2, DT_ERR_INVALID_VALUE, DT_OK},
                           {6, DT_ERR_INVALID_VALUE, DT_OK}}) {
        request.FormatMode = row.mode;
        EXPECT_EQ(In(SYS_DT_UINT32IndexFormatIn, kVrfNames, ""), row.in) << int{row.mode};
        EXPECT_EQ(In(SYSDT_StringFormatIn, 292, ""), row.in) << int{row.mode};
        EXPECT_EQ(Out(SYS_DT_IndexFormatOut, kVrfNames, &index, 4), row.out) << int{row.mode};
        EXPECT_EQ(Out(SYSDT_StringFormatOut, 292, "ab", 3), row.out) << int{row.mode};
        for (DataTypeFormatIn in : {SYS_DT_UINT32IndexFormatIn, SYSDT_StringFormatIn}) {
            EXPECT_EQ(in(nullptr, 1, 0, text, &typeId, &length, &value), DT_ERR_NULL_PTR);
            EXPECT_EQ(in(&request, 1, 0, nullptr, &typeId, &length, &value), DT_ERR_NULL_PTR);
            EXPECT_EQ(in(&request, 1, 0, text, nullptr, &length, &value), DT_ERR_NULL_PTR);
            EXPECT_EQ(in(&request, 1, 0, text, &typeId, nullptr, &value), DT_ERR_NULL_PTR);
            EXPECT_EQ(in(&request, 1, 0, text, &typeId, &length, nullptr), DT_ERR_NULL_PTR);
        }
        for (DataTypeFormatOut out : {SYS_DT_IndexFormatOut, SYSDT_StringFormatOut}) {
            EXPECT_EQ(out(nullptr, 1, 4, &index, &typeId, &length, &value), DT_ERR_NULL_PTR);
            EXPECT_EQ(out(&request, 1, 4, nullptr, &typeId, &length, &value), DT_ERR_NULL_PTR);
            EXPECT_EQ(out(&request, 1, 4, &index, nullptr, &length, &value), DT_ERR_NULL_PTR);
            EXPECT_EQ(out(&request, 1, 4, &index, &typeId, nullptr, &value), DT_ERR_NULL_PTR);
            EXPECT_EQ(out(&request, 1, 4, &index, &typeId, &length, nullptr), DT_ERR_NULL_PTR);
        }
    }
}

TEST_F(Types, MissingMemoryIsReported)
{
    const uint32_t index = 1;
    for (DataTypeFormatIn in : {SYS_DT_UINT32IndexFormatIn, SYSDT_StringFormatIn}) {
        length = 9;
        SetFaults({.failAllocation = 1});
        EXPECT_EQ(In(in, 292, "7"), DT_ERR_NO_MEMORY);
        EXPECT_EQ(typeId, 292);
        EXPECT_EQ(length, 0);
        EXPECT_EQ(value, nullptr);
    }
    for (DataTypeFormatOut out : {SYS_DT_IndexFormatOut, SYSDT_StringFormatOut}) {
        request.FormatMode = 1;
        SetFaults({.failAllocation = 1});
        EXPECT_EQ(Out(out, 292, &index, 4), DT_ERR_NO_MEMORY);
        request.FormatMode = 3;
        SetFaults({.failAllocation = 1});
        EXPECT_EQ(Out(out, 292, &index, 4), DT_ERR_FAIL);
        EXPECT_EQ(length, 0);
        EXPECT_EQ(value, nullptr);
    }
}

TEST_F(Types, ACallersBufferIsUsed)
{
    char buffer[8] = "#######";
    value = buffer;
    EXPECT_EQ(SYSDT_StringFormatOut(&request, 292, 4, "ab\0\0", &typeId, &length, &value), DT_OK);
    EXPECT_EQ(value, buffer);
    EXPECT_EQ(std::memcmp(buffer, "ab\0####", 7), 0);
    EXPECT_EQ(length, 3);
    EXPECT_EQ(HandleBlocks(request.MemoryHandle), 0u);
}

TEST_F(Types, AStringHasOneCharacterLessThanItsLength)
{
    const std::string longest(31, 'x'), tooLong(32, 'x');
    EXPECT_EQ(In(SYSDT_StringFormatIn, 292, (" \t" + longest + "  ").c_str()), DT_OK);
    EXPECT_EQ(typeId, 292);
    EXPECT_EQ(length, 32);
    EXPECT_EQ(Text(), longest);
    EXPECT_EQ(In(SYSDT_StringFormatIn, 292, tooLong.c_str()), DT_ERR_INVALID_VALUE);
    EXPECT_EQ(In(SYSDT_StringFormatIn, 292, longest.c_str(), 32), DT_OK);
    EXPECT_EQ(In(SYSDT_StringFormatIn, 292, "abcd", 4), DT_ERR_INVALID_VALUE);
    EXPECT_EQ(In(SYSDT_StringFormatIn, 292, "abc", 4), DT_OK);
    EXPECT_EQ(length, 4);
    EXPECT_EQ(In(SYSDT_StringFormatIn, 292, "a b", 8), DT_OK);
    EXPECT_EQ(std::memcmp(value, "a b\0\0\0\0\0", 8), 0);
    for (const char *text : {"", " ", "\t \t"}) {
        EXPECT_EQ(In(SYSDT_StringFormatIn, 292, text), DT_ERR_INVALID_VALUE);
    }
    EXPECT_EQ(In(SYSDT_StringFormatIn, 292, "a", 0x10000), DT_ERR_INVALID_VALUE);
}

TEST_F(Types, AStringIsPrintedToItsEnd)
{
    char stored[32] = {};
    std::memset(stored, 'y', 31);
    EXPECT_EQ(Out(SYSDT_StringFormatOut, 292, stored, 32), DT_OK);
    EXPECT_EQ(typeId, 25);
    EXPECT_EQ(length, 32);
    EXPECT_EQ(Text(), std::string(31, 'y'));
    EXPECT_EQ(Out(SYSDT_StringFormatOut, 292, "abcd", 3), DT_OK); // a value without its NUL
    EXPECT_STREQ(Text(), "abc");
    EXPECT_EQ(length, 4);
    request.FormatMode = 3;
    EXPECT_EQ(Out(SYSDT_StringFormatOut, 292, "a\0b", 3), DT_OK);
    EXPECT_EQ(typeId, 6);
    EXPECT_EQ(length, 3);
    EXPECT_EQ(std::memcmp(value, "a\0b", 3), 0);
}

TEST_F(Types, StringHelp)
{
    const uint32_t words[2] = {3, 4}, firstZero[2] = {0, 4}, secondZero[2] = {3, 0};
    DataTypeHelpInfo info{};
    EXPECT_EQ(SYSDT_StringHelp(&request, 292, 32, "", words, &info), DT_OK);
    EXPECT_STREQ(info.Entries[0].Text, "STRING<1-31>");
    EXPECT_EQ(TakeCounters().lastHelpWord, 4u);
    request.FormatMode = 6;
    EXPECT_EQ(SYSDT_StringHelp(&request, 292, 0, nullptr, words, &info), DT_OK);
    EXPECT_STREQ(info.Entries[0].Text, "STRING<1-31>");
    EXPECT_EQ(SYSDT_StringHelp(&request, 292, 32, "", firstZero, &info), DT_ERR_INVALID_PARAM);
    EXPECT_EQ(SYSDT_StringHelp(&request, 292, 32, "", secondZero, &info), DT_ERR_INVALID_PARAM);
    EXPECT_EQ(SYSDT_StringHelp(nullptr, 292, 32, "", words, &info), DT_ERR_NULL_PTR);
    EXPECT_EQ(SYSDT_StringHelp(&request, 292, 32, "", nullptr, &info), DT_ERR_NULL_PTR);
    EXPECT_EQ(SYSDT_StringHelp(&request, 292, 32, "", words, nullptr), DT_ERR_NULL_PTR);
    SetFaults({.failAllocation = 1});
    EXPECT_EQ(SYSDT_StringHelp(&request, 292, 32, "", words, &info), DT_ERR_NO_MEMORY);
    EXPECT_EQ(info.Entries, nullptr);
    EXPECT_EQ(TakeCounters().helpClears, 1u);
    SetFaults({.helpInitCode = 0x77});
    EXPECT_EQ(SYSDT_StringHelp(&request, 292, 32, "", words, &info), 0x77u);
    SetFaults({});
    for (const auto mode : std::initializer_list<uint8_t>{0, 2, 3, 4, 5, 7}) {
        request.FormatMode = mode;
        EXPECT_EQ(SYSDT_StringHelp(&request, 292, 32, "", firstZero, &info), DT_OK);
        EXPECT_EQ(info.Entries, nullptr);
    }
}

TEST_F(Types, IndexThroughLua)
{
    SYSDT_SPTI_CreateTable(L, 0, 0);
    const uint32_t word = 0xFFFFFFFFu;
    uint32_t back = 0;
    EXPECT_EQ(SYSDT_Uint32LuaSet(L, -1, "id", kVrfNames, 4, &word), DT_OK);
    EXPECT_EQ(SYSDT_Uint32LuaGet(L, -1, "id", kVrfNames, 4, &back), DT_OK);
    EXPECT_EQ(back, word);
    EXPECT_EQ(SYSDT_SPTI_GetTop(L), 1);
    EXPECT_EQ(SYSDT_Uint32LuaGet(L, 1, "none", kVrfNames, 4, &back), DT_ERR_INVALID_PARAM);
    EXPECT_EQ(SYSDT_Uint32LuaGet(L, 1, "id", kVrfNames, 3, &back), DT_ERR_INVALID_PARAM);
    EXPECT_EQ(SYSDT_Uint32LuaSet(L, 1, "id", kVrfNames, 3, &word), DT_ERR_INVALID_PARAM);
    EXPECT_EQ(SYSDT_Uint32LuaSet(L, 2, "id", kVrfNames, 4, &word), DT_ERR_INVALID_PARAM);
    EXPECT_EQ(SYSDT_Uint32LuaSet(nullptr, 1, "id", kVrfNames, 4, &word), DT_ERR_NULL_PTR);
    EXPECT_EQ(SYSDT_Uint32LuaSet(L, 1, nullptr, kVrfNames, 4, &word), DT_ERR_NULL_PTR);
    EXPECT_EQ(SYSDT_Uint32LuaGet(L, 1, "id", kVrfNames, 4, nullptr), DT_ERR_NULL_PTR);
    EXPECT_EQ(SYSDT_SPTI_GetTop(L), 1);
}

TEST_F(Types, StringThroughLua)
{
    SYSDT_SPTI_CreateTable(L, 0, 0);
    char back[8];
    EXPECT_EQ(SYSDT_StringLuaSet(L, -1, "name", 292, 8, "abcdefg"), DT_OK);
    EXPECT_EQ(SYSDT_StringLuaGet(L, -1, "name", 292, 8, back), DT_OK);
    EXPECT_STREQ(back, "abcdefg");
    EXPECT_EQ(SYSDT_StringLuaGet(L, -1, "name", 292, 7, back), DT_ERR_INVALID_PARAM);
    EXPECT_EQ(SYSDT_StringLuaSet(L, -1, "name", 292, 2, "xyz"), DT_OK); // a value without its NUL
    EXPECT_EQ(SYSDT_StringLuaGet(L, -1, "name", 292, 8, back), DT_OK);
    EXPECT_EQ(std::memcmp(back, "xy\0\0\0\0\0", 8), 0);
    EXPECT_EQ(SYSDT_StringLuaGet(L, -1, "none", 292, 8, back), DT_ERR_INVALID_PARAM);
    EXPECT_EQ(SYSDT_StringLuaSet(L, 5, "name", 292, 8, "abc"), DT_ERR_INVALID_PARAM);
    EXPECT_EQ(SYSDT_StringLuaSet(L, 1, "name", 292, 8, nullptr), DT_ERR_NULL_PTR);
    EXPECT_EQ(SYSDT_StringLuaGet(nullptr, 1, "name", 292, 8, back), DT_ERR_NULL_PTR);
    EXPECT_EQ(SYSDT_SPTI_GetTop(L), 1);
}

} // namespace
