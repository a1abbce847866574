#pragma once

#include "platform/PictureBox.h"
#include "platform/Text.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace sonnel::test {

/// A drawing surface that keeps what was printed since it was last cleared. A character of a font
/// of n points is 10 n twips wide and 20 n high. Of `sizes`, when there are any (ascending), a font
/// takes the first that is not below the one asked for, else the last.
class RecordingPictureBox : public PictureBox {
  public:
    void Clear() override {
        printed.clear();
        cleared = backColour;
    }
    void SetBackColor(Colour colour) override { backColour = colour; }
    void SetForeColor(Colour colour) override { foreColour = colour; }
    void SetFont(const FontSpec& wanted) override {
        font = wanted;
        if (!sizes.empty()) {
            const auto size = std::lower_bound(sizes.begin(), sizes.end(), wanted.size);
            font.size = size != sizes.end() ? *size : sizes.back();
        }
    }
    FontSpec Font() const override { return font; }
    TextSize Measure(std::string_view text) const override {
        int lines = 0;
        std::size_t characters = 0;
        for (std::size_t start = 0; start <= text.size(); ++lines) {
            const std::size_t end = std::min(text.find("\r\n", start), text.size());
            characters = std::max(characters, CodePoints(text.substr(start, end - start)));
            start = end + 2;
        }
        return {10 * font.size * static_cast<double>(characters), 20 * font.size * lines};
    }
    void Print(int x, int y, std::string_view text) override {
        printed.emplace_back(std::to_string(foreColour) + " " + std::string(text),
                             " @" + std::to_string(x) + "," + std::to_string(y));
    }

    /// What was printed, as "colour text" or "colour text @x,y".
    std::vector<std::string> Words(bool places = false) const {
        std::vector<std::string> words;
        for (const auto& [word, place] : printed) {
            words.push_back(places ? word + place : word);
        }
        return words;
    }

    FontSpec font{"", 10, false};
    std::vector<double> sizes;
    Colour backColour = -1;
    Colour foreColour = -1;
    Colour cleared = -1;                                       ///< the colour of the surface
    std::vector<std::pair<std::string, std::string>> printed;  ///< and where
};

}  // namespace sonnel::test
