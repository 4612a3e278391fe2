#include "report.h"

#include "values.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdio>

namespace bgpdt {

using Json = nlohmann::ordered_json;

namespace {

// A byte that does not stand for itself.
char *PutEscape(char *at, char character)
{
    constexpr std::string_view kNamed = "\r\n\t\\", kNames = "rnt\\";
    constexpr char kDigits[] = "0123456789abcdef";
    *at++ = '\\';
    if (const size_t named = kNamed.find(character); named != kNamed.npos) {
        *at++ = kNames[named];
        return at;
    }
    *at++ = 'x';
    *at++ = kDigits[static_cast<uint8_t>(character) >> 4];
    *at++ = kDigits[static_cast<uint8_t>(character) & 15];
    return at;
}

} // namespace

void PutEscaped(Sink &sink, std::string_view text)
{
    constexpr size_t kLongestEscape = 4;
    char *at = sink.Room(text.size() * kLongestEscape);
    for (const char character : text) {
        if (character >= 0x20 && character <= 0x7e && character != '\\') {
            *at++ = character;
        } else {
            at = PutEscape(at, character);
        }
    }
    sink.End(at);
}

std::string Escaped(std::string_view text)
{
    Sink sink;
    PutEscaped(sink, text);
    return std::string(sink.Text());
}

std::string Dumped(const Json &json, int indent)
{
    return json.dump(indent, ' ', true, Json::error_handler_t::replace);
}

// ------------------------------------------------------------------------------------------------------------ in words

namespace {

std::string Shortened(std::string_view text)
{
    constexpr size_t kShown = 120;
    return text.size() <= kShown ? Escaped(text) : Escaped(text.substr(0, kShown)) + "...";
}

std::string Joined(const std::vector<std::string> &words, const char *beforeLast)
{
    std::string text;
    for (size_t i = 0; i < words.size(); ++i) {
        text += (i == 0 ? "" : i + 1 == words.size() ? beforeLast : ", ") + words[i];
    }
    return text;
}

std::string Sentence(const explain::Reason &reason)
{
    return (reason.item == 0 ? "" : "item " + std::to_string(reason.item) + ": ") + reason.words;
}

// The words that may stand there; where the rule is about the text as a whole, what the type's help says in general.
std::string Expected(const explain::Reason &reason, std::string_view text, const std::string &inGeneral)
{
    const bool whole = !reason.placed || reason.length == text.size();
    const std::string expected = !reason.expected.empty() ? Joined(reason.expected, " or ") : whole ? inGeneral : "";
    return expected.empty() ? "" : "; expected " + expected;
}

} // namespace

std::string Headline(std::string_view type, std::string_view text, const Refused &refused)
{
    const explain::Reason &reason = refused.why.reason;
    std::string words = refused.meaning;
    if (!reason.rule.empty()) {
        const bool oneOfMany = !refused.why.closest.empty() && reason.placed;
        words = (oneOfMany ? refused.why.closest + " came closest: " : "") + Sentence(reason);
    }
    return Escaped(type) + " \"" + Shortened(text) +
           "\" refused: " + (words.empty() ? refused.error : words + " (" + refused.error + ")") +
           Expected(reason, text, refused.expected);
}

std::vector<std::string> Marked(const std::string &text, const explain::Reason &reason)
{
    constexpr size_t kBytesBefore = 40, kBytesShown = 76;
    if (!reason.placed || reason.offset > text.size()) {
        return {};
    }
    const bool fits = text.size() <= kBytesShown || reason.offset <= kBytesBefore;
    const size_t from = fits ? 0 : reason.offset - kBytesBefore;
    const size_t to = std::min(text.size(), from + kBytesShown);
    const auto piece = [&text](size_t begin, size_t end) { return Escaped(text.substr(begin, end - begin)); };
    const std::string before = (from == 0 ? "" : "...") + piece(from, reason.offset);
    const size_t width = piece(reason.offset, std::min(to, reason.offset + reason.length)).size();
    return {before + piece(reason.offset, to) + (to == text.size() ? "" : "..."),
            std::string(before.size(), ' ') + '^' + std::string(width < 2 ? 0 : width - 1, '~')};
}

std::vector<std::string> AnswerLines(const std::vector<explain::Answer> &answers)
{
    std::vector<std::string> lines;
    for (const auto &[subTypes, reason] : answers) {
        const std::string place = reason.placed ? " (column " + std::to_string(reason.offset + 1) + ")" : "";
        lines.push_back(
            Joined(subTypes, ", ") + ": " +
            (reason.code == DT_OK ? "takes the text" : Sentence(reason) + place + Expected(reason, "", "")));
    }
    return lines;
}

// ------------------------------------------------------------------------------------------------------------- in JSON

namespace {

Json OrNull(const std::string &text)
{
    return text.empty() ? Json(nullptr) : Json(text);
}

} // namespace

Json ToJson(const explain::Reason &reason)
{
    if (reason.rule.empty()) {
        return nullptr;
    }
    return {{"rule", reason.rule},         {"words", reason.words},
            {"what", OrNull(reason.what)}, {"where", OrNull(reason.where)},
            {"limit", reason.limit},       {"offset", reason.offset},
            {"length", reason.length},     {"item", reason.item == 0 ? Json(nullptr) : Json(reason.item)},
            {"expected", reason.expected}};
}

Json ToJson(const std::vector<explain::Answer> &answers)
{
    Json json = Json::array();
    for (const auto &[subTypes, reason] : answers) {
        json.push_back({{"subTypes", subTypes}, {"code", reason.code}, {"reason", ToJson(reason)}});
    }
    return json;
}

} // namespace bgpdt
