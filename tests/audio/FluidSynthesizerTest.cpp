#include "fakes/SmallSoundFont.h"
#include "platform/audio/FluidSynthesizer.h"

#include <algorithm>
#include <filesystem>
#include <span>
#include <utility>
#include <vector>

#include <gmock/gmock.h>

namespace sonnel::test {
namespace {

constexpr int kRate = 44100;
using Bytes = std::vector<std::uint8_t>;

class FluidSynthesizerTest : public testing::Test {
  protected:
    void SetUp() override { ASSERT_FALSE(synth_.Prepare(kRate)); }
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
    float Peak(std::size_t frames) {
        const auto sound = Render(frames);
        const auto [low, high] = std::minmax_element(sound.begin(), sound.end());
        return std::max(-*low, *high);
    }

    FluidSynthesizer synth_{SmallSoundFont};
};

TEST_F(FluidSynthesizerTest, PlaysAnAAtItsPitchUntilAllSoundIsOff) {
    // An ocarina is nearly a sine. A G with the pitch bent up by two semitones is an A.
    Send({{0xC0, 79}, {0xB0, 91, 0}, {0xB0, 93, 0}, {0x90, 67, 100}, {0xE0, 127, 127}});
    Render(kRate / 4);
    const auto second = Render(kRate);
    int periods = 0;
    for (std::size_t i = 2; i < second.size(); i += 2) {
        periods += second[i - 2] < 0 && second[i] >= 0 ? 1 : 0;
    }
    EXPECT_NEAR(periods, 440, 5);
    synth_.AllSoundOff();
    EXPECT_EQ(synth_.ActiveVoices(), 0);
}

const std::vector<Bytes> kSong = {{0xB0, 101, 0},     {0xB0, 100, 3},  {0xB0, 6, 1},  // tuning 1
                                  {0xC0, 48},         {0xB0, 91, 127}, {0xB0, 93, 127},
                                  {0x90, 60, 110},    {0x90, 67, 110}, {0xC1, 30},
                                  {0x91, 40, 127},    {0x99, 36, 127}, {0x99, 42, 90},
                                  {0xE1, 0x00, 0x50}, {0xB0, 1, 80}};

TEST_F(FluidSynthesizerTest, ResetForgetsEverything) {
    Send(kSong);
    const auto first = Render(kRate);
    // A song that leaves every kind of trace, with notes still sounding.
    Send({{0xF0, 0x43, 0x10, 0x4C, 0x00, 0x00, 0x7E, 0x00},                  // XG on
          {0xF0, 0x7F, 0x7F, 0x04, 0x01, 0x00, 0x20},                        // master volume
          {0xF0, 0x7F, 0x7F, 0x08, 0x02, 0x01, 0x01, 60, 63, 0x00, 0x00}});  // tuning of middle C
    for (std::uint8_t channel = 0; channel < 16; ++channel) {
        const auto to = [channel](int status) {
            return static_cast<std::uint8_t>(status | channel);
        };
        Send({{to(0xB0), 0, 127}, {to(0xC0), 99}, {to(0xB0), 7, 20}, {to(0xE0), 0, 0}});
        Send({{to(0xB0), 64, 127}, {to(0x90), 61, 127}, {to(0xD0), 100}, {to(0xA0), 61, 99}});
    }
    Render(5000);
    synth_.Reset();
    EXPECT_LT(Peak(10), 1e-6);
    synth_.Reset();
    Send(kSong);
    EXPECT_THAT(Render(kRate), testing::Pointwise(testing::FloatNear(1e-6F), first));
}

TEST_F(FluidSynthesizerTest, ObeysSystemExclusiveMessages) {
    const Bytes quiet = {0xB0, 7, 0};  // which a reset takes back
    const std::vector<std::pair<std::vector<Bytes>, float>> cases = {
        {{quiet, {0xF0, 0x41, 0x10, 0x42, 0x12, 0x40, 0, 0x7F, 0, 0x41}}, 1.0F},  // GS
        {{{0xF0, 0x7F, 0x7F, 0x04, 0x01, 0x00, 0x40}}, 0.25F}};                   // half volume
    Send({{0x90, 60, 100}});
    const float loud = Peak(4000);
    for (std::size_t i = 0; i < cases.size(); ++i) {
        synth_.Reset();
        Send(cases[i].first);
        Send({{0x90, 60, 100}});
        EXPECT_NEAR(Peak(4000) / loud, cases[i].second, 0.03F) << "case " << i;
    }
}

TEST(FluidSynthesizerPrepare, SaysWhatToDoWithAFileThatIsNoSoundFont) {
    FluidSynthesizer synth([] { return std::filesystem::path("/dev/null"); });
    const auto error = synth.Prepare(kRate);
    ASSERT_TRUE(error);
    EXPECT_THAT(error->text, testing::HasSubstr("\"/dev/null\" cannot be loaded. Choose another"));
}

}  // namespace
}  // namespace sonnel::test
