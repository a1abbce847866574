// The real program with a real song: what a person sees and hears.

#include "e2e/Player.h"
#include "e2e/Recording.h"

#include "fakes/ScriptedMsgBox.h"
#include "fakes/TempDirectory.h"
#include "platform/midi/Sequence.h"
#include "platform/midi/SmfReader.h"
#include "song/LeggiKaraoke.h"

#include <algorithm>
#include <chrono>
#include <iterator>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace sonnel::test {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr const char* kMessageTitle = "Sonnel Karaoke Player";
constexpr seconds kPatience(15);
constexpr milliseconds kMargin(300);  // nothing is checked so close to a change of mode

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

double Ms(Clock::duration time) {
    return std::chrono::duration<double, std::milli>(time).count();
}

/// Every step that was due well before `end` was seen, in order, within 150 ms.
void ExpectInTime(const std::vector<Step>& due, const std::vector<Step>& seen,
                  Clock::time_point end) {
    constexpr double MostMs = 150;
    std::size_t count = 0;
    for (; count < due.size() && due[count].at + kMargin < end; ++count) {
        ASSERT_LT(count, seen.size());
        const double late = Ms(seen[count].at - due[count].at);
        testing::Test::RecordProperty("late_ms_" + std::to_string(count), std::to_string(late));
        EXPECT_EQ(seen[count].grown, due[count].grown) << "step " << count;
        EXPECT_NEAR(late, 0, MostMs) << "step " << count;
    }
    EXPECT_GT(count, 15U) << "not even a page";
    EXPECT_LE(seen.size(), count + 1) << "steps out of turn";
}

class ThePlayer : public testing::Test {
  protected:
    void Start(const std::string& song) { player_ = std::make_unique<Player>(song); }
    void Play();
    void Pause();
    void Resume();
    void Stop();
    void Exit();
    void CheckSteps(const SoundFile& sound) const;

    std::unique_ptr<Player> player_;
    Clock::time_point paused_;
    Clock::time_point resumed_;
};

void ThePlayer::Play() {
    player_->Press("F2");
    player_->Watch(seconds(15));
}

void ThePlayer::Pause() {
    player_->Press("F3");
    paused_ = Clock::now();
    player_->Watch(milliseconds(200));
    const double sung = player_->Seen().back().sung;
    EXPECT_GT(sung, 0);
    EXPECT_FALSE(
        player_->Watch([&](const Sample& now) { return now.sung != sung; }, milliseconds(1800)));
    resumed_ = Clock::now();
}

void ThePlayer::Resume() {
    const double sung = player_->Seen().back().sung;
    player_->ClickWords();
    EXPECT_TRUE(player_->Watch([&](const Sample& now) { return now.sung > sung; }, seconds(2)));
}

void ThePlayer::Stop() {
    const auto wordless = [](const Sample& now) { return now.sung + now.unsung == 0; };
    player_->Press("F4");
    EXPECT_TRUE(player_->Watch(wordless, seconds(1)));
    EXPECT_FALSE(player_->Watch([&](const Sample& now) { return !wordless(now); }, seconds(1)));
}

void ThePlayer::Exit() {
    player_->Press("ctrl+x");
    EXPECT_EQ(player_->Program().WaitForEnd(kPatience), 0) << player_->Program().Output();
}

/// The song began so long before its first note as its MIDI file says, and when that note was heard
/// the sound file tells. The steps themselves have no part in this.
void ThePlayer::CheckSteps(const SoundFile& sound) const {
    const auto lead = FirstNote(player_->Library("Twinkle Twinkle.mid"));
    const Clock::time_point start =
        sound.Onset() - std::chrono::duration_cast<Clock::duration>(lead);
    const auto due = DueSteps(Lyrics(player_->Library("Twinkle Twinkle.lyk")), start);
    std::vector<Sample> playing;
    std::copy_if(player_->Seen().begin(), player_->Seen().end(), std::back_inserter(playing),
                 [&](const Sample& sample) { return sample.at < paused_; });
    ExpectInTime(due, Steps(playing), paused_);
    EXPECT_TRUE(std::any_of(due.begin(), due.end(), [&](const Step& step) {
        return step.at > paused_ && step.at + kMargin < resumed_;
    })) << "a pause that does nothing would not have been seen";
}

TEST_F(ThePlayer, ColoursTheWordsInTimePausesResumesAndStops) {
    Start("Twinkle Twinkle");
    ASSERT_TRUE(WaitUntil([&] { return player_->MainWindowShown(); }, kPatience))
        << player_->Program().Output();
    EXPECT_EQ(player_->Look().sung, 0);
    Play();
    Pause();
    Resume();
    Stop();
    Exit();

    const SoundFile sound(player_->Sound(), player_->Seen());
    CheckSteps(sound);
    EXPECT_GT(sound.Peak(paused_ - seconds(10), paused_ - kMargin), 0.02);
    // What rings on in the room dies away within a second.
    EXPECT_LT(sound.Peak(resumed_ - milliseconds(500), resumed_ - milliseconds(50)), 0.001);
    EXPECT_GT(sound.Peak(resumed_ + milliseconds(50), resumed_ + seconds(1)), 0.02);
}

TEST_F(ThePlayer, TellsOfAWrongCommandLineAndIsThereWithoutASong) {
    Start("no such song");
    const auto message = [&] { return player_->OnScreen().Window(kMessageTitle); };
    ASSERT_TRUE(WaitUntil([&] { return message().has_value(); }, kPatience))
        << player_->Program().Output();
    EXPECT_FALSE(player_->MainWindowShown());
    // One message tells what is missing, the next one that the command line was wrong.
    const auto dismissed = [&] {
        if (const auto box = message()) {
            player_->OnScreen().Press(*box, "Return");
        }
        return player_->MainWindowShown();
    };
    ASSERT_TRUE(WaitUntil(dismissed, kPatience));

    player_->Press("F2");
    player_->Watch(milliseconds(500));
    EXPECT_EQ(player_->Seen().back().sung + player_->Seen().back().unsung, 0);
    EXPECT_TRUE(player_->Program().Running());
    Exit();
}

}  // namespace
}  // namespace sonnel::test
