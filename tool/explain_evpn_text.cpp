// An EVPN route text does not name its route type: dots, colons, dashes and brackets tell. Who has one field wrong gets
// a plain refusal from the type, so here is what the text was taken for.
#include "explainers.h"

namespace bgpdt {

namespace {

// What a text is made of. A colon is outside brackets unless the last bracket before it was "[".
struct Census {
    size_t dots = 0, colons = 0, dashes = 0, brackets = 0, colonsOutside = 0;
    size_t dotsBefore = 0, bracketsBefore = 0; // the second colon
};

Census Count(const std::string &text)
{
    Census census;
    bool inside = false;
    for (const char character : text) {
        census.dots += character == '.';
        census.dashes += character == '-';
        if (character == '[' || character == ']') {
            ++census.brackets;
            inside = character == '[';
        } else if (character == ':') {
            census.colonsOutside += !inside;
            if (++census.colons == 2) {
                census.dotsBefore = census.dots;
                census.bracketsBefore = census.brackets;
            }
        }
    }
    return census;
}

// The questions of the type's reference page in their order; 0 when none fits.
int RouteTypeOf(const std::string &text)
{
    const Census census = Count(text);
    const bool twoColons = census.colons >= 2;
    if (census.colonsOutside >= 6 && census.colonsOutside <= 8) {
        return static_cast<int>(census.colonsOutside);
    }
    if (twoColons && census.dotsBefore == 4) {
        return 4;
    }
    if (census.brackets == 2 && census.dashes == 0) {
        return twoColons && census.bracketsBefore == 0 ? 3 : 5;
    }
    if (census.brackets == 2 && census.dashes == 2 && census.colons > 4) {
        return 2;
    }
    const bool dotsFit = census.dots == 3 || census.dots == 4 || census.dots == 7;
    const bool dashesFit = census.dashes == 0 || census.dashes == 2;
    if (!dotsFit || !dashesFit || census.brackets != 0 || census.colons > 4) {
        return 0;
    }
    if (census.colons == 2 && census.dashes == 0) {
        return census.dotsBefore == 0 ? 3 : census.dots == 3 ? 5 : 0;
    }
    constexpr size_t kEsiChars = 24;
    if (census.colons == 0 && text.size() == kEsiChars) {
        return census.dots == 4 ? 4 : 0;
    }
    if (census.colons == 1 && census.dots == 4) {
        return 1;
    }
    return census.colons == 4 ? 2 : 0;
}

constexpr const char *kForms[] = {
    nullptr,
    "ESI:tag",
    "tag:length:MAC:length:address",
    "tag:length:address",
    "ESI:length:address",
    "tag:address:length",
    "tag:length:source:length:group:length:originator",
    "ESI:tag:length:source:length:group:length:originator",
    "ESI:tag:length:source:length:group:length:originator:number",
};

} // namespace

std::string EvpnShape(const std::string &text)
{
    const int routeType = RouteTypeOf(text);
    return routeType == 0 ? "its separators are those of no EVPN route type"
                          : "read as EVPN route type " + std::to_string(routeType) + ", " + kForms[routeType] +
                                ", of which some field is wrong";
}

} // namespace bgpdt
