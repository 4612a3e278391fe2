// Why a text was refused, where the type itself can only say no.
#include "explain.h"
#include "explainers.h"

namespace bgpdt {

std::string Trimmed(const std::string &text)
{
    const size_t first = text.find_first_not_of(" \t");
    return first == text.npos ? "" : text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

std::vector<std::string> ExplainRefusal(uint32_t typeId, const std::string &text)
{
    constexpr uint32_t kAsNumberList = 325, kCommunityList = 326; // blanks part their items
    constexpr uint32_t kEvnPrefix = 281;
    std::vector<std::string> lines;
    const std::string trimmed = Trimmed(text);
    const size_t inner = trimmed.find_first_of(" \t");
    if (inner != trimmed.npos && typeId != kAsNumberList && typeId != kCommunityList) {
        lines.push_back("there is a blank inside the text, at character " +
                        std::to_string(text.find(trimmed) + inner + 1));
    }
    if (typeId == kEvnPrefix) {
        lines.push_back(EvpnShape(trimmed));
    }
    return lines;
}

} // namespace bgpdt
