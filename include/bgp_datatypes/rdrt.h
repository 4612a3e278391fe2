/* Route distinguishers, route targets, VPN identifiers and the SRv6 SID structure: operations, parsers and printers. */
#ifndef BGP_DATATYPES_RDRT_H
#define BGP_DATATYPES_RDRT_H

#include "bgp_datatypes.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ------------------------------------------------------------------ route distinguishers, route targets, VPN ids */

/*
 * An administrator and a number that it assigned, in one of four notations, which the value remembers so that it prints
 * back as typed. Each number may be as large as the bytes that hold it.
 *
 *     0  a.b.c.d:n  IPv4 address, n up to 65535
 *     1  AS:n       AS up to 65535, n up to 4294967295
 *     2  AS:n       AS from 65536 to 4294967295, n up to 65535
 *     3  x.y:n      4-byte AS number in two halves (asdot), n up to 65535
 *
 * Texts have 1 to 21 characters; leading zeros are accepted. A value whose notation does not belong to its kind prints
 * nothing: the operation succeeds, and not even a terminator is written. A value of unknown kind gives DT_ERR_FAIL and
 * hands over the buffer. Printing in mode 3 gives text too, reported as type 6 and without counting the terminator.
 */

/*
 * VRFRD: a route distinguisher (RFC 4364). RD type u16 (0 AS, 1 IPv4, 2 4-byte AS) and value[6], network order;
 * notation u32, host order. 0:0 and 0.0:0 are refused. An all-zero one prints as the empty text in mode 2.
 */
BGP_DATATYPES_API uint32_t SYSDT_Str2VrfRd(const char *text, void *value); /* 12 bytes; 0, NULL_PTR or FAIL */
/* The three words of a value as they lie in memory; buffer of 256. *printed is 0 when nothing is printed. 0 or FAIL. */
BGP_DATATYPES_API uint32_t SYSDT_VrfRd2Str(uint32_t word0, uint32_t word1, uint32_t word2, uint32_t *printed,
                                           char *buffer);
/* 0 when the eight bytes of a distinguisher or target are all zero, else 1 (in spite of the name). */
BGP_DATATYPES_API uint32_t SYSDT_IsInValidRdOrRt(const void *eight);
BGP_DATATYPES_API DataTypeFormatInOperation SYSDT_VrfRdFormatIn;
BGP_DATATYPES_API DataTypeFormatOutOperation SYSDT_VrfRdFormatOut;
/* FormatOut for callers without a type id and length. */
BGP_DATATYPES_API uint32_t SYSDT_VrfRdFormatOutEx(const DataTypeRequest *request, const void *value,
                                                  uint16_t *outTypeId, uint16_t *outLength, void **outBuffer);
BGP_DATATYPES_API DataTypeCheckOperation SYSDT_VrfRdCheck;
BGP_DATATYPES_API DataTypeHelpOperation SYSDT_VrfRdHelp;
BGP_DATATYPES_API DataTypeCompareOperation SYSDT_VrfRdCompare;
BGP_DATATYPES_API DataTypeLuaSetOperation SYSDT_VrfRdLuaSet;
BGP_DATATYPES_API DataTypeLuaGetOperation SYSDT_VrfRdLuaGet;
BGP_DATATYPES_API DataTypeEndianOperation SYSDT_VrfRdEndian;

/*
 * VRFRT: a route target (RFC 4360, RFC 5668). Type and sub-type (0002 AS, 0102 IPv4, 0202 4-byte AS) and value[6],
 * network order; notation u32, host order. 0:0 and 0.0:0 are refused. An all-zero one prints as the empty text in mode
 * 2, and in no other.
 */
BGP_DATATYPES_API uint32_t SYSDT_Str2VrfRt(const char *text, void *value); /* 12 bytes; 0, NULL_PTR or FAIL */
BGP_DATATYPES_API DataTypeFormatInOperation SYSDT_VrfRtFormatIn;
BGP_DATATYPES_API DataTypeFormatOutOperation SYSDT_VrfRtFormatOut;
BGP_DATATYPES_API DataTypeCheckOperation SYSDT_VrfRtCheck;
BGP_DATATYPES_API DataTypeHelpOperation SYSDT_VrfRtHelp;
BGP_DATATYPES_API DataTypeCompareOperation SYSDT_VrfRtCompare;
BGP_DATATYPES_API DataTypeLuaSetOperation SYSDT_VrfRtLuaSet;
BGP_DATATYPES_API DataTypeLuaGetOperation SYSDT_VrfRtLuaGet;
BGP_DATATYPES_API DataTypeEndianOperation SYSDT_VrfRtEndian;

/*
 * VRFRTV6: an IPv6-address-specific route target (RFC 5701), "2001:db8::1.1". Kind[2], address[16] and number u16,
 * network order; notation u32, host order. The number is 0 or 1 when typed. FormatOut reads a short value as if zeros
 * followed, and finds no memory (DT_ERR_NO_MEMORY) for a request whose memory handle is 0.
 */
BGP_DATATYPES_API uint32_t SYSDT_Str2VrfRtV6(const char *text, void *value); /* 24 bytes; 0, NULL_PTR, INVALID_PARAM */
/* Fills an empty slot with `size` bytes of the handle's memory, if there is any; not for a handle or size of 0. */
BGP_DATATYPES_API void SYSDT_VrfRtV6FormatOutGetMem(void **outBuffer, uint32_t memoryHandle, uint32_t size);
BGP_DATATYPES_API DataTypeFormatInOperation SYSDT_VrfRtV6FormatIn;
BGP_DATATYPES_API DataTypeFormatOutOperation SYSDT_VrfRtV6FormatOut;
BGP_DATATYPES_API DataTypeCheckOperation SYSDT_VrfRtV6Check;
BGP_DATATYPES_API DataTypeHelpOperation SYSDT_VrfRtV6Help;
BGP_DATATYPES_API DataTypeCompareOperation SYSDT_VrfRtV6Compare;
BGP_DATATYPES_API DataTypeLuaSetOperation SYSDT_VrfRtV6LuaSet;
BGP_DATATYPES_API DataTypeLuaGetOperation SYSDT_VrfRtV6LuaGet;
BGP_DATATYPES_API DataTypeEndianOperation SYSDT_VrfRtV6Endian;

/*
 * BOLRD: the route distinguisher of a VPLS instance. Sub-type u32 (0, host order), then a VRFRD value. The dispatching
 * operations turn any answer of the row other than 0 into DT_ERR_INVALID_VALUE, so Compare tells equal from different
 * and no more. All modes but 4 parse and print.
 */
#define BOL_RD_SUBTYPES 1
BGP_DATATYPES_API extern const BolPrefixSubtypeEntry g_astBOL_RD_ProcTable[BOL_RD_SUBTYPES];
BGP_DATATYPES_API DataTypeFormatInOperation SYSDT_BolRdFormatIn, SYSDT_VplsRDFormatIn;
BGP_DATATYPES_API DataTypeFormatOutOperation SYSDT_BolRdFormatOut, SYSDT_VplsRDFormatOut;
BGP_DATATYPES_API DataTypeCheckOperation SYSDT_BolRdCheck, SYSDT_VplsRDCheck;
BGP_DATATYPES_API DataTypeHelpOperation SYSDT_BolRdHelp, SYSDT_VplsRDHelp;
BGP_DATATYPES_API DataTypeCompareOperation SYSDT_BolRdCompare, SYSDT_VplsRDCompare;
BGP_DATATYPES_API DataTypeLuaSetOperation SYSDT_BolRdLuaSet, SYSDT_VplsRDLuaSet;
BGP_DATATYPES_API DataTypeLuaGetOperation SYSDT_BolRdLuaGet, SYSDT_VplsRDLuaGet;

/*
 * RTPRD: a route distinguisher as a policy matches it; the number may be "*". RD type u16 and value[6], network order;
 * notation u8 (VRFRD's plus one); wildcard u8. 0:0 is accepted. Text in modes 1, 2 and 6 only.
 */
BGP_DATATYPES_API uint32_t SYSDT_Str2RtpRd(const char *text, void *value); /* 10 bytes; 0, NULL_PTR or FAIL */
BGP_DATATYPES_API DataTypeFormatInOperation SYSDT_RtpRdFormatIn;
BGP_DATATYPES_API DataTypeFormatOutOperation SYSDT_RtpRdFormatOut;
BGP_DATATYPES_API DataTypeCheckOperation SYSDT_RtpRdCheck;
BGP_DATATYPES_API DataTypeHelpOperation SYSDT_RtpRdHelp;
BGP_DATATYPES_API DataTypeCompareOperation SYSDT_RtpRdCompare;
BGP_DATATYPES_API DataTypeLuaSetOperation SYSDT_RtpRdLuaSet;
BGP_DATATYPES_API DataTypeLuaGetOperation SYSDT_RtpRdLuaGet;

/*
 * VPNID: a VPN identifier (RFC 2685). OUI u32 (24 bits when typed), VPN index u32, host order; typed as two lower-case
 * hexadecimal numbers, "1a2b3c:10", not both 0. Results come from SYS_DataTypeMalloc(). Compare is the other way round:
 * 1 when left is the smaller.
 */
BGP_DATATYPES_API uint32_t SYSDT_Str2VpnId(const char *text, void *value); /* 8 bytes; 0, NULL_PTR or FAIL */
BGP_DATATYPES_API uint32_t SYSDT_VpnId2Str(uint32_t oui, uint32_t index, uint32_t *printed, char *buffer); /* 0 */
BGP_DATATYPES_API DataTypeFormatInOperation SYSDT_VpnIdFormatIn;
BGP_DATATYPES_API DataTypeFormatOutOperation SYSDT_VpnIdFormatOut;
BGP_DATATYPES_API DataTypeCheckOperation SYSDT_VpnIdCheck;
BGP_DATATYPES_API DataTypeHelpOperation SYSDT_VpnIdHelp;
BGP_DATATYPES_API DataTypeCompareOperation SYSDT_VpnIdCompare;
BGP_DATATYPES_API DataTypeLuaSetOperation SYSDT_VpnIdLuaSet;
BGP_DATATYPES_API DataTypeLuaGetOperation SYSDT_VpnIdLuaGet;
BGP_DATATYPES_API DataTypeEndianOperation SYSDT_VpnIdEndian;

/*
 * SID_STRUCTURE: the structure of an SRv6 SID (RFC 9252), six lengths u8 in bits and a flag u8, 1 when there is one.
 * It prints as "32-16-16-0-0-0", or "-" for none, in every mode but 4. FormatOut reads a short value as if zeros
 * followed.
 */
/* 0, or DT_ERR_LENGTH when printing fails; buffer of 256. */
BGP_DATATYPES_API uint32_t SYSDT_PrefixSidStruct2Str(const void *value, char *buffer, uint32_t *printed);
BGP_DATATYPES_API DataTypeFormatOutOperation SYSDT_PrefixSidStructureFormatOut;
BGP_DATATYPES_API DataTypeLuaSetOperation SYSDT_PrefixSidStructureLuaSet;

#ifdef __cplusplus
}
#endif

#endif
