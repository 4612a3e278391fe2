// Who was asked about a route key, and what was answered: the sub-types of BOLPREFIX read a text in the order of their
// table, and the first that takes it decides.
#include "explain.h"
#include "explainers.h"

#include "bgp_standalone_host.hpp"
#include "values.h"

namespace bgpdt {

namespace {

constexpr uint32_t kBolPrefix = 279;

const BolPrefixSubtypeEntry *Table()
{
    return static_cast<const BolPrefixSubtypeEntry *>(bgp::standalone::PlugInSymbol("g_astBOL_PREFIX_ProcTable"));
}

// What a sub-type takes, as a person would be told, and what no text of it can have, however it is made.
struct Grammar {
    std::string_view firstRow; // of the rows that share a parser
    const char *takes;
    size_t most;                 // characters; 0: judged by the host alone
    std::string_view characters; // beside letters and digits, empty: judged by the host alone
};

constexpr std::string_view kEvpnRow = "EVN";

constexpr Grammar kGrammars[] = {
    {"IPV4", "an IPv4 address", 0, ""},
    {kEvpnRow, "an EVPN route", 183, ".:-[]"},
    {"NG_TYPE_2", "AS number and addresses joined by \":\" (IPv4) or \"-\" (IPv6), up to four of them", 159, ".:-"},
    {"VRFRTEXT", "a route target AS:n, x.y:n, a.b.c.d:n or xxxx-xxxx-xxxx", 100, ".:-"},
    {"RPD", "type/peer/distinguisher, the type 0 or 1", 31, "./"},
    {"SRPOLICY", "[distinguisher][colour][endpoint], without leading zeros", 67, ".:[]"},
    {"IPV6", "an IPv6 address", 0, ""},
    {"SD-WAN", "type-port-site-node, without leading zeros", 69, ".:-"},
};

bool IsAlphanumeric(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

// Why a text is none of the grammar's; empty when there is no more to say than that.
std::string Against(const Grammar &grammar, const std::string &text)
{
    if (text.empty()) {
        return "the text is empty";
    }
    if (grammar.most != 0 && text.size() > grammar.most) {
        return "of " + std::to_string(text.size()) + " characters, " + std::to_string(grammar.most) + " at most";
    }
    for (const char c : grammar.characters.empty() ? "" : text) {
        if (!IsAlphanumeric(c) && grammar.characters.find(c) == grammar.characters.npos) {
            return c == ' ' || c == '\t' ? "no blank may stand inside" : std::string("\"") + c + "\" is not part of it";
        }
    }
    return grammar.firstRow == kEvpnRow ? EvpnShape(text) : "";
}

// What a row that refused the content would have taken. Refusals of the mode speak for themselves.
std::string Reason(const BolPrefixSubtypeEntry &row, uint32_t code, const std::string &text)
{
    if (code != DT_ERR_INVALID_PARAM && code != DT_ERR_INVALID_VALUE) {
        return CodeMeaning(code);
    }
    for (const Grammar &grammar : kGrammars) {
        if (grammar.firstRow == row.Name) {
            const std::string against = Against(grammar, Trimmed(text));
            return std::string("takes ") + grammar.takes + (against.empty() ? "" : "; " + against);
        }
    }
    return CodeMeaning(code);
}

// The names of all rows that share the row's parser, in the order of the table.
std::string NamesOf(const BolPrefixSubtypeEntry *rows, const BolPrefixSubtypeEntry &row)
{
    std::string names;
    for (uint32_t i = 0; i < BOL_PREFIX_SUBTYPES; ++i) {
        if (rows[i].FormatIn == row.FormatIn) {
            names += (names.empty() ? "" : ", ") + std::string(rows[i].Name);
        }
    }
    return names;
}

bool WasAsked(const BolPrefixSubtypeEntry *rows, uint32_t index)
{
    for (uint32_t i = 0; i < index; ++i) {
        if (rows[i].FormatIn == rows[index].FormatIn) {
            return true;
        }
    }
    return false;
}

std::string Taken(const BolPrefixSubtypeEntry *rows, const BolPrefixSubtypeEntry &row, const std::string &value)
{
    const uint64_t subType = HostNumber(value, 0, 4);
    return NamesOf(rows, row) + ": DT_OK, taken as sub-type " + std::to_string(subType) + ", " + SubTypeName(subType);
}

} // namespace

std::string SubTypeName(uint64_t subType)
{
    static const BolPrefixSubtypeEntry *rows = Table(); // one plug-in for the whole run
    return rows == nullptr || subType >= BOL_PREFIX_SUBTYPES ? "unknown" : rows[subType].Name;
}

std::vector<std::string> Tried(uint32_t typeId, const std::string &text, uint8_t mode)
{
    std::vector<std::string> lines;
    const BolPrefixSubtypeEntry *rows = Table();
    if (typeId != kBolPrefix || rows == nullptr) {
        return lines;
    }
    for (uint32_t i = 0; i < BOL_PREFIX_SUBTYPES; ++i) {
        const BolPrefixSubtypeEntry &row = rows[i];
        // Rows that share a parser would only say the same again.
        if (WasAsked(rows, i)) {
            continue;
        }
        if (row.FormatIn == nullptr) {
            lines.push_back(NamesOf(rows, row) + ": cannot be typed");
            continue;
        }
        const Parsed parsed = Parse(row.FormatIn, typeId, text, mode);
        if (parsed.code == DT_OK) {
            lines.push_back(Taken(rows, row, parsed.value));
            break;
        }
        lines.push_back(NamesOf(rows, row) + ": " + CodeName(parsed.code) + ", " + Reason(row, parsed.code, text));
    }
    return lines;
}

} // namespace bgpdt
