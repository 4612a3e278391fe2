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

// ------------------------------------------------------------------------- FormatOut of another record than the value

// The list of items of which the value is one: a count, and behind a head of 44 bytes each item's type, length and
// data. A bare value would be taken for such a list.
std::string ItemList(const BgpTypeFacts &type, std::string_view value)
{
    constexpr size_t kHead = 44, kCountAt = 24;
    std::string items(kHead, '\0');
    const auto put = [&items](size_t at, uint16_t number) { std::memcpy(&items[at], &number, sizeof number); };
    const auto append = [&items, &put](uint16_t typeId, std::string_view data) {
        const size_t at = items.size();
        items.resize(at + 4);
        put(at, typeId);
        put(at + 2, static_cast<uint16_t>(data.size()));
        items += data;
    };
    put(kCountAt, 2);
    append(DT_TYPE_TEXT, std::string("Attribute IDs:") + '\0');
    append(type.TypeId, value.substr(0, type.ValueLength));
    return items;
}

// The value itself, or what is made of it.
std::string_view RecordToPrint(const BgpTypeFacts &type, std::string_view value, uint8_t mode, std::string &made)
{
    constexpr uint8_t kComposingMode = 2;
    if ((type.Traits & BGP_TRAIT_PRINTS_ITEMS) != 0) {
        return made = ItemList(type, value);
    }
    if ((type.Traits & BGP_TRAIT_COMPOSES) != 0) {
        made = value;
        made.resize(mode == kComposingMode ? type.Layout->Length : type.ValueLength);
        return made;
    }
    return value;
}

// --------------------------------------------------------------------------------------------------------------------

// The calling thread's results, for one call.
class Scratch {
public:
    ~Scratch() { results.Empty(); }
    Results &results = OfThread();

private:
    static Results &OfThread()
    {
        thread_local Results results;
        return results;
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

namespace {

explain::PlugIn &Functions()
{
    static explain::PlugIn functions; // one plug-in for the whole run
    return functions;
}

template <class Function>
bool Resolve(Function &function, const char *name, std::string *error)
{
    function = reinterpret_cast<Function>(host::PlugInSymbol(name));
    if (function == nullptr) {
        *error = std::string("it has no ") + name;
    }
    return function != nullptr;
}

bool ResolveAll(explain::PlugIn &functions, std::string *error)
{
    return Resolve(functions.typeAt, "Bgp_TypeAt", error) &&
           Resolve(functions.describeType, "Bgp_DescribeType", error) &&
           Resolve(functions.describeSubType, "Bgp_DescribeSubType", error) &&
           Resolve(functions.describeValue, "Bgp_DescribeValue", error) &&
           Resolve(functions.explainRefusal, "Bgp_ExplainRefusal", error) &&
           Resolve(functions.sayReason, "Bgp_SayReason", error) &&
           Resolve(functions.expectedWord, "Bgp_ExpectedWord", error);
}

// Whether the plug-in tells of every row that it registers.
bool TellsAll(const explain::PlugIn &functions, std::string *error)
{
    for (const DataTypeDescriptor *row : host::Rows()) {
        if (functions.describeType(row->TypeId) == nullptr) {
            *error = std::string("it says nothing of ") + row->Name;
            return false;
        }
    }
    return true;
}

std::string FileOf(const std::string &path)
{
    const char *environment = std::getenv("BGPDT_PLUGIN");
    return !path.empty() ? path : environment != nullptr ? environment : BGPDT_PLUGIN_NAME;
}

} // namespace

bool Load(const std::string &path, std::string *error)
{
    return host::LoadPlugIn(FileOf(path).c_str(), error) && ResolveAll(Functions(), error) &&
           TellsAll(Functions(), error);
}

const explain::PlugIn &PlugInFunctions()
{
    return Functions();
}

const DataTypeDescriptor *FindType(std::string_view name)
{
    std::string upper(name);
    std::transform(upper.begin(), upper.end(), upper.begin(),
                   [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
    return host::FindRow(std::string_view(upper));
}

const BgpTypeFacts &Facts(const DataTypeDescriptor &type)
{
    return *PlugInFunctions().describeType(type.TypeId); // Load() saw to it that there are some
}

bool IsValueLength(const DataTypeDescriptor &type, size_t length)
{
    const BgpTypeFacts &facts = Facts(type);
    const bool composes = (facts.Traits & BGP_TRAIT_COMPOSES) != 0;
    return length == facts.ValueLength || (composes && length == facts.Layout->Length);
}

Results::Results() : handle_(host::OpenHandle()) {}

Results::~Results()
{
    Empty();
    host::CloseHandle(handle_);
}

void Results::Empty()
{
    if (host::ScratchBlocks() != 0) { // some come from SYS_DataTypeMalloc; those of the handle may be given back too
        for (void *memory : made_) {
            SYS_DataTypeFree(memory);
        }
    }
    made_.clear();
    host::ResetHandle(handle_);
}

ParsedThere Parse(Results &results, const Subject &subject, char *text, size_t length, uint8_t mode)
{
    // A text of the host is stored in as many bytes as it is told; the other types are told the length of the text.
    const bool ofHost = (subject.facts->Traits & BGP_TRAIT_HOST_TEXT) != 0;
    const size_t told = ofHost ? subject.facts->ValueLength : length + 1;
    const DataTypeRequest request = results.Request(mode);
    const DataTypeDescriptor &type = *subject.row;
    uint16_t outTypeId = 0;
    uint16_t outLength = 0;
    void *value = nullptr;
    ParsedThere parsed;
    parsed.code =
        type.FormatIn(&request, type.TypeId, static_cast<uint32_t>(told), text, &outTypeId, &outLength, &value);
    if (parsed.code == DT_OK && value != nullptr) {
        results.Keep(value);
        parsed.value = {static_cast<const char *>(value), outLength};
    }
    return parsed;
}

Parsed Parse(const DataTypeDescriptor &type, const std::string &text, uint8_t mode)
{
    const Scratch scratch;
    std::string copy = text;
    const ParsedThere parsed = Parse(scratch.results, Subject(type), copy.data(), copy.size(), mode);
    return {parsed.code, std::string(parsed.value)};
}

explain::Refusal WhyRefused(const DataTypeDescriptor &type, const std::string &text, uint8_t mode)
{
    const Scratch scratch;
    return explain::ExplainRefusal(PlugInFunctions(), Facts(type), scratch.results.Request(mode), text);
}

PrintedThere Print(Results &results, const Subject &subject, std::string_view value, uint8_t mode)
{
    std::string made;
    const std::string_view record = RecordToPrint(*subject.facts, value, mode, made);
    const DataTypeRequest request = results.Request(mode);
    const DataTypeDescriptor &type = *subject.row;
    uint16_t length = 0;
    void *text = nullptr;
    PrintedThere printed;
    printed.code = type.FormatOut(&request, type.TypeId, static_cast<uint32_t>(record.size()), record.data(),
                                  &printed.typeId, &length, &text);
    if (text != nullptr) {
        results.Keep(text);
    }
    if (printed.code == DT_OK && text != nullptr) {
        const bool terminated = printed.typeId == DT_TYPE_TEXT && length > 0;
        // A value with nothing to print reports length 1 and may leave the buffer unwritten.
        printed.text = {static_cast<const char *>(text), terminated ? length - 1u : length};
    }
    return printed;
}

Printed Print(const DataTypeDescriptor &type, const std::string &value, uint8_t mode)
{
    const Scratch scratch;
    const PrintedThere printed = Print(scratch.results, Subject(type), value, mode);
    return {printed.code, printed.typeId, std::string(printed.text)};
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
    const Scratch scratch;
    const DataTypeRequest request = scratch.results.Request(1);
    const uint32_t words[2] = {1, 1};
    DataTypeHelpInfo info{};
    std::string text;
    if (type.Help(&request, type.TypeId, 0, typed.c_str(), words, &info) == DT_OK && info.EntryCount > 0 &&
        info.Entries != nullptr && info.Entries[0].Text != nullptr) {
        text = info.Entries[0].Text;
        scratch.results.Keep(info.Entries[0].Text);
    }
    return text;
}

std::optional<std::string> Network(const DataTypeDescriptor &type, const std::string &value)
{
    if (type.Endian == nullptr) {
        return std::nullopt;
    }
    constexpr size_t kFirstWord = 4;
    const uint8_t how = Facts(type).Network;
    std::string swapped = how == BGP_NETWORK_PAYLOAD ? value.substr(kFirstWord, type.BinaryLength) : value;
    const auto turn = [&swapped, how] {
        if (how == BGP_NETWORK_TYPE_FIRST) {
            std::reverse(swapped.begin(), swapped.begin() + kFirstWord);
        }
    };
    const DataTypeRequest request{1, 0};
    turn();
    type.Endian(&request, type.TypeId, static_cast<uint32_t>(swapped.size()), swapped.data());
    turn();
    return swapped;
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
