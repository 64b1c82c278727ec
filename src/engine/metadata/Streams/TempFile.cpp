#include "metadata/Streams/TempFile.h"

#include "ErrorHandling/Exceptions.h"
#include "metadata/Streams/RandomNumbers.h"

#include <cerrno>
#include <chrono>
#include <climits>
#include <fcntl.h>
#include <fmt/format.h>
#include <system_error>
#include <unistd.h>

namespace ImagingFramework {

namespace {

namespace fs = std::filesystem;

constexpr int CandidateLimit = 32767;

void CheckNameParts(const fs::path& directory, const char* strPrefix) {
    if (strPrefix == nullptr) {
        throw ArgumentNullPointerException("strPrefix");
    }
    if (directory.native().size() >= PATH_MAX) {
        throw ArgumentException("strDirectory", "Path string is too long.");
    }
}

fs::path FolderOrDefault(const fs::path& directory) {
    if (!directory.empty()) {
        return directory;
    }
    std::error_code error;
    fs::path folder = fs::temp_directory_path(error);
    if (error) {
        throw CreateTempFileException();
    }
    return folder;
}

/// The file names to try, one after the other.
class Candidates {
public:
    Candidates(const fs::path& directory, const char* strPrefix, const char* strSuffix)
        : m_folder(FolderOrDefault(directory)),
          m_strHead(fmt::format("{}{}_", strPrefix, static_cast<unsigned>(::getpid()) & 0xFFFFU)),
          m_strTail(strSuffix != nullptr ? strSuffix : ""), m_random(SeedFromClock()) {}

    fs::path Next() {
        const auto number = static_cast<std::uint32_t>(m_random.Next() / 32767.0 * 65535);
        return m_folder / fmt::format("{}{:04X}{}", m_strHead, number, m_strTail);
    }

private:
    static std::uint32_t SeedFromClock() {
        const auto now = static_cast<std::uint64_t>(std::chrono::system_clock::now().time_since_epoch().count());
        return static_cast<std::uint32_t>(now ^ now >> 32);
    }

    fs::path m_folder;
    std::string m_strHead;
    std::string m_strTail;
    RandomNumbers m_random;
};

} // namespace

TempFile::TempFile(const fs::path& directory, const char* strPrefix, const char* strSuffix, bool fixedName,
                   bool create) {
    Initialize(directory, strPrefix, strSuffix, fixedName, create);
}

TempFile::TempFile(const fs::path& source, const fs::path& directory, const char* strPrefix, const char* strSuffix) {
    FileHandle original;
    if (const int error = original.Open(source, O_RDONLY)) {
        ThrowSystemError(error, fmt::format("Unable to open file '{}'.", source.string()));
    }
    Initialize(directory, strPrefix, strSuffix, false, true);
    if (CopyFileData(original, m_hFile) != 0 || m_hFile.Close() != 0) {
        const fs::path name = m_strName;
        Release();
        throw FileCopyException(source.string(), name.string());
    }
}

void TempFile::Release() noexcept {
    m_hFile.Close();
    if (m_bDeleteAutomatically && !m_strName.empty()) {
        ::unlink(m_strName.c_str());
    }
    m_strName.clear();
}

fs::path TempFile::GenerateUniqueFilename(const fs::path& directory, const char* strPrefix, const char* strSuffix) {
    CheckNameParts(directory, strPrefix);
    Candidates candidates(directory, strPrefix, strSuffix);
    for (int i = 0; i < CandidateLimit; ++i) {
        fs::path name = candidates.Next();
        std::error_code error;
        // A link that leads nowhere occupies its name as well.
        if (fs::symlink_status(name, error).type() == fs::file_type::not_found) {
            return name;
        }
    }
    throw UnexpectedException("Cannot generate temporary filename.");
}

void TempFile::CreateUnique(const fs::path& directory, const char* strPrefix, const char* strSuffix) {
    Candidates candidates(directory, strPrefix, strSuffix);
    fs::path name;
    for (int i = 0; i < CandidateLimit; ++i) {
        name = candidates.Next();
        const int error = m_hFile.Open(name, O_RDWR | O_CREAT | O_EXCL, 0600);
        if (error == 0) {
            m_strName = std::move(name);
            return;
        }
        if (error != EEXIST) {
            break; // another name will not help
        }
    }
    throw CreateTempFileException(name.string());
}

void TempFile::Initialize(const fs::path& directory, const char* strPrefix, const char* strSuffix, bool fixedName,
                          bool create) {
    Release();
    CheckNameParts(directory, strPrefix);
    if (!fixedName) {
        if (create) {
            CreateUnique(directory, strPrefix, strSuffix);
        } else {
            m_strName = GenerateUniqueFilename(directory, strPrefix, strSuffix);
        }
        return;
    }
    const fs::path name =
        FolderOrDefault(directory) / fmt::format("{}{}", strPrefix, strSuffix != nullptr ? strSuffix : "");
    // A known name in a folder that others may write to: no link is followed to a file of theirs.
    if (create && m_hFile.Open(name, O_RDWR | O_CREAT | O_TRUNC | O_NOFOLLOW, 0600) != 0) {
        throw CreateTempFileException(name.string());
    }
    m_strName = name;
}

} // namespace ImagingFramework
