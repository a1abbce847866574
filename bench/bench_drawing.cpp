// Drawing lyrics on a real surface as wide as a large screen: from the command to the finished
// picture of the window, the repainting included.

#include "bench/Offscreen.h"

#include "fakes/ScriptedMsgBox.h"
#include "platform/qt/QtPictureBox.h"
#include "platform/qt/QtSystem.h"
#include "player/DisegnoParole.h"
#include "player/ImpaginazioneParole.h"

#include <QApplication>
#include <chrono>
#include <string>
#include <vector>

namespace sonnel {
namespace {

using Clock = std::chrono::steady_clock;

constexpr int kWidth = 1920;  // pixels
constexpr int kHeight = 600;
constexpr int kLines = 4;
constexpr std::string_view kLine = "Up above the world so high, like diamonds in the sky";
const std::string kPage = [] {
    std::string page(kLine);
    for (int i = 1; i < kLines; ++i) {
        page.append("\r\n").append(kLine);
    }
    return page;
}();

/// Tells whether it was painted.
class CountingBox : public QtPictureBox {
  public:
    using QtPictureBox::QtPictureBox;
    int paintings = 0;

  protected:
    void paintEvent(QPaintEvent* event) override {
        ++paintings;
        QtPictureBox::paintEvent(event);
    }
};

/// A lyrics area in a window of its own.
class Area : public CorniceParole {
  public:
    Area() : twips_(QtScreen().TwipsPerPixel()), box_(twips_, &window_) {
        window_.resize(kWidth, kHeight);
        box_.setGeometry(0, 0, kWidth, kHeight);
        window_.show();
        layout_.ApplicaConfig();
        constexpr double MorePoints = 8;  // as for a song whose lines fit
        box_.SetFont({config_.FontName, config_.FontSize + MorePoints, config_.FontBold});
    }

    DisegnoParole& Drawing() { return drawing_; }
    /// Has so many pixels of its height painted anew as they are.
    void Repaint(int height) { box_.update(0, 0, kWidth, height); }
    [[nodiscard]] const Config& Settings() const { return config_; }
    /// Brings the window up to date; false when there was nothing to do.
    [[nodiscard]] bool Show() const {
        const int before = box_.paintings;
        QApplication::processEvents();
        return box_.paintings > before;
    }

    [[nodiscard]] int AltezzaBarra() const override { return 0; }
    [[nodiscard]] int AltezzaInterna() const override { return Twips(kHeight); }
    [[nodiscard]] bool ASchermoIntero() const override { return false; }
    [[nodiscard]] int LarghezzaParole() const override { return Twips(kWidth); }
    void DisponiParole(int top, int altezza) override {
        box_.setGeometry(0, static_cast<int>(top / twips_), kWidth,
                         static_cast<int>(altezza / twips_));
    }
    void ColoreSfondo(Colour /*colore*/) override {}

  private:
    [[nodiscard]] int Twips(int pixels) const { return static_cast<int>(pixels * twips_); }

    const double twips_;
    QWidget window_;
    CountingBox box_;
    const Config config_;
    const Timeline timeline_;
    test::ScriptedMsgBox msgBox_;
    ImpaginazioneParole layout_{config_, timeline_, box_, *this, msgBox_};
    DisegnoParole drawing_{config_, box_, *this, layout_};
};

void DrawPage(benchmark::State& state) {
    Area area;
    (void)area.Show();
    for ([[maybe_unused]] auto iteration : state) {
        area.Drawing().MostraPagina(kPage);
        if (!area.Show()) {
            state.SkipWithError("the page was not painted");
        }
    }
}
BENCHMARK(DrawPage)->Unit(benchmark::kMillisecond);

/// The least that either can take: the argument's part of the finished picture is brought to the
/// window, so many pixels high.
void Repaint(benchmark::State& state) {
    Area area;
    area.Drawing().MostraPagina(kPage);
    (void)area.Show();
    for ([[maybe_unused]] auto iteration : state) {
        area.Repaint(static_cast<int>(state.range(0)));
        if (!area.Show()) {
            state.SkipWithError("nothing was painted");
        }
    }
}
BENCHMARK(Repaint)->Arg(kHeight)->Arg(kHeight / kLines)->Unit(benchmark::kMillisecond);

/// The counts of a line's colour events: one at the end of each of its words.
std::vector<std::int32_t> WordEnds(std::int64_t line) {
    std::vector<std::int32_t> ends;
    const std::size_t first = static_cast<std::size_t>(line - 1) * (kLine.size() + 2);
    for (std::size_t i = kLine.find(' '); i != std::string_view::npos; i = kLine.find(' ', i + 1)) {
        ends.push_back(static_cast<std::int32_t>(first + i));
    }
    return ends;
}

/// One more word coloured in the line of the page that the argument names.
void ColourStep(benchmark::State& state) {
    Area area;
    const std::vector<std::int32_t> ends = WordEnds(state.range(0));
    std::size_t next = ends.size();
    for ([[maybe_unused]] auto iteration : state) {
        if (next + 1 >= ends.size()) {
            area.Drawing().MostraPagina(kPage);
            area.Drawing().ColoraPagina(ends.front(), area.Settings().ColoreSelezione);
            (void)area.Show();
            next = 0;
        }
        const auto start = Clock::now();
        area.Drawing().ColoraPagina(ends[++next], area.Settings().ColoreSelezione);
        const bool shown = area.Show();
        state.SetIterationTime(std::chrono::duration<double>(Clock::now() - start).count());
        if (!shown) {
            state.SkipWithError("the step was not painted");
        }
    }
}
BENCHMARK(ColourStep)->DenseRange(1, kLines)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace sonnel

int main(int argc, char** argv) {
    return sonnel::bench::RunOffscreen<QApplication>(argc, argv);
}
