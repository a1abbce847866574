#include "fakes/DemoSong.h"
#include "fakes/ScriptedMsgBox.h"
#include "fakes/TempDirectory.h"
#include "generator/Lyk.h"
#include "platform/Text.h"
#include "platform/midi/SmfReader.h"
#include "platform/midi/TempoMap.h"
#include "song/LeggiKaraoke.h"
#include "ui/basCommon.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <sys/stat.h>

namespace sonnel::test {
namespace {

constexpr const char* kMagic = "Cantabelle1.0\r\n";

/// The events as "time kind text", with "/" for a line break and ";" after each.
std::string Events(const Timeline& timeline) {
    std::string events;
    for (std::int16_t i = 1; i <= timeline.NumEventi(); ++i) {
        const Evento& event = timeline.Eventi(i);
        events += std::to_string(event.Tempo) + " " + std::to_string(static_cast<int>(event.Tipo)) +
                  " " + event.Testo + ";";
    }
    SostituisciTesto(events, "\r\n", "/");
    return events;
}

/// A text read as a song.
struct Song {
    explicit Song(const std::string& text, bool whole = true)
        : outcome(LeggiRighe(text, whole, timeline, info, msgBox)) {}

    Timeline timeline;
    InformazioniBrano info;
    ScriptedMsgBox msgBox;
    EsitoLettura outcome;
};

TEST(LeggiRighe, BodyLines) {
    const std::vector<std::pair<std::string, std::string>> cases{
        {"00150 1Hello$Eworld$E$E", "150 1 Hello/world;"},
        {"00200 2 12", "200 2  12;"},
        {"00300 3xyz", ""},
        {"001501!Page", "150 1 Page;"},
        {"00150 1a$e$$E$", "150 1 a$e$/$;"},
        {"àèìòù 1perché €", "0 1 perché €;"},
        {"7", "7 0 ;"},
        {"00100 1a\nb\r00200 1c", "100 1 a\nb;200 1 c;"},
        {"; 00150 1Page", ""},
        {"*XX00150 1Page", ""},
    };
    for (const auto& [line, events] : cases) {
        const Song song(kMagic + line + "\r\n");
        EXPECT_EQ(song.outcome, EsitoLettura::Completa);
        EXPECT_EQ(Events(song.timeline), events) << line;
    }
}

TEST(LeggiRighe, PagesKeepFourLinesAndWarnOnce) {
    const Song song(std::string(kMagic) +
                    "00100 1a$Eb$Ec$Ed$E\r\n00200 1a$Eb$Ec$Ed$Ee$Ef\r\n"
                    "00300 1$E$E$E$Ee\r\n00400 1a$E$E$E$Ee\r\n");
    EXPECT_EQ(Events(song.timeline), "100 1 a/b/c/d;200 1 a/b/c/d;300 1 ;400 1 a;");
    ASSERT_EQ(song.msgBox.shown.size(), 1U);
    EXPECT_EQ(song.msgBox.shown[0].text,
              "This Karaoke contains some pages with more than 4 text lines!\r\n\r\nThe song words "
              "may result incomplete: please edit the LYK file to correct this problem.");
    EXPECT_EQ(song.msgBox.shown[0].icon, Icon::Exclamation);
    EXPECT_EQ(song.msgBox.shown[0].title, "Sonnel Karaoke Player");
}

TEST(LeggiRighe, AFirstEventAtZeroComesTwoSecondsBeforeTheSecond) {
    const std::vector<std::pair<std::string, std::string>> cases{
        {"00000\r\n00050\r\n00060", "30 0 ;50 0 ;60 0 ;"},
        {"00000\r\n00050", "0 0 ;50 0 ;"},
        {"00000\r\n00020\r\n00060", "0 0 ;20 0 ;60 0 ;"},
        {"00000\r\n00021\r\n00060", "1 0 ;21 0 ;60 0 ;"},
        {"00001\r\n00050\r\n00060", "1 0 ;50 0 ;60 0 ;"}};
    for (const auto& [lines, events] : cases) {
        EXPECT_EQ(Events(Song(kMagic + lines).timeline), events);
    }
}

TEST(LeggiRighe, Information) {
    const std::string header =
        "*TIfirst\r\n*AUA&B &&\r\n*BY C\r\n*VESPConv 4\r\n00100 1x\r\n*ALalbum\r\n"
        "*TIRock & Roll \r\n";
    const InformazioniBrano info = Song(kMagic + header + "*DA01/02/98").info;
    EXPECT_EQ(info.Titolo + info.Autore + info.KaraokeBy, "Rock && Roll A&&B &&&& C");
    EXPECT_EQ(info.Versione + info.Data, "SPConv 401/02/98");
    EXPECT_EQ(Song(kMagic + header).info.Versione, "") << "without a date";
}

TEST(LeggiRighe, OnlyTheFirstLineTellsASong) {
    EXPECT_EQ(Song("Cantabelle1.0 by someone\rx\r").outcome, EsitoLettura::Completa);
    for (const std::string line : {"", "\r\nCantabelle1.0\r\n", "cantabelle1.0", "Cantabelle1."}) {
        const Song song(line + "\r\n*TIx\r\n00100 1x\r\n");
        EXPECT_EQ(song.outcome, EsitoLettura::NonCantabelle) << line;
        EXPECT_EQ(song.msgBox.shown.at(0).text, "That's not a Cantabelle1.0 file!");
        EXPECT_EQ(song.msgBox.shown[0].icon, Icon::Critical);
        EXPECT_EQ(song.timeline.NumEventi(), 0);
    }
}

TEST(LeggiRighe, WhatWasReadBeforeAFailureStays) {
    const Song half("Cantabelle1.0\r\n00000 1a\r\n00050 1b\r\n00060 1c\r\n00070 1half", false);
    EXPECT_EQ(half.outcome, EsitoLettura::Incompleta);
    EXPECT_EQ(Events(half.timeline), "0 1 a;50 1 b;60 1 c;");

    std::string full(kMagic);
    for (int i = 0; i < 32'750; ++i) {
        full += "00100 1\r\n";
    }
    EXPECT_EQ(Song(full).outcome, EsitoLettura::Completa);
    const Song tooLong(full + "00100 1last");
    EXPECT_EQ(tooLong.outcome, EsitoLettura::Incompleta);
    EXPECT_EQ(tooLong.timeline.NumEventi(), 32'750);
}

TEST(LeggiKaraoke, FindsTheFileOrTellsWhyItFails) {
    const TempDirectory directory;
    const std::string base = (directory / "song").string();
    ASSERT_EQ(mkfifo((directory / "pipe").c_str(), 0600), 0);
    const auto failure = [&](const std::optional<std::filesystem::path>& file) {
        Song song("Cantabelle1.0\r\n*TIold\r\n00100 1old\r\n");
        song.timeline.UltimoEvento = 1;
        EXPECT_FALSE(
            LeggiKaraoke({base, file, std::nullopt}, song.timeline, song.info, song.msgBox));
        EXPECT_EQ(song.timeline.NumEventi() + song.timeline.UltimoEvento, 0);
        EXPECT_EQ(song.info.Titolo, "");
        const Message shown = song.msgBox.shown.at(0);
        const bool plain = shown.text.starts_with("Error ");
        EXPECT_EQ(shown.icon, plain ? Icon::None : Icon::Critical);
        EXPECT_EQ(shown.title, plain ? "Sonnel Player 98" : "Sonnel Karaoke Player");
        return shown.text;
    };
    EXPECT_EQ(failure(std::nullopt),
              "Can't find or open the Karaoke file (" + base + ".LYK) for this song!!!");
    EXPECT_EQ(failure(directory / "pipe"), "Error opening " + base + ".LYK!");
    // Opens like any regular file, but its first page cannot be read.
    EXPECT_EQ(failure("/proc/self/mem"), "Error reading " + base + ".LYK!");

    directory.Write("Song.Lyk",
                    "\xEF\xBB\xBF"
                    "Cantabelle1.0\r\n*TIpi\u00F9");
    Song song("");
    EXPECT_TRUE(LeggiKaraoke(TrovaFileBrano(base), song.timeline, song.info, song.msgBox));
    EXPECT_EQ(song.info.Titolo, "pi\u00F9");
}

/// Each page is sung to its end, each of its syllables with a note of the melody.
TEST(DemoSongs, AreReadAsSongsWhoseWordsFollowTheirNotes) {
    for (const auto& score : DemoScores()) {
        SCOPED_TRACE(score);
        const DemoSong demo(score);
        const Song song(songs::WriteLyk(demo.score, demo.song));
        EXPECT_EQ(song.outcome, EsitoLettura::Completa);
        EXPECT_GT(song.timeline.NumEventi(), 80);
        const Result<SmfFile> midi = ReadSmf(demo.midi);
        ASSERT_TRUE(midi && !midi->damaged);
        const TempoMap tempos(*midi);
        auto note = midi->tracks.at(1).begin();
        std::size_t count = 0;
        std::size_t length = 0;
        for (std::int16_t i = 1; i <= song.timeline.NumEventi(); ++i) {
            const Evento& event = song.timeline.Eventi(i);
            if (event.Tipo == TipoEvento::Pagina) {
                EXPECT_EQ(count, length) << "a page is left unsung at " << event.Tempo;
                length = CodePoints(event.Testo);
                count = 0;
                continue;
            }
            count = std::stoul(event.Testo);
            note = std::find_if(note, midi->tracks[1].end(), [&](const SmfEvent& candidate) {
                return (candidate.status & 0xF0) == 0x90 &&
                       tempos.Milliseconds(candidate.tick) >= 100 * event.Tempo - 51;
            });
            ASSERT_TRUE(note != midi->tracks[1].end()) << event.Tempo;
            EXPECT_LE(tempos.Milliseconds((note++)->tick), 100 * event.Tempo + 51);
        }
        EXPECT_EQ(count, length);
    }
}

}  // namespace
}  // namespace sonnel::test
