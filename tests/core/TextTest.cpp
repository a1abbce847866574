#include "platform/Numbers.h"
#include "platform/Text.h"
#include "platform/files/LineReader.h"

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include <gmock/gmock.h>

namespace sonnel {
namespace {

using ::testing::ElementsAre;

TEST(Text, CountsAndCutsByCodePoints) {
    const std::vector<std::tuple<std::string, std::size_t, std::string>> cases{
        {"\u00E8\u20AC\U0001F3A4!", 4, "\u00E8\u20AC"},
        {"\xC3(x", 3, "\xC3("},           // a lead byte without its tail
        {"\xE2\x82", 2, "\xE2\x82"},      // cut short
        {"\xC0\xAF", 2, "\xC0\xAF"},      // overlong
        {"\xED\xA0\x80", 3, "\xED\xA0"},  // surrogate
        {"\xF4\x90\x80\x80", 4, "\xF4\x90"}};
    for (const auto& [text, characters, firstTwo] : cases) {
        EXPECT_EQ(CodePoints(text), characters) << text;
        EXPECT_EQ(FirstCodePoints(text, 2), firstTwo) << text;
    }
    EXPECT_FALSE(IsValidUtf8("caff\xE8"));
}

TEST(Text, EveryByteOfAFileSurvives) {
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte) {
        bytes += static_cast<char>(byte);
    }
    const std::string text = FromWindows1252(bytes);
    EXPECT_TRUE(IsValidUtf8(text));
    EXPECT_EQ(ToWindows1252(text), bytes);
    EXPECT_EQ(EncodeFileText(DecodeFileText(bytes)), bytes);
    EXPECT_EQ(FromWindows1252("\x80 \x93perch\xE9\x94 \x81"),
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

TEST(Text, FoldsCase) {
    using Pairs = std::vector<std::pair<std::string, std::string>>;
    const Pairs same{{"SONG.LYK", "song.lyk"},
                     {"\u00C8 PI\u00D9", "\u00E8 pi\u00F9"},
                     {"\u0141\u00D3D\u0179 \u0218", "\u0142\u00F3d\u017A \u0219"},
                     {"\u0391\u0386\u03A3", "\u03B1\u03AC\u03C2"},
                     {"\u0401\u0416\u042F", "\u0451\u0436\u044F"}};
    for (const auto& [capital, small] : same) {
        EXPECT_EQ(FoldCase(capital), FoldCase(small)) << capital;
    }
    const Pairs different{
        {"\u00D7", "\u00F7"}, {"\xC3X", "\xC3y"}, {"[", "{"}, {"\u0100", "\u0102"}};
    for (const auto& [one, other] : different) {
        EXPECT_NE(FoldCase(one), FoldCase(other)) << one;
    }
}

std::vector<std::string> Lines(std::string_view text, LineEnds ends = LineEnds::CrOnly) {
    std::vector<std::string> lines;
    LineReader reader(text, ends);
    while (const auto line = reader.Next()) {
        lines.emplace_back(*line);
    }
    return lines;
}

TEST(LineReader, EndsLinesAtCrLfAndCr) {
    EXPECT_THAT(Lines("a\r\nb\rc"), ElementsAre("a", "b", "c"));
    EXPECT_THAT(Lines("a\nb\r\n"), ElementsAre("a\nb"));
    EXPECT_THAT(Lines(""), ElementsAre(""));
    EXPECT_THAT(Lines("\r\r\n\n"), ElementsAre("", "", "\n"));
    EXPECT_THAT(Lines("a\nb\r\n\rc\n", LineEnds::AlsoLf), ElementsAre("a", "b", "", "c"));
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
    using Limits = std::numeric_limits<std::int32_t>;
    const std::vector<std::pair<double, std::int32_t>> cases{{0.5, 0},
                                                             {1.5, 2},
                                                             {-1.5, -2},
                                                             {2.4999, 2},
                                                             {10.6, 11},
                                                             {std::nan(""), 0},
                                                             {1e12, Limits::max()},
                                                             {-1e12, Limits::min()}};
    for (const auto& [value, rounded] : cases) {
        EXPECT_EQ(RoundHalfEven<std::int32_t>(value), rounded) << value;
    }
}

}  // namespace
}  // namespace sonnel
