#include "Common/SpaceUnitConverter.h"

#include "Common/EngineModule.h"
#include "ErrorHandling/Exceptions.h"
#include "Throws.h"

#include <gtest/gtest.h>

namespace ImagingFramework {
namespace {

// The units that hosts can name are in the tests of the public converter, rounding is in those of `Round`.
TEST(SpaceUnitConverter, WhatHostsCannotAskFor) {
    EXPECT_EQ(SpaceUnitConverter::ConvertToPixels(25400, LinearUnit::Micrometer, 72), 72);
    EXPECT_EQ(SpaceUnitConverter::ConvertToPixels(2, static_cast<LinearUnit>(77), 50), 100); // counts as inches
    EXPECT_DOUBLE_EQ(SpaceUnitConverter::ConvertFromPixels(7, 0, LinearUnit::Pixel), 7);
    EXPECT_DOUBLE_EQ(SpaceUnitConverter::ConvertUnitsToUnits(36, LinearUnit::Point, 0, LinearUnit::Document), 150);
    EXPECT_EQ(ThrownText<ArgumentOutOfRangeException>(
                  [] { SpaceUnitConverter::ConvertFromPixels(7, 1e-11, LinearUnit::Inch); }),
              "Argument is out of range (fDestDpi).");
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
