#pragma once

#include <Corvane/Rasterloom/Host/FileStream.h>

namespace Corvane::Rasterloom::Codecs {

/// A file stream that leaves no empty file behind: when it is closed and the file that it could write has a length of
/// 0, the file is deleted.
class RASTERLOOM_API FileStream : public Host::FileStream {
public:
    using Host::FileStream::FileStream;
    ~FileStream() override;

    void Close() override;

private:
    std::filesystem::path FullName() const;
    void Release();

    /// Stays right when the process changes its working folder.
    std::filesystem::path m_strFullName = FullName();
    bool m_bReleased = false;
};

} // namespace Corvane::Rasterloom::Codecs
