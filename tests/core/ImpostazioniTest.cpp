#include "fakes/MemoryRegistro.h"
#include "fakes/TempDirectory.h"
#include "settings/Impostazioni.h"
#include "settings/TestoNumero.h"
#include "settings/basRegistry.h"

#include <limits>
#include <string>
#include <tuple>
#include <utility>
#include <variant>
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
    MemoryRegistro store;
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

TEST_F(SettingsTest, ReadsEverySettingInOrder) {
    for (const char* section : {"Colori", "Font", "Finestra", "Opzioni"}) {
        Store(section, "unrelated", "");
    }
    Load();
    EXPECT_THAT(store.queried,
                ElementsAre("Testo", "Ombreggiatura", "Selezione", "Sfondo", "AutoFont", "Nome",
                            "Dimensione", "Grassetto", "Top", "Left", "Width", "Height",
                            "FullScreen", "Ombra", "Compensazione", "Autoplay", "OpenDir"));
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
        {"1e999", 600, -1, 24, true},    {"nan", 600, -1, 24, true},
        {"12 px", 600, -1, 24, true},    {"", 600, -1, 24, true},
        {"#NULL#", 600, -1, 24, true},
    };
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
    }
    Store("Finestra", "Left", std::string("\x01\xFE\xFF\xFF", 4), RegistryType::Number);
    Store("Finestra", "Width", "12", RegistryType::Binary);
    Store("Finestra", "Height", "12", RegistryType::Number);
    const Config config = Load();
    EXPECT_EQ(std::tuple(config.WinLeft, config.WinWidth, config.WinHeight),
              std::tuple(-511, 15360, 5800));
}

TEST_F(SettingsTest, TheKaraokeDirectory) {
    const std::string songs = (directory / "songs").string();
    for (const std::string& stored : {songs, songs + "/", songs + std::string("\0", 1)}) {
        Store("Opzioni", "OpenDir", stored);
        EXPECT_EQ(Load().OpenDir, songs + "/");
    }
    Store("Opzioni", "OpenDir", (directory / "missing/songs").string());
    EXPECT_EQ(Load().OpenDir, (directory / "missing/songs/").string());
    EXPECT_THAT(directory.Names(), ElementsAre("songs")) << "one level only";
}

TEST_F(SettingsTest, SavesAndReadsBackAndFailsInSilence) {
    const std::vector<std::pair<std::string, std::string>> places{
        {"", "Software\\Corvane\\Sonnel Player"}, {"Font", Key("Font")}};
    for (const auto& [section, key] : places) {
        SalvaImpostazione(store, section, "Nome", "Noto \u00C9");
        EXPECT_EQ(LeggiImpostazione(store, section, "nome", ""), "Noto \u00C9");
        EXPECT_EQ(store.Get(User, key, "Nome")->data, "Noto \u00C9") << "no NUL at the end";
    }
    EXPECT_EQ(LeggiImpostazione(store, "Font", "other", "default"), "default");
    for (int* const status : {&store.createStatus, &store.openStatus, &store.setStatus}) {
        *status = 5;
        SalvaImpostazione(store, "New", "Nome", "x");
        *status = 0;
    }
    for (int* const status : {&store.openStatus, &store.queryStatus}) {
        *status = 5;
        EXPECT_EQ(LeggiImpostazione(store, "Font", "Nome", "default"), "default");
        *status = 0;
    }
    EXPECT_EQ(store.written.size(), 2U);
    EXPECT_THAT(store.open, IsEmpty());
}

TEST_F(SettingsTest, NumbersOfTheMachineWideStore) {
    constexpr RegistryRoot Machine = RegistryRoot::LocalMachine;
    constexpr const char* Classes = "SOFTWARE\\Classes\\x";
    ScriviChiave(store, Machine, Classes, "EditFlags", 0x10000, RegistryType::Number);
    EXPECT_EQ(store.Get(Machine, Classes, "EditFlags")->data, std::string("\0\0\1\0", 4));
    EXPECT_EQ(std::get<std::int32_t>(LeggiChiave(store, Machine, Classes, "EditFlags")), 0x10000);
    ScriviChiave(store, Machine, Classes, "Flags", std::string("x"), RegistryType::Binary);
    EXPECT_EQ(store.Get(Machine, Classes, "Flags"), nullptr);
    EXPECT_EQ(std::get<std::string>(LeggiChiave(store, User, Classes, "")), "#NULL#");
}

TEST(TestoNumero, ComesBackAsTheSameNumber) {
    const std::vector<std::pair<float, std::string>> cases{
        {24.0F, "24"}, {13.5F, "13.5"}, {-0.1F, "-0.1"}, {1e10F, "10000000000"}};
    for (const auto& [number, text] : cases) {
        EXPECT_EQ(TestoNumero(number), text);
    }
    using Float = std::numeric_limits<float>;
    for (const float number : {13.5F, -0.1F, 1.0F / 3, Float::max(), Float::denorm_min()}) {
        EXPECT_EQ(Decimale(TestoNumero(number)), number);
    }
}

}  // namespace
}  // namespace sonnel::test
