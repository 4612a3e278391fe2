// How close a text comes to a sub-type is found by reading on: what the parser refuses is put right in a copy, and the
// copy is read. A number out of its range becomes the limit that it breaks, a stray character a digit, and what is
// missing is filled in.
#include "prefix/closest.h"

#include "host/bytes.h"
#include "host/format.h"
#include "prefix/scan.h"

namespace bgp {

namespace {

constexpr uint32_t kLongestDraft = 319; // of a longer text nothing is put right
constexpr uint32_t kMostMends = 16;
constexpr uint32_t kLongestWords = 20;  // of a number
constexpr uint32_t kWhole = UINT32_MAX; // the reach of a text that is taken once it is put right

struct Draft {
    char text[kLongestDraft + 1];
    uint32_t length;
};

// Puts the words where the reason tells of a piece.
bool Replace(Draft &draft, const BgpReason &reason, Text words)
{
    const uint32_t behind = reason.Offset + reason.Length;
    const uint32_t length = draft.length - reason.Length + words.length;
    if (behind > draft.length || length > kLongestDraft) {
        return false;
    }
    std::memmove(draft.text + reason.Offset + words.length, draft.text + behind, draft.length - behind + 1);
    std::memcpy(draft.text + reason.Offset, words.at, words.length);
    draft.length = length;
    return true;
}

// Of any other piece that is well formed the digits become zeros; if they are, the last one becomes another.
bool SetDigits(char *piece, uint32_t length)
{
    char *last = nullptr;
    bool changed = false;
    for (char *at = piece; at < piece + length; ++at) {
        if (IsHexDigit(*at)) {
            changed = changed || *at != '0';
            *at = '0';
            last = at;
        }
    }
    if (!changed && last != nullptr) {
        *last = '1';
    }
    return last != nullptr;
}

// A piece of which only the size is wrong.
bool MendSize(Draft &draft, const BgpReason &reason)
{
    if (reason.Rule == &kLeadingZero) {
        const char *const piece = draft.text + reason.Offset;
        uint32_t zeros = 0;
        while (zeros + 1 < reason.Length && piece[zeros] == '0') {
            ++zeros;
        }
        char kept[kLongestDraft];
        const uint32_t length = reason.Length - zeros;
        std::memcpy(kept, piece + zeros, length);
        return Replace(draft, reason, {kept, length});
    }
    if (reason.Rule == &kTooLarge || reason.Rule == &kTooSmall || reason.Rule == &kTooLargeHex) {
        char digits[kLongestWords + 1];
        GrowingText text = GrowIn(digits, sizeof digits);
        if (reason.Rule == &kTooLargeHex) {
            Put<"%x">(text, static_cast<uint32_t>(reason.Limit));
        } else {
            Put<"%llu">(text, reason.Limit);
        }
        return Replace(draft, reason, {digits, Length(text)});
    }
    return reason.Rule->FormHolds != 0 && SetDigits(draft.text + reason.Offset, reason.Length);
}

bool IsSeparator(char character)
{
    return character == '.' || character == ':' || character == '-' || character == '/' || character == '[' ||
           character == ']';
}

// What is to stand at the place; nothing when that is not known.
Text WordsFor(const Draft &draft, const BgpReason &reason, char (&words)[2])
{
    const char at = draft.text[reason.Offset];
    words[1] = '1';
    if (reason.Rule == &kSeparator) {
        words[0] = *reason.What;
        return {words, IsHexDigit(at) || reason.Length != 0 ? 1u : 2u};
    }
    if (reason.Length == 1 && IsGraphic(at) && !IsSeparator(at)) {
        return {words + 1, 1};
    }
    if (reason.Length != 0) {
        return {words, 0};
    }
    const bool behindDot = reason.Offset > 0 && draft.text[reason.Offset - 1] == '.';
    words[0] = '.';
    if (reason.Rule == &kNoIpv4 && !behindDot) {
        return {words, 2};
    }
    const bool isPiece = reason.Rule == &kNoIpv4 || reason.Rule == &kNoDigit || reason.Rule == &kNoHexDigit;
    return {words + 1, isPiece || reason.Rule == &kEmpty ? 1u : 0u};
}

// A stray character, or what is missing, behind something that was read.
bool MendFault(Draft &draft, const BgpReason &reason)
{
    if (reason.Offset == 0 || !IsGraphic(draft.text[reason.Offset - 1])) {
        return false;
    }
    BgpReason place = reason;
    char words[2];
    const Text missing = WordsFor(draft, reason, words);
    place.Length = reason.Rule == &kSeparator && IsHexDigit(draft.text[reason.Offset]) ? 0 : reason.Length;
    return missing.length != 0 && Replace(draft, place, missing);
}

// How far the parser gets, in characters of the text, when sizes, and as many other faults, are put right.
uint32_t ReadOn(const Refuser &refuser, Text text, BgpReason reason, uint32_t faults)
{
    Draft draft;
    uint32_t reach = Reach(reason);
    if (!Terminate(text, draft.text, sizeof draft.text)) {
        return reach;
    }
    draft.length = text.length;
    for (uint32_t i = 0; i < kMostMends; ++i) {
        if (!MendSize(draft, reason)) {
            if (faults == 0 || !MendFault(draft, reason)) {
                return reach;
            }
            --faults;
        }
        reason = {};
        if (refuser.explain(refuser.parser, draft.text, reason) == DT_OK) {
            return kWhole;
        }
        const uint32_t left = draft.length - Reach(reason);
        const uint32_t now = left < text.length ? text.length - left : 0;
        reach = now > reach ? now : reach;
    }
    return reach;
}

// Of the sub-types that share a parser, the one whose key was read as far as that is told.
uint32_t FindNamed(const Type *const *subTypes, const BgpRefusal &refusal, uint32_t first)
{
    const char *const where = refusal.SubTypes[first].Where;
    for (uint32_t row = first; where != nullptr && row < refusal.SubTypeCount; ++row) {
        if (subTypes[row]->in == subTypes[first]->in && std::strcmp(subTypes[row]->facts.Description, where) == 0) {
            return row;
        }
    }
    return first;
}

struct SubTypeParser {
    const FormatInRule *rule;
    const DataTypeRequest &request;
};

uint32_t ExplainSubType(const void *parser, const char *text, BgpReason &reason)
{
    const auto &of = *static_cast<const SubTypeParser *>(parser);
    return Explain(of.rule, of.request, text, reason);
}

} // namespace

Nearness FindNearness(const Refuser &refuser, Text text, const BgpReason &reason)
{
    return {ReadOn(refuser, text, reason, 0), ReadOn(refuser, text, reason, 1)};
}

uint32_t FindClosest(const Type *const *subTypes, const DataTypeRequest &request, const char *text,
                     const BgpRefusal &refusal)
{
    const Text whole{text, static_cast<uint32_t>(std::strlen(text))};
    uint32_t closest = 0;
    Nearness nearest{};
    for (uint32_t row = 0; row < refusal.SubTypeCount; ++row) {
        const SubTypeParser parser{subTypes[row]->in, request};
        const Nearness near = FindNearness({ExplainSubType, &parser}, whole, refusal.SubTypes[row]);
        if (near.reach > nearest.reach || (near.reach == nearest.reach && near.beyond > nearest.beyond)) {
            closest = row;
            nearest = near;
        }
    }
    return FindNamed(subTypes, refusal, closest);
}

} // namespace bgp
