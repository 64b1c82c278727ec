#pragma once

#include "metadata/Streams/FileHandle.h"

#include <filesystem>

namespace ImagingFramework {

/// A temporary file with its name. The file is created exclusively and for its owner alone (mode 0600); the destructor
/// closes and deletes it. Names are folder, prefix, the low 16 bits of the process number, "_", four hexadecimal
/// digits, suffix; an empty folder stands for the system's folder for temporary files.
class TempFile {
public:
    /// See `Initialize`.
    TempFile(const std::filesystem::path& directory, const char* strPrefix, const char* strSuffix, bool fixedName,
             bool create);
    /// A temporary copy of a file, closed. Fails as `Initialize`, with the system's failure when the source does not
    /// open, and with `FileCopyException`.
    TempFile(const std::filesystem::path& source, const std::filesystem::path& directory, const char* strPrefix,
             const char* strSuffix);
    TempFile(const TempFile&) = delete;
    TempFile& operator=(const TempFile&) = delete;
    ~TempFile() { Release(); }

    /// Releases what is held and takes a new name: folder, prefix and suffix alone with `fixedName`, else a free one.
    /// With `create` the file is created (a fixed name may exist and is truncated) and stays open for reading and
    /// writing. Fails with `ArgumentNullPointerException` ("strPrefix"), `ArgumentException` ("strDirectory") for a
    /// folder name that the system cannot take, `CreateTempFileException`, and as `GenerateUniqueFilename`.
    void Initialize(const std::filesystem::path& directory, const char* strPrefix, const char* strSuffix,
                    bool fixedName, bool create);

    /// A name that no file has at this moment; nothing is created. Fails with `UnexpectedException` when none is found.
    static std::filesystem::path GenerateUniqueFilename(const std::filesystem::path& directory, const char* strPrefix,
                                                        const char* strSuffix);

    /// On by default; without it the file stays.
    void SetDeleteAutomatically(bool value) { m_bDeleteAutomatically = value; }
    const std::filesystem::path& GetFilenameRef() const { return m_strName; }
    FileHandle& GetHandle() { return m_hFile; }

private:
    void Release() noexcept;
    void CreateUnique(const std::filesystem::path& directory, const char* strPrefix, const char* strSuffix);

    std::filesystem::path m_strName;
    bool m_bDeleteAutomatically = true;
    FileHandle m_hFile;
};

} // namespace ImagingFramework
