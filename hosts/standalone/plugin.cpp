// Loading a plug-in.
#include "bgp_standalone_host.h"

#include <dlfcn.h>
#include <unistd.h>

#include <cstring>
#include <mutex>
#include <string>
#include <utility>

namespace {

struct Loaded {
    std::mutex mutex; // never held while the plug-in runs
    void *library = nullptr;
};

Loaded &State()
{
    static Loaded *loaded = new Loaded; // a plug-in may still be called while the process ends
    return *loaded;
}

void *Exchange(void *library)
{
    const std::lock_guard lock(State().mutex);
    return std::exchange(State().library, library);
}

void Unload(void *library)
{
    if (library != nullptr) {
        dlclose(library);
    }
}

uint32_t Fails(const std::string &why, char *reason, size_t reasonSize)
{
    if (reason != nullptr && reasonSize != 0) {
        reason[why.copy(reason, reasonSize - 1)] = '\0';
    }
    return DT_ERR_FAIL;
}

// The text of the dynamic loader's latest failure on this thread.
std::string LoaderError()
{
    const char *text = dlerror();
    return text == nullptr ? "the dynamic loader gives no reason" : text;
}

// A name alone stands for the file of that name beside this library, if there is one.
std::string FileOf(const std::string &path)
{
    Dl_info here;
    if (path.find('/') != std::string::npos ||
        dladdr(reinterpret_cast<const void *>(&BgpHost_LoadPlugIn), &here) == 0 || here.dli_fname == nullptr) {
        return path;
    }
    const std::string library = here.dli_fname;
    const std::string beside = library.substr(0, library.rfind('/') + 1) + path;
    return access(beside.c_str(), R_OK) == 0 ? beside : path;
}

} // namespace

uint32_t BgpHost_LoadPlugIn(const char *path, char *reason, size_t reasonSize)
{
    if (path == nullptr) {
        return Fails("no plug-in named", reason, reasonSize);
    }
    void *library = dlopen(FileOf(path).c_str(), RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) {
        return Fails(LoaderError(), reason, reasonSize);
    }
    void *init = dlsym(library, "Bgp_InitDataType");
    if (init == nullptr) {
        const std::string why = LoaderError();
        dlclose(library);
        return Fails(why, reason, reasonSize);
    }
    void *former = Exchange(library);
    BgpHost_ForgetRegistrations();
    Unload(former);
    const uint32_t answer = reinterpret_cast<uint32_t (*)(uint32_t)>(init)(BGP_HOST_REGISTRATION_HANDLE);
    if (answer == DT_OK) {
        return DT_OK;
    }
    BgpHost_UnloadPlugIn();
    return Fails(std::string(path) + ": Bgp_InitDataType answers " + std::to_string(answer), reason, reasonSize);
}

void BgpHost_UnloadPlugIn()
{
    void *library = Exchange(nullptr);
    if (library != nullptr) {
        BgpHost_ForgetRegistrations();
        dlclose(library);
    }
}

void *BgpHost_PlugInSymbol(const char *name)
{
    if (name == nullptr) {
        return nullptr;
    }
    const std::lock_guard lock(State().mutex);
    return dlsym(State().library != nullptr ? State().library : RTLD_DEFAULT, name);
}
