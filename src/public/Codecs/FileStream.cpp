#include <Corvane/Rasterloom/Codecs/FileStream.h>

#include "metadata/Streams/FileReplacement.h"

#include <system_error>

namespace Corvane::Rasterloom::Codecs {

FileStream::~FileStream() {
    try {
        Release();
    } catch (...) {
        // Nobody is left to be told; an explicit `Close` reports.
    }
}

std::filesystem::path FileStream::FullName() const {
    return ImagingFramework::AbsoluteName(get_Name());
}

void FileStream::Close() {
    Release();
}

void FileStream::Release() {
    if (m_bReleased) {
        return;
    }
    m_bReleased = true;
    // An empty file that was only read is not a failed save; it stays.
    const bool empty = get_CanWrite() && get_CanSeek() && get_Length() == 0;
    Host::FileStream::Close();
    if (empty) {
        std::error_code ignored;
        std::filesystem::remove(m_strFullName, ignored);
    }
}

} // namespace Corvane::Rasterloom::Codecs
