#include <Corvane/Rasterloom/Color.h>

#include "CallEngine.h"
#include "Common/Numeric.h"
#include "Common/PixelFormat.h"
#include "EnumTransforms.h"
#include "Validator.h"

#include <fmt/format.h>

namespace Corvane::Rasterloom {

namespace {

constexpr std::int32_t ChannelMaximum = 65535;
/// The alpha of an 8-bit factory: 255 widened, and so not the maximum.
constexpr std::uint8_t OpaqueByte = 255;

std::uint16_t Checked(std::int32_t value, const char* name) {
    if (value < 0 || value > ChannelMaximum) {
        throw Host::ArgumentOutOfRangeException(name);
    }
    return static_cast<std::uint16_t>(value);
}

std::uint8_t Byte(std::uint32_t word, int shift) {
    return static_cast<std::uint8_t>(word >> shift);
}
std::int32_t Word(std::uint64_t word, int shift) {
    return static_cast<std::uint16_t>(word >> shift);
}

/// A number of 0.0 to 1.0 in 65535 steps.
float Quantize(float value, const char* name) {
    if (!(value >= 0.0F && value <= 1.0F)) {
        throw Host::ArgumentOutOfRangeException(name);
    }
    constexpr float step = 1.0F / 65535.0F;
    const auto steps = static_cast<std::uint16_t>(double{value} * 65535.0);
    return static_cast<float>(steps * double{step});
}

/// One channel of an HSL colour at `hue` degrees between the values `m1` and `m2`.
float HslChannel(float m1, float m2, float hue) {
    double x = hue;
    if (x < 0.0) {
        x += 360.0;
    } else if (x > 360.0) {
        x -= 360.0;
    }
    const double low = m1;
    const double high = m2;
    if (x < 60.0) {
        return static_cast<float>(low + (high - low) * x / 60.0);
    }
    if (x < 180.0) {
        return m2;
    }
    if (x < 240.0) {
        return static_cast<float>(low + (high - low) * (240.0 - x) * 0.01666666753590107);
    }
    return m1;
}

std::int32_t HslToChannel(float value) {
    return ImagingFramework::TruncateToInt32(double{value} * 65535.0) & ChannelMaximum;
}

} // namespace

RgbColor::RgbColor(std::int32_t alpha, std::int32_t red, std::int32_t green, std::int32_t blue)
    : Color(FromArgb32(alpha, red, green, blue)) {}

CmykColor::CmykColor(std::int32_t alpha, std::int32_t cyan, std::int32_t magenta, std::int32_t yellow,
                     std::int32_t black)
    : Color(FromAcmyk32(alpha, cyan, magenta, yellow, black)) {}

GrayScaleColor::GrayScaleColor(std::int32_t alpha, std::int32_t gray) : Color(FromAGrayScale32(alpha, gray)) {}

Color Color::FromArgb(std::uint8_t alpha, std::uint8_t red, std::uint8_t green, std::uint8_t blue) {
    return Host::ArgbColor{alpha, red, green, blue};
}

Color Color::FromRgb(std::uint8_t red, std::uint8_t green, std::uint8_t blue) {
    return FromArgb(OpaqueByte, red, green, blue);
}

Color Color::FromCmyk(std::uint8_t cyan, std::uint8_t magenta, std::uint8_t yellow, std::uint8_t black) {
    return FromAcmyk(OpaqueByte, cyan, magenta, yellow, black);
}

Color Color::FromAcmyk(std::uint8_t alpha, std::uint8_t cyan, std::uint8_t magenta, std::uint8_t yellow,
                       std::uint8_t black) {
    return {PixelFormat::Format80bppAcmyk, {Widen(black), Widen(yellow), Widen(magenta), Widen(cyan), Widen(alpha)}};
}

Color Color::FromGrayScale(std::uint8_t gray) {
    return FromAGrayScale(OpaqueByte, gray);
}

Color Color::FromAGrayScale(std::uint8_t alpha, std::uint8_t gray) {
    return {PixelFormat::Format32bppAGrayScale, {Widen(gray), Widen(alpha), 0, 0, 0}};
}

Color Color::FromGdiplusColor(Host::ArgbColor color) {
    return color;
}

Color Color::FromArgb32(std::int32_t alpha, std::int32_t red, std::int32_t green, std::int32_t blue) {
    const std::uint16_t a = Checked(alpha, "alpha");
    const std::uint16_t r = Checked(red, "red");
    const std::uint16_t g = Checked(green, "green");
    const std::uint16_t b = Checked(blue, "blue");
    return {PixelFormat::Format64bppArgb, {b, g, r, a, 0}};
}

Color Color::FromRgb32(std::int32_t red, std::int32_t green, std::int32_t blue) {
    return FromArgb32(ChannelMaximum, red, green, blue);
}

Color Color::FromCmyk32(std::int32_t cyan, std::int32_t magenta, std::int32_t yellow, std::int32_t black) {
    return FromAcmyk32(ChannelMaximum, cyan, magenta, yellow, black);
}

Color Color::FromAcmyk32(std::int32_t alpha, std::int32_t cyan, std::int32_t magenta, std::int32_t yellow,
                         std::int32_t black) {
    const std::uint16_t a = Checked(alpha, "alpha");
    const std::uint16_t c = Checked(cyan, "cyan");
    const std::uint16_t m = Checked(magenta, "magenta");
    const std::uint16_t y = Checked(yellow, "yellow");
    const std::uint16_t k = Checked(black, "black");
    return {PixelFormat::Format80bppAcmyk, {k, y, m, c, a}};
}

Color Color::FromGrayScale32(std::int32_t gray) {
    return FromAGrayScale32(ChannelMaximum, gray);
}

Color Color::FromAGrayScale32(std::int32_t alpha, std::int32_t gray) {
    const std::uint16_t a = Checked(alpha, "alpha");
    const std::uint16_t g = Checked(gray, "gray");
    return {PixelFormat::Format32bppAGrayScale, {g, a, 0, 0, 0}};
}

Color Color::FromArgb32(std::uint32_t argb) {
    return FromArgb(Byte(argb, 24), Byte(argb, 16), Byte(argb, 8), Byte(argb, 0));
}

Color Color::FromCmyk32(std::uint32_t cmyk) {
    return FromCmyk(Byte(cmyk, 24), Byte(cmyk, 16), Byte(cmyk, 8), Byte(cmyk, 0));
}

Color Color::FromAGrayScale32(std::uint32_t alphaGray) {
    return FromAGrayScale(Byte(alphaGray, 8), Byte(alphaGray, 0));
}

Color Color::FromArgb64(std::uint64_t argb) {
    return FromArgb32(Word(argb, 48), Word(argb, 32), Word(argb, 16), Word(argb, 0));
}

Color Color::FromCmyk64(std::uint64_t cmyk) {
    return FromCmyk32(Word(cmyk, 48), Word(cmyk, 32), Word(cmyk, 16), Word(cmyk, 0));
}

Color Color::FromAGrayScale64(std::uint64_t alphaGray) {
    return FromAGrayScale32(Word(alphaGray, 16), Word(alphaGray, 0));
}

Color Color::FromHsl(float hue, float saturation, float lightness) {
    const float s = Quantize(saturation, "saturation");
    const float l = Quantize(lightness, "lightness");
    const auto h = static_cast<float>(ImagingFramework::TruncateToInt32(hue) & ChannelMaximum);
    if (l == 0.0F) {
        return FromRgb32(0, 0, 0);
    }
    const auto m2 = static_cast<float>(l <= 0.5F ? double{l} * (1.0 + double{s}) : double{l} * (1.0 - double{s}) + s);
    const auto m1 = static_cast<float>(2.0 * double{l} - double{m2});
    return FromRgb32(HslToChannel(HslChannel(m1, m2, h + 120.0F)), HslToChannel(HslChannel(m1, m2, h)),
                     HslToChannel(HslChannel(m1, m2, h - 120.0F)));
}

void Color::RequireColor() const {
    if (IsNull()) {
        throw Host::ArgumentNullException("obj");
    }
}

std::int32_t Color::get_ChannelCount() const {
    if (IsNull()) {
        return 0;
    }
    return CallEngine([&] {
        return static_cast<std::int32_t>(ImagingFramework::PixelFormatChannelCount(TransformPixelFormat(m_enFormat)));
    });
}

std::int32_t Color::GetChannel32(std::int32_t index) const {
    RequireColor();
    if (index < 0 || index >= get_ChannelCount()) {
        throw Host::ArgumentOutOfRangeException("index");
    }
    return m_uintChannels[static_cast<std::size_t>(index)];
}

std::uint8_t Color::GetChannel(std::int32_t index) const {
    return static_cast<std::uint8_t>(GetChannel32(index) >> 8);
}

std::int32_t Color::GetChannel32(ColorChannel channel) const {
    RequireColor();
    Validator::ValidateEnum("channel", channel);
    return GetChannel32(CallEngine([&] {
        return ImagingFramework::TranslateColorChannel(static_cast<ImagingFramework::ColorChannel>(channel),
                                                       TransformColorSpace(get_ColorSpace()));
    }));
}

std::uint8_t Color::GetChannel(ColorChannel channel) const {
    return static_cast<std::uint8_t>(GetChannel32(channel) >> 8);
}

std::vector<std::uint8_t> Color::ToArray() const {
    RequireColor();
    std::vector<std::uint8_t> array(static_cast<std::size_t>(get_ChannelCount()));
    for (std::size_t i = 0; i < array.size(); ++i) {
        array[i] = Channel8(i);
    }
    return array;
}

std::vector<std::int32_t> Color::ToArray32() const {
    RequireColor();
    return {m_uintChannels.begin(), m_uintChannels.begin() + get_ChannelCount()};
}

void Color::ImportArray32(std::span<const std::int32_t> array) {
    if (!array.data()) {
        throw Host::ArgumentNullException("array");
    }
    if (array.size() != static_cast<std::size_t>(get_ChannelCount())) {
        throw Host::ArgumentException("Number of array items should be the same as channels count.", "array");
    }
    for (std::size_t i = 0; i < array.size(); ++i) {
        m_uintChannels[i] = static_cast<std::uint16_t>(array[i]);
    }
}

std::uint32_t Color::ToInt32() const {
    RequireColor();
    // Channels 3 to 0 for RGB and CMYK alike: alpha is the third of the one and has no place in the other.
    std::uint32_t packed = 0;
    for (std::size_t i = get_ColorSpace() == ColorSpace::GrayScale ? 2 : 4; i-- > 0;) {
        packed = packed << 8 | Channel8(i);
    }
    return packed;
}

std::uint64_t Color::ToInt64() const {
    RequireColor();
    std::uint64_t packed = 0;
    for (std::size_t i = get_ColorSpace() == ColorSpace::GrayScale ? 2 : 4; i-- > 0;) {
        packed = packed << 16 | Channel(i);
    }
    return packed;
}

std::string Color::ToString() const {
    RequireColor();
    switch (get_ColorSpace()) {
    case ColorSpace::Cmyk:
        return fmt::format("Color [A={}, C={}, M={}, Y={}, K={}]", Channel8(4), Channel8(3), Channel8(2), Channel8(1),
                           Channel8(0));
    case ColorSpace::GrayScale:
        return fmt::format("Color [A={}, Gray={}]", Channel8(1), Channel8(0));
    default:
        return fmt::format("Color [A={}, R={}, G={}, B={}]", Channel8(3), Channel8(2), Channel8(1), Channel8(0));
    }
}

bool Color::Equals(const Color& other) const {
    RequireColor();
    other.RequireColor();
    if (m_enFormat != other.m_enFormat) {
        throw Host::InvalidCastException();
    }
    return m_uintChannels == other.m_uintChannels;
}

} // namespace Corvane::Rasterloom
