#pragma once

#include <Corvane/Rasterloom/ActivityStatus.h>
#include <Corvane/Rasterloom/Api.h>
#include <Corvane/Rasterloom/BitmapChange.h>
#include <Corvane/Rasterloom/ColorManagementEngine.h>
#include <Corvane/Rasterloom/ColorPaletteType.h>
#include <Corvane/Rasterloom/ColorQuantizationAlgorithm.h>
#include <Corvane/Rasterloom/ColorProfileClass.h>
#include <Corvane/Rasterloom/ColorTransformationIntent.h>
#include <Corvane/Rasterloom/DitheringType.h>
#include <Corvane/Rasterloom/Codecs/ActionType.h>
#include <Corvane/Rasterloom/Codecs/CompressionType.h>
#include <Corvane/Rasterloom/Codecs/DisposalMethod.h>
#include <Corvane/Rasterloom/Codecs/LoadingMode.h>
#include <Corvane/Rasterloom/Codecs/PngFilter.h>
#include <Corvane/Rasterloom/Codecs/XmpNodeType.h>
#include <Corvane/Rasterloom/Host/RotateFlipType.h>
#include <Corvane/Rasterloom/PixelFormat.h>
#include <Corvane/Rasterloom/SynchronizationMode.h>
#include <Corvane/Rasterloom/ThreadPriority.h>
#include <Corvane/Rasterloom/Transforms/InterpolationMode.h>
#include <Corvane/Rasterloom/Transforms/ResizeMode.h>
#include <Corvane/Rasterloom/Unit.h>

#include <optional>
#include <span>
#include <string_view>
#include <type_traits>

namespace Corvane::Rasterloom {

/// One name of an enumeration. A value may have several; the first in the table is its proper one.
template <class E>
struct EnumName {
    E Value;               ///< the value
    std::string_view Name; ///< as in the source
};

/// All names of an enumeration, aliases last. Defined for each public enumeration.
template <class E>
std::span<const EnumName<E>> EnumNames() = delete;

template <>
RASTERLOOM_API std::span<const EnumName<PixelFormat>> EnumNames<PixelFormat>();
template <>
RASTERLOOM_API std::span<const EnumName<ColorSpace>> EnumNames<ColorSpace>();
template <>
RASTERLOOM_API std::span<const EnumName<ColorChannel>> EnumNames<ColorChannel>();
template <>
RASTERLOOM_API std::span<const EnumName<Unit>> EnumNames<Unit>();
template <>
RASTERLOOM_API std::span<const EnumName<BitmapChange>> EnumNames<BitmapChange>();
template <>
RASTERLOOM_API std::span<const EnumName<ColorPaletteType>> EnumNames<ColorPaletteType>();
template <>
RASTERLOOM_API std::span<const EnumName<ColorQuantizationAlgorithm>> EnumNames<ColorQuantizationAlgorithm>();
template <>
RASTERLOOM_API std::span<const EnumName<DitheringType>> EnumNames<DitheringType>();
template <>
RASTERLOOM_API std::span<const EnumName<ColorManagementEngine>> EnumNames<ColorManagementEngine>();
template <>
RASTERLOOM_API std::span<const EnumName<ColorTransformationIntent>> EnumNames<ColorTransformationIntent>();
template <>
RASTERLOOM_API std::span<const EnumName<ColorProfileClass>> EnumNames<ColorProfileClass>();
template <>
RASTERLOOM_API std::span<const EnumName<SynchronizationMode>> EnumNames<SynchronizationMode>();
template <>
RASTERLOOM_API std::span<const EnumName<ActivityStatus>> EnumNames<ActivityStatus>();
template <>
RASTERLOOM_API std::span<const EnumName<ThreadPriority>> EnumNames<ThreadPriority>();
template <>
RASTERLOOM_API std::span<const EnumName<Transforms::InterpolationMode>> EnumNames<Transforms::InterpolationMode>();
template <>
RASTERLOOM_API std::span<const EnumName<Transforms::ResizeMode>> EnumNames<Transforms::ResizeMode>();
template <>
RASTERLOOM_API std::span<const EnumName<Host::RotateFlipType>> EnumNames<Host::RotateFlipType>();
template <>
RASTERLOOM_API std::span<const EnumName<Codecs::ActionType>> EnumNames<Codecs::ActionType>();
template <>
RASTERLOOM_API std::span<const EnumName<Codecs::CompressionType>> EnumNames<Codecs::CompressionType>();
template <>
RASTERLOOM_API std::span<const EnumName<Codecs::DisposalMethod>> EnumNames<Codecs::DisposalMethod>();
template <>
RASTERLOOM_API std::span<const EnumName<Codecs::LoadingMode>> EnumNames<Codecs::LoadingMode>();
template <>
RASTERLOOM_API std::span<const EnumName<Codecs::PngFilter>> EnumNames<Codecs::PngFilter>();
template <>
RASTERLOOM_API std::span<const EnumName<Codecs::XmpNodeType>> EnumNames<Codecs::XmpNodeType>();

/// The proper name of a value; empty for a value without one.
template <class E>
requires std::is_enum_v<E> std::string_view ToString(E value) {
    for (const EnumName<E>& entry : EnumNames<E>()) {
        if (entry.Value == value) {
            return entry.Name;
        }
    }
    return {};
}

namespace Detail {

constexpr bool EqualsIgnoringCase(std::string_view a, std::string_view b) {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    if (a.size() != b.size()) {
        return false;
    }
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (lower(a[i]) != lower(b[i])) {
            return false;
        }
    }
    return true;
}

} // namespace Detail

/// The value of a name or an alias, in any mix of upper and lower case; nothing for an unknown name.
template <class E>
requires std::is_enum_v<E> std::optional<E> Parse(std::string_view name) {
    for (const EnumName<E>& entry : EnumNames<E>()) {
        if (Detail::EqualsIgnoringCase(entry.Name, name)) {
            return entry.Value;
        }
    }
    return std::nullopt;
}

} // namespace Corvane::Rasterloom
