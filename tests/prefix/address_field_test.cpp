// The Lua item on top of the stack as an address field: IPv4 word (host order), 16 IPv6 bytes, family.
#include "support/harness.h"

#include "bgp_host_services.h"

#include <memory>

namespace bgp::test {
namespace {

class AddressField : public PlugIn {};

const std::string kKept4 = "eeeeeeee";
const std::string kKept6 = "eeeeeeeeeeeeeeeeeeeeeeeeeeeeeeee";

uint32_t theKind;

// A row whose LuaGet reads the field as an address field of `theKind`.
DataTypeDescriptor Reader(uint32_t kind)
{
    theKind = kind;
    DataTypeDescriptor row{};
    row.LuaGet = [](lua_State *L, int32_t index, const char *name, uint32_t, uint16_t, void *field) -> uint32_t {
        SYSDT_SPTI_GetField(L, index, name);
        return SYSDT_BolPrefixLuaParseToIPv4IPv6(L, theKind, field);
    };
    return row;
}

struct Item {
    std::string item; // a Lua expression
    uint32_t code;
    std::string field;
    int32_t growth; // the fetched item counts 1
};

void ExpectRead(uint32_t kind, const std::vector<Item> &rows)
{
    for (const Item &row : rows) {
        SCOPED_TRACE("kind " + std::to_string(kind) + ", " + row.item);
        const LuaIn in = LuaGet(Reader(kind), row.item, 21);
        EXPECT_EQ(in.code, row.code);
        EXPECT_EQ(in.value, row.field);
        EXPECT_EQ(in.growth, row.growth);
    }
}

TEST_F(AddressField, AnIpv4AddressIsANumberThatStays)
{
    ExpectRead(0, {
                      {"167838211", DT_OK, "0302010a" + kKept6 + "00", 1}, // 10.1.2.3
                      {"0", DT_OK, "00000000" + kKept6 + "00", 1},
                      {"4294967295", DT_OK, "ffffffff" + kKept6 + "00", 1},
                      {"4294967297", DT_OK, "01000000" + kKept6 + "00", 1}, // the low 32 bits
                      {"'167838211'", DT_OK, "0302010a" + kKept6 + "00", 1},
                      {"'10.1.2.3'", DT_ERR_INVALID_PARAM, kKept4 + kKept6 + "ee", 1},
                      {"nil", DT_ERR_INVALID_PARAM, kKept4 + kKept6 + "ee", 1},
                      {"true", DT_ERR_INVALID_PARAM, kKept4 + kKept6 + "ee", 1},
                      {"{1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16}", DT_ERR_INVALID_PARAM, kKept4 + kKept6 + "ee", 1},
                  });
}

TEST_F(AddressField, AnIpv6AddressIsAnArrayThatGoes)
{
    ExpectRead(
        1,
        {
            {"{32,1,13,184,5,6,7,8,9,10,11,12,13,14,15,16}", DT_OK, kKept4 + "20010db805060708090a0b0c0d0e0f1001", 0},
            {"{0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0}", DT_OK, kKept4 + "0000000000000000000000000000000001", 0},
            {"{256,257,511,-1,'5',6,7,8,9,10,11,12,13,14,15,65296}", DT_OK,
             kKept4 + "0001ffff05060708090a0b0c0d0e0f1001", 0}, // the low 8 bits
            {"{1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17,18}", DT_OK, kKept4 + "0102030405060708090a0b0c0d0e0f1001", 0},
            {"167838211", DT_ERR_INVALID_PARAM, kKept4 + kKept6 + "ee", 1},
            {"'2001:db8::1'", DT_ERR_INVALID_PARAM, kKept4 + kKept6 + "ee", 1},
            {"nil", DT_ERR_INVALID_PARAM, kKept4 + kKept6 + "ee", 1},
            {"true", DT_ERR_INVALID_PARAM, kKept4 + kKept6 + "ee", 1},
            {"{}", DT_ERR_INVALID_PARAM, kKept4 + kKept6 + "ee", 2},
        });
}

// A failing item stays on the stack with those before it, whose bytes are written.
TEST_F(AddressField, EveryItemMustBeANumber)
{
    for (int bad = 1; bad <= 16; ++bad) {
        for (const char *wrong : {"nil", "'x'", "{}", "false"}) {
            std::string items;
            std::string field = kKept4;
            for (int item = 1; item <= 16; ++item) {
                items += (item == bad ? wrong : std::to_string(item)) + std::string(",");
                field += item < bad ? Hex(std::string(1, static_cast<char>(item))) : "ee";
            }
            ExpectRead(1, {{"{" + items + "}", DT_ERR_INVALID_PARAM, field + "ee", 1 + bad}});
        }
    }
}

TEST_F(AddressField, OtherKindsReadNothing)
{
    for (const uint32_t kind : {2u, 3u, 10u, 255u, 256u, 257u, 0x01000000u, 0xFFFFFFFFu}) {
        for (const char *item : {"167838211", "{1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16}", "nil", "'x'"}) {
            ExpectRead(kind, {{item, DT_OK, kKept4 + kKept6 + "ee", 1}});
        }
    }
}

TEST_F(AddressField, PointersAreTestedFirst)
{
    const std::unique_ptr<lua_State, void (*)(lua_State *)> lua(host::NewLua(), host::CloseLua);
    SYSDT_SPTI_PushUInt(lua.get(), 1);
    uint8_t field[21] = {};
    for (const uint32_t kind : {0u, 1u, 2u}) {
        EXPECT_EQ(SYSDT_BolPrefixLuaParseToIPv4IPv6(nullptr, kind, field), DT_ERR_NULL_PTR);
        EXPECT_EQ(SYSDT_BolPrefixLuaParseToIPv4IPv6(lua.get(), kind, nullptr), DT_ERR_NULL_PTR);
    }
    EXPECT_EQ(SYSDT_SPTI_GetTop(lua.get()), 1);
}

} // namespace
} // namespace bgp::test
