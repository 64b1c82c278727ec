#include "metadata/Exif/ExifData.h"

#include "ErrorHandling/Exceptions.h"
#include "metadata/Exif/ExifBlockReader.h"
#include "metadata/Exif/ExifBlockWriter.h"
#include "metadata/Exif/ExifText.h"

#include <utility>

namespace ImagingFramework {

namespace {

ExifContents Read(AbstractReader* pReader, bool withThumbnail, ExifDamage damage) {
    if (pReader == nullptr) {
        throw ArgumentNullPointerException("pReader");
    }
    try {
        return ExifBlockReader(*pReader, damage).Read(withThumbnail);
    } catch (const Exception&) {
        throw;
    } catch (const std::exception& failure) {
        throw UnexpectedException(failure.what());
    } catch (...) {
        throw UnexpectedException();
    }
}

} // namespace

void ExifData::Initialize(AbstractReader* pReader, bool withThumbnail) {
    m_contents = {};
    m_contents = Read(pReader, withThumbnail, ExifDamage::Raise);
}

bool ExifData::InitializeTolerantly(AbstractReader* pReader, bool withThumbnail) {
    m_contents = {};
    if (pReader == nullptr) {
        throw ArgumentNullPointerException("pReader");
    }
    try {
        m_contents = Read(pReader, withThumbnail, ExifDamage::DropField);
        return true;
    } catch (const Exception&) {
        return false;
    }
}

std::vector<std::uint8_t> ExifData::SerializeForJpeg() const { return ExifBlockWriter(m_contents).Write(); }

void ExifData::SerializeForTiff(IExifTagSink& sink) const {
    for (std::uint32_t number = 0; number < ExifIfdCount; ++number) {
        const auto ifd = static_cast<ExifIfd>(number);
        const bool forThumbnail = ifd == ExifIfd::Thumbnail;
        if (forThumbnail && m_contents.pThumbnail == nullptr) {
            continue;
        }
        for (const auto& [tag, value] : m_contents.GetDirectory(ifd)) {
            if (ExifBlockWriter::ShouldBeWritten(tag, forThumbnail, m_contents.KeepsMakerNote) &&
                !value.Data.empty()) {
                sink.SetTag(ifd, tag, value);
            }
        }
    }
}

std::uint32_t ExifData::GetTagCount(ExifIfd ifd) const {
    return m_contents.GetDirectory(ifd).GetCount();
}

void ExifData::GetTagsIdentifiers(ExifIfd ifd, std::vector<std::uint16_t>& tags) const {
    tags.clear();
    for (const auto& [tag, value] : m_contents.GetDirectory(ifd)) {
        tags.push_back(tag);
    }
}

void ExifData::SetTagInternal(std::uint16_t tag, ExifIfd ifd, ExifTag storedTag) {
    m_contents.GetDirectory(ifd).Set(tag, std::move(storedTag));
}

bool ExifData::RemoveTag(std::uint16_t tag, ExifIfd ifd) { return m_contents.GetDirectory(ifd).Remove(tag); }

std::string_view ExifData::GetTagDescription(std::uint16_t tag, ExifIfd ifd) noexcept {
    const ExifTagInfo* const pInfo = FindExifTagInfo(tag, ifd);
    return pInfo == nullptr ? std::string_view() : pInfo->Description;
}

bool ExifData::GetTagString(std::uint16_t tag, ExifIfd ifd, std::string& text) const {
    return ExifText(m_contents).GetTagString(tag, ifd, text);
}

void ExifData::SetThumbnail(std::shared_ptr<const BitmapData> pThumbnail) {
    m_contents.pThumbnail = pThumbnail == nullptr || pThumbnail->IsEmpty() ? nullptr : std::move(pThumbnail);
    m_contents.ThumbnailFile.clear();
}

void ExifData::ClearTags() {
    for (ExifDirectory& directory : m_contents.Directories) {
        directory = {};
    }
    SetThumbnail(nullptr);
}

} // namespace ImagingFramework
