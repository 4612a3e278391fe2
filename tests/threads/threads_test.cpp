// All operations of all rows at once: several threads go over the texts of examples/values, each in its own order, and
// must get what one thread alone got. The thread sanitizer (preset tsan) sees what results do not tell.
#include "fuzz/item_list.h"
#include "fuzz/subjects.h"
#include "support/harness.h"

#include "bgp_host_services.h"

#include <lua.hpp>

#include <algorithm>
#include <atomic>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <thread>

namespace bgp::test {
namespace {

using fuzz::Subject;

// Every text for every row is a lot where each step is watched or emulated: there every n-th will do.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__) || defined(__arm__)
constexpr size_t kStep = 23;
#else
constexpr size_t kStep = 3;
#endif
constexpr size_t kThreads = 4;

std::vector<std::string> Texts()
{
    std::vector<std::string> texts;
    std::vector<std::filesystem::path> paths;
    for (const auto &entry :
         std::filesystem::directory_iterator(std::filesystem::path(BGP_SOURCE_DIR) / "examples" / "values")) {
        paths.push_back(entry.path());
    }
    std::sort(paths.begin(), paths.end());
    for (const auto &path : paths) {
        std::ifstream file(path);
        size_t number = 0;
        for (std::string line; std::getline(file, line);) {
            if (!line.empty() && line[0] != '#' && number++ % kStep == 0) {
                texts.push_back(line);
            }
        }
    }
    return texts;
}

// What a piece of work answered, as one number: FNV-1a over everything that came back.
class Answers {
public:
    void Add(const void *bytes, size_t length)
    {
        for (size_t i = 0; i < length; ++i) {
            hash_ = (hash_ ^ static_cast<const uint8_t *>(bytes)[i]) * 0x100000001b3u;
        }
    }
    void Add(uint32_t number) { Add(&number, sizeof number); }
    uint64_t Sum() const { return hash_; }

private:
    uint64_t hash_ = 0xcbf29ce484222325u;
};

// One thread's own: memory and interpreter.
struct Worker {
    uint32_t handle = host::OpenHandle();
    lua_State *L = host::NewLua();
    Worker() = default;
    Worker(const Worker &) = delete;
    ~Worker()
    {
        host::CloseLua(L);
        host::CloseHandle(handle);
    }
};

// What plain memory gave is given back; the rest goes with the handle.
void Release(void *buffer)
{
    if (buffer != nullptr && host::ScratchBlocks() != 0) {
        SYS_DataTypeFree(buffer);
    }
}

std::string TypeIn(const Worker &worker, const Subject &subject, std::string text, Answers &answers)
{
    const DataTypeRequest request{2, worker.handle};
    uint16_t typeId = 0;
    uint16_t length = 0;
    void *buffer = nullptr;
    const uint32_t code = subject.row.FormatIn(&request, subject.row.TypeId, static_cast<uint32_t>(text.size() + 1),
                                               text.data(), &typeId, &length, &buffer);
    answers.Add(code);
    answers.Add(typeId);
    std::string value;
    if (code == 0 && buffer != nullptr) {
        value.assign(static_cast<const char *>(buffer), length);
        answers.Add(buffer, length);
    }
    Release(buffer);
    return value;
}

void PrintOut(const Worker &worker, const Subject &subject, const std::string &value, Answers &answers)
{
    for (const uint8_t mode : {uint8_t{1}, uint8_t{2}, uint8_t{3}}) {
        const DataTypeRequest request{mode, worker.handle};
        uint16_t typeId = 0;
        uint16_t length = 0;
        void *buffer = nullptr;
        const uint32_t code = subject.row.FormatOut(&request, subject.row.TypeId, static_cast<uint32_t>(value.size()),
                                                    value.data(), &typeId, &length, &buffer);
        answers.Add(code);
        answers.Add(typeId);
        answers.Add(length);
        // A length of 1 may be a text that was not even terminated.
        if (code == 0 && buffer != nullptr && length > 1) {
            answers.Add(buffer, length);
        }
        Release(buffer);
    }
}

void AskForHelp(const Worker &worker, const Subject &subject, const std::string &text, Answers &answers)
{
    const DataTypeRequest request{1, worker.handle};
    const uint32_t words[2] = {1, 2};
    DataTypeHelpInfo info{0, nullptr};
    answers.Add(subject.row.Help(&request, subject.row.TypeId, 0, text.c_str(), words, &info));
    if (info.EntryCount != 0 && info.Entries[0].Text != nullptr) {
        answers.Add(info.Entries[0].Text, std::strlen(info.Entries[0].Text));
        Release(info.Entries[0].Text);
    }
}

void GoThroughLua(const Worker &worker, const Subject &subject, const std::string &value, Answers &answers)
{
    lua_settop(worker.L, 0);
    lua_newtable(worker.L);
    const auto length = static_cast<uint16_t>(value.size());
    answers.Add(subject.row.LuaSet(worker.L, 1, "v", subject.row.TypeId, length, value.data()));
    if (subject.row.LuaGet != nullptr) {
        std::string read(value.size(), '\0');
        answers.Add(subject.row.LuaGet(worker.L, 1, "v", subject.row.TypeId, length, read.data()));
        answers.Add(read.data(), read.size());
    }
}

// Every operation of a row, with a text; where the row does not take the text, with its bytes as a value.
uint64_t WorkOn(const Worker &worker, const Subject &subject, const std::string &text)
{
    Answers answers;
    std::string value;
    if (subject.row.FormatIn != nullptr) {
        value = TypeIn(worker, subject, text, answers);
    }
    if (value.empty()) {
        value = text;
        value.resize(subject.facts.type->ValueLength);
    }
    if (subject.row.FormatOut != nullptr) {
        std::string printed = value;
        if (subject.facts.Is(BGP_TRAIT_PRINTS_ITEMS)) {
            const std::string items =
                "\x02" + std::string("\0\x09\0Codes %s:", 12) + std::string("\0\x20\0", 3) + value;
            const std::vector<uint8_t> list =
                fuzz::ItemList(reinterpret_cast<const uint8_t *>(items.data()), items.size());
            printed.assign(list.begin(), list.end());
        }
        PrintOut(worker, subject, printed, answers);
    }
    if (subject.row.Check != nullptr) {
        answers.Add(subject.row.Check(&worker, subject.row.TypeId, static_cast<uint32_t>(value.size()), value.data()));
    }
    if (subject.row.Help != nullptr) {
        AskForHelp(worker, subject, text, answers);
    }
    if (subject.row.Compare != nullptr) {
        std::string other = value;
        other[other.size() / 2] ^= 1;
        answers.Add(static_cast<uint32_t>(
            subject.row.Compare(&worker, static_cast<uint32_t>(value.size()), value.data(), other.data())));
    }
    if (subject.row.LuaSet != nullptr) {
        GoThroughLua(worker, subject, value, answers);
    }
    if (subject.row.Endian != nullptr) {
        answers.Add(subject.row.Endian(&worker, subject.row.TypeId, static_cast<uint32_t>(value.size()), value.data()));
        answers.Add(value.data(), value.size());
    }
    return answers.Sum();
}

class Threads : public PlugIn {};

TEST_F(Threads, AnswerAsOneThreadAlone)
{
    host::SetCheckedBlocks(false); // the shared lists of checked blocks would put the threads in a row
    const std::vector<Subject> subjects = fuzz::AllSubjects();
    const std::vector<std::string> texts = Texts();
    ASSERT_GT(texts.size(), 100u);
    const size_t pieces = subjects.size() * texts.size();
    const auto work = [&](const Worker &worker, size_t piece) {
        const uint64_t answer = WorkOn(worker, subjects[piece % subjects.size()], texts[piece / subjects.size()]);
        if (piece % 64 == 0) {
            host::ResetHandle(worker.handle);
        }
        return answer;
    };

    std::vector<uint64_t> alone(pieces);
    {
        const Worker worker;
        for (size_t piece = 0; piece < pieces; ++piece) {
            alone[piece] = work(worker, piece);
        }
        EXPECT_EQ(host::ScratchBlocks(), 0u);
    }

    // Each thread begins somewhere else, and every other one goes backwards, so that they meet on different rows.
    std::atomic<size_t> differing{0}, lost{0}, atOnce{0};
    std::vector<std::thread> threads;
    for (size_t number = 0; number < kThreads; ++number) {
        threads.emplace_back([&, number] {
            const Worker worker;
            ++atOnce;
            while (atOnce.load() < kThreads) {
                std::this_thread::yield();
            }
            for (size_t i = 0; i < pieces; ++i) {
                const size_t place = (i + number * pieces / kThreads) % pieces;
                const size_t piece = number % 2 == 0 ? place : pieces - 1 - place;
                differing += work(worker, piece) != alone[piece];
            }
            lost += host::ScratchBlocks();
        });
    }
    for (std::thread &thread : threads) {
        thread.join();
    }
    EXPECT_EQ(differing.load(), 0u) << "of " << pieces << " pieces of work on " << kThreads << " threads";
    EXPECT_EQ(lost.load(), 0u) << "scratch blocks";
}

// The comparison above can tell answers apart.
TEST_F(Threads, DifferentWorkAnswersDifferently)
{
    const std::vector<Subject> subjects = fuzz::AllSubjects();
    const Worker worker;
    std::vector<uint64_t> answers;
    for (const Subject &subject : subjects) {
        if (std::string_view(subject.facts.Name()) == "ASNUM" || std::string_view(subject.facts.Name()) == "VRFRT") {
            for (const char *text : {"100", "101", "100:1"}) {
                answers.push_back(WorkOn(worker, subject, text));
            }
        }
    }
    ASSERT_EQ(answers.size(), 6u);
    std::sort(answers.begin(), answers.end());
    EXPECT_EQ(std::unique(answers.begin(), answers.end()), answers.end());
}

} // namespace
} // namespace bgp::test
