#include "floor.h"

namespace bgp::bench {

const char *TakeLongDigits(const char *at, uint64_t &number)
{
    uint64_t sum = 0;
    for (uint32_t digit; (digit = Digit(*at)) < 10; ++at) {
        if (sum > (UINT64_MAX - digit) / 10) {
            return nullptr;
        }
        sum = sum * 10 + digit;
    }
    number = sum;
    return at;
}

// RFC 4291, section 2.2: eight groups; "::" once, for one group or more; the last two may be written as IPv4.
const char *TakeIpv6(const char *at, uint8_t *address16)
{
    constexpr int kGroups = 8;
    uint32_t groups[kGroups];
    int count = 0;
    int gap = -1; // groups in front of "::"
    if (at[0] == ':') {
        if (at[1] != ':') {
            return nullptr;
        }
        gap = 0;
        at += 2;
    }
    while (gap != count || HexDigit(*at) < 16) {
        const char *const start = at;
        uint32_t group = 0;
        at = TakeHexGroup(start, group);
        if (at == nullptr) {
            return nullptr;
        }
        if (*at == '.') {
            at = TakeIpv4(start, group);
            if (at == nullptr || count > kGroups - 2) {
                return nullptr;
            }
            groups[count++] = group >> 16;
            groups[count++] = group & 0xFFFF;
            break;
        }
        if (count == kGroups) {
            return nullptr;
        }
        groups[count++] = group;
        if (*at != ':') {
            break;
        }
        if (*++at == ':') {
            if (gap >= 0) {
                return nullptr;
            }
            gap = count;
            ++at;
        }
    }
    if (gap < 0 ? count != kGroups : count == kGroups) {
        return nullptr;
    }
    const int front = gap < 0 ? kGroups : gap;
    std::memset(address16, 0, 16);
    for (int i = 0; i < count; ++i) {
        const int place = i < front ? i : kGroups - count + i;
        address16[2 * place] = static_cast<uint8_t>(groups[i] >> 8);
        address16[2 * place + 1] = static_cast<uint8_t>(groups[i]);
    }
    return at;
}

namespace {

// One to four digits, without a branch.
char *PutHexGroup(char *to, uint32_t group)
{
    constexpr uint32_t kEach = 0x01010101;
    const uint32_t digits = group >> 12 | (group & 0x0F00) | (group & 0x00F0) << 12 | (group & 0x000F) << 24;
    const uint32_t letters = (digits + 6 * kEach) >> 4 & kEach;
    const int leading = std::countr_zero(digits | 1u << 24) / 8; // zeros; the last digit stays
    const uint32_t text = (digits + '0' * kEach + ('a' - '9' - 1) * letters) >> (8 * leading);
    std::memcpy(to, &text, sizeof text);
    return to + 4 - leading;
}

struct Run {
    int from, length;
};

// The longest run of zero groups, the first of several; shorter than two it is none.
Run LongestZeros(const uint32_t (&groups)[8])
{
    Run best{-1, 1};
    Run run{0, 0};
    for (int i = 0; i < 8; ++i) {
        if (groups[i] != 0) {
            run = {i + 1, 0};
        } else if (++run.length > best.length) {
            best = run;
        }
    }
    return best;
}

} // namespace

// As the C library prints it: RFC 5952, and the addresses of ::/96 and ::ffff:0:0/96 end in IPv4 notation.
char *PutIpv6(char *to, const uint8_t *address16)
{
    uint32_t groups[8];
    for (int i = 0; i < 8; ++i) {
        groups[i] = static_cast<uint32_t>(address16[2 * i] << 8 | address16[2 * i + 1]);
    }
    const Run zeros = LongestZeros(groups);
    const bool endsInIpv4 = zeros.from == 0 && (zeros.length == 6 || (zeros.length == 5 && groups[5] == 0xFFFF));
    for (int i = 0; i < 8;) {
        if (i == zeros.from) {
            *to++ = ':';
            i += zeros.length;
            if (i == 8) {
                *to++ = ':';
            }
            continue;
        }
        if (i != 0) {
            *to++ = ':';
        }
        if (i == 6 && endsInIpv4) {
            return PutIpv4(to, groups[6] << 16 | groups[7]);
        }
        to = PutHexGroup(to, groups[i++]);
    }
    return to;
}

} // namespace bgp::bench
