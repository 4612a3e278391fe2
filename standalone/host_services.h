/*
 * host_services.h - what a data-type plug-in may call: the services of the host framework, as this host defines them.
 *
 * All have C linkage and default visibility. None throws, and all may be called from any thread. "0 on success" means
 * that any other answer is a refusal whose value says nothing more. A refused call leaves its out-parameters as they
 * were unless the line says otherwise.
 */
#ifndef BGP_STANDALONE_HOST_SERVICES_H
#define BGP_STANDALONE_HOST_SERVICES_H

#include "bgp_datatypes.h"

#if defined(__GNUC__)
#define HOST_SERVICE __attribute__((visibility("default")))
#define HOST_PRINTF(at, values) __attribute__((format(printf, at, values)))
#else
#define HOST_SERVICE
#define HOST_PRINTF(at, values)
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* ------------------------------------------------------------------------------- registration, memory, help, report */

/* Takes a row. 0, or a code; the row must stay where it is for as long as the plug-in is loaded. */
HOST_SERVICE uint32_t SYS_Drm_RegisterDataType(uint32_t handle, const DataTypeDescriptor *row);
/* size bytes that live as long as the handle; null for an unknown handle, above 1 GiB, or when memory is out. */
HOST_SERVICE void *SYS_DataTypeMallocByHandle(uint32_t memoryHandle, uint32_t size);
/* size bytes until SYS_DataTypeFree(); null when memory is out. */
HOST_SERVICE void *SYS_DataTypeMalloc(uint32_t size);
/* Gives back a block of either allocator (one by handle is only marked). Null and foreign pointers are left alone. */
HOST_SERVICE void SYS_DataTypeFree(void *memory);
/* Prepares entryCount entries with null texts, in the handle's memory. 0 or a DT_ERR_ code. */
HOST_SERVICE uint32_t SYSDT_InitHelpInfo(uint32_t memoryHandle, DataTypeHelpInfo *info, uint32_t entryCount,
                                         uint32_t helpWord);
HOST_SERVICE void SYSDT_ClearHelpInfo(DataTypeHelpInfo *info);
/* Records a diagnostic; the process goes on. Null texts count as empty. */
HOST_SERVICE void ZOL_Assert(const char *source, uint32_t line, const char *message);

/* ------------------------------------------------------------------------------ operations for descriptor rows */

/* Object index: 4 bytes, host order. A text is a name of the type's object-name table, else a decimal number. */
HOST_SERVICE DataTypeFormatInOperation SYS_DT_UINT32IndexFormatIn;
HOST_SERVICE DataTypeFormatOutOperation SYS_DT_IndexFormatOut;
HOST_SERVICE DataTypeCompareOperation SYSDT_Uint32Compare; /* by the first unsigned word */
HOST_SERVICE DataTypeLuaSetOperation SYSDT_Uint32LuaSet;
HOST_SERVICE DataTypeLuaGetOperation SYSDT_Uint32LuaGet;
HOST_SERVICE DataTypeCompareOperation SYSDT_BlockCompare; /* length bytes, unsigned, in order */

/* Plain string: length bytes (0 stands for 32), NUL-padded, at least one character and one NUL. */
HOST_SERVICE DataTypeFormatInOperation SYSDT_StringFormatIn;
HOST_SERVICE DataTypeFormatOutOperation SYSDT_StringFormatOut;
HOST_SERVICE DataTypeHelpOperation SYSDT_StringHelp; /* "STRING<1-31>" */
HOST_SERVICE DataTypeCompareOperation SYSDT_StringCompare;
HOST_SERVICE DataTypeLuaSetOperation SYSDT_StringLuaSet;
HOST_SERVICE DataTypeLuaGetOperation SYSDT_StringLuaGet;

/* -------------------------------------------------------------------------------------------------- addresses */

/* IPv4 text: four decimal parts of 0-255 without leading zeros, nothing around them. */
HOST_SERVICE uint32_t SYSDT_Str2Ipv4(const char *text, uint32_t *address); /* 0 on success; first octet most signif. */
HOST_SERVICE uint32_t QOV_StrToIpAddr(const char *text, uint32_t *address);
/* IPv6 text: the forms of RFC 4291 section 2.2, without a zone. flags is not used. 0 on success. */
HOST_SERVICE uint32_t SYSDT_Str2Ipv6(const char *text, uint8_t *address16, uint32_t flags);
HOST_SERVICE uint32_t SMP_InetAToN6(const char *text, uint8_t *address16);
/* family 2: 4 bytes, family 10: 16 bytes, both in network order. 0 on success. */
HOST_SERVICE uint32_t SMP_InetAToN(const char *text, void *address, uint32_t family);
/* Two 21-byte records (IPv4 word, 16 IPv6 bytes, family flag): flag, then the address it names. -1, 0, 1. */
HOST_SERVICE int32_t SYSDT_Ipv4Ipv6Compare(const void *context, uint32_t familyCode, const void *left,
                                           const void *right);
/* Dotted text into a buffer of 16 bytes or more; returns the buffer. */
HOST_SERVICE char *QOV_IpAddrToStr(uint32_t address, char *buffer);
/* The words hold eight host-order 16-bit groups, as they lie in memory. RFC 5952 text into 46 bytes or more. */
HOST_SERVICE char *QOV_Inet_ntoa_b_ipv6(uint32_t word0, uint32_t word1, uint32_t word2, uint32_t word3, char *buffer);
HOST_SERVICE char *inet_ntop6(const uint8_t *source16, char *buffer, uint32_t size); /* null when it does not fit */
/* 0 when every character is a digit or "." (an empty text too). */
HOST_SERVICE uint32_t ZOL_CheckBySymbolForIPV4(const char *text);
/* "1-22-333": three groups of one to four hexadecimal digits, each a big-endian pair of bytes. 0 on success. */
HOST_SERVICE uint32_t SMP_Str2Mac(const char *text, uint8_t *mac6);

/* ------------------------------------------------------------------------------------------------------ text */

/* A blank is a space or a horizontal tab. */
HOST_SERVICE char *SYSDT_BTrim(char *text, char *scratch); /* ends the text early, returns its first non-blank */
HOST_SERVICE char *QOV_StrTrim(char *text);                /* moves the text to the front, returns it */
HOST_SERVICE void NCF_IsSpaceInString(const char *text, uint32_t *flag); /* 1 if there is a blank, else 0 */
HOST_SERVICE uint32_t QOV_StrLen(const char *text);                      /* 0 for null */
HOST_SERVICE char *QOV_StrChr(const char *text, int32_t character);      /* null for null */
HOST_SERVICE char *QOV_StrRChr(const char *text, int32_t character);
HOST_SERVICE char *QOV_StrStr(const char *text, const char *part);
HOST_SERVICE int32_t QOV_MemCmp(const void *left, const void *right, uint32_t length); /* only its sign counts */
/* One or more decimal digits and nothing else, within range. 0 on success. */
HOST_SERVICE uint32_t QOV_StrToUint32(const char *text, uint32_t *value);
HOST_SERVICE uint32_t QOV_StrToUint64(const char *text, uint64_t *value);
HOST_SERVICE uint32_t SMP_StrToUint32(const char *text, uint32_t *value);
HOST_SERVICE uint32_t SMP_atoulx(const char *text, uint32_t *value);           /* one to eight hexadecimal digits */
HOST_SERVICE uint32_t QOV_strtoul(const char *text, char **end, int32_t base); /* strtoul() of 32 bits */
HOST_SERVICE uint32_t NCF_IsHex(const char *text); /* non-zero: one or more hexadecimal digits and nothing else */
HOST_SERVICE void QOV_lowercase(char *text);
HOST_SERVICE uint32_t SMP_ToLowerString(const char *text, char *lower);          /* 0 on success */
HOST_SERVICE char *QOV_Uint32ToStr(uint32_t value, char *buffer, uint32_t base); /* base 2-36, 33 bytes or more */

/* --------------------------------------------------------------------------- bounded copies, prints and scans */

/* 0 on success. What does not fit is refused whole; a valid target is then zeroed or made an empty text. */
HOST_SERVICE int32_t memcpy_s(void *to, size_t toSize, const void *from, size_t count);
HOST_SERVICE int32_t memset_s(void *to, size_t toSize, int32_t byte, size_t count); /* refusal fills all of to */
HOST_SERVICE int32_t strcpy_s(char *to, size_t toSize, const char *from);
HOST_SERVICE int32_t strncpy_s(char *to, size_t toSize, const char *from, size_t count);
/* Characters written, or -1 with an empty text when it does not fit. */
HOST_SERVICE int32_t sprintf_s(char *to, size_t toSize, const char *format, ...) HOST_PRINTF(3, 4);
/* At most count characters: a longer text is cut there and -1 returned. Otherwise as sprintf_s(). */
HOST_SERVICE int32_t snprintf_s(char *to, size_t toSize, size_t count, const char *format, ...) HOST_PRINTF(4, 5);
/* At most toSize - 1 characters; returns the number written, -1 for null, size 0 or a format error. */
HOST_SERVICE int32_t snprintf_truncated_s(char *to, size_t toSize, const char *format, ...) HOST_PRINTF(3, 4);
/*
 * Items converted, -1 when the text ends before the first. Conversions u d x X (with hh h l ll and a width), c s [ and
 * %%; "*" drops an item. Numbers are digits of their base only - no sign, no 0x - and one that does not fit its target
 * ends the scan before that item. After the buffer of c, s and [ stands its size, a size_t; an item that does not fit
 * ends the scan.
 */
HOST_SERVICE int32_t sscanf_s(const char *text, const char *format, ...);

/* ---------------------------------------------------------------------------------------------- the Lua stack */

/*
 * One for one over Lua 5.4, except that no error is raised (short of the interpreter running out of memory): a slot
 * that does not exist holds no value of any kind, fields of a slot that is no table read as nil, and writes to one are
 * dropped with their value. Tables are accessed raw, so that no metamethod runs.
 */
HOST_SERVICE void SYSDT_SPTI_CreateTable(lua_State *L, int32_t arraySlots, int32_t recordSlots);
HOST_SERVICE int32_t SYSDT_SPTI_GetTop(lua_State *L);
HOST_SERVICE void SYSDT_SPTI_SetField(lua_State *L, int32_t index, const char *key); /* pops the value */
HOST_SERVICE void SYSDT_SPTI_GetField(lua_State *L, int32_t index, const char *key); /* pushes the value or nil */
HOST_SERVICE void SYSDT_SPTI_GetTable(lua_State *L, int32_t index);                  /* key -> value or nil */
HOST_SERVICE void SYSDT_SPTI_SetTable(lua_State *L, int32_t index);                  /* pops value and key */
HOST_SERVICE int32_t SYSDT_SPTI_IsTable(lua_State *L, int32_t index);
HOST_SERVICE int32_t SYSDT_SPTI_IsNumber(lua_State *L, int32_t index); /* a numeric string too */
HOST_SERVICE int32_t SYSDT_SPTI_IsString(lua_State *L, int32_t index); /* a number too */
HOST_SERVICE void SYSDT_SPTI_PushUInt(lua_State *L, uint32_t value);
HOST_SERVICE void SYSDT_SPTI_PushInt64(lua_State *L, int64_t value);
HOST_SERVICE void SYSDT_SPTI_PushString(lua_State *L, const char *text); /* null pushes nil */
HOST_SERVICE void SYSDT_SPTI_PushLString(lua_State *L, const char *bytes, size_t length);
HOST_SERVICE uint32_t SYSDT_SPTI_ToUInt(lua_State *L, int32_t index); /* low 32 bits; 0 for no integral number */
HOST_SERVICE int64_t SYSDT_SPTI_ToInt64(lua_State *L, int32_t index);
HOST_SERVICE const char *SYSDT_SPTI_ToString(lua_State *L, int32_t index); /* null for no string and no number */
HOST_SERVICE const char *SYSDT_SPTI_ToLString(lua_State *L, int32_t index, size_t *length);
HOST_SERVICE uint32_t SYSDT_SPTI_ObjLen(lua_State *L, int32_t index); /* raw length; 0 for a number */
HOST_SERVICE void SYSDT_SPTI_Pop(lua_State *L, int32_t count);

#ifdef __cplusplus
}
#endif

#endif
