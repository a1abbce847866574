#include "fakes/ClockedEvents.h"
#include "fakes/FakeMainWindow.h"
#include "fakes/ManualClock.h"
#include "fakes/ManualOutput.h"
#include "fakes/ManualTimer.h"
#include "fakes/RecordingPictureBox.h"
#include "fakes/RecordingSynth.h"
#include "fakes/ScriptedMsgBox.h"
#include "fakes/SmfBuilder.h"
#include "fakes/TempDirectory.h"
#include "player/Riproduzione.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <string>
#include <tuple>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace sonnel::test {
namespace {

using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::IsEmpty;
using ::testing::MatchesRegex;

using Words = std::vector<std::string>;

constexpr const char* kTitle = "Sonnel Karaoke Player";
constexpr const char* kLyrics =
    "Cantabelle1.0\r\n*TIProva\r\n00000 1Hello$Eyou\r\n00005 25\r\n00010 210\r\n00020 1Bye\r\n"
    "00025 23\r\n";

/// Playback over the real sequencer and real files; the song "song" lasts 3 seconds and shows
/// "Hello" over "you", "Bye" after 2 seconds. Colours: 1 text, 3 sung.
class PlaybackTest : public ::testing::Test {
  protected:
    void SetUp() override {
        Song("song", 3000);
        player.ApplicaConfig();
    }
    static std::string Midi(std::uint32_t ms) {
        return SmfBuilder(0, 500).Tempo(0, 500000).Note(0, ms, 60).Bytes();
    }
    void Song(const std::string& name, std::uint32_t ms, const std::string& lyrics = kLyrics) {
        directory.Write(name + ".lyk", lyrics);
        directory.Write(name + ".mid", Midi(ms));
    }
    std::string Base(const std::string& name = "song") { return (directory / name).string(); }
    void Open(const std::string& name = "song") {
        choice = "F=" + Base(name);
        player.FileLoad();
    }
    /// Lets time pass in steps of 10 ms: sound, clock and reports.
    void Run(int ms) {
        for (int i = 0; i < ms; i += 10) {
            output.Ask(output.rate / 100);
            clock.Advance(std::chrono::milliseconds(10));
            timer.Fire();
        }
    }
    /// While a message box stands, time passes; reports that come meanwhile are kept.
    void WatchBoxes() {
        msgBox.whileShown = [this] {
            window.log.clear();
            Run(500);
            reportsBehindBoxes = window.log;
        };
    }
    bool Playing() const { return control.Mode() == MciMode::Playing; }

    TempDirectory directory;
    Config config{.ColoreTesto = 1,
                  .ColoreSelezione = 3,
                  .Ombra = 0,
                  .Compensazione = 0,
                  .OpenDir = directory.Path().string() + "/",
                  .Autoplay = false};
    Timeline timeline;
    InformazioniBrano info;
    RecordingSynth synth;
    ManualOutput output;
    ManualTimer timer;
    ManualClock clock;
    MMControl control{synth, output, timer, clock};
    RecordingPictureBox box;
    FakeMainWindow window;
    ScriptedMsgBox msgBox;
    ClockedEvents events{clock};
    std::string choice;
    Words reportsBehindBoxes{"no box"};
    Riproduzione player{
        {config,
         timeline,
         info,
         control,
         box,
         window,
         window,
         msgBox,
         events,
         {[this] { return choice; }, [](std::int32_t p) { return p == 2 ? "song" : "other"; }}}};
};

TEST_F(PlaybackTest, OpeningShowsTheSongFromItsStart) {
    choice = "2";
    player.FileLoad();
    EXPECT_THAT(window.captions, ElementsAre(MatchesRegex("Sonnel Player 98 [0-9]+\\.[0-9]+ beta"),
                                             EndsWith(" beta - Prova")));
    EXPECT_EQ(control.FileName(), Base() + ".MID");
    EXPECT_EQ(std::tuple(window.sliderMax, window.slider), std::tuple(3, 0));
    EXPECT_EQ(std::tuple(window.lengthText, window.positionText), std::tuple("0' 03\"", "0' 00\""));
    EXPECT_THAT(box.Words(), ElementsAre("1 Hello", "1 you"));
    EXPECT_EQ(box.font.size, 32) << "fitted from 8 points above the configured size";
    EXPECT_TRUE(window.commands.SoundPlay && window.commands.VisInfo && window.commands.Cursore);
    EXPECT_FALSE(window.commands.SoundStop);
    EXPECT_FALSE(Playing());
    EXPECT_EQ(events.pointer, Pointer::Normal);
    Run(10);
    EXPECT_EQ(timer.interval, 0);
    config.Autoplay = true;
    Open();
    EXPECT_TRUE(Playing());
    EXPECT_EQ(timer.interval, 10);
}

TEST_F(PlaybackTest, LengthsAreWholeSecondsHalvesToEven) {
    const std::vector<std::tuple<std::uint32_t, std::int32_t, std::string>> cases{
        {187500, 188, "3' 08\""}, {186500, 186, "3' 06\""}, {186501, 187, "3' 07\""}};
    for (const auto& [ms, seconds, text] : cases) {
        Song("long", ms);
        Open("long");
        EXPECT_EQ(std::tuple(window.sliderMax, window.lengthText), std::tuple(seconds, text));
    }
}

TEST_F(PlaybackTest, TheEndOfTheLongestSongCanBeSought) {
    directory.Write("long.lyk", kLyrics);
    directory.Write("long.mid", SmfBuilder(0, 1).Tempo(0, 16000000).Note(0, 900000, 60).Bytes());
    Open("long");
    player.CursoreSpostato(window.sliderMax);
    EXPECT_EQ(control.Position(), control.Length());
    EXPECT_EQ(window.positionText, window.lengthText);
}

TEST_F(PlaybackTest, NoChoiceKeepsTheSongAndAutoplayPlaysItFromItsPlace) {
    config.Autoplay = true;
    player.FileLoad();
    EXPECT_FALSE(Playing()) << "there is no song";
    config.Autoplay = false;
    Open();
    player.CursoreSpostato(1);
    for (const char* const none : {"", "0", "-1", "abc", "f=song"}) {
        choice = none;
        player.FileLoad();
        EXPECT_EQ(control.FileName(), Base() + ".MID") << none;
        EXPECT_FALSE(Playing());
    }
    config.Autoplay = true;
    player.FileLoad();
    EXPECT_TRUE(Playing());
    EXPECT_EQ(control.Position(), 1000);
    EXPECT_THAT(box.Words(), ElementsAre("1 Hello", "1 you", "3 Hello", "3 you"));
    EXPECT_THAT(msgBox.shown, IsEmpty());
}

TEST_F(PlaybackTest, AMissingFileLeavesThePlayingSongAlone) {
    directory.Write("nolyk.mid", Midi(100));
    directory.Write("nomid.lyk", kLyrics);
    directory.Write("folder.lyk", kLyrics);
    std::filesystem::create_directory(directory / "folder.mid");
    Open();
    player.SoundPlay();
    WatchBoxes();
    const Words captions = window.captions;
    const std::string lyk = "LYK file is missing!";
    const std::string mid = "MID file missing!";
    std::int32_t position = 0;
    for (const auto& [name, what] :
         {std::pair("nolyk", lyk), {"none", lyk}, {"nomid", mid}, {"folder", mid}}) {
        EXPECT_FALSE(player.CaricaBrano(Base(name))) << name;
        const Message& shown = msgBox.shown.back();
        EXPECT_EQ(shown.text, "Can't load the selected song: " + what +
                                  "\r\nTo properly load a Karaoke file you need to put the LYK and "
                                  "MID file in the same directory.");
        EXPECT_EQ(std::tuple(shown.icon, shown.title), std::tuple(Icon::Exclamation, kTitle));
        EXPECT_TRUE(Playing());
        EXPECT_EQ(control.Position(), position += 500);
        EXPECT_EQ(window.captions, captions);
        EXPECT_EQ(events.pointer, Pointer::Normal);
        EXPECT_THAT(reportsBehindBoxes, IsEmpty());
    }
    EXPECT_EQ(msgBox.shown.size(), 4U);
    EXPECT_EQ(timeline.UltimoEvento, 1);
    for (const int caughtUp : {2, 3, 4, 4}) {
        Run(10);
        EXPECT_EQ(timeline.UltimoEvento, caughtUp) << "one event a report";
    }
}

TEST_F(PlaybackTest, ASongThatCannotBeOpenedLeavesNoneOpen) {
    const std::string notLyk = "That's not a Cantabelle1.0 file!";
    const std::string format2 = SmfBuilder(2).Note(0, 1, 60).Bytes();
    const std::vector<std::tuple<std::string, std::string, std::string>> cases{
        {"Cantabile\r\n", Midi(100), notLyk},
        {"", Midi(100), notLyk},
        {kLyrics, "", "1001 - The MIDI file is empty: copy it again from where it came"},
        {kLyrics, "no music",
         "1001 - This is not a MIDI file: choose a song whose MID file other players can play"},
        {kLyrics, format2,
         "1002 - The MIDI file is of format 2, only formats 0 and 1 can be played"}};
    for (const auto& [lyrics, midi, text] : cases) {
        Open();
        directory.Write("bad.lyk", lyrics);
        directory.Write("bad.mid", midi);
        WatchBoxes();
        config.Autoplay = true;
        Open("bad");
        config.Autoplay = false;
        const bool lyk = text == notLyk;
        const Message& shown = msgBox.shown.back();
        EXPECT_EQ(shown.text, lyk ? text : "Can't open " + Base("bad") + ".mid (err." + text + ")");
        EXPECT_EQ(std::tuple(shown.icon, shown.title), std::tuple(Icon::Critical, kTitle));
        EXPECT_EQ(timeline.NumEventi(), lyk ? 0 : 5);
        EXPECT_EQ(control.Mode(), MciMode::NotReady);
        EXPECT_EQ(control.FileName(), "");
        EXPECT_EQ(window.commands, AbilitaFunzioni(MciMode::NotReady, "", 0));
        EXPECT_EQ(window.captions.back(), Riproduzione::EtichettaVersione());
        EXPECT_EQ(window.lengthText, "0' 03\"") << "nothing is set up for the song";
        EXPECT_EQ(events.pointer, Pointer::Normal);
        EXPECT_THAT(reportsBehindBoxes, IsEmpty());
    }
    EXPECT_EQ(msgBox.shown.size(), cases.size());
    output.startError = Error{8, "No output"};
    Open();
    EXPECT_THAT(msgBox.shown.back().text, EndsWith("song.mid (err.8 - No output)"));
}

TEST_F(PlaybackTest, ADamagedMidiFileLastsAsLongAsItCanBeRead) {
    directory.Write("song.mid",
                    SmfBuilder(0, 500).Note(0, 900, 60).Note(1000, 900, 62).Truncated(7));
    Open();
    EXPECT_THAT(msgBox.shown, IsEmpty());
    EXPECT_EQ(control.Length(), 1000);
}

TEST_F(PlaybackTest, NoReportComesWhileOpeningShowsWarnings) {
    Song("wide", 3000, kLyrics + ("00026 1" + std::string(60, 'x') + "$E2$E3$E4$E5\r\n"));
    WatchBoxes();
    Open("wide");
    ASSERT_EQ(msgBox.shown.size(), 2U) << "too many lines, then too long ones";
    EXPECT_EQ(msgBox.shown[1].title, "Sonnel Karaoke");
    EXPECT_THAT(reportsBehindBoxes, IsEmpty());
    EXPECT_EQ(timeline.UltimoEvento, 1);
    window.log.clear();
    Run(10);
    EXPECT_THAT(window.log, ElementsAre("logo off", "first image", "commands"));
}

TEST_F(PlaybackTest, TheWordsFollowTheSongAndAPauseKeepsItsPlace) {
    config.Compensazione = 3;
    Open();
    player.SoundPlay();
    EXPECT_EQ(events.pointer, Pointer::Normal);
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
    EXPECT_TRUE(window.commands.SoundPlay && window.commands.SoundStop && window.commands.Cursore);
    window.log.clear();
    Run(1000);
    EXPECT_THAT(window.log, ElementsAre("commands", "logo off", "first image", "commands"));
    EXPECT_EQ(control.Position(), 1700) << "a paused song is not rewound";
    player.SoundPlay();
    Run(100);
    EXPECT_EQ(control.Position(), 1800);
    EXPECT_THAT(box.Words(), ElementsAre("1 Bye"));
}

TEST_F(PlaybackTest, AClickOnTheWordsTogglesAndLosingTheFocusPauses) {
    player.ParoleClick();
    player.Sospendi();
    EXPECT_EQ(control.Mode(), MciMode::NotReady);
    Open();
    player.Sospendi();
    EXPECT_EQ(control.Mode(), MciMode::Stopped);
    player.ParoleClick();
    EXPECT_TRUE(Playing());
    Run(700);
    player.ParoleClick();
    EXPECT_EQ(control.Mode(), MciMode::Paused);
    player.ParoleClick();
    Run(100);
    player.Sospendi();
    Run(100);
    player.Sospendi();
    EXPECT_EQ(control.Mode(), MciMode::Paused);
    EXPECT_NEAR(control.Position(), 800, 10);
}

TEST_F(PlaybackTest, StopDuringPlayGoesBackToTheStart) {
    Open();
    player.SoundPlay();
    Run(2600);
    player.AggiornaCursore();
    EXPECT_EQ(std::tuple(window.slider, window.positionText), std::tuple(3, "0' 03\""));
    EXPECT_TRUE(window.commands.SoundStop);
    player.SoundStop();
    for (const int later : {0, 10, 500}) {
        Run(later);
        EXPECT_EQ(control.Mode(), MciMode::Stopped);
        EXPECT_EQ(control.Position(), 0);
        EXPECT_EQ(std::tuple(window.slider, window.positionText), std::tuple(0, "0' 00\""));
        EXPECT_THAT(box.Words(), ElementsAre("1 Hello", "1 you"));
        EXPECT_EQ(timeline.UltimoEvento, 1);
        EXPECT_FALSE(window.commands.SoundStop);
        EXPECT_TRUE(window.commands.SoundPlay);
    }
}

TEST_F(PlaybackTest, TheSliderSeeksOnlyWhenTheSongStands) {
    Open();
    player.CursoreSpostato(2);
    EXPECT_EQ(control.Position(), 2000);
    EXPECT_EQ(window.positionText, "0' 02\"");
    EXPECT_THAT(box.Words(), ElementsAre("1 Bye"));
    EXPECT_TRUE(window.commands.SoundStop);
    player.AggiornaCursore();
    EXPECT_EQ(window.slider, 0) << "the timer follows only a playing song";

    player.CursoreSpostato(0);
    Run(50);
    player.SoundPlay();
    Run(500);
    player.CursoreSpostato(2);
    EXPECT_TRUE(Playing());
    EXPECT_EQ(control.Position(), 500);
    EXPECT_EQ(window.positionText, "0' 00\"");
    Run(1000);
    player.AggiornaCursore();
    EXPECT_EQ(std::tuple(window.slider, window.positionText), std::tuple(2, "0' 02\"")) << "1.5";
    player.SoundPause();
    player.CursoreSpostato(1);
    EXPECT_EQ(control.Position(), 1000);
    EXPECT_THAT(box.Words(), ElementsAre("1 Hello", "1 you", "3 Hello", "3 you"));
}

TEST_F(PlaybackTest, TheEndOfTheSongRewindsIt) {
    Open();
    player.SoundPlay();
    Run(3000);
    ASSERT_TRUE(Playing());
    window.log.clear();
    Run(10);
    EXPECT_THAT(window.log, ElementsAre("logo off", "first image", "commands", "commands"));
    EXPECT_EQ(control.Mode(), MciMode::Stopped);
    EXPECT_EQ(control.Position(), 0);
    EXPECT_TRUE(window.commands.SoundPlay);
    EXPECT_FALSE(window.commands.SoundStop);
    Run(500);
    EXPECT_THAT(box.Words(), ElementsAre("1 Bye", "3 Bye")) << "the last page stays";
    player.SoundPlay();
    EXPECT_THAT(box.Words(), ElementsAre("1 Hello", "1 you"));
    Run(600);
    EXPECT_EQ(box.Words().back(), "3 Hello");
}

}  // namespace
}  // namespace sonnel::test
