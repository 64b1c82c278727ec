#pragma once

#include "metadata/DataItem.h"

#include <Corvane/Rasterloom/Codecs/MetadataDictionary.h>

#include <vector>

namespace Corvane::Rasterloom::Codecs {

/// Engine values that are freed at the end unless a storage has taken them.
class OwnedItems {
public:
    OwnedItems() = default;
    OwnedItems(const OwnedItems&) = delete;
    OwnedItems& operator=(const OwnedItems&) = delete;
    ~OwnedItems();

    std::vector<ImagingFramework::DataItem>& Get() noexcept { return m_items; }
    /// From now on they are the storage's.
    void Release() noexcept { m_items.clear(); }

private:
    std::vector<ImagingFramework::DataItem> m_items;
};

/// The engine's form of a value, with fresh objects for what is held by pointer. `std::monostate` fails with
/// `Host::ArgumentNullException` (`argument`).
ImagingFramework::DataItem ToDataItem(const MetadataValue& value, const char* argument);

/// The public form; a raster is taken over, the item is then empty. A type that no value has fails with
/// `Host::ArgumentException` ("pSrcValue").
MetadataValue FromDataItem(ImagingFramework::DataItem& item);

} // namespace Corvane::Rasterloom::Codecs
