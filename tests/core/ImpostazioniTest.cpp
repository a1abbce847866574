#include "fakes/MemoryRegistry.h"
#include "fakes/RecordingPictureBox.h"
#include "fakes/ScriptedMsgBox.h"
#include "fakes/TempDirectory.h"
#include "platform/FileRegistry.h"
#include "settings/Impostazioni.h"
#include "settings/Opzioni.h"
#include "settings/TestoNumero.h"

#include <limits>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>

namespace sonnel::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr RegistryRoot User = RegistryRoot::CurrentUser;

class SettingsTest : public ::testing::Test {
  protected:
    static std::string Key(const std::string& section) {
        return "Software\\Corvane\\Sonnel Player\\" + section;
    }
    void Store(const std::string& section, std::string_view name, std::string_view text,
               RegistryType type = RegistryType::String) {
        store.Put(User, Key(section), name, type, text);
    }
    Config Load() {
        Config config = CaricaConfig(store, 15360, (directory / "Karaoke").string());
        EXPECT_THAT(store.open, IsEmpty()) << "every key is closed";
        return config;
    }

    TempDirectory directory;
    MemoryRegistry store;
};

TEST_F(SettingsTest, AnEmptyStoreGivesTheDefaults) {
    const Config config = Load();
    EXPECT_THAT((std::vector<int>{config.ColoreTesto, config.ColoreOmbra, config.ColoreSelezione,
                                  config.ColoreSfondo, config.WinTop, config.WinLeft,
                                  config.WinWidth, config.WinHeight, config.Compensazione}),
                ElementsAre(8421376, 8421504, 16777215, 0, 600, 0, 15360, 5800, -1));
    EXPECT_THAT((std::vector<int>{config.Ombra, config.FontBold, config.AutoFont, config.FullScreen,
                                  config.Autoplay}),
                ElementsAre(-1, -1, -1, 0, 1));
    EXPECT_EQ(config.FontName, "Arial");
    EXPECT_EQ(config.FontSize, 24);
    EXPECT_EQ(config.OpenDir, (directory / "Karaoke").string() + "/");
    EXPECT_TRUE(std::filesystem::is_directory(config.OpenDir));
}

TEST_F(SettingsTest, StoredValuesAndTheirConversion) {
    struct Case {
        std::string text;
        int top;     ///< default 600
        int bold;    ///< default -1
        float size;  ///< default 24
        bool autoplay;
    };
    const std::vector<Case> cases{
        {"13.5", 14, 14, 13.5F, true},   {"12.5", 12, 12, 12.5F, true},
        {" +7 ", 7, 7, 7, true},         {"0", 0, 0, 24, false},
        {"-1", -1, -1, 24, true},        {std::string("8421376\0\0", 9), 8421376, -1, 24, true},
        {"1e3", 1000, 1000, 1000, true}, {"4294967296", 600, -1, 24, true},
        {"nan", 600, -1, 24, true},      {"12 px", 600, -1, 24, true},
    };
    Store("Opzioni", "OpenDir", (directory / "songs").string() + std::string("\0", 1));
    for (const Case& c : cases) {
        Store("Finestra", "Top", c.text);
        Store("Font", "Grassetto", c.text);
        Store("Font", "Dimensione", c.text);
        Store("Opzioni", "Autoplay", c.text);
        const Config config = Load();
        EXPECT_EQ(config.WinTop, c.top) << c.text;
        EXPECT_EQ(config.FontBold, c.bold) << c.text;
        EXPECT_EQ(config.FontSize, c.size) << c.text;
        EXPECT_EQ(config.Autoplay, c.autoplay) << c.text;
        EXPECT_EQ(config.OpenDir, (directory / "songs/").string());
    }
    store.queried.clear();
    Store("Colori", "unrelated", "");
    Store("Finestra", "Left", std::string("\x01\xFE\xFF\xFF", 4), RegistryType::Number);
    Store("Finestra", "Width", "12", RegistryType::Binary);
    const Config config = Load();
    EXPECT_EQ(std::pair(config.WinLeft, config.WinWidth), std::pair(-511, 15360));
    EXPECT_THAT(store.queried,
                ElementsAre("Testo", "Ombreggiatura", "Selezione", "Sfondo", "AutoFont", "Nome",
                            "Dimensione", "Grassetto", "Top", "Left", "Width", "Height",
                            "FullScreen", "Ombra", "Compensazione", "Autoplay", "OpenDir"));
}

TEST(TestoNumero, ComesBackAsTheSameNumber) {
    EXPECT_EQ(TestoNumero(-13.5F), "-13.5");
    for (const float number : {-0.1F, 1.0F / 3, std::numeric_limits<float>::max()}) {
        EXPECT_EQ(Decimale(TestoNumero(number)), number);
    }
}

TEST(OptionsOk, StoresLoadsAndAsksBeforeItMakesAnIndex) {
    Config config;
    const TempDirectory folder;
    FileRegistry store(folder / "settings", "");
    ScriptedMsgBox msgBox;
    std::string log;
    const auto step = [&](const char* name) {
        return [&, name] { log += name + (" " + config.OpenDir + ", "); };
    };
    const PartiOpzioni parts{
        config,
        store,
        msgBox,
        [&](const std::string&) { return false; },
        step("create"),
        step("rebuild"),
        step("load"),
        step("unload"),
        [&](const std::string& directory) { log += "in " + directory + ", "; }};
    const Config edited{.FontSize = 13.5F, .FontBold = 0, .OpenDir = "/songs", .Autoplay = false};

    msgBox.answers = {Answer::No, Answer::Yes};
    EXPECT_FALSE(ConfermaOpzioni(parts, edited));
    const Message& question = msgBox.shown.at(0);
    EXPECT_EQ(question.text, "Karaoke index does not exists in /songs/\r\nCreate a new index?");
    EXPECT_TRUE(question.icon == Icon::Exclamation && question.buttons == Buttons::YesNo &&
                question.defaultButton == 2);
    EXPECT_TRUE((log + config.OpenDir).empty() && folder.Names().empty());

    EXPECT_TRUE(ConfermaOpzioni(parts, edited));
    EXPECT_EQ(log, "in /songs/, create /songs/, rebuild /songs/, load /songs/, unload /songs/, ");
    EXPECT_EQ(msgBox.shown.back().text, "Index creation completed.");
    const std::string path = "[Software\\Corvane\\Sonnel Player\\";
    EXPECT_EQ(
        Content(folder / "settings"),
        path + "Colori]\nTesto=8421376\nOmbreggiatura=8421504\nSelezione=16777215\nSfondo=0\n\n" +
            path + "Font]\nAutoFont=-1\nNome=Arial\nDimensione=13.5\nGrassetto=0\n\n" + path +
            "Opzioni]\nOmbra=-1\nOpenDir=/songs/\nCompensazione=-1\nAutoplay=0\n");
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
