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
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace sonnel::test {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr seconds kPatience(15);
constexpr const char* kMain = "^Sonnel Player 98 4.1 beta";
constexpr const char* kMessage = "^Sonnel Karaoke Player$";
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

/// Waits for a window of that title other than `last` and gives it keys, one after the other.
std::string PressIn(const Player& player, const std::string& title,
                    const std::vector<std::string>& keys = {}, const std::string& last = "") {
    std::string window;
    const auto opened = [&] {
        window = player.screen.Window(title);
        return !window.empty() && window != last;
    };
    if (!WaitUntil(opened, kPatience)) {
        throw std::runtime_error("no window " + title + "\n" + player.Output());
    }
    for (const std::string& key : keys) {
        player.screen.Press(window, key);
    }
    return window;
}

/// Types a text into a window of that title and ends it with Return.
void TypeIn(const Player& player, const std::string& title, const std::string& text,
            const std::vector<std::string>& keysBefore = {}) {
    const std::string window = PressIn(player, title, keysBefore);
    player.screen.Type(window, text);
    player.screen.Press(window, "Return");
}

/// Waits for so many messages, one after the other, and takes each.
void TakeMessages(const Player& player, int count) {
    for (std::string last; count > 0; --count) {
        last = PressIn(player, kMessage, {"Return"}, last);
    }
}

TEST(ThePlayer, ColoursTheWordsInTimePausesResumesAndStops) {
    Player player("Twinkle Twinkle");
    PressIn(player, kMain);
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
    PressIn(player, kMessage);
    EXPECT_NE(player.MainWindow(), "");
    EXPECT_EQ(Setting(player, "Compensazione"), "none");
    TakeMessages(player, 2);  // the question, and that it was not done
    const auto quiet = [&] { return player.screen.Window(kMessage).empty(); };
    ASSERT_TRUE(WaitUntil(quiet, kPatience));
    EXPECT_EQ(Setting(player, "Compensazione"), "0");

    player.screen.MoveAndResize(player.MainWindow(), 150, 90, 640, 320);
    const std::string place = player.screen.Place(player.MainWindow());
    EXPECT_EQ(player.Exit(kPatience), 0) << player.Output();
    EXPECT_EQ(Setting(player, "Width"), "9600");
    EXPECT_EQ(Setting(player, "FullScreen"), "0");

    player.Start({});
    EXPECT_EQ(player.screen.Place(PressIn(player, kMain)), place);
    EXPECT_FALSE(WaitUntil(std::not_fn(quiet), milliseconds(500))) << "calibrated before";
    player.Press("super+m");
    EXPECT_EQ(player.Exit(kPatience), 0) << player.Output();
    EXPECT_EQ(Setting(player, "Width"), "9600");
    EXPECT_EQ(Setting(player, "FullScreen"), "-1");
}

TEST(ThePlayer, ShowsTheNextPageInTheColoursOfItsOptions) {
    constexpr std::uint32_t Chosen = 0xFF0180;
    Player player("Twinkle Twinkle");
    PressIn(player, kMain, {"alt+v", "o"});
    PressIn(player, "^Options$", {"alt+s", "alt+f", "Tab", "space", "Tab", "space"});
    TypeIn(player, "^Text color$", "#ff0180", {"alt+h", "ctrl+a"});
    PressIn(player, "^Options$", {"alt+o"});
    ASSERT_TRUE(WaitUntil([&] { return player.screen.Window("^Options$").empty(); }, kPatience));
    const auto stored = [&] { return Setting(player, "Testo") == std::to_string(0x8001FF); };
    EXPECT_TRUE(WaitUntil(stored, kPatience));
    EXPECT_EQ(Setting(player, "Grassetto"), "0");
    player.Press("F2");
    EXPECT_TRUE(WaitUntil([&] { return player.Pixels(Chosen) > 500; }, kPatience));
    EXPECT_EQ(player.Look().unsung, 0) << "the colour before";
    EXPECT_EQ(player.Exit(kPatience), 0) << player.Output();
}

TEST(ThePlayer, ImportsConvertsRenamesPlaysAndDeletesSongs) {
    Player player("Twinkle Twinkle");
    const TempDirectory other;
    for (const char* extension : {".lyk", ".mid"}) {
        std::filesystem::copy(player.Library(std::string("Auld Lang Syne") + extension),
                              other / ("one" + std::string(extension)));
    }
    const auto kar = other / "two.kar";
    std::filesystem::copy(SONNEL_SONGS "/../KAR/Auld Lang Syne.kar", kar);
    PressIn(player, kMain, {"ctrl+o"});
    PressIn(player, "^Song selection - 5 songs", {"ctrl+Insert"});
    TypeIn(player, "^Add a new LYK song$", (other / "one.lyk").string());
    TakeMessages(player, 1);
    PressIn(player, "^Song selection - 6 songs", {"F3"});
    TypeIn(player, "^Select KAR file to be converted$", kar.string());
    TakeMessages(player, 3);  // it is done; the song is wanted; the old file goes
    TypeIn(player, "^Edit song properties$", "A New Song", {"alt+t", "ctrl+a"});
    const auto index = [&] { return Content(player.Library("sonnel.snl")); };
    EXPECT_TRUE(WaitUntil([&] { return index().find("\ntwo=A New Song|") != std::string::npos; },
                          kPatience));
    EXPECT_NE(index().find("\none=Auld Lang Syne|"), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(kar));
    EXPECT_NE(Content(player.Library("two.lyk")).find("*TIA New Song\r\n"), std::string::npos);

    PressIn(player, "^Song selection - 7 songs", {"F6", "Return"});
    PressIn(player, "^Sonnel Player 98 4.1 beta - A New Song$");
    EXPECT_TRUE(player.Watch([](const Sample& now) { return now.sung > 0; }, kPatience));
    PressIn(player, kMain, {"F3", "ctrl+o"});
    PressIn(player, "^Song selection", {"Delete"});
    PressIn(player, kMessage, {"Tab", "Return"});
    PressIn(player, "^Song selection - 6 songs", {"Escape"});
    for (const char* file : {"two.lyk", "two.mid"}) {
        EXPECT_FALSE(std::filesystem::exists(player.Library(file))) << file;
    }
    EXPECT_EQ(index().find("\ntwo="), std::string::npos);
    EXPECT_EQ(player.Exit(kPatience), 0) << player.Output();
}

}  // namespace
}  // namespace sonnel::test
