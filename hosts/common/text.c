/*
 * Text: blanks, searches, case. A blank is a space or a horizontal tab. Only ASCII letters have a case, whatever the
 * locale.
 */
#include "bgp_host_services.h"
#include "replaceable.h"

#include <stdbool.h>
#include <string.h>

#define BLANKS " \t"

static bool IsBlank(char character)
{
    return character == ' ' || character == '\t';
}

static char Lower(char character)
{
    return character >= 'A' && character <= 'Z' ? (char)(character - 'A' + 'a') : character;
}

/* Ends the text behind its last non-blank and returns its first. */
static char *Trim(char *text)
{
    text += strspn(text, BLANKS);
    size_t length = strlen(text);
    while (length > 0 && IsBlank(text[length - 1])) {
        --length;
    }
    if (text[length] != '\0') { /* a text without blanks may lie in constant memory */
        text[length] = '\0';
    }
    return text;
}

BGP_REPLACEABLE char *SYSDT_BTrim(char *text, char *scratch)
{
    (void)scratch;
    return text == NULL ? NULL : Trim(text);
}

BGP_REPLACEABLE char *QOV_StrTrim(char *text)
{
    if (text == NULL) {
        return NULL;
    }
    const char *start = Trim(text);
    if (start != text) {
        memmove(text, start, strlen(start) + 1);
    }
    return text;
}

BGP_REPLACEABLE void NCF_IsSpaceInString(const char *text, uint32_t *flag)
{
    if (flag != NULL) {
        *flag = text != NULL && strpbrk(text, BLANKS) != NULL;
    }
}

BGP_REPLACEABLE uint32_t QOV_StrLen(const char *text)
{
    return text == NULL ? 0 : (uint32_t)strlen(text);
}

BGP_REPLACEABLE char *QOV_StrChr(const char *text, int32_t character)
{
    return text == NULL ? NULL : strchr(text, character);
}

BGP_REPLACEABLE char *QOV_StrRChr(const char *text, int32_t character)
{
    return text == NULL ? NULL : strrchr(text, character);
}

BGP_REPLACEABLE char *QOV_StrStr(const char *text, const char *part)
{
    return text == NULL || part == NULL ? NULL : strstr(text, part);
}

BGP_REPLACEABLE int32_t QOV_MemCmp(const void *left, const void *right, uint32_t length)
{
    if (left == NULL || right == NULL) {
        return (left != NULL) - (right != NULL);
    }
    return memcmp(left, right, length);
}

BGP_REPLACEABLE void QOV_lowercase(char *text)
{
    for (; text != NULL && *text != '\0'; ++text) {
        *text = Lower(*text);
    }
}

BGP_REPLACEABLE uint32_t SMP_ToLowerString(const char *text, char *lower)
{
    if (text == NULL || lower == NULL) {
        return 1;
    }
    do {
        *lower++ = Lower(*text);
    } while (*text++ != '\0');
    return 0;
}
