// The lines of a file of any length, one at a time, in constant memory.
#ifndef BGPDT_LINES_H
#define BGPDT_LINES_H

#include <cstdint>
#include <cstdio>
#include <string>

namespace bgpdt {

struct Line {
    uint64_t number = 0; // from 1
    std::string text;    // without its end (LF or CR LF)
    bool cut = false;    // longer than kLongest; the rest is dropped
};

class Lines {
public:
    // Longer than any type's text, with room for blanks around it.
    static constexpr size_t kLongest = 65536;

    explicit Lines(std::FILE *file) : file_(file) {}
    // False at the end, or when reading failed.
    bool Next(Line &line);
    bool Failed() const { return std::ferror(file_) != 0; }

private:
    std::FILE *file_;
    uint64_t number_ = 0;
};

} // namespace bgpdt

#endif
