#include "fakes/MemoryRegistry.h"
#include "fakes/SequencerRig.h"
#include "fakes/SmfBuilder.h"
#include "player/Coda.h"
#include "player/ProssimoTurno.h"

#include <limits>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace sonnel::test {
namespace {

/// The queue in a directory that is not there yet, with songs that are.
struct QueueTest : testing::Test, SequencerRig {
    Turno Song(const std::string& title, const std::string& singer = "") const {
        folder.Write(title + ".lyk", "Cantabelle1.0\r\n*TI" + title + "\r\n*AURossi\r\n");
        folder.Write(title + ".mid", "");
        Turno turn = *TurnoDi(TrovaFileBrano((folder / title).string()));
        turn.cantante = singer;
        return turn;
    }
    /// Singers and titles in their order.
    static std::string Turns(const Coda& queue) {
        std::string turns;
        for (const Turno& turn : queue.Turni()) {
            turns.append(turn.cantante).append(":").append(turn.titolo).append("|");
        }
        return turns;
    }

    std::filesystem::path file = folder / "data/sonnel/queue";
    Coda queue{file};
};

TEST_F(QueueTest, TwoPlayersShareTheQueueAndLoseNothing) {
    Coda other(file);
    EXPECT_FALSE(queue.Aggiungi(Song("A", "Anna\tB\r\n")));
    EXPECT_FALSE(other.Aggiungi(Song("B")));
    EXPECT_FALSE(queue.Aggiungi(Song("C", "Carla")));
    EXPECT_EQ(Turns(queue), "Anna B  :A|:B|Carla:C|");
    EXPECT_EQ(Turns(other), "Anna B  :A|:B|");
    int changes = 0;
    other.onCambiata = [&] { ++changes; };
    other.Rileggi();
    other.Rileggi();
    EXPECT_EQ(changes, 1);

    EXPECT_FALSE(other.Sposta(3, -5));
    EXPECT_FALSE(queue.Cambia(2, "Bea", -3));
    EXPECT_FALSE(other.Togli(1));
    EXPECT_FALSE(other.Togli(1)) << "another player was faster";
    EXPECT_FALSE(other.Sposta(3, 1));
    EXPECT_EQ(Turns(other), "Bea:B|Carla:C|");
    EXPECT_EQ(other.Turni()[0].tonalita, -3);
    EXPECT_EQ(other.Turni()[0].autore, "Rossi");
    EXPECT_FALSE(other.Turni()[1].tonalita);
    EXPECT_EQ(Coda(file).Turni(), other.Turni()) << "what the file says";
}

TEST_F(QueueTest, WhatTheFileMayHoldAndWhatCannotBeWritten) {
    EXPECT_EQ(TurnoDaRiga("7\t-99\tAnna\tTitle\t\t/a\tb.lyk"),
              (Turno{7, -12, "Anna", "Title", "", "/a\tb.lyk"}));
    for (const char* bad : {"", "1", "1\t\t\t\t\t", "1\t2\tAnna\tTitle\tAuthor"}) {
        EXPECT_FALSE(TurnoDaRiga(bad)) << bad;
    }
    EXPECT_EQ(TurnoDi(TrovaFileBrano((folder / "none").string())).error().number, ENOENT);
    folder.Write("words.lyk", "Cantabelle1.0\r\n");
    EXPECT_EQ(TurnoDi(TrovaFileBrano((folder / "words").string())).error().number, ENOENT);
    folder.Write("two\rlines.lyk", "Cantabelle1.0\r\n");
    folder.Write("two\rlines.mid", "");
    EXPECT_FALSE(TurnoDi(TrovaFileBrano((folder / "two\rlines").string())));

    const std::string twice = "2147483647\t\t\tA\t\t/a\r\n";
    EXPECT_EQ(Coda(folder.Write("twice", twice + twice)).Turni().back().numero, 2147483648);
    folder.Write("data", "");
    EXPECT_TRUE(queue.Aggiungi(Song("A")));
    EXPECT_TRUE(queue.Turni().empty());
    std::filesystem::create_directories(folder / "dir/queue");
    const auto error = Coda(folder / "dir/queue").Aggiungi(Song("A"));
    ASSERT_TRUE(error) << "what cannot be read is not written over";
    EXPECT_THAT(error->text, testing::HasSubstr("queue"));
}

/// The queue after a song that lasts half a second.
struct NextTurnTest : QueueTest {
    NextTurnTest() {
        EXPECT_EQ(Open(SmfBuilder(0, 500).Tempo(0, 500000).Note(0, 500, 60).Bytes()), "");
        for (const char* title : {"A", "B", "C", "D"}) {
            EXPECT_FALSE(queue.Aggiungi(Song(title, std::string("S") + title)));
        }
        std::filesystem::remove(folder / "B.lyk");
    }
    /// Waits some seconds after the song, or stops when a turn begins.
    void Wait(double seconds) {
        for (int i = 0; i < seconds * 10 && begun.empty(); ++i) {
            countdown.Fire();
        }
    }
    std::string Shown() const {
        const auto& shown = next.Corrente();
        std::string text = shown ? shown->turno.titolo + std::to_string(shown->secondi) : "";
        for (const std::string& line : shown ? shown->seguenti : std::vector<std::string>{}) {
            text += "|" + line;
        }
        return text;
    }

    MemoryRegistry registry;
    ManualTimer countdown;
    bool waiting = false;
    std::string begun;
    int shows = 0;
    ProssimoTurno next{{queue, registry, control, countdown, [this] { return waiting; },
                        [this] { ++shows; }, [this](const Turno& turn) { begun = turn.titolo; }}};
};

TEST_F(NextTurnTest, IsAnnouncedAndBeginsAfterSomeSeconds) {
    next.BranoFinito();
    EXPECT_EQ(Shown(), "A10|C - SC|D - SD") << "a song that has gone is passed over";
    Wait(3.5);
    EXPECT_EQ(Shown(), "A7|C - SC|D - SD");
    waiting = true;
    Wait(60);
    EXPECT_EQ(Shown(), "A7|C - SC|D - SD");
    waiting = false;
    EXPECT_FALSE(Coda(file).Togli(1)) << "by another player";
    queue.Rileggi();
    Wait(6.4);
    EXPECT_EQ(Shown(), "C1|D - SD");
    EXPECT_EQ(begun, "");
    Wait(0.1);
    EXPECT_EQ(begun, "C");
    EXPECT_EQ(Shown(), "");
    EXPECT_EQ(countdown.interval, 0);
    EXPECT_EQ(shows, 11) << "only when something has changed";
}

TEST_F(NextTurnTest, EndsWithAnyCommandAndWithAnEmptyQueue) {
    for (const MciCommand command : {MciCommand::Play, MciCommand::Pause, MciCommand::Seek,
                                     MciCommand::Open, MciCommand::Close}) {
        next.BranoFinito();
        Wait(9.9);
        control.Command(command);
        Wait(0.1);
        EXPECT_EQ(Shown() + begun, "") << static_cast<int>(command);
    }
    next.BranoFinito();
    for (int number = 1; number <= 4; ++number) {
        EXPECT_FALSE(queue.Togli(number));
    }
    Wait(1);
    EXPECT_EQ(Shown(), "");
    next.BranoFinito();
    EXPECT_EQ(countdown.interval, 0);
}

TEST_F(NextTurnTest, TheSecondsAreRememberedAndCanBeSwitchedOff) {
    next.CambiaSecondi(500);
    next.CambiaAutomatico(false);
    ProssimoTurno later{{queue, registry, control, countdown, [] { return false; }, [] {},
                         [this](const Turno& turn) { begun = turn.titolo; }}};
    EXPECT_EQ(later.Secondi(), 120);
    later.BranoFinito();
    Wait(200);
    ASSERT_TRUE(later.Corrente());
    EXPECT_EQ(later.Corrente()->secondi, 0);
    later.CambiaAutomatico(true);
    Wait(120);
    EXPECT_EQ(begun, "A");
}

}  // namespace
}  // namespace sonnel::test
