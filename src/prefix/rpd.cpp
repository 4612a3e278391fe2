// RPD, sub-type 12 of BOLPREFIX: the key of a route-policy distribution route (draft-ietf-idr-rpd, RPD SAFI), typed and
// printed as "policy type/peer/distinguisher": "1/10.1.1.1/100".
//
//   bytes  field          width  meaning
//   0-3    sub-type       u32    12
//   4      policy type    u8     0 or 1
//   5      -                     zero
//   6-9    distinguisher  u32
//   10-13  peer           u32    IPv4 address, first octet most significant
//   14-88  -                     zero
//
// Check wants a length of 27, not that of the composite, and a value of another sub-type costs even the caller its text
// buffer: hosts have come to know both.
#include "host/bytes.h"
#include "host/format.h"
#include "host/operations.h"
#include "prefix/route_keys.h"

namespace bgp {

namespace {

constexpr uint16_t kDistinguisherAt = kPayloadAt + 2;
constexpr uint16_t kPeerAt = kPayloadAt + 6;
constexpr uint16_t kCheckedLength = 27;

constexpr BgpField kFields[] = {
    Number("bolType", 0, 4),
    Number("bolRpdPolicyType", kPayloadAt, 1),
    Ipv4Word("bolRpdPeerAddr", kPeerAt),
    Number("bolRpdDistinguisher", kDistinguisherAt, 4),
};

constexpr BgpLayout kLayout = Layout(kFields, kBolPrefixLength);

constexpr uint16_t kShortest = 11;
constexpr uint16_t kLongest = 31;
constexpr const char *kAnOctet = "an octet of the peer";
constexpr ScanForm kForm{"%u/%u.%u.%u.%u/%u",
                         {{"the policy type", 1},
                          {kAnOctet, UINT8_MAX},
                          {kAnOctet, UINT8_MAX},
                          {kAnOctet, UINT8_MAX},
                          {kAnOctet, UINT8_MAX},
                          {"the distinguisher", UINT32_MAX}}};

constexpr const BgpRule *kRules[] = {&kEmpty,    &kTooLong,     &kBlank,           &kNoDigit,       &kSeparator,
                                     &kTooLarge, &kLeadingZero, &kSomethingBehind, &kWrongCharacter};

// Only the spelling that printing gives back is taken, judged by its length: no leading zeros, nothing behind it.
bool IsCanonical(Text text, const uint32_t *numbers, Why *why)
{
    char again[kPrintLimit];
    const int32_t length = Print<"%u/%u.%u.%u.%u/%u">(again, sizeof again, numbers[0], numbers[1], numbers[2],
                                                      numbers[3], numbers[4], numbers[5]);
    return IsAsLong(length, kForm, text, {}, why);
}

bool Read(const char *text, uint8_t *payload, Why *why)
{
    const Text trimmed = Trim(text);
    Scanned scanned;
    const uint32_t *numbers = scanned.numbers;
    if (!MayBeScanned(trimmed, kShortest, kLongest, why) || !IsOneWord(kForm, trimmed, why) ||
        !Scan(kForm, trimmed, scanned, why) || !IsCanonical(trimmed, numbers, why)) {
        return false;
    }
    payload[0] = static_cast<uint8_t>(numbers[0]);
    Store(payload + kPeerAt - kPayloadAt, JoinOctets(numbers + 1));
    Store(payload + kDistinguisherAt - kPayloadAt, numbers[5]);
    return true;
}

constexpr FormatInRule kIn = RouteKeyIn(ReadKey<kRpdSubType, Read>);
constexpr FormatOutRule kOut = OfSubType(RouteKeyOut(PrintKey<SYSDT_RpdPrefix2Str>), kRpdSubType, true);
constexpr HelpRule kHelp{.text = "X/X.X.X.X/X", .memory = Memory::kPlain};
constexpr LuaRule kLua{.layout = kLayout, .pops = 0};
constexpr KeyLuaRule kLuaGet{.layout = kLayout, .subType = kRpdSubType, .pops = 4};
constexpr ReaderRule kReader{.layout = kLayout, .pops = 4};

} // namespace

constinit const Type kRpd = MakeSubType({
    .name = "RPD",
    .description = "the key of a route-policy distribution route",
    .reference = "draft-ietf-idr-rpd",
    .in = &kIn,
    .out = &kOut,
    .layout = &kLayout,
    .rules = kRules,
    .shortestText = kShortest,
    .longestText = kLongest,
    .subType = kRpdSubType,
    .checkedLength = kCheckedLength,
    .lua = BGP_LUA_TYPED,
});

} // namespace bgp

uint32_t SYSDT_Str2RpdPrefix(const char *text, void *payload)
{
    return bgp::ParsePayload<bgp::Read>(text, payload);
}

uint32_t SYSDT_RpdPrefix2Str(const void *payload, char *buffer, uint32_t *printed)
{
    const auto *bytes = static_cast<const uint8_t *>(payload);
    const auto peer = bgp::Load<uint32_t>(bytes + bgp::kPeerAt - bgp::kPayloadAt);
    const auto distinguisher = bgp::Load<uint32_t>(bytes + bgp::kDistinguisherAt - bgp::kPayloadAt);
    return bgp::Printed(bgp::Print<"%u/%u.%u.%u.%u/%u">(buffer, bgp::kPrintLimit, bytes[0], bgp::OctetOf<0>(peer),
                                                        bgp::OctetOf<1>(peer), bgp::OctetOf<2>(peer),
                                                        bgp::OctetOf<3>(peer), distinguisher),
                        printed);
}

BGP_FORMAT_IN(SYSDT_RpdPrefixFormatIn, bgp::kIn)
BGP_FORMAT_OUT(SYSDT_RpdPrefixFormatOut, bgp::kOut)
BGP_CHECK_LENGTH(SYSDT_RpdPrefixCheck, bgp::kCheckedLength)
BGP_HELP(SYSDT_RpdPrefixHelp, bgp::kHelp)
BGP_COMPARE_BYTES_TESTED(SYSDT_RpdPrefixCompare)
BGP_LUA_SET(SYSDT_RpdPrefixLuaSet, bgp::kLua)
BGP_KEY_LUA_GET(SYSDT_RpdPrefixLuaGet, bgp::kLuaGet)
BGP_KEY_READER(SYSDT_RpdPrefixNewLuaGet, bgp::kReader)

// Works on the fields behind the sub-type. No type has it as its own: the composite has no byte order.
uint32_t SYSDT_RpdPrefixEndian(const void *, uint32_t, uint32_t, void *payload)
{
    if (payload == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    auto *bytes = static_cast<uint8_t *>(payload);
    bgp::Reverse(bytes + bgp::kDistinguisherAt - bgp::kPayloadAt, 4);
    bgp::Reverse(bytes + bgp::kPeerAt - bgp::kPayloadAt, 4);
    return DT_OK;
}
