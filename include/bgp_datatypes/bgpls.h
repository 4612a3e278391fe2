/* The BGP-LS route key BGPLSPREFIX: operations, and the pieces of its parser, printers and Lua conversion. */
#ifndef BGP_DATATYPES_BGPLS_H
#define BGP_DATATYPES_BGPLS_H

#include "bgp_datatypes.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ----------------------------------------------------------------------------------------------- BGP-LS route keys */

/*
 * BGPLSPREFIX (type 1299): the key of a BGP-LS route (RFC 9552, RFC 9514, RFC 9857), 228 bytes, byte-packed: NLRI type
 * u32 (1 node, 2 link, 3 IPv4 prefix, 4 IPv6 prefix, 5 TE policy, 6 SRv6 SID), protocol id u32, identifier u64, and the
 * descriptors of the NLRI type, which Bgp_DescribeValue() lists. FormatIn parses in modes 1 and 2 only, FormatOut
 * prints in all but 4; its text buffer has 769 bytes. Results come from SYS_DataTypeMalloc(). LuaGet tells of failures
 * only for links and IPv4 prefixes, the other NLRI types are read as far as they go. Endian needs its context, which
 * may be any pointer but null, and turns network order into host order; of a value in host order it reverses the NLRI
 * type alone.
 */
BGP_DATATYPES_API DataTypeFormatInOperation SYSDT_LSPrefixFormatIn;
BGP_DATATYPES_API DataTypeFormatOutOperation SYSDT_LSPrefixFormatOut;
BGP_DATATYPES_API DataTypeCheckOperation SYSDT_LSPrefixCheck;
BGP_DATATYPES_API DataTypeHelpOperation SYSDT_LSPrefixHelp;
BGP_DATATYPES_API DataTypeCompareOperation SYSDT_LSPrefixCompare;
BGP_DATATYPES_API DataTypeLuaSetOperation SYSDT_LSPrefixLuaSet;
BGP_DATATYPES_API DataTypeLuaGetOperation SYSDT_LSPrefixLuaGet;
BGP_DATATYPES_API DataTypeEndianOperation SYSDT_LSPrefixEndian;

/* "[NODE][OSPFv2]..." to 228 bytes. 0, or a code; the bytes hold part of a key then. Takes and frees scratch memory. */
BGP_DATATYPES_API uint32_t SYSDT_Str2LSPrefix(const char *text, void *record);

/* The text of 228 bytes into a buffer of 769. *printed, 0 on entry, counts what was written even on DT_ERR_FAIL. */
BGP_DATATYPES_API uint32_t SYSDT_LsPrefix2Str(const void *record, char *buffer, uint32_t *printed);

/* ------------------------------------------------------------------------------------------ the parser's group loop */

/*
 * A run of bracketed groups, "[as100][mt-id0]", each for the first row whose keyword it begins with. The handler gets
 * the row's flag, what stands behind the keyword (a copy, which it may change), the target and the context (which may
 * be null); 0 goes on with the next group. Groups may be nested and hold at most 498 characters. 0, the first handler's
 * code, or DT_ERR_FAIL: no text, a broken group, no row, or a row without a handler.
 */
typedef struct BgpLsParseContext BgpLsParseContext; /* opaque here */
typedef uint32_t BgpLsHandler(uint32_t flag, char *value, void *target, BgpLsParseContext *context);
typedef struct {
    const char *Keyword;
    uint32_t Flag;  /* a single bit */
    uint32_t Exact; /* 1: nothing may follow the keyword */
    BgpLsHandler *Handler;
} BgpLsKeyword;
BGP_DATATYPES_API uint32_t SYSDT_ParseLsPrefixStr(const char *text, const BgpLsKeyword *rows, uint32_t rowCount,
                                                  void *target, BgpLsParseContext *context);
/*
 * Its two steps: the content of the first group of a text of textLength characters, terminated, into groupSize bytes
 * (of which one stays free), and its length; 0, or DT_ERR_FAIL for a text without a whole group and for a longer one.
 * The row of a content, and where the value behind the keyword begins; null when there is no row.
 */
BGP_DATATYPES_API uint32_t SYSDT_GetLsPrefixSubString(const char *text, uint32_t textLength, char *group,
                                                      uint32_t groupSize, uint32_t *length);
BGP_DATATYPES_API const BgpLsKeyword *SYSDT_ParseLsPrefixFindPattern(char *content, const BgpLsKeyword *rows,
                                                                     uint32_t rowCount, char **value);

/* ----------------------------------------------------------------------------------------------- parsing, by steps */

/*
 * What SYSDT_Str2LSPrefix() does, one step each; a null pointer is tested for by none. A context, from
 * SYS_DataTypeMalloc() (give it back with SYS_DataTypeFree()), for a text and the 228 bytes that it is read into, which
 * are zeroed; both must outlive it. Null when the text cannot be a key (empty, longer than 500 characters, a blank
 * inside) or there is no memory. Then all groups of the text, and at last whether those were there that the NLRI type
 * must have; 0 or DT_ERR_FAIL.
 */
BGP_DATATYPES_API BgpLsParseContext *SYSDT_CreateLsPrefixParseContext(const char *text, void *record);
BGP_DATATYPES_API uint32_t BgpLsParseLsPrefixEntry(BgpLsParseContext *context);
BGP_DATATYPES_API uint32_t SYSDT_Str2LsPrefixPostCheck(const BgpLsParseContext *context);

/*
 * The keywords of the top level and their handlers, which fill the context's record. The NLRI type must come before all
 * others, and none may come twice: DT_ERR_FAIL. The handlers of sections read the value's groups into a descriptor of
 * those below and give that to the NLRI type's routine.
 */
#define BGP_LS_KEYWORDS 24
BGP_DATATYPES_API extern const BgpLsKeyword g_bgplsPrefixPattern[BGP_LS_KEYWORDS];
BGP_DATATYPES_API uint32_t BgpLsParseRouteType(uint32_t nlriType, BgpLsParseContext *context);
BGP_DATATYPES_API uint32_t BgpLsParseProtocol(uint32_t protocolId, BgpLsParseContext *context);
BGP_DATATYPES_API BgpLsHandler BgpLsParseIdentifier, BgpLsParseLocalNode, BgpLsParseRemoteNode, BgpLsParseLink,
    BgpLsParsePrefix, BgpLsParseTe, BgpLsParseSid, BgpLsParseDiscard;

/*
 * The field "igp-router-id" of a BgpLsNodeDescriptor, by the context's protocol, which must have been named; and its
 * two forms, "0000.0000.0001.00" (IS-IS, 7 bytes) and "1.1.1.1/2.2.2.2" (OSPF, 4 or 8 bytes in network order; cuts the
 * text at the slash), into the 50 bytes of an IGP router-id area. 0 or DT_ERR_FAIL.
 */
BGP_DATATYPES_API BgpLsHandler BgpLsParseNodeDescIgpRouterId;
BGP_DATATYPES_API uint32_t BgpLsStr2IsIsIgpRouterId(const char *value, uint8_t *area);
BGP_DATATYPES_API uint32_t SYSDT_Str2LocIgpRouterId(char *value, uint8_t *area);

/*
 * What sections are read into, zero beforehand but for multi-topology ids (0xFFFFFFFF: none). Fields has the flags of
 * the fields that were given, numbers are in host order, addresses in network order where they are bytes.
 */
typedef struct {
    uint32_t Number;
    uint32_t Notation; /* 0 plain, else dotted */
} BgpLsAsNumber;

typedef struct {
    uint32_t Fields; /* 1 as, 2 bgp-ls-identifier, 4 ospf-area-id, 8 igp-router-id, 16 bgp-router-id, 32 member-as,
                        64 ipv4-router-id, 128 ipv6-router-id */
    BgpLsAsNumber As;
    uint32_t BgpLsIdentifier;
    BgpLsAsNumber MemberAs;
    uint32_t BgpRouterId;
    uint32_t OspfAreaId;
    uint32_t Reserved; /* 0 */
    uint32_t Ipv4RouterId;
    uint8_t Ipv6RouterId[16];
    uint8_t IgpRouterId[50];  /* as in the record */
    uint32_t IdentifierGiven; /* bit 0: there was a bgp-ls-identifier */
} BgpLsNodeDescriptor;

typedef struct {
    uint32_t Fields; /* 1 identifier, 2 local, 4 remote, 8 link-local-id, 16 link-remote-id, 32 if-address,
                        64 peer-address, 128 mt-id */
    uint32_t LocalId;
    uint32_t RemoteId;
    uint32_t Ipv4Interface;
    uint32_t Ipv4Neighbour;
    uint8_t Ipv6Interface[16];
    uint8_t Ipv6Neighbour[16];
    uint32_t MtId;
} BgpLsLinkDescriptor;

typedef struct {
    uint32_t Fields; /* 1 mt-id, 2 ospf-route-type, 4 prefix */
    uint32_t MtId;
    uint32_t OspfRouteType;
    uint32_t Ipv4;
    uint8_t Ipv6[16];
    uint8_t Length;
} BgpLsPrefixDescriptor;

typedef struct {
    uint32_t Fields; /* 1 protocol-origin, 2 Flag, 4 endpoint, 8 color, 16 originator-as, 32 originator-address,
                        64 discriminator */
    uint8_t ProtocolOrigin;
    uint8_t Flags;
    uint8_t Endpoint[21]; /* as BGP_FIELD_ADDRESS */
    uint32_t Color;
    BgpLsAsNumber OriginatorAs;
    uint8_t OriginatorAddress[21]; /* as BGP_FIELD_ADDRESS */
    uint32_t Discriminator;
} BgpLsTeDescriptor;

typedef struct {
    uint32_t Fields; /* 1 mt-id, 2 sid */
    uint32_t MtId;
    uint8_t Sid[16];
} BgpLsSidDescriptor;

/*
 * What an NLRI type makes of a section: each routine copies it into the context's record, or answers DT_ERR_FAIL when a
 * field is missing that the type must have, or one was given that it may not have. A null routine: the type has no such
 * section. Rows stand at the place of their NLRI type; row 0 is empty.
 */
typedef uint32_t BgpLsProtocolRoutine(uint32_t protocolId, BgpLsParseContext *context);
typedef uint32_t BgpLsIdentifierRoutine(uint64_t identifier, BgpLsParseContext *context); /* keeps the low 32 bits */
typedef uint32_t BgpLsNodeRoutine(const BgpLsNodeDescriptor *node, BgpLsParseContext *context);
typedef uint32_t BgpLsLinkRoutine(const BgpLsLinkDescriptor *link, BgpLsParseContext *context);
typedef uint32_t BgpLsPrefixRoutine(const BgpLsPrefixDescriptor *prefix, BgpLsParseContext *context);
typedef uint32_t BgpLsTeRoutine(const BgpLsTeDescriptor *te, BgpLsParseContext *context);
typedef uint32_t BgpLsSidRoutine(const BgpLsSidDescriptor *sid, BgpLsParseContext *context);
typedef struct {
    uint32_t NlriType;
    uint32_t Required; /* flags of the top-level keywords that a key must have */
    BgpLsProtocolRoutine *Protocol;
    BgpLsIdentifierRoutine *Identifier;
    BgpLsNodeRoutine *LocalNode;
    BgpLsNodeRoutine *RemoteNode;
    BgpLsLinkRoutine *Link;
    BgpLsPrefixRoutine *Prefix;
    BgpLsTeRoutine *Te;
    BgpLsSidRoutine *Sid;
} BgpLsNlriParser;

#define BGP_LS_NLRI_TYPES 7
BGP_DATATYPES_API extern const BgpLsNlriParser g_bgplsPrefixParsers[BGP_LS_NLRI_TYPES];
BGP_DATATYPES_API BgpLsProtocolRoutine BgpLsNodeParseProtocol, BgpLsLinkParseProtocol, BgpLsIpv4PrefixParseProtocol,
    BgpLsIpv6PrefixParseProtocol, BgpLsTePolicyParseProtocol, BgpLsSrv6SidParseProtocol;
BGP_DATATYPES_API BgpLsIdentifierRoutine BgpLsNodeParseIdentifier, BgpLsLinkParseIdentifier,
    BgpLsIpv4PrefixParseIdentifier, BgpLsIpv6PrefixParseIdentifier, BgpLsTePolicyParseIdentifier,
    BgpLsSrv6SidParseIdentifier;
BGP_DATATYPES_API BgpLsNodeRoutine BgpLsNodeParseLocalNode, BgpLsLinkParseLocalNode, BgpLsLinkParseRemoteNode,
    BgpLsIpv4PrefixParseLocalNode, BgpLsIpv6PrefixParseLocalNode, BgpLsTePolicyParseLocalNode,
    BgpLsSrv6SidParseLocalNode;
BGP_DATATYPES_API BgpLsLinkRoutine BgpLsLinkParseLink;
BGP_DATATYPES_API BgpLsPrefixRoutine BgpLsIPv4PrefixParsePrefix, BgpLsIPv6PrefixParsePrefix;
BGP_DATATYPES_API BgpLsTeRoutine BgpLsTePolicyParseTe;
BGP_DATATYPES_API BgpLsSidRoutine BgpLsSrv6SidParseSid;
/* The one flag that Fields of a link's or SID's local node must have, and may not have, under the context's protocol.
 */
BGP_DATATYPES_API uint32_t BgpLsNodeDescMandentoryFields(const BgpLsParseContext *context);
BGP_DATATYPES_API uint32_t BgpLsNodeDescUnsupportFields(const BgpLsParseContext *context);

/* --------------------------------------------------------------------------------------------------------- printing */

/*
 * The printers of a record, one per NLRI type, and of parts of one: append at buffer + *printed and stay below limit
 * bytes from buffer, terminator included; what does not fit is cut. DT_ERR_FAIL when there is no room left or the
 * host's formatter refuses, DT_ERR_NULL_PTR.
 */
typedef uint32_t BgpLsPrinter(const void *record, char *buffer, uint32_t limit, uint32_t *printed);
BGP_DATATYPES_API BgpLsPrinter SYSDT_LS_NodeKeyToStr, SYSDT_LS_LinkKeyToStr, SYSDT_LS_Ipv4PrefixKeyToStr,
    SYSDT_LS_Ipv6PrefixKeyToStr, SYSDT_LS_TePolicyKeyToStr, SYSDT_LS_Srv6SidKeyToStr;
/* TE policies: the head with the local node, and the policy. Links: the link; by its identifiers, by its addresses. */
BGP_DATATYPES_API BgpLsPrinter SYSDT_LS_TePolicy_LocalKeyToStr, SYSDT_LS_TePolicy_TeKeyToStr,
    SYSDT_LinkKeyToStr_LinkDesc, SYSDT_SET_LINK_IDSTR, SYSDT_SET_LINK_ADDRSTR;

/* The keyword of an NLRI type or protocol into a buffer of 32; an unknown number writes nothing. 0, DT_ERR_NULL_PTR. */
BGP_DATATYPES_API uint32_t SYSDT_LS_RouteTypeEnum2Str(uint32_t nlriType, char *buffer);
BGP_DATATYPES_API uint32_t SYSDT_LS_ProtclTypeEnum2Str(uint32_t protocolId, char *buffer);
/*
 * An AS number (8 bytes: number and notation, host order) into a buffer of 32: "100" or "1.0", by its notation. Of 0
 * the first writes the empty text and answers DT_ERR_FAIL, the second "0"; the third writes "[member-as100]", nothing
 * for 0. 0, DT_ERR_FAIL when the host's formatter refuses, DT_ERR_NULL_PTR.
 */
BGP_DATATYPES_API uint32_t SYSDT_AsNumToStr(const void *as, char *buffer);
BGP_DATATYPES_API uint32_t SYSDT_OriginatorAsNumToStr(const void *as, char *buffer);
BGP_DATATYPES_API uint32_t SYSDT_MemberAsNumToStr(const void *as, char *buffer);
/* "[bgp-ls-identifier1.2.3.4]" into a buffer of 48; empty when bit 0 (local) or 1 (remote) of existFlag is not set. */
BGP_DATATYPES_API uint32_t SYSDT_LocalBgpLsIdToStr(uint32_t identifier, uint32_t existFlag, char *buffer);
BGP_DATATYPES_API uint32_t SYSDT_RemoteBgpLsIdToStr(uint32_t identifier, uint32_t existFlag, char *buffer);
/* An address field (BGP_FIELD_ADDRESS): IPv4 when size is above 15, IPv6 when it is above 45; else the empty text. */
BGP_DATATYPES_API uint32_t SYSDT_LS_Ipv4Ipv6ToStr(const void *address, char *buffer, uint32_t size);

/* -------------------------------------------------------------------------------------------------------------- Lua */

/*
 * Single fields; bytes are without alignment. Those that set leave their table, array or string on the stack, and none
 * tests its pointers. LocIgpRtId also sets the id's length as field lengthName of the table.
 */
BGP_DATATYPES_API void SYSDT_LsPrefixLuaSet_Identifier(lua_State *L, const void *identifier8);
BGP_DATATYPES_API void SYSDT_LsPrefixLuaSet_AsNum(lua_State *L, const void *as8);
BGP_DATATYPES_API void SYSDT_LsPrefixLuaSet_Sysipv6(lua_State *L, const void *address16);
BGP_DATATYPES_API void SYSDT_LsPrefixLuaSet_Sysipv4ipv6(lua_State *L, const void *address21);
BGP_DATATYPES_API void SYSDT_LsPrefixLuaSet_LocIgpRtId(lua_State *L, int32_t table, const char *lengthName,
                                                       uint32_t protocolId, const void *area);
/*
 * Field name of a table: 0, or DT_ERR_INVALID_PARAM at what is missing or of the wrong kind, which stays on the stack;
 * what was read before it has been stored, but for half an identifier. Uinteger returns the number itself, or
 * DT_ERR_INVALID_PARAM in its place.
 */
BGP_DATATYPES_API uint32_t SYSDT_LsPrefixLuaGet_Identifier(lua_State *L, int32_t table, const char *name,
                                                           void *identifier8);
BGP_DATATYPES_API uint32_t SYSDT_LsPrefixLuaGet_AsNum(lua_State *L, int32_t table, const char *name, void *as8);
BGP_DATATYPES_API uint32_t SYSDT_LsPrefixLuaGet_Sysipv6(lua_State *L, int32_t table, const char *name, void *address16);
BGP_DATATYPES_API uint32_t SYSDT_LsPrefixLuaGet_Sysipv4ipv6(lua_State *L, int32_t table, const char *name,
                                                            void *address21);
BGP_DATATYPES_API uint32_t SYSDT_LsPrefixLuaGet_Uinteger(lua_State *L, int32_t table, const char *name);

#ifdef __cplusplus
}
#endif

#endif
