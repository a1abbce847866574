#include "fakes/ClockedEvents.h"
#include "fakes/FakeMainWindow.h"
#include "fakes/FakeShell.h"
#include "fakes/ManualClock.h"
#include "fakes/MemoryRegistry.h"
#include "fakes/ScriptedMsgBox.h"
#include "player/AbilitaFunzioni.h"
#include "player/FormattaTempo.h"
#include "player/window/AssociaLyk.h"
#include "player/window/ControlloVolume.h"
#include "player/window/OpzioniRiga.h"
#include "player/window/PostoFinestra.h"
#include "player/window/PostoParole.h"
#include "player/window/RigaComando.h"
#include "ui/basCommon.h"

#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include <gmock/gmock.h>

namespace sonnel::test {
namespace {

using Lines = std::map<std::string, std::string>;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::StartsWith;

TEST(CommandLineTest, TheSongIsNamedWithoutApostrophesAndExtension) {
    // A quote in front takes the last character with it, whatever that is.
    const Lines quoted{{"\"", ""}, {"\"a b\"", "a b"}, {"\"a b", "a "}, {"a\"", "a\""}};
    for (const auto& [line, bare] : quoted) {
        EXPECT_EQ(SenzaVirgolette(line), bare) << line;
    }
    // "ad.ly": any four characters of ".mid.lyk" in a row count as an extension.
    const Lines cases{{"/s/A.lyk", "/s/A"},   {"/s/A.mid", "/s/A"}, {"/s/A.LYK", "/s/A.LYK"},
                      {"'/s/A.lyk'", "/s/A"}, {"'A.lyk", "A"},      {"ad.ly", "a"},
                      {"più.lyk", "più"},     {"d", "d"},           {"'.ly'", ".ly"}};
    for (const auto& [line, song] : cases) {
        EXPECT_EQ(BranoDaRiga(line), song) << line;
    }
    const std::string here = std::filesystem::current_path().string() + "/";
    const Lines named{
        {"", ""}, {"\"a b\"", here + "a b"}, {"'a.lyk'", here + "a.lyk'"}, {"/a", "/a"}};
    for (const auto& [line, path] : named) {
        EXPECT_EQ(PercorsoAssoluto(line), path) << line;
    }
}

TEST(CommandLineTest, KnownOptionsAreTakenOutAndQuestionsAnswered) {
    EXPECT_THAT(RispostaRiga({"--key", "99", "--help", "--version"}).value(),
                StartsWith("Usage: sonnel "));
    EXPECT_EQ(RispostaRiga({"song", "--version"}), "sonnel 4.1.11\n");
    EXPECT_EQ(RispostaRiga({"--helpful", "--Version"}), std::nullopt);
    const auto line = LeggiOpzioni({"--my", "--key", "-2", "song", "--melody", "off", "--tempo"});
    EXPECT_EQ(line.error().text,
              "--tempo needs a whole number of percent from 50 to 150, not \"\".");
    const auto good = LeggiOpzioni({"--my", "--key", "-2", "--one", "song"});
    EXPECT_TRUE(good->uno);
    EXPECT_EQ(good->brano, "--my song");
    EXPECT_EQ(good->canto.value_or(Canto{}).tonalita, -2);
}

TEST(TimeTextTest, MinutesAndTwoDigitsOfSeconds) {
    const std::vector<std::tuple<std::int32_t, std::string>> cases{
        {9, "0' 09\""}, {60, "1' 00\""}, {3600, "60' 00\""}, {-1, "-1' 59\""}, {-60, "-1' 00\""}};
    for (const auto& [seconds, text] : cases) {
        EXPECT_EQ(FormattaTempo(seconds), text);
    }
}

TEST(CommandStatesTest, FollowTheSequencer) {
    const std::vector<std::tuple<MciMode, std::string, std::int32_t, std::string>> cases{
        {MciMode::NotReady, "", 0, "OCp"},         {MciMode::Stopped, "a.MID", 0, "OCPIpL"},
        {MciMode::Stopped, "a.MID", 1, "OCPSIpL"}, {MciMode::Seeking, "a.MID", 1, "OCPSIpL"},
        {MciMode::Playing, "a.MID", 0, "AT"},      {MciMode::Recording, "a.MID", 1, "AST"}};
    for (const auto& [mode, file, position, usable] : cases) {
        EXPECT_EQ(Usable(AbilitaFunzioni(mode, file, position)), usable);
    }
}

TEST(WindowPlaceTest, AWindowOpensWhereItCanBeSeen) {
    constexpr int Far = 2147483647;
    constexpr int Minimum = 8300;
    const std::vector<Rectangle> screens{{0, 0, 15000, 12000}, {15000, 0, 15000, 12000}};
    // The place it was closed at, and the place it gets.
    const std::vector<std::pair<Rectangle, Rectangle>> cases{
        {{-6000, -100, 9000, 7500}, {-6000, -100, 9000, 7500}},
        {{30100, 600, 9000, 7500}, {0, 0, 9000, 7500}},
        {{-8900, 600, 9000, 7500}, {0, 0, 9000, 7500}},
        {{300, -7000, 9000, 7500}, {0, 0, 9000, 7500}},
        {{300, 11900, 9000, 7500}, {0, 0, 9000, 7500}},
        {{Far, -Far - 1, Far, Far}, {0, 0, 14880, 11400}},
        {{-Far - 1, -Far - 1, -Far - 1, -Far - 1}, {0, 0, Minimum, 1440}}};
    for (const auto& [closed, opened] : cases) {
        EXPECT_EQ(PostoVisibile(closed, Minimum, screens), opened) << closed.left << closed.top;
    }
    const Posizione centre = CentraForm(15000, 10001, 5000, 12000);
    EXPECT_EQ(std::pair(centre.left, centre.top), std::pair(5000.0F, -999.5F));
}

TEST(WindowPlaceTest, TheLyricsWindowOpensAsItWasClosedOrOnANewScreen) {
    const Rectangle left{0, 0, 15000, 12000};
    const Rectangle right{15000, 0, 30000, 16000};
    const Rectangle closed{300, 600, 9000, 7500};
    const Rectangle usualOnRight{22800, 3950, 14400, 8100};
    const Rectangle closedOnRight{25500, 4250, 9000, 7500};
    struct Case {
        Rectangle closed;  ///< of no width: never
        bool full;
        std::size_t knew;  ///< screens
        std::vector<Rectangle> screens;
        std::size_t main;
        PostoParole opened;
    };
    const std::vector<Case> cases{
        {{}, false, 0, {left}, 0, {}},
        {{}, false, 0, {left, right}, 0, {usualOnRight, true}},
        {{}, false, 0, {right, left}, 1, {usualOnRight, true}},
        {closed, false, 2, {left, right}, 0, {closed, false}},
        {closed, false, 1, {left, right}, 0, {closedOnRight, true}},
        {{15000, 0, 9000, 7500}, true, 2, {left, right}, 0, {closedOnRight, true}},
        {{15000, 0, 9000, 7500}, true, 2, {left}, 0, {{{0, 0, 9000, 7500}}, false}},
        {{60000, 0, 9000, 7500}, true, 2, {left, right}, 0, {closedOnRight, true}}};
    for (const Case& one : cases) {
        MemoryRegistry registry;
        if (one.closed.width > 0) {
            RicordaPosto(registry, one.closed, false, one.knew);
        }
        if (one.full) {
            RicordaPosto(registry, {one.closed.left, one.closed.top, 1, 1}, true, one.knew);
        }
        EXPECT_EQ(PostoDaAprire(registry, one.screens, one.main), one.opened) << one.closed.left;
    }
}

TEST(basCommon, WaitsFromWholeSecondToWholeSecond) {
    constexpr double Midnight = 86400;
    const std::vector<std::tuple<double, std::int16_t, double>> cases{
        {10.4, 3, 13}, {10.5, 3, 13},    {11.5, 3, 15},
        {10.6, 0, 11}, {10.6, -2, 10.6}, {Midnight - 0.7, 3, Midnight + 2}};
    for (const auto& [start, seconds, end] : cases) {
        ManualClock clock;
        clock.startOfDay = start;
        ClockedEvents events(clock);
        events.nextEvent = std::chrono::milliseconds(70);
        Attendi(seconds, clock, events);
        const double now = start + std::chrono::duration<double>(clock.now).count();
        EXPECT_NEAR(now, end + 0.001, 0.0011) << start;
    }
}

constexpr RegistryRoot Machine = RegistryRoot::LocalMachine;
constexpr const char* Extension = "SOFTWARE\\Classes\\.lyk";

TEST(AssociaLyk, AnEmptyClassIsAnInvitationToWriteTheWholeAssociationOnce) {
    MemoryRegistry store;
    FakeShell shell;
    const auto associate = [&] {
        AssociaLyk(store, shell, "/opt/My Songs/sonnel", [&](auto section, auto key, auto value) {
            store.changes.push_back("win.ini [" + std::string(section) + "] " + std::string(key) +
                                    "=" + std::string(value));
        });
    };
    associate();
    store.Put(Machine, Extension, "", "OtherPlayer");
    associate();
    EXPECT_THAT(store.changes, IsEmpty());
    EXPECT_THAT(shell.registered, IsEmpty());

    store.Put(Machine, Extension, "", "");
    associate();
    const std::string type = "SOFTWARE\\Classes\\LYKfile";
    const std::string set = "set " + type;
    EXPECT_THAT(
        store.changes,
        ElementsAre(
            "create SOFTWARE\\Classes\\.lyk", "set SOFTWARE\\Classes\\.lyk|=LYKfile",
            "create " + type, "create " + type + "\\Shell", "create " + type + "\\Shell\\open",
            "create " + type + "\\Shell\\open\\command", "create " + type + "\\DefaultIcon",
            set + "|=Sonnel Karaoke", set + "|EditFlags=0",
            set + "|AlwaysShowExt=", set + "\\Shell\\open\\command|=/opt/My Songs/sonnel \"%1\"",
            set + "\\DefaultIcon|=/opt/My Songs/sonnel",
            "set SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Extensions|.lyk="
            "/opt/My Songs/sonnel ^.lyk",
            "win.ini [Extensions] lyk=/opt/My Songs/sonnel ^.lyk"));
    EXPECT_EQ(store.Read({Machine, type}, "EditFlags"), RegistryValue(0));
    associate();
    EXPECT_THAT(shell.registered, ElementsAre("/opt/My Songs/sonnel")) << "it is registered now";
}

TEST(VolumeControlTest, AMixerIsShownOrAMessageSaysWhyNot) {
    const OpenWindow open{7, "Mixer \"1\""};
    const std::string notStarted =
        "An error occured when trying to run the Volume contol (mixer)! If the program is stored";
    const std::string notActivated =
        "Warning! An error occured trying to activate the Volume Control \"Mixer \"1\"\"! Maybe";
    using Mixer = std::optional<OpenWindow>;
    // The one that is open, the one that opens when it is started, and whether that works.
    const std::vector<std::tuple<Mixer, Mixer, bool, int, std::vector<std::uint32_t>, std::string>>
        cases{{open, {}, true, 0, {7}, notActivated},
              {{}, {}, true, 1, {}, ""},
              {{}, open, true, 1, {7}, ""},
              {{}, open, false, 1, {}, notStarted}};
    for (const auto& [mixer, opensAtOnce, works, starts, activated, message] : cases) {
        FakeShell shell;
        shell.mixer = mixer;
        shell.opensAtOnce = opensAtOnce;
        shell.works = works;
        shell.activates = message != notActivated;
        ScriptedMsgBox msgBox;
        MostraControlloVolume(shell, msgBox);
        EXPECT_EQ(shell.starts, starts);
        EXPECT_EQ(shell.activated, activated);
        ASSERT_EQ(msgBox.shown.size(), message.empty() ? 0U : 1U);
        for (const Message& shown : msgBox.shown) {
            EXPECT_THAT(shown.text, StartsWith(message));
            EXPECT_EQ(shown.icon, Icon::Exclamation);
        }
    }
}

}  // namespace
}  // namespace sonnel::test
