/*
 * bgp_datatypes.h - the BGP data types of a router's management plane, as one plug-in.
 *
 * A management plane (the host) keeps configuration and state as typed values. Every type is a row of operations: text
 * to value, value to text, check, help, compare, to and from Lua, byte order. The host loads this library, calls
 * Bgp_InitDataType() once with its registration handle, and receives a row of each type through
 * SYS_Drm_RegisterDataType(). From then on it calls the operations through the rows, from any thread, without locks:
 * the library keeps no state of its own.
 *
 * README.md has a whole program that embeds the library, and bgp_host_services.h what a host supplies.
 *
 * Conventions that hold for every operation unless its own comment says otherwise:
 *
 *  - Pointers are tested first: a null one that is needed gives DT_ERR_NULL_PTR. Then the format mode, then the
 *    content.
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
/* CVRFNAME FormatOut, mode 2: type id or length of another record; Bgp_ExplainRefusal: unknown type id */
#define DT_ERR_TYPE_MISMATCH 0x80170fu
#define DT_ERR_CONVERT 0x801711u  /* CVRFNAME FormatOut, mode 2: no composite form */
#define DT_ERR_TOO_LONG 0x801717u /* LuaGet of a prefix: a Lua string longer than the text buffer */

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
 * Text to value. text is NUL-terminated; what the host takes for blanks is dropped around it, however much. typeId and
 * length are not looked at (the AS number list needs length in mode 1). On success *outTypeId, *outLength and
 * *outBuffer hold the type's id, the value's length and the new value.
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

/* ------------------------------------------------------------------------------------- facts, for people and tools */

/* What Compare can be used for. */
typedef enum {
    BGP_ORDER_TOTAL = 0,    /* any two values are ordered, consistently; some that differ may count as equal */
    BGP_ORDER_EQUALITY = 1, /* 0 for equal values, a code for others */
    BGP_ORDER_NONE = 2      /* no Compare, or one that is neither an order nor an equality: compare the bytes */
} BgpOrder;

/* How a value goes from host order to network order and back. */
typedef enum {
    BGP_NETWORK_ENDIAN = 0,     /* by the type's Endian, on the whole value */
    BGP_NETWORK_PAYLOAD = 1,    /* by Endian, on the registered length of bytes behind the sub-type word */
    BGP_NETWORK_TYPE_FIRST = 2, /* by Endian, which wants the first word, the NLRI type, in network order beforehand */
    BGP_NETWORK_LAYOUT = 3,     /* the type has no Endian: by the layout of the value */
    BGP_NETWORK_NONE = 4        /* the host's own texts: there is no other order */
} BgpNetwork;

/* What LuaGet makes of the table that LuaSet built. */
typedef enum {
    BGP_LUA_ALL = 0,   /* the same value */
    BGP_LUA_TYPED = 1, /* the same value, if a text can give it */
    BGP_LUA_LOSES = 2  /* less: narrower fields, no reader, or the reader of another type */
} BgpLua;

/* What else is particular about a type, as bits of BgpTypeFacts.Traits. */
#define BGP_TRAIT_HOST_TEXT 0x0001u  /* texts are read by the host's own operation */
#define BGP_TRAIT_NO_TEXT 0x0002u    /* no text makes a value: there is no FormatIn, or it answers 0 and does nothing */
#define BGP_TRAIT_COPIES_RAW 0x0004u /* FormatOut in mode 3 copies the bytes */
#define BGP_TRAIT_READS_SHORT 0x0008u    /* FormatOut reads a shorter value as if zeros followed */
#define BGP_TRAIT_ANY_LENGTH 0x0010u     /* values of any length */
#define BGP_TRAIT_WRITES_TEXT 0x0020u    /* FormatIn may write to its text in mode 1 */
#define BGP_TRAIT_PRINTS_ITEMS 0x0040u   /* FormatOut takes a list of items, of which the value is one */
#define BGP_TRAIT_COMPOSES 0x0080u       /* FormatOut in mode 2 makes a record of a record */
#define BGP_TRAIT_PRINTS_BYTES 0x0100u   /* prints some fields as raw bytes, which may read back as something else */
#define BGP_TRAIT_SETS_ANY 0x0200u       /* LuaSet does not look at the length */
#define BGP_TRAIT_KEEPS_SUBTYPE 0x0400u  /* LuaGet leaves the sub-type word as it is */
#define BGP_TRAIT_OTHER_SUBTYPES 0x0800u /* FormatIn also makes values of other sub-types, which FormatOut refuses */

/* A notation of texts that are numbers with separators between them. */
#define BGP_MOST_NUMBERS 5
typedef struct {
    const char *Form;       /* how it is written: "a.b.c.d:n" */
    const char *Separators; /* one between each two numbers: "...:" */
    const char *When;       /* what tells it from another of the same form, or null: "with an AS number above 65535" */
    const char *Names[BGP_MOST_NUMBERS]; /* what each number is called, null behind the last */
    uint64_t Smallest[BGP_MOST_NUMBERS];
    uint64_t Largest[BGP_MOST_NUMBERS];
} BgpNotation;

/* A rule that a text can break. */
typedef struct {
    const char *Name;  /* for programs, does not change: "too-large" */
    const char *Words; /* for people; "{what}", "{limit}" and "{hex}" stand for the refusal's What and Limit */
    uint8_t FormHolds; /* 1: what stands at the place is well formed, only its size is not right */
} BgpRule;

/* A type, or a sub-type of a composite type, as data. Its operations run on the same rows. */
typedef struct {
    const char *Name;        /* as registered */
    const char *Description; /* one line */
    const char *Reference;   /* the RFCs, or null */
    uint16_t TypeId;
    uint16_t ResultTypeId;  /* what FormatIn reports; most often TypeId */
    uint16_t SubType;       /* of a sub-type its word; else 0 */
    uint16_t ValueLength;   /* bytes that the operations work on; not always the registered length */
    uint16_t CheckedLength; /* bytes that Check wants, 0 where there is no Check */
    uint16_t TextSize;      /* bytes that FormatOut allocates, and that a caller's buffer must have; 0: as needed */
    uint16_t ShortestText;  /* characters of a text, blanks around it aside; 0 where no text makes a value, or
                              the host alone knows */
    uint16_t LongestText;
    uint8_t TypingMode; /* the mode that prints what it reads */
    uint8_t Order;      /* BgpOrder */
    uint8_t Network;    /* BgpNetwork */
    uint8_t Lua;        /* BgpLua */
    uint8_t Base;       /* of the numbers in texts: 10, or 16 in lower case */
    uint32_t Traits;
    const BgpLayout *Layout;      /* null where the value tells it: Bgp_DescribeValue() */
    const BgpNotation *Notations; /* null where the text is not numbers with separators alone */
    uint32_t NotationCount;
    const BgpRule *const *Rules; /* all that a refusal may name, beside those of modes, of memory and of a
                                    host that fails */
    uint32_t RuleCount;
} BgpTypeFacts;

/* By type id; null for an unknown one. */
BGP_DATATYPES_API const BgpTypeFacts *Bgp_DescribeType(uint32_t typeId);
/* All types in the order of registration: index 0, 1, ... until null. */
BGP_DATATYPES_API const BgpTypeFacts *Bgp_TypeAt(uint32_t index);
/* The sub-types of BOLPREFIX (279) and BOLRD (280) by their word; null for others. */
BGP_DATATYPES_API const BgpTypeFacts *Bgp_DescribeSubType(uint32_t typeId, uint32_t subType);

/* --------------------------------------------------------------------------------------------- refusals of a text */

/*
 * Words that may stand at a place: Count rows of Stride bytes, each beginning with a pointer to a word. Rows with the
 * same word stand together; Bgp_ExpectedWord() tells it once.
 */
typedef struct {
    const void *First;
    uint32_t Count;
    uint32_t Stride;
} BgpChoices;

/* Why a text is refused: the rule that it breaks, and where. All pointers are to constant data of the library. */
typedef struct {
    uint32_t Code;       /* what FormatIn answers; 0: the text is accepted, and the rest is zero */
    const BgpRule *Rule; /* null for a null text or an unknown type, which break no rule of a text */
    const char *What;    /* what the rule speaks of: "the assigned number" */
    const char *Where;   /* the part of the text that it stands in, or null: "LOCAL", "MAC/IP advertisement" */
    uint64_t Limit;      /* the number that the rule names, or 0 */
    uint32_t Offset;     /* bytes from the start of the text, blanks included */
    uint32_t Length;     /* bytes of the piece; 0: something is missing there */
    uint32_t Element;    /* of a list, the item, from 1; else 0 */
    BgpChoices Expected; /* what may stand there instead, as far as it is a choice of words */
} BgpReason;

#define BGP_MOST_SUBTYPES 17
typedef struct {
    BgpReason Reason;      /* of a composite type: that of the closest sub-type, with the type's own code */
    uint32_t SubTypeCount; /* 0 for types without sub-types; else all rows of the composite in order */
    /* Index of the sub-type that was probably meant; of an accepted text, of the one that takes it. It is the one whose
       parser gets furthest, going on behind pieces of which only the size is wrong; of equals the one that gets further
       once what it refuses is put right, then the first row. Of rows with one parser it is that of the key whose name
       is in Where. */
    uint32_t Closest;
    BgpReason SubTypes[BGP_MOST_SUBTYPES];
} BgpRefusal;

/*
 * Reads a text as FormatIn of the type would in request's mode, makes no value, and tells why it is refused. Runs the
 * very parser of the type. text is left alone, also by the type whose FormatIn writes to it. Returns what FormatIn
 * would answer (given memory for the result), also as refusal->Reason.Code; for a type whose texts the host reads, the
 * host's code and a rule that says so. The host's operation is told the BinaryLength of the type's row, as by a caller
 * of the row: CVRFNAME's 32 bytes are what a name and its terminator must fit in, if the host limits names by it.
 * DT_ERR_NULL_PTR for a null argument (with refusal filled when it is there), DT_ERR_TYPE_MISMATCH for an
 * unknown type id, DT_ERR_FAIL for a type without FormatIn.
 */
BGP_DATATYPES_API uint32_t Bgp_ExplainRefusal(const DataTypeRequest *request, uint32_t typeId, const char *text,
                                              BgpRefusal *refusal);
/*
 * A reason as a sentence: "with an AS number above 65535: the assigned number is at most 65535". Writes at most
 * size bytes, terminator included, cutting what does not fit; returns the characters of the whole sentence.
 */
BGP_DATATYPES_API uint32_t Bgp_SayReason(const BgpReason *reason, char *buffer, uint32_t size);
/* The index-th of the words that are expected, each told once; null behind the last. */
BGP_DATATYPES_API const char *Bgp_ExpectedWord(const BgpReason *reason, uint32_t index);

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

/* Both tables, in the order of registration. Bgp_TypeAt() tells of each of their rows: the extended ones begin at
 * index 9. */
#define BGP_NAME_INDEX_ROWS 9
BGP_DATATYPES_API extern const DataTypeDescriptor g_astBgpDataTypeNameIndexDefineTbl[BGP_NAME_INDEX_ROWS];
BGP_DATATYPES_API extern const DataTypeDescriptor g_astBgpDataTypeExtendDefineTbl[];

#ifdef __cplusplus
}
#endif

/*
 * The families: the records, operations and helper functions under their own names. Whoever calls operations through
 * rows needs none of them, and leaves them out by defining BGP_DATATYPES_CORE_ONLY.
 */
#ifndef BGP_DATATYPES_CORE_ONLY
#include "bgp_datatypes/asnum.h"
#include "bgp_datatypes/bgpls.h"
#include "bgp_datatypes/community.h"
#include "bgp_datatypes/evpn.h"
#include "bgp_datatypes/helpers.h"
#include "bgp_datatypes/ng_mvpn.h"
#include "bgp_datatypes/prefix.h"
#include "bgp_datatypes/rdrt.h"
#include "bgp_datatypes/types.h"
#endif

#endif
