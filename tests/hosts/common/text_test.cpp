// Text services, inside and outside of what the host accepts.
#include "bgp_host_services.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace {

TEST(Text, TrimsSpacesAndTabsAlone)
{
    struct Row {
        const char *text, *trimmed;
    };
    for (const Row &row : {Row{"abc", "abc"},
                           {"  abc", "abc"},
                           {"abc \t", "abc"},
                           {"\t a b \t", "a b"},
                           {"", ""},
                           {" \t ", ""},
                           {"\nabc\n", "\nabc\n"},
                           {"\ra ", "\ra"}}) {
        std::string bTrimmed = row.text, strTrimmed = row.text;
        EXPECT_STREQ(SYSDT_BTrim(bTrimmed.data(), nullptr), row.trimmed);
        EXPECT_EQ(QOV_StrTrim(strTrimmed.data()), strTrimmed.data());
        EXPECT_STREQ(strTrimmed.c_str(), row.trimmed);
    }
    EXPECT_EQ(SYSDT_BTrim(nullptr, nullptr), nullptr);
    EXPECT_EQ(QOV_StrTrim(nullptr), nullptr);
}

TEST(Text, BlankInside)
{
    const auto flagOf = [](const char *text) {
        uint32_t flag = 7;
        NCF_IsSpaceInString(text, &flag);
        return flag;
    };
    EXPECT_EQ(flagOf("a b"), 1u);
    EXPECT_EQ(flagOf("ab\t"), 1u);
    EXPECT_EQ(flagOf("ab"), 0u);
    EXPECT_EQ(flagOf("a\nb"), 0u);
    EXPECT_EQ(flagOf(""), 0u);
    EXPECT_EQ(flagOf(nullptr), 0u);
    NCF_IsSpaceInString("a b", nullptr);
}

TEST(Text, Searches)
{
    const char *text = "a:b:c";
    EXPECT_EQ(QOV_StrLen(text), 5u);
    EXPECT_EQ(QOV_StrLen(""), 0u);
    EXPECT_EQ(QOV_StrLen(nullptr), 0u);
    EXPECT_EQ(QOV_StrChr(text, ':'), text + 1);
    EXPECT_EQ(QOV_StrRChr(text, ':'), text + 3);
    EXPECT_EQ(QOV_StrChr(text, 'x'), nullptr);
    EXPECT_EQ(QOV_StrRChr(text, 'x'), nullptr);
    EXPECT_EQ(QOV_StrStr(text, "b:"), text + 2);
    EXPECT_EQ(QOV_StrStr(text, "bc"), nullptr);
    EXPECT_EQ(QOV_StrChr(nullptr, ':'), nullptr);
    EXPECT_EQ(QOV_StrRChr(nullptr, ':'), nullptr);
    EXPECT_EQ(QOV_StrStr(nullptr, "a"), nullptr);
    EXPECT_EQ(QOV_StrStr(text, nullptr), nullptr);
    EXPECT_EQ(QOV_MemCmp("abc", "abd", 2), 0);
    EXPECT_LT(QOV_MemCmp("abc", "abd", 3), 0);
    EXPECT_GT(QOV_MemCmp("\x80", "\x7f", 1), 0);
    EXPECT_EQ(QOV_MemCmp(nullptr, nullptr, 3), 0);
    EXPECT_LT(QOV_MemCmp(nullptr, "a", 1), 0);
}

TEST(Text, Case)
{
    char text[] = "AbZ\xC4@[";
    QOV_lowercase(text);
    EXPECT_STREQ(text, "abz\xC4@[");
    QOV_lowercase(nullptr);
    char lower[8];
    EXPECT_EQ(SMP_ToLowerString("QRS9", lower), 0u);
    EXPECT_STREQ(lower, "qrs9");
    EXPECT_NE(SMP_ToLowerString(nullptr, lower), 0u);
    EXPECT_NE(SMP_ToLowerString("x", nullptr), 0u);
}

} // namespace
