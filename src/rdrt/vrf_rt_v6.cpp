// VRFRTV6: an IPv6-address-specific route target (RFC 5701), typed as address, "." and number: "2001:db8::1.1".
//
//   bytes  field                 width  meaning
//   0-1    RT kind               2      000c when typed; nothing reads it
//   2-17   global administrator  16     IPv6 address, in address order
//   18-19  local administrator   u16    network order; 0 or 1 when typed
//   20-23  notation              u32    host order; 0 when typed
#include "host/address.h"
#include "host/format.h"
#include "host/layout.h"
#include "host/operations.h"
#include "host/text.h"
#include "rdrt/notation.h"
#include "rdrt/rdrt.h"

namespace bgp {

namespace {

constexpr uint16_t kLength = 24;
constexpr uint16_t kShortestTyped = 1;
constexpr uint16_t kLongestTyped = 47;
constexpr uint32_t kAddressAt = 2;
constexpr uint32_t kLocalAt = 18;
constexpr uint32_t kLargestLocal = 1; // one digit, although the field has 16 bits
constexpr uint16_t kRtKind = 0x000C;
constexpr uint32_t kIpv6Family = 10;

constexpr BgpField kFields[] = {
    ByteArray("RtV6Value", 0, 20),
    Number("RtV6Type", 20, 4, 1),
};
constexpr BgpLayout kLayout = Layout(kFields, kLength);

// ----------------------------------------------------------------------------------------------------------- text in

constexpr char kLocal[] = "the local administrator";
constexpr char kGlobal[] = "the global administrator";

constexpr BgpRule kNoLocal{"no-local-administrator", "\".\" and {what} stand at the end", 0};
constexpr BgpRule kOneDigit{"one-digit", "{what} is one digit", 0};

constexpr const BgpRule *kRules[] = {&kEmpty,   &kTooLong,  &kBlank,    &kNoLocal,
                                     &kNoDigit, &kOneDigit, &kTooLarge, &kNoIpv6};

// The last dot, which one character follows.
bool FindDot(Text text, uint32_t *dot, Why *why)
{
    if (text.length >= 2 && text.at[text.length - 2] == '.') {
        *dot = text.length - 2;
        return true;
    }
    const char *const end = text.at + text.length;
    const char *at = end;
    while (at > text.at && at[-1] != '.') {
        --at;
    }
    if (at == text.at) {
        return Refuse(why, {end, 0}, kNoLocal, 0, kLocal);
    }
    const Text local{at, static_cast<uint32_t>(end - at)};
    return local.length == 0 ? Refuse(why, local, kNoDigit) : Refuse(why, local, kOneDigit, 0, kLocal);
}

bool ReadLocal(const char *digit, uint32_t *local, Why *why)
{
    const char text[] = {*digit, '\0'};
    char *end = nullptr;
    *local = QOV_strtoul(text, &end, 10);
    if (end == nullptr || *end != '\0') {
        return Refuse(why, {digit, 1}, kNoDigit);
    }
    return *local <= kLargestLocal || Refuse(why, {digit, 1}, kTooLarge, kLargestLocal, kLocal);
}

bool ReadGlobal(Text text, uint8_t *address, Why *why)
{
    char copy[kLongestTyped];
    return (Terminate(text, copy, sizeof copy) && SMP_InetAToN(copy, address, kIpv6Family) == 0) ||
           RefuseIpv6(why, text, kGlobal);
}

// Only the last dot separates, so that an address may end in dotted decimal: "::192.0.2.1.1".
bool Read(const char *text, void *value, Why *why)
{
    auto *bytes = static_cast<uint8_t *>(value);
    const Text trimmed = Trim(text);
    uint32_t dot = 0;
    uint32_t local = 0;
    if (!HasLength(trimmed, kShortestTyped, kLongestTyped, why) || !HasNoBlank(trimmed, why) ||
        !FindDot(trimmed, &dot, why) || !ReadLocal(trimmed.at + dot + 1, &local, why) ||
        !ReadGlobal({trimmed.at, dot}, bytes + kAddressAt, why)) {
        return false;
    }
    StoreBig(bytes, kRtKind, 2);
    StoreBig(bytes + kLocalAt, local, 2);
    Store(bytes + 20, uint32_t{0});
    return true;
}

// ---------------------------------------------------------------------------------------------------------- text out

uint32_t PrintVrfRtV6(const uint8_t *value, uint32_t, char *buffer, uint32_t *printed)
{
    char address[256];
    if (inet_ntop6(value + kAddressAt, address, sizeof address) == nullptr) {
        return DT_ERR_FAIL;
    }
    char line[kPrintLimit];
    GrowingText text = GrowIn(line, sizeof line);
    Put(text, address);
    Put<".%u">(text, LoadBig<uint16_t>(value + kLocalAt));
    *text.at = '\0';
    return Printed(PrintText(buffer, kPrintLimit, line), printed);
}

constexpr FormatInRule kIn{.typeId = 320, .length = kLength, .modes = kTextOnly, .read = Read};
constexpr FormatOutRule kOut{.modes = kTextOrRaw,
                             .print = PrintVrfRtV6,
                             .textSize = kTextSize,
                             .valueSize = kLength,
                             .mode3 = Mode3::kTextAsRaw,
                             .zeroExtends = true};
constexpr HelpRule kHelp{.text = "STRING<4-47>"};
constexpr LuaRule kLua{.layout = kLayout, .pops = 2};

} // namespace

constinit const Type kVrfRtV6 = MakeType({
    .name = "VRFRTV6",
    .description = "an IPv6-address-specific route target",
    .reference = "RFC 5701",
    .in = &kIn,
    .out = &kOut,
    .layout = &kLayout,
    .rules = kRules,
    .shortestText = kShortestTyped,
    .longestText = kLongestTyped,
    .lua = BGP_LUA_TYPED, // a script's notation is cut to a byte
});

} // namespace bgp

uint32_t SYSDT_Str2VrfRtV6(const char *text, void *value)
{
    if (text == nullptr || value == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    return bgp::Read(text, value, nullptr) ? DT_OK : DT_ERR_INVALID_PARAM;
}

void SYSDT_VrfRtV6FormatOutGetMem(void **outBuffer, uint32_t memoryHandle, uint32_t size)
{
    if (*outBuffer == nullptr && memoryHandle != 0 && size != 0) {
        *outBuffer = SYS_DataTypeMallocByHandle(memoryHandle, size);
    }
}

BGP_FORMAT_IN(SYSDT_VrfRtV6FormatIn, bgp::kIn)

// The buffer is fetched ahead of the common steps: without a memory handle there is none, whatever the host would say.
uint32_t SYSDT_VrfRtV6FormatOut(const DataTypeRequest *request, uint32_t, uint32_t length, const void *value,
                                uint16_t *outTypeId, uint16_t *outLength, void **outBuffer)
{
    const bgp::Result result{outTypeId, outLength, outBuffer};
    if (bgp::IsNull(request, value, result)) {
        return DT_ERR_NULL_PTR;
    }
    if (const uint32_t code = bgp::JudgeMode(bgp::kOut.modes, request->FormatMode); code != DT_OK) {
        return code;
    }
    SYSDT_VrfRtV6FormatOutGetMem(outBuffer, request->MemoryHandle, bgp::kOut.textSize);
    return *outBuffer == nullptr ? bgp::NoMemory(result) : bgp::FormatOut(bgp::kOut, request, length, value, result);
}

BGP_CHECK_LENGTH(SYSDT_VrfRtV6Check, bgp::kLength)
BGP_HELP(SYSDT_VrfRtV6Help, bgp::kHelp)
BGP_COMPARE_BYTES(SYSDT_VrfRtV6Compare)
BGP_LUA_SET(SYSDT_VrfRtV6LuaSet, bgp::kLua)
BGP_LUA_GET(SYSDT_VrfRtV6LuaGet, bgp::kLua)
BGP_ENDIAN(SYSDT_VrfRtV6Endian, bgp::kLayout)
