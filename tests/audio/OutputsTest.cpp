#include "platform/Files.h"
#include "platform/audio/UscitaPredefinita.h"
#include "platform/audio/UscitaWav.h"

#include <atomic>
#include <condition_variable>
#include <cstring>
#include <memory>
#include <mutex>

#include <gmock/gmock.h>

namespace sonnel::test {
namespace {

/// Counts what it is asked for; frame k is k/32767 on the left and -k/32767 on the right.
class Ramp : public SoundSource {
  public:
    void Fill(std::span<float> out) noexcept override {
        busy_ += 1;
        overlapped = overlapped || busy_ != 1;
        std::int64_t frame = asked;
        for (std::size_t i = 0; i + 1 < out.size(); i += 2, ++frame) {
            out[i] = static_cast<float>(frame % 32768) / 32767.0F;
            out[i + 1] = -out[i];
        }
        const std::lock_guard lock(mutex_);
        asked = frame;
        busy_ -= 1;
        grown_.notify_all();
    }
    bool WaitFor(std::int64_t frames) {
        std::unique_lock lock(mutex_);
        return grown_.wait_for(lock, std::chrono::seconds(10), [&] { return asked >= frames; });
    }
    std::atomic<std::int64_t> asked{0};
    std::atomic<bool> overlapped{false};

  private:
    std::atomic<int> busy_{0};
    std::mutex mutex_;
    std::condition_variable grown_;
};

/// A file of this process: tests run side by side.
const std::filesystem::path kWav = std::filesystem::path(testing::TempDir()) /
                                   ("sonnel-test-" + std::to_string(getpid()) + ".wav");

AudioDriver WavDriver(const std::filesystem::path& path) {
    return {AudioDriver::Kind::File, Utf8FromPath(path)};
}

/// What every output promises, over those that need no device.
class OutputContract : public testing::TestWithParam<AudioDriver> {};

/// Asks for the position while frames are asked for; the last answer.
std::int64_t Follow(const UscitaAudio& output, Ramp& source) {
    std::int64_t last = 0;
    for (std::int64_t goal = 500; goal <= 3000 && source.WaitFor(goal); goal += 500) {
        const std::int64_t heard = output.FramesHeard();
        EXPECT_LE(heard, source.asked);
        EXPECT_GE(heard, last);
        last = heard;
    }
    EXPECT_GE(source.asked, 3000);
    return last;
}

void PlayAndStop(UscitaAudio& output) {
    Ramp source;
    ASSERT_FALSE(output.Start(source));
    const std::int64_t last = Follow(output, source);
    EXPECT_GT(last, 0);
    output.Stop();
    const std::int64_t asked = source.asked;
    EXPECT_GE(output.FramesHeard(), last);
    output.Stop();
    EXPECT_EQ(source.asked, asked);
}

TEST_P(OutputContract, AsksOnAndNeverGoesBack) {
    UscitaPredefinita output(GetParam());
    ASSERT_GT(output.SampleRate(), 0);
    PlayAndStop(output);
    PlayAndStop(output);
}

INSTANTIATE_TEST_SUITE_P(WithoutDevice, OutputContract,
                         testing::Values(AudioDriver{AudioDriver::Kind::Silence, ""},
                                         WavDriver(kWav)));

std::uint32_t Number(const std::string& bytes, std::size_t at, std::size_t size) {
    std::uint32_t value = 0;
    std::memcpy(&value, bytes.data() + at, size);
    return value;
}

std::string WholeFile() {
    const auto bytes = ReadFile(kWav);
    return bytes ? *bytes : "";
}

/// The samples of frames 0 to `frames` of a Ramp as a WAV file holds them.
std::string RampBytes(std::int64_t frames) {
    std::string bytes;
    for (std::int64_t frame = 0; frame < frames; ++frame) {
        for (const std::int64_t sample : {frame % 32768, -(frame % 32768)}) {
            bytes.push_back(static_cast<char>(sample & 0xFF));
            bytes.push_back(static_cast<char>(sample >> 8 & 0xFF));
        }
    }
    return bytes;
}

void ExpectHeader(const std::string& bytes) {
    ASSERT_GT(bytes.size(), 44U);
    EXPECT_EQ(bytes.substr(0, 4) + bytes.substr(8, 8) + bytes.substr(36, 4), "RIFFWAVEfmt data");
    EXPECT_EQ(Number(bytes, 4, 4), bytes.size() - 8);
    EXPECT_EQ(Number(bytes, 40, 4), bytes.size() - 44);
    const std::vector<std::uint32_t> format = {1, 2, 44100, 44100 * 4, 4, 16};
    const std::vector<std::size_t> places = {20, 22, 24, 28, 32, 34, 36};
    for (std::size_t i = 0; i < format.size(); ++i) {
        EXPECT_EQ(Number(bytes, places[i], places[i + 1] - places[i]), format[i]) << i;
    }
}

TEST(UscitaWav, HoldsExactlyWhatWasAskedFor) {
    Ramp source;
    UscitaWav output(kWav, 44100);
    for (int song = 1; song <= 2; ++song) {  // the second goes on in the same file
        ASSERT_FALSE(output.Start(source));
        ASSERT_TRUE(source.WaitFor(std::int64_t{1000} * song));
        output.Stop();
    }
    const std::string bytes = WholeFile();
    ExpectHeader(bytes);
    EXPECT_TRUE(bytes.substr(44) == RampBytes(source.asked));
}

TEST(WavFile, IsValidBeforeTheEnd) {
    WavFile file(kWav);
    ASSERT_FALSE(file.Begin(8000));
    file.Take(std::vector<float>(6000, 2.0F));
    const std::string bytes = WholeFile();
    ASSERT_EQ(bytes.size(), 44 + 4 * 3000U);
    EXPECT_EQ(Number(bytes, 40, 4), 4 * 3000U);
    EXPECT_EQ(Number(bytes, 44, 2), 32767U);  // too loud is the loudest, never wrapped round
}

TEST(WavFile, SaysWhyItCannotBeWritten) {
    Ramp source;
    UscitaPredefinita output(WavDriver("/nowhere/song.wav"));
    const auto error = output.Start(source);
    ASSERT_TRUE(error);
    EXPECT_EQ(error->text,
              "The sound file \"/nowhere/song.wav\" cannot be written: No such file or directory.");
    EXPECT_EQ(source.asked, 0);
}

TEST(WavFile, SaysThatTheDiskIsFull) {
    if (!std::filesystem::exists("/dev/full")) {
        GTEST_SKIP() << "no /dev/full here";
    }
    WavFile file("/dev/full");
    const auto error = file.Begin(8000);
    ASSERT_TRUE(error);
    EXPECT_THAT(error->text, testing::HasSubstr("No space left on device"));
}

/// A device worked by hand.
struct ManualDevice {
    bool present = true;
    bool lost = false;
    int starts = 0;
    std::int64_t heard = 0;
    SoundSource* source = nullptr;
    void Ask(std::size_t frames) const {
        std::vector<float> sound(2 * frames);
        source->Fill(sound);
    }
};

class ManualOutput : public UscitaDispositivo {
  public:
    explicit ManualOutput(ManualDevice& device) : device_(device) {}
    int SampleRate() override { return 48000; }
    std::optional<Error> Start(SoundSource& source) override {
        ++device_.starts;
        if (!device_.present) {
            return Error{19, "gone"};
        }
        device_.source = &source;
        device_.heard = 0;
        device_.lost = false;
        return {};
    }
    void Stop() override { device_.source = nullptr; }
    [[nodiscard]] std::int64_t FramesHeard() const override { return device_.heard; }
    [[nodiscard]] bool Lost() const override { return device_.lost; }
    [[nodiscard]] std::string System() const override { return "manual"; }

  private:
    ManualDevice& device_;
};

class LostDevice : public testing::Test {
  protected:
    UscitaPredefinita Output(const std::string& system = "") {
        return UscitaPredefinita(
            {AudioDriver::Kind::Device, system},
            [this](const std::string&) { return std::make_unique<ManualOutput>(device_); },
            [this](const std::string& sentence) { said_.push_back(sentence); });
    }
    ManualDevice device_;
    Ramp source_;
    std::vector<std::string> said_;
};

TEST_F(LostDevice, IsReplacedAndTheCountGoesOn) {
    UscitaPredefinita output = Output();
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
    EXPECT_EQ(source_.asked, 1500);
    EXPECT_THAT(said_, testing::IsEmpty());
}

TEST_F(LostDevice, LeavesSilenceThatGoesOn) {
    UscitaPredefinita output = Output();
    ASSERT_FALSE(output.Start(source_));
    device_.Ask(1000);
    device_.heard = 800;
    device_.lost = true;
    device_.present = false;
    output.Maintain();
    ASSERT_TRUE(source_.WaitFor(1500));
    EXPECT_GE(output.FramesHeard(), 1000);
    output.Maintain();
    EXPECT_EQ(device_.starts, 2);  // not tried again at every turn
    output.Stop();
    EXPECT_FALSE(source_.overlapped);
}

TEST_F(LostDevice, NoDeviceAtAllIsSaidOnce) {
    device_.present = false;
    UscitaPredefinita output = Output();
    for (int song = 0; song < 2; ++song) {
        ASSERT_FALSE(output.Start(source_));
        ASSERT_TRUE(source_.WaitFor(source_.asked + 500));
        output.Stop();
    }
    EXPECT_THAT(said_,
                testing::ElementsAre("No sound device can be opened: the song plays silently."));
}

TEST_F(LostDevice, AnUnknownSoundSystemIsNamed) {
    UscitaPredefinita output = Output("jakc");
    ASSERT_FALSE(output.Start(source_));
    output.Stop();
    ASSERT_EQ(said_.size(), 1U);
    EXPECT_THAT(said_[0], testing::HasSubstr("\"jakc\" is not available; \"manual\" is used"));
}

}  // namespace
}  // namespace sonnel::test
