// A plug-in like the one that it is linked to, but for one thing: what BGP_PLANT names in the environment. The
// comparison has to notice each. Without a plant it is the same plug-in.
#include "bgp_datatypes.h"

#include "bgp_host_services.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <vector>

namespace {

// ------------------------------------------------------------------------------------------------ changed AS numbers

uint32_t OtherCode(const DataTypeRequest *request, uint32_t typeId, uint32_t length, char *text, uint16_t *outTypeId,
                   uint16_t *outLength, void **outBuffer)
{
    const uint32_t code = SYSDT_AsNumFormatIn(request, typeId, length, text, outTypeId, outLength, outBuffer);
    return code == DT_ERR_INVALID_VALUE ? DT_ERR_FAIL : code;
}

uint32_t OtherValue(const DataTypeRequest *request, uint32_t typeId, uint32_t length, char *text, uint16_t *outTypeId,
                    uint16_t *outLength, void **outBuffer)
{
    const uint32_t code = SYSDT_AsNumFormatIn(request, typeId, length, text, outTypeId, outLength, outBuffer);
    if (code == DT_OK) {
        static_cast<uint8_t *>(*outBuffer)[7] ^= 1;
    }
    return code;
}

uint32_t WritesText(const DataTypeRequest *request, uint32_t typeId, uint32_t length, char *text, uint16_t *outTypeId,
                    uint16_t *outLength, void **outBuffer)
{
    const uint32_t code = SYSDT_AsNumFormatIn(request, typeId, length, text, outTypeId, outLength, outBuffer);
    if (code == DT_OK) {
        text[0] = '9';
    }
    return code;
}

uint32_t TakesMemory(const DataTypeRequest *request, uint32_t typeId, uint32_t length, char *text, uint16_t *outTypeId,
                     uint16_t *outLength, void **outBuffer)
{
    SYS_DataTypeFree(SYS_DataTypeMalloc(8));
    return SYSDT_AsNumFormatIn(request, typeId, length, text, outTypeId, outLength, outBuffer);
}

uint32_t OtherText(const DataTypeRequest *request, uint32_t typeId, uint32_t length, const void *value,
                   uint16_t *outTypeId, uint16_t *outLength, void **outBuffer)
{
    const uint32_t code = SYSDT_AsNumFormatOut(request, typeId, length, value, outTypeId, outLength, outBuffer);
    if (code == DT_OK && *outTypeId == DT_TYPE_TEXT && *outLength > 1) {
        ++static_cast<char *>(*outBuffer)[*outLength - 2];
    }
    return code;
}

// Seen only while the host is out of memory.
uint32_t OtherFault(const DataTypeRequest *request, uint32_t typeId, uint32_t length, const void *value,
                    uint16_t *outTypeId, uint16_t *outLength, void **outBuffer)
{
    const uint32_t code = SYSDT_AsNumFormatOut(request, typeId, length, value, outTypeId, outLength, outBuffer);
    return code == DT_ERR_NO_MEMORY ? DT_ERR_FAIL : code;
}

uint32_t OtherCheck(const void *context, uint32_t typeId, uint32_t length, const void *value)
{
    const uint32_t code = SYSDT_AsNumCheck(context, typeId, length, value);
    return code == DT_ERR_LENGTH ? DT_ERR_FAIL : code;
}

uint32_t OtherHelp(const DataTypeRequest *request, uint32_t typeId, uint32_t length, const char *typedText,
                   const uint32_t *helpArgument, DataTypeHelpInfo *helpInfo)
{
    const uint32_t code = SYSDT_AsNumHelp(request, typeId, length, typedText, helpArgument, helpInfo);
    if (code == DT_OK && helpInfo->EntryCount != 0 && helpInfo->Entries[0].Text != nullptr) {
        helpInfo->Entries[0].Text[0] = 's';
    }
    return code;
}

int32_t OtherOrder(const void *, uint32_t length, const void *left, const void *right)
{
    const int order = std::memcmp(left, right, std::min(length, 8u));
    return order < 0 ? 1 : order > 0 ? -1 : 0;
}

int32_t Crashes(const void *, uint32_t, const void *, const void *)
{
    return std::raise(SIGSEGV);
}

int32_t Hangs(const void *, uint32_t, const void *, const void *)
{
    static volatile bool forEver = true;
    while (forEver) {
    }
    return 0;
}

uint32_t OtherTable(lua_State *L, int32_t tableIndex, const char *fieldName, uint32_t typeId, uint16_t length,
                    const void *value)
{
    const uint32_t code = SYSDT_AsNumLuaSet(L, tableIndex, fieldName, typeId, length, value);
    if (code == DT_OK) {
        SYSDT_SPTI_GetField(L, tableIndex, fieldName);
        SYSDT_SPTI_PushUInt(L, 2);
        SYSDT_SPTI_SetField(L, -2, "asType");
        SYSDT_SPTI_Pop(L, 1);
    }
    return code;
}

uint32_t OtherReading(lua_State *L, int32_t tableIndex, const char *fieldName, uint32_t typeId, uint16_t length,
                      void *outValue)
{
    const uint32_t code = SYSDT_AsNumLuaGet(L, tableIndex, fieldName, typeId, length, outValue);
    if (code == DT_OK) {
        static_cast<uint8_t *>(outValue)[3] ^= 1;
    }
    return code;
}

uint32_t GrowsStack(lua_State *L, int32_t tableIndex, const char *fieldName, uint32_t typeId, uint16_t length,
                    void *outValue)
{
    const uint32_t code = SYSDT_AsNumLuaGet(L, tableIndex, fieldName, typeId, length, outValue);
    if (code == DT_OK) {
        SYSDT_SPTI_PushUInt(L, 1);
    }
    return code;
}

uint32_t NoEndian(const void *, uint32_t, uint32_t, void *)
{
    return DT_OK;
}

// ------------------------------------------------------------------------------------------------------------- plants

struct Plant {
    const char *name;
    void (*into)(DataTypeDescriptor &asnum);
};

constexpr Plant kPlants[] = {
    {"code", [](DataTypeDescriptor &asnum) { asnum.FormatIn = OtherCode; }},
    {"value", [](DataTypeDescriptor &asnum) { asnum.FormatIn = OtherValue; }},
    {"typed", [](DataTypeDescriptor &asnum) { asnum.FormatIn = WritesText; }},
    {"memory", [](DataTypeDescriptor &asnum) { asnum.FormatIn = TakesMemory; }},
    {"text", [](DataTypeDescriptor &asnum) { asnum.FormatOut = OtherText; }},
    {"fault", [](DataTypeDescriptor &asnum) { asnum.FormatOut = OtherFault; }},
    {"check", [](DataTypeDescriptor &asnum) { asnum.Check = OtherCheck; }},
    {"help", [](DataTypeDescriptor &asnum) { asnum.Help = OtherHelp; }},
    {"order", [](DataTypeDescriptor &asnum) { asnum.Compare = OtherOrder; }},
    {"crash", [](DataTypeDescriptor &asnum) { asnum.Compare = Crashes; }},
    {"hang", [](DataTypeDescriptor &asnum) { asnum.Compare = Hangs; }},
    {"table", [](DataTypeDescriptor &asnum) { asnum.LuaSet = OtherTable; }},
    {"reading", [](DataTypeDescriptor &asnum) { asnum.LuaGet = OtherReading; }},
    {"stack", [](DataTypeDescriptor &asnum) { asnum.LuaGet = GrowsStack; }},
    {"endian", [](DataTypeDescriptor &asnum) { asnum.Endian = NoEndian; }},
    {"length", [](DataTypeDescriptor &asnum) { asnum.BinaryLength = 9; }},
    {"slot", [](DataTypeDescriptor &asnum) { asnum.Check = nullptr; }},
};

bool Planted(const char *name)
{
    const char *plant = std::getenv("BGP_PLANT");
    return plant != nullptr && std::strcmp(plant, name) == 0;
}

// What the plug-in behind this one shows under a name.
template <class Type>
Type Behind(const char *name)
{
    return reinterpret_cast<Type>(dlsym(RTLD_NEXT, name));
}

std::array<DataTypeDescriptor, BGP_NAME_INDEX_ROWS> nameIndexRows;
std::vector<DataTypeDescriptor> extendRows;

void Prepare()
{
    std::copy_n(g_astBgpDataTypeNameIndexDefineTbl, nameIndexRows.size(), nameIndexRows.begin());
    extendRows.clear();
    while (Bgp_TypeAt(BGP_NAME_INDEX_ROWS + static_cast<uint32_t>(extendRows.size())) != nullptr) {
        extendRows.push_back(g_astBgpDataTypeExtendDefineTbl[extendRows.size()]);
    }
    for (DataTypeDescriptor &row : extendRows) {
        for (const Plant &plant : kPlants) {
            if (std::strcmp(row.Name, "ASNUM") == 0 && Planted(plant.name)) {
                plant.into(row);
            }
        }
    }
}

template <class Rows>
uint32_t Register(uint32_t handle, const Rows &rows, const char *report, uint32_t line)
{
    uint32_t answer = DT_OK;
    for (const DataTypeDescriptor &row : rows) {
        answer = SYS_Drm_RegisterDataType(handle, &row);
        if (answer != DT_OK) {
            char message[64];
            std::snprintf(message, sizeof message, "%s Ret:%u", report, Planted("report") ? 0 : answer);
            ZOL_Assert("zol_datatype_func_bgp_init", line, message);
        }
    }
    return answer;
}

} // namespace

// ---------------------------------------------------------------------------------------------------------- exports

uint32_t BGP_RegisterDataType(uint32_t handle)
{
    return Register(handle, nameIndexRows, "RegisterDataType", 202);
}

uint32_t BGP_RegisterExtendDataType(uint32_t handle)
{
    return Register(handle, extendRows, "RegisterDataTypeExt", 215);
}

// The sub-types under their own name, which the compiler knows as a constant of the plug-in behind.
__attribute__((visibility("default")))
BolPrefixSubtypeEntry changedSubTypes[BOL_PREFIX_SUBTYPES] __asm__("g_astBOL_PREFIX_ProcTable");

uint32_t Bgp_InitDataType(uint32_t handle)
{
    Prepare();
    std::copy_n(Behind<const BolPrefixSubtypeEntry *>("g_astBOL_PREFIX_ProcTable"), BOL_PREFIX_SUBTYPES,
                changedSubTypes);
    if (Planted("sub-type")) {
        changedSubTypes[1].FormatIn = SYSDT_AsNumFormatIn;
    }
    BGP_RegisterDataType(handle);
    BGP_RegisterExtendDataType(handle);
    return DT_OK;
}

uint32_t SYSDT_atoul(const char *text, uint32_t *value)
{
    const uint32_t code = Behind<decltype(&SYSDT_atoul)>("SYSDT_atoul")(text, value);
    if (code == DT_OK && Planted("helper")) {
        ++*value;
    }
    return code;
}

const BgpLayout *Bgp_DescribeValue(uint32_t typeId, const void *value, uint32_t length)
{
    if (typeId == 255 && Planted("layout")) {
        return nullptr;
    }
    return Behind<decltype(&Bgp_DescribeValue)>("Bgp_DescribeValue")(typeId, value, length);
}
