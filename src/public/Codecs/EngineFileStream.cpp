#include "EngineFileStream.h"

#include "CallEngine.h"

#include <utility>

namespace Corvane::Rasterloom::Codecs {

namespace engine = ImagingFramework;

EngineFileStream::EngineFileStream(const std::filesystem::path& fileName)
    : m_pFile(CallEngine([&] {
          return std::make_unique<engine::FileStream>(fileName, engine::FileStreamFlags::Encoder);
      })) {}

EngineFileStream::~EngineFileStream() = default;

template <class Body>
void EngineFileStream::Call(const char* text, Body body) {
    if (!m_pFile) {
        throw Host::ObjectDisposedException("FileStream");
    }
    if (!CallEngine([&] { return body(*m_pFile); })) {
        throw Host::IOException(std::string(text));
    }
}

std::int64_t EngineFileStream::get_Length() {
    std::uint64_t size = 0;
    Call("Unable to get the size of the file.", [&](engine::FileStream& file) { return file.Stat(&size); });
    return static_cast<std::int64_t>(size);
}

std::int64_t EngineFileStream::get_Position() { return Seek(0, Host::SeekOrigin::Current); }

std::size_t EngineFileStream::Read(void* buffer, std::size_t size) {
    std::uint64_t count = 0;
    Call("Unable to read from the file.", [&](engine::FileStream& file) { return file.Read(buffer, size, &count); });
    return static_cast<std::size_t>(count);
}

void EngineFileStream::Write(const void* buffer, std::size_t size) {
    Call("Unable to write to the file.", [&](engine::FileStream& file) { return file.Write(buffer, size, nullptr); });
}

std::int64_t EngineFileStream::Seek(std::int64_t offset, Host::SeekOrigin origin) {
    std::uint64_t position = 0;
    Call("Unable to seek in the file.", [&](engine::FileStream& file) {
        return file.Seek(offset, static_cast<engine::SeekOrigin>(origin), &position);
    });
    return static_cast<std::int64_t>(position);
}

void EngineFileStream::SetLength(std::int64_t value) {
    Call("Unable to change the size of the file.",
         [&](engine::FileStream& file) { return value >= 0 && file.SetSize(static_cast<std::uint64_t>(value)); });
}

void EngineFileStream::Flush() {
    Call("Unable to write to the file.", [](engine::FileStream& file) { return file.Commit(); });
}

void EngineFileStream::Complete() {
    if (const auto file = std::exchange(m_pFile, nullptr)) {
        CallEngine([&] {
            file->SetCompleted(true);
            file->Close();
        });
    }
}

} // namespace Corvane::Rasterloom::Codecs
