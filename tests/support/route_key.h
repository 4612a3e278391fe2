// What the tests of the composite's sub-types share beside their cases: 89-byte values, the readers of the Lua reader
// table, and buffers that are given back.
#ifndef BGP_TESTS_ROUTE_KEY_H
#define BGP_TESTS_ROUTE_KEY_H

#include "support/type_case.h"

#include "bgp_host_services.h"

#include <lua.hpp>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace bgp::test {

inline constexpr uint16_t kKeyType = 279;                  // what FormatIn reports for every sub-type
inline constexpr uint16_t kKeyLength = 89;                 // bytes of a value
inline constexpr uint16_t kKeyTextSize = 257;              // bytes of a text buffer
inline constexpr uint8_t kKeyModes[] = {0, 1, 2, 3, 5, 6}; // text, both ways

// An 89-byte value: the hex of its first bytes, zeros behind them.
inline std::string Key(std::string_view hex)
{
    return Padded(hex, kKeyLength);
}

// An 89-byte buffer of which only the first bytes were written.
inline std::string Unwritten(std::string_view hex = "")
{
    const std::string head = Hex(Bytes(hex));
    std::string value = head;
    while (value.size() < 2 * size_t{kKeyLength}) {
        value += "ee";
    }
    return value;
}

// `value` with the bytes from `offset` on replaced.
inline std::string With(std::string value, size_t offset, std::string_view hex)
{
    const std::string bytes = Hex(Bytes(hex));
    return value.replace(2 * offset, bytes.size(), bytes);
}

inline DataTypeDescriptor SubType(uint32_t number)
{
    return Row(g_astBOL_PREFIX_ProcTable[number]);
}

// ------------------------------------------------------------------------------------------------------------ cases

// What all keys share, beside the row, value, help text, texts and tables that `type` states.
inline TypeCase KeyCase(TypeCase type)
{
    type.contract.inModes = type.accepted.empty() ? "" : "PPPPUPPU";
    type.contract.outModes = "TTTTUTTU";
    type.contract.helpModes = "-H----H-";
    type.contract.resultTypeId = kKeyType;
    type.contract.resultLength = kKeyLength;
    type.contract.textSize = kKeyTextSize;
    type.contract.clearsFirst = true;
    type.refusal = DT_ERR_INVALID_PARAM;
    type.readsWhole = false;
    type.failedOut = 0;
    type.checkLength = type.checkLength.value_or(kKeyLength);
    type.luaLength = kKeyLength;
    type.luaRoundTrip = false;
    return type;
}

// A sub-type whose operations are those of a type, but for the typing.
inline TypeCase EntryCase(TypeCase type, uint32_t subType, const char *name, BolPrefixLuaReader reader)
{
    type.row = {0,
                0,
                0,
                "",
                nullptr,
                type.row.FormatOut,
                type.row.Check,
                type.row.Help,
                type.row.Compare,
                nullptr,
                type.row.LuaSet,
                type.row.LuaGet,
                nullptr};
    std::snprintf(type.row.Name, sizeof type.row.Name, "%s", name);
    type.entry = &g_astBOL_PREFIX_ProcTable[subType];
    type.subType = subType;
    type.reader = reader;
    for (const TextCase &c : type.accepted) {
        type.prints.push_back({PrintedText(c), c.value});
    }
    type.accepted = {};
    type.refused = {};
    type.contract.inModes = "";
    type.swaps = {};
    return type;
}

// ------------------------------------------------------------------------------------------------------------ texts

// Each text in every mode that parses, and printed back from its value.
inline void ExpectKeys(const DataTypeDescriptor &row, const std::vector<TextCase> &cases)
{
    for (const TextCase &c : cases) {
        for (const uint8_t mode : kKeyModes) {
            SCOPED_TRACE("\"" + c.text + "\" in mode " + std::to_string(mode));
            const In in = FormatIn(row, c.text, mode);
            EXPECT_EQ(in.code, DT_OK);
            EXPECT_EQ(in.typeId, kKeyType);
            EXPECT_EQ(in.length, kKeyLength);
            EXPECT_EQ(in.value, Hex(Bytes(c.value)));
            EXPECT_TRUE(in.textKept);
            const Out out = FormatOut(row, c.value, mode);
            const std::string &printed = PrintedText(c);
            EXPECT_EQ(out.code, DT_OK);
            EXPECT_EQ(out.typeId, 25);
            EXPECT_EQ(out.length, printed.size() + 1);
            EXPECT_EQ(out.text, printed);
        }
    }
}

// Refused texts leave every out-parameter alone.
inline void ExpectRefused(const DataTypeDescriptor &row, const std::vector<std::string> &texts)
{
    for (const std::string &text : texts) {
        for (const uint8_t mode : kKeyModes) {
            ExpectRefused(row, text, mode, DT_ERR_INVALID_PARAM);
        }
    }
}

// A parser of its own: its code, and what it made of `size` zeroed bytes at an odd address.
struct Parsed {
    uint32_t code;
    std::string bytes; // hex
};
inline Parsed Parse(uint32_t (*parse)(const char *, void *), std::string_view text, size_t size)
{
    const auto memory = std::make_unique<char[]>(size + 1);
    Parsed parsed{};
    parsed.code = parse(std::string(text).c_str(), memory.get() + 1);
    parsed.bytes = Hex(memory.get() + 1, size);
    return parsed;
}

// A printer of its own, into 256 bytes with the count at 0.
struct Printed {
    uint32_t code;
    uint32_t length;
    std::string text;
};
inline Printed Print(uint32_t (*print)(const void *, char *, uint32_t *), std::string_view hex)
{
    const std::string bytes = Bytes(hex);
    const auto memory = std::make_unique<char[]>(bytes.size() + 1);
    bytes.copy(memory.get() + 1, bytes.size());
    const auto buffer = std::make_unique<char[]>(256);
    Printed printed{};
    printed.code = print(memory.get() + 1, buffer.get(), &printed.length);
    printed.text = buffer.get();
    return printed;
}

// The parsers and printers without one of their pointers: the code of each call.
inline void ExpectParserPointers(uint32_t (*parse)(const char *, void *), const char *text)
{
    uint8_t value[kKeyLength] = {};
    EXPECT_EQ(parse(nullptr, value), DT_ERR_NULL_PTR);
    EXPECT_EQ(parse(text, nullptr), DT_ERR_NULL_PTR);
    EXPECT_EQ(parse(nullptr, nullptr), DT_ERR_NULL_PTR);
    EXPECT_EQ(Hex(value, sizeof value), Key(""));
}

// -------------------------------------------------------------------------------------------------------- buffers

// FormatOut without a caller's buffer: how many blocks went back to the host.
struct Freed {
    Out out;
    size_t known;   // live blocks of the host
    size_t unknown; // anything else
};
inline Freed FormatOutFreeing(const DataTypeDescriptor &row, std::string_view valueHex, uint8_t mode = 1)
{
    host::RecordReleases(true);
    host::TakeReleases();
    Freed freed{};
    freed.out = FormatOut(row, valueHex, mode);
    for (const host::Release &release : host::TakeReleases()) {
        ++(release.known ? freed.known : freed.unknown);
    }
    host::RecordReleases(false);
    return freed;
}

// What a failed FormatOut leaves: a code, zeroed out-parameters, and its own block given back exactly once.
inline void ExpectFailedAndFreed(const Freed &freed)
{
    EXPECT_EQ(freed.out.code, DT_ERR_FAIL);
    EXPECT_EQ(freed.out.typeId, 0);
    EXPECT_EQ(freed.out.length, 0);
    EXPECT_FALSE(freed.out.bufferSet);
    EXPECT_EQ(freed.known, 1u);
    EXPECT_EQ(freed.unknown, 0u);
}

// The n-th print fails, for n = 1, 2, ... until a call gets by with fewer: `prints` calls must fail.
inline void ExpectPrintFailures(const DataTypeDescriptor &row, std::string_view valueHex, uint32_t prints)
{
    for (uint32_t n = 1; n <= prints; ++n) {
        SCOPED_TRACE("print " + std::to_string(n) + " fails");
        host::SetFaults({.failPrint = n});
        const Freed own = FormatOutFreeing(row, valueHex);
        ExpectFailedAndFreed(own);
        host::SetFaults({.failPrint = n});
        const Into into = FormatOutInto(row, valueHex, 1, kKeyTextSize);
        EXPECT_EQ(into.out.code, DT_ERR_FAIL);
        EXPECT_EQ(into.out.typeId, 0);
        EXPECT_EQ(into.out.length, 0);
        EXPECT_FALSE(into.released);
        EXPECT_TRUE(into.sameBuffer);
        EXPECT_TRUE(into.guardsIntact);
    }
    host::SetFaults({.failPrint = prints + 1});
    EXPECT_EQ(FormatOut(row, valueHex).code, DT_OK);
    host::SetFaults({});
}

// A value of another sub-type releases the buffer whosever it is, once the mode is served.
inline void ExpectOtherSubTypesRelease(const DataTypeDescriptor &row, const std::string &valueHex,
                                       const std::vector<std::string> &words)
{
    for (const std::string &word : words) {
        SCOPED_TRACE(word);
        const std::string value = With(valueHex, 0, word);
        ExpectFailedAndFreed(FormatOutFreeing(row, value));
        const Into into = FormatOutInto(row, value, 1, kKeyTextSize);
        EXPECT_EQ(into.out.code, DT_ERR_FAIL);
        EXPECT_EQ(into.out.typeId, 0);
        EXPECT_EQ(into.out.length, 0);
        EXPECT_TRUE(into.released);
        EXPECT_EQ(into.allocations, 0u);
        EXPECT_TRUE(into.guardsIntact);
        EXPECT_FALSE(FormatOutInto(row, value, 4, kKeyTextSize).released);
    }
    EXPECT_TRUE(FormatOutInto(row, valueHex, 1, kKeyTextSize, 0).released); // no sub-type is seen
    EXPECT_FALSE(FormatOutInto(row, valueHex, 1, kKeyTextSize, 4).released);
}

// -------------------------------------------------------------------------------------------------------- compare

// Row's Compare over the first `length` bytes of two values.
inline int32_t CompareKeys(const DataTypeDescriptor &row, std::string_view leftHex, std::string_view rightHex,
                           uint32_t length = kKeyLength)
{
    const std::string left = Bytes(leftHex);
    const std::string right = Bytes(rightHex);
    return row.Compare(nullptr, length, left.data(), right.data());
}

// ------------------------------------------------------------------------------------------------------------ Lua

// Slots that the reader finds above the table, so that it may pop more than it pushes.
inline constexpr int kSlotsAbove = 4;

// A reader of the reader table, on a table alone: code, bytes ("ee" = not written), slots more than before.
inline LuaIn ReadKey(BolPrefixLuaReader reader, std::string_view expression)
{
    LuaIn in{};
    lua_State *L = host::NewLua();
    const std::string script = "return " + std::string(expression);
    if (luaL_loadbuffer(L, script.data(), script.size(), "table") != LUA_OK || lua_pcall(L, 0, 1, 0) != LUA_OK) {
        ADD_FAILURE() << lua_tostring(L, -1) << " in " << script;
        host::CloseLua(L);
        in.code = 0xFFFFFFFF;
        return in;
    }
    const int table = lua_gettop(L);
    for (int i = 0; i < kSlotsAbove; ++i) {
        lua_pushboolean(L, 1);
    }
    const auto memory = std::make_unique<char[]>(kKeyLength + 1);
    std::fill_n(memory.get(), kKeyLength + 1, '\xEE');
    const int before = lua_gettop(L);
    in.code = reader(L, memory.get() + 1, table);
    in.growth = lua_gettop(L) - before;
    in.value = Hex(memory.get() + 1, kKeyLength);
    host::CloseLua(L);
    return in;
}

inline LuaIn ReadKey(uint32_t subType, std::string_view expression)
{
    EXPECT_EQ(g_astBOL_PREFIX_LuaGetTable[subType].SubType, subType);
    return ReadKey(g_astBOL_PREFIX_LuaGetTable[subType].Reader, expression);
}

struct ReadCase {
    std::string fields; // without braces
    uint32_t code;
    std::string value; // hex; what the reader leaves of 89 bytes "ee"
    int32_t growth;    // of the reader alone
};

// Each table through the reader and through the composite's LuaGet, which stores "bolType", turns every failure into
// DT_ERR_INVALID_VALUE and leaves the table and its "bolType" (two slots) on the stack.
inline void ExpectReads(uint32_t subType, const std::vector<ReadCase> &cases)
{
    for (const ReadCase &c : cases) {
        SCOPED_TRACE("{" + c.fields + "}");
        const LuaIn read = ReadKey(subType, "{" + c.fields + "}");
        EXPECT_EQ(read.code, c.code);
        EXPECT_EQ(read.value, c.value);
        EXPECT_EQ(read.growth, c.growth);
        const LuaIn whole = LuaGet("BOLPREFIX", "{bolType = " + std::to_string(subType) + ", " + c.fields + "}");
        EXPECT_EQ(whole.code, c.code == DT_OK ? DT_OK : DT_ERR_INVALID_VALUE);
        EXPECT_EQ(whole.value, With(c.value, 0, Le32(subType)));
        EXPECT_EQ(whole.growth, c.growth + 2);
    }
}

// A reader without its state or its value.
inline void ExpectReaderPointers(uint32_t subType)
{
    const BolPrefixLuaReader reader = g_astBOL_PREFIX_LuaGetTable[subType].Reader;
    lua_State *L = host::NewLua();
    lua_newtable(L);
    uint8_t value[kKeyLength] = {};
    EXPECT_EQ(reader(nullptr, value, 1), DT_ERR_NULL_PTR);
    EXPECT_EQ(reader(L, nullptr, 1), DT_ERR_NULL_PTR);
    EXPECT_EQ(reader(nullptr, nullptr, 1), DT_ERR_NULL_PTR);
    EXPECT_EQ(lua_gettop(L), 1);
    EXPECT_EQ(Hex(value, sizeof value), Key(""));
    host::CloseLua(L);
}

// A LuaSet that prints `table`, and refuses a length below 89.
inline void ExpectSets(const DataTypeDescriptor &row, const std::string &valueHex, const std::string &table)
{
    SCOPED_TRACE(row.Name);
    ExpectLuaSet(row, kKeyLength, {{valueHex, table}});
    for (const uint16_t length : {uint16_t{88}, uint16_t{4}, uint16_t{0}}) {
        const LuaOut tooShort = LuaSet(row, valueHex, length);
        EXPECT_EQ(tooShort.code, DT_ERR_INVALID_PARAM);
        EXPECT_EQ(tooShort.table, "nil");
        EXPECT_EQ(tooShort.growth, 0);
    }
}

// ------------------------------------------------------------------------------------------------------- real values

// The lines of a file of tests/data, without its first line, which is a comment.
inline std::vector<std::string> RealValues(const std::string &file)
{
    std::ifstream stream(std::string(BGP_SOURCE_DIR "/tests/data/") + file);
    EXPECT_TRUE(stream.is_open()) << file;
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    EXPECT_FALSE(lines.empty()) << file;
    if (!lines.empty()) {
        EXPECT_EQ(lines.front().substr(0, 1), "#");
        lines.erase(lines.begin());
    }
    return lines;
}

} // namespace bgp::test

#endif
