#include <Corvane/Rasterloom/Exceptions.h>
#include <Corvane/Rasterloom/UnitConverter.h>
#include <Corvane/Rasterloom/UnitConverterHandler.h>
#include <Corvane/Rasterloom/UnitConverterObject.h>

#include "Throws.h"

#include <gtest/gtest.h>
#include <limits>

namespace Corvane::Rasterloom {
namespace {

TEST(UnitConverter, EveryUnitAgainstTheInch) {
    const struct {
        Unit Name;
        float PerInch;
    } table[] = {{Unit::Inch, 1.0F},    {Unit::Mm, 25.4F},     {Unit::Cm, 2.54F},
                 {Unit::M, 0.0254F},    {Unit::Point, 72.0F},  {Unit::Pica, 6.0F},
                 {Unit::Column, 2.63F}, {Unit::Twip, 1440.0F}, {Unit::Document, 300.0F}};
    for (const auto& entry : table) {
        EXPECT_FLOAT_EQ(UnitConverter::ConvertUnitsToUnits(96, 1, Unit::Inch, entry.Name), entry.PerInch);
        EXPECT_FLOAT_EQ(UnitConverter::ConvertUnitsToPixels(100, entry.PerInch * 3, entry.Name), 300);
        EXPECT_FLOAT_EQ(UnitConverter::ConvertPixelsToUnits(100, 200, entry.Name), entry.PerInch * 2);
    }
    EXPECT_EQ(UnitConverter::ConvertUnitsToPixels(72, -0.5, Unit::Pixel), 0);
    EXPECT_EQ(UnitConverter::ConvertUnitsToUnits(10, 10.9, Unit::Pixel, Unit::Inch), 1); // cut first
    EXPECT_EQ(UnitConverter::ConvertUnitsToUnits(10, 10.5, Unit::Pixel, Unit::Pixel), 11);
}

TEST(UnitConverter, Failures) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (const double resolution : {0.0, -1.0, nan}) {
        EXPECT_EQ(ThrownParameter<Host::ArgumentOutOfRangeException>(
                      [&] { (void)UnitConverter::ConvertUnitsToPixels(resolution, 1, Unit::Inch); }),
                  "resolution");
    }
    const auto unnamed = static_cast<Unit>(10);
    EXPECT_EQ(ThrownText<Host::ArgumentException>([&] { (void)UnitConverter::ConvertPixelsToUnits(96, 1, unnamed); }),
              "Enumeration value has an inappropriate value.");
    EXPECT_EQ(
        ThrownText<Host::ArgumentException>([] { (void)UnitConverter::ConvertUnitsToPixels(96, 1e9, Unit::Inch); }),
        "You specify units value that cannot be converted to pixels.");
    EXPECT_EQ(ThrownText<Host::ArgumentException>([] { (void)UnitConverter::ConvertPixelsToUnits(96, 1e10, Unit::Mm); }),
              "You specify pixels value that cannot be converted to units.");
    EXPECT_THROW((void)UnitConverter::ConvertUnitsToUnits(96, 1e9, Unit::Inch, Unit::Pixel), Host::OverflowException);
}

/// The same code on both bases.
template <class Base>
class Sized : public Base {
public:
    ~Sized() override { Base::DisposeFinally(); }

protected:
    float GetHorizontalResolution() override { return m_horizontal; }
    void SetHorizontalResolution(float value) override { m_horizontal = value; }
    float GetVerticalResolution() override { return m_vertical; }
    void SetVerticalResolution(float value) override { m_vertical = value; }

private:
    float m_horizontal = 100;
    float m_vertical = 50;
};

template <class T>
class UnitConverterBases : public ::testing::Test {};
using Bases = ::testing::Types<UnitConverterObject, UnitConverterHandler>;
TYPED_TEST_SUITE(UnitConverterBases, Bases);

TYPED_TEST(UnitConverterBases, UnitsAndResolutions) {
    Sized<TypeParam> object;
    EXPECT_EQ(object.get_Unit(), Unit::Pixel);
    EXPECT_EQ(object.HorizontalUnitsToPixels(2.5F), 3);
    object.set_Unit(Unit::Inch);
    EXPECT_EQ(object.HorizontalUnitsToPixels(2), 200);
    EXPECT_EQ(object.VerticalUnitsToPixels(2), 100);
    EXPECT_FLOAT_EQ(object.HorizontalPixelsToUnits(25), 0.25F);
    EXPECT_FLOAT_EQ(object.VerticalPixelsToUnits(25), 0.5F);
    object.set_HorizontalResolution(300);
    object.set_VerticalResolution(72);
    EXPECT_FLOAT_EQ(object.HorizontalPixelsToUnits(150), 0.5F);
    EXPECT_FLOAT_EQ(object.get_VerticalResolution(), 72);

    object._SaveUnit(Unit::Cm);
    EXPECT_EQ(object.get_Unit(), Unit::Cm);
    object._RestoreUnit();
    EXPECT_EQ(object.get_Unit(), Unit::Inch);
    object._SaveUnit(Unit::Cm);
    object.set_Unit(Unit::Twip); // loses the saved one
    object._RestoreUnit();
    EXPECT_EQ(object.get_Unit(), Unit::Twip);
    EXPECT_THROW(object.set_Unit(static_cast<Unit>(10)), Host::ArgumentException);

    object.Lock();
    EXPECT_THROW((void)object.get_Unit(), ObjectLockedException);
    EXPECT_THROW((void)object.HorizontalPixelsToUnits(1), ObjectLockedException);
    EXPECT_EQ(object._VerticalUnitsToPixels(1440), 72);
    object.Unlock();
}

} // namespace
} // namespace Corvane::Rasterloom
