/*
 * bgp_host_services.h - what the plug-in asks of the host: the services that the process which loads it defines.
 *
 * For whoever writes a host. docs/host-interface.md tells the same as a walk: which services must be there, in which
 * order they are called, and which ones libbgp_host_common.a brings ready-made. A program may also define a service
 * that a host library brings: its own definition goes before the library's.
 *
 * What holds for every service:
 *
 *  - C linkage and default visibility. The plug-in binds when it is loaded, so every service that it refers to must be
 *    there by then, whether it will be called or not.
 *  - It may be called from any thread that calls an operation, and by several at a time; the plug-in takes no locks.
 *    Services are called only while an operation or Bgp_InitDataType() runs, on the thread that called it.
 *  - It returns: nothing may be thrown and nothing may jump out of it through the plug-in's frames, for those hold
 *    scratch memory that would be lost.
 *  - Texts are NUL-terminated. A pointer is never null unless its line says so; a host that tests it nevertheless is on
 *    the safe side, and the hosts of this project do. Out-parameters may lie at any address, without alignment.
 *  - "0 on success" means that any other answer is a refusal whose value says nothing more. A refused call leaves its
 *    out-parameters as they were, unless its line says otherwise.
 *  - Sizes and lengths are bytes.
 */
#ifndef BGP_HOST_SERVICES_H
#define BGP_HOST_SERVICES_H

#include "bgp_datatypes.h"

#if defined(__GNUC__)
#define BGP_HOST_SERVICE __attribute__((__visibility__("default")))
#define BGP_HOST_PRINTF(at, values) __attribute__((__format__(__printf__, at, values)))
#else
#define BGP_HOST_SERVICE
#define BGP_HOST_PRINTF(at, values)
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* ------------------------------------------------------------------------------------------------- registration */

/*
 * Takes one row. handle is what Bgp_InitDataType() was called with; the row is constant and stays where it is for as
 * long as the plug-in is loaded. 0 on success; the plug-in reports any other answer with ZOL_Assert() and goes on with
 * the next row.
 */
BGP_HOST_SERVICE uint32_t SYS_Drm_RegisterDataType(uint32_t handle, const DataTypeDescriptor *row);

/*
 * Records a diagnostic: only a refused row is reported this way. Must return; the texts are gone afterwards.
 */
BGP_HOST_SERVICE void ZOL_Assert(const char *source, uint32_t line, const char *message);

/* ------------------------------------------------------------------------------------------------------- memory */

/*
 * A block of size bytes for a result, at an address that is aligned for any type, or null when there is none to be had
 * (the operation then answers DT_ERR_NO_MEMORY or what its type says). memoryHandle is the MemoryHandle of the request;
 * what it names is the host's affair. The block is the host's from the start: it frees it together with the handle, and
 * the plug-in frees it only when it turns out not to be needed.
 */
BGP_HOST_SERVICE void *SYS_DataTypeMallocByHandle(uint32_t memoryHandle, uint32_t size);

/*
 * A block of size bytes until SYS_DataTypeFree(), or null: scratch memory, which the plug-in frees before the operation
 * returns, and the results of the few types that say so, which the host frees.
 */
BGP_HOST_SERVICE void *SYS_DataTypeMalloc(uint32_t size);

/* Gives back a block of either allocator; one that came by handle may also be left to its handle. Null is ignored. */
BGP_HOST_SERVICE void SYS_DataTypeFree(void *memory);

/* --------------------------------------------------------------------------------------------------------- help */

/*
 * Prepares info for entryCount entries (the plug-in asks for one) whose texts are null, in the memory of memoryHandle.
 * helpWord is one of the two words that Help was called with; what it means is the host's affair. 0 on success; Help
 * passes any other answer on as its own code. The plug-in then stores a block with the text in Entries[0].Text.
 */
BGP_HOST_SERVICE uint32_t SYSDT_InitHelpInfo(uint32_t memoryHandle, DataTypeHelpInfo *info, uint32_t entryCount,
                                             uint32_t helpWord);

/* Undoes SYSDT_InitHelpInfo(), when there is no memory for the text. */
BGP_HOST_SERVICE void SYSDT_ClearHelpInfo(DataTypeHelpInfo *info);

/* ---------------------------------------------------------------------------------- operations that stand in rows */

/*
 * Each has its slot's signature and contract (bgp_datatypes.h). The plug-in puts them into rows and calls only
 * SYSDT_StringFormatOut() itself.
 *
 * An object index is one 32-bit word in host order. Text in: the name of an object of that type id, as the host knows
 * it, or a decimal number. Text out: the name, or the number where there is none.
 */
BGP_HOST_SERVICE DataTypeFormatInOperation SYS_DT_UINT32IndexFormatIn;
BGP_HOST_SERVICE DataTypeFormatOutOperation SYS_DT_IndexFormatOut;
BGP_HOST_SERVICE DataTypeCompareOperation SYSDT_Uint32Compare; /* -1, 0, 1 by the first 32-bit word, unsigned */
BGP_HOST_SERVICE DataTypeLuaSetOperation SYSDT_Uint32LuaSet;   /* the word as a number, field fieldName */
BGP_HOST_SERVICE DataTypeLuaGetOperation SYSDT_Uint32LuaGet;

BGP_HOST_SERVICE DataTypeCompareOperation SYSDT_BlockCompare; /* -1, 0, 1 by length bytes, unsigned, in order */

/*
 * A string is length bytes (0 stands for 32) of which the last is NUL at the latest, zero behind the text. Text in: at
 * least one character.
 */
BGP_HOST_SERVICE DataTypeFormatInOperation SYSDT_StringFormatIn;
BGP_HOST_SERVICE DataTypeFormatOutOperation SYSDT_StringFormatOut;
BGP_HOST_SERVICE DataTypeHelpOperation SYSDT_StringHelp;
BGP_HOST_SERVICE DataTypeCompareOperation SYSDT_StringCompare; /* by the text up to its NUL */
BGP_HOST_SERVICE DataTypeLuaSetOperation SYSDT_StringLuaSet;
BGP_HOST_SERVICE DataTypeLuaGetOperation SYSDT_StringLuaGet;

/* ---------------------------------------------------------------------------------------------------- addresses */

/* IPv4 text to a 32-bit word, the first octet most significant. 0 on success. */
BGP_HOST_SERVICE uint32_t SYSDT_Str2Ipv4(const char *text, uint32_t *address);
BGP_HOST_SERVICE uint32_t QOV_StrToIpAddr(const char *text, uint32_t *address);

/* IPv6 text to 16 bytes in network order. flags is always 0. 0 on success. */
BGP_HOST_SERVICE uint32_t SYSDT_Str2Ipv6(const char *text, uint8_t *address16, uint32_t flags);
BGP_HOST_SERVICE uint32_t SMP_InetAToN6(const char *text, uint8_t *address16);

/* Address text to network order: family 2 is IPv4, 4 bytes; family 10 is IPv6, 16 bytes. 0 on success. */
BGP_HOST_SERVICE uint32_t SMP_InetAToN(const char *text, void *address, uint32_t family);

/*
 * Orders two records of 21 bytes: an IPv4 word in host order, 16 IPv6 bytes, a flag byte (0 IPv4, 1 IPv6). -1, 0 or 1;
 * the answer is handed on as that of the type's Compare. context may be null, familyCode is always 21.
 */
BGP_HOST_SERVICE int32_t SYSDT_Ipv4Ipv6Compare(const void *context, uint32_t familyCode, const void *left,
                                               const void *right);

/* Prints a word, first octet most significant, as four decimal parts into 16 bytes. Returns buffer. */
BGP_HOST_SERVICE char *QOV_IpAddrToStr(uint32_t address, char *buffer);

/*
 * Prints an IPv6 address into 46 bytes. The words hold its eight 16-bit groups, each in host order, as they lie in
 * memory. Returns buffer, null on failure.
 */
BGP_HOST_SERVICE char *QOV_Inet_ntoa_b_ipv6(uint32_t word0, uint32_t word1, uint32_t word2, uint32_t word3,
                                            char *buffer);

/* Prints 16 bytes in network order into size bytes, 46 at least. Returns buffer; null on failure, buffer untouched. */
BGP_HOST_SERVICE char *inet_ntop6(const uint8_t *source16, char *buffer, uint32_t size);

/* May the text be the beginning of an IPv4 address? 0 when its characters are fit for one. text may be null. */
BGP_HOST_SERVICE uint32_t ZOL_CheckBySymbolForIPV4(const char *text);

/* MAC address text ("0011-2233-4455") to six bytes. 0 on success. */
BGP_HOST_SERVICE uint32_t SMP_Str2Mac(const char *text, uint8_t *mac6);

/* --------------------------------------------------------------------------------------------------------- text */

/* Which characters are blanks is the host's to say, the same for these three. */

/* Drops the blanks around a text: ends it early and returns its first other character. scratch may be null. */
BGP_HOST_SERVICE char *SYSDT_BTrim(char *text, char *scratch);
/* The same in place: the text moves to the front. Returns text; null for null. */
BGP_HOST_SERVICE char *QOV_StrTrim(char *text);
/* *flag becomes 1 when there is a blank anywhere in the text, else 0. */
BGP_HOST_SERVICE void NCF_IsSpaceInString(const char *text, uint32_t *flag);

BGP_HOST_SERVICE uint32_t QOV_StrLen(const char *text);
/* The first and the last place of a character, the first place of a part; null when there is none. */
BGP_HOST_SERVICE char *QOV_StrChr(const char *text, int32_t character);
BGP_HOST_SERVICE char *QOV_StrRChr(const char *text, int32_t character);
BGP_HOST_SERVICE char *QOV_StrStr(const char *text, const char *part);
/* As memcmp(): below, equal to or above 0 by length bytes, unsigned. */
BGP_HOST_SERVICE int32_t QOV_MemCmp(const void *left, const void *right, uint32_t length);

/* ASCII letters to lower case, in place; and as a copy into lower, as large as text, terminator and all. */
BGP_HOST_SERVICE void QOV_lowercase(char *text);
BGP_HOST_SERVICE uint32_t SMP_ToLowerString(const char *text, char *lower); /* 0 on success */

/* ------------------------------------------------------------------------------------------------------ numbers */

/* One or more decimal digits and nothing else, within the range of *value. 0 on success. */
BGP_HOST_SERVICE uint32_t QOV_StrToUint32(const char *text, uint32_t *value);
BGP_HOST_SERVICE uint32_t QOV_StrToUint64(const char *text, uint64_t *value);
BGP_HOST_SERVICE uint32_t SMP_StrToUint32(const char *text, uint32_t *value);
/* One to eight hexadecimal digits and nothing else. 0 on success. */
BGP_HOST_SERVICE uint32_t SMP_atoulx(const char *text, uint32_t *value);
/* As strtoul() of 32 bits: what does not fit gives 0xFFFFFFFF. end may be null; errno is left alone. */
BGP_HOST_SERVICE uint32_t QOV_strtoul(const char *text, char **end, int32_t base);
/* Non-zero when the text is made of hexadecimal digits, one at least. */
BGP_HOST_SERVICE uint32_t NCF_IsHex(const char *text);
/* Prints value in base 2 to 36 (the plug-in asks for 10) into 33 bytes. Returns buffer, null on failure. */
BGP_HOST_SERVICE char *QOV_Uint32ToStr(uint32_t value, char *buffer, uint32_t base);

/* ----------------------------------------------------------------------------- bounded copies, prints and scans */

/* With their meanings of C11, Annex K; toSize is the size of the target. Copies: 0 on success. */
BGP_HOST_SERVICE int32_t memcpy_s(void *to, size_t toSize, const void *from, size_t count);
BGP_HOST_SERVICE int32_t memset_s(void *to, size_t toSize, int32_t byte, size_t count);
BGP_HOST_SERVICE int32_t strcpy_s(char *to, size_t toSize, const char *from);
BGP_HOST_SERVICE int32_t strncpy_s(char *to, size_t toSize, const char *from, size_t count);

/* Prints: the characters written without the terminator, or a negative number. What does not fit is refused. */
BGP_HOST_SERVICE int32_t sprintf_s(char *to, size_t toSize, const char *format, ...) BGP_HOST_PRINTF(3, 4);
/* At most count characters: a longer text is cut there and a negative number returned. */
BGP_HOST_SERVICE int32_t snprintf_s(char *to, size_t toSize, size_t count, const char *format, ...)
    BGP_HOST_PRINTF(4, 5);
/*
 * At most toSize - 1 characters and a terminator: what is longer is cut, which is no failure. Returns the number
 * written, negative on failure. Every text that an operation prints leaves the plug-in through this service, with the
 * format "%s": its failure fails the operation.
 */
BGP_HOST_SERVICE int32_t snprintf_truncated_s(char *to, size_t toSize, const char *format, ...) BGP_HOST_PRINTF(3, 4);

/*
 * The number of items converted, negative when the text ends before the first. The plug-in asks for %u and %llu. Read
 * strictly: a number is digits of its base alone (no sign, no 0x), and one that does not fit its target ends the scan
 * before that item. As in Annex K, %s, %c and %[ take a size_t, the size of their buffer, behind it.
 */
BGP_HOST_SERVICE int32_t sscanf_s(const char *text, const char *format, ...);

/* ------------------------------------------------------------------------------------------------ the Lua stack */

/*
 * One for one over the stack calls of Lua that bear the same names, indexes included. Only LuaSet and LuaGet use them.
 * None may raise an error of Lua: it would jump through the plug-in's frames. Instead, a slot that does not exist holds
 * a value of no kind, fields of a slot that is no table read as nil, and writes to one are dropped with their value.
 */
BGP_HOST_SERVICE void SYSDT_SPTI_CreateTable(lua_State *L, int32_t arraySlots, int32_t recordSlots); /* pushes it */
BGP_HOST_SERVICE int32_t SYSDT_SPTI_GetTop(lua_State *L);
BGP_HOST_SERVICE void SYSDT_SPTI_SetField(lua_State *L, int32_t index, const char *key); /* pops the value */
BGP_HOST_SERVICE void SYSDT_SPTI_GetField(lua_State *L, int32_t index, const char *key); /* pushes the value or nil */
BGP_HOST_SERVICE void SYSDT_SPTI_GetTable(lua_State *L, int32_t index);    /* pops the key, pushes the value or nil */
BGP_HOST_SERVICE void SYSDT_SPTI_SetTable(lua_State *L, int32_t index);    /* pops value and key */
BGP_HOST_SERVICE int32_t SYSDT_SPTI_IsTable(lua_State *L, int32_t index);  /* non-zero for yes, as the next two */
BGP_HOST_SERVICE int32_t SYSDT_SPTI_IsNumber(lua_State *L, int32_t index); /* a numeric string too, as Lua has it */
BGP_HOST_SERVICE int32_t SYSDT_SPTI_IsString(lua_State *L, int32_t index); /* a number too, as Lua has it */
BGP_HOST_SERVICE void SYSDT_SPTI_PushUInt(lua_State *L, uint32_t value);
BGP_HOST_SERVICE void SYSDT_SPTI_PushInt64(lua_State *L, int64_t value);
BGP_HOST_SERVICE void SYSDT_SPTI_PushString(lua_State *L, const char *text);                  /* nil for null */
BGP_HOST_SERVICE void SYSDT_SPTI_PushLString(lua_State *L, const char *bytes, size_t length); /* any bytes */
BGP_HOST_SERVICE uint32_t SYSDT_SPTI_ToUInt(lua_State *L, int32_t index);      /* the low 32 bits; 0 for no integer */
BGP_HOST_SERVICE int64_t SYSDT_SPTI_ToInt64(lua_State *L, int32_t index);      /* 0 for no integer */
BGP_HOST_SERVICE const char *SYSDT_SPTI_ToString(lua_State *L, int32_t index); /* null for no string and no number */
BGP_HOST_SERVICE const char *SYSDT_SPTI_ToLString(lua_State *L, int32_t index, size_t *length);
BGP_HOST_SERVICE uint32_t SYSDT_SPTI_ObjLen(lua_State *L, int32_t index); /* the raw length; 0 for a number */
BGP_HOST_SERVICE void SYSDT_SPTI_Pop(lua_State *L, int32_t count);

#ifdef __cplusplus
}
#endif

#endif
