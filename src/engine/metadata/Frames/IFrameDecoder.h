#pragma once

#include "Common/BitmapData.h"
#include "Common/InternalEvents.h"
#include "Common/InterpolationMode.h"
#include "MemoryManagement/ObjPtr.h"
#include "metadata/Frames/IScanLineProducer.h"
#include "metadata/ItemTag.h"
#include "metadata/Streams/AbstractReader.h"
#include "metadata/Thumbnails/IThumbnailCreator.h"

#include <filesystem>
#include <memory>
#include <vector>

namespace ImagingFramework {

/// Turns the frames of a stream into rasters.
class IFrameDecoder {
public:
    virtual ~IFrameDecoder() = default;
    /// Reads all headers. The reader stands at the beginning of the file; it is borrowed or handed over.
    virtual void Attach(ObjPtr<AbstractReader> pReader) = 0;
    virtual void Attach(std::shared_ptr<IStream> piStream) = 0;
    virtual void Attach(const std::filesystem::path& strFileName) = 0;
    virtual void Detach() = 0;
    virtual std::uint32_t GetFrameCount() const = 0;
    /// Fills the given raster, or makes one for the caller to own when the pointer is null; on failure the pointer
    /// stays as it was. An index outside the frames fails with `ArgumentOutOfRangeException` ("uintFrameIndex").
    virtual void DecodeFrame(BitmapData*& pBitmapData, std::uint32_t uintFrameIndex) = 0;
    /// The same for a `Format32bppArgb` raster that fits into the box and is never larger than the frame; 0 leaves a
    /// side free. The frame itself is not held, unless its lines come in an order that the kind of the thumbnail cannot
    /// take: then it is decoded again as a whole, with the same result. Both sides 0 fail with `ArgumentException`.
    virtual void DecodeFrameToThumbnail(std::uint32_t uintThumbnailWidth, std::uint32_t uintThumbnailHeight,
                                        BitmapData*& pBitmapData, std::uint32_t uintFrameIndex) = 0;
};

/// The road of a frame that all formats share. A format gives `ReadHeaders`, the decoding loop, resolutions and palette,
/// and delivers the lines with `SetScanline` or `FillLines`, from the top.
class IFrameDecoderImpl : public IFrameDecoder, public virtual IInternalEventsHostImpl, public IScanLineProducerImpl {
public:
    ~IFrameDecoderImpl() override = default;

    /// When the headers are not sound the decoder is detached.
    void Attach(ObjPtr<AbstractReader> pReader) override;
    void Attach(std::shared_ptr<IStream> piStream) override;
    void Attach(const std::filesystem::path& strFileName) override;
    void Detach() override;
    std::uint32_t GetFrameCount() const override { return m_uintFrameCount; }
    void DecodeFrame(BitmapData*& pBitmapData, std::uint32_t uintFrameIndex) override;
    void DecodeFrameToThumbnail(std::uint32_t uintThumbnailWidth, std::uint32_t uintThumbnailHeight,
                                BitmapData*& pBitmapData, std::uint32_t uintFrameIndex) override;
    /// Runs through a frame for the consumers; they stay added.
    void Start(const std::uint32_t* pFrameIndex) override;

    virtual PixelFormat GetPixelFormat() const { return m_pixelFormat; }
    /// Dots per inch.
    virtual double GetResolutionX() const = 0;
    virtual double GetResolutionY() const = 0;
    /// A copy of the palette, null in a frame without one.
    virtual std::shared_ptr<ColorMap> GetColorMap() = 0;
    std::uint32_t GetFrameWidth() const noexcept { return m_uintWidth; }
    std::uint32_t GetFrameHeight() const noexcept { return m_uintHeight; }
    /// Answers `FrameBitmap` and `FrameThumbnail`: decodes into the raster that the tag holds, or into a new one.
    void DecodeToTag(ItemTag& tag);
    /// How thumbnails are made.
    void SetThumbnailKind(InterpolationMode mode) noexcept { m_thumbnailKind = mode; }

    /// The size of a thumbnail of a source: it fits into the target box, keeps the proportions, and never enlarges. A
    /// target side of 0 follows from the other one. Fails with `ArgumentOutOfRangeException` for an empty source or
    /// box.
    static void CalculateThumbnailDimensions(std::uint32_t uintSourceWidth, std::uint32_t uintSourceHeight,
                                             std::uint32_t& uintTargetWidth, std::uint32_t& uintTargetHeight);

protected:
    IFrameDecoderImpl() = default;

    /// Reads all headers of the file that has been attached, and sets the fields of the frame that stand below.
    virtual void ReadHeaders() {}
    /// The decoding loop. Calls `CreateBitmapData`, then `SetColorMap` and `SetResolution`, then `SetScanline` per
    /// line.
    virtual void DecodeFrameInternal() = 0;
    virtual void FreeFrameResources();
    /// What the steps that the decoding loop reports add up to.
    virtual std::uint64_t GetProgressStepCount() const { return m_uintHeight; }
    /// Whether the decoding loop writes every pixel of the frame.
    enum class PixelCover : std::uint32_t { Partly, Whole };
    /// Makes the output raster. Fails with `MediaCorruptedException` when the frame has no acceptable size.
    void CreateBitmapData(PixelCover cover = PixelCover::Partly);
    virtual void SetScanline(const std::uint8_t* pScanline, std::uint32_t row);
    virtual void SetColorMap(std::shared_ptr<ColorMap> pColorMap);
    virtual void SetResolution();
    /// Gives the profile of `GetColorProfileRef`, if it has any bytes, to the raster that is being filled or to the
    /// consumers.
    void SetColorProfile();
    /// The same with a profile that lies in a file already.
    void SetColorProfile(std::shared_ptr<const ProfileFile> pProfile);
    /// Fails with `UnexpectedException` in a format without profiles.
    virtual const std::vector<std::uint8_t>& GetColorProfileRef();
    virtual void ResetFrameState();

    /// Delivers all lines, from the top, a step of progress each. `fill` is called with the place for a line, which is as
    /// long as that of the raster, and its number.
    template <class Fill>
    void FillLines(Fill fill);

    /// The output raster when lines may be put into it without `SetScanline`, else null.
    BitmapData* GetDirectOutput() noexcept { return m_bThumbnailMode || m_bProducerMode ? nullptr : m_pOutput.Get(); }
    std::uint32_t GetFrameIndex() const noexcept { return m_uintFrameIndex; }
    bool IsThumbnailMode() const noexcept { return m_bThumbnailMode; }
    InterpolationMode GetThumbnailKind() const noexcept { return m_thumbnailKind; }
    /// The raster that is being filled; its size is that of the thumbnail in thumbnail mode.
    const BitmapData& GetOutput() const { return *m_pOutput; }
    /// Tells that the lines for a thumbnail come from a reduced frame of this size.
    void SetReducedSize(std::uint32_t width, std::uint32_t height) noexcept {
        m_uintReducedWidth = width;
        m_uintReducedHeight = height;
    }
    AbstractReader& GetReader() const;

    ObjPtr<AbstractReader> m_pReader;
    PixelFormat m_pixelFormat = PixelFormat::Format24bppRgb;
    std::uint32_t m_uintWidth = 0;
    std::uint32_t m_uintHeight = 0;
    std::uint32_t m_uintFrameCount = 0;

private:
    void CheckFrameIndex(std::uint32_t uintFrameIndex) const;
    void RunFrame(BitmapData*& pBitmapData, std::uint32_t uintFrameIndex);
    void DecodeToOutput();
    void DecodeInternalGuarded();
    void FreeAfterFailure();
    void InitializeConsumers();
    std::unique_ptr<IThumbnailCreator> CreateThumbnailer(std::uint32_t width, std::uint32_t height, PixelFormat format,
                                                         const ColorMap* pColorMap);
    void FillThumbnailFromFrame();

    ObjPtr<BitmapData> m_pOutput; ///< owned when the decoder made it
    bool m_bThumbnailMode = false;
    bool m_bProducerMode = false;
    std::uint32_t m_uintThumbnailWidth = 0;
    std::uint32_t m_uintThumbnailHeight = 0;
    std::uint32_t m_uintReducedWidth = 0; ///< 0: the lines are those of the frame
    std::uint32_t m_uintReducedHeight = 0;
    std::uint32_t m_uintFrameIndex = 0;
    InterpolationMode m_thumbnailKind = InterpolationMode::Anisotropic4;
    std::unique_ptr<IThumbnailCreator> m_pThumbnailer;
    std::shared_ptr<ColorMap> m_pFrameColorMap; ///< palette of the frame, for the thumbnailer and the consumers
    std::vector<std::uint8_t> m_frameProfile; ///< profile of the frame, for the consumers
    std::shared_ptr<const FilterData> m_pFilterData;
};

template <class Fill>
void IFrameDecoderImpl::FillLines(Fill fill) {
    BitmapData* const pOutput = GetDirectOutput();
    std::vector<std::uint8_t> buffer;
    if (pOutput == nullptr) {
        buffer.resize(CheckedStride(m_uintWidth, GetPixelFormat(), BitmapData::StrideAlignment));
    }
    for (std::uint32_t row = 0; row < m_uintHeight; ++row) {
        std::uint8_t* const pLine = pOutput == nullptr ? buffer.data() : pOutput->GetScanlineRef(row);
        fill(pLine, row);
        if (pOutput == nullptr) {
            SetScanline(pLine, row);
        }
        UpdateEvents(1);
    }
}

} // namespace ImagingFramework
