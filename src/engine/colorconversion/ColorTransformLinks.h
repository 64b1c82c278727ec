#pragma once

#include "colorconversion/LinkKernels.h"

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace ImagingFramework {

/// A link whose runs are a kernel's.
template <LinkKernels::Kernel Convert, std::uint32_t Source, std::uint32_t Destination>
class KernelLink final : public IColorTransformLinkImpl {
public:
    KernelLink() : IColorTransformLinkImpl(static_cast<PixelFormat>(Source), static_cast<PixelFormat>(Destination)) {}

    void CreateNewInstance(std::unique_ptr<IColorTransformLink>* ppNewInstance) const override {
        IColorTransformLinkImpl::CreateNewInstance(ppNewInstance);
        *ppNewInstance = std::make_unique<KernelLink>();
    }
    void ApplyScanlineTransform(const std::uint8_t* source, std::uint8_t* destination) override {
        if (!BeginRun(source, destination)) {
            Convert(m_run, source, destination);
        }
    }
    /// Of the kernels only the copies keep the format.
    bool IsPassThrough() const override { return Source == Destination && !IsProviderReady(); }
};

// clang-format off
using Argb32ToArgb32Link    = KernelLink<LinkKernels::Copy<4>,           0x0166200A, 0x0166200A>;
using Agray16ToAgray16Link  = KernelLink<LinkKernels::Copy<2>,           0x12041011, 0x12041011>;
using Argb16ToArgb32Link    = KernelLink<LinkKernels::Argb16ToArgb32,    0x01061007, 0x0166200A>;
using Rgb16555ToArgb32Link  = KernelLink<LinkKernels::Rgb16555ToArgb32,  0x01021005, 0x0166200A>;
using Rgb16565ToArgb32Link  = KernelLink<LinkKernels::Rgb16565ToArgb32,  0x01021006, 0x0166200A>;
using Rgb24ToArgb32Link     = KernelLink<LinkKernels::Repack<3, 4>,      0x01421808, 0x0166200A>;
using Argb32ToRgb24Link     = KernelLink<LinkKernels::Repack<4, 3>,      0x0166200A, 0x01421808>;
using Pargb32ToArgb32Link   = KernelLink<LinkKernels::Pargb32ToArgb32,   0x014E200B, 0x0166200A>;
using Argb32ToPargb32Link   = KernelLink<LinkKernels::Argb32ToPargb32,   0x0166200A, 0x014E200B>;
using Rgb32ToArgb32Link     = KernelLink<LinkKernels::Rgb32ToArgb32,     0x01422009, 0x0166200A>;
using Argb32ToRgb32Link     = KernelLink<LinkKernels::Argb32ToRgb32,     0x0166200A, 0x01422009>;
using Agray16ToArgb32Link   = KernelLink<LinkKernels::Agray16ToArgb32,   0x12041011, 0x0166200A>;
using Argb32ToAgray16Link   = KernelLink<LinkKernels::Argb32ToAgray16,   0x0166200A, 0x12041011>;
using Agray16ToGray8Link    = KernelLink<LinkKernels::Repack<2, 1>,      0x12041011, 0x12000810>;
using Gray8ToAgray16Link    = KernelLink<LinkKernels::Repack<1, 2>,      0x12000810, 0x12041011>;
using Acmyk40ToArgb32Link   = KernelLink<LinkKernels::Acmyk40ToArgb32,   0x14042814, 0x0166200A>;
using Argb32ToAcmyk40Link   = KernelLink<LinkKernels::Argb32ToAcmyk40,   0x0166200A, 0x14042814>;
using Acmyk40ToAgray16Link  = KernelLink<LinkKernels::Acmyk40ToAgray16,  0x14042814, 0x12041011>;
using Agray16ToAcmyk40Link  = KernelLink<LinkKernels::Agray16ToAcmyk40,  0x12041011, 0x14042814>;
using Acmyk40ToAcmyk40Link  = KernelLink<LinkKernels::Copy<5>,           0x14042814, 0x14042814>;
using Acmyk40ToCmyk32Link   = KernelLink<LinkKernels::Repack<5, 4>,      0x14042814, 0x1400200F>;
using Cmyk32ToAcmyk40Link   = KernelLink<LinkKernels::Repack<4, 5>,      0x1400200F, 0x14042814>;
using Argb32ToArgb64Link    = KernelLink<LinkKernels::Widen<4>,          0x0166200A, 0x0134400D>;
using Argb64ToArgb32Link    = KernelLink<LinkKernels::Narrow<4>,         0x0134400D, 0x0166200A>;
using Argb64ToRgb48Link     = KernelLink<LinkKernels::Repack<8, 6>,      0x0134400D, 0x0110300C>;
using Rgb48ToArgb64Link     = KernelLink<LinkKernels::Repack<6, 8>,      0x0110300C, 0x0134400D>;
using Argb64ToArgb64Link    = KernelLink<LinkKernels::Copy<8>,           0x0134400D, 0x0134400D>;
using Acmyk80ToAcmyk40Link  = KernelLink<LinkKernels::Narrow<5>,         0x14145015, 0x14042814>;
using Acmyk40ToAcmyk80Link  = KernelLink<LinkKernels::Widen<5>,          0x14042814, 0x14145015>;
using Acmyk80ToArgb64Link   = KernelLink<LinkKernels::Acmyk80ToArgb64,   0x14145015, 0x0134400D>;
using Argb64ToAcmyk80Link   = KernelLink<LinkKernels::Argb64ToAcmyk80,   0x0134400D, 0x14145015>;
using Acmyk80ToAcmyk80Link  = KernelLink<LinkKernels::Copy<10>,          0x14145015, 0x14145015>;
using Acmyk80ToCmyk64Link   = KernelLink<LinkKernels::Repack<10, 8>,     0x14145015, 0x14104013>;
using Cmyk64ToAcmyk80Link   = KernelLink<LinkKernels::Repack<8, 10>,     0x14104013, 0x14145015>;
using Agray32ToAcmyk80Link  = KernelLink<LinkKernels::Agray32ToAcmyk80,  0x12142012, 0x14145015>;
using Acmyk80ToAgray32Link  = KernelLink<LinkKernels::Acmyk80ToAgray32,  0x14145015, 0x12142012>;
using Agray32ToArgb64Link   = KernelLink<LinkKernels::Agray32ToArgb64,   0x12142012, 0x0134400D>;
using Argb64ToAgray32Link   = KernelLink<LinkKernels::Argb64ToAgray32,   0x0134400D, 0x12142012>;
using Agray32ToGray16Link   = KernelLink<LinkKernels::Repack<4, 2>,      0x12142012, 0x12101004>;
using Gray16ToAgray32Link   = KernelLink<LinkKernels::Repack<2, 4>,      0x12101004, 0x12142012>;
using Agray32ToAgray16Link  = KernelLink<LinkKernels::Narrow<2>,         0x12142012, 0x12041011>;
using Agray16ToAgray32Link  = KernelLink<LinkKernels::Widen<2>,          0x12041011, 0x12142012>;
using Agray32ToAgray32Link  = KernelLink<LinkKernels::Copy<4>,           0x12142012, 0x12142012>;
// clang-format on

/// Copies scanlines of any format as they are.
class EqualLink final : public IColorTransformLinkImpl {
public:
    explicit EqualLink(PixelFormat format) : IColorTransformLinkImpl(format, format) {}
    void CreateNewInstance(std::unique_ptr<IColorTransformLink>* ppNewInstance) const override;
    void ApplyScanlineTransform(const std::uint8_t* source, std::uint8_t* destination) override;
};

/// A link that is asked for its formats and cloned, and never run.
struct LinkPrototype {
    std::string_view Name;
    std::unique_ptr<const IColorTransformLink> Link;
};

/// The 47 prototypes in the order in which a request is matched against them. Made at the first call, constant from
/// then on: read without a lock.
const std::vector<LinkPrototype>& GetLinkPrototypes();

} // namespace ImagingFramework
