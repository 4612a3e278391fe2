// The host's own type operations, which plug-ins put into their rows: object index, block, plain string.
//
// Index: u32, host order. String: length bytes (0 stands for 32), NUL-padded, one NUL at least.
#include "bgp_host_services.h"
#include "object_names.h"
#include "replaceable.h"

#include <charconv>
#include <cstring>
#include <new>
#include <optional>
#include <string>
#include <string_view>

using namespace bgp::standalone;

namespace {

constexpr uint32_t kIndexLength = 4;
constexpr uint32_t kStringLength = 32; // of a string type whose length is not given
constexpr uint32_t kLongestValue = 0xFFFE;

// The mode rule of the framework: 1, 2 and 6 are text, 3 is raw, 4 and above 6 are not known, the rest is refused.
uint32_t ModeRefusal(uint8_t mode, bool rawServed)
{
    if (mode > 6 || mode == 4) {
        return DT_ERR_MODE_UNSUPPORTED;
    }
    const bool served = mode == 1 || mode == 2 || mode == 6 || (mode == 3 && rawServed);
    return served ? DT_OK : DT_ERR_FAIL;
}

std::string_view Trimmed(std::string_view text)
{
    const size_t first = text.find_first_not_of(" \t");
    if (first == text.npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

// A value without alignment.
uint32_t Word(const void *value)
{
    uint32_t word;
    std::memcpy(&word, value, sizeof word);
    return word;
}

// What FormatIn hands back: a value of length bytes, of which the given ones are the first and the rest zero.
uint32_t StoreValue(const DataTypeRequest &request, uint32_t typeId, const void *bytes, size_t count, uint32_t length,
                    uint16_t *outTypeId, uint16_t *outLength, void **outBuffer)
{
    *outTypeId = static_cast<uint16_t>(typeId);
    void *value = SYS_DataTypeMallocByHandle(request.MemoryHandle, length);
    *outLength = static_cast<uint16_t>(value == nullptr ? 0 : length);
    if (value == nullptr) {
        return DT_ERR_NO_MEMORY;
    }
    std::memset(value, 0, length);
    std::memcpy(value, bytes, count);
    *outBuffer = value;
    return DT_OK;
}

// What FormatOut hands back, in the caller's buffer if there is one.
uint32_t StoreResult(const DataTypeRequest &request, uint16_t typeId, std::string_view bytes, uint32_t noMemory,
                     uint16_t *outTypeId, uint16_t *outLength, void **outBuffer)
{
    if (*outBuffer == nullptr) {
        *outBuffer = SYS_DataTypeMallocByHandle(request.MemoryHandle, static_cast<uint32_t>(bytes.size()));
    }
    if (*outBuffer == nullptr) {
        *outTypeId = 0;
        *outLength = 0;
        return noMemory;
    }
    std::memcpy(*outBuffer, bytes.data(), bytes.size());
    *outTypeId = typeId;
    *outLength = static_cast<uint16_t>(bytes.size());
    return DT_OK;
}

uint32_t StoreText(const DataTypeRequest &request, const std::string &text, uint16_t *outTypeId, uint16_t *outLength,
                   void **outBuffer)
{
    return StoreResult(request, DT_TYPE_TEXT, {text.c_str(), text.size() + 1}, DT_ERR_NO_MEMORY, outTypeId, outLength,
                       outBuffer);
}

uint32_t StoreCopy(const DataTypeRequest &request, const void *value, uint32_t length, uint16_t *outTypeId,
                   uint16_t *outLength, void **outBuffer)
{
    return StoreResult(request, DT_TYPE_RAW, {static_cast<const char *>(value), length}, DT_ERR_FAIL, outTypeId,
                       outLength, outBuffer);
}

std::optional<uint32_t> ReadIndex(uint32_t typeId, std::string_view text)
{
    if (text.empty()) {
        return std::nullopt;
    }
    if (const auto named = detail::FindObject(typeId, text)) {
        return named;
    }
    uint32_t number;
    const char *end = text.data() + text.size();
    const auto [behind, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && behind == end ? std::optional(number) : std::nullopt;
}

uint32_t LengthOfString(uint32_t length)
{
    return length == 0 ? kStringLength : length;
}

std::string_view TextOf(const void *value, uint32_t length)
{
    const auto *text = static_cast<const char *>(value);
    return {text, strnlen(text, LengthOfString(length))};
}

// Runs a piece that may throw for lack of memory.
template <class Work>
uint32_t Guarded(Work work) noexcept
{
    try {
        return work();
    } catch (const std::bad_alloc &) {
        return DT_ERR_NO_MEMORY;
    }
}

// The slot's index counted from the bottom, so that it names the same slot after a push.
int32_t FromBottom(lua_State *L, int32_t index)
{
    const int32_t top = SYSDT_SPTI_GetTop(L);
    return index < 0 && index >= -top ? top + 1 + index : index;
}

} // namespace

BGP_REPLACEABLE uint32_t SYS_DT_UINT32IndexFormatIn(const DataTypeRequest *request, uint32_t typeId, uint32_t,
                                                    char *text, uint16_t *outTypeId, uint16_t *outLength,
                                                    void **outBuffer)
{
    if (request == nullptr || text == nullptr || outTypeId == nullptr || outLength == nullptr || outBuffer == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    if (const uint32_t code = ModeRefusal(request->FormatMode, false)) {
        return code;
    }
    return Guarded([&]() -> uint32_t {
        const auto index = ReadIndex(typeId, Trimmed(text));
        if (!index) {
            return DT_ERR_INVALID_VALUE;
        }
        return StoreValue(*request, typeId, &*index, kIndexLength, kIndexLength, outTypeId, outLength, outBuffer);
    });
}

BGP_REPLACEABLE uint32_t SYS_DT_IndexFormatOut(const DataTypeRequest *request, uint32_t typeId, uint32_t,
                                               const void *value, uint16_t *outTypeId, uint16_t *outLength,
                                               void **outBuffer)
{
    if (request == nullptr || value == nullptr || outTypeId == nullptr || outLength == nullptr ||
        outBuffer == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    if (const uint32_t code = ModeRefusal(request->FormatMode, true)) {
        return code;
    }
    if (request->FormatMode == 3) {
        return StoreCopy(*request, value, kIndexLength, outTypeId, outLength, outBuffer);
    }
    return Guarded([&] {
        const uint32_t index = Word(value);
        const std::string text = detail::NameOfObject(typeId, index).value_or(std::to_string(index));
        return StoreText(*request, text, outTypeId, outLength, outBuffer);
    });
}

BGP_REPLACEABLE uint32_t SYSDT_Uint32LuaSet(lua_State *L, int32_t tableIndex, const char *fieldName, uint32_t,
                                            uint16_t length, const void *value)
{
    if (L == nullptr || fieldName == nullptr || value == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    const int32_t table = FromBottom(L, tableIndex);
    if (length < kIndexLength || SYSDT_SPTI_IsTable(L, table) == 0) {
        return DT_ERR_INVALID_PARAM;
    }
    SYSDT_SPTI_PushUInt(L, Word(value));
    SYSDT_SPTI_SetField(L, table, fieldName);
    return DT_OK;
}

BGP_REPLACEABLE uint32_t SYSDT_Uint32LuaGet(lua_State *L, int32_t tableIndex, const char *fieldName, uint32_t,
                                            uint16_t length, void *outValue)
{
    if (L == nullptr || fieldName == nullptr || outValue == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    if (length < kIndexLength) {
        return DT_ERR_INVALID_PARAM;
    }
    SYSDT_SPTI_GetField(L, tableIndex, fieldName);
    const bool isNumber = SYSDT_SPTI_IsNumber(L, -1) != 0;
    if (isNumber) {
        const uint32_t word = SYSDT_SPTI_ToUInt(L, -1);
        std::memcpy(outValue, &word, sizeof word);
    }
    SYSDT_SPTI_Pop(L, 1);
    return isNumber ? DT_OK : DT_ERR_INVALID_PARAM;
}

BGP_REPLACEABLE uint32_t SYSDT_StringFormatIn(const DataTypeRequest *request, uint32_t typeId, uint32_t length,
                                              char *text, uint16_t *outTypeId, uint16_t *outLength, void **outBuffer)
{
    if (request == nullptr || text == nullptr || outTypeId == nullptr || outLength == nullptr || outBuffer == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    if (const uint32_t code = ModeRefusal(request->FormatMode, false)) {
        return code;
    }
    const uint32_t whole = LengthOfString(length);
    const std::string_view trimmed = Trimmed(text);
    if (trimmed.empty() || trimmed.size() >= whole || whole > kLongestValue) {
        return DT_ERR_INVALID_VALUE;
    }
    return StoreValue(*request, typeId, trimmed.data(), trimmed.size(), whole, outTypeId, outLength, outBuffer);
}

BGP_REPLACEABLE uint32_t SYSDT_StringFormatOut(const DataTypeRequest *request, uint32_t, uint32_t length,
                                               const void *value, uint16_t *outTypeId, uint16_t *outLength,
                                               void **outBuffer)
{
    if (request == nullptr || value == nullptr || outTypeId == nullptr || outLength == nullptr ||
        outBuffer == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    if (const uint32_t code = ModeRefusal(request->FormatMode, true)) {
        return code;
    }
    if (length > kLongestValue) {
        return DT_ERR_FAIL;
    }
    if (request->FormatMode == 3) {
        return StoreCopy(*request, value, LengthOfString(length), outTypeId, outLength, outBuffer);
    }
    return Guarded(
        [&] { return StoreText(*request, std::string(TextOf(value, length)), outTypeId, outLength, outBuffer); });
}

BGP_REPLACEABLE uint32_t SYSDT_StringHelp(const DataTypeRequest *request, uint32_t, uint32_t length, const char *,
                                          const uint32_t *helpArgument, DataTypeHelpInfo *helpInfo)
{
    if (request == nullptr || helpArgument == nullptr || helpInfo == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    if (request->FormatMode != 1 && request->FormatMode != 6) {
        return DT_OK;
    }
    if (helpArgument[0] == 0 || helpArgument[1] == 0) {
        return DT_ERR_INVALID_PARAM;
    }
    if (const uint32_t code = SYSDT_InitHelpInfo(request->MemoryHandle, helpInfo, 1, helpArgument[1])) {
        return code;
    }
    const uint32_t code = Guarded([&]() -> uint32_t {
        const std::string text = "STRING<1-" + std::to_string(LengthOfString(length) - 1) + ">";
        const auto size = static_cast<uint32_t>(text.size() + 1);
        void *memory = SYS_DataTypeMallocByHandle(request->MemoryHandle, size);
        if (memory == nullptr) {
            return DT_ERR_NO_MEMORY;
        }
        helpInfo->Entries[0].Text = static_cast<char *>(std::memcpy(memory, text.c_str(), size));
        return DT_OK;
    });
    if (code != DT_OK) {
        SYSDT_ClearHelpInfo(helpInfo);
    }
    return code;
}

BGP_REPLACEABLE uint32_t SYSDT_StringLuaSet(lua_State *L, int32_t tableIndex, const char *fieldName, uint32_t,
                                            uint16_t length, const void *value)
{
    if (L == nullptr || fieldName == nullptr || value == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    const int32_t table = FromBottom(L, tableIndex);
    if (SYSDT_SPTI_IsTable(L, table) == 0) {
        return DT_ERR_INVALID_PARAM;
    }
    const std::string_view text = TextOf(value, length);
    SYSDT_SPTI_PushLString(L, text.data(), text.size());
    SYSDT_SPTI_SetField(L, table, fieldName);
    return DT_OK;
}

BGP_REPLACEABLE uint32_t SYSDT_StringLuaGet(lua_State *L, int32_t tableIndex, const char *fieldName, uint32_t,
                                            uint16_t length, void *outValue)
{
    if (L == nullptr || fieldName == nullptr || outValue == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    SYSDT_SPTI_GetField(L, tableIndex, fieldName);
    size_t size = 0;
    const char *text = SYSDT_SPTI_ToLString(L, -1, &size);
    const uint32_t whole = LengthOfString(length);
    const bool fits = text != nullptr && size < whole;
    if (fits) {
        std::memset(outValue, 0, whole);
        std::memcpy(outValue, text, size);
    }
    SYSDT_SPTI_Pop(L, 1);
    return fits ? DT_OK : DT_ERR_INVALID_PARAM;
}
