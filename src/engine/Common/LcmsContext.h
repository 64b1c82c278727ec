#pragma once

#include <cstdint>
#include <lcms2.h>
#include <string>

namespace ImagingFramework {

/// A world of Little CMS of its own: what is opened and made in it is shared with no other, so contexts may be at work
/// on several threads at once, each on one. It keeps the text of the first error that the library reports, and holds the
/// library to a memory limit, because a damaged profile can ask for any amount.
class LcmsContext {
public:
    /// Bytes that profiles and transforms of one context may take.
    static constexpr std::uint64_t MemoryLimit = std::uint64_t{256} << 20;

    /// Fails with `MemoryException`.
    LcmsContext();
    LcmsContext(const LcmsContext&) = delete;
    LcmsContext& operator=(const LcmsContext&) = delete;
    ~LcmsContext();

    cmsContext Get() const noexcept { return m_hContext; }
    /// Empty when no error was reported since `ClearError`.
    const std::string& GetErrorText() const noexcept { return m_strErrorText; }
    void ClearError() noexcept { m_strErrorText.clear(); }

    /// For the callbacks of the library: counts `size` bytes in, or gives false where the limit forbids them.
    bool Claim(std::uint64_t size) noexcept;
    void GiveBack(std::uint64_t size) noexcept { m_uintMemoryUsed -= size; }
    void RecordError(const char* text) noexcept;

private:
    std::string m_strErrorText;
    std::uint64_t m_uintMemoryUsed = 0;
    cmsContext m_hContext = nullptr;
};

} // namespace ImagingFramework
