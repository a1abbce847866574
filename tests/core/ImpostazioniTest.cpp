#include "fakes/MemoryRegistry.h"
#include "fakes/RecordingPictureBox.h"
#include "fakes/ScriptedDialog.h"
#include "fakes/ScriptedMsgBox.h"
#include "fakes/TempDirectory.h"
#include "settings/Impostazioni.h"
#include "settings/Opzioni.h"

#include <string>
#include <tuple>
#include <vector>

#include <gmock/gmock.h>

namespace sonnel::test {
namespace {

using ::testing::ElementsAre;

const std::string Path = "Software\\Corvane\\Sonnel Player\\";

struct SettingsTest : ::testing::Test {
    void Store(const std::string& section, std::string_view name, const RegistryValue& value) {
        store.Put(RegistryRoot::CurrentUser, Path + section, name, value);
    }
    Config Load() { return CaricaConfig(store, 15360, (directory / "Karaoke").string()); }

    TempDirectory directory;
    MemoryRegistry store;
};

TEST_F(SettingsTest, AnEmptyStoreGivesTheDefaults) {
    const Config config = Load();
    EXPECT_THAT((std::vector<int>{config.ColoreTesto, config.ColoreOmbra, config.ColoreSelezione,
                                  config.ColoreSfondo, config.WinTop, config.WinLeft,
                                  config.WinWidth, config.WinHeight, config.Compensazione}),
                ElementsAre(8421376, 8421504, 16777215, 0, 600, 0, 15360, 5800, -1));
    EXPECT_FALSE(config.FullScreen);
    EXPECT_EQ(config.OpenDir, (directory / "Karaoke").string() + "/");
    EXPECT_TRUE(std::filesystem::is_directory(config.OpenDir));
}

TEST_F(SettingsTest, TheLibraryIsBesideAProgramThatIsNotInstalled) {
    const auto environment = [](const std::string&) { return std::string("/data"); };
    const std::filesystem::path program = directory / "bin";
    EXPECT_EQ(DirectoryKaraoke(program, true, environment), program / "Karaoke/");
    EXPECT_EQ(DirectoryKaraoke(program, false, environment), "/data/sonnel/Karaoke/");
    std::filesystem::create_directories(directory / "share/sonnel");
    EXPECT_EQ(DirectoryKaraoke(program, true, environment), "/data/sonnel/Karaoke/");
}

TEST_F(SettingsTest, StoredValuesAndTheirConversion) {
    // What is stored everywhere, and what the window's top (default 600), bold (true), the font's
    // size (24) and Autoplay (true) come to.
    const std::vector<std::tuple<RegistryValue, int, bool, float, bool>> cases{
        {"13.5", 14, true, 13.5F, true},
        {" +12.5 ", 12, true, 12.5F, true},
        {"0", 0, false, 24, false},
        {"0.4", 0, false, 0.4F, true},
        {"-1", -1, true, 24, true},
        {5, 5, true, 5, true},
        {std::string("8421376\0\0", 9), 8421376, true, 24, true},
        {"1e3", 1000, true, 1000, true},
        {"4294967296", 600, true, 24, true},
        {"nan", 600, true, 24, true},
        {"12 px", 600, true, 24, true},
    };
    Store("Opzioni", "OpenDir", (directory / "songs").string() + std::string("\0", 1));
    for (const auto& [value, top, bold, size, autoplay] : cases) {
        Store("Finestra", "Top", value);
        Store("Font", "Grassetto", value);
        Store("Font", "Dimensione", value);
        Store("Opzioni", "Autoplay", value);
        const Config config = Load();
        EXPECT_EQ(std::tuple(config.WinTop, config.FontBold, config.FontSize, config.Autoplay),
                  std::tuple(top, bold, size, autoplay));
        EXPECT_EQ(config.OpenDir, (directory / "songs/").string());
    }
}

TEST(OptionsOk, StoresLoadsAndAsksBeforeItMakesAnIndex) {
    Config config;
    MemoryRegistry store;
    ScriptedMsgBox msgBox;
    ScriptedDialog dialog;
    std::string log;
    const auto step = [&](const char* name) { return [&, name] { log += name + config.OpenDir; }; };
    const PartiOpzioni parts{
        config,          store,         msgBox, dialog, [](auto&) { return false; },
        step("create "), step(" load ")};
    const Config edited{
        .FontSize = 13.5F, .FontBold = false, .OpenDir = "/songs", .Autoplay = false};

    msgBox.answers = {Answer::No, Answer::Yes};
    EXPECT_FALSE(ConfermaOpzioni(parts, edited));
    const Message& question = msgBox.shown.at(0);
    EXPECT_EQ(question.text, "Karaoke index does not exists in /songs/\r\nCreate a new index?");
    EXPECT_TRUE(question.icon == Icon::Exclamation && question.buttons == Buttons::YesNo &&
                question.defaultButton == 2);
    EXPECT_TRUE((log + config.OpenDir).empty() && store.changes.empty());

    EXPECT_TRUE(ConfermaOpzioni(parts, edited));
    EXPECT_EQ(log, "create /songs/ load /songs/");
    EXPECT_EQ(msgBox.shown.back().text, "Index creation completed.");
    std::string stored;
    for (const std::string& change : store.changes) {
        EXPECT_TRUE(change.starts_with("set " + Path));
        stored += change.substr(("set " + Path).size()) + " ";
    }
    EXPECT_EQ(stored,
              "Colori|Testo=8421376 Colori|Ombreggiatura=8421504 Colori|Selezione=16777215 "
              "Colori|Sfondo=0 Font|AutoFont=-1 Font|Nome=Arial Font|Dimensione=13.5 "
              "Font|Grassetto=0 Opzioni|Ombra=-1 Opzioni|OpenDir=/songs/ "
              "Opzioni|Compensazione=-1 Opzioni|Autoplay=0 ");
}

TEST(OptionsFont, SampleAndSizes) {
    RecordingPictureBox box;
    DisegnaCampione(box, 5001, Config());
    EXPECT_EQ(box.cleared, 0);
    EXPECT_EQ(box.font, (FontSpec{"Arial", 24, true}));
    EXPECT_THAT(box.Words(true), ElementsAre("8421504 Sample @1760,230", "8421376 Sample @1730,200",
                                             "16777215 Sam @1730,200"));
    box.sizes = {7, 9.75, 12, 24, 80};
    EXPECT_THAT(DimensioniFont(box, "Fixed"), ElementsAre(9.75F, 12, 24, 80));
}

}  // namespace
}  // namespace sonnel::test
