// Memory handles and scratch blocks.
//
// A handle is an arena. A block is normally cut from the arena's current chunk by one atomic step, without a lock, and
// goes with the arena. Blocks that are checked (SetCheckedBlocks, or AddressSanitizer) are pieces of their own, kept in
// one list per arena under one lock: there, finding faults counts and speed does not.
//
// Scratch blocks come from malloc and are kept in short lists, chosen by address so that threads seldom meet.
#include "memory.h"
#include "bgp_host_services.h"
#include "replaceable.h"
#include "thread_state.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdlib>
#include <cstring>
#include <map>
#include <mutex>
#include <new>
#include <shared_mutex>
#include <string>
#include <unordered_map>
#include <utility>

#if defined(__SANITIZE_ADDRESS__)
#define BGP_STANDALONE_ASAN 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define BGP_STANDALONE_ASAN 1
#endif
#endif
#if defined(BGP_STANDALONE_ASAN)
#include <sanitizer/asan_interface.h>
#endif

namespace bgp::standalone {
namespace {

#if defined(BGP_STANDALONE_ASAN)
constexpr bool UnderAsan = true;
#else
constexpr bool UnderAsan = false;
#endif

constexpr size_t Alignment = alignof(std::max_align_t);
constexpr uint32_t LargestBlock = 1u << 30;
constexpr uint32_t SlotBits = 12;
constexpr uint32_t SlotCount = 1u << SlotBits;
constexpr uint32_t SmallestChunk = 16u << 10;
constexpr uint32_t GrowthEnd = 1u << 20; // chunks double up to this size
constexpr size_t GuardSize = 16;         // keeps the alignment of what it precedes
constexpr uint8_t GuardByte = 0xFD, FreshByte = 0xA5, FreedByte = 0x5A;

constexpr size_t RoundUp(size_t size)
{
    return (size + Alignment - 1) / Alignment * Alignment;
}

std::atomic<bool> checkedBlocks{false};

bool PiecesWanted()
{
    return UnderAsan || checkedBlocks.load(std::memory_order_relaxed);
}

// ------------------------------------------------------------------------------------------------ guarded memory

// A piece of memory with a guard on either side. Under AddressSanitizer it has none: the ends of malloc's block are
// watched more closely than a guard could.
struct Guarded {
    uint8_t *user = nullptr;
    uint32_t size = 0;
    bool guards = false;
};

Guarded TakeGuarded(uint32_t size)
{
    const bool checked = checkedBlocks.load(std::memory_order_relaxed);
    const bool guards = checked && !UnderAsan;
    const size_t around = guards ? GuardSize : 0;
    const size_t whole = around + size + around;
    auto *base = static_cast<uint8_t *>(std::malloc(whole == 0 ? 1 : whole));
    if (base == nullptr)
        return {};
    if (guards)
        std::memset(base, GuardByte, whole);
    if (checked)
        std::memset(base + around, FreshByte, size);
    return {base + around, size, guards};
}

void DropGuarded(const Guarded &memory)
{
    if (memory.user != nullptr)
        std::free(memory.guards ? memory.user - GuardSize : memory.user);
}

size_t CountOther(const uint8_t *bytes, size_t count, uint8_t expected)
{
    size_t other = 0;
    for (size_t at = 0; at < count; ++at)
        other += bytes[at] != expected;
    return other;
}

// One line on what is wrong with the guards; empty when nothing is.
std::string DescribeGuards(const Guarded &memory, uint32_t handle)
{
    if (!memory.guards)
        return {};
    const size_t before = CountOther(memory.user - GuardSize, GuardSize, GuardByte);
    const size_t behind = CountOther(memory.user + memory.size, GuardSize, GuardByte);
    if (before == 0 && behind == 0)
        return {};
    return (handle == 0 ? "scratch block" : "block of handle " + std::to_string(handle)) + ", " +
           std::to_string(memory.size) + " bytes: " + std::to_string(before) + " guard bytes before and " +
           std::to_string(behind) + " behind it overwritten\n";
}

// Damage of blocks that are gone, until it is reported.
struct Damage {
    std::mutex mutex;
    std::string report;
};

// These tables are never destroyed: a plug-in may still be called while the process ends.
Damage &PastDamage()
{
    static Damage *damage = new Damage;
    return *damage;
}

void Remember(std::string line)
{
    if (line.empty())
        return;
    const std::lock_guard lock(PastDamage().mutex);
    PastDamage().report += line;
}

// -------------------------------------------------------------------------------------------------------- arenas

// In front of each block of a chunk.
struct BlockHeader {
    std::atomic<uint32_t> tag; // chunk stamp and offset mixed: only a live block of this round has it; 0 = free
    bool counted;
};
constexpr size_t HeaderSize = RoundUp(sizeof(BlockHeader));

struct Chunk {
    std::atomic<uint64_t> state{0}; // high word: counted blocks; low word: bytes in use
    uint32_t capacity = 0;
    uint32_t stamp = 0; // new with each round, so that blocks of an earlier round are not taken for live ones
    Chunk *older = nullptr;

    uint8_t *Bytes() { return reinterpret_cast<uint8_t *>(this) + RoundUp(sizeof(Chunk)); }
    uint32_t Tag(size_t offset) const { return (stamp * 2654435761u ^ static_cast<uint32_t>(offset)) | 1u; }
};

// A block on its own.
struct Piece {
    Guarded memory;
    uint32_t handle = 0;
    bool counted = false;
    bool freed = false;
    bool filled = false; // freed while blocks were checked, so its bytes are all FreedByte
    Piece *next = nullptr;
};

struct Arena {
    std::atomic<uint32_t> handle{0}; // 0 = closed
    std::atomic<Chunk *> current{nullptr};
    std::atomic<size_t> freed{0};  // counted blocks of chunks that were marked free
    std::atomic<size_t> pieces{0}; // counted pieces that are live
    std::mutex mutex;              // for the chunk list
    Piece *firstPiece = nullptr;   // under the lock of the piece table
    uint32_t generation = 0;       // under the lock of the slots
};

constinit std::array<Arena, SlotCount> arenas{};

struct Slots {
    std::mutex mutex;
    uint32_t next = 0;
};
constinit Slots slots{};

struct ChunkTable {
    std::shared_mutex mutex;
    std::map<uintptr_t, std::pair<Chunk *, Arena *>> byAddress;
};

ChunkTable &Chunks()
{
    static ChunkTable *table = new ChunkTable;
    return *table;
}

struct PieceTable {
    std::mutex mutex;
    std::unordered_map<const void *, Piece *> byAddress;
};

PieceTable &Pieces()
{
    static PieceTable *table = new PieceTable;
    return *table;
}

Arena *FindArena(uint32_t handle)
{
    Arena &arena = arenas[handle % SlotCount];
    return handle != 0 && arena.handle.load(std::memory_order_acquire) == handle ? &arena : nullptr;
}

uint32_t NextStamp()
{
    static constinit std::atomic<uint32_t> stamps{0};
    return stamps.fetch_add(1, std::memory_order_relaxed) + 1;
}

// Null when the chunk has no room.
void *CutFrom(Chunk &chunk, size_t need, bool counted)
{
    uint64_t state = chunk.state.load(std::memory_order_relaxed);
    uint32_t offset;
    do {
        offset = static_cast<uint32_t>(state);
        if (need > chunk.capacity - offset)
            return nullptr;
    } while (!chunk.state.compare_exchange_weak(state, state + need + (counted ? uint64_t{1} << 32 : 0),
                                                std::memory_order_relaxed));
    uint8_t *block = chunk.Bytes() + offset;
    new (block) BlockHeader{chunk.Tag(offset), counted};
    return block + HeaderSize;
}

// Under the arena's lock. Null when memory is out.
Chunk *AddChunk(Arena &arena, size_t need)
{
    Chunk *older = arena.current.load(std::memory_order_relaxed);
    size_t capacity = older == nullptr ? SmallestChunk : size_t{older->capacity} * 2;
    capacity = std::max(std::min<size_t>(capacity, GrowthEnd), need);
    void *memory = std::malloc(RoundUp(sizeof(Chunk)) + capacity);
    if (memory == nullptr)
        return nullptr;
    auto *chunk = new (memory) Chunk;
    chunk->capacity = static_cast<uint32_t>(capacity);
    chunk->stamp = NextStamp();
    chunk->older = older;
    try {
        const std::unique_lock lock(Chunks().mutex);
        Chunks().byAddress.emplace(reinterpret_cast<uintptr_t>(chunk->Bytes()), std::pair{chunk, &arena});
    } catch (...) {
        std::free(memory);
        return nullptr;
    }
    arena.current.store(chunk, std::memory_order_release);
    return chunk;
}

void *AllocateSlowly(Arena &arena, size_t need, bool counted)
{
    const std::lock_guard lock(arena.mutex);
    if (Chunk *chunk = arena.current.load(std::memory_order_relaxed)) // another thread may have added one
        if (void *block = CutFrom(*chunk, need, counted))
            return block;
    Chunk *chunk = AddChunk(arena, need);
    return chunk == nullptr ? nullptr : CutFrom(*chunk, need, counted);
}

void *AllocatePiece(Arena &arena, uint32_t handle, uint32_t size, bool counted)
{
    Guarded memory = TakeGuarded(size);
    auto *piece = new (std::nothrow) Piece{memory, handle, counted};
    if (memory.user == nullptr || piece == nullptr) {
        DropGuarded(memory);
        delete piece;
        return nullptr;
    }
    try {
        const std::lock_guard lock(Pieces().mutex);
        Pieces().byAddress.emplace(memory.user, piece);
        piece->next = arena.firstPiece;
        arena.firstPiece = piece;
    } catch (...) {
        DropGuarded(memory);
        delete piece;
        return nullptr;
    }
    arena.pieces.fetch_add(counted, std::memory_order_relaxed);
    return memory.user;
}

void *Allocate(uint32_t handle, size_t size, bool counted)
{
    Arena *arena = FindArena(handle);
    if (arena == nullptr || size > LargestBlock)
        return nullptr;
    if (PiecesWanted())
        return AllocatePiece(*arena, handle, static_cast<uint32_t>(size), counted);
    const size_t need = HeaderSize + RoundUp(size == 0 ? 1 : size);
    if (Chunk *chunk = arena->current.load(std::memory_order_acquire))
        if (void *block = CutFrom(*chunk, need, counted))
            return block;
    return AllocateSlowly(*arena, need, counted);
}

// Marks a block of a chunk free; false when the pointer is none.
bool MarkCut(void *memory)
{
    const std::shared_lock lock(Chunks().mutex);
    const auto address = reinterpret_cast<uintptr_t>(memory);
    auto at = Chunks().byAddress.upper_bound(address);
    if (at == Chunks().byAddress.begin())
        return false;
    const auto &[base, owner] = *--at;
    auto [chunk, arena] = owner;
    const uintptr_t distance = address - base;
    if (distance < HeaderSize || distance >= static_cast<uint32_t>(chunk->state.load(std::memory_order_relaxed)) ||
        distance % Alignment != 0)
        return false;
    auto *header = std::launder(reinterpret_cast<BlockHeader *>(chunk->Bytes() + (distance - HeaderSize)));
    uint32_t live = chunk->Tag(distance - HeaderSize);
    const bool counted = header->counted;
    if (!header->tag.compare_exchange_strong(live, 0, std::memory_order_relaxed))
        return false;
    arena->freed.fetch_add(counted, std::memory_order_relaxed);
    return true;
}

// The same for a piece. Its memory stays until the handle goes, so that late writes are seen.
bool MarkPiece(void *memory)
{
    const std::lock_guard lock(Pieces().mutex);
    const auto at = Pieces().byAddress.find(memory);
    if (at == Pieces().byAddress.end() || at->second->freed)
        return false;
    Piece &piece = *at->second;
    piece.freed = true;
    piece.filled = piece.memory.guards;
    if (checkedBlocks.load(std::memory_order_relaxed) || piece.filled)
        std::memset(memory, FreedByte, piece.memory.size);
#if defined(BGP_STANDALONE_ASAN)
    ASAN_POISON_MEMORY_REGION(memory, piece.memory.size);
#endif
    arenas[piece.handle % SlotCount].pieces.fetch_sub(piece.counted, std::memory_order_relaxed);
    return true;
}

std::string DescribePiece(const Piece &piece)
{
    std::string line = DescribeGuards(piece.memory, piece.handle);
    if (piece.filled) {
        if (const size_t late = CountOther(piece.memory.user, piece.memory.size, FreedByte); late != 0)
            line += "block of handle " + std::to_string(piece.handle) + ", " + std::to_string(piece.memory.size) +
                    " bytes: " + std::to_string(late) + " bytes written after it was freed\n";
    }
    return line;
}

void DropPieces(Arena &arena)
{
    const std::lock_guard lock(Pieces().mutex);
    for (Piece *piece = std::exchange(arena.firstPiece, nullptr); piece != nullptr;) {
        Remember(DescribePiece(*piece));
        Pieces().byAddress.erase(piece->memory.user);
#if defined(BGP_STANDALONE_ASAN)
        ASAN_UNPOISON_MEMORY_REGION(piece->memory.user, piece->memory.size);
#endif
        DropGuarded(piece->memory);
        delete std::exchange(piece, piece->next);
    }
    arena.pieces.store(0, std::memory_order_relaxed);
}

void DropChunks(Chunk *chunk)
{
    if (chunk == nullptr)
        return;
    const std::unique_lock lock(Chunks().mutex);
    while (chunk != nullptr) {
        Chunks().byAddress.erase(reinterpret_cast<uintptr_t>(chunk->Bytes()));
        std::free(std::exchange(chunk, chunk->older));
    }
}

// Empties an arena; its newest chunk, the largest as a rule, stays for the next round if asked.
void Empty(Arena &arena, bool keepChunk)
{
    const std::lock_guard lock(arena.mutex);
    Chunk *chunk = arena.current.load(std::memory_order_relaxed);
    if (chunk != nullptr && keepChunk) {
        DropChunks(std::exchange(chunk->older, nullptr));
        chunk->state.store(0, std::memory_order_relaxed);
        chunk->stamp = NextStamp();
    } else {
        arena.current.store(nullptr, std::memory_order_relaxed);
        DropChunks(chunk);
    }
    arena.freed.store(0, std::memory_order_relaxed);
    DropPieces(arena);
}

// ------------------------------------------------------------------------------------------------ scratch blocks

struct Scratch {
    Guarded memory;
    uint32_t owner; // identity of the thread that took it
};

struct alignas(64) ScratchShelf {
    std::mutex mutex;
    std::vector<Scratch> blocks;
};

using ScratchShelves = std::array<ScratchShelf, 64>;

ScratchShelves &Shelves()
{
    static auto *shelves = new ScratchShelves;
    return *shelves;
}

ScratchShelf &ShelfOf(const void *memory)
{
    const uintptr_t address = reinterpret_cast<uintptr_t>(memory) / Alignment;
    return Shelves()[(address ^ (address >> 6) ^ (address >> 12)) % Shelves().size()];
}

uint32_t ThreadIdentity()
{
    static constinit std::atomic<uint32_t> identities{0};
    uint32_t &identity = detail::threadState.identity;
    if (identity == 0)
        identity = identities.fetch_add(1, std::memory_order_relaxed) + 1;
    return identity;
}

// False when the pointer is no live scratch block.
bool FreeScratch(void *memory)
{
    Guarded found;
    {
        ScratchShelf &shelf = ShelfOf(memory);
        const std::lock_guard lock(shelf.mutex);
        for (size_t at = shelf.blocks.size(); at-- > 0 && found.user == nullptr;) { // the latest is the likeliest
            if (shelf.blocks[at].memory.user != memory)
                continue;
            found = shelf.blocks[at].memory;
            shelf.blocks[at] = shelf.blocks.back();
            shelf.blocks.pop_back();
        }
    }
    if (found.user == nullptr)
        return false;
    Remember(DescribeGuards(found, 0));
    if (checkedBlocks.load(std::memory_order_relaxed))
        std::memset(found.user, FreedByte, found.size);
    DropGuarded(found);
    return true;
}

std::vector<Release> &ThreadReleases()
{
    thread_local std::vector<Release> releases;
    return releases;
}

} // namespace

// ------------------------------------------------------------------------------------------------- the public face

uint32_t OpenHandle()
{
    const std::lock_guard lock(slots.mutex);
    for (uint32_t tried = 0; tried < SlotCount; ++tried) {
        const uint32_t slot = slots.next;
        slots.next = (slots.next + 1) % SlotCount;
        Arena &arena = arenas[slot];
        if (arena.handle.load(std::memory_order_relaxed) != 0)
            continue;
        arena.generation = (arena.generation + 1) % (1u << (32 - SlotBits));
        if (arena.generation == 0)
            arena.generation = 1;
        const uint32_t handle = arena.generation << SlotBits | slot;
        arena.handle.store(handle, std::memory_order_release);
        return handle;
    }
    return 0;
}

void ResetHandle(uint32_t handle)
{
    if (Arena *arena = FindArena(handle))
        Empty(*arena, true);
}

void CloseHandle(uint32_t handle)
{
    const std::lock_guard lock(slots.mutex); // the slot is free for others only once it is empty
    if (Arena *arena = FindArena(handle)) {
        Empty(*arena, false);
        arena->handle.store(0, std::memory_order_release);
    }
}

size_t HandleBlocks(uint32_t handle)
{
    Arena *arena = FindArena(handle);
    if (arena == nullptr)
        return 0;
    const std::lock_guard lock(arena->mutex);
    size_t cut = 0;
    for (Chunk *chunk = arena->current.load(std::memory_order_relaxed); chunk != nullptr; chunk = chunk->older)
        cut += static_cast<size_t>(chunk->state.load(std::memory_order_relaxed) >> 32);
    return cut - arena->freed.load(std::memory_order_relaxed) + arena->pieces.load(std::memory_order_relaxed);
}

size_t ScratchBlocks()
{
    const uint32_t self = ThreadIdentity();
    size_t count = 0;
    for (ScratchShelf &shelf : Shelves()) {
        const std::lock_guard lock(shelf.mutex);
        for (const Scratch &block : shelf.blocks)
            count += block.owner == self;
    }
    return count;
}

std::vector<Release> TakeReleases()
{
    return std::exchange(ThreadReleases(), {});
}

void RecordReleases(bool on)
{
    detail::threadState.recordReleases = on;
}

void SetCheckedBlocks(bool on)
{
    checkedBlocks.store(on, std::memory_order_relaxed);
}

bool BlocksIntact(std::string *report)
{
    std::string lines;
    {
        const std::lock_guard lock(PastDamage().mutex);
        lines.swap(PastDamage().report);
    }
    {
        const std::lock_guard lock(Pieces().mutex);
        for (const auto &[address, piece] : Pieces().byAddress)
            lines += DescribePiece(*piece);
    }
    for (ScratchShelf &shelf : Shelves()) {
        const std::lock_guard lock(shelf.mutex);
        for (const Scratch &block : shelf.blocks)
            lines += DescribeGuards(block.memory, 0);
    }
    const bool intact = lines.empty();
    if (report != nullptr)
        *report = std::move(lines);
    return intact;
}

void *detail::AllocateForHost(uint32_t handle, size_t size)
{
    return Allocate(handle, size, false);
}

void detail::ReleaseForHost(void *memory)
{
    if (memory != nullptr && !MarkPiece(memory))
        MarkCut(memory);
}

} // namespace bgp::standalone

using namespace bgp::standalone;

BGP_REPLACEABLE void *SYS_DataTypeMallocByHandle(uint32_t memoryHandle, uint32_t size)
{
    return detail::AllocationFails() ? nullptr : Allocate(memoryHandle, size, true);
}

BGP_REPLACEABLE void *SYS_DataTypeMalloc(uint32_t size)
{
    ++detail::threadState.counters.plainAllocations;
    if (detail::AllocationFails() || size > LargestBlock)
        return nullptr;
    const Guarded memory = TakeGuarded(size);
    if (memory.user == nullptr)
        return nullptr;
    try {
        ScratchShelf &shelf = ShelfOf(memory.user);
        const std::lock_guard lock(shelf.mutex);
        shelf.blocks.push_back({memory, ThreadIdentity()});
    } catch (...) {
        DropGuarded(memory);
        return nullptr;
    }
    return memory.user;
}

BGP_REPLACEABLE void SYS_DataTypeFree(void *memory)
{
    ++detail::threadState.counters.frees;
    try {
        const bool known = memory == nullptr || FreeScratch(memory) || MarkPiece(memory) || MarkCut(memory);
        if (detail::threadState.recordReleases)
            ThreadReleases().push_back({memory, known});
    } catch (...) { // no memory for a note about the call: the call itself is done
    }
}
