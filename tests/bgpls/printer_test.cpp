#include "bgpls/samples.h"

#include <cstring>

namespace bgp::test {
namespace {

class BgpLsPrinter : public PlugIn {};

std::string Print(const std::string &valueHex)
{
    return Text(kBgpLs, valueHex);
}

// A record with the bytes at the offset replaced.
std::string With(const std::string &record, size_t offset, const std::string &hex)
{
    std::string changed = record;
    changed.replace(2 * offset, hex.size(), hex);
    return changed;
}

// ----------------------------------------------------------------------------------------------------------- FormatOut

TEST_F(BgpLsPrinter, ClearsItsResultsWithoutMemory)
{
    for (const Sample &sample : Samples()) {
        EXPECT_EQ(CodesWhileAllocationsFail([&] {
                      const Out out = FormatOut(kBgpLs, sample.host);
                      EXPECT_TRUE(out.code == DT_OK || (out.typeId == 0 && out.length == 0 && !out.bufferSet));
                      return out.code;
                  }),
                  std::vector<uint32_t>{DT_ERR_NO_MEMORY});
    }
    host::TakeCounters();
    FormatOut(kBgpLs, Samples()[0].host);
    EXPECT_EQ(host::TakeCounters().plainAllocations, 1u);
}

TEST_F(BgpLsPrinter, AShortValueIsFilledWithZeros)
{
    for (const Sample &sample : Samples()) {
        const std::string &host = sample.host;
        for (const size_t length : {1u, 4u, 8u, 16u, 30u, 75u, 100u, 114u, 200u, 227u}) {
            const std::string cut = host.substr(0, 2 * length);
            EXPECT_EQ(Print(cut), Print(Record(cut))) << sample.name << ' ' << length;
            EXPECT_EQ(FormatOut(Row(kBgpLs), host, 1, static_cast<uint32_t>(length)).text, Print(Record(cut)));
        }
        // More than a record is not read.
        EXPECT_EQ(FormatOut(Row(kBgpLs), host, 1, 300).text, sample.printed);
        EXPECT_EQ(FormatOut(Row(kBgpLs), host + "ffff", 1).text, sample.printed);
    }
    EXPECT_EQ(FormatOut(Row(kBgpLs), Samples()[0].host, 1, 0).length, 1);
}

TEST_F(BgpLsPrinter, AnUnknownTypePrintsTheEmptyText)
{
    for (const uint32_t type : {0u, 7u, 8u, 0xFFu, 0x100u, 0x107u, 0xFFFFFF00u, 0xFFFFFFFFu}) {
        const std::string value = Record(Le32(type) + "01000000");
        const Out out = FormatOut(kBgpLs, value);
        EXPECT_EQ(out.code, DT_OK) << type;
        EXPECT_EQ(out.typeId, 25);
        EXPECT_EQ(out.length, 1);
        EXPECT_EQ(out.bytes, "00");
        const Into into = FormatOutInto(Row(kBgpLs), value, 1, 769);
        EXPECT_EQ(into.out.bytes, "00");
        char text[769] = "untouched";
        uint32_t printed = 0;
        EXPECT_EQ(SYSDT_LsPrefix2Str(Bytes(value).data(), text, &printed), DT_ERR_FAIL);
        EXPECT_EQ(printed, 0u);
    }
}

TEST_F(BgpLsPrinter, OnlyTheLowByteOfTheTypeCounts)
{
    for (const Sample &sample : Samples()) {
        for (const char *upper : {"010000", "ffffff", "000001", "800000"}) {
            EXPECT_EQ(Print(With(sample.host, 1, upper)), sample.printed) << sample.name;
        }
    }
}

// ------------------------------------------------------------------------------------------------------ the head group

TEST_F(BgpLsPrinter, EmptyRecordsOfEachType)
{
    EXPECT_EQ(Print(Record("01000000")), "[NODE][][IDENTIFIER0][LOCAL[as][ospf-area-id0.0.0.0][igp-router-id]]");
    EXPECT_EQ(Print(Record("02000000")),
              "[LINK][][IDENTIFIER0][LOCAL[as][ospf-area-id0.0.0.0][igp-router-id]]"
              "[REMOTE[as][ospf-area-id0.0.0.0][igp-router-id]]"
              "[LINK[if-address0.0.0.0][peer-address0.0.0.0][if-address::][peer-address::][mt-id0]]");
    EXPECT_EQ(Print(Record("03000000")), "[IPV4-PREFIX][][IDENTIFIER0][LOCAL[as][ospf-area-id0.0.0.0][igp-router-id]]"
                                         "[PREFIX[mt-id0][ospf-route-type0][prefix0.0.0.0/0]]");
    EXPECT_EQ(Print(Record("04000000")), "[IPV6-PREFIX][][IDENTIFIER0][LOCAL[as][ospf-area-id0.0.0.0][igp-router-id]]"
                                         "[PREFIX[mt-id0][ospf-route-type0][prefix::/0]]");
    EXPECT_EQ(Print(Record("05000000")),
              "[TEPOLICY][][IDENTIFIER0][LOCAL[as][bgp-router-id0.0.0.0][ipv4-router-id0.0.0.0][ipv6-router-id::]]"
              "[TE[protocol-origin0][Flag0][endpoint0.0.0.0][color0][originator-as0][originator-address0.0.0.0]"
              "[discriminator0]]");
    EXPECT_EQ(Print(Record("06000000")),
              "[SRV6-SID][][IDENTIFIER0][LOCAL[as][ospf-area-id0.0.0.0][igp-router-id]][SID[mt-id0][sid::]]");
    EXPECT_EQ(Print(Record("02000000 07000000")),
              "[LINK][BGP][IDENTIFIER0][LOCAL[as][bgp-router-id0.0.0.0]][REMOTE[as][bgp-router-id0.0.0.0]]"
              "[LINK[identifier0.0.0.0.0.0.0.0][local::][remote::]]");
    EXPECT_EQ(Print(Record("06000000 07000000")),
              "[SRV6-SID][BGP][IDENTIFIER0][LOCAL[as][bgp-router-id0.0.0.0]][SID[mt-id0][sid::]]");
}

TEST_F(BgpLsPrinter, ProtocolNames)
{
    const struct {
        uint32_t protocol;
        const char *name;
    } rows[] = {
        {0, ""},       {1, "ISIS-LEVEL-1"}, {2, "ISIS-LEVEL-2"}, {3, "OSPFv2"},    {4, "DIRECT"},
        {5, "STATIC"}, {6, "OSPFv3"},       {7, "BGP"},          {8, ""},          {9, "SEGMENT-ROUTING"},
        {10, ""},      {0x101, ""},         {0x01000000, ""},    {0xFFFFFFFF, ""},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(Print(Record("01000000" + Le32(row.protocol))),
                  std::string("[NODE][") + row.name + "][IDENTIFIER0][LOCAL[as][ospf-area-id0.0.0.0][igp-router-id]]");
        char name[32] = "untouched";
        EXPECT_EQ(SYSDT_LS_ProtclTypeEnum2Str(row.protocol, name), DT_OK);
        EXPECT_STREQ(name, *row.name == '\0' ? "untouched" : row.name);
    }
    EXPECT_EQ(SYSDT_LS_ProtclTypeEnum2Str(1, nullptr), DT_ERR_NULL_PTR);
    EXPECT_EQ(SYSDT_LS_ProtclTypeEnum2Str(8, nullptr), DT_ERR_NULL_PTR);
}

TEST_F(BgpLsPrinter, TypeNames)
{
    const struct {
        uint32_t type;
        const char *name;
    } rows[] = {
        {1, "NODE"},     {2, "LINK"},      {3, "IPV4-PREFIX"}, {4, "IPV6-PREFIX"}, {5, "TEPOLICY"},
        {6, "SRV6-SID"}, {0, "untouched"}, {7, "untouched"},   {255, "untouched"},
    };
    for (const auto &row : rows) {
        char name[32] = "untouched";
        EXPECT_EQ(SYSDT_LS_RouteTypeEnum2Str(row.type, name), DT_OK);
        EXPECT_STREQ(name, row.name);
    }
    EXPECT_EQ(SYSDT_LS_RouteTypeEnum2Str(1, nullptr), DT_ERR_NULL_PTR);
    EXPECT_EQ(SYSDT_LS_RouteTypeEnum2Str(0, nullptr), DT_ERR_NULL_PTR);
}

// Protocol 7 chooses the BGP form, where the type has one, with the whole word.
TEST_F(BgpLsPrinter, TheFormByProtocol)
{
    for (const uint32_t protocol : {0u, 1u, 2u, 3u, 4u, 5u, 6u, 7u, 8u, 9u, 0x107u}) {
        for (const uint32_t type : {1u, 2u, 3u, 4u, 5u, 6u}) {
            const std::string text = Print(Record(Le32(type) + Le32(protocol)));
            const bool bgpForm = type == 5 || (protocol == 7 && (type == 2 || type == 6));
            EXPECT_EQ(text.find("[bgp-router-id") != std::string::npos, bgpForm) << text;
            EXPECT_EQ(text.find("[ospf-area-id") == std::string::npos, bgpForm) << text;
            EXPECT_EQ(text.find("[igp-router-id") == std::string::npos, bgpForm) << text;
        }
    }
}

TEST_F(BgpLsPrinter, IdentifiersHave64Bits)
{
    const struct {
        const char *stored;
        const char *printed;
    } rows[] = {
        {"0000000000000000", "0"},          {"0100000000000000", "1"},
        {"ffffffff00000000", "4294967295"}, {"0000000001000000", "4294967296"},
        {"0200000001000000", "4294967298"}, {"ffffffffffffffff", "18446744073709551615"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(Print(Record(std::string("01000000 01000000") + row.stored)),
                  std::string("[NODE][ISIS-LEVEL-1][IDENTIFIER") + row.printed +
                      "][LOCAL[as][ospf-area-id0.0.0.0][igp-router-id]]");
    }
}

TEST_F(BgpLsPrinter, AsNumbers)
{
    const struct {
        const char *stored;
        const char *as;
        const char *member; // with its group
        const char *originator;
    } rows[] = {
        {"0000000000000000", "", "", "0"},
        {"0000000001000000", "", "", "0"},
        {"6400000000000000", "100", "[member-as100]", "100"},
        {"0000010000000000", "65536", "[member-as65536]", "65536"},
        {"0000010001000000", "1.0", "[member-as1.0]", "1.0"},
        {"0000010007000000", "1.0", "[member-as1.0]", "1.0"},
        {"0000010000000080", "1.0", "[member-as1.0]", "1.0"},
        {"6400000001000000", "0.100", "[member-as0.100]", "0.100"},
        {"ffffffff00000000", "4294967295", "[member-as4294967295]", "4294967295"},
        {"ffffffffffffffff", "65535.65535", "[member-as65535.65535]", "65535.65535"},
    };
    for (const auto &row : rows) {
        const std::string as = row.as;
        EXPECT_EQ(Print(With(Record("01000000 01000000"), 16, row.stored)),
                  "[NODE][ISIS-LEVEL-1][IDENTIFIER0][LOCAL[as" + as + "][ospf-area-id0.0.0.0][igp-router-id]]");
        // Offsets 28, 90 and 102: the local member AS, the remote AS and its member AS.
        const std::string link = Record("02000000 07000000");
        const std::string linkTail = "[LINK[identifier0.0.0.0.0.0.0.0][local::][remote::]]";
        EXPECT_EQ(Print(With(link, 28, row.stored)),
                  std::string("[LINK][BGP][IDENTIFIER0][LOCAL[as][bgp-router-id0.0.0.0]") + row.member +
                      "][REMOTE[as][bgp-router-id0.0.0.0]]" + linkTail);
        EXPECT_EQ(Print(With(link, 90, row.stored)),
                  "[LINK][BGP][IDENTIFIER0][LOCAL[as][bgp-router-id0.0.0.0]][REMOTE[as" + as +
                      "][bgp-router-id0.0.0.0]]" + linkTail);
        EXPECT_EQ(Print(With(link, 102, row.stored)),
                  std::string("[LINK][BGP][IDENTIFIER0][LOCAL[as][bgp-router-id0.0.0.0]][REMOTE[as]"
                              "[bgp-router-id0.0.0.0]") +
                      row.member + "]" + linkTail);
        EXPECT_EQ(Print(With(Record("06000000 07000000"), 28, row.stored)),
                  std::string("[SRV6-SID][BGP][IDENTIFIER0][LOCAL[as][bgp-router-id0.0.0.0]") + row.member +
                      "][SID[mt-id0][sid::]]");
        EXPECT_EQ(Print(With(Record("05000000"), 79, row.stored)),
                  std::string("[TEPOLICY][][IDENTIFIER0][LOCAL[as][bgp-router-id0.0.0.0][ipv4-router-id0.0.0.0]"
                              "[ipv6-router-id::]][TE[protocol-origin0][Flag0][endpoint0.0.0.0][color0]"
                              "[originator-as") +
                      row.originator + "][originator-address0.0.0.0][discriminator0]]");
        // The IGP forms show no member AS.
        EXPECT_EQ(Print(With(Record("02000000"), 28, row.stored)), Print(Record("02000000")));
        EXPECT_EQ(Print(With(Record("02000000"), 102, row.stored)), Print(Record("02000000")));
        EXPECT_EQ(Print(With(Record("06000000"), 28, row.stored)), Print(Record("06000000")));
    }
}

// The BGP-LS identifier shows where its bit says that it was given, zero or not, and whole at its longest.
TEST_F(BgpLsPrinter, BgpLsIdentifiersByTheirBits)
{
    const struct {
        uint32_t type;
        const char *protocol;
        size_t flagsAt;
    } rows[] = {
        {1, "01000000", 82},  {2, "01000000", 224}, {2, "07000000", 224}, {3, "03000000", 95},
        {4, "03000000", 107}, {5, "09000000", 112}, {6, "06000000", 114}, {6, "07000000", 114},
    };
    for (const auto &row : rows) {
        for (const char *identifier : {"00000000", "ffffffff"}) {
            const std::string piece =
                std::string("[bgp-ls-identifier") + (*identifier == '0' ? "0.0.0.0" : "255.255.255.255") + "]";
            std::string record = Record(Le32(row.type) + row.protocol);
            record = With(record, 24, identifier);
            if (row.type == 2) {
                record = With(record, 98, identifier);
            }
            for (const uint32_t flags : {0u, 1u, 2u, 3u, 4u, 0xFFFFFFFCu, 0xFFFFFFFFu}) {
                const std::string text = Print(With(record, row.flagsAt, Le32(flags)));
                const size_t local = text.find("[LOCAL[as]" + piece);
                const size_t remote = text.find("[REMOTE[as]" + piece);
                EXPECT_EQ(local != std::string::npos, (flags & 1) != 0) << text;
                EXPECT_EQ(remote != std::string::npos, row.type == 2 && (flags & 2) != 0) << text;
                size_t pieces = 0;
                for (size_t at = text.find("[bgp-ls-"); at != std::string::npos; at = text.find("[bgp-ls-", at + 1)) {
                    ++pieces;
                }
                EXPECT_EQ(pieces, (flags & 1) + (row.type == 2 ? flags >> 1 & 1 : 0)) << text;
            }
        }
    }
    EXPECT_EQ(
        Print(Record("01000000 01000000 0000000000000000 0000000000000000 ffffffff 00000000" + Igp("") + "01000000")),
        "[NODE][ISIS-LEVEL-1][IDENTIFIER0][LOCAL[as][bgp-ls-identifier255.255.255.255][ospf-area-id0.0.0.0]"
        "[igp-router-id]]");
}

// ------------------------------------------------------------------------------------------------------- IGP router id

// The area is printed as the text that its bytes are, up to the first zero.
TEST_F(BgpLsPrinter, IgpRouterIdsPrintRaw)
{
    const struct {
        std::string area;
        std::string printed;
    } rows[] = {
        {"", ""},
        {"00000000000100", ""},
        {"01010101", "\x01\x01\x01\x01"},
        {"0a000001", "\x0a"},
        {"0a010203", "\x0a\x01\x02\x03"},
        {"ffffffffffffffff", "\xff\xff\xff\xff\xff\xff\xff\xff"},
        {"41424344454647", "ABCDEFG"},
        {"4142430044454647", "ABC"},
        {"5d5b255d", "][%]"},
        {"2573256e", "%s%n"},
        {"25752573", "%u%s"},
    };
    for (const auto &row : rows) {
        for (const char *protocol : {"01000000", "03000000", "07000000", "00000000"}) {
            const std::string node = Print(With(Record(std::string("01000000") + protocol), 32, row.area));
            EXPECT_EQ(node.substr(node.find("[igp-router-id")), "[igp-router-id" + row.printed + "]]");
        }
        const std::string link = Print(With(With(Record("02000000 03000000"), 40, row.area), 114, "5859"));
        EXPECT_EQ(link, "[LINK][OSPFv2][IDENTIFIER0][LOCAL[as][ospf-area-id0.0.0.0][igp-router-id" + row.printed +
                            "]][REMOTE[as][ospf-area-id0.0.0.0][igp-router-idXY]]"
                            "[LINK[if-address0.0.0.0][peer-address0.0.0.0][if-address::][peer-address::][mt-id0]]");
    }
}

TEST_F(BgpLsPrinter, IgpTextHasAtMost49Characters)
{
    std::string fifty;
    for (int i = 0; i < 50; ++i) {
        fifty += "41";
    }
    const std::string fortyNine(49, 'A');
    const struct {
        const char *type;
        size_t at;
    } rows[] = {{"01000000", 32}, {"02000000", 40}, {"02000000", 114},
                {"03000000", 32}, {"04000000", 32}, {"06000000", 40}};
    for (const auto &row : rows) {
        // What follows the area in the record is no zero byte.
        std::string record = With(Record(row.type), row.at, fifty);
        record = With(record, row.at + 50, "42424242");
        const std::string text = Print(record);
        EXPECT_NE(text.find("[igp-router-id" + fortyNine + "]"), std::string::npos) << text;
        record = With(record, row.at + 49, "00");
        EXPECT_NE(Print(record).find("[igp-router-id" + fortyNine + "]"), std::string::npos);
        record = With(record, row.at + 48, "0041");
        EXPECT_NE(Print(record).find("[igp-router-id" + std::string(48, 'A') + "]"), std::string::npos);
    }
}

// --------------------------------------------------------------------------------------------------- the last sections

TEST_F(BgpLsPrinter, LinkDescriptors)
{
    const struct {
        const char *protocol;
        const char *ids;  // 164: local and remote id
        const char *ipv4; // 172: interface and neighbour
        const char *ipv6; // the last byte of the interface and of the neighbour address
        const char *mt;
        const char *printed;
    } rows[] = {
        {"07000000", "0403020108070605", "0a000001 0b000001", "0102", "05000000",
         "[LINK[identifier1.2.3.4.5.6.7.8][local1.0.0.10][remote1.0.0.11]]"},
        {"07000000", "0000000000000000", "0a000001 00000000", "0102", "ffffffff",
         "[LINK[identifier0.0.0.0.0.0.0.0][local1.0.0.10][remote0.0.0.0]]"},
        {"07000000", "0000000001000000", "00000000 0b000001", "0102", "00000000",
         "[LINK[identifier0.0.0.0.0.0.0.1][local0.0.0.0][remote1.0.0.11]]"},
        {"07000000", "ffffffffffffffff", "00000000 00000000", "0102", "05000000",
         "[LINK[identifier255.255.255.255.255.255.255.255][local::1][remote::2]]"},
        {"07000000", "0000000000000000", "00000000 00000000", "0000", "05000000",
         "[LINK[identifier0.0.0.0.0.0.0.0][local::][remote::]]"},
        {"03000000", "0101010100000000", "0a000001 0b000001", "0102", "05000000",
         "[LINK[link-local-id1.1.1.1][link-remote-id0.0.0.0][mt-id5]]"},
        {"03000000", "0000000001010101", "0a000001 0b000001", "0102", "ffffffff",
         "[LINK[link-local-id0.0.0.0][link-remote-id1.1.1.1]]"},
        {"06000000", "0100000002000000", "00000000 00000000", "0000", "feffffff",
         "[LINK[link-local-id0.0.0.1][link-remote-id0.0.0.2][mt-id4294967294]]"},
        {"01000000", "0000000000000000", "0a000001 0b000001", "0102", "00000000",
         "[LINK[if-address1.0.0.10][peer-address1.0.0.11][if-address::1][peer-address::2][mt-id0]]"},
        {"02000000", "0000000000000000", "0a000001 0b000001", "0000", "ffffffff",
         "[LINK[if-address1.0.0.10][peer-address1.0.0.11][if-address::][peer-address::]]"},
        {"09000000", "0000000000000000", "00000000 00000000", "0102", "ffffffff",
         "[LINK[if-address0.0.0.0][peer-address0.0.0.0][if-address::1][peer-address::2]]"},
        {"08000000", "0000000000000000", "00000000 00000000", "0000", "01000000",
         "[LINK[if-address0.0.0.0][peer-address0.0.0.0][if-address::][peer-address::][mt-id1]]"},
    };
    for (const auto &row : rows) {
        const std::string fifteen(30, '0');
        const std::string ipv6 = row.ipv6;
        const std::string record =
            With(Record(std::string("02000000") + row.protocol), 164,
                 row.ids + Hex(Bytes(row.ipv4)) + fifteen + ipv6.substr(0, 2) + fifteen + ipv6.substr(2) + row.mt);
        const std::string text = Print(record);
        EXPECT_EQ(text.substr(text.find("[LINK[")), row.printed);
    }
}

TEST_F(BgpLsPrinter, RemoteNodes)
{
    std::string record = Record("02000000 03000000");
    record = With(record, 98, "04030201");
    record = With(record, 110, "08070605");
    record = With(record, 220, "0c0b0a09");
    record = With(record, 224, "02000000");
    EXPECT_EQ(Print(record), "[LINK][OSPFv2][IDENTIFIER0][LOCAL[as][ospf-area-id0.0.0.0][igp-router-id]]"
                             "[REMOTE[as][bgp-ls-identifier1.2.3.4][ospf-area-id5.6.7.8][igp-router-id]]"
                             "[LINK[if-address0.0.0.0][peer-address0.0.0.0][if-address::][peer-address::][mt-id0]]");
    EXPECT_EQ(Print(With(record, 4, "07")), "[LINK][BGP][IDENTIFIER0][LOCAL[as][bgp-router-id0.0.0.0]]"
                                            "[REMOTE[as][bgp-ls-identifier1.2.3.4][bgp-router-id9.10.11.12]]"
                                            "[LINK[identifier0.0.0.0.0.0.0.0][local::][remote::]]");
}

TEST_F(BgpLsPrinter, Prefixes)
{
    const std::string head4 = "[IPV4-PREFIX][][IDENTIFIER0][LOCAL[as][ospf-area-id0.0.0.0][igp-router-id]]";
    const std::string head6 = "[IPV6-PREFIX][][IDENTIFIER0][LOCAL[as][ospf-area-id0.0.0.0][igp-router-id]]";
    EXPECT_EQ(Print(With(Record("03000000"), 82, "ffffffff060000000000000a08")),
              head4 + "[PREFIX[ospf-route-type6][prefix10.0.0.0/8]]");
    EXPECT_EQ(Print(With(Record("03000000"), 82, "00000000ffffffff0403020aff")),
              head4 + "[PREFIX[mt-id0][ospf-route-type4294967295][prefix10.2.3.4/255]]");
    EXPECT_EQ(Print(With(Record("03000000"), 82, "feffffff00000000ffffffff00")),
              head4 + "[PREFIX[mt-id4294967294][ospf-route-type0][prefix255.255.255.255/0]]");
    EXPECT_EQ(Print(With(Record("04000000"), 82, "ffffffff0600000020010db800000000000000000000000040")),
              head6 + "[PREFIX[ospf-route-type6][prefix2001:db8::/64]]");
    EXPECT_EQ(Print(With(Record("04000000"), 82, "02000000010000000001000200030004000500060007000880")),
              head6 + "[PREFIX[mt-id2][ospf-route-type1][prefix1:2:3:4:5:6:7:8/128]]");
    EXPECT_EQ(Print(With(Record("04000000"), 82, "020000000100000000000000000000000000ffff0a000001ff")),
              head6 + "[PREFIX[mt-id2][ospf-route-type1][prefix::ffff:10.0.0.1/255]]");
}

TEST_F(BgpLsPrinter, AddressesByTheirFamily)
{
    const std::string zero(32, '0');
    const struct {
        std::string stored;
        const char *printed;
    } rows[] = {
        {"04030201" + zero + "00", "1.2.3.4"},
        {"ffffffff"
         "ffffffffffffffffffffffffffffffff"
         "00",
         "255.255.255.255"},
        {"04030201"
         "20010db8000000000000000000000001"
         "01",
         "2001:db8::1"},
        {"04030201"
         "ffffffffffffffffffffffffffffffff"
         "01",
         "ffff:ffff:ffff:ffff:ffff:ffff:ffff:ffff"},
        {"04030201"
         "20010db8000000000000000000000001"
         "02",
         ""},
        {"04030201"
         "20010db8000000000000000000000001"
         "ff",
         ""},
    };
    for (const auto &row : rows) {
        const std::string head = "[TEPOLICY][][IDENTIFIER0][LOCAL[as][bgp-router-id0.0.0.0][ipv4-router-id0.0.0.0]"
                                 "[ipv6-router-id::]][TE[protocol-origin0][Flag0][endpoint";
        EXPECT_EQ(Print(With(Record("05000000"), 54, row.stored)),
                  head + row.printed + "][color0][originator-as0][originator-address0.0.0.0][discriminator0]]");
        EXPECT_EQ(Print(With(Record("05000000"), 87, row.stored)),
                  head + "0.0.0.0][color0][originator-as0][originator-address" + row.printed + "][discriminator0]]");
    }
}

TEST_F(BgpLsPrinter, SidsAndTheirMtId)
{
    const std::string igp = "[SRV6-SID][OSPFv3][IDENTIFIER0][LOCAL[as][ospf-area-id0.0.0.0][igp-router-id]]";
    const std::string bgp = "[SRV6-SID][BGP][IDENTIFIER0][LOCAL[as][bgp-router-id0.0.0.0]]";
    for (const auto &[mt, printed] :
         {std::pair{"ffffffff", "[SID[sidfc00::1]]"}, std::pair{"00000000", "[SID[mt-id0][sidfc00::1]]"},
          std::pair{"ff0f0000", "[SID[mt-id4095][sidfc00::1]]"},
          std::pair{"feffffff", "[SID[mt-id4294967294][sidfc00::1]]"}}) {
        const std::string tail = mt + std::string("fc000000000000000000000000000001");
        EXPECT_EQ(Print(With(Record("06000000 06000000"), 90, tail)), igp + printed);
        EXPECT_EQ(Print(With(Record("06000000 07000000"), 90, tail)), bgp + printed);
    }
}

// The widest record of each type stays within a caller's 769 bytes.
TEST_F(BgpLsPrinter, TheWidestRecordsFit)
{
    for (const char *type : {"01", "02", "03", "04", "05", "06"}) {
        for (const char *protocol : {"01", "07", "09"}) {
            std::string record(2 * 228, 'f');
            record = With(record, 0, std::string(type) + "000000" + protocol + "000000");
            for (const bool linkIds : {false, true}) {
                if (std::string(type) == "02" && !linkIds) {
                    record = With(record, 164, "0000000000000000");
                    record = With(record, 212, "feffffff");
                } else {
                    record = With(record, 164, "ffffffffffffffff");
                }
                const Into into = FormatOutInto(Row(kBgpLs), record, 1, 769);
                EXPECT_EQ(into.out.code, DT_OK);
                EXPECT_TRUE(into.guardsIntact);
                EXPECT_EQ(into.out.length, into.out.text.size() + 1);
                EXPECT_LE(into.out.length, 769);
                EXPECT_EQ(into.out.text.substr(into.out.text.size() - 2), "]]");
                EXPECT_EQ(FormatOut(kBgpLs, record).text, into.out.text);
            }
        }
    }
}

// -------------------------------------------------------------------------------------------------- printers by hand

using Printer = uint32_t (*)(const void *, char *, uint32_t, uint32_t *);

Printer PrinterOf(const Sample &sample)
{
    static constexpr Printer kPrinters[] = {SYSDT_LS_NodeKeyToStr,       SYSDT_LS_LinkKeyToStr,
                                            SYSDT_LS_Ipv4PrefixKeyToStr, SYSDT_LS_Ipv6PrefixKeyToStr,
                                            SYSDT_LS_TePolicyKeyToStr,   SYSDT_LS_Srv6SidKeyToStr};
    return kPrinters[sample.host[1] - '1'];
}

TEST_F(BgpLsPrinter, TheDispatcherAndThePrintersAgree)
{
    for (const Sample &sample : Samples()) {
        const std::string record = Bytes(sample.host);
        char text[769];
        uint32_t printed = 0;
        EXPECT_EQ(SYSDT_LsPrefix2Str(record.data(), text, &printed), DT_OK);
        EXPECT_EQ(std::string(text), sample.printed);
        EXPECT_EQ(printed, sample.printed.size());
        printed = 0;
        EXPECT_EQ(PrinterOf(sample)(record.data(), text, 768, &printed), DT_OK);
        EXPECT_EQ(std::string(text), sample.printed);
        EXPECT_EQ(printed, sample.printed.size());

        printed = 0;
        EXPECT_EQ(SYSDT_LsPrefix2Str(nullptr, text, &printed), DT_ERR_NULL_PTR);
        EXPECT_EQ(SYSDT_LsPrefix2Str(record.data(), nullptr, &printed), DT_ERR_NULL_PTR);
        EXPECT_EQ(SYSDT_LsPrefix2Str(record.data(), text, nullptr), DT_ERR_NULL_PTR);
        EXPECT_EQ(printed, 0u);
    }
}

TEST_F(BgpLsPrinter, PrintersStayBelowTheirLimit)
{
    for (const Sample &sample : Samples()) {
        const std::string record = Bytes(sample.host);
        for (uint32_t limit = 1; limit <= sample.printed.size() + 2; ++limit) {
            std::string text(1024, '\xA5');
            uint32_t printed = 0;
            PrinterOf(sample)(record.data(), text.data(), limit, &printed);
            ASSERT_LT(printed, limit) << sample.name;
            EXPECT_EQ(text.substr(0, printed), sample.printed.substr(0, printed)) << sample.name << ' ' << limit;
            EXPECT_EQ(text.substr(limit), std::string(1024 - limit, '\xA5')) << sample.name << ' ' << limit;
            EXPECT_EQ(printed, std::min<size_t>(limit - 1, sample.printed.size())) << sample.name << ' ' << limit;
        }
    }
}

// A failing print ends the printer; FormatOut shows what was printed before it.
TEST_F(BgpLsPrinter, AFailingPrintIsNoFailureOfFormatOut)
{
    for (const Sample &sample : Samples()) {
        const std::string record = Bytes(sample.host);
        bool failedOnce = false;
        for (uint32_t failing = 1; failing <= 40; ++failing) {
            SCOPED_TRACE(testing::Message() << sample.name << ", print " << failing);
            host::SetFaults({.failPrint = failing});
            const Into into = FormatOutInto(Row(kBgpLs), sample.host, 1, 769);
            host::SetFaults({});
            EXPECT_EQ(into.out.code, DT_OK);
            EXPECT_EQ(into.out.typeId, 25);
            EXPECT_TRUE(into.guardsIntact);
            EXPECT_FALSE(into.released);
            ASSERT_GE(into.out.length, 1);
            EXPECT_EQ(into.out.text.size() + 1, into.out.length);

            std::string text(769, '\0');
            uint32_t printed = 0;
            host::SetFaults({.failPrint = failing});
            const uint32_t code = SYSDT_LsPrefix2Str(record.data(), text.data(), &printed);
            host::SetFaults({});
            EXPECT_TRUE(code == DT_OK || code == DT_ERR_FAIL) << code;
            EXPECT_EQ(printed + 1, into.out.length);
            failedOnce = failedOnce || code == DT_ERR_FAIL;
            if (failing == 40) {
                EXPECT_EQ(into.out.text, sample.printed) << "more than 40 prints";
            }
        }
        EXPECT_TRUE(failedOnce) << sample.name;
    }
}

} // namespace
} // namespace bgp::test
