#include "calls.h"

#include "bgp_standalone_host.hpp"
#include "yang.h"

#include <algorithm>
#include <cstring>
#include <iterator>

namespace bgp::bench {

namespace {

uint32_t Advance(Subject &subject)
{
    const uint32_t place = subject.next;
    subject.next = place + 1 == subject.ring.count ? 0 : place + 1;
    return place;
}

// -------------------------------------------------------------------------------------------------------- the plug-in

void RunIn(Subject &subject, uint32_t count)
{
    const DataTypeDescriptor &type = *subject.ring.type;
    const DataTypeRequest request{subject.ring.mode, subject.handle};
    while (count-- > 0) {
        uint16_t typeId = 0;
        uint16_t length = 0;
        void *value = nullptr;
        type.FormatIn(&request, type.TypeId, 0, subject.ring.Text(Advance(subject)), &typeId, &length, &value);
        if (subject.ring.plain) {
            SYS_DataTypeFree(value);
        }
    }
    standalone::ResetHandle(subject.handle);
}

void RunOut(Subject &subject, uint32_t count)
{
    const DataTypeDescriptor &type = *subject.ring.type;
    const DataTypeRequest request{subject.ring.mode, subject.handle};
    char buffer[kMostBuffer];
    while (count-- > 0) {
        uint16_t typeId = 0;
        uint16_t length = 0;
        void *text = buffer;
        type.FormatOut(&request, type.TypeId, subject.ring.length, subject.ring.Value(Advance(subject)), &typeId,
                       &length, &text);
    }
    standalone::ResetHandle(subject.handle); // the scratch memory of a few types
}

void RunCompare(Subject &subject, uint32_t count)
{
    const DataTypeDescriptor &type = *subject.ring.type;
    while (count-- > 0) {
        const uint8_t *left = subject.ring.Value(Advance(subject));
        type.Compare(&type, subject.ring.length, left, subject.ring.Value(subject.next));
    }
}

void RunCheck(Subject &subject, uint32_t count)
{
    const DataTypeDescriptor &type = *subject.ring.type;
    while (count-- > 0) {
        type.Check(&type, type.TypeId, subject.ring.length, subject.ring.Value(Advance(subject)));
    }
}

constexpr char kField[] = "value";

// Into a field of the table on top of the stack.
void RunLuaSet(Subject &subject, uint32_t count)
{
    const DataTypeDescriptor &type = *subject.ring.type;
    const int32_t top = SYSDT_SPTI_GetTop(subject.lua);
    SYSDT_SPTI_CreateTable(subject.lua, 0, 1);
    while (count-- > 0) {
        type.LuaSet(subject.lua, top + 1, kField, type.TypeId, static_cast<uint16_t>(subject.ring.length),
                    subject.ring.Value(Advance(subject)));
    }
    SYSDT_SPTI_Pop(subject.lua, SYSDT_SPTI_GetTop(subject.lua) - top);
}

// Of one and the same table.
void RunLuaGet(Subject &subject, uint32_t count)
{
    const DataTypeDescriptor &type = *subject.ring.type;
    const auto length = static_cast<uint16_t>(subject.ring.length);
    const int32_t top = SYSDT_SPTI_GetTop(subject.lua);
    uint8_t value[kMostValue];
    SYSDT_SPTI_CreateTable(subject.lua, 0, 1);
    type.LuaSet(subject.lua, top + 1, kField, type.TypeId, length, subject.ring.Value(0));
    while (count-- > 0) {
        type.LuaGet(subject.lua, top + 1, kField, type.TypeId, length, value);
        SYSDT_SPTI_Pop(subject.lua, SYSDT_SPTI_GetTop(subject.lua) - top - 1);
    }
    SYSDT_SPTI_Pop(subject.lua, SYSDT_SPTI_GetTop(subject.lua) - top);
}

// Of a copy, to network order.
void RunEndian(Subject &subject, uint32_t count)
{
    const DataTypeDescriptor &type = *subject.ring.type;
    const bool typeFirst = subject.ring.facts->Network == BGP_NETWORK_TYPE_FIRST;
    uint8_t value[kMostValue];
    while (count-- > 0) {
        std::memcpy(value, subject.ring.Value(Advance(subject)), subject.ring.length);
        if (typeFirst) {
            std::reverse(value, value + 4);
        }
        type.Endian(&type, type.TypeId, subject.ring.length, value);
    }
}

// ------------------------------------------------------------------------------------------------------ what else is

void RunReader(Subject &subject, uint32_t count, In read)
{
    uint8_t value[kMostValue];
    while (count-- > 0) {
        read(subject.ring.Text(Advance(subject)), value);
    }
}

void RunPrinter(Subject &subject, uint32_t count, Out print)
{
    char text[kMostBuffer];
    while (count-- > 0) {
        print(subject.ring.Value(Advance(subject)), text);
    }
}

void RunFloorIn(Subject &subject, uint32_t count)
{
    RunReader(subject, count, subject.row.floor->read);
}

void RunFloorOut(Subject &subject, uint32_t count)
{
    RunPrinter(subject, count, subject.row.floor->print);
}

void RunFloorHostIn(Subject &subject, uint32_t count)
{
    auto *const read = subject.row.floor->readForHost;
    while (count-- > 0) {
        void *value = read(subject.handle, subject.ring.Text(Advance(subject)));
        if (subject.ring.plain) {
            SYS_DataTypeFree(value);
        }
    }
    standalone::ResetHandle(subject.handle);
}

void RunFloorHostOut(Subject &subject, uint32_t count)
{
    RunPrinter(subject, count, subject.row.floor->printForHost);
}

void RunTextbookIn(Subject &subject, uint32_t count)
{
    RunReader(subject, count, subject.row.textbook->read);
}

void RunTextbookOut(Subject &subject, uint32_t count)
{
    RunPrinter(subject, count, subject.row.textbook->print);
}

void RunLeafIn(Subject &subject, uint32_t count)
{
    while (count-- > 0) {
        ReadByLeaf(subject.leafTexts[Advance(subject)]);
    }
}

bool HasLeaf(const Subject &subject)
{
    return !subject.leafTexts.empty();
}

bool HasTexts(const Subject &subject)
{
    return subject.ring.type->FormatIn != nullptr && !subject.ring.textAt.empty();
}

bool HasFloor(const Subject &subject)
{
    return subject.row.floor != nullptr;
}

template <auto Operation>
bool Has(const Subject &subject)
{
    return subject.ring.type->*Operation != nullptr;
}

bool HasTextbookIn(const Subject &subject)
{
    return subject.row.textbook != nullptr;
}

bool HasTextbookOut(const Subject &subject)
{
    return subject.row.textbook != nullptr && subject.row.textbook->print != nullptr;
}

// clang-format off
constexpr Call kCalls[] = {
    {"in",      "plug-in",    'i', HasTexts,                           RunIn},
    {"in",      "floor",      'i', HasFloor,                           RunFloorIn},
    {"in",      "floor+host", 'i', HasFloor,                           RunFloorHostIn},
    {"in",      "textbook",   'i', HasTextbookIn,                      RunTextbookIn},
    {"in",      "libyang",    'i', HasLeaf,                            RunLeafIn},
    {"out",     "plug-in",    'o', Has<&DataTypeDescriptor::FormatOut>, RunOut},
    {"out",     "floor",      'o', HasFloor,                           RunFloorOut},
    {"out",     "floor+host", 'o', HasFloor,                           RunFloorHostOut},
    {"out",     "textbook",   'o', HasTextbookOut,                     RunTextbookOut},
    {"compare", "plug-in",    'c', Has<&DataTypeDescriptor::Compare>,  RunCompare},
    {"check",   "plug-in",    'k', Has<&DataTypeDescriptor::Check>,    RunCheck},
    {"luaset",  "plug-in",    's', Has<&DataTypeDescriptor::LuaSet>,   RunLuaSet},
    {"luaget",  "plug-in",    'g', Has<&DataTypeDescriptor::LuaGet>,   RunLuaGet},
    {"endian",  "plug-in",    'e', Has<&DataTypeDescriptor::Endian>,   RunEndian},
};
// clang-format on

} // namespace

bool IsWanted(const Call &call, const Subject &subject)
{
    return std::strchr(subject.row.operations, call.letter) != nullptr && call.isOffered(subject);
}

Calls AllCalls()
{
    return {kCalls, std::size(kCalls)};
}

} // namespace bgp::bench
