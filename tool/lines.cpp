#include "lines.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <unistd.h>

namespace bgpdt {

namespace {

constexpr size_t kLongestWithEnd = kLongestLine + 2;

} // namespace

bool Blocks::Next(Block &block)
{
    while (true) {
        DropRest();
        FindEnds(block.ends);
        if (block.ends.empty() && (size_ >= kLongestWithEnd || (ended_ && size_ != 0))) { // too long, or the last one
            block.ends.push_back(std::min(size_, kLongestWithEnd));
            dropping_ = size_ >= kLongestWithEnd;
        }
        if (!block.ends.empty()) {
            block.bytes.assign(buffer_, 0, block.ends.back());
            block.firstLine = nextLine_;
            nextLine_ += block.ends.size();
            Drop(block.ends.back());
            return true;
        }
        if (ended_ || !Read()) {
            return false;
        }
    }
}

// Drops the rest of a line that was too long, as far as it is there.
void Blocks::DropRest()
{
    if (dropping_) {
        const auto *end = static_cast<const char *>(std::memchr(buffer_.data(), '\n', size_));
        dropping_ = end == nullptr;
        Drop(dropping_ ? size_ : static_cast<size_t>(end + 1 - buffer_.data()));
    }
}

void Blocks::Drop(size_t count)
{
    size_ -= count;
    std::memmove(buffer_.data(), buffer_.data() + count, size_);
}

// Where the whole lines end, as many as a block may have.
void Blocks::FindEnds(std::vector<size_t> &ends) const
{
    ends.clear();
    const std::string_view bytes(buffer_.data(), size_);
    for (size_t end = 0; ends.size() < kMostLines && (end = bytes.find('\n', end)) != bytes.npos;) {
        ends.push_back(++end);
    }
}

// Waits for bytes or the end. False when reading failed.
bool Blocks::Read()
{
    ssize_t count;
    do {
        count = read(file_, buffer_.data() + size_, buffer_.size() - size_);
    } while (count < 0 && errno == EINTR);
    if (count < 0) {
        error_ = errno;
        return false;
    }
    ended_ = count == 0;
    size_ += static_cast<size_t>(count);
    return true;
}

} // namespace bgpdt
