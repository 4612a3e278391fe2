#include "bgpls/samples.h"
#include "support/type_case.h"

#include "bgp_host_services.h"

namespace bgp::test {
namespace {

class BgpLsRecord : public PlugIn {};

// 228 bytes that are all different from their neighbours and from what they become when a word is reversed.
std::string Noise(const std::string &head)
{
    std::string bytes = Bytes(head);
    while (bytes.size() < 228) {
        bytes += static_cast<char>(0x10 + bytes.size() % 199);
    }
    return Hex(bytes);
}

// The hex of a record with the words at these offsets reversed, byte by byte.
std::string WithReversed(const std::string &hex, const std::vector<size_t> &offsets)
{
    std::string reversed = hex;
    for (const size_t offset : offsets) {
        for (size_t i = 0; i < 4; ++i) {
            reversed[2 * (offset + i)] = hex[2 * (offset + 3 - i)];
            reversed[2 * (offset + i) + 1] = hex[2 * (offset + 3 - i) + 1];
        }
    }
    return reversed;
}

// The identifier of a record moves as a whole: both words reversed, then exchanged.
std::string WithReversedIdentifier(const std::string &hex)
{
    std::string reversed = hex;
    for (size_t i = 0; i < 8; ++i) {
        reversed[2 * (8 + i)] = hex[2 * (15 - i)];
        reversed[2 * (8 + i) + 1] = hex[2 * (15 - i) + 1];
    }
    return reversed;
}

// FormatIn's memory answers are the parser's test: it takes scratch memory before it takes the value's.
TypeCase Case()
{
    TypeCase type = {
        .row = {1299, 228, 26, "BGPLSPREFIX", &SYSDT_LSPrefixFormatIn, &SYSDT_LSPrefixFormatOut, &SYSDT_LSPrefixCheck,
                &SYSDT_LSPrefixHelp, &SYSDT_LSPrefixCompare, nullptr, &SYSDT_LSPrefixLuaSet, &SYSDT_LSPrefixLuaGet,
                &SYSDT_LSPrefixEndian},
        .contract = {.text = NodeSample().text,
                     .value = NodeSample().host,
                     .outModes = "TTTTUTTU",
                     .helpModes = "-H----H-",
                     .helpText = "STRING<62-529>",
                     .textSize = 769,
                     .plainMemory = true,
                     .helpPlainMemory = true,
                     .clearsFirst = true},
        .readsWhole = false, // see the printer's test
        .checks = {{Noise("00000000"), DT_OK}},
        .compares =
            {
                // The first difference decides, and the least significant byte of a number comes first.
                {Record("01000000 02000000"), Record("01000000 01ffffff"), 1},
                {Record("01000000 00010000"), Record("01000000 ff000000"), -1},
                {Record("02000000"), Record("01000000 ffffffff"), 1},
                {"0000000001", "0000000002", 0, 4},
                {"0000000001", "0000000002", -1},
                {"0000000002", "0000000001", 1},
                {"0000000001", "0000000002", 0, 0},
            },
        .comparesBytes = true,
        .comparePointers = DT_ERR_NULL_PTR,
        .luaGets =
            {
                // what becomes of the fields is the test of the tables
                {"nil", DT_ERR_INVALID_PARAM, Unwritten(228), kAnyGrowth},
                {"{uiRouteType = 7}", DT_OK, "07000000" + Unwritten(224), 0},
            },
    };
    for (const Sample &sample : Samples()) {
        type.alsoSwept.emplace_back(sample.text, sample.host);
        type.prints.push_back({sample.printed, sample.host});
        type.checks.push_back({sample.host, DT_OK});
        type.swaps.push_back({sample.network, sample.host, false});
        type.luaSets.push_back({sample.host, sample.lua});
    }
    return type;
}

[[maybe_unused]] const bool kStated = StateTests<BgpLsRecord>("BgpLsRecord", Case());

// ------------------------------------------------------------------------------------------------------------ layouts

TEST_F(BgpLsRecord, TextGivesTheBytesInHostOrder)
{
    for (const Sample &sample : Samples()) {
        EXPECT_EQ(Value(kBgpLs, sample.text), sample.host) << sample.name;
    }
}

struct FieldPlace {
    const char *name;
    unsigned offset;
    unsigned bytes;
};

using Places = std::vector<FieldPlace>;

Places WithHead(const Places &tail)
{
    Places places = {{"uiRouteType", 0, 4},
                     {"uiProtocolId", 4, 4},
                     {"uiIdentifier", 8, 8},
                     {"stLocalAs", 16, 8},
                     {"stLocalBgpLsId", 24, 4}};
    places.insert(places.end(), tail.begin(), tail.end());
    return places;
}

const std::vector<Places> &Layouts()
{
    static const std::vector<Places> layouts = {
        WithHead({{"uiLocOspfAreaId", 28, 4}, {"stLocIgpRtId", 32, 50}, {"existFlag", 82, 4}}),
        WithHead({{"localMemberAs", 28, 8},
                  {"uiLocOspfAreaId", 36, 4},
                  {"stLocIgpRtId", 40, 50},
                  {"stRemoteAs", 90, 8},
                  {"stRemoteBgpLsId", 98, 4},
                  {"remoteMemberAs", 102, 8},
                  {"uiRemOspfAreaId", 110, 4},
                  {"stRemIgpRtId", 114, 50},
                  {"uiLinkLocId", 164, 4},
                  {"uiLinkRemId", 168, 4},
                  {"stIpv4IntfAddr", 172, 4},
                  {"stIpv4PeerAddr", 176, 4},
                  {"stIpv6IntfAddr", 180, 16},
                  {"stIpv6PeerAddr", 196, 16},
                  {"uiMtId", 212, 4},
                  {"uiLocalBgpRtId", 216, 4},
                  {"uiRemoteBgpRtId", 220, 4},
                  {"existFlag", 224, 4}}),
        WithHead({{"uiLocOspfAreaId", 28, 4},
                  {"stLocIgpRtId", 32, 50},
                  {"uiMtId", 82, 4},
                  {"uiOspfRtType", 86, 4},
                  {"stIpv4Prefix", 90, 4},
                  {"uiPrefixLen", 94, 1},
                  {"existFlag", 95, 4}}),
        WithHead({{"uiLocOspfAreaId", 28, 4},
                  {"stLocIgpRtId", 32, 50},
                  {"uiMtId", 82, 4},
                  {"uiOspfRtType", 86, 4},
                  {"stIpv6Prefix", 90, 16},
                  {"uiPrefixLen", 106, 1},
                  {"existFlag", 107, 4}}),
        WithHead({{"uiLocalBgpRtId", 28, 4},
                  {"teRouterId", 32, 4},
                  {"ipv6TeRouterId", 36, 16},
                  {"protocolOrigin", 52, 1},
                  {"flags", 53, 1},
                  {"endpoint", 54, 21},
                  {"color", 75, 4},
                  {"originatorAs", 79, 8},
                  {"originatorAddr", 87, 21},
                  {"discriminator", 108, 4},
                  {"existFlag", 112, 4}}),
        WithHead({{"localMemberAs", 28, 8},
                  {"uiLocOspfAreaId", 36, 4},
                  {"stLocIgpRtId", 40, 50},
                  {"uiMtId", 90, 4},
                  {"srv6SidInfo", 94, 16},
                  {"uiLocalBgpRtId", 110, 4},
                  {"existFlag", 114, 4}}),
    };
    return layouts;
}

unsigned BytesOf(const BgpField &field)
{
    switch (field.Kind) {
    case BGP_FIELD_ADDRESS:
        return 21;
    case BGP_FIELD_AS:
        return 8;
    case BGP_FIELD_IPV4:
        return 4;
    case BGP_FIELD_IGP_ID:
        return 50;
    default:
        return unsigned{field.Width} * field.Count;
    }
}

TEST_F(BgpLsRecord, DescribesItsLayouts)
{
    for (uint32_t type = 1; type <= 6; ++type) {
        SCOPED_TRACE(type);
        const std::string value = Bytes(Record(Le32(type)));
        const BgpLayout *layout = Bgp_DescribeValue(1299, value.data(), static_cast<uint32_t>(value.size()));
        ASSERT_NE(layout, nullptr);
        EXPECT_EQ(layout->Length, 228u);
        const Places &places = Layouts()[type - 1];
        EXPECT_EQ(layout->FieldCount, places.size());
        for (const FieldPlace &place : places) {
            bool found = false;
            for (uint32_t i = 0; i < layout->FieldCount; ++i) {
                const BgpField &field = layout->Fields[i];
                if (field.Name == std::string(place.name)) {
                    found = true;
                    EXPECT_EQ(field.Offset, place.offset) << place.name;
                    EXPECT_EQ(BytesOf(field), place.bytes) << place.name;
                }
            }
            EXPECT_TRUE(found) << place.name;
        }
    }
}

TEST_F(BgpLsRecord, DescribesNoOtherNlriType)
{
    for (const uint32_t type : {0u, 7u, 0x101u, 0x01000000u, 0xFFFFFFFFu}) {
        const std::string value = Bytes(Record(Le32(type)));
        EXPECT_EQ(Bgp_DescribeValue(1299, value.data(), static_cast<uint32_t>(value.size())), nullptr) << type;
    }
}

// ------------------------------------------------------------------------------------------------------------- Endian

// Handed a value in host order it reverses the type word alone: the reversed type is none of the six.
TEST_F(BgpLsRecord, EndianOfHostOrderReversesTheTypeWordAlone)
{
    for (const Sample &sample : Samples()) {
        EXPECT_EQ(Endian(kBgpLs, sample.host), WithReversed(sample.host, {0})) << sample.name;
    }
    EXPECT_EQ(Endian(kBgpLs, Record("01000000 02000000")), Record("00000001 02000000"));
}

TEST_F(BgpLsRecord, EndianReversesTheListedWordsAndNothingElse)
{
    const struct {
        const char *type;
        std::vector<size_t> words; // beside the type word and the identifier
    } rows[] = {
        {"00000001", {0, 4, 16, 20, 24, 28, 82}},
        {"00000002", {0, 4, 16, 20, 24, 28, 32, 36, 90, 94, 98, 102, 106, 110, 164, 168, 172, 176, 212, 216, 220, 224}},
        {"00000003", {0, 4, 16, 20, 24, 28, 82, 86, 90, 95}},
        {"00000004", {0, 4, 16, 20, 24, 28, 82, 86, 107}},
        {"00000006", {0, 4, 16, 20, 24, 28, 32, 36, 90, 110, 114}},
    };
    for (const auto &row : rows) {
        const std::string noise = Noise(row.type);
        EXPECT_EQ(Endian(kBgpLs, noise), WithReversedIdentifier(WithReversed(noise, row.words))) << row.type;
    }
}

TEST_F(BgpLsRecord, EndianReversesAnAddressWordOnlyWhenItsFlagSaysIpv4)
{
    for (const int endpoint : {0, 1, 2, 255}) {
        for (const int originator : {0, 1, 2, 255}) {
            SCOPED_TRACE(testing::Message() << endpoint << ' ' << originator);
            std::string bytes = Bytes(Noise("00000005"));
            bytes[74] = static_cast<char>(endpoint);
            bytes[107] = static_cast<char>(originator);
            std::vector<size_t> words = {0, 4, 16, 20, 24, 28, 32, 75, 79, 83, 108, 112};
            if (endpoint == 0) {
                words.push_back(54);
            }
            if (originator == 0) {
                words.push_back(87);
            }
            EXPECT_EQ(Endian(kBgpLs, Hex(bytes)), WithReversedIdentifier(WithReversed(Hex(bytes), words)));
        }
    }
}

TEST_F(BgpLsRecord, EndianLeavesUnknownTypesAfterTheTypeWord)
{
    const struct {
        const char *before;
        const char *after;
    } rows[] = {
        {"00000000", "00000000"}, {"00000007", "07000000"}, {"000000ff", "ff000000"},
        {"00000101", "01010000"}, {"01000001", "01000001"}, {"01020304", "04030201"},
    };
    for (const auto &row : rows) {
        const std::string rest = Noise(row.before).substr(8);
        EXPECT_EQ(Endian(kBgpLs, row.before + rest), row.after + rest) << row.before;
    }
}

TEST_F(BgpLsRecord, EndianTreatsTheIdentifierAsOneNumber)
{
    const std::string host = Record("01000000 00000000 0200000001000000");
    const std::string network = Record("00000001 00000000 0000000100000002");
    EXPECT_EQ(Endian(kBgpLs, network), host);
    // The other way round, by way of a type word that is already reversed.
    EXPECT_EQ(Endian(kBgpLs, "00000001" + host.substr(8)), "01000000" + network.substr(8));
}

TEST_F(BgpLsRecord, EndianNeedsItsContextAndItsValue)
{
    std::string value = Bytes(Samples()[0].network);
    const std::string before = value;
    const DataTypeDescriptor &row = Row(kBgpLs);
    EXPECT_EQ(row.Endian(nullptr, 1299, 228, value.data()), DT_ERR_NULL_PTR);
    EXPECT_EQ(value, before);
    EXPECT_EQ(row.Endian(&row, 1299, 228, nullptr), DT_ERR_NULL_PTR);
    EXPECT_EQ(row.Endian(nullptr, 1299, 228, nullptr), DT_ERR_NULL_PTR);
    // Type id and length are not looked at.
    EXPECT_EQ(row.Endian(&row, 0, 0, value.data()), DT_OK);
    EXPECT_EQ(Hex(value), Samples()[0].host);
}

} // namespace
} // namespace bgp::test
