// bgp_standalone_host.hpp - the functions of bgp_standalone_host.h in C++, with strings and vectors. What each does
// stands there; this adds types and nothing else.
#ifndef BGP_STANDALONE_HOST_HPP
#define BGP_STANDALONE_HOST_HPP

#include "bgp_standalone_host.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace bgp::standalone {

// ------------------------------------------------------------------------------------------------- the same in C

// Functions under shorter names, and written as functions are.
// NOLINTBEGIN(readability-identifier-naming)
inline constexpr auto &OpenHandle = BgpHost_OpenHandle;
inline constexpr auto &ResetHandle = BgpHost_ResetHandle;
inline constexpr auto &CloseHandle = BgpHost_CloseHandle;
inline constexpr auto &HandleBlocks = BgpHost_HandleBlocks;
inline constexpr auto &ScratchBlocks = BgpHost_ScratchBlocks;

inline constexpr uint32_t RegistrationHandle = BGP_HOST_REGISTRATION_HANDLE;
inline constexpr auto &UnloadPlugIn = BgpHost_UnloadPlugIn;
inline constexpr auto &PlugInSymbol = BgpHost_PlugInSymbol;
inline constexpr auto &InitLinkedPlugIn = BgpHost_InitLinkedPlugIn;
inline constexpr auto &ForgetRegistrations = BgpHost_ForgetRegistrations;
inline constexpr auto &RefuseRow = BgpHost_RefuseRow;
inline constexpr auto &ForgetObjectNames = BgpHost_ForgetObjectNames;

inline constexpr auto &NewLua = BgpHost_NewLua;
inline constexpr auto &CloseLua = BgpHost_CloseLua;

using Faults = BgpHostFaults;
using Counters = BgpHostCounters;
using Registration = BgpHostRegistration;
inline constexpr auto &TakeCounters = BgpHost_TakeCounters;
inline constexpr auto &RecordReleases = BgpHost_RecordReleases;
inline constexpr auto &SetCheckedBlocks = BgpHost_SetCheckedBlocks;
// NOLINTEND(readability-identifier-naming)

// -------------------------------------------------------------------------------------- the plug-in and its rows

// False with the reason in *error, which may be null.
inline bool LoadPlugIn(const char *path, std::string *error)
{
    char reason[1024];
    const bool loaded = BgpHost_LoadPlugIn(path, reason, sizeof reason) == DT_OK;
    if (!loaded && error != nullptr) {
        *error = reason;
    }
    return loaded;
}

inline const DataTypeDescriptor *FindRow(std::string_view name)
{
    return BgpHost_FindRow(std::string(name).c_str());
}

inline const DataTypeDescriptor *FindRow(uint32_t typeId)
{
    return BgpHost_FindRowById(typeId);
}

inline std::vector<const DataTypeDescriptor *> Rows()
{
    std::vector<const DataTypeDescriptor *> rows;
    while (const DataTypeDescriptor *row = BgpHost_RowAt(rows.size())) {
        rows.push_back(row);
    }
    return rows;
}

inline std::vector<Registration> Registrations()
{
    std::vector<Registration> calls;
    for (Registration call; BgpHost_RegistrationAt(calls.size(), &call);) {
        calls.push_back(call);
    }
    return calls;
}

inline void SetObjectName(uint32_t typeId, uint32_t index, std::string_view name)
{
    BgpHost_SetObjectName(typeId, index, std::string(name).c_str());
}

// --------------------------------------------------------------------------------- what the plug-in and tests did

struct Diagnostic {
    std::string source;
    uint32_t line;
    std::string message;
};

inline std::vector<Diagnostic> TakeDiagnostics()
{
    std::vector<Diagnostic> diagnostics;
    BgpHost_TakeDiagnostics(
        [](void *list, const char *source, uint32_t line, const char *message) {
            static_cast<std::vector<Diagnostic> *>(list)->push_back({source, line, message});
        },
        &diagnostics);
    return diagnostics;
}

// SetFaults({}) ends all faults.
inline void SetFaults(const Faults &faults)
{
    BgpHost_SetFaults(&faults);
}

struct Release {
    const void *memory;
    bool known;
};

inline std::vector<Release> TakeReleases()
{
    std::vector<Release> releases;
    BgpHost_TakeReleases(
        [](void *list, const void *memory, bool known) {
            static_cast<std::vector<Release> *>(list)->push_back({memory, known});
        },
        &releases);
    return releases;
}

// *report, which may be null, gets one line for each damaged block.
inline bool BlocksIntact(std::string *report)
{
    std::string lines;
    const bool intact = BgpHost_BlocksIntact(
        [](void *text, const char *line) { static_cast<std::string *>(text)->append(line).append("\n"); }, &lines);
    if (report != nullptr) {
        *report = lines;
    }
    return intact;
}

} // namespace bgp::standalone

#endif
