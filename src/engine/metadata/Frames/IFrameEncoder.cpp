#include "metadata/Frames/IFrameEncoder.h"

#include "metadata/Streams/FileStream.h"
#include "metadata/Streams/MemoryStream.h"
#include "metadata/Streams/StreamWriter.h"

#include <algorithm>
#include <limits>

namespace ImagingFramework {

namespace {

/// `NotInitializedException` with a text of its own.
class NotAttachedException : public NotInitializedException {
public:
    explicit NotAttachedException(SourceLocation where = SourceLocation::current())
        : NotInitializedException(ExceptionInfo{ExceptionType::NotInitializedException, "NotInitializedException",
                                                NotInitializedException().GetHresult(), "FrameEncoder isn't attached",
                                                where}) {}
};

} // namespace

// --- Stream

void IFrameEncoderImpl::Attach(std::shared_ptr<IStream> piStream, std::uint32_t width, std::uint32_t height) {
    if (piStream == nullptr) {
        throw ArgumentNullPointerException("piStream");
    }
    ReleaseStreams();
    m_uintLogicalWidth = width;
    m_uintLogicalHeight = height;
    m_piStream = std::move(piStream);
    if (!m_piStream->Seek(0, SeekOrigin::Current, nullptr)) {
        m_piBuffer = std::make_shared<MemoryStream>();
    }
    m_pWriter = std::make_unique<StreamWriter>(m_piBuffer != nullptr ? m_piBuffer : m_piStream);
}

void IFrameEncoderImpl::Attach(const std::filesystem::path& strFileName, std::uint32_t width, std::uint32_t height) {
    auto pFile = std::make_shared<FileStream>(strFileName, FileStreamFlags::Encoder);
    Attach(std::shared_ptr<IStream>(pFile), width, height);
    m_pFile = std::move(pFile);
}

void IFrameEncoderImpl::Detach() {
    if (m_pWriter == nullptr) {
        return;
    }
    try {
        FinishFile();
    } catch (...) {
        ReleaseStreams();
        throw;
    }
    ReleaseStreams();
}

void IFrameEncoderImpl::FinishFile() {
    if (m_uintCompletedFrames == 0) {
        return;
    }
    FinishEncoding();
    m_pWriter->Flush();
    if (m_piBuffer != nullptr) {
        StreamWriter target(m_piStream);
        target.WriteStream(m_piBuffer.get());
        target.Flush();
    }
    if (auto* const pFile = dynamic_cast<FileStream*>(m_piStream.get())) {
        pFile->SetCompleted(true);
    }
    if (m_pFile != nullptr) {
        m_pFile->Close();
    }
}

void IFrameEncoderImpl::ReleaseStreams() noexcept {
    m_pWriter.reset();
    m_piBuffer.reset();
    m_piStream.reset();
    m_pFile.reset();
    m_uintCompletedFrames = 0;
    m_bFrameWritten = false;
}

// --- Frames

void IFrameEncoderImpl::RequireAttached() const {
    if (m_pWriter == nullptr) {
        throw NotAttachedException();
    }
}

void IFrameEncoderImpl::EncodeFrame(const BitmapData& objSrcBitmapData, std::int32_t left, std::int32_t top) {
    RequireAttached();
    if (objSrcBitmapData.IsEmpty()) {
        throw ArgumentException("objSrcBitmapData is empty");
    }
    if (m_bFrameWritten) {
        throw MultiFrameException();
    }
    ResetFrameState();
    m_pSource = &objSrcBitmapData;
    m_intLeft = left;
    m_intTop = top;
    try {
        PrepareProgress();
        EncodeFrameInternal();
    } catch (...) {
        m_pSource = nullptr;
        throw;
    }
    m_pSource = nullptr;
    CompleteFrame();
}

void IFrameEncoderImpl::PrepareProgress() {
    m_uintScanlineStep = std::max(1U, GetProgressGranularity() / GetSource().GetWidth());
    m_uintScanlinesDone = 0;
    m_uintScanlinesReported = 0;
    constexpr std::uint64_t maximum = std::numeric_limits<std::int32_t>::max();
    ResetProgress(static_cast<std::int32_t>(std::min(GetProgressStepCount(), maximum)));
}

void IFrameEncoderImpl::ReportScanlines(std::uint32_t count) {
    m_uintScanlinesDone += count;
    const auto report = [this](std::uint64_t lines) {
        m_uintScanlinesReported += lines;
        UpdateEvents(static_cast<std::int32_t>(lines));
    };
    while (m_uintScanlinesDone - m_uintScanlinesReported >= m_uintScanlineStep) {
        report(m_uintScanlineStep);
    }
    if (m_uintScanlinesDone == GetProgressStepCount() && m_uintScanlinesReported != m_uintScanlinesDone) {
        report(m_uintScanlinesDone - m_uintScanlinesReported);
    }
}

} // namespace ImagingFramework
