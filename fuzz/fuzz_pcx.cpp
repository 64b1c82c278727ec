#include "LoadPicture.h"
#include "metadata/Pcx/PcxMetaData.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t size) {
    LoadPicture<ImagingFramework::PcxMetaData>(pData, size);
    return 0;
}
