#pragma once

#include <Corvane/Rasterloom/Api.h>
#include <Corvane/Rasterloom/Host/ArgbColor.h>
#include <Corvane/Rasterloom/NamedColors.h>
#include <Corvane/Rasterloom/PixelFormat.h>

#include <array>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace Corvane::Rasterloom {

/// A colour of 16 bits per channel in some colour space; a plain value. `RgbColor`, `CmykColor` and `GrayScaleColor`
/// add accessors and no data, so any colour is passed and kept as a `Color`.
///
/// A default-constructed `Color` is "no colour". Whatever asks it for a channel, an integer, a text, a comparison or a
/// conversion fails with `Host::ArgumentNullException` for "obj".
///
/// Channels are numbered as they stand in memory: blue, green, red, alpha; black, yellow, magenta, cyan, alpha; gray,
/// alpha. 8-bit channels are widened by a shift: 255 becomes 65280.
class RASTERLOOM_API Color {
public:
    constexpr Color() noexcept = default;
    /// As `FromGdiplusColor`.
    constexpr Color(Host::ArgbColor color) noexcept // NOLINT(google-explicit-constructor)
        : Color(PixelFormat::Format64bppArgb, {Widen(color.B), Widen(color.G), Widen(color.R), Widen(color.A), 0}) {}

    /// @name Of 8-bit channels, 0 to 255; alpha is 65280 where it is not given
    /// @{
    static Color FromArgb(std::uint8_t alpha, std::uint8_t red, std::uint8_t green, std::uint8_t blue);
    static Color FromRgb(std::uint8_t red, std::uint8_t green, std::uint8_t blue);
    static Color FromCmyk(std::uint8_t cyan, std::uint8_t magenta, std::uint8_t yellow, std::uint8_t black);
    static Color FromAcmyk(std::uint8_t alpha, std::uint8_t cyan, std::uint8_t magenta, std::uint8_t yellow,
                           std::uint8_t black);
    static Color FromGrayScale(std::uint8_t gray);
    static Color FromAGrayScale(std::uint8_t alpha, std::uint8_t gray);
    static Color FromGdiplusColor(Host::ArgbColor color);
    /// @}

    /// @name Of 16-bit channels, 0 to 65535; alpha is 65535 where it is not given
    /// A channel outside 0 to 65535 fails with
    /// `Host::ArgumentOutOfRangeException` for "alpha", "red", "green", "blue", "cyan", "magenta", "yellow", "black" or
    /// "gray", the first bad one in that order.
    /// @{
    static Color FromArgb32(std::int32_t alpha, std::int32_t red, std::int32_t green, std::int32_t blue);
    static Color FromRgb32(std::int32_t red, std::int32_t green, std::int32_t blue);
    static Color FromCmyk32(std::int32_t cyan, std::int32_t magenta, std::int32_t yellow, std::int32_t black);
    static Color FromAcmyk32(std::int32_t alpha, std::int32_t cyan, std::int32_t magenta, std::int32_t yellow,
                             std::int32_t black);
    static Color FromGrayScale32(std::int32_t gray);
    static Color FromAGrayScale32(std::int32_t alpha, std::int32_t gray);
    /// @}

    /// @name Of one integer
    /// The 32-bit ones hold 8-bit channels (so alpha is 65280 where it is not given), the 64-bit ones 16-bit channels
    /// (65535).
    /// @{
    static Color FromArgb32(std::uint32_t argb);            ///< 0xAARRGGBB
    static Color FromCmyk32(std::uint32_t cmyk);            ///< 0xCCMMYYKK
    static Color FromAGrayScale32(std::uint32_t alphaGray); ///< 0xAAGG
    static Color FromArgb64(std::uint64_t argb);            ///< the same order, 16 bits each
    static Color FromCmyk64(std::uint64_t cmyk);            ///< the same order, 16 bits each
    static Color FromAGrayScale64(std::uint64_t alphaGray); ///< alpha in bits 16-31, gray in bits 0-15
    /// @}

    /// An RGB colour with alpha 65535 of hue (degrees; cut to 16 bits), saturation and lightness. The latter two fail
    /// with `Host::ArgumentOutOfRangeException` ("saturation", "lightness") outside 0.0 to 1.0.
    static Color FromHsl(float hue, float saturation, float lightness);

    /// True for "no colour".
    constexpr bool IsNull() const noexcept { return m_enFormat == PixelFormat::FormatUnknown; }
    /// `ColorSpace::Unknown` for "no colour".
    constexpr ColorSpace get_ColorSpace() const noexcept;
    /// Channels with alpha; 0 for "no colour".
    std::int32_t get_ChannelCount() const;
    /// The format of 16 bits per channel in which the channels stand; `FormatUnknown` for "no colour".
    constexpr PixelFormat get_PixelFormat() const noexcept { return m_enFormat; }

    /// The channel by its number. Fails with `Host::ArgumentOutOfRangeException` for "index".
    std::uint8_t GetChannel(std::int32_t index) const;
    /// The same with 16 bits.
    std::int32_t GetChannel32(std::int32_t index) const;
    /// The channel by its name in this colour's space. Fails as the forms above, and with `Host::ArgumentException` for
    /// a value that is no channel.
    std::uint8_t GetChannel(ColorChannel channel) const;
    /// The same with 16 bits.
    std::int32_t GetChannel32(ColorChannel channel) const;
    /// All channels in the order of their numbers.
    std::vector<std::uint8_t> ToArray() const;
    /// The same with 16 bits.
    std::vector<std::int32_t> ToArray32() const;

    /// The 8-bit channels as 0xAARRGGBB, 0xCCMMYYKK (alpha is dropped) or 0xAAGG.
    std::uint32_t ToInt32() const;
    /// The 16-bit channels in the same order.
    std::uint64_t ToInt64() const;
    /// "Color [A=255, R=0, G=0, B=0]" and the like, of 8-bit values.
    std::string ToString() const;

    /// Compares all channels. A colour of another space is no equal and no unequal either: the comparison fails with
    /// `Host::InvalidCastException`, as it does with `Host::ArgumentNullException` for "no colour" on either side.
    bool Equals(const Color& other) const;
    /// As `Equals`.
    bool operator==(const Color& other) const { return Equals(other); }

    /// The colour in another space, by the library's own conversion without colour profiles. Fails with
    /// `UnsupportedPixelFormatException` for a space without a registered prototype, with `UnexpectedException` when
    /// the conversion itself fails. Conversions of the whole process run one at a time.
    Color ConvertColorSpace(ColorSpace colorSpace) const;
    /// The 8-bit channels; a colour of another space is converted to RGB.
    Host::ArgbColor ToGdiplusColor() const;
    /// As `ToGdiplusColor`.
    explicit operator Host::ArgbColor() const { return ToGdiplusColor(); }

    /// Makes `prototype` the kind of colour that `ConvertColorSpace` gives for its colour space; the three kinds below
    /// are there from the start. Fails with `Host::ArgumentNullException` ("prototype") for "no colour" and with
    /// `UnsupportedPixelFormatException` for one whose format has not 16 bits per channel.
    static void Register(const Color& prototype);

protected:
    /// Channels in the order of their numbers; those that a kind does not have are 0.
    using Channels = std::array<std::uint16_t, 5>;

    /// `internalFormat` has 16 bits per channel and tells the colour space; `channels` are in the order of their
    /// numbers.
    constexpr Color(PixelFormat internalFormat, Channels channels) noexcept
        : m_enFormat(internalFormat), m_uintChannels(channels) {}

    /// An 8-bit channel as one of 16 bits: shifted, so 255 becomes 65280.
    static constexpr std::uint16_t Widen(std::uint32_t channel) noexcept {
        return static_cast<std::uint16_t>((channel & 0xFFU) << 8);
    }
    /// A channel by its number, without a check.
    constexpr std::uint16_t Channel(std::size_t index) const noexcept { return m_uintChannels[index]; }
    /// Its high byte.
    constexpr std::uint8_t Channel8(std::size_t index) const noexcept {
        return static_cast<std::uint8_t>(m_uintChannels[index] >> 8);
    }
    /// Sets all channels in the order of their numbers; of each value the low 16 bits. Fails with
    /// `Host::ArgumentNullException` ("array") for a null array, `Host::ArgumentException` for one of another length.
    void ImportArray32(std::span<const std::int32_t> array);
    /// `color` as one of the kind with the given internal format; itself if it is of that kind. Fails as
    /// `ConvertColorSpace`.
    static Color As(const Color& color, PixelFormat internalFormat);

private:
    void RequireColor() const;
    Color ConvertTo(PixelFormat internalFormat) const;

    PixelFormat m_enFormat = PixelFormat::FormatUnknown;
    Channels m_uintChannels{};
};

constexpr ColorSpace Color::get_ColorSpace() const noexcept {
    const auto word = static_cast<std::uint32_t>(m_enFormat);
    for (const ColorSpace space : {ColorSpace::GrayScale, ColorSpace::Cmyk, ColorSpace::Rgb}) {
        const auto mask = static_cast<std::uint32_t>(space);
        if ((word & mask) == mask) {
            return space;
        }
    }
    return ColorSpace::Unknown;
}

/// An integer that holds a packed colour: 32 bits with 8-bit channels or 64 bits with 16-bit channels.
template <class Integer>
concept PackedColor = std::integral<Integer> &&(sizeof(Integer) == 4 || sizeof(Integer) == 8);

/// A colour of red, green, blue and alpha. The named colours of CSS are constants of this class, such as
/// `RgbColor::Orange`.
class RASTERLOOM_API RgbColor : public Color {
public:
    /// All channels 0.
    constexpr RgbColor() noexcept : Color(PixelFormat::Format64bppArgb, {}) {}
    /// 16-bit channels; fails as `FromArgb32`.
    RgbColor(std::int32_t alpha, std::int32_t red, std::int32_t green, std::int32_t blue);
    constexpr RgbColor(Host::ArgbColor color) noexcept : Color(color) {} // NOLINT(google-explicit-constructor)
    /// Any colour, converted to RGB if it is of another space; fails with `Host::ArgumentNullException` ("obj") for "no
    /// colour", and as `ConvertColorSpace`.
    RgbColor(const Color& color)
        : Color(As(color, PixelFormat::Format64bppArgb)) {} // NOLINT(google-explicit-constructor)
    /// Of 8-bit channels in 32 bits, or 16-bit channels in 64 bits, in the order of `ToInt32`.
    template <PackedColor Integer>
    explicit RgbColor(Integer packed)
        : Color(sizeof(Integer) == 4 ? FromArgb32(static_cast<std::uint32_t>(packed))
                                     : FromArgb64(static_cast<std::uint64_t>(packed))) {}
    /// As `ToInt32`.
    explicit operator std::uint32_t() const { return ToInt32(); }
    /// As `ToInt64`.
    explicit operator std::uint64_t() const { return ToInt64(); }

    /// @name Channels of 8 bits, 0 to 255
    /// @{
    constexpr std::uint8_t get_A() const noexcept { return Channel8(3); }
    constexpr std::uint8_t get_R() const noexcept { return Channel8(2); }
    constexpr std::uint8_t get_G() const noexcept { return Channel8(1); }
    constexpr std::uint8_t get_B() const noexcept { return Channel8(0); }
    /// @}
    /// @name Channels of 16 bits, 0 to 65535
    /// @{
    constexpr std::int32_t get_A32() const noexcept { return Channel(3); }
    constexpr std::int32_t get_R32() const noexcept { return Channel(2); }
    constexpr std::int32_t get_G32() const noexcept { return Channel(1); }
    constexpr std::int32_t get_B32() const noexcept { return Channel(0); }
    /// @}

#define RASTERLOOM_DECLARE(Name, Value) static const RgbColor Name;
    RASTERLOOM_NAMED_COLORS(RASTERLOOM_DECLARE)
#undef RASTERLOOM_DECLARE

private:
    static constexpr RgbColor OfWord(std::uint32_t argb) {
        const auto byte = [argb](int shift) { return static_cast<std::uint8_t>(argb >> shift); };
        return RgbColor(Host::ArgbColor{byte(24), byte(16), byte(8), byte(0)});
    }
};

#define RASTERLOOM_DEFINE(Name, Value) inline constexpr RgbColor RgbColor::Name = RgbColor::OfWord(Value);
RASTERLOOM_NAMED_COLORS(RASTERLOOM_DEFINE)
#undef RASTERLOOM_DEFINE

/// A colour of cyan, magenta, yellow, black and alpha.
class RASTERLOOM_API CmykColor : public Color {
public:
    /// All channels 0.
    constexpr CmykColor() noexcept : Color(PixelFormat::Format80bppAcmyk, {}) {}
    /// 16-bit channels; fails as `FromAcmyk32`.
    CmykColor(std::int32_t alpha, std::int32_t cyan, std::int32_t magenta, std::int32_t yellow, std::int32_t black);
    /// Any colour, converted to CMYK if it is of another space; fails as the like form of `RgbColor`.
    CmykColor(const Color& color)
        : Color(As(color, PixelFormat::Format80bppAcmyk)) {} // NOLINT(google-explicit-constructor)
    /// Of 8-bit channels in 32 bits, or 16-bit channels in 64 bits, in the order of `ToInt32`.
    template <PackedColor Integer>
    explicit CmykColor(Integer packed)
        : Color(sizeof(Integer) == 4 ? FromCmyk32(static_cast<std::uint32_t>(packed))
                                     : FromCmyk64(static_cast<std::uint64_t>(packed))) {}
    /// As `ToInt32`.
    explicit operator std::uint32_t() const { return ToInt32(); }
    /// As `ToInt64`.
    explicit operator std::uint64_t() const { return ToInt64(); }

    /// @name Channels of 8 bits, 0 to 255
    /// @{
    constexpr std::uint8_t get_A() const noexcept { return Channel8(4); }
    constexpr std::uint8_t get_C() const noexcept { return Channel8(3); }
    constexpr std::uint8_t get_M() const noexcept { return Channel8(2); }
    constexpr std::uint8_t get_Y() const noexcept { return Channel8(1); }
    constexpr std::uint8_t get_K() const noexcept { return Channel8(0); }
    /// @}
    /// @name Channels of 16 bits, 0 to 65535
    /// @{
    constexpr std::int32_t get_A32() const noexcept { return Channel(4); }
    constexpr std::int32_t get_C32() const noexcept { return Channel(3); }
    constexpr std::int32_t get_M32() const noexcept { return Channel(2); }
    constexpr std::int32_t get_Y32() const noexcept { return Channel(1); }
    constexpr std::int32_t get_K32() const noexcept { return Channel(0); }
    /// @}
};

/// A gray with alpha.
class RASTERLOOM_API GrayScaleColor : public Color {
public:
    /// All channels 0.
    constexpr GrayScaleColor() noexcept : Color(PixelFormat::Format32bppAGrayScale, {}) {}
    /// 16-bit channels; fails as `FromAGrayScale32`.
    GrayScaleColor(std::int32_t alpha, std::int32_t gray);
    /// Any colour, converted to gray if it is of another space; fails as the like form of `RgbColor`.
    GrayScaleColor(const Color& color) // NOLINT(google-explicit-constructor)
        : Color(As(color, PixelFormat::Format32bppAGrayScale)) {}
    /// Of 8-bit channels in 32 bits, or 16-bit channels in 64 bits, in the order of `ToInt32`.
    template <PackedColor Integer>
    explicit GrayScaleColor(Integer packed)
        : Color(sizeof(Integer) == 4 ? FromAGrayScale32(static_cast<std::uint32_t>(packed))
                                     : FromAGrayScale64(static_cast<std::uint64_t>(packed))) {}
    /// As `ToInt32`.
    explicit operator std::uint32_t() const { return ToInt32(); }
    /// As `ToInt64`.
    explicit operator std::uint64_t() const { return ToInt64(); }

    /// @name Channels of 8 bits, 0 to 255
    /// @{
    constexpr std::uint8_t get_A() const noexcept { return Channel8(1); }
    constexpr std::uint8_t get_Gray() const noexcept { return Channel8(0); }
    /// @}
    /// @name Channels of 16 bits, 0 to 65535
    /// @{
    constexpr std::int32_t get_A32() const noexcept { return Channel(1); }
    constexpr std::int32_t get_Gray32() const noexcept { return Channel(0); }
    /// @}
};

} // namespace Corvane::Rasterloom
