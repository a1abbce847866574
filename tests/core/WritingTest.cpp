#include "convert/ConvertiKar.h"
#include "fakes/KarScore.h"
#include "fakes/ScriptedDialog.h"
#include "fakes/SongLibrary.h"
#include "fakes/WritingTrial.h"
#include "library/AggiornaIndice.h"
#include "library/AggiungiBrani.h"
#include "library/EliminaBrano.h"
#include "library/Indice.h"
#include "library/ProprietaBrano.h"
#include "library/RiscriviIntestazione.h"

#include <gtest/gtest.h>

namespace sonnel::test {
namespace {

/// A library with a song, and another directory with files to bring into it.
struct Desk : SongLibrary {
    Desk() {
        std::filesystem::create_directory(directory / "other");
        Lyk("old.lyk", "*TIOld\r\n*AUAda\r\n*ALHits\r\n");
        directory.Write("old.mid", "old music");
        Index("[Songs]\r\nold=Old|Ada|Hits\r\n[Album]\r\nHits=|\r\n?=|\r\n");
        msgBox.whileShown = [this] {  // yes to all questions; what fails is not tried again
            const Buttons buttons = msgBox.shown.back().buttons;
            msgBox.answers = {buttons == Buttons::RetryCancel ? Answer::Cancel
                              : buttons == Buttons::YesNo     ? Answer::Yes
                                                              : Answer::Ok};
        };
    }
    /// Whether no message told of a failure, then or in the update of the index that follows.
    bool UpdatedWithoutFailure() {
        bool done = !AggiornaIndice(libreria).errore;
        for (const std::string& text : Messages()) {
            done = done && text.find("Can't write") == std::string::npos &&
                   text.find("An error occured") == std::string::npos;
        }
        return done;
    }
    bool Convert(const char* file) {
        dialog.files = {{directory / "other" / file}};
        ConvertiKar(libreria, {dialog, windows, [](const std::string&) { return "86400"; }, [] {}});
        return UpdatedWithoutFailure();
    }
    void WriteKar(const std::string& file) const {
        directory.Write("other/" + file, KarScore("0 tempo 500000|0 @K|0 @TNew|20 \\la").Bytes());
    }

    ScriptedDialog dialog;
    ProfileFile winIni{directory / "win.ini"};
};

struct Row {
    const char* name;
    std::function<bool(Desk&)> run;
    bool tells = true;  ///< not where nobody would act on it: the index
    std::function<void(Desk&)> arrange = [](Desk&) {};
};

const std::vector<Row> Rows{
    {"win.ini", [](Desk& d) { return !d.winIni.Set("Extensions", "lyk", "/opt/x ^.lyk"); }},
    {"index", [](Desk& d) { return d.UpdatedWithoutFailure(); }, true,
     [](Desk& d) { d.Index("[Songs]\r\ngone=||?\r\n"); }},
    {"header",
     [](Desk& d) {
         return !RiscriviIntestazione(d.directory.Path(), "old", {"T", "A", "B"});
     }},
    {"properties",
     [](Desk& d) {
         CaricaIndice(d.libreria);
         ModificaProprieta(d.libreria, d.windows, 1, {"New", "Ada", "Others"});
         return true;
     },
     false},
    {"deletion",
     [](Desk& d) {
         CaricaIndice(d.libreria);
         return d.brani.NumBrani() == 0 || EliminaBrano(d.libreria, 1);
     },
     false},
    {"import",
     [](Desk& d) {
         d.dialog.files = {{d.directory / "other/new.lyk"}};
         AggiungiBrani(d.libreria, d.dialog, d.windows);
         return d.UpdatedWithoutFailure();
     },
     true,
     [](Desk& d) {
         d.Lyk("other/new.lyk", "*TIT\r\n*ALNew\r\n");
         d.directory.Write("other/new.mid", std::string(100'000, 'x'));
         d.directory.Write("new.mid", "an orphan");
     }},
    {"conversion", [](Desk& d) { return d.Convert("new.kar"); }, true,
     [](Desk& d) { d.WriteKar("new.kar"); }},
    {"a MID file moved", [](Desk& d) { return d.Convert("new.mid"); }, true,
     [](Desk& d) { d.WriteKar("new.mid"); }},
};

TEST(Writing, LeavesWholeFilesWhenItIsKilledAndOnAFullDiskOfWhichItTells) {
    for (const Row& row : Rows) {
        SCOPED_TRACE(row.name);
        Desk desk;
        row.arrange(desk);
        const WritingTrial trial(
            desk.directory, [&] { return row.run(desk); }, row.tells);
        trial.KillEverywhere();
        trial.FillTheDiskEverywhere();
    }
}

}  // namespace
}  // namespace sonnel::test
