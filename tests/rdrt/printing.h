// What the tests of route distinguishers and route targets share: rows of texts, of printed values and of Lua tables,
// and what is expected of each.
//
// The printers have three outcomes. A value prints; a value whose notation does not belong to its kind prints nothing
// at all, not even a terminator, and succeeds; a value of unknown kind fails with the buffer handed out.
#ifndef BGP_TESTS_RDRT_PRINTING_H
#define BGP_TESTS_RDRT_PRINTING_H

#include "support/harness.h"

#include <cstdio>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace bgp::test {

inline constexpr size_t kRdTextSize = 257; // bytes of a text buffer
inline constexpr uint8_t kTextInModes[] = {1, 2, 6};

// ------------------------------------------------------------------------------------------------------------ text in

struct TextCase {
    std::string text;
    std::string value; // hex; empty when the text is refused
};

// Every text through FormatIn, in the modes that parse. A refused one leaves the out-parameters as they were.
inline void ExpectTexts(const DataTypeDescriptor &row, const std::vector<TextCase> &cases, uint16_t typeId,
                        uint32_t refusal = DT_ERR_INVALID_VALUE)
{
    for (const TextCase &c : cases) {
        for (const uint8_t mode : kTextInModes) {
            SCOPED_TRACE("\"" + c.text + "\" in mode " + std::to_string(mode));
            const In in = FormatIn(row, c.text, mode);
            EXPECT_TRUE(in.textKept);
            if (c.value.empty()) {
                EXPECT_EQ(in.code, refusal);
                EXPECT_EQ(in.typeId, kUntouched);
                EXPECT_EQ(in.length, kUntouched);
                EXPECT_FALSE(in.bufferSet);
                continue;
            }
            const std::string value = Bytes(c.value);
            EXPECT_EQ(in.code, DT_OK);
            EXPECT_EQ(in.typeId, typeId);
            EXPECT_EQ(in.length, value.size());
            EXPECT_EQ(in.value, Hex(value));
        }
    }
}

// The same rows through a parser of its own, (text, value of `size` bytes) with `refusal` for what it does not take.
template <class Parser>
void ExpectParses(Parser parser, size_t size, const std::vector<TextCase> &cases, uint32_t refusal)
{
    for (const TextCase &c : cases) {
        SCOPED_TRACE("\"" + c.text + "\"");
        const auto memory = std::make_unique<char[]>(size + 1); // the value stands at an odd address
        std::fill_n(memory.get(), size + 1, '\xEE');
        const std::string text = c.text;
        EXPECT_EQ(parser(text.c_str(), memory.get() + 1), c.value.empty() ? refusal : DT_OK);
        EXPECT_EQ(text, c.text);
        if (!c.value.empty()) {
            EXPECT_EQ(Hex(memory.get() + 1, size), Hex(Bytes(c.value)));
        }
        EXPECT_EQ(parser(nullptr, memory.get() + 1), DT_ERR_NULL_PTR);
        EXPECT_EQ(parser(text.c_str(), nullptr), DT_ERR_NULL_PTR);
    }
}

// A 16-bit field of a text, between `before` and `behind`, and where its two bytes (network order) stand in the value.
struct FieldCase {
    const char *before, *behind;
    const char *value; // hex, with 0000 in the field's place
    size_t offset;
};

// All 65,536 numbers in each field.
template <class Parser>
void ExpectEverySixteenBitField(Parser parser, const std::vector<FieldCase> &fields)
{
    for (const FieldCase &f : fields) {
        SCOPED_TRACE(std::string(f.before) + "n" + f.behind);
        std::string expected = Bytes(f.value);
        std::string value(expected.size(), '\0');
        char text[32];
        for (unsigned n = 0; n < 65536; ++n) {
            std::snprintf(text, sizeof text, "%s%u%s", f.before, n, f.behind);
            expected[f.offset] = static_cast<char>(n >> 8);
            expected[f.offset + 1] = static_cast<char>(n & 0xFF);
            ASSERT_EQ(parser(text, value.data()), DT_OK) << text;
            ASSERT_TRUE(value == expected) << text << " gives " << Hex(value);
        }
    }
}

// Blanks around a text do not count, however many; they cost no memory beside the result.
inline void ExpectBlanksDropped(const DataTypeDescriptor &row, const std::string &text)
{
    const In plain = FormatIn(row, text, 1);
    EXPECT_EQ(plain.code, DT_OK);
    std::string mixed;
    for (int i = 0; i < 150; ++i) {
        mixed += i % 3 == 0 ? "\t" : "  ";
    }
    const std::string spaces(400, ' ');
    const std::string tabs(700, '\t');
    for (const std::string &blanked : {" " + text, text + " ", "\t" + text + "\t", spaces + text, text + spaces,
                                       tabs + text + spaces, spaces + text + tabs, mixed + text + mixed}) {
        host::TakeCounters();
        const In in = FormatIn(row, blanked, 1);
        EXPECT_EQ(host::TakeCounters().allocations, 1u);
        EXPECT_EQ(in.code, DT_OK) << blanked.size();
        EXPECT_EQ(in.value, plain.value);
        EXPECT_TRUE(in.textKept);
        EXPECT_EQ(CodesWhileAllocationsFail([&] { return FormatIn(row, blanked, 1).code; }),
                  std::vector<uint32_t>{DT_ERR_NO_MEMORY});
    }
    EXPECT_EQ(FormatIn(row, spaces, 1).code, DT_ERR_INVALID_VALUE);
    EXPECT_EQ(FormatIn(row, tabs, 1).code, DT_ERR_INVALID_VALUE);
    EXPECT_EQ(FormatIn(row, mixed, 1).code, DT_ERR_INVALID_VALUE);
}

// ----------------------------------------------------------------------------------------------------------- text out

inline uint16_t ReportedType(uint8_t mode)
{
    return mode == 3 ? 6 : 25;
}

// Prints `text`, into a caller's buffer as into one of its own.
inline void ExpectPrints(const DataTypeDescriptor &row, std::string_view valueHex, uint8_t mode,
                         const std::string &text)
{
    SCOPED_TRACE(std::string(valueHex) + " in mode " + std::to_string(mode));
    const size_t length = text.size() + (mode == 3 ? 0 : 1);
    const Out out = FormatOut(row, valueHex, mode);
    EXPECT_EQ(out.code, DT_OK);
    EXPECT_EQ(out.typeId, ReportedType(mode));
    EXPECT_EQ(out.length, length);
    EXPECT_EQ(out.text, text);
    const Into into = FormatOutInto(row, valueHex, mode, kRdTextSize);
    EXPECT_EQ(into.out.code, DT_OK);
    EXPECT_EQ(into.out.typeId, ReportedType(mode));
    EXPECT_EQ(into.out.length, length);
    EXPECT_EQ(into.buffer.substr(0, text.size() + 1), text + '\0');
    EXPECT_TRUE(into.sameBuffer);
    EXPECT_TRUE(into.guardsIntact);
    EXPECT_FALSE(into.released);
    EXPECT_EQ(into.allocations, 0u);
}

// Succeeds and writes no character, not even a terminator; the length counts none, plus one outside mode 3.
inline void ExpectNothingWritten(const DataTypeDescriptor &row, std::string_view valueHex, uint8_t mode)
{
    SCOPED_TRACE(std::string(valueHex) + " in mode " + std::to_string(mode));
    const Into into = FormatOutInto(row, valueHex, mode, kRdTextSize);
    EXPECT_EQ(into.out.code, DT_OK);
    EXPECT_EQ(into.out.typeId, ReportedType(mode));
    EXPECT_EQ(into.out.length, mode == 3 ? 0 : 1);
    EXPECT_EQ(into.buffer, std::string(kRdTextSize, '\xA5'));
    EXPECT_TRUE(into.sameBuffer);
    EXPECT_TRUE(into.guardsIntact);
    EXPECT_FALSE(into.released);
    EXPECT_EQ(into.allocations, 0u);
    const Out out = FormatOut(row, valueHex, mode);
    EXPECT_EQ(out.code, DT_OK);
    EXPECT_EQ(out.typeId, ReportedType(mode));
    EXPECT_EQ(out.length, mode == 3 ? 0 : 1);
    EXPECT_TRUE(out.bufferSet);
    EXPECT_EQ(out.bytes, mode == 3 ? "" : "a5"); // as the allocator gave it
}

// Fails with the buffer handed out, not released, and with type id and length as they were.
inline void ExpectNoSuchKind(const DataTypeDescriptor &row, std::string_view valueHex, uint8_t mode,
                             uint32_t code = DT_ERR_FAIL)
{
    SCOPED_TRACE(std::string(valueHex) + " in mode " + std::to_string(mode));
    const size_t blocks = host::HandleBlocks(Handle());
    const Out out = FormatOut(row, valueHex, mode);
    EXPECT_EQ(out.code, code);
    EXPECT_EQ(out.typeId, kUntouched);
    EXPECT_EQ(out.length, kUntouched);
    EXPECT_TRUE(out.bufferSet);
    EXPECT_EQ(host::HandleBlocks(Handle()), blocks + 1);
    const Into into = FormatOutInto(row, valueHex, mode, kRdTextSize);
    EXPECT_EQ(into.out.code, code);
    EXPECT_EQ(into.out.typeId, kUntouched);
    EXPECT_EQ(into.out.length, kUntouched);
    EXPECT_TRUE(into.sameBuffer);
    EXPECT_TRUE(into.guardsIntact);
    EXPECT_FALSE(into.released);
    EXPECT_EQ(into.allocations, 0u);
}

// ------------------------------------------------------------------------------------------------------------- layout

struct FieldRow {
    const char *name; // also its key in the Lua table; null where it has none of its own
    uint16_t offset;
    uint8_t width;
    uint16_t count;
};

// The layout of a value, field for field: numbers of more than one byte are in host order, all else is bytes.
inline void ExpectLayout(uint32_t typeId, std::string_view valueHex, const std::vector<FieldRow> &fields)
{
    const std::string value = Bytes(valueHex);
    const BgpLayout *layout = Bgp_DescribeValue(typeId, value.data(), static_cast<uint32_t>(value.size()));
    ASSERT_NE(layout, nullptr);
    EXPECT_EQ(layout->Length, value.size());
    ASSERT_EQ(layout->FieldCount, fields.size());
    for (size_t i = 0; i < fields.size(); ++i) {
        SCOPED_TRACE(i);
        const BgpField &field = layout->Fields[i];
        if (fields[i].name != nullptr) {
            EXPECT_STREQ(field.Name, fields[i].name);
        }
        EXPECT_EQ(field.Offset, fields[i].offset);
        EXPECT_EQ(field.Width, fields[i].width);
        EXPECT_EQ(field.Count, fields[i].count);
        if (field.Width > 1 || field.Count > 1) {
            EXPECT_EQ(field.Kind, field.Width > 1 ? BGP_FIELD_NUMBER : BGP_FIELD_BYTES);
        }
    }
}

// ---------------------------------------------------------------------------------------------------------------- Lua

inline constexpr int32_t kAnyGrowth = 99; // the stack height afterwards is not promised

struct LuaCase {
    std::string table; // a Lua expression
    uint32_t code;
    std::string value; // hex, "ee" where nothing was written
    int32_t growth;
};

inline void ExpectLuaGet(const DataTypeDescriptor &row, uint16_t length, const std::vector<LuaCase> &cases)
{
    for (const LuaCase &c : cases) {
        SCOPED_TRACE(c.table);
        const LuaIn in = LuaGet(row, c.table, length);
        EXPECT_EQ(in.code, c.code);
        EXPECT_EQ(in.value, Hex(Bytes(c.value)));
        if (c.growth != kAnyGrowth) {
            EXPECT_EQ(in.growth, c.growth);
        }
    }
}

inline std::string Unwritten(size_t count)
{
    return Hex(std::string(count, '\xEE'));
}

// A byte array inside a Lua table: the text before and behind its items, how many there are, the byte of the value that
// item 1 fills, and the stack growth when the first item is refused (each later one leaves one slot more).
struct LuaArray {
    std::string before, behind;
    size_t items;
    size_t offset;
    int32_t firstGrowth;
};

// Each item missing and of the wrong kind in turn: what was read before it has been written, nothing else.
inline void ExpectItemsAreNumbers(const DataTypeDescriptor &row, uint16_t length, const LuaArray &array,
                                  uint32_t code = DT_ERR_INVALID_PARAM)
{
    for (size_t bad = 1; bad <= array.items; ++bad) {
        for (const char *item : {"nil", "'x'", "{}", "true"}) {
            std::string items;
            std::string written;
            for (size_t i = 1; i <= array.items; ++i) {
                items += (i == bad ? std::string(item) : std::to_string(200 + i)) + ",";
                if (i < bad) {
                    written += static_cast<char>(200 + i);
                }
            }
            const int32_t growth =
                array.firstGrowth == kAnyGrowth ? kAnyGrowth : array.firstGrowth + static_cast<int32_t>(bad) - 1;
            ExpectLuaGet(
                row, length,
                {{array.before + "{" + items + "}" + array.behind, code,
                  Unwritten(array.offset) + Hex(written) + Unwritten(length - array.offset - written.size()), growth}});
        }
    }
}

// Lua lengths below the value's are refused before anything is pushed or read.
inline void ExpectShortLuaRefused(const DataTypeDescriptor &row, uint16_t length, const std::string &table,
                                  uint32_t code = DT_ERR_INVALID_PARAM)
{
    for (uint16_t shorter = 0; shorter < length; ++shorter) {
        SCOPED_TRACE(shorter);
        if (row.LuaSet != nullptr) {
            const LuaOut out = LuaSet(row, Hex(std::string(length, '\x01')), shorter);
            EXPECT_EQ(out.code, code);
            EXPECT_EQ(out.table, "nil");
            EXPECT_EQ(out.growth, 0);
        }
        if (row.LuaGet != nullptr) {
            const LuaIn in = LuaGet(row, table, shorter);
            EXPECT_EQ(in.code, code);
            EXPECT_EQ(in.value, Unwritten(shorter));
            EXPECT_EQ(in.growth, 0);
        }
    }
}

} // namespace bgp::test

#endif
