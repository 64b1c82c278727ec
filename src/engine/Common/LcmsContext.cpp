#include "Common/LcmsContext.h"

#include "ErrorHandling/Exceptions.h"

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <lcms2_plugin.h>

namespace ImagingFramework {

namespace {

/// Stands before each block of the library.
struct alignas(std::max_align_t) BlockHead {
    std::uint64_t Size;
    LcmsContext* pOwner; ///< whom the size is counted to; null while the context itself is being made
};

LcmsContext* Owner(cmsContext hContext) noexcept {
    return static_cast<LcmsContext*>(cmsGetContextUserData(hContext));
}

BlockHead* HeadOf(void* pBlock) noexcept { return static_cast<BlockHead*>(pBlock) - 1; }

extern "C" {

void* RasterloomLcmsMalloc(cmsContext hContext, cmsUInt32Number size) noexcept {
    LcmsContext* const owner = Owner(hContext);
    if (owner != nullptr && !owner->Claim(size)) {
        return nullptr;
    }
    // Zeroed: where a text has characters beyond the first plane, the library takes it for longer than what it wrote.
    auto* const head = static_cast<BlockHead*>(std::calloc(1, sizeof(BlockHead) + size));
    if (head == nullptr) {
        if (owner != nullptr) {
            owner->GiveBack(size);
        }
        return nullptr;
    }
    *head = {size, owner};
    return head + 1;
}

void RasterloomLcmsFree(cmsContext, void* pBlock) noexcept {
    if (pBlock == nullptr) {
        return;
    }
    BlockHead* const head = HeadOf(pBlock);
    if (head->pOwner != nullptr) {
        head->pOwner->GiveBack(head->Size);
    }
    std::free(head);
}

void* RasterloomLcmsRealloc(cmsContext hContext, void* pBlock, cmsUInt32Number size) noexcept {
    void* const moved = RasterloomLcmsMalloc(hContext, size);
    if (moved != nullptr && pBlock != nullptr) {
        const std::uint64_t old = HeadOf(pBlock)->Size;
        std::memcpy(moved, pBlock, static_cast<std::size_t>(old < size ? old : size));
        RasterloomLcmsFree(hContext, pBlock);
    }
    return moved;
}

void RasterloomLcmsError(cmsContext hContext, cmsUInt32Number, const char* text) noexcept {
    if (LcmsContext* const owner = Owner(hContext)) {
        owner->RecordError(text);
    }
}

} // extern "C"

cmsPluginMemHandler MakeMemoryPlugin() {
    cmsPluginMemHandler plugin{};
    plugin.base.Magic = cmsPluginMagicNumber;
    plugin.base.ExpectedVersion = 2000;
    plugin.base.Type = cmsPluginMemHandlerSig;
    plugin.MallocPtr = RasterloomLcmsMalloc;
    plugin.FreePtr = RasterloomLcmsFree;
    plugin.ReallocPtr = RasterloomLcmsRealloc;
    return plugin;
}

} // namespace

LcmsContext::LcmsContext() {
    cmsPluginMemHandler plugin = MakeMemoryPlugin();
    m_hContext = cmsCreateContext(&plugin, this);
    if (m_hContext == nullptr) {
        throw MemoryException();
    }
    cmsSetLogErrorHandlerTHR(m_hContext, RasterloomLcmsError);
}

LcmsContext::~LcmsContext() { cmsDeleteContext(m_hContext); }

bool LcmsContext::Claim(std::uint64_t size) noexcept {
    if (size > MemoryLimit - m_uintMemoryUsed) {
        return false;
    }
    m_uintMemoryUsed += size;
    return true;
}

void LcmsContext::RecordError(const char* text) noexcept {
    try {
        // What follows the first error are its consequences.
        if (m_strErrorText.empty()) {
            m_strErrorText = text;
        }
    } catch (...) {
        // No memory for the words; the failure itself is told by the library's results.
    }
}

} // namespace ImagingFramework
