#pragma once

#include "player/CorniceParole.h"
#include "player/VistaKaraoke.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace sonnel::test {

/// The usable commands, one letter each: Open, Calibrate, Play, pAuse, Stop, Info, oPtions button,
/// sLider, Timer of the slider.
inline std::string Usable(const StatoComandi& state) {
    std::string usable = "OCPASIpLT";
    auto letter = usable.begin();
    for (const bool on :
         {state.FileLoad, state.VisCalibratura, state.SoundPlay, state.SoundPause, state.SoundStop,
          state.VisInfo, state.BottoneOpzioni, state.Cursore, state.TimerCursore}) {
        letter = on ? letter + 1 : usable.erase(letter);
    }
    return usable;
}

/// The main window around the lyrics, as playback leaves it. Lengths in twips.
class FakeMainWindow : public CorniceParole, public VistaKaraoke {
  public:
    int AltezzaBarra() const override { return 600; }
    int AltezzaInterna() const override { return innerHeight; }
    bool ASchermoIntero() const override { return false; }
    int LarghezzaParole() const override { return wordsWidth; }
    void DisponiParole(int top, int height) override { words = {top, height}; }
    void ColoreSfondo(Colour colour) override { background = colour; }

    void Titolo(const std::string& title) override { captions.push_back(title); }
    void Durata(std::int32_t seconds, const std::string& text) override {
        length = {seconds, text};
    }
    void Cursore(std::int32_t seconds) override { slider = seconds; }
    void Posizione(const std::string& text) override { positionText = text; }
    void Canto(const std::string& text) override { singing = text; }
    void AnimaLogo(bool running) override { log.emplace_back(running ? "logo on" : "logo off"); }
    void PrimaImmagineLogo() override { log.emplace_back("first image"); }
    void Comandi(const StatoComandi& state) override {
        commands = state;
        log.emplace_back("commands");
    }
    void BranoFinito() override { log.emplace_back("ended"); }
    void Disabilita(bool StatoComandi::*command) override { commands.*command = false; }

    int innerHeight = 5000;
    int wordsWidth = 4000;
    std::pair<int, int> words;  ///< top and height of the lyrics area
    Colour background = -1;

    std::vector<std::string> captions;
    std::pair<std::int32_t, std::string> length;
    std::int32_t slider = -1;
    std::string positionText;
    std::string singing;
    StatoComandi commands;
    std::vector<std::string> log;  ///< what happened to the logo and the commands, in order
};

}  // namespace sonnel::test
