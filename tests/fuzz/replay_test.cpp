// The fuzz targets without the fuzzer: the seed corpus and every find of the past are replayed, then a fixed number of
// mutations of them is run, always the same ones. Canaries prove that the watching sees what it is there for.
#include "fuzz/targets.h"
#include "fuzz/text_changes.h"
#include "support/harness.h"

#include "bgp_host_services.h"

#include <cstring>
#include <filesystem>
#include <fstream>
#include <random>
#include <set>

namespace bgp::test {
namespace {

namespace files = std::filesystem;
using fuzz::Bytes;
using fuzz::Outcome;
using fuzz::Subject;
using fuzz::Target;

#if defined(__SANITIZE_ADDRESS__)
constexpr bool kAsan = true;
#else
constexpr bool kAsan = false;
#endif

// Mutations per target: a few seconds in a release build, and no more where every step is watched or emulated.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__) || !defined(__OPTIMIZE__) || defined(__arm__)
constexpr int kMutations = 5000;
#else
constexpr int kMutations = 50000;
#endif

const files::path kFuzz = files::path(BGP_SOURCE_DIR) / "fuzz";

Bytes Read(const files::path &file)
{
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

struct Seed {
    std::string name;
    Bytes bytes;
};

// The files of a folder, by name; none when there is no such folder.
std::vector<Seed> SeedsIn(const files::path &folder)
{
    std::vector<Seed> seeds;
    if (files::exists(folder)) {
        for (const auto &entry : files::directory_iterator(folder)) {
            seeds.push_back({entry.path().filename(), Read(entry.path())});
        }
    }
    std::sort(seeds.begin(), seeds.end(), [](const Seed &left, const Seed &right) { return left.name < right.name; });
    return seeds;
}

const std::vector<Subject> &Subjects()
{
    static const std::vector<Subject> subjects = fuzz::AllSubjects();
    return subjects;
}

std::string Said(const Outcome &outcome)
{
    std::string said;
    for (const std::string &finding : outcome.findings) {
        said += finding + '\n';
    }
    return said;
}

Outcome Replay(const Target &target, const Bytes &input)
{
    return fuzz::Run(target, Subjects(), input.data(), input.size());
}

// ---------------------------------------------------------------------------------------------------------- mutations

class Mutator {
public:
    Mutator(const Target &target, const std::vector<Seed> &seeds, uint32_t seed)
        : target_(target), seeds_(seeds), words_(fuzz::DictionaryWords(kFuzz / "text.dict")), random_(seed)
    {
    }

    // A seed, changed in one to six places.
    Bytes Next()
    {
        Bytes input = Any(seeds_).bytes;
        for (uint32_t change = Below(6) + 1; change != 0; --change) {
            if (target_.textAt != 0 && Below(2) == 0) {
                fuzz::ChangeText(input, target_.textAt, random_);
            } else {
                Change(input);
            }
        }
        return input;
    }

private:
    uint32_t Below(size_t limit) { return limit == 0 ? 0 : static_cast<uint32_t>(random_() % limit); }

    template <class Item>
    const Item &Any(const std::vector<Item> &items)
    {
        return items[Below(items.size())];
    }

    void Insert(Bytes &input, const auto &bytes)
    {
        input.insert(input.begin() + Below(input.size() + 1), bytes.begin(), bytes.end());
    }

    // A piece of some seed.
    Bytes Piece()
    {
        const Bytes &bytes = Any(seeds_).bytes;
        const uint32_t from = Below(bytes.size());
        const uint32_t length = Below(bytes.size() - from + 1);
        return {bytes.begin() + from, bytes.begin() + from + length};
    }

    void Change(Bytes &input)
    {
        switch (Below(8)) {
        case 0:
            input.resize(std::max<size_t>(1, input.size()));
            input[0] = static_cast<uint8_t>(Below(Subjects().size()));
            break;
        case 1:
            Insert(input, Piece());
            break;
        default:
            fuzz::ChangeBytes(input, words_, random_);
        }
    }

    const Target &target_;
    const std::vector<Seed> &seeds_;
    std::vector<std::string> words_;
    std::minstd_rand random_;
};

// -------------------------------------------------------------------------------------------------------------- replay

constexpr size_t kSubTypes = BOL_PREFIX_SUBTYPES + BOL_RD_SUBTYPES; // in front of the rows

class Fuzz : public PlugIn {};

TEST_F(Fuzz, EveryRowIsASubject)
{
    const std::vector<const DataTypeDescriptor *> rows = host::Rows();
    ASSERT_EQ(Subjects().size(), kSubTypes + rows.size());
    for (size_t i = 0; i < rows.size(); ++i) {
        EXPECT_STREQ(Subjects()[kSubTypes + i].facts.Name(), rows[i]->Name);
        EXPECT_EQ(Subjects()[kSubTypes + i].row.TypeId, rows[i]->TypeId);
    }
}

TEST_F(Fuzz, SeedsAreClean)
{
    for (const Target &target : fuzz::kTargetTable) {
        const std::vector<Seed> seeds = SeedsIn(kFuzz / "corpus" / target.name);
        EXPECT_GT(seeds.size(), 30u) << "fuzz/corpus/" << target.name << ": run fuzz/seed";
        for (const Seed &seed : seeds) {
            EXPECT_EQ(Said(Replay(target, seed.bytes)), "") << target.name << '/' << seed.name;
        }
    }
}

TEST_F(Fuzz, FindsAreFixed)
{
    size_t finds = 0;
    for (const Target &target : fuzz::kTargetTable) {
        for (const Seed &find : SeedsIn(kFuzz / "finds" / target.name)) {
            SCOPED_TRACE(std::string(target.name) + '/' + find.name);
            EXPECT_EQ(Said(Replay(target, find.bytes)), "");
            ++finds;
        }
    }
    EXPECT_GT(finds, 0u);
}

// A corpus that every parser refuses would find nothing.
TEST_F(Fuzz, SeedsReachEveryParserAndPrinter)
{
    std::set<std::string> typed, printed;
    for (const Seed &seed : SeedsIn(kFuzz / "corpus" / "text")) {
        if (const Outcome outcome = Replay(fuzz::kTargetTable[0], seed.bytes); outcome.reached) {
            typed.insert(outcome.subject->facts.Name());
        }
    }
    for (const Seed &seed : SeedsIn(kFuzz / "corpus" / "value")) {
        if (const Outcome outcome = Replay(fuzz::kTargetTable[1], seed.bytes); outcome.reached) {
            printed.insert(outcome.subject->facts.Name());
        }
    }
    // Name-index types are one operation each, NG-MVPN keys one parser; what prints is a row's, with its sub-types.
    const auto isOneOfMany = [](const Subject &subject) {
        return subject.row.TypeId >= 0x6000 || std::strncmp(subject.facts.Name(), "NG_TYPE", 7) == 0;
    };
    for (size_t i = 0; i < Subjects().size(); ++i) {
        const Subject &subject = Subjects()[i];
        const std::string name = subject.facts.Name();
        if (isOneOfMany(subject)) {
            continue;
        }
        if (subject.row.FormatIn != nullptr && !subject.facts.Is(BGP_TRAIT_NO_TEXT)) {
            EXPECT_EQ(typed.count(name), 1u) << "no seed of fuzz/corpus/text is accepted by " << name;
        }
        if (subject.row.FormatOut != nullptr && i >= kSubTypes) {
            EXPECT_EQ(printed.count(name), 1u) << "no seed of fuzz/corpus/value prints by " << name;
        }
    }
}

class Mutations : public PlugIn, public ::testing::WithParamInterface<const char *> {};

TEST_P(Mutations, AreClean)
{
    const Target &target = *fuzz::FindTarget(GetParam());
    const std::vector<Seed> seeds = SeedsIn(kFuzz / "corpus" / target.name);
    ASSERT_FALSE(seeds.empty());
    Mutator mutator(target, seeds, 2024);
    int reached = 0;
    for (int i = 0; i < kMutations; ++i) {
        const Bytes input = mutator.Next();
        const Outcome outcome = Replay(target, input);
        reached += outcome.reached;
        ASSERT_EQ(Said(outcome), "") << target.name << ", mutation " << i << ": " << Hex(input.data(), input.size());
    }
    EXPECT_GT(reached, kMutations / 50) << "the mutations break nearly every input";
}

INSTANTIATE_TEST_SUITE_P(Targets, Mutations, ::testing::Values("text", "value", "lua", "faults"),
                         [](const auto &instance) { return std::string(instance.param); });

// ------------------------------------------------------------------------------------------------------------ canaries

// AS numbers with something wrong in one operation.
using Plant = void (*)(DataTypeDescriptor &row);

std::vector<void *> lost; // what the first canary loses, to be given back

uint32_t LosingFormatIn(const DataTypeRequest *request, uint32_t typeId, uint32_t length, char *text,
                        uint16_t *outTypeId, uint16_t *outLength, void **outBuffer)
{
    lost.push_back(SYS_DataTypeMalloc(8));
    return SYSDT_AsNumFormatIn(request, typeId, length, text, outTypeId, outLength, outBuffer);
}

uint32_t LosingByHandle(const DataTypeRequest *request, uint32_t typeId, uint32_t length, char *text,
                        uint16_t *outTypeId, uint16_t *outLength, void **outBuffer)
{
    EXPECT_NE(SYS_DataTypeMallocByHandle(request->MemoryHandle, 8), nullptr);
    return SYSDT_AsNumFormatIn(request, typeId, length, text, outTypeId, outLength, outBuffer);
}

uint32_t WritingFormatIn(const DataTypeRequest *request, uint32_t typeId, uint32_t length, char *text,
                         uint16_t *outTypeId, uint16_t *outLength, void **outBuffer)
{
    const uint32_t code = SYSDT_AsNumFormatIn(request, typeId, length, text, outTypeId, outLength, outBuffer);
    text[0] = 'x';
    return code;
}

// Keeps its memory when the print fails.
uint32_t LosingFormatOut(const DataTypeRequest *request, uint32_t typeId, uint32_t length, const void *value,
                         uint16_t *outTypeId, uint16_t *outLength, void **outBuffer)
{
    const bool own = *outBuffer == nullptr;
    const uint32_t code = SYSDT_AsNumFormatOut(request, typeId, length, value, outTypeId, outLength, outBuffer);
    if (code != DT_OK && own) {
        *outBuffer = nullptr;
    }
    return code;
}

uint32_t OverrunningFormatOut(const DataTypeRequest *request, uint32_t typeId, uint32_t length, const void *value,
                              uint16_t *outTypeId, uint16_t *outLength, void **outBuffer)
{
    constexpr size_t kTextSize = 33;
    const bool own = *outBuffer == nullptr;
    const uint32_t code = SYSDT_AsNumFormatOut(request, typeId, length, value, outTypeId, outLength, outBuffer);
    if (code == DT_OK && !own && request->FormatMode == 1) {
        static_cast<volatile char *>(*outBuffer)[kTextSize] = 'x';
    }
    return code;
}

// The same in memory of its own.
uint32_t OverrunningOwn(const DataTypeRequest *request, uint32_t typeId, uint32_t length, const void *value,
                        uint16_t *outTypeId, uint16_t *outLength, void **outBuffer)
{
    constexpr size_t kTextSize = 33;
    const bool own = *outBuffer == nullptr;
    const uint32_t code = SYSDT_AsNumFormatOut(request, typeId, length, value, outTypeId, outLength, outBuffer);
    if (code == DT_OK && own && request->FormatMode == 1) {
        static_cast<volatile char *>(*outBuffer)[kTextSize] = 'x';
    }
    return code;
}

uint32_t FreeingFormatOut(const DataTypeRequest *request, uint32_t typeId, uint32_t length, const void *value,
                          uint16_t *outTypeId, uint16_t *outLength, void **outBuffer)
{
    const uint32_t code = SYSDT_AsNumFormatOut(request, typeId, length, value, outTypeId, outLength, outBuffer);
    SYS_DataTypeFree(outLength);
    return code;
}

uint32_t HalfSwapping(const void *, uint32_t, uint32_t, void *value)
{
    auto *bytes = static_cast<uint8_t *>(value);
    std::rotate(bytes, bytes + 1, bytes + 4);
    return DT_OK;
}

uint32_t OverrunningEndian(const void *context, uint32_t typeId, uint32_t length, void *value)
{
    static_cast<volatile uint8_t *>(value)[length] = 1;
    return SYSDT_AsNumLuaEndian(context, typeId, length, value);
}

int32_t AlwaysSmaller(const void *, uint32_t, const void *, const void *)
{
    return -1;
}

uint32_t NarrowLuaGet(lua_State *L, int32_t tableIndex, const char *fieldName, uint32_t typeId, uint16_t length,
                      void *outValue)
{
    const uint32_t code = SYSDT_AsNumLuaGet(L, tableIndex, fieldName, typeId, length, outValue);
    static_cast<uint8_t *>(outValue)[2] = 0;
    return code;
}

uint32_t WrongCode(const void *, uint32_t, uint32_t, const void *)
{
    return 1;
}

struct Canary {
    const char *name;
    const char *target;
    Plant plant;
    std::string input; // behind the subject byte
    std::string finding;
    bool overruns = false; // AddressSanitizer sees it first, and ends the process
};

const std::vector<Canary> kCanaries = {
    {"sound", "text", [](DataTypeDescriptor &) {},
     "\x01"
     "65536",
     ""},
    {"loses scratch memory", "text", [](DataTypeDescriptor &row) { row.FormatIn = LosingFormatIn; },
     "\x01"
     "65536",
     "FormatIn loses a block"},
    {"loses memory of a refused text", "text", [](DataTypeDescriptor &row) { row.FormatIn = LosingByHandle; },
     "\x01"
     "x",
     "FormatIn loses a block"},
    {"writes to its text", "text", [](DataTypeDescriptor &row) { row.FormatIn = WritingFormatIn; },
     "\x01"
     "65536",
     "FormatIn writes to its text"},
    {"loses memory of a failed print", "faults", [](DataTypeDescriptor &row) { row.FormatOut = LosingFormatOut; },
     std::string("\x01\x02\x00"
                 "65536",
                 8),
     "FormatOut loses a block"},
    {"overruns the caller's buffer", "text", [](DataTypeDescriptor &row) { row.FormatOut = OverrunningFormatOut; },
     "\x01"
     "65536",
     "FormatOut's buffer is written around", true},
    {"overruns its own buffer", "value", [](DataTypeDescriptor &row) { row.FormatOut = OverrunningOwn; },
     std::string("\x01\x00\x01", 3), "guard bytes", true},
    {"frees what is not its own", "text", [](DataTypeDescriptor &row) { row.FormatOut = FreeingFormatOut; },
     "\x01"
     "65536",
     "frees what is no block of the host"},
    {"swaps wrongly", "text", [](DataTypeDescriptor &row) { row.Endian = HalfSwapping; },
     "\x01"
     "65536",
     "Endian twice is not the identity"},
    {"overruns its value", "value", [](DataTypeDescriptor &row) { row.Endian = OverrunningEndian; },
     std::string("\x01\x00\x01", 3), "Endian's value is written around", true},
    {"has no order", "value", [](DataTypeDescriptor &row) { row.Compare = AlwaysSmaller; },
     std::string("\x01\x00\x01", 3), "Compare is no order"},
    {"forgets a byte", "value", [](DataTypeDescriptor &row) { row.LuaGet = NarrowLuaGet; },
     std::string("\x01\x00\x01\x02\x03\x04", 6), "LuaGet reads otherwise than LuaSet wrote"},
    {"returns a code of its own", "value", [](DataTypeDescriptor &row) { row.Check = WrongCode; },
     std::string("\x01\x00\x01", 3), "Check returns 0x1"},
};

Subject Planted(const Canary &canary)
{
    Subject subject = *std::find_if(Subjects().begin(), Subjects().end(),
                                    [](const Subject &one) { return std::string_view(one.facts.Name()) == "ASNUM"; });
    canary.plant(subject.row);
    return subject;
}

Outcome RunCanary(const Canary &canary)
{
    const Subject subject = Planted(canary);
    const std::string input = '\0' + canary.input;
    return fuzz::Run(*fuzz::FindTarget(canary.target), {&subject, 1}, reinterpret_cast<const uint8_t *>(input.data()),
                     input.size());
}

TEST_F(Fuzz, CanariesAreSeen)
{
    for (const Canary &canary : kCanaries) {
        if (canary.overruns && kAsan) {
            EXPECT_DEATH(RunCanary(canary), "AddressSanitizer") << canary.name;
            continue;
        }
        const std::string said = Said(RunCanary(canary));
        if (canary.finding.empty()) {
            EXPECT_EQ(said, "") << canary.name;
        } else {
            EXPECT_NE(said.find(canary.finding), std::string::npos) << canary.name << ", but noticed: " << said;
        }
    }
    EXPECT_FALSE(lost.empty());
    for (void *memory : lost) {
        SYS_DataTypeFree(memory);
    }
}

} // namespace
} // namespace bgp::test
