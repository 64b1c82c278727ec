// Reads the input as an XMP packet. What is accepted must be written to a packet that reads and writes equal, and that
// the scanner finds.

#include "ErrorHandling/Exceptions.h"
#include "metadata/Xmp/XMPData.h"
#include "metadata/Xmp/XmpPacketScanner.h"

#include <cstdlib>
#include <string>
#include <string_view>

using namespace ImagingFramework;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t size) {
    XmpPacketScanner::FindPacket({pData, size});
    std::string first;
    try {
        first = XMPData(std::string_view(reinterpret_cast<const char*>(pData), size)).SaveToBuffer();
    } catch (const Exception&) {
        return 0;
    }
    const auto bytes = reinterpret_cast<const std::uint8_t*>(first.data());
    if (XMPData(first).SaveToBuffer() != first || XmpPacketScanner::FindPacket({bytes, first.size()}) != first) {
        std::abort();
    }
    return 0;
}
