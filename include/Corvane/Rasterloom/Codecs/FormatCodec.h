#pragma once

#include <Corvane/Rasterloom/Codecs/IFormatReader.h>
#include <Corvane/Rasterloom/Codecs/IFormatWriter.h>
#include <Corvane/Rasterloom/Host/Stream.h>
#include <Corvane/Rasterloom/SyncHandler.h>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>

namespace ImagingFramework {
class MetaData;
}

namespace Corvane::Rasterloom::Codecs {

struct FormatCodecFields;

/// What the bases of readers and writers have in common: the vocabulary of their format, and the way that a file is
/// opened and closed. `Interface` is `IFormatReader` or `IFormatWriter`.
template <class Interface>
class FormatCodec : public SyncHandler, public Interface {
public:
    ~FormatCodec() override;

    using SyncHandler::Dispose;

    std::string get_DefaultExtension() override;
    std::string get_FormatName() override;
    std::string get_FormatDescription() override;
    std::string get_FilterString() override;
    std::string get_MimeType() override;
    std::int32_t get_CodecPriority() override { return 0; }
    bool get_Opened() override;
    std::int64_t get_MediaFormat() override;
    void Open(const std::shared_ptr<Host::Stream>& stream) override;
    void Open(const std::filesystem::path& fileName) override;
    void Close() override;

protected:
    FormatCodec(std::int64_t mediaFormat, std::unique_ptr<ImagingFramework::MetaData> metaData);

    /// @name Steps of a subclass; the lock is held
    /// @{
    /// The file is attached.
    virtual void OnOpen() {}
    /// Comes once for each opening, also for one that failed on its way.
    virtual void OnClose() {}
    /// What stands in for the stream that the host has given.
    virtual std::shared_ptr<Host::Stream> _PrepareStream(const std::shared_ptr<Host::Stream>& stream) { return stream; }
    virtual void _AttachStream(const std::shared_ptr<Host::Stream>& stream);
    virtual void _AttachFile(const std::filesystem::path& fileName);
    /// Ends what one of the two above has begun, also where that has failed.
    virtual void _DetachMedia();
    /// The file is closed: what was known of it is forgotten here.
    virtual void _ForgetMedia() noexcept = 0;
    /// @}

    /// Fails with `ObjectNotOpenedException` ("reader", "writer").
    void CheckOpened() const;
    /// Fails with `Host::ObjectDisposedException`.
    void CheckNotDisposed() const;
    void set__MediaFormat(std::int64_t mediaFormat) noexcept;

    void Dispose(bool disposing) override;

    /// What is known of the open file.
    std::unique_ptr<FormatCodecFields> m_pCodec;

private:
    template <class Attach>
    void OpenBy(Attach attach);
    void _Close();
};

extern template class RASTERLOOM_API FormatCodec<IFormatReader>;
extern template class RASTERLOOM_API FormatCodec<IFormatWriter>;

} // namespace Corvane::Rasterloom::Codecs
