#include "support/type_case.h"

#include <algorithm>
#include <cstring>

namespace bgp::test {

namespace {

// -------------------------------------------------------------------------------------------------- what a case means

DataTypeDescriptor Found(const TypeCase &type)
{
    return type.entry != nullptr ? Row(*type.entry) : Row(type.row.Name);
}

// The modes for which `answers` has one of `letters`.
std::vector<uint8_t> ModesOf(const std::string &answers, std::string_view letters)
{
    std::vector<uint8_t> modes;
    for (size_t mode = 0; mode < answers.size(); ++mode) {
        if (letters.find(answers[mode]) != std::string_view::npos) {
            modes.push_back(static_cast<uint8_t>(mode));
        }
    }
    return modes;
}

std::vector<uint8_t> Parsing(const TypeCase &type)
{
    return ModesOf(type.contract.inModes, "P");
}

std::vector<uint8_t> Printing(const TypeCase &type)
{
    return ModesOf(type.contract.outModes, "TR");
}

TextBuffer Buffer(const TypeCase &type)
{
    return {type.contract.textSize, type.contract.outModes};
}

uint16_t LuaLength(const TypeCase &type)
{
    return type.luaLength.value_or(type.row.BinaryLength);
}

// ------------------------------------------------------------------------------------------------------------ the row

// Nothing that the row offers may go unsaid.
void ExpectStated(const TypeCase &type)
{
    const DataTypeDescriptor &row = type.row;
    EXPECT_TRUE(row.FormatIn == nullptr || type.contract.inModes.empty() ||
                (!type.accepted.empty() && !type.refused.empty()));
    EXPECT_TRUE(row.FormatOut == nullptr || type.contract.outModes.empty() || !type.accepted.empty() ||
                !type.prints.empty());
    EXPECT_TRUE(row.Compare == nullptr || type.comparesBytes || !type.ascending.empty() || !type.compares.empty());
    EXPECT_TRUE(row.Endian == nullptr || !type.swaps.empty());
    EXPECT_TRUE(row.LuaSet == nullptr || !type.luaSets.empty());
    EXPECT_TRUE(row.LuaGet == nullptr || !type.luaGets.empty());
}

void RunRow(const TypeCase &type)
{
    const DataTypeDescriptor &wanted = type.row;
    const DataTypeDescriptor row = Found(type);
    EXPECT_STREQ(row.Name, wanted.Name);
    EXPECT_EQ(row.TypeId, wanted.TypeId);
    EXPECT_EQ(row.BinaryLength, type.entry != nullptr ? 0 : wanted.BinaryLength);
    EXPECT_EQ(row.BaseKind, wanted.BaseKind);
    EXPECT_EQ(row.FormatIn, wanted.FormatIn);
    EXPECT_EQ(row.FormatOut, wanted.FormatOut);
    EXPECT_EQ(row.Check, wanted.Check);
    EXPECT_EQ(row.Help, wanted.Help);
    EXPECT_EQ(row.Compare, wanted.Compare);
    EXPECT_EQ(row.Reserved, wanted.Reserved);
    EXPECT_EQ(row.LuaSet, wanted.LuaSet);
    EXPECT_EQ(row.LuaGet, wanted.LuaGet);
    EXPECT_EQ(row.Endian, wanted.Endian);
    if (type.entry != nullptr) {
        EXPECT_EQ(type.entry->SubType, type.subType);
    }
    if (type.reader != nullptr) {
        EXPECT_EQ(g_astBOL_PREFIX_LuaGetTable[type.subType].SubType, type.subType);
        EXPECT_EQ(g_astBOL_PREFIX_LuaGetTable[type.subType].Reader, type.reader);
    }
    ExpectStated(type);
}

void RunContract(const TypeCase &type)
{
    Sweep(Found(type), type.contract);
    for (const auto &[text, value] : type.alsoSwept) {
        Contract contract = type.contract;
        contract.text = text;
        contract.value = Hex(Bytes(value));
        Sweep(Found(type), contract);
    }
}

void RunLayout(const TypeCase &type)
{
    ExpectLayout(type.row.TypeId, std::string(2 * size_t{type.row.BinaryLength}, '0'), type.layout);
}

// ------------------------------------------------------------------------------------------------------------ text in

void RunAcceptedTexts(const TypeCase &type)
{
    const DataTypeDescriptor row = Found(type);
    for (const TextCase &c : type.accepted) {
        SCOPED_TRACE("\"" + c.text.substr(0, 300) + "\"");
        const std::string value = Hex(Bytes(c.value));
        for (const uint8_t mode : Parsing(type)) {
            SCOPED_TRACE("mode " + std::to_string(mode));
            const In in = FormatIn(row, c.text, mode);
            EXPECT_EQ(in.code, DT_OK);
            EXPECT_EQ(in.typeId, type.contract.resultTypeId);
            EXPECT_EQ(in.length, type.contract.resultLength);
            EXPECT_EQ(in.value, value);
            EXPECT_TRUE(in.textKept);
        }
        for (const uint8_t mode : type.printsBack ? Printing(type) : std::vector<uint8_t>{}) {
            ExpectPrints(row, value, mode, PrintedText(c), Buffer(type));
        }
    }
}

void RunRefusedTexts(const TypeCase &type)
{
    const DataTypeDescriptor row = Found(type);
    const size_t blocks = host::HandleBlocks(Handle());
    for (const std::string &text : type.refused) {
        for (const uint8_t mode : Parsing(type)) {
            ExpectRefused(row, text, mode, type.refusal);
        }
    }
    EXPECT_EQ(host::HandleBlocks(Handle()), blocks); // whatever was looked up on the way has been given back
}

void RunOuterBlanks(const TypeCase &type)
{
    for (const std::string &text : type.blanked) {
        SCOPED_TRACE(text);
        ExpectBlanksDropped(Found(type), text, type.refusal);
    }
}

void RunEveryCharacter(const TypeCase &type)
{
    const DataTypeDescriptor row = Found(type);
    for (const CharacterCase &c : type.characters) {
        for (int character = 1; character < 256; ++character) {
            const char odd = static_cast<char>(character);
            const bool inside = c.inside.find(odd) != std::string::npos;
            const bool trimmed = (odd == ' ' || odd == '\t') && (c.before.empty() || c.behind.empty());
            if (trimmed || (inside && !c.insideTaken)) {
                continue;
            }
            EXPECT_EQ(FormatIn(row, c.before + odd + c.behind).code, inside ? DT_OK : type.refusal)
                << c.before << "#" << character << c.behind;
        }
    }
}

void ExpectParsed(const TypeCase &type, const std::string &text, const std::string *value)
{
    SCOPED_TRACE("\"" + text.substr(0, 300) + "\"");
    const size_t size = type.parsedBytes != 0 ? type.parsedBytes : type.row.BinaryLength;
    const auto memory = std::make_unique<char[]>(size + 1); // the value stands at an odd address
    std::fill_n(memory.get(), size + 1, '\xEE');
    const std::string copy = text;
    EXPECT_EQ(type.parser(copy.c_str(), memory.get() + 1), value == nullptr ? type.parserRefusal : DT_OK);
    EXPECT_EQ(copy, text);
    if (value != nullptr) {
        EXPECT_EQ(Hex(memory.get() + 1, size), Hex(Bytes(*value)).substr(0, 2 * size));
    }
    EXPECT_EQ(type.parser(nullptr, memory.get() + 1), DT_ERR_NULL_PTR);
    EXPECT_EQ(type.parser(copy.c_str(), nullptr), DT_ERR_NULL_PTR);
}

void RunParser(const TypeCase &type)
{
    for (const TextCase &c : type.accepted) {
        ExpectParsed(type, c.text, &c.value);
    }
    for (const std::string &text : type.refused) {
        ExpectParsed(type, text, nullptr);
    }
}

void RunEverySixteenBitField(const TypeCase &type)
{
    const DataTypeDescriptor row = Found(type);
    ExpectEverySixteenBitField(type.parser, type.fields, type.printsBack ? &row : nullptr);
}

void RunEveryOctet(const TypeCase &type)
{
    const DataTypeDescriptor row = Found(type);
    for (const auto &[before, behind] : type.octets) {
        for (uint32_t octet = 0; octet < 1000; ++octet) {
            const std::string text = before + std::to_string(octet) + behind;
            const In in = FormatIn(row, text);
            ASSERT_EQ(in.code, octet < 256 ? DT_OK : type.refusal) << text;
            if (octet < 256) {
                ASSERT_EQ(FormatOut(row, in.value).text, text);
            }
        }
    }
}

// Where the results come from: one block each, of the handle's memory or SYS_DataTypeMalloc()'s.
void RunMemory(const TypeCase &type)
{
    const DataTypeDescriptor row = Found(type);
    const uint32_t plain = type.contract.plainMemory ? 1 : 0;
    for (const uint8_t mode : Parsing(type)) {
        host::TakeCounters();
        EXPECT_EQ(FormatIn(row, type.contract.text, mode).code, DT_OK);
        const host::Counters counters = host::TakeCounters();
        EXPECT_EQ(counters.allocations, 1u);
        EXPECT_EQ(counters.plainAllocations, plain);
    }
    for (const uint8_t mode : Printing(type)) {
        host::TakeCounters();
        EXPECT_EQ(FormatOut(row, type.contract.value, mode).code, DT_OK);
        const host::Counters counters = host::TakeCounters();
        EXPECT_EQ(counters.allocations, 1u);
        EXPECT_EQ(counters.plainAllocations, plain);
    }
    if (row.Help != nullptr) {
        EXPECT_EQ(AllocationsOfHelp(row).plain, type.contract.helpPlainMemory ? 1u : 0u);
    }
}

// ----------------------------------------------------------------------------------------------------------- text out

void RunRoundTrips(const TypeCase &type)
{
    const DataTypeDescriptor row = Found(type);
    for (const std::string &text : type.roundTrips) {
        for (const uint8_t mode : Parsing(type)) {
            const In in = FormatIn(row, text, mode);
            EXPECT_EQ(in.code, DT_OK) << text;
            EXPECT_EQ(FormatOut(row, in.value, mode).text, text);
            EXPECT_EQ(in.value, FormatIn(row, text).value);
        }
    }
}

void RunPrints(const TypeCase &type)
{
    const DataTypeDescriptor row = Found(type);
    for (const TextCase &c : type.prints) {
        for (const uint8_t mode : Printing(type)) {
            ExpectPrints(row, Hex(Bytes(c.value)), mode, c.text, Buffer(type));
        }
    }
}

// Words that no notation has: other bytes of the word, and the ends of its range.
constexpr const char *kStrangeNotations[] = {"00010000", "01010000", "02010000", "03010000", "01000100",
                                             "02000100", "02000001", "03000001", "03000080", "01000001",
                                             "00030000", "00000001", "00000002", "00000003", "ffffffff"};

std::vector<std::string> NotationWords()
{
    std::vector<std::string> words(std::begin(kStrangeNotations), std::end(kStrangeNotations));
    for (uint32_t n = 0; n < 256; ++n) {
        words.push_back(Le32(n));
    }
    return words;
}

void RunEveryNotation(const TypeCase &type)
{
    const DataTypeDescriptor row = Found(type);
    const KindTable &table = type.kindTable;
    for (const KindCase &kind : table.kinds) {
        size_t met = 0;
        for (const std::string &word : NotationWords()) {
            const auto listed = std::find_if(kind.notations.begin(), kind.notations.end(),
                                             [&word](const auto &notation) { return notation.first == word; });
            const bool found = listed != kind.notations.end();
            met += found ? 1 : 0;
            for (const uint8_t mode : Printing(type)) {
                const std::string value = table.front + kind.kind + table.fields + word;
                if (found || !kind.always.empty()) {
                    ExpectPrints(row, value, mode, found ? listed->second : kind.always, Buffer(type));
                } else {
                    ExpectNothingWritten(row, value, mode, Buffer(type));
                }
            }
        }
        EXPECT_EQ(met, kind.notations.size()) << kind.kind;
    }
}

void RunUnknownKinds(const TypeCase &type)
{
    const DataTypeDescriptor row = Found(type);
    const KindTable &table = type.kindTable;
    for (const std::string &kind : table.unknown) {
        for (const char *notation : {"00000000", "01000000", "02000000", "03000000", "04000000"}) {
            for (const uint8_t mode : Printing(type)) {
                const std::string value = table.front + kind + table.fields + notation;
                if (table.becomes == UnknownKind::kHandsOver) {
                    ExpectNoSuchKind(row, value, mode, table.code, type.contract.textSize);
                } else {
                    ExpectNoSuchKindGivenBack(row, value, mode, table.code, type.contract.textSize);
                }
            }
        }
    }
}

bool Prints(const KindTable &table, const std::string &kind)
{
    return std::any_of(table.kinds.begin(), table.kinds.end(), [&kind](const KindCase &c) { return c.kind == kind; });
}

void RunEveryKind(const TypeCase &type)
{
    const DataTypeDescriptor row = Found(type);
    const KindTable &table = type.kindTable;
    const DataTypeRequest request{1, Handle()};
    size_t printing = 0;
    for (uint32_t number = 0; number < 65536; ++number) {
        const std::string kind = Net16(number);
        if (std::count(table.others.begin(), table.others.end(), kind) != 0) {
            continue;
        }
        std::string value = Bytes(table.front + kind + table.fields + "02000000");
        std::string text(type.contract.textSize, '\0');
        uint16_t typeId = kUntouched;
        uint16_t length = kUntouched;
        void *buffer = text.data();
        const uint32_t code = row.FormatOut(&request, row.TypeId, static_cast<uint32_t>(value.size()), value.data(),
                                            &typeId, &length, &buffer);
        ASSERT_EQ(buffer, text.data()) << kind;
        if (Prints(table, kind)) {
            ++printing;
            ASSERT_EQ(code, DT_OK) << kind;
            continue;
        }
        ASSERT_EQ(code, table.code) << kind;
        ASSERT_EQ(typeId, kUntouched) << kind;
        ASSERT_EQ(length, kUntouched) << kind;
        const Out out = FormatOut(row, Hex(value)); // into a buffer of its own
        ASSERT_EQ(out.code, table.code) << kind;
        ASSERT_EQ(out.typeId, kUntouched) << kind;
        ASSERT_EQ(out.length, kUntouched) << kind;
        ASSERT_EQ(out.bufferSet, table.becomes == UnknownKind::kHandsOver) << kind;
        if (number % 1024 == 0) {
            ASSERT_TRUE(out.bufferSet || host::HandleBlocks(Handle()) == 0) << kind;
            host::ResetHandle(Handle());
        }
    }
    EXPECT_EQ(printing, table.kinds.size());
}

void RunPrintFailures(const TypeCase &type)
{
    const DataTypeDescriptor row = Found(type);
    for (const std::string &value : type.printFailures) {
        for (const uint8_t mode : Printing(type)) {
            host::SetFaults({.failPrint = 1});
            const Out out = FormatOut(row, value, mode);
            host::SetFaults({});
            EXPECT_EQ(out.code, type.printFailure) << value << " in mode " << int{mode};
            EXPECT_EQ(out.typeId, type.failedOut);
            EXPECT_EQ(out.length, type.failedOut);
            host::SetFaults({.failPrint = 1});
            const Into into = FormatOutInto(row, value, mode, type.contract.textSize);
            host::SetFaults({});
            EXPECT_EQ(into.out.code, type.printFailure);
            EXPECT_TRUE(into.sameBuffer);
            EXPECT_TRUE(into.guardsIntact);
            EXPECT_FALSE(into.released);
        }
    }
}

void RunLengthArgument(const TypeCase &type)
{
    const DataTypeDescriptor row = Found(type);
    const std::string &value = type.contract.value;
    const std::vector<uint8_t> modes = Printing(type);
    if (type.readsWhole) {
        const auto own = static_cast<uint32_t>(Bytes(value).size());
        for (const uint8_t mode : modes) {
            const std::string text = FormatOut(row, value, mode).text;
            EXPECT_FALSE(text.empty());
            for (const uint32_t length : {0u, 1u, 3u, 4u, own - 1, own + 1, 65536u, 100000u, 4294967294u}) {
                const Out out = FormatOut(row, value, mode, length);
                EXPECT_EQ(out.code, DT_OK) << length;
                EXPECT_EQ(out.text, text) << length;
            }
        }
    }
    for (const LengthCase &c : type.lengths) {
        EXPECT_EQ(FormatOut(row, c.value.empty() ? value : c.value, modes.front(), c.length).text, c.text) << c.length;
    }
}

// -------------------------------------------------------------------------------------- Check, Help, Compare, Endian

void RunCheck(const TypeCase &type)
{
    const DataTypeDescriptor row = Found(type);
    const uint32_t wanted = type.checkLength.value_or(type.row.BinaryLength);
    std::string zeros(wanted + 66000, '\0');
    std::string ones(wanted + 66000, '\xFF');
    for (uint32_t length = 0; length < wanted + 200; ++length) {
        const bool right = length == wanted;
        EXPECT_EQ(row.Check(&row, row.TypeId, length, zeros.data()), right ? type.zeroCheck : type.checkRefusal)
            << length;
        EXPECT_EQ(row.Check(&row, row.TypeId, length, ones.data()), right ? DT_OK : type.checkRefusal) << length;
    }
    EXPECT_EQ(row.Check(nullptr, 0, wanted, ones.data()), type.contextlessCheck);
    EXPECT_EQ(row.Check(&row, row.TypeId, wanted + 65536, ones.data()), type.checkRefusal);
    for (const uint32_t length : {wanted, wanted - 1}) {
        const uint32_t code = length == wanted ? DT_OK : type.checkRefusal;
        EXPECT_EQ(row.Check(&row, 0, length, nullptr), type.checkTestsPointer ? DT_ERR_NULL_PTR : code);
        EXPECT_EQ(row.Check(nullptr, 0, length, nullptr), type.checkTestsPointer ? DT_ERR_NULL_PTR : code);
    }
    for (const ValueCode &c : type.checks) {
        const std::string value = Bytes(c.value);
        EXPECT_EQ(row.Check(&row, row.TypeId, static_cast<uint32_t>(value.size()), value.data()), c.code) << c.value;
    }
}

void RunHelp(const TypeCase &type)
{
    const DataTypeDescriptor row = Found(type);
    for (const uint8_t mode : ModesOf(type.contract.helpModes, "H")) {
        EXPECT_EQ(Help(row, mode, 11, 22).text, type.contract.helpText);
        EXPECT_EQ(Help(row, mode, 11, 22).helpWord, type.helpWord);
        EXPECT_EQ(Help(row, mode, 4294967295u, 4294967295u).helpWord, 4294967295u);
        if (type.untypedHelp.has_value()) {
            EXPECT_EQ(Help(row, mode, 11, 22, nullptr).code, type.untypedHelp);
        }
        EXPECT_EQ(Help(row, mode, 0, 22).helpInits, 0u);
        EXPECT_EQ(Help(row, mode, 11, 0).helpInits, 0u);
        EXPECT_EQ(Help(row, mode, 0, 0).helpInits, 0u);
        for (const uint32_t code : {0x1234u, DT_ERR_NO_MEMORY}) {
            host::SetFaults({.helpInitCode = code});
            const Helped helped = Help(row, mode);
            host::SetFaults({});
            EXPECT_EQ(helped.code, type.helpHostCode.value_or(code));
            EXPECT_FALSE(helped.supplied);
            EXPECT_EQ(helped.helpInits, 1u);
            EXPECT_EQ(helped.helpClears, 0u);
        }
    }
}

void RunFailedHelpCopy(const TypeCase &type)
{
    host::SetFaults({.failCopy = 1});
    host::RecordReleases(true);
    host::TakeReleases();
    const Helped helped = Help(Found(type));
    const std::vector<host::Release> releases = host::TakeReleases();
    host::RecordReleases(false);
    EXPECT_EQ(helped.code, type.helpCopyFailure);
    EXPECT_FALSE(helped.supplied);
    ASSERT_EQ(releases.size(), 1u);
    EXPECT_TRUE(releases[0].known);
    EXPECT_NE(releases[0].memory, nullptr);
}

int32_t Order(const DataTypeDescriptor &row, const std::string &leftHex, const std::string &rightHex,
              std::optional<uint32_t> length = {})
{
    const std::string left = Bytes(leftHex);
    const std::string right = Bytes(rightHex);
    return row.Compare(nullptr, length.value_or(static_cast<uint32_t>(left.size())), left.data(), right.data());
}

void RunCompare(const TypeCase &type)
{
    const DataTypeDescriptor row = Found(type);
    for (size_t i = 0; i < type.ascending.size(); ++i) {
        for (size_t j = 0; j < type.ascending.size(); ++j) {
            const int32_t order = i == j ? 0 : (i < j) != type.descending ? -1 : 1;
            EXPECT_EQ(Order(row, type.ascending[i], type.ascending[j]), order)
                << type.ascending[i] << ' ' << type.ascending[j];
        }
    }
    for (const CompareCase &c : type.compares) {
        EXPECT_EQ(Order(row, c.left, c.right, c.length), c.order) << c.left << ' ' << c.right;
    }
}

void RunEveryByteCompared(const TypeCase &type)
{
    const DataTypeDescriptor row = Found(type);
    const std::string zeros(LuaLength(type), '\0');
    for (uint32_t at = 0; at < zeros.size(); ++at) {
        std::string more = zeros;
        std::string less = zeros;
        more[at] = '\x80'; // bytes have no sign
        less[at] = '\x7f';
        EXPECT_EQ(Order(row, Hex(more), Hex(less)), 1) << at;
        EXPECT_EQ(Order(row, Hex(less), Hex(more)), -1) << at;
        EXPECT_EQ(Order(row, Hex(less), Hex(less)), 0) << at;
        EXPECT_EQ(Order(row, Hex(less), Hex(more), at), 0) << at;
    }
}

void RunComparePointers(const TypeCase &type)
{
    const DataTypeDescriptor row = Found(type);
    const std::string value(LuaLength(type), '\0');
    for (const uint32_t length : {uint32_t{LuaLength(type)}, 0u}) {
        for (const auto &[left, right] : {std::pair<const char *, const char *>(nullptr, value.data()),
                                          {value.data(), nullptr},
                                          {nullptr, nullptr}}) {
            EXPECT_EQ(static_cast<uint32_t>(row.Compare(nullptr, length, left, right)), type.comparePointers) << length;
        }
    }
}

void RunEndian(const TypeCase &type)
{
    for (const SwapCase &c : type.swaps) {
        EXPECT_EQ(Endian(type.row.Name, c.value), Hex(Bytes(c.swapped)));
        if (c.back) {
            EXPECT_EQ(Endian(type.row.Name, c.swapped), Hex(Bytes(c.value)));
        }
    }
}

// ---------------------------------------------------------------------------------------------------------------- Lua

void RunLuaSet(const TypeCase &type)
{
    ExpectLuaSet(Found(type), LuaLength(type), type.luaSets);
}

void RunLuaGet(const TypeCase &type)
{
    const DataTypeDescriptor row = Found(type);
    ExpectLuaGet(row, LuaLength(type), type.luaGets);
    for (const LuaArray &array : type.luaArrays) {
        ExpectItemsAreNumbers(row, LuaLength(type), array, type.luaRefusal);
    }
    for (const LuaCase &c : type.luaGets) { // what stands behind a value is left alone
        EXPECT_EQ(LuaGet(row, c.table, static_cast<uint16_t>(LuaLength(type) + 2)).value, Hex(Bytes(c.value)) + "eeee");
    }
}

// Pointers are judged before the length.
void ExpectLuaPointersFirst(const TypeCase &type, const DataTypeDescriptor &row)
{
    lua_State *L = host::NewLua();
    std::string value(LuaLength(type), '\0');
    if (row.LuaSet != nullptr) {
        EXPECT_EQ(row.LuaSet(nullptr, 1, "v", 0, 0, value.data()), DT_ERR_NULL_PTR);
        EXPECT_EQ(row.LuaSet(L, 1, "v", 0, 0, nullptr), DT_ERR_NULL_PTR);
    }
    if (row.LuaGet != nullptr) {
        EXPECT_EQ(row.LuaGet(nullptr, 1, "v", 0, 0, value.data()), DT_ERR_NULL_PTR);
        EXPECT_EQ(row.LuaGet(L, 1, "v", 0, 0, nullptr), DT_ERR_NULL_PTR);
    }
    host::CloseLua(L);
}

void RunLuaLengths(const TypeCase &type)
{
    const DataTypeDescriptor row = Found(type);
    const auto taken =
        std::find_if(type.luaGets.begin(), type.luaGets.end(), [](const LuaCase &c) { return c.code == DT_OK; });
    ASSERT_TRUE(taken != type.luaGets.end() || row.LuaGet == nullptr) << "no table that is taken";
    ExpectShortLuaRefused(row, LuaLength(type), row.LuaGet == nullptr ? "" : taken->table, type.luaRefusal);
    ExpectLuaPointersFirst(type, row);
}

void RunLuaRoundTrip(const TypeCase &type)
{
    const DataTypeDescriptor row = Found(type);
    for (const TextCase &c : type.accepted) {
        const std::string value = Hex(Bytes(c.value));
        EXPECT_EQ(LuaGet(row, LuaSet(row, value, LuaLength(type)).table, LuaLength(type)).value, value) << c.text;
    }
}

// ---------------------------------------------------------------------------------------------------------- the parts

constexpr Part kParts[] = {
    {"Row", [](const TypeCase &) { return true; }, RunRow},
    {"Contract", [](const TypeCase &type) { return type.swept; }, RunContract},
    {"Layout", [](const TypeCase &type) { return !type.layout.empty(); }, RunLayout},
    {"AcceptedTexts", [](const TypeCase &type) { return !type.accepted.empty(); }, RunAcceptedTexts},
    {"RefusedTexts", [](const TypeCase &type) { return !type.refused.empty(); }, RunRefusedTexts},
    {"OuterBlanks", [](const TypeCase &type) { return !type.blanked.empty(); }, RunOuterBlanks},
    {"EveryCharacter", [](const TypeCase &type) { return !type.characters.empty(); }, RunEveryCharacter},
    {"Parser", [](const TypeCase &type) { return type.parser != nullptr && !type.accepted.empty(); }, RunParser},
    {"EverySixteenBitField", [](const TypeCase &type) { return !type.fields.empty(); }, RunEverySixteenBitField},
    {"EveryOctet", [](const TypeCase &type) { return !type.octets.empty(); }, RunEveryOctet},
    {"Memory", [](const TypeCase &type) { return !Parsing(type).empty() || !Printing(type).empty(); }, RunMemory},
    {"RoundTrips", [](const TypeCase &type) { return !type.roundTrips.empty(); }, RunRoundTrips},
    {"Prints", [](const TypeCase &type) { return !type.prints.empty(); }, RunPrints},
    {"EveryNotation", [](const TypeCase &type) { return !type.kindTable.kinds.empty(); }, RunEveryNotation},
    {"UnknownKinds", [](const TypeCase &type) { return !type.kindTable.unknown.empty(); }, RunUnknownKinds},
    {"EveryKind", [](const TypeCase &type) { return !type.kindTable.kinds.empty(); }, RunEveryKind},
    {"PrintFailures", [](const TypeCase &type) { return !type.printFailures.empty(); }, RunPrintFailures},
    {"LengthArgument",
     [](const TypeCase &type) { return !Printing(type).empty() && (type.readsWhole || !type.lengths.empty()); },
     RunLengthArgument},
    {"Check", [](const TypeCase &type) { return type.row.Check != nullptr; }, RunCheck},
    {"Help", [](const TypeCase &type) { return type.row.Help != nullptr; }, RunHelp},
    {"FailedHelpCopy", [](const TypeCase &type) { return type.helpCopyFailure.has_value(); }, RunFailedHelpCopy},
    {"Compare", [](const TypeCase &type) { return type.row.Compare != nullptr; }, RunCompare},
    {"EveryByteCompared", [](const TypeCase &type) { return type.comparesBytes; }, RunEveryByteCompared},
    {"ComparePointers", [](const TypeCase &type) { return type.comparePointers.has_value(); }, RunComparePointers},
    {"Endian", [](const TypeCase &type) { return !type.swaps.empty(); }, RunEndian},
    {"LuaSet", [](const TypeCase &type) { return !type.luaSets.empty(); }, RunLuaSet},
    {"LuaGet", [](const TypeCase &type) { return !type.luaGets.empty(); }, RunLuaGet},
    {"LuaLengths", [](const TypeCase &type) { return !type.luaSets.empty() || !type.luaGets.empty(); }, RunLuaLengths},
    {"LuaRoundTrip",
     [](const TypeCase &type) {
         return type.luaRoundTrip && type.row.LuaSet != nullptr && type.row.LuaGet != nullptr && !type.accepted.empty();
     },
     RunLuaRoundTrip},
};

} // namespace

std::span<const Part> Parts()
{
    return kParts;
}

TypeCase Completed(TypeCase type)
{
    Contract &contract = type.contract;
    if (!type.accepted.empty()) {
        contract.text = contract.text.empty() ? type.accepted.front().text : contract.text;
        contract.value = contract.value.empty() ? type.accepted.front().value : contract.value;
    }
    contract.value = Hex(Bytes(contract.value));
    contract.resultTypeId = contract.resultTypeId == 0 ? type.row.TypeId : contract.resultTypeId;
    contract.resultLength = contract.resultLength == 0 ? type.row.BinaryLength : contract.resultLength;
    return type;
}

} // namespace bgp::test
