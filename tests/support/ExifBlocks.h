#pragma once

#include "ExifBuilder.h"
#include "metadata/Exif/ExifDataStorage.h"
#include "metadata/Streams/MemoryReader.h"

inline ImagingFramework::ExifDataStorage ParseExif(const ExifBuilder::Bytes& block, bool withThumbnail = true) {
    ImagingFramework::MemoryReader reader(block.data(), block.size());
    ImagingFramework::ExifDataStorage exif;
    exif.Initialize(&reader, withThumbnail);
    return exif;
}

inline ImagingFramework::ExifDataStorage ParseExifTolerantly(const ExifBuilder::Bytes& block) {
    ImagingFramework::MemoryReader reader(block.data(), block.size());
    ImagingFramework::ExifDataStorage exif;
    exif.InitializeTolerantly(&reader, true);
    return exif;
}

/// What is written, from the TIFF header on.
inline ExifBuilder::Bytes WriteExif(const ImagingFramework::ExifData& exif) {
    const ExifBuilder::Bytes payload = exif.SerializeForJpeg();
    return {payload.begin() + 6, payload.end()};
}
