// Why a text was refused, where the type itself can only say no.
#include "bgp_standalone_host.h"
#include "explain.h"
#include "values.h"

namespace bgpdt {

std::vector<std::string> ExplainRefusal(uint32_t, const std::string &text)
{
    std::vector<std::string> lines;
    size_t inner = text.find_last_not_of(" \t");
    inner = inner == std::string::npos ? inner : text.find_first_of(" \t", text.find_first_not_of(" \t"));
    if (inner != std::string::npos && inner < text.find_last_not_of(" \t")) {
        lines.push_back("there is a blank inside the text, at character " + std::to_string(inner + 1));
    }
    return lines;
}

} // namespace bgpdt
