#include "fakes/ClockedEvents.h"
#include "fakes/DemoSong.h"
#include "fakes/FakeMainWindow.h"
#include "fakes/MemoryRegistry.h"
#include "fakes/RecordingPictureBox.h"
#include "fakes/ScriptedMsgBox.h"
#include "generator/Lyk.h"
#include "platform/Text.h"
#include "player/Calibratura.h"
#include "player/DisegnoParole.h"
#include "player/ImpaginazioneParole.h"
#include "player/Scena.h"
#include "player/SincroniaParole.h"
#include "settings/Impostazioni.h"
#include "song/LeggiKaraoke.h"
#include "ui/basCommon.h"

#include <map>
#include <string>
#include <tuple>
#include <vector>

#include <gmock/gmock.h>

namespace sonnel::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

using Words = std::vector<std::string>;

/// A lyrics area 4,000 twips wide with a font of 10 points: characters of 100 by 200 twips. Line
/// breaks are written "/". Colours: 1 text, 2 shadow, 3 sung, 4 background.
struct LyricsTest : ::testing::Test {
    static std::string Page(std::string text) {
        SostituisciTesto(text, "/", "\r\n");
        return text;
    }
    void Event(std::int32_t time, TipoEvento kind, const std::string& text) {
        ASSERT_TRUE(timeline.InserisciEvento(time, kind, Page(text)));
    }

    Config config{.ColoreTesto = 1,
                  .ColoreOmbra = 2,
                  .ColoreSelezione = 3,
                  .ColoreSfondo = 4,
                  .Compensazione = 0,
                  .OpenDir = {}};
    Timeline timeline;
    RecordingPictureBox box;
    FakeMainWindow window;
    ScriptedMsgBox msgBox;
    ImpaginazioneParole layout{config, timeline, box, window, msgBox};
    DisegnoParole drawing{config, box, window, layout};
    SincroniaParole sync{config, timeline, drawing};
};

TEST_F(LyricsTest, APageIsDrawnCentredOverItsShadow) {
    window.wordsWidth = 4001;
    drawing.MostraPagina(Page("One/Two!!//"));
    EXPECT_EQ(box.cleared, 4);
    EXPECT_THAT(box.Words(true), ElementsAre("2 One @1880,30", "1 One @1850,0", "2 Two!! @1780,230",
                                             "1 Two!! @1750,200"));
    box.printed.clear();
    drawing.ColoraPagina(6, 3);
    EXPECT_THAT(box.Words(true), ElementsAre("3 One @1850,0", "3 T @1750,200"))
        << "sung words lie on what is there, without a shadow";

    drawing.MostraPagina(Page("//"));
    EXPECT_THAT(box.Words(), IsEmpty());
    EXPECT_EQ(window.words.second, 225) << "an empty page has one line";
    config.Ombra = false;
    window.wordsWidth = 4003;
    drawing.MostraPagina("One");
    EXPECT_THAT(box.Words(true), ElementsAre("1 One @1852,0")) << "halves go to the even twip";
}

TEST_F(LyricsTest, ACountColoursThatManyCharactersALineBreakBeingTwo) {
    const std::vector<std::tuple<std::string, std::int32_t, Words>> cases{
        {"He/you", 0, {}},
        {"He/you", 4, {"3 He"}},
        {"He/you", 5, {"3 He", "3 y"}},
        {"Hi  /you", 6, {"3 Hi"}},
        {"Hi  /you", 7, {"3 Hi  ", "3 y"}},
        {"Così è/più", 11, {"3 Così è", "3 più"}},
        {"One//Two", 8, {"3 One", "3 ", "3 T"}},
        {"a/b/c/d", 10, {"3 a", "3 b", "3 c", "3 d"}},
    };
    for (const auto& [page, count, coloured] : cases) {
        drawing.MostraPagina(Page(page));
        box.printed.clear();
        drawing.ColoraPagina(count, config.ColoreSelezione);
        EXPECT_EQ(box.Words(), coloured) << page << " " << count;
    }
}

TEST_F(LyricsTest, TheAreaIsCentredBelowTheToolbar) {
    const std::vector<std::tuple<int, std::int16_t, int, int>> cases{
        {5000, 2, 2575, 450}, {4998, 1, 2686, 225}, {5000, 0, 2688, 225}, {1000, 4, 600, 900}};
    for (const auto& [inner, lines, top, height] : cases) {
        window.innerHeight = inner;
        std::int16_t count = lines;
        layout.ResizeParole(count);
        EXPECT_EQ(window.words, std::pair(top, height)) << inner << " " << lines;
    }
    window.innerHeight = 5000;
    drawing.Ridisponi();
    EXPECT_EQ(window.words, std::pair(2350, 900)) << "four lines until a page is shown";
    drawing.MostraPagina("One");
    drawing.Ridisponi();
    EXPECT_EQ(window.words.second, 225);
    EXPECT_EQ(box.printed.size(), 2U) << "nothing is drawn again";
}

TEST_F(LyricsTest, SettingsGiveColoursAndFontAndTheSizeUnlessItIsAutomatic) {
    config.FontSize = 13.5F;
    config.FontBold = false;
    box.font.bold = true;
    layout.ApplicaConfig();
    EXPECT_EQ(box.font, (FontSpec{"Arial", 10, false}));
    EXPECT_EQ(std::tuple(box.foreColour, box.backColour, window.background), std::tuple(1, 4, 4));
    config.AutoFont = false;
    config.FontBold = true;
    layout.ApplicaConfig();
    Event(0, TipoEvento::Pagina, std::string(1000, 'x'));
    layout.FontAutomatico();
    EXPECT_EQ(box.font, (FontSpec{"Arial", 13.5, true}));
    EXPECT_THAT(msgBox.shown, IsEmpty());
}

TEST_F(LyricsTest, TheFontFitsTheWidestPageAndWarnsOnce) {
    using Sizes = std::vector<double>;
    const Sizes some{9, 12, 18, 30};
    const std::vector<std::tuple<float, Sizes, std::size_t, double, bool>> cases{
        {24, {}, 12, 32, false},   {24, {}, 13, 30, false},     {24, {}, 36, 11, false},
        {24, some, 20, 18, false}, {24, {40}, 5000, 40, false}, {24, {}, 40, 10, true},
        {2, {}, 1, 10, true},      {24, {}, 5000, 8, true}};
    for (const auto& [configured, offered, length, fitted, warned] : cases) {
        config.FontSize = configured;
        box.sizes = offered;
        msgBox.shown.clear();
        timeline.Azzera();
        Event(0, TipoEvento::Marcatore, std::string(9000, 'x'));
        Event(0, TipoEvento::Pagina, "short/" + std::string(length / 2, 'x'));
        Event(0, TipoEvento::Pagina, std::string(length, 'x') + "/short");
        layout.FontAutomatico();
        EXPECT_EQ(box.font.size, fitted) << configured << " " << length;
        EXPECT_EQ(msgBox.shown.size(), warned ? 1U : 0U) << configured << " " << length;
    }
    EXPECT_THAT(msgBox.shown.at(0).text,
                StartsWith("Warning! The selected song contains one or more long text lines!"));
    EXPECT_EQ(msgBox.shown[0].icon, Icon::Information);
    EXPECT_EQ(msgBox.shown[0].title, "Sonnel Karaoke");
}

/// Two pages and the colours between them; what is shown is told by the last event applied.
struct SyncTest : LyricsTest {
    void SetUp() override {
        config.Ombra = false;
        Event(100, TipoEvento::Pagina, "Hello");
        Event(100, TipoEvento::Colore, "2");
        Event(103, TipoEvento::Colore, "5");
        Event(200, TipoEvento::Pagina, "Bye");
    }
    std::map<int, Words> shown{
        {1, {"1 Hello"}}, {2, {"1 Hello", "3 He"}}, {3, {"1 Hello", "3 Hello"}}, {4, {"1 Bye"}}};
};

/// Half tenths go to the even one (compensations 3 and 9); a page that is not due holds up the
/// colours behind it (compensation -3).
TEST_F(SyncTest, ResyncShiftsPagesByTheCompensationAndColoursByASixth) {
    const std::vector<std::tuple<std::int32_t, std::int32_t, int>> cases{
        {0, 9999, 0},  {0, 10000, 2},  {0, 10300, 3},  {6, 9399, 0},  {6, 9400, 1},
        {6, 9899, 1},  {6, 9900, 2},   {6, 10200, 3},  {6, 19400, 4}, {3, 9999, 1},
        {3, 10000, 2}, {3, 10199, 2},  {3, 10200, 3},  {9, 9799, 1},  {9, 9800, 2},
        {9, 10200, 3}, {-3, 10299, 0}, {-3, 10300, 2}, {-3, 10400, 3}};
    for (const auto& [compensation, position, last] : cases) {
        config.Compensazione = compensation;
        sync.Risincronizza(position);
        EXPECT_EQ(timeline.UltimoEvento, last) << compensation << " " << position;
        EXPECT_EQ(box.Words(), shown[last]) << compensation << " " << position;
    }
}

TEST_F(SyncTest, LiveEventsComeOneAReportInOrder) {
    config.Compensazione = 3;
    const std::vector<std::pair<std::int32_t, int>> cases{{9699, 0},  {9700, 1},  {15000, 2},
                                                          {15000, 3}, {19699, 3}, {19700, 4}};
    for (const auto& [position, last] : cases) {
        sync.ApplicaDovuto(position);
        EXPECT_EQ(timeline.UltimoEvento, last) << position;
        if (last != 3) {
            EXPECT_EQ(box.Words(), shown[last]);
        }
    }
    sync.Azzera();
    EXPECT_EQ(timeline.UltimoEvento, 0);
    EXPECT_THAT(box.Words(), IsEmpty());
}

TEST_F(SyncTest, LiveEventsNeedNotBeSorted) {
    Event(101, TipoEvento::Marcatore, "chorus");
    Event(105, TipoEvento::Colore, "-2");
    Event(105, TipoEvento::Colore, "40000");
    timeline.UltimoEvento = 3;
    drawing.MostraPagina("Hello");
    const std::vector<std::tuple<std::int32_t, std::int16_t, std::size_t>> cases{
        {10100, 5, 1}, {10499, 5, 1}, {10500, 6, 1}, {10500, 7, 2}};
    for (const auto& [position, last, drawn] : cases) {
        sync.ApplicaDovuto(position);
        EXPECT_EQ(timeline.UltimoEvento, last) << "the page at 200 is passed over";
        EXPECT_EQ(box.printed.size(), drawn);
    }
    EXPECT_EQ(box.Words().back(), "3 Hello") << "a count beyond 16 bits is the whole page";
}

/// What a scene without flow shows, as it is drawn: the lines, then what of them is sung.
Words Drawn(const Scena& scene) {
    Words lines;
    Words sung;
    auto left = static_cast<std::ptrdiff_t>(scene.cantati);
    for (const std::string& line : scene.righe) {
        lines.push_back("1 " + line);
        std::string part(
            FirstCodePoints(line, static_cast<std::size_t>(std::max<std::ptrdiff_t>(0, left))));
        part.erase(part.find_last_not_of(' ') + 1);
        if (left > 0) {
            sung.push_back("3 " + part);
        }
        left -= static_cast<std::ptrdiff_t>(CodePoints(line)) + 2;
    }
    lines.insert(lines.end(), sung.begin(), sung.end());
    return lines;
}

TEST_F(LyricsTest, TheSingersScreenShowsThePageAndTheWordsOfTheMainWindow) {
    config.Ombra = false;
    int words = 0;
    for (const std::size_t song : {0U, 1U}) {
        const DemoSong demo(DemoScores().at(song));
        InformazioniBrano info;
        timeline.Azzera();
        (void)LeggiRighe(songs::WriteLyk(demo.score, demo.song), true, timeline, info, msgBox);
        const std::int32_t end = timeline.Eventi(timeline.NumEventi()).Tempo * 100;
        for (int place = 1; place <= 20; ++place) {
            const std::int32_t ms = place * end / 20;
            sync.Risincronizza(ms);
            const Words drawn = Drawn(ScenaA(timeline, ms / 100.0, {false, true, true, true}));
            EXPECT_EQ(box.Words(), drawn) << ms;
            words += static_cast<int>(drawn.size());
        }
    }
    EXPECT_GT(words, 60);
}

/// A machine that takes `perTurn` to paint a page, and keeps the last one that it painted.
struct CalibrationClock : ClockedEvents {
    using ClockedEvents::ClockedEvents;
    void RunPending() override {
        painted = surface->Words();
        ClockedEvents::RunPending();
    }
    const RecordingPictureBox* surface = nullptr;
    Words painted;
};

struct CalibrationTest : LyricsTest {
    /// Calibrates on a machine that takes so long to paint ten pages.
    void Calibrate(double seconds) {
        events.surface = &box;
        config.Ombra = false;
        events.beeps = events.turns = 0;
        events.perTurn = std::chrono::duration_cast<std::chrono::nanoseconds>(
            std::chrono::duration<double>(seconds / 10));
        Calibratura({config, box, drawing, layout, registry, msgBox, events, clock, [] {}})
            .EseguiCalibratura();
    }
    std::string Stored() {
        return LeggiImpostazione(registry, "Opzioni", "Compensazione", "nothing");
    }

    ManualClock clock;
    CalibrationClock events{clock};
    MemoryRegistry registry;
};

TEST_F(CalibrationTest, JudgesTheMachineByTheTimeOfTenPages) {
    using Text = std::string;
    // Seconds, what is stored, the seconds and the judgement shown, beeps and message boxes.
    const std::vector<std::tuple<double, Text, Text, Text, int, std::size_t>> cases = {
        {0.8, "0", ".8", "Good! System performances are perfect", 0, 2},
        {1.0, "0", "1.", "just a little compensation!", 0, 2},
        {1.5, "1", "1.5", "just a little compensation!", 0, 2},
        {3.7, "3", "3.7", "almost good", 0, 2},
        {8.96, "8", "9.", "a bit low", 0, 2},
        {9.2, "8", "9.2", "too low to let Sonnel", 1, 2},
        {20, "19", "20.", "ATTENZIONE!", 1, 3},
    };
    for (const auto& [seconds, stored, duration, judgement, beeps, boxes] : cases) {
        msgBox.shown.clear();
        Calibrate(seconds);
        EXPECT_EQ(Stored(), stored) << seconds;
        ASSERT_EQ(msgBox.shown.size(), boxes) << seconds;
        const Message& shown = msgBox.shown[1];
        EXPECT_THAT(shown.text, StartsWith("Test duration: " + duration + " seconds.\r\n"));
        EXPECT_THAT(shown.text, HasSubstr(judgement));
        EXPECT_EQ(shown.icon, beeps > 0 ? Icon::Critical : Icon::Information) << seconds;
        EXPECT_EQ(events.beeps, beeps) << seconds;
        EXPECT_EQ(events.turns, 11) << "each page is painted";
    }
    EXPECT_THAT(events.painted, ElementsAre("1 Test page", "1 number 10", "1 *******", "1 ***"));
    EXPECT_EQ(box.font.size, 24);
    EXPECT_THAT(box.printed, IsEmpty());
}

TEST_F(CalibrationTest, DecliningOrMidnightTellsNothing) {
    msgBox.answers = {Answer::Cancel};
    Calibrate(2);
    EXPECT_EQ(Stored(), "nothing");
    EXPECT_EQ(msgBox.shown.at(0).buttons, Buttons::OkCancel);
    clock.startOfDay = 86395;
    Calibrate(10);
    EXPECT_EQ(Stored(), "0");
    EXPECT_EQ(msgBox.shown.size(), 2U);
}

}  // namespace
}  // namespace sonnel::test
