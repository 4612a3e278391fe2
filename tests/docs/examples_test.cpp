// Every example of the reference pages is true, and every operation of every type and sub-type has one.
#include "docs/examples.h"

namespace bgp::test {
namespace {

class Examples : public PlugIn {
protected:
    void SetUp() override
    {
        PlugIn::SetUp();
        // The host of name-index-types.md.
        for (const DataTypeDescriptor &row : g_astBgpDataTypeNameIndexDefineTbl) {
            host::SetObjectName(row.TypeId, 7, "core");
        }
    }

    void TearDown() override
    {
        host::ForgetObjectNames();
        PlugIn::TearDown();
    }
};

// The operations that the plug-in's rows have and no page has an example of.
Operations Uncovered(const std::vector<Page> &pages)
{
    Operations uncovered = Demanded(AllSubjects());
    for (const Page &page : pages) {
        for (const std::string &operation : RunExamples(page).covered) {
            uncovered.erase(operation);
        }
    }
    return uncovered;
}

TEST_F(Examples, AreTrue)
{
    size_t rows = 0;
    for (const Page &page : ReferencePages()) {
        const Report report = RunExamples(page);
        for (const std::string &fault : report.faults) {
            ADD_FAILURE() << fault;
        }
        rows += report.rows;
    }
    std::printf("%zu rows of examples, %zu operations demand one\n", rows, Demanded(AllSubjects()).size());
}

TEST_F(Examples, CoverEveryOperation)
{
    EXPECT_EQ(AllSubjects().size(), host::Rows().size() + BOL_PREFIX_SUBTYPES);
    EXPECT_EQ(Bgp_TypeAt(static_cast<uint32_t>(host::Rows().size())), nullptr);
    EXPECT_NE(Bgp_TypeAt(static_cast<uint32_t>(host::Rows().size() - 1)), nullptr);
    EXPECT_EQ(Uncovered(ReferencePages()), Operations{});
}

TEST_F(Examples, AMissingPageIsFound)
{
    std::vector<Page> pages = ReferencePages();
    std::erase_if(pages, [](const Page &page) { return page.name == "BOLPREFIX-IPV4.md" || page.name == "BOLRD.md"; });
    EXPECT_EQ(Uncovered(pages),
              (Operations{"BOLPREFIX IPV4 FormatIn", "BOLPREFIX IPV4 FormatOut", "BOLPREFIX IPV4 Check",
                          "BOLPREFIX IPV4 Help", "BOLPREFIX IPV4 Compare", "BOLPREFIX IPV4 LuaSet",
                          "BOLPREFIX IPV4 LuaGet", "BOLPREFIX IPV4 Reader", "BOLRD FormatIn", "BOLRD FormatOut",
                          "BOLRD Check", "BOLRD Help", "BOLRD Compare", "BOLRD LuaSet", "BOLRD LuaGet"}));
}

TEST_F(Examples, AListedTypeIsAskedByNameAndId)
{
    const std::vector<Subject> subjects =
        SubjectsOf(ReadMarkdown("index.md", "## The types\n\n| name | type id |\n|---|---|\n| FLOWROUTEID | 24603 |\n"
                                            "| ALIASID2NAME | 24683 |\n| NOTYPE | 1 |\n"));
    ASSERT_EQ(subjects.size(), 1u);
    EXPECT_EQ(subjects[0].name, "FLOWROUTEID");
}

// The table that tells which page a sub-type has is also the order in which texts are tried.
TEST_F(Examples, SubTypesAreListedAsTheyAreTried)
{
    const Page page = ReadMarkdown("BOLPREFIX.md", ReadFile(kPages / "BOLPREFIX.md"));
    const Section *section = FindSection(page, "Sub-types");
    ASSERT_NE(section, nullptr);
    const std::vector<TableRow> &rows = section->tables.at(0).rows;
    ASSERT_EQ(rows.size(), size_t{BOL_PREFIX_SUBTYPES});
    for (uint32_t i = 0; i < BOL_PREFIX_SUBTYPES; ++i) {
        const BolPrefixSubtypeEntry &entry = g_astBOL_PREFIX_ProcTable[i];
        EXPECT_EQ(rows[i].cells.at(0), std::to_string(entry.SubType));
        EXPECT_EQ(Plain(rows[i].cells.at(1)), entry.Name);
        EXPECT_EQ(rows[i].cells.at(3) == "no", entry.FormatIn == nullptr) << entry.Name;
    }
}

// ------------------------------------------------------------------------------------------- examples that must fail

constexpr const char *kGood = R"(# ASNUM: AS numbers

## Stored form

8 bytes. Host byte order.

## Examples

| Text | Stored | Prints |
|---|---|---|
| `1.0` | `00000100 01000000` | `1.0` |
| `100` | `6400...` | `100` |
| `0` | refused | |
| | `c800 ...` | `200` |

| Operation | Given | Answer |
|---|---|---|
| FormatIn, mode 3 | `7` | `DT_ERR_FAIL` |
| FormatOut, mode 3 | `65 00*7` | `65 00*7` |
| Check | `6600 ...` | `DT_OK` |
| Help | | `STRING<1-11>` |
| Compare | `"103"`, `"203"` | `-1` |
| LuaSet | `6800 ...` | `{asNumValue=104, asType=0}` |
| LuaGet | `{asNumValue=105, asType=0}` | `6900...` |
| Endian | `6a00 ...` | `0000006a 00*4` |
)";

Report RunMarkdown(const std::string &markdown, const std::string &name = "ASNUM.md")
{
    return RunExamples(ReadMarkdown(name, markdown));
}

// `page` with a piece that it holds replaced.
std::string Edited(std::string page, const std::string &piece, const std::string &by)
{
    const size_t at = page.find(piece);
    EXPECT_NE(at, std::string::npos) << "nothing to edit: " << piece;
    return at == std::string::npos ? page : page.replace(at, piece.size(), by);
}

struct Canary {
    const char *piece, *by, *fault; // the fault is one of those found
};

void ExpectFound(const std::string &good, const std::string &name, const std::vector<Canary> &canaries)
{
    EXPECT_EQ(RunMarkdown(good, name).faults, std::vector<std::string>());
    for (const Canary &canary : canaries) {
        const std::vector<std::string> faults = RunMarkdown(Edited(good, canary.piece, canary.by), name).faults;
        EXPECT_TRUE(
            std::any_of(faults.begin(), faults.end(),
                        [&canary](const std::string &fault) { return fault.find(canary.fault) != std::string::npos; }))
            << canary.piece << " -> " << canary.by << ": " << ::testing::PrintToString(faults);
    }
}

TEST_F(Examples, AFalseAnswerIsFound)
{
    ExpectFound(kGood, "ASNUM.md",
                {
                    {"`00000100 01000000`", "`00000100 00000000`", "stores 0000010001000000"},
                    {"`6400...`", "`6500...`", "stores 6400000000000000"},
                    {"| `1.0` |\n", "| `65536` |\n", "prints 1.0"},
                    {"| `200` |", "| `201` |", "prints 200"},
                    {"| `0` | refused", "| `1` | refused", "accepts 1"},
                    {"| `100` | `6400...`", "| `1OO` | `6400...`", "refuses 1OO"},
                    {"| `7` | `DT_ERR_FAIL`", "| `7` | `DT_OK`", "FormatIn answers DT_ERR_FAIL"},
                    {"FormatIn, mode 3", "FormatIn, mode 4", "FormatIn answers DT_ERR_MODE_UNSUPPORTED"},
                    {"| `65 00*7` |\n", "| `65 00*8` |\n", "FormatOut answers 6500000000000000"},
                    {"| `65 00*7` |\n", "| \"101\" |\n", "FormatOut answers 6500000000000000"},
                    {"FormatOut, mode 3", "FormatOut", "FormatOut answers \"101\""},
                    {"`DT_OK`", "`DT_ERR_LENGTH`", "Check answers DT_OK"},
                    {"`DT_OK`", "fine", "Check answers DT_OK"},
                    {"`6600 ...`", "`6600`", "Check answers DT_ERR_LENGTH"},
                    {"STRING<1-11>", "STRING<1-12>", "Help answers STRING<1-11>"},
                    {"`6900...`", "`...`", "LuaGet answers 6900000000000000"},
                    {"`6400...`", "`...`", "stores 6400000000000000"},
                    {"| Help |", "| Help, mode 2 |", "Help answers nothing"},
                    {"`-1`", "`1`", "Compare answers -1"},
                    {"`-1`", "`0`", "Compare answers -1"},
                    {"asNumValue=104", "asNumValue=105", "LuaSet answers {asNumValue=104, asType=0}"},
                    {"{asNumValue=105, asType=0}", "{asNumValue=105}", "LuaGet answers DT_ERR_INVALID_PARAM"},
                    {"{asNumValue=105, asType=0}", "{asNumValue=106, asType=0}", "LuaGet answers 6a00000000000000"},
                    {"{asNumValue=105, asType=0}", "{asNumValue=", "LuaGet answers -1"},
                    {"`0000006a 00*4`", "`6a000000 00*4`", "Endian answers 0000006a00000000"},
                });
}

TEST_F(Examples, WhatCannotBeReadIsFound)
{
    ExpectFound(kGood, "ASNUM.md",
                {
                    {"| Check |", "| Chek |", "no operation: Chek"},
                    {"| Check |", "| check |", "no operation: check"},
                    {"| Check | `6600 ...` |", "| Check | `6600 ...` | |", "not as many cells"},
                    {"| `100` | `6400...` | `100` |", "| `100` | `6400...` |", "not as many cells"},
                    {"`6600 ...`", "`66OO ...`", "Check cannot be given `66OO ...`"},
                    {"`6600 ...`", "`660 ...`", "Check cannot be given"},
                    {"`6600 ...`", "6600 ...", "Check cannot be given"},
                    {"`6600 ...`", "", "Check cannot be given"},
                    {"\"203\"", "\"2O3\"", "Compare cannot be given"},
                    {"`\"103\"`, `\"203\"`", "`\"103\"`", "Compare cannot be given"},
                    {"`\"203\"`", "`cb`", "Compare cannot be given"},
                    {"| Help | |", "| Help | `1`, `2` |", "Help cannot be given"},
                    {"`6400...`", "`64OO...`", "stores 6400000000000000"},
                    {"`c800 ...`", "`c8OO ...`", "no value: c8OO ..."},
                    {"| Text | Stored |", "| Text | Bytes |", "no table of examples"},
                    {"| Operation |", "| Operations |", "no table of examples"},
                });
}

TEST_F(Examples, WhatHasNoExampleIsFound)
{
    ExpectFound(kGood, "ASNUM.md",
                {
                    {"## Examples", "## Example", "no section \"Examples\""},
                    {"## Examples", "## Example", "no example of ASNUM FormatIn"},
                    {"## Examples", "## Examples of something else", "no example of ASNUM Check"},
                    {"## Examples", "# Examples", "no section \"Examples\""},
                    {"| Check | `6600 ...` | `DT_OK` |\n", "", "no example of ASNUM Check"},
                    {"| Help | | `STRING<1-11>` |\n", "", "no example of ASNUM Help"},
                    {"| Compare | `\"103\"`, `\"203\"` | `-1` |\n", "", "no example of ASNUM Compare"},
                    {"| LuaSet | `6800 ...` | `{asNumValue=104, asType=0}` |\n", "", "no example of ASNUM LuaSet"},
                    {"| LuaGet | `{asNumValue=105, asType=0}` | `6900...` |\n", "", "no example of ASNUM LuaGet"},
                    {"| Endian | `6a00 ...` | `0000006a 00*4` |\n", "", "no example of ASNUM Endian"},
                    {"| Text | Stored | Prints |\n|---|---|---|\n| `1.0` | `00000100 01000000` | `1.0` |\n"
                     "| `100` | `6400...` | `100` |\n| `0` | refused | |\n| | `c800 ...` | `200` |\n\n"
                     "| Operation | Given | Answer |\n|---|---|---|\n| FormatIn, mode 3 | `7` | `DT_ERR_FAIL` |\n"
                     "| FormatOut, mode 3 | `65 00*7` | `65 00*7` |\n",
                     "| Operation | Given | Answer |\n|---|---|---|\n", "no example of ASNUM FormatOut"},
                });
    EXPECT_FALSE(RunMarkdown(kGood, "ASNUMBER.md").faults.empty()); // the page of no type
    EXPECT_FALSE(RunMarkdown("", "ASNUM.md").faults.empty());
    // A text that is refused is no example of FormatIn, a value that does not print none of FormatOut.
    EXPECT_EQ(RunMarkdown("## Examples\n\n| Text | Stored |\n|---|---|\n| `0` | refused |\n\n"
                          "| Operation | Given | Answer |\n|---|---|---|\n| FormatIn | `0` | `DT_ERR_INVALID_VALUE` |\n"
                          "| FormatOut, mode 0 | `64 00*7` | `DT_ERR_FAIL` |\n")
                  .covered,
              Operations{});
}

constexpr const char *kGoodSubType = R"(# BOLPREFIX sub-type 0

## Stored form

89 bytes. Host byte order.

## Examples

| Text | Stored | Prints |
|---|---|---|
| `10.1.2.3` | `00000000 0302010a 00*81` | `10.1.2.3` |
| `10.1.2` | refused | |

| Operation | Given | Answer |
|---|---|---|
| Check | `00*89` | `DT_OK` |
| Help | `10.1` | `X.X.X.X` |
| Compare | `"10.1.2.3"`, `"10.1.2.4"` | `-1` |
| LuaGet | `{bolPrefix=1, bolType=0}` | `00000000 01000000 00*81` |
| Lua | `00000000 02000000 ...` | `{bolPrefix=2, bolType=0}` |
)";

TEST_F(Examples, OfASubTypeAreItsOwn)
{
    ExpectFound(kGoodSubType, "BOLPREFIX-IPV4.md",
                {
                    {"| `10.1.2` |", "| `10` |", "BOLPREFIX accepts 10"},
                    {"| `10.1.2.3` | `00000000 0302010a 00*81`", "| `10.1.2` | `00000000 0302010a 00*81`", "refuses"},
                    {"`10.1` |", "`10:` |", "BOLPREFIX IPV4 Help answers"},
                    {"| Lua |", "| LuaSet |", "no example of BOLPREFIX IPV4 Reader"},
                    {"| Lua |", "| Reader |", "BOLPREFIX IPV4 Reader answers"},
                    {"{bolPrefix=2, bolType=0}", "{bolPrefix=3, bolType=0}", "LuaSet answers {bolPrefix=2, bolType=0}"},
                    {"{bolPrefix=2, bolType=0}", "{bolPrefix=3, bolType=0}", "Reader answers 0000000003000000"},
                    {"| Check |", "| Endian |", "nothing here has Endian"},
                    {"`10.1.2.3` |\n", "`10.1.2.4` |\n", "BOLPREFIX IPV4 prints 10.1.2.3"},
                });
}

} // namespace
} // namespace bgp::test
