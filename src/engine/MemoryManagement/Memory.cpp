#include "MemoryManagement/Memory.h"

#include "ErrorHandling/Exceptions.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <new>
#include <sys/mman.h>
#include <unordered_map>

namespace ImagingFramework {

namespace {

constexpr std::size_t HugePage = std::size_t{2} << 20;
constexpr std::size_t LargeBlock = std::size_t{1} << 20;
constexpr std::size_t SmallAlignment = 64;
constexpr std::size_t CacheSlots = 4;
constexpr std::size_t CacheLimit = std::size_t{256} << 20;
/// A block from the cache may be this much larger than what is asked for.
constexpr std::size_t CacheSlack = 2;

constexpr std::size_t RoundUp(std::size_t size, std::size_t unit) { return (size + unit - 1) / unit * unit; }

/// The large blocks in use with their sizes, and the freed ones that wait for reuse. A fresh raster of 36 MB costs more
/// in page faults than in copying, so the pages of the last few are kept.
class LargeBlocks {
public:
    void* Take(std::size_t size, bool zeroed) {
        const std::size_t rounded = RoundUp(size, HugePage);
        if (rounded < size) {
            return nullptr;
        }
        if (void* const cached = TakeCached(rounded)) {
            if (zeroed) {
                std::memset(cached, 0, size);
            }
            return cached;
        }
        void* fresh = Map(rounded);
        if (fresh == nullptr) {
            Trim(); // what is kept here may be what the system lacks
            fresh = Map(rounded);
        }
        if (fresh != nullptr) {
            Enter(fresh, rounded);
        }
        return fresh;
    }

    /// False for a pointer that is not a large block.
    bool Give(void* pointer) noexcept {
        std::size_t size = 0;
        {
            const std::lock_guard lock(m_mutex);
            const auto found = m_inUse.find(pointer);
            if (found == m_inUse.end()) {
                return false;
            }
            size = found->second;
            m_inUse.erase(found);
            if (m_cachedBytes + size <= CacheLimit) {
                for (Block& slot : m_cache) {
                    if (slot.Pointer == nullptr) {
                        slot = {pointer, size};
                        m_cachedBytes += size;
                        return true;
                    }
                }
            }
        }
        munmap(pointer, size);
        return true;
    }

    void Trim() noexcept {
        const std::lock_guard lock(m_mutex);
        for (Block& slot : m_cache) {
            if (slot.Pointer != nullptr) {
                munmap(slot.Pointer, slot.Size);
                slot = {};
            }
        }
        m_cachedBytes = 0;
    }

private:
    struct Block {
        void* Pointer = nullptr;
        std::size_t Size = 0;
    };

    void Enter(void* fresh, std::size_t size) {
        try {
            const std::lock_guard lock(m_mutex);
            m_inUse.emplace(fresh, size);
        } catch (...) {
            munmap(fresh, size);
            throw;
        }
    }

    void* TakeCached(std::size_t size) {
        const std::lock_guard lock(m_mutex);
        Block* best = nullptr;
        for (Block& slot : m_cache) {
            const bool fits = slot.Pointer != nullptr && slot.Size >= size && slot.Size / CacheSlack <= size;
            if (fits && (best == nullptr || slot.Size < best->Size)) {
                best = &slot;
            }
        }
        if (best == nullptr) {
            return nullptr;
        }
        void* const pointer = best->Pointer;
        m_inUse.emplace(pointer, best->Size);
        m_cachedBytes -= best->Size;
        *best = {};
        return pointer;
    }

    /// Anonymous pages, zero when fresh, aligned to the huge page by mapping more and giving the ends back.
    static void* Map(std::size_t size) noexcept {
        const std::size_t padded = size + HugePage;
        if (padded < size) {
            return nullptr;
        }
        void* const raw = mmap(nullptr, padded, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (raw == MAP_FAILED) {
            return nullptr;
        }
        auto* const begin = static_cast<std::uint8_t*>(raw);
        const std::size_t head = RoundUp(reinterpret_cast<std::uintptr_t>(raw), HugePage) - reinterpret_cast<std::uintptr_t>(raw);
        if (head != 0) {
            munmap(begin, head);
        }
        munmap(begin + head + size, padded - head - size);
        madvise(begin + head, size, MADV_HUGEPAGE);
        return begin + head;
    }

    std::mutex m_mutex;
    std::unordered_map<void*, std::size_t> m_inUse;
    std::array<Block, CacheSlots> m_cache{};
    std::size_t m_cachedBytes = 0;
};

/// Never destroyed: blocks may be freed by objects that outlive every other static.
LargeBlocks& GetLargeBlocks() {
    static auto* const s_pBlocks = new LargeBlocks;
    return *s_pBlocks;
}

/// Allocations until the one that is to fail; 0 and below: none is.
std::atomic<std::int64_t> s_intFailingAllocation{0};

bool IsToFail() noexcept {
    return s_intFailingAllocation.load(std::memory_order_relaxed) > 0 && s_intFailingAllocation.fetch_sub(1) == 1;
}

void* AllocBlock(std::size_t size, bool zeroed) {
    void* pointer = nullptr;
    if (IsToFail()) {
        throw MemoryException();
    }
    if (size >= LargeBlock) {
        try {
            pointer = GetLargeBlocks().Take(size, zeroed);
        } catch (const std::bad_alloc&) {
            // The entry in the table could not be had; it ends as if the block could not.
        }
    } else {
        const std::size_t rounded = RoundUp(std::max<std::size_t>(size, 1), SmallAlignment);
        pointer = std::aligned_alloc(SmallAlignment, rounded);
        if (pointer != nullptr && zeroed) {
            std::memset(pointer, 0, rounded);
        }
    }
    if (pointer == nullptr) {
        throw MemoryException();
    }
    return pointer;
}

} // namespace

void* AllocMemory(std::size_t size) { return AllocBlock(size, false); }

void* AllocZeroedMemory(std::size_t size) { return AllocBlock(size, true); }

void FreeMemory(void* pointer) noexcept {
    if (pointer == nullptr) {
        return;
    }
    // Only a pointer on a huge-page boundary can be a large block; all others need no look at the table.
    if (reinterpret_cast<std::uintptr_t>(pointer) % HugePage == 0 && GetLargeBlocks().Give(pointer)) {
        return;
    }
    std::free(pointer);
}

std::int64_t FailAllocation(std::int64_t number) noexcept {
    return std::max<std::int64_t>(0, s_intFailingAllocation.exchange(number));
}

void TrimMemoryCache() noexcept { GetLargeBlocks().Trim(); }

std::shared_ptr<unsigned char> AllocSharedBytes(std::size_t size, bool zeroed) {
    return {static_cast<unsigned char*>(AllocBlock(size, zeroed)), MemoryDeleter()};
}

} // namespace ImagingFramework
