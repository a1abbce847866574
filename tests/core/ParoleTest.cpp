#include "fakes/FakeMainWindow.h"
#include "fakes/RecordingPictureBox.h"
#include "fakes/ScriptedMsgBox.h"
#include "player/DisegnoParole.h"
#include "player/ImpaginazioneParole.h"
#include "player/SincroniaParole.h"
#include "ui/basCommon.h"

#include <limits>
#include <map>
#include <string>
#include <tuple>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace sonnel::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

using Words = std::vector<std::string>;

/// A lyrics area 4,000 twips wide with a font of 10 points: characters of 100 by 200 twips. Line
/// breaks are written "/". Colours: 1 text, 2 shadow, 3 sung, 4 background.
class LyricsTest : public ::testing::Test {
  protected:
    static std::string Page(std::string text) {
        SostituisciTesto(text, "/", "\r\n");
        return text;
    }
    void Event(std::int32_t time, TipoEvento kind, const std::string& text) {
        ASSERT_TRUE(timeline.InserisciEvento(time, kind, Page(text)));
    }
    void Pages(const std::vector<std::string>& pages) {
        timeline.Azzera();
        for (const std::string& page : pages) {
            Event(0, TipoEvento::Pagina, page);
        }
    }
    /// What colouring the first n characters of a page draws, lines separated by "/".
    std::string Coloured(const std::string& page, std::int32_t n) {
        drawing.MostraPagina(Page(page));
        box.printed.clear();
        drawing.ColoraPagina(n, config.ColoreSelezione);
        std::string lines;
        for (const RecordingPictureBox::Printed& print : box.printed) {
            EXPECT_EQ(print.colour, config.ColoreSelezione);
            EXPECT_EQ(print.y % 200, 0);
            lines += (&print == &box.printed.front() ? "" : "/") + print.text;
        }
        return lines;
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
    drawing.MostraPagina(Page("One/Two!!//"));
    EXPECT_EQ(drawing.Pagina().PaginaCorrente, Page("One/Two!!"));
    EXPECT_EQ(drawing.Pagina().NumRighe, 2);
    EXPECT_EQ(box.cleared, 4);
    const Words page{"2 One @1880,30", "1 One @1850,0", "2 Two!! @1780,230", "1 Two!! @1750,200"};
    EXPECT_EQ(box.Words(true), page);

    drawing.ColoraPagina(6, 3);
    EXPECT_EQ(box.printed.size(), 6U) << "sung words lie on what is there, without a shadow";
    EXPECT_EQ(box.Words(true).at(4), "3 One @1850,0");
    EXPECT_EQ(box.Words(true).at(5), "3 T @1750,200");

    config.Ombra = 0;
    drawing.MostraPagina("One");
    EXPECT_THAT(box.Words(), ElementsAre("1 One"));
    config.Ombra = -1;
    config.ColoreSelezione = config.ColoreTesto;
    drawing.MostraPagina("One");
    drawing.ColoraPagina(1, config.ColoreSelezione);
    EXPECT_THAT(box.Words(), ElementsAre("2 One", "1 One", "2 O", "1 O"));
}

TEST_F(LyricsTest, AnEmptyPageIsAClearedAreaOfOneLine) {
    drawing.MostraPagina("Old");
    drawing.MostraPagina(Page("//"));
    EXPECT_THAT(box.Words(), IsEmpty());
    EXPECT_EQ(drawing.Pagina().NumRighe, 1);
    EXPECT_EQ(window.words.second, 225);
}

TEST_F(LyricsTest, LinesAreCentredWithHalvesToEvenAlsoWhenTooWide) {
    const std::vector<std::tuple<int, std::size_t, int>> cases{
        {4001, 3, 1850}, {4003, 3, 1852}, {4000, 50, -500}, {4001, 50, -500}, {4003, 50, -498}};
    for (const auto& [width, length, x] : cases) {
        window.wordsWidth = width;
        drawing.MostraPagina(std::string(length, 'x'));
        EXPECT_EQ(box.printed.at(1).x, x) << width;
    }
}

TEST_F(LyricsTest, ACountColoursThatManyCharactersALineBreakBeingTwo) {
    constexpr std::int32_t Most = std::numeric_limits<std::int32_t>::max();
    const std::map<std::string, std::map<std::int32_t, std::string>> cases{
        {"He/you", {{-1, ""}, {0, ""}, {1, "H"}, {2, "He"}, {4, "He"}, {5, "He/y"}}},
        {"Hello/you",
         {{10, "Hello/you"}, {12, "Hello/you"}, {13, "Hello/you"}, {Most, "Hello/you"}}},
        {"Hi  you", {{3, "Hi"}, {4, "Hi"}, {5, "Hi  y"}}},
        {"Hi  /you", {{6, "Hi"}, {7, "Hi  /y"}}},
        {"Hi\ryou", {{3, "Hi"}}},
        {"Così è/più", {{4, "Così"}, {6, "Così è"}, {8, "Così è"}, {11, "Così è/più"}}},
        {"One//Two", {{5, "One"}, {7, "One/"}, {8, "One//T"}}},
        {"a/b/c/d", {{9, "a/b/c"}, {10, "a/b/c/d"}}}};
    for (const auto& [page, counts] : cases) {
        for (const auto& [count, coloured] : counts) {
            EXPECT_EQ(Coloured(page, count), coloured) << page << " " << count;
        }
    }
}

TEST_F(LyricsTest, TheAreaIsCentredBelowTheToolbar) {
    const std::vector<std::tuple<int, std::int16_t, int, int>> cases{
        {5000, 2, 2575, 450}, {5000, 4, 2350, 900}, {5000, 1, 2688, 225}, {4998, 1, 2686, 225},
        {5000, 0, 2688, 225}, {1500, 4, 600, 900},  {1000, 4, 600, 900},  {0, -3, 600, 225}};
    for (const auto& [inner, lines, top, height] : cases) {
        window.innerHeight = inner;
        std::int16_t count = lines;
        layout.ResizeParole(count);
        EXPECT_EQ(window.words, std::pair(top, height)) << inner << " " << lines;
        EXPECT_EQ(count, std::max<std::int16_t>(lines, 1));
    }
}

TEST_F(LyricsTest, TheAreaHasRoomForFourLinesUntilAPageIsShown) {
    drawing.Ridisponi();
    EXPECT_EQ(window.words.second, 900);
    drawing.MostraPagina(Page("One/Two"));
    window.innerHeight = 6000;
    drawing.Ridisponi();
    EXPECT_EQ(window.words, std::pair(3075, 450));
    EXPECT_EQ(box.printed.size(), 4U) << "nothing is drawn again";
}

TEST_F(LyricsTest, SettingsGiveColoursAndFontAndTheSizeUnlessItIsAutomatic) {
    config.FontSize = 13.5F;
    config.FontBold = 0;
    box.font.bold = true;
    layout.ApplicaConfig();
    EXPECT_EQ(box.font, (FontSpec{"Arial", 10, false}));
    EXPECT_EQ(std::tuple(box.foreColour, box.backColour, window.background), std::tuple(1, 4, 4));
    config.AutoFont = 0;
    config.FontBold = -1;
    layout.ApplicaConfig();
    EXPECT_EQ(box.font, (FontSpec{"Arial", 13.5, true}));
    Pages({std::string(1000, 'x')});
    layout.FontAutomatico();
    EXPECT_EQ(box.font.size, 13.5);
    EXPECT_THAT(msgBox.shown, IsEmpty());
}

TEST_F(LyricsTest, TheFontFitsTheWidestLine) {
    using Sizes = std::vector<double>;
    const Sizes some{9, 12, 18, 30};
    const std::vector<std::tuple<float, Sizes, std::size_t, double, bool>> cases{
        {24, {}, 12, 32, false},     {24, {}, 13, 30, false},
        {24, {}, 25, 16, false},     {24, {}, 36, 11, false},
        {24, {}, 40, 10, true},      {24, {}, 50, 8, true},
        {24, {}, 5000, 8, true},     {2, {}, 1, 10, true},
        {16.5F, {}, 5000, 8, true},  {24, some, 20, 18, false},
        {24, some, 5000, 9, true},   {24, {12}, 5000, 12, false},
        {24, {40}, 5000, 40, false}, {24, {7.5, 8.25, 12}, 5000, 8.25, true}};
    for (const auto& [configured, offered, length, fitted, warned] : cases) {
        config.FontSize = configured;
        box.sizes = offered;
        box.fontsSet = 0;
        msgBox.shown.clear();
        Pages({Page("short/") + std::string(length, 'x') + Page("/short")});
        layout.FontAutomatico();
        EXPECT_EQ(box.font.size, fitted) << configured << " " << length;
        EXPECT_EQ(msgBox.shown.size(), warned ? 1U : 0U) << configured << " " << length;
        EXPECT_LE(box.fontsSet, 33);
    }
}

TEST_F(LyricsTest, TheFontFitsEveryPageAndWarnsOnce) {
    Pages({std::string(20, 'x'), std::string(100, 'x'), "short", std::string(200, 'x')});
    layout.FontAutomatico();
    EXPECT_EQ(box.font.size, 8);
    ASSERT_EQ(msgBox.shown.size(), 1U);
    EXPECT_EQ(
        msgBox.shown[0].text,
        "Warning! The selected song contains one or more long text lines! The words will be "
        "displayed using a very small font.\r\n\r\nTo have a regular karaoke, please edit the "
        "LYK and avoid having too long text lines.");
    EXPECT_EQ(msgBox.shown[0].icon, Icon::Information);
    EXPECT_EQ(msgBox.shown[0].title, "Sonnel Karaoke");

    timeline.Azzera();
    Event(0, TipoEvento::Marcatore, std::string(200, 'x'));
    Event(0, TipoEvento::Colore, std::string(200, '1'));
    layout.FontAutomatico();
    EXPECT_EQ(box.font.size, 32) << "only pages count";
}

/// Two pages and the colours between them; what is shown is told by the last event applied.
class SyncTest : public LyricsTest {
  protected:
    void SetUp() override {
        config.Ombra = 0;
        Event(100, TipoEvento::Pagina, "Hello");
        Event(100, TipoEvento::Colore, "2");
        Event(103, TipoEvento::Colore, "5");
        Event(200, TipoEvento::Pagina, "Bye");
        shown = {{}, {"1 Hello"}, {"1 Hello", "3 He"}, {"1 Hello", "3 Hello"}, {"1 Bye"}};
    }
    std::vector<Words> shown;
};

/// Half tenths go to the even one (compensations 3 and 9); a page that is not due holds up the
/// colours behind it (compensation -3).
TEST_F(SyncTest, ResyncShiftsPagesByTheCompensationAndColoursByASixth) {
    const std::vector<std::tuple<std::int32_t, std::int32_t, int>> cases{
        {0, 0, 0},      {0, 9999, 0},   {0, 10000, 2}, {0, 10299, 2}, {0, 10300, 3}, {6, 9399, 0},
        {6, 9400, 1},   {6, 9899, 1},   {6, 9900, 2},  {6, 10199, 2}, {6, 10200, 3}, {6, 19399, 3},
        {6, 19400, 4},  {6, 999999, 4}, {3, 9700, 1},  {3, 9999, 1},  {3, 10000, 2}, {3, 10199, 2},
        {3, 10200, 3},  {9, 9799, 1},   {9, 9800, 2},  {9, 10199, 2}, {9, 10200, 3}, {-3, 10299, 0},
        {-3, 10300, 2}, {-3, 10399, 2}, {-3, 10400, 3}};
    for (const auto& [compensation, position, last] : cases) {
        config.Compensazione = compensation;
        sync.Risincronizza(position);
        EXPECT_EQ(timeline.UltimoEvento, last) << compensation << " " << position;
        EXPECT_EQ(box.Words(), shown.at(static_cast<std::size_t>(last)))
            << compensation << " " << position;
    }
}

TEST_F(SyncTest, LiveEventsComeOneAReportInOrder) {
    const auto apply = [this](std::int32_t position) {
        sync.ApplicaDovuto(position);
        return timeline.UltimoEvento;
    };
    config.Compensazione = 3;
    EXPECT_EQ(apply(9699), 0);
    EXPECT_EQ(apply(9700), 1);
    EXPECT_EQ(box.Words(), shown[1]);
    EXPECT_EQ(apply(15000), 2);
    EXPECT_EQ(box.Words(), shown[2]);
    EXPECT_EQ(apply(15000), 3);
    EXPECT_EQ(apply(15000), 3);
    EXPECT_THAT(box.Words(), ElementsAre("1 Hello", "3 He", "3 Hello"));
    EXPECT_EQ(apply(19700), 4);
    EXPECT_EQ(apply(99999), 4);
    EXPECT_EQ(box.Words(), shown[4]);
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
        {10100, 5, 1}, {10499, 5, 1}, {10500, 6, 1}, {10500, 7, 2}, {30000, 7, 2}};
    for (const auto& [position, last, drawn] : cases) {
        sync.ApplicaDovuto(position);
        EXPECT_EQ(timeline.UltimoEvento, last) << "the page at 200 is passed over";
        EXPECT_EQ(box.printed.size(), drawn);
    }
    EXPECT_EQ(box.Words().back(), "3 Hello") << "a count beyond 16 bits is the whole page";
}

TEST_F(SyncTest, APageAtTheVeryStartIsShownAtOnce) {
    timeline.Azzera();
    sync.Risincronizza(0);
    sync.ApplicaDovuto(50000);
    EXPECT_EQ(timeline.UltimoEvento, 0);
    Event(0, TipoEvento::Pagina, "First");
    Event(1, TipoEvento::Colore, "3");
    sync.Risincronizza(0);
    EXPECT_THAT(box.Words(), ElementsAre("1 First"));
}

}  // namespace
}  // namespace sonnel::test
