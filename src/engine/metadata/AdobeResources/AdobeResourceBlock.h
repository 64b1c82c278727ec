#pragma once

#include "Common/Utf8.h"
#include "metadata/DataItem.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ImagingFramework {

/// One image resource: a number, a name that may be empty, and bytes that only the program behind the number knows.
class AdobeResourceBlock : public IDataItemObject {
public:
    static constexpr DataType ItemType = DataType::AdobeResources;
    static constexpr std::size_t MaxNameLength = 255;

    AdobeResourceBlock() = default;
    AdobeResourceBlock(std::uint16_t id, std::string_view name, std::vector<std::uint8_t> data)
        : m_uintId(id), m_data(std::move(data)) {
        SetName(name);
    }

    std::uint16_t GetId() const noexcept { return m_uintId; }
    void SetId(std::uint16_t id) noexcept { m_uintId = id; }
    const std::string& GetName() const noexcept { return m_strName; }
    /// Cut to 255 characters.
    void SetName(std::string_view name) { m_strName = FirstCodePoints(name, MaxNameLength); }
    const std::vector<std::uint8_t>& GetData() const noexcept { return m_data; }
    void SetData(std::vector<std::uint8_t> data) noexcept { m_data = std::move(data); }

private:
    std::uint16_t m_uintId = 0;
    std::string m_strName;
    std::vector<std::uint8_t> m_data;
};

} // namespace ImagingFramework
