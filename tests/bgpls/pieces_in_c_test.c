/*
 * The pieces of the BGP-LS key's parser, printers and Lua conversion as a caller in C has them. Each function returns
 * null, or the first check that does not hold.
 */
#include "bgp_datatypes/bgpls.h"
#include "bgp_host_services.h"

#include <stddef.h>
#include <string.h>

#define TEXT_OF(line) #line
#define LINE_TEXT(line) TEXT_OF(line)
#define WANT(condition)                                                                                                \
    do {                                                                                                               \
        if (!(condition)) {                                                                                            \
            return "line " LINE_TEXT(__LINE__) ": " #condition;                                                        \
        }                                                                                                              \
    } while (0)

const char *BgpLsDescriptorsInC(void);
const char *BgpLsGroupsInC(void);
const char *BgpLsStepsInC(void);
const char *BgpLsRoutinesInC(void);
const char *BgpLsRouterIdsInC(void);
const char *BgpLsPrintersInC(void);
const char *BgpLsTextsInC(void);
const char *BgpLsLuaInC(lua_State *L);

const char *BgpLsDescriptorsInC(void)
{
    WANT(sizeof(BgpLsNodeDescriptor) == 112);
    WANT(offsetof(BgpLsNodeDescriptor, Fields) == 0);
    WANT(offsetof(BgpLsNodeDescriptor, As.Number) == 4);
    WANT(offsetof(BgpLsNodeDescriptor, As.Notation) == 8);
    WANT(offsetof(BgpLsNodeDescriptor, BgpLsIdentifier) == 12);
    WANT(offsetof(BgpLsNodeDescriptor, MemberAs) == 16);
    WANT(offsetof(BgpLsNodeDescriptor, BgpRouterId) == 24);
    WANT(offsetof(BgpLsNodeDescriptor, OspfAreaId) == 28);
    WANT(offsetof(BgpLsNodeDescriptor, Reserved) == 32);
    WANT(offsetof(BgpLsNodeDescriptor, Ipv4RouterId) == 36);
    WANT(offsetof(BgpLsNodeDescriptor, Ipv6RouterId) == 40);
    WANT(offsetof(BgpLsNodeDescriptor, IgpRouterId) == 56);
    WANT(offsetof(BgpLsNodeDescriptor, IdentifierGiven) == 108);
    WANT(sizeof(BgpLsLinkDescriptor) == 56);
    WANT(sizeof(((BgpLsTeDescriptor *)0)->Endpoint) == 21);
    WANT(sizeof(g_bgplsPrefixPattern) / sizeof(*g_bgplsPrefixPattern) == 24);
    WANT(sizeof(g_bgplsPrefixParsers) / sizeof(*g_bgplsPrefixParsers) == 7);
    return NULL;
}

/* ------------------------------------------------------------------------------------------------------- group loop */

static uint32_t Add(uint32_t flag, char *value, void *target, BgpLsParseContext *context)
{
    uint32_t *sum = target;
    *sum += flag * (uint32_t)strlen(value);
    return context == NULL ? DT_OK : DT_ERR_TOO_LONG;
}

const char *BgpLsGroupsInC(void)
{
    static const BgpLsKeyword rows[] = {{"one", 1, 1, Add}, {"o", 1000, 0, Add}, {"no", 2, 0, NULL}};
    uint32_t sum = 0;
    WANT(SYSDT_ParseLsPrefixStr("[one][oabc][o[x]]", rows, 3, &sum, NULL) == DT_OK);
    WANT(sum == 6000);
    WANT(SYSDT_ParseLsPrefixStr("[one][no]", rows, 3, &sum, NULL) == DT_ERR_FAIL);

    char group[6] = "kept";
    uint32_t length = 77;
    WANT(SYSDT_GetLsPrefixSubString("[a[b]][c]", 9, group, sizeof group, &length) == DT_OK);
    WANT(length == 4 && strcmp(group, "a[b]") == 0);
    WANT(SYSDT_GetLsPrefixSubString("[abcde]", 7, group, sizeof group, &length) ==
         DT_ERR_FAIL); /* one byte stays free */
    WANT(strcmp(group, "a[b]") == 0);
    WANT(SYSDT_GetLsPrefixSubString("[a]", 2, group, sizeof group, &length) == DT_ERR_FAIL);
    WANT(SYSDT_GetLsPrefixSubString("a]", 2, group, sizeof group, &length) == DT_ERR_FAIL);
    WANT(SYSDT_GetLsPrefixSubString("[]", 0, group, sizeof group, &length) == DT_ERR_FAIL);
    WANT(SYSDT_GetLsPrefixSubString("[]", 2, group, sizeof group, &length) == DT_OK && length == 0 && group[0] == '\0');

    char content[] = "once";
    char *value = NULL;
    WANT(SYSDT_ParseLsPrefixFindPattern(content, rows, 3, &value) == &rows[1] && value == content + 1);
    WANT(SYSDT_ParseLsPrefixFindPattern(content, rows, 1, &value) == NULL);
    return NULL;
}

/* ------------------------------------------------------------------------------------------------------------ steps */

static uint32_t WordAt(const uint8_t *record, size_t offset)
{
    uint32_t word;
    memcpy(&word, record + offset, sizeof word);
    return word;
}

const char *BgpLsStepsInC(void)
{
    uint8_t record[228];
    memset(record, 0xEE, sizeof record);
    WANT(SYSDT_CreateLsPrefixParseContext(" \t", record) == NULL);
    WANT(SYSDT_CreateLsPrefixParseContext("[a b]", record) == NULL);
    WANT(record[0] == 0xEE && record[227] == 0xEE);

    BgpLsParseContext *context =
        SYSDT_CreateLsPrefixParseContext(" [NODE][OSPFv2][IDENTIFIER7][LOCAL[as100]]\t", record);
    WANT(context != NULL);
    WANT(record[0] == 0 && record[227] == 0);
    WANT(BgpLsParseLsPrefixEntry(context) == DT_OK);
    WANT(SYSDT_Str2LsPrefixPostCheck(context) == DT_OK);
    WANT(WordAt(record, 0) == 1 && WordAt(record, 4) == 3 && WordAt(record, 8) == 7 && WordAt(record, 16) == 100);
    SYS_DataTypeFree(context);

    /* The handlers, one by one. */
    char identifier[] = "4294967298";
    char number[] = "x";
    char local[] = "[as1.0][bgp-ls-identifier1.2.3.4][ospf-area-id0.0.0.5]";
    char remote[] = "[as2][bgp-ls-identifier1.2.3.5]";
    char link[] = "[link-local-id0.0.0.9]";
    context = SYSDT_CreateLsPrefixParseContext("[LINK]", record);
    WANT(context != NULL);
    WANT(BgpLsParseProtocol(1, context) == DT_ERR_FAIL); /* before the type */
    WANT(SYSDT_Str2LsPrefixPostCheck(context) == DT_ERR_FAIL);
    WANT(BgpLsParseRouteType(7, context) == DT_ERR_FAIL);
    WANT(BgpLsParseProtocol(1, context) == DT_ERR_FAIL);
    WANT(BgpLsParseRouteType(2, context) == DT_OK);
    WANT(BgpLsParseRouteType(2, context) == DT_ERR_FAIL);
    WANT(BgpLsParseProtocol(1, context) == DT_OK);
    WANT(BgpLsParseIdentifier(4, identifier, NULL, context) == DT_OK);
    WANT(BgpLsParseLocalNode(8, local, NULL, context) == DT_OK);
    WANT(BgpLsParseLocalNode(8, local, NULL, context) == DT_ERR_FAIL);
    WANT(BgpLsParseRemoteNode(16, remote, NULL, context) == DT_OK);
    WANT(SYSDT_Str2LsPrefixPostCheck(context) == DT_ERR_FAIL);
    WANT(BgpLsParseLink(32, link, NULL, context) == DT_OK);
    WANT(BgpLsParseDiscard(64, number, NULL, context) == DT_OK);
    WANT(BgpLsParsePrefix(256, link, NULL, context) == DT_ERR_FAIL);
    WANT(BgpLsParseTe(512, link, NULL, context) == DT_ERR_FAIL);
    WANT(BgpLsParseSid(1024, link, NULL, context) == DT_ERR_FAIL);
    WANT(SYSDT_Str2LsPrefixPostCheck(context) == DT_OK);
    WANT(WordAt(record, 0) == 2 && WordAt(record, 4) == 1 && WordAt(record, 8) == 2 && WordAt(record, 12) == 0);
    WANT(WordAt(record, 16) == 65536 && WordAt(record, 20) == 1 && WordAt(record, 24) == 0x01020304);
    WANT(WordAt(record, 36) == 5 && WordAt(record, 90) == 2 && WordAt(record, 98) == 0x01020305);
    WANT(WordAt(record, 164) == 9 && WordAt(record, 212) == 0xFFFFFFFF && WordAt(record, 224) == 3);
    SYS_DataTypeFree(context);

    context = SYSDT_CreateLsPrefixParseContext("[NODE]", record);
    WANT(context != NULL);
    WANT(BgpLsParseRouteType(1, context) == DT_OK);
    WANT(BgpLsParseIdentifier(4, number, NULL, context) == DT_ERR_FAIL);
    SYS_DataTypeFree(context);
    return NULL;
}

/* -------------------------------------------------------------------------------------------------- section routines
 */

const char *BgpLsRoutinesInC(void)
{
    static BgpLsProtocolRoutine *const protocols[] = {BgpLsNodeParseProtocol,       BgpLsLinkParseProtocol,
                                                      BgpLsIpv4PrefixParseProtocol, BgpLsIpv6PrefixParseProtocol,
                                                      BgpLsTePolicyParseProtocol,   BgpLsSrv6SidParseProtocol};
    static BgpLsIdentifierRoutine *const identifiers[] = {
        BgpLsNodeParseIdentifier,       BgpLsLinkParseIdentifier,     BgpLsIpv4PrefixParseIdentifier,
        BgpLsIpv6PrefixParseIdentifier, BgpLsTePolicyParseIdentifier, BgpLsSrv6SidParseIdentifier};
    uint8_t record[228];
    BgpLsParseContext *context = SYSDT_CreateLsPrefixParseContext("[NODE]", record);
    WANT(context != NULL);
    for (uint32_t i = 0; i < 6; ++i) {
        WANT(g_bgplsPrefixParsers[i + 1].NlriType == i + 1);
        WANT(g_bgplsPrefixParsers[i + 1].Protocol == protocols[i]);
        WANT(g_bgplsPrefixParsers[i + 1].Identifier == identifiers[i]);
        WANT(protocols[i](i + 70, context) == DT_OK && WordAt(record, 4) == i + 70);
        WANT(identifiers[i](0x0000000900000050 + i, context) == DT_OK);
        WANT(WordAt(record, 8) == 0x50 + i && WordAt(record, 12) == 0);
    }
    WANT(g_bgplsPrefixParsers[0].LocalNode == NULL && g_bgplsPrefixParsers[0].Required == 0);
    WANT(g_bgplsPrefixParsers[1].Required == 15 && g_bgplsPrefixParsers[1].RemoteNode == NULL);
    WANT(g_bgplsPrefixParsers[2].Required == 63 && g_bgplsPrefixParsers[2].RemoteNode == BgpLsLinkParseRemoteNode);
    WANT(g_bgplsPrefixParsers[2].Link == BgpLsLinkParseLink && g_bgplsPrefixParsers[2].Prefix == NULL);
    WANT(g_bgplsPrefixParsers[3].Required == 271 && g_bgplsPrefixParsers[3].Prefix == BgpLsIPv4PrefixParsePrefix);
    WANT(g_bgplsPrefixParsers[4].Required == 271 && g_bgplsPrefixParsers[4].Prefix == BgpLsIPv6PrefixParsePrefix);
    WANT(g_bgplsPrefixParsers[5].Required == 527 && g_bgplsPrefixParsers[5].Te == BgpLsTePolicyParseTe);
    WANT(g_bgplsPrefixParsers[6].Required == 1039 && g_bgplsPrefixParsers[6].Sid == BgpLsSrv6SidParseSid);

    BgpLsNodeDescriptor node = {.Fields = 1, .As = {100, 1}, .BgpLsIdentifier = 5, .IdentifierGiven = 2};
    WANT(BgpLsNodeParseLocalNode(&node, context) == DT_OK);
    WANT(WordAt(record, 16) == 100 && WordAt(record, 20) == 1 && WordAt(record, 24) == 5);
    WANT(WordAt(record, 82) == 0); /* only bit 0 is the mark */
    node.IdentifierGiven = 1;
    WANT(BgpLsNodeParseLocalNode(&node, context) == DT_OK && WordAt(record, 82) == 1);
    WANT(BgpLsIpv4PrefixParseLocalNode(&node, context) == DT_OK && WordAt(record, 95) == 1);
    WANT(BgpLsIpv6PrefixParseLocalNode(&node, context) == DT_OK && WordAt(record, 107) == 1);
    WANT(BgpLsTePolicyParseLocalNode(&node, context) == DT_OK && WordAt(record, 112) == 1);
    node.Fields = 16;
    WANT(BgpLsNodeParseLocalNode(&node, context) == DT_ERR_FAIL);
    WANT(BgpLsTePolicyParseLocalNode(&node, context) == DT_OK);
    node.Fields = 32;
    WANT(BgpLsTePolicyParseLocalNode(&node, context) == DT_ERR_FAIL);
    WANT(BgpLsLinkParseLocalNode(&node, context) == DT_ERR_FAIL);
    WANT(BgpLsNodeDescMandentoryFields(context) == 4 && BgpLsNodeDescUnsupportFields(context) == 16);
    node.Fields = 4;
    WANT(BgpLsLinkParseLocalNode(&node, context) == DT_OK && WordAt(record, 224) == 1);
    WANT(BgpLsSrv6SidParseLocalNode(&node, context) == DT_OK && WordAt(record, 114) == 1);
    WANT(BgpLsParseRouteType(2, context) == DT_OK && BgpLsParseProtocol(7, context) == DT_OK);
    WANT(BgpLsNodeDescMandentoryFields(context) == 16 && BgpLsNodeDescUnsupportFields(context) == 4);
    WANT(BgpLsLinkParseLocalNode(&node, context) == DT_ERR_FAIL);
    node.Fields = 0;
    WANT(BgpLsLinkParseRemoteNode(&node, context) == DT_OK && WordAt(record, 224) == 3);

    BgpLsLinkDescriptor link = {.Fields = 7, .LocalId = 1, .RemoteId = 2, .MtId = 3};
    WANT(BgpLsLinkParseLink(&link, context) == DT_OK);
    WANT(WordAt(record, 164) == 1 && WordAt(record, 168) == 2 && WordAt(record, 212) == 3);
    link.Fields = 6;
    WANT(BgpLsLinkParseLink(&link, context) == DT_ERR_FAIL);
    BgpLsPrefixDescriptor prefix = {.Fields = 6, .MtId = 1, .OspfRouteType = 2, .Ipv4 = 0x0A000000, .Length = 8};
    WANT(BgpLsIPv4PrefixParsePrefix(&prefix, context) == DT_OK);
    WANT(WordAt(record, 82) == 1 && WordAt(record, 86) == 2 && WordAt(record, 90) == 0x0A000000 && record[94] == 8);
    WANT(BgpLsIPv6PrefixParsePrefix(&prefix, context) == DT_ERR_FAIL);
    prefix.Fields = 7;
    WANT(BgpLsIPv6PrefixParsePrefix(&prefix, context) == DT_OK && record[106] == 8);
    BgpLsTeDescriptor te = {.Fields = 126, .ProtocolOrigin = 1, .Flags = 2, .Color = 3, .Discriminator = 4};
    WANT(BgpLsTePolicyParseTe(&te, context) == DT_ERR_FAIL);
    te.Fields = 127;
    WANT(BgpLsTePolicyParseTe(&te, context) == DT_OK);
    WANT(record[52] == 1 && record[53] == 2 && WordAt(record, 75) == 3 && WordAt(record, 108) == 4);
    BgpLsSidDescriptor sid = {.Fields = 1, .MtId = 5, .Sid = {0xFC, 0}};
    WANT(BgpLsSrv6SidParseSid(&sid, context) == DT_ERR_FAIL);
    sid.Fields = 2;
    WANT(BgpLsSrv6SidParseSid(&sid, context) == DT_OK && WordAt(record, 90) == 5 && record[94] == 0xFC);
    SYS_DataTypeFree(context);
    return NULL;
}

const char *BgpLsRouterIdsInC(void)
{
    uint8_t area[50] = {0};
    WANT(BgpLsStr2IsIsIgpRouterId("0123.4567.89ab.cd", area) == DT_OK);
    WANT(memcmp(area, "\x01\x23\x45\x67\x89\xAB\xCD\x00", 8) == 0);
    WANT(BgpLsStr2IsIsIgpRouterId("0123.4567.89ab.c", area) == DT_ERR_FAIL);
    WANT(BgpLsStr2IsIsIgpRouterId("0123.4567.89ab.gd", area) == DT_ERR_FAIL);
    char both[] = "1.2.3.4/5.6.7.8";
    memset(area, 0, sizeof area);
    WANT(SYSDT_Str2LocIgpRouterId(both, area) == DT_OK);
    WANT(memcmp(area, "\x01\x02\x03\x04\x05\x06\x07\x08", 8) == 0);
    char one[] = "9.2.3.4";
    WANT(SYSDT_Str2LocIgpRouterId(one, area) == DT_OK && area[0] == 9 && area[4] == 5);
    char none[] = "1.2.3.4/5";
    WANT(SYSDT_Str2LocIgpRouterId(none, area) == DT_ERR_FAIL);

    uint8_t record[228];
    BgpLsNodeDescriptor node = {0};
    char id[] = "1.1.1.1";
    BgpLsParseContext *context = SYSDT_CreateLsPrefixParseContext("[NODE]", record);
    WANT(context != NULL && BgpLsParseRouteType(1, context) == DT_OK);
    WANT(BgpLsParseNodeDescIgpRouterId(8, id, &node, context) == DT_ERR_FAIL); /* no protocol */
    WANT(node.Fields == 0);
    WANT(BgpLsParseProtocol(3, context) == DT_OK);
    WANT(BgpLsParseNodeDescIgpRouterId(8, id, &node, context) == DT_OK);
    WANT(node.Fields == 8 && node.IgpRouterId[0] == 1 && node.IgpRouterId[4] == 0);
    WANT(BgpLsParseNodeDescIgpRouterId(8, id, &node, context) == DT_ERR_FAIL);
    SYS_DataTypeFree(context);
    return NULL;
}

/* --------------------------------------------------------------------------------------------------------- printing */

/* A printer's text behind "x", or "failed". */
static const char *Printed(BgpLsPrinter *print, const void *record, uint32_t limit)
{
    static char text[769]; /* this file runs on one thread */
    uint32_t printed = 1;
    strcpy(text, "x");
    const uint32_t code = print(record, text, limit, &printed);
    return code == DT_OK && printed == strlen(text) ? text : "failed";
}

const char *BgpLsPrintersInC(void)
{
    uint8_t te[228];
    uint8_t link[228];
    WANT(SYSDT_Str2LSPrefix("[TEPOLICY][BGP][IDENTIFIER1][LOCAL[as2][bgp-router-id1.1.1.1]][TE[protocol-origin3][Flag4]"
                            "[endpoint::5][color6][originator-as0][originator-address8.8.8.8][discriminator9]]",
                            te) == DT_OK);
    WANT(SYSDT_Str2LSPrefix("[LINK][OSPFv2][IDENTIFIER0][LOCAL[ospf-area-id0.0.0.0]][REMOTE[as1]]"
                            "[LINK[link-local-id0.0.0.9][local1.1.1.1][remote::1][mt-id7]]",
                            link) == DT_OK);
    WANT(strcmp(Printed(SYSDT_LS_TePolicy_LocalKeyToStr, te, 769),
                "x[TEPOLICY][BGP][IDENTIFIER1][LOCAL[as2][bgp-router-id1.1.1.1][ipv4-router-id0.0.0.0][ipv6-router-id::"
                "]]") == 0);
    WANT(strcmp(Printed(SYSDT_LS_TePolicy_TeKeyToStr, te, 769),
                "x[TE[protocol-origin3][Flag4][endpoint::5][color6][originator-as0][originator-address8.8.8.8]"
                "[discriminator9]]") == 0);
    WANT(strcmp(Printed(SYSDT_LinkKeyToStr_LinkDesc, link, 769),
                "x[LINK[link-local-id0.0.0.9][link-remote-id0.0.0.0][mt-id7]]") == 0);
    WANT(strcmp(Printed(SYSDT_SET_LINK_IDSTR, link, 769),
                "x[LINK[link-local-id0.0.0.9][link-remote-id0.0.0.0][mt-id7]]") == 0);
    WANT(strcmp(Printed(SYSDT_SET_LINK_ADDRSTR, link, 769),
                "x[LINK[if-address1.1.1.1][peer-address0.0.0.0][if-address::][peer-address::1][mt-id7]]") == 0);
    WANT(strcmp(Printed(SYSDT_SET_LINK_IDSTR, link, 8), "x[LINK[") == 0);
    WANT(strcmp(Printed(SYSDT_SET_LINK_IDSTR, link, 1), "failed") == 0);

    static BgpLsPrinter *const printers[] = {SYSDT_LS_TePolicy_LocalKeyToStr, SYSDT_LS_TePolicy_TeKeyToStr,
                                             SYSDT_LinkKeyToStr_LinkDesc, SYSDT_SET_LINK_IDSTR, SYSDT_SET_LINK_ADDRSTR};
    for (uint32_t i = 0; i < sizeof printers / sizeof *printers; ++i) {
        char text[769];
        uint32_t printed = 0;
        WANT(printers[i](NULL, text, sizeof text, &printed) == DT_ERR_NULL_PTR);
        WANT(printers[i](te, NULL, sizeof text, &printed) == DT_ERR_NULL_PTR);
        WANT(printers[i](te, text, sizeof text, NULL) == DT_ERR_NULL_PTR);
    }
    return NULL;
}

const char *BgpLsTextsInC(void)
{
    const BgpLsAsNumber plain = {65536, 0};
    const BgpLsAsNumber dotted = {0xFFFFFFFF, 1};
    const BgpLsAsNumber none = {0, 1};
    char text[48] = "?";
    WANT(SYSDT_AsNumToStr(&plain, text) == DT_OK && strcmp(text, "65536") == 0);
    WANT(SYSDT_AsNumToStr(&dotted, text) == DT_OK && strcmp(text, "65535.65535") == 0);
    WANT(SYSDT_AsNumToStr(&none, text) == DT_ERR_FAIL && strcmp(text, "") == 0);
    WANT(SYSDT_OriginatorAsNumToStr(&dotted, text) == DT_OK && strcmp(text, "65535.65535") == 0);
    WANT(SYSDT_OriginatorAsNumToStr(&none, text) == DT_OK && strcmp(text, "0") == 0);
    WANT(SYSDT_MemberAsNumToStr(&dotted, text) == DT_OK && strcmp(text, "[member-as65535.65535]") == 0);
    WANT(SYSDT_MemberAsNumToStr(&none, text) == DT_OK && strcmp(text, "") == 0);
    WANT(SYSDT_LocalBgpLsIdToStr(0xFFFFFFFF, 1, text) == DT_OK);
    WANT(strcmp(text, "[bgp-ls-identifier255.255.255.255]") == 0);
    WANT(SYSDT_LocalBgpLsIdToStr(1, 2, text) == DT_OK && strcmp(text, "") == 0);
    WANT(SYSDT_RemoteBgpLsIdToStr(1, 2, text) == DT_OK && strcmp(text, "[bgp-ls-identifier0.0.0.1]") == 0);
    WANT(SYSDT_RemoteBgpLsIdToStr(1, 1, text) == DT_OK && strcmp(text, "") == 0);

    uint8_t address[21] = {4, 3, 2, 1, 0xFE, 0x80};
    WANT(SYSDT_LS_Ipv4Ipv6ToStr(address, text, 16) == DT_OK && strcmp(text, "1.2.3.4") == 0);
    WANT(SYSDT_LS_Ipv4Ipv6ToStr(address, text, 15) == DT_OK && strcmp(text, "") == 0);
    address[20] = 1;
    WANT(SYSDT_LS_Ipv4Ipv6ToStr(address, text, 46) == DT_OK && strcmp(text, "fe80::") == 0);
    WANT(SYSDT_LS_Ipv4Ipv6ToStr(address, text, 45) == DT_OK && strcmp(text, "") == 0);
    address[20] = 2;
    WANT(SYSDT_LS_Ipv4Ipv6ToStr(address, text, 48) == DT_OK && strcmp(text, "") == 0);

    WANT(SYSDT_AsNumToStr(NULL, text) == DT_ERR_NULL_PTR && SYSDT_AsNumToStr(&plain, NULL) == DT_ERR_NULL_PTR);
    WANT(SYSDT_OriginatorAsNumToStr(NULL, text) == DT_ERR_NULL_PTR);
    WANT(SYSDT_OriginatorAsNumToStr(&plain, NULL) == DT_ERR_NULL_PTR);
    WANT(SYSDT_MemberAsNumToStr(NULL, text) == DT_ERR_NULL_PTR &&
         SYSDT_MemberAsNumToStr(&plain, NULL) == DT_ERR_NULL_PTR);
    WANT(SYSDT_LocalBgpLsIdToStr(1, 1, NULL) == DT_ERR_NULL_PTR &&
         SYSDT_RemoteBgpLsIdToStr(1, 2, NULL) == DT_ERR_NULL_PTR);
    WANT(SYSDT_LS_Ipv4Ipv6ToStr(NULL, text, 48) == DT_ERR_NULL_PTR);
    WANT(SYSDT_LS_Ipv4Ipv6ToStr(address, NULL, 48) == DT_ERR_NULL_PTR);
    return NULL;
}

/* -------------------------------------------------------------------------------------------------------------- Lua */

const char *BgpLsLuaInC(lua_State *L)
{
    uint8_t identifier[8] = {1, 2, 3, 4, 5, 6, 7, 8};
    const BgpLsAsNumber as = {100, 1};
    uint8_t address[21] = {1, 2, 3, 4, 0xFE, 0x80, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 9, 1};
    const char area[50] = {'a', 'b', 'c', 'd', 0, 0, 0, 1};
    uint8_t back[21] = {0};
    BgpLsAsNumber asBack = {0, 0};

    SYSDT_SPTI_CreateTable(L, 0, 8);
    const int32_t table = SYSDT_SPTI_GetTop(L);
    SYSDT_LsPrefixLuaSet_Identifier(L, identifier);
    SYSDT_SPTI_SetField(L, table, "identifier");
    SYSDT_LsPrefixLuaSet_AsNum(L, &as);
    SYSDT_SPTI_SetField(L, table, "as");
    SYSDT_LsPrefixLuaSet_Sysipv6(L, address + 4);
    SYSDT_SPTI_SetField(L, table, "ipv6");
    SYSDT_LsPrefixLuaSet_Sysipv4ipv6(L, address);
    SYSDT_SPTI_SetField(L, table, "address");
    SYSDT_LsPrefixLuaSet_LocIgpRtId(L, table, "length", 3, area);
    SYSDT_SPTI_SetField(L, table, "id");
    WANT(SYSDT_SPTI_GetTop(L) == table);

    WANT(SYSDT_LsPrefixLuaGet_Identifier(L, table, "identifier", back) == DT_OK && memcmp(back, identifier, 8) == 0);
    WANT(SYSDT_LsPrefixLuaGet_AsNum(L, table, "as", &asBack) == DT_OK && asBack.Number == 100 && asBack.Notation == 1);
    WANT(SYSDT_LsPrefixLuaGet_Sysipv6(L, table, "ipv6", back) == DT_OK && memcmp(back, address + 4, 16) == 0);
    WANT(SYSDT_LsPrefixLuaGet_Sysipv4ipv6(L, table, "address", back) == DT_OK && memcmp(back, address, 21) == 0);
    WANT(SYSDT_LsPrefixLuaGet_Uinteger(L, table, "length") == 8);
    WANT(SYSDT_LsPrefixLuaGet_Uinteger(L, table, "missing") == DT_ERR_INVALID_PARAM);
    WANT(SYSDT_SPTI_GetTop(L) == table);

    WANT(SYSDT_LsPrefixLuaGet_Identifier(L, table, "as", identifier) == DT_ERR_INVALID_PARAM && identifier[0] == 1);
    WANT(SYSDT_LsPrefixLuaGet_AsNum(L, table, "length", &asBack) == DT_ERR_INVALID_PARAM);
    WANT(SYSDT_LsPrefixLuaGet_Sysipv6(L, table, "missing", back) == DT_ERR_INVALID_PARAM);
    WANT(SYSDT_LsPrefixLuaGet_Sysipv4ipv6(L, table, "ipv6", back) == DT_ERR_INVALID_PARAM);
    return NULL;
}
