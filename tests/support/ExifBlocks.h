#pragma once

#include "ExifBuilder.h"
#include "metadata/Exif/ExifDataStorage.h"
#include "metadata/Streams/MemoryReader.h"

#include <gtest/gtest.h>
#include <span>

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
    EXPECT_TRUE(std::ranges::equal(std::span(payload).first(6), std::string_view("Exif\0\0", 6)));
    return {payload.begin() + 6, payload.end()};
}
