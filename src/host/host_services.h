// What the plug-in asks of the process that loads it: the data-type framework, its utility layers and its bounded
// string library. Nothing here is defined by the plug-in; the names stay undefined in the library until a host supplies
// them.
#ifndef BGP_HOST_SERVICES_H
#define BGP_HOST_SERVICES_H

#include "bgp_datatypes.h"

extern "C" {

// Registration, result memory, help records, diagnostics.
uint32_t SYS_Drm_RegisterDataType(uint32_t handle, const DataTypeDescriptor *row);
void *SYS_DataTypeMallocByHandle(uint32_t memoryHandle, uint32_t size); // the host's from the start
void *SYS_DataTypeMalloc(uint32_t size);                                // ours until handed over or freed
void SYS_DataTypeFree(void *memory);                                    // either kind
uint32_t SYSDT_InitHelpInfo(uint32_t memoryHandle, DataTypeHelpInfo *info, uint32_t entryCount, uint32_t helpWord);
void SYSDT_ClearHelpInfo(DataTypeHelpInfo *info);
void ZOL_Assert(const char *source, uint32_t line, const char *message);

// The host's own operations that stand in descriptor rows.
DataTypeFormatInOperation SYS_DT_UINT32IndexFormatIn, SYSDT_StringFormatIn;
DataTypeFormatOutOperation SYS_DT_IndexFormatOut, SYSDT_StringFormatOut;
DataTypeHelpOperation SYSDT_StringHelp;
DataTypeCompareOperation SYSDT_Uint32Compare, SYSDT_BlockCompare, SYSDT_StringCompare;
DataTypeLuaSetOperation SYSDT_Uint32LuaSet, SYSDT_StringLuaSet;
DataTypeLuaGetOperation SYSDT_Uint32LuaGet, SYSDT_StringLuaGet;

// Addresses. IPv4 words have the first octet most significant. 0 on success.
uint32_t SYSDT_Str2Ipv4(const char *text, uint32_t *address);
uint32_t SYSDT_Str2Ipv6(const char *text, uint8_t *address16, uint32_t flags);
int32_t SYSDT_Ipv4Ipv6Compare(const void *context, uint32_t familyCode, const void *left, const void *right);
uint32_t QOV_StrToIpAddr(const char *text, uint32_t *address);
char *QOV_IpAddrToStr(uint32_t address, char *buffer); // 16 characters or more
// The words hold eight host-order 16-bit groups as they lie in memory; 46 characters or more.
char *QOV_Inet_ntoa_b_ipv6(uint32_t word0, uint32_t word1, uint32_t word2, uint32_t word3, char *buffer);
uint32_t ZOL_CheckBySymbolForIPV4(const char *text);
uint32_t SMP_InetAToN(const char *text, void *address, uint32_t family); // 2 IPv4, 10 IPv6; network form
uint32_t SMP_InetAToN6(const char *text, uint8_t *address16);
uint32_t SMP_Str2Mac(const char *text, uint8_t *mac6);
char *inet_ntop6(const uint8_t *source16, char *buffer, uint32_t size); // null on error

// Text and numbers. 0 on success where a code comes back.
char *SYSDT_BTrim(char *text, char *scratch);
uint32_t QOV_StrLen(const char *text);
char *QOV_StrChr(const char *text, int32_t character);
char *QOV_StrRChr(const char *text, int32_t character);
char *QOV_StrStr(const char *text, const char *part);
int32_t QOV_MemCmp(const void *left, const void *right, uint32_t length);
uint32_t QOV_StrToUint32(const char *text, uint32_t *value);
uint32_t QOV_StrToUint64(const char *text, uint64_t *value);
uint32_t QOV_strtoul(const char *text, char **end, int32_t base);
char *QOV_StrTrim(char *text);
void QOV_lowercase(char *text);
char *QOV_Uint32ToStr(uint32_t value, char *buffer, uint32_t base);
uint32_t SMP_StrToUint32(const char *text, uint32_t *value);
uint32_t SMP_atoulx(const char *text, uint32_t *value);
uint32_t SMP_ToLowerString(const char *text, char *lower);
void NCF_IsSpaceInString(const char *text, uint32_t *flag);
uint32_t NCF_IsHex(const char *text);

// Bounded memory and string functions: C11 Annex K meanings, 0 on success.
int32_t memcpy_s(void *to, size_t toSize, const void *from, size_t count);
int32_t memset_s(void *to, size_t toSize, int32_t byte, size_t count);
int32_t strcpy_s(char *to, size_t toSize, const char *from);
int32_t strncpy_s(char *to, size_t toSize, const char *from, size_t count);
int32_t sprintf_s(char *to, size_t toSize, const char *format, ...);
int32_t snprintf_s(char *to, size_t toSize, size_t count, const char *format, ...);
int32_t sscanf_s(const char *text, const char *format, ...);
// At most toSize - 1 characters and a terminator; the number written, negative on error.
int32_t snprintf_truncated_s(char *to, size_t toSize, const char *format, ...);

// The Lua stack, one for one.
void SYSDT_SPTI_CreateTable(lua_State *L, int32_t arraySlots, int32_t recordSlots);
int32_t SYSDT_SPTI_GetTop(lua_State *L);
void SYSDT_SPTI_SetField(lua_State *L, int32_t index, const char *key);
void SYSDT_SPTI_GetField(lua_State *L, int32_t index, const char *key);
void SYSDT_SPTI_GetTable(lua_State *L, int32_t index);
void SYSDT_SPTI_SetTable(lua_State *L, int32_t index);
int32_t SYSDT_SPTI_IsTable(lua_State *L, int32_t index);
int32_t SYSDT_SPTI_IsNumber(lua_State *L, int32_t index);
int32_t SYSDT_SPTI_IsString(lua_State *L, int32_t index);
void SYSDT_SPTI_PushUInt(lua_State *L, uint32_t value);
void SYSDT_SPTI_PushInt64(lua_State *L, int64_t value);
void SYSDT_SPTI_PushString(lua_State *L, const char *text);
void SYSDT_SPTI_PushLString(lua_State *L, const char *bytes, size_t length);
uint32_t SYSDT_SPTI_ToUInt(lua_State *L, int32_t index);
int64_t SYSDT_SPTI_ToInt64(lua_State *L, int32_t index);
const char *SYSDT_SPTI_ToString(lua_State *L, int32_t index);
const char *SYSDT_SPTI_ToLString(lua_State *L, int32_t index, size_t *length);
uint32_t SYSDT_SPTI_ObjLen(lua_State *L, int32_t index);
void SYSDT_SPTI_Pop(lua_State *L, int32_t count);

} // extern "C"

#endif
