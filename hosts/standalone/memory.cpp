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
#include <vector>

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

using namespace bgp::standalone;

namespace {

#if defined(BGP_STANDALONE_ASAN)
constexpr bool kUnderAsan = true;
#else
constexpr bool kUnderAsan = false;
#endif

constexpr size_t kAlignment = alignof(std::max_align_t);
constexpr uint32_t kLargestBlock = 1u << 30;
constexpr uint32_t kSlotBits = 12;
constexpr uint32_t kSlotCount = 1u << kSlotBits;
constexpr uint32_t kSmallestChunk = 16u << 10;
constexpr uint32_t kGrowthEnd = 1u << 20; // chunks double up to this size
constexpr size_t kGuardSize = 16;         // keeps the alignment of what it precedes
constexpr uint8_t kGuardByte = 0xFD, kFreshByte = 0xA5, kFreedByte = 0x5A;

constexpr size_t RoundUp(size_t size)
{
    return (size + kAlignment - 1) / kAlignment * kAlignment;
}

std::atomic<bool> checkedBlocks{false};

bool PiecesWanted()
{
    return kUnderAsan || checkedBlocks.load(std::memory_order_relaxed);
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
    const bool guards = checked && !kUnderAsan;
    const size_t around = guards ? kGuardSize : 0;
    const size_t whole = around + size + around;
    auto *base = static_cast<uint8_t *>(std::malloc(whole == 0 ? 1 : whole));
    if (base == nullptr) {
        return {};
    }
    if (guards) {
        std::memset(base, kGuardByte, whole);
    }
    if (checked) {
        std::memset(base + around, kFreshByte, size);
    }
    return {base + around, size, guards};
}

void DropGuarded(const Guarded &memory)
{
    if (memory.user != nullptr) {
        std::free(memory.guards ? memory.user - kGuardSize : memory.user);
    }
}

size_t CountOther(const uint8_t *bytes, size_t count, uint8_t expected)
{
    size_t other = 0;
    for (size_t at = 0; at < count; ++at) {
        other += bytes[at] != expected;
    }
    return other;
}

using Lines = std::vector<std::string>;

// One line on what is wrong with the guards, if anything is. Handle 0 stands for scratch memory.
void DescribeGuards(const Guarded &memory, uint32_t handle, Lines &lines)
{
    if (!memory.guards) {
        return;
    }
    const size_t before = CountOther(memory.user - kGuardSize, kGuardSize, kGuardByte);
    const size_t behind = CountOther(memory.user + memory.size, kGuardSize, kGuardByte);
    if (before == 0 && behind == 0) {
        return;
    }
    lines.push_back((handle == 0 ? "scratch block" : "block of handle " + std::to_string(handle)) + ", " +
                    std::to_string(memory.size) + " bytes: " + std::to_string(before) + " guard bytes before and " +
                    std::to_string(behind) + " behind it overwritten");
}

// Damage of blocks that are gone, until it is reported.
struct Damage {
    std::mutex mutex;
    Lines lines;
};

// These tables are never destroyed: a plug-in may still be called while the process ends.
Damage &PastDamage()
{
    static Damage *damage = new Damage;
    return *damage;
}

void Remember(const Lines &lines)
{
    if (lines.empty()) {
        return;
    }
    const std::lock_guard lock(PastDamage().mutex);
    PastDamage().lines.insert(PastDamage().lines.end(), lines.begin(), lines.end());
}

// -------------------------------------------------------------------------------------------------------- arenas

// In front of each block of a chunk.
struct BlockHeader {
    std::atomic<uint32_t> tag; // chunk stamp and offset mixed: only a live block of this round has it; 0 = free
    bool counted;
};
constexpr size_t kHeaderSize = RoundUp(sizeof(BlockHeader));

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
    bool filled = false; // freed while blocks were checked, so its bytes are all kFreedByte
    Piece *next = nullptr;
};

constexpr size_t kCacheLine = 64;

// On cache lines of its own: neighbours belong to other threads as a rule.
struct alignas(kCacheLine) Arena {
    std::atomic<uint32_t> handle{0}; // 0 = closed
    std::atomic<Chunk *> current{nullptr};
    std::atomic<size_t> freed{0};  // counted blocks of chunks that were marked free
    std::atomic<size_t> pieces{0}; // counted pieces that are live
    std::mutex mutex;              // for the chunk list
    Piece *firstPiece = nullptr;   // added under the lock of the piece table
    uint32_t generation = 0;       // under the lock of the slots
};

constinit std::array<Arena, kSlotCount> arenas{};

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
    Arena &arena = arenas[handle % kSlotCount];
    return handle != 0 && arena.handle.load(std::memory_order_acquire) == handle ? &arena : nullptr;
}

// Each thread takes stamps by the thousand, so that threads that reset their handles often do not meet here.
uint32_t NextStamp()
{
    constexpr uint32_t kStretch = 1024;
    static constinit std::atomic<uint32_t> stretches{0};
    uint32_t &stamp = detail::threadState.stamp;
    if (stamp % kStretch == 0) {
        stamp = stretches.fetch_add(1, std::memory_order_relaxed) * kStretch;
    }
    return ++stamp;
}

// Null when the chunk has no room.
void *CutFrom(Chunk &chunk, size_t need, bool counted)
{
    uint64_t state = chunk.state.load(std::memory_order_relaxed);
    uint32_t offset;
    do {
        offset = static_cast<uint32_t>(state);
        if (need > chunk.capacity - offset) {
            return nullptr;
        }
    } while (!chunk.state.compare_exchange_weak(state, state + need + (counted ? uint64_t{1} << 32 : 0),
                                                std::memory_order_relaxed));
    uint8_t *block = chunk.Bytes() + offset;
    new (block) BlockHeader{chunk.Tag(offset), counted};
    return block + kHeaderSize;
}

// Under the arena's lock. Null when memory is out.
Chunk *AddChunk(Arena &arena, size_t need)
{
    Chunk *older = arena.current.load(std::memory_order_relaxed);
    size_t capacity = older == nullptr ? kSmallestChunk : size_t{older->capacity} * 2;
    capacity = std::max(std::min<size_t>(capacity, kGrowthEnd), need);
    void *memory = std::malloc(RoundUp(sizeof(Chunk)) + capacity);
    if (memory == nullptr) {
        return nullptr;
    }
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
    if (Chunk *chunk = arena.current.load(std::memory_order_relaxed)) { // another thread may have added one
        if (void *block = CutFrom(*chunk, need, counted)) {
            return block;
        }
    }
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
    if (arena == nullptr || size > kLargestBlock) {
        return nullptr;
    }
    if (PiecesWanted()) {
        return AllocatePiece(*arena, handle, static_cast<uint32_t>(size), counted);
    }
    const size_t need = kHeaderSize + RoundUp(size == 0 ? 1 : size);
    if (Chunk *chunk = arena->current.load(std::memory_order_acquire)) {
        if (void *block = CutFrom(*chunk, need, counted)) {
            return block;
        }
    }
    return AllocateSlowly(*arena, need, counted);
}

// Marks a block of a chunk free; false when the pointer is none.
bool MarkCut(void *memory)
{
    const std::shared_lock lock(Chunks().mutex);
    const auto address = reinterpret_cast<uintptr_t>(memory);
    auto at = Chunks().byAddress.upper_bound(address);
    if (at == Chunks().byAddress.begin()) {
        return false;
    }
    const auto &[base, owner] = *--at;
    auto [chunk, arena] = owner;
    const uintptr_t distance = address - base;
    if (distance < kHeaderSize || distance >= static_cast<uint32_t>(chunk->state.load(std::memory_order_relaxed)) ||
        distance % kAlignment != 0) {
        return false;
    }
    auto *header = std::launder(reinterpret_cast<BlockHeader *>(chunk->Bytes() + (distance - kHeaderSize)));
    uint32_t live = chunk->Tag(distance - kHeaderSize);
    const bool counted = header->counted;
    if (!header->tag.compare_exchange_strong(live, 0, std::memory_order_relaxed)) {
        return false;
    }
    arena->freed.fetch_add(counted, std::memory_order_relaxed);
    return true;
}

// The same for a piece. Its memory stays until the handle goes, so that late writes are seen.
bool MarkPiece(void *memory)
{
    const std::lock_guard lock(Pieces().mutex);
    const auto at = Pieces().byAddress.find(memory);
    if (at == Pieces().byAddress.end() || at->second->freed) {
        return false;
    }
    Piece &piece = *at->second;
    piece.freed = true;
    piece.filled = piece.memory.guards;
    if (checkedBlocks.load(std::memory_order_relaxed) || piece.filled) {
        std::memset(memory, kFreedByte, piece.memory.size);
    }
#if defined(BGP_STANDALONE_ASAN)
    ASAN_POISON_MEMORY_REGION(memory, piece.memory.size);
#endif
    arenas[piece.handle % kSlotCount].pieces.fetch_sub(piece.counted, std::memory_order_relaxed);
    return true;
}

void DescribePiece(const Piece &piece, Lines &lines)
{
    DescribeGuards(piece.memory, piece.handle, lines);
    if (!piece.filled) {
        return;
    }
    if (const size_t late = CountOther(piece.memory.user, piece.memory.size, kFreedByte); late != 0) {
        lines.push_back("block of handle " + std::to_string(piece.handle) + ", " + std::to_string(piece.memory.size) +
                        " bytes: " + std::to_string(late) + " bytes written after it was freed");
    }
}

void DropPieces(Arena &arena)
{
    if (arena.firstPiece == nullptr) { // no lock is needed: nobody else uses a handle that is being emptied
        return;
    }
    Lines damage;
    const std::lock_guard lock(Pieces().mutex);
    for (Piece *piece = std::exchange(arena.firstPiece, nullptr); piece != nullptr;) {
        DescribePiece(*piece, damage);
        Pieces().byAddress.erase(piece->memory.user);
#if defined(BGP_STANDALONE_ASAN)
        ASAN_UNPOISON_MEMORY_REGION(piece->memory.user, piece->memory.size);
#endif
        DropGuarded(piece->memory);
        delete std::exchange(piece, piece->next);
    }
    arena.pieces.store(0, std::memory_order_relaxed);
    Remember(damage);
}

void DropChunks(Chunk *chunk)
{
    if (chunk == nullptr) {
        return;
    }
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

struct alignas(kCacheLine) ScratchShelf {
    std::mutex mutex;
    std::vector<Scratch> blocks;
};

using ScratchShelves = std::array<ScratchShelf, 64>;

// On all shelves, so that the usual answer, none, needs no look at them.
constinit std::atomic<size_t> scratchBlocks{0};

ScratchShelves &Shelves()
{
    static auto *shelves = new ScratchShelves;
    return *shelves;
}

ScratchShelf &ShelfOf(const void *memory)
{
    const uintptr_t address = reinterpret_cast<uintptr_t>(memory) / kAlignment;
    return Shelves()[(address ^ (address >> 6) ^ (address >> 12)) % Shelves().size()];
}

uint32_t ThreadIdentity()
{
    static constinit std::atomic<uint32_t> identities{0};
    uint32_t &identity = detail::threadState.identity;
    if (identity == 0) {
        identity = identities.fetch_add(1, std::memory_order_relaxed) + 1;
    }
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
            if (shelf.blocks[at].memory.user != memory) {
                continue;
            }
            found = shelf.blocks[at].memory;
            scratchBlocks.fetch_sub(1, std::memory_order_relaxed);
            shelf.blocks[at] = shelf.blocks.back();
            shelf.blocks.pop_back();
        }
    }
    if (found.user == nullptr) {
        return false;
    }
    Lines damage;
    DescribeGuards(found, 0, damage);
    Remember(damage);
    if (checkedBlocks.load(std::memory_order_relaxed)) {
        std::memset(found.user, kFreedByte, found.size);
    }
    DropGuarded(found);
    return true;
}

struct Release {
    const void *memory;
    bool known;
};

std::vector<Release> &ThreadReleases()
{
    thread_local std::vector<Release> releases;
    return releases;
}

} // namespace

// ------------------------------------------------------------------------------------------------- the public face

uint32_t BgpHost_OpenHandle()
{
    const std::lock_guard lock(slots.mutex);
    for (uint32_t tried = 0; tried < kSlotCount; ++tried) {
        const uint32_t slot = slots.next;
        slots.next = (slots.next + 1) % kSlotCount;
        Arena &arena = arenas[slot];
        if (arena.handle.load(std::memory_order_relaxed) != 0) {
            continue;
        }
        arena.generation = (arena.generation + 1) % (1u << (32 - kSlotBits));
        if (arena.generation == 0) {
            arena.generation = 1;
        }
        const uint32_t handle = arena.generation << kSlotBits | slot;
        arena.handle.store(handle, std::memory_order_release);
        return handle;
    }
    return 0;
}

void BgpHost_ResetHandle(uint32_t handle)
{
    if (Arena *arena = FindArena(handle)) {
        Empty(*arena, true);
    }
}

void BgpHost_CloseHandle(uint32_t handle)
{
    const std::lock_guard lock(slots.mutex); // the slot is free for others only once it is empty
    if (Arena *arena = FindArena(handle)) {
        Empty(*arena, false);
        arena->handle.store(0, std::memory_order_release);
    }
}

size_t BgpHost_HandleBlocks(uint32_t handle)
{
    Arena *arena = FindArena(handle);
    if (arena == nullptr) {
        return 0;
    }
    const std::lock_guard lock(arena->mutex);
    size_t cut = 0;
    for (Chunk *chunk = arena->current.load(std::memory_order_relaxed); chunk != nullptr; chunk = chunk->older) {
        cut += static_cast<size_t>(chunk->state.load(std::memory_order_relaxed) >> 32);
    }
    return cut - arena->freed.load(std::memory_order_relaxed) + arena->pieces.load(std::memory_order_relaxed);
}

size_t BgpHost_ScratchBlocks()
{
    if (scratchBlocks.load(std::memory_order_relaxed) == 0) { // a thread sees at least the blocks that it took itself
        return 0;
    }
    const uint32_t self = ThreadIdentity();
    size_t count = 0;
    for (ScratchShelf &shelf : Shelves()) {
        const std::lock_guard lock(shelf.mutex);
        for (const Scratch &block : shelf.blocks) {
            count += block.owner == self;
        }
    }
    return count;
}

void BgpHost_TakeReleases(BgpHostReleaseTaker *take, void *context)
{
    for (const Release &release : std::exchange(ThreadReleases(), {})) {
        take(context, release.memory, release.known);
    }
}

void BgpHost_RecordReleases(bool on)
{
    detail::threadState.recordReleases = on;
}

void BgpHost_SetCheckedBlocks(bool on)
{
    checkedBlocks.store(on, std::memory_order_relaxed);
}

bool BgpHost_BlocksIntact(BgpHostLineTaker *take, void *context)
{
    Lines lines;
    {
        const std::lock_guard lock(PastDamage().mutex);
        lines.swap(PastDamage().lines);
    }
    {
        const std::lock_guard lock(Pieces().mutex);
        for (const auto &[address, piece] : Pieces().byAddress) {
            DescribePiece(*piece, lines);
        }
    }
    for (ScratchShelf &shelf : Shelves()) {
        const std::lock_guard lock(shelf.mutex);
        for (const Scratch &block : shelf.blocks) {
            DescribeGuards(block.memory, 0, lines);
        }
    }
    for (const std::string &line : lines) {
        if (take != nullptr) {
            take(context, line.c_str());
        }
    }
    return lines.empty();
}

namespace bgp::standalone::detail {

void *AllocateForHost(uint32_t handle, size_t size)
{
    return Allocate(handle, size, false);
}

void ReleaseForHost(void *memory)
{
    if (memory != nullptr && !MarkPiece(memory)) {
        MarkCut(memory);
    }
}

} // namespace bgp::standalone::detail

BGP_REPLACEABLE void *SYS_DataTypeMallocByHandle(uint32_t memoryHandle, uint32_t size)
{
    return detail::AllocationFails() ? nullptr : Allocate(memoryHandle, size, true);
}

BGP_REPLACEABLE void *SYS_DataTypeMalloc(uint32_t size)
{
    ++detail::threadState.counters.plainAllocations;
    if (detail::AllocationFails() || size > kLargestBlock) {
        return nullptr;
    }
    const Guarded memory = TakeGuarded(size);
    if (memory.user == nullptr) {
        return nullptr;
    }
    try {
        ScratchShelf &shelf = ShelfOf(memory.user);
        const std::lock_guard lock(shelf.mutex);
        shelf.blocks.push_back({memory, ThreadIdentity()});
        scratchBlocks.fetch_add(1, std::memory_order_relaxed);
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
        if (detail::threadState.recordReleases) {
            ThreadReleases().push_back({memory, known});
        }
    } catch (...) { // no memory for a note about the call: the call itself is done
    }
}
