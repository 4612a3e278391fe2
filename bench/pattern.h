// Patterns of texts: characters that stand for themselves, and pieces in braces that differ from text to text.
//
//   {u8} {u16} {u32}  a decimal number above 0 of so many bits, short ones as often as long ones; drawn evenly, if so
//                     asked, nearly all are of full length
//   {as4}             an AS number above 65535
//   {a-b}             a decimal number from a to b
//   {x4}              so many hexadecimal digits; {h6}: up to so many, the first no zero
//   {ip4}             an IPv4 address; {group}: of a multicast group
//   {ip6}             an IPv6 address, compressed, short or in full
//   {mac} {esi}       as EVPN writes them
//   {name}            1 to 15 letters
//
// The pattern of a value without text is "=LENGTH:DIGITS": its bytes as hexadecimal digits, zero bytes behind them.
#ifndef BGP_BENCH_PATTERN_H
#define BGP_BENCH_PATTERN_H

#include <cstdint>
#include <string>

namespace bgp::bench {

// A sequence of numbers that is the same on every machine (splitmix64).
struct Random {
    uint64_t state;
    bool evenNumbers = false;
    uint64_t Next();
    uint64_t Below(uint64_t end) { return Next() % end; }
};

std::string MakeText(const char *pattern, Random &random);

} // namespace bgp::bench

#endif
