#include "bgpls/samples.h"

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

TEST_F(BgpLsRecord, IsRegisteredWhole)
{
    const DataTypeDescriptor &row = Row(kBgpLs);
    EXPECT_EQ(row.TypeId, 1299);
    EXPECT_EQ(row.BinaryLength, 228);
    EXPECT_EQ(row.BaseKind, 26);
    EXPECT_EQ(row.FormatIn, SYSDT_LSPrefixFormatIn);
    EXPECT_EQ(row.FormatOut, SYSDT_LSPrefixFormatOut);
    EXPECT_EQ(row.Check, SYSDT_LSPrefixCheck);
    EXPECT_EQ(row.Help, SYSDT_LSPrefixHelp);
    EXPECT_EQ(row.Compare, SYSDT_LSPrefixCompare);
    EXPECT_EQ(row.Reserved, nullptr);
    EXPECT_EQ(row.LuaSet, SYSDT_LSPrefixLuaSet);
    EXPECT_EQ(row.LuaGet, SYSDT_LSPrefixLuaGet);
    EXPECT_EQ(row.Endian, SYSDT_LSPrefixEndian);
}

// FormatIn's memory answers are the parser's test: it takes scratch memory before it takes the value's.
TEST_F(BgpLsRecord, ObeysTheContract)
{
    for (const Sample &sample : Samples()) {
        SCOPED_TRACE(sample.name);
        Sweep(Row(kBgpLs), {.text = sample.text,
                            .value = sample.host,
                            .inModes = "",
                            .outModes = "TTTTUTTU",
                            .helpModes = "-H----H-",
                            .helpText = "STRING<62-529>",
                            .resultTypeId = 1299,
                            .resultLength = 228,
                            .textSize = 769,
                            .plainMemory = true,
                            .helpPlainMemory = true,
                            .clearsFirst = true});
    }
}

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

TEST_F(BgpLsRecord, EndianTurnsNetworkOrderIntoHostOrder)
{
    for (const Sample &sample : Samples()) {
        EXPECT_EQ(Endian(kBgpLs, sample.network), sample.host) << sample.name;
    }
}

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

// -------------------------------------------------------------------------------------------------------------- Check

TEST_F(BgpLsRecord, CheckLooksAtTheLengthAlone)
{
    for (uint32_t length = 0; length <= 600; ++length) {
        EXPECT_EQ(CheckLength(kBgpLs, length), length == 228 ? DT_OK : DT_ERR_LENGTH) << length;
    }
    EXPECT_EQ(Check(kBgpLs, std::string(2 * 228, 'f')), DT_OK);
    EXPECT_EQ(Check(kBgpLs, Noise("00000000")), DT_OK);
    for (const Sample &sample : Samples()) {
        EXPECT_EQ(Check(kBgpLs, sample.host), DT_OK);
    }
    const DataTypeDescriptor &row = Row(kBgpLs);
    const std::string value(228, '\0');
    EXPECT_EQ(row.Check(nullptr, 0, 228, nullptr), DT_ERR_NULL_PTR);
    EXPECT_EQ(row.Check(nullptr, 0, 227, nullptr), DT_ERR_NULL_PTR);
    EXPECT_EQ(row.Check(nullptr, 0, 228, value.data()), DT_OK);
    EXPECT_EQ(row.Check(nullptr, 0, 0x100E4, value.data()), DT_ERR_LENGTH);
}

// ------------------------------------------------------------------------------------------------------------ Compare

TEST_F(BgpLsRecord, CompareIsTheOrderOfTheBytes)
{
    const std::string zero = Record("");
    for (size_t i = 0; i < 228; ++i) {
        for (const char *byte : {"01", "80", "ff"}) {
            std::string other = zero;
            other.replace(2 * i, 2, byte);
            EXPECT_EQ(Compare(kBgpLs, other, zero), 1) << i;
            EXPECT_EQ(Compare(kBgpLs, zero, other), -1) << i;
            EXPECT_EQ(Compare(kBgpLs, other, other), 0) << i;
        }
    }
    // The first difference decides, and the least significant byte of a number comes first.
    EXPECT_EQ(Compare(kBgpLs, Record("01000000 02000000"), Record("01000000 01ffffff")), 1);
    EXPECT_EQ(Compare(kBgpLs, Record("01000000 00010000"), Record("01000000 ff000000")), -1);
    EXPECT_EQ(Compare(kBgpLs, Record("02000000"), Record("01000000 ffffffff")), 1);
}

TEST_F(BgpLsRecord, CompareReadsAsManyBytesAsItIsTold)
{
    const DataTypeDescriptor &row = Row(kBgpLs);
    const std::string left = Bytes("0000000001");
    const std::string right = Bytes("0000000002");
    EXPECT_EQ(row.Compare(nullptr, 4, left.data(), right.data()), 0);
    EXPECT_EQ(row.Compare(nullptr, 5, left.data(), right.data()), -1);
    EXPECT_EQ(row.Compare(nullptr, 5, right.data(), left.data()), 1);
    EXPECT_EQ(row.Compare(nullptr, 0, left.data(), right.data()), 0);
}

TEST_F(BgpLsRecord, CompareNeedsBothValues)
{
    const DataTypeDescriptor &row = Row(kBgpLs);
    const std::string value(228, '\0');
    EXPECT_EQ(static_cast<uint32_t>(row.Compare(&row, 228, nullptr, value.data())), DT_ERR_NULL_PTR);
    EXPECT_EQ(static_cast<uint32_t>(row.Compare(&row, 228, value.data(), nullptr)), DT_ERR_NULL_PTR);
    EXPECT_EQ(static_cast<uint32_t>(row.Compare(&row, 228, nullptr, nullptr)), DT_ERR_NULL_PTR);
}

// --------------------------------------------------------------------------------------------------------------- Help

TEST_F(BgpLsRecord, HelpTellsTheLengthsOfAKey)
{
    for (const uint8_t mode : {uint8_t{1}, uint8_t{6}}) {
        const Helped helped = Help(kBgpLs, mode, 11, 22);
        EXPECT_EQ(helped.code, DT_OK);
        EXPECT_EQ(helped.text, "STRING<62-529>");
        EXPECT_EQ(helped.helpWord, 22u);
        host::SetFaults({.helpInitCode = 0x1234});
        EXPECT_EQ(Help(kBgpLs, mode).code, 0x1234u);
        host::SetFaults({});
    }
    host::SetFaults({.helpInitCode = 0x1234});
    EXPECT_EQ(Help(kBgpLs, 2).code, DT_OK);
    EXPECT_EQ(Help(kBgpLs, 2).helpInits, 0u);
}

TEST_F(BgpLsRecord, HelpTakesPlainMemory)
{
    const DataTypeDescriptor &row = Row(kBgpLs);
    const DataTypeRequest request{1, Handle()};
    const uint32_t words[2] = {1, 1};
    DataTypeHelpInfo info{0, nullptr};
    host::TakeCounters();
    EXPECT_EQ(row.Help(&request, 0, 0, nullptr, words, &info), DT_OK);
    EXPECT_EQ(host::TakeCounters().plainAllocations, 1u);
    ASSERT_NE(info.Entries, nullptr);
    EXPECT_STREQ(info.Entries[0].Text, "STRING<62-529>");
    SYS_DataTypeFree(info.Entries[0].Text);
}

} // namespace
} // namespace bgp::test
