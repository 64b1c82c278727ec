#pragma once

#include "metadata/Frames/FilterData.h"

namespace ImagingFramework {

/// Takes an image line by line.
class IScanLineConsumer {
public:
    virtual ~IScanLineConsumer() = default;
    /// Comes once, before the first line. Fails with `ArgumentNullPointerException` ("pSourceImageMetaData") on null.
    virtual void Initialize(std::shared_ptr<const FilterData> pSourceImageMetaData) = 0;
    /// `pScanline` is valid during the call. Rows come from the top.
    virtual void SetScanline(const std::uint8_t* pScanline, std::uint32_t row) = 0;
};

/// Keeps the description of the image.
class IScanLineConsumerImpl : public IScanLineConsumer {
public:
    void Initialize(std::shared_ptr<const FilterData> pSourceImageMetaData) override;

protected:
    std::shared_ptr<const FilterData> m_pSourceImageMetaData;
};

} // namespace ImagingFramework
