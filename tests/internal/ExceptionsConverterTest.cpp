#include "ErrorHandling/Exceptions.h"

#include <Corvane/Rasterloom/Exceptions.h>

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <typeindex>

namespace Corvane::Rasterloom {
namespace {

namespace Engine = ImagingFramework;

/// An engine failure of any number.
struct Numbered : Engine::Exception {
    explicit Numbered(std::uint32_t type, std::int32_t code = -1)
        : Engine::Exception(Engine::ExceptionInfo{static_cast<Engine::ExceptionType>(type), "Numbered", code,
                                                  "engine text", Engine::SourceLocation::current()}) {}
};

struct Converted {
    std::type_index Class = typeid(void);
    std::string Text;
};

Converted Convert(const Engine::Exception& engine) {
    try {
        Exception::ThrowManagedException(&engine);
    } catch (const Host::Exception& failure) {
        return {typeid(failure), failure.get_Message()};
    }
}

TEST(ExceptionsConverter, EveryNumberHasItsClass) {
    std::map<std::uint32_t, std::type_index> expected = {
        {1, typeid(Host::SystemException)},
        {3, typeid(Win32Exception)},
        {14, typeid(Host::FileNotFoundException)},
        {15, typeid(Host::DirectoryNotFoundException)},
        {16, typeid(Host::UnauthorizedAccessException)},
        {17, typeid(Host::NotSupportedException)},
        {21, typeid(CMException)},
        {22, typeid(CMOpenProfileException)},
        {23, typeid(CMTransformException)},
        {24, typeid(CMAdobeModuleLoadException)},
        {25, typeid(CMInappropriateProfileException)},
        {26, typeid(Host::ArgumentException)},
        {27, typeid(ColorPaletteEmptyException)},
        {29, typeid(UnsupportedPixelFormatException)},
        {32, typeid(UnexpectedException)},
        {33, typeid(Host::ArgumentException)},
        {34, typeid(Host::ArgumentNullException)},
        {35, typeid(Host::ArgumentOutOfRangeException)},
        {36, typeid(ObjectEmptyException)},
        {37, typeid(Host::InvalidCastException)},
        {38, typeid(TimeoutException)},
        {39, typeid(AbortedException)},
        {40, typeid(Codecs::MediaProviderException)},
        {41, typeid(Codecs::JpegMarkerException)},
        {43, typeid(Codecs::MediaUnsupportedException)},
        {44, typeid(Codecs::MediaCorruptedException)},
        {45, typeid(Host::COMException)},
        {49, typeid(Codecs::MultiFrameException)},
        {55, typeid(Host::OverflowException)},
    };
    for (const std::uint32_t io : {4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 18, 19, 31}) {
        expected.emplace(io, typeid(Host::IOException));
    }
    for (const std::uint32_t plain : {0, 20, 28, 30, 42, 46, 47, 48, 50, 51, 52, 53, 54, 56}) {
        expected.emplace(plain, typeid(Exception));
    }
    for (const auto& [type, wanted] : expected) {
        const Converted converted = Convert(Numbered(type));
        EXPECT_EQ(converted.Class, wanted) << type << ": " << converted.Class.name();
        EXPECT_EQ(converted.Text, "engine text") << type;
    }
    EXPECT_EQ(expected.size() + 1, 57U); // 0 to 56, but for 2

    const Converted memory = Convert(Engine::MemoryException());
    EXPECT_EQ(memory.Class, std::type_index(typeid(UnexpectedException)));
    EXPECT_EQ(memory.Text, "Unable to commit memory.");
    EXPECT_EQ(Convert(Numbered(2)).Text, "Unable to commit memory.");
}

TEST(ExceptionsConverter, EngineTextsReachTheHost) {
    EXPECT_EQ(Convert(Engine::TimeOutException()).Text, "Timeout is exceeded.");
    EXPECT_EQ(Convert(Engine::NotInitializedException("Reader")).Text, "Reader is not initialized.");
    EXPECT_EQ(Convert(Engine::ArgumentException("format", "Pixel format should be known.")).Text,
              "Argument has an unappropriate value (format). (Pixel format should be known.).");
    const Numbered com(45, -4242);
    try {
        Exception::ThrowManagedException(&com);
    } catch (const Host::COMException& failure) {
        EXPECT_EQ(failure.get_ErrorCode(), -4242);
    }
    const Numbered null(34);
    try {
        Exception::ThrowManagedException(&null);
    } catch (const Host::ArgumentException& failure) {
        EXPECT_EQ(failure.get_ParamName(), "");
    }
}

} // namespace
} // namespace Corvane::Rasterloom
