#pragma once

#include <Corvane/Rasterloom/Api.h>
#include <Corvane/Rasterloom/LockableObject.h>

#include <cstdint>
#include <memory>

namespace ImagingFramework {
class Histogram;
}

namespace Corvane::Rasterloom {

/// How often each sample value occurs in a picture: 256 counts for 8 bits per channel, 65536 for 16. Made by
/// `BitmapStatisticsProvider`.
///
/// Members take the object's lock. Neither copied nor moved. After `Dispose` they fail with
/// `Host::ObjectDisposedException`.
class RASTERLOOM_API Histogram final : public LockableObject {
public:
    /// Takes the engine's counts. Null fails with `Host::ArgumentNullException` ("histogram").
    explicit Histogram(std::unique_ptr<ImagingFramework::Histogram> histogram);
    ~Histogram() override;

    /// 256 or 65536.
    std::int32_t get_Length();
    /// Whether samples have 16 bits.
    bool get_IsExtended();
    /// How often the value `index` occurs. These two fail with `Host::ArgumentOutOfRangeException` ("index").
    std::int64_t get_Item(std::int32_t index);
    /// A count outside 0 to 2^32 - 1 fails with `Host::ArgumentOutOfRangeException` ("value").
    void set_Item(std::int32_t index, std::int64_t value);

    /// The size of what was counted, in pixels.
    std::int32_t get_Width();
    std::int32_t get_Height();
    /// Samples of each pixel that were counted.
    std::int32_t get_ChannelCount();

    /// The mean of the samples; 0 when there are none.
    double get_Mean();
    /// Their standard deviation; 0 when there are none.
    double get_StdDev();
    /// The value in the middle of all samples.
    std::int32_t get_Median();
    /// The first value up to which there are more samples than `fraction` of all. Fails with
    /// `Host::ArgumentOutOfRangeException` outside 0 to 1.
    std::int32_t GetPercentile(float fraction);

    /// The engine's counts, for those who hold the lock.
    ImagingFramework::Histogram& get__Internal() const;

    using LockableObject::Dispose;

protected:
    void Dispose(bool disposing) override;

private:
    template <class Read> auto ReadCounts(Read read);
    std::uint32_t CheckIndex(std::int32_t index) const;

    std::unique_ptr<ImagingFramework::Histogram> m_pHistogram;
};

} // namespace Corvane::Rasterloom
