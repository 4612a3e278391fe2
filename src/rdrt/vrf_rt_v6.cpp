// VRFRTV6: an IPv6-address-specific route target (RFC 5701), typed as address, "." and number: "2001:db8::1.1".
//
//   bytes  field                 width  meaning
//   0-1    RT kind               2      000c when typed; nothing reads it
//   2-17   global administrator  16     IPv6 address, in address order
//   18-19  local administrator   u16    network order; 0 or 1 when typed
//   20-23  notation              u32    host order; 0 when typed
#include "host/layout.h"
#include "host/operations.h"
#include "host/text.h"
#include "rdrt/notation.h"
#include "rdrt/rdrt.h"

namespace bgp {

namespace {

constexpr uint16_t kLength = 24;
constexpr uint32_t kLongestTyped = 47;
constexpr uint32_t kAddressAt = 2;
constexpr uint32_t kLocalAt = 18;
constexpr uint32_t kLargestLocal = 1; // one digit, although the field has 16 bits
constexpr uint16_t kRtKind = 0x000C;
constexpr uint32_t kIpv6Family = 10;

constexpr BgpField kFields[] = {
    ByteArray("RtV6Value", 0, 20),
    Number("RtV6Type", 20, 4, 1),
};

// ----------------------------------------------------------------------------------------------------------- text in

bool ReadLocal(char digit, uint32_t *local)
{
    const char text[] = {digit, '\0'};
    char *end = nullptr;
    *local = QOV_strtoul(text, &end, 10);
    return end != nullptr && *end == '\0' && *local <= kLargestLocal;
}

// Only the last dot separates, so that an address may end in dotted decimal: "::192.0.2.1.1".
bool Read(Text text, uint8_t *value)
{
    if (!IsLong(text, 1, kLongestTyped) || HasBlank(text) || text.length < 2) {
        return false;
    }
    const uint32_t dot = text.length - 2;
    uint32_t local = 0;
    if (text.at[dot] != '.' || !ReadLocal(text.at[dot + 1], &local)) {
        return false;
    }
    char address[kLongestTyped];
    if (!Terminate({text.at, dot}, address, sizeof address) ||
        SMP_InetAToN(address, value + kAddressAt, kIpv6Family) != 0) {
        return false;
    }
    StoreBig(value, kRtKind, 2);
    StoreBig(value + kLocalAt, local, 2);
    Store(value + 20, uint32_t{0});
    return true;
}

// ---------------------------------------------------------------------------------------------------------- text out

uint32_t PrintVrfRtV6(const uint8_t *value, uint32_t, char *buffer, uint32_t *printed)
{
    char address[256];
    if (inet_ntop6(value + kAddressAt, address, sizeof address) == nullptr) {
        return DT_ERR_FAIL;
    }
    return Printed(Print(buffer, kPrintLimit, "%s.%u", {address, LoadBig(value + kLocalAt, 2)}), printed);
}

} // namespace

const BgpLayout kVrfRtV6Layout = Layout(kFields, kLength);

namespace {

constexpr FormatInRule kIn{
    .typeId = 320, .length = kLength, .modes = kTextOnly, .read = Unexplained<SYSDT_Str2VrfRtV6>};
constexpr FormatOutRule kOut{.modes = kTextOrRaw,
                             .print = PrintVrfRtV6,
                             .textSize = kTextSize,
                             .valueSize = kLength,
                             .mode3 = Mode3::kTextAsRaw,
                             .zeroExtends = true};
constexpr HelpRule kHelp{.text = "STRING<4-47>"};
constexpr LuaRule kLua{.layout = kVrfRtV6Layout, .pops = 2};

} // namespace

} // namespace bgp

uint32_t SYSDT_Str2VrfRtV6(const char *text, void *value)
{
    if (text == nullptr || value == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    return bgp::Read(bgp::Trim(text), static_cast<uint8_t *>(value)) ? DT_OK : DT_ERR_INVALID_PARAM;
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
BGP_ENDIAN(SYSDT_VrfRtV6Endian, bgp::kVrfRtV6Layout)
