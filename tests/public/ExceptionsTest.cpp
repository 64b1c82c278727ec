#include <Corvane/Rasterloom/Exceptions.h>

#include "Throws.h"

#include <gtest/gtest.h>

namespace Corvane::Rasterloom {
namespace {

TEST(Exceptions, DefaultTextsAndNameForms) {
    EXPECT_EQ(TimeoutException().get_Message(), "The time is out.");
    EXPECT_EQ(Exception().get_Message(), "");
    EXPECT_EQ(Codecs::MediaCorruptedException().get_Message(), "The media is corrupted.");
    EXPECT_EQ(CMInappropriateProfileException().get_Message(), CMOpenProfileException().get_Message());
    const std::string unexpected = UnexpectedException().get_Message();
    EXPECT_TRUE(unexpected.starts_with("Some unexpected error has occured. If you see this message, please contact "));
    EXPECT_EQ(unexpected.back(), '.');

    EXPECT_EQ(ObjectNotOpenedException("x").get_Message(), "Object \"x\" has not been opened.");
    EXPECT_EQ(BitmapEmptyException("x").get_Message(), "Bitmap \"x\" has not been filled up with data.");
    EXPECT_EQ(ColorPaletteEmptyException("x").get_Message(), "Color palette \"x\" has not been filled up with data.");
    EXPECT_EQ(BitmapLockedException("x").get_Message(), "Bitmap object \"x\" has been locked.");
    EXPECT_EQ(CMOpenProfileException("x").get_Message(), "Unable to open profile \"x\".");
    EXPECT_EQ(CMInappropriateProfileException("x").get_Message(),
              "The color space of \"x\" profile is not appropriate.");
    EXPECT_STREQ(AbortedException("as told").what(), "as told");
}

TEST(Exceptions, OneTreeAcrossTheLibraryBoundary) {
    // Raised inside the library, caught here by every base.
    EXPECT_THROW(Exception::ThrowManagedException(nullptr), Host::ArgumentNullException);
    EXPECT_THROW(Exception::ThrowManagedException(nullptr), Host::SystemException);
    EXPECT_THROW(throw BitmapEmptyException(), ObjectEmptyException);
    EXPECT_THROW(throw Codecs::JpegMarkerException(), Codecs::MediaProviderException);
    EXPECT_THROW(throw UnexpectedException(), Host::ApplicationException);
    EXPECT_THROW(throw Host::DirectoryNotFoundException(), Host::IOException);
    EXPECT_THROW(throw Host::ObjectDisposedException("Bitmap"), Host::InvalidOperationException);
    EXPECT_THROW(throw Host::ArgumentOutOfRangeException("index"), std::exception);
}

TEST(Exceptions, ArgumentsAndInnerFailures) {
    EXPECT_EQ(ThrownParameter<Host::ArgumentNullException>([] { Exception::GetManagedException(nullptr); }),
              "unmanagedException");
    const Host::ArgumentOutOfRangeException told("width", "New bitmap width should be non-negative.");
    EXPECT_EQ(told.get_ParamName(), "width");
    EXPECT_EQ(told.get_Message(), "New bitmap width should be non-negative.");
    EXPECT_EQ(Host::COMException("text", -7).get_ErrorCode(), -7);
    EXPECT_EQ(Host::ObjectDisposedException("Bitmap").get_ObjectName(), "Bitmap");

    const CMTransformException outer("outer", std::make_exception_ptr(Host::IOException("inner")));
    const CMTransformException copy = outer;
    EXPECT_EQ(copy.get_Message(), "outer");
    EXPECT_THROW(std::rethrow_exception(copy.get_InnerException()), Host::IOException);
    EXPECT_EQ(TimeoutException().get_InnerException(), nullptr);
    EXPECT_EQ(Exception::CreateErrorString(nullptr), "");
}

} // namespace
} // namespace Corvane::Rasterloom
