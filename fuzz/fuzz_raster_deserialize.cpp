// Reads the input as a serialized raster; what is accepted must serialize again, and come back equal.

#include "Common/BitmapData.h"
#include "metadata/Streams/MemoryReader.h"
#include "metadata/Streams/MemoryWriter.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <vector>

using namespace ImagingFramework;

namespace {

std::vector<std::uint8_t> Serialize(const BitmapData& raster) {
    std::vector<std::uint8_t> bytes(raster.GetSize());
    MemoryWriter writer(bytes.data(), bytes.size());
    raster.Serialize(&writer);
    bytes.resize(writer.GetBytePosition());
    return bytes;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t size) {
    const std::uint8_t none = 0;
    MemoryReader reader(size == 0 ? &none : pData, size);
    BitmapData raster;
    try {
        raster.Deserialize(&reader);
    } catch (const Exception&) {
        return 0;
    }
    const std::vector<std::uint8_t> first = Serialize(raster);
    MemoryReader again(first.data(), first.size());
    BitmapData copy;
    copy.Deserialize(&again);
    if (Serialize(copy) != first) {
        std::abort();
    }
    return 0;
}
