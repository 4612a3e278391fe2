#include "host/refusal.h"

#include <cstring>

namespace bgp {

void Note(const Why &why, Text piece, const Said &said)
{
    BgpReason &reason = *why.reason;
    reason.Rule = said.rule;
    reason.What = said.what;
    reason.Limit = said.limit;
    reason.Expected = said.expected;
    reason.Offset = why.offset + static_cast<uint32_t>(piece.at - why.from);
    reason.Length = piece.length;
}

// ------------------------------------------------------------------------------------------------------- the sentence

namespace {

// Counts all characters, and keeps those that fit before the terminator.
struct Sentence {
    char *at;
    uint32_t room;
    uint32_t length;
};

void Put(Sentence &sentence, const char *words, size_t length)
{
    for (size_t i = 0; i < length; ++i, ++sentence.length) {
        if (sentence.length + 1 < sentence.room) {
            sentence.at[sentence.length] = words[i];
        }
    }
}

void Put(Sentence &sentence, const char *words)
{
    Put(sentence, words, std::strlen(words));
}

void PutNumber(Sentence &sentence, uint64_t number, uint32_t base)
{
    char digits[20];
    char *at = digits + sizeof digits;
    do {
        *--at = "0123456789abcdef"[number % base];
        number /= base;
    } while (number != 0);
    Put(sentence, at, static_cast<size_t>(digits + sizeof digits - at));
}

void PutRule(Sentence &sentence, const BgpReason &reason)
{
    static constexpr char kWhat[] = "{what}";
    static constexpr char kLimit[] = "{limit}";
    static constexpr char kHex[] = "{hex}";
    for (const char *words = reason.Rule->Words; *words != '\0';) {
        if (std::strncmp(words, kWhat, sizeof kWhat - 1) == 0) {
            Put(sentence, reason.What != nullptr ? reason.What : "the text");
            words += sizeof kWhat - 1;
        } else if (std::strncmp(words, kLimit, sizeof kLimit - 1) == 0) {
            PutNumber(sentence, reason.Limit, 10);
            words += sizeof kLimit - 1;
        } else if (std::strncmp(words, kHex, sizeof kHex - 1) == 0) {
            PutNumber(sentence, reason.Limit, 16);
            words += sizeof kHex - 1;
        } else {
            Put(sentence, words++, 1);
        }
    }
}

} // namespace

} // namespace bgp

uint32_t Bgp_SayReason(const BgpReason *reason, char *buffer, uint32_t size)
{
    bgp::Sentence sentence{buffer, size, 0};
    if (reason != nullptr && reason->Rule != nullptr) {
        if (reason->Where != nullptr) {
            bgp::Put(sentence, reason->Where);
            bgp::Put(sentence, ": ");
        }
        bgp::PutRule(sentence, *reason);
    }
    if (size != 0) {
        buffer[sentence.length < size ? sentence.length : size - 1] = '\0';
    }
    return sentence.length;
}

const char *Bgp_ExpectedWord(const BgpReason *reason, uint32_t index)
{
    const char *before = nullptr;
    for (uint32_t i = 0; reason != nullptr && i < reason->Expected.Count; ++i) {
        const char *word = nullptr;
        std::memcpy(&word, static_cast<const char *>(reason->Expected.First) + size_t{i} * reason->Expected.Stride,
                    sizeof word);
        const bool repeated = before != nullptr && std::strcmp(word, before) == 0;
        if (!repeated && index-- == 0) {
            return word;
        }
        before = word;
    }
    return nullptr;
}
