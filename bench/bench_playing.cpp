// The whole player, main window and all, playing a song in real time into silence.

#include "bench/Offscreen.h"

#include "fakes/MemoryRegistry.h"
#include "fakes/OtherWindows.h"
#include "fakes/ScriptedMsgBox.h"
#include "platform/Environment.h"
#include "platform/audio/DefaultOutput.h"
#include "platform/audio/FluidSynthesizer.h"
#include "platform/audio/SoundFont.h"
#include "platform/qt/QtShell.h"
#include "platform/qt/QtSystem.h"
#include "player/window/frmKaraoke.h"
#include "settings/Impostazioni.h"

#include <QAction>
#include <QApplication>
#include <QEventLoop>
#include <QTimer>
#include <algorithm>
#include <atomic>
#include <chrono>
#include <ctime>
#include <functional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace sonnel {
namespace {

/// Seconds of processor time of the calling thread or the whole process.
double ProcessorTime(clockid_t whose) {
    timespec time{};
    clock_gettime(whose, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

/// A synthesizer that knows how much processor time it has taken, on whatever thread it ran.
class MeteredSynth : public Synthesizer {
  public:
    explicit MeteredSynth(Synthesizer& synth) : synth_(synth) {}

    std::optional<Error> Prepare(int sampleRate) override { return synth_.Prepare(sampleRate); }
    void Reset() noexcept override {
        Metered([&] { synth_.Reset(); });
    }
    bool PlaysDrums(int channel) noexcept override { return synth_.PlaysDrums(channel); }
    void ChannelMessage(std::uint8_t status, std::uint8_t data1,
                        std::uint8_t data2) noexcept override {
        Metered([&] { synth_.ChannelMessage(status, data1, data2); });
    }
    void SystemExclusive(std::span<const std::uint8_t> data) noexcept override {
        Metered([&] { synth_.SystemExclusive(data); });
    }
    void AllSoundOff() noexcept override {
        Metered([&] { synth_.AllSoundOff(); });
    }
    void Render(std::span<float> out) noexcept override {
        Metered([&] { synth_.Render(out); });
    }

    [[nodiscard]] double Seconds() const { return seconds_; }

  private:
    template <class Work>
    void Metered(Work work) {
        const double before = ProcessorTime(CLOCK_THREAD_CPUTIME_ID);
        work();
        seconds_ = seconds_ + ProcessorTime(CLOCK_THREAD_CPUTIME_ID) - before;
    }

    Synthesizer& synth_;
    std::atomic<double> seconds_ = 0;
};

/// An application that tells when a widget with words has been painted and its window has handed
/// the picture to the screen.
class Watcher : public QApplication {
  public:
    using QApplication::QApplication;

    bool notify(QObject* receiver, QEvent* event) override {
        const QEvent::Type type = event->type();
        const bool words = type == QEvent::Paint && receiver == words_;
        const bool done = QApplication::notify(receiver, event);
        painted_ = painted_ || words;
        if (type == QEvent::UpdateRequest && painted_) {
            painted_ = false;
            onWordsShown_();
        }
        return done;
    }
    void Watch(const QObject* words, std::function<void()> onWordsShown) {
        words_ = words;
        onWordsShown_ = std::move(onWordsShown);
    }

  private:
    const QObject* words_ = nullptr;
    std::function<void()> onWordsShown_;
    bool painted_ = false;
};

/// The player with a song in it.
struct Player {
    Player() {
        SalvaImpostazione(registro, "Opzioni", "Compensazione", "0");
        SalvaImpostazione(registro, "Finestra", "Width", "28800");  // 1920 pixels
        window.Form_Load();
    }
    void Play(std::chrono::seconds time) {
        window.mnuSoundPlay_Click();
        QEventLoop loop;
        QTimer end;
        QObject::connect(&end, &QTimer::timeout, &loop, &QEventLoop::quit);
        end.start(time);
        loop.exec();
    }
    [[nodiscard]] bool Playing() const { return IsPlaying(sequencer.Mode()); }
    /// The lyrics area of the main window.
    [[nodiscard]] const QWidget* Lyrics() const {
        const auto all = window.findChildren<QWidget*>();
        return *std::find_if(all.begin(), all.end(), [](const QWidget* one) {
            return dynamic_cast<const QtPictureBox*>(one) != nullptr;
        });
    }
    /// Opens the lyrics window, as large as the largest screens.
    const QWidget* OpenLyricsWindow() {
        for (QAction* action : window.actions()) {
            if (action->shortcut() == Qt::Key_F12) {
                action->trigger();
            }
        }
        const auto all = QApplication::topLevelWidgets();
        QWidget* lyrics = *std::find_if(all.begin(), all.end(), [](const QWidget* one) {
            return one->accessibleName() == "Lyrics for the singers";
        });
        lyrics->setGeometry(0, 0, 3840, 2160);
        return lyrics;
    }

    test::MemoryRegistry registro;
    FluidSynthesizer synth{[] {
        return FindSoundFont("", ProcessEnvironment, SoundFontDirectories(ProcessEnvironment));
    }};
    MeteredSynth metered{synth};
    QtClock clock;
    DefaultOutput output{AudioDriver{AudioDriver::Kind::Silence, ""}, clock};
    QtTimer timer;
    MMControl sequencer{metered, output, timer, clock};
    test::ScriptedMsgBox msgBox;
    QtSystemEvents events;
    QtScreen screen;
    QtShell shell;
    test::OtherWindows others;
    Coda queue{"queue"};
    Config config;
    Timeline timeline;
    InformazioniBrano info;
    std::mt19937 random;
    frmKaraoke window{{config, timeline, info, random, registro, sequencer, msgBox, events, clock,
                       screen, shell, others, queue},
                      {.CmdLine = SONNEL_SONGS "/Twinkle Twinkle",
                       .openDirPredefinita = SONNEL_SONGS "/",
                       .scriviWinIni = [](auto, auto, auto) {}}};
};

enum class Shown { MainWindow, LyricsWindow };

/// Processor time of playing beyond what the synthesizer takes for the same sound at the same
/// pace, in percent of one core.
void ProcessorShare(benchmark::State& state, Shown shown) {
    constexpr std::chrono::seconds Time(30);
    Player player;
    if (shown == Shown::LyricsWindow) {
        player.OpenLyricsWindow();
    }
    for ([[maybe_unused]] auto iteration : state) {
        const auto start = std::chrono::steady_clock::now();
        const double all = ProcessorTime(CLOCK_PROCESS_CPUTIME_ID);
        const double synth = player.metered.Seconds();
        player.Play(Time);
        const double synthTook = player.metered.Seconds() - synth;
        const double took = ProcessorTime(CLOCK_PROCESS_CPUTIME_ID) - all;
        const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - start;
        if (!player.Playing()) {
            state.SkipWithError("the song did not play");
        }
        state.SetIterationTime(passed.count());
        state.counters["synthesizer_percent"] = 100 * synthTook / passed.count();
        state.counters["beyond_percent"] = 100 * (took - synthTook) / passed.count();
    }
}
BENCHMARK_CAPTURE(ProcessorShare, main, Shown::MainWindow)
    ->Iterations(1)
    ->UseManualTime()
    ->Unit(benchmark::kSecond);
BENCHMARK_CAPTURE(ProcessorShare, lyrics, Shown::LyricsWindow)
    ->Iterations(1)
    ->UseManualTime()
    ->Unit(benchmark::kSecond);

/// Keeps every core busy while it lives.
class Load {
  public:
    Load() {
        for (unsigned i = 0; i < std::thread::hardware_concurrency(); ++i) {
            threads_.emplace_back([](const std::stop_token& stop) {
                while (!stop.stop_requested()) {
                }
            });
        }
    }

  private:
    std::vector<std::jthread> threads_;
};

/// How late each colour event of a song is seen in a widget, in milliseconds by the position
/// reported.
std::vector<std::int32_t> Lateness(Player& player, const QWidget* words,
                                   std::chrono::seconds time) {
    std::vector<std::int32_t> late;
    std::int16_t seen = 0;
    auto* application = dynamic_cast<Watcher*>(QApplication::instance());
    application->Watch(words, [&] {
        const std::int32_t now = player.sequencer.Position();
        const Timeline& timeline = player.timeline;
        while (seen < timeline.UltimoEvento) {
            const Evento& event = timeline.Eventi(++seen);
            if (event.Tipo == TipoEvento::Colore) {
                late.push_back(now - 100 * event.Tempo);
            }
        }
    });
    player.Play(time);
    application->Watch(nullptr, nullptr);
    std::sort(late.begin(), late.end());
    return late;
}

/// The share of the turns of a bare timer that come within 20 ms, while every core is busy: the
/// machine gives no words in time that such a timer would not.
void TimerInTime(benchmark::State& state) {
    constexpr std::chrono::seconds Time(20);
    constexpr std::chrono::milliseconds Pace(20);
    constexpr std::chrono::milliseconds Most(20);
    const Load load;
    for ([[maybe_unused]] auto iteration : state) {
        int turns = 0;
        int inTime = 0;
        auto due = std::chrono::steady_clock::now() + Pace;
        QEventLoop loop;
        QTimer timer;
        timer.setTimerType(Qt::PreciseTimer);
        QObject::connect(&timer, &QTimer::timeout, &loop, [&] {
            const auto now = std::chrono::steady_clock::now();
            ++turns;
            inTime += now - due <= Most ? 1 : 0;
            due = now + Pace;
        });
        QTimer end;
        QObject::connect(&end, &QTimer::timeout, &loop, &QEventLoop::quit);
        timer.start(Pace);
        end.start(Time);
        loop.exec();
        state.SetIterationTime(static_cast<double>(Time.count()));
        state.counters["in_time_percent"] = 100.0 * inTime / turns;
    }
}
BENCHMARK(TimerInTime)->Iterations(1)->UseManualTime()->Unit(benchmark::kSecond);

/// The share of words that are on the screen within 20 ms, while every core is busy.
void WordsInTime(benchmark::State& state, Shown shown) {
    constexpr std::chrono::seconds Time(60);
    constexpr std::int32_t MostMs = 20;
    Player player;
    const QWidget* area =
        shown == Shown::LyricsWindow ? player.OpenLyricsWindow() : player.Lyrics();
    const Load load;
    for ([[maybe_unused]] auto iteration : state) {
        const std::vector<std::int32_t> late = Lateness(player, area, Time);
        if (!player.Playing() || late.empty()) {
            state.SkipWithError("the song did not play");
            return;
        }
        const auto words = static_cast<double>(late.size());
        const auto inTime = std::upper_bound(late.begin(), late.end(), MostMs) - late.begin();
        state.SetIterationTime(static_cast<double>(Time.count()));
        state.counters["words"] = words;
        state.counters["in_time_percent"] = 100 * static_cast<double>(inTime) / words;
        state.counters["median_ms"] = late[late.size() / 2];
        state.counters["worst_ms"] = late.back();
    }
}
BENCHMARK_CAPTURE(WordsInTime, main, Shown::MainWindow)
    ->Iterations(1)
    ->UseManualTime()
    ->Unit(benchmark::kSecond);
BENCHMARK_CAPTURE(WordsInTime, lyrics, Shown::LyricsWindow)
    ->Iterations(1)
    ->UseManualTime()
    ->Unit(benchmark::kSecond);

}  // namespace
}  // namespace sonnel

int main(int argc, char** argv) {
    return sonnel::bench::RunOffscreen<sonnel::Watcher>(argc, argv);
}
