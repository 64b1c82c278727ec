#pragma once

#include <mutex>

namespace Corvane::Rasterloom::Codecs {

/// How one object finds another that may die before it: the pointer is cleared then.
template <class T>
class ObjectLink {
public:
    explicit ObjectLink(T* pObject) : m_pObject(pObject) {}

    T* Get() const {
        const std::lock_guard lock(m_mutex);
        return m_pObject;
    }
    void Clear() {
        const std::lock_guard lock(m_mutex);
        m_pObject = nullptr;
    }

private:
    mutable std::mutex m_mutex;
    T* m_pObject;
};

} // namespace Corvane::Rasterloom::Codecs
