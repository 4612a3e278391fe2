/* NG-MVPN route keys, sub-types 2 to 7 and 13 of BOLPREFIX: operations, parser and printer. */
#ifndef BGP_DATATYPES_NG_MVPN_H
#define BGP_DATATYPES_NG_MVPN_H

#include "bgp_datatypes.h"

#ifdef __cplusplus
extern "C" {
#endif

/* -------------------------------------------------------------------------------------------- NG-MVPN route keys */

/*
 * Sub-types 2 to 7 and 13, "NG_TYPE_...": the keys of multicast VPN routes (RFC 6514), 89 bytes: sub-type word u32,
 * then AS numbers (8 bytes) and addresses (21 bytes each) as Bgp_DescribeValue() lists them. Joined by ":" (IPv4) or
 * "-" (IPv6), the text itself decides the sub-type; a lone IPv4 address becomes sub-type 0, a lone AS number
 * sub-type 2. Text in modes 0, 1, 2, 3, 5 and 6, both ways; FormatIn refuses with DT_ERR_INVALID_PARAM.
 */
BGP_DATATYPES_API DataTypeFormatInOperation SYSDT_NGPrefixFormatIn;
BGP_DATATYPES_API DataTypeFormatOutOperation SYSDT_NGPrefixFormatOut;
BGP_DATATYPES_API DataTypeLuaSetOperation SYSDT_NGPrefix2LuaSet, SYSDT_NGPrefix3LuaSet, SYSDT_NGPrefix41LuaSet,
    SYSDT_NGPrefix42LuaSet, SYSDT_NGPrefix43LuaSet, SYSDT_NGPrefix5LuaSet, SYSDT_NGPrefix6LuaSet;
BGP_DATATYPES_API BolPrefixLuaReaderOperation SYSDT_NGPrefix2NewLuaGet, SYSDT_NGPrefix3NewLuaGet,
    SYSDT_NGPrefix41NewLuaGet, SYSDT_NGPrefix42NewLuaGet, SYSDT_NGPrefix43NewLuaGet, SYSDT_NGPrefix5NewLuaGet,
    SYSDT_NGPrefix6NewLuaGet;
/*
 * A text into a zeroed 89-byte value. 0, DT_ERR_NULL_PTR, or DT_ERR_FAIL with part of the value possibly filled. Two
 * sections with six dots between them are always accepted: what is no address stays zero.
 */
BGP_DATATYPES_API uint32_t SYSDT_Str2NGPrefix(const char *text, void *value);
/* The text of an 89-byte value into a buffer of 256 or more. 0, or DT_ERR_FAIL: another sub-type, or the host refused.
 */
BGP_DATATYPES_API uint32_t SYSDT_NGPrefix2Str(const void *value, char *buffer, uint32_t *printed);

#ifdef __cplusplus
}
#endif

#endif
