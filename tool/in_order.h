// Work on threads whose results come out in the order of what went in.
#ifndef BGPDT_IN_ORDER_H
#define BGPDT_IN_ORDER_H

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>
#include <system_error>
#include <thread>
#include <vector>

namespace bgpdt {

// What is done with each piece. fill and finish are called in the order of the pieces and by one thread at a time, work
// by all of them at once. None of them throws.
template <class Piece>
struct Steps {
    std::function<bool(Piece &)> fill; // false when there is no more
    std::function<void(Piece &)> work;
    std::function<void(Piece &)> finish;
};

template <class Piece>
class InOrder {
public:
    InOrder(unsigned jobs, Steps<Piece> steps) : jobs_(jobs), steps_(std::move(steps)), slots_(Pieces(jobs)) {}

    // How many pieces there are at a time: two for each thread, so that one whose turn to be finished has not come
    // keeps no thread waiting.
    static constexpr size_t Pieces(unsigned jobs) { return jobs < 2 ? 1 : size_t{2} * jobs; }

    // The calling thread is one of the jobs.
    void Run()
    {
        std::vector<std::thread> others;
        try {
            while (others.size() + 1 < jobs_) {
                others.emplace_back([this] { Take(); });
            }
        } catch (const std::system_error &) { // the system gives no more threads: fewer do the same
        }
        Take();
        for (std::thread &other : others) {
            other.join();
        }
    }

private:
    struct Slot {
        Piece piece;
        bool worked = false; // waits to be finished
    };
    using Lock = std::unique_lock<std::mutex>;

    // Takes one piece after the other through its steps, until there is no more.
    void Take()
    {
        Lock lock(mutex_);
        while (Slot *slot = Filled(lock)) {
            lock.unlock();
            steps_.work(slot->piece);
            lock.lock();
            slot->worked = true;
            FinishNext(lock);
        }
    }

    // The next piece, filled; null when there is none.
    Slot *Filled(Lock &lock)
    {
        changed_.wait(lock, [this] { return ended_ || (!filling_ && filled_ - finished_ < slots_.size()); });
        if (ended_) {
            return nullptr;
        }
        Slot &slot = slots_[filled_ % slots_.size()];
        filling_ = true;
        lock.unlock();
        const bool any = steps_.fill(slot.piece);
        lock.lock();
        filling_ = false;
        filled_ += any;
        ended_ = !any;
        changed_.notify_all();
        return any ? &slot : nullptr;
    }

    // Finishes the pieces whose turn it is, unless another thread is about it: that one will see them.
    void FinishNext(Lock &lock)
    {
        while (!finishing_ && slots_[finished_ % slots_.size()].worked) {
            Slot &slot = slots_[finished_ % slots_.size()];
            finishing_ = true;
            lock.unlock();
            steps_.finish(slot.piece);
            lock.lock();
            finishing_ = false;
            slot.worked = false;
            ++finished_;
            changed_.notify_all();
        }
    }

    const unsigned jobs_;
    const Steps<Piece> steps_;
    std::mutex mutex_; // for what follows; not held during a step
    std::condition_variable changed_;
    std::vector<Slot> slots_; // piece n of all is in slot n modulo their number
    uint64_t filled_ = 0, finished_ = 0;
    bool filling_ = false, finishing_ = false, ended_ = false;
};

} // namespace bgpdt

#endif
