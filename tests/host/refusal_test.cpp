// Reasons: the place that a refusal names, the sentence that its rule makes, and the words that may stand there.
#include "host/refusal.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string Sentence(const BgpReason &reason, size_t size = 200)
{
    std::string buffer(size + 1, '#');
    const uint32_t length = Bgp_SayReason(&reason, buffer.data(), static_cast<uint32_t>(size));
    EXPECT_EQ(buffer[size], '#');
    const std::string said = buffer.c_str();
    EXPECT_EQ(said.size(), length < size ? length : size - 1);
    return said;
}

TEST(Sentence, PutsInWhatTheRuleAsksFor)
{
    struct Row {
        const char *words, *what, *where;
        uint64_t limit;
        const char *said;
    };
    static constexpr Row kRows[] = {
        {"a digit is expected here", "the OUI", nullptr, 7, "a digit is expected here"},
        {"{what} is at most {limit}", "the OUI", nullptr, 16777215, "the OUI is at most 16777215"},
        {"{what} is at most {hex}", "the OUI", nullptr, 16777215, "the OUI is at most ffffff"},
        {"{limit}/{hex}", nullptr, nullptr, 0, "0/0"},
        {"{limit}/{hex}", nullptr, nullptr, UINT64_MAX, "18446744073709551615/ffffffffffffffff"},
        {"{what} has at most {limit} characters", nullptr, nullptr, 21, "the text has at most 21 characters"},
        {"{what} is wrong", "the number", "in the middle", 0, "in the middle: the number is wrong"},
        {"{other} {what", "x", nullptr, 0, "{other} {what"},
    };
    for (const Row &row : kRows) {
        const BgpRule rule{"test", row.words, 0};
        BgpReason reason{};
        reason.Rule = &rule;
        reason.What = row.what;
        reason.Where = row.where;
        reason.Limit = row.limit;
        EXPECT_EQ(Sentence(reason), row.said);
    }
}

TEST(Sentence, IsCutToTheBuffer)
{
    const BgpRule rule{"test", "{what} is at most {limit}", 0};
    BgpReason reason{};
    reason.Rule = &rule;
    reason.What = "the OUI";
    reason.Limit = 255;
    const std::string whole = "the OUI is at most 255";
    EXPECT_EQ(Bgp_SayReason(&reason, nullptr, 0), whole.size());
    for (size_t size = 1; size < whole.size() + 3; ++size) {
        EXPECT_EQ(Sentence(reason, size), whole.substr(0, size - 1));
    }
}

TEST(Sentence, OfNoReasonIsEmpty)
{
    EXPECT_EQ(Sentence(BgpReason{}), "");
    char buffer[4] = "###";
    EXPECT_EQ(Bgp_SayReason(nullptr, buffer, sizeof buffer), 0u);
    EXPECT_STREQ(buffer, "");
}

TEST(ExpectedWord, TellsEachWordOfTheRowsOnce)
{
    struct Row {
        const char *word;
        int other;
    };
    static constexpr Row kRows[] = {{"a", 1}, {"b", 2}, {"b", 3}, {"b", 4}, {"c", 5}};
    BgpReason reason{};
    reason.Expected = {kRows, 5, sizeof(Row)};
    EXPECT_STREQ(Bgp_ExpectedWord(&reason, 0), "a");
    EXPECT_STREQ(Bgp_ExpectedWord(&reason, 1), "b");
    EXPECT_STREQ(Bgp_ExpectedWord(&reason, 2), "c");
    EXPECT_EQ(Bgp_ExpectedWord(&reason, 3), nullptr);
    EXPECT_EQ(Bgp_ExpectedWord(nullptr, 0), nullptr);
    EXPECT_EQ(Bgp_ExpectedWord(&reason, UINT32_MAX), nullptr);
    reason.Expected = {};
    EXPECT_EQ(Bgp_ExpectedWord(&reason, 0), nullptr);
}

// ------------------------------------------------------------------------------------------------------------ places

constexpr BgpRule kRule{"rule", "", 0};

TEST(Place, IsCountedFromTheStartOfTheCallersText)
{
    const char *text = "0123456789";
    BgpReason reason{};
    bgp::Why why{&reason, text, 0};
    EXPECT_FALSE(bgp::Refuse(&why, {text + 3, 2}, kRule, 7, "it"));
    EXPECT_EQ(reason.Rule, &kRule);
    EXPECT_EQ(reason.Offset, 3u);
    EXPECT_EQ(reason.Length, 2u);
    EXPECT_EQ(reason.Limit, 7u);
    EXPECT_STREQ(reason.What, "it");
    EXPECT_EQ(reason.Expected.Count, 0u);
    // What is refused later takes the place of what was refused before.
    const char *const kWords[] = {"a", "b"};
    EXPECT_FALSE(bgp::RefuseChoice(&why, {text + 10, 0}, kRule, bgp::Choices(kWords)));
    EXPECT_EQ(reason.Offset, 10u);
    EXPECT_EQ(reason.Length, 0u);
    EXPECT_EQ(reason.Limit, 0u);
    EXPECT_EQ(reason.What, nullptr);
    EXPECT_STREQ(Bgp_ExpectedWord(&reason, 1), "b");
}

TEST(Place, OfACopyIsThatOfItsOriginal)
{
    const char *text = "0123456789";
    const char *copy = "34567";
    const char *copyOfCopy = "56";
    BgpReason reason{};
    bgp::Why why{&reason, text, 0};
    const bgp::Why before = bgp::Moved(&why, {text + 3, 5}, copy);
    bgp::Refuse(&why, {copy + 1, 1}, kRule);
    EXPECT_EQ(reason.Offset, 4u);
    const bgp::Why between = bgp::Moved(&why, {copy + 2, 2}, copyOfCopy);
    bgp::Refuse(&why, {copyOfCopy + 1, 1}, kRule);
    EXPECT_EQ(reason.Offset, 6u);
    bgp::GoBack(&why, between);
    bgp::Refuse(&why, {copy + 4, 1}, kRule);
    EXPECT_EQ(reason.Offset, 7u);
    bgp::GoBack(&why, before);
    bgp::Refuse(&why, {text + 9, 1}, kRule);
    EXPECT_EQ(reason.Offset, 9u);
}

TEST(Place, HasAPartAndAnItem)
{
    const char *text = "01";
    BgpReason reason{};
    bgp::Why why{&reason, text, 0};
    bgp::StandsIn(&why, "the part");
    bgp::StandsInElement(&why, 4);
    bgp::Refuse(&why, {text, 1}, kRule);
    EXPECT_STREQ(reason.Where, "the part");
    EXPECT_EQ(reason.Element, 4u);
}

TEST(Place, IsNotAskedForByEveryCaller)
{
    const char *text = "01";
    EXPECT_FALSE(bgp::Refuse(nullptr, {text, 1}, kRule));
    EXPECT_FALSE(bgp::RefuseChoice(nullptr, {text, 1}, kRule, {}));
    const bgp::Why kept = bgp::Moved(nullptr, {text, 1}, text);
    bgp::GoBack(nullptr, kept);
    bgp::StandsIn(nullptr, "");
    bgp::StandsInElement(nullptr, 1);
}

} // namespace
