#include "prefix/evpn/pieces.h"

#include "host/bytes.h"

namespace bgp {

namespace {

Text Whole(const char *text)
{
    return {text, static_cast<uint32_t>(std::strlen(text))};
}

// Why the host does not read the piece as a decimal number.
bool RefuseDecimal(Text piece, const Range &range, Why *why)
{
    if (piece.length == 0) {
        return Refuse(why, piece, kEmpty, 0, range.what);
    }
    for (uint32_t i = 0; i < piece.length; ++i) {
        if (!IsDigit(piece.at[i])) {
            return RefuseCharacter(why, {piece.at + i, 1}, kNoDigit);
        }
    }
    return Refuse(why, piece, kTooLarge, range.most, range.what);
}

} // namespace

// ------------------------------------------------------------------------------------------------------------ numbers

bool ReadDecimal(const char *copy, Text piece, const Range &range, uint32_t &number, Why *why)
{
    if (SMP_StrToUint32(copy, &number) != 0) {
        return RefuseDecimal(piece, range, why);
    }
    if (number < range.least) {
        return Refuse(why, piece, kTooSmall, range.least, range.what);
    }
    return number <= range.most || Refuse(why, piece, kTooLarge, range.most, range.what);
}

bool TakePiece(const char *&cursor, char *copy, uint32_t most, Text &piece, const char *what, Why *why)
{
    const char *colon = std::strchr(cursor, ':');
    if (colon == nullptr) {
        return Refuse(why, {cursor + std::strlen(cursor), 0}, kNoColon, 0, what);
    }
    piece = {cursor, static_cast<uint32_t>(colon - cursor)};
    cursor = colon + 1;
    if (piece.length == 0) {
        return Refuse(why, piece, kEmpty, 0, what);
    }
    return Terminate(piece, copy, most + 1) || Refuse(why, piece, kTooLong, most, what);
}

bool TakeTag(const char *&cursor, uint8_t *at, Why *why)
{
    char copy[kTagChars + 1];
    Text piece;
    uint32_t tag = 0;
    if (!TakePiece(cursor, copy, kTagChars, piece, kTheTag, why) ||
        !ReadDecimal(copy, piece, {0, UINT32_MAX, kTheTag}, tag, why)) {
        return false;
    }
    Store(at, tag);
    return true;
}

bool TakeLength(const char *&cursor, const Range &range, uint8_t *at, Why *why)
{
    char copy[kLengthChars + 1];
    Text piece;
    uint32_t length = 0;
    if (!TakePiece(cursor, copy, kLengthChars, piece, range.what, why) ||
        !ReadDecimal(copy, piece, range, length, why)) {
        return false;
    }
    *at = static_cast<uint8_t>(length);
    return true;
}

bool ReadLength(const char *text, const char *what, uint8_t *at, Why *why)
{
    uint32_t length = 0;
    if (!ReadDecimal(text, Whole(text), {0, UINT8_MAX, what}, length, why)) {
        return false;
    }
    *at = static_cast<uint8_t>(length);
    return true;
}

// ---------------------------------------------------------------------------------------------------------- addresses

bool ReadIpv4Piece(const char *copy, Text piece, uint8_t *field, const char *what, Why *why)
{
    uint32_t address = 0;
    if (SYSDT_Str2Ipv4(copy, &address) != 0) {
        return Refuse(why, piece, kNoIpv4, 0, what);
    }
    SetIpv4(field, address);
    return true;
}

bool TakeBracketed(const char *&cursor, uint8_t *address16, const char *what, Why *why)
{
    if (*cursor != '[') {
        return Refuse(why, {cursor, *cursor != '\0'}, kNoOpening, 0, what);
    }
    const char *close = std::strchr(cursor, ']');
    if (close == nullptr) {
        return Refuse(why, {cursor + std::strlen(cursor), 0}, kNoClosing, 0, what);
    }
    const Text inside{cursor + 1, static_cast<uint32_t>(close - cursor - 1)};
    cursor = close + 1;
    char address[kLongestAddress + 1];
    if (inside.length == 0) {
        return Refuse(why, inside, kEmpty, 0, what);
    }
    if (!Terminate(inside, address, sizeof address)) {
        return Refuse(why, inside, kTooLong, kLongestAddress, what);
    }
    return SYSDT_Str2Ipv6(address, address16, 0) == 0 || Refuse(why, inside, kNoIpv6, 0, what);
}

bool ReadIpv6Tail(const char *text, uint8_t *address16, uint8_t *length, const char *theLength, const char *what,
                  Why *why)
{
    return TakeLength(text, {0, kMostIpv6Length, theLength}, length, why) &&
           TakeBracketed(text, address16, what, why) &&
           (*text == '\0' || Refuse(why, Whole(text), kSomethingBehind, 0, what));
}

} // namespace bgp
