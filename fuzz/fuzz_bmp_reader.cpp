#include "LoadPicture.h"
#include "metadata/Bmp/BitmapMetaData.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t size) {
    LoadPicture<ImagingFramework::BitmapMetaData>(pData, size);
    return 0;
}
