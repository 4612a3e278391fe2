/*
 * bgp_host_common.h - the host services that need no host: libbgp_host_common.a.
 *
 * The library defines every service of bgp_host_services.h that works on its arguments alone: bounded copies, prints
 * and scans, text, numbers, addresses, comparisons. It needs the C library and nothing else; it takes no memory, keeps
 * no state and starts no thread. A host links it and defines what is left:
 *
 *     SYS_Drm_RegisterDataType   SYS_DataTypeMallocByHandle   SYSDT_InitHelpInfo    ZOL_Assert
 *                                SYS_DataTypeMalloc           SYSDT_ClearHelpInfo
 *                                SYS_DataTypeFree
 *
 * For a host without an interpreter of Lua, and for one without objects that have names and strings of its own, the
 * library also defines those services: they refuse. Whoever has them defines them; the library's then stay out.
 * Any service may be defined by the program one by one: its own goes before the library's.
 *
 * Below are second names of the services that a host may want to put something in front of (a fault, a count, a lock):
 * it defines the service and ends in the second name. Arguments and answers are those of the service; where that takes
 * a list of values, this takes it as va_list.
 */
#ifndef BGP_HOST_COMMON_H
#define BGP_HOST_COMMON_H

#include <stdarg.h>
#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

int32_t BgpCommon_memcpy_s(void *to, size_t toSize, const void *from, size_t count);
int32_t BgpCommon_memset_s(void *to, size_t toSize, int32_t byte, size_t count);
int32_t BgpCommon_strcpy_s(char *to, size_t toSize, const char *from);
int32_t BgpCommon_strncpy_s(char *to, size_t toSize, const char *from, size_t count);
int32_t BgpCommon_vsprintf_s(char *to, size_t toSize, const char *format, va_list values);
int32_t BgpCommon_vsnprintf_s(char *to, size_t toSize, size_t count, const char *format, va_list values);
int32_t BgpCommon_vsnprintf_truncated_s(char *to, size_t toSize, const char *format, va_list values);
int32_t BgpCommon_vsscanf_s(const char *text, const char *format, va_list values);
char *BgpCommon_inet_ntop6(const uint8_t *source16, char *buffer, uint32_t size);

#ifdef __cplusplus
}
#endif

#endif
