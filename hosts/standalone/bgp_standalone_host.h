/*
 * bgp_standalone_host.h - a host for data-type plug-ins, in a process of its own. C, and C++ as it is.
 *
 * A router's management plane loads the plug-in and supplies the services of bgp_host_services.h. This library supplies
 * the same services without a router: for programs that embed the data types, for the command-line tool and for tests.
 * This header is what the embedding program says to it; README.md has a whole program. bgp_standalone_host.hpp says the
 * same in C++, with strings and vectors.
 *
 * A program that defines a service itself replaces the library's. Link it with -rdynamic then: a plug-in that is
 * loaded, not linked, finds the program's symbols only when they are exported.
 *
 * Every function may be called from any thread. Texts are NUL-terminated. A program whose memory ends while the host
 * takes a note (a name, a diagnostic's copy) ends with it; the services themselves report missing memory. The part
 * about faults and counters is for tests; it is always built in, and costs nothing measurable while unused.
 */
#ifndef BGP_STANDALONE_HOST_H
#define BGP_STANDALONE_HOST_H

#include "bgp_datatypes.h"
#include "bgp_host_services.h"

#include <stdbool.h>

#if defined(__GNUC__)
#define BGP_STANDALONE_API __attribute__((__visibility__("default")))
#else
#define BGP_STANDALONE_API
#endif

#ifdef __cplusplus
#define BGP_STANDALONE_DEFAULT(value) = value /* C++ names some members and leaves the others at this */
extern "C" {
#else
#define BGP_STANDALONE_DEFAULT(value)
#endif

/* ------------------------------------------------------------------------------------------------------- memory */

/*
 * A memory handle is an arena: results of operations collect in it and go together. Up to 4096 may be open at a time.
 * Reset and Close need that no other thread still allocates on that handle or uses its blocks.
 */

/* A new handle, for DataTypeRequest.MemoryHandle; 0, which no service accepts, when all are taken. */
BGP_STANDALONE_API uint32_t BgpHost_OpenHandle(void);
/* Drops all blocks and keeps the handle; memory is kept for the next round. Unknown handles are ignored. */
BGP_STANDALONE_API void BgpHost_ResetHandle(uint32_t handle);
/* Drops all blocks and the handle, whose number is not soon used again. Unknown handles are ignored. */
BGP_STANDALONE_API void BgpHost_CloseHandle(uint32_t handle);
/* Live blocks: given out and not marked free. 0 for an unknown handle. Entries of help records are not counted. */
BGP_STANDALONE_API size_t BgpHost_HandleBlocks(uint32_t handle);
/* Live SYS_DataTypeMalloc() blocks that the calling thread took. */
BGP_STANDALONE_API size_t BgpHost_ScratchBlocks(void);

/* -------------------------------------------------------------------------------------- the plug-in and its rows */

/* The handle that a plug-in's init function receives and passes back with every row. */
#define BGP_HOST_REGISTRATION_HANDLE 1u

/*
 * Loads a plug-in and calls its Bgp_InitDataType(). path is as for dlopen(), except that a name without a slash is
 * first looked for beside this library (beside the program, where that is linked with the static one). The
 * registrations of an earlier plug-in are forgotten and it is unloaded, unless the new file cannot be loaded: then
 * everything stays as it was. DT_OK, or DT_ERR_FAIL with the reason in reasonSize characters at reason (null for none),
 * cut where it is longer, when the file, its entry point or its initialisation fails.
 */
BGP_STANDALONE_API uint32_t BgpHost_LoadPlugIn(const char *path, char *reason, size_t reasonSize);
/* Forgets the registrations of the loaded plug-in and unloads it; no thread may be inside of it. Without one, nothing.
 */
BGP_STANDALONE_API void BgpHost_UnloadPlugIn(void);
/*
 * A symbol of the loaded plug-in; without one, of the process (a statically linked plug-in, in a program that exports
 * its symbols). Null when absent.
 */
BGP_STANDALONE_API void *BgpHost_PlugInSymbol(const char *name);
/* For a plug-in that is linked: forgets all registrations, calls init (Bgp_InitDataType) and returns its answer. */
BGP_STANDALONE_API uint32_t BgpHost_InitLinkedPlugIn(uint32_t (*init)(uint32_t handle));

/* The first accepted row of that name or type id; null when there is none. Rows belong to the plug-in. */
BGP_STANDALONE_API const DataTypeDescriptor *BgpHost_FindRow(const char *name);
BGP_STANDALONE_API const DataTypeDescriptor *BgpHost_FindRowById(uint32_t typeId);
/* The accepted row at a place, from 0, in the order of registration; null behind the last. */
BGP_STANDALONE_API const DataTypeDescriptor *BgpHost_RowAt(size_t place);

/* One SYS_Drm_RegisterDataType() call and what was answered. */
typedef struct BgpHostRegistration {
    uint32_t handle;
    const DataTypeDescriptor *row;
    uint32_t answer;
} BgpHostRegistration;

/* Copies the call at a place, from 0, the refused ones included. False behind the last. */
BGP_STANDALONE_API bool BgpHost_RegistrationAt(size_t place, BgpHostRegistration *call);
/* Forgets the calls and the rows. What BgpHost_RefuseRow() asked for stays. */
BGP_STANDALONE_API void BgpHost_ForgetRegistrations(void);
/* From now on SYS_Drm_RegisterDataType() answers code for rows of that type id; code 0 accepts them again. */
BGP_STANDALONE_API void BgpHost_RefuseRow(uint32_t typeId, uint32_t code);

/* -------------------------------------------------------------------------------------------------- diagnostics */

/* Takes one ZOL_Assert() call of the plug-in. The texts are gone afterwards. */
typedef void BgpHostDiagnosticTaker(void *context, const char *source, uint32_t line, const char *message);

/*
 * Hands every later diagnostic to hook, on the thread that reports it; a null hook goes back to keeping them in a list.
 * What a hook throws is lost with the diagnostic: nothing may pass back into the plug-in.
 */
BGP_STANDALONE_API void BgpHost_SetAssertHook(BgpHostDiagnosticTaker *hook, void *context);
/* Hands the kept diagnostics to take, oldest first; the list is empty afterwards. */
BGP_STANDALONE_API void BgpHost_TakeDiagnostics(BgpHostDiagnosticTaker *take, void *context);

/* ------------------------------------------------------------------------------------------------- object names */

/*
 * Names object index of a name-index type; an empty name takes the name away. A name stands for one index and an index
 * for one name: the latest setting wins.
 */
BGP_STANDALONE_API void BgpHost_SetObjectName(uint32_t typeId, uint32_t index, const char *name);
BGP_STANDALONE_API void BgpHost_ForgetObjectNames(void);

/* ---------------------------------------------------------------------------------------------------------- Lua */

/* A new interpreter with the standard libraries; null when memory is out. One thread at a time may use it. */
BGP_STANDALONE_API lua_State *BgpHost_NewLua(void);
BGP_STANDALONE_API void BgpHost_CloseLua(lua_State *L);

/* ------------------------------------------------------------------------------------------- faults and counters */

/* What shall go wrong, on the calling thread. 0 is never, 1 the next call from now on, and so forth. */
typedef struct BgpHostFaults {
    uint32_t failAllocation BGP_STANDALONE_DEFAULT(0);   /* the n-th allocation; both allocators count together */
    bool failAllAfter BGP_STANDALONE_DEFAULT(false);     /* and every later one */
    uint32_t failPrint BGP_STANDALONE_DEFAULT(0);        /* the n-th snprintf_truncated_s, snprintf_s or sprintf_s
                                                            returns -1, writing nothing */
    uint32_t failCopy BGP_STANDALONE_DEFAULT(0);         /* the n-th memcpy_s, memset_s, strcpy_s or strncpy_s fails,
                                                            writing nothing */
    uint32_t failScan BGP_STANDALONE_DEFAULT(0);         /* the n-th sscanf_s returns 0, writing nothing */
    uint32_t failAddressPrint BGP_STANDALONE_DEFAULT(0); /* the n-th inet_ntop6 returns null, writing nothing */
    uint32_t helpInitCode BGP_STANDALONE_DEFAULT(0);     /* when non-zero, every SYSDT_InitHelpInfo returns this and
                                                            prepares nothing */
} BgpHostFaults;

/* Replaces the calling thread's faults and zeroes its counters. All zero, or a null pointer, ends all faults. */
BGP_STANDALONE_API void BgpHost_SetFaults(const BgpHostFaults *faults);

/*
 * Calls of the calling thread, failed ones included. allocations counts both allocators, plainAllocations those by
 * SYS_DataTypeMalloc alone. lastHelpWord is what the latest SYSDT_InitHelpInfo was given.
 */
typedef struct BgpHostCounters {
    uint32_t allocations, plainAllocations, frees, prints, copies, scans, addressPrints, helpInits, helpClears;
    uint32_t lastHelpWord;
} BgpHostCounters;

/* The counts since the last call, or since BgpHost_SetFaults(). */
BGP_STANDALONE_API BgpHostCounters BgpHost_TakeCounters(void);

/*
 * Takes one SYS_DataTypeFree() call. known is false for a pointer that is no live block of this host (foreign, or freed
 * before); such a call frees nothing. A null pointer counts as known.
 */
typedef void BgpHostReleaseTaker(void *context, const void *memory, bool known);

/*
 * Hands the calling thread's SYS_DataTypeFree() calls since the last look to take, oldest first. They are kept only
 * while recording, which is off at first and is switched for the calling thread alone.
 */
BGP_STANDALONE_API void BgpHost_TakeReleases(BgpHostReleaseTaker *take, void *context);
BGP_STANDALONE_API void BgpHost_RecordReleases(bool on);

/*
 * Checked blocks: each is a piece of its own between two guards of 16 bytes, filled with 0xA5 when given out and with
 * 0x5A when freed. For the whole process, for blocks given out from now on; off at first. Under AddressSanitizer every
 * block is a piece of its own in any case, and the sanitizer itself guards its ends.
 */
BGP_STANDALONE_API void BgpHost_SetCheckedBlocks(bool on);
/*
 * Whether all guards are whole, and all freed blocks of handles still filled. Damage that was noticed when a block went
 * away counts too, until it has been reported once. Each damaged block is told as a line to take, which may be null.
 */
typedef void BgpHostLineTaker(void *context, const char *line);
BGP_STANDALONE_API bool BgpHost_BlocksIntact(BgpHostLineTaker *take, void *context);

#ifdef __cplusplus
}
#endif

#endif
