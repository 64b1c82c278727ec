#pragma once

#include "TempFolder.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <lcms2.h>
#include <stdexcept>
#include <string>
#include <vector>

/// Small ICC profiles, made with Little CMS.
namespace TestProfiles {

using Bytes = std::vector<std::uint8_t>;

/// Closes `profile` and gives what it would be as a file.
inline Bytes Save(cmsHPROFILE profile) {
    cmsUInt32Number size = 0;
    Bytes bytes;
    bool isSaved = profile != nullptr && cmsSaveProfileToMem(profile, nullptr, &size);
    if (isSaved) {
        bytes.resize(size);
        isSaved = cmsSaveProfileToMem(profile, bytes.data(), &size);
    }
    cmsCloseProfile(profile);
    if (!isSaved) {
        throw std::runtime_error("no profile");
    }
    return bytes;
}

inline void SetText(cmsHPROFILE profile, cmsTagSignature tag, const char* text) {
    cmsMLU* const mlu = cmsMLUalloc(nullptr, 1);
    cmsMLUsetASCII(mlu, "en", "US", text);
    cmsWriteTag(profile, tag, mlu);
    cmsMLUfree(mlu);
}

/// A display of wide gamut and gamma 2.2.
inline Bytes Rgb() {
    cmsCIExyY white;
    cmsWhitePointFromTemp(&white, 6504);
    const cmsCIExyYTRIPLE primaries = {{0.64, 0.33, 1}, {0.21, 0.71, 1}, {0.15, 0.06, 1}};
    cmsToneCurve* const gamma = cmsBuildGamma(nullptr, 2.2);
    cmsToneCurve* curves[3] = {gamma, gamma, gamma};
    const cmsHPROFILE profile = cmsCreateRGBProfile(&white, &primaries, curves);
    cmsFreeToneCurve(gamma);
    SetText(profile, cmsSigProfileDescriptionTag, "Wide display");
    SetText(profile, cmsSigCopyrightTag, "Nobody");
    return Save(profile);
}

inline Bytes SRgb() { return Save(cmsCreate_sRGBProfile()); }

/// Gray of gamma 1.8, with the texts of a device.
inline Bytes Gray() {
    cmsToneCurve* const gamma = cmsBuildGamma(nullptr, 1.8);
    const cmsHPROFILE profile = cmsCreateGrayProfile(cmsD50_xyY(), gamma);
    cmsFreeToneCurve(gamma);
    SetText(profile, cmsSigDeviceMfgDescTag, "Maker");
    SetText(profile, cmsSigDeviceModelDescTag, "Scanner");
    return Save(profile);
}

inline Bytes Lab() { return Save(cmsCreateLab4Profile(nullptr)); }

namespace Detail {

/// A printer whose paper is 95 % white and whose black is 12 % gray, in steps of sRGB.
struct Printer {
    static constexpr double Black = 0.12;
    static constexpr double White = 0.95;
    cmsHTRANSFORM ToLab;
    cmsHTRANSFORM FromLab;
};

inline double Part(cmsUInt16Number value) { return value / 65535.0; }

inline cmsInt32Number InkToLab(const cmsUInt16Number in[], cmsUInt16Number out[], void* cargo) {
    cmsUInt16Number rgb[3];
    for (int i = 0; i < 3; ++i) {
        const double light = (1 - Part(in[i])) * (1 - Part(in[3]));
        rgb[i] = static_cast<cmsUInt16Number>(65535 * (Printer::Black + (Printer::White - Printer::Black) * light));
    }
    cmsDoTransform(static_cast<const Printer*>(cargo)->ToLab, rgb, out, 1);
    return 1;
}

inline cmsInt32Number LabToInk(const cmsUInt16Number in[], cmsUInt16Number out[], void* cargo) {
    cmsUInt16Number rgb[3];
    cmsDoTransform(static_cast<const Printer*>(cargo)->FromLab, in, rgb, 1);
    std::array<double, 3> ink{};
    for (std::size_t i = 0; i < 3; ++i) {
        const double light = (Part(rgb[i]) - Printer::Black) / (Printer::White - Printer::Black);
        ink[i] = 1 - std::clamp(light, 0.0, 1.0);
    }
    const double black = std::min({ink[0], ink[1], ink[2]});
    for (std::size_t i = 0; i < 3; ++i) {
        out[i] = static_cast<cmsUInt16Number>(black < 1 ? 65535 * (ink[i] - black) / (1 - black) : 0);
    }
    out[3] = static_cast<cmsUInt16Number>(65535 * black);
    return 1;
}

inline void WriteTable(cmsHPROFILE profile, cmsTagSignature tag, cmsUInt32Number inputs, cmsUInt32Number outputs,
                       cmsUInt32Number points, cmsSAMPLER16 sampler, Printer& printer) {
    cmsPipeline* const pipeline = cmsPipelineAlloc(nullptr, inputs, outputs);
    cmsStage* const table = cmsStageAllocCLut16bit(nullptr, points, inputs, outputs, nullptr);
    cmsStageSampleCLut16bit(table, sampler, &printer, 0);
    cmsPipelineInsertStage(pipeline, cmsAT_END, cmsStageAllocToneCurves(nullptr, inputs, nullptr));
    cmsPipelineInsertStage(pipeline, cmsAT_END, table);
    cmsPipelineInsertStage(pipeline, cmsAT_END, cmsStageAllocToneCurves(nullptr, outputs, nullptr));
    cmsWriteTag(profile, tag, pipeline);
    cmsPipelineFree(pipeline);
}

} // namespace Detail

/// A printer with poor paper and a poor black, so that proofs and black point compensation show.
inline Bytes Cmyk() {
    const cmsHPROFILE lab = cmsCreateLab4Profile(nullptr);
    const cmsHPROFILE rgb = cmsCreate_sRGBProfile();
    Detail::Printer printer{
        cmsCreateTransform(rgb, TYPE_RGB_16, lab, TYPE_Lab_16, INTENT_RELATIVE_COLORIMETRIC, cmsFLAGS_NOCACHE),
        cmsCreateTransform(lab, TYPE_Lab_16, rgb, TYPE_RGB_16, INTENT_RELATIVE_COLORIMETRIC, cmsFLAGS_NOCACHE)};
    const cmsHPROFILE profile = cmsCreateProfilePlaceholder(nullptr);
    cmsSetProfileVersion(profile, 4.3);
    cmsSetDeviceClass(profile, cmsSigOutputClass);
    cmsSetColorSpace(profile, cmsSigCmykData);
    cmsSetPCS(profile, cmsSigLabData);
    cmsWriteTag(profile, cmsSigMediaWhitePointTag, cmsD50_XYZ());
    Detail::WriteTable(profile, cmsSigAToB0Tag, 4, 3, 6, Detail::InkToLab, printer);
    Detail::WriteTable(profile, cmsSigBToA0Tag, 3, 4, 9, Detail::LabToInk, printer);
    SetText(profile, cmsSigProfileDescriptionTag, "Printer");
    cmsDeleteTransform(printer.ToLab);
    cmsDeleteTransform(printer.FromLab);
    cmsCloseProfile(lab);
    cmsCloseProfile(rgb);
    return Save(profile);
}

/// Pixels through Little CMS alone, which keeps its cache here. Words where the formats have words, else bytes.
template <class Sample>
std::vector<Sample> Transform(const Bytes& from, cmsUInt32Number inFormat, const Bytes& to, cmsUInt32Number outFormat,
                              const std::vector<Sample>& pixels, cmsUInt32Number intent = INTENT_PERCEPTUAL,
                              cmsUInt32Number flags = 0, const Bytes* pProof = nullptr) {
    const auto open = [](const Bytes& bytes) {
        return cmsOpenProfileFromMem(bytes.data(), static_cast<cmsUInt32Number>(bytes.size()));
    };
    const cmsHPROFILE in = open(from);
    const cmsHPROFILE out = open(to);
    const cmsHPROFILE proof = pProof != nullptr ? open(*pProof) : nullptr;
    const cmsHTRANSFORM transform = proof != nullptr
                                        ? cmsCreateProofingTransform(in, inFormat, out, outFormat, proof, intent,
                                                                     intent, flags | cmsFLAGS_SOFTPROOFING)
                                        : cmsCreateTransform(in, inFormat, out, outFormat, intent, flags);
    const std::size_t count = pixels.size() / T_CHANNELS(inFormat);
    std::vector<Sample> result(count * T_CHANNELS(outFormat));
    cmsDoTransform(transform, pixels.data(), result.data(), static_cast<cmsUInt32Number>(count));
    cmsDeleteTransform(transform);
    for (const cmsHPROFILE profile : {in, out, proof}) {
        cmsCloseProfile(profile);
    }
    return result;
}

/// The bytes of a profile whose head is good and whose tags hold nothing but ones.
inline Bytes WithoutTags(Bytes profile) {
    std::fill(profile.begin() + 132 + 12 * profile.at(131), profile.end(), std::uint8_t{0xFF});
    return profile;
}

/// A file of the given bytes as long as this lives.
class File : TempFolder {
public:
    explicit File(const Bytes& bytes)
        : m_path(Write("profile.icc", {reinterpret_cast<const char*>(bytes.data()), bytes.size()})) {}

    const std::filesystem::path& Path() const { return m_path; }
    const std::string& Name() const { return m_path.native(); }

private:
    std::filesystem::path m_path;
};

inline Bytes ReadFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace TestProfiles
