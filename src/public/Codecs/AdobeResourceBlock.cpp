#include <Corvane/Rasterloom/Codecs/AdobeResourceBlock.h>

#include "metadata/AdobeResources/AdobeResourceBlock.h"

#include <Corvane/Rasterloom/Host/Errors.h>

#include <limits>
#include <utility>

namespace Corvane::Rasterloom::Codecs {

namespace engine = ImagingFramework;

namespace {

std::vector<std::uint8_t> CopyBytes(const std::uint8_t* data, std::uint32_t size) {
    if (size == 0) {
        return {};
    }
    if (data == nullptr) {
        throw Host::ArgumentNullException("data");
    }
    return {data, data + size};
}

const engine::AdobeResourceBlock& NotNull(const engine::AdobeResourceBlock* block) {
    if (block == nullptr) {
        throw Host::ArgumentNullException("block");
    }
    return *block;
}

} // namespace

AdobeResourceBlock::AdobeResourceBlock() : m_pBlock(std::make_unique<engine::AdobeResourceBlock>()) {}

AdobeResourceBlock::AdobeResourceBlock(std::vector<std::uint8_t> data) : AdobeResourceBlock() {
    set_Data(std::move(data));
}

AdobeResourceBlock::AdobeResourceBlock(const std::string& name, std::vector<std::uint8_t> data)
    : AdobeResourceBlock(std::move(data)) {
    set_Name(name);
}

AdobeResourceBlock::AdobeResourceBlock(const std::uint8_t* data, std::uint32_t size)
    : AdobeResourceBlock(CopyBytes(data, size)) {}

AdobeResourceBlock::AdobeResourceBlock(const engine::AdobeResourceBlock* block)
    : m_pBlock(std::make_unique<engine::AdobeResourceBlock>(NotNull(block))) {}

AdobeResourceBlock::AdobeResourceBlock(const AdobeResourceBlock& other) : AdobeResourceBlock(other.m_pBlock.get()) {}

AdobeResourceBlock& AdobeResourceBlock::operator=(const AdobeResourceBlock& other) {
    *m_pBlock = engine::AdobeResourceBlock(*other.m_pBlock);
    return *this;
}

AdobeResourceBlock::~AdobeResourceBlock() = default;

std::uint32_t AdobeResourceBlock::get_Size() const noexcept {
    return static_cast<std::uint32_t>(get_Data().size());
}

const std::uint8_t* AdobeResourceBlock::get_Pointer() const noexcept {
    return get_Data().data();
}

const std::vector<std::uint8_t>& AdobeResourceBlock::get_Data() const noexcept {
    return m_pBlock->GetData();
}

void AdobeResourceBlock::set_Data(std::vector<std::uint8_t> value) {
    if (value.size() > std::numeric_limits<std::uint32_t>::max()) {
        throw Host::ArgumentOutOfRangeException("value");
    }
    m_pBlock->SetData(std::move(value));
}

const std::string& AdobeResourceBlock::get_Name() const noexcept {
    return m_pBlock->GetName();
}

void AdobeResourceBlock::set_Name(const std::string& value) {
    m_pBlock->SetName(value);
}

bool AdobeResourceBlock::operator==(const AdobeResourceBlock& other) const noexcept {
    return get_Name() == other.get_Name() && get_Data() == other.get_Data();
}

} // namespace Corvane::Rasterloom::Codecs
