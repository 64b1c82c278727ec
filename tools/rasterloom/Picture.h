#pragma once

#include "Metadata.h"
#include "Operations.h"

#include <Corvane/Rasterloom/Bitmap.h>
#include <Corvane/Rasterloom/ISyncHandler.h>

#include <filesystem>
#include <functional>
#include <optional>

namespace Tool {

/// A picture on its way from one file to another, with all that the tool carries along.
struct Picture {
    Corvane::Rasterloom::Bitmap Pixels;
    Tool::Metadata Metadata;
    /// Whether the pixels are not those of the file any more.
    bool Changed = false;
};

/// How pictures are loaded.
struct LoadChoices {
    /// The box that thumbnails fit into; pictures are loaded whole without one.
    std::optional<RequestedSize> Box;
    /// Whether JPEG files are reduced while they are decoded, which is faster and less exact.
    bool Fast = false;
    /// Whether pictures are turned as their EXIF orientation tells.
    bool AutoOrient = false;
    /// Whether metadata is left behind.
    bool Strip = false;
};

/// Called while a reader works, with the reader.
using ReaderProgress = std::function<void(Corvane::Rasterloom::ISyncHandler&, Corvane::Rasterloom::ProgressEventArgs&)>;
/// Takes what went wrong and stops nothing.
using Note = std::function<void(const std::string&)>;

/// Loads a picture, or a thumbnail of it in its own colours, with profile, resolution and metadata.
void LoadPicture(Picture& picture, const std::filesystem::path& file, const LoadChoices& choices,
                 const Settings& settings, const ReaderProgress& progress, const Note& note);

} // namespace Tool
