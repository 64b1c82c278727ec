#include "metadata/MetaData.h"

#include "metadata/Frames/IFrameDecoder.h"
#include "metadata/RecognizeMediaFormat.h"
#include "metadata/Streams/FileStream.h"

namespace ImagingFramework {

void MetaData::ResetFields() noexcept {
    m_bReading = false;
    m_uintFrameCount = 0;
    m_uintFrameWidth = 0;
    m_uintFrameHeight = 0;
    m_framePixelFormat = PixelFormat::FormatUnknown;
    m_mediaFormat = FileFormat::Unknown;
    m_horizontalResolution = BitmapData::DefaultResolution;
    m_verticalResolution = BitmapData::DefaultResolution;
}

template <class Refresh>
void MetaData::AttachTo(std::shared_ptr<IStream> piStream, bool reading, Refresh refresh) {
    if (piStream == nullptr) {
        throw ArgumentNullPointerException("piStream");
    }
    Close();
    m_piStream = std::move(piStream);
    m_bReading = reading;
    try {
        // A stream for writing that cannot seek is where it is; the encoder gathers its output then.
        if (!m_piStream->Seek(0, SeekOrigin::Begin, nullptr) && reading) {
            throw StreamSeekException();
        }
        refresh();
    } catch (...) {
        try {
            Close();
        } catch (const Exception&) {
            // The first failure is the one to tell.
        }
        throw;
    }
}

void MetaData::AttachToRead(std::shared_ptr<IStream> piStream) {
    AttachTo(std::move(piStream), true, [this] { RefreshRead(); });
}

void MetaData::AttachToRead(const std::filesystem::path& strFileName) {
    AttachToRead(std::make_shared<FileStream>(strFileName, FileStreamFlags::Decoder));
}

void MetaData::AttachToWrite(std::shared_ptr<IStream> piStream) {
    AttachTo(std::move(piStream), false, [this] { RefreshWrite(); });
}

void MetaData::AttachToWrite(const std::filesystem::path& strFileName) {
    auto pFile = std::make_shared<FileStream>(strFileName, FileStreamFlags::Encoder);
    AttachToWrite(pFile);
    m_pFile = std::move(pFile);
}

void MetaData::Close() {
    const std::shared_ptr<IStream> piStream = std::exchange(m_piStream, nullptr);
    const std::shared_ptr<FileStream> pFile = std::exchange(m_pFile, nullptr);
    ResetFields();
    DetachFrames();
    if (pFile != nullptr) {
        pFile->Close();
    }
}

void MetaData::CloseFinally() noexcept {
    try {
        Close();
    } catch (...) {
        // A destructor has nobody to tell.
    }
}

void MetaData::RequireFormat(FileFormat format) const {
    if (RecognizeMediaFormat(m_piStream.get()) != format) {
        throw MediaUnsupportedException();
    }
}

void MetaData::SetFrameInfo(const IFrameDecoderImpl& decoder, FileFormat format) {
    m_uintFrameCount = decoder.GetFrameCount();
    m_uintFrameWidth = decoder.GetFrameWidth();
    m_uintFrameHeight = decoder.GetFrameHeight();
    m_framePixelFormat = decoder.GetPixelFormat();
    m_mediaFormat = format;
    m_horizontalResolution = decoder.GetResolutionX();
    m_verticalResolution = decoder.GetResolutionY();
}

void MetaData::CheckRuntimeReadState(const ItemTag& tag) const {
    if (m_piStream == nullptr) {
        throw NotInitializedException(GetName());
    }
    if (!m_bReading) {
        throw MetaDataReadingNotAllowedException();
    }
    const std::int32_t index = tag.GetFrameIndex();
    if (index < ItemTag::WholeFile || index >= static_cast<std::int64_t>(m_uintFrameCount)) {
        throw ArgumentException("frame index", "the index value is out of range");
    }
}

void MetaData::CheckRuntimeWriteState(const ItemTag&) const {
    if (m_piStream == nullptr) {
        throw NotInitializedException(GetName());
    }
    if (m_bReading) {
        throw MetaDataWritingNotAllowedException();
    }
}

bool MetaData::GetFirstFrameItem(ItemTag& tag) const {
    if (m_mediaFormat == FileFormat::Unknown || tag.GetFrameIndex() > 0 || tag.GetFrameIndex() < ItemTag::WholeFile) {
        return false;
    }
    switch (tag.GetMetaDataId()) {
    case MetaDataId::FrameWidth:
        tag = m_uintFrameWidth;
        return true;
    case MetaDataId::FrameHeight:
        tag = m_uintFrameHeight;
        return true;
    default:
        tag = m_framePixelFormat;
        return true;
    }
}

bool MetaData::GetItem(ItemTag& tag) {
    switch (tag.GetMetaDataId()) {
    case MetaDataId::FrameWidth:
    case MetaDataId::FrameHeight:
    case MetaDataId::FramePixelFormat:
        return GetFirstFrameItem(tag);
    case MetaDataId::MediaFormat:
        tag = m_mediaFormat;
        return true;
    case MetaDataId::CanReadFrames:
        tag = std::int32_t{1};
        return true;
    case MetaDataId::FrameLeft:
    case MetaDataId::FrameTop:
        if (m_mediaFormat == FileFormat::Unknown) {
            return false;
        }
        tag = std::int32_t{0};
        return true;
    case MetaDataId::HorizontalResolution:
        tag = m_horizontalResolution * InchesPerUnit(tag.GetResolutionUnit());
        return true;
    case MetaDataId::VerticalResolution:
        tag = m_verticalResolution * InchesPerUnit(tag.GetResolutionUnit());
        return true;
    default:
        return false;
    }
}

void MetaData::GetItems(std::span<ItemTag> tags) {
    for (ItemTag& tag : tags) {
        GetItem(tag);
    }
}

bool MetaData::SetItem(ItemTag&) {
    return false;
}

void MetaData::SetItems(std::span<ItemTag> tags) {
    for (ItemTag& tag : tags) {
        SetItem(tag);
    }
}

} // namespace ImagingFramework
