// From rules to operations. The host reaches every operation under its own C name, so each needs a function of its own;
// these macros write the functions, one operation a line, and a type's source ends with them in slot order. The rules
// are those of contract.h.
#ifndef BGP_HOST_OPERATIONS_H
#define BGP_HOST_OPERATIONS_H

#include "host/contract.h"

// A reader under its exported name, for whoever has a text and room for a value: 0, DT_ERR_NULL_PTR or DT_ERR_FAIL.
#define BGP_STR2(name, reader)                                                                                         \
    uint32_t name(const char *text, void *value)                                                                       \
    {                                                                                                                  \
        if (text == nullptr || value == nullptr) {                                                                     \
            return DT_ERR_NULL_PTR;                                                                                    \
        }                                                                                                              \
        return reader(text, value, nullptr) ? DT_OK : DT_ERR_FAIL;                                                     \
    }

#define BGP_FORMAT_IN(name, rule)                                                                                      \
    uint32_t name(const DataTypeRequest *request, uint32_t, uint32_t, char *text, uint16_t *outTypeId,                 \
                  uint16_t *outLength, void **outBuffer)                                                               \
    {                                                                                                                  \
        return bgp::FormatIn(rule, request, text, {outTypeId, outLength, outBuffer});                                  \
    }

#define BGP_FORMAT_OUT(name, rule)                                                                                     \
    uint32_t name(const DataTypeRequest *request, uint32_t, uint32_t length, const void *value, uint16_t *outTypeId,   \
                  uint16_t *outLength, void **outBuffer)                                                               \
    {                                                                                                                  \
        return bgp::FormatOut(rule, request, length, value, {outTypeId, outLength, outBuffer});                        \
    }

// A value is acceptable when it has the type's length; the content is not looked at.
#define BGP_CHECK_LENGTH(name, expected)                                                                               \
    uint32_t name(const void *, uint32_t, uint32_t length, const void *value)                                          \
    {                                                                                                                  \
        return bgp::CheckLength(value, length, expected);                                                              \
    }

#define BGP_HELP(name, rule)                                                                                           \
    uint32_t name(const DataTypeRequest *request, uint32_t, uint32_t, const char *typedText,                           \
                  const uint32_t *helpArgument, DataTypeHelpInfo *helpInfo)                                            \
    {                                                                                                                  \
        return bgp::Help(rule, request, typedText, helpArgument, helpInfo);                                            \
    }

// The order of the stored bytes: 1 when left is greater. The pointers are not tested.
#define BGP_COMPARE_BYTES(name)                                                                                        \
    int32_t name(const void *, uint32_t length, const void *left, const void *right)                                   \
    {                                                                                                                  \
        return bgp::CompareBytes(left, right, length);                                                                 \
    }

// The same, with DT_ERR_NULL_PTR in place of an order when a pointer is null.
#define BGP_COMPARE_BYTES_TESTED(name)                                                                                 \
    int32_t name(const void *, uint32_t length, const void *left, const void *right)                                   \
    {                                                                                                                  \
        if (left == nullptr || right == nullptr) {                                                                     \
            return static_cast<int32_t>(DT_ERR_NULL_PTR);                                                              \
        }                                                                                                              \
        return bgp::CompareBytes(left, right, length);                                                                 \
    }

#define BGP_LUA_SET(name, rule)                                                                                        \
    uint32_t name(lua_State *L, int32_t tableIndex, const char *fieldName, uint32_t, uint16_t length,                  \
                  const void *value)                                                                                   \
    {                                                                                                                  \
        return bgp::LuaSet(rule, L, tableIndex, fieldName, length, value);                                             \
    }

#define BGP_LUA_GET(name, rule)                                                                                        \
    uint32_t name(lua_State *L, int32_t tableIndex, const char *fieldName, uint32_t, uint16_t length, void *outValue)  \
    {                                                                                                                  \
        return bgp::LuaGet(rule, L, tableIndex, fieldName, length, outValue);                                          \
    }

// Swaps the integers of a layout. The pointer is not tested.
#define BGP_ENDIAN(name, layout)                                                                                       \
    uint32_t name(const void *, uint32_t, uint32_t, void *value)                                                       \
    {                                                                                                                  \
        bgp::SwapFields(layout, value);                                                                                \
        return DT_OK;                                                                                                  \
    }

#endif
