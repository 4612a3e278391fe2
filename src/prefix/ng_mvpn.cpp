// NG-MVPN, sub-types 2 to 7 and 13 of BOLPREFIX: the keys of the multicast VPN routes of RFC 6514, named by its route
// types. Their Lua side is in ng_mvpn_lua.cpp.
//
//   sub-type  name           fields (first byte)                                       IPv4 text, joined by ":"
//   0         "IPV4"         address (4), the key of vpls_ad.cpp                       10.1.1.1
//   2         "NG_TYPE_2"    AS (4)                                                    100 or 1.5
//   3         "NG_TYPE_3"    source (4), group (25), originator (46)                   1.1.1.1:225.1.1.1:2.2.2.2
//   4         "NG_TYPE_4_2"  AS (4), originator (12)                                   100:10.1.1.1
//   5         "NG_TYPE_4-3"  source (4), group (25), originators (46, 67)              four addresses
//   6         "NG_TYPE_5"    source (4), group (25)                                    10.1.1.1:225.1.1.1
//   7         "NG_TYPE_6"    AS (4), source (12), group (33)                           100:1.1.1.1:225.2.2.2
//   13        "NG_TYPE_4-1"  originators (4, 25)                                       10.1.1.1:10.2.2.2
//
// The sub-type is a u32 at byte 0. An AS is 8 bytes: number u32, notation u32 (0 plain, 1 dotted). An address is the
// 21-byte field of address_field.h. All other bytes are zero. Keys with IPv6 addresses are joined by "-" instead.
#include "prefix/ng_mvpn.h"
#include "asnum/asnum.h"
#include "bgp_datatypes/evpn.h"
#include "bgp_datatypes/helpers.h"
#include "host/address_field.h"
#include "host/bytes.h"
#include "host/format.h"
#include "host/operations.h"
#include "prefix/prefix.h"

namespace bgp {

namespace {

struct Rows {
    BgpField fields[5];
};

// "bolType" and the key's fields.
constexpr Rows RowsOf(const NgKey &key)
{
    Rows rows{{Number("bolType", 0, 4)}};
    for (uint32_t i = 0; i < key.count; ++i) {
        const NgField &field = key.fields[i];
        const auto width = static_cast<uint8_t>(field.kind == BGP_FIELD_AS ? 2 * sizeof(uint32_t) : kAddressFieldSize);
        rows.fields[i + 1] = {field.name, field.at, width, 1, field.kind, 0, 0};
    }
    return rows;
}

template <const NgKey &Key>
inline constexpr Rows kRows = RowsOf(Key);

template <const NgKey &Key>
inline constexpr BgpLayout kLayout{kRows<Key>.fields, Key.count + 1u, kBolPrefixLength};

// ----------------------------------------------------------------------------------------------------------- text in

constexpr uint32_t kMostSections = 4;

// A key cut at its separators; the sections are terminated, as host services want them.
struct Sections {
    uint32_t count;
    uint32_t dots; // in the whole text
    Text at[kMostSections];
};

// clang-format off
constexpr BgpRule kTooManyFields{"too-many-fields", "a key has at most {limit} fields", 0};
constexpr BgpRule kMixedFamilies{"families", "of four addresses none or two are IPv4", 0};
// clang-format on

constexpr const BgpRule *kRules[] = {&kEmpty,   &kTooLong,        &kBlank,      &kWrongCharacter, &kTooManyFields,
                                     &kNoDigit, &kTooManyNumbers, &kNoNotation, &kTooSmall,       &kTooLarge,
                                     &kNoIpv4,  &kLeadingZero,    &kNoIpv6,     &kMixedFamilies};

bool HasColon(Text section)
{
    return std::memchr(section.at, ':', section.length) != nullptr;
}

using FieldReader = bool(Text section, uint8_t *field, const AddressWords &words, Why *why);

bool ReadIpv4Field(Text section, uint8_t *field, const AddressWords &words, Why *why)
{
    return ReadIpv4(section.at, section, field, words, why);
}

// An address without ":" is an IPv4 one, whatever the others are.
bool ReadEitherField(Text section, uint8_t *field, const AddressWords &words, Why *why)
{
    BgpAddressRecord record;
    if (SYSDT_Str2IPv4IPv6(section.at, &record) != DT_OK) {
        return HasColon(section) ? RefuseIpv6(why, section, words.address) : RefuseIpv4(why, section, words);
    }
    if (record.Family == kIpv6Family) {
        SetIpv6(field, record.Ipv6);
    } else {
        SetIpv4(field, record.Ipv4);
    }
    return true;
}

bool ReadAsField(Text section, uint8_t *field, const AddressWords &, Why *why)
{
    AsNumber as;
    if (!ReadAsNumber(section, false, as, why)) {
        return false;
    }
    Store(field, as);
    return true;
}

// Are the sections before a slip what every key has there, an address, or an AS number in front? If not, it is they
// that are the first slip.
bool AreFieldsGood(const Sections &sections, Why *why)
{
    constexpr AddressWords kThisField{"this field", "an octet of this field"};
    uint8_t field[kAddressFieldSize];
    bool good = true;
    for (uint32_t i = 0; good && i < sections.count; ++i) {
        good = (i == 0 && ReadAsField(sections.at[i], field, kThisField, nullptr)) ||
               ReadEitherField(sections.at[i], field, kThisField, why);
    }
    return good;
}

// How the two families of keys are spelt.
struct Spelling {
    uint32_t longest;
    char separator;
    bool ipv6; // colons and hexadecimal letters may stand beside digits and dots
};

constexpr uint16_t kLongestKey = 159;
constexpr Spelling kIpv4Spelling{63, ':', false};
constexpr Spelling kIpv6Spelling{kLongestKey, '-', true};

bool IsKeyCharacter(const Spelling &spelling, char character)
{
    return IsDigit(character) || character == '.' || (spelling.ipv6 && (character == ':' || IsHexDigit(character)));
}

// Cuts the text, which `area` has terminated. False for other characters (blanks among them) and too many sections.
bool Cut(const Spelling &spelling, char *area, Sections &sections, Why *why)
{
    sections = {0, 0, {}};
    char *start = area;
    for (char *at = area;; ++at) {
        const char character = *at;
        if (character == '\0' || character == spelling.separator) {
            *at = '\0';
            sections.at[sections.count++] = {start, static_cast<uint32_t>(at - start)};
            start = at + 1;
            if (character == '\0') {
                return true;
            }
            if (sections.count == kMostSections) {
                return why != nullptr && AreFieldsGood(sections, why) &&
                       Refuse(why, {at, 1}, kTooManyFields, kMostSections);
            }
        } else if (!IsKeyCharacter(spelling, character)) {
            return why != nullptr && AreFieldsGood(sections, why) && RefuseCharacter(why, {at, 1}, kWrongCharacter);
        }
        sections.dots += character == '.';
    }
}

bool IsIpv4Multicast(Text section)
{
    uint32_t address = 0;
    return SYSDT_Str2Ipv4(section.at, &address) == 0 && address >> 28 == 0xE; // 224.0.0.0/4
}

// By the number of sections: with three dots a section all of them are addresses, else the first is an AS number. Four
// sections are addresses whatever the dots.
struct Ipv4Form {
    uint32_t dots;
    const NgKey *addresses;
    const NgKey *otherwise;
};

constexpr Ipv4Form kIpv4Forms[kMostSections] = {
    {3, &kNgPlain, &kNg2},
    {6, &kNg41, &kNg42}, // kNg5 instead of kNg41 when the second address is a multicast group
    {9, &kNg3, &kNg6},
    {12, &kNg43, &kNg43},
};

const NgKey *ChooseIpv4(const Sections &sections)
{
    const Ipv4Form &form = kIpv4Forms[sections.count - 1];
    if (sections.dots != form.dots) {
        return form.otherwise;
    }
    return sections.count == 2 && IsIpv4Multicast(sections.at[1]) ? &kNg5 : form.addresses;
}

// Null when no key has this form.
const NgKey *ChooseIpv6(const Sections &sections)
{
    const bool startsWithIpv6 = HasColon(sections.at[0]);
    switch (sections.count) {
    case 2:
        if (SYSDT_IsIpv6MultiCastAddr(sections.at[1].at) == 1) {
            return &kNg5;
        }
        return startsWithIpv6 ? &kNg41 : &kNg42;
    case 3:
        return sections.dots < 3 && !startsWithIpv6 ? &kNg6 : &kNg3;
    case 4: // no IPv4 address at all, or two
        return sections.dots == 0 || sections.dots == 6 ? &kNg43 : nullptr;
    default:
        return nullptr;
    }
}

// A reason names the key that was read, and the field where nothing else is named.
void NameField(Why *why, const NgKey &key, const NgField &field)
{
    if (why != nullptr) [[unlikely]] {
        StandsIn(why, key.route);
        why->reason->What = why->reason->What != nullptr ? why->reason->What : field.words.address;
    }
}

// Stops at the first section that is not what its field wants.
bool Fill(const NgKey &key, const Sections &sections, FieldReader *readAddress, uint8_t *value, Why *why)
{
    Store<uint32_t>(value, key.subType);
    for (uint32_t i = 0; i < key.count; ++i) {
        const NgField &field = key.fields[i];
        FieldReader *read = field.kind == BGP_FIELD_AS ? ReadAsField : readAddress;
        if (!read(sections.at[i], value + field.at, field.words, why)) {
            NameField(why, key, field);
            return false;
        }
    }
    return true;
}

uint32_t CountDots(Text section)
{
    uint32_t dots = 0;
    for (uint32_t i = 0; i < section.length; ++i) {
        dots += section.at[i] == '.';
    }
    return dots;
}

// A key of which another section has too few or too many dots is one of addresses all the same when it begins with one.
const NgKey &MeantIpv4(const NgKey &key, const Sections &sections)
{
    return CountDots(sections.at[0]) > 1 ? *kIpv4Forms[sections.count - 1].addresses : key;
}

bool ReadIpv4Key(const Sections &sections, uint8_t *value, Why *why)
{
    const NgKey *key = ChooseIpv4(sections);
    // Two sections with six dots between them are accepted even when they are no addresses; existing configurations
    // rely on being read.
    if (Fill(*key, sections, ReadIpv4Field, value, nullptr) || key == &kNg5 || key == &kNg41) {
        return true;
    }
    return why != nullptr && Fill(MeantIpv4(*key, sections), sections, ReadIpv4Field, value, why) &&
           Fill(*key, sections, ReadIpv4Field, value, why);
}

bool ReadIpv6Key(const Sections &sections, uint8_t *value, Why *why)
{
    const NgKey *key = ChooseIpv6(sections);
    if (key != nullptr) {
        return Fill(*key, sections, ReadEitherField, value, why);
    }
    if (why != nullptr && Fill(kNg43, sections, ReadEitherField, value, why)) {
        const Text last = sections.at[sections.count - 1];
        const char *const first = sections.at[0].at;
        StandsIn(why, kNg43.route);
        Refuse(why, {first, static_cast<uint32_t>(last.at + last.length - first)}, kMixedFamilies);
    }
    return false;
}

bool Read(const char *text, void *value, Why *why)
{
    const Text trimmed = Trim(text);
    const bool ipv6 = std::memchr(trimmed.at, '-', trimmed.length) != nullptr;
    const Spelling &spelling = ipv6 ? kIpv6Spelling : kIpv4Spelling;
    if (!HasLength(trimmed, 1, spelling.longest, why)) {
        return false;
    }
    char area[kLongestKey + 1];
    Sections sections;
    Terminate(trimmed, area, sizeof area);
    Moved(why, trimmed, area);
    auto *bytes = static_cast<uint8_t *>(value);
    return Cut(spelling, area, sections, why) &&
           (ipv6 ? ReadIpv6Key(sections, bytes, why) : ReadIpv4Key(sections, bytes, why));
}

// ---------------------------------------------------------------------------------------------------------- text out

// Dotted only where the notation says so and the number needs it.
void AppendAs(GrowingText &text, const uint8_t *field)
{
    const auto as = Load<AsNumber>(field);
    if (as.notation != 0 && as.number > UINT16_MAX) {
        Put<"%u.%u">(text, HighHalf(as.number), LowHalf(as.number));
    } else {
        Put<"%u">(text, as.number);
    }
}

void AppendAddress(GrowingText &text, const uint8_t *field, uint32_t family)
{
    char address[kAddressTextSize];
    AddressTextAs(field, family == kIpv6Family ? kIpv6Family : kIpv4Family, address);
    Put(text, address);
}

// The family that the first address names, or IPv6 when all do and IPv4 otherwise.
uint32_t CommonFamily(const NgKey &key, const uint8_t *value)
{
    uint32_t all = kIpv6Family;
    for (uint32_t i = 0; i < key.count; ++i) {
        if (key.fields[i].kind != BGP_FIELD_ADDRESS) {
            continue;
        }
        const uint32_t family = value[key.fields[i].at + kAddressFamilyAt];
        if (key.family == NgFamily::kOfFirst) {
            return family;
        }
        all = family == kIpv6Family ? all : uint32_t{kIpv4Family};
    }
    return all;
}

void Append(GrowingText &text, const NgKey &key, const uint8_t *value)
{
    const uint32_t common = key.family == NgFamily::kNone ? kIpv4Family : CommonFamily(key, value);
    if (common > kIpv6Family) {
        return; // no text for a family that is neither
    }
    for (uint32_t i = 0; i < key.count; ++i) {
        if (i > 0) {
            Put(text, common == kIpv6Family ? '-' : ':');
        }
        const uint8_t *field = value + key.fields[i].at;
        if (key.fields[i].kind == BGP_FIELD_AS) {
            AppendAs(text, field);
        } else {
            AppendAddress(text, field, key.family == NgFamily::kOfFirst ? common : field[kAddressFamilyAt]);
        }
    }
}

uint32_t PrintValue(const uint8_t *value, uint32_t, char *buffer, uint32_t *printed)
{
    return SYSDT_NGPrefix2Str(value, buffer, printed);
}

constexpr FormatInRule kIn = RouteKeyIn(Read);
constexpr FormatOutRule kOut = RouteKeyOut(PrintValue);

template <const NgKey &Key>
consteval Type MakeNgType(const char *name)
{
    return MakeSubType({
        .name = name,
        .description = Key.route,
        .reference = "RFC 6514",
        .in = &kIn,
        .out = &kOut,
        .layout = &kLayout<Key>,
        .rules = kRules,
        .shortestText = 1,
        .longestText = kLongestKey,
        .subType = Key.subType,
        .order = BGP_ORDER_NONE, // Compare and LuaGet are those of the EVPN routes
        .lua = BGP_LUA_LOSES,
        .traits = BGP_TRAIT_OTHER_SUBTYPES,
    });
}

} // namespace

constinit const Type kNgType2 = MakeNgType<kNg2>("NG_TYPE_2");
constinit const Type kNgType3 = MakeNgType<kNg3>("NG_TYPE_3");
constinit const Type kNgType42 = MakeNgType<kNg42>("NG_TYPE_4_2");
constinit const Type kNgType43 = MakeNgType<kNg43>("NG_TYPE_4-3");
constinit const Type kNgType5 = MakeNgType<kNg5>("NG_TYPE_5");
constinit const Type kNgType6 = MakeNgType<kNg6>("NG_TYPE_6");
constinit const Type kNgType41 = MakeNgType<kNg41>("NG_TYPE_4-1");

} // namespace bgp

BGP_STR2(SYSDT_Str2NGPrefix, bgp::Read)

uint32_t SYSDT_NGPrefix2Str(const void *value, char *buffer, uint32_t *printed)
{
    const auto *bytes = static_cast<const uint8_t *>(value);
    const bgp::NgKey *key = bgp::FindNgKey(bgp::Load<uint32_t>(bytes));
    if (key == nullptr || key == &bgp::kNgPlain) {
        return DT_ERR_FAIL;
    }
    char typed[bgp::kTextSize];
    bgp::GrowingText text = bgp::GrowIn(typed, sizeof typed);
    bgp::Append(text, *key, bytes);
    *text.at = '\0';
    return bgp::Printed(bgp::PrintText(buffer, bgp::kPrintLimit, typed), printed);
}

BGP_FORMAT_IN(SYSDT_NGPrefixFormatIn, bgp::kIn)
BGP_FORMAT_OUT(SYSDT_NGPrefixFormatOut, bgp::kOut)
