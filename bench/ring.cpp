#include "ring.h"

#include "bgp_standalone_host.hpp"
#include "fuzz/text_changes.h"
#include "pattern.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <unordered_set>

namespace bgp::bench {

namespace {

namespace host = bgp::standalone;

constexpr uint32_t kMostTries = 8; // for each text

// Null when the plug-in refuses. The value is in the host's memory.
const uint8_t *ReadText(Ring &ring, const char *text, uint32_t handle, uint16_t *length)
{
    const DataTypeRequest request{ring.mode, handle};
    std::string own = text; // the operation may write to its text
    uint16_t typeId = 0;
    void *value = nullptr;
    const uint32_t code = ring.type->FormatIn(&request, ring.type->TypeId, static_cast<uint32_t>(own.size() + 1),
                                              own.data(), &typeId, length, &value);
    return code == DT_OK ? static_cast<const uint8_t *>(value) : nullptr;
}

void GiveBack(const Ring &ring, const void *value)
{
    if (ring.plain) {
        SYS_DataTypeFree(const_cast<void *>(value));
    }
}

// A text that the host reads may be shorter than what is read of it when it prints; the registered length is enough.
void AddValue(Ring &ring, const uint8_t *value, uint32_t length)
{
    const bool isHosts = (ring.facts->Traits & BGP_TRAIT_HOST_TEXT) != 0;
    ring.length = isHosts ? ring.type->BinaryLength : length;
    ring.values.insert(ring.values.end(), value, value + (length < ring.length ? length : ring.length));
    ++ring.count;
    ring.values.resize(size_t{ring.count} * ring.length);
}

void AddText(Ring &ring, const std::string &text, uint32_t handle)
{
    uint16_t length = 0;
    const uint8_t *value = ReadText(ring, text.c_str(), handle, &length);
    if (value == nullptr) {
        std::fprintf(stderr, "bench: %s refuses %s\n", ring.type->Name, text.c_str());
        std::exit(3);
    }
    ring.plain = host::ScratchBlocks() != 0;
    ring.textAt.push_back(static_cast<uint32_t>(ring.texts.size()));
    ring.texts.append(text).push_back('\0');
    AddValue(ring, value, length);
    GiveBack(ring, value);
}

uint8_t Nibble(char digit)
{
    return static_cast<uint8_t>(digit <= '9' ? digit - '0' : digit - 'a' + 10);
}

// "89:0900..." to a value of 89 bytes.
void AddBytes(Ring &ring, const char *bytes)
{
    char *at = nullptr;
    const auto length = static_cast<uint32_t>(std::strtoul(bytes, &at, 10));
    std::vector<uint8_t> value(length);
    for (uint8_t &byte : value) {
        if (at[1] == '\0') {
            break;
        }
        byte = static_cast<uint8_t>(Nibble(at[1]) << 4 | Nibble(at[2]));
        at += 2;
    }
    AddValue(ring, value.data(), length);
}

const BgpTypeFacts *FactsOf(const DataTypeDescriptor &type)
{
    auto *const describe = reinterpret_cast<decltype(&Bgp_DescribeType)>(host::PlugInSymbol("Bgp_DescribeType"));
    return describe(type.TypeId);
}

// Does the last value print?
bool Prints(Ring &ring, uint32_t handle)
{
    const DataTypeRequest request{ring.mode, handle};
    char buffer[kMostBuffer] = {};
    void *text = buffer;
    uint16_t typeId = 0;
    uint16_t length = 0;
    return ring.type->FormatOut(&request, ring.type->TypeId, ring.length, ring.Value(ring.count - 1), &typeId, &length,
                                &text) == DT_OK &&
           typeId == DT_TYPE_TEXT;
}

// Does the last value begin as the row says?
bool Begins(const Ring &ring, const char *digits)
{
    const uint8_t *byte = ring.values.data() + size_t{ring.count - 1} * ring.length;
    for (; digits != nullptr && *digits != '\0'; digits += 2, ++byte) {
        if (*byte != (Nibble(digits[0]) << 4 | Nibble(digits[1]))) {
            return false;
        }
    }
    return true;
}

} // namespace

Ring MakeRing(const Row &row, uint32_t count, uint32_t handle, bool evenNumbers)
{
    const DataTypeDescriptor *type = host::FindRow(row.type);
    Ring ring{type, FactsOf(*type), {}, {}, {}};
    ring.mode = row.mode != 0 ? row.mode : ring.facts->TypingMode;
    Random random{1, evenNumbers};
    std::unordered_set<std::string> seen;
    for (uint32_t tries = 0; ring.count < count && tries < kMostTries * count; ++tries) {
        const std::string text = MakeText(row.pattern, random);
        if (!seen.insert(text).second) {
            continue;
        }
        if (text[0] == '=') {
            AddBytes(ring, text.c_str() + 1);
        } else {
            AddText(ring, text, handle);
        }
        if (!Begins(ring, row.begins) ||
            (std::strchr(row.operations, 'o') != nullptr && ring.type->FormatOut != nullptr && !Prints(ring, handle))) {
            std::fprintf(stderr, "bench: %s is no %s %s\n", text.c_str(), row.type, row.notation);
            std::exit(3);
        }
    }
    host::ResetHandle(handle);
    return ring;
}

// ------------------------------------------------------------------------------------------------- floor and plug-in

namespace {

struct Comparison {
    const Floor &floor;
    Ring &ring;
    uint32_t handle;
    const uint8_t *kind; // how the values of the floor begin
};

bool IsOwn(const Comparison &comparison, const uint8_t *value)
{
    return std::memcmp(value, comparison.kind, comparison.floor.kindBytes) == 0;
}

// Do both refuse the text, or make the same value of it? What the plug-in makes a value of another kind of, the floor
// refuses.
bool AgreeOnText(const Comparison &comparison, const char *text)
{
    const auto &[floor, ring, handle, kind] = comparison;
    uint16_t length = 0;
    uint8_t made[kMostValue];
    const uint8_t *value = ReadText(ring, text, handle, &length);
    const bool wanted = value != nullptr && IsOwn(comparison, value);
    const bool taken = floor.read(text, made);
    void *handedOver = floor.readForHost(handle, text);
    const bool agree = taken == wanted && (handedOver != nullptr) == wanted &&
                       (!wanted || (length == floor.length && std::memcmp(made, value, length) == 0 &&
                                    std::memcmp(handedOver, value, length) == 0));
    GiveBack(ring, handedOver);
    GiveBack(ring, value);
    return agree;
}

// Do both refuse the value, or print the same text?
bool AgreeOnValue(const Comparison &comparison, const uint8_t *value)
{
    const auto &[floor, ring, handle, kind] = comparison;
    const DataTypeRequest request{ring.mode, handle};
    char buffer[kMostBuffer] = {};
    void *text = buffer;
    uint16_t typeId = 0;
    uint16_t length = 0;
    const bool printed =
        ring.type->FormatOut(&request, ring.type->TypeId, ring.length, value, &typeId, &length, &text) == DT_OK;
    char own[kMostText];
    char handedOver[kMostText];
    const int ownLength = floor.print(value, own);
    const int handedOverLength = floor.printForHost(value, handedOver);
    if (!printed) {
        return ownLength < 0 && handedOverLength < 0;
    }
    return ownLength + 1 == length && handedOverLength + 1 == length && std::strcmp(own, buffer) == 0 &&
           std::strcmp(handedOver, buffer) == 0;
}

std::string Quoted(const char *text)
{
    std::string quoted = "\"";
    for (; *text != '\0'; ++text) {
        char hex[8];
        std::snprintf(hex, sizeof hex, *text >= ' ' && *text <= '~' ? "%c" : "\\x%02x", static_cast<uint8_t>(*text));
        quoted += hex;
    }
    return quoted + '"';
}

std::string Hexed(const uint8_t *value, uint32_t length)
{
    std::string hexed;
    for (uint32_t i = 0; i < length; ++i) {
        char hex[4];
        std::snprintf(hex, sizeof hex, "%02x", value[i]);
        hexed += hex;
    }
    return hexed;
}

std::string Changed(const char *text, std::minstd_rand &random)
{
    std::vector<uint8_t> changed(text, text + std::strlen(text));
    for (uint32_t times = 1 + random() % 2; times > 0; --times) {
        fuzz::ChangeText(changed, 0, random);
    }
    return std::string(changed.begin(), changed.end()).c_str(); // up to a terminator that came in
}

std::string FindDifferentText(const Comparison &comparison, std::minstd_rand &random)
{
    for (uint32_t i = 0; i < comparison.ring.count; ++i) {
        const char *text = comparison.ring.Text(i);
        for (const std::string &one : {std::string(text), Changed(text, random), Changed(text, random)}) {
            if (!AgreeOnText(comparison, one.c_str())) {
                return Quoted(one.c_str());
            }
        }
        host::ResetHandle(comparison.handle);
    }
    return {};
}

std::string FindDifferentValue(const Comparison &comparison, std::minstd_rand &random)
{
    const uint32_t length = comparison.ring.length;
    const uint32_t free = comparison.floor.kindBytes; // from here on a value may be changed
    for (uint32_t i = 0; i < comparison.ring.count; ++i) {
        const uint8_t *value = comparison.ring.Value(i);
        std::vector<uint8_t> changed(value, value + length);
        changed[free + random() % (length - free)] = static_cast<uint8_t>(random() % 4 == 0 ? random() : random() % 4);
        for (const uint8_t *one : {value, static_cast<const uint8_t *>(changed.data())}) {
            if (!AgreeOnValue(comparison, one)) {
                return Hexed(one, length);
            }
        }
    }
    return {};
}

} // namespace

std::string FindDifference(const Row &row, const Floor &floor, Ring &ring, uint32_t handle)
{
    std::minstd_rand random(1);
    const Comparison comparison{floor, ring, handle, ring.Value(0)};
    std::string found = FindDifferentText(comparison, random);
    if (found.empty()) {
        found = FindDifferentValue(comparison, random);
    }
    return found.empty() ? found : std::string(row.type) + ' ' + row.notation + ": " + found;
}

} // namespace bgp::bench
