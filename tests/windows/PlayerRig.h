#pragma once

#include "windows/Look.h"

#include "fakes/ClockedEvents.h"
#include "fakes/FakeShell.h"
#include "fakes/MemoryRegistry.h"
#include "fakes/OtherWindows.h"
#include "fakes/ScriptedMsgBox.h"
#include "fakes/SequencerRig.h"
#include "platform/qt/QtSystem.h"
#include "player/window/frmKaraoke.h"
#include "settings/Impostazioni.h"

#include <QTest>
#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace sonnel::test {

/// A synthesizer that keeps nothing, however long it plays.
class SilentSynth : public Synthesizer {
  public:
    std::optional<Error> Prepare(int /*sampleRate*/) override { return std::nullopt; }
    void Reset() noexcept override {}
    bool PlaysDrums(int) noexcept override { return false; }
    void ChannelMessage(std::uint8_t, std::uint8_t, std::uint8_t) noexcept override {}
    void SystemExclusive(std::span<const std::uint8_t>) noexcept override {}
    void AllSoundOff() noexcept override {}
    void Render(std::span<float> out) noexcept override { std::ranges::fill(out, 0.0F); }
};

/// The screens, of which the last may be taken for gone.
class FewerScreens : public QtScreen {
  public:
    std::vector<Rectangle> Screens() const override {
        auto screens = QtScreen::Screens();
        screens.resize(screens.size() - gone);
        return screens;
    }
    std::size_t gone = 0;
};

/// The main window over fakes of all else, its sequencer moved by hand.
struct PlayerRig {
    PlayerRig() {
        Store("Opzioni", "Compensazione", "0");
        for (const auto& [name, twips] :
             {std::pair{"Left", "300"}, {"Top", "600"}, {"Width", "9000"}, {"Height", "7500"}}) {
            Store("Finestra", name, twips);
        }
    }
    void Store(const char* section, const char* name, const char* value) {
        SalvaImpostazione(registry, section, name, value);
    }
    /// Starts the player, which was ended before if there was one.
    void Open(const std::string& commandLine) {
        window.reset();
        window = std::make_unique<frmKaraoke>(
            frmKaraoke::Parti{config, timeline, info, random, registry, control, msgBox, events,
                              rig.clock, screen, shell, others, queue},
            frmKaraoke::Avvio{.CmdLine = commandLine,
                              .openDirPredefinita = rig.folder.Path().string(),
                              .scriviWinIni = [](auto, auto, auto) {}});
        window->Form_Load();
        window->activateWindow();
        (void)QTest::qWaitForWindowActive(window.get());
        lyrics = dynamic_cast<QtPictureBox*>(&Find<QWidget>(*window, "Lyrics"));
        slider = window->findChild<QSlider*>();
        buttons = window->findChild<QToolBar*>()->actions();
    }
    bool Playing() const { return IsPlaying(control.Mode()); }

    SilentSynth synth;
    SequencerRig rig{synth};
    MMControl& control = rig.control;
    MemoryRegistry registry;
    ScriptedMsgBox msgBox;
    ClockedEvents events{rig.clock};
    FewerScreens screen;
    FakeShell shell;
    OtherWindows others;
    Coda queue{rig.folder / "queue"};
    Config config;
    Timeline timeline;
    InformazioniBrano info;
    std::mt19937 random;
    std::unique_ptr<frmKaraoke> window;
    QtPictureBox* lyrics = nullptr;
    QSlider* slider = nullptr;
    QList<QAction*> buttons;  ///< the toolbar's, separators too
};

}  // namespace sonnel::test
