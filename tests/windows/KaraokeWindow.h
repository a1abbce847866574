#pragma once

#include "windows/Pixels.h"

#include "fakes/ClockedEvents.h"
#include "fakes/FakeShell.h"
#include "fakes/MemoryRegistry.h"
#include "fakes/OtherWindows.h"
#include "fakes/RecordingSynth.h"
#include "fakes/ScriptedMsgBox.h"
#include "fakes/SequencerRig.h"
#include "player/window/frmKaraoke.h"

#include <QTest>
#include <memory>
#include <stdexcept>
#include <string>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

namespace sonnel::test {

inline constexpr const char* Opzioni = "Software\\Corvane\\Sonnel Player\\Opzioni";
inline constexpr const char* Finestra = "Software\\Corvane\\Sonnel Player\\Finestra";

class FixedScreen : public Screen {
  public:
    int Width() const override { return 800 * Scale; }
    int Height() const override { return 800 * Scale; }
    std::vector<Rectangle> Screens() const override { return {{0, 0, Width(), Height()}}; }
    double TwipsPerPixel() const override { return Scale; }
};

/// The main window, its sequencer moved by hand.
class KaraokeWindow : public testing::Test {
  protected:
    void SetUp() override {
        for (const auto& [section, name, value] : {std::tuple{Opzioni, "Compensazione", "0"},
                                                   {Finestra, "Left", "300"},
                                                   {Finestra, "Top", "600"},
                                                   {Finestra, "Width", "9000"},
                                                   {Finestra, "Height", "7500"}}) {
            registry.Put(RegistryRoot::CurrentUser, section, name, value);
        }
    }
    void Open(const std::string& commandLine) {
        window = std::make_unique<frmKaraoke>(
            frmKaraoke::Parti{config, timeline, info, random, registry, control, msgBox, events,
                              rig.clock, screen, shell, others},
            frmKaraoke::Avvio{.CmdLine = commandLine,
                              .eseguibile = "/opt/sonnel/sonnel",
                              .openDirPredefinita = rig.folder.Path().string(),
                              .scriviWinIni = [](auto, auto, auto) {}});
        window->Form_Load();
        window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    }
    QtPictureBox& Lyrics() const {
        for (QWidget* widget : window->findChildren<QWidget*>()) {
            if (auto* lyrics = dynamic_cast<QtPictureBox*>(widget)) {
                return *lyrics;
            }
        }
        throw std::logic_error("no lyrics area");
    }
    bool Playing() const { return IsPlaying(control.Mode()); }

    RecordingSynth synth;
    SequencerRig rig{synth};
    MMControl& control = rig.control;
    MemoryRegistry registry;
    ScriptedMsgBox msgBox;
    ClockedEvents events{rig.clock};
    FixedScreen screen;
    FakeShell shell;
    OtherWindows others;
    std::vector<std::string>& called = others.called;
    Config config;
    Timeline timeline;
    InformazioniBrano info;
    std::mt19937 random;
    std::unique_ptr<frmKaraoke> window;
};

}  // namespace sonnel::test
