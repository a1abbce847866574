#include "platform/Files.h"
#include "platform/audio/AudioDriver.h"
#include "platform/audio/SoundFont.h"

#include <map>
#include <utility>
#include <vector>

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

class SoundFontSearch : public testing::Test {
  protected:
    void SetUp() override { std::filesystem::create_directories(root_ / "b"); }
    void TearDown() override { std::filesystem::remove_all(root_); }
    std::string Place(const std::string& name) {
        EXPECT_FALSE(WriteFileAtomically(root_ / name, "x"));
        return (root_ / name).string();
    }
    std::string Found(const std::string& setting, const std::string& variable) {
        const auto result = FindSoundFont(setting, Variables({{"SONNEL_SOUNDFONT", variable}}),
                                          {root_ / "a", root_ / "b"});
        return result ? result->string() : result.error().text;
    }
    const std::filesystem::path root_ =
        std::filesystem::path(testing::TempDir()) / "sonnel-soundfont-test";
};

TEST_F(SoundFontSearch, TakesTheSettingThenTheVariableThenTheUsualPlaces) {
    EXPECT_THAT(Found("", ""), HasSubstr("Install a General MIDI SoundFont"));
    const std::string system = Place("b/TimGM6mb.sf2");
    EXPECT_EQ(Found("", ""), system);
    const std::string preferred = Place("b/default-GM.sf3");
    EXPECT_EQ(Found("", ""), preferred);
    const std::string own = Place("b/own.sf2");
    EXPECT_EQ(Found("", own), own);
    const std::string set = Place("b/set.sf2");
    EXPECT_EQ(Found(set, own), set);
}

TEST_F(SoundFontSearch, NamesTheMissingFileInsteadOfPlayingAnotherOne) {
    const std::string own = Place("b/own.sf2");
    EXPECT_THAT(Found("/gone/x.sf2", own), HasSubstr("\"/gone/x.sf2\" named by the setting"));
    EXPECT_THAT(Found("", "/gone/y.sf2"), HasSubstr("\"/gone/y.sf2\" named by the environment"));
    EXPECT_THAT(Found((root_ / "b").string(), ""), HasSubstr("does not exist"));
}

TEST(SoundFontDirectories, FollowTheDataDirectoriesOfTheEnvironment) {
    const auto usual = SoundFontDirectories(Variables({{"HOME", "/home/me"}}));
    EXPECT_EQ(usual.front(), "/home/me/.local/share/sounds/sf2");
    EXPECT_THAT(usual, testing::Contains("/usr/share/sounds/sf3"));
    EXPECT_THAT(usual, testing::Contains("/usr/share/soundfonts"));
    EXPECT_THAT(
        SoundFontDirectories(Variables({{"XDG_DATA_HOME", "/d"}, {"XDG_DATA_DIRS", "/one::/two"}})),
        testing::ElementsAre("/d/sounds/sf2", "/d/sounds/sf3", "/d/soundfonts", "/one/sounds/sf2",
                             "/one/sounds/sf3", "/one/soundfonts", "/two/sounds/sf2",
                             "/two/sounds/sf3", "/two/soundfonts"));
}

TEST(ChooseAudioDriver, ReadsTheSettingThenTheVariable) {
    using Kind = AudioDriver::Kind;
    struct Case {
        std::string setting;
        std::string variable;
        AudioDriver chosen;
    };
    const std::vector<Case> cases = {{"", "", {Kind::Device, ""}},
                                     {"", "none", {Kind::Silence, ""}},
                                     {"alsa", "none", {Kind::Device, "alsa"}},
                                     {"none", "file:a.wav", {Kind::Silence, ""}},
                                     {"", "file:dir/a b.wav", {Kind::File, "dir/a b.wav"}},
                                     {"file:", "", {Kind::File, ""}}};
    for (const auto& row : cases) {
        EXPECT_EQ(ChooseAudioDriver(row.setting, Variables({{"SONNEL_AUDIO", row.variable}})),
                  row.chosen)
            << row.setting << " / " << row.variable;
    }
}

}  // namespace
}  // namespace sonnel::test
