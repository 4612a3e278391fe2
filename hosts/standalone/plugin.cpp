// Loading a plug-in, what it registers, and what it reports.
#include "bgp_host_services.h"
#include "bgp_standalone_host.h"
#include "replaceable.h"

#include <dlfcn.h>

#include <cstring>
#include <map>
#include <mutex>
#include <utility>

namespace bgp::standalone {
namespace {

struct PlugInState {
    std::mutex mutex; // never held while the plug-in or a hook runs
    void *library = nullptr;
    std::vector<Registration> registrations;
    std::map<uint32_t, uint32_t> refusals; // type id -> code
    std::vector<Diagnostic> diagnostics;
    AssertHook hook;
};

PlugInState &State()
{
    static PlugInState *state = new PlugInState; // a plug-in may still report while the process ends
    return *state;
}

std::string_view NameOf(const DataTypeDescriptor &row)
{
    return {row.Name, strnlen(row.Name, sizeof row.Name)};
}

bool Fails(std::string *error, std::string reason)
{
    if (error != nullptr)
        *error = std::move(reason);
    return false;
}

// The text of the dynamic loader's latest failure on this thread.
std::string LoaderError()
{
    const char *text = dlerror();
    return text == nullptr ? "the dynamic loader gives no reason" : text;
}

void Unload(void *library)
{
    if (library != nullptr)
        dlclose(library);
}

// The first accepted row that answers a question; null when none does.
template <class Question>
const DataTypeDescriptor *FirstRow(Question question)
{
    const std::lock_guard lock(State().mutex);
    for (const Registration &registration : State().registrations)
        if (registration.answer == 0 && question(*registration.row))
            return registration.row;
    return nullptr;
}

uint32_t Register(uint32_t handle, const DataTypeDescriptor *row)
{
    PlugInState &state = State();
    const std::lock_guard lock(state.mutex);
    uint32_t answer = DT_ERR_NULL_PTR;
    if (row != nullptr) {
        const auto refusal = state.refusals.find(row->TypeId);
        answer = refusal == state.refusals.end() ? DT_OK : refusal->second;
    }
    state.registrations.push_back({handle, row, answer});
    return answer;
}

void Report(Diagnostic diagnostic)
{
    PlugInState &state = State();
    AssertHook hook;
    {
        const std::lock_guard lock(state.mutex);
        hook = state.hook;
        if (!hook)
            state.diagnostics.push_back(std::move(diagnostic));
    }
    if (hook)
        hook(diagnostic);
}

} // namespace

void SetAssertHook(AssertHook hook)
{
    const std::lock_guard lock(State().mutex);
    State().hook = std::move(hook);
}

std::vector<Diagnostic> TakeDiagnostics()
{
    const std::lock_guard lock(State().mutex);
    return std::exchange(State().diagnostics, {});
}

bool LoadPlugIn(const char *path, std::string *error)
{
    if (path == nullptr)
        return Fails(error, "no plug-in named");
    void *library = dlopen(path, RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr)
        return Fails(error, LoaderError());
    void *symbol = dlsym(library, "Bgp_InitDataType");
    if (symbol == nullptr) {
        std::string reason = LoaderError();
        dlclose(library);
        return Fails(error, std::move(reason));
    }
    void *former;
    {
        const std::lock_guard lock(State().mutex);
        former = std::exchange(State().library, library);
        State().registrations.clear();
    }
    Unload(former);
    const uint32_t answer = reinterpret_cast<uint32_t (*)(uint32_t)>(symbol)(RegistrationHandle);
    if (answer == 0)
        return true;
    {
        const std::lock_guard lock(State().mutex);
        State().library = nullptr;
        State().registrations.clear();
    }
    dlclose(library);
    return Fails(error, std::string(path) + ": Bgp_InitDataType answers " + std::to_string(answer));
}

void UnloadPlugIn()
{
    void *library;
    {
        const std::lock_guard lock(State().mutex);
        library = std::exchange(State().library, nullptr);
        if (library != nullptr)
            State().registrations.clear();
    }
    Unload(library);
}

void *PlugInSymbol(const char *name)
{
    if (name == nullptr)
        return nullptr;
    const std::lock_guard lock(State().mutex);
    return dlsym(State().library != nullptr ? State().library : RTLD_DEFAULT, name);
}

uint32_t InitLinkedPlugIn(uint32_t (*init)(uint32_t handle))
{
    ForgetRegistrations();
    return init == nullptr ? DT_ERR_NULL_PTR : init(RegistrationHandle);
}

std::vector<Registration> Registrations()
{
    const std::lock_guard lock(State().mutex);
    return State().registrations;
}

void ForgetRegistrations()
{
    const std::lock_guard lock(State().mutex);
    State().registrations.clear();
}

std::vector<const DataTypeDescriptor *> Rows()
{
    std::vector<const DataTypeDescriptor *> rows;
    for (const Registration &registration : Registrations())
        if (registration.answer == 0)
            rows.push_back(registration.row);
    return rows;
}

const DataTypeDescriptor *FindRow(std::string_view name)
{
    return FirstRow([=](const DataTypeDescriptor &row) { return NameOf(row) == name; });
}

const DataTypeDescriptor *FindRow(uint32_t typeId)
{
    return FirstRow([=](const DataTypeDescriptor &row) { return row.TypeId == typeId; });
}

void RefuseRow(uint32_t typeId, uint32_t code)
{
    const std::lock_guard lock(State().mutex);
    if (code == 0)
        State().refusals.erase(typeId);
    else
        State().refusals[typeId] = code;
}

} // namespace bgp::standalone

using namespace bgp::standalone;

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
        Report({source == nullptr ? "" : source, line, message == nullptr ? "" : message});
    } catch (...) { // the report is lost; nothing may pass into the plug-in
    }
}
