// BGPLSPREFIX, text in: a flat run of bracketed groups, some of which hold a run of bracketed fields, at most 500
// characters without a blank:
//
//   [NODE][OSPFv2][IDENTIFIER0][LOCAL[as100][ospf-area-id0.0.0.0][igp-router-id1.1.1.1]]
//
// The NLRI type comes first, the other groups in any order, each once. Which groups and fields there are is in
// keywords.cpp, what a NLRI type makes of them in sections.cpp.
#include "bgpls/parser.h"

#include "host/bytes.h"
#include "host/operations.h"

namespace bgp {

namespace {

constexpr uint32_t kLongestKey = 500;

// -------------------------------------------------------------------------------------------------------- group loop

// The content of the text's first group, without its outer brackets, as a text of its own.
uint32_t SYSDT_GetLsPrefixSubString(Text text, char (&group)[kLsGroupSize], uint32_t *length)
{
    if (text.length == 0 || text.at[0] != '[') {
        return DT_ERR_FAIL;
    }
    uint32_t depth = 1;
    uint32_t end = 1;
    for (; end < text.length; ++end) {
        constexpr char kBracket = '[' & ']'; // bits that hardly any other character has: one comparison, not two
        if ((text.at[end] & kBracket) != kBracket) {
            continue;
        }
        if (text.at[end] == '[') {
            ++depth;
        } else if (text.at[end] == ']' && --depth == 0) {
            break;
        }
    }
    *length = end - 1;
    const Text content{text.at + 1, *length};
    return end < text.length && Terminate(content, group, sizeof group - 1) ? DT_OK : DT_ERR_FAIL;
}

// The row whose keyword begins the content, null when there is none; *value is what stands behind the keyword.
const BgpLsKeyword *SYSDT_ParseLsPrefixFindPattern(char *content, const BgpLsKeyword *rows, uint32_t rowCount,
                                                   char **value)
{
    for (const BgpLsKeyword *row = rows; row < rows + rowCount; ++row) {
        const char *keyword = row->Keyword;
        char *at = content;
        while (*keyword != '\0' && *keyword == *at) {
            ++keyword;
            ++at;
        }
        if (*keyword == '\0' && (row->Exact == 0 || *at == '\0')) {
            *value = at;
            return row;
        }
    }
    return nullptr;
}

// "[...][...]" to the handlers of the rows, first to last group. 0 or the first error.
uint32_t ParseGroups(Text text, const BgpLsKeyword *rows, uint32_t rowCount, void *target, BgpLsParseContext *context)
{
    do {
        char group[kLsGroupSize];
        uint32_t length = 0;
        if (const uint32_t code = SYSDT_GetLsPrefixSubString(text, group, &length); code != DT_OK) {
            return code;
        }
        char *value = nullptr;
        const BgpLsKeyword *row = SYSDT_ParseLsPrefixFindPattern(group, rows, rowCount, &value);
        if (row == nullptr || row->Handler == nullptr) {
            return DT_ERR_FAIL;
        }
        if (const uint32_t code = row->Handler(row->Flag, value, target, context); code != DT_OK) {
            return code;
        }
        text.at += length + 2;
        text.length -= length + 2;
    } while (text.length != 0);
    return DT_OK;
}

// -------------------------------------------------------------------------------------------------- top-level groups

// Marks the group as seen. False when it was before, or when the NLRI type was not.
bool ClaimSection(BgpLsParseContext &context, uint32_t flag)
{
    if ((context.sections & flag) != 0 || (flag != kLsTypeSection && (context.sections & kLsTypeSection) == 0)) {
        return false;
    }
    context.sections |= flag;
    return true;
}

template <class Section>
uint32_t Hand(BgpLsSectionRoutine<Section> *routine, const Section &section, BgpLsParseContext &context)
{
    return routine != nullptr ? routine(section, context) : DT_ERR_FAIL;
}

// Reads a section's fields into its working descriptor, then hands that to the NLRI type's routine for the section.
template <class Section, uint32_t Count>
uint32_t ParseSection(const char *value, const BgpLsKeyword (&rows)[Count], Section &section,
                      BgpLsSectionRoutine<Section> *routine, BgpLsParseContext &context)
{
    const uint32_t code = SYSDT_ParseLsPrefixStr(value, rows, Count, &section, &context);
    return code == DT_OK ? Hand(routine, section, context) : code;
}

} // namespace

uint32_t BgpLsParseRouteType(uint32_t nlriType, BgpLsParseContext *context)
{
    if (!ClaimSection(*context, kLsTypeSection) || nlriType >= context->rowCount) {
        return DT_ERR_FAIL;
    }
    context->nlriType = nlriType;
    context->row = &context->rows[nlriType];
    Store(context->record + kLsTypeAt, nlriType);
    return DT_OK;
}

uint32_t BgpLsParseProtocol(uint32_t protocolId, BgpLsParseContext *context)
{
    if (!ClaimSection(*context, kLsProtocolSection)) {
        return DT_ERR_FAIL;
    }
    context->protocolId = protocolId;
    return Hand(context->row->protocol, protocolId, *context);
}

uint32_t BgpLsParseIdentifier(uint32_t flag, char *value, void *, BgpLsParseContext *context)
{
    uint64_t identifier = 0;
    if (!ClaimSection(*context, flag) || QOV_StrToUint64(value, &identifier) != 0) {
        return DT_ERR_FAIL;
    }
    return Hand(context->row->identifier, identifier, *context);
}

uint32_t BgpLsParseLocalNode(uint32_t flag, char *value, void *, BgpLsParseContext *context)
{
    if (!ClaimSection(*context, flag)) {
        return DT_ERR_FAIL;
    }
    BgpLsNodeDescriptor node{};
    return ParseSection(value, NodeDescPartten, node, context->row->localNode, *context);
}

uint32_t BgpLsParseRemoteNode(uint32_t flag, char *value, void *, BgpLsParseContext *context)
{
    if (!ClaimSection(*context, flag)) {
        return DT_ERR_FAIL;
    }
    BgpLsNodeDescriptor node{};
    return ParseSection(value, NodeDescPartten, node, context->row->remoteNode, *context);
}

uint32_t BgpLsParseLink(uint32_t flag, char *value, void *, BgpLsParseContext *context)
{
    if (!ClaimSection(*context, flag)) {
        return DT_ERR_FAIL;
    }
    BgpLsLinkDescriptor link{};
    link.mtId = context->protocolId == kLsBgp ? 0 : kLsNoMtId;
    return ParseSection(value, LinkPartten, link, context->row->link, *context);
}

uint32_t BgpLsParsePrefix(uint32_t flag, char *value, void *, BgpLsParseContext *context)
{
    const bool isPrefix = context->nlriType == kLsIpv4Prefix || context->nlriType == kLsIpv6Prefix;
    if (!ClaimSection(*context, flag) || !isPrefix) {
        return DT_ERR_FAIL;
    }
    BgpLsPrefixDescriptor prefix{};
    prefix.mtId = kLsNoMtId;
    return ParseSection(value, PrefixPartten, prefix, context->row->prefix, *context);
}

uint32_t BgpLsParseTe(uint32_t flag, char *value, void *, BgpLsParseContext *context)
{
    if (!ClaimSection(*context, flag) || context->nlriType != kLsTePolicy) {
        return DT_ERR_FAIL;
    }
    BgpLsTeDescriptor te{};
    return ParseSection(value, TePartten, te, context->row->te, *context);
}

uint32_t BgpLsParseSid(uint32_t flag, char *value, void *, BgpLsParseContext *context)
{
    if (!ClaimSection(*context, flag)) {
        return DT_ERR_FAIL;
    }
    BgpLsSidDescriptor sid{};
    sid.mtId = kLsNoMtId;
    return ParseSection(value, SidPartten, sid, context->row->sid, *context);
}

uint32_t BgpLsParseDiscard(uint32_t flag, char *, void *, BgpLsParseContext *context)
{
    return ClaimSection(*context, flag) ? DT_OK : DT_ERR_FAIL;
}

// ----------------------------------------------------------------------------------------------------------- the key

namespace {

// Null when the text cannot be a key or the host gives no memory.
BgpLsParseContext *SYSDT_CreateLsPrefixParseContext(const char *text, uint8_t *record)
{
    const Text trimmed = Trim(text);
    if (!IsLong(trimmed, 1, kLongestKey) || HasBlank(trimmed)) {
        return nullptr;
    }
    auto *context = static_cast<BgpLsParseContext *>(SYS_DataTypeMalloc(sizeof(BgpLsParseContext)));
    if (context == nullptr) {
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
                .rowCount = kLsNlriTypes};
    std::memset(record, 0, kLsRecordSize);
    return context;
}

} // namespace

uint32_t BgpLsParseLsPrefixEntry(BgpLsParseContext *context)
{
    return ParseGroups({context->text, context->textLength}, g_bgplsPrefixPattern, kLsTopKeywords, context->record,
                       context);
}

namespace {

// Every group that the NLRI type requires must have been there. No key is read to its end without a type.
uint32_t SYSDT_Str2LsPrefixPostCheck(const BgpLsParseContext &context)
{
    const uint32_t required = context.row->required;
    return (context.sections & required) == required ? DT_OK : DT_ERR_FAIL;
}

constexpr FormatInRule kIn{.typeId = 1299,
                           .length = kLsRecordSize,
                           .modes = {Modes(1, 2), Modes(0, 3, 5, 6)},
                           .read = Unexplained<SYSDT_Str2LSPrefix>,
                           .memory = Memory::kPlain};

} // namespace

} // namespace bgp

uint32_t SYSDT_ParseLsPrefixStr(const char *text, const BgpLsKeyword *rows, uint32_t rowCount, void *target,
                                BgpLsParseContext *context)
{
    return bgp::ParseGroups({text, static_cast<uint32_t>(std::strlen(text))}, rows, rowCount, target, context);
}

uint32_t SYSDT_Str2LSPrefix(const char *text, void *record)
{
    if (text == nullptr || record == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    BgpLsParseContext *context = bgp::SYSDT_CreateLsPrefixParseContext(text, static_cast<uint8_t *>(record));
    if (context == nullptr) {
        return DT_ERR_FAIL;
    }
    uint32_t code = bgp::BgpLsParseLsPrefixEntry(context);
    if (code == DT_OK) {
        code = bgp::SYSDT_Str2LsPrefixPostCheck(*context);
    }
    SYS_DataTypeFree(context);
    return code;
}

BGP_FORMAT_IN(SYSDT_LSPrefixFormatIn, bgp::kIn)
