#include "fakes/TempDirectory.h"
#include "fakes/TracedProcess.h"
#include "platform/audio/DefaultOutput.h"
#include "platform/audio/WavOutput.h"

#include <atomic>
#include <chrono>
#include <cstring>
#include <iostream>
#include <memory>
#include <sstream>
#include <thread>
#include <utility>

#include <gmock/gmock.h>

namespace sonnel::test {
namespace {

using testing::HasSubstr;

/// Counts what it is asked for; frame k is k/32767 on the left and -k/32767 on the right.
class Ramp : public SoundSource {
  public:
    void Fill(std::span<float> out) noexcept override {
        std::int64_t frame = asked;
        for (std::size_t i = 0; i + 1 < out.size(); i += 2, ++frame) {
            out[i] = static_cast<float>(frame % 32768) / 32767.0F;
            out[i + 1] = -out[i];
        }
        asked = frame;
    }
    bool WaitFor(std::int64_t frames) const {
        for (int ms = 0; asked < frames && ms < 10000; ++ms) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        return asked >= frames;
    }
    std::atomic<std::int64_t> asked{0};
};

std::uint32_t Number(const std::string& bytes, std::size_t at, std::size_t size = 4) {
    std::uint32_t value = 0;
    std::memcpy(&value, bytes.data() + at, size);
    return value;
}

/// A whole WAV file of 44,100 Hz with the first frames of a Ramp.
void ExpectRamp(const std::string& bytes, std::int64_t frames) {
    const std::string format("WAVEfmt \x10\0\0\0\1\0\2\0\x44\xAC\0\0\x10\xB1\2\0\4\0\x10\0data",
                             32);
    ASSERT_EQ(bytes.size(), static_cast<std::size_t>(44 + 4 * frames));
    EXPECT_EQ(bytes.substr(0, 4) + bytes.substr(8, 32), "RIFF" + format);
    EXPECT_EQ(Number(bytes, 4), bytes.size() - 8);
    EXPECT_EQ(Number(bytes, 40), bytes.size() - 44);
    for (std::int64_t frame = 0; frame < frames; ++frame) {
        const std::uint32_t both = Number(bytes, static_cast<std::size_t>(44 + 4 * frame));
        ASSERT_EQ(static_cast<std::int16_t>(both & 0xFFFF), frame % 32768);
        ASSERT_EQ(static_cast<std::int16_t>(both >> 16), -(frame % 32768));
    }
}

TEST(WithoutDevice, SongsGoOnAtTheClockAndTheFileHoldsExactlyWhatWasAskedFor) {
    const TempDirectory folder;
    const auto wav = folder / "song.wav";
    for (const AudioDriver& driver : {AudioDriver{AudioDriver::Kind::Silence, ""},
                                      AudioDriver{AudioDriver::Kind::File, wav.string()}}) {
        DefaultOutput output(driver);
        Ramp source;
        for (int song = 0; song < 2; ++song) {  // the second goes on in the same file
            const std::int64_t before = source.asked;
            std::int64_t last = 0;
            ASSERT_FALSE(output.Start(source));
            for (std::int64_t goal = 500; goal <= 3000; goal += 500) {
                ASSERT_TRUE(source.WaitFor(before + goal));
                const std::int64_t heard = output.FramesHeard();
                EXPECT_LE(heard, source.asked - before);
                EXPECT_GE(heard, last);
                last = heard;
            }
            EXPECT_GT(last, 0);
            output.Stop();
            EXPECT_GE(output.FramesHeard(), last);
        }
        if (driver.kind == AudioDriver::Kind::File) {
            ExpectRamp(Content(wav), source.asked);
        }
    }
}

TEST(WavFile, IsValidBeforeTheEnd) {
    const TempDirectory folder;
    WavFile file(folder / "song.wav");
    ASSERT_FALSE(file.Begin(8000));
    file.Take(std::vector<float>(6000, 2.0F));
    const std::string bytes = Content(folder / "song.wav");
    ASSERT_EQ(bytes.size(), 44 + 4 * 3000U);
    EXPECT_EQ(Number(bytes, 40), 4 * 3000U);
    EXPECT_EQ(Number(bytes, 44, 2), 32767U);  // too loud is the loudest, never wrapped round
}

TEST(WavFile, TellsThatItCannotBeWritten) {
    const auto error = WavFile("/nowhere/song.wav").Begin(8000);
    ASSERT_TRUE(error);
    EXPECT_EQ(error->text,
              "The sound file \"/nowhere/song.wav\" cannot be written: No such file or directory.");
    const TempDirectory folder;
    const auto record = [wav = folder / "song.wav"] {
        std::ostringstream said;
        std::cerr.rdbuf(said.rdbuf());
        WavFile file(wav);
        const bool begun = !file.Begin(8000);
        for (int piece = 0; begun && piece < 3; ++piece) {
            file.Take(std::vector<float>(6000, 0.5F));
        }
        file.End();
        return begun && said.str().empty();
    };
    for (int call = 0; const auto status = OnFullDisk(call, record); ++call) {
        const std::string bytes = Content(folder / "song.wav");
        const bool whole = bytes.size() >= 44 + 36000 && Number(bytes, 40) == 36000;
        EXPECT_TRUE(*status == 1 || (*status == 0 && whole)) << "untold at " << call;
    }
}

/// A device worked by hand.
class ManualDevice : public DeviceOutput {
  public:
    int SampleRate() override { return 48000; }
    std::optional<Error> Start(SoundSource& source) override {
        ++starts;
        heard = 0;
        lost = false;
        source_ = &source;
        return present ? std::nullopt : std::optional(Error{19, "gone"});
    }
    void Stop() override { source_ = nullptr; }
    std::int64_t FramesHeard() const override { return heard; }
    bool Lost() const override { return lost; }
    std::string System() const override { return "manual"; }
    void Ask(std::size_t frames) const {
        std::vector<float> sound(2 * frames);
        source_->Fill(sound);
    }

    bool present = true;
    bool lost = false;
    int starts = 0;
    std::int64_t heard = 0;

  private:
    SoundSource* source_ = nullptr;
};

class Device : public testing::Test {
  protected:
    DefaultOutput Output(const std::string& system = "") {
        return DefaultOutput(
            {AudioDriver::Kind::Device, system},
            [this](const std::string&) { return std::move(made_); },
            [this](const std::string& sentence) { said_.push_back(sentence); });
    }
    std::unique_ptr<ManualDevice> made_ = std::make_unique<ManualDevice>();
    ManualDevice& device_ = *made_;
    Ramp source_;
    std::vector<std::string> said_;
};

TEST_F(Device, ThatIsLostIsReplacedAndTheCountGoesOn) {
    DefaultOutput output = Output();
    ASSERT_FALSE(output.Start(source_));
    device_.Ask(1000);
    device_.heard = 800;
    output.Maintain();
    EXPECT_EQ(device_.starts, 1);
    EXPECT_EQ(output.FramesHeard(), 800);
    device_.lost = true;
    output.Maintain();
    EXPECT_EQ(device_.starts, 2);
    EXPECT_EQ(output.FramesHeard(), 1000);
    device_.Ask(500);
    device_.heard = 900;  // devices that have just started exaggerate
    EXPECT_EQ(output.FramesHeard(), 1500);

    device_.lost = true;
    device_.present = false;
    output.Maintain();
    ASSERT_TRUE(source_.WaitFor(2000)) << "silence goes on";
    EXPECT_GE(output.FramesHeard(), 1500);
    output.Maintain();
    EXPECT_EQ(device_.starts, 2) << "not tried again at every turn";
    EXPECT_THAT(said_, testing::IsEmpty());
}

TEST_F(Device, ThatWasNeverThereIsToldOfOnce) {
    device_.present = false;
    DefaultOutput output = Output();
    for (int song = 0; song < 2; ++song) {
        ASSERT_FALSE(output.Start(source_));
        ASSERT_TRUE(source_.WaitFor(source_.asked + 500));
        output.Stop();
    }
    EXPECT_THAT(said_,
                testing::ElementsAre("No sound device can be opened: the song plays silently."));
}

TEST_F(Device, OfAnUnknownSoundSystemIsNamed) {
    DefaultOutput output = Output("jakc");
    ASSERT_FALSE(output.Start(source_));
    EXPECT_THAT(said_, testing::ElementsAre(
                           HasSubstr("\"jakc\" is not available; \"manual\" is used instead")));
}

}  // namespace
}  // namespace sonnel::test
