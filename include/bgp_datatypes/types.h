/* CVRFNAME, the name of a VRF, and TIME_RANGE, a duration: their operations and helpers. */
#ifndef BGP_DATATYPES_TYPES_H
#define BGP_DATATYPES_TYPES_H

#include "bgp_datatypes.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ------------------------------------------------------------------------------------- CVRFNAME and TIME_RANGE */

/*
 * CVRFNAME: a VRF name, a text type of the host. Mode 2 turns the 40-byte record (name[32], number u32, kind u32) into
 * items {u16 type, u16 length with NUL, text}: {1, number} when kind is 1, then {0, name}. It reports type 292.
 */
BGP_DATATYPES_API DataTypeFormatOutOperation SYS_DT_APPCVRFNAME_FormatOut;
/* The composite form of a 40-byte record into buffer (51 bytes suffice). 0, 0xFFFFFFFF for a null record, DT_ERR_FAIL.
 */
BGP_DATATYPES_API uint32_t SYS_DT_CVrfName_Str2Cplx(const void *record, uint16_t *outLength, void *buffer);

/* TIME_RANGE: seconds (u32, host order), typed as days, hours, minutes, seconds: "1d2h3m4s" is 93784. */
/* 0, or a code with *seconds zero: DT_ERR_NULL_PTR also when the host's QOV_StrTrim() answers null, DT_ERR_FAIL. */
BGP_DATATYPES_API uint32_t SYSDT_Str2TimeRange(const char *text, uint32_t *seconds);
BGP_DATATYPES_API DataTypeFormatInOperation SYSDT_TimeRangeFormatIn;
BGP_DATATYPES_API DataTypeHelpOperation SYSDT_TimeRangeHelp;
BGP_DATATYPES_API DataTypeLuaSetOperation SYSDT_TimeRangeLuaSet;
BGP_DATATYPES_API DataTypeLuaGetOperation SYSDT_TimeRangeLuaGet;

#ifdef __cplusplus
}
#endif

#endif
