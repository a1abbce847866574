// A long session of the real main window by a clock of its own: `sonnel_soak MINUTES [SEED]`.
// Random commands, at every step what is shown has to fit the position of the song, and the program
// at rest must not take more memory as time goes by.

#include "windows/LyricsPicture.h"
#include "windows/PlayerRig.h"

#include "platform/Text.h"
#include "ui/basCommon.h"

#include <QApplication>
#include <QTest>
#include <algorithm>
#include <array>
#include <cstdlib>
#include <iostream>
#include <random>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>

#include <malloc.h>

namespace sonnel::test {
namespace {

constexpr int Step = 10;     // ms
constexpr int Latency = 50;  // ms until sound is heard
constexpr std::int64_t MostGrowth =
    3'145'728;               // bytes, after the warm-up: letters in sizes that are kept
constexpr int Narrow = 560;  // pixels; few widths, as each brings fonts with it
constexpr int Wide = 780;    // less than the screen, which the full screen fills
constexpr std::array Songs{"Amazing Grace", "Auld Lang Syne", "Frere Jacques", "Row Your Boat",
                           "Twinkle Twinkle"};

/// Stops the timers of the real clock, by which no run would be like another.
class NoRealTime : public QObject {
  public:
    bool eventFilter(QObject* object, QEvent* event) override {
        return event->type() == QEvent::Timer && qobject_cast<QTimer*>(object) != nullptr;
    }
};

Lines Split(std::string_view page) {
    std::string text(page);
    SostituisciTesto(text, "\r\n", "\n");
    // Half a line break is not shown.
    std::erase(text, '\r');
    std::istringstream lines(text);
    Lines split;
    for (std::string line; std::getline(lines, line);) {
        split.push_back(line);
    }
    return split;
}

class Soak : PlayerRig {
  public:
    explicit Soak(std::uint32_t seed) : random_(seed) {
        rig.output.latency = rig.Frame(Latency);
        rig.folder.Write("broken.lyk", "Cantabile\r\n");
        rig.folder.Write("broken.mid", "");
        rig.folder.Write("alone.lyk", "Cantabelle1.0\r\n00000 1Uno\r\n");
        Open("");
        qApp->installEventFilter(&noRealTime_);
    }

    void Run(int minutes) {
        constexpr int Samples = 12;
        WarmUp();
        const int period = minutes * 60'000 / Step / Samples;
        const std::int64_t warm = LiveHeap();
        std::cout << "live heap " << warm << " bytes after the warm-up\n";
        for (int sample = 1; sample <= Samples; ++sample) {
            for (int step = 0, next = 0; step < period; ++step) {
                if (step >= next) {
                    Give();
                    next = step + 1 + Random(400);
                }
                Advance();
            }
            FullScreen();
            Rest();
            const std::int64_t growth = LiveHeap() - warm;
            std::cout << sample * minutes / 12.0 << " min: " << std::showpos << growth
                      << std::noshowpos << " bytes" << std::endl;
            Require(growth <= MostGrowth, "the heap has grown");
        }
        for (const Command& command : commands_) {
            std::cout << command.name << ' ' << command.given << ", ";
        }
        std::cout << "played to the end " << ends_ << '\n';
    }

  private:
    struct Command {
        const char* name;
        bool (Soak::*give)();  ///< false when it is out of use now
        int given = 0;
    };

    int Random(int below) {
        return static_cast<int>(random_() % static_cast<std::uint32_t>(below));
    }
    [[nodiscard]] bool Loaded() const { return !control.FileName().empty(); }
    static std::int64_t LiveHeap() {
        const auto heap = mallinfo2();
        return static_cast<std::int64_t>(heap.uordblks + heap.hblkhd);
    }
    void Require(bool holds, const std::string& fault) const {
        if (!holds) {
            throw std::runtime_error("step " + std::to_string(steps_) + ", after " + last_ +
                                     ", at " + std::to_string(control.Position()) +
                                     " ms: " + fault);
        }
    }

    // Commands

    void Give() {
        Command* command = nullptr;
        do {
            command = &commands_.at(random_() % commands_.size());
            last_ = command->name;
        } while (!(this->*command->give)());
        ++command->given;
        given_ = true;
    }
    bool Trigger(const char* name, bool draws) {
        auto* action = window->findChild<QAction*>(name);
        const bool usable = action->isEnabled();
        redrawn_ = redrawn_ || (usable && draws);
        action->trigger();
        return usable;
    }
    bool Play() { return Trigger("mnuSoundPlay", true); }
    bool Pause() { return Trigger("mnuSoundPause", false); }
    bool Stop() { return Trigger("mnuSoundStop", true); }
    bool Options() { return Trigger("mnuVisOpzioni", true); }
    bool Click() {
        const bool plays = Loaded() && !Playing();
        QTest::mouseClick(lyrics, Qt::LeftButton);
        Require(Playing() == plays, "the click");
        return Loaded();
    }
    bool SeekTo(int second) {
        if (!slider->isEnabled() || slider->value() == second) {
            return false;
        }
        redrawn_ = true;
        slider->setValue(second);
        Require(control.Position() == std::min(1000 * second, control.Length()), "the place");
        return true;
    }
    bool Seek() { return SeekTo(Random(slider->maximum() + 1)); }
    bool SeekEnd() { return SeekTo(slider->maximum() - Random(4)); }
    bool Resize() {
        window->resize(Random(2) == 0 ? Narrow : Wide, 250 + Random(550));
        return true;
    }
    bool LookAway() {
        QApplication::setActiveWindow(&other_);
        Require(!Playing(), "it plays on");
        QApplication::setActiveWindow(window.get());
        return true;
    }
    QAction& Addition(const QString& text) const {
        const auto actions = window->findChildren<QAction*>() + window->actions();
        const auto found = std::ranges::find(actions, text, &QAction::text);
        if (found == actions.end()) {
            throw std::logic_error("no " + text.toStdString());
        }
        return **found;
    }
    /// The window system without a screen activates each window that opens.
    bool Press(const char* text) {
        Addition(text).trigger();
        QCoreApplication::processEvents();
        QApplication::setActiveWindow(window.get());
        return true;
    }
    bool Sing() {
        constexpr std::array texts{"&Higher", "&Lower", "&Faster", "&Slower", "Ne&xt"};
        redrawn_ = true;
        return Press(texts.at(random_() % texts.size()));
    }
    bool LyricsWindow() { return Press("&Lyrics window"); }
    /// To the full screen and back, which takes its time by the real clock.
    void FullScreen() {
        constexpr int patience = 600;  // ms
        Press("&Full screen");
        Press("&Full screen");
        QTest::qWait(patience);
        redrawn_ = true;
        given_ = true;
        Advance();
    }
    bool Queue() {
        constexpr std::size_t most = 5;
        const bool plays = Playing();
        Press("&Queue...");
        if (queue.Turni().size() < most) {
            const auto song = TrovaFileBrano(std::string(SONNEL_SONGS) + Songs.at(0));
            Require(!queue.Aggiungi(*TurnoDi(song)), "the queue cannot be written");
        } else {
            Require(!queue.Sposta(queue.Turni().back().numero, -2), "a move");
            Require(!queue.Togli(queue.Turni().front().numero), "a removal");
        }
        Require(Playing() == plays, "the queue's window pauses the song");
        return true;
    }
    bool Load(const std::string& path, const std::string& message) {
        others.choice = TrovaFileBrano(path);
        const bool usable = Trigger("mnuFileLoad", message.empty());
        expected_ = usable ? message : "";
        return usable;
    }
    bool LoadSong(std::size_t number) {
        return Load(std::string(SONNEL_SONGS) + Songs.at(number), "");
    }
    bool LoadAny() { return LoadSong(random_() % Songs.size()); }
    bool LoadBroken() {
        const bool usable = Load((rig.folder / "broken").string(), "That's not a Cantabelle1.0");
        Require(!usable || !Loaded(), "a song is open");
        return usable;
    }
    bool LoadAlone() {
        return Load((rig.folder / "alone").string(), "Can't load the selected song: MID");
    }

    /// The same song at its start in the same window: the same is to be allocated.
    void Rest() {
        last_ = "rest";
        (void)Pause();
        Press("Back to the song's &own");
        if (Addition("&Lyrics window").isChecked()) {
            Press("&Lyrics window");
        }
        while (!queue.Turni().empty()) {
            Require(!queue.Togli(queue.Turni().front().numero), "a removal");
        }
        window->resize(Wide, 600);
        config.Autoplay = false;
        Advance();
        Require(LoadSong(0), "no song can be opened");
        given_ = true;
        for (int i = 0; i < 10; ++i) {
            Advance();
        }
    }
    /// All pages in all sizes, so that what the window system keeps of letters is complete.
    void WarmUp() {
        for (std::size_t i = 0; i < 4 * Songs.size(); ++i) {
            Rest();
            window->resize(i / 2 % 2 == 0 ? Narrow : Wide, Wide);
            Advance();
            (void)LoadSong(i / 4);
            (void)Queue();
            Press("&Lyrics window");
            window->resize(i % 2 == 0 ? Narrow : Wide, Wide);
            for (int second = 0; second < slider->maximum(); second += 2) {
                (void)SeekTo(second);
                Advance();
            }
        }
        FullScreen();
        Rest();
    }

    // What has to hold

    void Advance() {
        const MciMode mode = control.Mode();
        const std::int32_t before = control.Position();
        rig.Run(Step);
        if (++steps_ % 50 == 0) {
            window->tmrSlider_Timer();
            window->tmrLogo_Timer();
            Require(!Playing() || std::abs(1000 * slider->value() - control.Position()) <= 500,
                    "the slider");
        }
        QCoreApplication::processEvents();
        CheckPosition(mode, control.Position() - before);
        CheckBoxes();
        CheckButtons(control.Position() != before);
        CheckWords();
        given_ = false;
        redrawn_ = false;
    }
    /// So many ms of the song pass in a step.
    [[nodiscard]] int Pace() const { return Step * control.Performed().tempo / 100; }
    void CheckPosition(MciMode mode, std::int32_t moved) {
        played_ = Playing() && !given_ ? played_ + 1 : 0;
        if (mode == control.Mode()) {
            Require(moved >= 0, "the position runs backwards");
            Require(played_ <= 2 * Latency / Step || std::abs(moved - Pace()) <= 1, "the pace");
        } else if (IsPlaying(mode)) {
            Require(control.Position() == 0, "not rewound");
            Require(shown_ == timeline.NumEventi(), "words are left at the end");
            ++ends_;
            ended_ = true;
        }
    }
    void CheckBoxes() {
        std::string texts;
        for (const Message& message : std::exchange(msgBox.shown, {})) {
            texts += message.text;
        }
        Require(expected_.empty() ? texts.empty() : texts.starts_with(expected_), "box: " + texts);
        expected_.clear();
    }
    void CheckButtons(bool moved) const {
        const bool stands = !Playing();
        const bool ready = Loaded() && stands;
        // What is still to be heard at a pause may move the song from its start: Stop comes then.
        const bool coming = stands && moved;
        const bool stoppable =
            coming ? buttons.at(10)->isEnabled() : Loaded() && control.Position() != 0;
        for (const auto& [index, usable] :
             {std::pair(0, stands), std::pair(1, ready), std::pair(3, stands), std::pair(4, stands),
              std::pair(8, ready), std::pair(9, !stands), std::pair(10, stoppable)}) {
            const QAction* button = buttons.at(index);
            Require(button->isEnabled() == usable, "button " + button->text().toStdString());
        }
        Require(slider->isEnabled() == ready, "the slider's use");
    }
    /// How many events are due at a position.
    [[nodiscard]] std::int16_t Due(std::int32_t position) const {
        std::int16_t i = 1;
        while (i <= timeline.NumEventi() && 100 * timeline.Eventi(i).Tempo <= position) {
            ++i;
        }
        return static_cast<std::int16_t>(i - 1);
    }
    void CheckWords() {
        const std::int16_t last = timeline.UltimoEvento;
        const bool look = given_ || redrawn_ || last != shown_ || steps_ % 50 == 0;
        shown_ = last;
        // After its end the last page stays, and what was still to be heard at a pause is not
        // shown.
        ended_ = ended_ && !redrawn_;
        const std::int32_t position = ended_ ? control.Length() : control.Position();
        const int late = (Playing() ? 3 * Step : 2 * Latency) * std::max(1, Pace() / Step + 1);
        Require(last <= Due(position) && last >= Due(position - late), "the event shown");
        if (look && Loaded()) {
            Require(Shot(*lyrics) == Wanted(last), "the picture of the words");
        }
    }
    /// What the lyrics area has to show after an event.
    QImage Wanted(std::int16_t last) {
        std::int16_t page = last;
        while (page > 0 && timeline.Eventi(page).Tipo != TipoEvento::Pagina) {
            --page;
        }
        if (redrawn_ || page != page_) {
            width_ = lyrics->width();
        }
        page_ = page;
        const std::string text = page > 0 ? timeline.Eventi(page).Testo : "";
        const int sung = last > page ? std::stoi(timeline.Eventi(last).Testo) : 0;
        return LyricsPicture(*lyrics, width_, config, Split(text),
                             Split(FirstCodePoints(text, static_cast<std::size_t>(sung))));
    }

    std::mt19937 random_;  ///< of the session
    QWidget other_;
    NoRealTime noRealTime_;

    std::array<Command, 15> commands_{{{"play", &Soak::Play},
                                       {"pause", &Soak::Pause},
                                       {"stop", &Soak::Stop},
                                       {"click", &Soak::Click},
                                       {"seek", &Soak::Seek},
                                       {"seek near the end", &Soak::SeekEnd},
                                       {"song", &Soak::LoadAny},
                                       {"broken LYK", &Soak::LoadBroken},
                                       {"missing MIDI", &Soak::LoadAlone},
                                       {"resize", &Soak::Resize},
                                       {"other window", &Soak::LookAway},
                                       {"options", &Soak::Options},
                                       {"key, tempo, melody", &Soak::Sing},
                                       {"lyrics window", &Soak::LyricsWindow},
                                       {"queue", &Soak::Queue}}};
    std::string last_;        ///< the command given last
    std::string expected_;    ///< the message box it has to show
    bool given_ = false;      ///< it was given just now
    bool redrawn_ = false;    ///< and draws the words anew
    bool ended_ = false;      ///< the song came to its end, whose words stay
    int steps_ = 0;           ///< so far
    int played_ = 0;          ///< steps since the last command
    int ends_ = 0;            ///< songs that came to their end
    std::int16_t shown_ = 0;  ///< the last event shown
    std::int16_t page_ = 0;   ///< the page shown
    int width_ = 0;           ///< of the lyrics area when it was drawn
};

}  // namespace
}  // namespace sonnel::test

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    const std::string given = argc > 2 ? argv[2] : "";
    try {
        const int minutes = argc > 1 ? std::stoi(argv[1]) : 120;
        const auto seed =
            static_cast<std::uint32_t>(given.empty() ? std::random_device{}() : std::stoul(given));
        std::cout << minutes << " minutes, seed " << seed << std::endl;
        sonnel::test::Soak(seed).Run(minutes);
    } catch (const std::exception& fault) {
        std::cout << fault.what() << '\n';
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
