#include "LoadPicture.h"
#include "metadata/Png/PngMetaData.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t size) {
    LoadPicture<ImagingFramework::PngMetaData>(pData, size);
    return 0;
}
