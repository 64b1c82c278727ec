#include "Common/ColorProfileUtils.h"

#include "Common/LcmsProfile.h"
#include "ErrorHandling/Exceptions.h"
#include "metadata/Streams/TempFile.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <utility>

namespace ImagingFramework {

namespace {

[[noreturn]] void FailToLoad(const std::filesystem::path& name) {
    throw CmException(Exception::DefaultHresult, fmt::format("Unable to load data from file '{}'.", name.string()));
}

FileHandle OpenProfile(const std::filesystem::path* pFileName) {
    if (pFileName == nullptr) {
        throw CmException(Exception::DefaultHresult, "Bitmap doesn't have color profile.");
    }
    FileHandle file;
    // A pipe under this name must not make the program wait for its writer.
    if (file.Open(*pFileName, O_RDONLY | O_NONBLOCK) != 0) {
        throw FileOpenException(pFileName->string());
    }
    return file;
}

std::uint64_t SizeOf(const FileHandle& file, const std::filesystem::path& name) {
    std::uint64_t size = 0;
    if (!file.IsSeekable() || file.GetSize(size) != 0) {
        FailToLoad(name);
    }
    return size;
}

} // namespace

void ValidateColorProfileConsistency(const std::filesystem::path& name) {
    try {
        LcmsProfile(name).GetColorSpace();
    } catch (const ApplicationException&) {
        throw CmUnappropriateProfileException(name.string());
    }
}

std::uint64_t GetProfileDataSize(const std::filesystem::path* pFileName) {
    const FileHandle file = OpenProfile(pFileName); // fails on null, before the name is looked at
    return SizeOf(file, *pFileName);
}

std::vector<std::uint8_t> GetProfileData(const std::filesystem::path* pFileName) {
    FileHandle file = OpenProfile(pFileName);
    const std::uint64_t size = SizeOf(file, *pFileName);
    if (size > MaximumProfileSize) {
        FailToLoad(*pFileName);
    }
    std::vector<std::uint8_t> bytes(size);
    std::uint64_t read = 0;
    if (file.Read(bytes.data(), size, read) != 0 || read != size) {
        FailToLoad(*pFileName);
    }
    return bytes;
}

std::shared_ptr<const ProfileFile> CreateProfileByData(std::span<const std::uint8_t> data) {
    auto file = std::make_unique<TempFile>(std::filesystem::path(), "ICM", ".TMP", false, true);
    FileHandle& handle = file->GetHandle();
    std::uint64_t written = 0;
    if (handle.Write(data.data(), data.size(), written) != 0 || written != data.size() || handle.Close() != 0) {
        throw FileWriteException(file->GetFilenameRef().string());
    }
    return std::make_shared<const ProfileFile>(std::move(file));
}

std::shared_ptr<const ProfileFile> DuplicateColorProfile(const std::filesystem::path& name) {
    return CreateProfileByData(GetProfileData(&name));
}

std::shared_ptr<const ProfileFile> DuplicateColorProfile(const std::shared_ptr<const ProfileFile>& profile) {
    return profile == nullptr || profile->IsTemporary() ? profile : DuplicateColorProfile(profile->GetPath());
}

} // namespace ImagingFramework
