// bgp_standalone_host.h - a host for data-type plug-ins, in a process of its own.
//
// A router's management plane loads the plug-in and supplies the services of bgp_host_services.h. This library supplies
// the same services without a router - for the command-line tool, for tests and for programs that embed the data types
// - and this header is what the embedding program says to it:
//
//     std::string error;
//     if (!bgp::standalone::LoadPlugIn("libbgp_datatypes.so.1", &error)) { ... error ... }
//     const DataTypeDescriptor *type = bgp::standalone::FindRow("ASNUM");
//     DataTypeRequest request{1, bgp::standalone::OpenHandle()};
//     type->FormatIn(&request, type->TypeId, 0, text, &typeId, &length, &value); // value lives in the handle
//     bgp::standalone::CloseHandle(request.MemoryHandle);
//
// Every function may be called from any thread. The part about faults and counters is for tests; it is always built in,
// and costs nothing measurable while unused.
#ifndef BGP_STANDALONE_HOST_H
#define BGP_STANDALONE_HOST_H

#include "bgp_datatypes.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#if defined(__GNUC__)
#define BGP_STANDALONE_API __attribute__((visibility("default")))
#else
#define BGP_STANDALONE_API
#endif

namespace bgp::standalone {

// ---------------------------------------------------------------------------------------------------- diagnostics

// One ZOL_Assert() call of the plug-in.
struct Diagnostic {
    std::string source;
    uint32_t line;
    std::string message;
};

using AssertHook = std::function<void(const Diagnostic &)>;

// Hands every later diagnostic to hook, on the thread that reports it; an empty hook goes back to keeping them in a
// list. A hook that throws loses the diagnostic: nothing may pass back into the plug-in.
BGP_STANDALONE_API void SetAssertHook(AssertHook hook);
// The kept diagnostics, oldest first; the list is empty afterwards.
BGP_STANDALONE_API std::vector<Diagnostic> TakeDiagnostics();

// ------------------------------------------------------------------------------------- the plug-in and its rows

// The handle that a plug-in's init function receives and passes back with every row.
inline constexpr uint32_t RegistrationHandle = 1;

// Loads a plug-in (path as for dlopen) and calls its Bgp_InitDataType(). The registrations of an earlier plug-in are
// forgotten and it is unloaded, unless the new file cannot be loaded: then everything stays as it was. False with the
// reason in *error (may be null) when the file, its entry point or its initialisation fails.
BGP_STANDALONE_API bool LoadPlugIn(const char *path, std::string *error);
// Forgets the registrations of the loaded plug-in and unloads it; no thread may be inside of it. Without one, nothing.
BGP_STANDALONE_API void UnloadPlugIn();
// A symbol of the loaded plug-in; without one, of the process (a statically linked plug-in, in a program that exports
// its symbols). Null when absent.
BGP_STANDALONE_API void *PlugInSymbol(const char *name);
// For a statically linked plug-in: forgets all registrations, calls init and returns its answer.
BGP_STANDALONE_API uint32_t InitLinkedPlugIn(uint32_t (*init)(uint32_t handle));

// One SYS_Drm_RegisterDataType() call and what was answered.
struct Registration {
    uint32_t handle;
    const DataTypeDescriptor *row;
    uint32_t answer;
};

// Every registration call in order, the refused ones included.
BGP_STANDALONE_API std::vector<Registration> Registrations();
// Forgets the calls and the rows. What RefuseRow() asked for stays.
BGP_STANDALONE_API void ForgetRegistrations();
// The accepted rows, in order. They belong to the plug-in.
BGP_STANDALONE_API std::vector<const DataTypeDescriptor *> Rows();
// The first accepted row of that name or type id; null when there is none.
BGP_STANDALONE_API const DataTypeDescriptor *FindRow(std::string_view name);
BGP_STANDALONE_API const DataTypeDescriptor *FindRow(uint32_t typeId);

// ------------------------------------------------------------------------------------------------------- memory

// A memory handle is an arena: results of operations collect in it and go together. Up to 4096 may be open at a time.
// Reset and Close need that no other thread still allocates on that handle or uses its blocks.

// A new handle; 0, which no service accepts, when all are taken.
BGP_STANDALONE_API uint32_t OpenHandle();
// Drops all blocks and keeps the handle; memory is kept for the next round. Unknown handles are ignored.
BGP_STANDALONE_API void ResetHandle(uint32_t handle);
// Drops all blocks and the handle, whose number is not soon used again. Unknown handles are ignored.
BGP_STANDALONE_API void CloseHandle(uint32_t handle);
// Live blocks: given out and not marked free. 0 for an unknown handle. Entries of help records are not counted.
BGP_STANDALONE_API size_t HandleBlocks(uint32_t handle);
// Live SYS_DataTypeMalloc() blocks that the calling thread took.
BGP_STANDALONE_API size_t ScratchBlocks();

// One SYS_DataTypeFree() call. known is false for a pointer that is no live block of this host (foreign, or freed
// before); such a call frees nothing.
struct Release {
    const void *memory;
    bool known;
};

// The calling thread's SYS_DataTypeFree() calls since the last look, oldest first. Kept only while recording, which is
// off at first and is switched for the calling thread alone. A null pointer counts as known.
BGP_STANDALONE_API std::vector<Release> TakeReleases();
BGP_STANDALONE_API void RecordReleases(bool on);

// Checked blocks: each is a piece of its own between two guards of 16 bytes, filled with 0xA5 when given out and with
// 0x5A when freed. For the whole process, for blocks given out from now on; off at first. Under AddressSanitizer every
// block is a piece of its own in any case, and the sanitizer itself guards its ends.
BGP_STANDALONE_API void SetCheckedBlocks(bool on);
// Whether all guards are whole, and all freed blocks of handles still filled. Damage that was noticed when a block went
// away counts too, until it has been reported once. *report (may be null) gets one line for each damaged block.
BGP_STANDALONE_API bool BlocksIntact(std::string *report);

// ------------------------------------------------------------------------------------------- faults and counters

// What shall go wrong, on the calling thread. 0 is never, 1 the next call from now on, and so forth.
struct Faults {
    uint32_t failAllocation = 0;   // the n-th allocation; both allocators count together
    bool failAllAfter = false;     // and every later one
    uint32_t failPrint = 0;        // the n-th snprintf_truncated_s, snprintf_s or sprintf_s returns -1, writing nothing
    uint32_t failCopy = 0;         // the n-th memcpy_s, memset_s, strcpy_s or strncpy_s fails, writing nothing
    uint32_t failScan = 0;         // the n-th sscanf_s returns 0, writing nothing
    uint32_t failAddressPrint = 0; // the n-th inet_ntop6 returns null, writing nothing
    uint32_t helpInitCode = 0;     // when non-zero, every SYSDT_InitHelpInfo returns this and prepares nothing
};

// Replaces the calling thread's faults and zeroes its counters. SetFaults({}) ends all faults.
BGP_STANDALONE_API void SetFaults(const Faults &faults);

// Calls of the calling thread, failed ones included. allocations counts both allocators, plainAllocations those by
// SYS_DataTypeMalloc alone. lastHelpWord is what the latest SYSDT_InitHelpInfo was given.
struct Counters {
    uint32_t allocations, plainAllocations, frees, prints, copies, scans, addressPrints, helpInits, helpClears;
    uint32_t lastHelpWord;
};

// The counts since the last call, or since SetFaults().
BGP_STANDALONE_API Counters TakeCounters();
// From now on SYS_Drm_RegisterDataType() answers code for rows of that type id; code 0 accepts them again.
BGP_STANDALONE_API void RefuseRow(uint32_t typeId, uint32_t code);

// ------------------------------------------------------------------------------------------------- object names

// Names object index of a name-index type; an empty name takes the name away. A name stands for one index and an index
// for one name: the latest setting wins.
BGP_STANDALONE_API void SetObjectName(uint32_t typeId, uint32_t index, std::string_view name);
BGP_STANDALONE_API void ForgetObjectNames();

// ---------------------------------------------------------------------------------------------------------- Lua

// A new interpreter with the standard libraries; null when memory is out. One thread at a time may use it.
BGP_STANDALONE_API lua_State *NewLua();
BGP_STANDALONE_API void CloseLua(lua_State *L);

} // namespace bgp::standalone

#endif
