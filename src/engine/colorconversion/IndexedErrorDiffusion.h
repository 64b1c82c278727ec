#pragma once

#include "colorconversion/ErrorDiffusion.h"

namespace ImagingFramework {

/// Error diffusion to the nearest entries of a palette. Alpha takes part on the same footing as the colours.
class IndexedErrorDiffusion final : public ErrorDiffusion<ArgbError> {
public:
    explicit IndexedErrorDiffusion(DitheringType type) : ErrorDiffusion(type) {}
    void ApplyDithering(const std::uint8_t* pSrcScanline, std::uint8_t* pDestScanline) override;

private:
    bool DiffuseByGrid();
    void DiffusePlainly();
};

} // namespace ImagingFramework
