#pragma once

#include "Common/InternalEvents.h"
#include "metadata/Frames/IFramePixelFormatSupport.h"
#include "metadata/ItemTag.h"
#include "metadata/Streams/IStream.h"

#include <filesystem>
#include <memory>
#include <span>

namespace ImagingFramework {

class FileStream;
class IFrameDecoderImpl;

/// One open file or stream of one format, in reading or in writing state; everything is asked of it and given to it by
/// item tags. A concrete class combines this base with the frame decoder and the frame encoder of its format; events
/// and pixel format support are one object for all of them. Belongs to one thread at a time.
class MetaData : public virtual IInternalEventsHostImpl, public virtual IFramePixelFormatSupport {
public:
    ~MetaData() override = default;
    MetaData(const MetaData&) = delete;
    MetaData& operator=(const MetaData&) = delete;

    /// Closes what was open, goes to the beginning of the stream and reads the headers; a failure closes again. Fails
    /// with `ArgumentNullPointerException` ("piStream") on null, and with `MediaUnsupportedException` when the stream
    /// holds something else.
    virtual void AttachToRead(std::shared_ptr<IStream> piStream);
    virtual void AttachToRead(const std::filesystem::path& strFileName);
    /// Closes what was open and prepares the writer. The file form writes to a temporary file that replaces the target
    /// in `Close` when at least one frame was completed.
    virtual void AttachToWrite(std::shared_ptr<IStream> piStream);
    virtual void AttachToWrite(const std::filesystem::path& strFileName);
    /// Ends the file and releases the stream. Writing reports its failures here; the state is closed in any case.
    virtual void Close();
    virtual bool IsInReadState() const { return m_piStream != nullptr && m_bReading; }
    virtual bool IsInWriteState() const { return m_piStream != nullptr && !m_bReading; }
    /// Puts the value of the item into the tag; false when the item is not known. A pointer value belongs to the
    /// caller.
    virtual bool GetItem(ItemTag& tag);
    virtual void GetItems(std::span<ItemTag> tags);
    /// False, and nothing done, when the item cannot be set. The tag keeps its value and what it points to.
    virtual bool SetItem(ItemTag& tag);
    virtual void SetItems(std::span<ItemTag> tags);

protected:
    MetaData() = default;

    /// `Close` for destructors, of every class that overrides `DetachFrames`: the failures of a file that was not closed are
    /// lost.
    void CloseFinally() noexcept;
    /// Reads the headers of the newly attached stream.
    virtual void RefreshRead() = 0;
    /// Prepares the writer.
    virtual void RefreshWrite() = 0;
    /// Releases the frame parts of the format. The encoder ends its file here.
    virtual void DetachFrames() = 0;
    /// Fails with `NotInitializedException` without a stream and with `ArgumentException` ("frame index") outside -1 to
    /// the frame count - 1.
    virtual void CheckRuntimeReadState(const ItemTag& tag) const;
    virtual void CheckRuntimeWriteState(const ItemTag& tag) const;
    /// The name that state failures show.
    virtual std::string_view GetName() const { return "MetaData"; }
    /// Fails with `MediaUnsupportedException` unless the stream holds `format`.
    void RequireFormat(FileFormat format) const;
    const std::shared_ptr<IStream>& GetAttachedStream() const noexcept { return m_piStream; }
    /// Takes the fields over that the base answers: those of the first frame, the frame count and the resolutions.
    void SetFrameInfo(const IFrameDecoderImpl& decoder, FileFormat format);
    void SetMediaFormat(FileFormat format) noexcept { m_mediaFormat = format; }

private:
    template <class Refresh>
    void AttachTo(std::shared_ptr<IStream> piStream, bool reading, Refresh refresh);
    void ResetFields() noexcept;
    bool GetFirstFrameItem(ItemTag& tag) const;

    std::shared_ptr<IStream> m_piStream;
    bool m_bReading = false;
    std::uint32_t m_uintFrameCount = 0;
    std::uint32_t m_uintFrameWidth = 0;
    std::uint32_t m_uintFrameHeight = 0;
    PixelFormat m_framePixelFormat = PixelFormat::FormatUnknown;
    FileFormat m_mediaFormat = FileFormat::Unknown;
    double m_horizontalResolution = BitmapData::DefaultResolution;
    double m_verticalResolution = BitmapData::DefaultResolution;
    std::shared_ptr<FileStream> m_pFile; ///< the stream when it was opened here for writing
};

} // namespace ImagingFramework
