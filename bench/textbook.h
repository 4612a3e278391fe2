// Textbook code: the C library's sscanf, snprintf and inet_pton behind the same trimming, length, character and range
// checks.
#ifndef BGP_BENCH_TEXTBOOK_H
#define BGP_BENCH_TEXTBOOK_H

#include "bench.h"

namespace bgp::bench {

extern const Textbook kAsNumberTextbook;
extern const Textbook kCommunityTextbook;
extern const Textbook kLargeCommunityTextbook;
extern const Textbook kAsListTextbook;
extern const Textbook kCommunityListTextbook;
extern const Textbook kComprTextbook;
extern const Textbook kDistinguisherTextbook;
extern const Textbook kTargetTextbook;
extern const Textbook kSooTextbook;
extern const Textbook kVpnIdTextbook;
extern const Textbook kIpv4KeyTextbook;
extern const Textbook kIpv6KeyTextbook;
extern const Textbook kMacIpTextbook;
extern const Textbook kIpPrefixTextbook;
extern const Textbook kSrPolicyTextbook;
extern const Textbook kMdtTextbook;
extern const Textbook kLsNodeTextbook;

} // namespace bgp::bench

#endif
