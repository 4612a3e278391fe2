// CVRFNAME: the name of a VRF, a text type of the host, which supplies all its operations but FormatOut in mode 2.
// There the record below becomes a composite form, a run of typed items.
//
//   bytes  field   width     meaning
//   0-31   name    char[32]  the name; a first word of zero means that there is none
//   32-35  number  u32       a number that belongs to the name
//   36-39  kind    u32       1: the composite form carries number and name; else the name alone
//
//   item: u16 type (1 number in decimal, 0 name), u16 length with the NUL, the NUL-terminated text
#include "host/bytes.h"
#include "host/contract.h"
#include "host/layout.h"
#include "types/types.h"

namespace bgp {

namespace {

constexpr uint32_t kNameSize = 32;
constexpr uint32_t kNumberAt = 32;
constexpr uint32_t kKindAt = 36;
constexpr uint32_t kRecordLength = 40; // the registered length is 32, that of the name; the two differ on purpose
constexpr uint16_t kTypeId = 292;
constexpr uint32_t kCompositeSize = 257;

constexpr uint16_t kNameItem = 0;
constexpr uint16_t kNumberItem = 1;
constexpr uint32_t kItemHead = 4;

constexpr BgpField kFields[] = {
    {"name", 0, 1, kNameSize, BGP_FIELD_TEXT, 0, 0},
    Number("number", kNumberAt, 4),
    Number("kind", kKindAt, 4),
};
constexpr BgpLayout kLayout = Layout(kFields, kRecordLength);

// Appends one item at buffer + *used. False when the host refuses the copy.
bool PutItem(uint8_t *buffer, uint16_t *used, uint16_t type, const char *text, uint32_t textLength)
{
    const auto length = static_cast<uint16_t>(textLength + 1);
    uint8_t *item = buffer + *used;
    Store(item, type);
    Store(item + 2, length);
    if (memcpy_s(item + kItemHead, kCompositeSize - *used - kItemHead, text, textLength) != 0) {
        return false;
    }
    item[kItemHead + textLength] = '\0';
    *used = static_cast<uint16_t>(*used + kItemHead + length);
    return true;
}

uint32_t PutNothing(uint8_t *buffer, uint16_t *used)
{
    constexpr uint16_t kEmptyLength = kItemHead + 1; // an item of length 0, and one zero byte
    std::memset(buffer, 0, kEmptyLength);
    *used = kEmptyLength;
    return DT_OK;
}

// A name without a terminator counts as one of 31 characters.
uint32_t NameLength(const char *name)
{
    const void *end = std::memchr(name, '\0', kNameSize - 1);
    return end == nullptr ? kNameSize - 1 : static_cast<uint32_t>(static_cast<const char *>(end) - name);
}

} // namespace

constinit const Type kCvrfName = MakeType({
    .name = "CVRFNAME",
    .description = "the name of a VRF",
    .layout = &kLayout,
    .rules = kHostRules,
    .shortestText = 1,
    .longestText = kNameSize - 1,
    .typeId = kTypeId,
    .valueLength = kNameSize,
    .checkedLength = 0,
    .typingMode = 1,
    .network = BGP_NETWORK_NONE,
    .lua = BGP_LUA_TYPED,
    .traits =
        BGP_TRAIT_HOST_TEXT | BGP_TRAIT_COPIES_RAW | BGP_TRAIT_ANY_LENGTH | BGP_TRAIT_COMPOSES | BGP_TRAIT_SETS_ANY,
    .explain = ExplainByHost<SYSDT_StringFormatIn, kTypeId, kNameSize>,
});

} // namespace bgp

uint32_t SYS_DT_CVrfName_Str2Cplx(const void *record, uint16_t *outLength, void *buffer)
{
    if (record == nullptr) {
        return 0xFFFFFFFF;
    }
    const auto *bytes = static_cast<const uint8_t *>(record);
    auto *items = static_cast<uint8_t *>(buffer);
    if (bgp::Load<uint32_t>(bytes) == 0) {
        return bgp::PutNothing(items, outLength);
    }
    const auto *name = static_cast<const char *>(record);
    uint16_t used = 0;
    if (bgp::Load<uint32_t>(bytes + bgp::kKindAt) == 1) {
        char number[16] = {}; // the empty text, should the host write none
        QOV_Uint32ToStr(bgp::Load<uint32_t>(bytes + bgp::kNumberAt), number, 10);
        if (!bgp::PutItem(items, &used, bgp::kNumberItem, number, QOV_StrLen(number))) {
            return DT_ERR_FAIL;
        }
    }
    if (!bgp::PutItem(items, &used, bgp::kNameItem, name, bgp::NameLength(name))) {
        return DT_ERR_FAIL;
    }
    *outLength = used;
    return DT_OK;
}

uint32_t SYS_DT_APPCVRFNAME_FormatOut(const DataTypeRequest *request, uint32_t typeId, uint32_t length,
                                      const void *value, uint16_t *outTypeId, uint16_t *outLength, void **outBuffer)
{
    constexpr uint32_t kCompositeMode = 2;
    if (bgp::IsNull(request, value, {outTypeId, outLength, outBuffer})) {
        return DT_ERR_NULL_PTR;
    }
    if (request->FormatMode != kCompositeMode) {
        return SYSDT_StringFormatOut(request, typeId, length, value, outTypeId, outLength, outBuffer);
    }
    if (typeId != bgp::kTypeId || length != bgp::kRecordLength) {
        return DT_ERR_TYPE_MISMATCH;
    }
    // The composite form always gets memory of its own; a caller's buffer is made for the plain text.
    void *buffer = SYS_DataTypeMallocByHandle(request->MemoryHandle, bgp::kCompositeSize);
    if (buffer == nullptr) {
        return DT_ERR_NO_MEMORY;
    }
    std::memset(buffer, 0, bgp::kCompositeSize);
    const uint32_t code = SYS_DT_CVrfName_Str2Cplx(value, outLength, buffer);
    *outTypeId = bgp::kTypeId;
    *outBuffer = buffer;
    return code == DT_OK ? DT_OK : DT_ERR_CONVERT;
}
