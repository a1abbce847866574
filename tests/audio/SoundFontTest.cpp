#include "fakes/TempDirectory.h"
#include "platform/audio/AudioDriver.h"
#include "platform/audio/SoundFont.h"

#include <map>
#include <utility>

#include <gmock/gmock.h>

namespace sonnel::test {
namespace {

using testing::HasSubstr;

Environment Variables(std::map<std::string, std::string> values) {
    return [values = std::move(values)](const std::string& name) {
        const auto found = values.find(name);
        return found == values.end() ? std::string() : found->second;
    };
}

TEST(FindSoundFont, TakesTheSettingThenTheVariableThenTheUsualPlaces) {
    const TempDirectory folder;
    const auto found = [&](const std::string& setting, const std::string& variable) {
        const auto result = FindSoundFont(setting, Variables({{"SONNEL_SOUNDFONT", variable}}),
                                          {folder / "missing", folder.Path()});
        return result ? result->string() : result.error().text;
    };
    EXPECT_THAT(found("", ""), HasSubstr("Install a General MIDI SoundFont"));
    const std::string system = folder.Write("TimGM6mb.sf2", "x").string();
    EXPECT_EQ(found("", ""), system);
    const std::string preferred = folder.Write("default-GM.sf3", "x").string();
    EXPECT_EQ(found("", ""), preferred);
    const std::string own = folder.Write("own.sf2", "x").string();
    EXPECT_EQ(found("", own), own);
    EXPECT_EQ(found(system, own), system);
    EXPECT_THAT(found("/gone/x.sf2", own), HasSubstr("\"/gone/x.sf2\" named by the setting"));
    EXPECT_THAT(found("", "/gone/y.sf2"), HasSubstr("\"/gone/y.sf2\" named by the environment"));
    EXPECT_THAT(found(folder.Path().string(), ""), HasSubstr("does not exist"));
}

TEST(SoundFontDirectories, FollowTheDataDirectoriesOfTheEnvironment) {
    const auto usual = SoundFontDirectories(Variables({{"HOME", "/home/me"}}));
    EXPECT_EQ(usual.front(), "/home/me/.local/share/sounds/sf2");
    EXPECT_THAT(usual, testing::Contains("/usr/share/sounds/sf3"));
}

TEST(ChooseAudioDriver, ReadsTheSettingThenTheVariable) {
    using Kind = AudioDriver::Kind;
    const auto chosen = [](const std::string& setting, const std::string& variable) {
        return ChooseAudioDriver(setting, Variables({{"SONNEL_AUDIO", variable}}));
    };
    EXPECT_EQ(chosen("", ""), (AudioDriver{Kind::Device, ""}));
    EXPECT_EQ(chosen("alsa", "none"), (AudioDriver{Kind::Device, "alsa"}));
    EXPECT_EQ(chosen("none", "file:a.wav"), (AudioDriver{Kind::Silence, ""}));
    EXPECT_EQ(chosen("", "file:dir/a b.wav"), (AudioDriver{Kind::File, "dir/a b.wav"}));
}

}  // namespace
}  // namespace sonnel::test
