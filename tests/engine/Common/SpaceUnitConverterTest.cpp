#include "Common/SpaceUnitConverter.h"

#include "Common/EngineModule.h"
#include "Common/Numeric.h"

#include <gtest/gtest.h>
#include <limits>

namespace ImagingFramework {
namespace {

TEST(SpaceUnitConverter, RoundsHalvesUpAndRefusesWhatDoesNotFit) {
    EXPECT_EQ(SpaceUnitConverter::ConvertToPixels(1.5, LinearUnit::Pixel, 0), 2);
    EXPECT_EQ(SpaceUnitConverter::ConvertToPixels(2.5, LinearUnit::Pixel, 0), 3);
    EXPECT_EQ(SpaceUnitConverter::ConvertToPixels(-0.5, LinearUnit::Pixel, 0), 0);
    EXPECT_EQ(SpaceUnitConverter::ConvertToPixels(2147483647.4, LinearUnit::Pixel, 0), 2147483647);
    EXPECT_THROW(SpaceUnitConverter::ConvertToPixels(2147483647.5, LinearUnit::Pixel, 0), OverflowException);
    EXPECT_THROW(SpaceUnitConverter::ConvertToPixels(1e6, LinearUnit::M, 300), OverflowException);
    EXPECT_THROW(Round(std::numeric_limits<double>::quiet_NaN()), OverflowException);
}

TEST(SpaceUnitConverter, Units) {
    EXPECT_EQ(SpaceUnitConverter::ConvertToPixels(10, LinearUnit::Mm, 254), 100);
    EXPECT_EQ(SpaceUnitConverter::ConvertToPixels(25400, LinearUnit::Micrometer, 72), 72);
    EXPECT_EQ(SpaceUnitConverter::ConvertToPixels(2, static_cast<LinearUnit>(77), 50), 100); // counts as inches
    EXPECT_DOUBLE_EQ(SpaceUnitConverter::ConvertFromPixels(300, 100, LinearUnit::Twip), 4320);
    EXPECT_DOUBLE_EQ(SpaceUnitConverter::ConvertFromPixels(7, 0, LinearUnit::Pixel), 7);
    EXPECT_THROW(SpaceUnitConverter::ConvertFromPixels(7, 1e-11, LinearUnit::Inch), ArgumentOutOfRangeException);
    EXPECT_DOUBLE_EQ(SpaceUnitConverter::ConvertUnitsToUnits(36, LinearUnit::Point, 0, LinearUnit::Document), 150);
    EXPECT_DOUBLE_EQ(SpaceUnitConverter::ConvertUnitsToUnits(2.6, LinearUnit::Inch, 100, LinearUnit::Pixel), 260);
    // From pixels, the fraction is lost first.
    EXPECT_DOUBLE_EQ(SpaceUnitConverter::ConvertUnitsToUnits(10.9, LinearUnit::Pixel, 10, LinearUnit::Inch), 1);
}

TEST(EngineModule, InitializesOnce) {
    Initialize();
    EXPECT_EQ(GetLzwSupport(), 1);
    EXPECT_EQ(GetOmpSupport(), 0);
    EXPECT_GE(GetProcessorCount(), 1);
    SetOmpSupport(5);
    Initialize();
    EXPECT_EQ(GetOmpSupport(), 1);
    SetOmpSupport(0);
}

} // namespace
} // namespace ImagingFramework
