// BOLRD: a sub-type word and a route distinguisher. The type hands every operation to the one row of its table, the
// route distinguisher of VPLS instances, and turns any answer but 0 into DT_ERR_INVALID_VALUE.
#include "support/notation_refusals.h"
#include "support/notation_texts.h"
#include "support/type_case.h"

#include <cstring>

namespace {

using namespace bgp::test;

class BolRd : public PlugIn {};

constexpr uint8_t kServedModes[] = {0, 1, 2, 3, 5, 6};
constexpr uint8_t kOtherModes[] = {0, 1, 3, 5, 6};                 // where an all-zero value has no text of its own
constexpr const char *kValue = "00000000000000640000000101000000"; // 100:1

DataTypeDescriptor VplsRd()
{
    return Row(g_astBOL_RD_ProcTable[0]);
}

const std::vector<TextCase> kAccepted = {
    {"100:1", "00000000 0000 0064 00000001 01000000"},
    {"0:1", "00000000 0000 0000 00000001 01000000"},
    {"1:0", "00000000 0000 0001 00000000 01000000"},
    {"65535:4294967295", "00000000 0000 ffff ffffffff 01000000"},
    {"65536:0", "00000000 0002 00010000 0000 02000000"},
    {"65536:1", "00000000 0002 00010000 0001 02000000"},
    {"4294967295:65535", "00000000 0002 ffffffff ffff 02000000"},
    {"1.2:3", "00000000 0002 0001 0002 0003 03000000"},
    {"0.100:1", "00000000 0002 0000 0064 0001 03000000"},
    {"65535.65535:65535", "00000000 0002 ffff ffff ffff 03000000"},
    {"1.2.3.4:65535", "00000000 0001 01020304 ffff 00000000"},
    {"0.0.0.0:0", "00000000 0001 00000000 0000 00000000"},
    {"255.255.255.255:65535", "00000000 0001 ffffffff ffff 00000000"},
    {"0000000000000000100:1", "00000000 0000 0064 00000001 01000000", "100:1"},
    {" \t 100:1 \t", "00000000 0000 0064 00000001 01000000", "100:1"},
};

const std::vector<std::string> kAscending = {"00000000000000000000000000000000", "00000000000000000000000000000001",
                                             "00000000000000000000000001000000", "00000000000000640000000101000000",
                                             "000000000000ffff0000000000000000", "00000000000200000000000000000000",
                                             "00000001000000000000000000000000", "01000000000000000000000000000000",
                                             "7fffffffffffffffffffffffffffffff", "ffffffffffffffffffffffffffffffff"};

std::vector<LuaCase> LuaTables(uint32_t refusal)
{
    return {
        {"{RdType=0, RdValue={RdType=1, RdValue={0,0,0,100,0,0,0,1}}}", DT_OK, "00000000000000640000000101000000", 0},
        {"{RdType=258, RdValue={RdType=259, RdValue={0,0,0,100,0,0,0,1}}}", DT_OK, "02000000000000640000000103000000",
         0},
        {"{RdType=256, RdValue={RdType=4294967295, RdValue={256,257,511,-1,1,2,65535,65536,5}}}", DT_OK,
         "000000000001ffff0102ff00ff000000", 0},
        // no table at one of the three levels
        {"nil", refusal, Unwritten(16), kAnyGrowth},
        {"5", refusal, Unwritten(16), kAnyGrowth},
        {"'100:1'", refusal, Unwritten(16), kAnyGrowth},
        {"{RdType=0}", refusal, Unwritten(16), kAnyGrowth},
        {"{RdType=0, RdValue=5}", refusal, Unwritten(16), kAnyGrowth},
        {"{RdType=0, RdValue='x'}", refusal, Unwritten(16), kAnyGrowth},
        {"{RdType=0, RdValue={}}", refusal, Unwritten(16), kAnyGrowth},
        {"{RdType=0, RdValue={RdType=1}}", refusal, Unwritten(16), kAnyGrowth},
        {"{RdType=0, RdValue={RdType=1, RdValue=5}}", refusal, Unwritten(16), kAnyGrowth},
        {"{RdType=0, RdValue={RdType=1, RdValue='x'}}", refusal, Unwritten(16), kAnyGrowth},
        {"{RdType=0, RdValue={0,0,0,100,0,0,0,1}}", refusal, Unwritten(16), kAnyGrowth}, // one level short
        // too few items
        {"{RdType=0, RdValue={RdType=1, RdValue={}}}", refusal, Unwritten(16), kAnyGrowth},
        {"{RdType=0, RdValue={RdType=1, RdValue={1,2,3,4,5,6,7}}}", refusal, "eeeeeeee01020304050607eeeeeeeeee",
         kAnyGrowth},
        // the inner notation, then the outer sub-type
        {"{RdType=0, RdValue={RdValue={0,0,0,100,0,0,0,1}}}", refusal, "eeeeeeee0000006400000001eeeeeeee", kAnyGrowth},
        {"{RdType=0, RdValue={RdType='x', RdValue={0,0,0,100,0,0,0,1}}}", refusal, "eeeeeeee0000006400000001eeeeeeee",
         kAnyGrowth},
        {"{RdType=0, RdValue={RdType={}, RdValue={0,0,0,100,0,0,0,1}}}", refusal, "eeeeeeee0000006400000001eeeeeeee",
         kAnyGrowth},
        {"{RdValue={RdType=1, RdValue={0,0,0,100,0,0,0,1}}}", refusal, "eeeeeeee000000640000000101000000", kAnyGrowth},
        {"{RdType='x', RdValue={RdType=1, RdValue={0,0,0,100,0,0,0,1}}}", refusal, "eeeeeeee000000640000000101000000",
         kAnyGrowth},
        {"{RdType={}, RdValue={RdType=1, RdValue={0,0,0,100,0,0,0,1}}}", refusal, "eeeeeeee000000640000000101000000",
         kAnyGrowth},
    };
}

// What the type and its row share, and what they answer where they differ.
TypeCase Common(uint32_t luaRefusal, uint32_t unknownKind)
{
    return {
        .row = {},
        .contract = {.inModes = "PPPPUPPU",
                     .outModes = "TTTRUTTU",
                     .helpModes = "-H----H-",
                     .helpText = "STRING<3-21>",
                     .resultTypeId = 0x118,
                     .resultLength = 16,
                     .textSize = 257},
        .accepted = kAccepted,
        .refused = Joined(kNoNotations, kZeroNotations),
        .roundTrips = {"100:1", "65535:4294967295", "65536:1", "4294967295:65535", "1.2:3", "0.100:1", "1.2.3.4:65535",
                       "0.0.0.0:0", "255.255.255.255:65535"},
        .kindTable = {.front = "00000000",
                      .fields = "fffefdfcfbfa",
                      .kinds = {{"0000",
                                 {{"01000000", "65534:4261215226"},
                                  {"02000000", "4294901244:64506"},
                                  {"03000000", "65534.65020:64506"}}},
                                {"0001", {}, "255.254.253.252:64506"},
                                {"0002", {{"02000000", "4294901244:64506"}, {"03000000", "65534.65020:64506"}}}},
                      .unknown = {"0003", "0004", "0100", "0200", "0102", "ffff"},
                      .code = unknownKind},
        .printFailures = {kValue},
        .luaRefusal = luaRefusal,
        .luaSets =
            {
                {kValue, "{RdType=0, RdValue={RdType=1, RdValue={0,0,0,100,0,0,0,1}}}"},
                {"01000080000101020304fffeffffffff",
                 "{RdType=2147483649, RdValue={RdType=4294967295, RdValue={0,1,1,2,3,4,255,254}}}"},
            },
        .luaGets = LuaTables(luaRefusal),
        .luaArrays = {{"{RdType=0, RdValue={RdType=1, RdValue=", "}}", 8, 4, kAnyGrowth}},
    };
}

TypeCase Type()
{
    TypeCase type = Common(DT_ERR_INVALID_VALUE, DT_ERR_INVALID_VALUE);
    type.row = {0x118,
                16,
                26,
                "BOLRD",
                &SYSDT_BolRdFormatIn,
                &SYSDT_BolRdFormatOut,
                &SYSDT_BolRdCheck,
                &SYSDT_BolRdHelp,
                &SYSDT_BolRdCompare,
                nullptr,
                &SYSDT_BolRdLuaSet,
                &SYSDT_BolRdLuaGet,
                nullptr};
    type.swept = false; // refusals are all DT_ERR_INVALID_VALUE: see below
    // The two levels of the Lua table share their names; the layout has the sub-type, the distinguisher, its notation.
    type.layout = {{nullptr, 0, 4, 1}, {nullptr, 4, 1, 8}, {nullptr, 12, 4, 1}};
    type.printFailure = DT_ERR_INVALID_VALUE;
    type.checkRefusal = DT_ERR_INVALID_VALUE;
    type.contextlessCheck = DT_ERR_NULL_PTR;
    type.helpHostCode = DT_ERR_INVALID_VALUE;
    type.untypedHelp = DT_ERR_NULL_PTR;
    for (const std::string &left : kAscending) {
        for (const std::string &right : kAscending) {
            type.compares.push_back({left, right, left == right ? 0 : 0x80170d});
        }
    }
    type.compares.push_back({kAscending[0], kAscending[1], 0, 15});
    return type;
}

TypeCase Entry()
{
    TypeCase type = Common(DT_ERR_INVALID_PARAM, DT_ERR_FAIL);
    type.row = {0,
                0,
                0,
                "RT",
                &SYSDT_VplsRDFormatIn,
                &SYSDT_VplsRDFormatOut,
                &SYSDT_VplsRDCheck,
                &SYSDT_VplsRDHelp,
                &SYSDT_VplsRDCompare,
                nullptr,
                &SYSDT_VplsRDLuaSet,
                &SYSDT_VplsRDLuaGet,
                nullptr};
    type.entry = &g_astBOL_RD_ProcTable[0];
    type.blanked = {"100:1", "255.255.255.255:65535"};
    type.checkLength = 16;
    type.luaLength = 16;
    type.ascending = kAscending;
    return type;
}

[[maybe_unused]] const bool kStated = StateTests<BolRd>("BolRd", Type()) && StateTests("VplsRd", Entry());

TEST_F(BolRd, TheNameIsPaddedWithZeros)
{
    const BolPrefixSubtypeEntry &entry = g_astBOL_RD_ProcTable[0];
    EXPECT_EQ(std::string(entry.Name, sizeof entry.Name), std::string("RT") + std::string(18, '\0'));
}

TEST_F(BolRd, AnyAmountOfOuterBlanksIsTrimmed)
{
    const std::string blanks(500, ' ');
    EXPECT_EQ(Value("BOLRD", blanks + "100:1" + blanks), kValue);
    EXPECT_EQ(CodeOf("BOLRD", blanks), DT_ERR_INVALID_VALUE);
}

TEST_F(BolRd, FormatInModes)
{
    for (const uint8_t mode : kAllModes) {
        SCOPED_TRACE(int{mode});
        const In in = FormatIn("BOLRD", "100:1", mode);
        if (mode == 4 || mode > 6) {
            EXPECT_EQ(in.code, DT_ERR_INVALID_VALUE);
            EXPECT_EQ(in.typeId, kUntouched);
            EXPECT_EQ(in.length, kUntouched);
            EXPECT_FALSE(in.bufferSet);
        } else {
            EXPECT_EQ(in.code, DT_OK);
            EXPECT_EQ(in.typeId, 0x118);
            EXPECT_EQ(in.length, 16);
            EXPECT_EQ(in.value, kValue);
        }
    }
}

TEST_F(BolRd, FormatInPointers)
{
    const DataTypeDescriptor &row = Row("BOLRD");
    for (const uint8_t mode : kAllModes) {
        const DataTypeRequest request{mode, Handle()};
        for (int missing = 0; missing < 5; ++missing) {
            char text[] = "100:1";
            uint16_t typeId = kUntouched;
            uint16_t length = kUntouched;
            void *buffer = text;
            EXPECT_EQ(row.FormatIn(missing == 0 ? nullptr : &request, 0, 0, missing == 1 ? nullptr : text,
                                   missing == 2 ? nullptr : &typeId, missing == 3 ? nullptr : &length,
                                   missing == 4 ? nullptr : &buffer),
                      DT_ERR_NULL_PTR)
                << missing << " in mode " << int{mode};
            EXPECT_EQ(typeId, kUntouched);
            EXPECT_EQ(length, kUntouched);
            EXPECT_EQ(buffer, text);
        }
    }
}

TEST_F(BolRd, FormatInWithoutMemory)
{
    for (const uint8_t mode : kServedModes) {
        host::SetFaults({.failAllocation = 1, .failAllAfter = true});
        const In in = FormatIn("BOLRD", "100:1", mode);
        host::SetFaults({});
        EXPECT_EQ(in.code, DT_ERR_INVALID_VALUE);
        EXPECT_EQ(in.typeId, 0x118); // what the row wrote stays
        EXPECT_EQ(in.length, 0);
        EXPECT_FALSE(in.bufferSet);
    }
    EXPECT_EQ(CodesWhileAllocationsFail([] { return FormatIn("BOLRD", "100:1").code; }),
              std::vector<uint32_t>{DT_ERR_INVALID_VALUE});
}

TEST_F(BolRd, AllZeroIsEmptyInModeTwo)
{
    for (const char *notation : {"00000000", "01000000", "02000000", "03000000", "04000000", "ffffffff"}) {
        ExpectPrints(Row("BOLRD"), std::string("000000000000000000000000") + notation, 2, "");
        ExpectPrints(VplsRd(), std::string("000000000000000000000000") + notation, 2, "");
    }
    for (const uint8_t mode : kOtherModes) {
        ExpectNothingWritten(Row("BOLRD"), "00000000000000000000000000000000", mode);
        ExpectPrints(Row("BOLRD"), "00000000000000000000000001000000", mode, "0:0");
    }
}

TEST_F(BolRd, OtherSubTypesAreRefused)
{
    for (const char *subType : {"01000000", "02000000", "00010000", "00000100", "00000001", "ffffffff"}) {
        const std::string value = std::string(subType) + "000000640000000101000000";
        for (const uint8_t mode : kAllModes) {
            const Out out = FormatOut("BOLRD", value, mode);
            EXPECT_EQ(out.code, DT_ERR_INVALID_VALUE);
            EXPECT_EQ(out.typeId, kUntouched);
            EXPECT_EQ(out.length, kUntouched);
            EXPECT_FALSE(out.bufferSet);
            const Into into = FormatOutInto(Row("BOLRD"), value, mode, 257);
            EXPECT_EQ(into.buffer, std::string(257, '\xA5'));
            EXPECT_TRUE(into.sameBuffer);
            EXPECT_FALSE(into.released);
        }
        // The row itself does not look at the word.
        ExpectPrints(VplsRd(), value, 1, "100:1");
    }
}

TEST_F(BolRd, FormatOutModes)
{
    for (const uint8_t mode : kAllModes) {
        SCOPED_TRACE(int{mode});
        if (mode == 4 || mode > 6) {
            const Out out = FormatOut("BOLRD", kValue, mode);
            EXPECT_EQ(out.code, DT_ERR_INVALID_VALUE);
            EXPECT_EQ(out.typeId, kUntouched);
            EXPECT_EQ(out.length, kUntouched);
            EXPECT_FALSE(out.bufferSet);
        } else {
            ExpectPrints(Row("BOLRD"), kValue, mode, "100:1");
        }
    }
}

TEST_F(BolRd, FormatOutPointers)
{
    const DataTypeDescriptor &row = Row("BOLRD");
    std::string value = Bytes(kValue);
    for (const uint8_t mode : kAllModes) {
        const DataTypeRequest request{mode, Handle()};
        for (int missing = 0; missing < 5; ++missing) {
            uint16_t typeId = kUntouched;
            uint16_t length = kUntouched;
            void *buffer = nullptr;
            EXPECT_EQ(row.FormatOut(missing == 0 ? nullptr : &request, 0, 16, missing == 1 ? nullptr : value.data(),
                                    missing == 2 ? nullptr : &typeId, missing == 3 ? nullptr : &length,
                                    missing == 4 ? nullptr : &buffer),
                      DT_ERR_NULL_PTR)
                << missing << " in mode " << int{mode};
            EXPECT_EQ(typeId, kUntouched);
            EXPECT_EQ(length, kUntouched);
            EXPECT_EQ(buffer, nullptr);
        }
    }
}

TEST_F(BolRd, FormatOutWithoutMemory)
{
    for (const uint8_t mode : kServedModes) {
        host::SetFaults({.failAllocation = 1, .failAllAfter = true});
        const Out out = FormatOut("BOLRD", kValue, mode);
        host::SetFaults({});
        EXPECT_EQ(out.code, DT_ERR_INVALID_VALUE);
        EXPECT_EQ(out.typeId, 0);
        EXPECT_EQ(out.length, 0);
        EXPECT_FALSE(out.bufferSet);
    }
}

TEST_F(BolRd, HelpPointers)
{
    const DataTypeDescriptor &row = Row("BOLRD");
    const uint32_t words[2] = {11, 22};
    for (const uint8_t mode : kAllModes) {
        const DataTypeRequest request{mode, Handle()};
        DataTypeHelpInfo info{0, nullptr};
        EXPECT_EQ(row.Help(nullptr, 0, 0, "", words, &info), DT_ERR_NULL_PTR);
        EXPECT_EQ(row.Help(&request, 0, 0, nullptr, words, &info), DT_ERR_NULL_PTR);
        EXPECT_EQ(row.Help(&request, 0, 0, "", nullptr, &info), DT_ERR_NULL_PTR);
        EXPECT_EQ(row.Help(&request, 0, 0, "", words, nullptr), DT_ERR_NULL_PTR);
        EXPECT_EQ(info.EntryCount, 0u);
        // The row needs no typed text.
        EXPECT_EQ(SYSDT_VplsRDHelp(&request, 0, 0, nullptr, words, &info), DT_OK);
    }
}

TEST_F(BolRd, HelpWithoutMemory)
{
    bool refused = false;
    for (uint32_t allowed = 0; allowed < 3 && !refused; ++allowed) {
        host::SetFaults({.failAllocation = allowed + 1, .failAllAfter = true});
        const Helped helped = Help("BOLRD", 1);
        host::SetFaults({});
        refused = helped.code == DT_ERR_INVALID_VALUE && helped.helpClears == 1;
        EXPECT_FALSE(helped.supplied && helped.code != DT_OK);
    }
    EXPECT_TRUE(refused);
}

TEST_F(BolRd, HelpModes)
{
    for (const uint8_t mode : kAllModes) {
        SCOPED_TRACE(int{mode});
        const bool answers = mode == 1 || mode == 6;
        const Helped helped = Help("BOLRD", mode, 11, 22);
        EXPECT_EQ(helped.code, DT_OK);
        EXPECT_EQ(helped.supplied, answers);
        EXPECT_EQ(helped.text, answers ? "STRING<3-21>" : "");
        EXPECT_EQ(helped.helpWord, answers ? 22u : 0u);
        EXPECT_EQ(Help("BOLRD", mode, 0, 22).code, answers ? DT_ERR_INVALID_VALUE : DT_OK);
        EXPECT_EQ(Help("BOLRD", mode, 11, 0).code, answers ? DT_ERR_INVALID_VALUE : DT_OK);
    }
    host::SetFaults({.helpInitCode = 77});
    EXPECT_EQ(Help("BOLRD", 2).code, DT_OK);
}

TEST_F(BolRd, ComparePointers)
{
    const DataTypeDescriptor &row = Row("BOLRD");
    const std::string value(16, '\0');
    EXPECT_EQ(row.Compare(&row, 16, nullptr, value.data()), 0x801705);
    EXPECT_EQ(row.Compare(&row, 16, value.data(), nullptr), 0x801705);
    EXPECT_EQ(row.Compare(&row, 0, nullptr, nullptr), 0x801705);
}

TEST_F(BolRd, LuaPointers)
{
    const DataTypeDescriptor &row = Row("BOLRD");
    lua_State *L = host::NewLua();
    char value[16] = {};
    EXPECT_EQ(row.LuaSet(nullptr, 1, "v", 0, 16, value), DT_ERR_NULL_PTR);
    EXPECT_EQ(row.LuaSet(L, 1, nullptr, 0, 16, value), DT_ERR_NULL_PTR);
    EXPECT_EQ(row.LuaSet(L, 1, "v", 0, 16, nullptr), DT_ERR_NULL_PTR);
    EXPECT_EQ(row.LuaSet(L, 1, "v", 0, 0, nullptr), DT_ERR_NULL_PTR);
    EXPECT_EQ(row.LuaGet(nullptr, 1, "v", 0, 16, value), DT_ERR_NULL_PTR);
    EXPECT_EQ(row.LuaGet(L, 1, nullptr, 0, 16, value), DT_ERR_NULL_PTR);
    EXPECT_EQ(row.LuaGet(L, 1, "v", 0, 16, nullptr), DT_ERR_NULL_PTR);
    EXPECT_EQ(row.LuaGet(L, 1, "v", 0, 0, nullptr), DT_ERR_NULL_PTR);
    host::CloseLua(L);
}

// ---------------------------------------------------------------------------------------------------------- refusals

// clang-format off
constexpr Refused kSubTypeModes[] = {
    {"1:2",                     "mode",             0,  0, 4, "", "", 0, 4},
    {"1:2",                     "mode",             0,  0, 7, "", "", 0, 7},
    {"x",                       "digit",            0,  1, 0, "", "", 0, 0},
    {"x",                       "digit",            0,  1, 0, "", "", 0, 3},
    {"x",                       "digit",            0,  1, 0, "", "", 0, 5},
};
// clang-format on

TEST_F(BolRd, Reasons)
{
    CheckRefusals("BOLRD", All(kNotationRefusals, kZeroRefusals, kSubTypeModes));
    CheckAccepted("BOLRD", kNotationsTaken);
    EXPECT_EQ(Sentence("BOLRD", "0:0"), "the numbers may not all be 0");
}

// The dispatcher has one code of its own; the sub-type's answer stands beside it.
TEST_F(BolRd, ReasonsAreTheSubTypesAnswer)
{
    struct Answer {
        const char *text;
        uint8_t mode;
        uint32_t code, subTypeCode;
        const char *rule;
    };
    static constexpr Answer kAnswers[] = {
        {"0:0", 2, DT_ERR_INVALID_VALUE, DT_ERR_INVALID_VALUE, "all-numbers-zero"},
        {"100:1", 4, DT_ERR_INVALID_VALUE, DT_ERR_MODE_UNSUPPORTED, "mode"},
        {"100:1", 7, DT_ERR_INVALID_VALUE, DT_ERR_MODE_UNSUPPORTED, "mode"},
        {"100:1", 3, DT_OK, DT_OK, "none"},
    };
    for (const Answer &answer : kAnswers) {
        SCOPED_TRACE(answer.text);
        const BgpRefusal refusal = Explained("BOLRD", answer.text, answer.mode);
        EXPECT_EQ(refusal.Reason.Code, answer.code);
        EXPECT_EQ(CodeOf("BOLRD", answer.text, answer.mode), answer.code);
        ASSERT_EQ(refusal.SubTypeCount, 1u);
        EXPECT_EQ(refusal.Closest, 0u);
        EXPECT_EQ(refusal.SubTypes[0].Code, answer.subTypeCode);
        EXPECT_EQ(FormatIn(Row(g_astBOL_RD_ProcTable[0]), answer.text, answer.mode).code, answer.subTypeCode);
        EXPECT_EQ(Describe(refusal.SubTypes[0]), Describe(refusal.Reason));
        EXPECT_EQ(Describe(refusal.SubTypes[0]).substr(0, std::strlen(answer.rule)), answer.rule);
    }
}

} // namespace
