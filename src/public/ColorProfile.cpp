#include <Corvane/Rasterloom/ColorProfile.h>

#include "CallEngine.h"
#include "Common/ColorProfileUtils.h"
#include "Common/LcmsProfile.h"
#include "Common/PixelFormat.h"
#include "Common/ScreenProfile.h"
#include "Common/SystemProfiles.h"
#include "ObjectGuard.h"
#include "metadata/Streams/FileStream.h"

#include <Corvane/Rasterloom/EnumNames.h>
#include <Corvane/Rasterloom/Exceptions.h>

#include <algorithm>
#include <utility>
#include <vector>

namespace Corvane::Rasterloom {

namespace engine = ImagingFramework;

struct ColorProfile::Properties {
    ColorSpace Space = ColorSpace::Unknown;
    ColorProfileClass DeviceClass = ColorProfileClass::Unknown;
    std::string Name;
    std::string Description;
    std::string Manufacturer;
    std::string Info;
    std::string Model;
    std::string Copyright;
};

namespace {

constexpr std::size_t StreamBlock = std::size_t{1} << 16;

std::vector<std::uint8_t> ReadToEnd(const std::shared_ptr<Host::Stream>& stream) {
    if (!stream) {
        throw Host::ArgumentNullException("stream");
    }
    if (!stream->get_CanRead()) {
        throw Host::NotSupportedException("Stream should support reading.");
    }
    std::vector<std::uint8_t> bytes;
    for (std::size_t size = 0;;) {
        bytes.resize(size + StreamBlock);
        const std::size_t read = stream->Read(bytes.data() + size, StreamBlock);
        size += read;
        if (read == 0) {
            bytes.resize(size);
            return bytes;
        }
        if (size > engine::LcmsContext::MemoryLimit) {
            throw CMOpenProfileException(); // no profile is that long, and the stream may have no end
        }
    }
}

/// A value that a host may have met in the enumeration, else its `Unknown`.
template <class E>
E NamedOrUnknown(std::uint32_t code) {
    const auto value = static_cast<E>(code);
    return ToString(value).empty() ? E::Unknown : value;
}

} // namespace

ColorProfile::ColorProfile(const std::filesystem::path& fileName) {
    if (fileName.empty()) {
        throw Host::ArgumentNullException("fileName");
    }
    m_pFile = std::make_shared<const engine::ProfileFile>(fileName);
    Initialize();
}

ColorProfile::ColorProfile(std::span<const std::uint8_t> data) {
    if (data.empty()) {
        throw Host::ArgumentNullException("data");
    }
    m_pFile = CallEngine([&] { return engine::CreateProfileByData(data); });
    Initialize();
}

ColorProfile::ColorProfile(const std::shared_ptr<Host::Stream>& stream) {
    m_pFile = CallEngine([&] { return engine::CreateProfileByData(ReadToEnd(stream)); });
    Initialize();
}

ColorProfile::ColorProfile(std::shared_ptr<const engine::ProfileFile> file) : m_pFile(std::move(file)) {
    if (!m_pFile) {
        throw Host::ArgumentNullException("file");
    }
    Initialize();
}

ColorProfile::~ColorProfile() { DisposeFinally(); }

void ColorProfile::Dispose(bool disposing) {
    m_pFile.reset();
    LockableObject::Dispose(disposing);
}

void ColorProfile::CheckNotDisposed() const {
    if (get__IsDisposed()) {
        throw Host::ObjectDisposedException("ColorProfile");
    }
}

void ColorProfile::Initialize() {
    m_pProperties = CallEngine([this] {
        const engine::LcmsProfile profile(m_pFile->GetPath());
        auto properties = std::make_unique<Properties>();
        properties->Space = NamedOrUnknown<ColorSpace>(profile.GetColorSpace());
        properties->DeviceClass = NamedOrUnknown<ColorProfileClass>(profile.GetDeviceClass());
        properties->Name = profile.GetName();
        properties->Description = profile.GetDescription();
        properties->Manufacturer = profile.GetManufacturer();
        properties->Info = profile.GetInfo();
        properties->Model = profile.GetModel();
        properties->Copyright = profile.GetCopyright();
        return properties;
    });
}

// --- Profiles of the system

std::filesystem::path ColorProfile::get_ProfileDirectory() {
    return CallEngine([] { return engine::GetSystemProfileDirectory(); });
}

std::unique_ptr<ColorProfile> ColorProfile::FromSrgb() {
    return std::make_unique<ColorProfile>(CallEngine([] { return engine::GetSRgbProfile(); }));
}

std::unique_ptr<ColorProfile> ColorProfile::FromScreen() {
    try {
        const std::vector<std::uint8_t> bytes = engine::ReadXScreenProfile();
        if (!bytes.empty()) {
            return std::make_unique<ColorProfile>(std::span(bytes));
        }
        const std::filesystem::path file = engine::FindColordScreenProfile();
        if (!file.empty()) {
            return std::make_unique<ColorProfile>(file);
        }
    } catch (const Exception&) {
        // What the desktop holds is no profile: as good as none.
    }
    return FromSrgb();
}

std::unique_ptr<ColorProfile> ColorProfile::FromHdc(void* hdc) {
    if (hdc == nullptr) {
        throw Host::ArgumentException("The value should be non-zero.", "hdc");
    }
    return FromScreen();
}

// --- Properties

template <class Value>
Value ColorProfile::Read(Value Properties::*pField) {
    const ObjectGuard guard(*this);
    CheckNotDisposed();
    return (*m_pProperties).*pField;
}

std::filesystem::path ColorProfile::get_FileName() {
    const ObjectGuard guard(*this);
    return get__File()->GetPath();
}

ColorSpace ColorProfile::get_ColorSpace() { return Read(&Properties::Space); }
std::string ColorProfile::get_Name() { return Read(&Properties::Name); }
std::string ColorProfile::get_Description() { return Read(&Properties::Description); }
std::string ColorProfile::get_Manufacturer() { return Read(&Properties::Manufacturer); }
std::string ColorProfile::get_Info() { return Read(&Properties::Info); }
std::string ColorProfile::get_Model() { return Read(&Properties::Model); }
std::string ColorProfile::get_Copyright() { return Read(&Properties::Copyright); }
ColorProfileClass ColorProfile::get_DeviceClass() { return Read(&Properties::DeviceClass); }

std::shared_ptr<const engine::ProfileFile> ColorProfile::get__File() const {
    CheckNotDisposed();
    return m_pFile;
}

// --- Saving and copies

void ColorProfile::Save(const std::filesystem::path& fileName) {
    if (fileName.empty()) {
        throw Host::ArgumentNullException("fileName");
    }
    const ObjectGuard guard(*this);
    CallEngine([&] {
        // Read whole before anything is written: the name may be the profile's own.
        const std::vector<std::uint8_t> bytes = engine::GetProfileData(&get__File()->GetPath());
        engine::FileStream file(fileName, engine::FileStreamFlags::Encoder);
        std::uint64_t written = 0;
        if (!file.Write(bytes.data(), bytes.size(), &written)) {
            throw engine::FileWriteException(fileName.string());
        }
        file.SetCompleted(true);
        file.Close();
    });
}

void ColorProfile::Save(const std::shared_ptr<Host::Stream>& stream) {
    if (!stream) {
        throw Host::ArgumentNullException("stream");
    }
    const ObjectGuard guard(*this);
    const std::vector<std::uint8_t> bytes =
        CallEngine([this] { return engine::GetProfileData(&get__File()->GetPath()); });
    stream->Write(bytes.data(), bytes.size());
}

std::unique_ptr<ColorProfile> ColorProfile::Clone() {
    const ObjectGuard guard(*this);
    return std::make_unique<ColorProfile>(get__File());
}

} // namespace Corvane::Rasterloom
