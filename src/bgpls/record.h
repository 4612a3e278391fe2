// The record of a BGP-LS route key (RFC 9552; TE policies RFC 9857, SRv6 SIDs RFC 9514): 228 bytes, byte-packed,
// one layout per NLRI type. The rows below are the only place where a field's place is written down: byte order, Lua,
// parser, printer and the layouts that tools read all take it from here.
#ifndef BGP_BGPLS_RECORD_H
#define BGP_BGPLS_RECORD_H

#include "bgp_datatypes/bgpls.h"
#include "host/address_field.h"

#include <array>
#include <cstdint>
#include <string_view>

namespace bgp {

inline constexpr uint32_t kLsRecordSize = 228;
inline constexpr uint32_t kLsNoMtId = 0xFFFFFFFF; // in a multi-topology id: none

enum BgpLsNlriType : uint32_t {
    kLsNode = 1,
    kLsLink = 2,
    kLsIpv4Prefix = 3,
    kLsIpv6Prefix = 4,
    kLsTePolicy = 5,
    kLsSrv6Sid = 6,
};
inline constexpr uint32_t kLsNlriTypes = BGP_LS_NLRI_TYPES; // one more than the last

enum BgpLsProtocolId : uint32_t {
    kLsIsisLevel1 = 1,
    kLsIsisLevel2 = 2,
    kLsOspfv2 = 3,
    kLsDirect = 4,
    kLsStatic = 5,
    kLsOspfv3 = 6,
    kLsBgp = 7,
    kLsSegmentRouting = 9,
};

// existFlag: which node descriptor was given a BGP-LS identifier.
inline constexpr uint32_t kLsLocalIdGiven = 1;
inline constexpr uint32_t kLsRemoteIdGiven = 2;

// ------------------------------------------------------------------------------------------------------------- kinds

enum class LsKind : uint8_t {
    kWord,       // u32
    kDotted,     // u32 that is written as an IPv4 address
    kByte,       // u8
    kIdentifier, // u64; low 32 bits first
    kAs,         // AS number u32, notation u32 (0 plain, else dotted)
    kIpv6,       // in network order
    kAddress,    // address field
    kIgpArea,    // IgpRouterIdArea
};

// The IGP router-id area: only the first 8 bytes are ever typed. IS-IS: system id (6) and pseudonode (1), in the order
// of the text. OSPF: router id (4) and an optional second address (4), in network order.
inline constexpr uint32_t kLsIgpAreaSize = 50;
inline constexpr uint32_t kLsIgpIdSize = 8;

// What Endian does with a field of the kind: reverses its first swapBytes bytes in units of swapUnit bytes.
// onlyIpv4: unless the address' flag says IPv6. The last three columns are the field in a BgpLayout.
struct LsKindFacts {
    uint8_t bytes;
    uint8_t swapBytes;
    uint8_t swapUnit;
    bool onlyIpv4;
    BgpFieldKind described;
    uint8_t width;
    uint8_t count;
};

// clang-format off
inline constexpr LsKindFacts kLsKinds[] = {
    /* kWord       */ { 4, 4, 4, false, BGP_FIELD_NUMBER,   4,  1},
    /* kDotted     */ { 4, 4, 4, false, BGP_FIELD_IPV4,     4,  1},
    /* kByte       */ { 1, 0, 0, false, BGP_FIELD_BYTES,    1,  1},
    /* kIdentifier */ { 8, 8, 8, false, BGP_FIELD_NUMBER,   8,  1},
    /* kAs         */ { 8, 8, 4, false, BGP_FIELD_AS,       8,  1},
    /* kIpv6       */ {16, 0, 0, false, BGP_FIELD_BYTES,    1, 16},
    /* kAddress    */ {kAddressFieldSize, 4, 4, true,  BGP_FIELD_ADDRESS, kAddressFieldSize, 1},
    /* kIgpArea    */ {50, 0, 0, false, BGP_FIELD_IGP_ID,  50,  1},
};
// clang-format on

constexpr const LsKindFacts &FactsOf(LsKind kind)
{
    return kLsKinds[static_cast<uint32_t>(kind)];
}

// ------------------------------------------------------------------------------------------------------------ fields

// What LuaGet makes of a number that is missing or no number. It differs by NLRI type and field for no reason but
// history, and scripts see it.
enum class LsReader : uint8_t {
    kTested, // the reader ends
    kStored, // the error code DT_ERR_INVALID_PARAM becomes the field's value, and reading goes on
};

struct LsField {
    const char *name; // also the Lua key
    uint16_t offset;
    LsKind kind;
    LsReader reader = LsReader::kTested;
    bool inPrefix = false;            // to scripts a field of the nested table "Prefix"; such rows are a layout's last
    const char *lengthName = nullptr; // Lua key of the length that goes with an IGP router id
};

// The first bytes of every layout, and its last field. With those of the NLRI type behind them the rows stand in the
// order in which LuaGet reads them.
template <size_t Own>
consteval std::array<LsField, Own + 6> LsRows(LsReader reader, uint16_t existFlagAt, const LsField (&own)[Own])
{
    std::array<LsField, Own + 6> rows{{
        {"uiRouteType", 0, LsKind::kWord},
        {"uiProtocolId", 4, LsKind::kWord, reader},
        {"uiIdentifier", 8, LsKind::kIdentifier},
        {"stLocalAs", 16, LsKind::kAs},
        {"stLocalBgpLsId", 24, LsKind::kDotted, reader},
        {"existFlag", existFlagAt, LsKind::kWord, LsReader::kStored},
    }};
    for (size_t i = 0; i < Own; ++i) {
        rows[i + 6] = own[i];
    }
    return rows;
}

// clang-format off
inline constexpr auto kLsNodeRows = LsRows(LsReader::kTested, 82, {
    {"uiLocOspfAreaId",  28, LsKind::kDotted},
    {"stLocIgpRtId",     32, LsKind::kIgpArea, LsReader::kTested, false, "uiLocIgpRtIdLen"},
});

inline constexpr auto kLsLinkRows = LsRows(LsReader::kTested, 224, {
    {"uiLocalBgpRtId",  216, LsKind::kDotted},
    {"uiLocOspfAreaId",  36, LsKind::kDotted},
    {"stLocIgpRtId",     40, LsKind::kIgpArea, LsReader::kTested, false, "uiLocIgpRtIdLen"},
    {"localMemberAs",    28, LsKind::kAs},
    {"stRemoteAs",       90, LsKind::kAs},
    {"stRemoteBgpLsId",  98, LsKind::kDotted},
    {"uiRemoteBgpRtId", 220, LsKind::kDotted},
    {"uiRemOspfAreaId", 110, LsKind::kDotted},
    {"stRemIgpRtId",    114, LsKind::kIgpArea, LsReader::kTested, false, "uiRmtIgpRtIdLen"},
    {"remoteMemberAs",  102, LsKind::kAs},
    {"uiLinkLocId",     164, LsKind::kDotted},
    {"uiLinkRemId",     168, LsKind::kDotted},
    {"stIpv4IntfAddr",  172, LsKind::kDotted},
    {"stIpv4PeerAddr",  176, LsKind::kDotted},
    {"stIpv6IntfAddr",  180, LsKind::kIpv6},
    {"stIpv6PeerAddr",  196, LsKind::kIpv6},
    {"uiMtId",          212, LsKind::kWord},
});

inline constexpr auto kLsIpv4PrefixRows = LsRows(LsReader::kTested, 95, {
    {"uiLocOspfAreaId",  28, LsKind::kDotted},
    {"stLocIgpRtId",     32, LsKind::kIgpArea, LsReader::kTested, false, "uiLocIgpRtIdLen"},
    {"uiMtId",           82, LsKind::kWord},
    {"uiOspfRtType",     86, LsKind::kWord},
    {"stIpv4Prefix",     90, LsKind::kDotted,  LsReader::kTested, true},
    {"uiPrefixLen",      94, LsKind::kByte,    LsReader::kTested, true},
});

inline constexpr auto kLsIpv6PrefixRows = LsRows(LsReader::kStored, 107, {
    {"uiLocOspfAreaId",  28, LsKind::kDotted,  LsReader::kStored},
    {"stLocIgpRtId",     32, LsKind::kIgpArea, LsReader::kTested, false, "uiLocIgpRtIdLen"},
    {"uiMtId",           82, LsKind::kWord,    LsReader::kStored},
    {"uiOspfRtType",     86, LsKind::kWord,    LsReader::kStored},
    {"stIpv6Prefix",     90, LsKind::kIpv6,    LsReader::kTested, true},
    {"uiPrefixLen",     106, LsKind::kByte,    LsReader::kTested, true},
});

inline constexpr auto kLsTePolicyRows = LsRows(LsReader::kStored, 112, {
    {"uiLocalBgpRtId",   28, LsKind::kDotted,  LsReader::kStored},
    {"teRouterId",       32, LsKind::kDotted,  LsReader::kStored},
    {"ipv6TeRouterId",   36, LsKind::kIpv6},
    {"protocolOrigin",   52, LsKind::kByte,    LsReader::kStored},
    {"flags",            53, LsKind::kByte,    LsReader::kStored},
    {"endpoint",         54, LsKind::kAddress},
    {"color",            75, LsKind::kWord,    LsReader::kStored},
    {"originatorAs",     79, LsKind::kAs},
    {"originatorAddr",   87, LsKind::kAddress},
    {"discriminator",   108, LsKind::kWord,    LsReader::kStored},
});

inline constexpr auto kLsSrv6SidRows = LsRows(LsReader::kStored, 114, {
    {"uiLocalBgpRtId",  110, LsKind::kDotted},
    {"uiLocOspfAreaId",  36, LsKind::kDotted,  LsReader::kStored},
    {"localMemberAs",    28, LsKind::kAs},
    {"stLocIgpRtId",     40, LsKind::kIgpArea, LsReader::kTested, false, "uiLocIgpRtIdLen"},
    {"uiMtId",           90, LsKind::kWord,    LsReader::kStored},
    {"srv6SidInfo",      94, LsKind::kIpv6},
});
// clang-format on

// ---------------------------------------------------------------------------------------------------- the NLRI types

struct LsNlri {
    const LsField *fields; // the first is the NLRI type itself
    uint32_t fieldCount;
    uint8_t luaSlots; // what LuaSet sizes the table for
    bool silent;      // LuaGet does not tell of a reader that ended early
};

template <size_t Count>
constexpr LsNlri Nlri(const std::array<LsField, Count> &rows, uint8_t luaSlots, bool silent)
{
    return {rows.data(), Count, luaSlots, silent};
}

inline constexpr LsNlri kLsNlri[kLsNlriTypes] = {
    {nullptr, 0, 1, false},
    Nlri(kLsNodeRows, 9, true),
    Nlri(kLsLinkRows, 23, false),
    Nlri(kLsIpv4PrefixRows, 12, false),
    Nlri(kLsIpv6PrefixRows, 11, true),
    Nlri(kLsTePolicyRows, 16, true),
    Nlri(kLsSrv6SidRows, 12, true),
};

// Null for a type word outside 1 to 6.
inline const LsNlri *FindLsNlri(uint32_t type)
{
    return type >= kLsNode && type < kLsNlriTypes ? &kLsNlri[type] : nullptr;
}

// ----------------------------------------------------------------------------------------------------- where they are

const LsField &NoSuchField(); // never defined: a wrong name does not compile

// For constant expressions only.
template <size_t Count>
constexpr const LsField &LsFieldOf(const std::array<LsField, Count> &rows, std::string_view name)
{
    for (const LsField &row : rows) {
        if (name == row.name) {
            return row;
        }
    }
    return NoSuchField();
}

// The offset of a field, from the rows of its NLRI type.
template <size_t Count>
consteval uint16_t LsAt(const std::array<LsField, Count> &rows, std::string_view name)
{
    return LsFieldOf(rows, name).offset;
}

// The fields that stand at one place in every layout.
inline constexpr uint16_t kLsTypeAt = LsAt(kLsNodeRows, "uiRouteType");
inline constexpr uint16_t kLsProtocolAt = LsAt(kLsNodeRows, "uiProtocolId");
inline constexpr uint16_t kLsIdentifierAt = LsAt(kLsNodeRows, "uiIdentifier");

} // namespace bgp

#endif
