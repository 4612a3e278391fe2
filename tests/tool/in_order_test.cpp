// Pieces of work on threads: every one once, in order, and never more at a time than there should be.
#include "tool/in_order.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <random>
#include <set>

namespace bgpdt {
namespace {

struct Piece {
    uint64_t number = 0;
    uint64_t result = 0;
};

struct Seen {
    std::vector<uint64_t> numbers, results;
    size_t most = 0; // pieces under way at a time
    std::set<std::thread::id> workers;
};

// Sends count pieces through; each waits for as many microseconds as delay says, which is told its number and the most
// pieces that were under way.
template <class Delay>
Seen Send(unsigned jobs, uint64_t count, Delay delay)
{
    Seen seen;
    std::atomic<size_t> underWay{0}, most{0}, filling{0}, finishing{0};
    std::mutex mutex;
    uint64_t next = 0;
    InOrder<Piece>(jobs, {[&](Piece &piece) {
                              EXPECT_EQ(++filling, 1u);
                              piece.number = next;
                              const bool any = next < count;
                              next += any;
                              underWay += any;
                              most = std::max(most.load(), underWay.load());
                              --filling;
                              return any;
                          },
                          [&](Piece &piece) {
                              {
                                  const std::lock_guard lock(mutex);
                                  seen.workers.insert(std::this_thread::get_id());
                              }
                              std::this_thread::sleep_for(
                                  std::chrono::microseconds(static_cast<int64_t>(delay(piece.number, most))));
                              piece.result = piece.number * piece.number;
                          },
                          [&](Piece &piece) {
                              EXPECT_EQ(++finishing, 1u);
                              seen.numbers.push_back(piece.number);
                              seen.results.push_back(piece.result);
                              --underWay;
                              --finishing;
                          }})
        .Run();
    seen.most = most;
    return seen;
}

void ExpectAllInOrder(const Seen &seen, uint64_t count)
{
    ASSERT_EQ(seen.numbers.size(), count);
    for (uint64_t i = 0; i < count; ++i) {
        ASSERT_EQ(seen.numbers[i], i);
        ASSERT_EQ(seen.results[i], i * i);
    }
}

TEST(InOrder, NothingToDo)
{
    for (const unsigned jobs : {1u, 2u, 8u}) {
        ExpectAllInOrder(Send(jobs, 0, [](uint64_t, const auto &) { return 0; }), 0);
    }
}

TEST(InOrder, OneJobIsTheCallingThreadAndOnePiece)
{
    const Seen seen = Send(1, 100, [](uint64_t, const auto &) { return 0; });
    ExpectAllInOrder(seen, 100);
    EXPECT_EQ(seen.most, 1u);
    EXPECT_EQ(seen.workers, std::set{std::this_thread::get_id()});
}

TEST(InOrder, AnyDelays)
{
    for (const unsigned jobs : {2u, 3u, 8u}) {
        std::vector<uint64_t> delays;
        std::mt19937 random(jobs);
        for (int i = 0; i < 600; ++i) {
            delays.push_back(random() % 5 == 0 ? random() % 2000 : random() % 20);
        }
        const Seen seen =
            Send(jobs, delays.size(), [&delays](uint64_t number, const auto &) { return delays[number]; });
        ExpectAllInOrder(seen, delays.size());
        EXPECT_LE(seen.most, InOrder<Piece>::Pieces(jobs));
        EXPECT_EQ(seen.workers.size(), jobs);
    }
}

TEST(InOrder, ASlowPieceHoldsUpNoMoreThanThereIsRoomFor)
{
    const Seen seen = Send(3, 50, [](uint64_t number, const std::atomic<size_t> &most) {
        for (int waited = 0; number == 0 && most < 6 && waited < 10000; ++waited) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        return number == 0 ? 20000 : 0;
    });
    ExpectAllInOrder(seen, 50);
    EXPECT_EQ(seen.most, 6u); // the slow one, and five that wait for it
}

} // namespace
} // namespace bgpdt
