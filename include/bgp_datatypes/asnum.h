/* AS numbers (ASNUM, ASNUMEXT) and lists of them (ASNUM_ENHANCE): operations and parsers. */
#ifndef BGP_DATATYPES_ASNUM_H
#define BGP_DATATYPES_ASNUM_H

#include "bgp_datatypes.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ------------------------------------------------------------------------------------------------- AS numbers */

/* ASNUM, ASNUMEXT: AS number u32, notation u32 (0 plain, else dotted), host order. RFC 6793; asdot of RFC 5396. */
BGP_DATATYPES_API uint32_t SYSDT_Str2AsNum(const char *text, void *value);    /* 8 bytes; 0 is refused */
BGP_DATATYPES_API uint32_t SYSDT_Str2AsNumExt(const char *text, void *value); /* 8 bytes; 0 is accepted */
/*
 * The same rules for a text whose dots are counted: dotCount 0 is plain ("%llu"), 1 dotted ("%u.%llu"); what stands
 * behind the number is ignored. The scan leaves the high part (dotted only) and the low part or whole number in *high
 * and *low, in range or not. 0, or DT_ERR_FAIL with value untouched. SetAsType refuses 0, ToAsType accepts it.
 */
BGP_DATATYPES_API uint32_t SYSDT_Str2AsNumSetAsType(uint32_t dotCount, const char *text, uint32_t *high, uint64_t *low,
                                                    void *value);
BGP_DATATYPES_API uint32_t SYSDT_Str2AsNumToAsType(uint32_t dotCount, const char *text, uint32_t *high, uint64_t *low,
                                                   void *value);
BGP_DATATYPES_API DataTypeFormatInOperation SYSDT_AsNumFormatIn, SYSDT_AsNumExtFormatIn;
BGP_DATATYPES_API DataTypeFormatOutOperation SYSDT_AsNumFormatOut, SYSDT_AsNumExtFormatOut;
BGP_DATATYPES_API DataTypeCheckOperation SYSDT_AsNumCheck, SYSDT_AsNumExtCheck;
BGP_DATATYPES_API DataTypeHelpOperation SYSDT_AsNumHelp;
BGP_DATATYPES_API DataTypeLuaSetOperation SYSDT_AsNumLuaSet;
BGP_DATATYPES_API DataTypeLuaGetOperation SYSDT_AsNumLuaGet;
BGP_DATATYPES_API DataTypeEndianOperation SYSDT_AsNumLuaEndian;

/*
 * ASNUM_ENHANCE: 256 packed entries of AS number u32 (host order, 0 unused) and notation u8. Items have blanks between,
 * 3071 characters at most. In mode 1 FormatIn wants the text in double quotes and a length argument (the text with its
 * terminator) of 3 or more, else DT_ERR_MODE_UNSUPPORTED, and overwrites the closing quote: it is the only operation
 * that writes to its text. LuaGet takes what is missing as 0.
 */
/* The entries that are typed, from the first; the others stay. 0, DT_ERR_NULL_PTR, or DT_ERR_FAIL with part written. */
BGP_DATATYPES_API uint32_t SYSDT_Str2AsNumEnhance(const char *text, void *value); /* 1280 bytes */
BGP_DATATYPES_API DataTypeFormatInOperation SYSDT_AsNumEnhanceFormatIn;
BGP_DATATYPES_API DataTypeFormatOutOperation SYSDT_AsNumEnhanceFormatOut; /* text size 3072 */
BGP_DATATYPES_API DataTypeCheckOperation SYSDT_AsNumEnhanceCheck;
BGP_DATATYPES_API DataTypeHelpOperation SYSDT_AsNumEnhanceHelp;
BGP_DATATYPES_API DataTypeLuaSetOperation SYSDT_AsNumEnLuaSet;
BGP_DATATYPES_API DataTypeLuaGetOperation SYSDT_AsNumEnLuaGet;
BGP_DATATYPES_API DataTypeEndianOperation SYSDT_AsNumEnhanceLuaEndian;

#ifdef __cplusplus
}
#endif

#endif
