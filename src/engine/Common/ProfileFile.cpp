#include "Common/ProfileFile.h"

#include "ErrorHandling/Exceptions.h"

#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <system_error>
#include <unistd.h>

namespace ImagingFramework {

std::shared_ptr<const ProfileFile> ProfileFile::Duplicate(const std::filesystem::path& path) {
    return FromBytes(ProfileFile(path, false).ReadBytes());
}

std::shared_ptr<const ProfileFile> ProfileFile::FromBytes(std::span<const std::uint8_t> bytes) {
    std::string name = (std::filesystem::temp_directory_path() / "rasterloom-profile-XXXXXX").string();
    const int handle = mkstemp(name.data());
    if (handle < 0) {
        throw CreateTempFileException(name);
    }
    auto file = std::make_shared<const ProfileFile>(name, true);
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t written = ::write(handle, bytes.data() + done, bytes.size() - done);
        if (written < 0 && errno == EINTR) {
            continue;
        }
        if (written <= 0) {
            ::close(handle);
            throw FileWriteException(name);
        }
        done += static_cast<std::size_t>(written);
    }
    ::close(handle);
    return file;
}

ProfileFile::~ProfileFile() {
    if (m_bTemporary) {
        std::error_code ignored;
        std::filesystem::remove(m_path, ignored);
    }
}

std::uint64_t ProfileFile::GetSize() const {
    std::error_code error;
    const auto size = std::filesystem::file_size(m_path, error);
    if (error) {
        throw CmOpenProfileException(m_path.string());
    }
    return size;
}

std::vector<std::uint8_t> ProfileFile::ReadBytes() const {
    std::vector<std::uint8_t> bytes(GetSize());
    std::ifstream file(m_path, std::ios::binary);
    if (!file.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()))) {
        throw CmOpenProfileException(m_path.string());
    }
    return bytes;
}

} // namespace ImagingFramework
