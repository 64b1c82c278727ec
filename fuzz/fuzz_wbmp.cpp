#include "LoadPicture.h"
#include "metadata/Wbmp/WbmpMetaData.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t size) {
    LoadPicture<ImagingFramework::WbmpMetaData>(pData, size);
    return 0;
}
