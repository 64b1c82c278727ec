#pragma once

#include <Corvane/Rasterloom/Host/RotateFlipType.h>
#include <Corvane/Rasterloom/Transforms/BitmapTransform.h>

namespace Corvane::Rasterloom::Transforms {

/// Turns a bitmap by right angles and flips it, without a loss and in every pixel format. The resolutions stay as they
/// are, also where width and height change places.
class RASTERLOOM_API RotateAndFlip final : public BitmapTransform {
public:
    /// `RotateNoneFlipNone` unless given.
    RotateAndFlip();
    explicit RotateAndFlip(Host::RotateFlipType mode);
    ~RotateAndFlip() override;

    /// What is done.
    Host::RotateFlipType get_Mode();
    /// A value without a name fails with `Host::ArgumentException` ("mode").
    void set_Mode(Host::RotateFlipType mode);

    void set__Mode(Host::RotateFlipType mode);

protected:
    void ExportSettings() override;

private:
    Host::RotateFlipType m_enMode = Host::RotateFlipType::RotateNoneFlipNone;
};

} // namespace Corvane::Rasterloom::Transforms
