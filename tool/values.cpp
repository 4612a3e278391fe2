#include "values.h"

#include "bgp_host_services.h"
#include "bgp_standalone_host.hpp"

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace bgpdt {

namespace host = bgp::standalone;

namespace {

struct Code {
    uint32_t code;
    const char *name;
    const char *meaning;
};

constexpr Code kCodes[] = {
    {DT_OK, "DT_OK", "fine"},
    {DT_ERR_FAIL, "DT_ERR_FAIL", "refused in this mode, or not readable or printable"},
    {DT_ERR_NULL_PTR, "DT_ERR_NULL_PTR", "a pointer is missing"},
    {DT_ERR_NO_MEMORY, "DT_ERR_NO_MEMORY", "no memory for the result"},
    {DT_ERR_INVALID_PARAM, "DT_ERR_INVALID_PARAM", "not a text, table or length of the type"},
    {DT_ERR_MODE_UNSUPPORTED, "DT_ERR_MODE_UNSUPPORTED", "the type does not serve this mode"},
    {DT_ERR_LENGTH, "DT_ERR_LENGTH", "not the length of the type's values"},
    {DT_ERR_INVALID_VALUE, "DT_ERR_INVALID_VALUE", "not a value of the type"},
    {DT_ERR_TYPE_MISMATCH, "DT_ERR_TYPE_MISMATCH", "type id or length of another record"},
    {DT_ERR_CONVERT, "DT_ERR_CONVERT", "no composite form"},
    {DT_ERR_TOO_LONG, "DT_ERR_TOO_LONG", "a Lua string is longer than the text buffer"},
};

const Code *Find(uint32_t code)
{
    const auto *end = std::end(kCodes);
    const auto *found = std::find_if(std::begin(kCodes), end, [code](const Code &row) { return row.code == code; });
    return found == end ? nullptr : found;
}

// Route keys that are sub-types of BOLPREFIX: their operations work on a whole BOLPREFIX value, although their rows
// register less of it.
constexpr uint16_t kEvnPrefix = 281, kL2VpnPrefix = 294, kVpnv4McPrefix = 295, kMdtPrefix = 296;
constexpr size_t kBolPrefixLength = 89;

// Of two of them, Endian alone works on the registered length: what stands behind the sub-type word.
constexpr size_t kPayloadAt = 4;

constexpr uint16_t kBgpLsPrefix = 1299;
constexpr size_t kNlriTypeLength = 4;

constexpr uint16_t kText = 25; // base kind

// ------------------------------------------------------------------------- FormatOut of another record than the value

// The list of items that ATTRIDBITMAP prints: a count, and behind a head of 44 bytes each item's type, length and data.
// A bare set would be taken for such a list.
std::string AttributeIdItems(const std::string &value, uint8_t)
{
    constexpr size_t kHead = 44, kCountAt = 24;
    constexpr uint16_t kTextItem = 25, kSetItem = 290;
    std::string items(kHead, '\0');
    const auto put = [&items](size_t at, uint16_t number) { std::memcpy(&items[at], &number, sizeof number); };
    const auto append = [&items, &put](uint16_t type, const std::string &data) {
        const size_t at = items.size();
        items.resize(at + 4);
        put(at, type);
        put(at + 2, static_cast<uint16_t>(data.size()));
        items += data;
    };
    put(kCountAt, 2);
    append(kTextItem, std::string("Attribute IDs:") + '\0');
    append(kSetItem, value.substr(0, 32));
    return items;
}

// The record that CVRFNAME makes a composite form of in mode 2: the 32 bytes of the name, then a number and a kind.
std::string NameRecord(const std::string &value, uint8_t mode)
{
    std::string record = value;
    record.resize(mode == 2 ? 40 : 32);
    return record;
}

struct OtherRecord {
    uint16_t typeId;
    std::string (*make)(const std::string &value, uint8_t mode);
};

constexpr OtherRecord kOtherRecords[] = {{290, AttributeIdItems}, {292, NameRecord}};

std::string RecordToPrint(uint16_t typeId, const std::string &value, uint8_t mode)
{
    for (const OtherRecord &other : kOtherRecords) {
        if (other.typeId == typeId) {
            return other.make(value, mode);
        }
    }
    return value;
}

// --------------------------------------------------------------------------------------------------------------------

// A memory handle for one call.
class Scratch {
public:
    explicit Scratch(uint8_t mode) : request{mode, Handle()} {}
    ~Scratch() { host::ResetHandle(request.MemoryHandle); }
    Scratch(const Scratch &) = delete;
    Scratch &operator=(const Scratch &) = delete;
    // Gives back what came from SYS_DataTypeMalloc; what came by handle goes with it anyway.
    void Release(void *memory) const
    {
        if (host::ScratchBlocks() != 0) {
            SYS_DataTypeFree(memory);
        }
    }
    const DataTypeRequest request;

private:
    static uint32_t Handle()
    {
        static const uint32_t handle = host::OpenHandle();
        return handle;
    }
};

} // namespace

std::string CodeName(uint32_t code)
{
    if (const Code *row = Find(code)) {
        return row->name;
    }
    char text[16];
    std::snprintf(text, sizeof text, "0x%x", code);
    return text;
}

std::string CodeMeaning(uint32_t code)
{
    const Code *row = Find(code);
    return row == nullptr ? "" : row->meaning;
}

bool Load(const std::string &path, std::string *error)
{
    const char *environment = std::getenv("BGPDT_PLUGIN");
    const std::string file = !path.empty() ? path : environment != nullptr ? environment : BGPDT_PLUGIN_NAME;
    return host::LoadPlugIn(file.c_str(), error);
}

const DataTypeDescriptor *FindType(std::string_view name)
{
    std::string upper(name);
    std::transform(upper.begin(), upper.end(), upper.begin(),
                   [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
    return host::FindRow(std::string_view(upper));
}

uint8_t TypingMode(const DataTypeDescriptor &type)
{
    constexpr uint16_t kStructured = 26;
    return type.BaseKind == kStructured ? 2 : 1;
}

size_t ValueLength(const DataTypeDescriptor &type)
{
    switch (type.TypeId) {
    case kEvnPrefix:
    case kL2VpnPrefix:
    case kVpnv4McPrefix:
    case kMdtPrefix:
        return kBolPrefixLength;
    default:
        return type.BinaryLength;
    }
}

namespace {

Parsed ParseWithLength(DataTypeFormatIn formatIn, uint32_t typeId, size_t length, const std::string &text, uint8_t mode)
{
    const Scratch scratch(mode);
    std::string copy = text; // one type may write to the text in mode 1
    uint16_t outTypeId = 0;
    uint16_t outLength = 0;
    void *value = nullptr;
    Parsed parsed;
    parsed.code =
        formatIn(&scratch.request, typeId, static_cast<uint32_t>(length), copy.data(), &outTypeId, &outLength, &value);
    if (parsed.code == DT_OK && value != nullptr) {
        parsed.value.assign(static_cast<const char *>(value), outLength);
        scratch.Release(value);
    }
    return parsed;
}

} // namespace

Parsed Parse(const DataTypeDescriptor &type, const std::string &text, uint8_t mode)
{
    // A text of the host is stored in as many bytes as it is told; the other types are told the length of the text.
    const size_t length = type.BaseKind == kText ? type.BinaryLength : text.size() + 1;
    return ParseWithLength(type.FormatIn, type.TypeId, length, text, mode);
}

Parsed Parse(DataTypeFormatIn formatIn, uint32_t typeId, const std::string &text, uint8_t mode)
{
    return ParseWithLength(formatIn, typeId, text.size() + 1, text, mode);
}

Printed Print(const DataTypeDescriptor &type, const std::string &value, uint8_t mode)
{
    const Scratch scratch(mode);
    const std::string record = RecordToPrint(type.TypeId, value, mode);
    uint16_t length = 0;
    void *text = nullptr;
    Printed printed;
    printed.code = type.FormatOut(&scratch.request, type.TypeId, static_cast<uint32_t>(record.size()), record.data(),
                                  &printed.typeId, &length, &text);
    if (printed.code == DT_OK && text != nullptr) {
        const bool terminated = printed.typeId == DT_TYPE_TEXT && length > 0;
        // A value with nothing to print reports length 1 and may leave the buffer unwritten.
        printed.text.assign(static_cast<const char *>(text), terminated ? length - 1u : length);
    }
    if (text != nullptr) {
        scratch.Release(text);
    }
    return printed;
}

uint32_t Check(const DataTypeDescriptor &type, const std::string &value)
{
    return type.Check(&type, type.TypeId, static_cast<uint32_t>(value.size()), value.data());
}

std::string Help(const DataTypeDescriptor &type, const std::string &typed)
{
    if (type.Help == nullptr) {
        return "";
    }
    const Scratch scratch(1);
    const uint32_t words[2] = {1, 1};
    DataTypeHelpInfo info{};
    std::string text;
    if (type.Help(&scratch.request, type.TypeId, 0, typed.c_str(), words, &info) == DT_OK && info.EntryCount > 0 &&
        info.Entries != nullptr && info.Entries[0].Text != nullptr) {
        text = info.Entries[0].Text;
        scratch.Release(info.Entries[0].Text);
    }
    return text;
}

std::optional<std::string> Network(const DataTypeDescriptor &type, const std::string &value)
{
    if (type.Endian == nullptr) {
        return std::nullopt;
    }
    std::string swapped = value;
    if (type.TypeId == kVpnv4McPrefix || type.TypeId == kMdtPrefix) {
        swapped = value.substr(kPayloadAt, type.BinaryLength);
    }
    // The Endian of BGP-LS keys reads the NLRI type in network order, on the way in; so it gets it that way.
    const auto turn = [&swapped, &type] {
        if (type.TypeId == kBgpLsPrefix) {
            std::reverse(swapped.begin(), swapped.begin() + kNlriTypeLength);
        }
    };
    const DataTypeRequest request{1, 0};
    turn();
    type.Endian(&request, type.TypeId, static_cast<uint32_t>(swapped.size()), swapped.data());
    turn();
    return swapped;
}

std::string Hex(std::string_view bytes, bool grouped)
{
    static constexpr char kDigits[] = "0123456789abcdef";
    std::string hex;
    for (size_t i = 0; i < bytes.size(); ++i) {
        const auto byte = static_cast<uint8_t>(bytes[i]);
        if (grouped && i != 0 && i % 4 == 0) {
            hex += ' ';
        }
        hex += kDigits[byte >> 4];
        hex += kDigits[byte & 15];
    }
    return hex;
}

std::optional<std::string> FromHex(std::string_view hex)
{
    static constexpr std::string_view kDigits = "0123456789abcdef";
    std::string bytes;
    size_t high = kDigits.npos;
    for (const char character : hex) {
        if (character == ' ' || character == ':') {
            continue;
        }
        const size_t digit = kDigits.find(static_cast<char>(std::tolower(static_cast<unsigned char>(character))));
        if (digit == kDigits.npos) {
            return std::nullopt;
        }
        if (high == kDigits.npos) {
            high = digit;
        } else {
            bytes += static_cast<char>(high << 4 | digit);
            high = kDigits.npos;
        }
    }
    return high == kDigits.npos ? std::optional(bytes) : std::nullopt;
}

} // namespace bgpdt
