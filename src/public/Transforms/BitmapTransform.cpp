#include <Corvane/Rasterloom/Transforms/BitmapTransform.h>

#include "CallEngine.h"
#include "Common/BitmapData.h"
#include "EngineRegion.h"
#include "EnumTransforms.h"
#include "ObjectGuard.h"
#include "Validator.h"
#include "transforms/Transform.h"

#include <Corvane/Rasterloom/Bitmap.h>
#include <Corvane/Rasterloom/BitmapData.h>
#include <Corvane/Rasterloom/Exceptions.h>

#include <algorithm>
#include <atomic>
#include <functional>
#include <utility>

namespace Corvane::Rasterloom::Transforms {

namespace engine = ImagingFramework;

struct BitmapTransform::Impl {
    BitmapChange m_enBitmapChange;
    std::unique_ptr<engine::Transform> m_pInternalTransform;
    Run m_run;
    /// Bitmaps whose locks this run holds, in the order they were taken.
    std::vector<Bitmap*> m_lockedBitmaps;
    bool m_bViewLocked = false;
    /// The run's own mark that it gave everything back; the next run may begin before the last one's caller looks.
    std::shared_ptr<std::atomic<bool>> m_pStopped;
};

BitmapTransform::BitmapTransform(BitmapChange change, std::unique_ptr<engine::Transform> transform)
    : m_pImpl(std::make_unique<Impl>()) {
    m_pImpl->m_enBitmapChange = change;
    m_pImpl->m_pInternalTransform = std::move(transform);
}

BitmapTransform::~BitmapTransform() { DisposeFinally(); }

engine::Transform& BitmapTransform::get__Transform() const { return *m_pImpl->m_pInternalTransform; }

void BitmapTransform::set__Transform(std::unique_ptr<engine::Transform> transform) {
    if (!transform) {
        throw Host::ArgumentNullException("transform");
    }
    m_pImpl->m_pInternalTransform = std::move(transform);
}

BitmapTransform::Run& BitmapTransform::get__Run() const noexcept { return m_pImpl->m_run; }

engine::IInternalEventsHost& BitmapTransform::_GetEngineEventsHost() { return *m_pImpl->m_pInternalTransform; }

const engine::IPixelFormatSupport& BitmapTransform::_GetEngineFormatSupport() const {
    return *m_pImpl->m_pInternalTransform;
}

void BitmapTransform::_RunEngine(const engine::BitmapData& source, const engine::RegionRect* pRegion,
                                 std::unique_ptr<engine::BitmapData>& destination) {
    m_pImpl->m_pInternalTransform->ApplyTransform(&source, pRegion, destination);
}

std::vector<PixelFormat> BitmapTransform::get_SupportedPixelFormats() {
    const ObjectGuard guard(*this);
    std::vector<engine::PixelFormat> list;
    _GetEngineFormatSupport().GetSupportedPixelFormats(list);
    return TransformPixelFormats(list);
}

bool BitmapTransform::IsPixelFormatSupported(PixelFormat format) {
    Validator::ValidateEnum("format", format);
    const ObjectGuard guard(*this);
    return _GetEngineFormatSupport().IsPixelFormatSupported(static_cast<engine::PixelFormat>(format));
}

Host::Rectangle BitmapTransform::OnTransforming() { return {}; }

bool BitmapTransform::SetDestinationData(std::unique_ptr<engine::BitmapData>& destBitmapData) {
    if (!destBitmapData) {
        throw Host::ArgumentNullException("destBitmapData");
    }
    return false;
}

Bitmap* BitmapTransform::ChangedBitmap() const {
    const Run& run = m_pImpl->m_run;
    if (run.m_pDestBitmap != nullptr) {
        return run.m_pDestBitmap;
    }
    if (run.m_pSrcBitmap != nullptr) {
        return run.m_pSrcBitmap;
    }
    return run.m_pSrcBitmapData != nullptr ? run.m_pSrcBitmapData->get__Bitmap() : nullptr;
}

Bitmap* BitmapTransform::SourceBitmap() const {
    const Run& run = m_pImpl->m_run;
    return run.m_pSrcBitmap != nullptr || run.m_pSrcBitmapData == nullptr ? run.m_pSrcBitmap
                                                                         : run.m_pSrcBitmapData->get__Bitmap();
}

float BitmapTransform::GetHorizontalResolution() {
    Bitmap* const bitmap = SourceBitmap();
    return bitmap != nullptr ? bitmap->get__HorizontalResolution()
                             : static_cast<float>(engine::BitmapData::DefaultResolution);
}

void BitmapTransform::SetHorizontalResolution(float) { throw Host::NotSupportedException(); }

float BitmapTransform::GetVerticalResolution() {
    Bitmap* const bitmap = SourceBitmap();
    return bitmap != nullptr ? bitmap->get__VerticalResolution()
                             : static_cast<float>(engine::BitmapData::DefaultResolution);
}

void BitmapTransform::SetVerticalResolution(float) { throw Host::NotSupportedException(); }

Host::Rectangle BitmapTransform::_UnitsToPixels(const Host::RectangleF& rectangle) {
    return {_HorizontalUnitsToPixels(rectangle.Left), _VerticalUnitsToPixels(rectangle.Top),
            _HorizontalUnitsToPixels(rectangle.Width), _VerticalUnitsToPixels(rectangle.Height)};
}

Host::RectangleF BitmapTransform::_PixelsToUnits(const Host::Rectangle& rectangle) {
    return {_HorizontalPixelsToUnits(rectangle.Left), _VerticalPixelsToUnits(rectangle.Top),
            _HorizontalPixelsToUnits(rectangle.Width), _VerticalPixelsToUnits(rectangle.Height)};
}

void BitmapTransform::CheckNotDisposed() const {
    if (get__IsDisposed()) {
        throw Host::ObjectDisposedException("BitmapTransform");
    }
}

void BitmapTransform::ThrowIfEmpty(Bitmap& bitmap, const char* name) {
    if (bitmap.get_IsEmpty()) {
        throw BitmapEmptyException(std::string(name));
    }
}

void BitmapTransform::ApplyTransform(Bitmap& bitmap) {
    ThrowIfEmpty(bitmap, "bitmap");
    Start(&bitmap, nullptr, nullptr);
}

void BitmapTransform::ApplyTransform(Bitmap& source, Bitmap& destination) {
    if (&source == &destination) {
        throw ObjectLockedException();
    }
    ThrowIfEmpty(source, "source");
    Start(&source, nullptr, &destination);
}

void BitmapTransform::ApplyTransform(BitmapData& sourceData, Bitmap& destination) {
    Start(nullptr, &sourceData, &destination);
}

void BitmapTransform::Start(Bitmap* source, BitmapData* sourceData, Bitmap* destination, Bitmap* mask,
                            bool applyMasked) {
    const auto stopped = std::make_shared<std::atomic<bool>>(false);
    Lock();
    try {
        CheckNotDisposed();
        Run& run = m_pImpl->m_run;
        run = {};
        m_pImpl->m_pStopped = stopped;
        run.m_pSrcBitmap = source;
        run.m_pSrcBitmapData = sourceData;
        run.m_pDestBitmap = destination;
        run.m_pMask = mask;
        run.m_bApplyMasked = applyMasked;
        // Outside all bitmap locks, so that handlers may use the bitmap.
        if (Bitmap* const changed = ChangedBitmap()) {
            changed->_RaiseChangingEvent(m_pImpl->m_enBitmapChange);
        }
        TakeLocks();
        // The end of the work gives everything back, whatever becomes of it; only a start that failed does not get there.
        StartThread();
    } catch (...) {
        if (!*stopped) {
            ReleaseLocks(false);
            m_pImpl->m_run = {};
            Unlock();
        }
        throw;
    }
}

void BitmapTransform::TakeLocks() {
    Run& run = m_pImpl->m_run;
    if (run.m_pSrcBitmap == nullptr) {
        // A host's view comes before any bitmap, its own among them.
        run.m_pSrcBitmapData->_LockWithoutBitmap();
        m_pImpl->m_bViewLocked = true;
    }
    std::vector<Bitmap*> bitmaps;
    for (Bitmap* const bitmap : {SourceBitmap(), run.m_pDestBitmap, run.m_pMask}) {
        if (bitmap != nullptr) {
            bitmaps.push_back(bitmap);
        }
    }
    // By address, so that two transforms over the same bitmaps cannot wait for each other.
    std::ranges::sort(bitmaps, std::less<>());
    for (Bitmap* const bitmap : bitmaps) {
        bitmap->Lock();
        m_pImpl->m_lockedBitmaps.push_back(bitmap);
    }
    if (run.m_pDestBitmap != nullptr) {
        // With a view out it could not take the result; better told before the work than after it.
        run.m_pDestBitmap->get__InternalBitmapData();
    }
    if (run.m_pSrcBitmap != nullptr) {
        const engine::BitmapData& raster = run.m_pSrcBitmap->get__InternalBitmapData();
        run.m_pOwnView = run.m_pSrcBitmap->_LockBits(0, 0, static_cast<std::int32_t>(raster.GetWidth()),
                                                     static_cast<std::int32_t>(raster.GetHeight()));
        run.m_pOwnView->_LockWithoutBitmap();
        run.m_pSrcBitmapData = run.m_pOwnView.get();
        m_pImpl->m_bViewLocked = true;
    }
}

void BitmapTransform::ReleaseLocks(bool attach) {
    Run& run = m_pImpl->m_run;
    std::exception_ptr failure;
    if (run.m_pOwnView) {
        if (std::exchange(m_pImpl->m_bViewLocked, false)) {
            run.m_pOwnView->_UnlockWithoutBitmap();
        }
        run.m_pSrcBitmapData = nullptr;
        run.m_pSrcBitmap->_UnlockBits();
        run.m_pOwnView.reset();
    }
    if (attach && run.m_pInternalBitmapDataToAttach) {
        try {
            Bitmap* const target = run.m_pDestBitmap != nullptr ? run.m_pDestBitmap : run.m_pSrcBitmap;
            target->_Attach(std::move(run.m_pInternalBitmapDataToAttach));
        } catch (...) {
            failure = std::current_exception();
        }
    }
    while (!m_pImpl->m_lockedBitmaps.empty()) {
        m_pImpl->m_lockedBitmaps.back()->Unlock();
        m_pImpl->m_lockedBitmaps.pop_back();
    }
    if (std::exchange(m_pImpl->m_bViewLocked, false)) {
        run.m_pSrcBitmapData->_UnlockWithoutBitmap();
    }
    if (failure) {
        std::rethrow_exception(failure);
    }
}

void BitmapTransform::ThreadProc() {
    UnitConverterHandler::ThreadProc();
    Run& run = m_pImpl->m_run;
    const engine::BitmapData& source = run.m_pSrcBitmapData->get__InternalBitmapData();
    engine::IInternalEventsHost& host = _GetEngineEventsHost();
    ExportEventsHostSettings(&host);
    std::unique_ptr<engine::BitmapData> result;
    try {
        ExportSettings();
        const Host::Rectangle region = OnTransforming();
        const engine::RegionRect corners = EngineRegion(region);
        CallEngine([&] { _RunEngine(source, region.Width == 0 || region.Height == 0 ? nullptr : &corners, result); });
        if (!SetDestinationData(result)) {
            run.m_pInternalBitmapDataToAttach = std::move(result);
        }
    } catch (const Host::Exception&) {
        ResetEventsHostSettings(&host);
        throw;
    } catch (...) {
        ResetEventsHostSettings(&host);
        throw UnexpectedException();
    }
    ResetEventsHostSettings(&host);
}

void BitmapTransform::OnThreadStopping(const std::exception_ptr& exception) {
    const bool succeeded = exception == nullptr;
    Bitmap* const changed = ChangedBitmap();
    std::exception_ptr failure;
    try {
        ReleaseLocks(succeeded);
        m_pImpl->m_run = {};
        if (succeeded && changed != nullptr) {
            changed->_RaiseChangedEvent(m_pImpl->m_enBitmapChange);
        }
    } catch (...) {
        failure = std::current_exception();
        m_pImpl->m_run = {};
    }
    try {
        UnitConverterHandler::OnThreadStopping(exception);
    } catch (...) {
        failure = failure ? failure : std::current_exception();
    }
    *m_pImpl->m_pStopped = true;
    Unlock();
    if (failure) {
        std::rethrow_exception(failure);
    }
}

} // namespace Corvane::Rasterloom::Transforms
