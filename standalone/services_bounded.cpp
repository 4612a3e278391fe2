// Bounded copies and prints. A call that would not fit is refused as a whole, with the target zeroed or made an empty
// text, so that no caller goes on with half a value.
#include "bgp_host_services.h"
#include "thread_state.h"

#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstring>

using namespace bgp::standalone;

namespace {

constexpr int32_t BadArgument = 22, OutOfRange = 34, Injected = 5;
constexpr size_t LargestSize = SIZE_MAX / 2; // above it a "size" is a negative number gone astray

bool Overlap(const void *one, size_t oneSize, const void *other, size_t otherSize)
{
    const auto first = reinterpret_cast<uintptr_t>(one), second = reinterpret_cast<uintptr_t>(other);
    return first < second ? second - first < oneSize : first - second < otherSize;
}

// What all copies refuse about their target before they look further.
int32_t CheckTarget(const void *to, size_t toSize)
{
    if (to == nullptr)
        return BadArgument;
    return toSize > LargestSize ? OutOfRange : 0;
}

// Copies length characters and a terminator.
int32_t CopyText(char *to, size_t toSize, const char *from, size_t length)
{
    if (length >= toSize || Overlap(to, length + 1, from, length + 1)) {
        *to = '\0';
        return OutOfRange;
    }
    std::memcpy(to, from, length);
    to[length] = '\0';
    return 0;
}

// vsnprintf() with the refusals that all prints share; -1 on error, else the length that the whole text has.
int Print(char *to, size_t toSize, const char *format, va_list values)
{
    if (to == nullptr || toSize == 0 || toSize > LargestSize)
        return -1;
    const int length = format == nullptr ? -1 : std::vsnprintf(to, toSize, format, values);
    if (length < 0)
        *to = '\0';
    return length;
}

// The format "%s" alone, which is most of what is printed, without the formatter.
int32_t PrintText(char *to, size_t toSize, const char *text)
{
    const size_t length = strnlen(text, toSize - 1);
    std::memcpy(to, text, length);
    to[length] = '\0';
    return static_cast<int32_t>(length);
}

} // namespace

int32_t memcpy_s(void *to, size_t toSize, const void *from, size_t count)
{
    if (detail::CopyFails())
        return Injected;
    if (const int32_t code = CheckTarget(to, toSize))
        return code;
    if (from != nullptr && count <= toSize && !Overlap(to, count, from, count)) {
        std::memcpy(to, from, count);
        return 0;
    }
    std::memset(to, 0, toSize);
    return from == nullptr ? BadArgument : OutOfRange;
}

int32_t memset_s(void *to, size_t toSize, int32_t byte, size_t count)
{
    if (detail::CopyFails())
        return Injected;
    if (const int32_t code = CheckTarget(to, toSize))
        return code;
    std::memset(to, byte, count <= toSize ? count : toSize);
    return count <= toSize ? 0 : OutOfRange;
}

int32_t strcpy_s(char *to, size_t toSize, const char *from)
{
    return strncpy_s(to, toSize, from, LargestSize);
}

int32_t strncpy_s(char *to, size_t toSize, const char *from, size_t count)
{
    if (detail::CopyFails())
        return Injected;
    if (const int32_t code = CheckTarget(to, toSize))
        return code;
    if (toSize == 0)
        return OutOfRange;
    if (from == nullptr || count > LargestSize) {
        *to = '\0';
        return from == nullptr ? BadArgument : OutOfRange;
    }
    return CopyText(to, toSize, from, strnlen(from, count < toSize ? count : toSize));
}

int32_t sprintf_s(char *to, size_t toSize, const char *format, ...)
{
    if (detail::PrintFails())
        return -1;
    va_list values;
    va_start(values, format);
    const int length = Print(to, toSize, format, values);
    va_end(values);
    if (length < 0 || static_cast<size_t>(length) < toSize)
        return length;
    *to = '\0';
    return -1;
}

int32_t snprintf_s(char *to, size_t toSize, size_t count, const char *format, ...)
{
    if (detail::PrintFails())
        return -1;
    const size_t limit = count < toSize ? count + 1 : toSize;
    va_list values;
    va_start(values, format);
    const int length = Print(to, limit, format, values);
    va_end(values);
    if (length < 0 || static_cast<size_t>(length) < limit)
        return length;
    if (count >= toSize) // the target is too small, not the caller's limit
        *to = '\0';
    return -1;
}

int32_t snprintf_truncated_s(char *to, size_t toSize, const char *format, ...)
{
    if (detail::PrintFails())
        return -1;
    va_list values;
    va_start(values, format);
    int32_t written;
    if (to != nullptr && format != nullptr && std::strcmp(format, "%s") == 0 && toSize - 1 < INT32_MAX) {
        const char *text = va_arg(values, const char *);
        written = PrintText(to, toSize, text == nullptr ? "(null)" : text);
    } else {
        written = Print(to, toSize, format, values);
        if (written > 0 && static_cast<size_t>(written) >= toSize)
            written = static_cast<int32_t>(toSize - 1);
    }
    va_end(values);
    return written;
}
