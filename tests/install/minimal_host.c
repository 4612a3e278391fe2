/* The smallest host: what hosts/common leaves to define, over malloc, and the plug-in linked in. It reads route targets
 * from its arguments and prints them; the memory handle of a request is the place in a table of blocks. */
#include <bgp_host_services.h>

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

enum { kMostBlocks = 16 };

static const DataTypeDescriptor *routeTarget;
static unsigned rows;
static void *blocks[kMostBlocks]; /* of the one memory handle there is, 1 */
static unsigned blockCount;

uint32_t SYS_Drm_RegisterDataType(uint32_t handle, const DataTypeDescriptor *row)
{
    rows += handle == 42;
    if (strncmp(row->Name, "VRFRT", sizeof row->Name) == 0) {
        routeTarget = row;
    }
    return DT_OK;
}

void *SYS_DataTypeMallocByHandle(uint32_t memoryHandle, uint32_t size)
{
    if (memoryHandle != 1 || blockCount == kMostBlocks) {
        return NULL;
    }
    blocks[blockCount] = malloc(size);
    return blocks[blockCount++];
}

void *SYS_DataTypeMalloc(uint32_t size)
{
    return malloc(size);
}

void SYS_DataTypeFree(void *memory)
{
    for (unsigned at = 0; at < blockCount; ++at) {
        if (blocks[at] == memory) {
            return; /* goes with the handle */
        }
    }
    free(memory);
}

uint32_t SYSDT_InitHelpInfo(uint32_t memoryHandle, DataTypeHelpInfo *info, uint32_t entryCount, uint32_t helpWord)
{
    (void)helpWord;
    info->Entries = SYS_DataTypeMallocByHandle(memoryHandle, entryCount * (uint32_t)sizeof *info->Entries);
    info->EntryCount = info->Entries == NULL ? 0 : entryCount;
    return info->Entries == NULL ? DT_ERR_NO_MEMORY : DT_OK;
}

void SYSDT_ClearHelpInfo(DataTypeHelpInfo *info)
{
    info->EntryCount = 0;
}

void ZOL_Assert(const char *source, uint32_t line, const char *message)
{
    fprintf(stderr, "%s:%u: %s\n", source, (unsigned)line, message);
}

static void Forget(void)
{
    while (blockCount > 0) {
        free(blocks[--blockCount]);
    }
}

static uint32_t Show(char *text)
{
    const DataTypeRequest request = {1, 1};
    uint16_t type = 0;
    uint16_t length = 0;
    void *value = NULL;
    void *printed = NULL;
    uint32_t code = routeTarget->FormatIn(&request, routeTarget->TypeId, 0, text, &type, &length, &value);
    if (code == DT_OK) {
        code = routeTarget->FormatOut(&request, type, length, value, &type, &length, &printed);
    }
    if (code == DT_OK) {
        printf("%s\n", (const char *)printed);
    } else {
        printf("refused: 0x%x\n", (unsigned)code);
    }
    Forget();
    return code;
}

static void ShowHelp(void)
{
    const DataTypeRequest request = {1, 1};
    const uint32_t words[2] = {1, 1};
    DataTypeHelpInfo info = {0, NULL};
    if (routeTarget->Help(&request, routeTarget->TypeId, 0, "", words, &info) == DT_OK && info.EntryCount == 1) {
        printf("%s\n", info.Entries[0].Text);
    }
    Forget();
}

#ifdef PLUG_IN
#include <dlfcn.h>

static void Start(void)
{
    void *plugIn = dlopen(PLUG_IN, RTLD_NOW);
    void *symbol = plugIn == NULL ? NULL : dlsym(plugIn, "Bgp_InitDataType");
    uint32_t (*init)(uint32_t handle);
    if (symbol == NULL) {
        fprintf(stderr, "%s\n", dlerror());
        return;
    }
    memcpy(&init, &symbol, sizeof init);
    init(42);
}
#else
static void Start(void)
{
    Bgp_InitDataType(42);
}
#endif

int main(int count, char **texts)
{
    Start();
    printf("%u rows\n", rows);
    if (routeTarget == NULL) {
        return 1;
    }
    ShowHelp();
    for (int at = 1; at < count; ++at) {
        Show(texts[at]);
    }
    return 0;
}
