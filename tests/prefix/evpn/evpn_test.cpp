// EVPN route keys: text out, check, help, order and Lua. The texts that are read have a test of their own.
#include "support/harness.h"

#include "bgp_host_services.h"

#include <cstring>
#include <memory>

namespace bgp::test {
namespace {

class Evpn : public PlugIn {};

const std::string kNo6 = "00000000000000000000000000000000";
const std::string kSome6 = "20010db8000000000000000000000001";  // 2001:db8::1
const std::string kGroup6 = "ff0e0000000000000000000000000001"; // ff0e::1
const std::string kLong6 = "20010db8111122223333444455556666";
const std::string kEsi = "0123456789abcdef0011";

// A value from its route type on; the sub-type word is 1.
std::string Whole(const std::string &fromRouteType)
{
    return Padded("01000000" + fromRouteType, 89);
}

std::string Address4(const std::string &word)
{
    return word + kNo6 + "00";
}

std::string Address6(const std::string &bytes)
{
    return "00000000" + bytes + "01";
}

// The twelve shapes: eight route types, both families where they differ.
struct Shape {
    const char *text;
    std::string value;
};

const std::vector<Shape> &Shapes()
{
    static const std::vector<Shape> shapes = {
        {"0123.4567.89ab.cdef.0011:16909060", Whole("01" + kEsi + "04030201")},
        {"10:48:00e0-fc12-3456:32:10.2.3.4", Whole("02 0a000000 30 00e0fc123456 20 0403020a")},
        {"10:48:00e0-fc12-3456:128:[2001:db8::1]", Whole("02 0a000000 30 00e0fc123456 80" + Address6(kSome6))},
        {"10:32:10.2.3.4", Whole("03 0a000000 20 0403020a")},
        {"10:128:[2001:db8::1]", Whole("03 0a000000 80" + Address6(kSome6))},
        {"0123.4567.89ab.cdef.0011:32:10.2.3.4", Whole("04" + kEsi + "20 0403020a")},
        {"0123.4567.89ab.cdef.0011:128:[2001:db8::1]", Whole("04" + kEsi + "80" + Address6(kSome6))},
        {"10:10.2.3.0:24", Whole("05 0a000000 18 0003020a")},
        {"10:[2001:db8::]:64", Whole("05 0a000000 40" + Address6("20010db8000000000000000000000000"))},
        {"10:32:10.2.3.4:32:239.1.1.1:32:1.2.3.4",
         Whole("06 0a000000 20" + Address4("0403020a") + "20" + Address4("010101ef") + "20 04030201")},
        {"0123.4567.89ab.cdef.0011:10:32:10.2.3.4:32:239.1.1.1:32:1.2.3.4",
         Whole("07" + kEsi + "0a000000 20" + Address4("0403020a") + "20" + Address4("010101ef") + "20 04030201")},
        {"0123.4567.89ab.cdef.0011:10:32:10.2.3.4:32:239.1.1.1:32:1.2.3.4:7",
         Whole("08" + kEsi + "0a000000 20" + Address4("0403020a") + "20" + Address4("010101ef") + "20" +
               Address4("04030201") + "07000000")},
    };
    return shapes;
}

// ----------------------------------------------------------------------------------------------------------- text out

TEST_F(Evpn, PrintsEveryRouteType)
{
    for (const Shape &shape : Shapes()) {
        for (const uint8_t mode : {uint8_t{0}, uint8_t{1}, uint8_t{2}, uint8_t{3}, uint8_t{5}, uint8_t{6}}) {
            SCOPED_TRACE(shape.text + std::string(" in mode ") + std::to_string(mode));
            for (const char *type : {"EVNPREFIX", "BOLPREFIX"}) {
                const Out out = FormatOut(type, shape.value, mode);
                EXPECT_EQ(out.code, DT_OK);
                EXPECT_EQ(out.typeId, 25);
                EXPECT_EQ(out.length, std::strlen(shape.text) + 1);
                EXPECT_EQ(out.text, shape.text);
            }
            const Into into = FormatOutInto(Row("EVNPREFIX"), shape.value, mode, 257);
            EXPECT_EQ(into.out.text, shape.text);
            EXPECT_TRUE(into.guardsIntact);
            EXPECT_TRUE(into.sameBuffer);
            EXPECT_EQ(into.allocations, 0u);
        }
        char buffer[256];
        std::memset(buffer, '\xA5', sizeof buffer);
        uint32_t printed = 0;
        EXPECT_EQ(SYSDT_EvnPrefix2Str(Bytes(shape.value).data(), buffer, &printed), DT_OK);
        EXPECT_STREQ(buffer, shape.text);
        EXPECT_EQ(printed, std::strlen(shape.text));
    }
}

TEST_F(Evpn, TextToValueToTextToValue)
{
    for (const Shape &shape : Shapes()) {
        for (const char *type : {"EVNPREFIX", "BOLPREFIX"}) {
            EXPECT_EQ(Value(type, shape.text), shape.value);
            EXPECT_EQ(Value(type, Text(type, shape.value)), shape.value);
        }
    }
}

TEST_F(Evpn, PrintsOddValues)
{
    const struct {
        std::string value;
        const char *text;
    } rows[] = {
        {Whole("01"), "0000.0000.0000.0000.0000:0"},
        {Whole("02"), "0:0:0000-0000-0000:0:0.0.0.0"},
        {Whole("03"), "0:0:0.0.0.0"},
        {Whole("04"), "0000.0000.0000.0000.0000:0:0.0.0.0"},
        {Whole("05"), "0:0.0.0.0:0"},
        {Whole("06"), "0:0:0.0.0.0:0:0.0.0.0:0:0.0.0.0"},
        {Whole("07"), "0000.0000.0000.0000.0000:0:0:0.0.0.0:0:0.0.0.0:0:0.0.0.0"},
        {Whole("08"), "0000.0000.0000.0000.0000:0:0:0.0.0.0:0:0.0.0.0:0:0.0.0.0:0"},
        {Whole("01 ffffffffffffffffffff ffffffff"), "ffff.ffff.ffff.ffff.ffff:4294967295"},
        {Whole("02 ffffffff ff ffffffffffff ff ffffffff"), "4294967295:255:ffff-ffff-ffff:255:255.255.255.255"},
        {Whole("03 ffffffff ff ffffffff"), "4294967295:255:255.255.255.255"},
        {Whole("05 ffffffff ff ffffffff"), "4294967295:255.255.255.255:255"},
        {Whole("03 0a000000 80" + Address6(kNo6)), "10:128:[::]"},
        {Whole("03 0a000000 80" + Address6(kLong6)), "10:128:[2001:db8:1111:2222:3333:4444:5555:6666]"},
        {Whole("03 0a000000 80" + Address6("00000000000000000000ffff0a020304")), "10:128:[::ffff:10.2.3.4]"},
        // The member that the flag does not name is not looked at.
        {Whole("03 0a000000 20 0403020a" + kSome6 + "00"), "10:32:10.2.3.4"},
        {Whole("03 0a000000 80 0403020a" + kSome6 + "01"), "10:128:[2001:db8::1]"},
        // Another flag prints no address, and its length goes with it.
        {Whole("02 0a000000 30 00e0fc123456 20 0403020a" + kSome6 + "02"), "10:48:00e0-fc12-3456"},
        {Whole("03 0a000000 20 0403020a" + kSome6 + "02"), "10"},
        {Whole("04" + kEsi + "20 0403020a" + kSome6 + "ff"), "0123.4567.89ab.cdef.0011"},
        {Whole("05 0a000000 18 0403020a" + kSome6 + "02"), "10"},
        {Whole("06 0a000000 20 0403020a" + kNo6 + "02 20" + Address4("010101ef") + "20 04030201"),
         "10:32:239.1.1.1:32:1.2.3.4"},
        {Whole("06 0a000000 20" + Address4("0403020a") + "20 010101ef" + kNo6 + "03 20 04030201"),
         "10:32:10.2.3.4:32:1.2.3.4"},
        {Whole("06 0a000000 20" + Address4("0403020a") + "20" + Address4("010101ef") + "20 04030201" + kNo6 + "02"),
         "10:32:10.2.3.4:32:239.1.1.1"},
        {Whole("07" + kEsi + "0a000000 20 0403020a" + kNo6 + "02 20 010101ef" + kNo6 + "02 20 04030201" + kNo6 + "02"),
         "0123.4567.89ab.cdef.0011:10"},
        {Whole("08" + kEsi + "0a000000 20 0403020a" + kNo6 + "02 20 010101ef" + kNo6 + "02 20 04030201" + kNo6 +
               "02 07000000"),
         "0123.4567.89ab.cdef.0011:10:7"},
        // Families may be mixed.
        {Whole("06 0a000000 80" + Address6(kSome6) + "20" + Address4("010101ef") + "80" + Address6(kSome6)),
         "10:128:[2001:db8::1]:32:239.1.1.1:128:[2001:db8::1]"},
        {Whole("08 ffffffffffffffffffff ffffffff ff" + Address6(kLong6) + "ff" + Address6(kLong6) + "ff" +
               Address6(kLong6) + "ffffffff"),
         "ffff.ffff.ffff.ffff.ffff:4294967295:255:[2001:db8:1111:2222:3333:4444:5555:6666]"
         ":255:[2001:db8:1111:2222:3333:4444:5555:6666]:255:[2001:db8:1111:2222:3333:4444:5555:6666]:4294967295"},
        // The sub-type word does not matter here.
        {Padded("00000000 03 0a000000 20 0403020a", 89), "10:32:10.2.3.4"},
        {Padded("0f000000 03 0a000000 20 0403020a", 89), "10:32:10.2.3.4"},
        {Padded("ffffffff 03 0a000000 20 0403020a", 89), "10:32:10.2.3.4"},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.value);
        const Out out = FormatOut("EVNPREFIX", row.value);
        EXPECT_EQ(out.code, DT_OK);
        EXPECT_EQ(out.typeId, 25);
        EXPECT_EQ(out.text, row.text);
        EXPECT_EQ(out.length, std::strlen(row.text) + 1);
    }
}

TEST_F(Evpn, OtherRouteTypesDoNotPrint)
{
    for (unsigned routeType = 0; routeType < 256; ++routeType) {
        const bool known = routeType >= 1 && routeType <= 8;
        std::string value = Bytes(Whole("00"));
        value[4] = static_cast<char>(routeType);
        SCOPED_TRACE(routeType);
        const size_t blocks = host::HandleBlocks(Handle());
        const Out out = FormatOut("EVNPREFIX", Hex(value));
        EXPECT_EQ(out.code, known ? DT_OK : DT_ERR_FAIL);
        if (known) {
            continue;
        }
        EXPECT_EQ(out.typeId, 0);
        EXPECT_EQ(out.length, 0);
        EXPECT_FALSE(out.bufferSet);
        EXPECT_EQ(host::HandleBlocks(Handle()), blocks); // its own buffer is given back
        const Into into = FormatOutInto(Row("EVNPREFIX"), Hex(value), 1, 257);
        EXPECT_EQ(into.out.code, DT_ERR_FAIL);
        EXPECT_EQ(into.out.typeId, 0);
        EXPECT_EQ(into.out.length, 0);
        EXPECT_TRUE(into.sameBuffer);
        EXPECT_TRUE(into.guardsIntact);
        EXPECT_FALSE(into.released);
        char buffer[256] = {};
        uint32_t printed = 0;
        EXPECT_EQ(SYSDT_EvnPrefix2Str(value.data(), buffer, &printed), DT_ERR_FAIL);
    }
}

TEST_F(Evpn, ShortValuesAreFilledWithZeros)
{
    const std::string value = Whole("03 0a000000 20 0403020a");
    const auto cut = [&](uint32_t length) { return FormatOut("EVNPREFIX", value.substr(0, 2 * length)); };
    for (uint32_t length = 0; length <= 4; ++length) {
        EXPECT_EQ(cut(length).code, DT_ERR_FAIL) << length;
    }
    EXPECT_EQ(cut(5).text, "0:0:0.0.0.0");
    EXPECT_EQ(cut(6).text, "10:0:0.0.0.0");
    EXPECT_EQ(cut(10).text, "10:32:0.0.0.0");
    EXPECT_EQ(cut(12).text, "10:32:0.0.3.4");
    EXPECT_EQ(cut(88).text, "10:32:10.2.3.4");
    EXPECT_EQ(FormatOut("EVNPREFIX", value + "ffffffff").text, "10:32:10.2.3.4");
    EXPECT_EQ(FormatOut(Row("EVNPREFIX"), value, 1, 9).text, "10:0:0.0.0.0");
}

TEST_F(Evpn, EveryFailingPrintIsAFailure)
{
    for (const Shape &shape : Shapes()) {
        SCOPED_TRACE(shape.text);
        host::SetFaults({});
        FormatOut("EVNPREFIX", shape.value);
        const uint32_t prints = host::TakeCounters().prints;
        EXPECT_GE(prints, 1u);
        for (uint32_t print = 1; print <= prints; ++print) {
            const size_t blocks = host::HandleBlocks(Handle());
            host::SetFaults({.failPrint = print});
            const Out out = FormatOut("EVNPREFIX", shape.value);
            EXPECT_EQ(out.code, DT_ERR_FAIL) << print;
            EXPECT_EQ(out.typeId, 0);
            EXPECT_EQ(out.length, 0);
            EXPECT_FALSE(out.bufferSet);
            EXPECT_EQ(host::HandleBlocks(Handle()), blocks);
            host::SetFaults({.failPrint = print});
            const Into into = FormatOutInto(Row("EVNPREFIX"), shape.value, 1, 257);
            EXPECT_EQ(into.out.code, DT_ERR_FAIL) << print;
            EXPECT_TRUE(into.sameBuffer);
            EXPECT_TRUE(into.guardsIntact);
            EXPECT_FALSE(into.released);
            host::SetFaults({.failPrint = print});
            char buffer[256] = {};
            uint32_t printed = 0;
            EXPECT_EQ(SYSDT_EvnPrefix2Str(Bytes(shape.value).data(), buffer, &printed), DT_ERR_FAIL) << print;
        }
        host::SetFaults({.failPrint = prints + 1});
        EXPECT_EQ(FormatOut("EVNPREFIX", shape.value).code, DT_OK);
        host::SetFaults({});
    }
}

// ----------------------------------------------------------------------------------------------- contract, check, help

TEST_F(Evpn, ObeysTheContract)
{
    const Contract contract{
        .text = "10:1.1.1.0:24",
        .value = Whole("05 0a000000 18 00010101"),
        .inModes = "PPPPUPPU",
        .outModes = "TTTTUTTU",
        .helpModes = "-H----H-",
        .helpText = "xxxx.xxxx.xxxx.xxxx.xxxx:X or X:M:X-X-X:M:X.X.X.X or X:M:X.X.X.X or xxxx.xxxx.xxxx.xxxx.xxxx",
        .resultTypeId = 279,
        .resultLength = 89,
        .textSize = 257,
        .clearsFirst = true};
    Sweep(Row("EVNPREFIX"), contract);
    Sweep(Row(g_astBOL_PREFIX_ProcTable[1]), contract);
}

TEST_F(Evpn, TheTypeAndTheSubTypeAreOne)
{
    const DataTypeDescriptor &type = Row("EVNPREFIX");
    const BolPrefixSubtypeEntry &subType = g_astBOL_PREFIX_ProcTable[1];
    EXPECT_EQ(type.TypeId, 0x119);
    EXPECT_EQ(type.BinaryLength, 85);
    EXPECT_EQ(type.BaseKind, 26);
    EXPECT_EQ(type.FormatIn, subType.FormatIn);
    EXPECT_EQ(type.FormatOut, subType.FormatOut);
    EXPECT_EQ(type.Check, subType.Check);
    EXPECT_EQ(type.Help, subType.Help);
    EXPECT_EQ(type.Compare, subType.Compare);
    EXPECT_EQ(type.LuaSet, subType.LuaSet);
    EXPECT_EQ(type.LuaGet, subType.LuaGet);
    EXPECT_EQ(type.Endian, nullptr);
    EXPECT_EQ(type.Reserved, nullptr);
}

TEST_F(Evpn, CheckLooksAtTheLengthAlone)
{
    for (uint32_t length = 0; length <= 300; ++length) {
        EXPECT_EQ(CheckLength("EVNPREFIX", length), length == 89 ? DT_OK : DT_ERR_LENGTH) << length;
    }
    EXPECT_EQ(Check("EVNPREFIX", Hex(std::string(89, '\xFF'))), DT_OK);
    const DataTypeDescriptor &row = Row("EVNPREFIX");
    EXPECT_EQ(row.Check(nullptr, 0, 89, nullptr), DT_OK);
    EXPECT_EQ(row.Check(nullptr, 0, 88, nullptr), DT_ERR_LENGTH);
    EXPECT_EQ(row.Check(nullptr, 0, 0xFFFFFFFF, nullptr), DT_ERR_LENGTH);
}

TEST_F(Evpn, HelpPassesTheSecondWordAndSwallowsTheHostsCode)
{
    const Helped helped = Help("EVNPREFIX", 1, 11, 22);
    EXPECT_EQ(helped.helpWord, 22u);
    EXPECT_EQ(helped.helpClears, 0u);
    host::SetFaults({.helpInitCode = 0x1234});
    const Helped failed = Help("EVNPREFIX");
    EXPECT_EQ(failed.code, DT_OK);
    EXPECT_FALSE(failed.supplied);
    EXPECT_EQ(failed.helpInits, 1u);
    EXPECT_EQ(failed.helpClears, 0u);
    host::SetFaults({});
    const Helped quiet = Help("EVNPREFIX", 2, 0, 0);
    EXPECT_EQ(quiet.code, DT_OK);
    EXPECT_FALSE(quiet.supplied);
    EXPECT_EQ(quiet.helpInits, 0u);
    // The typed text is not looked at, not even whether there is one.
    EXPECT_TRUE(Help(Row("EVNPREFIX"), 1, 11, 22, nullptr).supplied);
    EXPECT_TRUE(Help(Row("EVNPREFIX"), 6, 11, 22, "no route at all").supplied);
}

// -------------------------------------------------------------------------------------------------------------- order

struct Order {
    std::string left, right;
    int32_t order; // of left and right; the reverse pair gives its negative
};

void ExpectOrders(const std::vector<Order> &rows)
{
    for (const Order &row : rows) {
        SCOPED_TRACE(row.left + " and " + row.right);
        EXPECT_EQ(Compare("EVNPREFIX", Whole(row.left), Whole(row.right)), row.order);
        EXPECT_EQ(Compare("EVNPREFIX", Whole(row.right), Whole(row.left)), -row.order);
        EXPECT_EQ(Compare("EVNPREFIX", Whole(row.left), Whole(row.left)), 0);
        EXPECT_EQ(Compare("EVNPREFIX", Whole(row.right), Whole(row.right)), 0);
    }
}

TEST_F(Evpn, OrdersAutoDiscoveryByItsTag)
{
    ExpectOrders({
        {"01" + kEsi + "02000000", "01" + kEsi + "01000000", 1},
        {"01" + kEsi + "00010000", "01" + kEsi + "ff000000", 1}, // numbers, not bytes
        {"01" + kEsi + "ffffffff", "01" + kEsi + "00000000", 1},
        {"01 00000000000000000000 02000000", "01 ffffffffffffffffffff 01000000", 1},
        {"01 ffffffffffffffffffff 01000000", "01 00000000000000000000 01000000", 0}, // the ESI does not count
        {"01" + kEsi + "01000000 ff", "01" + kEsi + "01000000 00", 0},
    });
}

TEST_F(Evpn, OrdersMacRoutesWithoutTheirAddress)
{
    ExpectOrders({
        {"02 02000000", "02 01000000", 1},
        {"02 00010000", "02 ff000000", 1},
        {"02 01000000 00", "02 00000000 ff", 1},
        {"02 01000000 31", "02 01000000 30", 1},
        {"02 01000000 ff", "02 01000000 00", 1},
        {"02 01000000 31 000000000000", "02 01000000 30 ffffffffffff", 1},
        {"02 01000000 30 000000000002", "02 01000000 30 000000000001", 1},
        {"02 01000000 30 010000000000", "02 01000000 30 00ffffffffff", 1},
        {"02 01000000 30 0000ff000000", "02 01000000 30 000000ffffff", 1},
        {"02 01000000 30 ff0000000000", "02 01000000 30 7f0000000000", 1},
        {"02 01000000 30 000000000001 00", "02 01000000 30 000000000000 ff", 1},
        {"02 01000000 30 000000000001 21", "02 01000000 30 000000000001 20", 1},
        {"02 01000000 30 000000000001 ff", "02 01000000 30 000000000001 00", 1},
        {"02 01000000 30 000000000001 20 01010101", "02 01000000 30 000000000001 20 02020202", 0},
        {"02 01000000 30 000000000001 80" + Address6(kSome6), "02 01000000 30 000000000001 80" + Address6(kLong6), 0},
    });
}

TEST_F(Evpn, OrdersInclusiveAndPrefixRoutesWithoutTheirAddress)
{
    for (const std::string routeType : {"03", "05"}) {
        ExpectOrders({
            {routeType + "02000000", routeType + "01000000", 1},
            {routeType + "00010000", routeType + "ff000000", 1},
            {routeType + "02000000 00", routeType + "01000000 ff", 1},
            {routeType + "01000000 20", routeType + "01000000 18", 1},
            {routeType + "01000000 ff", routeType + "01000000 00", 1},
            {routeType + "0a000000 18 00010101", routeType + "0a000000 18 00020202", 0},
            {routeType + "0a000000 18 00010101", routeType + "0a000000 18" + Address6(kSome6), 0},
        });
    }
}

TEST_F(Evpn, SegmentsAreAllEqual)
{
    ExpectOrders({
        {"04" + kEsi + "20 0403020a", "04" + kEsi + "20 0403020a", 0},
        {"04 00000000000000000000 00", "04 ffffffffffffffffffff ff ffffffff", 0},
        {"00", "00 ffffffffffffffff", 0},
        {"09 01", "09 02", 0},
        {"ff 01", "ff 02", 0},
    });
}

TEST_F(Evpn, OrdersSelectiveMulticastByAllItsFields)
{
    const std::string one = Address4("01000000");
    const std::string two = Address4("02000000");
    const auto smet = [](const std::string &tag, const std::string &sourceLength, const std::string &source,
                         const std::string &groupLength, const std::string &group, const std::string &originLength,
                         const std::string &origin) {
        return "06" + tag + sourceLength + source + groupLength + group + originLength + origin;
    };
    const std::string tag = "0a000000";
    const std::string base = smet(tag, "20", one, "20", one, "20", one);
    ExpectOrders({
        {smet("0b000000", "20", one, "20", one, "20", one), base, 1},
        {smet("00010000", "20", one, "20", one, "20", one), smet("ff000000", "20", one, "20", one, "20", one), 1},
        {smet("0b000000", "00", one, "20", one, "20", one), smet(tag, "ff", two, "20", two, "20", two), 1},
        {smet(tag, "21", one, "20", one, "20", one), base, 1},
        {smet(tag, "21", one, "20", one, "20", one), smet(tag, "20", two, "20", two, "20", two), 1},
        {smet(tag, "20", two, "20", one, "20", one), base, 1},
        {smet(tag, "20", two, "20", one, "20", one), smet(tag, "20", one, "21", two, "20", two), 1},
        {smet(tag, "20", one, "21", one, "20", one), base, 1},
        {smet(tag, "20", one, "21", one, "20", one), smet(tag, "20", one, "20", two, "20", two), 1},
        {smet(tag, "20", one, "20", two, "20", one), base, 1},
        {smet(tag, "20", one, "20", two, "20", one), smet(tag, "20", one, "20", one, "21", two), 1},
        {smet(tag, "20", one, "20", one, "21", one), base, 1},
        {smet(tag, "20", one, "20", one, "21", one), smet(tag, "20", one, "20", one, "20", two), 1},
        {smet(tag, "20", one, "20", one, "20", two), base, 1},
        // Addresses: IPv4 before IPv6, IPv4 as a number, IPv6 byte by byte, and only what the flag names.
        {smet(tag, "20", Address6(kNo6), "20", one, "20", one), base, 1},
        {smet(tag, "20", Address4("00010000"), "20", one, "20", one),
         smet(tag, "20", Address4("ff000000"), "20", one, "20", one), 1},
        {smet(tag, "20", one, "20", one, "20", Address6("01" + kNo6.substr(2))),
         smet(tag, "20", one, "20", one, "20", Address6("00ff" + kNo6.substr(4))), 1},
        {smet(tag, "20", one, "20", "01000000" + kLong6 + "00", "20", one), base, 0},
        {smet(tag, "20", one, "20", "ff000000" + kSome6 + "01", "20", one),
         smet(tag, "20", one, "20", "00000000" + kSome6 + "01", "20", one), 0},
        {base, base + "ffffffff", 0}, // nothing behind the originator counts
    });
}

TEST_F(Evpn, OrdersJoinsAndLeavesByAllTheirFields)
{
    const std::string one = Address4("01000000");
    const std::string two = Address4("02000000");
    for (const std::string routeType : {"07", "08"}) {
        const auto route = [&](const std::string &esi, const std::string &tag, const std::string &sourceLength,
                               const std::string &source, const std::string &groupLength, const std::string &group,
                               const std::string &originLength, const std::string &origin) {
            return routeType + esi + tag + sourceLength + source + groupLength + group + originLength + origin;
        };
        const std::string esi = "01000000000000000001";
        const std::string tag = "0a000000";
        const std::string base = route(esi, tag, "20", one, "20", one, "20", one);
        ExpectOrders({
            {route("01000000000000000002", tag, "20", one, "20", one, "20", one), base, 1},
            {route("02000000000000000000", tag, "20", one, "20", one, "20", one), base, 1},
            {route("ff000000000000000000", tag, "20", one, "20", one, "20", one), base, 1},
            {route("02000000000000000000", "00000000", "00", one, "00", one, "00", one),
             route(esi, "ffffffff", "ff", two, "ff", two, "ff", two), 1},
            {route(esi, "0b000000", "20", one, "20", one, "20", one), base, 1},
            {route(esi, "00010000", "20", one, "20", one, "20", one),
             route(esi, "ff000000", "ff", two, "ff", two, "ff", two), 1},
            {route(esi, tag, "21", one, "20", one, "20", one), route(esi, tag, "20", two, "ff", two, "ff", two), 1},
            {route(esi, tag, "20", two, "20", one, "20", one), route(esi, tag, "20", one, "ff", two, "ff", two), 1},
            {route(esi, tag, "20", one, "21", one, "20", one), route(esi, tag, "20", one, "20", two, "ff", two), 1},
            {route(esi, tag, "20", one, "20", two, "20", one), route(esi, tag, "20", one, "20", one, "ff", two), 1},
            {route(esi, tag, "20", one, "20", one, "21", one), route(esi, tag, "20", one, "20", one, "20", two), 1},
            {route(esi, tag, "20", one, "20", one, "20", two), base, 1},
            {route(esi, tag, "20", Address6(kNo6), "20", one, "20", one),
             route(esi, tag, "20", Address4("ffffffff"), "20", one, "20", one), 1},
            {base + "01000000", base + "00000000", routeType == "08" ? 1 : 0},
            {base + "00010000", base + "ff000000", routeType == "08" ? 1 : 0},
            {base + "ffffffff", base + "00000000", routeType == "08" ? 1 : 0},
            {route(esi, tag, "20", one, "20", one, "20", two) + "00000000", base + "ffffffff", 1},
        });
    }
}

TEST_F(Evpn, TheMulticastOrdersStandAlone)
{
    const std::string one = Address4("01000000");
    const std::string two = Address4("02000000");
    const std::string smet1 = Bytes("06 0a000000 20" + one + "20" + one + "20" + one);
    const std::string smet2 = Bytes("06 0a000000 20" + one + "20" + one + "20" + two);
    EXPECT_EQ(SYSDT_EVPN_SmetCompare(smet1.data(), smet2.data()), -1);
    EXPECT_EQ(SYSDT_EVPN_SmetCompare(smet2.data(), smet1.data()), 1);
    EXPECT_EQ(SYSDT_EVPN_SmetCompare(smet1.data(), smet1.data()), 0);
    const std::string join1 = Bytes("07" + kEsi + "0a000000 20" + one + "20" + one + "20" + one);
    const std::string join2 = Bytes("07" + kEsi + "0a000000 20" + one + "20" + two + "20" + one);
    EXPECT_EQ(SYSDT_EVPN_JoinCompare(join1.data(), join2.data()), -1);
    EXPECT_EQ(SYSDT_EVPN_JoinCompare(join2.data(), join1.data()), 1);
    EXPECT_EQ(SYSDT_EVPN_JoinCompare(join1.data(), join1.data()), 0);
    const std::string leave1 = Bytes("08" + kEsi + "0a000000 20" + one + "20" + one + "20" + one + "07000000");
    const std::string leave2 = Bytes("08" + kEsi + "0a000000 20" + one + "20" + one + "20" + one + "08000000");
    EXPECT_EQ(SYSDT_EVPN_LeaveCompare(leave1.data(), leave2.data()), -1);
    EXPECT_EQ(SYSDT_EVPN_LeaveCompare(leave2.data(), leave1.data()), 1);
    EXPECT_EQ(SYSDT_EVPN_LeaveCompare(leave1.data(), leave1.data()), 0);
}

TEST_F(Evpn, ValuesOfDifferentKindHaveNoOrder)
{
    const auto fail = static_cast<int32_t>(DT_ERR_FAIL);
    for (unsigned left = 0; left < 10; ++left) {
        for (unsigned right = 0; right < 10; ++right) {
            const int32_t order =
                Compare("EVNPREFIX", Whole("0" + std::to_string(left)), Whole("0" + std::to_string(right)));
            EXPECT_EQ(order, left == right ? 0 : fail) << left << " and " << right;
        }
    }
    const std::string route = Whole("03 0a000000");
    for (const std::string word : {"00000000", "02000000", "0f000000", "01010000", "01000001"}) {
        const std::string other = word + route.substr(8);
        EXPECT_EQ(Compare("EVNPREFIX", route, other), fail) << word;
        EXPECT_EQ(Compare("EVNPREFIX", other, route), fail) << word;
        EXPECT_EQ(Compare("EVNPREFIX", other, other), fail) << word;
    }
}

TEST_F(Evpn, TheLengthSaysHowMuchIsCompared)
{
    const DataTypeDescriptor &row = Row("EVNPREFIX");
    const std::string left = Bytes(Whole("03 0a000000 20"));
    const std::string right = Bytes(Whole("03 0b000000 20"));
    const auto compare = [&](uint32_t length) { return row.Compare(nullptr, length, left.data(), right.data()); };
    const auto fail = static_cast<int32_t>(DT_ERR_FAIL);
    EXPECT_EQ(compare(0), fail); // no sub-type word
    EXPECT_EQ(compare(1), 0);
    EXPECT_EQ(compare(5), 0);
    EXPECT_EQ(compare(6), -1);
    EXPECT_EQ(compare(89), -1);
    EXPECT_EQ(compare(1000), -1);
}

// ---------------------------------------------------------------------------------------------------------------- Lua

TEST_F(Evpn, ToLua)
{
    for (const Shape &shape : Shapes()) {
        const std::string routeType = shape.value.substr(9, 1);
        const LuaOut out = LuaSet("EVNPREFIX", shape.value);
        EXPECT_EQ(out.code, DT_OK);
        EXPECT_EQ(out.table, "{bolPrefixRtType=" + routeType + ", bolPrefixRtValue=\"" + shape.text + "\", bolType=1}");
        EXPECT_EQ(out.growth, 0);
    }
    EXPECT_EQ(LuaSet("EVNPREFIX", Whole("09 0a000000")).table, "{bolPrefixRtType=9, bolPrefixRtValue=\"\", bolType=1}");
    EXPECT_EQ(LuaSet("EVNPREFIX", Whole("ff")).table, "{bolPrefixRtType=255, bolPrefixRtValue=\"\", bolType=1}");
    EXPECT_EQ(LuaSet("EVNPREFIX", Padded("ffffffff 03", 89)).table,
              "{bolPrefixRtType=3, bolPrefixRtValue=\"0:0:0.0.0.0\", bolType=4294967295}");
    EXPECT_EQ(LuaSet("EVNPREFIX", Whole("03 0a000000 20 0403020a" + kNo6 + "02")).table,
              "{bolPrefixRtType=3, bolPrefixRtValue=\"10\", bolType=1}");
}

TEST_F(Evpn, ToLuaDoesWithoutAText)
{
    host::SetFaults({.failPrint = 1});
    const LuaOut out = LuaSet("EVNPREFIX", Whole("03 0a000000 20 0403020a"));
    EXPECT_EQ(out.code, DT_OK);
    EXPECT_EQ(out.table, "{bolPrefixRtType=3, bolPrefixRtValue=\"\", bolType=1}");
    // The tag of a type 3 route is a piece of its own.
    host::SetFaults({.failPrint = 2});
    EXPECT_EQ(LuaSet("EVNPREFIX", Whole("03 0a000000 20 0403020a")).table,
              "{bolPrefixRtType=3, bolPrefixRtValue=\"10\", bolType=1}");
}

TEST_F(Evpn, LuaLengthsBelowAValueAreRefused)
{
    for (const uint16_t length : {uint16_t{0}, uint16_t{4}, uint16_t{85}, uint16_t{88}}) {
        const LuaOut out = LuaSet(Row("EVNPREFIX"), Whole("03"), length);
        EXPECT_EQ(out.code, DT_ERR_INVALID_PARAM) << length;
        EXPECT_EQ(out.table, "nil");
        EXPECT_EQ(out.growth, 0);
        const LuaIn in =
            LuaGet(Row("EVNPREFIX"), "{bolType=1, bolPrefixRtType=3, bolPrefixRtValue='10:32:1.1.1.1'}", length);
        EXPECT_EQ(in.code, DT_ERR_INVALID_PARAM) << length;
        EXPECT_EQ(in.growth, 0);
        EXPECT_EQ(in.value, Hex(std::string(length, '\xEE')));
    }
    EXPECT_EQ(LuaSet(Row("EVNPREFIX"), Whole("03"), 90).code, DT_OK);
    EXPECT_EQ(LuaGet(Row("EVNPREFIX"), "{bolType=1, bolPrefixRtType=3, bolPrefixRtValue='10:32:1.1.1.1'}", 90).code,
              DT_OK);
}

// 89 bytes that nothing was written to, but for these from `at` on.
struct Patch {
    size_t at;
    std::string bytes;
};

std::string Patched(const std::vector<Patch> &patches)
{
    std::string value(89, '\xEE');
    for (const Patch &patch : patches) {
        const std::string bytes = Bytes(patch.bytes);
        value.replace(patch.at, bytes.size(), bytes);
    }
    return Hex(value);
}

TEST_F(Evpn, FromLua)
{
    const struct {
        const char *table;
        uint32_t code;
        std::vector<Patch> value;
        int32_t growth;
    } rows[] = {
        // Success leaves the fetched table on the stack.
        {"{bolType=1, bolPrefixRtType=5, bolPrefixRtValue='10:1.1.1.0:24'}",
         DT_OK,
         {{0, "01000000 05 0a000000 18 00010101"}, {30, "00"}},
         1},
        {"{bolType=1, bolPrefixRtType=5, bolPrefixRtValue=' 10:[2001:db8::1]:64\\t'}",
         DT_OK,
         {{0, "01000000 05 0a000000 40"}, {14, kSome6 + "01"}},
         1},
        {"{bolType=1, bolPrefixRtType=1, bolPrefixRtValue='0500.0000.0000.0000.0001:7'}",
         DT_OK,
         {{0, "01000000 01 05000000000000000001 07000000"}},
         1},
        {"{bolType='1', bolPrefixRtType='5', bolPrefixRtValue='10:1.1.1.0:24'}",
         DT_OK,
         {{0, "01000000 05 0a000000 18 00010101"}, {30, "00"}},
         1},
        // The number has the last word about the route type, and one byte of it.
        {"{bolType=1, bolPrefixRtType=3, bolPrefixRtValue='10:1.1.1.0:24'}",
         DT_OK,
         {{0, "01000000 03 0a000000 18 00010101"}, {30, "00"}},
         1},
        {"{bolType=1, bolPrefixRtType=0x1FF, bolPrefixRtValue='10:1.1.1.0:24'}",
         DT_OK,
         {{0, "01000000 ff 0a000000 18 00010101"}, {30, "00"}},
         1},
        // Refused texts are ignored, with whatever was read.
        {"{bolType=1, bolPrefixRtType=5, bolPrefixRtValue='no route'}", DT_OK, {{0, "01000000 05"}}, 1},
        {"{bolType=1, bolPrefixRtType=5, bolPrefixRtValue=''}", DT_OK, {{0, "01000000 05"}}, 1},
        {"{bolType=1, bolPrefixRtType=5}", DT_OK, {{0, "01000000 05"}}, 1},
        {"{bolType=1, bolPrefixRtType=5, bolPrefixRtValue={}}", DT_OK, {{0, "01000000 05"}}, 1},
        {"{bolType=1, bolPrefixRtType=5, bolPrefixRtValue=7}", DT_OK, {{0, "01000000 05"}}, 1},
        // Here the ESI type is checked: 00 and 01 for segments, up to 05 for auto-discovery.
        {"{bolType=1, bolPrefixRtType=4, bolPrefixRtValue='ff00.0000.0000.0000.0001'}", DT_OK, {{0, "01000000 04"}}, 1},
        {"{bolType=1, bolPrefixRtType=4, bolPrefixRtValue='0200.0000.0000.0000.0001'}", DT_OK, {{0, "01000000 04"}}, 1},
        {"{bolPrefixRtType=5, bolPrefixRtValue='10:1.1.1.0:24'}",
         DT_ERR_INVALID_PARAM,
         {{4, "05 0a000000 18 00010101"}, {30, "00"}},
         3},
        {"{bolType='one', bolPrefixRtType=5, bolPrefixRtValue='10:1.1.1.0:24'}",
         DT_ERR_INVALID_PARAM,
         {{4, "05 0a000000 18 00010101"}, {30, "00"}},
         3},
        {"{bolType=2, bolPrefixRtType=5, bolPrefixRtValue='10:1.1.1.0:24'}",
         DT_ERR_FAIL,
         {{0, "02000000 05 0a000000 18 00010101"}, {30, "00"}},
         3},
        {"{bolType=0, bolPrefixRtType=5, bolPrefixRtValue='x'}", DT_ERR_FAIL, {{0, "00000000"}}, 3},
        {"{bolType=257, bolPrefixRtType=5, bolPrefixRtValue='x'}", DT_ERR_FAIL, {{0, "01010000"}}, 3},
        {"{bolType=1, bolPrefixRtValue='10:1.1.1.0:24'}",
         DT_ERR_INVALID_PARAM,
         {{0, "01000000 05 0a000000 18 00010101"}, {30, "00"}},
         4},
        {"{bolType=1, bolPrefixRtType={}, bolPrefixRtValue='x'}", DT_ERR_INVALID_PARAM, {{0, "01000000"}}, 4},
        {"{bolType=1, bolPrefixRtType='x', bolPrefixRtValue='x'}", DT_ERR_INVALID_PARAM, {{0, "01000000"}}, 4},
        {"7", DT_ERR_INVALID_PARAM, {}, 1},
        {"'text'", DT_ERR_INVALID_PARAM, {}, 1},
        {"nil", DT_ERR_INVALID_PARAM, {}, 1},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.table);
        const LuaIn in = LuaGet(Row("EVNPREFIX"), row.table, 89);
        EXPECT_EQ(in.code, row.code);
        EXPECT_EQ(in.value, Patched(row.value));
        EXPECT_EQ(in.growth, row.growth);
    }
}

TEST_F(Evpn, LuaTextsHave183CharactersAtMost)
{
    const std::string digits = "0123.4567.89ab.cdef.0011:";
    const auto get = [&](size_t length) {
        const std::string text = digits + std::string(length - digits.size() - 1, '0') + "7";
        return LuaGet(Row("EVNPREFIX"), "{bolType=1, bolPrefixRtType=1, bolPrefixRtValue='" + text + "'}", 89);
    };
    const LuaIn longest = get(183);
    EXPECT_EQ(longest.code, DT_OK);
    EXPECT_EQ(longest.value, Patched({{0, "01000000 01" + kEsi + "07000000"}}));
    for (const size_t length : {size_t{184}, size_t{185}, size_t{5000}}) {
        const LuaIn tooLong = get(length);
        EXPECT_EQ(tooLong.code, DT_ERR_TOO_LONG) << length;
        EXPECT_EQ(tooLong.value, Patched({}));
        EXPECT_EQ(tooLong.growth, 2);
    }
    // Blanks count here.
    const std::string blanks(171, ' ');
    EXPECT_EQ(
        LuaGet(Row("EVNPREFIX"), "{bolType=1, bolPrefixRtType=3, bolPrefixRtValue='" + blanks + "10:32:1.1.1.1'}", 89)
            .code,
        DT_ERR_TOO_LONG);
    EXPECT_EQ(LuaGet(Row("EVNPREFIX"),
                     "{bolType=1, bolPrefixRtType=3, bolPrefixRtValue='" + blanks.substr(1) + "10:32:1.1.1.1'}", 89)
                  .value,
              Patched({{0, "01000000 03 0a000000 20 01010101"}, {30, "00"}}));
}

TEST_F(Evpn, FromLuaAtIndexMinusOneReadsTheSlotBelowTheTop)
{
    const std::unique_ptr<lua_State, void (*)(lua_State *)> lua(host::NewLua(), host::CloseLua);
    lua_State *L = lua.get();
    const DataTypeDescriptor &row = Row("EVNPREFIX");
    SYSDT_SPTI_CreateTable(L, 0, 3); // the route, no field of anything
    SYSDT_SPTI_PushUInt(L, 1);
    SYSDT_SPTI_SetField(L, -2, "bolType");
    SYSDT_SPTI_PushUInt(L, 3);
    SYSDT_SPTI_SetField(L, -2, "bolPrefixRtType");
    SYSDT_SPTI_PushString(L, "10:32:10.2.3.4");
    SYSDT_SPTI_SetField(L, -2, "bolPrefixRtValue");
    SYSDT_SPTI_PushString(L, "anything");
    const int32_t top = SYSDT_SPTI_GetTop(L);
    uint8_t value[89];
    std::memset(value, 0xEE, sizeof value);
    EXPECT_EQ(row.LuaGet(L, -1, "v", row.TypeId, sizeof value, value), DT_OK);
    EXPECT_EQ(SYSDT_SPTI_GetTop(L), top); // nothing was fetched: three pushed, three popped
    EXPECT_EQ(Hex(value, sizeof value), Patched({{0, "01000000 03 0a000000 20 0403020a"}, {30, "00"}}));

    SYSDT_SPTI_PushUInt(L, 7); // the slot below the top is now the string
    EXPECT_EQ(row.LuaGet(L, -1, "v", row.TypeId, sizeof value, value), DT_ERR_INVALID_PARAM);
    EXPECT_EQ(SYSDT_SPTI_GetTop(L), top + 1);
}

TEST_F(Evpn, LuaAndBack)
{
    for (const Shape &shape : Shapes()) {
        SCOPED_TRACE(shape.text);
        const LuaOut out = LuaSet("EVNPREFIX", shape.value);
        std::string expression = out.table;
        const LuaIn in = LuaGet(Row("EVNPREFIX"), expression, 89);
        EXPECT_EQ(in.code, DT_OK);
        // What the route has no field for stays as it was.
        std::string value = Bytes(in.value);
        const std::string expected = Bytes(shape.value);
        for (size_t i = 0; i < value.size(); ++i) {
            EXPECT_TRUE(value[i] == expected[i] || (expected[i] == 0 && value[i] == '\xEE')) << i;
        }
    }
}

} // namespace
} // namespace bgp::test
