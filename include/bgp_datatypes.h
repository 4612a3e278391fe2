/*
 * bgp_datatypes.h - the BGP data types of a router's management plane, as one plug-in.
 *
 * A management plane (the host) keeps configuration and state as typed values. Every type is a row of operations: text
 * to value, value to text, check, help, compare, to and from Lua, byte order. The host loads this library, calls
 * Bgp_InitDataType() once with its registration handle, and receives 35 rows through SYS_Drm_RegisterDataType(). From
 * then on it calls the operations through the rows, from any thread, without locks: the library keeps no state of its
 * own.
 *
 * README.md has a whole program that embeds the library, and bgp_host_services.h what a host supplies.
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
    BGP_FIELD_IPV4 = 5,    /* 4-byte IPv4 word, first octet most significant, host order; Endian swaps it */
    /* 50 bytes, network order, never swapped: an IGP router id, read by the number in the value's field "uiProtocolId".
       1, 2 (IS-IS): system id (6) and pseudonode (1). 3, 6 (OSPF): router id (4) and a second address (4), zero when
       there is none. Zero bytes behind it. */
    BGP_FIELD_IGP_ID = 6
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
    uint32_t Length; /* bytes of a whole value; of the lists (ASNUM_ENHANCE, CMNTY_ENHANCE) the 5 of one entry, of
                        which a value holds as many as its length tells */
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
/*
 * The same rules for a text whose dots are counted: dotCount 0 is plain ("%llu"), 1 dotted ("%u.%llu"); what stands
 * behind the number is ignored. The scan leaves the high part (dotted only) and the low part or whole number in *high
 * and *low, in range or not. 0, or DT_ERR_FAIL with value untouched. SetAsType refuses 0, ToAsType accepts it.
 */
BGP_DATATYPES_API uint32_t SYSDT_Str2AsNumSetAsType(uint32_t dotCount, const char *text, uint32_t *high, uint64_t *low,
                                                    void *value);
BGP_DATATYPES_API uint32_t SYSDT_Str2AsNumToAsType(uint32_t dotCount, const char *text, uint32_t *high, uint64_t *low,
                                                   void *value);
BGP_DATATYPES_API DataTypeFormatInOperation SYSDT_AsNumFormatIn, SYSDT_AsNumExtFormatIn;
BGP_DATATYPES_API DataTypeFormatOutOperation SYSDT_AsNumFormatOut, SYSDT_AsNumExtFormatOut;
BGP_DATATYPES_API DataTypeCheckOperation SYSDT_AsNumCheck, SYSDT_AsNumExtCheck;
BGP_DATATYPES_API DataTypeHelpOperation SYSDT_AsNumHelp;
BGP_DATATYPES_API DataTypeLuaSetOperation SYSDT_AsNumLuaSet;
BGP_DATATYPES_API DataTypeLuaGetOperation SYSDT_AsNumLuaGet;
BGP_DATATYPES_API DataTypeEndianOperation SYSDT_AsNumLuaEndian;

/*
 * ASNUM_ENHANCE: 256 packed entries of AS number u32 (host order, 0 unused) and notation u8. Items have blanks between,
 * 3071 characters at most. In mode 1 FormatIn wants the text in double quotes and a length argument (the text with its
 * terminator) of 3 or more, else DT_ERR_MODE_UNSUPPORTED, and overwrites the closing quote: it is the only operation
 * that writes to its text. LuaGet takes what is missing as 0.
 */
/* The entries that are typed, from the first; the others stay. 0, DT_ERR_NULL_PTR, or DT_ERR_FAIL with part written. */
BGP_DATATYPES_API uint32_t SYSDT_Str2AsNumEnhance(const char *text, void *value); /* 1280 bytes */
BGP_DATATYPES_API DataTypeFormatInOperation SYSDT_AsNumEnhanceFormatIn;
BGP_DATATYPES_API DataTypeFormatOutOperation SYSDT_AsNumEnhanceFormatOut; /* text size 3072 */
BGP_DATATYPES_API DataTypeCheckOperation SYSDT_AsNumEnhanceCheck;
BGP_DATATYPES_API DataTypeHelpOperation SYSDT_AsNumEnhanceHelp;
BGP_DATATYPES_API DataTypeLuaSetOperation SYSDT_AsNumEnLuaSet;
BGP_DATATYPES_API DataTypeLuaGetOperation SYSDT_AsNumEnLuaGet;
BGP_DATATYPES_API DataTypeEndianOperation SYSDT_AsNumEnhanceLuaEndian;

/* ------------------------------------------------------------------------------ communities and attribute sets */

/*
 * COMMUNITY: community u32, form u32 (0 number or name, 1 halves "100:1", 2 unset), host order. RFC 1997. Names in any
 * case: "internet" (0), "no-export", "no-advertise", "no-export-subconfed". A value that has a name prints as the name;
 * another with a form above 1 does not print (DT_ERR_INVALID_VALUE, the buffer is handed over).
 */
/* 8 bytes. The look-up of names takes a copy from the handle and frees it. 0, DT_ERR_NULL_PTR, DT_ERR_NO_MEMORY, or
 * DT_ERR_FAIL with nothing written. */
BGP_DATATYPES_API uint32_t SYSDT_Str2Community(uint32_t memoryHandle, const char *text, void *value);
/* A name of textLength characters, in any case, to its value. 0, DT_ERR_NO_MEMORY or DT_ERR_FAIL. */
BGP_DATATYPES_API uint32_t BRM_GetWellKnownCmyVal(uint32_t memoryHandle, uint32_t textLength, uint32_t *community,
                                                  const char *text);
/*
 * The text of an 8-byte value by its form, whether or not it has a name, into a buffer of 32 or more. On failure
 * (DT_ERR_INVALID_VALUE for another form, DT_ERR_FAIL) *outBuffer becomes buffer.
 */
BGP_DATATYPES_API uint32_t SYSDT_FormatNoWellKnowCmy(uint32_t *printed, char *buffer, void **outBuffer,
                                                     const void *value);
BGP_DATATYPES_API DataTypeFormatInOperation SYSDT_CommunityFormatIn;
BGP_DATATYPES_API DataTypeFormatOutOperation SYSDT_CommunityFormatOut; /* text size 33 */
BGP_DATATYPES_API DataTypeCheckOperation SYSDT_CommunityCheck;
BGP_DATATYPES_API DataTypeHelpOperation SYSDT_CommunityHelp;
BGP_DATATYPES_API DataTypeCompareOperation SYSDT_CommunityCompare;
BGP_DATATYPES_API DataTypeLuaSetOperation SYSDT_CommunityLuaSet;
BGP_DATATYPES_API DataTypeLuaGetOperation SYSDT_CommunityLuaGet;
BGP_DATATYPES_API DataTypeEndianOperation SYSDT_CommunityEndian;

/*
 * CMNTY_ENHANCE: 32 packed entries of community u32 (host order) and form u8 (2 unused), typed like COMMUNITY with
 * blanks between, 392 characters at most. FormatIn parses in every mode but 4. LuaGet takes missing fields as 0.
 */
/* 160 bytes. 0, DT_ERR_NULL_PTR, or DT_ERR_FAIL with part of the value written. */
BGP_DATATYPES_API uint32_t SYSDT_Str2CmntyEnhance(uint32_t memoryHandle, const char *text, void *value);
BGP_DATATYPES_API DataTypeFormatInOperation SYSDT_CMNTYEnhanceFormatIn;
BGP_DATATYPES_API DataTypeFormatOutOperation SYSDT_CMNTYEnhanceFormatOut; /* text size 393 */
BGP_DATATYPES_API DataTypeCheckOperation SYSDT_CMNTYEnhanceCheck;
BGP_DATATYPES_API DataTypeHelpOperation SYSDT_CMNTYEnhanceHelp;
BGP_DATATYPES_API DataTypeLuaSetOperation SYSDT_CmntyEnLuaSet;
BGP_DATATYPES_API DataTypeLuaGetOperation SYSDT_CmntyEnLuaGet;
BGP_DATATYPES_API DataTypeEndianOperation SYSDT_CmntyEnhanceLuaEndian;

/*
 * LARGECOMMUNITY: three numbers u32 and a type u32 (0 when typed), host order; "64496:1:2". RFC 8092. FormatIn parses
 * in modes 1 and 2, FormatOut prints in every mode but 4, Help answers in mode 1.
 */
BGP_DATATYPES_API uint32_t SYSDT_Str2LargeCommunity(const char *text, void *value); /* 16 bytes; 0, NULL_PTR or FAIL */
BGP_DATATYPES_API DataTypeFormatInOperation SYSDT_LargeCommunityFormatIn;
BGP_DATATYPES_API DataTypeFormatOutOperation SYSDT_LargeCommunityFormatOut; /* text size 257 */
BGP_DATATYPES_API DataTypeCheckOperation SYSDT_LargeCommunityCheck;
BGP_DATATYPES_API DataTypeHelpOperation SYSDT_LargeCommunityHelp;
BGP_DATATYPES_API DataTypeCompareOperation SYSDT_LargeCommunityCompare;
BGP_DATATYPES_API DataTypeLuaSetOperation SYSDT_LargeCommunityLuaSet;
BGP_DATATYPES_API DataTypeLuaGetOperation SYSDT_LargeCommunityLuaGet;
BGP_DATATYPES_API DataTypeEndianOperation SYSDT_LargeCommunityEndian;

/* EXTCOMMUNITY_BW: bit mask u16, AS number u16 (23456 prints "as-trans"), bandwidth u64 (0 prints ""), host order. */
BGP_DATATYPES_API DataTypeFormatOutOperation SYSDT_ExtCommunityBwFormatOut; /* text size 257 */
BGP_DATATYPES_API DataTypeCheckOperation SYSDT_ExtCommunityBwCheck;
BGP_DATATYPES_API DataTypeHelpOperation SYSDT_ExtCommunityBwHelp;
BGP_DATATYPES_API DataTypeCompareOperation SYSDT_ExtCommunityBwCompare;
BGP_DATATYPES_API DataTypeLuaSetOperation SYSDT_ExtCommunityBwLuaSet;
BGP_DATATYPES_API DataTypeLuaGetOperation SYSDT_ExtCommunityBwLuaGet;
BGP_DATATYPES_API DataTypeEndianOperation SYSDT_EXTCommunityBwEndian;

/*
 * EXTCMNTY_COMPR: type u16 (0x8099), cpi u16, reserved u32 (0), host order; "100:0". A value of another type prints
 * nothing: length 1, the buffer not written. Compare is that of EXTCOMMUNITY.
 */
BGP_DATATYPES_API uint32_t SYSDT_Str2ExtCommunityCompr(const char *text, void *value); /* 8 bytes; 0, NULL_PTR, FAIL */
BGP_DATATYPES_API DataTypeFormatInOperation SYSDT_ExtCommunityComprFormatIn;
BGP_DATATYPES_API DataTypeFormatOutOperation SYSDT_ExtCommunityComprFormatOut; /* text size 257 */
BGP_DATATYPES_API DataTypeCheckOperation SYSDT_ExtCommunityComprCheck;
BGP_DATATYPES_API DataTypeHelpOperation SYSDT_ExtCommunityComprHelp;
BGP_DATATYPES_API DataTypeLuaSetOperation SYSDT_ExtCommunityComprLuaSet;
BGP_DATATYPES_API DataTypeLuaGetOperation SYSDT_ExtCommunityComprLuaGet;
BGP_DATATYPES_API DataTypeEndianOperation SYSDT_EXTCommunityComprEndian;

/*
 * ATTRIDBITMAP: a set of path attribute type codes (RFC 4271), 32 bytes, code i at bit i % 8 of byte i / 8.
 *
 * FormatOut does not take the set but a list of items: their number u16 at byte 24, the items from byte 44 on, each
 * type u16, length u16 (host order), data. Item 1 is a text (25), the template; item 2 the set (290); the others
 * fill the template's printf conversions in order: numbers (2, 4, 6: u8, u16, u32), texts (25), addresses (21 IPv4
 * word, 22 IPv6, 38 address field). A conversion that does not fit its item, and what stands around it up to the next,
 * prints nothing. The filled template begins each line; "###" in it ends that and begins what stands behind each line.
 * Lines hold up to ten runs of codes ("1 to 3") and end in CR LF; 4095 characters at most. Modes 0, 1, 5 and 6 print;
 * 2 and 3 return 0 and touch nothing. Where nothing can be printed the buffer holds an empty text, type and length
 * are 0, and the code is 0 all the same. The length argument is not looked at: the list has to be whole.
 */
BGP_DATATYPES_API DataTypeFormatOutOperation SYSDT_AttrIdBitmapFormatOut; /* text size 4096 */
BGP_DATATYPES_API DataTypeCheckOperation SYSDT_AttrIdBitmapCheck;
BGP_DATATYPES_API DataTypeHelpOperation SYSDT_AttrIdBitmapHelp;
BGP_DATATYPES_API DataTypeCompareOperation SYSDT_AttrIdBitmapCompare;
BGP_DATATYPES_API DataTypeLuaSetOperation SYSDT_AttrIdBitmapLuaSet;
BGP_DATATYPES_API DataTypeLuaGetOperation SYSDT_AttrIdBitmapLuaGet;
BGP_DATATYPES_API DataTypeEndianOperation SYSDT_AttrIdBitmapEndian; /* swaps nothing */

/* ------------------------------------------------------------------ route distinguishers, route targets, VPN ids */

/*
 * An administrator and a number that it assigned, in one of four notations, which the value remembers so that it prints
 * back as typed. Each number may be as large as the bytes that hold it.
 *
 *     0  a.b.c.d:n  IPv4 address, n up to 65535
 *     1  AS:n       AS up to 65535, n up to 4294967295
 *     2  AS:n       AS from 65536 to 4294967295, n up to 65535
 *     3  x.y:n      4-byte AS number in two halves (asdot), n up to 65535
 *
 * Texts have 1 to 21 characters; leading zeros are accepted. A value whose notation does not belong to its kind prints
 * nothing: the operation succeeds, and not even a terminator is written. A value of unknown kind gives DT_ERR_FAIL and
 * hands over the buffer. Printing in mode 3 gives text too, reported as type 6 and without counting the terminator.
 */

/*
 * VRFRD: a route distinguisher (RFC 4364). RD type u16 (0 AS, 1 IPv4, 2 4-byte AS) and value[6], network order;
 * notation u32, host order. 0:0 and 0.0:0 are refused. An all-zero one prints as the empty text in mode 2.
 */
BGP_DATATYPES_API uint32_t SYSDT_Str2VrfRd(const char *text, void *value); /* 12 bytes; 0, NULL_PTR or FAIL */
/* The three words of a value as they lie in memory; buffer of 256. *printed is 0 when nothing is printed. 0 or FAIL. */
BGP_DATATYPES_API uint32_t SYSDT_VrfRd2Str(uint32_t word0, uint32_t word1, uint32_t word2, uint32_t *printed,
                                           char *buffer);
/* 0 when the eight bytes of a distinguisher or target are all zero, else 1 (in spite of the name). */
BGP_DATATYPES_API uint32_t SYSDT_IsInValidRdOrRt(const void *eight);
BGP_DATATYPES_API DataTypeFormatInOperation SYSDT_VrfRdFormatIn;
BGP_DATATYPES_API DataTypeFormatOutOperation SYSDT_VrfRdFormatOut;
/* FormatOut for callers without a type id and length. */
BGP_DATATYPES_API uint32_t SYSDT_VrfRdFormatOutEx(const DataTypeRequest *request, const void *value,
                                                  uint16_t *outTypeId, uint16_t *outLength, void **outBuffer);
BGP_DATATYPES_API DataTypeCheckOperation SYSDT_VrfRdCheck;
BGP_DATATYPES_API DataTypeHelpOperation SYSDT_VrfRdHelp;
BGP_DATATYPES_API DataTypeCompareOperation SYSDT_VrfRdCompare;
BGP_DATATYPES_API DataTypeLuaSetOperation SYSDT_VrfRdLuaSet;
BGP_DATATYPES_API DataTypeLuaGetOperation SYSDT_VrfRdLuaGet;
BGP_DATATYPES_API DataTypeEndianOperation SYSDT_VrfRdEndian;

/*
 * VRFRT: a route target (RFC 4360, RFC 5668). Type and sub-type (0002 AS, 0102 IPv4, 0202 4-byte AS) and value[6],
 * network order; notation u32, host order. 0:0 and 0.0:0 are refused. An all-zero one prints as the empty text in mode
 * 2, and in no other.
 */
BGP_DATATYPES_API uint32_t SYSDT_Str2VrfRt(const char *text, void *value); /* 12 bytes; 0, NULL_PTR or FAIL */
BGP_DATATYPES_API DataTypeFormatInOperation SYSDT_VrfRtFormatIn;
BGP_DATATYPES_API DataTypeFormatOutOperation SYSDT_VrfRtFormatOut;
BGP_DATATYPES_API DataTypeCheckOperation SYSDT_VrfRtCheck;
BGP_DATATYPES_API DataTypeHelpOperation SYSDT_VrfRtHelp;
BGP_DATATYPES_API DataTypeCompareOperation SYSDT_VrfRtCompare;
BGP_DATATYPES_API DataTypeLuaSetOperation SYSDT_VrfRtLuaSet;
BGP_DATATYPES_API DataTypeLuaGetOperation SYSDT_VrfRtLuaGet;
BGP_DATATYPES_API DataTypeEndianOperation SYSDT_VrfRtEndian;

/*
 * VRFRTV6: an IPv6-address-specific route target (RFC 5701), "2001:db8::1.1". Kind[2], address[16] and number u16,
 * network order; notation u32, host order. The number is 0 or 1 when typed. FormatOut reads a short value as if zeros
 * followed, and finds no memory (DT_ERR_NO_MEMORY) for a request whose memory handle is 0.
 */
BGP_DATATYPES_API uint32_t SYSDT_Str2VrfRtV6(const char *text, void *value); /* 24 bytes; 0, NULL_PTR, INVALID_PARAM */
/* Fills an empty slot with `size` bytes of the handle's memory, if there is any; not for a handle or size of 0. */
BGP_DATATYPES_API void SYSDT_VrfRtV6FormatOutGetMem(void **outBuffer, uint32_t memoryHandle, uint32_t size);
BGP_DATATYPES_API DataTypeFormatInOperation SYSDT_VrfRtV6FormatIn;
BGP_DATATYPES_API DataTypeFormatOutOperation SYSDT_VrfRtV6FormatOut;
BGP_DATATYPES_API DataTypeCheckOperation SYSDT_VrfRtV6Check;
BGP_DATATYPES_API DataTypeHelpOperation SYSDT_VrfRtV6Help;
BGP_DATATYPES_API DataTypeCompareOperation SYSDT_VrfRtV6Compare;
BGP_DATATYPES_API DataTypeLuaSetOperation SYSDT_VrfRtV6LuaSet;
BGP_DATATYPES_API DataTypeLuaGetOperation SYSDT_VrfRtV6LuaGet;
BGP_DATATYPES_API DataTypeEndianOperation SYSDT_VrfRtV6Endian;

/*
 * BOLRD: the route distinguisher of a VPLS instance. Sub-type u32 (0, host order), then a VRFRD value. The dispatching
 * operations turn any answer of the row other than 0 into DT_ERR_INVALID_VALUE, so Compare tells equal from different
 * and no more. All modes but 4 parse and print.
 */
#define BOL_RD_SUBTYPES 1
BGP_DATATYPES_API extern const BolPrefixSubtypeEntry g_astBOL_RD_ProcTable[BOL_RD_SUBTYPES];
BGP_DATATYPES_API DataTypeFormatInOperation SYSDT_BolRdFormatIn, SYSDT_VplsRDFormatIn;
BGP_DATATYPES_API DataTypeFormatOutOperation SYSDT_BolRdFormatOut, SYSDT_VplsRDFormatOut;
BGP_DATATYPES_API DataTypeCheckOperation SYSDT_BolRdCheck, SYSDT_VplsRDCheck;
BGP_DATATYPES_API DataTypeHelpOperation SYSDT_BolRdHelp, SYSDT_VplsRDHelp;
BGP_DATATYPES_API DataTypeCompareOperation SYSDT_BolRdCompare, SYSDT_VplsRDCompare;
BGP_DATATYPES_API DataTypeLuaSetOperation SYSDT_BolRdLuaSet, SYSDT_VplsRDLuaSet;
BGP_DATATYPES_API DataTypeLuaGetOperation SYSDT_BolRdLuaGet, SYSDT_VplsRDLuaGet;

/*
 * RTPRD: a route distinguisher as a policy matches it; the number may be "*". RD type u16 and value[6], network order;
 * notation u8 (VRFRD's plus one); wildcard u8. 0:0 is accepted. Text in modes 1, 2 and 6 only.
 */
BGP_DATATYPES_API uint32_t SYSDT_Str2RtpRd(const char *text, void *value); /* 10 bytes; 0, NULL_PTR or FAIL */
BGP_DATATYPES_API DataTypeFormatInOperation SYSDT_RtpRdFormatIn;
BGP_DATATYPES_API DataTypeFormatOutOperation SYSDT_RtpRdFormatOut;
BGP_DATATYPES_API DataTypeCheckOperation SYSDT_RtpRdCheck;
BGP_DATATYPES_API DataTypeHelpOperation SYSDT_RtpRdHelp;
BGP_DATATYPES_API DataTypeCompareOperation SYSDT_RtpRdCompare;
BGP_DATATYPES_API DataTypeLuaSetOperation SYSDT_RtpRdLuaSet;
BGP_DATATYPES_API DataTypeLuaGetOperation SYSDT_RtpRdLuaGet;

/*
 * VPNID: a VPN identifier (RFC 2685). OUI u32 (24 bits when typed), VPN index u32, host order; typed as two lower-case
 * hexadecimal numbers, "1a2b3c:10", not both 0. Results come from SYS_DataTypeMalloc(). Compare is the other way round:
 * 1 when left is the smaller.
 */
BGP_DATATYPES_API uint32_t SYSDT_Str2VpnId(const char *text, void *value); /* 8 bytes; 0, NULL_PTR or FAIL */
BGP_DATATYPES_API uint32_t SYSDT_VpnId2Str(uint32_t oui, uint32_t index, uint32_t *printed, char *buffer); /* 0 */
BGP_DATATYPES_API DataTypeFormatInOperation SYSDT_VpnIdFormatIn;
BGP_DATATYPES_API DataTypeFormatOutOperation SYSDT_VpnIdFormatOut;
BGP_DATATYPES_API DataTypeCheckOperation SYSDT_VpnIdCheck;
BGP_DATATYPES_API DataTypeHelpOperation SYSDT_VpnIdHelp;
BGP_DATATYPES_API DataTypeCompareOperation SYSDT_VpnIdCompare;
BGP_DATATYPES_API DataTypeLuaSetOperation SYSDT_VpnIdLuaSet;
BGP_DATATYPES_API DataTypeLuaGetOperation SYSDT_VpnIdLuaGet;
BGP_DATATYPES_API DataTypeEndianOperation SYSDT_VpnIdEndian;

/*
 * SID_STRUCTURE: the structure of an SRv6 SID (RFC 9252), six lengths u8 in bits and a flag u8, 1 when there is one.
 * It prints as "32-16-16-0-0-0", or "-" for none, in every mode but 4. FormatOut reads a short value as if zeros
 * followed.
 */
/* 0, or DT_ERR_LENGTH when printing fails; buffer of 256. */
BGP_DATATYPES_API uint32_t SYSDT_PrefixSidStruct2Str(const void *value, char *buffer, uint32_t *printed);
BGP_DATATYPES_API DataTypeFormatOutOperation SYSDT_PrefixSidStructureFormatOut;
BGP_DATATYPES_API DataTypeLuaSetOperation SYSDT_PrefixSidStructureLuaSet;

/* ------------------------------------------------------------------------- extended community and site of origin */

/*
 * EXTCOMMUNITY: an extended community (RFC 4360). Type u8, sub-type u8, value[6], network order; form u32, host order:
 * the notation of a route target. Route targets can be typed, as VRFRT's, with 0:0 and 0.0:0 accepted; route origins,
 * OSPF kinds and bandwidth print too. There is no raw copy. A kind that cannot be printed gives DT_ERR_FAIL and no
 * buffer.
 */
BGP_DATATYPES_API uint32_t SYSDT_Str2ExtCommunity(const char *text, void *value); /* 12 bytes; 0, NULL_PTR or FAIL */
BGP_DATATYPES_API DataTypeFormatInOperation SYSDT_ExtCommunityFormatIn;
BGP_DATATYPES_API DataTypeFormatOutOperation SYSDT_ExtCommunityFormatOut;
BGP_DATATYPES_API DataTypeCheckOperation SYSDT_ExtCommunityCheck;
BGP_DATATYPES_API DataTypeHelpOperation SYSDT_ExtCommunityHelp;
BGP_DATATYPES_API DataTypeCompareOperation SYSDT_ExtCommunityCompare;
BGP_DATATYPES_API DataTypeLuaSetOperation SYSDT_ExtCommunityLuaSet;
BGP_DATATYPES_API DataTypeLuaGetOperation SYSDT_ExtCommunityLuaGet;
BGP_DATATYPES_API DataTypeEndianOperation SYSDT_EXTCommunityEndian;

/*
 * SOO: a site of origin (RFC 4360, RFC 5668). Type u8, sub-type u8 (03), value[6], network order; form u32, host order:
 * the notation. 0:0 and 0.0:0 are refused. An all-zero one prints as the empty text. Mode 3 prints as the others do.
 */
BGP_DATATYPES_API uint32_t SYSDT_Str2Soo(const char *text, void *value); /* 12 bytes; 0, NULL_PTR or FAIL */
BGP_DATATYPES_API DataTypeFormatInOperation SYSDT_SooFormatIn;
BGP_DATATYPES_API DataTypeFormatOutOperation SYSDT_SooFormatOut;
BGP_DATATYPES_API DataTypeCheckOperation SYSDT_SooCheck;
BGP_DATATYPES_API DataTypeHelpOperation SYSDT_SooHelp;
BGP_DATATYPES_API DataTypeCompareOperation SYSDT_SooCompare;
BGP_DATATYPES_API DataTypeLuaSetOperation SYSDT_SooLuaSet;
BGP_DATATYPES_API DataTypeLuaGetOperation SYSDT_SooLuaGet;
BGP_DATATYPES_API DataTypeEndianOperation SYSDT_SooEndian;

/* ------------------------------------------------------------------------ the route target as a route key, VRFRTEXT */

/*
 * VRFRTEXT (sub-type 8 of BOLPREFIX, 89 bytes): sub-type u32; type, sub-type and value[6], network order; notation u32,
 * host order; zeros. The notations of VRFRT, with 0:0 accepted, and the ES-import route target (0602, RFC 7432) as
 * "0a0b-0c0d-0e0f". 1 to 100 characters. Mode 2 prints what would be typed, other modes "RT <100 : 1>".
 */
BGP_DATATYPES_API uint32_t SYSDT_Str2VrfRtExt(const char *text, void *value); /* 0, NULL_PTR or FAIL */
/*
 * Adds the separators of text to the three counters. DT_ERR_FAIL for a text of another length than 1 to 100 or with
 * anything else than separators and hexadecimal digits; the counters may have been increased then.
 */
BGP_DATATYPES_API uint32_t SYSDT_CheckVrfRtExtStr(const char *text, uint32_t *dots, uint32_t *colons, uint32_t *dashes);
/* One notation each, scanned: white space may stand before a number, and anything behind the last one. */
BGP_DATATYPES_API uint32_t SYSDT_Str2IpAddressRT(const char *text, void *value);   /* a.b.c.d:n */
BGP_DATATYPES_API uint32_t SYSDT_Str2TwoOctecAsRT(const char *text, void *value);  /* AS:n, of either size */
BGP_DATATYPES_API uint32_t SYSDT_Str2FourOctecAsRT(const char *text, void *value); /* x.y:n */
BGP_DATATYPES_API uint32_t SYSDT_Str2EvpnOctecAsRT(const char *text, void *value); /* xxxx-xxxx-xxxx */
/* Printers into a buffer of 256; they return the printed length, 0 when nothing is printed. By the request's mode: */
BGP_DATATYPES_API uint32_t SYSDT_VrfRtExtFormatOutStr(const DataTypeRequest *request, char *buffer, const void *value);
BGP_DATATYPES_API uint32_t SYSDT_VrfRtExtFormatOutRtStr(char *buffer, const void *value);    /* for display */
BGP_DATATYPES_API uint32_t SYSDT_VrfRtExtFormatOutRtStrNCF(char *buffer, const void *value); /* as typed */
/* The same two for a value taken to be of kind 0002. */
BGP_DATATYPES_API uint32_t SYSDT_VrfRtExtFormatBgpTwoOctAsOutRtStr(char *buffer, const void *value);
BGP_DATATYPES_API uint32_t SYSDT_VrfRtExtFormatBgpTwoOctAsOutRtStrNCF(char *buffer, const void *value);
BGP_DATATYPES_API DataTypeFormatInOperation SYSDT_VrfRtExtFormatIn;
BGP_DATATYPES_API DataTypeFormatOutOperation SYSDT_VrfRtExtFormatOut;
BGP_DATATYPES_API DataTypeLuaSetOperation SYSDT_VrfRtExtLuaSet;
BGP_DATATYPES_API DataTypeLuaGetOperation SYSDT_VrfRtExtLuaGet;
BGP_DATATYPES_API BolPrefixLuaReaderOperation SSYSDT_VrfRtExtNewLuaGet;

/* ----------------------------------------------------------------- route keys: the composite and its address field */

/*
 * BOLPREFIX (type 279): the route key of any BGP address family, 89 bytes: sub-type word u32 (0 to 16, host order),
 * then the sub-type's payload, zero behind it. The tables are indexed by the sub-type word; a null operation is one
 * that the sub-type does not offer (a null FormatIn: it can be printed but not typed).
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
 * Sub-type 1, "EVN", and the type EVNPREFIX: the key of an EVPN route (RFC 7432, RFC 9136, RFC 9251), 89 bytes:
 * sub-type word u32 (1), route type u8 (1 to 8), and the route's fields, which Bgp_DescribeValue() lists. FormatIn
 * reports type 279 and length 89 for both. Text in modes 0, 1, 2, 3, 5 and 6, both ways; FormatIn refuses with
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
BGP_DATATYPES_API uint32_t SYSDT_Str2Ad(const char *text, void *value, uint32_t checkMode); /* 1: ESI:tag */
BGP_DATATYPES_API uint32_t SYSDT_Str2EvnMac(const char *text, void *value);                 /* 2: tag:len:MAC:len:IP */
BGP_DATATYPES_API uint32_t SYSDT_Str2Inclusive(const char *text, void *value);              /* 3: tag:len:IP */
BGP_DATATYPES_API uint32_t SYSDT_Str2Es(const char *text, void *value, uint32_t checkMode); /* 4: ESI:len:IP */
BGP_DATATYPES_API uint32_t SYSDT_Str2IpPrefix(const char *text, void *value);               /* 5: tag:IPv4:len */
BGP_DATATYPES_API uint32_t SYSDT_Str2Ipv6Prefix(const char *text, void *value);             /* 5: tag:[IPv6]:len */
BGP_DATATYPES_API uint32_t SYSDT_Str2EvpnSmetRoute(const char *text, void *value);          /* 6 */
BGP_DATATYPES_API uint32_t SYSDT_Str2EvpnJoinRoute(const char *text, void *value);          /* 7 */
BGP_DATATYPES_API uint32_t SYSDT_Str2EvpnLeaveRoute(const char *text, void *value);         /* 8 */
/* 6 to 8, by the colons outside brackets: as many as the type's number. */
BGP_DATATYPES_API uint32_t SYSDT_Str2EvpnMcRoute(const char *text, void *value);
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

/* The orders of multicast routes; each pointer is to a value's byte 4, its route type. -1, 0 or 1. */
BGP_DATATYPES_API int32_t SYSDT_EVPN_SmetCompare(const void *left, const void *right);
BGP_DATATYPES_API int32_t SYSDT_EVPN_JoinCompare(const void *left, const void *right);
BGP_DATATYPES_API int32_t SYSDT_EVPN_LeaveCompare(const void *left, const void *right);

/* -------------------------------------------------------------------------------------------- NG-MVPN route keys */

/*
 * Sub-types 2 to 7 and 13, "NG_TYPE_...": the keys of multicast VPN routes (RFC 6514), 89 bytes: sub-type word u32,
 * then AS numbers (8 bytes) and addresses (21 bytes each) as Bgp_DescribeValue() lists them. Joined by ":" (IPv4) or
 * "-" (IPv6), the text itself decides the sub-type; a lone IPv4 address becomes sub-type 0, a lone AS number
 * sub-type 2. Text in modes 0, 1, 2, 3, 5 and 6, both ways; FormatIn refuses with DT_ERR_INVALID_PARAM.
 */
BGP_DATATYPES_API DataTypeFormatInOperation SYSDT_NGPrefixFormatIn;
BGP_DATATYPES_API DataTypeFormatOutOperation SYSDT_NGPrefixFormatOut;
BGP_DATATYPES_API DataTypeLuaSetOperation SYSDT_NGPrefix2LuaSet, SYSDT_NGPrefix3LuaSet, SYSDT_NGPrefix41LuaSet,
    SYSDT_NGPrefix42LuaSet, SYSDT_NGPrefix43LuaSet, SYSDT_NGPrefix5LuaSet, SYSDT_NGPrefix6LuaSet;
BGP_DATATYPES_API BolPrefixLuaReaderOperation SYSDT_NGPrefix2NewLuaGet, SYSDT_NGPrefix3NewLuaGet,
    SYSDT_NGPrefix41NewLuaGet, SYSDT_NGPrefix42NewLuaGet, SYSDT_NGPrefix43NewLuaGet, SYSDT_NGPrefix5NewLuaGet,
    SYSDT_NGPrefix6NewLuaGet;
/*
 * A text into a zeroed 89-byte value. 0, DT_ERR_NULL_PTR, or DT_ERR_FAIL with part of the value possibly filled. Two
 * sections with six dots between them are always accepted: what is no address stays zero.
 */
BGP_DATATYPES_API uint32_t SYSDT_Str2NGPrefix(const char *text, void *value);
/* The text of an 89-byte value into a buffer of 256 or more. 0, or DT_ERR_FAIL: another sub-type, or the host refused.
 */
BGP_DATATYPES_API uint32_t SYSDT_NGPrefix2Str(const void *value, char *buffer, uint32_t *printed);

/* ------------------------------------------------------------------------------------- layer-2 VPN route keys */

/*
 * Sub-type 0, "IPV4": the VPLS auto-discovery key (RFC 6074), an IPv4 word at 4. Text in modes 0, 1, 2, 3, 5 and 6,
 * both ways. Check looks at the length (89) alone, not even at the pointer. Help first asks ZOL_CheckBySymbolForIPV4()
 * about the typed text and returns its code when it objects. Compare orders by the address; DT_ERR_FAIL for other
 * sub-types.
 */
BGP_DATATYPES_API DataTypeFormatInOperation SYSDT_VplsAdPrefixFormatIn;
BGP_DATATYPES_API DataTypeFormatOutOperation SYSDT_VplsAdPrefixFormatOut;
BGP_DATATYPES_API DataTypeCheckOperation SYSDT_VplsAdPrefixCheck;
BGP_DATATYPES_API DataTypeHelpOperation SYSDT_VplsAdPrefixHelp;
BGP_DATATYPES_API DataTypeCompareOperation SYSDT_VplsAdPrefixCompare;
BGP_DATATYPES_API DataTypeLuaSetOperation SYSDT_VplsAdPrefixLuaSet;
BGP_DATATYPES_API DataTypeLuaGetOperation SYSDT_VplsAdPrefixLuaGet;
BGP_DATATYPES_API BolPrefixLuaReaderOperation SYSDT_VplsAdPrefixNewLuaGet;

/*
 * Sub-type 9, "L2VPN", and the type L2VPNPREFIX (294): the key of a BGP layer-2 VPN route (RFC 4761), 89 bytes with the
 * site u16 at 4 and the label offset u16 at 6, host order; printed "10/3". It cannot be typed: FormatIn returns 0 for
 * any arguments and writes nothing. FormatOut of another sub-type is DT_ERR_FAIL. Check, Help and Compare of the type
 * are the SYSDT_VplsAdPrefix ones; its registered length of 4 holds for none of the operations.
 */
BGP_DATATYPES_API DataTypeFormatInOperation SYSDT_L2VPNPrefixFormatIn;
BGP_DATATYPES_API DataTypeFormatOutOperation SYSDT_L2VPNPrefixFormatOut;
BGP_DATATYPES_API DataTypeLuaSetOperation SYSDT_L2VPNPrefixLuaSet;
BGP_DATATYPES_API DataTypeLuaGetOperation SYSDT_L2VPNPrefixLuaGet;
BGP_DATATYPES_API BolPrefixLuaReaderOperation SYSDT_L2VPNPrefixNewLuaGet;
/* FormatOut without the type id. */
BGP_DATATYPES_API uint32_t SYSDT_L2VPNPrefixFormatOutEx(const DataTypeRequest *request, uint32_t length,
                                                        const void *value, uint16_t *outTypeId, uint16_t *outLength,
                                                        void **outBuffer);
/* The four bytes behind the sub-type word as text into a buffer of 256 or more. 0, or DT_ERR_FAIL. */
BGP_DATATYPES_API uint32_t SYSDT_L2VPNPrefix2Str(const void *payload, char *buffer, uint32_t *printed);

/* ---------------------------------------------------------------------------------- multicast and policy route keys */

/*
 * Sub-type 10, "VPNV4MCAST", and the type VPNV4MCPREFIX (295): prefix IPv4 word at 4, mask length u32 at 8 of 89 bytes;
 * typed "10.1.1.0/24", printed without the mask length. FormatIn reports type 279. LuaGet keeps the low 16 bits of both
 * numbers, the reader all. Endian works on the 8 bytes behind the sub-type word, the type's registered length.
 */
BGP_DATATYPES_API DataTypeFormatInOperation SYSDT_VPNV4MCASTPrefixFormatIn;
BGP_DATATYPES_API DataTypeFormatOutOperation SYSDT_VPNV4MCASTPrefixFormatOut;
BGP_DATATYPES_API DataTypeCheckOperation SYSDT_VPNV4MCASTPrefixCheck;
BGP_DATATYPES_API DataTypeHelpOperation SYSDT_VPNV4MCASTPrefixHelp;
BGP_DATATYPES_API DataTypeCompareOperation SYSDT_VPNV4MCASTPrefixCompare;
BGP_DATATYPES_API DataTypeLuaSetOperation SYSDT_VPNV4MCASTPrefixLuaSet;
BGP_DATATYPES_API DataTypeLuaGetOperation SYSDT_VPNV4MCASTPrefixLuaGet;
BGP_DATATYPES_API DataTypeEndianOperation SYSDT_VPNV4MCASTLuaEndian;
BGP_DATATYPES_API BolPrefixLuaReaderOperation SYSDT_VPNV4MCASTPrefixNewLuaGet;

/*
 * Sub-type 11, "MDT", and the type MDTPREFIX (296; RFC 6037): prefix IPv4 word at 4, group IPv4 word at 8 (0 when
 * typed), mask length u32 at 12 of 89 bytes; typed "10.1.1.0/24", printed as the prefix. FormatIn reports type 279. All
 * results come from SYS_DataTypeMalloc(). Endian works on the 12 bytes behind the sub-type word and leaves the group.
 */
BGP_DATATYPES_API DataTypeFormatInOperation SYSDT_MdtPrefixFormatIn;
BGP_DATATYPES_API DataTypeFormatOutOperation SYSDT_MdtPrefixFormatOut;
BGP_DATATYPES_API DataTypeCheckOperation SYSDT_MdtPrefixCheck;
BGP_DATATYPES_API DataTypeHelpOperation SYSDT_MdtPrefixHelp;
BGP_DATATYPES_API DataTypeCompareOperation SYSDT_MdtPrefixCompare;
BGP_DATATYPES_API DataTypeLuaSetOperation SYSDT_MdtPrefixLuaSet;
BGP_DATATYPES_API DataTypeLuaGetOperation SYSDT_MdtPrefixLuaGet;
BGP_DATATYPES_API DataTypeEndianOperation SYSDT_MdtLuaEndian;
BGP_DATATYPES_API BolPrefixLuaReaderOperation SYSDT_MdtPrefixNewLuaGet;

/*
 * Sub-type 12, "RPD": policy type u8 at 4, distinguisher u32 at 6, peer IPv4 word at 10 of 89 bytes; typed and printed
 * "1/10.1.1.1/100". FormatOut of another sub-type is DT_ERR_FAIL and releases the buffer, the caller's own too. Check
 * wants a length of 27. Help texts come from SYS_DataTypeMalloc(). Compare gives DT_ERR_NULL_PTR for a null value.
 */
BGP_DATATYPES_API DataTypeFormatInOperation SYSDT_RpdPrefixFormatIn;
BGP_DATATYPES_API DataTypeFormatOutOperation SYSDT_RpdPrefixFormatOut;
BGP_DATATYPES_API DataTypeCheckOperation SYSDT_RpdPrefixCheck;
BGP_DATATYPES_API DataTypeHelpOperation SYSDT_RpdPrefixHelp;
BGP_DATATYPES_API DataTypeCompareOperation SYSDT_RpdPrefixCompare;
BGP_DATATYPES_API DataTypeLuaSetOperation SYSDT_RpdPrefixLuaSet;
BGP_DATATYPES_API DataTypeLuaGetOperation SYSDT_RpdPrefixLuaGet;
BGP_DATATYPES_API BolPrefixLuaReaderOperation SYSDT_RpdPrefixNewLuaGet;
/* On the bytes behind the sub-type word: swaps the words at 2 and 6. DT_ERR_NULL_PTR for a null payload. */
BGP_DATATYPES_API DataTypeEndianOperation SYSDT_RpdPrefixEndian;

/*
 * Their parsers and printers, on the bytes behind the sub-type word. Parsers: 0, DT_ERR_NULL_PTR, or DT_ERR_FAIL with
 * nothing written. Printers: a buffer of 256 or more; 0, or DT_ERR_FAIL.
 */
BGP_DATATYPES_API uint32_t SYSDT_Str2Vpnv4McastPrefix(const char *text, void *payload);
BGP_DATATYPES_API uint32_t SYSDT_Str2MdtPrefix(const char *text, void *payload);
BGP_DATATYPES_API uint32_t SYSDT_Str2RpdPrefix(const char *text, void *payload);
BGP_DATATYPES_API uint32_t SYSDT_Vpnv4McastPrefix2Str(const void *payload, char *buffer, uint32_t *printed);
BGP_DATATYPES_API uint32_t SYSDT_MdtPrefix2Str(const void *payload, char *buffer, uint32_t *printed);
BGP_DATATYPES_API uint32_t SYSDT_RpdPrefix2Str(const void *payload, char *buffer, uint32_t *printed);

/* ------------------------------------------------------------------------------- SR-policy and SD-WAN route keys */

/*
 * Sub-type 14, "SRPOLICY" (RFC 9830): distinguisher u32 at 4, colour u32 at 8, endpoint IPv4 word at 12, IPv6 bytes at
 * 16, family u8 at 32 (0 IPv4) of 89 bytes; typed and printed "[1][100][10.0.0.1]", "[1][100][2001:db8::1]". Sub-type
 * 16, "SD-WAN": route type u16 at 4, port u32 at 8, site u32 at 12, node IPv4 word at 16, IPv6 bytes at 20, family u8
 * at 36; "1-100-200-10.1.1.1". Text in modes 0, 1, 2, 3, 5 and 6, both ways; FormatIn refuses with
 * DT_ERR_INVALID_PARAM. FormatOut of another sub-type is DT_ERR_FAIL and releases the buffer, the caller's own too.
 * Help texts come from SYS_DataTypeMalloc(). Compare is the order of the bytes, DT_ERR_NULL_PTR for a null value.
 */
BGP_DATATYPES_API DataTypeFormatInOperation SYSDT_SrPolicyPrefixFormatIn, SYSDT_SdwanPrefixFormatIn;
BGP_DATATYPES_API DataTypeFormatOutOperation SYSDT_SrPolicyPrefixFormatOut, SYSDT_SdwanPrefixFormatOut;
BGP_DATATYPES_API DataTypeCheckOperation SYSDT_SrPolicyPrefixCheck, SYSDT_SdwanPrefixCheck;
BGP_DATATYPES_API DataTypeHelpOperation SYSDT_SrPolicyPrefixHelp, SYSDT_SdwanPrefixHelp;
BGP_DATATYPES_API DataTypeCompareOperation SYSDT_SrPolicyPrefixCompare, SYSDT_SdwanPrefixCompare;
BGP_DATATYPES_API DataTypeLuaSetOperation SYSDT_SrPolicyPrefixLuaSet, SYSDT_SdwanPrefixLuaSet;
BGP_DATATYPES_API BolPrefixLuaReaderOperation SYSDT_SrPolicyPrefixNewLuaGet, SYSDT_SdwanPrefixNewLuaGet;
/* The fields of the table at tableIndex into an 89-byte value, all but the sub-type word. */
BGP_DATATYPES_API uint32_t SYSDT_SrPolicyPrefixLuaGet(lua_State *L, int32_t tableIndex, void *value);
BGP_DATATYPES_API uint32_t SYSDT_SdwanPrefixLuaGet(lua_State *L, int32_t tableIndex, void *value);
/* On a body (below): swaps the numbers, and the IPv4 word when the family is 0. Context and body must not be null. */
BGP_DATATYPES_API DataTypeEndianOperation SYSDT_SrPolicyPrefixEndian, SYSDT_SdwanPrefixEndian;

/*
 * Their parsers and printers. A body is the bytes behind the sub-type word (29 and 33); SYSDT_Str2SdwanPrefix takes the
 * whole value and writes its sub-type even for a text that it then refuses. Those for one family take a trimmed text.
 * Parsers: 0, DT_ERR_NULL_PTR, DT_ERR_FAIL, or DT_ERR_INVALID_PARAM when the host does not take the IPv6 address.
 * Printers: a buffer of 256 or more; 0, or DT_ERR_FAIL.
 */
BGP_DATATYPES_API uint32_t SYSDT_Str2SrPolicyPrefix(const char *text, void *body);
BGP_DATATYPES_API uint32_t SYSDT_Str2Srv4PolicyPrefix(const char *text, void *body);
BGP_DATATYPES_API uint32_t SYSDT_Str2Srv6PolicyPrefix(const char *text, void *body);
BGP_DATATYPES_API uint32_t SYSDT_SrPolicyPrefix2Str(const void *body, char *buffer, uint32_t *printed);
BGP_DATATYPES_API uint32_t SYSDT_Srv4PolicyPrefix2Str(const void *body, char *buffer, uint32_t *printed);
BGP_DATATYPES_API uint32_t SYSDT_Srv6PolicyPrefix2Str(const void *body, char *buffer, uint32_t *printed);
BGP_DATATYPES_API uint32_t SYSDT_Str2SdwanPrefix(const char *text, void *value);
BGP_DATATYPES_API uint32_t SYSDT_Str2SdwanV4Prefix(const char *text, void *body);
BGP_DATATYPES_API uint32_t SYSDT_Str2SdwanV6Prefix(const char *text, void *body);
BGP_DATATYPES_API uint32_t SYSDT_SdwanPrefix2Str(const void *body, char *buffer, uint32_t *printed);
BGP_DATATYPES_API uint32_t SYSDT_SdwanV4Prefix2Str(const void *body, char *buffer, uint32_t *printed);
BGP_DATATYPES_API uint32_t SYSDT_SdwanV6Prefix2Str(const void *body, char *buffer, uint32_t *printed);

/* ----------------------------------------------------------------------------------------------- BGP-LS route keys */

/*
 * BGPLSPREFIX (type 1299): the key of a BGP-LS route (RFC 9552, RFC 9514, RFC 9857), 228 bytes, byte-packed: NLRI type
 * u32 (1 node, 2 link, 3 IPv4 prefix, 4 IPv6 prefix, 5 TE policy, 6 SRv6 SID), protocol id u32, identifier u64, and the
 * descriptors of the NLRI type, which Bgp_DescribeValue() lists. FormatIn parses in modes 1 and 2 only, FormatOut
 * prints in all but 4; its text buffer has 769 bytes. Results come from SYS_DataTypeMalloc(). LuaGet tells of failures
 * only for links and IPv4 prefixes, the other NLRI types are read as far as they go. Endian needs its context, which
 * may be any pointer but null, and turns network order into host order; of a value in host order it reverses the NLRI
 * type alone.
 */
BGP_DATATYPES_API DataTypeFormatInOperation SYSDT_LSPrefixFormatIn;
BGP_DATATYPES_API DataTypeFormatOutOperation SYSDT_LSPrefixFormatOut;
BGP_DATATYPES_API DataTypeCheckOperation SYSDT_LSPrefixCheck;
BGP_DATATYPES_API DataTypeHelpOperation SYSDT_LSPrefixHelp;
BGP_DATATYPES_API DataTypeCompareOperation SYSDT_LSPrefixCompare;
BGP_DATATYPES_API DataTypeLuaSetOperation SYSDT_LSPrefixLuaSet;
BGP_DATATYPES_API DataTypeLuaGetOperation SYSDT_LSPrefixLuaGet;
BGP_DATATYPES_API DataTypeEndianOperation SYSDT_LSPrefixEndian;

/* "[NODE][OSPFv2]..." to 228 bytes. 0, or a code; the bytes hold part of a key then. Takes and frees scratch memory. */
BGP_DATATYPES_API uint32_t SYSDT_Str2LSPrefix(const char *text, void *record);

/*
 * The parser beneath it: a run of bracketed groups, "[as100][mt-id0]", each for the first row whose keyword it begins
 * with. The handler gets the row's flag, what stands behind the keyword (a copy, which it may change), the target and
 * the context (which may be null); 0 goes on with the next group. Groups may be nested and hold at most 498 characters.
 * 0, the first handler's code, or DT_ERR_FAIL: no text, a broken group, no row, or a row without a handler.
 */
typedef struct BgpLsParseContext BgpLsParseContext; /* opaque here */
typedef uint32_t BgpLsHandler(uint32_t flag, char *value, void *target, BgpLsParseContext *context);
typedef struct {
    const char *Keyword;
    uint32_t Flag;  /* a single bit */
    uint32_t Exact; /* 1: nothing may follow the keyword */
    BgpLsHandler *Handler;
} BgpLsKeyword;
BGP_DATATYPES_API uint32_t SYSDT_ParseLsPrefixStr(const char *text, const BgpLsKeyword *rows, uint32_t rowCount,
                                                  void *target, BgpLsParseContext *context);

/* The text of 228 bytes into a buffer of 769. *printed, 0 on entry, counts what was written even on DT_ERR_FAIL. */
BGP_DATATYPES_API uint32_t SYSDT_LsPrefix2Str(const void *record, char *buffer, uint32_t *printed);
/*
 * Its printers, one per NLRI type: append at buffer + *printed and stay below limit bytes from buffer, terminator
 * included; what does not fit is cut. DT_ERR_FAIL when there is no room left or the host's formatter refuses.
 */
BGP_DATATYPES_API uint32_t SYSDT_LS_NodeKeyToStr(const void *record, char *buffer, uint32_t limit, uint32_t *printed);
BGP_DATATYPES_API uint32_t SYSDT_LS_LinkKeyToStr(const void *record, char *buffer, uint32_t limit, uint32_t *printed);
BGP_DATATYPES_API uint32_t SYSDT_LS_Ipv4PrefixKeyToStr(const void *record, char *buffer, uint32_t limit,
                                                       uint32_t *printed);
BGP_DATATYPES_API uint32_t SYSDT_LS_Ipv6PrefixKeyToStr(const void *record, char *buffer, uint32_t limit,
                                                       uint32_t *printed);
BGP_DATATYPES_API uint32_t SYSDT_LS_TePolicyKeyToStr(const void *record, char *buffer, uint32_t limit,
                                                     uint32_t *printed);
BGP_DATATYPES_API uint32_t SYSDT_LS_Srv6SidKeyToStr(const void *record, char *buffer, uint32_t limit,
                                                    uint32_t *printed);
/* The keyword of an NLRI type or protocol into a buffer of 32; an unknown number writes nothing. 0, DT_ERR_NULL_PTR. */
BGP_DATATYPES_API uint32_t SYSDT_LS_RouteTypeEnum2Str(uint32_t nlriType, char *buffer);
BGP_DATATYPES_API uint32_t SYSDT_LS_ProtclTypeEnum2Str(uint32_t protocolId, char *buffer);

#ifdef __cplusplus
}
#endif

#endif
