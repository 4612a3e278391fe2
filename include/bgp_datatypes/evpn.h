/* EVPN route keys, sub-type 1 of BOLPREFIX and the type EVNPREFIX: operations, parsers and printers. */
#ifndef BGP_DATATYPES_EVPN_H
#define BGP_DATATYPES_EVPN_H

#include "bgp_datatypes.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ------------------------------------------------------------------------------------------------ EVPN route keys */

/*
 * Sub-type 1, "EVN", and the type EVNPREFIX: the key of an EVPN route (RFC 7432, RFC 9136, RFC 9251), 89 bytes:
 * sub-type word u32 (1), route type u8 (1 to 8), and the route's fields, which Bgp_DescribeValue() lists. FormatIn
 * reports type 279 and length 89 for both. Text in modes 0, 1, 2, 3, 5 and 6, both ways; FormatIn refuses with
 * DT_ERR_INVALID_PARAM. Compare returns DT_ERR_FAIL for values that are not of one route type; where it orders, two
 * routes that differ only in what a route type leaves out of its order (an ESI, an address) compare equal.
 */
BGP_DATATYPES_API DataTypeFormatInOperation SYSDT_EVNPrefixFormatIn;
BGP_DATATYPES_API DataTypeFormatOutOperation SYSDT_EVNPrefixFormatOut;
BGP_DATATYPES_API DataTypeCheckOperation SYSDT_EVNPrefixCheck;
BGP_DATATYPES_API DataTypeHelpOperation SYSDT_EVNPrefixHelp;
BGP_DATATYPES_API DataTypeCompareOperation SYSDT_EVNPrefixCompare;
BGP_DATATYPES_API DataTypeLuaSetOperation SYSDT_EVNPrefixLuaSet;
BGP_DATATYPES_API DataTypeLuaGetOperation SYSDT_EVNPrefixLuaGet;
BGP_DATATYPES_API BolPrefixLuaReaderOperation SYSDT_EVNPrefixNewLuaGet;

/*
 * A route text into a zeroed 89-byte value, all but its sub-type word. checkMode other than 1 also checks the ESI type
 * (EsiTypeCheck). 0, DT_ERR_NULL_PTR, or DT_ERR_FAIL with part of the value possibly filled.
 */
BGP_DATATYPES_API uint32_t SYSDT_Str2EvnPrefix(const char *text, void *value, uint32_t checkMode);
/* The text of a value by its route type, into a buffer of 256 or more. 0, or DT_ERR_FAIL. */
BGP_DATATYPES_API uint32_t SYSDT_EvnPrefix2Str(const void *value, char *buffer, uint32_t *printed);

/* Its parsers, one per route type: trimmed text to value, the same codes. */
BGP_DATATYPES_API uint32_t SYSDT_Str2Ad(const char *text, void *value, uint32_t checkMode); /* 1: ESI:tag */
BGP_DATATYPES_API uint32_t SYSDT_Str2EvnMac(const char *text, void *value);                 /* 2: tag:len:MAC:len:IP */
BGP_DATATYPES_API uint32_t SYSDT_Str2Inclusive(const char *text, void *value);              /* 3: tag:len:IP */
BGP_DATATYPES_API uint32_t SYSDT_Str2Es(const char *text, void *value, uint32_t checkMode); /* 4: ESI:len:IP */
BGP_DATATYPES_API uint32_t SYSDT_Str2IpPrefix(const char *text, void *value);               /* 5: tag:IPv4:len */
BGP_DATATYPES_API uint32_t SYSDT_Str2Ipv6Prefix(const char *text, void *value);             /* 5: tag:[IPv6]:len */
BGP_DATATYPES_API uint32_t SYSDT_Str2EvpnSmetRoute(const char *text, void *value);          /* 6 */
BGP_DATATYPES_API uint32_t SYSDT_Str2EvpnJoinRoute(const char *text, void *value);          /* 7 */
BGP_DATATYPES_API uint32_t SYSDT_Str2EvpnLeaveRoute(const char *text, void *value);         /* 8 */
/* 6 to 8, by the colons outside brackets: as many as the type's number. */
BGP_DATATYPES_API uint32_t SYSDT_Str2EvpnMcRoute(const char *text, void *value);
/* "len:[address]" to 16 bytes and a length of at most 128; nothing may follow. */
BGP_DATATYPES_API uint32_t SYSDT_Str2EvpnIpv6(const char *text, uint8_t *ipv6, uint8_t *length);

/*
 * Readers of one field of a multicast route at *cursor. A field ends at the next ":", the last one with the text; the
 * cursor is left there. SYSDT_Str2EvpnIpAddr fills a 21-byte address field, SYSDT_Str2EvpnEsi 10 bytes.
 */
BGP_DATATYPES_API uint32_t SYSDT_Str2EvpnUintNum(const char **cursor, uint32_t *result, uint32_t maxChars, uint32_t min,
                                                 uint32_t max, uint32_t isLast);
BGP_DATATYPES_API uint32_t SYSDT_Str2EvpnIpAddr(const char **cursor, void *field, uint32_t isLast);
BGP_DATATYPES_API uint32_t SYSDT_Str2EvpnEsi(const char **cursor, void *esi, uint32_t isLast);

/*
 * An ESI of 24 characters, "xxxx.xxxx.xxxx.xxxx.xxxx", to 10 bytes; all zeros and all ones are refused. checkMode other
 * than 1 admits the ESI types 00 and 01 (with flag 0 only 00), respectively 00 to 05. 0, DT_ERR_NULL_PTR, DT_ERR_FAIL.
 */
BGP_DATATYPES_API uint32_t SYSDT_Str2EsiBas(const char *text, void *esi, uint32_t flag, uint32_t checkMode);
BGP_DATATYPES_API uint32_t SYSDT_Str2EsiForAd(const char *text, void *esi, uint32_t flag, uint32_t checkMode);

/* The orders of multicast routes; each pointer is to a value's byte 4, its route type. -1, 0 or 1. */
BGP_DATATYPES_API int32_t SYSDT_EVPN_SmetCompare(const void *left, const void *right);
BGP_DATATYPES_API int32_t SYSDT_EVPN_JoinCompare(const void *left, const void *right);
BGP_DATATYPES_API int32_t SYSDT_EVPN_LeaveCompare(const void *left, const void *right);

#ifdef __cplusplus
}
#endif

#endif
