#include "lines.h"

namespace bgpdt {

bool Lines::Next(Line &line)
{
    line.text.clear();
    line.cut = false;
    int character = 0;
    bool any = false;
    while ((character = getc_unlocked(file_)) != EOF) {
        any = true;
        if (character == '\n') {
            break;
        }
        if (line.text.size() < kLongest) {
            line.text += static_cast<char>(character);
        } else {
            line.cut = true;
        }
    }
    if (!any || Failed()) {
        return false;
    }
    if (!line.text.empty() && line.text.back() == '\r') {
        line.text.pop_back();
    }
    line.number = ++number_;
    return true;
}

} // namespace bgpdt
