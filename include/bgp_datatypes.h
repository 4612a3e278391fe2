/*
 * bgp_datatypes.h - the BGP data types of a router's management plane, as one plug-in.
 *
 * A management plane (the host) keeps configuration and state as typed values. Every type is a row of operations: text
 * to value, value to text, check, help, compare, to and from Lua, byte order. The host loads this library, calls
 * Bgp_InitDataType() once with its registration handle, and receives 35 rows through SYS_Drm_RegisterDataType(). From
 * then on it calls the operations through the rows, from any thread, without locks: the library keeps no state of its
 * own.
 *
 * In ten lines:
 *
 *     static const DataTypeDescriptor *asnum;
 *     uint32_t SYS_Drm_RegisterDataType(uint32_t handle, const DataTypeDescriptor *row)
 *     {
 *         (void)handle;
 *         if (strcmp(row->Name, "ASNUM") == 0) asnum = row;
 *         return 0;
 *     }
 *     ...
 *     DataTypeRequest request = {.FormatMode = 1, .MemoryHandle = myArena};
 *     uint16_t type, length; void *value = NULL;
 *     Bgp_InitDataType(0);
 *     uint32_t code = asnum->FormatIn(&request, 255, 0, "65535.1", &type, &length, &value);
 *
 * Conventions that hold for every operation unless its own comment says otherwise:
 *
 *  - Pointers are tested first: a null one that is needed gives DT_ERR_NULL_PTR. Then the format mode, then the
 * content.
 *  - Codes are 0 for success or one of the DT_ERR_ values. Nothing is thrown, nothing aborts, nothing is logged.
 *  - Values are byte strings without alignment. Multi-byte integers inside them are in the byte order of the processor,
 *    except where a layout says "network order". Endian turns host order into network order and back, in place.
 *  - Results (values, texts, help texts) come from SYS_DataTypeMallocByHandle() on the request's memory handle, except
 *    where a type says that it uses SYS_DataTypeMalloc(). Either way they belong to the host.
 *  - A refused text or call leaves the out-parameters of FormatIn as they were. When only the memory for the result is
 *    missing, the type id is written, the length is 0 and the out-buffer is untouched.
 */
#ifndef BGP_DATATYPES_H
#define BGP_DATATYPES_H

#include <stddef.h>
#include <stdint.h>

#if defined(__GNUC__)
#define BGP_DATATYPES_API __attribute__((visibility("default")))
#else
#define BGP_DATATYPES_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* ------------------------------------------------------------------------------------------------ return codes */

#define DT_OK 0u                       /* success */
#define DT_ERR_FAIL 0x801701u          /* refused mode, unreadable text (parsers), failed print, failed raw copy */
#define DT_ERR_NULL_PTR 0x801705u      /* a pointer that the operation needs is null */
#define DT_ERR_NO_MEMORY 0x801706u     /* the host gave no memory for a result */
#define DT_ERR_INVALID_PARAM 0x801707u /* Lua: short buffer or field of the wrong kind; Help: a zero help word */
#define DT_ERR_MODE_UNSUPPORTED                                                                                        \
    0x80170au                          /* format mode above 6, or one that the operation neither serves nor refuses */
#define DT_ERR_LENGTH 0x80170cu        /* Check: not the type's binary length */
#define DT_ERR_INVALID_VALUE 0x80170du /* FormatIn: text refused; Check: value breaks the type's rule */
#define DT_ERR_TYPE_MISMATCH 0x80170fu /* CVRFNAME FormatOut, mode 2: type id or length of another record */
#define DT_ERR_CONVERT 0x801711u       /* CVRFNAME FormatOut, mode 2: no composite form */
#define DT_ERR_TOO_LONG 0x801717u      /* LuaGet of a prefix: a Lua string longer than the text buffer */

/* Type ids that FormatOut reports. */
#define DT_TYPE_TEXT 25u /* NUL-terminated text; the length counts the terminator */
#define DT_TYPE_RAW 6u   /* a copy of the value */

/* ---------------------------------------------------------------------------------------------------- records */

typedef struct lua_State lua_State; /* opaque: reached only through the host's SYSDT_SPTI_ calls */

/* What the host asks for. FormatMode 1, 2 and 6 are text, 3 is the raw copy; the others are refused by most types. */
typedef struct {
    uint8_t FormatMode;
    uint32_t MemoryHandle; /* passed back to the host with every allocation of a result */
} DataTypeRequest;

typedef struct {
    char *Text;
} DataTypeHelpEntry;

/* Prepared by SYSDT_InitHelpInfo(); the library writes Entries[0].Text and nothing else. */
typedef struct {
    uint32_t EntryCount;
    DataTypeHelpEntry *Entries;
} DataTypeHelpInfo;

/* --------------------------------------------------------------------------------------------- operation slots */

/*
 * Text to value. text is NUL-terminated; blanks (space, tab) around it are dropped, however many. typeId and length are
 * not looked at (the AS number list needs length in mode 1). On success *outTypeId, *outLength and *outBuffer hold the
 * type's id, the value's length and the new value.
 */
typedef uint32_t DataTypeFormatInOperation(const DataTypeRequest *request, uint32_t typeId, uint32_t length, char *text,
                                           uint16_t *outTypeId, uint16_t *outLength, void **outBuffer);
/*
 * Value to text (type 25, length with terminator) or, in mode 3, to a raw copy (type 6). When *outBuffer is not null on
 * entry the result is written there and nothing is allocated; the caller vouches for the size (the type's text size).
 */
typedef uint32_t DataTypeFormatOutOperation(const DataTypeRequest *request, uint32_t typeId, uint32_t length,
                                            const void *value, uint16_t *outTypeId, uint16_t *outLength,
                                            void **outBuffer);
/* Is this a value of the type? length is its size in bytes. */
typedef uint32_t DataTypeCheckOperation(const void *context, uint32_t typeId, uint32_t length, const void *value);
/* The accepted syntax as a help text, in modes 1 and 6; both words of helpArgument must be non-zero. */
typedef uint32_t DataTypeHelpOperation(const DataTypeRequest *request, uint32_t typeId, uint32_t length,
                                       const char *typedText, const uint32_t *helpArgument, DataTypeHelpInfo *helpInfo);
/* -1, 0 or 1; which way round, and over which bytes, is the type's own. */
typedef int32_t DataTypeCompareOperation(const void *context, uint32_t length, const void *left, const void *right);
/* Value to a new Lua table, stored as field fieldName of the table at tableIndex. length: bytes at value. */
typedef uint32_t DataTypeLuaSetOperation(lua_State *L, int32_t tableIndex, const char *fieldName, uint32_t typeId,
                                         uint16_t length, const void *value);
/* Field fieldName of the table at tableIndex to a value; on failure part of outValue may have been written. */
typedef uint32_t DataTypeLuaGetOperation(lua_State *L, int32_t tableIndex, const char *fieldName, uint32_t typeId,
                                         uint16_t length, void *outValue);
/* Host order to network order and back, in place. */
typedef uint32_t DataTypeEndianOperation(const void *context, uint32_t typeId, uint32_t length, void *value);

typedef DataTypeFormatInOperation *DataTypeFormatIn;
typedef DataTypeFormatOutOperation *DataTypeFormatOut;
typedef DataTypeCheckOperation *DataTypeCheck;
typedef DataTypeHelpOperation *DataTypeHelp;
typedef DataTypeCompareOperation *DataTypeCompare;
typedef DataTypeLuaSetOperation *DataTypeLuaSet;
typedef DataTypeLuaGetOperation *DataTypeLuaGet;
typedef DataTypeEndianOperation *DataTypeEndian;

/* One data type, as it is registered. A null operation is one that the type does not offer. */
typedef struct {
    uint16_t TypeId;
    uint16_t BinaryLength; /* bytes of a value */
    uint16_t BaseKind;     /* 26 structured, 25 text, 6 plain 4-byte number */
    char Name[18];         /* NUL-padded */
    DataTypeFormatIn FormatIn;
    DataTypeFormatOut FormatOut;
    DataTypeCheck Check;
    DataTypeHelp Help;
    DataTypeCompare Compare;
    void *Reserved; /* always null */
    DataTypeLuaSet LuaSet;
    DataTypeLuaGet LuaGet;
    DataTypeEndian Endian;
} DataTypeDescriptor;

/* One sub-type of a composite type. */
typedef struct {
    uint32_t SubType;
    char Name[20]; /* NUL-padded */
    DataTypeFormatIn FormatIn;
    DataTypeFormatOut FormatOut;
    DataTypeCheck Check;
    DataTypeHelp Help;
    DataTypeCompare Compare;
    DataTypeLuaSet LuaSet;
    DataTypeLuaGet LuaGet;
} BolPrefixSubtypeEntry;

/* Reads the fields of one BOLPREFIX sub-type from the Lua table at tableIndex into an 89-byte value. */
typedef uint32_t BolPrefixLuaReaderOperation(lua_State *L, void *value, int32_t tableIndex);
typedef BolPrefixLuaReaderOperation *BolPrefixLuaReader;
typedef struct {
    uint32_t SubType;
    BolPrefixLuaReader Reader;
} BolPrefixLuaGetEntry;

/* ---------------------------------------------------------------------------------- layouts, for people and tools */

typedef enum {
    BGP_FIELD_NUMBER = 0,  /* Count integers of Width bytes, host order; Endian swaps them */
    BGP_FIELD_BYTES = 1,   /* Count single bytes, network order; never swapped */
    BGP_FIELD_ADDRESS = 2, /* 21 bytes: IPv4 word (host order), 16 IPv6 bytes, family flag (0 IPv4, 1 IPv6) */
    BGP_FIELD_AS = 3,      /* 8 bytes: AS number and notation words, host order */
    BGP_FIELD_TEXT = 4,    /* Count characters, NUL-padded */
    BGP_FIELD_IPV4 = 5     /* 4-byte IPv4 word, first octet most significant, host order; Endian swaps it */
} BgpFieldKind;

/* One field of a stored value. */
typedef struct {
    const char *Name; /* also its key in the Lua table, where the type has one for it */
    uint16_t Offset;  /* bytes from the start of the value */
    uint8_t Width;    /* bytes of one element */
    uint16_t Count;   /* elements; above 1 a Lua array */
    uint8_t Kind;     /* BgpFieldKind */
    uint8_t LuaKeeps; /* bytes of a Lua number that LuaGet keeps (low end first); 0 = Width */
    uint8_t LuaPops;  /* stack slots that LuaGet pops behind this field */
} BgpField;

typedef struct {
    const BgpField *Fields;
    uint32_t FieldCount;
    uint32_t Length; /* bytes of a whole value */
} BgpLayout;

/*
 * The layout of a value: of its type, and for composite types of the sub-type, route type or NLRI type that its first
 * bytes (length of them) name. Null for an unknown type or kind. The same rows drive the type's own operations.
 */
BGP_DATATYPES_API const BgpLayout *Bgp_DescribeValue(uint32_t typeId, const void *value, uint32_t length);

/* ----------------------------------------------------------------------------------------------- registration */

/*
 * The one entry point: registers the name-index rows, then the extended rows. Returns 0 whatever the host answered. A
 * row that the host refuses is reported through ZOL_Assert() ("RegisterDataType Ret:%u" or "RegisterDataTypeExt
 * Ret:%u") and the walk goes on.
 */
BGP_DATATYPES_API uint32_t Bgp_InitDataType(uint32_t handle);

/* The two walks of Bgp_InitDataType(); each returns the host's answer to its last row. */
BGP_DATATYPES_API uint32_t BGP_RegisterDataType(uint32_t handle);
BGP_DATATYPES_API uint32_t BGP_RegisterExtendDataType(uint32_t handle);

#define BGP_NAME_INDEX_ROWS 9
#define BGP_EXTEND_ROWS 26
BGP_DATATYPES_API extern const DataTypeDescriptor g_astBgpDataTypeNameIndexDefineTbl[BGP_NAME_INDEX_ROWS];
BGP_DATATYPES_API extern const DataTypeDescriptor g_astBgpDataTypeExtendDefineTbl[BGP_EXTEND_ROWS];

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
/* An IPv6 address when the text holds ":", else an IPv4 one. 0, or DT_ERR_FAIL. */
BGP_DATATYPES_API uint32_t SYSDT_Str2IPv4IPv6(const char *text, BgpAddressRecord *record);
/* The same choice; a bad IPv6 text gives DT_ERR_INVALID_PARAM, a bad IPv4 text DT_ERR_FAIL. */
BGP_DATATYPES_API uint32_t SYSDT_Str2SysIpv4Ipv6(const char *text, uint32_t reserved, BgpAddressRecord *record);
/* The same choice into two places; the host parser's own result comes back. */
BGP_DATATYPES_API uint32_t SYSDT_Str2Ipv4Ipv6(const char *text, uint32_t *ipv4, uint8_t *ipv6);

/* ------------------------------------------------------------------------------------- CVRFNAME and TIME_RANGE */

/*
 * CVRFNAME: a VRF name, a text type of the host. Mode 2 turns the 40-byte record (name[32], number u32, kind u32) into
 * items {u16 type, u16 length with NUL, text}: {1, number} when kind is 1, then {0, name}. It reports type 292.
 */
BGP_DATATYPES_API DataTypeFormatOutOperation SYS_DT_APPCVRFNAME_FormatOut;
/* The composite form of a 40-byte record into buffer (47 bytes suffice). 0, 0xFFFFFFFF for a null record, DT_ERR_FAIL.
 */
BGP_DATATYPES_API uint32_t SYS_DT_CVrfName_Str2Cplx(const void *record, uint16_t *outLength, void *buffer);

/* TIME_RANGE: seconds (u32, host order), typed as days, hours, minutes, seconds: "1d2h3m4s" is 93784. */
BGP_DATATYPES_API uint32_t SYSDT_Str2TimeRange(const char *text, uint32_t *seconds);
BGP_DATATYPES_API DataTypeFormatInOperation SYSDT_TimeRangeFormatIn;
BGP_DATATYPES_API DataTypeHelpOperation SYSDT_TimeRangeHelp;
BGP_DATATYPES_API DataTypeLuaSetOperation SYSDT_TimeRangeLuaSet;
BGP_DATATYPES_API DataTypeLuaGetOperation SYSDT_TimeRangeLuaGet;

/* ------------------------------------------------------------------------------------------------- AS numbers */

/* ASNUM, ASNUMEXT: AS number u32, notation u32 (0 plain, else dotted), host order. RFC 6793; asdot of RFC 5396. */
BGP_DATATYPES_API uint32_t SYSDT_Str2AsNum(const char *text, void *value);    /* 8 bytes; 0 is refused */
BGP_DATATYPES_API uint32_t SYSDT_Str2AsNumExt(const char *text, void *value); /* 8 bytes; 0 is accepted */
BGP_DATATYPES_API DataTypeFormatInOperation SYSDT_AsNumFormatIn, SYSDT_AsNumExtFormatIn;
BGP_DATATYPES_API DataTypeFormatOutOperation SYSDT_AsNumFormatOut, SYSDT_AsNumExtFormatOut;
BGP_DATATYPES_API DataTypeCheckOperation SYSDT_AsNumCheck, SYSDT_AsNumExtCheck;
BGP_DATATYPES_API DataTypeHelpOperation SYSDT_AsNumHelp;
BGP_DATATYPES_API DataTypeLuaSetOperation SYSDT_AsNumLuaSet;
BGP_DATATYPES_API DataTypeLuaGetOperation SYSDT_AsNumLuaGet;
BGP_DATATYPES_API DataTypeEndianOperation SYSDT_AsNumLuaEndian;

/* ------------------------------------------------------------------- route keys: the composite and its address field */

/*
 * BOLPREFIX (type 279): the route key of any BGP address family, 89 bytes: sub-type word u32 (0 to 16, host order), then
 * the sub-type's payload, zero behind it. The tables are indexed by the sub-type word; a null operation is one that the
 * sub-type does not offer (a null FormatIn: it can be printed but not typed).
 */
#define BOL_PREFIX_SUBTYPES 17
BGP_DATATYPES_API extern const BolPrefixSubtypeEntry g_astBOL_PREFIX_ProcTable[BOL_PREFIX_SUBTYPES];
BGP_DATATYPES_API extern const BolPrefixLuaGetEntry g_astBOL_PREFIX_LuaGetTable[BOL_PREFIX_SUBTYPES];

/*
 * The item on top of the Lua stack into a 21-byte address field (IPv4 word u32, 16 IPv6 bytes, family u8). kind 0: a
 * number, which stays on the stack; kind 1: an array of 16 numbers, which is popped; any other kind reads and writes
 * nothing. 0, DT_ERR_NULL_PTR, or DT_ERR_INVALID_PARAM for an item of the wrong kind.
 */
BGP_DATATYPES_API uint32_t SYSDT_BolPrefixLuaParseToIPv4IPv6(lua_State *L, uint32_t kind, void *block);

/*
 * The operations of the composite. FormatIn, Check, Help and Compare offer the call to every row in order; the first
 * that returns 0 wins, and DT_ERR_INVALID_VALUE says that none did (Compare: the values are not equal; no order is
 * ever told). Check needs a context. FormatOut, LuaSet and LuaGet go to the row of the sub-type word; any failure of
 * the row, and a word above 16, is DT_ERR_INVALID_VALUE. LuaGet takes the sub-type from the Lua field "bolType".
 */
BGP_DATATYPES_API DataTypeFormatInOperation SYSDT_BolPrefixFormatIn;
BGP_DATATYPES_API DataTypeFormatOutOperation SYSDT_BolPrefixFormatOut;
BGP_DATATYPES_API DataTypeCheckOperation SYSDT_BolPrefixCheck;
BGP_DATATYPES_API DataTypeHelpOperation SYSDT_BolPrefixHelp;
BGP_DATATYPES_API DataTypeCompareOperation SYSDT_BolPrefixCompare;
BGP_DATATYPES_API DataTypeLuaSetOperation SYSDT_BolPrefixLuaSet;
BGP_DATATYPES_API DataTypeLuaGetOperation SYSDT_BolPrefixLuaGet;

/* Sub-type 15, "IPV6": an IPv6 address, 16 bytes at 4. Text in modes 0, 1, 2, 3, 5 and 6, both ways. */
BGP_DATATYPES_API DataTypeFormatInOperation SYSDT_Ipv6BolPrefixFormatIn;
BGP_DATATYPES_API DataTypeFormatOutOperation SYSDT_Ipv6BolPrefixFormatOut;
BGP_DATATYPES_API DataTypeLuaSetOperation SYSDT_Ipv6BolPrefixLuaSet;
BGP_DATATYPES_API BolPrefixLuaReaderOperation SYSDT_Ipv6BolPrefixNewLuaGet;
/* Bytes 4-19 of a value as IPv6 text into a buffer of 256 or more. 0, or DT_ERR_FAIL. */
BGP_DATATYPES_API uint32_t SYSDT_Ipv6Prefix2Str(const void *value, char *buffer, uint32_t *printed);

/* ------------------------------------------------------------------------------------------------ EVPN route keys */

/*
 * Sub-type 1, "EVN", and the type EVNPREFIX: the key of an EVPN route (RFC 7432, RFC 9136, RFC 9251), 89 bytes: sub-type
 * word u32 (1), route type u8 (1 to 8), and the route's fields, which Bgp_DescribeValue() lists. FormatIn reports type
 * 279 and length 89 for both. Text in modes 0, 1, 2, 3, 5 and 6, both ways; FormatIn refuses with
 * DT_ERR_INVALID_PARAM. Compare returns DT_ERR_FAIL for values that are not of one route type; where it orders, two
 * routes that differ only in what a route type leaves out of its order (an ESI, an address) compare equal.
 */
BGP_DATATYPES_API DataTypeFormatInOperation SYSDT_EVNPrefixFormatIn;
BGP_DATATYPES_API DataTypeFormatOutOperation SYSDT_EVNPrefixFormatOut;
BGP_DATATYPES_API DataTypeCheckOperation SYSDT_EVNPrefixCheck;
BGP_DATATYPES_API DataTypeHelpOperation SYSDT_EVNPrefixHelp;
BGP_DATATYPES_API DataTypeCompareOperation SYSDT_EVNPrefixCompare;
BGP_DATATYPES_API DataTypeLuaSetOperation SYSDT_EVNPrefixLuaSet;
BGP_DATATYPES_API DataTypeLuaGetOperation SYSDT_EVNPrefixLuaGet;
BGP_DATATYPES_API BolPrefixLuaReaderOperation SYSDT_EVNPrefixNewLuaGet;

/*
 * A route text into a zeroed 89-byte value, all but its sub-type word. checkMode other than 1 also checks the ESI type
 * (EsiTypeCheck). 0, DT_ERR_NULL_PTR, or DT_ERR_FAIL with part of the value possibly filled.
 */
BGP_DATATYPES_API uint32_t SYSDT_Str2EvnPrefix(const char *text, void *value, uint32_t checkMode);
/* The text of a value by its route type, into a buffer of 256 or more. 0, or DT_ERR_FAIL. */
BGP_DATATYPES_API uint32_t SYSDT_EvnPrefix2Str(const void *value, char *buffer, uint32_t *printed);

/* Its parsers, one per route type: trimmed text to value, the same codes. */
BGP_DATATYPES_API uint32_t SYSDT_Str2Ad(const char *text, void *value, uint32_t checkMode);  /* 1: ESI:tag */
BGP_DATATYPES_API uint32_t SYSDT_Str2EvnMac(const char *text, void *value);                  /* 2: tag:len:MAC:len:IP */
BGP_DATATYPES_API uint32_t SYSDT_Str2Inclusive(const char *text, void *value);               /* 3: tag:len:IP */
BGP_DATATYPES_API uint32_t SYSDT_Str2Es(const char *text, void *value, uint32_t checkMode);  /* 4: ESI:len:IP */
BGP_DATATYPES_API uint32_t SYSDT_Str2IpPrefix(const char *text, void *value);                /* 5: tag:IPv4:len */
BGP_DATATYPES_API uint32_t SYSDT_Str2Ipv6Prefix(const char *text, void *value);              /* 5: tag:[IPv6]:len */
BGP_DATATYPES_API uint32_t SYSDT_Str2EvpnSmetRoute(const char *text, void *value);           /* 6 */
BGP_DATATYPES_API uint32_t SYSDT_Str2EvpnJoinRoute(const char *text, void *value);           /* 7 */
BGP_DATATYPES_API uint32_t SYSDT_Str2EvpnLeaveRoute(const char *text, void *value);          /* 8 */
/* 6, 7 or 8 by the number of colons outside brackets: 6, 7 or 8. */
BGP_DATATYPES_API uint32_t SYSDT_Str2EvpnMcRoute(const char *text, void *value, uint32_t colons);
/* "len:[address]" to 16 bytes and a length of at most 128; nothing may follow. */
BGP_DATATYPES_API uint32_t SYSDT_Str2EvpnIpv6(const char *text, uint8_t *ipv6, uint8_t *length);

/*
 * Readers of one field of a multicast route at *cursor. A field ends at the next ":", the last one with the text; the
 * cursor is left there. SYSDT_Str2EvpnIpAddr fills a 21-byte address field, SYSDT_Str2EvpnEsi 10 bytes.
 */
BGP_DATATYPES_API uint32_t SYSDT_Str2EvpnUintNum(const char **cursor, uint32_t *result, uint32_t maxChars, uint32_t min,
                                                 uint32_t max, uint32_t isLast);
BGP_DATATYPES_API uint32_t SYSDT_Str2EvpnIpAddr(const char **cursor, void *field, uint32_t isLast);
BGP_DATATYPES_API uint32_t SYSDT_Str2EvpnEsi(const char **cursor, void *esi, uint32_t isLast);

/*
 * An ESI of 24 characters, "xxxx.xxxx.xxxx.xxxx.xxxx", to 10 bytes; all zeros and all ones are refused. checkMode other
 * than 1 admits the ESI types 00 and 01 (with flag 0 only 00), respectively 00 to 05. 0, DT_ERR_NULL_PTR, DT_ERR_FAIL.
 */
BGP_DATATYPES_API uint32_t SYSDT_Str2EsiBas(const char *text, void *esi, uint32_t flag, uint32_t checkMode);
BGP_DATATYPES_API uint32_t SYSDT_Str2EsiForAd(const char *text, void *esi, uint32_t flag, uint32_t checkMode);

/* The orders of multicast routes, on two values from their fourth byte on (the route type). */
BGP_DATATYPES_API int32_t SYSDT_EVPN_SmetCompare(const void *left, const void *right);
BGP_DATATYPES_API int32_t SYSDT_EVPN_JoinCompare(const void *left, const void *right);
BGP_DATATYPES_API int32_t SYSDT_EVPN_LeaveCompare(const void *left, const void *right);

#ifdef __cplusplus
}
#endif

#endif
