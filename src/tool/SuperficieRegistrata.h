#pragma once

#include "platform/PictureBox.h"
#include "player/CorniceParole.h"

#include <string>
#include <string_view>
#include <vector>

namespace sonnel {

/// A lyrics display that keeps what is drawn in the selection colour.
class SuperficieRegistrata : public PictureBox {
  public:
    explicit SuperficieRegistrata(Colour selezione) : selezione_(selezione) {}

    [[nodiscard]] const std::vector<std::string>& Cantato() const { return cantato_; }
    void Dimentica() { cantato_.clear(); }

    void Clear() override { cantato_.clear(); }
    void SetBackColor(Colour /*colour*/) override {}
    void SetForeColor(Colour colour) override { colore_ = colour; }
    void SetFont(const FontSpec& font) override { font_ = font; }
    [[nodiscard]] FontSpec Font() const override { return font_; }
    /// The places of the words do not matter here.
    [[nodiscard]] TextSize Measure(std::string_view /*text*/) const override { return {}; }
    void Print(int /*x*/, int /*y*/, std::string_view text) override {
        if (colore_ == selezione_) {
            cantato_.emplace_back(text);
        }
    }

  private:
    Colour selezione_;
    Colour colore_ = 0;
    FontSpec font_;
    std::vector<std::string> cantato_;
};

/// A window without extent around it.
class CorniceFinta : public CorniceParole {
  public:
    [[nodiscard]] int AltezzaBarra() const override { return 0; }
    [[nodiscard]] int AltezzaInterna() const override { return 0; }
    [[nodiscard]] bool ASchermoIntero() const override { return false; }
    [[nodiscard]] int LarghezzaParole() const override { return 0; }
    void DisponiParole(int /*top*/, int /*altezza*/) override {}
    void ColoreSfondo(Colour /*colore*/) override {}
};

}  // namespace sonnel
