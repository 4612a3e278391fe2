// Keys made of a few numbers and an address of either family: SR policy and SD-WAN. They differ in the data below and
// in nothing else. The address is an address field, see address_field.h; the numbers and it lie in the body, the bytes
// behind the sub-type word.
//
// A typed key is good when its numbers can be scanned and printing them again gives a text of the same length. That
// length rule is the only check of the form: it refuses leading zeros, signs and appendages, unless two slips cancel
// out.
#ifndef BGP_PREFIX_ENDPOINT_KEY_H
#define BGP_PREFIX_ENDPOINT_KEY_H

#include "host/address_field.h"
#include "host/text.h"
#include "prefix/scan.h"

#include <cstdint>

namespace bgp {

struct EndpointKey {
    ScanForm ipv4;     // the numbers and four octets; printed again for the length rule
    ScanForm ipv6;     // the numbers and the rest of the text as a word
    const char *print; // the numbers and the text of an address of either family
    struct {
        uint8_t least, most; // characters
    } ipv4Text, ipv6Text;
    bool dropsLast;    // the last character of the IPv6 word is dropped unseen
    uint8_t addressAt; // in the body
    uint8_t numberCount;
    struct {
        uint8_t at, width; // in the body; bytes
    } numbers[3];
};

inline constexpr const BgpRule *kEndpointKeyRules[] = {&kEmpty,          &kTooLong,  &kBlank,       &kNoDigit,
                                                       &kSeparator,      &kTooLarge, &kLeadingZero, &kSomethingBehind,
                                                       &kWrongCharacter, &kNoIpv6,   &kSpelling};

// The form that the text is of: IPv4 when it holds ".", else IPv6.
inline bool IsDotted(Text text)
{
    return std::memchr(text.at, '.', text.length) != nullptr;
}

inline const ScanForm &FormOf(const EndpointKey &key, Text text)
{
    return IsDotted(text) ? key.ipv4 : key.ipv6;
}

// The text (trimmed, without blanks) into the body: as IPv4 when it holds ".", else as IPv6. DT_ERR_FAIL, or
// DT_ERR_INVALID_PARAM when the host does not take the IPv6 address.
uint32_t ReadEndpointKey(const EndpointKey &key, Text text, uint8_t *body, Why *why);
uint32_t ReadIpv4Key(const EndpointKey &key, Text text, uint8_t *body, Why *why = nullptr);
uint32_t ReadIpv6Key(const EndpointKey &key, Text text, uint8_t *body, Why *why = nullptr);

// The body as text, its address in the given family or in its own. Any family but 0 is IPv6.
uint32_t PrintEndpointKey(const EndpointKey &key, const uint8_t *body, uint32_t family, char *buffer,
                          uint32_t *printed);
uint32_t PrintEndpointKey(const EndpointKey &key, const uint8_t *body, char *buffer, uint32_t *printed);

// Host order to network order and back. The IPv4 word takes part when the key's family says that it is the address.
// DT_ERR_NULL_PTR when either pointer is null.
uint32_t SwapEndpointKey(const EndpointKey &key, const void *request, void *body);

} // namespace bgp

// The parser and the printer of a key whose family is settled beforehand.
#define BGP_ENDPOINT_KEY_PARTS(parser, printer, key, family)                                                           \
    uint32_t parser(const char *text, void *body)                                                                      \
    {                                                                                                                  \
        if (text == nullptr || body == nullptr) {                                                                      \
            return DT_ERR_NULL_PTR;                                                                                    \
        }                                                                                                              \
        const bgp::Text whole{text, static_cast<uint32_t>(std::strlen(text))};                                         \
        return bgp::Read##family##Key(key, whole, static_cast<uint8_t *>(body));                                       \
    }                                                                                                                  \
    uint32_t printer(const void *body, char *buffer, uint32_t *printed)                                                \
    {                                                                                                                  \
        return bgp::PrintEndpointKey(key, static_cast<const uint8_t *>(body), bgp::k##family##Family, buffer,          \
                                     printed);                                                                         \
    }

#endif
