#pragma once

#include <vector>

namespace sonnel {

/// A rectangle of the desktop, in twips from its origin.
struct Rectangle {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
    bool operator==(const Rectangle&) const = default;
};

/// The door to the screen. All lengths in twips (1/1440 inch).
class Screen {
  public:
    virtual ~Screen() = default;
    [[nodiscard]] virtual int Width() const = 0;
    [[nodiscard]] virtual int Height() const = 0;
    /// Every screen of the desktop, the primary one first.
    [[nodiscard]] virtual std::vector<Rectangle> Screens() const = 0;
    /// Twips to one logical pixel: 15 at 96 dpi.
    [[nodiscard]] virtual double TwipsPerPixel() const = 0;
};

}  // namespace sonnel
