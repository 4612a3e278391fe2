/* Comparisons that stand in rows, and that of address records. Values have no alignment. A null one comes first. */
#include "bgp_host_services.h"
#include "replaceable.h"

#include <string.h>

static int32_t Order(int64_t difference)
{
    return (difference > 0) - (difference < 0);
}

static uint32_t Word(const void *value)
{
    uint32_t word;
    memcpy(&word, value, sizeof word);
    return word;
}

BGP_REPLACEABLE int32_t SYSDT_Uint32Compare(const void *context, uint32_t length, const void *left, const void *right)
{
    (void)context;
    (void)length;
    if (left == NULL || right == NULL) {
        return (left != NULL) - (right != NULL);
    }
    return Order((int64_t)Word(left) - (int64_t)Word(right));
}

BGP_REPLACEABLE int32_t SYSDT_BlockCompare(const void *context, uint32_t length, const void *left, const void *right)
{
    (void)context;
    if (left == NULL || right == NULL) {
        return (left != NULL) - (right != NULL);
    }
    return Order(memcmp(left, right, length));
}

BGP_REPLACEABLE int32_t SYSDT_StringCompare(const void *context, uint32_t length, const void *left, const void *right)
{
    enum { USUAL_LENGTH = 32 };
    (void)context;
    if (left == NULL || right == NULL) {
        return (left != NULL) - (right != NULL);
    }
    return Order(strncmp(left, right, length == 0 ? USUAL_LENGTH : length));
}

BGP_REPLACEABLE int32_t SYSDT_Ipv4Ipv6Compare(const void *context, uint32_t familyCode, const void *left,
                                              const void *right)
{
    enum { IPV6_AT = 4, FLAG_AT = 20 };
    (void)context;
    (void)familyCode;
    if (left == NULL || right == NULL) {
        return (left != NULL) - (right != NULL);
    }
    const uint8_t *leftBytes = left;
    const uint8_t *rightBytes = right;
    if (leftBytes[FLAG_AT] != rightBytes[FLAG_AT]) {
        return Order(leftBytes[FLAG_AT] - rightBytes[FLAG_AT]);
    }
    if (leftBytes[FLAG_AT] != 0) {
        return Order(memcmp(leftBytes + IPV6_AT, rightBytes + IPV6_AT, 16));
    }
    return Order((int64_t)Word(left) - (int64_t)Word(right));
}
