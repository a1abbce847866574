// The song selection window over a large library: filling and sorting its list, changing the order,
// and the jump to a song by its first letters.

#include "bench/Offscreen.h"

#include "fakes/ScriptedDialog.h"
#include "fakes/ScriptedMsgBox.h"
#include "library/frmSelectSong.h"
#include "platform/qt/QtSystem.h"
#include "settings/Config.h"

#include <QApplication>
#include <QLineEdit>
#include <QListView>
#include <QStringListModel>
#include <algorithm>
#include <array>
#include <random>
#include <string>

namespace sonnel {
namespace {

/// Words as titles and names have them, accents included.
std::string Words(std::mt19937& random, int count) {
    constexpr std::array Parts = {
        "amo", "re", "ca", "Perch\xC3\xA9", "sol", "e", "ma", "gi\xC3\xB9",
        "the", "an", "St", "ing",           "ro",  "x", "L'", "\xC3\x88 "};
    std::string words;
    for (int i = 0; i < count; ++i) {
        words += words.empty() ? "" : " ";
        for (int part = 0; part < 3; ++part) {
            words += Parts.at(random() % Parts.size());
        }
    }
    return words;
}

/// The window with a library of so many songs.
class Selection {
  public:
    explicit Selection(std::int64_t songs) {
        for (std::int64_t i = 0; i < songs; ++i) {
            table_.InserisciBrano({"song" + std::to_string(i), Words(random_, 3), Words(random_, 2),
                                   i % 5 == 0 ? "?" : Words(random_, 1)});
        }
        window_.AggiornaLista();
        window_.SelezionaBrano(static_cast<std::int16_t>(songs / 2));
        window_.show();
        QApplication::processEvents();
    }
    frmSelectSong& Window() { return window_; }
    QListView& List() { return *window_.findChild<QListView*>(); }
    /// False when not every song has its line.
    bool Complete() { return List().model()->rowCount() == table_.NumBrani(); }

  private:
    std::mt19937 random_{1};  // NOLINT(bugprone-random-generator-seed): the same every time
    const Config config_;
    TabellaBrani table_;
    test::ScriptedMsgBox msgBox_;
    QtSystemEvents events_;
    const Libreria library_{config_, table_, msgBox_, events_};
    test::ScriptedDialog dialogs_;
    struct NoCommands : ComandiSelezione {
        void ConvertiKar() override {}
        void SincronizzaDB() override {}
        std::optional<std::string> Accoda(std::int16_t /*position*/) override { return {}; }
        void AggiungiFile(const std::vector<std::filesystem::path>& /*files*/) override {}
    } commands_;
    frmSelectSong window_{{library_, dialogs_, random_, commands_}};
};

/// Fills, sorts and shows the list, the selected song in sight.
void FillList(benchmark::State& state) {
    Selection selection(state.range(0));
    for ([[maybe_unused]] auto iteration : state) {
        selection.Window().AggiornaLista();
        QApplication::processEvents();
        if (!selection.Complete()) {
            state.SkipWithError("songs are missing");
        }
    }
}
BENCHMARK(FillList)->Arg(10000)->Arg(32000)->Unit(benchmark::kMillisecond);

/// The least that can take: as many ready lines sorted by their bytes and shown by a plain list.
void FillPlainList(benchmark::State& state) {
    std::mt19937 random(1);  // NOLINT(bugprone-random-generator-seed): the same every time
    QStringList lines;
    for (std::int64_t i = 0; i < state.range(0); ++i) {
        lines.append(QString::fromStdString(Words(random, 3) + " - " + Words(random, 2)));
    }
    QStringListModel model;
    QListView list;
    list.setUniformItemSizes(true);
    list.setModel(&model);
    list.resize(640, 480);
    list.show();
    for ([[maybe_unused]] auto iteration : state) {
        QStringList sorted = lines;
        std::sort(sorted.begin(), sorted.end());
        model.setStringList(sorted);
        QApplication::processEvents();
    }
}
BENCHMARK(FillPlainList)->Arg(10000)->Arg(32000)->Unit(benchmark::kMillisecond);

/// A key in the find field, to the painted list.
void FindKey(benchmark::State& state) {
    Selection selection(state.range(0));
    auto& words = *selection.Window().findChild<QLineEdit*>();
    words.show();
    bool longer = false;
    for ([[maybe_unused]] auto iteration : state) {
        longer = !longer;
        words.setText(longer ? "er" : "e");
        QApplication::processEvents();
    }
}
BENCHMARK(FindKey)->Arg(32000)->Unit(benchmark::kMillisecond);

/// Letters that only a line near the end, or none, begins with.
void FirstLetters(benchmark::State& state) {
    Selection selection(state.range(0));
    for ([[maybe_unused]] auto iteration : state) {
        selection.List().keyboardSearch("xxxz");
        selection.List().keyboardSearch("");
        QApplication::processEvents();
    }
}
BENCHMARK(FirstLetters)->Arg(32000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace sonnel

int main(int argc, char** argv) {
    return sonnel::bench::RunOffscreen<QApplication>(argc, argv);
}
