// Texts that grow: what is put, formatted or printed stands at the end, and is cut where the room ends.
#include "host/format.h"

#include "support/harness.h"

#include <cstring>

namespace bgp::test {
namespace {

class Growing : public PlugIn {};

// So many bytes to grow in, and guards around them.
struct Room {
    explicit Room(uint32_t bytesOfRoom) : size(bytesOfRoom)
    {
        std::memset(bytes, kMark, sizeof bytes);
        text = GrowIn(bytes + kGuard, size);
    }
    Room(const Room &) = delete;
    Room &operator=(const Room &) = delete;
    bool IsIntact() const
    {
        bool intact = true;
        for (uint32_t i = 0; i < sizeof bytes; ++i) {
            intact = intact && ((i >= kGuard && i < kGuard + size) || bytes[i] == kMark);
        }
        return intact;
    }

    static constexpr uint32_t kGuard = 8;
    static constexpr char kMark = '\x5a';
    char bytes[128];
    uint32_t size;
    GrowingText text;
};

std::string TextOf(const Room &room)
{
    EXPECT_TRUE(room.IsIntact());
    return std::string(room.text.start, Length(room.text));
}

TEST_F(Growing, PiecesFollowEachOther)
{
    Room room(64);
    EXPECT_EQ(Length(room.text), 0u);
    Put(room.text, 'a');
    Put(room.text, "bc");
    Put(room.text, bgp::Text{"defg", 2});
    PutTimes(room.text, '-', 3);
    EXPECT_EQ(TextOf(room), "abcde---");
    bgp::Format(room.text, "%u.%x.%02x.%s.%c.%llu", {10, 255, 7, "x", 'y', 18446744073709551615u});
    EXPECT_STREQ(room.text.start, "abcde---10.ff.07.x.y.18446744073709551615");
    EXPECT_TRUE(bgp::Print<"/%u">(room.text, 32u));
    EXPECT_STREQ(room.text.start, "abcde---10.ff.07.x.y.18446744073709551615/32");
    EXPECT_EQ(TextOf(room), room.text.start);
}

TEST_F(Growing, WhatDoesNotFitIsCut)
{
    const struct {
        const char *what;
        void (*grow)(GrowingText &text);
        std::string whole;
    } rows[] = {
        {"a character", [](GrowingText &text) { Put(text, 'c'); }, "c"},
        {"words", [](GrowingText &text) { Put(text, "words"); }, "words"},
        {"a piece",
         [](GrowingText &text) {
             Put(text, bgp::Text{"pieces", 5});
         },
         "piece"},
        {"many", [](GrowingText &text) { PutTimes(text, '0', 9); }, "000000000"},
        {"numbers",
         [](GrowingText &text) {
             Format(text, "%u:%u", {4294967295, 12});
         },
         "4294967295:12"},
        {"hex",
         [](GrowingText &text) {
             Format(text, "%x-%02x", {0xABCDEF, 5});
         },
         "abcdef-05"},
        {"printed", [](GrowingText &text) { EXPECT_TRUE((bgp::Print<"%u/%s">(text, 7u, "x"))); }, "7/x"},
    };
    for (const auto &row : rows) {
        for (uint32_t size = 1; size <= row.whole.size() + 2; ++size) {
            SCOPED_TRACE(std::string(row.what) + " in " + std::to_string(size));
            Room room(size);
            row.grow(room.text);
            EXPECT_EQ(TextOf(room), row.whole.substr(0, size - 1));
            row.grow(room.text); // a text that is full stays as it is
            EXPECT_EQ(TextOf(room), (row.whole + row.whole).substr(0, size - 1));
        }
    }
}

TEST_F(Growing, AHostThatRefusesToPrintLeavesTheText)
{
    Room room(32);
    Put(room.text, "kept");
    host::SetFaults({.failPrint = 1});
    EXPECT_FALSE(bgp::Print<"%u">(room.text, 1u));
    host::SetFaults({});
    EXPECT_EQ(TextOf(room), "kept");
    room.text.at = room.text.end + 1; // as a host would make it that counts more than it wrote
    EXPECT_FALSE(bgp::Print<"%u">(room.text, 1u));
}

TEST_F(Growing, IntoSoManyBytes)
{
    char buffer[8];
    const Argument arguments[] = {12345, "6789"};
    EXPECT_EQ(bgp::Format(buffer, sizeof buffer, "%u%s", arguments), 7u);
    EXPECT_STREQ(buffer, "1234567");
    EXPECT_EQ(bgp::Format(buffer, 1, "%u%s", arguments), 0u);
    EXPECT_STREQ(buffer, "");
}

} // namespace
} // namespace bgp::test
