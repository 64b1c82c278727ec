#pragma once

#include <Corvane/Rasterloom/Api.h>
#include <Corvane/Rasterloom/ColorProfileClass.h>
#include <Corvane/Rasterloom/Host/Stream.h>
#include <Corvane/Rasterloom/LockableObject.h>
#include <Corvane/Rasterloom/PixelFormat.h>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>
#include <string>

namespace ImagingFramework {
class ProfileFile;
}

namespace Corvane::Rasterloom {

/// An ICC colour profile. It always stands in a file: one that the host names, or a private temporary one, which is
/// removed with the last profile, bitmap and converter that uses it.
///
/// Everything that it tells is read when it is made. The constructors fail with `CMOpenProfileException` for what is no
/// profile and with `UnsupportedPixelFormatException` for one whose colour space has no name here. Texts are UTF-8, in
/// English where the profile has several languages, and empty where it has none. Members take the object's lock; after
/// `Dispose` they fail with `Host::ObjectDisposedException` ("ColorProfile"). Neither copied nor moved; `Clone` copies.
class RASTERLOOM_API ColorProfile final : public LockableObject {
public:
    /// An empty name fails with `Host::ArgumentNullException` ("fileName").
    explicit ColorProfile(const std::filesystem::path& fileName);
    /// The bytes go to a temporary file. No bytes fail with `Host::ArgumentNullException` ("data").
    explicit ColorProfile(std::span<const std::uint8_t> data);
    /// From the stream's position to its end; it need not seek. Null fails with `Host::ArgumentNullException`
    /// ("stream").
    explicit ColorProfile(const std::shared_ptr<Host::Stream>& stream);
    /// Internal: shares the file.
    explicit ColorProfile(std::shared_ptr<const ImagingFramework::ProfileFile> file);
    ~ColorProfile() override;

    /// The system's folder of profiles: `/usr/share/color/icc`, else the `color/icc` folder of the first XDG data
    /// folder that has one.
    static std::filesystem::path get_ProfileDirectory();
    /// The file "sRGB Color Space Profile.icm" of the system's folders of profiles, without regard to case, else one of
    /// the other usual names there, else a profile that the library makes in a temporary file.
    static std::unique_ptr<ColorProfile> FromSrgb();
    /// The profile that the X server holds for the screen, else the one that colord has assigned to a display, else
    /// sRGB.
    static std::unique_ptr<ColorProfile> FromScreen();
    /// As `FromScreen`, since no device context of this platform has a profile of its own. Null fails with
    /// `Host::ArgumentException` ("hdc").
    static std::unique_ptr<ColorProfile> FromHdc(void* hdc);

    /// The file that it stands in.
    std::filesystem::path get_FileName();
    /// `Unknown` for the spaces that no pixel format has, such as Lab.
    ColorSpace get_ColorSpace();
    /// Model and manufacturer of the device, else the description.
    std::string get_Name();
    /// What the profile calls itself.
    std::string get_Description();
    /// Of the device.
    std::string get_Manufacturer();
    /// Description and copyright, each on a line of its own.
    std::string get_Info();
    /// Of the device.
    std::string get_Model();
    /// As the profile has it.
    std::string get_Copyright();
    /// `Unknown` for a class that the standard does not name.
    ColorProfileClass get_DeviceClass();

    /// Writes the profile's bytes; the file is replaced when the new one is complete. An empty name fails with
    /// `Host::ArgumentNullException` ("fileName").
    void Save(const std::filesystem::path& fileName);
    /// Null fails with `Host::ArgumentNullException` ("stream").
    void Save(const std::shared_ptr<Host::Stream>& stream);
    /// A profile of its own on the same contents; a temporary file is shared.
    std::unique_ptr<ColorProfile> Clone();

    /// Internal: the file, for those who share it.
    std::shared_ptr<const ImagingFramework::ProfileFile> get__File() const;

    using LockableObject::Dispose;

protected:
    void Dispose(bool disposing) override;

private:
    struct Properties;

    void Initialize();
    void CheckNotDisposed() const;
    template <class Value>
    Value Read(Value Properties::*pField);

    std::shared_ptr<const ImagingFramework::ProfileFile> m_pFile;
    std::unique_ptr<Properties> m_pProperties;
};

} // namespace Corvane::Rasterloom
