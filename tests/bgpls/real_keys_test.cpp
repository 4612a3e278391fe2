// Keys of captures and public test vectors: decoded from the wire, said as text, read, and compared field by field with
// what the wire says.
#include "bgpls/samples.h"
#include "bgpls/wire_nlri.h"

#include <fstream>

namespace bgp::test {
namespace {

class BgpLsRealKeys : public PlugIn {};

std::vector<std::string> Lines(const std::string &name)
{
    std::ifstream file(std::string(BGP_SOURCE_DIR) + "/" + name);
    EXPECT_TRUE(file.good()) << name;
    std::vector<std::string> lines;
    std::string line;
    while (std::getline(file, line)) {
        if (!line.empty() && line[0] != '#') {
            lines.push_back(line);
        }
    }
    return lines;
}

std::vector<WireNlri> WireKeys()
{
    std::vector<WireNlri> keys;
    for (const std::string &line : Lines("tests/data/bgp-ls-nlri-hex.txt")) {
        const std::optional<WireNlri> nlri = ReadNlri(Bytes(line));
        EXPECT_TRUE(nlri.has_value()) << line;
        if (nlri) {
            keys.push_back(*nlri);
        }
    }
    return keys;
}

// The record that the wire asks for, built from its TLVs.
class Expected {
public:
    explicit Expected(const WireNlri &nlri) : nlri_(nlri)
    {
        Word(0, nlri.type);
        Word(4, nlri.protocol);
        Word(8, nlri.identifier & 0xFFFFFFFF);
        switch (nlri.type) {
        case 1:
            Node(nlri.local, {16, 24, 0, 28, 32, 0, 82, 1});
            break;
        case 2:
            Node(nlri.local, {16, 24, 28, 36, 40, 216, 224, 1});
            Node(nlri.remote, {90, 98, 102, 110, 114, 220, 224, 2});
            Link();
            break;
        case 3:
            Node(nlri.local, {16, 24, 0, 28, 32, 0, 95, 1});
            Prefix(94);
            break;
        case 4:
            Node(nlri.local, {16, 24, 0, 28, 32, 0, 107, 1});
            Prefix(106);
            break;
        case 6:
            Node(nlri.local, {16, 24, 28, 36, 40, 110, 114, 1});
            Mt(90);
            Copy(94, *Find(nlri.descriptors, 518));
            break;
        default:
            ADD_FAILURE() << "NLRI type " << nlri.type;
        }
    }
    std::string InHex() const { return Hex(record_); }

private:
    struct Places {
        size_t as, bgpLsId, memberAs, area, igp, routerId, existFlag;
        uint32_t existBit;
    };

    void Copy(size_t offset, const std::string &bytes) { record_.replace(offset, bytes.size(), bytes); }
    // A number as the processor has it: the record of a little-endian one.
    void Word(size_t offset, uint64_t value) { Copy(offset, Bytes(Le32(static_cast<uint32_t>(value)))); }
    void Word(size_t offset, const Tlvs &tlvs, uint16_t type)
    {
        if (const std::string *value = Find(tlvs, type)) {
            Word(offset, BigEndian(*value));
        }
    }

    void Node(const Tlvs &node, const Places &places)
    {
        Word(places.as, node, 512);
        Word(places.bgpLsId, node, 513);
        Word(places.area, node, 514);
        Word(places.routerId, node, 516);
        Word(places.memberAs, node, 517);
        if (const std::string *id = Find(node, 515)) {
            Copy(places.igp, *id);
        }
        if (Find(node, 513) != nullptr) {
            record_[places.existFlag] =
                static_cast<char>(record_[places.existFlag] | static_cast<char>(places.existBit));
        }
    }

    void Mt(size_t offset)
    {
        const std::string *mt = Find(nlri_.descriptors, 263);
        Word(offset,
             mt == nullptr ? (nlri_.type == 2 && nlri_.protocol == 7 ? 0 : 0xFFFFFFFF) : BigEndian(*mt) & 0xFFF);
    }

    void Link()
    {
        if (const std::string *ids = Find(nlri_.descriptors, 258)) {
            Word(164, BigEndian(ids->substr(0, 4)));
            Word(168, BigEndian(ids->substr(4)));
        }
        Word(172, nlri_.descriptors, 259);
        Word(176, nlri_.descriptors, 260);
        for (const auto &[type, offset] : {std::pair<uint16_t, size_t>{261, 180}, {262, 196}}) {
            if (const std::string *address = Find(nlri_.descriptors, type)) {
                Copy(offset, *address);
            }
        }
        Mt(212);
    }

    void Prefix(size_t lengthAt)
    {
        const std::string &reachable = *Find(nlri_.descriptors, 265);
        Mt(82);
        Word(86, nlri_.descriptors, 264);
        std::string address = reachable.substr(1);
        address.resize(nlri_.type == 3 ? 4 : 16);
        if (nlri_.type == 3) {
            Word(90, BigEndian(address));
        } else {
            Copy(90, address);
        }
        record_[lengthAt] = reachable[0];
    }

    const WireNlri &nlri_;
    std::string record_ = std::string(228, '\0');
};

TEST_F(BgpLsRealKeys, AreStoredAsTheWireSays)
{
    size_t unsaid = 0;
    size_t refused = 0;
    size_t read = 0;
    for (const WireNlri &nlri : WireKeys()) {
        const std::optional<std::string> text = KeyText(nlri);
        if (!text) {
            ++unsaid;
            continue;
        }
        SCOPED_TRACE(*text);
        const In in = FormatIn(kBgpLs, *text);
        if (in.code != DT_OK) {
            ++refused;
            EXPECT_EQ(in.code, DT_ERR_INVALID_VALUE);
            continue;
        }
        ++read;
        EXPECT_EQ(in.value, Expected(nlri).InHex());
        EXPECT_EQ(FormatOut(kBgpLs, in.value).code, DT_OK);
        EXPECT_EQ(LuaProblem(Bytes(in.value)), "");
    }
    // Without words: a key of two topologies, a prefix shorter than its length, an IS-IS id of four bytes.
    EXPECT_EQ(unsaid, 3u);
    // Refused: a BGP link that names no BGP router id and no link ids.
    EXPECT_EQ(refused, 1u);
    EXPECT_EQ(read, 48u);
}

TEST_F(BgpLsRealKeys, SomeInFull)
{
    const struct {
        const char *wire;
        const char *text; // null: no words for it
        std::string record;
        const char *printed;
    } rows[] = {
        {"000100310300000000000000010100002402000004000000640201000419191901020200040000000002030008030303040b0b0b03",
         "[NODE][OSPFv2][IDENTIFIER1][LOCAL[as100][bgp-ls-identifier25.25.25.1][ospf-area-id0.0.0.0]"
         "[igp-router-id3.3.3.4/11.11.11.3]]",
         Record("01000000 03000000 0100000000000000 6400000000000000 01191919 00000000" + Igp("030303040b0b0b03") +
                "01000000"),
         "[NODE][OSPFv2][IDENTIFIER1][LOCAL[as100][bgp-ls-identifier25.25.25.1][ospf-area-id0.0.0.0]"
         "[igp-router-id\x03\x03\x03\x04\x0b\x0b\x0b\x03]]"},
        {"000200730200000000000000000100001a020000040000fde80201000400000000020300060000000000050101001a02000004"
         "0000fde802010004000000000203000600000000000301050010fc00dddd00030005000000000000000501060010fc00dddd"
         "000300050000000000000003010700020002",
         "[LINK][ISIS-LEVEL-2][IDENTIFIER0][LOCAL[as65000][bgp-ls-identifier0.0.0.0][igp-router-id0000.0000.0005.00]"
         "[ospf-area-id0.0.0.0]][REMOTE[as65000][bgp-ls-identifier0.0.0.0][igp-router-id0000.0000.0003.00]]"
         "[LINK[if-addressfc00:dddd:3:5::5][peer-addressfc00:dddd:3:5::3][mt-id2]]",
         Record("02000000 02000000 0000000000000000 e8fd000000000000 00000000 0000000000000000 00000000" +
                Igp("00000000000500") + "e8fd000000000000 00000000 0000000000000000 00000000" + Igp("00000000000300") +
                "00000000 00000000 00000000 00000000 fc00dddd000300050000000000000005"
                "fc00dddd000300050000000000000003 02000000 00000000 00000000 03000000"),
         "[LINK][ISIS-LEVEL-2][IDENTIFIER0][LOCAL[as65000][bgp-ls-identifier0.0.0.0][ospf-area-id0.0.0.0]"
         "[igp-router-id]][REMOTE[as65000][bgp-ls-identifier0.0.0.0][ospf-area-id0.0.0.0][igp-router-id]]"
         "[LINK[if-address0.0.0.0][peer-address0.0.0.0][if-addressfc00:dddd:3:5::5][peer-addressfc00:dddd:3:5::3]"
         "[mt-id2]]"},
        {"0003001c03000000000000000101000008020000040000fffd010900030a0a00",
         "[IPV4-PREFIX][OSPFv2][IDENTIFIER1][LOCAL[as65533]][PREFIX[ospf-route-type0][prefix10.0.0.0/10]]",
         Record("03000000 03000000 0100000000000000 fdff000000000000 00000000 00000000" + Igp("") +
                "ffffffff 00000000 0000000a 0a 00000000"),
         "[IPV4-PREFIX][OSPFv2][IDENTIFIER1][LOCAL[as65533][ospf-area-id0.0.0.0][igp-router-id]]"
         "[PREFIX[ospf-route-type0][prefix10.0.0.0/10]]"},
        {"0004003a0100000000000003e90100001a020000040000006402010004000000000203000600000000001b01070002000201090009"
         "40200105b000080000",
         "[IPV6-PREFIX][ISIS-LEVEL-1][IDENTIFIER1001][LOCAL[as100][bgp-ls-identifier0.0.0.0]"
         "[igp-router-id0000.0000.001b.00]][PREFIX[mt-id2][ospf-route-type0][prefix2001:5b0:8::/64]]",
         Record("04000000 01000000 e903000000000000 6400000000000000 00000000 00000000" + Igp("00000000001b00") +
                "02000000 00000000 200105b0000800000000000000000000 40 01000000"),
         "[IPV6-PREFIX][ISIS-LEVEL-1][IDENTIFIER1001][LOCAL[as100][bgp-ls-identifier0.0.0.0][ospf-area-id0.0.0.0]"
         "[igp-router-id]][PREFIX[mt-id2][ospf-route-type0][prefix2001:5b0:8::/64]]"},
        {"000600440200000000000000010100002302000004000000480201000428282828020200040029292902030007000000000039050206"
         "001000010203040506070000000000000001",
         "[SRV6-SID][ISIS-LEVEL-2][IDENTIFIER1][LOCAL[as72][bgp-ls-identifier40.40.40.40][ospf-area-id0.41.41.41]"
         "[igp-router-id0000.0000.0039.05]][SID[sid1:203:405:607::1]]",
         Record("06000000 02000000 0100000000000000 4800000000000000 28282828 0000000000000000 29292900" +
                Igp("00000000003905") + "ffffffff 00010203040506070000000000000001 00000000 01000000"),
         "[SRV6-SID][ISIS-LEVEL-2][IDENTIFIER1][LOCAL[as72][bgp-ls-identifier40.40.40.40][ospf-area-id0.41.41.41]"
         "[igp-router-id]][SID[sid1:203:405:607::1]]"},
        {"0004001d03000000000000000101000008020000040000fffd010900047f200107", nullptr, "", nullptr},
        {"0004003701000000000000004501000008020200040000001201090011800001000200030004000500060007000801070004004500150"
         "108000104",
         nullptr, "", nullptr},
    };
    for (const auto &row : rows) {
        const std::optional<WireNlri> nlri = ReadNlri(Bytes(row.wire));
        ASSERT_TRUE(nlri.has_value()) << row.wire;
        const std::optional<std::string> text = KeyText(*nlri);
        ASSERT_EQ(text.has_value(), row.text != nullptr) << row.wire;
        if (row.text == nullptr) {
            continue;
        }
        EXPECT_EQ(*text, row.text);
        EXPECT_EQ(Value(kBgpLs, row.text), row.record);
        EXPECT_EQ(Text(kBgpLs, row.record), row.printed);
    }
}

// The values that come with the tool are these keys, those that are accepted.
TEST_F(BgpLsRealKeys, AreTheExampleValues)
{
    std::vector<std::string> accepted;
    for (const WireNlri &nlri : WireKeys()) {
        const std::optional<std::string> text = KeyText(nlri);
        if (text && CodeOf(kBgpLs, *text) == DT_OK) {
            accepted.push_back(*text);
        }
    }
    EXPECT_EQ(Lines("examples/values/BGPLSPREFIX.txt"), accepted);
}

} // namespace
} // namespace bgp::test
