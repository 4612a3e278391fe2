#include "fuzz/text_changes.h"

#include <algorithm>
#include <cctype>
#include <fstream>
#include <string>
#include <string_view>

namespace bgp::fuzz {
namespace {

// Around the widths and ranges of the fields.
constexpr std::string_view kLimits[] = {"0",
                                        "1",
                                        "00",
                                        "0001",
                                        "10",
                                        "32",
                                        "33",
                                        "127",
                                        "128",
                                        "129",
                                        "223",
                                        "224",
                                        "239",
                                        "240",
                                        "255",
                                        "256",
                                        "65535",
                                        "65536",
                                        "065535",
                                        "ffff",
                                        "10000",
                                        "4294967295",
                                        "4294967296",
                                        "04294967295",
                                        "2147483648",
                                        "4294901760",
                                        "ffffff",
                                        "1000000",
                                        "ffffffff",
                                        "18446744073709551615",
                                        "18446744073709551616",
                                        ""};
constexpr std::string_view kSeparators = ":.-/[]* ";

struct Span {
    size_t from, to; // [from, to)
    size_t Length() const { return to - from; }
};

bool IsWord(char character)
{
    return std::isalnum(static_cast<unsigned char>(character)) != 0;
}

// Runs of letters and digits.
std::vector<Span> WordsOf(std::string_view text)
{
    std::vector<Span> words;
    for (size_t at = 0; at < text.size(); ++at) {
        if (!IsWord(text[at])) {
            continue;
        }
        const size_t from = at;
        while (at < text.size() && IsWord(text[at])) {
            ++at;
        }
        words.push_back({from, at});
    }
    return words;
}

// Bracketed groups, inner ones too, with their brackets. An open one ends with the text.
std::vector<Span> GroupsOf(std::string_view text)
{
    std::vector<Span> groups;
    for (size_t from = 0; from < text.size(); ++from) {
        if (text[from] != '[') {
            continue;
        }
        int depth = 0;
        size_t to = from;
        do {
            depth += text[to] == '[' ? 1 : text[to] == ']' ? -1 : 0;
            ++to;
        } while (to < text.size() && depth > 0);
        groups.push_back({from, to});
    }
    return groups;
}

using Random = std::minstd_rand;

size_t Below(Random &random, size_t limit)
{
    return random() % limit;
}

template <class Items>
const auto &Any(const Items &items, Random &random)
{
    return items[Below(random, std::size(items))];
}

void ChangeWord(std::string &text, Random &random)
{
    const std::vector<Span> words = WordsOf(text);
    if (words.empty()) {
        return;
    }
    const Span word = Any(words, random);
    switch (Below(random, 3)) {
    case 0:
        text.replace(word.from, word.Length(), Any(kLimits, random));
        break;
    case 1: { // only the digits at its end: "as100"
        size_t digits = word.to;
        while (digits > word.from && std::isdigit(static_cast<unsigned char>(text[digits - 1])) != 0) {
            --digits;
        }
        text.replace(digits, word.to - digits, Any(kLimits, random));
        break;
    }
    default: {
        const Span other = Any(words, random);
        text.replace(word.from, word.Length(), text.substr(other.from, other.Length()));
    }
    }
}

// Drops, repeats, moves or swaps.
void ChangeGroup(std::string &text, Random &random)
{
    const std::vector<Span> groups = GroupsOf(text);
    if (groups.empty()) {
        return;
    }
    Span first = Any(groups, random);
    Span second = Any(groups, random);
    const std::string copy = text.substr(first.from, first.Length());
    switch (Below(random, 4)) {
    case 0:
        text.erase(first.from, first.Length());
        break;
    case 1:
        text.insert(Below(random, 2) == 0 ? second.from : second.to, copy);
        break;
    case 2:
        text.replace(second.from, second.Length(), copy);
        break;
    default:
        if (first.from > second.from) {
            std::swap(first, second);
        }
        if (first.to <= second.from) {
            const std::string behind = text.substr(second.from, second.Length());
            text.replace(second.from, second.Length(), text.substr(first.from, first.Length()));
            text.replace(first.from, first.Length(), behind);
        }
    }
}

void ChangeSeparator(std::string &text, Random &random)
{
    const char separator = Any(kSeparators, random);
    std::vector<size_t> places;
    for (size_t at = 0; at < text.size(); ++at) {
        if (!IsWord(text[at])) {
            places.push_back(at);
        }
    }
    if (places.empty() || Below(random, 3) == 0) {
        text.insert(Below(random, text.size() + 1), 1, separator);
    } else if (Below(random, 2) == 0) {
        text[Any(places, random)] = separator;
    } else {
        text.erase(Any(places, random), 1);
    }
}

} // namespace

void ChangeText(std::vector<uint8_t> &input, size_t textAt, Random &random)
{
    if (input.size() < textAt) {
        return;
    }
    const auto begin = input.begin() + static_cast<std::ptrdiff_t>(textAt);
    std::string text(begin, input.end());
    switch (Below(random, 4)) {
    case 0:
    case 1:
        ChangeWord(text, random);
        break;
    case 2:
        ChangeGroup(text, random);
        break;
    default:
        ChangeSeparator(text, random);
    }
    input.erase(begin, input.end());
    input.insert(input.end(), text.begin(), text.end());
}

void ChangeBytes(std::vector<uint8_t> &input, const std::vector<std::string> &words, Random &random)
{
    if (input.empty()) {
        input.push_back(static_cast<uint8_t>(random()));
    }
    constexpr size_t kLongestGap = 8;
    constexpr size_t kLongestRun = 300;
    const size_t at = Below(random, input.size());
    const auto place = input.begin() + static_cast<std::ptrdiff_t>(at);
    switch (Below(random, 6)) {
    case 0:
        *place = static_cast<uint8_t>(random());
        break;
    case 1:
        *place ^= static_cast<uint8_t>(1u << Below(random, 8));
        break;
    case 2:
        *place = static_cast<uint8_t>(*place + (Below(random, 2) == 0 ? 1 : 255));
        break;
    case 3:
        input.erase(place,
                    place + 1 + static_cast<std::ptrdiff_t>(Below(random, std::min(kLongestGap, input.size() - at))));
        break;
    case 4:
        if (!words.empty()) {
            const std::string &word = Any(words, random);
            input.insert(place, word.begin(), word.end());
        }
        break;
    default: {
        const std::vector<uint8_t> run(1 + Below(random, kLongestRun), *place);
        input.insert(place, run.begin(), run.end());
    }
    }
}

std::vector<std::string> DictionaryWords(const std::string &path)
{
    std::vector<std::string> words;
    std::ifstream file(path);
    for (std::string line; std::getline(file, line);) {
        if (line.size() < 3 || line[0] != '"') {
            continue;
        }
        std::string word = line.substr(1, line.size() - 2);
        for (size_t at; (at = word.find("\\x")) != std::string::npos;) {
            word.replace(at, 4, 1, static_cast<char>(std::stoi(word.substr(at + 2, 2), nullptr, 16)));
        }
        words.push_back(word);
    }
    return words;
}

} // namespace bgp::fuzz
