/*
 * The services that have a second name, under their own: for a host that has nothing to put in front of them.
 */
#include "bgp_host_common.h"
#include "bgp_host_services.h"
#include "replaceable.h"

BGP_REPLACEABLE int32_t memcpy_s(void *to, size_t toSize, const void *from, size_t count)
{
    return BgpCommon_memcpy_s(to, toSize, from, count);
}

BGP_REPLACEABLE int32_t memset_s(void *to, size_t toSize, int32_t byte, size_t count)
{
    return BgpCommon_memset_s(to, toSize, byte, count);
}

BGP_REPLACEABLE int32_t strcpy_s(char *to, size_t toSize, const char *from)
{
    return BgpCommon_strcpy_s(to, toSize, from);
}

BGP_REPLACEABLE int32_t strncpy_s(char *to, size_t toSize, const char *from, size_t count)
{
    return BgpCommon_strncpy_s(to, toSize, from, count);
}

BGP_REPLACEABLE int32_t sprintf_s(char *to, size_t toSize, const char *format, ...)
{
    va_list values;
    va_start(values, format);
    const int32_t written = BgpCommon_vsprintf_s(to, toSize, format, values);
    va_end(values);
    return written;
}

BGP_REPLACEABLE int32_t snprintf_s(char *to, size_t toSize, size_t count, const char *format, ...)
{
    va_list values;
    va_start(values, format);
    const int32_t written = BgpCommon_vsnprintf_s(to, toSize, count, format, values);
    va_end(values);
    return written;
}

BGP_REPLACEABLE int32_t snprintf_truncated_s(char *to, size_t toSize, const char *format, ...)
{
    va_list values;
    va_start(values, format);
    const int32_t written = BgpCommon_vsnprintf_truncated_s(to, toSize, format, values);
    va_end(values);
    return written;
}

BGP_REPLACEABLE int32_t sscanf_s(const char *text, const char *format, ...)
{
    va_list values;
    va_start(values, format);
    const int32_t items = BgpCommon_vsscanf_s(text, format, values);
    va_end(values);
    return items;
}

BGP_REPLACEABLE char *inet_ntop6(const uint8_t *source16, char *buffer, uint32_t size)
{
    return BgpCommon_inet_ntop6(source16, buffer, size);
}
