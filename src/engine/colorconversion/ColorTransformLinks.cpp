#include "colorconversion/ColorTransformLinks.h"

#include "colorconversion/IndexedLinks.h"

namespace ImagingFramework {

void EqualLink::CreateNewInstance(std::unique_ptr<IColorTransformLink>* ppNewInstance) const {
    IColorTransformLinkImpl::CreateNewInstance(ppNewInstance);
    *ppNewInstance = std::make_unique<EqualLink>(m_srcFormat);
}

void EqualLink::ApplyScanlineTransform(const std::uint8_t* source, std::uint8_t* destination) {
    if (!BeginRun(source, destination)) {
        std::copy_n(source, CalculateStride64(m_run.PixelCount, PixelFormatSize(m_srcFormat), 1), destination);
    }
}

namespace {

template <class Link>
LinkPrototype Prototype(std::string_view name) {
    return {name, std::make_unique<Link>()};
}

// `Argb64ToArgb64Link` stands twice; the order decides which link serves a request that several would, so it stays.
#define RASTERLOOM_LINKS(X)                                                                                            \
    X(Argb32ToArgb32Link)                                                                                              \
    X(Agray16ToAgray16Link)                                                                                            \
    X(Argb16ToArgb32Link)                                                                                              \
    X(Rgb16555ToArgb32Link)                                                                                            \
    X(Rgb16565ToArgb32Link)                                                                                            \
    X(Rgb24ToArgb32Link)                                                                                               \
    X(Argb32ToRgb24Link)                                                                                               \
    X(Pargb32ToArgb32Link)                                                                                             \
    X(Argb32ToPargb32Link)                                                                                             \
    X(Rgb32ToArgb32Link)                                                                                               \
    X(Argb32ToRgb32Link)                                                                                               \
    X(Agray16ToArgb32Link)                                                                                             \
    X(Argb32ToAgray16Link)                                                                                             \
    X(Agray16ToGray8Link)                                                                                              \
    X(Gray8ToAgray16Link)                                                                                              \
    X(Acmyk40ToArgb32Link)                                                                                             \
    X(Argb32ToAcmyk40Link)                                                                                             \
    X(Acmyk40ToAgray16Link)                                                                                            \
    X(Agray16ToAcmyk40Link)                                                                                            \
    X(Argb32ToIndexedLink)                                                                                             \
    X(IndexedToArgb32Link)                                                                                             \
    X(IndexedToIndexed)                                                                                                \
    X(Acmyk40ToAcmyk40Link)                                                                                            \
    X(Acmyk40ToCmyk32Link)                                                                                             \
    X(Cmyk32ToAcmyk40Link)                                                                                             \
    X(Argb32ToArgb64Link)                                                                                              \
    X(Argb64ToArgb32Link)                                                                                              \
    X(Argb64ToRgb48Link)                                                                                               \
    X(Rgb48ToArgb64Link)                                                                                               \
    X(Argb64ToArgb64Link)                                                                                              \
    X(Acmyk80ToAcmyk40Link)                                                                                            \
    X(Acmyk40ToAcmyk80Link)                                                                                            \
    X(Acmyk80ToArgb64Link)                                                                                             \
    X(Argb64ToAcmyk80Link)                                                                                             \
    X(Argb64ToArgb64Link)                                                                                              \
    X(Acmyk80ToAcmyk80Link)                                                                                            \
    X(Acmyk80ToCmyk64Link)                                                                                             \
    X(Cmyk64ToAcmyk80Link)                                                                                             \
    X(Agray32ToAcmyk80Link)                                                                                            \
    X(Acmyk80ToAgray32Link)                                                                                            \
    X(Agray32ToArgb64Link)                                                                                             \
    X(Argb64ToAgray32Link)                                                                                             \
    X(Agray32ToGray16Link)                                                                                             \
    X(Gray16ToAgray32Link)                                                                                             \
    X(Agray32ToAgray16Link)                                                                                            \
    X(Agray16ToAgray32Link)                                                                                            \
    X(Agray32ToAgray32Link)

std::vector<LinkPrototype> MakePrototypes() {
    std::vector<LinkPrototype> prototypes;
#define RASTERLOOM_ADD_LINK(Link) prototypes.push_back(Prototype<Link>(#Link));
    RASTERLOOM_LINKS(RASTERLOOM_ADD_LINK)
#undef RASTERLOOM_ADD_LINK
    return prototypes;
}

} // namespace

const std::vector<LinkPrototype>& GetLinkPrototypes() {
    static const std::vector<LinkPrototype> prototypes = MakePrototypes();
    return prototypes;
}

} // namespace ImagingFramework
