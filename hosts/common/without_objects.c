/*
 * For a host that has neither objects with names nor a string type of its own: the operations that the plug-in puts
 * into the rows of the name-index types and of CVRFNAME. They serve no mode and supply no help.
 */
#include "bgp_host_services.h"
#include "replaceable.h"

#if defined(__GNUC__)
#pragma GCC diagnostic ignored "-Wunused-parameter" /* nobody is at home */
#endif

BGP_REPLACEABLE uint32_t SYS_DT_UINT32IndexFormatIn(const DataTypeRequest *request, uint32_t typeId, uint32_t length,
                                                    char *text, uint16_t *outTypeId, uint16_t *outLength,
                                                    void **outBuffer)
{
    return DT_ERR_MODE_UNSUPPORTED;
}

BGP_REPLACEABLE uint32_t SYS_DT_IndexFormatOut(const DataTypeRequest *request, uint32_t typeId, uint32_t length,
                                               const void *value, uint16_t *outTypeId, uint16_t *outLength,
                                               void **outBuffer)
{
    return DT_ERR_MODE_UNSUPPORTED;
}

BGP_REPLACEABLE uint32_t SYSDT_Uint32LuaSet(lua_State *L, int32_t tableIndex, const char *fieldName, uint32_t typeId,
                                            uint16_t length, const void *value)
{
    return DT_ERR_INVALID_PARAM;
}

BGP_REPLACEABLE uint32_t SYSDT_Uint32LuaGet(lua_State *L, int32_t tableIndex, const char *fieldName, uint32_t typeId,
                                            uint16_t length, void *outValue)
{
    return DT_ERR_INVALID_PARAM;
}

BGP_REPLACEABLE uint32_t SYSDT_StringFormatIn(const DataTypeRequest *request, uint32_t typeId, uint32_t length,
                                              char *text, uint16_t *outTypeId, uint16_t *outLength, void **outBuffer)
{
    return DT_ERR_MODE_UNSUPPORTED;
}

BGP_REPLACEABLE uint32_t SYSDT_StringFormatOut(const DataTypeRequest *request, uint32_t typeId, uint32_t length,
                                               const void *value, uint16_t *outTypeId, uint16_t *outLength,
                                               void **outBuffer)
{
    return DT_ERR_MODE_UNSUPPORTED;
}

BGP_REPLACEABLE uint32_t SYSDT_StringHelp(const DataTypeRequest *request, uint32_t typeId, uint32_t length,
                                          const char *typedText, const uint32_t *helpArgument,
                                          DataTypeHelpInfo *helpInfo)
{
    return DT_OK;
}

BGP_REPLACEABLE uint32_t SYSDT_StringLuaSet(lua_State *L, int32_t tableIndex, const char *fieldName, uint32_t typeId,
                                            uint16_t length, const void *value)
{
    return DT_ERR_INVALID_PARAM;
}

BGP_REPLACEABLE uint32_t SYSDT_StringLuaGet(lua_State *L, int32_t tableIndex, const char *fieldName, uint32_t typeId,
                                            uint16_t length, void *outValue)
{
    return DT_ERR_INVALID_PARAM;
}
