// The services that fail to order: a fault or a count goes in front of what hosts/common does.
#include "bgp_host_common.h"
#include "bgp_host_services.h"
#include "replaceable.h"
#include "thread_state.h"

#include <cstdarg>

using namespace bgp::standalone;

namespace {

constexpr int32_t kInjected = 5;

} // namespace

BGP_REPLACEABLE int32_t memcpy_s(void *to, size_t toSize, const void *from, size_t count)
{
    return detail::CopyFails() ? kInjected : BgpCommon_memcpy_s(to, toSize, from, count);
}

BGP_REPLACEABLE int32_t memset_s(void *to, size_t toSize, int32_t byte, size_t count)
{
    return detail::CopyFails() ? kInjected : BgpCommon_memset_s(to, toSize, byte, count);
}

BGP_REPLACEABLE int32_t strcpy_s(char *to, size_t toSize, const char *from)
{
    return detail::CopyFails() ? kInjected : BgpCommon_strcpy_s(to, toSize, from);
}

BGP_REPLACEABLE int32_t strncpy_s(char *to, size_t toSize, const char *from, size_t count)
{
    return detail::CopyFails() ? kInjected : BgpCommon_strncpy_s(to, toSize, from, count);
}

BGP_REPLACEABLE int32_t sprintf_s(char *to, size_t toSize, const char *format, ...)
{
    va_list values;
    va_start(values, format);
    const int32_t written = detail::PrintFails() ? -1 : BgpCommon_vsprintf_s(to, toSize, format, values);
    va_end(values);
    return written;
}

BGP_REPLACEABLE int32_t snprintf_s(char *to, size_t toSize, size_t count, const char *format, ...)
{
    va_list values;
    va_start(values, format);
    const int32_t written = detail::PrintFails() ? -1 : BgpCommon_vsnprintf_s(to, toSize, count, format, values);
    va_end(values);
    return written;
}

BGP_REPLACEABLE int32_t snprintf_truncated_s(char *to, size_t toSize, const char *format, ...)
{
    va_list values;
    va_start(values, format);
    const int32_t written = detail::PrintFails() ? -1 : BgpCommon_vsnprintf_truncated_s(to, toSize, format, values);
    va_end(values);
    return written;
}

BGP_REPLACEABLE int32_t sscanf_s(const char *text, const char *format, ...)
{
    va_list values;
    va_start(values, format);
    const int32_t items = detail::ScanFails() ? 0 : BgpCommon_vsscanf_s(text, format, values);
    va_end(values);
    return items;
}

BGP_REPLACEABLE char *inet_ntop6(const uint8_t *source16, char *buffer, uint32_t size)
{
    return detail::AddressPrintFails() ? nullptr : BgpCommon_inet_ntop6(source16, buffer, size);
}
