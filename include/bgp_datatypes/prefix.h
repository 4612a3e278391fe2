/* The composite route key BOLPREFIX, its flat sub-types and the types made of them: tables, operations, parsers,
 * printers. */
#ifndef BGP_DATATYPES_PREFIX_H
#define BGP_DATATYPES_PREFIX_H

#include "bgp_datatypes.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ----------------------------------------------------------------- route keys: the composite and its address field */

/*
 * BOLPREFIX (type 279): the route key of any BGP address family, 89 bytes: sub-type word u32 (0 to 16, host order),
 * then the sub-type's payload, zero behind it. The tables are indexed by the sub-type word; a null operation is one
 * that the sub-type does not offer (a null FormatIn: it can be printed but not typed).
 */
#define BOL_PREFIX_SUBTYPES 17
BGP_DATATYPES_API extern const BolPrefixSubtypeEntry g_astBOL_PREFIX_ProcTable[BOL_PREFIX_SUBTYPES];
BGP_DATATYPES_API extern const BolPrefixLuaGetEntry g_astBOL_PREFIX_LuaGetTable[BOL_PREFIX_SUBTYPES];

/*
 * The item on top of the Lua stack into a 21-byte address field (IPv4 word u32, 16 IPv6 bytes, family u8). kind 0: a
 * number, which stays on the stack; kind 1: an array of 16 numbers, which is popped; any other kind reads and writes
 * nothing. 0, DT_ERR_NULL_PTR, or DT_ERR_INVALID_PARAM for an item of the wrong kind.
 */
BGP_DATATYPES_API uint32_t SYSDT_BolPrefixLuaParseToIPv4IPv6(lua_State *L, uint32_t kind, void *block);

/*
 * The operations of the composite. FormatIn, Check, Help and Compare offer the call to every row in order; the first
 * that returns 0 wins, and DT_ERR_INVALID_VALUE says that none did (Compare: the values are not equal; no order is
 * ever told). Check needs a context. FormatOut, LuaSet and LuaGet go to the row of the sub-type word; any failure of
 * the row, and a word above 16, is DT_ERR_INVALID_VALUE. LuaGet takes the sub-type from the Lua field "bolType".
 */
BGP_DATATYPES_API DataTypeFormatInOperation SYSDT_BolPrefixFormatIn;
BGP_DATATYPES_API DataTypeFormatOutOperation SYSDT_BolPrefixFormatOut;
BGP_DATATYPES_API DataTypeCheckOperation SYSDT_BolPrefixCheck;
BGP_DATATYPES_API DataTypeHelpOperation SYSDT_BolPrefixHelp;
BGP_DATATYPES_API DataTypeCompareOperation SYSDT_BolPrefixCompare;
BGP_DATATYPES_API DataTypeLuaSetOperation SYSDT_BolPrefixLuaSet;
BGP_DATATYPES_API DataTypeLuaGetOperation SYSDT_BolPrefixLuaGet;

/* Sub-type 15, "IPV6": an IPv6 address, 16 bytes at 4. Text in modes 0, 1, 2, 3, 5 and 6, both ways. */
BGP_DATATYPES_API DataTypeFormatInOperation SYSDT_Ipv6BolPrefixFormatIn;
BGP_DATATYPES_API DataTypeFormatOutOperation SYSDT_Ipv6BolPrefixFormatOut;
BGP_DATATYPES_API DataTypeLuaSetOperation SYSDT_Ipv6BolPrefixLuaSet;
BGP_DATATYPES_API BolPrefixLuaReaderOperation SYSDT_Ipv6BolPrefixNewLuaGet;
/* Bytes 4-19 of a value as IPv6 text into a buffer of 256 or more. 0, or DT_ERR_FAIL. */
BGP_DATATYPES_API uint32_t SYSDT_Ipv6Prefix2Str(const void *value, char *buffer, uint32_t *printed);

/* ------------------------------------------------------------------------ the route target as a route key, VRFRTEXT */

/*
 * VRFRTEXT (sub-type 8 of BOLPREFIX, 89 bytes): sub-type u32; type, sub-type and value[6], network order; notation u32,
 * host order; zeros. The notations of VRFRT, with 0:0 accepted, and the ES-import route target (0602, RFC 7432) as
 * "0a0b-0c0d-0e0f". 1 to 100 characters. Mode 2 prints what would be typed, other modes "RT <100 : 1>".
 */
BGP_DATATYPES_API uint32_t SYSDT_Str2VrfRtExt(const char *text, void *value); /* 0, NULL_PTR or FAIL */
/*
 * Adds the separators of text to the three counters. DT_ERR_FAIL for a text of another length than 1 to 100 or with
 * anything else than separators and hexadecimal digits; the counters may have been increased then.
 */
BGP_DATATYPES_API uint32_t SYSDT_CheckVrfRtExtStr(const char *text, uint32_t *dots, uint32_t *colons, uint32_t *dashes);
/* One notation each, scanned: white space may stand before a number, and anything behind the last one. */
BGP_DATATYPES_API uint32_t SYSDT_Str2IpAddressRT(const char *text, void *value);   /* a.b.c.d:n */
BGP_DATATYPES_API uint32_t SYSDT_Str2TwoOctecAsRT(const char *text, void *value);  /* AS:n, of either size */
BGP_DATATYPES_API uint32_t SYSDT_Str2FourOctecAsRT(const char *text, void *value); /* x.y:n */
BGP_DATATYPES_API uint32_t SYSDT_Str2EvpnOctecAsRT(const char *text, void *value); /* xxxx-xxxx-xxxx */
/* Printers into a buffer of 256; they return the printed length, 0 when nothing is printed. By the request's mode: */
BGP_DATATYPES_API uint32_t SYSDT_VrfRtExtFormatOutStr(const DataTypeRequest *request, char *buffer, const void *value);
BGP_DATATYPES_API uint32_t SYSDT_VrfRtExtFormatOutRtStr(char *buffer, const void *value);    /* for display */
BGP_DATATYPES_API uint32_t SYSDT_VrfRtExtFormatOutRtStrNCF(char *buffer, const void *value); /* as typed */
/* The same two for a value taken to be of kind 0002. */
BGP_DATATYPES_API uint32_t SYSDT_VrfRtExtFormatBgpTwoOctAsOutRtStr(char *buffer, const void *value);
BGP_DATATYPES_API uint32_t SYSDT_VrfRtExtFormatBgpTwoOctAsOutRtStrNCF(char *buffer, const void *value);
BGP_DATATYPES_API DataTypeFormatInOperation SYSDT_VrfRtExtFormatIn;
BGP_DATATYPES_API DataTypeFormatOutOperation SYSDT_VrfRtExtFormatOut;
BGP_DATATYPES_API DataTypeLuaSetOperation SYSDT_VrfRtExtLuaSet;
BGP_DATATYPES_API DataTypeLuaGetOperation SYSDT_VrfRtExtLuaGet;
BGP_DATATYPES_API BolPrefixLuaReaderOperation SSYSDT_VrfRtExtNewLuaGet;

/* ------------------------------------------------------------------------------------- layer-2 VPN route keys */

/*
 * Sub-type 0, "IPV4": the VPLS auto-discovery key (RFC 6074), an IPv4 word at 4. Text in modes 0, 1, 2, 3, 5 and 6,
 * both ways. Check looks at the length (89) alone, not even at the pointer. Help first asks ZOL_CheckBySymbolForIPV4()
 * about the typed text and returns its code when it objects. Compare orders by the address; DT_ERR_FAIL for other
 * sub-types.
 */
BGP_DATATYPES_API DataTypeFormatInOperation SYSDT_VplsAdPrefixFormatIn;
BGP_DATATYPES_API DataTypeFormatOutOperation SYSDT_VplsAdPrefixFormatOut;
BGP_DATATYPES_API DataTypeCheckOperation SYSDT_VplsAdPrefixCheck;
BGP_DATATYPES_API DataTypeHelpOperation SYSDT_VplsAdPrefixHelp;
BGP_DATATYPES_API DataTypeCompareOperation SYSDT_VplsAdPrefixCompare;
BGP_DATATYPES_API DataTypeLuaSetOperation SYSDT_VplsAdPrefixLuaSet;
BGP_DATATYPES_API DataTypeLuaGetOperation SYSDT_VplsAdPrefixLuaGet;
BGP_DATATYPES_API BolPrefixLuaReaderOperation SYSDT_VplsAdPrefixNewLuaGet;

/*
 * Sub-type 9, "L2VPN", and the type L2VPNPREFIX (294): the key of a BGP layer-2 VPN route (RFC 4761), 89 bytes with the
 * site u16 at 4 and the label offset u16 at 6, host order; printed "10/3". It cannot be typed: FormatIn returns 0 for
 * any arguments and writes nothing. FormatOut of another sub-type is DT_ERR_FAIL. Check, Help and Compare of the type
 * are the SYSDT_VplsAdPrefix ones; its registered length of 4 holds for none of the operations.
 */
BGP_DATATYPES_API DataTypeFormatInOperation SYSDT_L2VPNPrefixFormatIn;
BGP_DATATYPES_API DataTypeFormatOutOperation SYSDT_L2VPNPrefixFormatOut;
BGP_DATATYPES_API DataTypeLuaSetOperation SYSDT_L2VPNPrefixLuaSet;
BGP_DATATYPES_API DataTypeLuaGetOperation SYSDT_L2VPNPrefixLuaGet;
BGP_DATATYPES_API BolPrefixLuaReaderOperation SYSDT_L2VPNPrefixNewLuaGet;
/* FormatOut without the type id. */
BGP_DATATYPES_API uint32_t SYSDT_L2VPNPrefixFormatOutEx(const DataTypeRequest *request, uint32_t length,
                                                        const void *value, uint16_t *outTypeId, uint16_t *outLength,
                                                        void **outBuffer);
/* The four bytes behind the sub-type word as text into a buffer of 256 or more. 0, or DT_ERR_FAIL. */
BGP_DATATYPES_API uint32_t SYSDT_L2VPNPrefix2Str(const void *payload, char *buffer, uint32_t *printed);

/* ---------------------------------------------------------------------------------- multicast and policy route keys */

/*
 * Sub-type 10, "VPNV4MCAST", and the type VPNV4MCPREFIX (295): prefix IPv4 word at 4, mask length u32 at 8 of 89 bytes;
 * typed "10.1.1.0/24", printed without the mask length. FormatIn reports type 279. LuaGet keeps the low 16 bits of both
 * numbers, the reader all. Endian works on the 8 bytes behind the sub-type word, the type's registered length.
 */
BGP_DATATYPES_API DataTypeFormatInOperation SYSDT_VPNV4MCASTPrefixFormatIn;
BGP_DATATYPES_API DataTypeFormatOutOperation SYSDT_VPNV4MCASTPrefixFormatOut;
BGP_DATATYPES_API DataTypeCheckOperation SYSDT_VPNV4MCASTPrefixCheck;
BGP_DATATYPES_API DataTypeHelpOperation SYSDT_VPNV4MCASTPrefixHelp;
BGP_DATATYPES_API DataTypeCompareOperation SYSDT_VPNV4MCASTPrefixCompare;
BGP_DATATYPES_API DataTypeLuaSetOperation SYSDT_VPNV4MCASTPrefixLuaSet;
BGP_DATATYPES_API DataTypeLuaGetOperation SYSDT_VPNV4MCASTPrefixLuaGet;
BGP_DATATYPES_API DataTypeEndianOperation SYSDT_VPNV4MCASTLuaEndian;
BGP_DATATYPES_API BolPrefixLuaReaderOperation SYSDT_VPNV4MCASTPrefixNewLuaGet;

/*
 * Sub-type 11, "MDT", and the type MDTPREFIX (296; RFC 6037): prefix IPv4 word at 4, group IPv4 word at 8 (0 when
 * typed), mask length u32 at 12 of 89 bytes; typed "10.1.1.0/24", printed as the prefix. FormatIn reports type 279. All
 * results come from SYS_DataTypeMalloc(). Endian works on the 12 bytes behind the sub-type word and leaves the group.
 */
BGP_DATATYPES_API DataTypeFormatInOperation SYSDT_MdtPrefixFormatIn;
BGP_DATATYPES_API DataTypeFormatOutOperation SYSDT_MdtPrefixFormatOut;
BGP_DATATYPES_API DataTypeCheckOperation SYSDT_MdtPrefixCheck;
BGP_DATATYPES_API DataTypeHelpOperation SYSDT_MdtPrefixHelp;
BGP_DATATYPES_API DataTypeCompareOperation SYSDT_MdtPrefixCompare;
BGP_DATATYPES_API DataTypeLuaSetOperation SYSDT_MdtPrefixLuaSet;
BGP_DATATYPES_API DataTypeLuaGetOperation SYSDT_MdtPrefixLuaGet;
BGP_DATATYPES_API DataTypeEndianOperation SYSDT_MdtLuaEndian;
BGP_DATATYPES_API BolPrefixLuaReaderOperation SYSDT_MdtPrefixNewLuaGet;

/*
 * Sub-type 12, "RPD": policy type u8 at 4, distinguisher u32 at 6, peer IPv4 word at 10 of 89 bytes; typed and printed
 * "1/10.1.1.1/100". FormatOut of another sub-type is DT_ERR_FAIL and releases the buffer, the caller's own too. Check
 * wants a length of 27. Help texts come from SYS_DataTypeMalloc(). Compare gives DT_ERR_NULL_PTR for a null value.
 */
BGP_DATATYPES_API DataTypeFormatInOperation SYSDT_RpdPrefixFormatIn;
BGP_DATATYPES_API DataTypeFormatOutOperation SYSDT_RpdPrefixFormatOut;
BGP_DATATYPES_API DataTypeCheckOperation SYSDT_RpdPrefixCheck;
BGP_DATATYPES_API DataTypeHelpOperation SYSDT_RpdPrefixHelp;
BGP_DATATYPES_API DataTypeCompareOperation SYSDT_RpdPrefixCompare;
BGP_DATATYPES_API DataTypeLuaSetOperation SYSDT_RpdPrefixLuaSet;
BGP_DATATYPES_API DataTypeLuaGetOperation SYSDT_RpdPrefixLuaGet;
BGP_DATATYPES_API BolPrefixLuaReaderOperation SYSDT_RpdPrefixNewLuaGet;
/* On the bytes behind the sub-type word: swaps the words at 2 and 6. DT_ERR_NULL_PTR for a null payload. */
BGP_DATATYPES_API DataTypeEndianOperation SYSDT_RpdPrefixEndian;

/*
 * Their parsers and printers, on the bytes behind the sub-type word. Parsers: 0, DT_ERR_NULL_PTR, or DT_ERR_FAIL with
 * nothing written. Printers: a buffer of 256 or more; 0, or DT_ERR_FAIL.
 */
BGP_DATATYPES_API uint32_t SYSDT_Str2Vpnv4McastPrefix(const char *text, void *payload);
BGP_DATATYPES_API uint32_t SYSDT_Str2MdtPrefix(const char *text, void *payload);
BGP_DATATYPES_API uint32_t SYSDT_Str2RpdPrefix(const char *text, void *payload);
BGP_DATATYPES_API uint32_t SYSDT_Vpnv4McastPrefix2Str(const void *payload, char *buffer, uint32_t *printed);
BGP_DATATYPES_API uint32_t SYSDT_MdtPrefix2Str(const void *payload, char *buffer, uint32_t *printed);
BGP_DATATYPES_API uint32_t SYSDT_RpdPrefix2Str(const void *payload, char *buffer, uint32_t *printed);

/* ------------------------------------------------------------------------------- SR-policy and SD-WAN route keys */

/*
 * Sub-type 14, "SRPOLICY" (RFC 9830): distinguisher u32 at 4, colour u32 at 8, endpoint IPv4 word at 12, IPv6 bytes at
 * 16, family u8 at 32 (0 IPv4) of 89 bytes; typed and printed "[1][100][10.0.0.1]", "[1][100][2001:db8::1]". Sub-type
 * 16, "SD-WAN": route type u16 at 4, port u32 at 8, site u32 at 12, node IPv4 word at 16, IPv6 bytes at 20, family u8
 * at 36; "1-100-200-10.1.1.1". Text in modes 0, 1, 2, 3, 5 and 6, both ways; FormatIn refuses with
 * DT_ERR_INVALID_PARAM. FormatOut of another sub-type is DT_ERR_FAIL and releases the buffer, the caller's own too.
 * Help texts come from SYS_DataTypeMalloc(). Compare is the order of the bytes, DT_ERR_NULL_PTR for a null value.
 */
BGP_DATATYPES_API DataTypeFormatInOperation SYSDT_SrPolicyPrefixFormatIn, SYSDT_SdwanPrefixFormatIn;
BGP_DATATYPES_API DataTypeFormatOutOperation SYSDT_SrPolicyPrefixFormatOut, SYSDT_SdwanPrefixFormatOut;
BGP_DATATYPES_API DataTypeCheckOperation SYSDT_SrPolicyPrefixCheck, SYSDT_SdwanPrefixCheck;
BGP_DATATYPES_API DataTypeHelpOperation SYSDT_SrPolicyPrefixHelp, SYSDT_SdwanPrefixHelp;
BGP_DATATYPES_API DataTypeCompareOperation SYSDT_SrPolicyPrefixCompare, SYSDT_SdwanPrefixCompare;
BGP_DATATYPES_API DataTypeLuaSetOperation SYSDT_SrPolicyPrefixLuaSet, SYSDT_SdwanPrefixLuaSet;
BGP_DATATYPES_API BolPrefixLuaReaderOperation SYSDT_SrPolicyPrefixNewLuaGet, SYSDT_SdwanPrefixNewLuaGet;
/* The fields of the table at tableIndex into an 89-byte value, all but the sub-type word. */
BGP_DATATYPES_API uint32_t SYSDT_SrPolicyPrefixLuaGet(lua_State *L, int32_t tableIndex, void *value);
BGP_DATATYPES_API uint32_t SYSDT_SdwanPrefixLuaGet(lua_State *L, int32_t tableIndex, void *value);
/* On a body (below): swaps the numbers, and the IPv4 word when the family is 0. Context and body must not be null. */
BGP_DATATYPES_API DataTypeEndianOperation SYSDT_SrPolicyPrefixEndian, SYSDT_SdwanPrefixEndian;

/*
 * Their parsers and printers. A body is the bytes behind the sub-type word (29 and 33); SYSDT_Str2SdwanPrefix takes the
 * whole value and writes its sub-type even for a text that it then refuses. Those for one family take a trimmed text.
 * Parsers: 0, DT_ERR_NULL_PTR, DT_ERR_FAIL, or DT_ERR_INVALID_PARAM when the host does not take the IPv6 address.
 * Printers: a buffer of 256 or more; 0, or DT_ERR_FAIL.
 */
BGP_DATATYPES_API uint32_t SYSDT_Str2SrPolicyPrefix(const char *text, void *body);
BGP_DATATYPES_API uint32_t SYSDT_Str2Srv4PolicyPrefix(const char *text, void *body);
BGP_DATATYPES_API uint32_t SYSDT_Str2Srv6PolicyPrefix(const char *text, void *body);
BGP_DATATYPES_API uint32_t SYSDT_SrPolicyPrefix2Str(const void *body, char *buffer, uint32_t *printed);
BGP_DATATYPES_API uint32_t SYSDT_Srv4PolicyPrefix2Str(const void *body, char *buffer, uint32_t *printed);
BGP_DATATYPES_API uint32_t SYSDT_Srv6PolicyPrefix2Str(const void *body, char *buffer, uint32_t *printed);
BGP_DATATYPES_API uint32_t SYSDT_Str2SdwanPrefix(const char *text, void *value);
BGP_DATATYPES_API uint32_t SYSDT_Str2SdwanV4Prefix(const char *text, void *body);
BGP_DATATYPES_API uint32_t SYSDT_Str2SdwanV6Prefix(const char *text, void *body);
BGP_DATATYPES_API uint32_t SYSDT_SdwanPrefix2Str(const void *body, char *buffer, uint32_t *printed);
BGP_DATATYPES_API uint32_t SYSDT_SdwanV4Prefix2Str(const void *body, char *buffer, uint32_t *printed);
BGP_DATATYPES_API uint32_t SYSDT_SdwanV6Prefix2Str(const void *body, char *buffer, uint32_t *printed);

#ifdef __cplusplus
}
#endif

#endif
