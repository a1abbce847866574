// The real program with a real song: what a person sees and hears.

#include "e2e/Player.h"
#include "e2e/SoundFile.h"

#include "fakes/ScriptedMsgBox.h"
#include "fakes/TempDirectory.h"
#include "platform/midi/Sequence.h"
#include "platform/midi/SmfReader.h"
#include "song/LeggiKaraoke.h"

#include <algorithm>
#include <chrono>
#include <functional>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace sonnel::test {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr seconds kPatience(15);
constexpr milliseconds kMargin(300);  // nothing is checked so close to a change of mode

/// One change of the words sung.
struct Step {
    Clock::time_point at;  ///< when its first pixels were due or seen
    bool grown = false;
};

/// What was seen to happen before `end`. What goes on within 60 ms is the same step: the screen may
/// have been looked at half painted.
std::vector<Step> SeenSteps(const std::vector<Sample>& seen, Clock::time_point end) {
    std::vector<Step> steps;
    for (std::size_t i = 1; i < seen.size() && seen[i].at < end; ++i) {
        const bool grown = seen[i].sung > seen[i - 1].sung;
        const bool goesOn = !steps.empty() && steps.back().grown == grown &&
                            seen[i].at - steps.back().at <= milliseconds(60);
        if (seen[i].sung != seen[i - 1].sung && !goesOn) {
            steps.push_back({seen[i].at, grown});
        }
    }
    return steps;
}

Timeline Lyrics(const std::filesystem::path& lyk) {
    Timeline timeline;
    InformazioniBrano information;
    ScriptedMsgBox msgBox;
    if (LeggiRighe(Content(lyk), true, timeline, information, msgBox) != EsitoLettura::Completa) {
        throw std::runtime_error("the song's lyrics cannot be read");
    }
    return timeline;
}

/// When the first note of a song sounds, counted from its start.
std::chrono::duration<double> FirstNote(const std::filesystem::path& mid) {
    const Result<SmfFile> file = ReadSmf(Content(mid));
    constexpr int Rate = 48000;
    for (const SequenceEvent& event : MakeSequence(*file, Rate).events) {
        if ((event.status & 0xF0) == 0x90 && event.data2 > 0) {
            return std::chrono::duration<double>(static_cast<double>(event.frame) / Rate);
        }
    }
    throw std::runtime_error("the song has no notes");
}

/// What the words must do: grow with a colour event, begin anew with a page after the first one.
std::vector<Step> DueSteps(const Timeline& timeline, Clock::time_point start) {
    std::vector<Step> due;
    for (std::int16_t i = 1; i <= timeline.NumEventi(); ++i) {
        const Evento& event = timeline.Eventi(i);
        const bool colour = event.Tipo == TipoEvento::Colore;
        if (colour || (event.Tipo == TipoEvento::Pagina && !due.empty())) {
            due.push_back({start + milliseconds(100) * event.Tempo, colour});
        }
    }
    return due;
}

/// Every step that was due well before `end` was seen, in order, within 150 ms.
void ExpectInTime(const std::vector<Step>& due, const std::vector<Step>& seen,
                  Clock::time_point end) {
    std::size_t count = 0;
    for (; count < due.size() && due[count].at + kMargin < end; ++count) {
        ASSERT_LT(count, seen.size());
        const std::chrono::duration<double, std::milli> late = seen[count].at - due[count].at;
        EXPECT_EQ(seen[count].grown, due[count].grown) << "step " << count;
        EXPECT_NEAR(late.count(), 0, 150) << "step " << count;
    }
    EXPECT_GT(count, 15U) << "not even a page";
    EXPECT_LE(seen.size(), count + 1) << "steps out of turn";
}

TEST(ThePlayer, ColoursTheWordsInTimePausesResumesAndStops) {
    Player player("Twinkle Twinkle");
    ASSERT_TRUE(WaitUntil([&] { return !player.MainWindow().empty(); }, kPatience))
        << player.Output();
    EXPECT_EQ(player.Look().sung, 0);
    player.Press("F2");
    player.Watch(seconds(15));

    player.Press("F3");
    const Clock::time_point paused = Clock::now();
    player.Watch(milliseconds(200));
    const auto sung = player.Look().sung;
    EXPECT_GT(sung, 0);
    EXPECT_FALSE(
        player.Watch([&](const Sample& now) { return now.sung != sung; }, milliseconds(1800)));

    const Clock::time_point resumed = Clock::now();
    player.ClickWords();
    EXPECT_TRUE(player.Watch([&](const Sample& now) { return now.sung > sung; }, seconds(2)));

    const auto wordless = [](const Sample& now) { return now.sung + now.unsung == 0; };
    player.Press("F4");
    EXPECT_TRUE(player.Watch(wordless, seconds(1)));
    EXPECT_FALSE(player.Watch(std::not_fn(wordless), seconds(1)));
    EXPECT_EQ(player.Exit(kPatience), 0) << player.Output();

    // The song began so long before its first note as its MIDI file says, and when that note was
    // heard the sound file tells. The steps seen have no part in this.
    const SoundFile sound(player);
    const Clock::time_point start =
        sound.Onset() - std::chrono::duration_cast<Clock::duration>(
                            FirstNote(player.Library("Twinkle Twinkle.mid")));
    const auto due = DueSteps(Lyrics(player.Library("Twinkle Twinkle.lyk")), start);
    ExpectInTime(due, SeenSteps(player.seen, paused), paused);
    EXPECT_TRUE(std::any_of(due.begin(), due.end(), [&](const Step& step) {
        return step.at > paused && step.at + kMargin < resumed;
    })) << "a pause that does nothing would not have been seen";
    EXPECT_GT(sound.Peak(paused - seconds(10), paused - kMargin), 0.02);
    // What rings on in the room dies away within a second.
    EXPECT_LT(sound.Peak(resumed - milliseconds(500), resumed - milliseconds(50)), 0.001);
    EXPECT_GT(sound.Peak(resumed + milliseconds(50), resumed + seconds(1)), 0.02);
}

TEST(ThePlayer, TellsOfAWrongCommandLineAndIsThereWithoutASong) {
    Player player("no such song");
    const auto message = [&] { return player.screen.Window("^Sonnel Karaoke Player$"); };
    ASSERT_TRUE(WaitUntil([&] { return !message().empty(); }, kPatience)) << player.Output();
    EXPECT_EQ(player.MainWindow(), "");
    // One message tells what is missing, the next one that the command line was wrong.
    std::set<std::string> boxes;
    const auto dismissed = [&] {
        if (const std::string box = message(); !box.empty()) {
            boxes.insert(box);
            player.screen.Press(box, "Return");
        }
        return !player.MainWindow().empty();
    };
    ASSERT_TRUE(WaitUntil(dismissed, kPatience));
    EXPECT_EQ(boxes.size(), 2U);

    player.Press("F2");
    player.Watch(milliseconds(500));
    EXPECT_EQ(player.seen.back().sung + player.seen.back().unsung, 0);
    EXPECT_EQ(player.Exit(kPatience), 0) << player.Output();
}

/// The value of a setting, as the settings file has it.
std::string Setting(const Player& player, const std::string& name) {
    const std::string settings = player.Settings();
    const std::size_t start = settings.find("\n" + name + "=");
    const std::size_t value = start + name.size() + 2;
    return start == std::string::npos ? "none"
                                      : settings.substr(value, settings.find('\n', value) - value);
}

TEST(ThePlayer, CalibratesAtItsFirstStartAndOpensWhereItWasClosed) {
    Player player;
    const auto box = [&] { return player.screen.Window("^Sonnel Karaoke Player$"); };
    const auto opened = [&] { return !player.MainWindow().empty(); };
    ASSERT_TRUE(WaitUntil([&] { return !box().empty(); }, kPatience)) << player.Output();
    EXPECT_TRUE(opened());
    EXPECT_EQ(Setting(player, "Compensazione"), "none");
    const std::string question = box();
    player.screen.Press(question, "Return");
    ASSERT_TRUE(WaitUntil([&] { return !box().empty() && box() != question; }, kPatience));
    EXPECT_EQ(Setting(player, "Compensazione"), "0");
    player.screen.Press(box(), "Return");
    ASSERT_TRUE(WaitUntil([&] { return box().empty(); }, kPatience));

    player.screen.MoveAndResize(player.MainWindow(), 150, 90, 640, 320);
    const std::string place = player.screen.Place(player.MainWindow());
    EXPECT_EQ(player.Exit(kPatience), 0) << player.Output();
    EXPECT_EQ(Setting(player, "Width"), "9600");
    EXPECT_EQ(Setting(player, "FullScreen"), "0");

    player.Start({});
    ASSERT_TRUE(WaitUntil(opened, kPatience)) << player.Output();
    EXPECT_EQ(player.screen.Place(player.MainWindow()), place);
    EXPECT_FALSE(WaitUntil([&] { return !box().empty(); }, milliseconds(500)))
        << "calibrated before";
    player.Press("super+m");
    EXPECT_EQ(player.Exit(kPatience), 0) << player.Output();
    EXPECT_EQ(Setting(player, "Width"), "9600");
    EXPECT_EQ(Setting(player, "FullScreen"), "-1");
}

TEST(ThePlayer, PlaysAndDeletesSongsOfItsLibrary) {
    Player player("Twinkle Twinkle");
    const auto shown = [&](const std::string& title) {
        return WaitUntil([&] { return !player.screen.Window(title).empty(); }, kPatience);
    };
    const std::string selection = "^Song selection - [0-9]+ songs";
    ASSERT_TRUE(shown("^Sonnel Player 98 4.1 beta - Twinkle")) << player.Output();
    player.Press("ctrl+o");
    ASSERT_TRUE(shown("^Song selection - 5 songs"));
    const std::string window = player.screen.Window(selection);
    player.screen.Press(window, "F6");
    constexpr int SecondLine = 90;  // pixels from the top
    player.screen.DoubleClick(window, 100, SecondLine);
    ASSERT_TRUE(shown("^Sonnel Player 98 4.1 beta - Auld Lang Syne$"));
    EXPECT_TRUE(player.Watch([](const Sample& now) { return now.sung > 0; }, kPatience));

    player.Press("F3");
    player.Press("ctrl+o");
    ASSERT_TRUE(shown(selection));
    player.screen.Press(window, "Delete");
    ASSERT_TRUE(shown("^Sonnel Karaoke Player$"));
    const std::string question = player.screen.Window("^Sonnel Karaoke Player$");
    player.screen.Press(question, "Tab");
    player.screen.Press(question, "Return");
    EXPECT_TRUE(shown("^Song selection - 4 songs"));
    for (const char* file : {"Auld Lang Syne.lyk", "Auld Lang Syne.mid"}) {
        EXPECT_FALSE(std::filesystem::exists(player.Library(file))) << file;
    }
    EXPECT_EQ(Content(player.Library("sonnel.snl")).find("Auld"), std::string::npos);
    player.screen.Press(window, "Escape");
    EXPECT_EQ(player.Exit(kPatience), 0) << player.Output();
}

/// Waits for a window of that title and gives it keys, one after the other.
std::string PressIn(const Player& player, const std::string& title,
                    const std::vector<std::string>& keys) {
    std::string window;
    WaitUntil([&] { return !(window = player.screen.Window(title)).empty(); }, kPatience);
    for (const std::string& key : keys) {
        player.screen.Press(window, key);
    }
    return window;
}

TEST(ThePlayer, ShowsTheNextPageInTheColoursOfItsOptions) {
    constexpr std::uint32_t Chosen = 0xFF0180;
    Player player("Twinkle Twinkle");
    PressIn(player, "^Sonnel Player 98 4.1 beta", {"alt+v", "o"});
    PressIn(player, "^Options$", {"alt+s", "alt+f", "Tab", "space", "Tab", "space"});
    const std::string colours = PressIn(player, "^Text color$", {"alt+h", "ctrl+a"});
    player.screen.Type(colours, "#ff0180");
    player.screen.Press(colours, "Return");
    PressIn(player, "^Options$", {"alt+o"});
    ASSERT_TRUE(WaitUntil([&] { return player.screen.Window("^Options$").empty(); }, kPatience));
    EXPECT_EQ(Setting(player, "Testo"), std::to_string(0x8001FF));
    EXPECT_EQ(Setting(player, "Grassetto"), "0");
    player.Press("F2");
    EXPECT_TRUE(WaitUntil([&] { return player.Pixels(Chosen) > 500; }, kPatience));
    EXPECT_EQ(player.Look().unsung, 0) << "the colour before";
    EXPECT_EQ(player.Exit(kPatience), 0) << player.Output();
}

TEST(ThePlayer, ImportsSongsAndKeepsATitleThatWasChanged) {
    Player player("Twinkle Twinkle");
    const TempDirectory other;
    for (const char* name : {"one", "two"}) {
        for (const char* extension : {".lyk", ".mid"}) {
            std::filesystem::copy(player.Library(std::string("Auld Lang Syne") + extension),
                                  other / (name + std::string(extension)));
        }
    }
    PressIn(player, "^Sonnel Player 98 4.1 beta", {"ctrl+o"});
    PressIn(player, "^Song selection - 5 songs", {"ctrl+Insert"});
    const std::string files = PressIn(player, "^Add a new LYK song$", {});
    player.screen.Type(
        files, "\"" + (other / "one.lyk").string() + "\" \"" + (other / "two.lyk").string() + "\"");
    player.screen.Press(files, "Return");
    PressIn(player, "^Sonnel Karaoke Player$", {"Return"});
    PressIn(player, "^Song selection - 7 songs", {"Down", "F4"});
    const std::string properties = PressIn(player, "^Edit song properties$", {"alt+t", "ctrl+a"});
    player.screen.Type(properties, "Old Long Since");
    player.screen.Press(properties, "Return");
    const auto index = [&] { return Content(player.Library("sonnel.snl")); };
    EXPECT_TRUE(
        WaitUntil([&] { return index().find("=Old Long Since|Traditional") != std::string::npos; },
                  kPatience));
    for (const char* name : {"one", "two"}) {
        EXPECT_NE(index().find(std::string("\n") + name + "="), std::string::npos) << name;
    }
    std::string headers;
    for (const char* name : {"one.lyk", "two.lyk", "Auld Lang Syne.lyk"}) {
        headers += Content(player.Library(name));
    }
    EXPECT_NE(headers.find("*TIOld Long Since\r\n"), std::string::npos);
    PressIn(player, "^Song selection - 7 songs", {"Escape"});
    EXPECT_EQ(player.Exit(kPatience), 0) << player.Output();
}

TEST(ThePlayer, ConvertsAKaraokeFileIntoItsLibraryAndPlaysIt) {
    Player player("Twinkle Twinkle");
    const TempDirectory other;
    std::filesystem::copy(SONNEL_SONGS "/../KAR/Auld Lang Syne.kar", other / "A new song.kar");
    PressIn(player, "^Sonnel Player 98 4.1 beta", {"ctrl+o"});
    PressIn(player, "^Song selection - 5 songs", {"F3"});
    const std::string file = PressIn(player, "^Select KAR file to be converted$", {});
    player.screen.Type(file, (other / "A new song.kar").string());
    player.screen.Press(file, "Return");
    // It is done; the song is wanted; the old file goes.
    std::string last = file;
    for (int box = 0; box < 3; ++box) {
        std::string next;
        ASSERT_TRUE(WaitUntil(
            [&] {
                next = player.screen.Window("^Sonnel Karaoke Player$");
                return !next.empty() && next != last;
            },
            kPatience))
            << box;
        player.screen.Press(next, "Return");
        last = next;
    }
    PressIn(player, "^Edit song properties$", {"Escape"});
    EXPECT_TRUE(other.Names().empty());
    EXPECT_TRUE(std::filesystem::exists(player.Library("A new song.mid")));
    PressIn(player, "^Song selection - 6 songs", {"Return"});
    EXPECT_TRUE(WaitUntil(
        [&] { return !player.screen.Window("^Sonnel Player 98 4.1 beta - Auld Lang").empty(); },
        kPatience));
    EXPECT_TRUE(player.Watch([](const Sample& now) { return now.sung > 0; }, kPatience));
    EXPECT_EQ(player.Exit(kPatience), 0) << player.Output();
}

}  // namespace
}  // namespace sonnel::test
