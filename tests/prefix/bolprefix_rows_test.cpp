// The composite passes over rows that a look at the text tells will refuse it. Here it is held against a composite that
// asks every row: the same answers, the same bytes, the same calls of the host, also while the host's calls fail in
// turn.
#include "support/harness.h"

#include "bgp_host_services.h"

#include <cstring>
#include <random>

#include <arpa/inet.h>

namespace {

thread_local bool isLiberal = false;

} // namespace

// The host's reader, which a test may make liberal: then an IPv4 address may have fewer parts than four, and others
// than decimal ones. Which texts are addresses is for the host to say.
uint32_t SYSDT_Str2Ipv4(const char *text, uint32_t *address)
{
    if (!isLiberal) {
        return QOV_StrToIpAddr(text, address);
    }
    in_addr network{};
    if (inet_aton(text, &network) == 0) {
        return 1;
    }
    *address = ntohl(network.s_addr);
    return 0;
}

namespace bgp::test {
namespace {

class BolPrefixRows : public PlugIn {};

// What one call answers, writes and asks of the host.
struct Answer {
    uint32_t code = 0;
    uint16_t typeId = kUntouched;
    uint16_t length = kUntouched;
    std::string value;
    uint32_t allocations = 0, prints = 0, addressPrints = 0, copies = 0, scans = 0;
    bool operator==(const Answer &) const = default;
};

using FormatInCall = uint32_t (*)(const DataTypeRequest *request, char *text, uint16_t *typeId, uint16_t *length,
                                  void **value);

uint32_t ByComposite(const DataTypeRequest *request, char *text, uint16_t *typeId, uint16_t *length, void **value)
{
    return SYSDT_BolPrefixFormatIn(request, 279, 0, text, typeId, length, value);
}

// Every row in turn, the first that succeeds decides.
uint32_t ByEveryRow(const DataTypeRequest *request, char *text, uint16_t *typeId, uint16_t *length, void **value)
{
    DataTypeFormatIn refuser = nullptr; // neighbours with one parser refuse alike, unless it was memory
    for (const BolPrefixSubtypeEntry &row : g_astBOL_PREFIX_ProcTable) {
        if (row.FormatIn == nullptr || row.FormatIn == refuser) {
            continue;
        }
        const uint32_t code = row.FormatIn(request, 279, 0, text, typeId, length, value);
        if (code == DT_OK) {
            return DT_OK;
        }
        refuser = code == DT_ERR_NO_MEMORY ? nullptr : row.FormatIn;
    }
    return DT_ERR_INVALID_VALUE;
}

Answer Ask(FormatInCall call, uint32_t handle, uint8_t mode, const std::string &text, const host::Faults &faults)
{
    const DataTypeRequest request{mode, handle};
    std::string copy = text;
    void *value = nullptr;
    Answer answer;
    host::SetFaults(faults);
    answer.code = call(&request, copy.data(), &answer.typeId, &answer.length, &value);
    host::SetFaults({});
    const host::Counters counters = host::TakeCounters();
    EXPECT_EQ(copy, text);
    if (answer.code == DT_OK) {
        answer.value = Hex(value, answer.length);
    }
    answer.allocations = counters.allocations;
    answer.prints = counters.prints;
    answer.addressPrints = counters.addressPrints;
    answer.copies = counters.copies;
    answer.scans = counters.scans;
    host::ResetHandle(handle);
    return answer;
}

struct Seen {
    uint32_t taken = 0, refused = 0;
};

void AsksAlike(uint32_t handle, uint8_t mode, const std::string &text, const host::Faults &faults, Seen &seen)
{
    const Answer expected = Ask(ByEveryRow, handle, mode, text, faults);
    const Answer answer = Ask(ByComposite, handle, mode, text, faults);
    ++(expected.code == DT_OK ? seen.taken : seen.refused);
    ASSERT_EQ(answer.code, expected.code) << text;
    ASSERT_EQ(answer.value, expected.value) << text;
    ASSERT_TRUE(answer == expected) << text;
}

// Texts of every row and every form.
const std::vector<std::string> kSamples = {
    "192.0.2.17",
    "10.1.1.1",
    "0000.0000.0000.0000.0000:7",
    "0011.2233.4455.6677.8899:100",
    "0011.2233.4455.6677.8899",
    "0011.2233.4455.6677.8899:32:10.1.1.1",
    "0011.2233.4455.6677.8899:128:[2001:db8::1]",
    "100:48:0000-5e00-5301:32:10.0.0.1",
    "100:48:0000-5e00-5301:128:[2001:db8::1]",
    "100:48:0000-5e00-5301:0:0.0.0.0",
    "100:32:10.1.1.1",
    "100:128:[2001:db8::1]",
    "100:10.1.0.0:16",
    "100:[2001:db8::]:32",
    "100:32:10.1.1.1:32:225.1.1.1:32:10.2.2.2",
    "100:32:10.1.1.1:32:225.1.1.1:128:[2001:db8::1]",
    "0011.2233.4455.6677.8899:100:32:10.1.1.1:32:225.1.1.1:32:10.2.2.2",
    "0011.2233.4455.6677.8899:100:32:10.1.1.1:32:225.1.1.1:32:10.2.2.2:9",
    "100",
    "1.5",
    "1.1.1.1:225.1.1.1:2.2.2.2",
    "100:10.1.1.1",
    "1.1.1.1:225.1.1.1:2.2.2.2:3.3.3.3",
    "10.1.1.1:225.1.1.1",
    "100:1.1.1.1:225.2.2.2",
    "10.1.1.1:10.2.2.2",
    "1...1:2...2",
    "100-2001:db8::1",
    "2001:db8::1-ff02::1",
    "2001:db8::1-2001:db8::2",
    "100-2001:db8::1-ff02::1",
    "2001:db8::1-ff02::1-2001:db8::2",
    "2001:db8::1-ff02::1-2001:db8::2-2001:db8::3",
    "10.1.1.1-225.1.1.1-2001:db8::2-2001:db8::3",
    "65000:100",
    "1.5:7",
    "10.1.1.1:100",
    "65000:100ab-c",
    "0a0b-0c0d-0e0f",
    "1/10.1.1.1/100",
    "[100][200][192.0.2.17]",
    "[100][200][2001:db8::1]",
    "[1][2][1:2:3:4:5:6:7:8]",
    "2001:db8::1",
    "::",
    "::1",
    "1:2:3:4:5:6:7:8",
    "1::3:4:5:6:7",
    "2001:4860:4860::8888",
    "::ffff:192.0.2.17",
    "1-100-200-10.1.1.1",
    "1-100-200-2001:db8::1",
};

// One to three changes: a character more, less or another, a piece of another sample, white space at an end.
std::string Changed(std::minstd_rand &random, std::string text)
{
    static constexpr char kLikely[] = "0123456789afAFgz.....:::::-----///[[[]]] \t%\n\x80";
    const auto below = [&random](size_t end) { return random() % end; };
    for (auto left = below(4); left > 0; --left) {
        const size_t at = below(text.size() + 1);
        const std::string &other = kSamples[below(kSamples.size())];
        switch (below(6)) {
        case 0:
            text.erase(at, 1 + below(4));
            break;
        case 1:
            text.insert(at, other.substr(below(other.size()), 1 + below(12)));
            break;
        case 2:
            text = text.substr(0, at) + other.substr(below(other.size()));
            break;
        case 3:
            text.insert(below(2) != 0 ? 0 : text.size(), 1, " \t\v\n"[below(4)]);
            break;
        default:
            text.replace(at, below(2), 1, kLikely[below(sizeof kLikely - 1)]);
            break;
        }
    }
    return text;
}

TEST_F(BolPrefixRows, EverySampleIsTakenAndAnsweredAlikeInEveryMode)
{
    const uint32_t handle = host::OpenHandle();
    for (const std::string &sample : kSamples) {
        Seen seen;
        for (const uint8_t mode : kAllModes) {
            ASSERT_NO_FATAL_FAILURE(AsksAlike(handle, mode, sample, {}, seen));
        }
        EXPECT_GE(seen.taken, 3u) << sample;
    }
    host::CloseHandle(handle);
}

TEST_F(BolPrefixRows, EveryShortTextIsAnsweredAlike)
{
    static constexpr char kCharacters[] = "1a.:-/[] x";
    constexpr uint32_t kCount = sizeof kCharacters - 1;
    const uint32_t handle = host::OpenHandle();
    Seen seen;
    uint32_t count = 1;
    for (uint32_t length = 0; length <= 5; ++length, count *= kCount) {
        std::string text(length, ' ');
        for (uint32_t i = 0; i < count; ++i) {
            uint32_t left = i;
            for (char &character : text) {
                character = kCharacters[left % kCount];
                left /= kCount;
            }
            ASSERT_NO_FATAL_FAILURE(AsksAlike(handle, 2, text, {}, seen));
        }
    }
    host::CloseHandle(handle);
    EXPECT_GT(seen.taken, 100u);
    EXPECT_EQ(seen.taken + seen.refused, 111111u);
}

TEST_F(BolPrefixRows, ChangedTextsAreAnsweredAlikeWhileTheHostFails)
{
    const uint32_t handle = host::OpenHandle();
    std::minstd_rand random(20260105);
    Seen whole;
    Seen failing;
    for (uint32_t i = 0; i < 60000; ++i) {
        const std::string text = Changed(random, kSamples[i % kSamples.size()]);
        ASSERT_NO_FATAL_FAILURE(AsksAlike(handle, 2, text, {}, whole));
        for (const uint32_t n : {1u, 2u, 3u, 8u}) {
            ASSERT_NO_FATAL_FAILURE(AsksAlike(handle, 2, text, {.failAllocation = n}, failing));
            ASSERT_NO_FATAL_FAILURE(AsksAlike(handle, 2, text, {.failAllocation = n, .failAllAfter = true}, failing));
            ASSERT_NO_FATAL_FAILURE(AsksAlike(handle, 2, text, {.failPrint = n}, failing));
        }
    }
    host::CloseHandle(handle);
    EXPECT_GT(whole.taken, 10000u);
    EXPECT_GT(whole.refused, 10000u);
    EXPECT_GT(failing.refused, whole.refused);
}

TEST_F(BolPrefixRows, ALiberalHostIsAskedAllTheSame)
{
    const std::vector<std::string> samples = {
        "1",
        "0x10",
        "10.1",
        "1.2.3",
        "100:1",
        "1:2:3",
        "1:2:3:4",
        "100:32:10.1",
        "100:32:1:32:2:32:3",
        "100:32:1.2:32:2.3:32:3.4",
        "100-10.1",
        "1-2-3-4",
        "0011.2233.4455.6677.8899:32:1",
        "0011.2233.4455.6677.8899:32:1.2.3",
        "0011.2233.4455.6677.8899:100:32:1:32:2:32:3",
        "0011.2233.4455.6677.8899:100:32:1:32:2:32:3:9",
    };
    const uint32_t handle = host::OpenHandle();
    isLiberal = true;
    for (const std::string &sample : samples) {
        Seen seen;
        AsksAlike(handle, 2, sample, {}, seen);
        EXPECT_EQ(seen.taken, 1u) << sample;
    }
    std::minstd_rand random(20260106);
    Seen seen;
    for (uint32_t i = 0; i < 100000 && !HasFatalFailure(); ++i) {
        AsksAlike(handle, 2, Changed(random, samples[i % samples.size()]), {}, seen);
    }
    isLiberal = false;
    host::CloseHandle(handle);
    EXPECT_GT(seen.taken, 20000u);
    EXPECT_GT(seen.refused, 20000u);
}

// A count must not begin anew, nor run into its neighbour, however long a text is.
TEST_F(BolPrefixRows, LongTextsAreAnsweredAlike)
{
    const uint32_t handle = host::OpenHandle();
    Seen seen;
    for (const std::string &sample : kSamples) {
        for (const char character : {'.', ':', '-', '/', '[', ']', 'a', '1', ' ', '%'}) {
            for (const size_t length : {100u, 120u, 200u, 230u, 250u, 254u, 255u, 256u, 257u, 260u, 300u, 511u, 512u}) {
                ASSERT_NO_FATAL_FAILURE(AsksAlike(handle, 2, sample + std::string(length, character), {}, seen));
                ASSERT_NO_FATAL_FAILURE(AsksAlike(handle, 2, std::string(length, character) + sample, {}, seen));
            }
        }
    }
    host::CloseHandle(handle);
    EXPECT_GT(seen.taken, 100u); // blanks and the like
    EXPECT_GT(seen.refused, 1000u);
}

} // namespace
} // namespace bgp::test
