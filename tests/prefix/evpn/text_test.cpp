// EVPN route keys, text to value. Value: sub-type word (01 00 00 00), route type, then the route's fields in host
// order. RFC 7432 (types 1-4), RFC 9136 (type 5), RFC 9251 (types 6-8).
#include "support/expect.h"
#include "support/refusals.h"

#include <cstring>
#include <utility>

namespace bgp::test {
namespace {

class EvpnText : public PlugIn {};

const std::string kNo6 = "00000000000000000000000000000000";    // the IPv6 half of a field that holds an IPv4 address
const std::string kSome6 = "20010db8000000000000000000000001";  // 2001:db8::1
const std::string kGroup6 = "ff0e0000000000000000000000000001"; // ff0e::1
const std::string kEsi = "0123.4567.89ab.cdef.0011";
const std::string kEsiHex = "0123456789abcdef0011";

std::string Whole(const std::string &fromRouteType)
{
    return Padded("01000000" + fromRouteType, 89);
}

// Through both types and back again; values are hex from the route type on.
void ExpectTaken(const std::vector<TextCase> &rows)
{
    for (const TextCase &row : rows) {
        for (const char *type : {"EVNPREFIX", "BOLPREFIX"}) {
            SCOPED_TRACE(std::string(type) + " \"" + row.text + '"');
            const In in = FormatIn(type, row.text);
            EXPECT_EQ(in.code, DT_OK);
            EXPECT_EQ(in.typeId, 279);
            EXPECT_EQ(in.length, 89);
            EXPECT_EQ(in.value, Whole(row.value));
            EXPECT_TRUE(in.textKept);
            EXPECT_EQ(FormatOut(type, Whole(row.value)).text, PrintedText(row));
        }
    }
}

void ExpectRefused(const std::vector<std::string> &texts)
{
    for (const std::string &text : texts) {
        test::ExpectRefused(Row("EVNPREFIX"), text, 1, DT_ERR_INVALID_PARAM);
        uint8_t value[89] = {};
        EXPECT_EQ(SYSDT_Str2EvnPrefix(text.c_str(), value, 1), DT_ERR_FAIL) << text;
        EXPECT_EQ(value[0], 0); // the sub-type word is never the parser's
    }
}

// ----------------------------------------------------------------------------------------------- one route type each

TEST_F(EvpnText, Type1EthernetAutoDiscovery)
{
    ExpectTaken({
        {"0000.0000.0000.0000.0000:7", "01 00000000000000000000 07000000"},
        {kEsi + ":0", "01" + kEsiHex + "00000000"},
        {kEsi + ":4294967295", "01" + kEsiHex + "ffffffff"},
        {kEsi + ":16909060", "01" + kEsiHex + "04030201"},
        {"0123.4567.89AB.CDEF.0011:1", "01" + kEsiHex + "01000000", kEsi + ":1"},
        {kEsi + ":00000000000000000000001", "01" + kEsiHex + "01000000", kEsi + ":1"}, // no limit but the whole text's
        {"ff00.0000.0000.0000.0001:1", "01 ff000000000000000001 01000000"},
        {"0200.0000.0000.0000.0001:1", "01 02000000000000000001 01000000"},
        {"0600.0000.0000.0000.0001:1", "01 06000000000000000001 01000000"},
        {"0000.0000.0000.0000.0001:1", "01 00000000000000000001 01000000"},
        {"ffff.ffff.ffff.ffff.fffe:1", "01 fffffffffffffffffffe 01000000"},
        // Twenty zeros are the all-zero ESI wherever the four dots stand.
        {"....00000000000000000000:7", "01 00000000000000000000 07000000", "0000.0000.0000.0000.0000:7"},
        {"00000000000000000000....:7", "01 00000000000000000000 07000000", "0000.0000.0000.0000.0000:7"},
        {"0.00.000.0000.0000000000:7", "01 00000000000000000000 07000000", "0000.0000.0000.0000.0000:7"},
    });
    ExpectRefused({
        kEsi + ":",
        kEsi + ":4294967296",
        kEsi + ":9999999999999999999999",
        kEsi + ":a",
        kEsi + ":1-",
        kEsi + ":+1",
        ":7",
        "....:7",
        "0.0.0.0.0:7",
        "1.2.3.4.5:7",
        "ffff.ffff.ffff.ffff.ffff:1",
        "FFFF.ffff.FfFf.ffff.ffff:1",
        "0000.0000.0000.0000.000:7",     // nineteen zeros
        "0000.0000.0000.0000.00000:7",   // twenty-one
        "0000.0000.0000.0000.0000000:7", // and longer than an ESI
        "0123.4567.89ab.cdef.001:1",     // 23 characters
        "0123.4567.89ab.cdef.00110:1",   // 25
        "01234.567.89ab.cdef.0011:1",    // five digits in a group
        "0123.4567.89ab.cdef0011:1",     // three dots
        "0123.4567.89ab.cdef.0011.:1",   // five
        "0123.4567.89ab.cdeg.0011:1",
        "0123-4567-89ab-cdef-0011:1",
        "0123.4567.89ab.cdef.0011:1:2",
        "0123.4567.89ab.cdef.0011::1",
    });
}

TEST_F(EvpnText, Type2MacAdvertisement)
{
    const std::string mac = "00e0fc123456";
    ExpectTaken({
        {"1:48:00e0-fc12-3456:32:10.2.3.4", "02 01000000 30" + mac + "20 0403020a"},
        {"0:0:0-0-0:0:0.0.0.0", "02", "0:0:0000-0000-0000:0:0.0.0.0"},
        {"4294967295:255:ffff-ffff-ffff:255:255.255.255.255", "02 ffffffff ff ffffffffffff ff ffffffff"},
        {"1:48:e0-c-3:32:10.2.3.4", "02 01000000 30 00e0000c0003 20 0403020a", "1:48:00e0-000c-0003:32:10.2.3.4"},
        {"0000000001:048:00E0-FC12-3456:032:10.2.3.4", "02 01000000 30" + mac + "20 0403020a",
         "1:48:00e0-fc12-3456:32:10.2.3.4"},
        {"1:48:00e0-fc12-3456:128:[2001:db8::1]", "02 01000000 30" + mac + "80 00000000" + kSome6 + "01"},
        {"1:48:00e0-fc12-3456:0:[::]", "02 01000000 30" + mac + "00 00000000" + kNo6 + "01"},
        {"1:255:00e0-fc12-3456:64:[2001:0DB8:0:0:0:0:0:1]", "02 01000000 ff" + mac + "40 00000000" + kSome6 + "01",
         "1:255:00e0-fc12-3456:64:[2001:db8::1]"},
        {"1:48:00e0-fc12-3456:128:[::ffff:10.2.3.4]",
         "02 01000000 30" + mac + "80 00000000 00000000000000000000ffff0a020304 01"},
    });
    ExpectRefused({
        ":48:00e0-fc12-3456:32:10.2.3.4",
        "1::00e0-fc12-3456:32:10.2.3.4",
        "1:48::32:10.2.3.4",
        "1:48:00e0-fc12-3456::10.2.3.4",
        "1:48:00e0-fc12-3456:32:",
        "1:48:00e0-fc12-3456:10.2.3.4",
        "1:48:00e0-fc12-3456:32:10.2.3.4:",
        "4294967296:48:00e0-fc12-3456:32:10.2.3.4",
        "00000000001:48:00e0-fc12-3456:32:10.2.3.4", // eleven characters
        "a:48:00e0-fc12-3456:32:10.2.3.4",
        "1:256:00e0-fc12-3456:32:10.2.3.4",
        "1:0048:00e0-fc12-3456:32:10.2.3.4", // four
        "1:304:00e0-fc12-3456:32:10.2.3.4",
        "1:f:00e0-fc12-3456:32:10.2.3.4",
        "1:48:00e0-fc12-34567:32:10.2.3.4",
        "1:48:00e0-fc123-456:32:10.2.3.4",
        "1:48:00e0fc123456:32:10.2.3.4",
        "1:48:00e0-fc123456:32:10.2.3.4",
        "1:48:00-e0-fc-12-34-56:32:10.2.3.4",
        "1:48:-fc12-3456:32:10.2.3.4",
        "1:48:00e0-fc12-3456:256:10.2.3.4",
        "1:48:00e0-fc12-3456:0032:10.2.3.4",
        "1:48:00e0-fc12-3456:32:10.2.3.256",
        "1:48:00e0-fc12-3456:32:010.2.3.4",
        "1:48:00e0-fc12-3456:32:10.2.3",
        "1:48:00e0-fc12-3456:32:10.2.3.4.5",
        "1:48:00e0-fc12-3456:32:10.2.3.4a",
        "1:48:00e0.fc12.3456:32:10.2.3.4",
        "1:48:00e0-fc12-3456:129:[2001:db8::1]",
        "1:48:00e0-fc12-3456:0128:[2001:db8::1]",
        "1:48:00e0-fc12-3456::[2001:db8::1]",
        "1:48:00e0-fc12-3456:128:[]",
        "1:48:00e0-fc12-3456:128:[2001:db8::1",
        "1:48:00e0-fc12-3456:128:[2001:db8::1[",
        "1:48:00e0-fc12-3456:128:]2001:db8::1[",
        "1:48:00e0-fc12-3456:128:2001:db8::1",
        "1:48:00e0-fc12-3456:128:a[2001:db8::1]",
        "1:48:00e0-fc12-3456:128:[2001:db8::1]a",
        "1:48:00e0-fc12-3456:128:[2001:db8::1]:",
        "1:48:00e0-fc12-3456:128:[2001:db8:::1]",
        "1:48:00e0-fc12-3456:128:[2001:db8::12345]",
        "1:48:00e0-fc12-3456:32:[10.2.3.4]",
        "1:48:00e0-fc12-3456:[2001:db8::1]",
        "1:[2001:db8::1]:00e0-fc12-3456:128:",
    });
}

TEST_F(EvpnText, Type3InclusiveMulticast)
{
    ExpectTaken({
        {"10:32:1.1.1.1", "03 0a000000 20 01010101"},
        {"10:32:10.2.3.4", "03 0a000000 20 0403020a"},
        {"0:0:0.0.0.0", "03"},
        {"4294967295:255:255.255.255.255", "03 ffffffff ff ffffffff"},
        {"0000000010:032:10.2.3.4", "03 0a000000 20 0403020a", "10:32:10.2.3.4"},
        {"10:128:[2001::1]", "03 0a000000 80 00000000 20010000000000000000000000000001 01"},
        {"10:0:[::]", "03 0a000000 00 00000000" + kNo6 + "01"},
        {"10:128:[::ffff:10.2.3.4]", "03 0a000000 80 00000000 00000000000000000000ffff0a020304 01"},
    });
    ExpectRefused({
        ":32:10.2.3.4",
        "10::10.2.3.4",
        "10:32:",
        "10:32",
        "4294967296:32:10.2.3.4",
        "00000000010:32:10.2.3.4",
        "f:32:10.2.3.4",
        "10:256:10.2.3.4",
        "10:0032:10.2.3.4",
        "10:a:10.2.3.4",
        "10:32:10.2.3.256",
        "10:32:10.2.3",
        "10:32:10.2.3.4.5",
        "10:32:10.2.3.4a",
        "10:32:010.2.3.4",
        "10:129:[2001::1]",
        "10:0128:[2001::1]",
        "10::[2001::1]",
        ":128:[2001::1]",
        "10:128:[]",
        "10:128:[2001::1",
        "10:128:[2001::1[",
        "10:128:2001::1]",
        "10:128:a[2001::1]",
        "10:128:[2001::1]a",
        "10:128:[2001::1].",
        "10:128:[2001:1]",
        "10:128:[10.2.3.4]",
        "10:128:[0000:0000:0000:0000:0000:0000:0000:0000:00000000000000001]", // above 49 characters
    });
}

TEST_F(EvpnText, Type4EthernetSegment)
{
    ExpectTaken({
        {kEsi + ":32:10.2.3.4", "04" + kEsiHex + "20 0403020a"},
        {kEsi + ":0:0.0.0.0", "04" + kEsiHex},
        {kEsi + ":255:255.255.255.255", "04" + kEsiHex + "ff ffffffff"},
        {"ff00.0000.0000.0000.0001:032:10.2.3.4", "04 ff000000000000000001 20 0403020a",
         "ff00.0000.0000.0000.0001:32:10.2.3.4"},
        {kEsi + ":128:[2001:db8::1]", "04" + kEsiHex + "80 00000000" + kSome6 + "01"},
        {kEsi + ":0:[::]", "04" + kEsiHex + "00 00000000" + kNo6 + "01"},
        // Alone, an ESI is a segment without originator; it prints one all the same.
        {"0100.0000.0000.0000.0001", "04 01000000000000000001", "0100.0000.0000.0000.0001:0:0.0.0.0"},
        {"FF00.0000.0000.0000.0001", "04 ff000000000000000001", "ff00.0000.0000.0000.0001:0:0.0.0.0"},
        {kEsi, "04" + kEsiHex, kEsi + ":0:0.0.0.0"},
        {"ffff.ffff.ffff.fffe.ffff", "04 fffffffffffffffeffff", "ffff.ffff.ffff.fffe.ffff:0:0.0.0.0"},
    });
    ExpectRefused({
        "0000.0000.0000.0000.0000",
        "ffff.ffff.ffff.ffff.ffff",
        "FFFF.FFFF.FFFF.FFFF.FFFF",
        "0000.0000.0000.0000.0000:32:10.2.3.4",
        "ffff.ffff.ffff.ffff.ffff:32:10.2.3.4",
        "0123.4567.89ab.cdef.001",   // 23 characters
        "0123.4567.89ab.cdef.00111", // 25
        "0123.4567.89abcdef.00112",  // three dots in 24 characters
        "012.345.678.9ab.cdef.001",  // five
        "0123..4567.89ab.cdef.001",
        ".0123.4567.89ab.cdef.001",
        "0123.4567.89ab.cdef.001.",
        "0123.4567.89ab.cdef.001g",
        "0123.4567.89ab.cdef.001-",
        "01234.567.89ab.cdef.0011",
        "0123.4567.89ab.cdef.001:32:10.2.3.4",
        "....:32:10.2.3.4",
        "....00000000000000000000:32:10.2.3.4",
        kEsi + ":256:10.2.3.4",
        kEsi + ":0032:10.2.3.4",
        kEsi + "::10.2.3.4",
        kEsi + ":32:",
        kEsi + ":32:10.2.3",
        kEsi + ":32:10.2.3.4.5",
        kEsi + ":32:10.2.3.4:1",
        kEsi + ":129:[2001:db8::1]",
        kEsi + ":128:[2001:db8::1]a",
        kEsi + ":128:[2001:db8::1",
        kEsi + ":128:[]",
        kEsi + ":[2001:db8::1]",
        kEsi + "-:32:10.2.3.4",
    });
}

TEST_F(EvpnText, Type5IpPrefix)
{
    ExpectTaken({
        {"10:1.1.1.0:24", "05 0a000000 18 00010101"},
        {"0:0.0.0.0:0", "05"},
        {"4294967295:255.255.255.255:255", "05 ffffffff ff ffffffff"},
        {"0000000010:10.2.3.4:0000000000000032", "05 0a000000 20 0403020a", "10:10.2.3.4:32"},
        {"10:[2001::]:64", "05 0a000000 40 00000000 20010000000000000000000000000000 01"},
        {"10:[::]:0", "05 0a000000 00 00000000" + kNo6 + "01"},
        {"10:[2001:db8::1]:255", "05 0a000000 ff 00000000" + kSome6 + "01"},
        {"10:[2001:db8::1]:000128", "05 0a000000 80 00000000" + kSome6 + "01", "10:[2001:db8::1]:128"},
        {"10:[::ffff:10.2.3.4]:128", "05 0a000000 80 00000000 00000000000000000000ffff0a020304 01"},
        // The character behind the bracket is not looked at.
        {"10:[2001:db8::1]a64", "05 0a000000 40 00000000" + kSome6 + "01", "10:[2001:db8::1]:64"},
        {"10:[2001:db8::1].64", "05 0a000000 40 00000000" + kSome6 + "01", "10:[2001:db8::1]:64"},
        {"10:[2001:db8::1]64", "05 0a000000 04 00000000" + kSome6 + "01", "10:[2001:db8::1]:4"},
    });
    ExpectRefused({
        ":10.2.3.4:24",
        "10::24",
        "10:10.2.3.4:",
        "10:10.2.3.4",
        "4294967296:10.2.3.4:24",
        "00000000010:10.2.3.4:24",
        "a:10.2.3.4:24",
        "10:10.2.3.4:256",
        "10:10.2.3.4:4294967320", // 24 beyond 32 bits
        "10:10.2.3.4:a",
        "10:10.2.3.4:2.4", // four dots
        "10:10.2.3:24",
        "10:10.2.3.256:24",
        "10:010.2.3.4:24",
        "10:10.2.3.4/24:24",
        "1.2:10.2.3.4:24",
        "10:10.2.3.4:24:1",
        "10:[2001::]",
        "10:[2001::]:",
        "10:[2001::]6",
        "10:[2001::]:256",
        "10:[2001::]:a",
        "10:[2001::]::64",
        "10:[2001::]-64",
        "10:[2001::]:64a",
        "10:[]:64",
        "10:[10.2.3.4]:24",
        "10:a[2001::]:64",
        ":[2001::]:64",
        "[2001::]:64",
        "4294967296:[2001::]:64",
        "00000000010:[2001::]:64",
        "10:[2001:]:64",
        "10:[2001::[:64",
        "10:]2001::[:64",
        "10:[[2001::]]:64",
    });
}

TEST_F(EvpnText, Type6SelectiveMulticast)
{
    const std::string source = "20 0403020a" + kNo6 + "00";
    const std::string group = "20 010101ef" + kNo6 + "00";
    const std::string tag = "06 0a000000";
    ExpectTaken({
        {"10:32:10.2.3.4:32:239.1.1.1:32:1.2.3.4", tag + source + group + "20 04030201"},
        {"10:0:0.0.0.0:32:239.1.1.1:32:1.2.3.4",
         tag + "00 00000000" + kNo6 + "00" + group + "20 04030201"}, // any source
        {"0:128:0.0.0.0:1:0.0.0.0:128:255.255.255.255",
         "06 00000000 80 00000000" + kNo6 + "00 01 00000000" + kNo6 + "00 80 ffffffff"},
        {"4294967295:032:10.2.3.4:032:239.1.1.1:001:1.2.3.4", "06 ffffffff" + source + group + "01 04030201",
         "4294967295:32:10.2.3.4:32:239.1.1.1:1:1.2.3.4"},
        {"10:32:10.2.3.4:32:239.1.1.1:128:[2001:db8::1]", tag + source + group + "80 00000000" + kSome6 + "01"},
        // Behind the bracket of the last field nothing is looked at, so that six colons outside brackets can be had.
        {"10:32:10.2.3.4:32:239.1.1.1:128:[2001:db8::1]abc", tag + source + group + "80 00000000" + kSome6 + "01",
         "10:32:10.2.3.4:32:239.1.1.1:128:[2001:db8::1]"},
        {"10:128:[2001:db8::1]a128:[ff0e::1]b128:[2001:db8::1]::",
         tag + "80 00000000" + kSome6 + "01 80 00000000" + kGroup6 + "01 80 00000000" + kSome6 + "01",
         "10:128:[2001:db8::1]:128:[ff0e::1]:128:[2001:db8::1]"},
        {"10:128:[2001:db8::1]a32:239.1.1.1:128:[2001:db8::1]:",
         tag + "80 00000000" + kSome6 + "01" + group + "80 00000000" + kSome6 + "01",
         "10:128:[2001:db8::1]:32:239.1.1.1:128:[2001:db8::1]"},
    });
    ExpectRefused({
        "10:129:10.2.3.4:32:239.1.1.1:32:1.2.3.4",
        "10:32:10.2.3.4:0:239.1.1.1:32:1.2.3.4",
        "10:32:10.2.3.4:129:239.1.1.1:32:1.2.3.4",
        "10:32:10.2.3.4:32:239.1.1.1:0:1.2.3.4",
        "10:32:10.2.3.4:32:239.1.1.1:129:1.2.3.4",
        "10:0032:10.2.3.4:32:239.1.1.1:32:1.2.3.4",
        "10:32:10.2.3.4:0032:239.1.1.1:32:1.2.3.4",
        "10:32:10.2.3.4:32:239.1.1.1:0032:1.2.3.4",
        "00000000010:32:10.2.3.4:32:239.1.1.1:32:1.2.3.4",
        "4294967296:32:10.2.3.4:32:239.1.1.1:32:1.2.3.4",
        ":32:10.2.3.4:32:239.1.1.1:32:1.2.3.4",
        "10::10.2.3.4:32:239.1.1.1:32:1.2.3.4",
        "10:32::32:239.1.1.1:32:1.2.3.4",
        "10:32:10.2.3.4::239.1.1.1:32:1.2.3.4",
        "10:32:10.2.3.4:32::32:1.2.3.4",
        "10:32:10.2.3.4:32:239.1.1.1::1.2.3.4",
        "10:32:10.2.3.4:32:239.1.1.1:32:",
        "10:32:10.2.3.4:32:239.1.1.1:32:1.2.3.4a",
        "10:32:10.2.3.4:32:239.1.1.1:32:1.2.3",
        "10:32:10.2.3.256:32:239.1.1.1:32:1.2.3.4",
        "10:32:10.2.3.4:32:239.1.1:32:1.2.3.4",
        "10:32:10.2.3.4:32:239.1.1.1:128:[2001:db8::1",
        "10:32:10.2.3.4:32:239.1.1.1:128:[]",
        "10:32:10.2.3.4:32:239.1.1.1:128:[1.2.3.4]",
        // A colon may not follow an IPv6 address that is not the last field.
        "10:128:[2001:db8::1]:128:[ff0e::1]:128:[2001:db8::1]",
        "10:128:[2001:db8::1]:32:239.1.1.1:32:1.2.3.4",
        "10:32:10.2.3.4:128:[ff0e::1]:32:1.2.3.4",
        "1:2:3:4:5:6:7",
        "::::::",
    });
}

TEST_F(EvpnText, Type7MulticastJoin)
{
    const std::string esi = "0100.0000.0000.0000.0001";
    const std::string head = "07 01000000000000000001 0a000000";
    const std::string source = "20 0403020a" + kNo6 + "00";
    const std::string group = "20 010101ef" + kNo6 + "00";
    ExpectTaken({
        {esi + ":10:32:10.2.3.4:32:239.1.1.1:32:1.2.3.4", head + source + group + "20 04030201"},
        {"0001.0203.0405.0607.0809:4294967295:0:0.0.0.0:1:239.1.1.1:128:1.2.3.4",
         "07 00010203040506070809 ffffffff 00 00000000" + kNo6 + "00 01 010101ef" + kNo6 + "00 80 04030201"},
        {esi + ":10:32:10.2.3.4:32:239.1.1.1:128:[2001:db8::1]", head + source + group + "80 00000000" + kSome6 + "01"},
        // Seven colons: a join, whatever the number behind the bracket was meant to be.
        {esi + ":10:32:10.2.3.4:32:239.1.1.1:128:[2001:db8::1]a7",
         head + source + group + "80 00000000" + kSome6 + "01", esi + ":10:32:10.2.3.4:32:239.1.1.1:128:[2001:db8::1]"},
        {esi + ":10:128:[2001:db8::1]a128:[ff0e::1]b128:[2001:db8::1]::",
         head + "80 00000000" + kSome6 + "01 80 00000000" + kGroup6 + "01 80 00000000" + kSome6 + "01",
         esi + ":10:128:[2001:db8::1]:128:[ff0e::1]:128:[2001:db8::1]"},
    });
    const std::string rest = ":10:32:10.2.3.4:32:239.1.1.1:32:1.2.3.4";
    ExpectRefused({
        "0200.0000.0000.0000.0001" + rest, // typed, too, only ESI types 0 and 1
        "1000.0000.0000.0000.0001" + rest,
        "ff00.0000.0000.0000.0001" + rest,
        "0a00.0000.0000.0000.0001" + rest,
        "0000.0000.0000.0000.0000" + rest,
        "0100.0000.0000.0000.001" + rest,
        "0100.0000.0000.0000.00001" + rest,
        "0100.0000.0000.0000.000g" + rest,
        rest,
        esi + "::32:10.2.3.4:32:239.1.1.1:32:1.2.3.4",
        esi + ":4294967296:32:10.2.3.4:32:239.1.1.1:32:1.2.3.4",
        esi + ":00000000010:32:10.2.3.4:32:239.1.1.1:32:1.2.3.4",
        esi + ":10:129:10.2.3.4:32:239.1.1.1:32:1.2.3.4",
        esi + ":10:32:10.2.3.4:0:239.1.1.1:32:1.2.3.4",
        esi + ":10:32:10.2.3.4:129:239.1.1.1:32:1.2.3.4",
        esi + ":10:32:10.2.3.4:32:239.1.1.1:0:1.2.3.4",
        esi + ":10:32:10.2.3.4:32:239.1.1.1:129:1.2.3.4",
        esi + ":10:32:10.2.3.4:32:239.1.1.1:32:",
        esi + ":10:32:10.2.3.4:32:239.1.1.1:32:1.2.3.4a",
        esi + ":10:128:[2001:db8::1]:128:[ff0e::1]:128:[2001:db8::1]",
        "1:2:3:4:5:6:7:8",
        ":::::::",
    });
}

TEST_F(EvpnText, Type8MulticastLeave)
{
    const std::string esi = "0100.0000.0000.0000.0001";
    const std::string fields = esi + ":10:32:10.2.3.4:32:239.1.1.1:32:1.2.3.4";
    const std::string value = "08 01000000000000000001 0a000000 20 0403020a" + kNo6 + "00 20 010101ef" + kNo6 +
                              "00 20 04030201" + kNo6 + "00";
    ExpectTaken({
        {fields + ":7", value + "07000000"},
        {fields + ":0", value + "00000000"},
        {fields + ":4294967295", value + "ffffffff"},
        {fields + ":0000000007", value + "07000000", fields + ":7"},
        {fields + ":16909060", value + "04030201"},
        {"0001.0203.0405.0607.0809:0:0:0.0.0.0:128:239.1.1.1:1:1.2.3.4:1",
         "08 00010203040506070809 00000000 00 00000000" + kNo6 + "00 80 010101ef" + kNo6 + "00 01 04030201" + kNo6 +
             "00 01000000"},
    });
    ExpectRefused({
        fields + ":",
        fields + ":4294967296",
        fields + ":00000000007",
        fields + ":a",
        fields + ":7:8",
        "0200.0000.0000.0000.0001:10:32:10.2.3.4:32:239.1.1.1:32:1.2.3.4:7",
        "0000.0000.0000.0000.0000:10:32:10.2.3.4:32:239.1.1.1:32:1.2.3.4:7",
        esi + ":10:129:10.2.3.4:32:239.1.1.1:32:1.2.3.4:7",
        esi + ":10:32:10.2.3.4:0:239.1.1.1:32:1.2.3.4:7",
        esi + ":10:32:10.2.3.4:32:239.1.1.1:0:1.2.3.4:7",
        esi + ":10:32:10.2.3.4:32:239.1.1.1:129:1.2.3.4:7",
        esi + ":10:32:10.2.3.4:32:239.1.1.1:128:[2001:db8::1]:7",
        "1:2:3:4:5:6:7:8:9",
        "::::::::",
    });
}

// ----------------------------------------------------------------------------------------------------- the whole text

TEST_F(EvpnText, TextsThatAreNoRoute)
{
    ExpectRefused({
        "",
        " ",
        "\t \t",
        "1",
        "100",
        "1.5",
        "10.1.1.1",
        "100:1",
        "10.1.1.1:5",
        "1.2:3",
        "0a0b-0c0d-0e0f",
        "100:10.1.1.1",
        "10.1.1.1:225.1.1.1",
        "1.1.1.1:2.2.2.2:3.3.3.3",
        "100:1.1.1.1:2.2.2.2",
        "2001::1-ff0e::1",
        "100-2001::1-2001::2",
        "1/10.1.1.1/100",
        "[1][2][10.0.0.1]",
        "[1][2][2001:db8::1]",
        "2001:db8::1",
        "::ffff:10.1.1.1",
        "::10.1.1.1",
        "::",
        "1-100-200-10.1.1.1",
        "10:32: 1.1.1.1",
        "10:32:\t1.1.1.1",
        "10 :32:1.1.1.1",
        "10:32:1.1.1.1\n",
        "10:32:1.1.1.1\xff",
        "\xb1"
        "0:32:1.1.1.1",
        "10:32:1.1.1.1/",
        "10,32,1.1.1.1",
        "x",
        "10:1.1.1.0:24-",
        "10:1.1.1.0:2-4",
        "10:1.1.1.0-:24-",
        "1:2:3:4:5",
        "1:2:3:4:5:6",
        "1:2:3:4:5:6:7:8:9:10",
        "10:32:1.1.1.1[",
        "10:32:1.1.1.1[]",
        "10:[1.1.1.0]:24:[]",
        "....",
        "...",
        ":::",
    });
}

TEST_F(EvpnText, OuterBlanksAreDroppedHoweverMany)
{
    const std::string spaces(500, ' ');
    const std::string tabs(500, '\t');
    const std::string value = Whole("05 0a000000 18 00010101");
    for (const char *text : {" 10:1.1.1.0:24", "10:1.1.1.0:24 ", "\t10:1.1.1.0:24\t"}) {
        EXPECT_EQ(FormatIn("EVNPREFIX", text).value, value);
    }
    const In in = FormatIn("EVNPREFIX", spaces + tabs + "10:1.1.1.0:24" + tabs + spaces);
    EXPECT_EQ(in.code, DT_OK);
    EXPECT_EQ(in.value, value);
    EXPECT_TRUE(in.textKept);
    EXPECT_EQ(FormatIn("EVNPREFIX", spaces + tabs).code, DT_ERR_INVALID_PARAM);
}

TEST_F(EvpnText, Has183CharactersAtMost)
{
    const std::string longest = kEsi + ":" + std::string(157, '0') + "7"; // 24 + 1 + 158
    ASSERT_EQ(longest.size(), 183u);
    EXPECT_EQ(FormatIn("EVNPREFIX", longest).value, Whole("01" + kEsiHex + "07000000"));
    EXPECT_EQ(FormatIn("EVNPREFIX", "  " + longest + "\t").value, Whole("01" + kEsiHex + "07000000"));
    ExpectRefused({kEsi + ":0" + std::string(157, '0') + "7", kEsi + ":" + std::string(2000, '0') + "7"});
}

TEST_F(EvpnText, TheFormatModes)
{
    const DataTypeDescriptor &row = Row("EVNPREFIX");
    for (const uint8_t mode : {uint8_t{0}, uint8_t{1}, uint8_t{2}, uint8_t{3}, uint8_t{5}, uint8_t{6}}) {
        EXPECT_EQ(FormatIn(row, "10:1.1.1.0:24", mode).value, Whole("05 0a000000 18 00010101")) << int{mode};
        EXPECT_EQ(FormatIn(row, "x", mode).code, DT_ERR_INVALID_PARAM) << int{mode};
    }
    for (const uint8_t mode : {uint8_t{4}, uint8_t{7}, uint8_t{255}}) {
        EXPECT_EQ(FormatIn(row, "10:1.1.1.0:24", mode).code, DT_ERR_MODE_UNSUPPORTED) << int{mode};
        EXPECT_EQ(FormatIn(row, "x", mode).code, DT_ERR_MODE_UNSUPPORTED) << int{mode};
    }
}

TEST_F(EvpnText, TheValueIsTheOnlyMemory)
{
    const char *texts[] = {"0000.0000.0000.0000.0000:7",
                           "1:48:00e0-fc12-3456:32:10.2.3.4",
                           "1:48:00e0-fc12-3456:128:[2001:db8::1]",
                           "10:32:1.1.1.1",
                           "10:128:[2001::1]",
                           "0100.0000.0000.0000.0001",
                           "0100.0000.0000.0000.0001:128:[2001::1]",
                           "10:1.1.1.0:24",
                           "10:[2001::]:64",
                           "10:32:10.2.3.4:32:239.1.1.1:32:1.2.3.4",
                           "0100.0000.0000.0000.0001:10:32:10.2.3.4:32:239.1.1.1:32:1.2.3.4",
                           "0100.0000.0000.0000.0001:10:32:10.2.3.4:32:239.1.1.1:32:1.2.3.4:7"};
    for (const char *text : texts) {
        EXPECT_EQ(CodesWhileAllocationsFail([&] { return FormatIn("EVNPREFIX", text).code; }),
                  std::vector<uint32_t>{DT_ERR_NO_MEMORY})
            << text;
    }
}

// Lengths stop at what a byte holds, or at the bits of an IPv6 address; in multicast routes at those for both families.
TEST_F(EvpnText, EveryLength)
{
    const struct {
        std::string before, after;
        uint32_t least, most;
        size_t at; // in the value
    } rows[] = {
        {"1:", ":00e0-fc12-3456:32:10.2.3.4", 0, 255, 9},
        {"1:48:00e0-fc12-3456:", ":10.2.3.4", 0, 255, 16},
        {"1:48:00e0-fc12-3456:", ":[2001:db8::1]", 0, 128, 16},
        {"10:", ":10.2.3.4", 0, 255, 9},
        {"10:", ":[2001:db8::1]", 0, 128, 9},
        {kEsi + ":", ":10.2.3.4", 0, 255, 15},
        {kEsi + ":", ":[2001:db8::1]", 0, 128, 15},
        {"10:10.2.3.4:", "", 0, 255, 9},
        {"10:[2001:db8::1]:", "", 0, 255, 9},
        {"10:", ":10.2.3.4:32:239.1.1.1:32:1.2.3.4", 0, 128, 9},
        {"10:32:10.2.3.4:", ":239.1.1.1:32:1.2.3.4", 1, 128, 31},
        {"10:32:10.2.3.4:32:239.1.1.1:", ":1.2.3.4", 1, 128, 53},
        {"10:32:10.2.3.4:32:239.1.1.1:", ":[2001:db8::1]", 1, 128, 53},
        {kEsi + ":10:", ":10.2.3.4:32:239.1.1.1:32:1.2.3.4", 0, 128, 19},
        {kEsi + ":10:32:10.2.3.4:", ":239.1.1.1:32:1.2.3.4", 1, 128, 41},
        {kEsi + ":10:32:10.2.3.4:32:239.1.1.1:", ":1.2.3.4", 1, 128, 63},
        {kEsi + ":10:", ":10.2.3.4:32:239.1.1.1:32:1.2.3.4:7", 0, 128, 19},
        {kEsi + ":10:32:10.2.3.4:", ":239.1.1.1:32:1.2.3.4:7", 1, 128, 41},
        {kEsi + ":10:32:10.2.3.4:32:239.1.1.1:", ":1.2.3.4:7", 1, 128, 63},
    };
    for (const auto &row : rows) {
        for (uint32_t length = 0; length <= 1000; ++length) {
            const std::string text = row.before + std::to_string(length) + row.after;
            uint8_t value[89] = {};
            const uint32_t code = SYSDT_Str2EvnPrefix(text.c_str(), value, 1);
            const bool taken = length >= row.least && length <= row.most;
            EXPECT_EQ(code, taken ? DT_OK : DT_ERR_FAIL) << text;
            if (taken) {
                EXPECT_EQ(value[row.at], length) << text;
            }
        }
    }
}

// Each counter one step outside of what a route has.
TEST_F(EvpnText, CountersJustOutside)
{
    ExpectRefused({
        "10:32:1.1.11",                     // two dots
        "10:32:1.1.1.1.",                   // four
        "10:32:1.1.1.1..",                  // five
        "10:32:1.1.1.1...",                 // six
        kEsi + ":32:1.1.1.1.",              // eight
        "10:32-1.1.1.1",                    // one colon
        "10:32:1.1.1.1:",                   // three
        "1:48:00e0-fc12-3456:32:1:1.1.1.1", // five
        "10:32:1.1.1.1-",                   // one dash
        "10:32:1.1-1-1.1",                  // two
        "1:48:00e0-fc12-34-56:32:10.1.1.1", // three
        "10:128:[2001::1",                  // one bracket
        "10:128:[[2001::1]",                // three
        "10:128:[2001::1]-",                // a dash beside brackets
        "10:128:[2001::1]--",
        "10:128:[20.01::1]",
    });
}

// ----------------------------------------------------------------------------------------------------- the dispatcher

TEST_F(EvpnText, TheParserReportsItsOwnCodesAndLeavesTheSubTypeAlone)
{
    uint8_t value[89];
    std::memset(value, 0xEE, sizeof value);
    EXPECT_EQ(SYSDT_Str2EvnPrefix(nullptr, value, 1), DT_ERR_NULL_PTR);
    EXPECT_EQ(SYSDT_Str2EvnPrefix("10:1.1.1.0:24", nullptr, 1), DT_ERR_NULL_PTR);
    EXPECT_EQ(SYSDT_Str2EvnPrefix("10:1.1.1.0:24x", value, 1), DT_ERR_FAIL);
    EXPECT_EQ(Hex(value, sizeof value), Hex(std::string(89, '\xEE')));
    EXPECT_EQ(SYSDT_Str2EvnPrefix(" 10:1.1.1.0:24\t", value, 1), DT_OK);
    EXPECT_EQ(Hex(value, 14), "eeeeeeee050a0000001800010101");
    EXPECT_EQ(value[30], 0);
    for (size_t i = 31; i < sizeof value; ++i) {
        EXPECT_EQ(value[i], 0xEE) << i;
    }
}

// The ESI type is checked when the mode is anything but 1.
TEST_F(EvpnText, CheckModeJudgesTheEsiType)
{
    for (const uint32_t mode : {0u, 2u, 255u, 0xFFFFFFFFu}) {
        for (unsigned first = 0; first < 256; ++first) {
            char esi[32];
            std::snprintf(esi, sizeof esi, "%02x00.0000.0000.0000.0001", first);
            const std::string text = esi;
            SCOPED_TRACE(text + " in mode " + std::to_string(mode));
            const uint32_t segment = first <= 0x01 ? DT_OK : DT_ERR_FAIL;   // 00 and 01
            const uint32_t discovery = first <= 0x05 ? DT_OK : DT_ERR_FAIL; // 00 to 05
            uint8_t value[89] = {};
            EXPECT_EQ(SYSDT_Str2EvnPrefix(text.c_str(), value, mode), segment);
            EXPECT_EQ(SYSDT_Str2EvnPrefix((text + ":32:10.1.1.1").c_str(), value, mode), segment);
            EXPECT_EQ(SYSDT_Str2EvnPrefix((text + ":128:[2001::1]").c_str(), value, mode), segment);
            EXPECT_EQ(SYSDT_Str2EvnPrefix((text + ":7").c_str(), value, mode), discovery);
        }
    }
    for (unsigned first = 0; first < 256; ++first) {
        char esi[32];
        std::snprintf(esi, sizeof esi, "%02x00.0000.0000.0000.0001", first);
        const std::string text = esi;
        SCOPED_TRACE(text);
        uint8_t value[89] = {};
        EXPECT_EQ(SYSDT_Str2EvnPrefix(text.c_str(), value, 1), DT_OK);
        EXPECT_EQ(SYSDT_Str2EvnPrefix((text + ":32:10.1.1.1").c_str(), value, 1), DT_OK);
        EXPECT_EQ(SYSDT_Str2EvnPrefix((text + ":7").c_str(), value, 1), DT_OK);
        // Joins and leaves are always checked.
        const uint32_t multicast = first <= 0x01 ? DT_OK : DT_ERR_FAIL;
        const std::string join = text + ":10:32:10.2.3.4:32:239.1.1.1:32:1.2.3.4";
        EXPECT_EQ(SYSDT_Str2EvnPrefix(join.c_str(), value, 1), multicast);
        EXPECT_EQ(SYSDT_Str2EvnPrefix((join + ":7").c_str(), value, 1), multicast);
    }
    uint8_t value[89] = {};
    EXPECT_EQ(SYSDT_Str2EvnPrefix("0000.0000.0000.0000.0000:7", value, 0), DT_OK);
}

// The counters choose the route type.
TEST_F(EvpnText, WhatChoosesTheRouteType)
{
    const std::pair<const char *, int> rows[] = {
        {"10:32:1.1.1.1", 3},  // no dot before the second colon
        {"10:1.1.1.0:24", 5},  // one
        {"10:[2001::]:64", 5}, // a bracket before the second colon
        {"10:128:[2001::1]", 3},
        {"10:128:[::1.2.3.4]", 3},
        {"10:[::1.2.3.4]:64", 5},
        {"0000.0000.0000.0000.0000:7", 1},
        {"0100.0000.0000.0000.0001", 4},
        {"0100.0000.0000.0000.0001:32:1.1.1.1", 4}, // four dots before the second colon
        {"0100.0000.0000.0000.0001:128:[2001::1]", 4},
        {"0100.0000.0000.0000.0001:128:[::1.2.3.4]", 4},
        {"1:48:00e0-fc12-3456:32:10.1.1.1", 2},
        {"1:48:00e0-fc12-3456:128:[::]", 2},
        {"10:32:10.2.3.4:32:239.1.1.1:32:1.2.3.4", 6},
        {"0100.0000.0000.0000.0001:10:32:10.2.3.4:32:239.1.1.1:32:1.2.3.4", 7},
        {"0100.0000.0000.0000.0001:10:32:10.2.3.4:32:239.1.1.1:32:1.2.3.4:7", 8},
    };
    for (const auto &[text, routeType] : rows) {
        uint8_t value[89] = {};
        EXPECT_EQ(SYSDT_Str2EvnPrefix(text, value, 1), DT_OK) << text;
        EXPECT_EQ(int{value[4]}, routeType) << text;
        EXPECT_EQ(Hex(value, 4), "00000000") << text;
    }
}

// --------------------------------------------------------------------------------------- the parsers one by one

TEST_F(EvpnText, EveryParserTestsItsPointers)
{
    uint8_t value[89] = {};
    for (auto *parse :
         {SYSDT_Str2EvnMac, SYSDT_Str2Inclusive, SYSDT_Str2IpPrefix, SYSDT_Str2Ipv6Prefix, SYSDT_Str2EvpnMcRoute,
          SYSDT_Str2EvpnSmetRoute, SYSDT_Str2EvpnJoinRoute, SYSDT_Str2EvpnLeaveRoute}) {
        EXPECT_EQ(parse(nullptr, value), DT_ERR_NULL_PTR);
        EXPECT_EQ(parse("1", nullptr), DT_ERR_NULL_PTR);
        EXPECT_EQ(parse("", value), DT_ERR_FAIL);
        EXPECT_EQ(parse("1", value), DT_ERR_FAIL);
    }
    for (auto *parse : {SYSDT_Str2Ad, SYSDT_Str2Es}) {
        EXPECT_EQ(parse(nullptr, value, 1), DT_ERR_NULL_PTR);
        EXPECT_EQ(parse("1", nullptr, 1), DT_ERR_NULL_PTR);
        EXPECT_EQ(parse("", value, 1), DT_ERR_FAIL);
        EXPECT_EQ(parse("1", value, 1), DT_ERR_FAIL);
    }
    EXPECT_EQ(Hex(value, 5), "0000000000"); // the route type stands only when every field was read
}

TEST_F(EvpnText, EachParserFillsItsRoute)
{
    const struct {
        uint32_t (*parse)(const char *, void *);
        std::string text;
        std::string value;
    } rows[] = {
        {SYSDT_Str2EvnMac, "1:48:00e0-fc12-3456:32:10.2.3.4", "02 01000000 30 00e0fc123456 20 0403020a"},
        {SYSDT_Str2EvnMac, "1:48:00e0-fc12-3456:128:[2001:db8::1]",
         "02 01000000 30 00e0fc123456 80 00000000" + kSome6 + "01"},
        {SYSDT_Str2Inclusive, "10:32:10.2.3.4", "03 0a000000 20 0403020a"},
        {SYSDT_Str2Inclusive, "10:128:[2001:db8::1]", "03 0a000000 80 00000000" + kSome6 + "01"},
        {SYSDT_Str2IpPrefix, "10:10.2.3.4:24", "05 0a000000 18 0403020a"},
        {SYSDT_Str2Ipv6Prefix, "10:[2001:db8::1]:64", "05 0a000000 40 00000000" + kSome6 + "01"},
        {SYSDT_Str2EvpnSmetRoute, "10:128:[2001:db8::1]a128:[ff0e::1]b128:[2001:db8::1]",
         "06 0a000000 80 00000000" + kSome6 + "01 80 00000000" + kGroup6 + "01 80 00000000" + kSome6 + "01"},
        {SYSDT_Str2EvpnJoinRoute, "0100.0000.0000.0000.0001:10:128:[2001:db8::1]a128:[ff0e::1]b128:[2001:db8::1]",
         "07 01000000000000000001 0a000000 80 00000000" + kSome6 + "01 80 00000000" + kGroup6 + "01 80 00000000" +
             kSome6 + "01"},
        {SYSDT_Str2EvpnLeaveRoute,
         "0100.0000.0000.0000.0001:10:128:[2001:db8::1]a128:[ff0e::1]b128:[2001:db8::1]c4294967295",
         "08 01000000000000000001 0a000000 80 00000000" + kSome6 + "01 80 00000000" + kGroup6 + "01 80 00000000" +
             kSome6 + "01 ffffffff"},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.text);
        uint8_t value[89] = {};
        EXPECT_EQ(row.parse(row.text.c_str(), value), DT_OK);
        EXPECT_EQ(Hex(value, sizeof value), Padded("00000000" + row.value, 89));
    }
    uint8_t value[89] = {};
    EXPECT_EQ(SYSDT_Str2Ad((kEsi + ":7").c_str(), value, 1), DT_OK);
    EXPECT_EQ(Hex(value, sizeof value), Padded("00000000 01" + kEsiHex + "07000000", 89));
    std::memset(value, 0, sizeof value);
    EXPECT_EQ(SYSDT_Str2Es((kEsi + ":32:10.2.3.4").c_str(), value, 1), DT_OK);
    EXPECT_EQ(Hex(value, sizeof value), Padded("00000000 04" + kEsiHex + "20 0403020a", 89));
    // An ESI without anything behind it is the dispatcher's, not this parser's.
    EXPECT_EQ(SYSDT_Str2Es(kEsi.c_str(), value, 1), DT_ERR_FAIL);
}

TEST_F(EvpnText, AutoDiscoveryTakesTwentyZerosForTheZeroEsi)
{
    const struct {
        const char *text;
        uint32_t code;
    } rows[] = {
        {"00000000000000000000:7", DT_OK}, // no dots needed here
        {"x00000000000000000000:7", DT_OK},
        {"0000.0000.0000.0000.0000:7", DT_OK},
        {"0000000000000000000:7", DT_ERR_FAIL},       // nineteen
        {"000000000000000000000:7", DT_ERR_FAIL},     // twenty-one
        {"0000.0000.0000.0000.0000x:7", DT_ERR_FAIL}, // twenty in 25 characters
    };
    for (const auto &row : rows) {
        uint8_t value[89] = {};
        std::memset(value + 5, 0xEE, 10);
        EXPECT_EQ(SYSDT_Str2Ad(row.text, value, 0), row.code) << row.text;
        if (row.code == DT_OK) {
            EXPECT_EQ(Hex(value, sizeof value), Padded("00000000 01 00000000000000000000 07000000", 89)) << row.text;
        }
    }
}

TEST_F(EvpnText, MulticastRoutesGoByTheirColons)
{
    const std::string smet = "10:32:10.2.3.4:32:239.1.1.1:32:1.2.3.4";
    const std::string join = "0100.0000.0000.0000.0001:" + smet;
    const std::string leave = join + ":7";
    uint8_t value[89] = {};
    EXPECT_EQ(SYSDT_Str2EvpnMcRoute(smet.c_str(), value), DT_OK);
    EXPECT_EQ(value[4], 6);
    EXPECT_EQ(SYSDT_Str2EvpnMcRoute(join.c_str(), value), DT_OK);
    EXPECT_EQ(value[4], 7);
    EXPECT_EQ(SYSDT_Str2EvpnMcRoute(leave.c_str(), value), DT_OK);
    EXPECT_EQ(value[4], 8);
    // Colons in brackets do not count.
    EXPECT_EQ(SYSDT_Str2EvpnMcRoute("10:32:10.2.3.4:32:239.1.1.1:128:[2001:db8::1]", value), DT_OK);
    EXPECT_EQ(value[4], 6);
    uint8_t untouched[89] = {};
    EXPECT_EQ(SYSDT_Str2EvpnMcRoute("10:32:10.2.3.4:32:239.1.1.1:32", untouched), DT_ERR_FAIL);
    EXPECT_EQ(SYSDT_Str2EvpnMcRoute((leave + ":8").c_str(), untouched), DT_ERR_FAIL);
    EXPECT_EQ(SYSDT_Str2EvpnMcRoute((smet + "g").c_str(), untouched), DT_ERR_FAIL);
    EXPECT_EQ(Hex(untouched, sizeof untouched), Padded("", 89));
}

// A tag is kept even when the address behind it is refused: what scripts rely on to see how far a text was read.
TEST_F(EvpnText, ARefusedInclusiveRouteHasItsTag)
{
    for (const char *text : {"10:32:1.1.1.999", "10:256:1.1.1.1", "10:129:[2001::1]", "10:128:[2001::1]a"}) {
        uint8_t value[89] = {};
        EXPECT_EQ(SYSDT_Str2EvnPrefix(text, value, 1), DT_ERR_FAIL) << text;
        EXPECT_EQ(Hex(value, 9), "00000000000a000000") << text;
    }
}

// ------------------------------------------------------------------------------------------------ the field readers

TEST_F(EvpnText, ReadsANumberField)
{
    const struct {
        const char *text;
        uint32_t maxChars, min, max, isLast;
        uint32_t code;
        uint32_t result;
        size_t read; // characters up to where the cursor stands
    } rows[] = {
        {"10:rest", 10, 0, 0xFFFFFFFF, 0, DT_OK, 10, 2},
        {"4294967295:", 10, 0, 0xFFFFFFFF, 0, DT_OK, 0xFFFFFFFF, 10},
        {"0:", 3, 0, 128, 0, DT_OK, 0, 1},
        {"128:", 3, 1, 128, 0, DT_OK, 128, 3},
        {"1:", 3, 1, 128, 0, DT_OK, 1, 1},
        {"0:", 3, 1, 128, 0, DT_ERR_FAIL, 0, 0},
        {"129:", 3, 0, 128, 0, DT_ERR_FAIL, 0, 0},
        {"0128:", 3, 0, 128, 0, DT_ERR_FAIL, 0, 0},
        {":", 3, 0, 128, 0, DT_ERR_FAIL, 0, 0},
        {"12", 3, 0, 128, 0, DT_ERR_FAIL, 0, 0}, // not the last, but nothing behind it
        {"4294967296:", 10, 0, 0xFFFFFFFF, 0, DT_ERR_FAIL, 0, 0},
        {"00000000010:", 10, 0, 0xFFFFFFFF, 0, DT_ERR_FAIL, 0, 0},
        {"a:", 10, 0, 0xFFFFFFFF, 0, DT_ERR_FAIL, 0, 0},
        {"12", 10, 0, 0xFFFFFFFF, 1, DT_OK, 12, 2},
        {"4294967295", 10, 0, 0xFFFFFFFF, 1, DT_OK, 0xFFFFFFFF, 10},
        {"", 10, 0, 0xFFFFFFFF, 1, DT_ERR_FAIL, 0, 0},
        {"12:", 10, 0, 0xFFFFFFFF, 1, DT_ERR_FAIL, 0, 0},
        {"00000000010", 10, 0, 0xFFFFFFFF, 1, DT_ERR_FAIL, 0, 0},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(std::string(row.text) + (row.isLast != 0 ? " at the end" : ""));
        const char *cursor = row.text;
        uint32_t result = 0xEEEEEEEE;
        EXPECT_EQ(SYSDT_Str2EvpnUintNum(&cursor, &result, row.maxChars, row.min, row.max, row.isLast), row.code);
        if (row.code == DT_OK) {
            EXPECT_EQ(result, row.result);
            EXPECT_EQ(cursor - row.text, static_cast<ptrdiff_t>(row.read));
        }
    }
}

TEST_F(EvpnText, ReadsAnAddressField)
{
    const std::string untouched6 = Hex(std::string(16, '\xEE'));
    const struct {
        const char *text;
        uint32_t isLast;
        uint32_t code;
        std::string field; // 21 bytes, "ee" where nothing was written
        size_t read;
    } rows[] = {
        {"10.2.3.4:rest", 0, DT_OK, "0403020a" + untouched6 + "00", 8},
        {"10.2.3.4", 1, DT_OK, "0403020a" + untouched6 + "00", 8},
        {"[2001:db8::1]a128:", 0, DT_OK, "eeeeeeee" + kSome6 + "01", 13},
        {"[2001:db8::1]", 1, DT_OK, "eeeeeeee" + kSome6 + "01", 13},
        {"[2001:db8::1]:anything", 1, DT_OK, "eeeeeeee" + kSome6 + "01", 13},
        {"[2001:db8::1]:128", 0, DT_ERR_FAIL, "", 0},
        {"[2001:db8::1", 0, DT_ERR_FAIL, "", 0},
        {"[2001:db8::1", 1, DT_ERR_FAIL, "", 0},
        {"[]a", 0, DT_ERR_FAIL, "", 0},
        {"[10.2.3.4]a", 0, DT_ERR_FAIL, "", 0},
        {"10.2.3.4", 0, DT_ERR_FAIL, "", 0},
        {"10.2.3.4:", 1, DT_ERR_FAIL, "", 0},
        {":", 0, DT_ERR_FAIL, "", 0},
        {"", 1, DT_ERR_FAIL, "", 0},
        {"10.2.3:", 0, DT_ERR_FAIL, "", 0},
        {"00000000000000000000000000000000000000000010.2.3.4:", 0, DT_ERR_FAIL, "", 0},
        {"[0000:0000:0000:0000:0000:0000:0000:0000:0000000000]a", 0, DT_ERR_FAIL, "", 0},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(std::string(row.text) + (row.isLast != 0 ? " at the end" : ""));
        const char *cursor = row.text;
        uint8_t field[21];
        std::memset(field, 0xEE, sizeof field);
        EXPECT_EQ(SYSDT_Str2EvpnIpAddr(&cursor, field, row.isLast), row.code);
        if (row.code == DT_OK) {
            EXPECT_EQ(Hex(field, sizeof field), row.field);
        }
        if (row.code == DT_OK && row.isLast == 0) {
            EXPECT_EQ(cursor - row.text, static_cast<ptrdiff_t>(row.read));
        }
    }
}

TEST_F(EvpnText, ReadsAnEsiField)
{
    const std::pair<const char *, uint32_t> rows[] = {
        {"0100.0000.0000.0000.0001:rest", DT_OK},
        {"0001.0000.0000.0000.0001:", DT_OK},
        {"0200.0000.0000.0000.0001:", DT_ERR_FAIL},
        {"0000.0000.0000.0000.0000:", DT_ERR_FAIL},
        {"0100.0000.0000.0000.0001", DT_ERR_FAIL},
        {"0100.0000.0000.0000.00010:", DT_ERR_FAIL},
        {"0100.0000.0000.0000.001:", DT_ERR_FAIL},
        {":", DT_ERR_FAIL},
        {"", DT_ERR_FAIL},
    };
    for (const auto &[text, code] : rows) {
        SCOPED_TRACE(text);
        const char *cursor = text;
        uint8_t esi[10] = {};
        EXPECT_EQ(SYSDT_Str2EvpnEsi(&cursor, esi, 0), code);
        if (code == DT_OK) {
            EXPECT_EQ(cursor - text, 24);
            EXPECT_EQ(Hex(esi + 8, 2), "0001");
        }
    }
}

TEST_F(EvpnText, TheFieldReadersTestTheirPointers)
{
    const char *none = nullptr;
    const char *text = "128:[2001:db8::1]";
    uint8_t bytes[21] = {};
    uint32_t number = 0;
    EXPECT_EQ(SYSDT_Str2EvpnUintNum(nullptr, &number, 10, 0, 128, 0), DT_ERR_NULL_PTR);
    EXPECT_EQ(SYSDT_Str2EvpnUintNum(&none, &number, 10, 0, 128, 0), DT_ERR_NULL_PTR);
    EXPECT_EQ(SYSDT_Str2EvpnUintNum(&text, nullptr, 10, 0, 128, 0), DT_ERR_NULL_PTR);
    EXPECT_EQ(SYSDT_Str2EvpnIpAddr(nullptr, bytes, 0), DT_ERR_NULL_PTR);
    EXPECT_EQ(SYSDT_Str2EvpnIpAddr(&none, bytes, 0), DT_ERR_NULL_PTR);
    EXPECT_EQ(SYSDT_Str2EvpnIpAddr(&text, nullptr, 0), DT_ERR_NULL_PTR);
    EXPECT_EQ(SYSDT_Str2EvpnEsi(nullptr, bytes, 0), DT_ERR_NULL_PTR);
    EXPECT_EQ(SYSDT_Str2EvpnEsi(&none, bytes, 0), DT_ERR_NULL_PTR);
    EXPECT_EQ(SYSDT_Str2EvpnEsi(&text, nullptr, 0), DT_ERR_NULL_PTR);
    uint8_t length = 0;
    EXPECT_EQ(SYSDT_Str2EvpnIpv6(nullptr, bytes, &length), DT_ERR_NULL_PTR);
    EXPECT_EQ(SYSDT_Str2EvpnIpv6(text, nullptr, &length), DT_ERR_NULL_PTR);
    EXPECT_EQ(SYSDT_Str2EvpnIpv6(text, bytes, nullptr), DT_ERR_NULL_PTR);
}

TEST_F(EvpnText, ReadsTheIpv6Tail)
{
    const struct {
        const char *text;
        uint32_t code;
        uint8_t length;
    } rows[] = {
        {"128:[2001:db8::1]", DT_OK, 128},
        {"0:[2001:db8::1]", DT_OK, 0},
        {"064:[2001:db8::1]", DT_OK, 64},
        {"129:[2001:db8::1]", DT_ERR_FAIL, 0},
        {"0128:[2001:db8::1]", DT_ERR_FAIL, 0},
        {":[2001:db8::1]", DT_ERR_FAIL, 0},
        {"128[2001:db8::1]", DT_ERR_FAIL, 0},
        {"128:a[2001:db8::1]", DT_ERR_FAIL, 0},
        {"128:[2001:db8::1", DT_ERR_FAIL, 0},
        {"128:[2001:db8::1]a", DT_ERR_FAIL, 0},
        {"128:[2001:db8::1]:", DT_ERR_FAIL, 0},
        {"128:[]", DT_ERR_FAIL, 0},
        {"128:", DT_ERR_FAIL, 0},
        {"128", DT_ERR_FAIL, 0},
        {"", DT_ERR_FAIL, 0},
        {"ff:[2001:db8::1]", DT_ERR_FAIL, 0},
        {"128:[10.2.3.4]", DT_ERR_FAIL, 0},
        {"128:[0000:0000:0000:0000:0000:0000:0000:0000:0000000000]", DT_ERR_FAIL, 0},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.text);
        uint8_t ipv6[16] = {};
        uint8_t length = 0xEE;
        EXPECT_EQ(SYSDT_Str2EvpnIpv6(row.text, ipv6, &length), row.code);
        if (row.code == DT_OK) {
            EXPECT_EQ(length, row.length);
            EXPECT_EQ(Hex(ipv6, sizeof ipv6), kSome6);
        }
    }
}

// --------------------------------------------------------------------------------------------------------- the ESI

TEST_F(EvpnText, ReadsAnEsi)
{
    const struct {
        const char *text;
        const char *esi; // null: refused
    } rows[] = {
        {"0123.4567.89ab.cdef.0011", "0123456789abcdef0011"},
        {"0123.4567.89AB.CDEF.0011", "0123456789abcdef0011"},
        {"ff00.0000.0000.0000.0001", "ff000000000000000001"},
        {"ffff.ffff.ffff.ffff.fff0", "fffffffffffffffffff0"},
        {"0000.0000.0000.0000.0010", "00000000000000000010"},
        {"0123.4567.89ab.cdef.001 ", "0123456789abcdef0001"}, // 24 characters, then trimmed
        {"\t123.4567.89ab.cdef.0011", "0123456789abcdef0011"},
        {"0000.0000.0000.0000.0000", nullptr},
        {"ffff.ffff.ffff.ffff.ffff", nullptr},
        {"FFff.ffFF.ffff.FfFf.ffff", nullptr},
        {"0123.4567.89ab.cdef.001", nullptr},
        {"0123.4567.89ab.cdef.00110", nullptr},
        {" 0123.4567.89ab.cdef.0011", nullptr}, // 25 before it is trimmed
        {"01234.567.89ab.cdef.0011", nullptr},
        {"0123.4567.89ab.cdef.001.", nullptr},
        {".0123.4567.89ab.cdef.001", nullptr},
        {"0123..4567.89ab.cdef.001", nullptr},
        {"012.345.678.9ab.cdef.001", nullptr}, // six groups
        {"0123.4567.89ab.cdef.001g", nullptr},
        {"0123:4567:89ab:cdef:0011", nullptr},
        {"0123.4567.89ab.cdef 0011", nullptr},
        {"0123456789abcdef00112233", nullptr},
        {"", nullptr},
        {"                        ", nullptr},
    };
    for (auto *read : {SYSDT_Str2EsiBas, SYSDT_Str2EsiForAd}) {
        for (const auto &row : rows) {
            SCOPED_TRACE(row.text);
            uint8_t esi[10];
            std::memset(esi, 0xEE, sizeof esi);
            EXPECT_EQ(read(row.text, esi, 1, 1), row.esi == nullptr ? DT_ERR_FAIL : DT_OK);
            EXPECT_EQ(Hex(esi, sizeof esi), row.esi == nullptr ? "eeeeeeeeeeeeeeeeeeee" : row.esi);
        }
        uint8_t esi[10];
        EXPECT_EQ(read(nullptr, esi, 1, 1), DT_ERR_NULL_PTR);
        EXPECT_EQ(read("0123.4567.89ab.cdef.0011", nullptr, 1, 1), DT_ERR_NULL_PTR);
    }
}

TEST_F(EvpnText, ChecksTheEsiType)
{
    for (unsigned first = 0; first < 256; ++first) {
        for (const char *format : {"%02x23.4567.89ab.cdef.0011", "%02X23.4567.89ab.cdef.0011"}) {
            char text[32];
            std::snprintf(text, sizeof text, format, first);
            SCOPED_TRACE(text);
            uint8_t esi[10];
            EXPECT_EQ(SYSDT_Str2EsiBas(text, esi, 1, 1), DT_OK);
            EXPECT_EQ(SYSDT_Str2EsiForAd(text, esi, 1, 1), DT_OK);
            EXPECT_EQ(SYSDT_Str2EsiBas(text, esi, 1, 0), first <= 1 ? DT_OK : DT_ERR_FAIL);
            EXPECT_EQ(SYSDT_Str2EsiBas(text, esi, 0, 0), first == 0 ? DT_OK : DT_ERR_FAIL);
            EXPECT_EQ(SYSDT_Str2EsiForAd(text, esi, 1, 0), first <= 5 ? DT_OK : DT_ERR_FAIL);
            EXPECT_EQ(SYSDT_Str2EsiForAd(text, esi, 0, 0), first <= 5 ? DT_OK : DT_ERR_FAIL);
            EXPECT_EQ(SYSDT_Str2EsiBas(text, esi, 1, 2), first <= 1 ? DT_OK : DT_ERR_FAIL);
            EXPECT_EQ(SYSDT_Str2EsiForAd(text, esi, 1, 2), first <= 5 ? DT_OK : DT_ERR_FAIL);
        }
    }
    // Digits elsewhere are free.
    uint8_t esi[10];
    EXPECT_EQ(SYSDT_Str2EsiBas("00ff.ffff.ffff.ffff.ffff", esi, 1, 0), DT_OK);
    EXPECT_EQ(SYSDT_Str2EsiForAd("05ff.ffff.ffff.ffff.ffff", esi, 1, 0), DT_OK);
}

// --------------------------------------------------------------------------------------------------------- refusals

constexpr std::string_view kAd = "Ethernet auto-discovery";
constexpr std::string_view kMacIp = "MAC/IP advertisement";
constexpr std::string_view kInclusive = "inclusive multicast Ethernet tag";
constexpr std::string_view kSegment = "Ethernet segment";
constexpr std::string_view kPrefix = "IP prefix";
constexpr std::string_view kSmet = "selective multicast Ethernet tag";
constexpr std::string_view kJoin = "multicast membership report synch";
constexpr std::string_view kLeave = "multicast leave synch";
constexpr std::string_view kTag = "the Ethernet tag";
constexpr std::string_view kAllForms =
    "ESI:tag tag:maclen:MAC:iplen:IP tag:iplen:IP ESI ESI:iplen:IP tag:IP:len tag:len:source:len:group:len:originator "
    "ESI:tag:len:source:len:group:len:originator ESI:tag:len:source:len:group:len:originator:number";

// 184 characters, all of them hexadecimal digits.
constexpr std::string_view kLong = "0123456789abcdef0123456789abcdef0123456789abcdef0123456789abcdef"
                                   "0123456789abcdef0123456789abcdef0123456789abcdef0123456789abcdef"
                                   "0123456789abcdef0123456789abcdef0123456789abcdef01234567";

// clang-format off
constexpr Refused kReasons[] = {
    // text                                                     rule                 at len  limit       what, part
    {"",                                                        "empty",              0,  0},
    {" \t",                                                     "empty",              2,  0},
    {kLong,                                                     "too-long",           0, 184, 183},
    {"10:32: 1.1.1.1",                                          "blank",              6,  1, 0, "", kInclusive},
    {"10:32:g.1.1.1",                                           "ipv4",               6,  1, 0, "the originator", kInclusive},
    {"10:[2001::]x64",                                          "character",         11,  1},
    {"01g0.0000.0000.0000.0001:7",                              "character",          2,  1, 0, "", kAd},
    {"10:32",                                                   "route",              0,  5, 0, "", "", 0, 2, kAllForms},
    {" 1.1.1.1",                                                "route",              1,  7, 0, "", "", 0, 2, kAllForms},
    {"0100.0000.0000.0000.001",                                 "esi-group",         23,  0, 0, "", kSegment},
    {"12[]",                                                    "digit",              2,  1, 0, "", kPrefix},
    {"1:32:1.1.1.1:32:225.1.1.1:32",                            "colon",             28,  0, 0, "the originator length", kSmet},
    {"1:48:00e0-fc12-3456:32",                                  "colon",             22,  0, 0, "the IP length", kMacIp},
    {":32:1.1.1.1",                                             "empty",              0,  0, 0, kTag, kInclusive},
    {"00000000001:32:1.1.1.1",                                  "too-long",           0, 11, 10, kTag, kInclusive},
    {"1a:32:1.1.1.1",                                           "digit",              1,  1, 0, "", kInclusive},
    {"4294967296:32:1.1.1.1",                                   "too-large",          0, 10, 4294967295, kTag, kInclusive},
    {"0100.0000.0000.0000.0001:",                               "empty",             25,  0, 0, kTag, kAd},
    {"0100.0000.0000.0000.0001:4294967296",                     "too-large",         25, 10, 4294967295, kTag, kAd},
    {"ffff.ffff.ffff.ffff.ffff:7",                              "reserved-esi",       0, 24, 0, "", kAd},
    {"0100.0000.0000.0000.00011:7",                             "esi-group",         24,  1, 0, "", kAd},
    {"0100.0000.0000.0000.00:7",                                "esi-group",         22,  0, 0, "", kAd},
    {"1:256:00e0-fc12-3456:32:10.1.1.1",                        "too-large",          2,  3, 255, "the MAC length", kMacIp},
    {"1:48:00e0--fc12:32:10.1.1.1",                             "mac",               10,  1, 0, "the MAC address", kMacIp},
    {"1:48:00e0-fc12-34567:32:10.1.1.1",                        "mac",               19,  1, 0, "the MAC address", kMacIp},
    {"1:48:00e0fc123456:32:10.1.1.1",                           "mac",                9,  1, 0, "the MAC address", kMacIp},
    {"1:48:00e0-fc12-3456:32:10.1.1.256",                       "too-large",         30,  3, 255, "an octet of the IP address", kMacIp},
    {"1:48:00e0-fc12-3456:129:[2001::1]",                       "too-large",         20,  3, 128, "the IP length", kMacIp},
    {"10:20::1]:[64",                                           "opening-bracket",    6,  1, 0, "the originator", kInclusive},
    {"10:128:[2001::1]1",                                       "behind",            16,  1, 0, "the originator", kInclusive},
    {"10:128:[2001:::1]",                                       "ipv6",              14,  1, 0, "the originator", kInclusive},
    {"10:128:[]",                                               "empty",              8,  0, 0, "the originator", kInclusive},
    {"  10:32:1.1.1.256",                                       "too-large",         14,  3, 255, "an octet of the originator", kInclusive},
    {"10:32:1.1.1.01",                                          "leading-zero",      12,  2, 0, "an octet of the originator", kInclusive},
    {"0100.0000.0000.0000.0001:32:1.1.1.1:5",                   "behind",            35,  2, 0, "the originator", kSegment},
    {"10:[[2001::1",                                            "ipv6",               4,  1, 0, "the prefix", kPrefix},
    {"10:[2001::1",                                             "closing-bracket",   11,  0, 0, "the prefix", kPrefix},
    {"10:[2001::]",                                             "nothing-behind",    11,  0, 0, "the prefix", kPrefix},
    {"10:[2001::]:256",                                         "too-large",         12,  3, 255, "the prefix length", kPrefix},
    {"10:1.1.1.0:x",                                            "digit",             11,  1, 0, "", kPrefix},
    {"10:1.1.1.0:",                                             "empty",             11,  0, 0, "the prefix length", kPrefix},
    {"10:1.1.1.256:24",                                         "too-large",          9,  3, 255, "an octet of the prefix", kPrefix},
    {"10:1.1.1:24",                                             "ipv4",               8,  0, 0, "the prefix", kPrefix},
    {"0000.0000.0000.0000.0000",                                "zero-esi",           0, 24, 0, "", kSegment},
    {"0100.0000.0000.0000.001:32:1.1.1.1",                      "esi-group",         23,  0, 0, "", kSegment},
    {"0100.0000.0000.0001:32:1.1.1.1",                          "esi-groups",        19,  0, 5, "", kSegment},
    {"01000.000.0000.0000.0001:32:1.1.1.1",                     "esi-group",          4,  1, 0, "", kSegment},
    {"0100..00000000.0000.0000:32:1.1.1.1",                     "esi-group",          5,  1, 0, "", kSegment},
    {"0100.0000.0000.0000.0001:256:1.1.1.1",                    "too-large",         25,  3, 255, "the originator length", kSegment},
    {"1:0:[::]:32:225.1.1.1:32:2.2.2.2",                        "colon-behind-ipv6",  8,  1, 0, "", kSmet},
    {"1:0:1.1.1.1:0:225.1.1.1:32:2.2.2.2",                      "too-small",         12,  1, 1, "the group length", kSmet},
    {"1:0:1.1.1.1:129:225.1.1.1:32:2.2.2.2",                    "too-large",         12,  3, 128, "the group length", kSmet},
    {"1:0:1.1.1.1:32:225.1.1:32:2.2.2.2",                       "ipv4",              22,  0, 0, "the group", kSmet},
    {"1:0:1.1.1.1:32:225.1.1.1:32:",                            "empty",             28,  0, 0, "the originator", kSmet},
    {"0100.0000.0000.000.00.00:1:32:1.1.1.1:32:225.1.1.1:32:2.2.2.2",
                                                                "esi-group",         18,  1, 0, "", kJoin},
    {"0100.0000.0000.0000.0001.00:1:32:1.1.1.1:32:225.1.1.1:32:2.2.2.2",
                                                                "esi-groups",        24,  1, 5, "", kJoin},
    {"0200.0000.0000.0000.0001:1:32:1.1.1.1:32:225.1.1.1:32:2.2.2.2",
                                                                "esi-type",           0,  2, 1, "", kJoin},
    {"0100.0000.0000.0000.0001:1:32:1.1.1.1:32:225.1.1.1:32:2.2.2.2:4294967296",
                                                                "too-large",         62, 10, 4294967295, "the number of the leave", kLeave},
    {"10:32:1.1.1.1",                                           "mode",               0,  0, 4, "", "", 0, 4},
};
// clang-format on

TEST_F(EvpnText, Reasons)
{
    CheckRefusals("EVNPREFIX", kReasons);
    constexpr std::string_view kGood[] = {"0000.0000.0000.0000.0000:7", "10:32:1.1.1.1", " 10:1.1.1.0:24\t",
                                          "0100.0000.0000.0000.0001", "1:48:00e0-fc12-3456:128:[2001::1]"};
    CheckAccepted("EVNPREFIX", kGood);
}

} // namespace
} // namespace bgp::test
