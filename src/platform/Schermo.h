#pragma once

namespace sonnel {

/// The door to the screen. All lengths in twips (1/1440 inch).
class Schermo {
  public:
    virtual ~Schermo() = default;
    [[nodiscard]] virtual int Width() const = 0;
    [[nodiscard]] virtual int Height() const = 0;
    /// Twips to one logical pixel: 15 at 96 dpi.
    [[nodiscard]] virtual double TwipsPerPixel() const = 0;
};

}  // namespace sonnel
