#include "fakes/RecordingPictureBox.h"
#include "fakes/ScriptedMsgBox.h"
#include "fakes/TempDirectory.h"
#include "platform/FileRegistro.h"
#include "settings/Opzioni.h"

#include <string>

#include <gmock/gmock.h>

namespace sonnel::test {
namespace {

using ::testing::ElementsAre;

TEST(OptionsOk, StoresLoadsAndAsksBeforeItMakesAnIndex) {
    Config config;
    const TempDirectory folder;
    FileRegistro store(folder / "settings", "");
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
