// A run of bracketed groups, "[as100][mt-id0]": each is copied, its keyword looked up in a table of rows, and what
// stands behind the keyword is given to the row's handler. Tables may be anybody's.
#include "bgpls/groups.h"

#include "host/text.h"

#include <bit>

namespace bgp {

namespace {

// ------------------------------------------------------------------------------------------------------------ steps

// Of eight characters those that have all bits of a bracket, which hardly any other has: 0x80 in the place of each.
inline uint64_t Brackets(const char *at)
{
    constexpr uint64_t kEach = 0x0101010101010101;
    constexpr uint64_t kBracket = kEach * ('[' & ']');
    uint64_t eight = 0;
    std::memcpy(&eight, at, sizeof eight);
    return ~((~eight & kBracket) + kEach * 0x7F) & kEach * 0x80; // below 0x80, the sum is so for no bit lacking alone
}

// How many brackets are open behind the character.
inline uint32_t Depth(uint32_t depth, char character)
{
    return depth + (character == '[') - (character == ']');
}

// The place of the bracket that closes the one at the text's start; the text's length when there is none.
inline uint32_t FindClosing(const char *text, uint32_t length)
{
    uint32_t depth = 1;
    uint32_t at = 1;
    for (; at + sizeof(uint64_t) <= length; at += sizeof(uint64_t)) {
        for (uint64_t brackets = Brackets(text + at); brackets != 0; brackets &= brackets - 1) {
            const uint32_t place = at + static_cast<uint32_t>(std::countr_zero(brackets)) / 8;
            depth = Depth(depth, text[place]);
            if (depth == 0) {
                return place;
            }
        }
    }
    for (; at < length; ++at) {
        depth = Depth(depth, text[at]);
        if (depth == 0) {
            return at;
        }
    }
    return length;
}

inline bool TakeGroup(Text text, char *group, uint32_t groupSize, uint32_t *length)
{
    if (text.length == 0 || text.at[0] != '[') {
        return false;
    }
    const uint32_t end = FindClosing(text.at, text.length);
    *length = end - 1;
    return end < text.length && Terminate({text.at + 1, *length}, group, groupSize - 1);
}

inline const BgpLsKeyword *FindRow(char *content, const BgpLsKeyword *rows, uint32_t rowCount, char **value)
{
    for (const BgpLsKeyword *row = rows; row < rows + rowCount; ++row) {
        const char *keyword = row->Keyword;
        char *at = content;
        while (*keyword != '\0' && *keyword == *at) {
            ++keyword;
            ++at;
        }
        if (*keyword == '\0' && (row->Exact == 0 || *at == '\0')) {
            *value = at;
            return row;
        }
    }
    return nullptr;
}

// ----------------------------------------------------------------------------------------------------------- reasons

void TellBroken(LsExplaining &explaining, const Why &outer, Text text)
{
    *explaining.why = outer;
    const bool isOpen = text.length != 0 && text.at[0] == '[';
    Refuse(explaining.why, {text.at, text.length != 0}, isOpen ? kUnclosed : kNoGroup);
}

// A group without a row: more stands behind a keyword that wants to be alone, or there is no keyword.
void TellKeyword(const LsExplaining &explaining, const LsRun &run, bool isFirst, const char *content)
{
    for (const BgpLsKeyword *row = run.rows; row < run.rows + run.rowCount; ++row) {
        const size_t length = std::strlen(row->Keyword);
        if (std::strncmp(content, row->Keyword, length) == 0) {
            const auto more = static_cast<uint32_t>(std::strlen(content + length));
            Refuse(explaining.why, {content + length, more}, kNotAlone, 0, row->Keyword);
            return;
        }
    }
    uint32_t length = 0;
    while (content[length] != '\0' && content[length] != '[') {
        ++length;
    }
    const uint32_t first = isFirst ? 0 : run.leading;
    const uint32_t end = isFirst && run.leading != 0 ? run.leading : run.rowCount;
    RefuseChoice(explaining.why, {content, length}, kNoKeyword, {run.rows + first, end - first, sizeof *run.rows});
}

// From here on places are those of a group's copy. `outer` is where they were before.
[[gnu::cold]] void Enter(LsExplaining &explaining, const Why &outer, const LsRun &run, Text content, const char *copy,
                         const BgpLsKeyword *row)
{
    *explaining.why = outer;
    Moved(explaining.why, content, copy);
    if (row == nullptr) {
        TellKeyword(explaining, run, content.at == run.text.at + 1, copy);
        return;
    }
    explaining.group = {row->Keyword, {copy, static_cast<uint32_t>(std::strlen(row->Keyword))}};
    if (row->Handler == nullptr) {
        Refuse(explaining.why, explaining.group.place, kNotCarried, 0, row->Keyword);
    }
}

} // namespace

// -------------------------------------------------------------------------------------------------------------- loop

uint32_t ReadGroups(const LsRun &run, void *target, BgpLsParseContext *context, LsExplaining *explaining)
{
    Why outer{};
    if (explaining != nullptr) {
        explaining->run = run;
        outer = *explaining->why;
    }
    Text text = run.text;
    do {
        char group[kLsGroupSize];
        uint32_t length = 0;
        if (!TakeGroup(text, group, sizeof group, &length)) {
            if (explaining != nullptr) {
                TellBroken(*explaining, outer, text);
            }
            return DT_ERR_FAIL;
        }
        char *value = nullptr;
        const BgpLsKeyword *row = FindRow(group, run.rows, run.rowCount, &value);
        if (explaining != nullptr) [[unlikely]] {
            Enter(*explaining, outer, run, {text.at + 1, length}, group, row);
        }
        if (row == nullptr || row->Handler == nullptr) {
            return DT_ERR_FAIL;
        }
        if (const uint32_t code = row->Handler(row->Flag, value, target, context); code != DT_OK) {
            return code;
        }
        text.at += length + 2;
        text.length -= length + 2;
    } while (text.length != 0);
    if (explaining != nullptr) {
        *explaining->why = outer;
    }
    return DT_OK;
}

Text FindGroup(const LsRun &run, uint32_t flags, const BgpLsKeyword *&row)
{
    Text text = run.text;
    char group[kLsGroupSize];
    for (uint32_t length = 0;; text = {text.at + length + 2, text.length - length - 2}) {
        char *value = nullptr;
        TakeGroup(text, group, sizeof group, &length);
        row = FindRow(group, run.rows, run.rowCount, &value);
        if ((row->Flag & flags) != 0) {
            return {text.at + 1, static_cast<uint32_t>(value - group)};
        }
    }
}

} // namespace bgp

uint32_t SYSDT_ParseLsPrefixStr(const char *text, const BgpLsKeyword *rows, uint32_t rowCount, void *target,
                                BgpLsParseContext *context)
{
    return bgp::ReadGroups({{text, static_cast<uint32_t>(std::strlen(text))}, rows, rowCount, 0}, target, context,
                           nullptr);
}

uint32_t SYSDT_GetLsPrefixSubString(const char *text, uint32_t textLength, char *group, uint32_t groupSize,
                                    uint32_t *length)
{
    return bgp::Code(bgp::TakeGroup({text, textLength}, group, groupSize, length));
}

const BgpLsKeyword *SYSDT_ParseLsPrefixFindPattern(char *content, const BgpLsKeyword *rows, uint32_t rowCount,
                                                   char **value)
{
    return bgp::FindRow(content, rows, rowCount, value);
}
