// The services that read and print, held against others that say the same: the C library's inet_pton(), inet_ntop() and
// vsnprintf(), and plain readers written here. Texts are drawn from a fixed seed, and each ends where its page ends, so
// that whoever reads on behind a text does not come back.
#include "bgp_host_services.h"

#include <gtest/gtest.h>

#include <array>
#include <cctype>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include <arpa/inet.h>
#include <sys/mman.h>
#include <unistd.h>

namespace {

using Bytes16 = std::array<uint8_t, 16>;
using Random = std::mt19937_64;

uint32_t Below(Random &random, uint32_t end)
{
    return static_cast<uint32_t>(random() % end);
}

// ------------------------------------------------------------------------------------------- texts that end with a
// page

class PageEnd {
public:
    PageEnd() : size_(static_cast<size_t>(sysconf(_SC_PAGESIZE)))
    {
        void *pages = mmap(nullptr, 2 * size_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        EXPECT_NE(pages, MAP_FAILED);
        page_ = static_cast<char *>(pages);
        EXPECT_EQ(mprotect(page_ + size_, size_, PROT_NONE), 0);
    }
    ~PageEnd() { munmap(page_, 2 * size_); }
    PageEnd(const PageEnd &) = delete;
    PageEnd &operator=(const PageEnd &) = delete;

    // The text's copy whose terminator is the last byte that can be read.
    const char *Put(const std::string &text)
    {
        char *at = page_ + size_ - text.size() - 1;
        std::memcpy(at, text.c_str(), text.size() + 1);
        return at;
    }

    // The last `size` bytes.
    char *Last(size_t size) { return page_ + size_ - size; }

private:
    size_t size_;
    char *page_ = nullptr;
};

// ------------------------------------------------------------------------------------------------------------
// addresses

// How many texts were taken and how many refused: a run that saw one kind only has shown nothing.
struct Seen {
    uint32_t taken = 0, refused = 0;
};

void SameAsIpv4(PageEnd &page, const std::string &text, Seen &seen)
{
    in_addr expected{};
    const bool taken = inet_pton(AF_INET, text.c_str(), &expected) == 1;
    ++(taken ? seen.taken : seen.refused);
    const char *copy = page.Put(text);
    uint32_t word = 77;
    uint32_t other = 77;
    uint8_t network[4] = {7, 7, 7, 7};
    ASSERT_EQ(SYSDT_Str2Ipv4(copy, &word) == 0, taken) << text;
    ASSERT_EQ(QOV_StrToIpAddr(copy, &other) == 0, taken) << text;
    ASSERT_EQ(SMP_InetAToN(copy, network, 2) == 0, taken) << text;
    ASSERT_EQ(word, taken ? ntohl(expected.s_addr) : 77u) << text;
    ASSERT_EQ(other, word) << text;
    if (taken) {
        ASSERT_EQ(std::memcmp(network, &expected, sizeof network), 0) << text;
    } else {
        ASSERT_EQ(std::memcmp(network, "\7\7\7\7", sizeof network), 0) << text;
    }
}

void SameAsIpv6(PageEnd &page, const std::string &text, Seen &seen)
{
    Bytes16 expected{};
    const bool taken = inet_pton(AF_INET6, text.c_str(), expected.data()) == 1;
    ++(taken ? seen.taken : seen.refused);
    if (!taken) {
        expected.fill(7);
    }
    const char *copy = page.Put(text);
    std::array<Bytes16, 3> addresses;
    for (Bytes16 &address : addresses) {
        address.fill(7);
    }
    ASSERT_EQ(SYSDT_Str2Ipv6(copy, addresses[0].data(), 0) == 0, taken) << text;
    ASSERT_EQ(SMP_InetAToN6(copy, addresses[1].data()) == 0, taken) << text;
    ASSERT_EQ(SMP_InetAToN(copy, addresses[2].data(), 10) == 0, taken) << text;
    for (const Bytes16 &address : addresses) {
        ASSERT_EQ(address, expected) << text;
    }
}

// A text of digits of the base, of least to most characters.
std::string Digits(Random &random, uint32_t least, uint32_t most, const char *digits, uint32_t base)
{
    std::string text(least + Below(random, most - least + 1), '0');
    for (char &digit : text) {
        digit = digits[Below(random, base)];
    }
    return text;
}

// Four octets, or nearly: now and then one part more or less, a large one, a zero in front.
std::string NearlyIpv4(Random &random)
{
    std::string text;
    const uint32_t parts = Below(random, 8) != 0 ? 4 : Below(random, 7);
    for (uint32_t i = 0; i < parts; ++i) {
        text += i > 0 ? "." : "";
        text += Below(random, 10) != 0 ? std::to_string(Below(random, 256)) : Digits(random, 0, 4, "0123456789", 10);
    }
    return text;
}

// Up to nine groups with a "::" somewhere, or an IPv4 address at the end, or nearly.
std::string NearlyIpv6(Random &random)
{
    const uint32_t gapAt = Below(random, 3) != 0 ? Below(random, 8) : 9;
    const bool ipv4 = Below(random, 6) == 0;
    const uint32_t whole = ipv4 ? 6 : 8;
    uint32_t groups = gapAt < 8 ? Below(random, whole) : whole;
    groups = Below(random, 16) != 0 ? groups : Below(random, 10);
    std::string text;
    for (uint32_t i = 0; i < groups; ++i) {
        text += i == gapAt ? "::" : i > 0 ? ":" : "";
        text += Digits(random, Below(random, 64) != 0, Below(random, 64) != 0 ? 4 : 5, "0123456789abcdef0ABCDEF0", 24);
    }
    text += gapAt < 8 && gapAt >= groups ? "::" : ipv4 && groups > 0 ? ":" : "";
    return ipv4 ? text + NearlyIpv4(random) : text;
}

// Changes up to three characters: another one, one more, one less. Most are characters that addresses have.
void Edit(Random &random, std::string &text)
{
    static constexpr char kLikely[] = "0123456789abcfgABFG:::...-+ %/x\t[]";
    for (uint32_t left = Below(random, 4); left > 0; --left) {
        const uint32_t at = Below(random, static_cast<uint32_t>(text.size()) + 1);
        const auto character = Below(random, 8) != 0 ? kLikely[Below(random, sizeof kLikely - 1)]
                                                     : static_cast<char>(1 + Below(random, 255));
        switch (Below(random, 3)) {
        case 0:
            text.insert(at, 1, character);
            break;
        case 1:
            text.replace(at, 1, 1, character);
            break;
        default:
            text.erase(at, 1);
            break;
        }
    }
}

constexpr uint32_t kTexts = 400000;

TEST(Property, EveryOctetTextIsReadAsTheCLibraryReadsIt)
{
    PageEnd page;
    Seen seen;
    std::vector<std::string> octets{""};
    for (uint32_t length = 1, end = 10; length <= 4; ++length, end *= 10) {
        for (uint32_t number = 0; number < end; ++number) {
            const std::string digits = std::to_string(number);
            octets.push_back(std::string(length - digits.size(), '0') + digits);
        }
    }
    for (const std::string &octet : octets) {
        for (uint32_t place = 0; place < 4; ++place) {
            std::string text;
            for (uint32_t i = 0; i < 4; ++i) {
                text += (i > 0 ? "." : "") + (i == place ? octet : "10");
            }
            ASSERT_NO_FATAL_FAILURE(SameAsIpv4(page, text, seen));
            ASSERT_NO_FATAL_FAILURE(SameAsIpv6(page, "::ffff:" + text, seen));
        }
    }
    EXPECT_EQ(seen.taken, 2u * 4 * 256);
    EXPECT_EQ(seen.refused, 2u * 4 * (octets.size() - 256));
}

TEST(Property, EveryGroupTextIsReadAsTheCLibraryReadsIt)
{
    PageEnd page;
    Seen seen;
    for (uint32_t length = 1; length <= 5; ++length) {
        for (uint32_t number = 0; number < 1u << 4 * std::min(length, 4u); ++number) {
            char group[8];
            std::snprintf(group, sizeof group, number % 3 == 0 ? "%0*X" : "%0*x", static_cast<int>(length), number);
            ASSERT_NO_FATAL_FAILURE(SameAsIpv6(page, std::string("2001:db8:") + group + "::1", seen));
        }
    }
    EXPECT_EQ(seen.taken, 16u + 256 + 4096 + 65536);
    EXPECT_EQ(seen.refused, 65536u);
}

TEST(Property, EveryCharacterAtEveryPlaceIsReadAsTheCLibraryReadsIt)
{
    PageEnd page;
    Seen seen;
    for (const std::string sample : {"192.0.2.17", "1.2.3.4", "2001:db8::17", "1:2:3:4:5:6:7:8", "::1",
                                     "1::", "::", "::ffff:192.0.2.17", "1:2:3:4:5:6:1.2.3.4", "fe80::a:b:c:d"}) {
        for (size_t place = 0; place <= sample.size(); ++place) {
            for (int character = 1; character < 256; ++character) {
                std::string changed = sample;
                changed.insert(place, 1, static_cast<char>(character));
                for (uint32_t twice = 0; twice < 2; ++twice) {
                    ASSERT_NO_FATAL_FAILURE(SameAsIpv4(page, changed, seen));
                    ASSERT_NO_FATAL_FAILURE(SameAsIpv6(page, changed, seen));
                    changed.erase(place + 1, 1);
                }
            }
        }
    }
    EXPECT_GT(seen.taken, 1000u);
    EXPECT_GT(seen.refused, 50000u);
}

TEST(Property, FuzzedAddressesAreReadAsTheCLibraryReadsThem)
{
    Random random(20260101);
    PageEnd page;
    Seen ipv4;
    Seen ipv6;
    for (uint32_t i = 0; i < kTexts; ++i) {
        std::string four = NearlyIpv4(random);
        std::string six = NearlyIpv6(random);
        if (i % 2 != 0) {
            Edit(random, four);
            Edit(random, six);
        }
        ASSERT_NO_FATAL_FAILURE(SameAsIpv4(page, four, ipv4));
        ASSERT_NO_FATAL_FAILURE(SameAsIpv6(page, six, ipv6));
        ASSERT_NO_FATAL_FAILURE(SameAsIpv4(page, six, ipv4));
        ASSERT_NO_FATAL_FAILURE(SameAsIpv6(page, four, ipv6));
    }
    for (const Seen &seen : {ipv4, ipv6}) {
        EXPECT_GT(seen.taken, kTexts / 4);
        EXPECT_GT(seen.refused, kTexts / 4);
    }
}

// Into every room from none to more than enough, which stands at the end of a page.
void PrintsAsTheCLibrary(PageEnd &page, const Bytes16 &address, uint32_t least, uint32_t most)
{
    for (uint32_t size = least; size <= most; ++size) {
        char expected[64];
        std::memset(expected, '#', sizeof expected);
        const bool fits = inet_ntop(AF_INET6, address.data(), expected, size) != nullptr;
        char *at = page.Last(size);
        std::memset(at, '#', size);
        ASSERT_EQ(inet_ntop6(address.data(), at, size), fits ? at : nullptr) << size;
        ASSERT_EQ(std::memcmp(at, expected, size), 0) << expected << ' ' << size;
    }
}

void PrintsAsTheCLibrary(PageEnd &page, const std::array<uint16_t, 8> &groups)
{
    Bytes16 address;
    for (uint32_t i = 0; i < 8; ++i) {
        address[2 * i] = static_cast<uint8_t>(groups[i] >> 8);
        address[2 * i + 1] = static_cast<uint8_t>(groups[i]);
    }
    ASSERT_NO_FATAL_FAILURE(PrintsAsTheCLibrary(page, address, INET6_ADDRSTRLEN, INET6_ADDRSTRLEN));
    char expected[INET6_ADDRSTRLEN];
    ASSERT_NE(inet_ntop(AF_INET6, address.data(), expected, sizeof expected), nullptr);
    uint32_t words[4];
    std::memcpy(words, groups.data(), sizeof words);
    char *at = page.Last(INET6_ADDRSTRLEN);
    ASSERT_EQ(QOV_Inet_ntoa_b_ipv6(words[0], words[1], words[2], words[3], at), at);
    ASSERT_STREQ(at, expected);
}

TEST(Property, EveryGroupIsPrintedAsTheCLibraryPrintsIt)
{
    PageEnd page;
    for (uint32_t value = 0; value <= UINT16_MAX; ++value) {
        for (uint32_t place = 0; place < 8; ++place) {
            std::array<uint16_t, 8> groups{0x2001, 0xdb8, 0x1, 0x20, 0x300, 0x4000, 0xabcd, 0xf};
            groups[place] = static_cast<uint16_t>(value);
            ASSERT_NO_FATAL_FAILURE(PrintsAsTheCLibrary(page, groups));
        }
    }
}

TEST(Property, EveryPatternOfZerosIsPrintedAsTheCLibraryPrintsIt)
{
    constexpr std::array<uint16_t, 5> kValues{0x1, 0x10, 0x100, 0x1000, 0xffff};
    constexpr std::array<uint16_t, 3> kSixths{0x1, 0xffff, 0xfffe}; // that before an IPv4 address at the end
    PageEnd page;
    for (const uint16_t value : kValues) {
        for (const uint16_t sixth : kSixths) {
            for (uint32_t pattern = 0; pattern < 256; ++pattern) {
                std::array<uint16_t, 8> groups{};
                for (uint32_t i = 0; i < 8; ++i) {
                    groups[i] = (pattern >> i & 1) == 0 ? uint16_t{0} : i == 5 ? sixth : value;
                }
                ASSERT_NO_FATAL_FAILURE(PrintsAsTheCLibrary(page, groups));
            }
        }
    }
}

TEST(Property, DrawnAddressesArePrintedAsTheCLibraryPrintsThemIntoAnyRoom)
{
    Random random(20260102);
    PageEnd page;
    for (uint32_t i = 0; i < 20000; ++i) {
        Bytes16 address;
        const uint32_t zeros = Below(random, 17);
        for (uint8_t &byte : address) {
            byte = Below(random, 16) < zeros ? uint8_t{0} : static_cast<uint8_t>(random());
        }
        ASSERT_NO_FATAL_FAILURE(PrintsAsTheCLibrary(page, address, 0, INET6_ADDRSTRLEN + 2));
    }
}

TEST(Property, OctetsArePrintedAsTheCLibraryPrintsThem)
{
    PageEnd page;
    for (uint32_t octet = 0; octet < 256; ++octet) {
        for (uint32_t place = 0; place < 4; ++place) {
            const uint32_t address = (0x0164D40Au & ~(0xFFu << 8 * place)) | octet << 8 * place;
            const in_addr network{htonl(address)};
            char expected[INET_ADDRSTRLEN];
            ASSERT_NE(inet_ntop(AF_INET, &network, expected, sizeof expected), nullptr);
            const size_t length = std::strlen(expected) + 1;
            char *at = page.Last(length); // no more than the text is written
            ASSERT_EQ(QOV_IpAddrToStr(address, at), at);
            ASSERT_STREQ(at, expected);
        }
    }
}

// ------------------------------------------------------------------------------------------- MAC addresses and numbers

// Three groups of one to four hexadecimal digits, taken apart by the C++ library.
bool ReadMacPlainly(const std::string &text, std::array<uint8_t, 6> &mac)
{
    size_t at = 0;
    for (uint32_t i = 0; i < 3; ++i) {
        const size_t end = i < 2 ? text.find('-', at) : text.size();
        if (end == std::string::npos || end == at || end - at > 4 ||
            text.find_first_not_of("0123456789abcdefABCDEF", at) < end) {
            return false;
        }
        const unsigned long group = std::stoul(text.substr(at, end - at), nullptr, 16);
        mac[2 * i] = static_cast<uint8_t>(group >> 8);
        mac[2 * i + 1] = static_cast<uint8_t>(group);
        at = end + 1;
    }
    return true;
}

TEST(Property, FuzzedMacAddressesAreReadGroupByGroup)
{
    Random random(20260103);
    PageEnd page;
    Seen seen;
    for (uint32_t i = 0; i < kTexts; ++i) {
        std::string text;
        for (uint32_t group = 0; group < 3; ++group) {
            text += group > 0 ? "-" : "";
            text += Digits(random, Below(random, 16) != 0, Below(random, 8) != 0 ? 4 : 5, "0123456789abcdefABCDEF", 22);
        }
        if (i % 2 != 0) {
            Edit(random, text);
        }
        std::array<uint8_t, 6> expected{1, 2, 3, 4, 5, 6};
        std::array<uint8_t, 6> read = expected;
        std::array<uint8_t, 6> mac;
        const bool taken = ReadMacPlainly(text, mac);
        expected = taken ? mac : expected;
        ++(taken ? seen.taken : seen.refused);
        ASSERT_EQ(SMP_Str2Mac(page.Put(text), read.data()) == 0, taken) << text;
        ASSERT_EQ(read, expected) << text;
    }
    EXPECT_GT(seen.taken, kTexts / 4);
    EXPECT_GT(seen.refused, kTexts / 4);
}

// By the C library, which takes more, and a set of characters, which it does not.
bool ReadPlainly(const std::string &text, const char *digits, uint32_t base, uint64_t most, uint64_t &number)
{
    if (text.empty() || text.find_first_not_of(digits) != std::string::npos) {
        return false;
    }
    errno = 0;
    number = std::strtoull(text.c_str(), nullptr, static_cast<int>(base));
    return errno == 0 && number <= most;
}

template <class Integer>
void ReadsAs(uint32_t (*service)(const char *, Integer *), const char *copy, bool taken, uint64_t number)
{
    Integer value = 77;
    ASSERT_EQ(service(copy, &value) == 0, taken) << copy;
    ASSERT_EQ(value, taken ? number : 77u) << copy;
}

TEST(Property, FuzzedNumbersAreReadWithinTheirRange)
{
    Random random(20260104);
    PageEnd page;
    Seen seen;
    for (uint32_t i = 0; i < kTexts; ++i) {
        std::string text = i % 4 == 0   ? Digits(random, 0, 12, "0123456789abcdefABCDEF", 22)
                           : i % 4 == 1 ? Digits(random, 9, 22, "0123456789", 10)
                           : i % 4 == 2 ? std::to_string(UINT32_MAX - 2000 + uint64_t{Below(random, 4000)})
                                        : std::to_string(random() >> Below(random, 64));
        if (i % 8 > 4) {
            Edit(random, text);
        }
        const char *copy = page.Put(text);
        uint64_t number = 0;
        bool taken = ReadPlainly(text, "0123456789", 10, UINT32_MAX, number);
        ++(taken ? seen.taken : seen.refused);
        ASSERT_NO_FATAL_FAILURE(ReadsAs(SMP_StrToUint32, copy, taken, number));
        ASSERT_NO_FATAL_FAILURE(ReadsAs(QOV_StrToUint32, copy, taken, number));
        taken = ReadPlainly(text, "0123456789", 10, UINT64_MAX, number);
        ASSERT_NO_FATAL_FAILURE(ReadsAs(QOV_StrToUint64, copy, taken, number));
        taken = text.size() <= 8 && ReadPlainly(text, "0123456789abcdefABCDEF", 16, UINT32_MAX, number);
        ASSERT_NO_FATAL_FAILURE(ReadsAs(SMP_atoulx, copy, taken, number));
    }
    EXPECT_GT(seen.taken, kTexts / 8);
    EXPECT_GT(seen.refused, kTexts / 8);
}

// ---------------------------------------------------------------------------------------------------------------
// prints

TEST(Property, ATextIsPrintedAsTheCLibraryPrintsItIntoAnyRoom)
{
    constexpr size_t kLongest = 300;
    PageEnd texts;
    PageEnd rooms;
    for (size_t length = 0; length <= kLongest; ++length) {
        std::string text(length, 'a');
        for (size_t i = 0; i < length; ++i) {
            text[i] = static_cast<char>(1 + i * 7 % 255);
        }
        const char *copy = texts.Put(text);
        for (size_t size = 1; size <= kLongest + 2; size += size > 40 && size + 3 < length ? 17 : 1) {
            char expected[kLongest + 2];
            std::memset(expected, '#', sizeof expected);
            std::snprintf(expected, size, "%s", text.c_str());
            char *at = rooms.Last(size);
            std::memset(at, '#', size);
            ASSERT_EQ(snprintf_truncated_s(at, size, "%s", copy), static_cast<int32_t>(std::min(length, size - 1)));
            ASSERT_EQ(std::memcmp(at, expected, size), 0) << length << " into " << size;
        }
    }
}

} // namespace
