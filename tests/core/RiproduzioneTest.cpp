#include "fakes/ClockedEvents.h"
#include "fakes/FakeMainWindow.h"
#include "fakes/MemoryRegistry.h"
#include "fakes/RecordingPictureBox.h"
#include "fakes/ScriptedMsgBox.h"
#include "fakes/SequencerRig.h"
#include "fakes/SmfBuilder.h"
#include "platform/Numbers.h"
#include "player/Riproduzione.h"

#include <functional>
#include <string>
#include <tuple>
#include <vector>

#include <gmock/gmock.h>

namespace sonnel::test {
namespace {

using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::MatchesRegex;
using ::testing::Pair;

constexpr const char* kLyrics =
    "Cantabelle1.0\r\n*TIProva\r\n00000 1Hello$Eyou\r\n00005 25\r\n00010 210\r\n00020 1Bye\r\n"
    "00025 23\r\n";

std::string Midi(std::uint32_t ms) {
    return SmfBuilder(0, 500).Tempo(0, 500000).Note(0, ms, 60).Bytes();
}

/// Playback over the real sequencer and real files; the song "song" lasts 3 seconds and shows
/// "Hello" over "you", "Bye" after 2 seconds. Colours: 1 text, 3 sung.
struct PlaybackTest : testing::Test, SequencerRig {
    using SequencerRig::Run;
    PlaybackTest() {
        Song("song", kLyrics, Midi(3000));
        player.ApplicaConfig();
        msgBox.whileShown = [this] {
            window.log.clear();
            Run(500);
            EXPECT_THAT(window.log, IsEmpty()) << "a report behind a message box";
        };
    }
    void Song(const std::string& name, const std::string& lyrics, const std::string& midi) const {
        folder.Write(name + ".lyk", lyrics);
        folder.Write(name + ".mid", midi);
    }
    std::string Base(const std::string& name = "song") const { return (folder / name).string(); }
    void Load(const std::string& name = "song") { player.FileLoad(TrovaFileBrano(Base(name))); }
    bool Playing() const { return control.Mode() == MciMode::Playing; }
    /// What the slider and the text beside it say.
    std::tuple<std::int32_t, std::string> Slider() const {
        return {window.slider, window.positionText};
    }
    void ExpectBox(const std::string& text, Icon icon) const {
        EXPECT_EQ(msgBox.shown.back().text, text);
        EXPECT_EQ(msgBox.shown.back().icon, icon);
        EXPECT_EQ(msgBox.shown.back().title, "Sonnel Karaoke Player");
        EXPECT_EQ(events.pointer, Pointer::Normal);
    }

    Config config{.ColoreTesto = 1,
                  .ColoreSelezione = 3,
                  .Ombra = false,
                  .Compensazione = 0,
                  .OpenDir = folder.Path().string() + "/",
                  .Autoplay = false};
    Timeline timeline;
    InformazioniBrano info;
    RecordingPictureBox box;
    FakeMainWindow window;
    ScriptedMsgBox msgBox;
    ClockedEvents events{clock};
    ImpaginazioneParole layout{config, timeline, box, window, msgBox};
    DisegnoParole drawing{config, box, window, layout};
    MemoryRegistry registry;
    Cantante singer{{registry, control, timeline}};
    Riproduzione player{
        {config, timeline, info, control, layout, drawing, window, singer, msgBox, events}};
};

TEST_F(PlaybackTest, OpeningShowsTheSongFromItsStart) {
    Load();
    EXPECT_THAT(window.captions, ElementsAre(MatchesRegex("Sonnel Player 98 [0-9]+\\.[0-9]+ beta"),
                                             EndsWith(" beta - Prova")));
    EXPECT_EQ(control.FileName(), Base() + ".mid");
    EXPECT_THAT(window.length, Pair(3, "0' 03\""));
    EXPECT_EQ(Slider(), std::tuple(0, "0' 00\""));
    EXPECT_THAT(box.Words(), ElementsAre("1 Hello", "1 you"));
    EXPECT_EQ(box.font.size, 32) << "fitted from 8 points above the configured size";
    EXPECT_EQ(Usable(window.commands), "OCPIpL");
    EXPECT_FALSE(Playing());
    config.Autoplay = true;
    Load();
    EXPECT_TRUE(Playing());
    EXPECT_EQ(timer.interval, 10);
}

TEST_F(PlaybackTest, NoChoiceKeepsTheSongAndAutoplayPlaysItFromItsPlace) {
    config.Autoplay = true;
    player.FileLoad(std::nullopt);
    EXPECT_FALSE(Playing()) << "there is no song";
    config.Autoplay = false;
    Load();
    player.CursoreSpostato(1);
    config.Autoplay = true;
    player.FileLoad(std::nullopt);
    EXPECT_EQ(State(), std::pair(MciMode::Playing, 1000));
    EXPECT_THAT(box.Words(), ElementsAre("1 Hello", "1 you", "3 Hello", "3 you"));
}

TEST_F(PlaybackTest, AMissingFileLeavesThePlayingSongAlone) {
    folder.Write("nolyk.mid", Midi(100));
    folder.Write("nomid.lyk", kLyrics);
    Load();
    player.SoundPlay();
    const auto captions = window.captions;
    std::int32_t position = 0;
    for (const auto& [name, what] :
         {std::pair("nolyk", "LYK file is missing!"), {"nomid", "MID file missing!"}}) {
        EXPECT_FALSE(player.CaricaBrano(TrovaFileBrano(Base(name)))) << name;
        ExpectBox(std::string("Can't load the selected song: ") + what +
                      "\r\nTo properly load a Karaoke file you need to put the LYK and MID file "
                      "in the same directory.",
                  Icon::Exclamation);
        EXPECT_EQ(State(), std::pair(MciMode::Playing, position += 500));
    }
    EXPECT_EQ(window.captions, captions);
    for (const int caughtUp : {2, 3, 3}) {
        Run(10);
        EXPECT_EQ(timeline.UltimoEvento, caughtUp) << "one event a report";
    }
}

TEST_F(PlaybackTest, ASongThatCannotBeOpenedLeavesNoneOpen) {
    const std::string openFailed = "Can't open " + Base("bad") + ".mid (err.";
    const std::vector<std::tuple<std::string, std::string, std::string, int>> cases{
        {"Cantabile\r\n", Midi(100), "That's not a Cantabelle1.0 file!", 0},
        {kLyrics, "",
         openFailed + "1001 - The MIDI file is empty: copy it again from where it came)", 5}};
    for (const auto& [lyrics, midi, text, eventCount] : cases) {
        config.Autoplay = false;
        Load();
        config.Autoplay = true;
        Song("bad", lyrics, midi);
        Load("bad");
        ExpectBox(text, Icon::Critical);
        EXPECT_EQ(timeline.NumEventi(), eventCount);
        EXPECT_EQ(control.Mode(), MciMode::NotReady);
        EXPECT_EQ(Usable(window.commands), "OCp");
        EXPECT_EQ(window.captions.back(), Riproduzione::EtichettaVersione());
        EXPECT_EQ(window.length.first, 3) << "nothing is set up for the song";
    }
}

TEST_F(PlaybackTest, TheWordsFollowTheSongThroughAPauseToItsEnd) {
    config.Compensazione = 3;
    Load();
    player.SoundPlay();
    window.log.clear();
    Run(10);
    EXPECT_THAT(window.log, ElementsAre("logo on", "commands"));
    Run(180);
    EXPECT_EQ(box.printed.size(), 2U);
    Run(10);
    EXPECT_EQ(box.Words().back(), "3 Hello") << "3 tenths early";
    Run(1500);
    EXPECT_THAT(box.Words(), ElementsAre("1 Bye"));
    player.SoundPause();
    EXPECT_EQ(Usable(window.commands), "OCPSIpL");
    window.log.clear();
    Run(1000);
    EXPECT_THAT(window.log, ElementsAre("commands", "logo off", "first image", "commands"));
    player.SoundPlay();
    Run(100);
    EXPECT_EQ(control.Position(), 1800) << "a paused song is not rewound";
    EXPECT_THAT(box.Words(), ElementsAre("1 Bye"));

    Run(1200);
    ASSERT_TRUE(Playing());
    window.log.clear();
    Run(10);
    EXPECT_THAT(window.log,
                ElementsAre("logo off", "first image", "commands", "commands", "ended"));
    EXPECT_EQ(Usable(window.commands), "OCPIpL");
    EXPECT_EQ(control.Position(), 0) << "at its end it is";
    Run(500);
    EXPECT_THAT(box.Words(), ElementsAre("1 Bye", "3 Bye")) << "the last page stays";
    player.Riadatta();
    EXPECT_THAT(box.Words(), ElementsAre("1 Bye", "3 Bye")) << "on the full screen too";
    player.SoundPlay();
    EXPECT_THAT(box.Words(), ElementsAre("1 Hello", "1 you"));
}

TEST_F(PlaybackTest, AClickOnTheWordsTogglesAndLosingTheFocusPauses) {
    const auto click = [this] { player.ParoleClick(); };
    const auto leave = [this] { player.Sospendi(); };
    const auto load = [this] { Load(); };
    const std::vector<std::pair<std::function<void()>, MciMode>> steps{
        {click, MciMode::NotReady}, {leave, MciMode::NotReady}, {load, MciMode::Stopped},
        {leave, MciMode::Stopped},  {click, MciMode::Playing},  {click, MciMode::Paused},
        {leave, MciMode::Paused},   {click, MciMode::Playing},  {leave, MciMode::Paused}};
    for (const auto& [step, mode] : steps) {
        step();
        EXPECT_EQ(control.Mode(), mode);
        Run(100);
    }
    EXPECT_EQ(control.Position(), 200);
}

TEST_F(PlaybackTest, StopDuringPlayGoesBackToTheStart) {
    Load();
    player.CursoreSpostato(1);
    Run(50);
    player.SoundPlay();
    Run(1500);
    player.AggiornaCursore();
    EXPECT_EQ(Slider(), std::tuple(2, "0' 02\"")) << "halves go to the even second";
    EXPECT_TRUE(window.commands.SoundStop);
    player.SoundStop();
    for (const int later : {0, 10, 500}) {
        Run(later);
        EXPECT_EQ(control.Position(), 0);
        EXPECT_EQ(Slider(), std::tuple(0, "0' 00\""));
        EXPECT_THAT(box.Words(), ElementsAre("1 Hello", "1 you"));
        EXPECT_EQ(Usable(window.commands), "OCPIpL");
    }
}

TEST_F(PlaybackTest, TheSliderSeeksOnlyWhenTheSongStands) {
    Load();
    player.CursoreSpostato(2);
    EXPECT_EQ(control.Position(), 2000);
    EXPECT_THAT(box.Words(), ElementsAre("1 Bye"));
    EXPECT_TRUE(window.commands.SoundStop);
    player.AggiornaCursore();
    EXPECT_EQ(Slider(), std::tuple(0, "0' 02\"")) << "the timer follows only a playing song";

    player.CursoreSpostato(0);
    Run(50);
    player.SoundPlay();
    Run(500);
    player.CursoreSpostato(2);
    EXPECT_EQ(State(), std::pair(MciMode::Playing, 500));
    EXPECT_EQ(window.positionText, "0' 00\"");
    player.SoundPause();
    player.CursoreSpostato(1);
    EXPECT_EQ(control.Position(), 1000);
    EXPECT_THAT(box.Words(), ElementsAre("1 Hello", "1 you", "3 Hello", "3 you"));
}

TEST_F(PlaybackTest, WhatTheSingerChangesIsRememberedForTheSong) {
    std::string lyrics = "Cantabelle1.0\r\n0000001la la la la la la la la\r\n";
    SmfBuilder tune(0, 500);
    for (int i = 1; i <= 8; ++i) {
        tune.Note(static_cast<std::uint32_t>(300 * i), 200, 60 + i, 2);
        lyrics += ZeroPadded(std::int64_t{3} * i, 5) + "02" + std::to_string(3 * i) + "\r\n";
    }
    Song("tune", lyrics, tune.Control(4000, 7, 1).Bytes());
    Load("tune");
    ASSERT_TRUE(singer.Melodia());
    EXPECT_EQ(window.singing, "");
    singer.CambiaTonalita(3);
    singer.CambiaTempo(-70);
    singer.ProssimaMelodia();
    singer.CambiaAnticipo(-40);
    const std::string own = "key +3, tempo 50 %, melody soft, words 40 ms later";
    EXPECT_EQ(singer.Descrizione(), own);
    EXPECT_EQ(control.Performed(), (Performance{3, 50, Performance::Melody::Soft, 2}));
    EXPECT_EQ(singer.PosizioneParole(1000), 980) << "the output's time, not the song's";
    Load();
    EXPECT_EQ(window.singing, "words 40 ms later");
    EXPECT_EQ(control.Performed(), Performance{});
    singer.CambiaMelodia(Performance::Melody::Off);
    EXPECT_EQ(control.Performed(), Performance{}) << "no tune is known";
    Load("tune");
    EXPECT_EQ(window.singing, own);
    player.SuonaBrano(TrovaFileBrano(Base("tune")), -2);
    EXPECT_EQ(window.singing, "key \u22122, tempo 50 %, melody soft, words 40 ms later");
    EXPECT_TRUE(Playing());
    player.SoundPause();
    singer.CambiaTempo(5);
    Load("tune");
    EXPECT_EQ(window.singing, "key +3, tempo 55 %, melody soft, words 40 ms later")
        << "a turn's key is not remembered";
    singer.Azzera();
    Load("tune");
    EXPECT_EQ(window.singing, "");

    for (const std::string stored :
         {"13 100 normal", "1 100", "1 100 loud", "x 1 soft", "1 100 soft "}) {
        registry.Put(RegistryRoot::CurrentUser, std::string(PlayerPath) + "\\Singer", Base("tune"),
                     stored);
        Load("tune");
        EXPECT_EQ(window.singing, "") << stored;
    }
    Cantante chosen{{registry, control, timeline}, Canto{-2, 110, {}}};
    chosen.NuovoBrano(TrovaFileBrano(Base("tune")));
    EXPECT_EQ(chosen.Descrizione(), "key \u22122, tempo 110 %");
}

}  // namespace
}  // namespace sonnel::test
