#pragma once

#include <Corvane/Rasterloom/Api.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace ImagingFramework {
class AdobeResourceBlock;
}

namespace Corvane::Rasterloom::Codecs {

/// The value of an image resource: a name, which most have empty, and bytes that only the program behind the number
/// of the resource knows. The number is the key in `AdobeResourceDictionary`.
class RASTERLOOM_API AdobeResourceBlock {
public:
    /// Without name and data.
    AdobeResourceBlock();
    /// Takes the bytes, under an empty name or the one given; fails as `set_Data`.
    explicit AdobeResourceBlock(std::vector<std::uint8_t> data);
    AdobeResourceBlock(const std::string& name, std::vector<std::uint8_t> data);
    /// Copies `size` bytes. Null fails with `Host::ArgumentNullException` ("data") unless the size is 0.
    AdobeResourceBlock(const std::uint8_t* data, std::uint32_t size);
    /// Internal: a copy of the engine's block; null fails with `Host::ArgumentNullException` ("block").
    explicit AdobeResourceBlock(const ImagingFramework::AdobeResourceBlock* block);
    AdobeResourceBlock(const AdobeResourceBlock& other);
    AdobeResourceBlock& operator=(const AdobeResourceBlock& other);
    ~AdobeResourceBlock();

    /// Number of bytes.
    std::uint32_t get_Size() const noexcept;
    /// The bytes themselves, valid until the data is set.
    const std::uint8_t* get_Pointer() const noexcept;
    /// The bytes, valid until they are set.
    const std::vector<std::uint8_t>& get_Data() const noexcept;
    /// At most 4 GiB less one byte; more fails with `Host::ArgumentOutOfRangeException` ("value").
    void set_Data(std::vector<std::uint8_t> value);
    /// UTF-8, empty in most blocks.
    const std::string& get_Name() const noexcept;
    /// Cut to 255 characters. Files hold it in windows-1252, where other characters become "?".
    void set_Name(const std::string& value);
    /// Whether name and data are equal.
    bool operator==(const AdobeResourceBlock& other) const noexcept;

    /// Internal: the engine's block.
    const ImagingFramework::AdobeResourceBlock& get__InternalBlock() const noexcept { return *m_pBlock; }

private:
    std::unique_ptr<ImagingFramework::AdobeResourceBlock> m_pBlock;
};

} // namespace Corvane::Rasterloom::Codecs
