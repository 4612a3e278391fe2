#include "fuzz/compare/plugins.h"

#include "bgp_standalone_host.hpp"

#include <dlfcn.h>
#include <link.h>

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <span>

namespace bgp::compare {
namespace {

namespace host = bgp::standalone;

using EntryPoint = uint32_t (*)(uint32_t handle);

EntryPoint EntryPointOf(const PlugIn &plugIn, const char *name)
{
    return reinterpret_cast<EntryPoint>(Symbol(plugIn, name));
}

// A table that the plug-in shows, as long as its symbol says it is. Empty when there is none.
template <class Entry>
std::span<const Entry> TableOf(const PlugIn &plugIn, const char *name)
{
    void *table = Symbol(plugIn, name);
    Dl_info file;
    void *symbol = nullptr;
    if (table == nullptr || dladdr1(table, &file, &symbol, RTLD_DL_SYMENT) == 0 || symbol == nullptr) {
        return {};
    }
    return {static_cast<const Entry *>(table), static_cast<const ElfW(Sym) *>(symbol)->st_size / sizeof(Entry)};
}

BolPrefixLuaReader ReaderOf(const PlugIn &plugIn, uint32_t subType)
{
    for (const BolPrefixLuaGetEntry &entry : TableOf<BolPrefixLuaGetEntry>(plugIn, "g_astBOL_PREFIX_LuaGetTable")) {
        if (entry.SubType == subType) {
            return entry.Reader;
        }
    }
    return nullptr;
}

std::string NameIn(const char *name, size_t size)
{
    return {name, strnlen(name, size)};
}

// Type id and length are those of the composite type.
Offer SubTypeOffer(const BolPrefixSubtypeEntry &entry, const DataTypeDescriptor &composite)
{
    Offer offer{NameIn(entry.Name, sizeof entry.Name), entry.SubType, composite, nullptr};
    offer.row.FormatIn = entry.FormatIn;
    offer.row.FormatOut = entry.FormatOut;
    offer.row.Check = entry.Check;
    offer.row.Help = entry.Help;
    offer.row.Compare = entry.Compare;
    offer.row.LuaSet = entry.LuaSet;
    offer.row.LuaGet = entry.LuaGet;
    offer.row.Endian = nullptr;
    return offer;
}

void AddSubTypes(PlugIn &plugIn, const char *composite, const char *table)
{
    const DataTypeDescriptor *row = host::FindRow(composite);
    if (row == nullptr) {
        return;
    }
    for (const BolPrefixSubtypeEntry &entry : TableOf<BolPrefixSubtypeEntry>(plugIn, table)) {
        plugIn.offers.push_back(SubTypeOffer(entry, *row));
        if (std::strcmp(composite, "BOLPREFIX") == 0) {
            plugIn.offers.back().reader = ReaderOf(plugIn, entry.SubType);
        }
    }
}

} // namespace

bool Load(const std::string &path, PlugIn &plugIn, std::string &error)
{
    // With a folder in front, or the loader would look for the name elsewhere.
    plugIn.library = dlopen(std::filesystem::absolute(path).c_str(), RTLD_NOW | RTLD_LOCAL);
    if (plugIn.library == nullptr) {
        error = dlerror();
        return false;
    }
    const EntryPoint init = EntryPointOf(plugIn, "Bgp_InitDataType");
    if (init == nullptr || host::InitLinkedPlugIn(init) != DT_OK || host::Rows().empty()) {
        error = path + ": no plug-in that registers data types";
        return false;
    }
    for (const DataTypeDescriptor *row : host::Rows()) {
        plugIn.offers.push_back({NameIn(row->Name, sizeof row->Name), kNoSubType, *row, nullptr});
    }
    AddSubTypes(plugIn, "BOLPREFIX", "g_astBOL_PREFIX_ProcTable");
    AddSubTypes(plugIn, "BOLRD", "g_astBOL_RD_ProcTable");
    return true;
}

void *Symbol(const PlugIn &plugIn, const char *name)
{
    return dlsym(plugIn.library, name);
}

std::string Told(const Offer &offer)
{
    const DataTypeDescriptor &row = offer.row;
    const bool isRow = offer.subType == kNoSubType;
    std::string told = offer.name + (isRow ? "" : " sub-type " + std::to_string(offer.subType)) + ": type " +
                       std::to_string(row.TypeId) + ", length " + std::to_string(row.BinaryLength) + ", kind " +
                       std::to_string(row.BaseKind);
    const struct {
        const char *name;
        bool there;
    } slots[] = {{"FormatIn", row.FormatIn != nullptr}, {"FormatOut", row.FormatOut != nullptr},
                 {"Check", row.Check != nullptr},       {"Help", row.Help != nullptr},
                 {"Compare", row.Compare != nullptr},   {"Reserved", row.Reserved != nullptr},
                 {"LuaSet", row.LuaSet != nullptr},     {"LuaGet", row.LuaGet != nullptr},
                 {"Endian", row.Endian != nullptr},     {"Reader", offer.reader != nullptr}};
    for (const auto &slot : slots) {
        told += slot.there ? std::string(", ") + slot.name : "";
    }
    return told;
}

std::vector<std::string> Registration(const PlugIn &plugIn, uint16_t refusedTypeId)
{
    constexpr uint32_t kRefusal = 7;
    std::vector<std::string> answer;
    host::RefuseRow(refusedTypeId, kRefusal);
    host::TakeDiagnostics();
    for (const char *name : {"Bgp_InitDataType", "BGP_RegisterDataType", "BGP_RegisterExtendDataType"}) {
        host::ForgetRegistrations();
        const EntryPoint enter = EntryPointOf(plugIn, name);
        answer.push_back(std::string(name) + (enter == nullptr ? " missing" : " " + std::to_string(enter(1))));
        for (const host::Registration &call : host::Registrations()) {
            answer.push_back("registers " + NameIn(call.row->Name, sizeof call.row->Name) + " with handle " +
                             std::to_string(call.handle));
        }
        for (const host::Diagnostic &diagnostic : host::TakeDiagnostics()) {
            answer.push_back("reports " + diagnostic.message + " at " + diagnostic.source + ' ' +
                             std::to_string(diagnostic.line));
        }
    }
    host::RefuseRow(refusedTypeId, DT_OK);
    return answer;
}

std::vector<Subject> CommonSubjects(const PlugIn (&plugIns)[kSides])
{
    std::vector<Subject> subjects;
    for (const Offer &offer : plugIns[kOld].offers) {
        for (const Offer &other : plugIns[kNew].offers) {
            if (offer.name == other.name) {
                subjects.push_back({offer.name, {offer.row, other.row}, {offer.reader, other.reader}});
                break;
            }
        }
    }
    return subjects;
}

} // namespace bgp::compare
