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
    const std::vector<std::pair<bool, char>> commands{
        {state.FileLoad, 'O'},       {state.VisCalibratura, 'C'}, {state.SoundPlay, 'P'},
        {state.SoundPause, 'A'},     {state.SoundStop, 'S'},      {state.VisInfo, 'I'},
        {state.BottoneOpzioni, 'p'}, {state.Cursore, 'L'},        {state.TimerCursore, 'T'}};
    std::string usable;
    for (const auto& [on, letter] : commands) {
        usable += on ? std::string(1, letter) : "";
    }
    return usable;
}

/// The main window around the lyrics, as playback leaves it. Lengths in twips.
class FakeMainWindow : public CorniceParole, public VistaKaraoke {
  public:
    int AltezzaBarra() const override { return barHeight; }
    int AltezzaInterna() const override { return innerHeight; }
    int LarghezzaParole() const override { return wordsWidth; }
    void DisponiParole(int top, int height) override { words = {top, height}; }
    void ColoreSfondo(Colour colour) override { background = colour; }

    void Titolo(const std::string& title) override { captions.push_back(title); }
    void Durata(std::int32_t seconds, const std::string& text) override {
        sliderMax = seconds;
        lengthText = text;
    }
    void Cursore(std::int32_t seconds) override { slider = seconds; }
    void Posizione(const std::string& text) override { positionText = text; }
    void AnimaLogo(bool running) override { log.emplace_back(running ? "logo on" : "logo off"); }
    void PrimaImmagineLogo() override { log.emplace_back("first image"); }
    void Comandi(const StatoComandi& state) override {
        commands = state;
        log.emplace_back("commands");
    }
    void Disabilita(bool StatoComandi::*command) override { commands.*command = false; }

    int barHeight = 600;
    int innerHeight = 5000;
    int wordsWidth = 4000;
    std::pair<int, int> words;  ///< top and height of the lyrics area
    Colour background = -1;

    std::vector<std::string> captions;
    std::int32_t sliderMax = -1;
    std::int32_t slider = -1;
    std::string lengthText;
    std::string positionText;
    StatoComandi commands;
    std::vector<std::string> log;  ///< what happened to the logo and the commands, in order
};

}  // namespace sonnel::test
