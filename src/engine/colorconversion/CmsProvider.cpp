#include "colorconversion/CmsProvider.h"

#include <cstring>
#include <filesystem>
#include <fstream>

namespace ImagingFramework {

namespace {

// Positions in the header of an ICC profile.
constexpr std::size_t HeaderSize = 128;
constexpr std::size_t ColorSpacePosition = 16;
constexpr std::size_t FileSignaturePosition = 36;

struct SpaceCode {
    char Signature[5];
    std::uint32_t Code;
};

constexpr SpaceCode SpaceCodes[] = {
    {"RGB ", 0x01000000}, {"GRAY", 0x12000000}, {"CMYK", 0x14000000}, {"Lab ", 0x18000000},
    {"XYZ ", 0x21000000}, {"Luv ", 0x22000000}, {"YCbr", 0x24000000}, {"Yxy ", 0x28000000},
    {"HSV ", 0x41000000}, {"HLS ", 0x42000000}, {"CMY ", 0x44000000},
};

} // namespace

std::uint32_t CmsProvider::GetProfileColorSpace(const std::string& profileName) {
    const std::u8string path(profileName.begin(), profileName.end());
    std::ifstream file(std::filesystem::path(path), std::ios::binary);
    char header[HeaderSize];
    if (!file.read(header, HeaderSize) || std::memcmp(header + FileSignaturePosition, "acsp", 4) != 0) {
        throw CmOpenProfileException(profileName);
    }
    for (const SpaceCode& space : SpaceCodes) {
        if (std::memcmp(header + ColorSpacePosition, space.Signature, 4) == 0) {
            return space.Code;
        }
    }
    throw UnsupportedPixelFormatException();
}

std::unique_ptr<CmsProvider> CreateCmsProvider(ColorManagementEngine) {
    return nullptr;
}

} // namespace ImagingFramework
