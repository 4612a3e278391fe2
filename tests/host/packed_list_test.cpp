// Lists of packed entries, by a list of letters: "c" is entry {3, 0}, "C" {3, 1}; an entry of number 0 is unused.
#include "host/packed_list.h"

#include "host/layout.h"
#include "support/harness.h"

#include <lua.hpp>

#include <string>
#include <utility>
#include <vector>

namespace bgp::test {
namespace {

class PackedLists : public PlugIn {
protected:
    void SetUp() override;
};

constexpr uint32_t kCount = 4;
constexpr uint32_t kBytes = kCount * kPackedEntrySize;

constexpr BgpField kFields[] = {Number("number", 0, 4), Byte("notation", 4)};
constexpr BgpLayout kEntry = Layout(kFields, kPackedEntrySize);

constexpr BgpRule kNoLetter{"letter", "a letter is expected here", 0};

uint32_t readItems = 0; // by the rules below
uint32_t lastHandle = 0;

void PackedLists::SetUp()
{
    PlugIn::SetUp();
    readItems = 0;
}

bool ReadLetter(uint32_t memoryHandle, bgp::Text item, PackedEntry &entry, Why *why)
{
    ++readItems;
    lastHandle = memoryHandle;
    const char letter = *item.at;
    const bool upper = letter >= 'A' && letter <= 'Z';
    if (item.length != 1 || (!upper && (letter < 'a' || letter > 'z'))) {
        return Refuse(why, item, kNoLetter);
    }
    entry = {static_cast<uint32_t>(letter - (upper ? 'A' : 'a') + 1), upper};
    return true;
}

void PrintLetter(PackedEntry entry, GrowingText &text)
{
    if (entry.number <= 26) {
        Put(text, static_cast<char>((entry.notation != 0 ? 'A' : 'a') + static_cast<int>(entry.number) - 1));
    }
}

constexpr PackedListRule kLetters{
    .count = kCount,
    .longestText = 12,
    .read = ReadLetter,
    .isUnused = [](PackedEntry entry) { return entry.number == 0; },
    .print = PrintLetter,
    .luaArray = "letters",
    .entry = kEntry,
};

// The same, cut into items first.
constexpr PackedListRule kCutLetters{
    .count = kCount,
    .longestText = 12,
    .read = ReadLetter,
    .isUnused = kLetters.isUnused,
    .print = PrintLetter,
    .luaArray = "letters",
    .entry = kEntry,
    .allows = [](char character) { return character != '!'; },
    .longestItem = 2,
    .item = "a letter",
};

// And again, lower-case letters read quickly.
const char *ReadLowerLetter(const char *text, PackedEntry &entry)
{
    entry = {static_cast<uint32_t>(*text - 'a' + 1), 0};
    return *text >= 'a' && *text <= 'z' ? text + 1 : nullptr;
}

constexpr PackedListRule WithBare(PackedListRule rule)
{
    rule.readBare = ReadLowerLetter;
    return rule;
}

constexpr PackedListRule kBareLetters = WithBare(kLetters);

// The value in hex, with 0xEE for what was not written; or the reason.
std::string Read(const PackedListRule &rule, std::string_view text)
{
    uint8_t value[kBytes];
    std::memset(value, 0xEE, sizeof value);
    BgpReason reason{};
    Why why{&reason, text.data(), 0};
    const bgp::Text piece{text.data(), static_cast<uint32_t>(text.size())};
    if (ReadPackedList(rule, 77, piece, value, &why)) {
        EXPECT_EQ(reason.Rule, nullptr) << text;
        return Hex(value, sizeof value);
    }
    EXPECT_FALSE(ReadPackedList(rule, 77, piece, value, nullptr)) << text;
    return std::string(reason.Rule->Name) + " " + std::to_string(reason.Offset) + "+" + std::to_string(reason.Length) +
           " " + std::to_string(reason.Limit) + " #" + std::to_string(reason.Element) +
           (reason.What == nullptr ? "" : std::string(" ") + reason.What);
}

const std::string kUntouched = std::string(30, 'e');

TEST_F(PackedLists, ItemsFillTheFirstEntries)
{
    for (const PackedListRule *rule : {&kLetters, &kCutLetters}) {
        EXPECT_EQ(Read(*rule, "a"), "0100000000" + kUntouched);
        EXPECT_EQ(lastHandle, 77u);
        EXPECT_EQ(Read(*rule, "c  C\t \tz"), "0300000000"
                                             "0300000001"
                                             "1a00000000" +
                                                 std::string(10, 'e'));
        EXPECT_EQ(Read(*rule, "a b c d"), "01000000000200000000"
                                          "03000000000400000000");
    }
}

// The answer and the value in hex, as FormatIn reads, without a place for a reason.
std::string ReadSilently(const PackedListRule &rule, const std::string &text)
{
    uint8_t value[kBytes];
    std::memset(value, 0xEE, sizeof value);
    const bgp::Text piece{text.data(), static_cast<uint32_t>(text.size())};
    const bool read = (rule.readBare != nullptr && ReadBareList(rule, piece, value)) ||
                      ReadPackedList(rule, 77, piece, value, nullptr);
    return (read ? "read " : "refused ") + Hex(value, sizeof value);
}

TEST_F(PackedLists, QuickReadingGivesTheSame)
{
    constexpr char kCharacters[] = {'a', 'z', 'Z', '1', '!', ' ', '\r'};
    constexpr uint32_t kLongest = 6;
    uint32_t texts = 0;
    uint32_t read = 0;
    std::vector<std::string> shorter{""};
    for (uint32_t length = 1; length <= kLongest; ++length) {
        std::vector<std::string> longer;
        for (const std::string &text : shorter) {
            for (const char character : kCharacters) {
                longer.push_back(text + character);
                if (longer.back().front() == ' ' || longer.back().back() == ' ') {
                    continue; // lists are trimmed
                }
                const std::string expected = ReadSilently(kLetters, longer.back());
                ASSERT_EQ(ReadSilently(kBareLetters, longer.back()), expected) << longer.back();
                ++texts;
                read += expected.starts_with("read ");
            }
        }
        shorter = std::move(longer);
    }
    EXPECT_EQ(texts, 100842u);
    EXPECT_EQ(read, 120u); // of one to three letters
    readItems = 0;
    EXPECT_EQ(ReadSilently(kBareLetters, "a b"), "read 01000000000200000000" + kUntouched.substr(10));
    EXPECT_EQ(readItems, 0u);
    EXPECT_EQ(ReadSilently(kBareLetters, "a b c d e"), "refused 01000000000200000000"
                                                       "03000000000400000000");
}

TEST_F(PackedLists, PrintsWhatStandsBehindGaps)
{
    const struct {
        std::vector<uint8_t> numbers; // 0xFF is none, and has another notation
        const char *text;
    } rows[] = {{{0, 0, 0, 0}, ""},     {{1, 0, 0, 0}, "a"},      {{0, 0, 0, 4}, "d"},
                {{0, 2, 0, 4}, "b d"},  {{1, 0, 0, 4}, "a d"},    {{1, 0xFF, 0, 0}, "a"},
                {{1, 0, 0xFF, 0}, "a"}, {{1, 0, 0xFF, 4}, "a d"}, {{0xFF, 0xFF, 3, 0}, "c"}};
    for (const auto &row : rows) {
        uint8_t value[kBytes] = {};
        for (uint32_t i = 0; i < kCount; ++i) {
            const bool odd = row.numbers[i] == 0xFF;
            StoreEntry(value + i * kPackedEntrySize, {odd ? 0u : row.numbers[i], odd ? 1u : 0u});
        }
        char text[64];
        uint32_t printed = 99;
        EXPECT_EQ(PrintPackedList(kLetters, value, text, &printed), DT_OK);
        EXPECT_STREQ(text, row.text);
        EXPECT_EQ(printed, std::strlen(row.text));
    }
}

TEST_F(PackedLists, ReasonsNameTheItem)
{
    EXPECT_EQ(Read(kLetters, ""), "empty 0+0 0 #0");
    EXPECT_EQ(Read(kLetters, "a b c d      "), "too-long 0+13 12 #0");
    EXPECT_EQ(Read(kLetters, "1"), "letter 0+1 0 #1");
    EXPECT_EQ(Read(kLetters, "a  bc d"), "letter 3+2 0 #2");
    EXPECT_EQ(Read(kLetters, "a b\rc"), "letter 2+3 0 #2"); // no blank of this host's
    EXPECT_EQ(Read(kLetters, "a b c d e"), "too-many-items 8+1 4 #5");
    EXPECT_EQ(Read(kLetters, "a b c d e!"), "too-many-items 8+2 4 #5");
}

TEST_F(PackedLists, AreCutBeforeAnItemIsReadWhereThatTakesMemory)
{
    const struct {
        const char *text;
        const char *reason;
        uint32_t read; // items, of two readings: with and without a place for the reason
    } rows[] = {
        {"a b c d e", "too-many-items 8+1 4 #5", 0},
        {"a b! c", "character 3+1 0 #2", 0},
        {"a b xyz", "too-long 4+3 2 #3 a letter", 0},
        {"a bc", "letter 2+2 0 #2", 4},
        {"", "empty 0+0 0 #0", 0},
    };
    for (const auto &row : rows) {
        readItems = 0;
        EXPECT_EQ(Read(kCutLetters, row.text), row.reason) << row.text;
        EXPECT_EQ(readItems, row.read) << row.text;
    }
    readItems = 0;
    Read(kLetters, "a b c d e");
    EXPECT_EQ(readItems, 8u);
}

// Into a buffer with a guard behind the rule's longest text.
std::string Printed(const PackedListRule &rule, std::string_view valueHex)
{
    const std::string value = Bytes(valueHex);
    std::string buffer(rule.longestText + 2, '#');
    uint32_t printed = 0;
    EXPECT_EQ(PrintPackedList(rule, reinterpret_cast<const uint8_t *>(value.data()), buffer.data(), &printed), DT_OK);
    EXPECT_EQ(buffer[rule.longestText + 1], '#');
    EXPECT_EQ(buffer[printed], '\0');
    return buffer.substr(0, printed);
}

TEST_F(PackedLists, UsedEntriesPrintWithBlanksBetween)
{
    EXPECT_EQ(Printed(kLetters, Padded("", kBytes)), "");
    EXPECT_EQ(Printed(kLetters, Padded("0000000001 0300000001", kBytes)), "C");
    EXPECT_EQ(Printed(kLetters, Padded("0100000000 0000000000 0200000001", kBytes)), "a B");
    EXPECT_EQ(Printed(kLetters, Padded("1b00000000 0200000000 1b00000000", kBytes)), " b "); // what prints nothing
}

TEST_F(PackedLists, PrintingIsCutAtTheLongestText)
{
    PackedListRule narrow = kLetters;
    for (uint32_t longest = 0; longest <= 8; ++longest) {
        narrow.longestText = longest;
        EXPECT_EQ(Printed(narrow, "0100000000 0200000000 0300000000 0400000000"),
                  std::string("a b c d").substr(0, longest));
    }
    host::SetFaults({.failPrint = 1});
    uint8_t value[kBytes] = {1};
    char buffer[16];
    uint32_t printed = 9;
    EXPECT_EQ(PrintPackedList(kLetters, value, buffer, &printed), DT_ERR_FAIL);
    EXPECT_EQ(printed, 9u);
}

TEST_F(PackedLists, ByteOrderTurnsTheNumbersAlone)
{
    std::string value = Bytes("0102030405 0000000102 ffffffff03 0a0b0c0dff");
    SwapPackedList(kLetters, value.data());
    EXPECT_EQ(Hex(value), "0403020105010000000"
                          "2ffffffff030d0c0b0aff");
}

TEST_F(PackedLists, GoThroughAScriptWhole)
{
    lua_State *L = host::NewLua();
    lua_newtable(L);
    const std::string value = Bytes("0102030405 0000000000 ffffffff03 0a0b0c0dff");
    EXPECT_EQ(PackedListLuaSet(kLetters, L, 1, "v", kBytes, value.data()), DT_OK);
    EXPECT_EQ(lua_gettop(L), 1);
    uint8_t back[kBytes + 1];
    std::memset(back, 0xEE, sizeof back);
    EXPECT_EQ(PackedListLuaGet(kLetters, L, 1, "v", kBytes, back), DT_OK);
    EXPECT_EQ(Hex(back, sizeof back), Hex(value) + "ee");
    EXPECT_EQ(lua_gettop(L), 2); // the fetched table stays
    EXPECT_EQ(PackedListLuaSet(kLetters, L, 1, "v", kBytes - 1, value.data()), DT_ERR_INVALID_PARAM);
    EXPECT_EQ(PackedListLuaGet(kLetters, L, 1, "v", kBytes - 1, back), DT_ERR_INVALID_PARAM);
    EXPECT_EQ(PackedListLuaGet(kLetters, L, 1, "w", kBytes, back), DT_ERR_INVALID_PARAM);
    host::CloseLua(L);
}

} // namespace
} // namespace bgp::test
