#include "Common/AnsiCodePage.h"
#include "Common/Utf8.h"

#include <gtest/gtest.h>

namespace ImagingFramework {
namespace {

std::string_view AsText(const std::vector<std::byte>& bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

TEST(AnsiCodePage, EveryByteSurvives) {
    std::vector<std::byte> all(256);
    for (std::size_t i = 0; i < all.size(); ++i) {
        all[i] = static_cast<std::byte>(i);
    }
    const std::string text = AnsiToUtf8(all);
    EXPECT_EQ(Utf8ToAnsi(text), all);
    EXPECT_TRUE(IsUtf8(text));
    // As python3 decodes cp1252; it has nothing for the five bytes that stand as control characters here.
    EXPECT_EQ(AnsiToUtf8(std::span(all).subspan(0x80, 32)),
              "€\u0081‚ƒ„…†‡ˆ‰Š‹Œ\u008DŽ\u008F\u0090‘’“”•–—˜™š›œ\u009DžŸ");
    EXPECT_EQ(AnsiToUtf8(std::span(all).subspan(0xFC, 4)), "üýþÿ");
}

TEST(AnsiCodePage, WhatItCannotHoldBecomesAQuestionMark) {
    EXPECT_EQ(AsText(Utf8ToAnsi("a Ω 漢 😀 \u0080.")), "a ? ? ? ?.");
    EXPECT_EQ(AsText(Utf8ToAnsi("\xE4 \xE2\x82 \xC0\x80 \xED\xA0\x80 \xF4\x90\x80\x80")), "? ? ?? ??? ????");
    EXPECT_EQ(AsText(Utf8ToAnsi("é")), "\xE9");
}

TEST(Utf8, CodePointsAtTheBordersOfTheirLengths) {
    for (const char32_t codePoint :
         {0x00U, 0x7FU, 0x80U, 0x7FFU, 0x800U, 0xD7FFU, 0xE000U, 0xFFFFU, 0x10000U, 0x10FFFFU}) {
        std::string text;
        AppendUtf8(text, codePoint);
        std::string_view rest = text;
        EXPECT_TRUE(TakeCodePoint(rest) == codePoint) << text;
        EXPECT_TRUE(rest.empty()) << text;
    }
    EXPECT_EQ(FirstCodePoints("aé漢😀z", 4), "aé漢😀");
    EXPECT_EQ(FirstCodePoints("ab", 3), "ab");
    std::string replaced;
    AppendUtf8(replaced, 0xD800);
    AppendUtf8(replaced, 0x110000);
    EXPECT_EQ(replaced, "\uFFFD\uFFFD");
}

} // namespace
} // namespace ImagingFramework
