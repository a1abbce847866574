#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace sonnel {

/// A colour of 24 bits, blue in the highest byte and red in the lowest.
using Colour = std::int32_t;

struct FontSpec {
    std::string name;
    double size = 0;  ///< points
    bool bold = false;
    bool operator==(const FontSpec&) const = default;
};

struct TextSize {
    double width = 0;   ///< twips; of the widest line
    double height = 0;  ///< twips
};

/// A drawing surface in twips. It keeps its picture when it is covered, moved or resized.
class PictureBox {
  public:
    virtual ~PictureBox() = default;
    /// Fills the whole surface with its background colour.
    virtual void Clear() = 0;
    virtual void SetBackColor(Colour colour) = 0;
    virtual void SetForeColor(Colour colour) = 0;
    virtual void SetFont(const FontSpec& font) = 0;
    /// The font in use, its size as the platform realised it.
    [[nodiscard]] virtual FontSpec Font() const = 0;
    /// Size of a text in the current font; lines are separated by CR LF.
    [[nodiscard]] virtual TextSize Measure(std::string_view text) const = 0;
    /// Prints one line with its top left corner at (x, y) in the text colour, on a transparent
    /// background.
    virtual void Print(int x, int y, std::string_view text) = 0;
};

}  // namespace sonnel
