/* The text and address helpers that several types share. */
#ifndef BGP_DATATYPES_HELPERS_H
#define BGP_DATATYPES_HELPERS_H

#include "bgp_datatypes.h"

#ifdef __cplusplus
extern "C" {
#endif

/* --------------------------------------------------------------------------------------- text and address helpers */

/* What the three Str2 helpers fill. */
typedef struct {
    uint32_t Ipv4;    /* first octet most significant */
    uint8_t Ipv6[16]; /* in address order */
    uint32_t Family;  /* 0 = Ipv4 holds the address, 1 = Ipv6 does */
} BgpAddressRecord;

/*
 * The decimal number at the start of text ("%u"); what follows it is ignored. 0 on success; 0xFFFFFFFF with *value = 0
 * when there is none or it exceeds 32 bits, and with *value untouched when a pointer is null.
 */
BGP_DATATYPES_API uint32_t SYSDT_atoul(const char *text, uint32_t *value);
/* How many dots a text of digits and dots holds; DT_ERR_FAIL when it holds anything else. */
BGP_DATATYPES_API uint32_t SYSDT_getStrDotNum(const char *text);
/* 1 for 0-9, A-F, a-f, else 0. */
BGP_DATATYPES_API uint32_t BGP_DATATYPE_IsHex(char character);
/* The IPv6 endpoint of an SR-policy body (12 bytes in) as eight host-order 16-bit groups. */
BGP_DATATYPES_API void SYSDT_Ipv6AddrNtoH(const void *body, uint16_t *words);
/* 1 when all 16 bytes are zero, else 0. */
BGP_DATATYPES_API uint32_t SYSDT_ipv6AddrUnSpecified(const uint8_t *address16);
/* 1 for an IPv6 multicast address (ff00::/8), 0 for any other, DT_ERR_FAIL for a text that is no IPv6 address. */
BGP_DATATYPES_API uint32_t SYSDT_IsIpv6MultiCastAddr(const char *text);
/* An IPv6 address when the text holds ":", else an IPv4 one. 0, or DT_ERR_FAIL with the record untouched. */
BGP_DATATYPES_API uint32_t SYSDT_Str2IPv4IPv6(const char *text, BgpAddressRecord *record);
/* The same; a bad IPv6 text gives DT_ERR_INVALID_PARAM, a bad IPv4 text DT_ERR_FAIL. */
BGP_DATATYPES_API uint32_t SYSDT_Str2SysIpv4Ipv6(const char *text, uint32_t reserved, BgpAddressRecord *record);
/* The same choice into two places; the host parser's own result comes back. */
BGP_DATATYPES_API uint32_t SYSDT_Str2Ipv4Ipv6(const char *text, uint32_t *ipv4, uint8_t *ipv6);

#ifdef __cplusplus
}
#endif

#endif
