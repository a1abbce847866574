#include "fakes/SmallSoundFont.h"
#include "platform/audio/FluidSintetizzatore.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <string>
#include <vector>

#include <gmock/gmock.h>

namespace sonnel::test {
namespace {

constexpr int kRate = 44100;
using Bytes = std::vector<std::uint8_t>;

class FluidSintetizzatoreTest : public testing::Test {
  protected:
    void SetUp() override {
        const auto error = synth_.Prepare(kRate);
        ASSERT_FALSE(error) << error->text;
    }
    /// Messages of two or three bytes, and system-exclusive ones from their F0.
    void Send(const std::vector<Bytes>& messages) {
        for (const Bytes& message : messages) {
            if (message[0] == 0xF0) {
                synth_.SystemExclusive(std::span(message).subspan(1));
            } else {
                synth_.ChannelMessage(message[0], message[1], message.size() > 2 ? message[2] : 0);
            }
        }
    }
    /// The next frames, asked for in pieces of an odd size, as devices do.
    std::vector<float> Render(std::size_t frames) {
        constexpr std::size_t piece = 662;
        std::vector<float> sound(2 * frames);
        for (std::size_t at = 0; at < sound.size(); at += piece) {
            synth_.Render(std::span(sound).subspan(at, std::min(piece, sound.size() - at)));
        }
        return sound;
    }
    static double Peak(const std::vector<float>& sound) {
        double peak = 0;
        for (const float sample : sound) {
            peak = std::max(peak, std::abs(static_cast<double>(sample)));
        }
        return peak;
    }
    static double Difference(std::vector<float> sound, const std::vector<float>& other) {
        std::transform(sound.begin(), sound.end(), other.begin(), sound.begin(), std::minus<>());
        return Peak(sound);
    }
    /// Frequency of the left side: the shift from 100 to 1,000 Hz under which it is most like
    /// itself.
    static double Pitch(const std::vector<float>& sound) {
        const std::size_t frames = sound.size() / 4;
        std::size_t best = 0;
        double most = 0;
        for (std::size_t shift = kRate / 1000; shift < kRate / 100; ++shift) {
            double likeness = 0;
            for (std::size_t i = 0; i < frames; ++i) {
                likeness +=
                    static_cast<double>(sound[2 * i]) * static_cast<double>(sound[2 * (i + shift)]);
            }
            if (likeness > most * 1.02) {
                most = likeness;
                best = shift;
            }
        }
        return best == 0 ? 0.0 : static_cast<double>(kRate) / static_cast<double>(best);
    }
    double PitchOf(std::uint8_t key) {
        Send({{0x90, key, 100}});
        Render(4000);
        const double pitch = Pitch(Render(8000));
        Send({{0x80, key, 0}});
        synth_.AllSoundOff();
        return pitch;
    }

    FluidSintetizzatore synth_{SmallSoundFont};
};

TEST_F(FluidSintetizzatoreTest, PlaysMiddleCAtItsFrameAndPitch) {
    EXPECT_LT(Peak(Render(1000)), 1e-6);
    Send({{0xC0, 80}, {0x90, 60, 127}});  // square lead: sounds from its first sample on
    const auto sound = Render(12000);
    std::size_t onset = 0;
    while (onset < sound.size() / 2 && std::abs(sound[2 * onset]) < 1e-4F) {
        ++onset;
    }
    EXPECT_LE(onset, 2 * 64U);
    synth_.Reset();
    EXPECT_NEAR(PitchOf(60), 261.6, 4);
    EXPECT_NEAR(PitchOf(69), 440.0, 6);
}

TEST_F(FluidSintetizzatoreTest, AllSoundOffSilencesHeldNotes) {
    Send({{0xB0, 91, 0}, {0xB0, 93, 0}, {0xC0, 19}, {0xB0, 64, 127}, {0x90, 60, 127}});
    EXPECT_GT(Peak(Render(4000)), 0.01);
    synth_.AllSoundOff();
    Render(std::size_t{2} * kRate);  // the instrument's own reverberation
    EXPECT_LT(Peak(Render(4000)), 1e-4);
}

const std::vector<Bytes> kSong = {{0xB0, 101, 0},     {0xB0, 100, 3},  {0xB0, 6, 1},  // tuning 1
                                  {0xC0, 48},         {0xB0, 91, 127}, {0xB0, 93, 127},
                                  {0x90, 60, 110},    {0x90, 67, 110}, {0xC1, 30},
                                  {0x91, 40, 127},    {0x99, 36, 127}, {0x99, 42, 90},
                                  {0xE1, 0x00, 0x50}, {0xB0, 1, 80}};

TEST_F(FluidSintetizzatoreTest, ResetForgetsEverything) {
    Send(kSong);
    const auto first = Render(kRate);
    Render(12345);
    // A song that leaves every kind of trace, with notes still sounding.
    Send({{0xF0, 0x43, 0x10, 0x4C, 0x00, 0x00, 0x7E, 0x00},                  // XG on
          {0xF0, 0x7F, 0x7F, 0x04, 0x01, 0x00, 0x20},                        // master volume
          {0xF0, 0x7F, 0x7F, 0x08, 0x02, 0x01, 0x01, 60, 63, 0x00, 0x00}});  // tuning of middle C
    for (std::uint8_t channel = 0; channel < 16; ++channel) {
        const auto status = [channel](int kind) {
            return static_cast<std::uint8_t>(kind + channel);
        };
        Send({{status(0xB0), 0, 127},
              {status(0xC0), 99},
              {status(0xB0), 7, 20},
              {status(0xB0), 101, 0},
              {status(0xB0), 100, 3},
              {status(0xB0), 6, 0},
              {status(0xE0), 0, 0},
              {status(0xB0), 64, 127},
              {status(0x90), 61, 127},
              {status(0xD0), 100},
              {status(0xA0), 61, 99}});
    }
    Render(5000);
    synth_.Reset();
    EXPECT_LT(Peak(Render(10)), 1e-6);
    synth_.Reset();
    Send(kSong);
    EXPECT_LT(Difference(Render(kRate), first), 1e-6);
}

TEST_F(FluidSintetizzatoreTest, AnotherSynthesiserGivesTheSameSamples) {
    Send(kSong);
    const auto first = Render(kRate);
    ASSERT_FALSE(synth_.Prepare(kRate / 2));
    ASSERT_FALSE(synth_.Prepare(kRate));
    Send(kSong);
    EXPECT_TRUE(Render(kRate) == first);
}

TEST_F(FluidSintetizzatoreTest, ObeysSystemExclusiveMessages) {
    const std::vector<Bytes> resets = {
        {0xF0, 0x7E, 0x7F, 0x09, 0x01},                          // GM on
        {0xF0, 0x7E, 0x7F, 0x09, 0x03},                          // GM 2 on
        {0xF0, 0x41, 0x10, 0x42, 0x12, 0x40, 0, 0x7F, 0, 0x41},  // GS
        {0xF0, 0x43, 0x10, 0x4C, 0x00, 0x00, 0x7E, 0x00}};       // XG on
    for (const Bytes& reset : resets) {
        Send({{0xB0, 7, 0}, reset, {0x90, 60, 100}});
        EXPECT_GT(Peak(Render(4000)), 0.005) << static_cast<int>(reset[1]);
        synth_.Reset();
    }
    Send({{0x90, 60, 100}});
    const double loud = Peak(Render(4000));
    synth_.Reset();
    Send({{0xF0, 0x7F, 0x7F, 0x04, 0x01, 0x00, 0x40}, {0x90, 60, 100}});
    EXPECT_NEAR(Peak(Render(4000)) / loud, 0.25, 0.03);
}

TEST(FluidSintetizzatorePrepare, SaysWhatToDoWithAFileThatIsNoSoundFont) {
    FluidSintetizzatore synth([] { return std::filesystem::path("/dev/null"); });
    const auto error = synth.Prepare(kRate);
    ASSERT_TRUE(error);
    EXPECT_THAT(error->text, testing::HasSubstr("\"/dev/null\" cannot be loaded. Choose another"));
    std::vector<float> sound(100, 1.0F);
    synth.ChannelMessage(0x90, 60, 100);
    synth.Render(sound);
    EXPECT_EQ(sound, std::vector<float>(100, 0.0F));
}

}  // namespace
}  // namespace sonnel::test
