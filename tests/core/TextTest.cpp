#include "platform/Numbers.h"
#include "platform/Text.h"

#include <cmath>
#include <cstdint>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace sonnel {
namespace {

TEST(Text, CountsAndCutsByCodePoints) {
    const std::vector<std::tuple<std::string, std::size_t, std::string>> cases{
        {"\u00E8\u20AC\U0001F3A4!", 4, "\u00E8\u20AC"},
        {"\xC3(x", 3, "\xC3("},           // a lead byte without its tail
        {"\xE2\x82", 2, "\xE2\x82"},      // cut short
        {"\xE0\x80\xAF", 3, "\xE0\x80"},  // overlong
        {"\xED\xA0\x80", 3, "\xED\xA0"},  // surrogate
        {"\xF4\x90\x80\x80", 4, "\xF4\x90"}};
    for (const auto& [text, characters, firstTwo] : cases) {
        EXPECT_EQ(CodePoints(text), characters) << text;
        EXPECT_EQ(FirstCodePoints(text, 2), firstTwo) << text;
    }
}

TEST(Text, EveryByteOfAFileSurvives) {
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte) {
        bytes += static_cast<char>(byte);
    }
    EXPECT_EQ(EncodeFileText(DecodeFileText(bytes)), bytes);
    EXPECT_EQ(DecodeFileText("\x80 \x93perch\xE9\x94 \x81"),
              "\u20AC \u201Cperch\u00E9\u201D \u0081");
}

TEST(Text, WhatTheCodePageLacksIsWrittenAsUtf8) {
    for (const std::string text :
         {"\u0416\u0438\u0437\u043D\u044C", "\u0080", "a\xFFz", "\u00EF\u00BB\u00BFseems marked"}) {
        const std::string bytes = EncodeFileText(text);
        EXPECT_EQ(bytes, "\xEF\xBB\xBF" + text);
        EXPECT_EQ(DecodeFileText(bytes), text);
    }
}

TEST(Text, FoldsCaseByCodePoint) {
    const std::vector<std::pair<std::string, std::string>> cases{
        {"AZaz@[`{", "azaz@[`{"},
        {"\u00C8 PI\u00D9 \u0141\u00D3D\u0179", "\u00E8 pi\u00F9 \u0142\u00F3d\u017A"},
        {"\u0391\u0386\u03A3 \u0401\u0416\u042F", "\u03B1\u03AC\u03C3 \u0451\u0436\u044F"},
        {"\u00D7\u00F7\u00DF", "\u00D7\u00F7\u00DF"},
        {"\xC3X\xFF", "\xC3x\xFF"}};
    for (const auto& [text, folded] : cases) {
        EXPECT_EQ(FoldCase(text), folded);
    }
}

TEST(Numbers, ReadsTheNumberATextBeginsWith) {
    const std::vector<std::pair<std::string, std::int16_t>> cases{
        {"", 0},  {"00150", 150}, {" \t 1", 1}, {"2.7", 3}, {"2.5", 2},       {"-.6", -1},
        {".", 0}, {"-4x", -4},    {"+7", 7},    {"+-7", 0}, {"40000", 32767}, {"-40000", -32768}};
    for (const auto& [text, number] : cases) {
        EXPECT_EQ(ReadInteger<std::int16_t>(text), number) << text;
    }
}

TEST(Numbers, RoundsHalvesToEven) {
    const std::vector<std::pair<double, std::int32_t>> cases{
        {0.5, 0}, {1.5, 2}, {-1.5, -2}, {10.6, 11}, {std::nan(""), 0}};
    for (const auto& [value, rounded] : cases) {
        EXPECT_EQ(RoundHalfEven<std::int32_t>(value), rounded) << value;
    }
    EXPECT_EQ(RoundHalfEven<std::int16_t>(1e12), 32767);
    EXPECT_EQ(RoundHalfEven<std::int16_t>(-1e12), -32768);
}

}  // namespace
}  // namespace sonnel
