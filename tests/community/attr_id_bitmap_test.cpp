#include "support/type_case.h"

#include <initializer_list>

namespace bgp::test {
namespace {

// ATTRIDBITMAP: 256 bits, identifier i being bit i % 8 of byte i / 8. FormatOut receives a list of typed items instead:
// the item count (u16) at byte 24, the items from byte 44 on, each type (u16), length (u16) and data.
constexpr const char *kType = "ATTRIDBITMAP";

class AttrIdBitmap : public PlugIn {};

// ------------------------------------------------------------------------------------------------------ the item list

std::string Item(uint16_t type, std::string_view data)
{
    return Bytes(Le16(type) + Le16(static_cast<uint16_t>(data.size()))) + std::string(data);
}

// A text item with its terminator.
std::string TextItem(std::string_view text)
{
    return Item(25, std::string(text) + '\0');
}

std::string U8(uint8_t value)
{
    return Item(2, std::string(1, static_cast<char>(value)));
}

std::string U16(uint16_t value)
{
    return Item(4, Bytes(Le16(value)));
}

std::string U32(uint32_t value)
{
    return Item(6, Bytes(Le32(value)));
}

std::string Bits(std::initializer_list<int> identifiers)
{
    std::string bits(32, '\0');
    for (const int i : identifiers) {
        const auto at = static_cast<size_t>(i / 8);
        bits[at] = static_cast<char>(bits[at] | 1 << i % 8);
    }
    return bits;
}

std::string BitmapItem(std::initializer_list<int> identifiers)
{
    return Item(290, Bits(identifiers));
}

// A list in hex. Bytes that no field is known of are marked, so that reading them shows.
std::string ListOf(uint16_t count, const std::vector<std::string> &items)
{
    std::string list(44, '\xC3');
    list.replace(24, 2, Bytes(Le16(count)));
    for (const std::string &item : items) {
        list += item;
    }
    return Hex(list);
}

std::string List(const std::vector<std::string> &items)
{
    return ListOf(static_cast<uint16_t>(items.size()), items);
}

// What a list of the template, the identifier 1 and further items prints.
std::string Filled(std::string_view text, const std::vector<std::string> &more)
{
    std::vector<std::string> items = {TextItem(text), BitmapItem({1})};
    items.insert(items.end(), more.begin(), more.end());
    const Out out = FormatOut(kType, List(items));
    EXPECT_EQ(out.code, DT_OK) << text;
    EXPECT_EQ(out.typeId, 25) << text;
    EXPECT_EQ(out.length, out.text.size() + 1) << text;
    return out.text;
}

std::string Identifiers(std::string_view text, std::initializer_list<int> identifiers, uint8_t mode = 1)
{
    return Text(kType, List({TextItem(text), BitmapItem(identifiers)}), mode);
}

constexpr uint8_t kPrintingModes[] = {0, 1, 5, 6};

// Code 0, type and length 0, and an empty text in the buffer.
void ExpectEmpty(const std::string &list)
{
    SCOPED_TRACE(list);
    for (const uint8_t mode : kPrintingModes) {
        host::ResetHandle(Handle());
        const Out out = FormatOut(kType, list, mode);
        EXPECT_EQ(out.code, DT_OK);
        EXPECT_EQ(out.typeId, 0);
        EXPECT_EQ(out.length, 0);
        EXPECT_TRUE(out.bufferSet);
        EXPECT_EQ(host::HandleBlocks(Handle()), 1u); // the buffer
        host::ResetHandle(Handle());
        const Into into = FormatOutInto(Row(kType), list, mode, 4096);
        EXPECT_EQ(into.out.code, DT_OK);
        EXPECT_EQ(into.out.typeId, 0);
        EXPECT_EQ(into.out.length, 0);
        EXPECT_TRUE(into.sameBuffer);
        EXPECT_FALSE(into.released);
        EXPECT_TRUE(into.guardsIntact);
        EXPECT_EQ(into.buffer[0], '\0');
        EXPECT_EQ(host::HandleBlocks(Handle()), 0u);
    }
}

// ------------------------------------------------------------------------------------------------------------ the runs

TEST_F(AttrIdBitmap, PrintsRuns)
{
    for (const uint8_t mode : kPrintingModes) {
        EXPECT_EQ(Identifiers("Attribute IDs:", {1, 2, 3, 7, 9, 10, 11}, mode), "Attribute IDs: 1 to 3 7 9 to 11\r\n");
    }
    EXPECT_EQ(Identifiers("IDs:", {0, 255}), "IDs: 0 255\r\n");
    EXPECT_EQ(Identifiers("IDs:", {0, 1}), "IDs: 0 to 1\r\n");
    EXPECT_EQ(Identifiers("IDs:", {254, 255}), "IDs: 254 to 255\r\n");
    EXPECT_EQ(Identifiers("IDs:", {1, 2, 3, 4, 5, 7, 9, 10, 11, 12}), "IDs: 1 to 5 7 9 to 12\r\n");
    EXPECT_EQ(Identifiers("", {7, 8}), " 7 to 8\r\n");
    const Out out = FormatOut(kType, List({TextItem("IDs:"), Item(290, std::string(32, '\xFF'))}));
    EXPECT_EQ(out.code, DT_OK);
    EXPECT_EQ(out.typeId, 25);
    EXPECT_EQ(out.text, "IDs: 0 to 255\r\n");
    EXPECT_EQ(out.length, 16);
}

TEST_F(AttrIdBitmap, EveryRunPrints)
{
    for (int start = 0; start < 256; ++start) {
        std::string bits(32, '\0');
        for (int end = start; end < 256; ++end) {
            const auto at = static_cast<size_t>(end / 8);
            bits[at] = static_cast<char>(bits[at] | 1 << end % 8);
            const std::string run = std::to_string(start) + (end == start ? "" : " to " + std::to_string(end));
            ASSERT_EQ(Text(kType, List({TextItem("H"), Item(290, bits)})), "H " + run + "\r\n");
        }
        host::ResetHandle(Handle());
    }
}

TEST_F(AttrIdBitmap, TheLineBreaksAfterEveryTenthRun)
{
    EXPECT_EQ(Identifiers("H", {0, 2, 4, 6, 8, 10, 12, 14, 16}), "H 0 2 4 6 8 10 12 14 16\r\n");
    EXPECT_EQ(Identifiers("H", {0, 2, 4, 6, 8, 10, 12, 14, 16, 18}), "H 0 2 4 6 8 10 12 14 16 18\r\n");
    EXPECT_EQ(Identifiers("H", {0, 2, 4, 6, 8, 10, 12, 14, 16, 18, 20}), "H 0 2 4 6 8 10 12 14 16 18\r\nH 20\r\n");
    EXPECT_EQ(Identifiers("H ###;", {0, 2, 4, 6, 8, 10, 12, 14, 16, 18, 20, 21, 22}),
              "H 0 2 4 6 8 10 12 14 16 18;\r\nH 20 to 22;\r\n");
    EXPECT_EQ(Identifiers("H", {0, 2, 4, 6, 8, 10, 12, 14, 16, 18, 20, 22, 24, 26, 28, 30, 32, 34, 36, 38}),
              "H 0 2 4 6 8 10 12 14 16 18\r\nH 20 22 24 26 28 30 32 34 36 38\r\n");
    EXPECT_EQ(Identifiers("H", {0, 2, 4, 6, 8, 10, 12, 14, 16, 18, 20, 22, 24, 26, 28, 30, 32, 34, 36, 38, 40}),
              "H 0 2 4 6 8 10 12 14 16 18\r\nH 20 22 24 26 28 30 32 34 36 38\r\nH 40\r\n");
    // Runs count, not identifiers.
    EXPECT_EQ(Identifiers("H", {0, 1, 3, 4, 6, 7, 9, 10, 12, 13, 15, 16, 18, 19, 21, 22, 24, 25, 27, 28, 30}),
              "H 0 to 1 3 to 4 6 to 7 9 to 10 12 to 13 15 to 16 18 to 19 21 to 22 24 to 25 27 to 28\r\nH 30\r\n");
}

TEST_F(AttrIdBitmap, TheMostRunsThatThereCanBe)
{
    // Every other identifier: 128 runs in 13 lines.
    std::string expected;
    for (int run = 0; run < 128; ++run) {
        expected += (run == 0 ? "H" : run % 10 == 0 ? ";\r\nH" : "") + (" " + std::to_string(2 * run + 1));
    }
    expected += ";\r\n";
    const std::string list = List({TextItem("H ###;"), Item(290, std::string(32, '\xAA'))});
    EXPECT_EQ(Text(kType, list), expected);
    const Into into = FormatOutInto(Row(kType), list, 1, 4096);
    EXPECT_EQ(into.out.text, expected);
    EXPECT_TRUE(into.guardsIntact);
}

TEST_F(AttrIdBitmap, TheTextStaysWithinItsBuffer)
{
    // 13 lines of a long head and a suffix are more than the buffer holds.
    for (const size_t headLength : {100u, 280u, 299u}) {
        for (const std::string suffix : {"", " ###s"}) {
            const std::string head(headLength - suffix.size(), 'h');
            SCOPED_TRACE(std::to_string(headLength) + suffix);
            std::string whole;
            for (int run = 0; run < 128; ++run) {
                const std::string lineEnd = suffix.empty() ? "\r\n" : "s\r\n";
                whole += (run == 0 ? head : run % 10 == 0 ? lineEnd + head : "") + (" " + std::to_string(2 * run));
            }
            whole += suffix.empty() ? "\r\n" : "s\r\n";
            const std::string list = List({TextItem(head + suffix), Item(290, std::string(32, '\x55'))});
            const Into into = FormatOutInto(Row(kType), list, 1, 4096);
            EXPECT_EQ(into.out.code, DT_OK);
            EXPECT_TRUE(into.guardsIntact);
            ASSERT_LE(into.out.length, 4096);
            EXPECT_EQ(into.out.length, into.out.text.size() + 1);
            if (whole.size() < 4000) {
                EXPECT_EQ(into.out.text, whole);
            } else {
                EXPECT_GT(into.out.text.size(), 3000u);
                EXPECT_EQ(into.out.text, whole.substr(0, into.out.text.size()));
            }
            EXPECT_EQ(Text(kType, list), into.out.text);
        }
    }
}

TEST_F(AttrIdBitmap, TheBitmapItemMayBeShorterOrLonger)
{
    EXPECT_EQ(Text(kType, List({TextItem("H %u"), Item(290, "\x81"), U8(7)})), "H 7 0 7\r\n");
    EXPECT_EQ(Text(kType, List({TextItem("H %u"), Item(290, Bits({255}) + std::string(8, '\xFF')), U8(7)})),
              "H 7 255\r\n");
    EXPECT_EQ(Text(kType, List({TextItem("H"), Item(290, Bits({255}) + std::string(300, '\xFF'))})), "H 255\r\n");
    ExpectEmpty(List({TextItem("H"), Item(290, "")}));
    ExpectEmpty(List({TextItem("H"), Item(290, std::string(32, '\0') + std::string(8, '\xFF'))}));
}

TEST_F(AttrIdBitmap, NothingToPrint)
{
    ExpectEmpty(List({TextItem("H"), BitmapItem({})}));
    ExpectEmpty(List({}));
    ExpectEmpty(List({TextItem("H")}));
    ExpectEmpty(ListOf(0, {TextItem("H"), BitmapItem({1})}));
    ExpectEmpty(ListOf(1, {TextItem("H"), BitmapItem({1})}));
    ExpectEmpty(List({U32(1), BitmapItem({1})}));
    ExpectEmpty(List({BitmapItem({1}), TextItem("H")}));
    ExpectEmpty(List({TextItem("H"), TextItem("H")}));
    ExpectEmpty(List({TextItem("H"), U32(1), BitmapItem({1})}));
    ExpectEmpty(List({Item(25 + 256, std::string("H\0", 2)), BitmapItem({1})}));
    ExpectEmpty(List({TextItem("H"), Item(34, Bits({1}))}));
    // Items that no count covers are not looked at.
    EXPECT_EQ(Text(kType, ListOf(2, {TextItem("H %u"), BitmapItem({1}), U32(7)})), "H %u 1\r\n");
}

// --------------------------------------------------------------------------------------------- the head and the suffix

TEST_F(AttrIdBitmap, TheTemplateAloneIsNoFormat)
{
    EXPECT_EQ(Identifiers("AS %u %s%n%%", {1}), "AS %u %s%n%% 1\r\n");
    EXPECT_EQ(Identifiers("100%", {1}), "100% 1\r\n");
}

TEST_F(AttrIdBitmap, HashMarksCutTheSuffix)
{
    const struct {
        const char *head;
        const char *text;
    } rows[] = {
        {"IDs: ###;", "IDs: 1;\r\n"},
        {"IDs: ###", "IDs: 1\r\n"},
        {"IDs  ###;", "IDs  1;\r\n"},            // the last blank goes, the one before it stays
        {"IDs here: x###;", "IDs here: 1;\r\n"}, // what follows the last blank goes too
        {"IDs here:###;", "IDs 1;\r\n"},
        {"IDs###;", "IDs 1;\r\n"}, // no blank, nothing more to cut
        {"###;", " 1;\r\n"},
        {"###", " 1\r\n"},
        {" ###;", " 1;\r\n"},
        {"A ### ;B", "A 1 ;B\r\n"},
        {"A ###%s%n", "A 1%s%n\r\n"},
        {"A ##;", "A ##; 1\r\n"},
        {"A # # #", "A # # # 1\r\n"},
        {"A ###b###c", "A 1b###c\r\n"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(Identifiers(row.head, {1}), row.text) << row.head;
    }
}

TEST_F(AttrIdBitmap, ItemsMayBringTheHashMarks)
{
    EXPECT_EQ(Filled("%s", {TextItem("IDs: ###!")}), "IDs: 1!\r\n");
    EXPECT_EQ(Filled("IDs %u ###(%u)", {U8(7), U8(8)}), "IDs 7 1(8)\r\n");
}

// -------------------------------------------------------------------------------------------------------- the template

TEST_F(AttrIdBitmap, ItemsFillTheTemplateInOrder)
{
    EXPECT_EQ(Filled("AS %u:", {U32(4294967295)}), "AS 4294967295: 1\r\n");
    EXPECT_EQ(Filled("AS %u:", {U16(65535)}), "AS 65535: 1\r\n");
    EXPECT_EQ(Filled("AS %u:", {U8(255)}), "AS 255: 1\r\n");
    EXPECT_EQ(Filled("%u", {U32(0)}), "0 1\r\n");
    EXPECT_EQ(Filled("%u.%u.%u:", {U8(1), U16(2), U32(3)}), "1.2.3: 1\r\n");
    EXPECT_EQ(Filled("peer %s in %s, AS %u:", {TextItem("10.1.1.1"), TextItem("vpn1"), U32(65000)}),
              "peer 10.1.1.1 in vpn1, AS 65000: 1\r\n");
    EXPECT_EQ(Filled("%u%u%u%u%u%u%u%u", {U8(1), U8(2), U8(3), U8(4), U8(5), U8(6), U8(7), U8(8)}), "12345678 1\r\n");
    EXPECT_EQ(Filled("%d|%x|%X", {U32(7), U32(0xABC), U32(0xABC)}), "7|abc|ABC 1\r\n");
    EXPECT_EQ(Filled("%5u|%-5u|%05u|%4s|%-4s|%.2s|",
                     {U8(7), U8(7), U8(7), TextItem("ab"), TextItem("ab"), TextItem("abcdef")}),
              "    7|7    |00007|  ab|ab  |ab| 1\r\n");
}

TEST_F(AttrIdBitmap, Addresses)
{
    const std::string ipv6 = Bytes("20010db8000000000000000000000001");
    EXPECT_EQ(Filled("%s:", {Item(21, Bytes("0302010a"))}), "10.1.2.3: 1\r\n");
    EXPECT_EQ(Filled("%s:", {Item(21, Bytes("ffffffff"))}), "255.255.255.255: 1\r\n");
    EXPECT_EQ(Filled("%s:", {Item(21, Bytes("00000000"))}), "0.0.0.0: 1\r\n");
    EXPECT_EQ(Filled("%s:", {Item(22, ipv6)}), "2001:db8::1: 1\r\n");
    EXPECT_EQ(Filled("%s:", {Item(22, std::string(16, '\0'))}), "::: 1\r\n");
    EXPECT_EQ(Filled("%s:", {Item(22, Bytes("20010db8111122223333444455556666"))}),
              "2001:db8:1111:2222:3333:4444:5555:6666: 1\r\n");
    EXPECT_EQ(Filled("%s:", {Item(38, Bytes("0302010a") + ipv6 + std::string(1, '\0'))}), "10.1.2.3: 1\r\n");
    EXPECT_EQ(Filled("%s:", {Item(38, Bytes("0302010a") + ipv6 + '\1')}), "2001:db8::1: 1\r\n");
    EXPECT_EQ(Filled("%s and %s:", {Item(21, Bytes("0302010a")), Item(22, ipv6)}), "10.1.2.3 and 2001:db8::1: 1\r\n");
}

TEST_F(AttrIdBitmap, FewerItemsThanConversionsLoseTheRest)
{
    EXPECT_EQ(Filled("A %u B %u C:", {U8(7)}), "A 7 B  1\r\n");
    EXPECT_EQ(Filled("A %u B %u C %u D", {U8(7), U8(8)}), "A 7 B 8 C  1\r\n");
    EXPECT_EQ(Filled("%u%u###;", {U8(7)}), "7 1\r\n"); // the suffix with it
}

TEST_F(AttrIdBitmap, MoreItemsThanConversionsPrintNoMore)
{
    EXPECT_EQ(Filled("A %u:", {U8(7), U8(8)}), "A 7: 1\r\n");
    EXPECT_EQ(Filled("A %u:", {U8(7), TextItem("x"), U32(9), Item(99, "abc")}), "A 7: 1\r\n");
    EXPECT_EQ(Filled("A:", {U8(7)}), "A: 1\r\n");
    EXPECT_EQ(Filled("A:", {TextItem("x")}), "A: 1\r\n");
    EXPECT_EQ(Filled("", {U8(7)}), " 1\r\n");
}

TEST_F(AttrIdBitmap, ItemsThatPrintNothing)
{
    // The part of the template goes with its item, the rest goes on.
    const std::string nothing[] = {
        Item(0, ""),
        Item(1, "abcd"),
        Item(3, "abcd"),
        Item(5, "ab"),
        Item(99, std::string(500, 'x')),
        Item(290, Bits({5})),
        Item(38, std::string(20, '\1') + '\2'),
        Item(38, std::string(20, '\1') + '\xFF'),
    };
    for (const std::string &item : nothing) {
        SCOPED_TRACE(Hex(item).substr(0, 100));
        EXPECT_EQ(Filled("A %u B %u C:", {U8(7), item}), "A 7 B  1\r\n");
        EXPECT_EQ(Filled("A %u B %u C %u D:", {U8(7), item, U8(8)}), "A 7 B 8 D: 1\r\n");
        EXPECT_EQ(Filled("A %u B %u C:", {item, U8(8)}), "8 C: 1\r\n");
    }
}

TEST_F(AttrIdBitmap, AConversionOfAnotherKindPrintsNothing)
{
    const struct {
        const char *conversion;
        std::string item;
    } rows[] = {
        {"%s", U8(7)},
        {"%s", U16(7)},
        {"%s", U32(4294967295)},
        {"%n", U32(7)},
        {"%n", TextItem("x")},
        {"%p", U32(7)},
        {"%f", U32(7)},
        {"%*u", U32(7)},
        {"%.*s", TextItem("x")},
        {"%*s", TextItem("x")},
        {"%u", TextItem("x")},
        {"%d", TextItem("x")},
        {"%u", Item(21, Bytes("0302010a"))},
        {"%x", Item(22, std::string(16, '\1'))},
        {"%d", Item(38, std::string(21, '\0'))},
        {"%S", TextItem("x")},
        {"%ls", TextItem("x")},
        {"%q", U32(7)},
        {"%2$u", U32(7)},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(std::string(row.conversion) + " " + Hex(row.item));
        const std::string wrong = row.conversion;
        EXPECT_EQ(Filled("A %u B " + wrong + " C:", {U8(7), row.item}), "A 7 B  1\r\n");
        EXPECT_EQ(Filled("A %u B " + wrong + " C %u D:", {U8(7), row.item, U8(8)}), "A 7 B 8 D: 1\r\n");
        EXPECT_EQ(Filled("A " + wrong + " C %u D:", {row.item, U8(8)}), "8 D: 1\r\n");
    }
}

TEST_F(AttrIdBitmap, TheOnlyItemPrintingNothingLeavesTheTemplate)
{
    EXPECT_EQ(Filled("A %s B:", {U8(7)}), "A %s B: 1\r\n");
    EXPECT_EQ(Filled("A %u B:", {Item(99, "x")}), "A %u B: 1\r\n");
}

TEST_F(AttrIdBitmap, BrokenTemplatesDoNoHarm)
{
    for (const char *text : {"%",
                             "%%",
                             "%%%",
                             "%%%%%%%%",
                             "100%% of %u:",
                             "% ",
                             "%-",
                             "%0",
                             "%5",
                             "%.",
                             "%.5",
                             "%l",
                             "%ll",
                             "%hh",
                             "%#",
                             "%99999999999u",
                             "%.99999999999s",
                             "%1000u",
                             "%1000s",
                             "%-1000s",
                             "%c%c",
                             "%lu",
                             "%llu",
                             "%hhu%hu",
                             "%ju%zu%tu",
                             "%a%e%g",
                             "%i%o",
                             "%m",
                             "%C",
                             "\xff%\xff",
                             "%u%",
                             "%s%",
                             "%s%s%s%s%s%s%s%s%s%s%s%s",
                             "%u %u %u %n %s %n"}) {
        for (const std::string &first : {U32(4294967295), TextItem("text"), Item(21, Bytes("0302010a"))}) {
            SCOPED_TRACE(std::string(text) + " " + Hex(first));
            const std::string list = List({TextItem(text), BitmapItem({1}), first, U32(7), TextItem("x"), U8(1)});
            const Into into = FormatOutInto(Row(kType), list, 1, 4096);
            EXPECT_EQ(into.out.code, DT_OK);
            EXPECT_EQ(into.out.typeId, 25);
            EXPECT_TRUE(into.guardsIntact);
            EXPECT_LE(into.out.text.size(), 299u + 4);
            ASSERT_GE(into.out.text.size(), 4u);
            EXPECT_EQ(into.out.text.substr(into.out.text.size() - 4), " 1\r\n");
        }
    }
}

TEST_F(AttrIdBitmap, ItemTextsAreNoFormats)
{
    EXPECT_EQ(Filled("%s:", {TextItem("100%d%n%s")}), "100%d%n%s: 1\r\n");
    EXPECT_EQ(Filled("%s %u:", {TextItem("%u"), U8(7)}), "%u 7: 1\r\n");
}

TEST_F(AttrIdBitmap, TextsEndWithTheirItem)
{
    EXPECT_EQ(Filled("%s:", {Item(25, "abc")}), "abc: 1\r\n"); // no terminator, and nothing behind it
    EXPECT_EQ(Filled("%s %s:", {Item(25, "abc"), Item(25, "def")}), "abc def: 1\r\n");
    EXPECT_EQ(Filled("%s:", {Item(25, "")}), ": 1\r\n");
    EXPECT_EQ(Filled("%s:", {Item(25, std::string("ab\0cd\0", 6))}), "ab: 1\r\n");
    EXPECT_EQ(Text(kType, List({Item(25, "H"), BitmapItem({1})})), "H 1\r\n");
    EXPECT_EQ(Text(kType, List({Item(25, ""), BitmapItem({1})})), " 1\r\n");
    EXPECT_EQ(Text(kType, List({Item(25, std::string("H\0XYZ\0", 6)), BitmapItem({1})})), "H 1\r\n");
}

TEST_F(AttrIdBitmap, TheHeadHolds299CharactersAndOneItem298)
{
    const std::string longText(400, 'x');
    // A print's limit of 299 counts its terminator, the head's 300 bytes too.
    EXPECT_EQ(Filled("%s", {TextItem(longText)}), std::string(298, 'x') + " 1\r\n");
    EXPECT_EQ(Filled("%s", {TextItem(std::string(299, 'x'))}), std::string(298, 'x') + " 1\r\n");
    EXPECT_EQ(Filled("%s", {TextItem(std::string(298, 'x'))}), std::string(298, 'x') + " 1\r\n");
    EXPECT_EQ(Filled("%s%s", {TextItem(std::string(200, 'a')), TextItem(std::string(200, 'b'))}),
              std::string(200, 'a') + std::string(99, 'b') + " 1\r\n");
    EXPECT_EQ(Filled("%s%s%u", {TextItem(std::string(298, 'a')), TextItem("bc"), U32(7)}),
              std::string(298, 'a') + "b 1\r\n");
    EXPECT_EQ(Identifiers(std::string(299, 'h'), {1}), std::string(299, 'h') + " 1\r\n");
    // A template that does not fit: no overrun, whatever becomes of it.
    for (const size_t length : {300u, 301u, 1000u, 60000u}) {
        const Into into =
            FormatOutInto(Row(kType), List({TextItem(std::string(length, 'h')), BitmapItem({1})}), 1, 4096);
        EXPECT_EQ(into.out.code, DT_OK);
        EXPECT_TRUE(into.guardsIntact);
        EXPECT_LE(into.out.length, 304);
    }
}

TEST_F(AttrIdBitmap, ShortItemsAreNotReadBeyondTheirEnd)
{
    for (const std::string &item :
         {Item(2, ""), Item(4, ""), Item(4, "a"), Item(6, ""), Item(6, "abc"), Item(21, "abc"), Item(22, "abc"),
          Item(22, std::string(15, '\1')), Item(38, ""), Item(38, "abcd"), Item(38, std::string(20, '\0'))}) {
        for (const char *text : {"A %u B:", "A %s B:"}) {
            const Out out = FormatOut(kType, List({TextItem(text), BitmapItem({1}), item})); // the last of the list
            EXPECT_EQ(out.code, DT_OK);
            EXPECT_EQ(out.typeId, 25);
        }
    }
}

// ----------------------------------------------------------------------------------------------------------- contract

TEST_F(AttrIdBitmap, FormatOutByMode)
{
    const std::string list = List({TextItem("H"), BitmapItem({1})});
    for (const uint8_t mode : kAllModes) {
        SCOPED_TRACE(int{mode});
        host::TakeCounters();
        const Out out = FormatOut(kType, list, mode);
        const Into into = FormatOutInto(Row(kType), list, mode, 4096);
        if (mode == 0 || mode == 1 || mode == 5 || mode == 6) {
            EXPECT_EQ(out.code, DT_OK);
            EXPECT_EQ(out.typeId, 25);
            EXPECT_EQ(out.text, "H 1\r\n");
            EXPECT_EQ(out.length, 6);
            EXPECT_EQ(into.out.code, DT_OK);
            EXPECT_EQ(into.out.text, "H 1\r\n");
            EXPECT_TRUE(into.sameBuffer);
            EXPECT_TRUE(into.guardsIntact);
            continue;
        }
        const uint32_t code = mode == 2 || mode == 3 ? DT_OK : DT_ERR_MODE_UNSUPPORTED;
        EXPECT_EQ(out.code, code);
        EXPECT_EQ(out.typeId, kUntouched);
        EXPECT_EQ(out.length, kUntouched);
        EXPECT_FALSE(out.bufferSet);
        EXPECT_EQ(into.out.code, code);
        EXPECT_EQ(into.out.typeId, kUntouched);
        EXPECT_EQ(into.out.length, kUntouched);
        EXPECT_TRUE(into.sameBuffer);
        EXPECT_EQ(into.buffer, std::string(4096, '\xA5'));
        EXPECT_EQ(host::TakeCounters().allocations, 0u);
    }
}

TEST_F(AttrIdBitmap, FormatOutNeedsEveryPointerInEveryMode)
{
    const std::string list = Bytes(List({TextItem("H"), BitmapItem({1})}));
    for (const uint8_t mode : kAllModes) {
        for (int missing = 0; missing < 5; ++missing) {
            SCOPED_TRACE("mode " + std::to_string(mode) + ", argument " + std::to_string(missing));
            const DataTypeRequest request{mode, Handle()};
            uint16_t typeId = kUntouched;
            uint16_t length = kUntouched;
            void *buffer = nullptr;
            EXPECT_EQ(Row(kType).FormatOut(missing == 0 ? nullptr : &request, 290, 32,
                                           missing == 1 ? nullptr : list.data(), missing == 2 ? nullptr : &typeId,
                                           missing == 3 ? nullptr : &length, missing == 4 ? nullptr : &buffer),
                      DT_ERR_NULL_PTR);
            EXPECT_EQ(typeId, kUntouched);
            EXPECT_EQ(length, kUntouched);
            EXPECT_EQ(buffer, nullptr);
        }
    }
}

TEST_F(AttrIdBitmap, TheLengthArgumentIsNotLookedAt)
{
    const std::string list = List({TextItem("H"), BitmapItem({1})});
    for (const uint32_t length : {0u, 1u, 32u, 44u, 100000u}) {
        EXPECT_EQ(FormatOut(Row(kType), list, 1, length).text, "H 1\r\n");
    }
}

TEST_F(AttrIdBitmap, ScratchIsAlwaysGivenBack)
{
    const std::string list = List({TextItem("H %u"), BitmapItem({1}), U8(7)});
    host::TakeCounters();
    EXPECT_EQ(FormatOut(kType, list).code, DT_OK);
    const host::Counters counters = host::TakeCounters();
    EXPECT_EQ(counters.allocations, 3u); // the result and two scratch buffers
    EXPECT_EQ(counters.plainAllocations, 0u);
    EXPECT_EQ(counters.frees, 2u);
    EXPECT_EQ(host::HandleBlocks(Handle()), 1u);

    host::RecordReleases(true);
    host::TakeReleases();
    EXPECT_EQ(FormatOut(kType, list).code, DT_OK);
    const std::vector<host::Release> releases = host::TakeReleases();
    ASSERT_EQ(releases.size(), 2u);
    EXPECT_TRUE(releases[0].known && releases[1].known);

    host::ResetHandle(Handle());
    const Into into = FormatOutInto(Row(kType), list, 1, 4096);
    EXPECT_EQ(into.allocations, 2u);
    EXPECT_FALSE(into.released);
    EXPECT_EQ(host::HandleBlocks(Handle()), 0u);
}

TEST_F(AttrIdBitmap, EveryAllocationFailsInTurn)
{
    const std::string list = List({TextItem("H %u"), BitmapItem({1}), U8(7)});
    for (const uint8_t mode : kPrintingModes) {
        for (const bool onlyThatOne : {true, false}) {
            host::ResetHandle(Handle());
            host::SetFaults({.failAllocation = 1, .failAllAfter = !onlyThatOne});
            const Out out = FormatOut(kType, list, mode);
            EXPECT_EQ(out.code, DT_ERR_NO_MEMORY);
            EXPECT_EQ(out.typeId, 0);
            EXPECT_EQ(out.length, 0);
            EXPECT_FALSE(out.bufferSet);
            EXPECT_EQ(host::HandleBlocks(Handle()), 0u);
            for (const uint32_t scratch : {1u, 2u}) {
                SCOPED_TRACE(scratch);
                host::ResetHandle(Handle());
                host::SetFaults({.failAllocation = scratch + 1, .failAllAfter = !onlyThatOne});
                const Out failed = FormatOut(kType, list, mode);
                EXPECT_EQ(failed.code, DT_OK); // the building's code is not passed on
                EXPECT_EQ(failed.typeId, 0);
                EXPECT_EQ(failed.length, 0);
                EXPECT_TRUE(failed.bufferSet);
                EXPECT_EQ(host::HandleBlocks(Handle()), 1u);
                host::SetFaults({.failAllocation = scratch, .failAllAfter = !onlyThatOne});
                const Into into = FormatOutInto(Row(kType), list, mode, 4096);
                EXPECT_EQ(into.out.code, DT_OK);
                EXPECT_EQ(into.out.typeId, 0);
                EXPECT_EQ(into.out.length, 0);
                EXPECT_TRUE(into.sameBuffer);
                EXPECT_EQ(into.buffer[0], '\0');
                EXPECT_FALSE(into.released);
                EXPECT_EQ(host::HandleBlocks(Handle()), 1u);
            }
        }
    }
}

TEST_F(AttrIdBitmap, AFailingPrintOrCopyIsNoFailure)
{
    const std::string list = List({TextItem("H %u ###;"), BitmapItem({1, 2, 4}), U8(7)});
    for (uint32_t call = 1; call <= 12; ++call) {
        for (const host::Faults &faults : {host::Faults{.failPrint = call}, host::Faults{.failCopy = call}}) {
            host::ResetHandle(Handle());
            host::SetFaults(faults);
            const Out out = FormatOut(kType, list);
            host::SetFaults({});
            EXPECT_EQ(out.code, DT_OK) << call;
            EXPECT_EQ(host::HandleBlocks(Handle()), 1u) << call;
        }
    }
}

constexpr const char *kCounting = "0102030405060708090a0b0c0d0e0f101112131415161718191a1b1c1d1e1fff";
const std::string kAll = "{1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17,18,19,20,21,22,23,24,25,26,27,28,29,30,31,255";

TypeCase Case()
{
    return {
        .row = {290, 32, 26, "ATTRIDBITMAP", nullptr, &SYSDT_AttrIdBitmapFormatOut, &SYSDT_AttrIdBitmapCheck,
                &SYSDT_AttrIdBitmapHelp, &SYSDT_AttrIdBitmapCompare, nullptr, &SYSDT_AttrIdBitmapLuaSet,
                &SYSDT_AttrIdBitmapLuaGet, &SYSDT_AttrIdBitmapEndian},
        // FormatOut takes scratch memory and has its own sweeps above.
        .contract = {.value = Padded("01", 32), .helpModes = "-H----H-", .helpText = "INTEGER", .textSize = 4096},
        .compares =
            {
                {Padded("01", 32), Padded("02", 32), -1},
                {Padded("02", 32), Padded("01", 32), 1},
                {Padded("80", 32), Padded("7f", 32), 1},
                {Padded("0001", 32), Padded("00", 32), 1},
                {Padded("80", 32), Padded("80", 32), 0},
                {"01020304", "01020305", 0, 3}, // `length` bytes
                {"01020304", "01020305", -1},
                {"01020305", "01020304", 1},
            },
        .swaps = {{kCounting, kCounting}}, // Endian does nothing
        .luaSets = {{kCounting, kAll + "}"}},
        .luaGets =
            {
                {kAll + "}", DT_OK, kCounting, 0},
                {kAll + ",33}", DT_OK, kCounting, 0},
                {kAll + ", extra = 1}", DT_OK, kCounting, 0},
                // the low 8 bits of whatever number it is
                {"{256,257,511,-1,'5',4294967295" + kAll.substr(12) + "}", DT_OK,
                 "0001ffff05ff" + std::string(kCounting).substr(12), 0},
                {"nil", DT_ERR_INVALID_PARAM, Unwritten(32), 1},
                {"7", DT_ERR_INVALID_PARAM, Unwritten(32), 1},
                {"'x'", DT_ERR_INVALID_PARAM, Unwritten(32), 1},
                {"true", DT_ERR_INVALID_PARAM, Unwritten(32), 1},
            },
        .luaArrays = {{"", "", 32, 0, 2, 0}},
    };
}

[[maybe_unused]] const bool kStated = StateTests<AttrIdBitmap>("AttrIdBitmap", Case());

} // namespace
} // namespace bgp::test
