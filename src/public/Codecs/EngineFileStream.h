#pragma once

#include "metadata/Streams/FileStream.h"

#include <Corvane/Rasterloom/Host/Stream.h>

#include <filesystem>
#include <memory>

namespace Corvane::Rasterloom::Codecs {

/// A host stream over the engine's file stream that writes through a temporary file.
class EngineFileStream final : public Host::Stream {
public:
    explicit EngineFileStream(const std::filesystem::path& fileName);
    ~EngineFileStream() override;

    bool get_CanRead() const override { return m_pFile != nullptr; }
    bool get_CanWrite() const override { return m_pFile != nullptr; }
    bool get_CanSeek() const override { return m_pFile != nullptr; }
    std::int64_t get_Length() override;
    std::int64_t get_Position() override;
    std::size_t Read(void* buffer, std::size_t size) override;
    void Write(const void* buffer, std::size_t size) override;
    std::int64_t Seek(std::int64_t offset, Host::SeekOrigin origin) override;
    void SetLength(std::int64_t value) override;
    void Flush() override;
    /// The target stays as it is.
    void Close() override { m_pFile.reset(); }
    /// Puts what was written in the place of the target, unless it is nothing.
    void Complete();

private:
    template <class Body>
    void Call(const char* text, Body body);

    std::unique_ptr<ImagingFramework::FileStream> m_pFile;
};

} // namespace Corvane::Rasterloom::Codecs
