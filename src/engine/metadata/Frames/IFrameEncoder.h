#pragma once

#include "Common/BitmapData.h"
#include "Common/InternalEvents.h"
#include "metadata/Frames/IFramePixelFormatSupport.h"
#include "metadata/Streams/AbstractWriter.h"
#include "metadata/Streams/IStream.h"

#include <filesystem>
#include <memory>

namespace ImagingFramework {

class FileStream;

/// Turns rasters into the frames of a file.
class IFrameEncoder {
public:
    virtual ~IFrameEncoder() = default;
    /// `width` and `height` are the logical size of a file of many frames, 0 where it does not matter. A stream that
    /// cannot seek gets everything at once in `Detach`.
    virtual void Attach(std::shared_ptr<IStream> piStream, std::uint32_t width, std::uint32_t height) = 0;
    virtual void Attach(const std::filesystem::path& strFileName, std::uint32_t width, std::uint32_t height) = 0;
    /// Ends the file and reports the failures of that. A file that was opened by its name, and a stream that cannot
    /// seek, are left as they were when no frame was completed.
    virtual void Detach() = 0;
    /// Fails with `NotInitializedException` before `Attach`, `ArgumentException` for an empty raster,
    /// `MultiFrameException` for a second frame of a format that has one.
    virtual void EncodeFrame(const BitmapData& objSrcBitmapData, std::int32_t left, std::int32_t top) = 0;
    virtual std::uint32_t GetWidth() const = 0;
    virtual void SetWidth(std::uint32_t width) = 0;
    virtual std::uint32_t GetHeight() const = 0;
    virtual void SetHeight(std::uint32_t height) = 0;
};

/// The road of a frame that all formats share; a format gives the encoding loop.
class IFrameEncoderImpl : public IFrameEncoder,
                          public virtual IInternalEventsHostImpl,
                          public virtual IFramePixelFormatSupport {
public:
    ~IFrameEncoderImpl() override = default;

    void Attach(std::shared_ptr<IStream> piStream, std::uint32_t width, std::uint32_t height) override;
    void Attach(const std::filesystem::path& strFileName, std::uint32_t width, std::uint32_t height) override;
    void Detach() override;
    void EncodeFrame(const BitmapData& objSrcBitmapData, std::int32_t left, std::int32_t top) override;
    std::uint32_t GetWidth() const override { return m_uintLogicalWidth; }
    void SetWidth(std::uint32_t width) override { m_uintLogicalWidth = width; }
    std::uint32_t GetHeight() const override { return m_uintLogicalHeight; }
    void SetHeight(std::uint32_t height) override { m_uintLogicalHeight = height; }

protected:
    IFrameEncoderImpl() = default;

    /// Writes the frame. A format of a single frame sets `m_bFrameWritten` at the end.
    virtual void EncodeFrameInternal() = 0;
    /// Ends a file of several objects; called by `Detach` when a frame was completed.
    virtual void FinishEncoding() {}
    virtual void ResetFrameState() { m_bFrameWritten = false; }
    /// Pixels per progress event.
    virtual std::uint32_t GetProgressGranularity() const { return 1000; }
    /// Scanlines that are reported in all.
    virtual std::uint64_t GetProgressStepCount() const { return GetSource().GetHeight(); }
    /// Adds finished scanlines and reports them in steps, the rest at the last one.
    virtual void ReportScanlines(std::uint32_t count);

    /// Fails with `NotInitializedException` before `Attach`.
    void RequireAttached() const;
    /// Counts a frame that is complete in the writer: `Detach` keeps the file then.
    void CompleteFrame() noexcept { ++m_uintCompletedFrames; }
    AbstractWriter& GetWriter() const { return *m_pWriter; }
    /// The raster of the frame that is being encoded.
    const BitmapData& GetSource() const { return *m_pSource; }

    std::int32_t m_intLeft = 0;
    std::int32_t m_intTop = 0;
    bool m_bFrameWritten = false;

private:
    void PrepareProgress();
    void FinishFile();
    void ReleaseStreams() noexcept;

    std::shared_ptr<IStream> m_piStream;
    std::shared_ptr<IStream> m_piBuffer; ///< stands in for a stream that cannot seek
    std::shared_ptr<FileStream> m_pFile; ///< the stream when it was opened here
    std::unique_ptr<AbstractWriter> m_pWriter;
    const BitmapData* m_pSource = nullptr;
    std::uint32_t m_uintLogicalWidth = 0;
    std::uint32_t m_uintLogicalHeight = 0;
    std::uint32_t m_uintCompletedFrames = 0;
    std::uint32_t m_uintScanlineStep = 1;
    std::uint64_t m_uintScanlinesDone = 0;
    std::uint64_t m_uintScanlinesReported = 0;
};

} // namespace ImagingFramework
