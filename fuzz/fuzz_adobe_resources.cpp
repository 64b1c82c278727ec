// Reads the input as image resource blocks; what was kept must come out again and read back equal.

#include "Common/Utf8.h"
#include "ErrorHandling/Exceptions.h"
#include "metadata/AdobeResources/AdobeResources.h"

#include <cstdlib>
#include <vector>

using namespace ImagingFramework;

namespace {

std::vector<std::uint8_t> Save(const AdobeResources& resources) {
    std::vector<std::uint8_t> bytes;
    resources.Save(bytes);
    return bytes;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t size) {
    AdobeResources resources;
    try {
        resources.Initialize(pData, size);
    } catch (const ArgumentException&) {
        return 0; // no signature
    }
    const std::vector<std::uint8_t> first = Save(resources);
    if (!first.empty()) {
        AdobeResources copy;
        copy.Load(first);
        if (copy.GetCount() != resources.GetCount() || Save(copy) != first) {
            std::abort();
        }
    }
    for (std::uint32_t index = 0; index < resources.GetCount(); ++index) {
        DataItem item;
        resources.GetItem(resources.GetItemIdByIndex(index), item);
        if (!IsUtf8(static_cast<AdobeResourceBlock&>(item).GetName())) {
            std::abort();
        }
        item.FreePointerValue();
    }
    return 0;
}
