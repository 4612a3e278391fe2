// The sections "Stored form" of the reference pages say what Bgp_DescribeValue() says.
#include "docs/stored_form.h"

namespace bgp::test {
namespace {

class StoredForms : public PlugIn {};

TEST_F(StoredForms, AreThoseOfThePlugIn)
{
    size_t fields = 0;
    std::set<std::string> held;
    for (const Page &page : ReferencePages()) {
        const Form form = StoredForm(page);
        for (const std::string &fault : form.faults) {
            ADD_FAILURE() << fault;
        }
        for (const Subject &subject : SubjectsOf(page)) {
            held.insert(subject.name);
        }
        fields += form.fields;
    }
    for (const Subject &subject : AllSubjects()) {
        EXPECT_TRUE(held.contains(subject.name)) << "no page tells of " << subject.name;
    }
    EXPECT_GT(fields, 0u);
    std::printf("%zu fields of %zu types and sub-types\n", fields, held.size());
}

// --------------------------------------------------------------------------------------------- pages that must fail

std::vector<std::string> FaultsOf(const std::string &name, const std::string &piece, const std::string &by)
{
    std::string page = ReadFile(kPages / name);
    const size_t at = page.find(piece);
    EXPECT_NE(at, std::string::npos) << name << " has nothing to edit: " << piece;
    return StoredForm(ReadMarkdown(name, at == std::string::npos ? page : page.replace(at, piece.size(), by))).faults;
}

TEST_F(StoredForms, AFalseOneIsFound)
{
    const struct {
        const char *page, *piece, *by, *fault;
    } canaries[] = {
        {"ASNUM.md", "## Stored form", "## Stored", "no table in a section"},
        {"ASNUM.md", "8 bytes.", "9 bytes.", "the length is not 9"},
        {"ASNUM.md", "8 bytes.", "8 bytes,", "does not stand in front"},
        {"ASNUM.md", "8 bytes.", "8 bytes; the registered length is 4.", "registered length of ASNUM is not 4"},
        {"EVNPREFIX.md", "; the registered length is 85.", ".", "registered length of EVNPREFIX is not 89"},
        {"ASNUM_ENHANCE.md", "1280 bytes.", "1281 bytes.", "the length is not 1281"},
        {"ASNUM_ENHANCE.md", "1280 bytes.", "1285 bytes.", "registered length of ASNUM_ENHANCE is not 1285"},
        {"ASNUM_ENHANCE.md", "bytes of an entry", "bytes", "the length is not 1280"},
        {"ASNUM.md", "| 4-7 |", "| 4-6 |", "asType stands at 4, 4 bytes"},
        {"ASNUM.md", "| 4-7 |", "| 3-6 |", "asType stands at 4, 4 bytes"},
        {"ASNUM.md", "| 4-7 |", "| behind |", "cannot be read"},
        {"ASNUM.md", "| notation | u32 |", "| notation | u16 |", "asType is not of width u16"},
        {"ASNUM.md", "| notation | u32 |", "| notation | 4 |", "asType is not of width 4"},
        {"ASNUM.md", "| `asType` |", "| `asKind` |", "no field asKind"},
        {"ASNUM.md", "| `asType` |", "| |", "does not name asType"},
        {"ASNUM.md", "| `asType` |", "| `asType` | |", "not as many cells"},
        {"ASNUM.md", "| bytes |", "| where |", "no column of bytes: where"},
        {"RTPRD.md", "`rdValue[3..8]`", "`rdValue[3..7]`", "rdValue stands at 2, 5 bytes"},
        {"RTPRD.md", "`rdValue[1..2]`", "`rdValue[2..3]`", "rdValue stands at 1, 2 bytes"},
        {"RTPRD.md", "| 6 | network |", "| 6 | host |", "rdValue is not in this order"},
        {"VRFRD.md", "| u32 | host |", "| u32 | network |", "RdType is not in this order"},
        {"L2VPNPREFIX.md", "| 8-88 |", "| 9-88 |", "byte 8 is not told"},
        {"L2VPNPREFIX.md", "| 8-88 |", "| 7-88 |", "does not name bolLabelOffSet"},
        {"L2VPNPREFIX.md", "| 8-88 |", "| 8-87 |", "the last byte told is 87"},
        {"CVRFNAME.md", "char[32]", "32", "name is not of width 32"},
        {"BOLPREFIX.md", "`bolType`", "`bolKind`", "no field bolKind"},
        {"BOLPREFIX.md", "| 4-88 |", "| 3-88 |", "does not name bolType"},
        {"EVNPREFIX.md", "| 8 | field |", "| 9 | field |", "there is no 9"},
        {"EVNPREFIX.md", "| 8 | field |", "| 9 | field |", "no column tells of 8"},
        {"EVNPREFIX.md", "| | 9 | | | | | | | `macLength`", "| | 10 | | | | | | | `macLength`",
         "macLength stands at 9"},
        {"EVNPREFIX.md", "| 85-88 | `leaveNumber`", "| | `leaveNumber`",
         "EVNPREFIX.md, 8: not all of leaveNumber is told"},
        {"EVNPREFIX.md", "| 17-37 | | | | | | | `ip` | address |", "| 17-37 | | | | | | | `ip` | 21 |",
         "not of width 21"},
        {"BOLPREFIX-NG-MVPN.md", "| 13 | field |", "| 12 | field |", "there is no 12"},
        {"BOLPREFIX-NG-MVPN.md", "| 12-32 | | | | | originator", "| | | | | | originator", "bolNgPrefixOriIP is told"},
        {"BGPLSPREFIX.md", "| 4 IPV6-PREFIX |", "| 7 IPV6-PREFIX |", "no column tells of 4"},
        {"BGPLSPREFIX.md", "`ipv6TeRouterId` | IPv6", "`ipv6TeRouterId` | dotted",
         "ipv6TeRouterId is not of width dotted"},
        {"name-index-types.md", "| index |", "| `index` |", "no field index"},
    };
    for (const auto &canary : canaries) {
        const std::vector<std::string> faults = FaultsOf(canary.page, canary.piece, canary.by);
        EXPECT_TRUE(
            std::any_of(faults.begin(), faults.end(),
                        [&canary](const std::string &fault) { return fault.find(canary.fault) != std::string::npos; }))
            << canary.page << ", " << canary.piece << " -> " << canary.by << ": " << ::testing::PrintToString(faults);
    }
}

} // namespace
} // namespace bgp::test
