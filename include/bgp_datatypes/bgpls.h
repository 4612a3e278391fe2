/* The BGP-LS route key BGPLSPREFIX: operations, parser and printers. */
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

/*
 * The parser beneath it: a run of bracketed groups, "[as100][mt-id0]", each for the first row whose keyword it begins
 * with. The handler gets the row's flag, what stands behind the keyword (a copy, which it may change), the target and
 * the context (which may be null); 0 goes on with the next group. Groups may be nested and hold at most 498 characters.
 * 0, the first handler's code, or DT_ERR_FAIL: no text, a broken group, no row, or a row without a handler.
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

/* The text of 228 bytes into a buffer of 769. *printed, 0 on entry, counts what was written even on DT_ERR_FAIL. */
BGP_DATATYPES_API uint32_t SYSDT_LsPrefix2Str(const void *record, char *buffer, uint32_t *printed);
/*
 * Its printers, one per NLRI type: append at buffer + *printed and stay below limit bytes from buffer, terminator
 * included; what does not fit is cut. DT_ERR_FAIL when there is no room left or the host's formatter refuses.
 */
BGP_DATATYPES_API uint32_t SYSDT_LS_NodeKeyToStr(const void *record, char *buffer, uint32_t limit, uint32_t *printed);
BGP_DATATYPES_API uint32_t SYSDT_LS_LinkKeyToStr(const void *record, char *buffer, uint32_t limit, uint32_t *printed);
BGP_DATATYPES_API uint32_t SYSDT_LS_Ipv4PrefixKeyToStr(const void *record, char *buffer, uint32_t limit,
                                                       uint32_t *printed);
BGP_DATATYPES_API uint32_t SYSDT_LS_Ipv6PrefixKeyToStr(const void *record, char *buffer, uint32_t limit,
                                                       uint32_t *printed);
BGP_DATATYPES_API uint32_t SYSDT_LS_TePolicyKeyToStr(const void *record, char *buffer, uint32_t limit,
                                                     uint32_t *printed);
BGP_DATATYPES_API uint32_t SYSDT_LS_Srv6SidKeyToStr(const void *record, char *buffer, uint32_t limit,
                                                    uint32_t *printed);
/* The keyword of an NLRI type or protocol into a buffer of 32; an unknown number writes nothing. 0, DT_ERR_NULL_PTR. */
BGP_DATATYPES_API uint32_t SYSDT_LS_RouteTypeEnum2Str(uint32_t nlriType, char *buffer);
BGP_DATATYPES_API uint32_t SYSDT_LS_ProtclTypeEnum2Str(uint32_t protocolId, char *buffer);

#ifdef __cplusplus
}
#endif

#endif
