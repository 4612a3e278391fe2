// Reading, printing and swapping the keys that end in an address.
#include "prefix/endpoint_key.h"

#include "host/address.h"
#include "host/bytes.h"
#include "prefix/route_keys.h"

namespace bgp {

namespace {

constexpr uint32_t kOctets = 4;
constexpr uint32_t kSmpIpv6Family = 10; // as SMP_InetAToN() names it
constexpr uint32_t kLongestTyped = 70;

// The numbers, and the text behind them where the format has one.
int32_t PrintWith(const char *format, const uint32_t *numbers, uint32_t count, const char *address, char *buffer)
{
    Argument arguments[kMostScanned] = {"", "", "", "", "", "", "", ""};
    for (uint32_t i = 0; i < count; ++i) {
        arguments[i] = numbers[i];
    }
    if (address != nullptr) {
        arguments[count] = address;
    }
    return Print(buffer, kPrintLimit, format, arguments);
}

void StoreNumbers(const EndpointKey &key, const uint32_t *numbers, uint8_t *body)
{
    for (uint32_t i = 0; i < key.numberCount; ++i) {
        StoreLow(body + key.numbers[i].at, numbers[i], key.numbers[i].width);
    }
}

} // namespace

uint32_t ReadEndpointKey(const EndpointKey &key, Text text, uint8_t *body, Why *why)
{
    return IsDotted(text) ? ReadIpv4Key(key, text, body, why) : ReadIpv6Key(key, text, body, why);
}

uint32_t ReadIpv4Key(const EndpointKey &key, Text text, uint8_t *body, Why *why)
{
    Scanned scanned;
    if (!MayBeScanned(text, key.ipv4Text.least, key.ipv4Text.most, why) || !Scan(key.ipv4, text, scanned, why)) {
        return DT_ERR_FAIL;
    }
    char again[kPrintLimit];
    const int32_t printed = PrintWith(key.ipv4.format, scanned.numbers, key.numberCount + kOctets, nullptr, again);
    if (!IsAsLong(printed, key.ipv4, text, {}, why)) {
        return DT_ERR_FAIL;
    }
    StoreNumbers(key, scanned.numbers, body);
    Store(body + key.addressAt, JoinOctets(scanned.numbers + key.numberCount)); // the family stays 0
    return DT_OK;
}

uint32_t ReadIpv6Key(const EndpointKey &key, Text text, uint8_t *body, Why *why)
{
    Scanned scanned;
    if (!MayBeScanned(text, key.ipv6Text.least, key.ipv6Text.most, why) || !Scan(key.ipv6, text, scanned, why)) {
        return DT_ERR_FAIL;
    }
    scanned.word.length -= key.dropsLast;
    char copy[kLongestTyped];
    const char *const typed = Terminated(scanned.word, copy, sizeof copy);
    uint8_t *field = body + key.addressAt;
    if (typed == nullptr || SMP_InetAToN(typed, field + kAddressIpv6At, kSmpIpv6Family) != 0) {
        RefuseIpv6(why, scanned.word, key.ipv6.items[key.numberCount].what);
        return DT_ERR_INVALID_PARAM;
    }
    char address[kAddressTextSize];
    char again[kPrintLimit];
    AddressTextAs(field, kIpv6Family, address);
    const int32_t printed = PrintWith(key.print, scanned.numbers, key.numberCount, address, again);
    if (!IsAsLong(printed, key.ipv6, text, scanned.word, why)) {
        return DT_ERR_FAIL;
    }
    StoreNumbers(key, scanned.numbers, body);
    field[kAddressFamilyAt] = kIpv6Family;
    return DT_OK;
}

uint32_t PrintEndpointKey(const EndpointKey &key, const uint8_t *body, uint32_t family, char *buffer, uint32_t *printed)
{
    uint32_t numbers[sizeof key.numbers / sizeof *key.numbers];
    for (uint32_t i = 0; i < key.numberCount; ++i) {
        numbers[i] = static_cast<uint32_t>(LoadLow(body + key.numbers[i].at, key.numbers[i].width));
    }
    char address[kAddressTextSize];
    AddressTextAs(body + key.addressAt, family == kIpv4Family ? kIpv4Family : kIpv6Family, address);
    return Printed(PrintWith(key.print, numbers, key.numberCount, address, buffer), printed);
}

uint32_t PrintEndpointKey(const EndpointKey &key, const uint8_t *body, char *buffer, uint32_t *printed)
{
    return PrintEndpointKey(key, body, body[key.addressAt + kAddressFamilyAt], buffer, printed);
}

uint32_t SwapEndpointKey(const EndpointKey &key, const void *request, void *body)
{
    if (request == nullptr || body == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    auto *bytes = static_cast<uint8_t *>(body);
    for (uint32_t i = 0; i < key.numberCount; ++i) {
        Reverse(bytes + key.numbers[i].at, key.numbers[i].width);
    }
    if (bytes[key.addressAt + kAddressFamilyAt] == kIpv4Family) {
        Reverse(bytes + key.addressAt, sizeof(uint32_t));
    }
    return DT_OK;
}

} // namespace bgp
