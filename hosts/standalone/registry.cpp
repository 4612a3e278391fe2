// What a plug-in registers, and what it reports.
#include "bgp_host_services.h"
#include "bgp_standalone_host.h"
#include "replaceable.h"

#include <cstring>
#include <map>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace {

struct Diagnostic {
    std::string source;
    uint32_t line;
    std::string message;
};

struct Hook {
    BgpHostDiagnosticTaker *take = nullptr;
    void *context = nullptr;
};

struct Registry {
    std::mutex mutex; // never held while the plug-in or a hook runs
    std::vector<BgpHostRegistration> calls;
    std::map<uint32_t, uint32_t> refusals; // type id -> code
    std::vector<Diagnostic> diagnostics;
    Hook hook;
};

Registry &State()
{
    static Registry *registry = new Registry; // a plug-in may still report while the process ends
    return *registry;
}

// The first accepted row that answers a question; null when none does.
template <class Question>
const DataTypeDescriptor *FirstRow(Question question)
{
    const std::lock_guard lock(State().mutex);
    for (const BgpHostRegistration &call : State().calls) {
        if (call.answer == 0 && question(*call.row)) {
            return call.row;
        }
    }
    return nullptr;
}

uint32_t Register(uint32_t handle, const DataTypeDescriptor *row)
{
    Registry &registry = State();
    const std::lock_guard lock(registry.mutex);
    uint32_t answer = DT_ERR_NULL_PTR;
    if (row != nullptr) {
        const auto refusal = registry.refusals.find(row->TypeId);
        answer = refusal == registry.refusals.end() ? DT_OK : refusal->second;
    }
    registry.calls.push_back({handle, row, answer});
    return answer;
}

void Report(const char *source, uint32_t line, const char *message)
{
    Registry &registry = State();
    Hook hook;
    {
        const std::lock_guard lock(registry.mutex);
        hook = registry.hook;
        if (hook.take == nullptr) {
            registry.diagnostics.push_back({source, line, message});
        }
    }
    if (hook.take != nullptr) {
        hook.take(hook.context, source, line, message);
    }
}

} // namespace

uint32_t BgpHost_InitLinkedPlugIn(uint32_t (*init)(uint32_t handle))
{
    BgpHost_ForgetRegistrations();
    return init == nullptr ? DT_ERR_NULL_PTR : init(BGP_HOST_REGISTRATION_HANDLE);
}

const DataTypeDescriptor *BgpHost_FindRow(const char *name)
{
    if (name == nullptr) {
        return nullptr;
    }
    const size_t length = std::strlen(name);
    return FirstRow([=](const DataTypeDescriptor &row) {
        return strnlen(row.Name, sizeof row.Name) == length && std::memcmp(row.Name, name, length) == 0;
    });
}

const DataTypeDescriptor *BgpHost_FindRowById(uint32_t typeId)
{
    return FirstRow([=](const DataTypeDescriptor &row) { return row.TypeId == typeId; });
}

const DataTypeDescriptor *BgpHost_RowAt(size_t place)
{
    return FirstRow([&](const DataTypeDescriptor &) { return place-- == 0; });
}

bool BgpHost_RegistrationAt(size_t place, BgpHostRegistration *call)
{
    const std::lock_guard lock(State().mutex);
    if (place >= State().calls.size()) {
        return false;
    }
    *call = State().calls[place];
    return true;
}

void BgpHost_ForgetRegistrations()
{
    const std::lock_guard lock(State().mutex);
    State().calls.clear();
}

void BgpHost_RefuseRow(uint32_t typeId, uint32_t code)
{
    const std::lock_guard lock(State().mutex);
    if (code == 0) {
        State().refusals.erase(typeId);
    } else {
        State().refusals[typeId] = code;
    }
}

void BgpHost_SetAssertHook(BgpHostDiagnosticTaker *hook, void *context)
{
    const std::lock_guard lock(State().mutex);
    State().hook = {hook, context};
}

void BgpHost_TakeDiagnostics(BgpHostDiagnosticTaker *take, void *context)
{
    std::vector<Diagnostic> taken;
    {
        const std::lock_guard lock(State().mutex);
        taken.swap(State().diagnostics);
    }
    for (const Diagnostic &diagnostic : taken) {
        take(context, diagnostic.source.c_str(), diagnostic.line, diagnostic.message.c_str());
    }
}

BGP_REPLACEABLE uint32_t SYS_Drm_RegisterDataType(uint32_t handle, const DataTypeDescriptor *row)
{
    try {
        return Register(handle, row);
    } catch (...) {
        return DT_ERR_NO_MEMORY;
    }
}

BGP_REPLACEABLE void ZOL_Assert(const char *source, uint32_t line, const char *message)
{
    try {
        Report(source == nullptr ? "" : source, line, message == nullptr ? "" : message);
    } catch (...) { // the report is lost; nothing may pass into the plug-in
    }
}
