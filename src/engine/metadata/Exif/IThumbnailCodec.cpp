#include "metadata/Exif/IThumbnailCodec.h"

#include "ErrorHandling/Exceptions.h"

#include <atomic>

namespace ImagingFramework {

namespace {

std::atomic<const IThumbnailCodec*> s_pJpegCodec{nullptr};
std::atomic<const IThumbnailCodec*> s_pTiffCodec{nullptr};

std::atomic<const IThumbnailCodec*>& Slot(FileFormat format) {
    switch (format) {
    case FileFormat::Jpeg:
        return s_pJpegCodec;
    case FileFormat::Tiff:
        return s_pTiffCodec;
    default:
        throw ArgumentException("format");
    }
}

} // namespace

const IThumbnailCodec* IThumbnailCodec::Register(FileFormat format, const IThumbnailCodec* pCodec) {
    return Slot(format).exchange(pCodec);
}

const IThumbnailCodec* IThumbnailCodec::Find(FileFormat format) { return Slot(format).load(); }

} // namespace ImagingFramework
