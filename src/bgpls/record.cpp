// BGPLSPREFIX, the stored form alone: byte order, check, comparison, help, and the layouts that tools read.
//
//   bytes  field           width  meaning, the same for all NLRI types
//   0-3    uiRouteType     u32    1 node, 2 link, 3 IPv4 prefix, 4 IPv6 prefix, 5 TE policy, 6 SRv6 SID
//   4-7    uiProtocolId    u32    1 IS-IS level 1, 2 IS-IS level 2, 3 OSPFv2, 4 direct, 5 static, 6 OSPFv3,
//                                 7 BGP, 9 segment routing
//   8-15   uiIdentifier    u64    instance identifier
//   16-23  stLocalAs       2 u32  AS number of the local node, and its notation
//   24-27  stLocalBgpLsId  u32    BGP-LS identifier of the local node
//   28-                           the NLRI type's own fields (record.h), existFlag last, zero behind it
//
// Host byte order; IPv6 addresses, SIDs and IGP router ids are byte strings.
#include "bgpls/record.h"

#include "bgpls/bgpls.h"
#include "host/bytes.h"
#include "host/operations.h"

namespace bgp {

namespace {

// ------------------------------------------------------------------------------------------------ layouts, for tools

// The rows as fields of a layout, in the order of the record.
template <size_t Count>
consteval std::array<BgpField, Count> Described(const std::array<LsField, Count> &rows)
{
    std::array<BgpField, Count> fields{};
    for (size_t i = 0; i < Count; ++i) {
        const LsKindFacts &facts = FactsOf(rows[i].kind);
        size_t place = i;
        for (; place > 0 && fields[place - 1].Offset > rows[i].offset; --place) {
            fields[place] = fields[place - 1];
        }
        fields[place] = {
            rows[i].name, rows[i].offset, facts.width, facts.count, static_cast<uint8_t>(facts.described), 0, 0};
    }
    return fields;
}

// A packed record has neither gaps nor overlaps: each field begins where the one before it ends.
template <size_t Count>
consteval bool IsPacked(const std::array<BgpField, Count> &fields)
{
    uint32_t end = 0;
    for (const BgpField &field : fields) {
        if (field.Offset != end) {
            return false;
        }
        end += uint32_t{field.Width} * field.Count;
    }
    return end <= kLsRecordSize;
}

constexpr auto kNodeFields = Described(kLsNodeRows);
constexpr auto kLinkFields = Described(kLsLinkRows);
constexpr auto kIpv4PrefixFields = Described(kLsIpv4PrefixRows);
constexpr auto kIpv6PrefixFields = Described(kLsIpv6PrefixRows);
constexpr auto kTePolicyFields = Described(kLsTePolicyRows);
constexpr auto kSrv6SidFields = Described(kLsSrv6SidRows);

static_assert(IsPacked(kNodeFields) && IsPacked(kLinkFields) && IsPacked(kIpv4PrefixFields) &&
              IsPacked(kIpv6PrefixFields) && IsPacked(kTePolicyFields) && IsPacked(kSrv6SidFields));

constexpr BgpLayout kLayouts[kLsNlriTypes] = {
    {nullptr, 0, kLsRecordSize},
    {kNodeFields.data(), kNodeFields.size(), kLsRecordSize},
    {kLinkFields.data(), kLinkFields.size(), kLsRecordSize},
    {kIpv4PrefixFields.data(), kIpv4PrefixFields.size(), kLsRecordSize},
    {kIpv6PrefixFields.data(), kIpv6PrefixFields.size(), kLsRecordSize},
    {kTePolicyFields.data(), kTePolicyFields.size(), kLsRecordSize},
    {kSrv6SidFields.data(), kSrv6SidFields.size(), kLsRecordSize},
};

// -------------------------------------------------------------------------------------------------------- byte order

void Swap(const LsField &field, uint8_t *record)
{
    const LsKindFacts &facts = FactsOf(field.kind);
    uint8_t *at = record + field.offset;
    if (facts.onlyIpv4 && at[kAddressFamilyAt] != kIpv4Family) {
        return;
    }
    for (uint32_t done = 0; done < facts.swapBytes; done += facts.swapUnit) {
        Reverse(at + done, facts.swapUnit);
    }
}

// The numbers are the shortest and the longest key; neither is enforced.
constexpr HelpRule kHelp{.text = "STRING<62-529>", .memory = Memory::kPlain};

} // namespace

const BgpLayout *DescribeBgpLs(const void *value, uint32_t length)
{
    if (value == nullptr || length < sizeof(uint32_t)) {
        return nullptr;
    }
    const auto type = Load<uint32_t>(value);
    return FindLsNlri(type) != nullptr ? &kLayouts[type] : nullptr;
}

} // namespace bgp

BGP_CHECK_LENGTH(SYSDT_LSPrefixCheck, bgp::kLsRecordSize)
BGP_HELP(SYSDT_LSPrefixHelp, bgp::kHelp)
BGP_COMPARE_BYTES_TESTED(SYSDT_LSPrefixCompare)

// One-sided: the NLRI type that selects the fields is the one read after reversal, so network order becomes host order
// whole, while of a record in host order only the type word is reversed. Hosts count on both.
uint32_t SYSDT_LSPrefixEndian(const void *context, uint32_t, uint32_t, void *value)
{
    if (context == nullptr || value == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    auto *record = static_cast<uint8_t *>(value);
    bgp::Reverse(record + bgp::kLsTypeAt, sizeof(uint32_t));
    const bgp::LsNlri *nlri = bgp::FindLsNlri(bgp::Load<uint32_t>(record + bgp::kLsTypeAt));
    for (uint32_t i = 1; nlri != nullptr && i < nlri->fieldCount; ++i) {
        bgp::Swap(nlri->fields[i], record);
    }
    return DT_OK;
}
