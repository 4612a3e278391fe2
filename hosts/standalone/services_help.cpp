// Help records.
#include "bgp_host_services.h"
#include "memory.h"
#include "replaceable.h"
#include "thread_state.h"

#include <new>

using namespace bgp::standalone;

BGP_REPLACEABLE uint32_t SYSDT_InitHelpInfo(uint32_t memoryHandle, DataTypeHelpInfo *info, uint32_t entryCount,
                                            uint32_t helpWord)
{
    detail::ThreadState &state = detail::threadState;
    ++state.counters.helpInits;
    state.counters.lastHelpWord = helpWord;
    if (state.left.helpInitCode != 0) {
        return state.left.helpInitCode;
    }
    if (info == nullptr) {
        return DT_ERR_NULL_PTR;
    }
    if (entryCount == 0 || entryCount > 1024) {
        return DT_ERR_INVALID_PARAM;
    }
    void *memory = detail::AllocateForHost(memoryHandle, entryCount * sizeof(DataTypeHelpEntry));
    if (memory == nullptr) {
        return DT_ERR_NO_MEMORY;
    }
    info->EntryCount = entryCount;
    info->Entries = static_cast<DataTypeHelpEntry *>(memory);
    for (uint32_t entry = 0; entry < entryCount; ++entry) {
        new (&info->Entries[entry]) DataTypeHelpEntry{nullptr};
    }
    return DT_OK;
}

BGP_REPLACEABLE void SYSDT_ClearHelpInfo(DataTypeHelpInfo *info)
{
    ++detail::threadState.counters.helpClears;
    if (info == nullptr) {
        return;
    }
    detail::ReleaseForHost(info->Entries);
    *info = {0, nullptr};
}
