// ATTRIDBITMAP: a set of BGP path attribute type codes, 0 to 255 (RFC 4271).
//
//   bytes  field     width  meaning
//   0-31   bits      32     attribute i is in the set when bit i % 8 (0 the lowest) of byte i / 8 is set
//
// The set cannot be typed. It is printed from a list of typed items that the routing software makes up: a text
// template, the set, and values that fill the template.
//
//   bytes  field     width  meaning
//   24-25  count     u16    items that follow; host order, as all below
//   44-    items            one right behind the other: type u16, length u16, `length` bytes of data
//
// A list comes without its own length: its count and the lengths of its items are what the host vouches for.
#include "community/community.h"
#include "community/text_template.h"
#include "host/address_field.h"
#include "host/format.h"
#include "host/layout.h"
#include "host/operations.h"

namespace bgp {

namespace {

constexpr uint16_t kLength = 32;
constexpr uint32_t kAttributes = 256;
constexpr uint32_t kPrintedSize = 4096;
constexpr uint32_t kScratchSize = 300; // of the template, and of the template filled

constexpr BgpField kFields[] = {ByteArray("attributeBits", 0, kLength)};
constexpr BgpLayout kLayout = Layout(kFields, kLength);

// ------------------------------------------------------------------------------------------------------------- items

constexpr uint32_t kCountAt = 24;
constexpr uint32_t kItemsAt = 44;
constexpr uint32_t kItemHead = 4;
constexpr uint16_t kTextItem = 25;
constexpr uint16_t kBitmapItem = 290;

struct Item {
    uint16_t type;
    uint16_t length;
    const uint8_t *data;
};

Item TakeItem(const uint8_t *&at)
{
    const Item item{Load<uint16_t>(at), Load<uint16_t>(at + 2), at + kItemHead};
    at = item.data + item.length;
    return item;
}

// The text of an item, cut at the scratch size. A text without a terminator ends with its item.
void CopyText(const Item &item, char *to)
{
    const uint32_t most = item.length < kScratchSize ? item.length : kScratchSize - 1;
    const void *terminator = std::memchr(item.data, '\0', most);
    const size_t length =
        terminator == nullptr ? most : static_cast<size_t>(static_cast<const uint8_t *>(terminator) - item.data);
    std::memcpy(to, item.data, length);
    to[length] = '\0';
}

// ---------------------------------------------------------------------------------------------------------- fillings

// Items of these types fill a conversion, others print nothing. So do items that are shorter than their type. Texts
// are made in `scratch`, which is empty beforehand: a service of the host that writes nothing prints nothing.
using Filler = bool (*)(const Item &item, char *scratch, Filling &filling);

template <uint32_t Width>
bool FillNumber(const Item &item, char *, Filling &filling)
{
    filling = {nullptr, static_cast<uint32_t>(LoadLow(item.data, Width))};
    return true;
}

bool FillText(const Item &item, char *scratch, Filling &filling)
{
    CopyText(item, scratch);
    filling = {scratch, 0};
    return true;
}

bool FillIpv4(const Item &item, char *scratch, Filling &filling)
{
    QOV_IpAddrToStr(Load<uint32_t>(item.data), scratch);
    filling = {scratch, 0};
    return true;
}

bool FillIpv6(const Item &item, char *scratch, Filling &filling)
{
    Ipv6Text(item.data, scratch);
    filling = {scratch, 0};
    return true;
}

bool FillAddress(const Item &item, char *scratch, Filling &filling)
{
    switch (item.data[kAddressFamilyAt]) {
    case kIpv4Family:
        return FillIpv4(item, scratch, filling);
    case kIpv6Family:
        return FillIpv6({item.type, kIpv6Size, item.data + kAddressIpv6At}, scratch, filling);
    default:
        return false;
    }
}

struct ItemRow {
    uint16_t type;
    uint16_t width; // bytes that the filler reads
    Filler fill;
};

constexpr ItemRow kItemRows[] = {
    {2, 1, FillNumber<1>},
    {4, 2, FillNumber<2>},
    {6, 4, FillNumber<4>},
    {21, 4, FillIpv4},
    {22, kIpv6Size, FillIpv6},
    {25, 0, FillText},
    {38, kAddressFieldSize, FillAddress},
};

bool Fill(const Item &item, char *scratch, Filling &filling)
{
    for (const ItemRow &row : kItemRows) {
        if (row.type == item.type) {
            return item.length >= row.width && row.fill(item, scratch, filling);
        }
    }
    return false;
}

// -------------------------------------------------------------------------------------------------------------- head

// Fills the template from the remaining items, part by part. `head` holds the template beforehand, and keeps it when
// no item prints; the first that does prints over it. What the items leave of the template is lost.
void FillTemplate(const uint8_t *items, uint32_t count, const char *pattern, char *head)
{
    Text rest{pattern, static_cast<uint32_t>(std::strlen(pattern))};
    uint32_t used = 0;
    for (; count > 0; --count) {
        const Item item = TakeItem(items);
        const Text part = TakePart(rest);
        const uint32_t room = used == 0 ? kScratchSize - 1 : kScratchSize - used;
        char scratch[kScratchSize];
        char text[kScratchSize];
        GrowingText filled = GrowIn(text, sizeof text);
        Filling filling;
        scratch[0] = '\0';
        if (Fill(item, scratch, filling) && FillPart(part, filling, filled)) {
            const int32_t printed = PrintText(head + used, room, text);
            used += printed > 0 ? static_cast<uint32_t>(printed) : 0;
        }
    }
}

// Cuts the head at "###" and again at its last blank. Returns what stood behind the mark, the suffix of every line.
const char *TakeSuffix(char *head)
{
    constexpr char kMark[] = "###";
    char *const mark = std::strstr(head, kMark);
    if (mark == nullptr) {
        return "";
    }
    *mark = '\0';
    Blanks blanks;
    for (char *at = mark; at > head;) {
        if (IsBlank(blanks, *--at)) {
            *at = '\0';
            break;
        }
    }
    return mark + sizeof kMark - 1;
}

// ------------------------------------------------------------------------------------------------------------- lines

// Neighbouring attributes, first and last.
struct Run {
    uint32_t first;
    uint32_t last;
};

bool Has(const uint8_t *bitmap, uint32_t attribute)
{
    return (bitmap[attribute / 8] >> attribute % 8 & 1) != 0;
}

// The first run at or behind an attribute; false when there is none.
bool FindRun(const uint8_t *bitmap, uint32_t from, Run &run)
{
    while (from < kAttributes && !Has(bitmap, from)) {
        ++from;
    }
    run.first = from;
    while (from < kAttributes && Has(bitmap, from)) {
        ++from;
    }
    run.last = from - 1;
    return run.first < kAttributes;
}

// Ten runs a line, each line between head and suffix. False when the set is empty.
bool LayOut(const uint8_t *bitmap, char *head, GrowingText &page)
{
    constexpr uint32_t kRunsALine = 10;
    Run run;
    if (!FindRun(bitmap, 0, run)) {
        return false;
    }
    const char *const suffix = TakeSuffix(head);
    Put(page, head);
    for (uint32_t count = 1, more = 1; more != 0; ++count) {
        Put<" %u">(page, run.first);
        if (run.last != run.first) {
            Put<" to %u">(page, run.last);
        }
        more = FindRun(bitmap, run.last + 1, run);
        if (more != 0 && count % kRunsALine == 0) {
            Put(page, suffix);
            Put(page, "\r\n");
            Put(page, head);
        }
    }
    Put(page, suffix);
    Put(page, "\r\n");
    *page.at = '\0';
    return true;
}

// The text of a list whose first two items are there. `pattern` and `head` have kScratchSize bytes.
bool PrintItems(const uint8_t *items, uint32_t count, char *pattern, char *head, char *buffer, uint32_t *printed)
{
    const Item text = TakeItem(items);
    if (text.type != kTextItem) {
        return false;
    }
    CopyText(text, pattern);
    CopyText(text, head);
    const Item set = TakeItem(items);
    if (set.type != kBitmapItem) {
        return false;
    }
    uint8_t bitmap[kLength] = {};
    std::memcpy(bitmap, set.data, set.length < kLength ? set.length : kLength);
    FillTemplate(items, count - 2, pattern, head);
    char lines[kPrintedSize];
    GrowingText page = GrowIn(lines, sizeof lines);
    return LayOut(bitmap, head, page) && Printed(PrintText(buffer, kPrintedSize, lines), printed) == DT_OK;
}

// Whatever keeps a list from being printed, scratch memory included, only leaves the text empty.
bool PrintList(uint32_t memoryHandle, const uint8_t *list, char *buffer, uint32_t *printed)
{
    const uint32_t count = Load<uint16_t>(list + kCountAt);
    if (count < 2) {
        return false;
    }
    auto *pattern = static_cast<char *>(SYS_DataTypeMallocByHandle(memoryHandle, kScratchSize));
    if (pattern == nullptr) {
        return false;
    }
    auto *head = static_cast<char *>(SYS_DataTypeMallocByHandle(memoryHandle, kScratchSize));
    const bool done = head != nullptr && PrintItems(list + kItemsAt, count, pattern, head, buffer, printed);
    if (head != nullptr) {
        SYS_DataTypeFree(head);
    }
    SYS_DataTypeFree(pattern);
    return done;
}

// -------------------------------------------------------------------------------------------------------- operations

constexpr uint8_t kSilentModes = Modes(2, 3); // served with nothing
constexpr HelpRule kHelp{.text = "INTEGER"};

uint32_t FormatOutList(const DataTypeRequest *request, const void *list, Result result)
{
    if (IsNull(request, list, result)) {
        return DT_ERR_NULL_PTR;
    }
    const uint32_t mode = request->FormatMode;
    if (const uint32_t code = JudgeMode(kAllButFour, mode); code != DT_OK) {
        return code;
    }
    if ((kSilentModes & 1u << mode) != 0) {
        return DT_OK;
    }
    void *buffer = *result.buffer != nullptr ? *result.buffer : Allocate(Memory::kByHandle, *request, kPrintedSize);
    if (buffer == nullptr) {
        return NoMemory(result);
    }
    auto *text = static_cast<char *>(buffer);
    uint32_t printed = 0;
    text[0] = '\0';
    const bool done = PrintList(request->MemoryHandle, static_cast<const uint8_t *>(list), text, &printed);
    *result.typeId = done ? DT_TYPE_TEXT : 0;
    *result.length = static_cast<uint16_t>(done ? printed + 1 : 0);
    *result.buffer = buffer;
    return DT_OK;
}

constexpr const BgpRule *kRules[] = {&kNotTyped};

} // namespace

constinit const Type kAttrIdBitmap = MakeType({
    .name = "ATTRIDBITMAP",
    .description = "a set of BGP path attribute type codes",
    .reference = "RFC 4271",
    .layout = &kLayout,
    .rules = kRules,
    .typeId = 290,
    .valueLength = kLength,
    .textSize = kPrintedSize,
    .traits = BGP_TRAIT_NO_TEXT | BGP_TRAIT_PRINTS_ITEMS,
});

} // namespace bgp

uint32_t SYSDT_AttrIdBitmapFormatOut(const DataTypeRequest *request, uint32_t, uint32_t, const void *value,
                                     uint16_t *outTypeId, uint16_t *outLength, void **outBuffer)
{
    return bgp::FormatOutList(request, value, {outTypeId, outLength, outBuffer});
}

BGP_CHECK_LENGTH(SYSDT_AttrIdBitmapCheck, bgp::kLength)
BGP_HELP(SYSDT_AttrIdBitmapHelp, bgp::kHelp)
BGP_COMPARE_BYTES(SYSDT_AttrIdBitmapCompare)

// The value is the array itself, without a table around it.
uint32_t SYSDT_AttrIdBitmapLuaSet(lua_State *L, int32_t tableIndex, const char *fieldName, uint32_t, uint16_t length,
                                  const void *value)
{
    if (const uint32_t code = bgp::LuaJudge(L, fieldName, value, length, bgp::kLength); code != DT_OK) {
        return code;
    }
    bgp::LuaPushArray(L, static_cast<const uint8_t *>(value), bgp::kLength, 1);
    SYSDT_SPTI_SetField(L, tableIndex, fieldName);
    return DT_OK;
}

uint32_t SYSDT_AttrIdBitmapLuaGet(lua_State *L, int32_t tableIndex, const char *fieldName, uint32_t, uint16_t length,
                                  void *outValue)
{
    int32_t array = 0;
    if (const uint32_t code = bgp::LuaOpen(L, tableIndex, fieldName, length, bgp::kLength, outValue, &array);
        code != DT_OK) {
        return code;
    }
    auto *bytes = static_cast<uint8_t *>(outValue);
    for (uint32_t i = 0; i < bgp::kLength; ++i) {
        SYSDT_SPTI_PushUInt(L, i + 1);
        SYSDT_SPTI_GetTable(L, array);
        if (SYSDT_SPTI_IsNumber(L, -1) == 0) {
            return DT_ERR_INVALID_PARAM;
        }
        bytes[i] = static_cast<uint8_t>(SYSDT_SPTI_ToUInt(L, -1));
        SYSDT_SPTI_Pop(L, 1);
    }
    SYSDT_SPTI_Pop(L, 1);
    return DT_OK;
}

BGP_ENDIAN(SYSDT_AttrIdBitmapEndian, bgp::kLayout) // bytes only: nothing is swapped
