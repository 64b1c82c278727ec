#pragma once

#include "ColorChoices.h"

#include <Corvane/Rasterloom/Bitmap.h>

#include <cstdint>
#include <memory>

namespace Tool {

/// Gives a picture its profile back after an operation that has dropped it, if its colour space is the same.
class ProfileKeeper {
public:
    explicit ProfileKeeper(Corvane::Rasterloom::Bitmap& bitmap);
    void Restore() const;

private:
    Corvane::Rasterloom::Bitmap& m_bitmap;
    Corvane::Rasterloom::ColorSpace m_space;
    std::shared_ptr<Corvane::Rasterloom::ColorProfile> m_profile;
};

/// Converts to a pixel format. A picture keeps its profile as long as its colour space stays; where it becomes RGB, its
/// profile leads it to sRGB. An indexed picture gets the palette of choice, with alpha where it is made for a picture
/// with alpha that nothing else is said about.
void ConvertPixels(Corvane::Rasterloom::Bitmap& bitmap, Corvane::Rasterloom::PixelFormat format,
                   const ColorChoices& choices);

/// Converts from the picture's profile, or from sRGB for RGB without one, to the profile of choice.
void ConvertToProfile(Corvane::Rasterloom::Bitmap& bitmap, const ColorChoices& choices);

/// The smallest one that holds the palette of choice.
Corvane::Rasterloom::PixelFormat SmallestIndexedFormat(const ColorChoices& choices);

/// Brings the picture into the closest form that files of the format can hold: the background shows through what was
/// transparent, where they cannot be.
void FitToFormat(Corvane::Rasterloom::Bitmap& bitmap, std::int64_t mediaFormat, const ColorChoices& choices);

/// Whether pixels can be transparent, by their own alpha or by that of a palette entry.
bool HasAlpha(Corvane::Rasterloom::Bitmap& bitmap);

} // namespace Tool
