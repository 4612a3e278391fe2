// Text services: blanks, searches, numbers, case. Only ASCII letters have a case, whatever the locale.
#include "bgp_host_services.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace {

constexpr uint32_t Refused = 1;
constexpr const char *Blanks = " \t";

bool IsBlank(char character)
{
    return character == ' ' || character == '\t';
}

char Lower(char character)
{
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

// Digits of the base and nothing else, within the target's range.
template <class Number>
uint32_t ReadNumber(const char *text, Number *value, int base)
{
    if (text == nullptr || value == nullptr)
        return Refused;
    Number number;
    const char *end = text + std::strlen(text);
    const auto [behind, error] = std::from_chars(text, end, number, base);
    if (error != std::errc() || behind != end)
        return Refused;
    std::memcpy(value, &number, sizeof number);
    return 0;
}

// Ends the text behind its last non-blank and returns its first.
char *Trim(char *text)
{
    text += std::strspn(text, Blanks);
    size_t length = std::strlen(text);
    while (length > 0 && IsBlank(text[length - 1]))
        --length;
    if (text[length] != '\0') // a text without blanks may lie in constant memory
        text[length] = '\0';
    return text;
}

} // namespace

char *SYSDT_BTrim(char *text, char *)
{
    return text == nullptr ? nullptr : Trim(text);
}

char *QOV_StrTrim(char *text)
{
    if (text == nullptr)
        return nullptr;
    const char *start = Trim(text);
    if (start != text)
        std::memmove(text, start, std::strlen(start) + 1);
    return text;
}

void NCF_IsSpaceInString(const char *text, uint32_t *flag)
{
    if (flag != nullptr)
        *flag = text != nullptr && std::strpbrk(text, Blanks) != nullptr;
}

uint32_t QOV_StrLen(const char *text)
{
    return text == nullptr ? 0 : static_cast<uint32_t>(std::strlen(text));
}

char *QOV_StrChr(const char *text, int32_t character)
{
    return text == nullptr ? nullptr : const_cast<char *>(std::strchr(text, character));
}

char *QOV_StrRChr(const char *text, int32_t character)
{
    return text == nullptr ? nullptr : const_cast<char *>(std::strrchr(text, character));
}

char *QOV_StrStr(const char *text, const char *part)
{
    return text == nullptr || part == nullptr ? nullptr : const_cast<char *>(std::strstr(text, part));
}

int32_t QOV_MemCmp(const void *left, const void *right, uint32_t length)
{
    if (left == nullptr || right == nullptr)
        return (left != nullptr) - (right != nullptr);
    return std::memcmp(left, right, length);
}

uint32_t QOV_StrToUint32(const char *text, uint32_t *value)
{
    return ReadNumber(text, value, 10);
}

uint32_t QOV_StrToUint64(const char *text, uint64_t *value)
{
    return ReadNumber(text, value, 10);
}

uint32_t SMP_StrToUint32(const char *text, uint32_t *value)
{
    return ReadNumber(text, value, 10);
}

uint32_t SMP_atoulx(const char *text, uint32_t *value)
{
    if (text == nullptr || strnlen(text, 9) > 8)
        return Refused;
    return ReadNumber(text, value, 16);
}

// As strtoul() where unsigned long has 32 bits: out of range gives 0xFFFFFFFF, a "-" negates. errno stays as it was.
uint32_t QOV_strtoul(const char *text, char **end, int32_t base)
{
    char *behind = const_cast<char *>(text);
    unsigned long long number = 0;
    if (text != nullptr) {
        const int before = std::exchange(errno, 0);
        number = std::strtoull(text, &behind, base);
        const bool negative = text[std::strspn(text, " \t\n\v\f\r")] == '-';
        if (errno == ERANGE || (negative ? 0 - number : number) > UINT32_MAX)
            number = UINT32_MAX;
        errno = before;
    }
    if (end != nullptr)
        *end = behind;
    return static_cast<uint32_t>(number);
}

uint32_t NCF_IsHex(const char *text)
{
    return text != nullptr && *text != '\0' && text[std::strspn(text, "0123456789abcdefABCDEF")] == '\0';
}

void QOV_lowercase(char *text)
{
    for (; text != nullptr && *text != '\0'; ++text)
        *text = Lower(*text);
}

uint32_t SMP_ToLowerString(const char *text, char *lower)
{
    if (text == nullptr || lower == nullptr)
        return Refused;
    std::transform(text, text + std::strlen(text) + 1, lower, Lower);
    return 0;
}

char *QOV_Uint32ToStr(uint32_t value, char *buffer, uint32_t base)
{
    if (buffer == nullptr || base < 2 || base > 36)
        return nullptr;
    *std::to_chars(buffer, buffer + 32, value, static_cast<int>(base)).ptr = '\0';
    return buffer;
}
