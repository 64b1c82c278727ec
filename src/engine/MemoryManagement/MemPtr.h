#pragma once

#include "ErrorHandling/Exceptions.h"
#include "MemoryManagement/Memory.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <new>
#include <utility>

namespace ImagingFramework {

/// Which allocator a buffer comes from and goes back to.
enum class AllocationKind : std::uint32_t { Task = 0, OperatorNew = 1, Malloc = 2 };

/// An owning pointer to a buffer of plain elements, with an ownership flag: without ownership the destructor only forgets.
template <class T> class MemPtr {
public:
    explicit MemPtr(AllocationKind kind = AllocationKind::Task) noexcept : m_kind(kind) {}
    MemPtr(T* pointer, bool owned, AllocationKind kind = AllocationKind::Task) noexcept
        : m_pointer(pointer), m_owned(owned), m_kind(kind) {}
    MemPtr(MemPtr&& other) noexcept
        : m_pointer(std::exchange(other.m_pointer, nullptr)), m_owned(other.m_owned), m_kind(other.m_kind) {}
    MemPtr& operator=(MemPtr&& other) noexcept {
        if (this != &other) {
            Free();
            m_pointer = std::exchange(other.m_pointer, nullptr);
            m_owned = other.m_owned;
            m_kind = other.m_kind;
        }
        return *this;
    }
    MemPtr(const MemPtr&) = delete;
    MemPtr& operator=(const MemPtr&) = delete;
    ~MemPtr() { Free(); }

    /// Frees what is held and allocates `count` elements; 0 keeps the old buffer. Fails with `MemoryException`.
    void AllocateCount(std::size_t count) {
        // A product that overflows asks for more than there can be, and so fails in the allocator.
        const bool fits = count <= std::numeric_limits<std::size_t>::max() / sizeof(T);
        AllocateSize(fits ? count * sizeof(T) : std::numeric_limits<std::size_t>::max());
    }

    /// The same with a size in bytes.
    void AllocateSize(std::size_t size) {
        if (size == 0) {
            return;
        }
        Free();
        m_pointer = static_cast<T*>(Allocate(size));
        m_owned = true;
    }

    void Free() noexcept {
        T* const pointer = std::exchange(m_pointer, nullptr);
        if (pointer == nullptr || !m_owned) {
            return;
        }
        switch (m_kind) {
        case AllocationKind::Task:
            FreeMemory(pointer);
            break;
        case AllocationKind::OperatorNew:
            ::operator delete(pointer);
            break;
        case AllocationKind::Malloc:
            std::free(pointer);
            break;
        }
    }

    /// Hands the buffer over to the caller.
    [[nodiscard]] T* Release() noexcept { return std::exchange(m_pointer, nullptr); }
    void SetOwned(bool owned) noexcept { m_owned = owned; }
    bool IsOwned() const noexcept { return m_owned; }

    T* Get() const noexcept { return m_pointer; }
    T& operator[](std::size_t index) const noexcept { return m_pointer[index]; }
    explicit operator bool() const noexcept { return m_pointer != nullptr; }

private:
    void* Allocate(std::size_t size) const {
        void* pointer = nullptr;
        switch (m_kind) {
        case AllocationKind::Task:
            return AllocMemory(size);
        case AllocationKind::OperatorNew:
            pointer = ::operator new(size, std::nothrow);
            break;
        case AllocationKind::Malloc:
            pointer = std::malloc(size);
            break;
        }
        if (pointer == nullptr) {
            throw MemoryException();
        }
        return pointer;
    }

    T* m_pointer = nullptr;
    bool m_owned = true;
    AllocationKind m_kind = AllocationKind::Task;
};

} // namespace ImagingFramework
