#pragma once

#include <Corvane/Rasterloom/Codecs/FormatReaderOf.h>
#include <Corvane/Rasterloom/Codecs/IMetadataReadSupport.h>
#include <Corvane/Rasterloom/Codecs/JpegEncoderOptions.h>

namespace Corvane::Rasterloom::Codecs {

class JpegFrame;
class MetadataReadCells;

/// Reads JPEG files. The frames are `JpegFrame`s. Metadata blocks are read when they are first asked for; a broken one
/// fails then, and never stops the pixels. They fail with `ObjectNotOpenedException` ("reader") while no file is open.
class RASTERLOOM_API JpegReader : public FormatReaderOf<Formats::Jpeg>, public IMetadataReadSupport {
public:
    /// Closed, or opened as `Open` does.
    JpegReader();
    explicit JpegReader(const std::shared_ptr<Host::Stream>& stream);
    explicit JpegReader(const std::filesystem::path& fileName);
    ~JpegReader() override;

    std::unique_ptr<IFormatReader> Clone() override;

    std::shared_ptr<ExifDictionary> get_Exif() override;
    std::shared_ptr<IptcDictionary> get_Iptc() override;
    std::string get_Xmp() override;
    std::shared_ptr<AdobeResourceDictionary> get_AdobeResources() override;

    /// Whether thumbnails are made from a frame that the decoder has already reduced by 2, 4 or 8: several times
    /// faster, with slightly other numbers. False at first.
    bool get_FastThumbnails();
    void set_FastThumbnails(bool value);

    /// Takes the lock; the caller holds the frame's.
    void _FrameLoadSettings(JpegFrame& frame, JpegEncoderOptions::Settings& settings);

protected:
    void OnClose() override;

private:
    template <class Read>
    auto ReadMetadata(Read read);

    std::unique_ptr<MetadataReadCells> m_pMetadata;
    bool m_bFastThumbnails = false;
};

} // namespace Corvane::Rasterloom::Codecs
