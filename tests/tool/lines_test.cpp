// Blocks of lines, from a pipe that is written in pieces of all sizes.
#include "tool/lines.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <random>
#include <thread>
#include <unistd.h>

namespace bgpdt {
namespace {

struct Seen {
    uint64_t number;
    std::string text;
    bool cut;
    bool operator==(const Seen &) const = default;
};

void Write(int file, std::string_view bytes, size_t piece)
{
    while (!bytes.empty()) {
        const ssize_t count = write(file, bytes.data(), std::min(piece, bytes.size()));
        ASSERT_GT(count, 0);
        bytes.remove_prefix(static_cast<size_t>(count));
    }
    close(file);
}

// What Blocks makes of the bytes when they come in such pieces; no block may be larger than it should.
std::vector<Seen> Read(const std::string &bytes, size_t piece = SIZE_MAX)
{
    int ends[2];
    EXPECT_EQ(pipe(ends), 0);
    std::thread writer(Write, ends[1], std::string_view(bytes), piece);
    std::vector<Seen> seen;
    Blocks blocks(ends[0]);
    Block block;
    while (blocks.Next(block)) {
        EXPECT_LE(block.bytes.size(), 2 * kLongestLine);
        EXPECT_LE(block.ends.size(), Blocks::kMostLines);
        ForEachLine(block, [&seen](const Line &line) {
            seen.push_back({line.number, std::string(line.text), line.cut});
            EXPECT_TRUE(line.mayHaveNul || line.text.find('\0') == line.text.npos);
        });
    }
    EXPECT_EQ(blocks.Error(), 0);
    writer.join();
    close(ends[0]);
    return seen;
}

TEST(Lines, EndInEitherWayOrWithTheFile)
{
    EXPECT_EQ(Read(""), std::vector<Seen>{});
    EXPECT_EQ(Read("\n"), (std::vector<Seen>{{1, "", false}}));
    EXPECT_EQ(Read("a\nb\r\n\r\n\rc\r"),
              (std::vector<Seen>{{1, "a", false}, {2, "b", false}, {3, "", false}, {4, "\rc", false}}));
    EXPECT_EQ(Read("a\n\nb"), (std::vector<Seen>{{1, "a", false}, {2, "", false}, {3, "b", false}}));
    EXPECT_EQ(Read("a\r\r\n"), (std::vector<Seen>{{1, "a\r", false}}));
    EXPECT_EQ(Read(std::string("a\0b\n", 4)), (std::vector<Seen>{{1, std::string("a\0b", 3), false}}));
}

TEST(Lines, AreCutBehindTheLongest)
{
    const std::string longest(kLongestLine, 'x');
    for (const char *end : {"", "\n", "\r\n"}) {
        for (const size_t piece : {size_t{1000}, size_t{65536}, size_t{65537}, SIZE_MAX}) {
            EXPECT_EQ(Read("a\n" + longest + end, piece), (std::vector<Seen>{{1, "a", false}, {2, longest, false}}));
            EXPECT_EQ(Read("a\n" + longest + 'y' + end, piece),
                      (std::vector<Seen>{{1, "a", false}, {2, longest, true}}));
            EXPECT_EQ(Read("a\n" + longest + longest + longest + end, piece),
                      (std::vector<Seen>{{1, "a", false}, {2, longest, true}}));
        }
    }
    EXPECT_EQ(Read(longest + "\r\r\nb\n"), (std::vector<Seen>{{1, longest, true}, {2, "b", false}}));
    EXPECT_EQ(Read(longest + "yz\n\nb\n"), (std::vector<Seen>{{1, longest, true}, {2, "", false}, {3, "b", false}}));
}

// What the lines of a text are, by the simplest of means.
std::vector<Seen> Plainly(const std::string &bytes)
{
    std::vector<Seen> lines;
    for (size_t from = 0; from < bytes.size();) {
        const size_t end = std::min(bytes.find('\n', from), bytes.size());
        std::string text = bytes.substr(from, end - from);
        if (!text.empty() && text.back() == '\r') {
            text.pop_back();
        }
        lines.push_back({lines.size() + 1, text.substr(0, kLongestLine), text.size() > kLongestLine});
        from = end + 1;
    }
    return lines;
}

TEST(Lines, OfAnyText)
{
    std::mt19937 random(7);
    for (int round = 0; round < 60; ++round) {
        std::string bytes;
        const size_t many = round % 3 == 0 ? 20000 : 40;
        for (size_t count = random() % many; count != 0; --count) {
            const size_t longest = random() % 50 == 0 && many == 40 ? 200000 : 12;
            bytes += std::string(random() % longest, 'x') + (random() % 3 == 0 ? "\r" : "") + "\n";
        }
        bytes += std::string(random() % 3, 'z');
        ASSERT_EQ(Read(bytes, 1 + random() % 70000), Plainly(bytes)) << round;
    }
}

TEST(Lines, AFailureToReadIsToldBehindTheWholeLines)
{
    Blocks closed(-1);
    Block block;
    EXPECT_FALSE(closed.Next(block));
    EXPECT_EQ(closed.Error(), EBADF);
    const int folder = open("/", O_RDONLY);
    Blocks unreadable(folder);
    EXPECT_FALSE(unreadable.Next(block));
    EXPECT_EQ(unreadable.Error(), EISDIR);
    close(folder);
}

} // namespace
} // namespace bgpdt
