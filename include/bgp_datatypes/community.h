/* Communities of every kind, sites of origin, and sets of path attributes: operations, parsers and printers. */
#ifndef BGP_DATATYPES_COMMUNITY_H
#define BGP_DATATYPES_COMMUNITY_H

#include "bgp_datatypes.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ------------------------------------------------------------------------------ communities and attribute sets */

/*
 * COMMUNITY: community u32, form u32 (0 number or name, 1 halves "100:1", 2 unset), host order. RFC 1997. Names in any
 * case: "internet" (0), "no-export", "no-advertise", "no-export-subconfed". A value that has a name prints as the name;
 * another with a form above 1 does not print (DT_ERR_INVALID_VALUE, the buffer is handed over).
 */
/* 8 bytes. The look-up of names takes a copy from the handle and frees it. 0, DT_ERR_NULL_PTR, DT_ERR_NO_MEMORY, or
 * DT_ERR_FAIL with nothing written. */
BGP_DATATYPES_API uint32_t SYSDT_Str2Community(uint32_t memoryHandle, const char *text, void *value);
/* A name of textLength characters, or fewer where it ends earlier, in any case, to its value. 0, DT_ERR_NO_MEMORY or
 * DT_ERR_FAIL. */
BGP_DATATYPES_API uint32_t BRM_GetWellKnownCmyVal(uint32_t memoryHandle, uint32_t textLength, uint32_t *community,
                                                  const char *text);
/*
 * The text of an 8-byte value by its form, whether or not it has a name, into a buffer of 32 or more. On failure
 * (DT_ERR_INVALID_VALUE for another form, DT_ERR_FAIL) *outBuffer becomes buffer.
 */
BGP_DATATYPES_API uint32_t SYSDT_FormatNoWellKnowCmy(uint32_t *printed, char *buffer, void **outBuffer,
                                                     const void *value);
BGP_DATATYPES_API DataTypeFormatInOperation SYSDT_CommunityFormatIn;
BGP_DATATYPES_API DataTypeFormatOutOperation SYSDT_CommunityFormatOut; /* text size 33 */
BGP_DATATYPES_API DataTypeCheckOperation SYSDT_CommunityCheck;
BGP_DATATYPES_API DataTypeHelpOperation SYSDT_CommunityHelp;
BGP_DATATYPES_API DataTypeCompareOperation SYSDT_CommunityCompare;
BGP_DATATYPES_API DataTypeLuaSetOperation SYSDT_CommunityLuaSet;
BGP_DATATYPES_API DataTypeLuaGetOperation SYSDT_CommunityLuaGet;
BGP_DATATYPES_API DataTypeEndianOperation SYSDT_CommunityEndian;

/*
 * CMNTY_ENHANCE: 32 packed entries of community u32 (host order) and form u8 (2 unused), typed like COMMUNITY with
 * blanks between, 392 characters at most. FormatIn parses in every mode but 4. LuaGet takes missing fields as 0.
 */
/* 160 bytes. 0, DT_ERR_NULL_PTR, or DT_ERR_FAIL with part of the value written. */
BGP_DATATYPES_API uint32_t SYSDT_Str2CmntyEnhance(uint32_t memoryHandle, const char *text, void *value);
BGP_DATATYPES_API DataTypeFormatInOperation SYSDT_CMNTYEnhanceFormatIn;
BGP_DATATYPES_API DataTypeFormatOutOperation SYSDT_CMNTYEnhanceFormatOut; /* text size 393 */
BGP_DATATYPES_API DataTypeCheckOperation SYSDT_CMNTYEnhanceCheck;
BGP_DATATYPES_API DataTypeHelpOperation SYSDT_CMNTYEnhanceHelp;
BGP_DATATYPES_API DataTypeLuaSetOperation SYSDT_CmntyEnLuaSet;
BGP_DATATYPES_API DataTypeLuaGetOperation SYSDT_CmntyEnLuaGet;
BGP_DATATYPES_API DataTypeEndianOperation SYSDT_CmntyEnhanceLuaEndian;

/*
 * LARGECOMMUNITY: three numbers u32 and a type u32 (0 when typed), host order; "64496:1:2". RFC 8092. FormatIn parses
 * in modes 1 and 2, FormatOut prints in every mode but 4, Help answers in mode 1.
 */
BGP_DATATYPES_API uint32_t SYSDT_Str2LargeCommunity(const char *text, void *value); /* 16 bytes; 0, NULL_PTR or FAIL */
BGP_DATATYPES_API DataTypeFormatInOperation SYSDT_LargeCommunityFormatIn;
BGP_DATATYPES_API DataTypeFormatOutOperation SYSDT_LargeCommunityFormatOut; /* text size 257 */
BGP_DATATYPES_API DataTypeCheckOperation SYSDT_LargeCommunityCheck;
BGP_DATATYPES_API DataTypeHelpOperation SYSDT_LargeCommunityHelp;
BGP_DATATYPES_API DataTypeCompareOperation SYSDT_LargeCommunityCompare;
BGP_DATATYPES_API DataTypeLuaSetOperation SYSDT_LargeCommunityLuaSet;
BGP_DATATYPES_API DataTypeLuaGetOperation SYSDT_LargeCommunityLuaGet;
BGP_DATATYPES_API DataTypeEndianOperation SYSDT_LargeCommunityEndian;

/* EXTCOMMUNITY_BW: bit mask u16, AS number u16 (23456 prints "as-trans"), bandwidth u64 (0 prints ""), host order. */
BGP_DATATYPES_API DataTypeFormatOutOperation SYSDT_ExtCommunityBwFormatOut; /* text size 257 */
BGP_DATATYPES_API DataTypeCheckOperation SYSDT_ExtCommunityBwCheck;
BGP_DATATYPES_API DataTypeHelpOperation SYSDT_ExtCommunityBwHelp;
BGP_DATATYPES_API DataTypeCompareOperation SYSDT_ExtCommunityBwCompare;
BGP_DATATYPES_API DataTypeLuaSetOperation SYSDT_ExtCommunityBwLuaSet;
BGP_DATATYPES_API DataTypeLuaGetOperation SYSDT_ExtCommunityBwLuaGet;
BGP_DATATYPES_API DataTypeEndianOperation SYSDT_EXTCommunityBwEndian;

/*
 * EXTCMNTY_COMPR: type u16 (0x8099), cpi u16, reserved u32 (0), host order; "100:0". A value of another type prints
 * nothing: length 1, the buffer not written. Compare is that of EXTCOMMUNITY.
 */
BGP_DATATYPES_API uint32_t SYSDT_Str2ExtCommunityCompr(const char *text, void *value); /* 8 bytes; 0, NULL_PTR, FAIL */
BGP_DATATYPES_API DataTypeFormatInOperation SYSDT_ExtCommunityComprFormatIn;
BGP_DATATYPES_API DataTypeFormatOutOperation SYSDT_ExtCommunityComprFormatOut; /* text size 257 */
BGP_DATATYPES_API DataTypeCheckOperation SYSDT_ExtCommunityComprCheck;
BGP_DATATYPES_API DataTypeHelpOperation SYSDT_ExtCommunityComprHelp;
BGP_DATATYPES_API DataTypeLuaSetOperation SYSDT_ExtCommunityComprLuaSet;
BGP_DATATYPES_API DataTypeLuaGetOperation SYSDT_ExtCommunityComprLuaGet;
BGP_DATATYPES_API DataTypeEndianOperation SYSDT_EXTCommunityComprEndian;

/*
 * ATTRIDBITMAP: a set of path attribute type codes (RFC 4271), 32 bytes, code i at bit i % 8 of byte i / 8.
 *
 * FormatOut does not take the set but a list of items: their number u16 at byte 24, the items from byte 44 on, each
 * type u16, length u16 (host order), data. Item 1 is a text (25), the template; item 2 the set (290); the others
 * fill the template's printf conversions in order: numbers (2, 4, 6: u8, u16, u32), texts (25), addresses (21 IPv4
 * word, 22 IPv6, 38 address field). A conversion that does not fit its item, and what stands around it up to the next,
 * prints nothing. The filled template begins each line; "###" in it ends that and begins what stands behind each line.
 * Lines hold up to ten runs of codes ("1 to 3") and end in CR LF; 4095 characters at most. Modes 0, 1, 5 and 6 print;
 * 2 and 3 return 0 and touch nothing. Where nothing can be printed the buffer holds an empty text, type and length
 * are 0, and the code is 0 all the same. The length argument is not looked at: the list has to be whole.
 */
BGP_DATATYPES_API DataTypeFormatOutOperation SYSDT_AttrIdBitmapFormatOut; /* text size 4096 */
BGP_DATATYPES_API DataTypeCheckOperation SYSDT_AttrIdBitmapCheck;
BGP_DATATYPES_API DataTypeHelpOperation SYSDT_AttrIdBitmapHelp;
BGP_DATATYPES_API DataTypeCompareOperation SYSDT_AttrIdBitmapCompare;
BGP_DATATYPES_API DataTypeLuaSetOperation SYSDT_AttrIdBitmapLuaSet;
BGP_DATATYPES_API DataTypeLuaGetOperation SYSDT_AttrIdBitmapLuaGet;
BGP_DATATYPES_API DataTypeEndianOperation SYSDT_AttrIdBitmapEndian; /* swaps nothing */

/* ------------------------------------------------------------------------- extended community and site of origin */

/*
 * EXTCOMMUNITY: an extended community (RFC 4360). Type u8, sub-type u8, value[6], network order; form u32, host order:
 * the notation of a route target. Route targets can be typed, as VRFRT's, with 0:0 and 0.0:0 accepted; route origins,
 * OSPF kinds and bandwidth print too. There is no raw copy. A kind that cannot be printed gives DT_ERR_FAIL and no
 * buffer.
 */
BGP_DATATYPES_API uint32_t SYSDT_Str2ExtCommunity(const char *text, void *value); /* 12 bytes; 0, NULL_PTR or FAIL */
BGP_DATATYPES_API DataTypeFormatInOperation SYSDT_ExtCommunityFormatIn;
BGP_DATATYPES_API DataTypeFormatOutOperation SYSDT_ExtCommunityFormatOut;
BGP_DATATYPES_API DataTypeCheckOperation SYSDT_ExtCommunityCheck;
BGP_DATATYPES_API DataTypeHelpOperation SYSDT_ExtCommunityHelp;
BGP_DATATYPES_API DataTypeCompareOperation SYSDT_ExtCommunityCompare;
BGP_DATATYPES_API DataTypeLuaSetOperation SYSDT_ExtCommunityLuaSet;
BGP_DATATYPES_API DataTypeLuaGetOperation SYSDT_ExtCommunityLuaGet;
BGP_DATATYPES_API DataTypeEndianOperation SYSDT_EXTCommunityEndian;

/*
 * SOO: a site of origin (RFC 4360, RFC 5668). Type u8, sub-type u8 (03), value[6], network order; form u32, host order:
 * the notation. 0:0 and 0.0:0 are refused. An all-zero one prints as the empty text. Mode 3 prints as the others do.
 */
BGP_DATATYPES_API uint32_t SYSDT_Str2Soo(const char *text, void *value); /* 12 bytes; 0, NULL_PTR or FAIL */
BGP_DATATYPES_API DataTypeFormatInOperation SYSDT_SooFormatIn;
BGP_DATATYPES_API DataTypeFormatOutOperation SYSDT_SooFormatOut;
BGP_DATATYPES_API DataTypeCheckOperation SYSDT_SooCheck;
BGP_DATATYPES_API DataTypeHelpOperation SYSDT_SooHelp;
BGP_DATATYPES_API DataTypeCompareOperation SYSDT_SooCompare;
BGP_DATATYPES_API DataTypeLuaSetOperation SYSDT_SooLuaSet;
BGP_DATATYPES_API DataTypeLuaGetOperation SYSDT_SooLuaGet;
BGP_DATATYPES_API DataTypeEndianOperation SYSDT_SooEndian;

#ifdef __cplusplus
}
#endif

#endif
