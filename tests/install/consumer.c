/* A host in one file: it brings the services that it wants to have its own way, and takes the others from the
 * stand-alone host. It proves that the public header is C and that the installed library can be embedded. */
#include <bgp_datatypes.h>

#include <stdarg.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

static const DataTypeDescriptor *asnum;

uint32_t SYS_Drm_RegisterDataType(uint32_t handle, const DataTypeDescriptor *row)
{
    (void)handle;
    if (strcmp(row->Name, "ASNUM") == 0) {
        asnum = row;
    }
    return 0;
}

void *SYS_DataTypeMallocByHandle(uint32_t memoryHandle, uint32_t size)
{
    (void)memoryHandle;
    return malloc(size);
}

int32_t snprintf_truncated_s(char *to, size_t toSize, const char *format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    const int written = vsnprintf(to, toSize, format, arguments);
    va_end(arguments);
    return written < 0 || (size_t)written < toSize ? written : (int32_t)(toSize - 1);
}

int main(void)
{
    DataTypeRequest request = {1, 1};
    char text[] = " 65535.1 ";
    uint16_t type = 0;
    uint16_t length = 0;
    void *value = NULL;
    void *printed = NULL;
    Bgp_InitDataType(0);
    if (asnum == NULL || asnum->FormatIn(&request, 255, 0, text, &type, &length, &value) != DT_OK ||
        asnum->FormatOut(&request, 255, length, value, &type, &length, &printed) != DT_OK) {
        return 1;
    }
    printf("%s\n", (char *)printed);
    const int same = strcmp((char *)printed, "65535.1") == 0;
    free(value);
    free(printed);
    return same ? 0 : 1;
}
