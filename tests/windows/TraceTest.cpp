#ifdef SONNEL_TOOL  // a build may lack it
#include "windows/KaraokeWindow.h"

#include "platform/Numbers.h"

#include <QFontMetricsF>
#include <QPainter>
#include <chrono>
#include <cstdio>

#include <nlohmann/json.hpp>

namespace sonnel::test {
namespace {

using TraceTest = KaraokeWindow;
using nlohmann::json;
using Lines = std::vector<std::string>;

/// The steps that the command-line companion foretells for a song.
json Foretold(const std::string& song) {
    const std::string command =
        "'" SONNEL_TOOL "' trace '" + song + "' --json --report-ms 20 --compensation 3";
    std::FILE* const pipe = popen(command.c_str(), "r");
    const json trace = json::parse(pipe, nullptr, false);
    EXPECT_EQ(pclose(pipe), 0) << command;
    return trace["steps"];
}

/// The lyrics area as a step describes it: a page and the sung part of its first lines.
QImage Picture(const QtPictureBox& lyrics, const Config& config, const Lines& page,
               const Lines& sung) {
    QFont font(QString::fromStdString(config.FontName));
    font.setPixelSize(RoundHalfEven<int>(lyrics.Font().size * 20 / Scale));
    font.setBold(config.FontBold != 0);
    font.setHintingPreference(QFont::PreferNoHinting);
    const QFontMetricsF metrics(font);
    QImage area(lyrics.size() * lyrics.devicePixelRatioF(), QImage::Format_RGB32);
    area.setDevicePixelRatio(lyrics.devicePixelRatioF());
    area.fill(ToQColor(config.ColoreSfondo));
    QPainter painter(&area);
    painter.setFont(font);
    const auto print = [&](std::size_t line, const Lines& texts, Colour colour, int offset) {
        const double width = metrics.horizontalAdvance(QString::fromStdString(page[line]));
        const int x = RoundHalfEven<int>((lyrics.width() - width) * Scale / 2) + offset;
        const int y = RoundHalfEven<int>(static_cast<double>(line) * metrics.height() * Scale);
        painter.setPen(ToQColor(colour));
        painter.drawText(QPointF(x, y + offset) / Scale + QPointF(0, metrics.ascent()),
                         QString::fromStdString(texts[line]));
    };
    for (std::size_t line = 0; line < page.size(); ++line) {
        print(line, page, config.ColoreOmbra, 30);
        print(line, page, config.ColoreTesto, 0);
    }
    for (std::size_t line = 0; line < sung.size(); ++line) {
        print(line, sung, config.ColoreSelezione, 0);
    }
    painter.end();
    area.setDevicePixelRatio(1);
    return area;
}

TEST_F(TraceTest, AWholeSongIsShownAsForetoldPixelByPixel) {
    registry.Put(RegistryRoot::CurrentUser, Opzioni, "Compensazione", RegistryType::String, "3");
    for (const std::string song : {SONNEL_SONGS "/Row Your Boat", SONNEL_SONGS "/Frere Jacques"}) {
        const json steps = Foretold(song);
        ASSERT_GT(steps.size(), 80U) << song;
        window.reset();
        Open("\"" + song + ".lyk\"");
        window->mnuSoundPlay_Click();
        Lines page;
        Lines sung;
        std::size_t next = 0;
        QImage wanted = Picture(Lyrics(), program.config, page, sung);
        for (int ms = 0; Playing(); ms += 20) {
            for (; next < steps.size() && steps[next]["ms"] == ms; ++next) {
                sung.clear();
                (steps[next]["kind"] == 1 ? page : sung) = steps[next]["lines"].get<Lines>();
                wanted = Picture(Lyrics(), program.config, page, sung);
            }
            ASSERT_TRUE(Shot(Lyrics()) == wanted) << song << " at " << ms << " ms";
            rig.output.Ask(rig.output.rate / 50);
            rig.clock.Advance(std::chrono::milliseconds(20));
            rig.timer.Fire();
        }
        EXPECT_EQ(next, steps.size());
    }
}

}  // namespace
}  // namespace sonnel::test
#endif
