#include "bgpls/context.h"

#include "host/address.h"
#include "host/numbers.h"

namespace bgp {

namespace {

Text All(const char *value)
{
    return {value, static_cast<uint32_t>(std::strlen(value))};
}

} // namespace

bool RefuseGroup(BgpLsParseContext *context, const BgpRule &rule, const char *what, BgpChoices expected)
{
    const LsExplaining *explaining = ExplainingOf(context);
    if (explaining == nullptr) {
        return false;
    }
    const LsGroup &group = explaining->group;
    return RefuseChoice(explaining->why, group.place, rule, expected, what != nullptr ? what : group.keyword);
}

bool RefusePiece(BgpLsParseContext *context, Text piece, const BgpRule &rule, uint64_t limit, const char *what)
{
    const LsExplaining *explaining = ExplainingOf(context);
    return explaining != nullptr &&
           Refuse(explaining->why, piece, rule, limit, what != nullptr ? what : explaining->group.keyword);
}

bool RefuseValue(BgpLsParseContext *context, const char *value, const BgpRule &rule, uint64_t limit, const char *what)
{
    const Text piece = All(value);
    return piece.length == 0 ? RefusePiece(context, piece, kEmpty, 0, what)
                             : RefusePiece(context, piece, rule, limit, what);
}

bool RefuseIpv4Value(BgpLsParseContext *context, const char *value)
{
    const LsExplaining *explaining = ExplainingOf(context);
    return explaining != nullptr && RefuseIpv4(explaining->why, All(value), {explaining->group.keyword, "an octet"});
}

bool RefuseIpv6Value(BgpLsParseContext *context, const char *value)
{
    const LsExplaining *explaining = ExplainingOf(context);
    return explaining != nullptr && RefuseIpv6(explaining->why, All(value), explaining->group.keyword);
}

bool RefusedByOther(BgpLsParseContext *context)
{
    if (const LsExplaining *explaining = ExplainingOf(context); explaining != nullptr) {
        BgpReason &reason = *explaining->why->reason;
        reason.What = reason.What != nullptr ? reason.What : explaining->group.keyword;
    }
    return false;
}

// A number of digits alone is refused for nothing but its size.
bool RefuseNumber(BgpLsParseContext *context, const char *value, uint64_t largest, const char *what)
{
    const char *const end = value + std::strlen(value);
    uint64_t number = 0;
    const char *behind = ReadNumber(value, end, &number);
    if (behind == end) {
        return RefuseValue(context, value, kTooLarge, largest, what);
    }
    const char *other = behind != nullptr ? behind : value;
    return RefusePiece(context, {other, other < end}, kNoDigit, 0, what);
}

bool RefuseMissing(LsExplaining *explaining, const LsRun &run, uint32_t flags)
{
    if (explaining == nullptr) {
        return false;
    }
    const BgpLsKeyword *row = run.rows;
    while ((row->Flag & flags) == 0) {
        ++row;
    }
    uint32_t count = 1;
    while (row + count < run.rows + run.rowCount && row[count].Flag == row->Flag) {
        ++count;
    }
    // Of those with several rows, the NLRI type is never missing.
    return RefuseChoice(explaining->why, {run.text.at + run.text.length, 0}, kMissing, {row, count, sizeof *row},
                        count == 1 ? row->Keyword : kLsTheProtocol);
}

} // namespace bgp
