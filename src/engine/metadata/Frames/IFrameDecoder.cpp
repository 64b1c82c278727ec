#include "metadata/Frames/IFrameDecoder.h"

#include "Common/ColorProfileUtils.h"
#include "Common/FrameSize.h"
#include "Common/Numeric.h"
#include "metadata/Streams/FileStream.h"
#include "metadata/Streams/StreamReader.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

namespace ImagingFramework {

// --- Stream

void IFrameDecoderImpl::Attach(ObjPtr<AbstractReader> pReader) {
    if (!pReader) {
        throw ArgumentNullPointerException("pReader");
    }
    Detach();
    m_pReader = std::move(pReader);
    try {
        ReadHeaders();
    } catch (...) {
        Detach();
        throw;
    }
}

void IFrameDecoderImpl::Attach(std::shared_ptr<IStream> piStream) {
    Attach(ObjPtr<AbstractReader>(new StreamReader(std::move(piStream))));
}

void IFrameDecoderImpl::Attach(const std::filesystem::path& strFileName) {
    Attach(std::shared_ptr<IStream>(std::make_shared<FileStream>(strFileName, FileStreamFlags::Decoder)));
}

void IFrameDecoderImpl::Detach() {
    m_pReader.Free();
    m_pFilterData.reset();
    m_pFrameColorMap.reset();
    m_uintFrameCount = 0;
}

AbstractReader& IFrameDecoderImpl::GetReader() const {
    if (!m_pReader) {
        throw NotInitializedException("FrameDecoder");
    }
    return *m_pReader;
}

// --- Decoding

void IFrameDecoderImpl::CheckFrameIndex(std::uint32_t uintFrameIndex) const {
    if (uintFrameIndex >= GetFrameCount()) {
        throw ArgumentOutOfRangeException("uintFrameIndex");
    }
}

void IFrameDecoderImpl::DecodeInternalGuarded() {
    const auto steps = std::min<std::uint64_t>(GetProgressStepCount(), std::numeric_limits<std::int32_t>::max());
    ResetProgress(static_cast<std::int32_t>(steps));
    try {
        DecodeFrameInternal();
    } catch (...) {
        FreeAfterFailure();
        throw;
    }
    FreeFrameResources();
}

void IFrameDecoderImpl::FreeAfterFailure() {
    try {
        FreeFrameResources();
    } catch (...) {
        throw UnexpectedException();
    }
}

void IFrameDecoderImpl::DecodeToOutput() {
    try {
        DecodeInternalGuarded();
    } catch (const UnsupportedScanlinesOrderException&) {
        if (!m_bThumbnailMode) {
            throw;
        }
        FillThumbnailFromFrame();
    }
}

void IFrameDecoderImpl::RunFrame(BitmapData*& pBitmapData, std::uint32_t uintFrameIndex) {
    m_uintFrameIndex = uintFrameIndex;
    m_pOutput.Reset(pBitmapData, false);
    if (!m_pOutput) {
        m_pOutput.Reset(new BitmapData, true);
    }
    try {
        DecodeToOutput();
    } catch (...) {
        m_pOutput->Empty(); // what was not decoded may hold anything
        ResetFrameState();
        throw;
    }
    pBitmapData = m_pOutput.Release();
    ResetFrameState();
}

void IFrameDecoderImpl::DecodeFrame(BitmapData*& pBitmapData, std::uint32_t uintFrameIndex) {
    CheckFrameIndex(uintFrameIndex);
    ResetFrameState();
    RunFrame(pBitmapData, uintFrameIndex);
}

void IFrameDecoderImpl::DecodeFrameToThumbnail(std::uint32_t uintThumbnailWidth, std::uint32_t uintThumbnailHeight,
                                               BitmapData*& pBitmapData, std::uint32_t uintFrameIndex) {
    CheckFrameIndex(uintFrameIndex);
    if (uintThumbnailWidth == 0 && uintThumbnailHeight == 0) {
        throw ArgumentException("uintThumbnailWidth, uintThumbnailHeight",
                                "uintThumbnailWidth or uintThumbnailHeight must be > 0");
    }
    ResetFrameState();
    m_bThumbnailMode = true;
    m_uintThumbnailWidth = uintThumbnailWidth;
    m_uintThumbnailHeight = uintThumbnailHeight;
    RunFrame(pBitmapData, uintFrameIndex);
}

void IFrameDecoderImpl::DecodeToTag(ItemTag& tag) {
    BitmapData* pBitmapData = tag.IsEmpty() ? nullptr : static_cast<BitmapData*>(tag);
    const auto frameIndex = static_cast<std::uint32_t>(tag.GetFrameIndex());
    if (tag.GetMetaDataId() == MetaDataId::FrameBitmap) {
        DecodeFrame(pBitmapData, frameIndex);
    } else {
        SetThumbnailKind(tag.GetThumbnailInterpolation());
        DecodeFrameToThumbnail(tag.GetThumbnailWidth(), tag.GetThumbnailHeight(), pBitmapData, frameIndex);
    }
    tag = pBitmapData;
}

void IFrameDecoderImpl::Start(const std::uint32_t* pFrameIndex) {
    const std::uint32_t index = pFrameIndex == nullptr ? 0 : *pFrameIndex;
    CheckFrameIndex(index);
    ResetFrameState();
    m_bProducerMode = true;
    BitmapData unused;
    BitmapData* pUnused = &unused;
    RunFrame(pUnused, index);
}

void IFrameDecoderImpl::ResetFrameState() {
    m_pOutput.Reset(nullptr);
    m_bThumbnailMode = false;
    m_bProducerMode = false;
    m_uintThumbnailWidth = 0;
    m_uintThumbnailHeight = 0;
    m_uintFrameIndex = 0;
    SetReducedSize(0, 0);
}

void IFrameDecoderImpl::FreeFrameResources() {
    m_pThumbnailer.reset();
    m_pFilterData.reset();
    m_pFrameColorMap.reset();
    m_frameProfile.clear();
}

// --- Output

void IFrameDecoderImpl::CreateBitmapData(PixelCover cover) {
    CheckFrameSize(m_uintWidth, m_uintHeight, GetPixelFormat());
    if (m_bProducerMode) {
        return;
    }
    if (!m_bThumbnailMode) {
        if (cover == PixelCover::Whole) {
            m_pOutput->CreateUncleared(m_uintWidth, m_uintHeight, GetPixelFormat());
        } else {
            m_pOutput->Create(m_uintWidth, m_uintHeight, GetPixelFormat());
        }
        return;
    }
    CalculateThumbnailDimensions(m_uintWidth, m_uintHeight, m_uintThumbnailWidth, m_uintThumbnailHeight);
    m_pOutput->Create(m_uintThumbnailWidth, m_uintThumbnailHeight, PixelFormat::Format32bppArgb);
}

void IFrameDecoderImpl::SetColorMap(std::shared_ptr<ColorMap> pColorMap) {
    if (!m_bThumbnailMode && !m_bProducerMode) {
        m_pOutput->SetColorMapRef(pColorMap);
    }
    m_pFrameColorMap = std::move(pColorMap);
}

void IFrameDecoderImpl::SetResolution() {
    if (m_pOutput) {
        m_pOutput->SetHorizontalResolution(GetResolutionX());
        m_pOutput->SetVerticalResolution(GetResolutionY());
    }
}

void IFrameDecoderImpl::SetColorProfile() {
    const std::vector<std::uint8_t>& profile = GetColorProfileRef();
    if (m_bProducerMode) {
        m_frameProfile = profile;
    } else if (!profile.empty() && !m_bThumbnailMode) {
        m_pOutput->SetProfile(profile.data(), profile.size());
    }
}

void IFrameDecoderImpl::SetColorProfile(std::shared_ptr<const ProfileFile> pProfile) {
    if (m_bProducerMode) {
        m_frameProfile = GetProfileData(&pProfile->GetPath());
    } else if (!m_bThumbnailMode) {
        m_pOutput->SetProfileFile(std::move(pProfile));
    }
}

const std::vector<std::uint8_t>& IFrameDecoderImpl::GetColorProfileRef() {
    throw UnexpectedException();
}

void IFrameDecoderImpl::SetScanline(const std::uint8_t* pScanline, std::uint32_t row) {
    if (m_bProducerMode) {
        if (m_pFilterData == nullptr) {
            InitializeConsumers();
        }
        for (const std::shared_ptr<IScanLineConsumer>& pConsumer : m_consumers) {
            pConsumer->SetScanline(pScanline, row);
        }
    } else if (m_bThumbnailMode) {
        if (m_pThumbnailer == nullptr) {
            const bool reduced = m_uintReducedWidth != 0;
            m_pThumbnailer =
                CreateThumbnailer(reduced ? m_uintReducedWidth : m_uintWidth,
                                  reduced ? m_uintReducedHeight : m_uintHeight, GetPixelFormat(), m_pFrameColorMap.get());
        }
        m_pThumbnailer->SetScanline(row, pScanline);
    } else {
        std::memcpy(m_pOutput->GetScanlineRef(row), pScanline, m_pOutput->GetRowSize());
    }
}

void IFrameDecoderImpl::InitializeConsumers() {
    auto data = std::make_shared<FilterData>();
    data->Width = m_uintWidth;
    data->Height = m_uintHeight;
    data->HorizontalResolution = GetResolutionX();
    data->VerticalResolution = GetResolutionY();
    data->Format = GetPixelFormat();
    data->FrameIndex = m_uintFrameIndex;
    if (m_pFrameColorMap != nullptr) {
        data->Palette = std::make_shared<ColorMap>(*m_pFrameColorMap);
    }
    data->Profile = m_frameProfile;
    m_pFilterData = data;
    for (const std::shared_ptr<IScanLineConsumer>& pConsumer : m_consumers) {
        pConsumer->Initialize(m_pFilterData);
    }
}

std::unique_ptr<IThumbnailCreator> IFrameDecoderImpl::CreateThumbnailer(std::uint32_t width, std::uint32_t height,
                                                                        PixelFormat format,
                                                                        const ColorMap* pColorMap) {
    std::unique_ptr<IThumbnailCreator> pThumbnailer;
    IThumbnailCreator::CreateThumbnailer(m_thumbnailKind, width, height, format, pColorMap, m_pOutput.Get(),
                                         &pThumbnailer);
    return pThumbnailer;
}

/// The same lines to the same kind of thumbnailer, only from a raster and from the top.
void IFrameDecoderImpl::FillThumbnailFromFrame() {
    ObjPtr<BitmapData> pThumbnail = std::move(m_pOutput);
    BitmapData frame;
    m_pOutput.Reset(&frame, false);
    m_bThumbnailMode = false;
    SetReducedSize(0, 0);
    try {
        DecodeInternalGuarded();
    } catch (...) {
        m_pOutput = std::move(pThumbnail); // the frame does not outlive this call
        throw;
    }
    m_pOutput = std::move(pThumbnail);
    const auto pThumbnailer =
        CreateThumbnailer(frame.GetWidth(), frame.GetHeight(), frame.GetPixelFormat(), frame.GetColorMapRef());
    for (std::uint32_t row = 0; row < frame.GetHeight(); ++row) {
        pThumbnailer->SetScanline(row, frame.GetScanlineRef(row));
        UpdateEvents(0);
    }
}

// --- Thumbnail size

namespace {

/// The side that belongs to `given` when `source` becomes `given`; at least 1.
std::uint32_t ScaleSide(std::uint32_t side, std::uint32_t given, std::uint32_t source) {
    const double scaled = std::floor(static_cast<double>(side) * given / source + 0.5);
    return static_cast<std::uint32_t>(std::clamp(scaled, 1.0, 4294967295.0));
}

} // namespace

void IFrameDecoderImpl::CalculateThumbnailDimensions(std::uint32_t uintSourceWidth, std::uint32_t uintSourceHeight,
                                                     std::uint32_t& uintTargetWidth, std::uint32_t& uintTargetHeight) {
    if (uintSourceWidth == 0 || uintSourceHeight == 0 || (uintTargetWidth == 0 && uintTargetHeight == 0)) {
        throw ArgumentOutOfRangeException("uintTargetWidth, uintTargetHeight");
    }
    std::uint32_t width = uintSourceWidth;
    std::uint32_t height = uintSourceHeight;
    // A free side is a box without a limit on that side.
    if (uintTargetWidth != 0 && width > uintTargetWidth) {
        height = ScaleSide(uintSourceHeight, uintTargetWidth, uintSourceWidth);
        width = uintTargetWidth;
    }
    if (uintTargetHeight != 0 && height > uintTargetHeight) {
        width = ScaleSide(uintSourceWidth, uintTargetHeight, uintSourceHeight);
        height = uintTargetHeight;
    }
    uintTargetWidth = width;
    uintTargetHeight = height;
}

} // namespace ImagingFramework
