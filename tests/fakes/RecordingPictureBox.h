#pragma once

#include "platform/PictureBox.h"
#include "platform/Text.h"

#include <algorithm>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace sonnel::test {

/// A drawing surface that keeps what was printed since it was last cleared. A character of a font
/// of n points is 10 n twips wide and 20 n high. Of `sizes`, when there are any (ascending), a font
/// takes the first that is not below the one asked for, else the last.
class RecordingPictureBox : public PictureBox {
  public:
    struct Printed {
        int x;
        int y;
        Colour colour;
        std::string text;
    };

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
        if (++fontsSet > 1000) {
            throw std::runtime_error("the font is being set for ever");
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
        printed.push_back({x, y, foreColour, std::string(text)});
    }

    /// What was printed, as "colour text" or "colour text @x,y".
    std::vector<std::string> Words(bool places = false) const {
        std::vector<std::string> words;
        for (const Printed& print : printed) {
            const std::string at = " @" + std::to_string(print.x) + "," + std::to_string(print.y);
            words.push_back(std::to_string(print.colour) + " " + print.text + (places ? at : ""));
        }
        return words;
    }

    FontSpec font{"", 10, false};
    std::vector<double> sizes;
    Colour backColour = -1;
    Colour foreColour = -1;
    Colour cleared = -1;  ///< the colour of the surface
    std::vector<Printed> printed;
    int fontsSet = 0;
};

}  // namespace sonnel::test
