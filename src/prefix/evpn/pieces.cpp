#include "prefix/evpn/pieces.h"

#include "host/bytes.h"

namespace bgp {

// ------------------------------------------------------------------------------------------------------------ numbers

void NoteDecimal(const Why &why, Text piece, uint32_t chars, const Range &range)
{
    const char *const end = piece.at + piece.length;
    uint64_t number = 0;
    const char *at = ReadNumber(piece.at, end, &number);
    if (piece.length == 0) {
        Note(why, piece, {.rule = &kEmpty, .what = range.what});
    } else if (at != end) {
        NoteCharacter(why, {at == nullptr ? piece.at : at, 1}, kNoDigit);
    } else if (number > range.most) {
        Note(why, piece, {.rule = &kTooLarge, .what = range.what, .limit = range.most});
    } else if (piece.length > chars) {
        Note(why, piece, {.rule = &kTooLong, .what = range.what, .limit = chars});
    } else {
        Note(why, piece, {.rule = &kTooSmall, .what = range.what, .limit = range.least});
    }
}

bool TakeTag(Cursor &cursor, uint8_t *at, Why *why)
{
    uint32_t tag = 0;
    if (!ReadDecimal(NextPiece(cursor), kTagChars, kTagRange, tag, why) || !PassColon(cursor, kTheTag, why)) {
        return false;
    }
    Store(at, tag);
    return true;
}

bool TakeLength(Cursor &cursor, const Range &range, uint8_t *at, Why *why)
{
    uint32_t length = 0;
    if (!ReadDecimal(NextPiece(cursor), kLengthChars, range, length, why) || !PassColon(cursor, range.what, why)) {
        return false;
    }
    *at = static_cast<uint8_t>(length);
    return true;
}

bool ReadLength(const Cursor &cursor, const char *what, uint8_t *at, Why *why)
{
    uint32_t length = 0;
    if (!ReadDecimal(Rest(cursor), kAnyChars, {0, UINT8_MAX, what}, length, why)) {
        return false;
    }
    *at = static_cast<uint8_t>(length);
    return true;
}

// ---------------------------------------------------------------------------------------------------------- addresses

namespace {

constexpr uint32_t kMacGroups = 3;
constexpr uint32_t kMacGroupDigits = 4;

// The first place that departs from xxxx-xxxx-xxxx; digits alone are none as a whole.
Text FindMacSlip(Text piece)
{
    uint32_t groups = 1;
    uint32_t digits = 0;
    for (uint32_t i = 0; i < piece.length; ++i) {
        if (IsHexDigit(piece.at[i]) && digits < kMacGroupDigits) {
            ++digits;
        } else if (piece.at[i] == '-' && digits > 0 && groups < kMacGroups) {
            ++groups;
            digits = 0;
        } else {
            return {piece.at + i, 1};
        }
    }
    const bool whole = groups == 1 || (groups == kMacGroups && digits > 0);
    return whole ? piece : Text{piece.at + piece.length, 0};
}

[[gnu::cold]] bool RefuseMac(Text piece, Why *why)
{
    if (why == nullptr) {
        return false;
    }
    if (piece.length == 0) {
        return Refuse(why, piece, kEmpty, 0, kTheMac);
    }
    const Text slip = FindMacSlip(piece);
    return HasNoBlank(slip, why) && Refuse(why, slip, kNoMac, 0, kTheMac);
}

// The address in brackets is none, or the last bracket is missing.
[[gnu::cold]] bool RefuseBracketed(Text inside, bool isClosed, const char *what, Why *why)
{
    char copy[kLongestAddress + 1];
    uint8_t address[kIpv6Size];
    if (why != nullptr && !isClosed && Terminate(inside, copy, sizeof copy) && SYSDT_Str2Ipv6(copy, address, 0) == 0) {
        return Refuse(why, {inside.at + inside.length, 0}, kNoClosing, 0, what);
    }
    return RefuseIpv6(why, inside, what);
}

// The rest of the text is no IPv4 address: the piece before a colon is none, or nothing may stand behind it.
[[gnu::cold]] bool RefuseLastIpv4(Cursor cursor, const AddressWords &words, Why *why)
{
    if (why == nullptr) {
        return false;
    }
    const Text piece = NextPiece(cursor);
    char copy[kIpv4Chars + 1];
    uint32_t address = 0;
    if (AtColon(cursor) && Terminate(piece, copy, sizeof copy) && SYSDT_Str2Ipv4(copy, &address) == 0) {
        return Refuse(why, Rest(cursor), kSomethingBehind, 0, words.address);
    }
    return RefuseIpv4(why, piece, words);
}

} // namespace

bool ReadMac(Text piece, uint8_t *mac, Why *why)
{
    char copy[kMacChars + 1];
    return (piece.length != 0 && Terminate(piece, copy, sizeof copy) && SMP_Str2Mac(copy, mac) == 0) ||
           RefuseMac(piece, why);
}

bool TakeBracketed(Cursor &cursor, uint8_t *address16, const char *what, Why *why)
{
    if (*cursor.at != '[') {
        return Refuse(why, {cursor.at, cursor.at < cursor.end}, kNoOpening, 0, what);
    }
    const Text rest{cursor.at + 1, Rest(cursor).length - 1};
    const auto *close = static_cast<const char *>(std::memchr(rest.at, ']', rest.length));
    if (close == nullptr) {
        return RefuseBracketed(rest, false, what, why);
    }
    cursor.at = close + 1;
    const Text inside{rest.at, static_cast<uint32_t>(close - rest.at)};
    char copy[kLongestAddress + 1];
    return (inside.length != 0 && Terminate(inside, copy, sizeof copy) && SYSDT_Str2Ipv6(copy, address16, 0) == 0) ||
           RefuseBracketed(inside, true, what, why);
}

bool ReadIpv6Tail(Cursor cursor, uint8_t *address16, uint8_t *length, const char *theLength, const char *what, Why *why)
{
    return TakeLength(cursor, {0, kMostIpv6Length, theLength}, length, why) &&
           TakeBracketed(cursor, address16, what, why) &&
           (cursor.at == cursor.end || Refuse(why, Rest(cursor), kSomethingBehind, 0, what));
}

bool ReadLengthAndAddress(Cursor cursor, uint8_t *at, const char *theLength, const AddressWords &words, Why *why)
{
    const Text rest = Rest(cursor);
    if (std::memchr(rest.at, '[', rest.length) == nullptr) {
        uint32_t address = 0;
        if (!TakeLength(cursor, {0, UINT8_MAX, theLength}, at, why)) {
            return false;
        }
        if (SYSDT_Str2Ipv4(cursor.at, &address) != 0) {
            return RefuseLastIpv4(cursor, words, why);
        }
        SetIpv4(at + 1, address);
        return true;
    }
    uint8_t address[kIpv6Size];
    if (!ReadIpv6Tail(cursor, address, at, theLength, words.address, why)) {
        return false;
    }
    SetIpv6(at + 1, address);
    return true;
}

} // namespace bgp
