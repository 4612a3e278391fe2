#include "refusal.h"

#include <algorithm>

namespace bgp::explain {

namespace {

// Rules that say something of the call, so that no place of the text has to do with them.
constexpr std::string_view kPlaceless[] = {"mode", "not-typed"};

std::string OrEmpty(const char *text)
{
    return text == nullptr ? "" : text;
}

std::string Sentence(const PlugIn &plugIn, const BgpReason &reason)
{
    std::string words(plugIn.sayReason(&reason, nullptr, 0) + 1, '\0');
    plugIn.sayReason(&reason, words.data(), static_cast<uint32_t>(words.size()));
    words.pop_back(); // the terminator
    return words;
}

Reason Copied(const PlugIn &plugIn, const BgpReason &reason)
{
    Reason copy;
    copy.code = reason.Code;
    if (reason.Rule == nullptr) {
        return copy;
    }
    copy.rule = reason.Rule->Name;
    copy.words = Sentence(plugIn, reason);
    copy.what = OrEmpty(reason.What);
    copy.where = OrEmpty(reason.Where);
    copy.limit = reason.Limit;
    copy.offset = reason.Offset;
    copy.length = reason.Length;
    copy.item = reason.Element;
    copy.placed = std::find(std::begin(kPlaceless), std::end(kPlaceless), copy.rule) == std::end(kPlaceless);
    for (uint32_t i = 0; const char *word = plugIn.expectedWord(&reason, i); ++i) {
        copy.expected.emplace_back(word);
    }
    return copy;
}

std::vector<Answer> Gathered(const PlugIn &plugIn, uint32_t typeId, const BgpRefusal &refusal)
{
    std::vector<Answer> answers;
    for (uint32_t i = 0; i < refusal.SubTypeCount; ++i) {
        const std::string name = plugIn.describeSubType(typeId, i)->Name;
        const Reason reason = Copied(plugIn, refusal.SubTypes[i]);
        const auto same = std::find_if(answers.begin(), answers.end(),
                                       [&reason](const Answer &answer) { return answer.reason == reason; });
        if (same == answers.end()) {
            answers.push_back({{name}, reason});
        } else {
            same->subTypes.push_back(name);
        }
    }
    return answers;
}

} // namespace

Refusal ExplainRefusal(const PlugIn &plugIn, const BgpTypeFacts &type, const DataTypeRequest &request,
                       const std::string &text)
{
    BgpRefusal told;
    plugIn.explainRefusal(&request, type.TypeId, text.c_str(), &told);
    Refusal refusal{Copied(plugIn, told.Reason), "", {}};
    if (told.SubTypeCount < 2) {
        return refusal;
    }
    refusal.closest = plugIn.describeSubType(type.TypeId, told.Closest)->Name;
    refusal.answers = Gathered(plugIn, type.TypeId, told);
    const auto taker = std::find_if(refusal.answers.begin(), refusal.answers.end(),
                                    [](const Answer &answer) { return answer.reason.code == DT_OK; });
    if (taker != refusal.answers.end()) {
        taker->subTypes = {refusal.closest};
        refusal.answers.erase(taker + 1, refusal.answers.end());
    }
    return refusal;
}

} // namespace bgp::explain
