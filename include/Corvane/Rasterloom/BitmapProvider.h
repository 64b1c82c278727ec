#pragma once

#include <Corvane/Rasterloom/Api.h>
#include <Corvane/Rasterloom/EventArgs.h>
#include <Corvane/Rasterloom/LockableObject.h>

#include <memory>

namespace Corvane::Rasterloom {

class Bitmap;
class BitmapLink;
class SyncHandler;
namespace Transforms {
class BitmapTransform;
}

/// The base of the objects through which a bitmap offers its operations. A provider holds no state of the picture; it only
/// saves a host from making a transform. It is made and disposed with its bitmap.
class RASTERLOOM_API BitmapProvider : public LockableObject {
public:
    /// The time limit of the bitmap.
    std::int32_t get_Timeout() const noexcept override;
    void set_Timeout(std::int32_t milliseconds) noexcept override;
    /// Waits as long as the bitmap's time limit tells.
    void Lock() override;

    /// `Dispose` for the end of the bitmap: goes on without a lock that cannot be had.
    void _DisposeQuietly() noexcept { DisposeFinally(); }

protected:
    explicit BitmapProvider(std::shared_ptr<BitmapLink> link);

    /// The bitmap; fails with the disposed-object error when it is gone.
    Bitmap& get__Bitmap() const;
    /// Fails with `BitmapEmptyException` on an empty bitmap and clears its abort flag.
    Bitmap& ValidateRuntimeData() const;
    /// Runs `transform` on the bitmap with the bitmap's unit and time limit; progress goes on to the bitmap.
    void Apply(Transforms::BitmapTransform& transform) const;

private:
    std::shared_ptr<BitmapLink> m_pLink;
};

} // namespace Corvane::Rasterloom
