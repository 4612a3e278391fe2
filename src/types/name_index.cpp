// The name-index types: a 4-byte index whose text is the name of an object, which only the host knows. All their
// operations are the host's.
//
//   bytes  field  width  meaning
//   0-3    index  u32    host order
#include "host/layout.h"
#include "types/types.h"

namespace bgp {

uint32_t AskHost(DataTypeFormatIn read, uint16_t typeId, uint32_t length, const DataTypeRequest &request,
                 const char *text, BgpRefusal &refusal)
{
    uint16_t valueType = 0;
    uint16_t valueLength = 0;
    void *value = nullptr;
    // No FormatIn writes to its text, but that of the AS number list.
    const uint32_t code = read(&request, typeId, length, const_cast<char *>(text), &valueType, &valueLength, &value);
    if (value != nullptr) {
        SYS_DataTypeFree(value);
    }
    if (code != DT_OK) {
        Why why{&refusal.Reason, text, 0};
        Refuse(&why, {text, static_cast<uint32_t>(std::strlen(text))}, kHostRefused);
    }
    return code;
}

namespace {

constexpr BgpField kFields[] = {Number("index", 0, 4)};
constexpr BgpLayout kLayout = Layout(kFields, 4);

template <uint16_t TypeId>
consteval Type NameIndex(const char *name)
{
    return MakeType({
        .name = name,
        .description = "the index of an object that the host names",
        .layout = &kLayout,
        .rules = kHostRules,
        .typeId = TypeId,
        .valueLength = kLayout.Length,
        .checkedLength = 0,
        .typingMode = 1,
        .network = BGP_NETWORK_LAYOUT,
        .traits = BGP_TRAIT_HOST_TEXT | BGP_TRAIT_COPIES_RAW,
        .explain = ExplainByHost<SYS_DT_UINT32IndexFormatIn, TypeId, kLayout.Length>,
    });
}

} // namespace

constinit const Type kNameIndexTypes[BGP_NAME_INDEX_ROWS] = {
    NameIndex<0x6003>("VRFID2VRFNAME"),  NameIndex<0x600e>("BGPPEERGROUPID"), NameIndex<0x601b>("FLOWROUTEID"),
    NameIndex<0x6052>("VRFID2CVRFNAME"), NameIndex<0x605c>("BGPID2BGPNAME"),  NameIndex<0x606a>("ALIASID2NAME"),
    NameIndex<0x6077>("SETID2SETNAME"),  NameIndex<0x6083>("PDID2PDNAME"),    NameIndex<0x608e>("RTPCLID2NAME"),
};

} // namespace bgp
