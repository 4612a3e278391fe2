// Text that is written piece by piece, one behind the other. Its memory is kept when it is emptied.
#ifndef BGPDT_SINK_H
#define BGPDT_SINK_H

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace bgpdt {

class Sink {
public:
    Sink() = default;
    Sink(const Sink &) = delete;
    Sink &operator=(const Sink &) = delete;

    // Room for so many characters behind what is written; End() says how far they were used, Used() how many were.
    char *Room(size_t most)
    {
        if (static_cast<size_t>(behind_ - end_) < most) {
            Grow(most);
        }
        return end_;
    }
    void End(char *end) { end_ = end; }
    void Used(size_t count) { end_ += count; }

    void Put(char character)
    {
        *Room(1) = character;
        ++end_;
    }
    void Put(std::string_view text)
    {
        std::memcpy(Room(text.size()), text.data(), text.size());
        end_ += text.size();
    }
    void PutNumber(uint64_t number)
    {
        constexpr size_t kDigits = 20;
        char *at = Room(kDigits);
        end_ = std::to_chars(at, at + kDigits, number).ptr;
    }

    char &At(size_t place) { return memory_[place]; } // of what is written
    size_t Size() const { return static_cast<size_t>(end_ - memory_.data()); }
    std::string_view Text() const { return {memory_.data(), Size()}; }
    void Empty() { end_ = memory_.data(); }

private:
    void Grow(size_t most);

    std::string memory_;
    char *end_ = memory_.data();    // of what is written
    char *behind_ = memory_.data(); // the memory
};

} // namespace bgpdt

#endif
