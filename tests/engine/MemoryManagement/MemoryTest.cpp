#include "MemoryManagement/MemPtr.h"
#include "MemoryManagement/ObjPtr.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace ImagingFramework {
namespace {

TEST(Memory, LargeBlocksAreAlignedAndReusedOnesAreZeroed) {
    constexpr std::size_t size = (std::size_t{3} << 20) + 5;
    void* const first = AllocMemory(size);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(first) % (2U << 20), 0U);
    std::memset(first, 0xFF, size);
    FreeMemory(first);
    auto* const second = static_cast<std::uint8_t*>(AllocZeroedMemory(size));
    EXPECT_TRUE(std::all_of(second, second + size, [](std::uint8_t byte) { return byte == 0; }));
    FreeMemory(second);
    TrimMemoryCache();
    FreeMemory(nullptr);
}

TEST(Memory, KeptBlocksAreGivenUpBeforeAnAllocationFails) {
    constexpr std::size_t block = std::size_t{200} << 20;
    std::size_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    struct rlimit unlimited {};
    ASSERT_EQ(::getrlimit(RLIMIT_AS, &unlimited), 0);
    struct rlimit limit = unlimited;
    limit.rlim_cur = pages * static_cast<std::size_t>(::sysconf(_SC_PAGESIZE)) + block + block / 2;
    ASSERT_EQ(::setrlimit(RLIMIT_AS, &limit), 0);
    FreeMemory(AllocMemory(block)); // stays in the cache, and does not fit what comes next
    void* larger = nullptr;
    EXPECT_NO_THROW(larger = AllocMemory(block + block / 4));
    ::setrlimit(RLIMIT_AS, &unlimited);
    FreeMemory(larger);
    TrimMemoryCache();
}

TEST(Memory, ImpossibleSizesFail) {
    EXPECT_THROW(AllocMemory(~std::size_t{0}), MemoryException);
    EXPECT_THROW(AllocMemory(~std::size_t{0} / 2), MemoryException);
    MemPtr<std::uint64_t> pointer(AllocationKind::OperatorNew);
    EXPECT_THROW(pointer.AllocateCount(~std::size_t{0} / 4), MemoryException);
}

TEST(Memory, PointersOwnByFlag) {
    MemPtr<std::uint32_t> owner(AllocationKind::Malloc);
    owner.AllocateCount(4);
    owner[3] = 7;
    owner.AllocateCount(0); // keeps the old buffer
    EXPECT_EQ(owner[3], 7U);
    {
        const MemPtr<std::uint32_t> borrower(owner.Get(), false, AllocationKind::Malloc);
    }
    EXPECT_EQ(owner[3], 7U);

    struct Counted {
        int& Deaths;
        ~Counted() { ++Deaths; }
    };
    int deaths = 0;
    {
        Counted outside{deaths};
        ObjPtr<Counted> object(new Counted{deaths});
        object.Reset(&outside, false);
        EXPECT_EQ(deaths, 1);
    }
    EXPECT_EQ(deaths, 2);
}

TEST(MemoryThreading, BlocksMoveBetweenThreads) {
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([] {
            for (int i = 0; i < 200; ++i) {
                const std::size_t size = (std::size_t{1} << 20) * static_cast<std::size_t>(1 + i % 3);
                auto* const block = static_cast<std::uint8_t*>(AllocMemory(size));
                block[0] = block[size - 1] = 1;
                FreeMemory(block);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

} // namespace
} // namespace ImagingFramework
