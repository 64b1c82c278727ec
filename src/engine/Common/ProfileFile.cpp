#include "Common/ProfileFile.h"

#include "metadata/Streams/TempFile.h"

#include <utility>

namespace ImagingFramework {

ProfileFile::ProfileFile(std::filesystem::path path) : m_path(std::move(path)) {}

ProfileFile::ProfileFile(std::unique_ptr<const TempFile> file)
    : m_path(file->GetFilenameRef()), m_pTempFile(std::move(file)) {}

ProfileFile::~ProfileFile() = default;

} // namespace ImagingFramework
