#pragma once

#include <utility>

namespace ImagingFramework {

/// An owning pointer to an object, with an ownership flag. `std::unique_ptr` serves where the flag is not needed.
template <class T> class ObjPtr {
public:
    explicit ObjPtr(T* pointer = nullptr, bool owned = true) noexcept : m_pointer(pointer), m_owned(owned) {}
    ObjPtr(ObjPtr&& other) noexcept : m_pointer(std::exchange(other.m_pointer, nullptr)), m_owned(other.m_owned) {}
    ObjPtr& operator=(ObjPtr&& other) noexcept {
        if (this != &other) {
            Free();
            m_pointer = std::exchange(other.m_pointer, nullptr);
            m_owned = other.m_owned;
        }
        return *this;
    }
    ObjPtr(const ObjPtr&) = delete;
    ObjPtr& operator=(const ObjPtr&) = delete;
    ~ObjPtr() { Free(); }

    /// Frees what is held, then takes `pointer`.
    void Reset(T* pointer, bool owned = true) noexcept {
        if (pointer != m_pointer) {
            Free();
        }
        m_pointer = pointer;
        m_owned = owned;
    }

    void Free() noexcept {
        T* const pointer = std::exchange(m_pointer, nullptr);
        if (m_owned) {
            delete pointer;
        }
    }

    [[nodiscard]] T* Release() noexcept { return std::exchange(m_pointer, nullptr); }
    bool IsOwned() const noexcept { return m_owned; }
    T* Get() const noexcept { return m_pointer; }
    T* operator->() const noexcept { return m_pointer; }
    T& operator*() const noexcept { return *m_pointer; }
    explicit operator bool() const noexcept { return m_pointer != nullptr; }

private:
    T* m_pointer;
    bool m_owned;
};

} // namespace ImagingFramework
