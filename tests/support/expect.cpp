#include "support/expect.h"

#include "bgp_host_services.h"

#include <cstdio>

namespace bgp::test {

std::string Repeated(const std::string &item, size_t count, const std::string &separator)
{
    std::string text;
    for (size_t i = 0; i < count; ++i) {
        text += (i == 0 ? "" : separator) + item;
    }
    return text;
}

std::string Net16(uint32_t number)
{
    const char bytes[] = {static_cast<char>(number >> 8), static_cast<char>(number & 0xFF)};
    return Hex(bytes, sizeof bytes);
}

std::string Unwritten(size_t count)
{
    return Hex(std::string(count, '\xEE'));
}

// ------------------------------------------------------------------------------------------------------------ text in

void ExpectRefused(const In &in, uint32_t code)
{
    EXPECT_EQ(in.code, code);
    EXPECT_EQ(in.typeId, kUntouched);
    EXPECT_EQ(in.length, kUntouched);
    EXPECT_FALSE(in.bufferSet);
}

void ExpectRefused(const DataTypeDescriptor &row, std::string_view text, uint8_t mode, uint32_t code)
{
    SCOPED_TRACE("\"" + std::string(text.substr(0, 300)) + "\" in mode " + std::to_string(mode));
    const In in = FormatIn(row, text, mode);
    ExpectRefused(in, code);
    EXPECT_TRUE(in.textKept);
}

namespace {

// What FormatOut prints in mode 1, into a buffer of the caller's.
std::string PrintedBy(const DataTypeDescriptor &row, const std::string &value)
{
    const DataTypeRequest request{1, Handle()};
    char text[4096] = {};
    uint16_t typeId = 0;
    uint16_t length = 0;
    void *buffer = text;
    const uint32_t code = row.FormatOut(&request, row.TypeId, static_cast<uint32_t>(value.size()), value.data(),
                                        &typeId, &length, &buffer);
    return code == DT_OK ? text : "code " + std::to_string(code);
}

} // namespace

void ExpectEverySixteenBitField(uint32_t (*parser)(const char *text, void *value), const std::vector<FieldCase> &fields,
                                const DataTypeDescriptor *printing)
{
    for (const FieldCase &f : fields) {
        SCOPED_TRACE(std::string(f.before) + "n" + f.behind);
        std::string expected = Bytes(f.value);
        std::string value(expected.size(), '\0');
        char text[64];
        for (uint32_t n = f.first; n < 65536; ++n) {
            std::snprintf(text, sizeof text, "%s%u%s", f.before, n * f.scale + f.base, f.behind);
            expected[f.offset + (f.hostOrder ? 1 : 0)] = static_cast<char>(n >> 8);
            expected[f.offset + (f.hostOrder ? 0 : 1)] = static_cast<char>(n & 0xFF);
            ASSERT_EQ(parser(text, value.data()), DT_OK) << text;
            ASSERT_TRUE(value == expected) << text << " gives " << Hex(value);
            if (printing != nullptr) {
                ASSERT_EQ(PrintedBy(*printing, value), text);
            }
        }
    }
}

void ExpectBlanksDropped(const DataTypeDescriptor &row, const std::string &text, uint32_t refusal)
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
    for (const std::string &blanks : {spaces, tabs, mixed}) {
        ExpectRefused(row, blanks, 1, refusal);
    }
}

// ----------------------------------------------------------------------------------------------------------- text out

namespace {

// Without its terminator?
bool Bare(const TextBuffer &buffer, uint8_t mode)
{
    return mode < buffer.modes.size() && buffer.modes[mode] == 'R';
}

std::string Call(std::string_view valueHex, uint8_t mode)
{
    return std::string(valueHex) + " in mode " + std::to_string(mode);
}

void ExpectReported(const Out &out, uint8_t mode, size_t characters, const TextBuffer &buffer)
{
    EXPECT_EQ(out.code, DT_OK);
    EXPECT_EQ(out.typeId, Bare(buffer, mode) ? 6 : 25);
    EXPECT_EQ(out.length, characters + (Bare(buffer, mode) ? 0 : 1));
}

void ExpectCallersBuffer(const Into &into)
{
    EXPECT_TRUE(into.sameBuffer);
    EXPECT_TRUE(into.guardsIntact);
    EXPECT_FALSE(into.released);
    EXPECT_EQ(into.allocations, 0u);
}

void ExpectFailed(const Out &out, uint32_t code)
{
    EXPECT_EQ(out.code, code);
    EXPECT_EQ(out.typeId, kUntouched);
    EXPECT_EQ(out.length, kUntouched);
}

} // namespace

void ExpectPrints(const DataTypeDescriptor &row, std::string_view valueHex, uint8_t mode, const std::string &text,
                  const TextBuffer &buffer)
{
    SCOPED_TRACE(Call(valueHex, mode));
    const Out out = FormatOut(row, valueHex, mode);
    ExpectReported(out, mode, text.size(), buffer);
    EXPECT_EQ(out.text, text);
    const Into into = FormatOutInto(row, valueHex, mode, buffer.size);
    ExpectReported(into.out, mode, text.size(), buffer);
    EXPECT_EQ(into.buffer, (text + '\0').append(buffer.size - text.size() - 1, '\xA5'));
    ExpectCallersBuffer(into);
}

void ExpectNothingWritten(const DataTypeDescriptor &row, std::string_view valueHex, uint8_t mode,
                          const TextBuffer &buffer)
{
    SCOPED_TRACE(Call(valueHex, mode));
    const Into into = FormatOutInto(row, valueHex, mode, buffer.size);
    ExpectReported(into.out, mode, 0, buffer);
    EXPECT_EQ(into.buffer, std::string(buffer.size, '\xA5'));
    ExpectCallersBuffer(into);
    const Out out = FormatOut(row, valueHex, mode);
    ExpectReported(out, mode, 0, buffer);
    EXPECT_TRUE(out.bufferSet);
    EXPECT_EQ(out.bytes, Bare(buffer, mode) ? "" : "a5"); // as the allocator gave it
}

void ExpectNoSuchKind(const DataTypeDescriptor &row, std::string_view valueHex, uint8_t mode, uint32_t code,
                      size_t size)
{
    SCOPED_TRACE(Call(valueHex, mode));
    const size_t blocks = host::HandleBlocks(Handle());
    host::TakeCounters();
    const Out out = FormatOut(row, valueHex, mode);
    const host::Counters counters = host::TakeCounters();
    ExpectFailed(out, code);
    EXPECT_TRUE(out.bufferSet);
    EXPECT_EQ(counters.allocations, 1u);
    EXPECT_EQ(counters.frees, 0u);
    EXPECT_EQ(host::HandleBlocks(Handle()), blocks + 1);
    const Into into = FormatOutInto(row, valueHex, mode, size);
    ExpectFailed(into.out, code);
    ExpectCallersBuffer(into);
}

void ExpectNoSuchKindGivenBack(const DataTypeDescriptor &row, std::string_view valueHex, uint8_t mode, uint32_t code,
                               size_t size)
{
    SCOPED_TRACE(Call(valueHex, mode));
    const size_t blocks = host::HandleBlocks(Handle());
    host::RecordReleases(true);
    host::TakeReleases();
    host::TakeCounters();
    const Out out = FormatOut(row, valueHex, mode);
    const std::vector<host::Release> releases = host::TakeReleases();
    host::RecordReleases(false);
    ExpectFailed(out, code);
    EXPECT_FALSE(out.bufferSet);
    EXPECT_EQ(host::TakeCounters().allocations, 1u);
    EXPECT_EQ(host::HandleBlocks(Handle()), blocks);
    ASSERT_EQ(releases.size(), 1u);
    EXPECT_TRUE(releases[0].known);
    EXPECT_NE(releases[0].memory, nullptr);
    const Into into = FormatOutInto(row, valueHex, mode, size);
    ExpectFailed(into.out, code);
    EXPECT_EQ(into.buffer, std::string(size, '\xA5'));
    ExpectCallersBuffer(into);
}

// --------------------------------------------------------------------------------------------------------------- help

HelpMemory AllocationsOfHelp(const DataTypeDescriptor &row)
{
    const DataTypeRequest request{1, Handle()};
    const uint32_t words[2] = {1, 2};
    DataTypeHelpInfo info{0, nullptr};
    host::TakeCounters();
    EXPECT_EQ(row.Help(&request, row.TypeId, 0, "", words, &info), DT_OK);
    const host::Counters counters = host::TakeCounters();
    if (counters.plainAllocations != 0 && info.EntryCount != 0) {
        SYS_DataTypeFree(info.Entries[0].Text);
    }
    return {counters.allocations - counters.plainAllocations, counters.plainAllocations};
}

// ------------------------------------------------------------------------------------------------------------- layout

void ExpectLayout(uint32_t typeId, std::string_view valueHex, const std::vector<FieldRow> &fields)
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

void ExpectLuaSet(const DataTypeDescriptor &row, uint16_t length, const std::vector<SetCase> &cases)
{
    for (const SetCase &c : cases) {
        for (const uint32_t given : {uint32_t{length}, length + 1u, 65535u}) {
            const std::string value = c.value + (given == length ? "" : "aa");
            const LuaOut out = LuaSet(row, value, static_cast<uint16_t>(given));
            EXPECT_EQ(out.code, DT_OK) << c.value;
            EXPECT_EQ(out.table, c.table);
            EXPECT_EQ(out.growth, 0);
        }
    }
}

void ExpectLuaGet(const DataTypeDescriptor &row, uint16_t length, const std::vector<LuaCase> &cases)
{
    for (const LuaCase &c : cases) {
        SCOPED_TRACE(c.table.substr(0, 300));
        const LuaIn in = LuaGet(row, c.table, length);
        EXPECT_EQ(in.code, c.code);
        EXPECT_EQ(in.value, Hex(Bytes(c.value)));
        if (c.growth != kAnyGrowth) {
            EXPECT_EQ(in.growth, c.growth);
        }
    }
}

void ExpectItemsAreNumbers(const DataTypeDescriptor &row, uint16_t length, const LuaArray &array, uint32_t code)
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
            const int32_t growth = array.firstGrowth == kAnyGrowth
                                       ? kAnyGrowth
                                       : array.firstGrowth + array.growthPerItem * (static_cast<int32_t>(bad) - 1);
            ExpectLuaGet(
                row, length,
                {{array.before + "{" + items + "}" + array.behind, code,
                  Unwritten(array.offset) + Hex(written) + Unwritten(length - array.offset - written.size()), growth}});
        }
    }
}

void ExpectShortLuaRefused(const DataTypeDescriptor &row, uint16_t length, const std::string &table, uint32_t code)
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
