// Both ways are kept, so that a look-up in either is one search.
#include "object_names.h"
#include "bgp_standalone_host.h"

#include <map>
#include <mutex>
#include <shared_mutex>
#include <utility>

namespace {

struct NameTable {
    std::shared_mutex mutex;
    std::map<std::pair<uint32_t, uint32_t>, std::string> names;
    std::map<std::pair<uint32_t, std::string>, uint32_t> indexes;
};

NameTable &Table()
{
    static NameTable *table = new NameTable; // a plug-in may still ask while the process ends
    return *table;
}

} // namespace

void BgpHost_SetObjectName(uint32_t typeId, uint32_t index, const char *name)
{
    NameTable &table = Table();
    const std::unique_lock lock(table.mutex);
    if (const auto old = table.names.find({typeId, index}); old != table.names.end()) {
        table.indexes.erase({typeId, old->second});
        table.names.erase(old);
    }
    if (name == nullptr || *name == '\0') {
        return;
    }
    const auto [at, added] = table.indexes.try_emplace({typeId, std::string(name)}, index);
    if (!added) {
        table.names.erase({typeId, std::exchange(at->second, index)});
    }
    table.names[{typeId, index}] = name;
}

void BgpHost_ForgetObjectNames()
{
    NameTable &table = Table();
    const std::unique_lock lock(table.mutex);
    table.names.clear();
    table.indexes.clear();
}

namespace bgp::standalone::detail {

std::optional<uint32_t> FindObject(uint32_t typeId, std::string_view name)
{
    NameTable &table = Table();
    const std::shared_lock lock(table.mutex);
    const auto at = table.indexes.find({typeId, std::string(name)});
    return at == table.indexes.end() ? std::nullopt : std::optional(at->second);
}

std::optional<std::string> NameOfObject(uint32_t typeId, uint32_t index)
{
    NameTable &table = Table();
    const std::shared_lock lock(table.mutex);
    const auto at = table.names.find({typeId, index});
    return at == table.names.end() ? std::nullopt : std::optional(at->second);
}

} // namespace bgp::standalone::detail
