// BGPLSPREFIX, text in: a flat run of bracketed groups, some of which hold a run of bracketed fields, at most 500
// characters without a blank:
//
//   [NODE][OSPFv2][IDENTIFIER0][LOCAL[as100][ospf-area-id0.0.0.0][igp-router-id1.1.1.1]]
//
// The NLRI type comes first, the other groups in any order, each once. The groups stand here, their fields in
// fields.cpp, what an NLRI type makes of them in sections.cpp.
#include "bgpls/bgpls.h"
#include "bgpls/fields.h"
#include "bgpls/groups.h"
#include "bgpls/record.h"
#include "host/bytes.h"
#include "host/operations.h"
#include "host/text.h"
#include "host/type.h"

namespace bgp {

namespace {

constexpr uint16_t kShortestKey = 1;
constexpr uint16_t kLongestKey = 500;

constexpr uint32_t kTypeKeywords = kLsNlriTypes - 1;

// Marks the group as seen. False when it was before, or when the NLRI type was not.
bool ClaimSection(BgpLsParseContext *context, uint32_t flag, const char *what = nullptr)
{
    if (flag != kLsTypeSection && (context->sections & kLsTypeSection) == 0) {
        return RefuseGroup(context, kTypeFirst, nullptr, {g_bgplsPrefixPattern, kTypeKeywords, sizeof(BgpLsKeyword)});
    }
    const bool isFirst = (context->sections & flag) == 0;
    context->sections |= flag;
    return isFirst || RefuseGroup(context, kTwice, what);
}

// What is refused while a section is read stands in it.
LsGroup EnterSection(LsExplaining *explaining)
{
    if (explaining == nullptr) {
        return {};
    }
    StandsIn(explaining->why, explaining->group.keyword);
    return explaining->group;
}

void LeaveSection(LsExplaining *explaining, const LsGroup &section)
{
    if (explaining != nullptr) {
        StandsIn(explaining->why, nullptr);
        explaining->group = section;
    }
}

// Reads a section's fields into its descriptor, then hands that to the NLRI type's routine for the section.
template <class Section, uint32_t Count>
uint32_t ReadSection(const char *value, const BgpLsKeyword (&rows)[Count], Section &section,
                     uint32_t (*routine)(const Section *section, BgpLsParseContext *context),
                     BgpLsParseContext *context)
{
    LsExplaining *explaining = ExplainingOf(context);
    const LsGroup group = EnterSection(explaining);
    const Text text{value, static_cast<uint32_t>(std::strlen(value))};
    uint32_t code = ReadGroups({text, rows, Count, 0}, &section, context, explaining);
    if (code == DT_OK && routine != nullptr) {
        code = routine(&section, context);
    }
    if (code != DT_OK) {
        return code;
    }
    LeaveSection(explaining, group);
    return Code(routine != nullptr || RefuseGroup(context, kNotOfType));
}

template <uint32_t Type>
uint32_t NlriType(uint32_t, char *, void *, BgpLsParseContext *context)
{
    return BgpLsParseRouteType(Type, context);
}

template <uint32_t Id>
uint32_t Protocol(uint32_t, char *, void *, BgpLsParseContext *context)
{
    return BgpLsParseProtocol(Id, context);
}

// ----------------------------------------------------------------------------------------------------------- the key

LsRun TopLevel(const BgpLsParseContext &context)
{
    return {{context.text, context.textLength}, g_bgplsPrefixPattern, BGP_LS_KEYWORDS, kTypeKeywords};
}

// Null when the text cannot be a key or the host gives no memory.
BgpLsParseContext *MakeContext(const char *text, uint8_t *record, Why *why)
{
    const Text trimmed = Trim(text);
    if (!HasLength(trimmed, kShortestKey, kLongestKey, why) || !HasNoBlank(trimmed, why)) {
        return nullptr;
    }
    const uint32_t size = why != nullptr ? sizeof(LsExplained) : sizeof(BgpLsParseContext);
    auto *context = static_cast<BgpLsParseContext *>(SYS_DataTypeMalloc(size));
    if (context == nullptr) {
        Refuse(why, trimmed, kNoMemory, 0, "the key");
        return nullptr;
    }
    *context = {.text = trimmed.at,
                .textLength = trimmed.length,
                .sections = 0,
                .record = record,
                .nlriType = 0,
                .protocolId = 0,
                .row = nullptr,
                .rows = g_bgplsPrefixParsers,
                .rowCount = BGP_LS_NLRI_TYPES};
    std::memset(record, 0, kLsRecordSize);
    if (why != nullptr) {
        context->sections = kLsExplained;
        *ExplainingOf(context) = {.why = why, .run = {}, .group = {}};
    }
    return context;
}

// The groups that the NLRI type requires and the text had not.
uint32_t Missing(const BgpLsParseContext &context)
{
    return context.row != nullptr ? context.row->Required & ~context.sections : uint32_t{kLsTypeSection};
}

bool Read(const char *text, void *value, Why *why)
{
    BgpLsParseContext *context = MakeContext(text, static_cast<uint8_t *>(value), why);
    if (context == nullptr) {
        return false;
    }
    const bool isRead =
        BgpLsParseLsPrefixEntry(context) == DT_OK &&
        (Missing(*context) == 0 || RefuseMissing(ExplainingOf(context), TopLevel(*context), Missing(*context)));
    SYS_DataTypeFree(context);
    return isRead;
}

constexpr FormatInRule kIn{.typeId = 1299,
                           .length = kLsRecordSize,
                           .modes = {Modes(1, 2), Modes(0, 3, 5, 6)},
                           .read = Read,
                           .memory = Memory::kPlain};

constexpr const BgpRule *kRules[] = {
    &kEmpty,      &kTooShort,  &kTooLong,       &kBlank,      &kNoDigit,     &kWrongCharacter, &kTooManyNumbers,
    &kNoNotation, &kTooSmall,  &kTooLarge,      &kNoIpv4,     &kLeadingZero, &kNoIpv6,         &kNoGroup,
    &kUnclosed,   &kNoKeyword, &kNotAlone,      &kNotCarried, &kTypeFirst,   &kProtocolFirst,  &kTwice,
    &kMissing,    &kNotOfType, &kNotOfProtocol, &kNoHexDigit, &kNoRouterId,  &kNoIdentifiers,  &kNoSlash,
};

} // namespace

constinit const Type kBgpLsPrefix = MakeType({
    .name = "BGPLSPREFIX",
    .description = "the key of a BGP-LS route",
    .reference = "RFC 9552, RFC 9514, RFC 9857",
    .in = &kIn,
    .out = &kLsOut,
    .rules = kRules,
    .shortestText = kShortestKey,
    .longestText = kLongestKey,
    .network = BGP_NETWORK_TYPE_FIRST,
    .lua = BGP_LUA_TYPED,
    .traits = BGP_TRAIT_PRINTS_BYTES, // IGP router ids
    .describe = DescribeBgpLs,
});

} // namespace bgp

using namespace bgp; // what follows has names of the system

// -------------------------------------------------------------------------------------------------- top-level groups

uint32_t BgpLsParseRouteType(uint32_t nlriType, BgpLsParseContext *context)
{
    if (nlriType >= context->rowCount || !ClaimSection(context, kLsTypeSection, "the NLRI type")) {
        return DT_ERR_FAIL;
    }
    context->nlriType = nlriType;
    context->row = &context->rows[nlriType];
    Store(context->record + kLsTypeAt, nlriType);
    return DT_OK;
}

uint32_t BgpLsParseProtocol(uint32_t protocolId, BgpLsParseContext *context)
{
    if (!ClaimSection(context, kLsProtocolSection, kLsTheProtocol)) {
        return DT_ERR_FAIL;
    }
    context->protocolId = protocolId;
    return context->row->Protocol != nullptr ? context->row->Protocol(protocolId, context) : DT_ERR_FAIL;
}

uint32_t BgpLsParseIdentifier(uint32_t flag, char *value, void *, BgpLsParseContext *context)
{
    uint64_t identifier = 0;
    if (!ClaimSection(context, flag)) {
        return DT_ERR_FAIL;
    }
    if (QOV_StrToUint64(value, &identifier) != 0) {
        return Code(RefuseNumber(context, value, UINT64_MAX));
    }
    return context->row->Identifier != nullptr ? context->row->Identifier(identifier, context) : DT_ERR_FAIL;
}

uint32_t BgpLsParseLocalNode(uint32_t flag, char *value, void *, BgpLsParseContext *context)
{
    if (!ClaimSection(context, flag)) {
        return DT_ERR_FAIL;
    }
    BgpLsNodeDescriptor node{};
    return ReadSection(value, kLsNodeFields, node, context->row->LocalNode, context);
}

uint32_t BgpLsParseRemoteNode(uint32_t flag, char *value, void *, BgpLsParseContext *context)
{
    if (!ClaimSection(context, flag)) {
        return DT_ERR_FAIL;
    }
    BgpLsNodeDescriptor node{};
    return ReadSection(value, kLsNodeFields, node, context->row->RemoteNode, context);
}

uint32_t BgpLsParseLink(uint32_t flag, char *value, void *, BgpLsParseContext *context)
{
    if (!ClaimSection(context, flag)) {
        return DT_ERR_FAIL;
    }
    BgpLsLinkDescriptor link{};
    link.MtId = context->protocolId == kLsBgp ? 0 : kLsNoMtId;
    return ReadSection(value, kLsLinkFields, link, context->row->Link, context);
}

// The sections of prefixes and TE policies are refused by other types before their fields are read.
uint32_t BgpLsParsePrefix(uint32_t flag, char *value, void *, BgpLsParseContext *context)
{
    if (!ClaimSection(context, flag)) {
        return DT_ERR_FAIL;
    }
    if (context->nlriType != kLsIpv4Prefix && context->nlriType != kLsIpv6Prefix) {
        return Code(RefuseGroup(context, kNotOfType));
    }
    BgpLsPrefixDescriptor prefix{};
    prefix.MtId = kLsNoMtId;
    return ReadSection(value, kLsPrefixFields, prefix, context->row->Prefix, context);
}

uint32_t BgpLsParseTe(uint32_t flag, char *value, void *, BgpLsParseContext *context)
{
    if (!ClaimSection(context, flag)) {
        return DT_ERR_FAIL;
    }
    if (context->nlriType != kLsTePolicy) {
        return Code(RefuseGroup(context, kNotOfType));
    }
    BgpLsTeDescriptor te{};
    return ReadSection(value, kLsTeFields, te, context->row->Te, context);
}

uint32_t BgpLsParseSid(uint32_t flag, char *value, void *, BgpLsParseContext *context)
{
    if (!ClaimSection(context, flag)) {
        return DT_ERR_FAIL;
    }
    BgpLsSidDescriptor sid{};
    sid.MtId = kLsNoMtId;
    return ReadSection(value, kLsSidFields, sid, context->row->Sid, context);
}

uint32_t BgpLsParseDiscard(uint32_t flag, char *, void *, BgpLsParseContext *context)
{
    return Code(ClaimSection(context, flag));
}

// The first row whose keyword begins the group's content wins. NLRI types and protocols stand in the order of their
// numbers, from 1 on; printers name them by these rows.
// clang-format off
//   keyword                 flag exact handler
constinit const BgpLsKeyword g_bgplsPrefixPattern[BGP_LS_KEYWORDS] = {
    {"NODE",                    1, 1, NlriType<kLsNode>},
    {"LINK",                    1, 1, NlriType<kLsLink>}, // alone; with more behind it the section below
    {"IPV4-PREFIX",             1, 1, NlriType<kLsIpv4Prefix>},
    {"IPV6-PREFIX",             1, 1, NlriType<kLsIpv6Prefix>},
    {"TEPOLICY",                1, 1, NlriType<kLsTePolicy>},
    {"SRV6-SID",                1, 1, NlriType<kLsSrv6Sid>},
    {"ISIS-LEVEL-1",            2, 1, Protocol<kLsIsisLevel1>},
    {"ISIS-LEVEL-2",            2, 1, Protocol<kLsIsisLevel2>},
    {"OSPFv2",                  2, 1, Protocol<kLsOspfv2>},
    {"DIRECT",                  2, 1, Protocol<kLsDirect>},
    {"STATIC",                  2, 1, Protocol<kLsStatic>},
    {"OSPFv3",                  2, 1, Protocol<kLsOspfv3>},
    {"BGP",                     2, 1, Protocol<kLsBgp>},
    {"RSVP-TE",                 2, 1, nullptr},
    {"SEGMENT-ROUTING",         2, 1, Protocol<kLsSegmentRouting>},
    {"IDENTIFIER",              4, 0, BgpLsParseIdentifier},
    {"LOCAL",                   8, 0, BgpLsParseLocalNode},
    {"REMOTE",                 16, 0, BgpLsParseRemoteNode},
    {"LINK",                   32, 0, BgpLsParseLink},
    {"UNKNOWN",                64, 0, BgpLsParseDiscard},
    {"index",                 128, 0, BgpLsParseDiscard},
    {"PREFIX",                256, 0, BgpLsParsePrefix},
    {"TE",                    512, 0, BgpLsParseTe},
    {"SID",                  1024, 0, BgpLsParseSid},
};
// clang-format on

// ------------------------------------------------------------------------------------------------------------- steps

BgpLsParseContext *SYSDT_CreateLsPrefixParseContext(const char *text, void *record)
{
    return MakeContext(text, static_cast<uint8_t *>(record), nullptr);
}

uint32_t BgpLsParseLsPrefixEntry(BgpLsParseContext *context)
{
    return ReadGroups(TopLevel(*context), context->record, context, ExplainingOf(context));
}

uint32_t SYSDT_Str2LsPrefixPostCheck(const BgpLsParseContext *context)
{
    return Code(Missing(*context) == 0);
}

BGP_STR2(SYSDT_Str2LSPrefix, Read)
BGP_FORMAT_IN(SYSDT_LSPrefixFormatIn, kIn)
