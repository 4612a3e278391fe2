#include "support/refusals.h"

#include <cstring>
#include <set>

namespace bgp::test {

namespace {

constexpr uint32_t kBolPrefix = 279;

std::string_view OrEmpty(const char *text)
{
    return text == nullptr ? std::string_view() : text;
}

std::string Words(const BgpReason &reason)
{
    std::string words;
    for (uint32_t i = 0; const char *word = Bgp_ExpectedWord(&reason, i); ++i) {
        words += (i == 0 ? "" : " ") + std::string(word);
    }
    return words;
}

std::string Describe(const Refused &row)
{
    return std::string(row.rule) + " " + std::to_string(row.offset) + "+" + std::to_string(row.length) + " limit " +
           std::to_string(row.limit) + " what '" + std::string(row.what) + "' where '" + std::string(row.where) +
           "' element " + std::to_string(row.element) + " expected '" + std::string(row.expected) + "'";
}

// Every rule of the facts is broken by a row, and no row breaks another rule.
void CheckRulesAreWalked(const BgpTypeFacts &facts, std::span<const Refused> rows)
{
    std::set<std::string> given;
    for (const Refused &row : rows) {
        given.emplace(row.rule);
    }
    std::set<std::string> declared;
    for (uint32_t i = 0; i < facts.RuleCount; ++i) {
        declared.emplace(facts.Rules[i]->Name);
        EXPECT_TRUE(given.contains(facts.Rules[i]->Name)) << facts.Name << ": no text breaks " << facts.Rules[i]->Name;
    }
    for (const std::string &rule : given) {
        EXPECT_TRUE(declared.contains(rule) || rule == "mode" || rule == "memory") << facts.Name << ": " << rule;
    }
    EXPECT_FALSE(rows.empty()) << facts.Name;
}

void CheckPlace(const BgpReason &reason, std::string_view text)
{
    EXPECT_LE(reason.Offset, text.size()) << text;
    EXPECT_LE(reason.Offset + reason.Length, text.size()) << text;
}

} // namespace

std::string Describe(const BgpReason &reason)
{
    return Describe(Refused{{},
                            reason.Rule == nullptr ? "none" : reason.Rule->Name,
                            reason.Offset,
                            reason.Length,
                            reason.Limit,
                            OrEmpty(reason.What),
                            OrEmpty(reason.Where),
                            reason.Element,
                            0,
                            Words(reason)});
}

BgpRefusal Explained(std::string_view type, std::string_view text, uint8_t mode)
{
    const DataTypeRequest request{mode, Handle()};
    const std::string kept(text);
    std::string copy(text);
    BgpRefusal refusal;
    const uint32_t code = Bgp_ExplainRefusal(&request, Row(type).TypeId, copy.c_str(), &refusal);
    EXPECT_EQ(code, refusal.Reason.Code) << type << " '" << text << "'";
    EXPECT_EQ(copy, kept) << type;
    return refusal;
}

std::string Sentence(std::string_view type, std::string_view text)
{
    const BgpRefusal refusal = Explained(type, text);
    char said[200];
    const uint32_t length = Bgp_SayReason(&refusal.Reason, said, sizeof said);
    EXPECT_EQ(length, std::strlen(said)) << type << " '" << text << "'";
    return said;
}

void CheckRefusals(std::string_view type, std::span<const Refused> rows)
{
    const BgpTypeFacts *facts = Bgp_DescribeType(Row(type).TypeId);
    ASSERT_NE(facts, nullptr) << type;
    for (const Refused &row : rows) {
        const BgpRefusal refusal = Explained(type, row.text, row.mode);
        EXPECT_EQ(Describe(refusal.Reason), Describe(row)) << type << " '" << row.text << "'";
        EXPECT_EQ(refusal.Reason.Code, CodeOf(type, row.text, row.mode)) << type << " '" << row.text << "'";
        EXPECT_NE(refusal.Reason.Code, DT_OK) << type << " '" << row.text << "'";
        CheckPlace(refusal.Reason, row.text);
    }
    CheckRulesAreWalked(*facts, rows);
}

void CheckSubTypeRefusals(uint32_t subType, std::span<const Refused> rows)
{
    const BgpTypeFacts *facts = Bgp_DescribeSubType(kBolPrefix, subType);
    ASSERT_NE(facts, nullptr) << subType;
    const DataTypeDescriptor &row = Row(g_astBOL_PREFIX_ProcTable[subType]);
    for (const Refused &refused : rows) {
        const BgpRefusal refusal = Explained("BOLPREFIX", refused.text, refused.mode);
        ASSERT_GT(refusal.SubTypeCount, subType);
        const BgpReason &reason = refusal.SubTypes[subType];
        EXPECT_EQ(Describe(reason), Describe(refused)) << facts->Name << " '" << refused.text << "'";
        EXPECT_EQ(reason.Code, FormatIn(row, refused.text, refused.mode).code) << facts->Name << refused.text;
        EXPECT_NE(reason.Code, DT_OK) << facts->Name << " '" << refused.text << "'";
        CheckPlace(reason, refused.text);
    }
    CheckRulesAreWalked(*facts, rows);
}

void CheckAccepted(std::string_view type, std::span<const std::string_view> texts, uint8_t mode)
{
    EXPECT_FALSE(texts.empty());
    for (const std::string_view text : texts) {
        const BgpRefusal refusal = Explained(type, text, mode);
        EXPECT_EQ(Describe(refusal.Reason), Describe(BgpReason{})) << type << " '" << text << "'";
        EXPECT_EQ(refusal.Reason.Code, DT_OK) << type << " '" << text << "'";
        EXPECT_EQ(CodeOf(type, text, mode), DT_OK) << type << " '" << text << "'";
    }
}

} // namespace bgp::test
