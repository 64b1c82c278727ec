#pragma once

#include <mutex>

namespace Corvane::Rasterloom {

class Bitmap;

/// How a view or a provider finds its bitmap: the pointer is cleared when the bitmap dies.
class BitmapLink {
public:
    explicit BitmapLink(Bitmap* pBitmap) : m_pBitmap(pBitmap) {}

    Bitmap* Get() const {
        const std::lock_guard lock(m_mutex);
        return m_pBitmap;
    }
    void Clear() {
        const std::lock_guard lock(m_mutex);
        m_pBitmap = nullptr;
    }

private:
    mutable std::mutex m_mutex;
    Bitmap* m_pBitmap;
};

} // namespace Corvane::Rasterloom
