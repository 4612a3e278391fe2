#include "bgpls/samples.h"

#include <cctype>

namespace bgp::test {
namespace {

class BgpLsLua : public PlugIn {};

// --------------------------------------------------------------------------------------------------------- value to
// Lua

TEST_F(BgpLsLua, AllBitsOfEveryNumberArrive)
{
    const std::string ones(2 * 228 - 8, 'f');
    EXPECT_EQ(LuaSet(kBgpLs, "01000000" + ones).table,
              "{existFlag=4294967295, stLocIgpRtId=\"\\xff\\xff\\xff\\xff\\xff\\xff\\xff\\xff\", "
              "stLocalAs={asNumValue=4294967295, asType=4294967295}, stLocalBgpLsId=4294967295, "
              "uiIdentifier={hUint32=4294967295, lUint32=4294967295}, uiLocIgpRtIdLen=8, "
              "uiLocOspfAreaId=4294967295, uiProtocolId=4294967295, uiRouteType=1}");
    EXPECT_EQ(LuaSet(kBgpLs, "03000000" + ones).table,
              "{Prefix={stIpv4Prefix=4294967295, uiPrefixLen=255}, existFlag=4294967295, "
              "stLocIgpRtId=\"\\xff\\xff\\xff\\xff\\xff\\xff\\xff\\xff\", "
              "stLocalAs={asNumValue=4294967295, asType=4294967295}, stLocalBgpLsId=4294967295, "
              "uiIdentifier={hUint32=4294967295, lUint32=4294967295}, uiLocIgpRtIdLen=8, "
              "uiLocOspfAreaId=4294967295, uiMtId=4294967295, uiOspfRtType=4294967295, uiProtocolId=4294967295, "
              "uiRouteType=3}");
    EXPECT_EQ(LuaSet(kBgpLs, "05000000" + ones).table,
              "{color=4294967295, discriminator=4294967295, endpoint={flag=255, ipv4Addr=4294967295, "
              "ipv6Addr={255,255,255,255,255,255,255,255,255,255,255,255,255,255,255,255}}, existFlag=4294967295, "
              "flags=255, ipv6TeRouterId={255,255,255,255,255,255,255,255,255,255,255,255,255,255,255,255}, "
              "originatorAddr={flag=255, ipv4Addr=4294967295, "
              "ipv6Addr={255,255,255,255,255,255,255,255,255,255,255,255,255,255,255,255}}, "
              "originatorAs={asNumValue=4294967295, asType=4294967295}, protocolOrigin=255, "
              "stLocalAs={asNumValue=4294967295, asType=4294967295}, stLocalBgpLsId=4294967295, "
              "teRouterId=4294967295, uiIdentifier={hUint32=4294967295, lUint32=4294967295}, "
              "uiLocalBgpRtId=4294967295, uiProtocolId=4294967295, uiRouteType=5}");
}

TEST_F(BgpLsLua, TheIdentifierHasTwoHalves)
{
    const std::string table = LuaSet(kBgpLs, Record("01000000 01000000 0200000001000000")).table;
    EXPECT_NE(table.find("uiIdentifier={hUint32=1, lUint32=2}"), std::string::npos) << table;
}

TEST_F(BgpLsLua, TheLengthOfAnIgpRouterId)
{
    const struct {
        const char *protocol;
        const char *area;
        const char *length;
    } rows[] = {
        {"03000000", "0101010100000000", "4"}, {"01000000", "0101010100000000", "8"},
        {"02000000", "0000000000000000", "8"}, {"03000000", "0101010101010101", "8"},
        {"03000000", "0000000000000000", "4"}, {"03000000", "0101010100000001", "8"},
        {"03000000", "0101010101000000", "8"}, {"03000000", "0000000000010000", "8"},
        {"06000000", "0101010100000000", "4"}, {"06000000", "0101010102020202", "8"},
        {"00000000", "0000000000000000", "4"}, {"04000000", "0101010101010101", "8"},
        {"07000000", "0101010100000000", "4"}, {"09000000", "0101010100000000", "4"},
        {"01010000", "0101010100000000", "4"}, {"ffffffff", "0101010100000000", "4"},
    };
    const struct {
        const char *type;
        size_t at;
        const char *key;
    } areas[] = {
        {"01000000", 32, "uiLocIgpRtIdLen"}, {"02000000", 40, "uiLocIgpRtIdLen"}, {"02000000", 114, "uiRmtIgpRtIdLen"},
        {"03000000", 32, "uiLocIgpRtIdLen"}, {"04000000", 32, "uiLocIgpRtIdLen"}, {"06000000", 40, "uiLocIgpRtIdLen"},
    };
    for (const auto &row : rows) {
        for (const auto &area : areas) {
            std::string record = Record(std::string(area.type) + row.protocol);
            record.replace(2 * area.at, 16, row.area);
            const std::string table = LuaSet(kBgpLs, record).table;
            const std::string field = std::string(area.key) + "=" + row.length + ",";
            EXPECT_NE(table.find(field), std::string::npos) << field << " in " << table;
        }
    }
    // What stands behind the first eight bytes of the area does not show.
    std::string record = Record("01000000 03000000");
    record.replace(2 * 40, 2 * 42, std::string(2 * 42, 'f'));
    const std::string table = LuaSet(kBgpLs, record).table;
    EXPECT_NE(table.find("stLocIgpRtId=\"\\x00\\x00\\x00\\x00\\x00\\x00\\x00\\x00\""), std::string::npos) << table;
    EXPECT_NE(table.find("uiLocIgpRtIdLen=4,"), std::string::npos) << table;
}

TEST_F(BgpLsLua, AnUnknownTypeIsATableWithTheTypeAlone)
{
    for (const uint32_t type : {0u, 7u, 9u, 0x101u, 0x106u, 0x01000000u, 0xFFFFFFFFu}) {
        const LuaOut out = LuaSet(kBgpLs, Le32(type) + std::string(2 * 224, 'f'));
        EXPECT_EQ(out.code, DT_OK);
        EXPECT_EQ(out.table, "{uiRouteType=" + std::to_string(type) + "}");
        EXPECT_EQ(out.growth, 0);
    }
}

// --------------------------------------------------------------------------------------------------------- Lua to
// value

// What LuaGet does when it meets the field missing or of the wrong kind.
enum Rule {
    kTested, // a number: the reader ends there
    kStored, // a number: DT_ERR_INVALID_PARAM is stored in its place
    kTable,  // a table: the reader ends there
    kString  // a string: the reader ends there
};

struct LuaField {
    const char *key;
    const char *good;  // a Lua expression
    unsigned offset;   // in the record; bytes are stored there
    std::string bytes; // "" for a field that is read and not stored
    Rule rule;
};

struct LuaTable {
    const char *name;
    const char *type; // uiRouteType
    bool silent;      // does LuaGet return 0 whatever happens?
    std::vector<LuaField> fields;
};

constexpr const char *kArray = "{1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16}";
constexpr const char *kArrayBytes = "0102030405060708090a0b0c0d0e0f10";

// In the order in which they are read.
std::vector<LuaField> WithCommon(Rule protocol, Rule bgpLsId, const std::vector<LuaField> &tail)
{
    std::vector<LuaField> fields = {
        {"uiProtocolId", "0x01020304", 4, "04030201", protocol},
        {"uiIdentifier", "{hUint32 = 0x11121314, lUint32 = 0x15161718}", 8, "1817161514131211", kTable},
        {"stLocalAs", "{asNumValue = 0x21222324, asType = 0x25262728}", 16, "2423222128272625", kTable},
        {"stLocalBgpLsId", "0x31323334", 24, "34333231", bgpLsId},
    };
    fields.insert(fields.end(), tail.begin(), tail.end());
    return fields;
}

const std::vector<LuaTable> &Tables()
{
    static const std::vector<LuaTable> tables = {
        {"NODE", "1", true,
         WithCommon(kTested, kTested,
                    {{"existFlag", "0x41424344", 82, "44434241", kStored},
                     {"uiLocOspfAreaId", "0x51525354", 28, "54535251", kTested},
                     {"stLocIgpRtId", "'abcdefgh'", 32, "6162636465666768", kString},
                     {"uiLocIgpRtIdLen", "8", 0, "", kTested}})},
        {"LINK", "2", false,
         WithCommon(
             kTested, kTested,
             {{"existFlag", "0x41424344", 224, "44434241", kStored},
              {"uiLocalBgpRtId", "0x51525354", 216, "54535251", kTested},
              {"uiLocOspfAreaId", "0x61626364", 36, "64636261", kTested},
              {"stLocIgpRtId", "'abcdefgh'", 40, "6162636465666768", kString},
              {"uiLocIgpRtIdLen", "8", 0, "", kTested},
              {"localMemberAs", "{asNumValue = 0x71727374, asType = 0x75767778}", 28, "7473727178777675", kTable},
              {"stRemoteAs", "{asNumValue = 0x81828384, asType = 0x85868788}", 90, "8483828188878685", kTable},
              {"stRemoteBgpLsId", "0x91929394", 98, "94939291", kTested},
              {"uiRemoteBgpRtId", "0xa1a2a3a4", 220, "a4a3a2a1", kTested},
              {"uiRemOspfAreaId", "0xb1b2b3b4", 110, "b4b3b2b1", kTested},
              {"stRemIgpRtId", "'ijklmnop'", 114, "696a6b6c6d6e6f70", kString},
              {"uiRmtIgpRtIdLen", "8", 0, "", kTested},
              {"remoteMemberAs", "{asNumValue = 0xc1c2c3c4, asType = 0xc5c6c7c8}", 102, "c4c3c2c1c8c7c6c5", kTable},
              {"uiLinkLocId", "0xd1d2d3d4", 164, "d4d3d2d1", kTested},
              {"uiLinkRemId", "0xe1e2e3e4", 168, "e4e3e2e1", kTested},
              {"stIpv4IntfAddr", "0xf1f2f3f4", 172, "f4f3f2f1", kTested},
              {"stIpv4PeerAddr", "0x01112131", 176, "31211101", kTested},
              {"stIpv6IntfAddr", kArray, 180, kArrayBytes, kTable},
              {"stIpv6PeerAddr", kArray, 196, kArrayBytes, kTable},
              {"uiMtId", "0x02122232", 212, "32221202", kTested}})},
        {"IPV4-PREFIX", "3", false,
         WithCommon(kTested, kTested,
                    {{"existFlag", "0x41424344", 95, "44434241", kStored},
                     {"uiLocOspfAreaId", "0x51525354", 28, "54535251", kTested},
                     {"stLocIgpRtId", "'abcdefgh'", 32, "6162636465666768", kString},
                     {"uiLocIgpRtIdLen", "8", 0, "", kTested},
                     {"uiMtId", "0x61626364", 82, "64636261", kTested},
                     {"uiOspfRtType", "0x71727374", 86, "74737271", kTested},
                     {"Prefix", "{stIpv4Prefix = 0x81828384, uiPrefixLen = 0x85}", 90, "8483828185", kTable}})},
        {"IPV6-PREFIX", "4", true,
         WithCommon(kStored, kStored,
                    {{"existFlag", "0x41424344", 107, "44434241", kStored},
                     {"uiLocOspfAreaId", "0x51525354", 28, "54535251", kStored},
                     {"stLocIgpRtId", "'abcdefgh'", 32, "6162636465666768", kString},
                     {"uiLocIgpRtIdLen", "8", 0, "", kTested},
                     {"uiMtId", "0x61626364", 82, "64636261", kStored},
                     {"uiOspfRtType", "0x71727374", 86, "74737271", kStored},
                     {"Prefix", "{stIpv6Prefix = {1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16}, uiPrefixLen = 0x85}", 90,
                      std::string(kArrayBytes) + "85", kTable}})},
        {"TEPOLICY", "5", true,
         WithCommon(
             kStored, kStored,
             {{"existFlag", "0x41424344", 112, "44434241", kStored},
              {"uiLocalBgpRtId", "0x51525354", 28, "54535251", kStored},
              {"teRouterId", "0x61626364", 32, "64636261", kStored},
              {"ipv6TeRouterId", kArray, 36, kArrayBytes, kTable},
              {"protocolOrigin", "0x71", 52, "71", kStored},
              {"flags", "0x81", 53, "81", kStored},
              {"endpoint", "{ipv4Addr = 0x91929394, ipv6Addr = {1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16}, flag = 0x95}",
               54, "94939291" + std::string(kArrayBytes) + "95", kTable},
              {"color", "0xa1a2a3a4", 75, "a4a3a2a1", kStored},
              {"originatorAs", "{asNumValue = 0xc1c2c3c4, asType = 0xc5c6c7c8}", 79, "c4c3c2c1c8c7c6c5", kTable},
              {"originatorAddr",
               "{ipv4Addr = 0xd1d2d3d4, ipv6Addr = {1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16}, flag = 0xd5}", 87,
               "d4d3d2d1" + std::string(kArrayBytes) + "d5", kTable},
              {"discriminator", "0xe1e2e3e4", 108, "e4e3e2e1", kStored}})},
        {"SRV6-SID", "6", true,
         WithCommon(
             kStored, kStored,
             {{"existFlag", "0x41424344", 114, "44434241", kStored},
              {"uiLocalBgpRtId", "0x51525354", 110, "54535251", kTested},
              {"uiLocOspfAreaId", "0x61626364", 36, "64636261", kStored},
              {"localMemberAs", "{asNumValue = 0x71727374, asType = 0x75767778}", 28, "7473727178777675", kTable},
              {"stLocIgpRtId", "'abcdefgh'", 40, "6162636465666768", kString},
              {"uiLocIgpRtIdLen", "8", 0, "", kTested},
              {"uiMtId", "0x81828384", 90, "84838281", kStored},
              {"srv6SidInfo", kArray, 94, kArrayBytes, kTable}})},
    };
    return tables;
}

// The table with one field replaced (or left out, for an empty expression).
std::string Expression(const LuaTable &table, const std::string &key = "", const std::string &instead = "")
{
    std::string expression = std::string("{uiRouteType = ") + table.type;
    for (const LuaField &field : table.fields) {
        const std::string value = field.key == key ? instead : field.good;
        if (!value.empty()) {
            expression += std::string(", ") + field.key + " = " + value;
        }
    }
    return expression + "}";
}

std::string Untouched()
{
    return std::string(2 * 228, 'e');
}

void Store(std::string &record, unsigned offset, const std::string &hex)
{
    record.replace(2 * size_t{offset}, hex.size(), hex);
}

// Does the value look like the pattern? "?" stands for any digit.
bool Matches(const std::string &value, const std::string &pattern)
{
    if (value.size() != pattern.size()) {
        return false;
    }
    for (size_t i = 0; i < value.size(); ++i) {
        if (pattern[i] != '?' && pattern[i] != value[i]) {
            return false;
        }
    }
    return true;
}

// The record after a read that ended at fields[end], everything before it good.
std::string ReadUntil(const LuaTable &table, size_t end)
{
    std::string record = Untouched();
    Store(record, 0, std::string("0") + table.type + "000000");
    for (size_t i = 0; i < end; ++i) {
        Store(record, table.fields[i].offset, table.fields[i].bytes);
    }
    return record;
}

TEST_F(BgpLsLua, TablesBecomeValues)
{
    for (const LuaTable &table : Tables()) {
        const LuaIn in = LuaGet(kBgpLs, Expression(table));
        EXPECT_EQ(in.code, DT_OK) << table.name;
        EXPECT_EQ(in.value, ReadUntil(table, table.fields.size())) << table.name;
        EXPECT_EQ(in.growth, 0) << table.name;
    }
}

// Every field missing and of the wrong kinds: what was read before it stays, what comes behind it is not written,
// except where the code takes the field's place and the reading goes on.
TEST_F(BgpLsLua, EveryFieldMissingOrOfTheWrongKind)
{
    for (const LuaTable &table : Tables()) {
        for (size_t i = 0; i < table.fields.size(); ++i) {
            const LuaField &field = table.fields[i];
            std::vector<std::string> bad = {"", "nil", "true", "false", "print"};
            switch (field.rule) {
            case kTested:
            case kStored:
                bad.insert(bad.end(), {"{}", "{1}", "'x'", "''", "'1x'"});
                break;
            case kTable:
                bad.insert(bad.end(), {"1", "'x'", "''"});
                break;
            case kString:
                bad.insert(bad.end(), {"{}", "{'abcdefgh'}"});
                break;
            }
            for (const std::string &instead : bad) {
                SCOPED_TRACE(testing::Message() << table.name << ", " << field.key << " = " << instead);
                const LuaIn in = LuaGet(kBgpLs, Expression(table, field.key, instead));
                if (field.rule == kStored) {
                    std::string record = ReadUntil(table, table.fields.size());
                    Store(record, field.offset, std::string("07178000").substr(0, field.bytes.size()));
                    EXPECT_EQ(in.code, DT_OK);
                    EXPECT_EQ(in.value, record);
                    EXPECT_EQ(in.growth, 0);
                } else {
                    EXPECT_EQ(in.code, table.silent ? DT_OK : DT_ERR_INVALID_PARAM);
                    EXPECT_EQ(in.value, ReadUntil(table, i));
                }
            }
        }
    }
}

// The same within the tables of a field. Whether the part that was read of a field that failed is written is not
// settled ("?"); what comes behind it stays.
TEST_F(BgpLsLua, EveryPartOfATableFieldMissingOrOfTheWrongKind)
{
    const std::string array = kArray;
    const struct {
        const char *good; // the good expression begins so
        std::vector<std::string> bad;
    } kinds[] = {
        {"{hUint32",
         {"{}", "{hUint32 = 1}", "{lUint32 = 1}", "{hUint32 = 'x', lUint32 = 1}", "{hUint32 = 1, lUint32 = {}}",
          "{1, 2}", "{HUint32 = 1, LUint32 = 2}"}},
        {"{asNumValue",
         {"{}", "{asNumValue = 1}", "{asType = 1}", "{asNumValue = {}, asType = 1}", "{asNumValue = 1, asType = 'x'}",
          "{1, 2}"}},
        {"{1,2,",
         {"{}", "{1,2,3}", "{1,2,3,4,5,6,7,8,9,10,11,12,13,14,15}", "{'x',2,3,4,5,6,7,8,9,10,11,12,13,14,15,16}",
          "{1,2,3,4,5,6,7,{},9,10,11,12,13,14,15,16}", "{1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,'x'}",
          "{[0]=1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16}"}},
        {"{ipv4Addr",
         {"{}", "{ipv4Addr = 1, ipv6Addr = " + array + "}", "{ipv4Addr = 1, flag = 1}",
          "{ipv6Addr = " + array + ", flag = 1}", "{ipv4Addr = {}, ipv6Addr = " + array + ", flag = 1}",
          "{ipv4Addr = 1, ipv6Addr = 1, flag = 1}", "{ipv4Addr = 1, ipv6Addr = {1,2,3}, flag = 1}",
          "{ipv4Addr = 1, ipv6Addr = " + array + ", flag = 'x'}"}},
        {"{stIpv4Prefix",
         {"{}", "{stIpv4Prefix = 1}", "{uiPrefixLen = 1}", "{stIpv4Prefix = {}, uiPrefixLen = 1}",
          "{stIpv4Prefix = 1, uiPrefixLen = 'x'}", "{stIpv6Prefix = " + array + ", uiPrefixLen = 1}"}},
        {"{stIpv6Prefix",
         {"{}", "{stIpv6Prefix = " + array + "}", "{uiPrefixLen = 1}", "{stIpv6Prefix = 1, uiPrefixLen = 1}",
          "{stIpv6Prefix = {1,2,3}, uiPrefixLen = 1}", "{stIpv6Prefix = " + array + ", uiPrefixLen = {}}",
          "{stIpv4Prefix = 1, uiPrefixLen = 1}"}},
    };
    size_t tried = 0;
    for (const LuaTable &table : Tables()) {
        for (size_t i = 0; i < table.fields.size(); ++i) {
            const LuaField &field = table.fields[i];
            for (const auto &kind : kinds) {
                if (field.rule != kTable || std::string(field.good).rfind(kind.good, 0) != 0) {
                    continue;
                }
                for (const std::string &instead : kind.bad) {
                    SCOPED_TRACE(testing::Message() << table.name << ", " << field.key << " = " << instead);
                    ++tried;
                    const LuaIn in = LuaGet(kBgpLs, Expression(table, field.key, instead));
                    EXPECT_EQ(in.code, table.silent ? DT_OK : DT_ERR_INVALID_PARAM);
                    std::string pattern = ReadUntil(table, i);
                    Store(pattern, field.offset, std::string(field.bytes.size(), '?'));
                    EXPECT_TRUE(Matches(in.value, pattern)) << in.value << "\n" << pattern;
                }
            }
        }
    }
    EXPECT_EQ(tried, 7u * 6 + 6u * 11 + 7u * 4 + 8u * 2 + 6u + 7u);
}

// An array is read from its front: the bytes from the first bad entry on are not written.
TEST_F(BgpLsLua, AnArrayEndsAtItsFirstBadEntry)
{
    for (int bad = 1; bad <= 16; ++bad) {
        std::string array = "{";
        for (int i = 1; i <= 16; ++i) {
            array += i == bad ? "'x'," : std::to_string(i) + ",";
        }
        const auto read = static_cast<size_t>(bad - 1);
        for (const LuaTable &table : Tables()) {
            for (const LuaField &field : table.fields) {
                if (std::string(field.good).rfind("{1,2,", 0) == 0) {
                    const LuaIn in = LuaGet(kBgpLs, Expression(table, field.key, array + "}"));
                    EXPECT_EQ(in.value.substr(2 * (field.offset + read), 32 - 2 * read),
                              std::string(32 - 2 * read, 'e'))
                        << table.name << ' ' << field.key;
                }
            }
        }
    }
    // Entries behind the sixteenth are not looked at.
    const LuaTable &link = Tables()[1];
    const LuaIn in =
        LuaGet(kBgpLs, Expression(link, "stIpv6IntfAddr", "{1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,'x',18}"));
    EXPECT_EQ(in.code, DT_OK);
    EXPECT_EQ(in.value, ReadUntil(link, link.fields.size()));
}

TEST_F(BgpLsLua, TheTypeIsReadFirst)
{
    for (const std::string expression :
         {"nil", "7", "'x'", "true", "print", "{}", "{uiRouteType = {}}", "{uiRouteType = 'x'}", "{uiRouteType = true}",
          "{UIROUTETYPE = 1}", "{1}", "{uiProtocolId = 1, existFlag = 1}"}) {
        const LuaIn in = LuaGet(kBgpLs, expression);
        EXPECT_EQ(in.code, DT_ERR_INVALID_PARAM) << expression;
        EXPECT_EQ(in.value, Untouched()) << expression;
    }
    for (const LuaTable &table : Tables()) {
        std::string expression = Expression(table);
        expression.replace(expression.find("uiRouteType"), 11, "uiroutetype");
        const LuaIn in = LuaGet(kBgpLs, expression);
        EXPECT_EQ(in.code, DT_ERR_INVALID_PARAM);
        EXPECT_EQ(in.value, Untouched());
    }
}

TEST_F(BgpLsLua, AnUnknownTypeStoresTheTypeWordAlone)
{
    const struct {
        const char *type;
        const char *stored;
    } rows[] = {
        {"0", "00000000"},          {"7", "07000000"},          {"9", "09000000"},   {"255", "ff000000"},
        {"257", "01010000"},        {"0x01000000", "00000001"}, {"'9'", "09000000"}, {"4294967295", "ffffffff"},
        {"4294967296", "00000000"}, {"-1", "ffffffff"},         {"1.5", "00000000"},
    };
    for (const auto &row : rows) {
        std::string expression = Expression(Tables()[0]);
        expression.replace(0, std::string("{uiRouteType = 1").size(), std::string("{uiRouteType = ") + row.type);
        const LuaIn in = LuaGet(kBgpLs, expression);
        EXPECT_EQ(in.code, DT_OK) << row.type;
        EXPECT_EQ(in.value, row.stored + Untouched().substr(8)) << row.type;
        EXPECT_EQ(in.growth, 0);
    }
    // To Lua a numeric string is a number, and the low 32 bits of one decide.
    for (const char *type : {"'1'", "4294967297", "1.0"}) {
        std::string expression = Expression(Tables()[0]);
        expression.replace(0, std::string("{uiRouteType = 1").size(), std::string("{uiRouteType = ") + type);
        EXPECT_EQ(LuaGet(kBgpLs, expression).value, ReadUntil(Tables()[0], Tables()[0].fields.size())) << type;
    }
}

TEST_F(BgpLsLua, SingleBytesKeepTheLowEightBits)
{
    const struct {
        const char *number;
        const char *stored;
    } rows[] = {
        {"0", "00"},     {"255", "ff"},        {"256", "00"}, {"300", "2c"},
        {"65535", "ff"}, {"4294967295", "ff"}, {"-1", "ff"},  {"'300'", "2c"},
    };
    const auto at = [](const LuaIn &in, size_t offset) { return in.value.substr(2 * offset, 2); };
    const LuaTable &ipv4 = Tables()[2];
    const LuaTable &ipv6 = Tables()[3];
    const LuaTable &te = Tables()[4];
    const LuaTable &sid = Tables()[5];
    for (const auto &row : rows) {
        SCOPED_TRACE(row.number);
        const std::string number = row.number;
        const std::string array = "{1,2,3,4,5,6,7,8,9,10,11,12,13,14,15," + number + "}";
        EXPECT_EQ(
            at(LuaGet(kBgpLs, Expression(ipv4, "Prefix", "{stIpv4Prefix = 1, uiPrefixLen = " + number + "}")), 94),
            row.stored);
        EXPECT_EQ(at(LuaGet(kBgpLs,
                            Expression(ipv6, "Prefix", "{stIpv6Prefix = " + array + ", uiPrefixLen = " + number + "}")),
                     106),
                  row.stored);
        EXPECT_EQ(
            at(LuaGet(kBgpLs, Expression(ipv6, "Prefix", "{stIpv6Prefix = " + array + ", uiPrefixLen = 1}")), 105),
            row.stored);
        EXPECT_EQ(at(LuaGet(kBgpLs, Expression(te, "protocolOrigin", number)), 52), row.stored);
        EXPECT_EQ(at(LuaGet(kBgpLs, Expression(te, "flags", number)), 53), row.stored);
        EXPECT_EQ(at(LuaGet(kBgpLs, Expression(te, "ipv6TeRouterId", array)), 51), row.stored);
        const std::string address = "{ipv4Addr = 1, ipv6Addr = " + array + ", flag = " + number + "}";
        EXPECT_EQ(at(LuaGet(kBgpLs, Expression(te, "endpoint", address)), 73), row.stored);
        EXPECT_EQ(at(LuaGet(kBgpLs, Expression(te, "endpoint", address)), 74), row.stored);
        EXPECT_EQ(at(LuaGet(kBgpLs, Expression(te, "originatorAddr", address)), 107), row.stored);
        EXPECT_EQ(at(LuaGet(kBgpLs, Expression(sid, "srv6SidInfo", array)), 109), row.stored);
    }
}

TEST_F(BgpLsLua, NumbersKeepTheirLowWord)
{
    const struct {
        const char *number;
        const char *stored;
    } rows[] = {
        {"0", "00000000"},          {"65536", "00000100"}, {"4294967295", "ffffffff"},
        {"4294967296", "00000000"}, {"-1", "ffffffff"},    {"'65536'", "00000100"},
    };
    for (const LuaTable &table : Tables()) {
        for (const LuaField &field : table.fields) {
            if ((field.rule != kTested && field.rule != kStored) || field.bytes.size() != 8) {
                continue;
            }
            for (const auto &row : rows) {
                std::string record = ReadUntil(table, table.fields.size());
                Store(record, field.offset, row.stored);
                const LuaIn in = LuaGet(kBgpLs, Expression(table, field.key, row.number));
                EXPECT_EQ(in.code, DT_OK);
                EXPECT_EQ(in.value, record) << table.name << ' ' << field.key << ' ' << row.number;
            }
        }
    }
}

// All bytes of an IGP router id string go to the front of the area, 50 of them at most; the length number beside it is
// a number and nothing more.
TEST_F(BgpLsLua, IgpRouterIdStrings)
{
    const std::string fifty(50, 'x');
    std::string fiftyHex;
    for (int i = 0; i < 50; ++i) {
        fiftyHex += "78";
    }
    const struct {
        std::string expression;
        std::string stored;
    } rows[] = {
        {"''", ""},
        {"'a'", "61"},
        {"'\\0\\0\\0\\1'", "00000001"},
        {"'abcdefghijkl'", "6162636465666768696a6b6c"},
        {"'" + fifty + "'", fiftyHex},
        {"'" + fifty + "y'", fiftyHex},
        {"string.rep('x', 5000)", fiftyHex},
        {"12345", "3132333435"}, // to Lua a number is a string
        {"'\\xff\\xfe'", "fffe"},
    };
    for (const LuaTable &table : Tables()) {
        for (const LuaField &field : table.fields) {
            if (field.rule != kString) {
                continue;
            }
            for (const auto &row : rows) {
                std::string record = ReadUntil(table, table.fields.size());
                Store(record, field.offset, "eeeeeeeeeeeeeeee");
                Store(record, field.offset, row.stored);
                const LuaIn in = LuaGet(kBgpLs, Expression(table, field.key, row.expression));
                EXPECT_EQ(in.code, DT_OK);
                EXPECT_EQ(in.value, record) << table.name << ' ' << field.key << ' ' << row.expression;
                EXPECT_EQ(in.growth, 0);
            }
        }
        for (const char *key : {"uiLocIgpRtIdLen", "uiRmtIgpRtIdLen"}) {
            for (const char *length : {"0", "1", "4", "51", "4294967295", "-1", "'8'"}) {
                const LuaIn in = LuaGet(kBgpLs, Expression(table, key, length));
                EXPECT_EQ(in.code, DT_OK);
                EXPECT_EQ(in.value, ReadUntil(table, table.fields.size())) << table.name << ' ' << length;
            }
        }
    }
}

TEST_F(BgpLsLua, ThereAndBack)
{
    for (const Sample &sample : Samples()) {
        // The area's bytes behind the first eight, and those behind the layout, are not in the table.
        const LuaIn in = LuaGet(kBgpLs, LuaSet(kBgpLs, sample.host).table);
        EXPECT_EQ(in.code, DT_OK);
        EXPECT_EQ(in.growth, 0);
        ASSERT_EQ(in.value.size(), sample.host.size());
        for (size_t i = 0; i < in.value.size(); ++i) {
            EXPECT_TRUE(in.value[i] == sample.host[i] || (in.value[i] == 'e' && sample.host[i] == '0'))
                << sample.name << ", byte " << i / 2;
        }
        EXPECT_EQ(LuaSet(kBgpLs, in.value).table, sample.lua);
    }
}

TEST_F(BgpLsLua, ALongerBufferIsNotTouchedBehindTheValue)
{
    for (const LuaTable &table : Tables()) {
        EXPECT_EQ(LuaGet(Row(kBgpLs), Expression(table), 300).value,
                  ReadUntil(table, table.fields.size()) + std::string(2 * 72, 'e'));
    }
}

} // namespace
} // namespace bgp::test
