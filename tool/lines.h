// The lines of a file of any length, in blocks of whole lines and in constant memory.
#ifndef BGPDT_LINES_H
#define BGPDT_LINES_H

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace bgpdt {

// Longer than any type's text, with room for blanks around it.
inline constexpr size_t kLongestLine = 65536;

struct Line {
    uint64_t number = 0;     // from 1
    std::string_view text;   // without its end (LF or CR LF)
    bool cut = false;        // longer than kLongestLine; the rest is left out
    bool mayHaveNul = false; // some line of its block has a NUL character
};

struct Block {
    uint64_t firstLine = 1;
    std::string bytes; // lines with their ends; of one that is too long its beginning alone, longer than kLongestLine
    std::vector<size_t> ends; // of the lines, in the bytes
};

inline std::string_view WithoutEnd(std::string_view line)
{
    for (const char end : {'\n', '\r'}) {
        line.remove_suffix(line.ends_with(end));
    }
    return line;
}

// Hands the lines of a block to take, one after the other.
template <class Take>
void ForEachLine(const Block &block, Take take)
{
    const std::string_view bytes = block.bytes;
    const bool mayHaveNul = bytes.find('\0') != bytes.npos;
    uint64_t number = block.firstLine;
    size_t from = 0;
    for (const size_t end : block.ends) {
        const std::string_view text = WithoutEnd(bytes.substr(from, end - from));
        take(Line{number++, text.substr(0, kLongestLine), text.size() > kLongestLine, mayHaveNul});
        from = end;
    }
}

class Blocks {
public:
    static constexpr uint64_t kMostLines = 4096; // of a block, so that what is made of it is bounded too

    // Reads from a file descriptor, which it leaves open.
    explicit Blocks(int file) : file_(file) {}
    // Waits for no more than one line. False at the end, or when reading failed.
    bool Next(Block &block);
    // The errno of a failed read, else 0.
    int Error() const { return error_; }

private:
    void DropRest();
    void Drop(size_t count);
    void FindEnds(std::vector<size_t> &ends) const;
    bool Read();

    int file_;
    int error_ = 0;
    bool ended_ = false;
    bool dropping_ = false; // the rest of a line that was too long
    uint64_t nextLine_ = 1;
    size_t size_ = 0; // bytes in the buffer
    std::string buffer_ = std::string(2 * kLongestLine, '\0');
};

} // namespace bgpdt

#endif
