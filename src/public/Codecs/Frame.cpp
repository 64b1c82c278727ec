#include "FrameImpl.h"

#include "CallEngine.h"
#include "Common/ColorProfileUtils.h"
#include "FormatReaderImpl.h"
#include "ObjectGuard.h"
#include "ThumbnailMaker.h"
#include "Validator.h"

#include <Corvane/Rasterloom/Codecs/EncoderOptions.h>
#include <Corvane/Rasterloom/Exceptions.h>
#include <Corvane/Rasterloom/PixelFormatUtils.h>

#include <utility>

namespace Corvane::Rasterloom::Codecs {

namespace engine = ImagingFramework;

namespace {

/// A damaged profile counts as none: the picture beside it is good.
std::shared_ptr<ColorProfile> OpenOrNone(const std::shared_ptr<const engine::ProfileFile>& file) {
    try {
        return file ? std::make_shared<ColorProfile>(engine::DuplicateColorProfile(file)) : nullptr;
    } catch (const std::exception&) {
        return nullptr;
    }
}

} // namespace

// --- Fields

void Frame::Impl::Bind(FormatReader& reader) {
    m_pReaderLink = reader.get__Impl().m_pLink;
    m_uintReaderOpening = reader.get__Impl().m_uintOpening;
    m_cells.ForEach(m_cells, [](auto& cell, const auto&) { cell.Loaded = false; });
}

void Frame::Impl::SetImageProperties(const engine::BitmapData& raster) {
    m_cells.Width.Set(static_cast<std::int32_t>(raster.GetWidth()));
    m_cells.Height.Set(static_cast<std::int32_t>(raster.GetHeight()));
    m_cells.PixelFormat.Set(static_cast<Rasterloom::PixelFormat>(raster.GetPixelFormat()));
    m_cells.HorizontalResolution.Set(static_cast<float>(raster.GetHorizontalResolution()));
    m_cells.VerticalResolution.Set(static_cast<float>(raster.GetVerticalResolution()));
    m_cells.ColorProfile.Set(OpenOrNone(raster.GetProfileFile()));
}

template <class T>
const T& Frame::Impl::Read(Frame& frame, Cell<T> Cells::*pCell, FrameProperty property) {
    Cell<T>& cell = m_cells.*pCell;
    if (!cell.Loaded) {
        frame.RequireReader()._FrameLoadProperty(frame, property);
        cell.Loaded = true; // asked once, whether there was an answer or not
    }
    return cell.Value;
}

// --- Lifetime

Frame::Frame() : m_pImpl(std::make_unique<Impl>()) {}

Frame::Frame(FormatReader& reader, std::int32_t index) : Frame() {
    m_pImpl->Bind(reader);
    m_pImpl->m_intIndex = index;
}

Frame::~Frame() { DisposeFinally(); }

void Frame::Dispose(bool disposing) {
    m_pImpl->m_pBitmap.reset();
    m_pImpl->m_pBitmapToSave.reset();
    m_pImpl->m_pLoadedRaster.reset();
    m_pImpl->m_pReaderLink.reset();
    LockableObject::Dispose(disposing);
}

void Frame::CheckNotDisposed() const {
    if (get__IsDisposed()) {
        throw Host::ObjectDisposedException("Frame");
    }
}

FormatReader& Frame::RequireReader() const {
    FormatReader* const reader = m_pImpl->m_pReaderLink ? m_pImpl->m_pReaderLink->Get() : nullptr;
    if (reader == nullptr) {
        throw UnexpectedException("The frame is not initialized by format reader instance.");
    }
    return *reader;
}

// --- Properties

namespace {

template <class Body>
auto Locked(Frame& frame, Body body) {
    const ObjectGuard guard(frame);
    frame.CheckNotDisposed();
    return body(frame.get__Impl());
}

} // namespace

std::int32_t Frame::get_Index() {
    return Locked(*this, [](Impl& impl) { return impl.m_intIndex; });
}

std::string Frame::get_Name() {
    return Locked(*this, [this](Impl& impl) { return impl.Read(*this, &Impl::Cells::Name, FrameProperty::Name); });
}

void Frame::set_Name(const std::string& value) {
    Locked(*this, [&](Impl& impl) { impl.m_cells.Name.Set(value); });
}

std::int32_t Frame::get_Width() {
    return Locked(*this, [this](Impl& impl) { return impl.Read(*this, &Impl::Cells::Width, FrameProperty::Width); });
}

std::int32_t Frame::get_Height() {
    return Locked(*this, [this](Impl& impl) { return impl.Read(*this, &Impl::Cells::Height, FrameProperty::Height); });
}

Rasterloom::PixelFormat Frame::get__PixelFormat() {
    return m_pImpl->Read(*this, &Impl::Cells::PixelFormat, FrameProperty::PixelFormat);
}

Rasterloom::PixelFormat Frame::get_PixelFormat() {
    return Locked(*this, [this](Impl&) { return get__PixelFormat(); });
}

Rasterloom::ColorSpace Frame::get_ColorSpace() { return PixelFormatUtils::ColorSpace(get_PixelFormat()); }
std::int32_t Frame::get_BitsPerPixel() { return PixelFormatUtils::BitsPerPixel(get_PixelFormat()); }
bool Frame::get_HasAlpha() { return PixelFormatUtils::HasAlpha(get_PixelFormat()); }
bool Frame::get_IsCmyk() { return PixelFormatUtils::IsCmyk(get_PixelFormat()); }
bool Frame::get_IsGrayScale() { return PixelFormatUtils::IsGrayScale(get_PixelFormat()); }
bool Frame::get_IsRgb() { return PixelFormatUtils::IsRgb(get_PixelFormat()); }
bool Frame::get_IsExtended() { return PixelFormatUtils::IsExtended(get_PixelFormat()); }
bool Frame::get_IsIndexed() { return PixelFormatUtils::IsIndexed(get_PixelFormat()); }

float Frame::get_HorizontalResolution() {
    return Locked(*this, [this](Impl& impl) {
        return impl.Read(*this, &Impl::Cells::HorizontalResolution, FrameProperty::HorizontalResolution);
    });
}

float Frame::get_VerticalResolution() {
    return Locked(*this, [this](Impl& impl) {
        return impl.Read(*this, &Impl::Cells::VerticalResolution, FrameProperty::VerticalResolution);
    });
}

std::shared_ptr<ColorProfile> Frame::get_ColorProfile() {
    return Locked(*this, [this](Impl& impl) {
        return impl.Read(*this, &Impl::Cells::ColorProfile, FrameProperty::ColorProfile);
    });
}

std::int32_t Frame::get__Left() { return m_pImpl->Read(*this, &Impl::Cells::Left, FrameProperty::Left); }
std::int32_t Frame::get__Top() { return m_pImpl->Read(*this, &Impl::Cells::Top, FrameProperty::Top); }
void Frame::_SetLeft(std::int32_t value) { m_pImpl->m_cells.Left.Set(value); }
void Frame::_SetTop(std::int32_t value) { m_pImpl->m_cells.Top.Set(value); }

std::int32_t Frame::get_Left() {
    return Locked(*this, [this](Impl&) { return get__Left(); });
}

void Frame::set_Left(std::int32_t value) {
    Locked(*this, [&](Impl&) { _SetLeft(value); });
}

std::int32_t Frame::get_Top() {
    return Locked(*this, [this](Impl&) { return get__Top(); });
}

void Frame::set_Top(std::int32_t value) {
    Locked(*this, [&](Impl&) { _SetTop(value); });
}

// --- The image to be written

void Frame::SetBitmap(Bitmap* bitmap) {
    if (bitmap == nullptr) {
        throw Host::ArgumentNullException("bitmap");
    }
    Locked(*this, [&](Impl&) { _SetBitmap(*bitmap); });
}

void Frame::_SetBitmap(Bitmap& bitmap) {
    auto copy = std::make_shared<Bitmap>();
    copy->_Create(bitmap);
    m_pImpl->SetImageProperties(copy->get__InternalBitmapData());
    m_pImpl->m_pBitmap = std::move(copy);
    m_pImpl->m_pBitmapToSave = bitmap.get__Link();
    m_pImpl->m_bImageByReference = false;
}

void Frame::_SetBitmapReference(Bitmap& bitmap) {
    {
        const ObjectGuard guard(bitmap);
        m_pImpl->SetImageProperties(bitmap.get__InternalBitmapData());
    }
    m_pImpl->m_pBitmap.reset();
    m_pImpl->m_pBitmapToSave = bitmap.get__Link();
    m_pImpl->m_bImageByReference = true;
}

void Frame::_RaiseBitmapSavingEvent(const EncoderOptions* options) {
    if (Bitmap* const bitmap = m_pImpl->m_pBitmapToSave ? m_pImpl->m_pBitmapToSave->Get() : nullptr) {
        bitmap->_RaiseSavingEvent(options);
    }
}

void Frame::_RaiseBitmapSavedEvent() {
    if (Bitmap* const bitmap = m_pImpl->m_pBitmapToSave ? m_pImpl->m_pBitmapToSave->Get() : nullptr) {
        bitmap->_RaiseSavedEvent();
    }
}

// --- Loading

void Frame::LockLoadingBitmap(Bitmap& bitmap, BitmapChange change) {
    bitmap._RaiseChangingEvent(change);
    bitmap.Lock();
    try {
        bitmap.get__InternalBitmapData(); // refused now, and not after the work, when a view is out
    } catch (...) {
        bitmap.Unlock();
        throw;
    }
    m_pImpl->m_pLoadingBitmap = &bitmap;
    m_pImpl->m_enLoadingChange = change;
}

void Frame::UnlockLoadingBitmap(std::unique_ptr<engine::BitmapData> raster) {
    Bitmap* const bitmap = std::exchange(m_pImpl->m_pLoadingBitmap, nullptr);
    if (bitmap == nullptr) {
        return;
    }
    const bool loaded = raster != nullptr;
    try {
        if (loaded) {
            bitmap->_Attach(std::move(raster));
        }
    } catch (...) {
        bitmap->Unlock();
        throw;
    }
    bitmap->Unlock();
    if (loaded) {
        bitmap->_RaiseChangedEvent(m_pImpl->m_enLoadingChange);
    }
}

void Frame::_BitmapLoadingComplete(std::unique_ptr<engine::BitmapData> raster) {
    if (m_pImpl->m_pLoadingBitmap == nullptr) {
        m_pImpl->m_pLoadedRaster = std::move(raster);
    } else {
        UnlockLoadingBitmap(std::move(raster));
    }
}

void Frame::_ThumbnailLoadingComplete(std::unique_ptr<engine::BitmapData> raster) {
    UnlockLoadingBitmap(std::move(raster));
}

void Frame::_LoadingFailed() noexcept {
    if (Bitmap* const bitmap = std::exchange(m_pImpl->m_pLoadingBitmap, nullptr)) {
        bitmap->Unlock();
    }
}

void Frame::LoadFromOwn(Bitmap& bitmap, BitmapChange change, std::unique_ptr<engine::BitmapData> raster) {
    LockLoadingBitmap(bitmap, change);
    UnlockLoadingBitmap(std::move(raster));
}

void Frame::GetBitmap(Bitmap* bitmap) {
    if (bitmap == nullptr) {
        throw Host::ArgumentNullException("bitmap");
    }
    Locked(*this, [&](Impl& impl) {
        if (impl.m_pBitmap) {
            auto copy = CallEngine(
                [&] { return std::make_unique<engine::BitmapData>(impl.m_pBitmap->get__InternalBitmapData()); });
            LoadFromOwn(*bitmap, BitmapChange::Load, std::move(copy));
            return;
        }
        FormatReader& reader = RequireReader();
        LockLoadingBitmap(*bitmap, BitmapChange::Load);
        try {
            reader._FrameLoadBitmap(*this);
        } catch (...) {
            _LoadingFailed();
            throw;
        }
        _LoadingFailed(); // where the reader was told not to raise its failures
    });
}

namespace {

void CheckThumbnailMode(Transforms::InterpolationMode mode) {
    using enum Transforms::InterpolationMode;
    Validator::ValidateEnum("interpolationMode", mode);
    if (mode != NearestNeighbour && mode != Anisotropic4 && mode != Anisotropic9 && mode != Lanczos3Filter) {
        throw Host::ArgumentException("Specified interpolation mode is not supported.", "interpolationMode");
    }
}

} // namespace

void Frame::GetThumbnail(Bitmap* bitmap, std::int32_t width, std::int32_t height) {
    LoadThumbnail(bitmap, width, height, nullptr);
}

void Frame::GetThumbnail(Bitmap* bitmap, std::int32_t width, std::int32_t height,
                         Transforms::InterpolationMode interpolationMode) {
    CheckThumbnailMode(interpolationMode);
    LoadThumbnail(bitmap, width, height, &interpolationMode);
}

void Frame::LoadThumbnail(Bitmap* bitmap, std::int32_t width, std::int32_t height,
                          const Transforms::InterpolationMode* pInterpolationMode) {
    if (bitmap == nullptr) {
        throw Host::ArgumentNullException("bitmap");
    }
    if (width < 0) {
        throw Host::ArgumentOutOfRangeException("width", "Thumbnail width should be non-negative.");
    }
    if (height < 0) {
        throw Host::ArgumentOutOfRangeException("height", "Thumbnail height should be non-negative.");
    }
    if (width == 0 && height == 0) {
        throw Host::ArgumentOutOfRangeException("width, height",
                                                "One of thumbnail width or thumbnail height should be non-negative.");
    }
    Locked(*this, [&](Impl& impl) {
        if (impl.m_pBitmap) {
            impl.m_pBitmap->ThrowIfEmpty();
            LoadFromOwn(*bitmap, BitmapChange::LoadThumbnail,
                        MakeThumbnail(impl.m_pBitmap->get__InternalBitmapData(), width, height, pInterpolationMode));
            return;
        }
        FormatReader& reader = RequireReader();
        LockLoadingBitmap(*bitmap, BitmapChange::LoadThumbnail);
        try {
            reader._FrameLoadThumbnail(*this, width, height, pInterpolationMode);
        } catch (...) {
            _LoadingFailed();
            throw;
        }
        _LoadingFailed();
    });
}

std::shared_ptr<Bitmap> Frame::_GetBitmap() {
    CheckNotDisposed();
    if (m_pImpl->m_pBitmap) {
        return m_pImpl->m_pBitmap;
    }
    FormatReader* const reader = m_pImpl->m_pReaderLink ? m_pImpl->m_pReaderLink->Get() : nullptr;
    if (reader == nullptr) {
        throw UnexpectedException("Internal reader reference is null.");
    }
    if (reader->get_SynchronizationMode() != SynchronizationMode::Sync) {
        throw UnexpectedException("Reader should be in synchronized mode.");
    }
    reader->_FrameLoadBitmap(*this);
    return std::make_shared<Bitmap>(std::exchange(m_pImpl->m_pLoadedRaster, nullptr));
}

// --- Encoder options

std::unique_ptr<EncoderOptions> Frame::CreateEmptyEncoderOptions() { return std::make_unique<EncoderOptions>(); }

void Frame::OnImportEncoderOptions(const EncoderOptions& options) {
    _SetLeft(options.get_Left());
    _SetTop(options.get_Top());
}

void Frame::OnExportEncoderOptions(EncoderOptions& options) {
    options.set_Left(get__Left());
    options.set_Top(get__Top());
}

void Frame::ImportEncoderOptions(const EncoderOptions* options) {
    if (options == nullptr) {
        throw Host::ArgumentNullException("options");
    }
    Locked(*this, [&](Impl&) { OnImportEncoderOptions(*options); });
}

void Frame::ExportEncoderOptions(EncoderOptions* options) {
    if (options == nullptr) {
        throw Host::ArgumentNullException("options");
    }
    Locked(*this, [&](Impl&) { OnExportEncoderOptions(*options); });
}

std::unique_ptr<EncoderOptions> Frame::ExportEncoderOptions() {
    return Locked(*this, [this](Impl&) { return _ExportEncoderOptions(); });
}

std::unique_ptr<EncoderOptions> Frame::_ExportEncoderOptions() {
    auto options = CreateEmptyEncoderOptions();
    OnExportEncoderOptions(*options);
    return options;
}

void Frame::_ExportEncoderOptions(EncoderOptions& options) { OnExportEncoderOptions(options); }

} // namespace Corvane::Rasterloom::Codecs
