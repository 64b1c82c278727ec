#include "ErrorHandling/Exceptions.h"

#include <gtest/gtest.h>
#include <type_traits>

namespace ImagingFramework {
namespace {

static_assert(std::is_base_of_v<FileOpenException, FileNotFoundException>);
static_assert(std::is_base_of_v<IoException, FileOpenException> && std::is_base_of_v<SystemException, IoException>);
static_assert(std::is_base_of_v<MetaDataException, MultiFrameException>); // unlike the public class of that name
static_assert(std::is_base_of_v<ArgumentException, ArgumentNullPointerException>);

struct ThrowingPlace {
    void Raise() const { throw OutOfRangeException("thing"); }
};

TEST(Exceptions, CarryCodeTextPlaceAndType) {
    try {
        ThrowingPlace().Raise();
        FAIL();
    } catch (const Exception& e) {
        EXPECT_EQ(e.GetHresult(), -5616);
        EXPECT_EQ(e.GetExceptionStringRef(), "'thing' is out of range.");
        EXPECT_EQ(e.GetExceptionType(), ExceptionType::OutOfRangeException);
        EXPECT_EQ(e.GetSourceFileRef(), "ExceptionsTest");
        EXPECT_TRUE(e.GetFunctionRef().ends_with("ThrowingPlace::Raise")) << e.GetFunctionRef();
        EXPECT_GT(e.GetLine(), 0U);
        EXPECT_EQ(e.GetClassNameRef(), "OutOfRangeException");
    }
}

TEST(Exceptions, ComposeTheirTexts) {
    EXPECT_STREQ(ArgumentException("format", "Pixel format should be known.").what(),
                 "Argument has an unappropriate value (format). (Pixel format should be known.).");
    EXPECT_STREQ(ArgumentException().what(), "Argument has an unappropriate value.");
    EXPECT_STREQ(ArgumentOutOfRangeException("x", 5, 0, 3).what(),
                 "Argument 'x' is out of range. Current value is 5, but correct interval for the argument is [0, 3].");
    EXPECT_STREQ(ArgumentOutOfRangeException("x", 1.5, 0.0, 1.0).what(),
                 "Argument 'x' is out of range. Current value is 1.50, but correct interval for the argument is "
                 "[0.00, 1.00].");
    EXPECT_STREQ(UnsupportedPixelFormatException("abc").what(), "The specified pixel format is not supported (abc).");
    EXPECT_STREQ(FileCopyException("a", "b").what(), "Unable to copy 'a' file to 'b' file.");
    EXPECT_STREQ(InvalidTypeCastException("v", "t").what(), "Unable to cast variable v to type t.");
    EXPECT_EQ(AccessDeniedException(-9, "x").GetClassNameRef(), "PathNotFoundException");
    EXPECT_EQ(Exception("plain").GetHresult(), static_cast<std::int32_t>(0x80004005U));
}

TEST(Exceptions, MapPlatformCodes) {
    EXPECT_NO_THROW(ThrowWin32Exception(0, "text"));
    EXPECT_THROW(ThrowWin32Exception(2, "text"), FileNotFoundException);
    EXPECT_THROW(ThrowWin32Exception(3, "text"), PathNotFoundException);
    EXPECT_THROW(ThrowWin32Exception(5, "text"), AccessDeniedException);
    EXPECT_THROW(ThrowWin32Exception(123, "text"), InvalidNameException);
    EXPECT_THROW(ThrowWin32Exception(183, "text"), CreateFileException);
    EXPECT_THROW(ThrowWin32Exception(77777, "text"), Win32Exception);
    try {
        ThrowSystemError(ENOENT, "Unable to open file 'x'.");
        FAIL();
    } catch (const FileNotFoundException& e) {
        EXPECT_EQ(e.GetHresult(), -7);
        EXPECT_STREQ(e.what(), "Unable to open file 'x'. No such file or directory");
    }
}

} // namespace
} // namespace ImagingFramework
