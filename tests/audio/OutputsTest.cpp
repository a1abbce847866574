#include "fakes/ManualClock.h"
#include "fakes/ManualOutput.h"
#include "fakes/TempDirectory.h"
#include "platform/audio/DefaultOutput.h"
#include "platform/audio/WavFile.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <csignal>
#include <cstring>
#include <memory>
#include <thread>
#include <utility>

#include <gmock/gmock.h>
#include <sys/resource.h>

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

std::uint32_t Number(const std::string& bytes, std::size_t at) {
    std::uint32_t value = 0;
    std::memcpy(&value, bytes.data() + at, sizeof value);
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
        const ManualClock clock;
        DefaultOutput output(driver, clock);
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

TEST(WavFile, IsValidBeforeItsEndOrReportsOnceThatItCannotBeWritten) {
    const auto error = WavFile("/nowhere/song.wav").Begin(8000);
    ASSERT_TRUE(error);
    EXPECT_THAT(error->text, HasSubstr("\"/nowhere/song.wav\" cannot be written: No such file"));
    (void)std::signal(SIGXFSZ, SIG_IGN);  // so that writing fails at the limit
    rlimit unlimited{};
    getrlimit(RLIMIT_FSIZE, &unlimited);
    for (const rlim_t room : {5000, 12044, 30000, 36044}) {
        const TempDirectory folder;
        const rlimit limit{room, unlimited.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
        testing::internal::CaptureStderr();
        WavFile file(folder / "song.wav");
        EXPECT_FALSE(file.Begin(8000));
        for (int piece = 0; piece < 3; ++piece) {
            file.Take(std::vector<float>(6000, 2.0F));
        }
        const std::string bytes = Content(folder / "song.wav");
        file.End();
        const std::string said = testing::internal::GetCapturedStderr();
        setrlimit(RLIMIT_FSIZE, &unlimited);
        const bool whole = bytes.size() == 36044 && Number(bytes, 40) == 36000;
        EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), whole ? 0 : 1) << said;
        EXPECT_EQ(whole, room == 36044);
        EXPECT_EQ(Number(bytes, 44), 0x7FFF7FFFU) << "too loud is the loudest, not wrapped round";
    }
}

class Device : public testing::Test {
  protected:
    DefaultOutput Output(const std::string& system = "") {
        return DefaultOutput(
            {AudioDriver::Kind::Device, system}, clock_,
            [this](const std::string&) { return std::move(made_); },
            [this](const std::string& sentence) { said_.push_back(sentence); });
    }
    ManualClock clock_;
    std::unique_ptr<ManualOutput> made_ = std::make_unique<ManualOutput>();
    ManualOutput& device_ = *made_;
    Ramp source_;
    std::vector<std::string> said_;
};

TEST_F(Device, ThatIsLostIsReplacedAndTheCountGoesOn) {
    DefaultOutput output = Output();
    ASSERT_FALSE(output.Start(source_));
    device_.Ask(1000);
    device_.reported = 800;
    output.Maintain();
    EXPECT_EQ(device_.starts, 1);
    EXPECT_EQ(output.FramesHeard(), 800);
    clock_.Advance(std::chrono::seconds(3));  // in which it asks for nothing
    output.Maintain();
    EXPECT_EQ(device_.starts, 2);
    EXPECT_EQ(output.FramesHeard(), 1000);
    device_.Ask(500);
    device_.reported = 900;
    EXPECT_EQ(output.FramesHeard(), 1500) << "devices that have just started exaggerate";

    device_.lost = true;
    device_.startError = Error{19, "gone"};
    output.Maintain();
    ASSERT_TRUE(source_.WaitFor(2000)) << "silence goes on";
    EXPECT_GE(output.FramesHeard(), 1500);
    output.Maintain();
    EXPECT_EQ(device_.starts, 2) << "not tried again at every turn";
    EXPECT_THAT(said_, testing::IsEmpty());
}

TEST_F(Device, ThatWasNeverThereIsReportedOnce) {
    device_.startError = Error{19, "gone"};
    DefaultOutput output = Output("jakc");
    for (int song = 0; song < 2; ++song) {
        ASSERT_FALSE(output.Start(source_));
        ASSERT_TRUE(source_.WaitFor(source_.asked + 500));
        device_.startError.reset();
        output.LookAgain();
        EXPECT_EQ(device_.Running(), song == 0) << "tried at most every two seconds";
        output.Stop();
        device_.startError = Error{19, "gone"};
    }
    EXPECT_THAT(said_, testing::ElementsAre(
                           HasSubstr("\"jakc\" is not available; \"manual\" is used instead"),
                           HasSubstr("the song plays silently")));
}

}  // namespace
}  // namespace sonnel::test
