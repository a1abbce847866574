#include "fakes/ScriptedMsgBox.h"
#include "fakes/TempDirectory.h"
#include "song/LeggiKaraoke.h"

#include <algorithm>
#include <initializer_list>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace sonnel::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr std::string_view TooManyLines =
    "This Karaoke contains some pages with more than 4 text lines!\r\n\r\nThe song words may "
    "result incomplete: please edit the LYK file to correct this problem.";

/// A song that is written to a file and read from there. What the reader did is told in lines:
/// "150 page Hello/world" for an event, "info off", "functions" and "message ..." for the rest.
class SongTest : public ::testing::Test {
  protected:
    static constexpr std::string_view Magic = "Cantabelle1.0\r\n";

    /// Writes a song of these lines after the first one, and reads it.
    bool Lyk(std::initializer_list<std::string_view> lines) {
        std::string content(Magic);
        for (const std::string_view line : lines) {
            content.append(line).append("\r\n");
        }
        return File(content);
    }
    bool File(std::string_view content, std::string_view name = "song.lyk") {
        directory.Write(name, content);
        return Read();
    }
    bool Read() {
        happened.clear();
        msgBox.shown.clear();
        return LeggiKaraoke(BasePath(), timeline, info, msgBox,
                            {[this] { happened.emplace_back("info off"); },
                             [this] {
                                 functionsAfterMessages = msgBox.shown.size();
                                 happened.emplace_back("functions");
                             }});
    }
    std::string BasePath() const { return (directory / "song").string(); }

    std::vector<std::string> Events() const {
        static const std::vector<std::string> kinds{"marker", "page", "colour"};
        std::vector<std::string> events;
        for (std::int16_t i = 1; i <= timeline.NumEventi(); ++i) {
            const Evento& event = timeline.Eventi(i);
            std::string line = std::to_string(event.Tempo) + " ";
            line += kinds.at(static_cast<std::size_t>(event.Tipo)) + " ";
            for (std::size_t at = 0; at < event.Testo.size(); ++at) {
                const bool lineBreak = event.Testo.substr(at, 2) == "\r\n";
                line += lineBreak ? '/' : event.Testo[at];
                at += lineBreak ? 1 : 0;
            }
            events.push_back(line);
        }
        return events;
    }
    /// The message boxes as text | icon | title.
    std::vector<std::tuple<std::string, Icon, std::string>> Messages() const {
        std::vector<std::tuple<std::string, Icon, std::string>> messages;
        for (const Message& message : msgBox.shown) {
            EXPECT_EQ(message.buttons, Buttons::Ok);
            messages.emplace_back(message.text, message.icon, message.title);
        }
        return messages;
    }
    auto Critical(const std::string& text) const {
        return ElementsAre(std::tuple(text, Icon::Critical, "Sonnel Karaoke Player"));
    }
    auto Failure(const std::string& verb) const {
        return ElementsAre(std::tuple("Error " + verb + " " + BasePath() + ".LYK!", Icon::None,
                                      "Sonnel Player 98"));
    }

    TempDirectory directory;
    Timeline timeline;
    InformazioniBrano info;
    ScriptedMsgBox msgBox;
    std::vector<std::string> happened;
    std::size_t functionsAfterMessages = 0;
};

TEST_F(SongTest, BodyLines) {
    struct Case {
        std::string line;
        std::vector<std::string> events;
    };
    const std::vector<Case> cases{
        {"00150 1Hello$Eworld$E$E", {"150 page Hello/world"}},
        {"00200 2 12", {"200 colour  12"}},
        {"0020002007", {"200 colour 007"}},
        {"00000 0verse *", {"0 marker verse *"}},
        {"00300 5xyz", {}},
        {"00300-1xyz", {}},
        {"00300991xyz", {}},
        {"abcde 1Page", {"0 page Page"}},
        {"   75 1Page", {"75 page Page"}},
        {"9999901Page", {"99999 page Page"}},
        {"-0005 1Page", {"-5 page Page"}},
        {"12x45 1Page", {"12 page Page"}},
        {"001501!Page", {"150 page Page"}},
        {"00150 1", {"150 page "}},
        {"00150 1$E$E$E$E$E", {"150 page "}},
        {"00150 1a$e$$E$", {"150 page a$e$/$"}},
        {"00150 1one\ntwo", {"150 page one\ntwo"}},
        {"00150", {"150 marker "}},
        {"7", {"7 marker "}},
        {"", {}},
        {"; 00150 1Page", {}},
        {"*XX00150 1Page", {}},
        {"*", {}},
        {" *TI", {"0 marker "}},
    };
    for (const Case& c : cases) {
        EXPECT_TRUE(Lyk({c.line})) << c.line;
        EXPECT_EQ(Events(), c.events) << c.line;
        EXPECT_THAT(msgBox.shown, IsEmpty()) << c.line;
    }
}

TEST_F(SongTest, ColumnsAreCharacters) {
    EXPECT_TRUE(Lyk({"\xE0\xE8\xEC\xF2\xF9 1perch\xE9 \x80", "\x80"}));
    EXPECT_THAT(Events(), ElementsAre("0 page perch\u00E9 \u20AC", "0 marker "));
    EXPECT_TRUE(
        File("\xEF\xBB\xBF"
             "Cantabelle1.0\r\n*TI\u0416 & \u0416\r\n"
             "\u0416\u0416\u0416\u0416\u0416 1\u0416\r\n"));
    EXPECT_THAT(Events(), ElementsAre("0 page \u0416"));
    EXPECT_EQ(info.Titolo, "\u0416 && \u0416");
}

TEST_F(SongTest, PagesKeepFourLinesAndWarnOnce) {
    EXPECT_TRUE(Lyk({"00100 1a$Eb$Ec$Ed$E", "00200 1a$Eb$Ec$Ed$Ee$Ef", "00300 1$E$E$E$Ee",
                     "00400 1a$E$E$E$Ee"}));
    EXPECT_THAT(Events(),
                ElementsAre("100 page a/b/c/d", "200 page a/b/c/d", "300 page ", "400 page a"));
    EXPECT_THAT(Messages(),
                ElementsAre(std::tuple(TooManyLines, Icon::Exclamation, "Sonnel Karaoke Player")));
    EXPECT_TRUE(Lyk({"00200 1a$Eb$Ec$Ed$Ee"}));
    EXPECT_EQ(msgBox.shown.size(), 1) << "warns again for the next file";
}

TEST_F(SongTest, LeadIn) {
    struct Case {
        std::vector<std::string> times;
        std::string first;
    };
    const std::vector<Case> cases{
        {{"00000", "00050", "00060"}, "30 marker "}, {{"00000", "00050"}, "0 marker "},
        {{"00000", "00020", "00060"}, "0 marker "},  {{"00000", "00021", "00060"}, "1 marker "},
        {{"00001", "00050", "00060"}, "1 marker "},
    };
    for (const Case& c : cases) {
        std::string content(Magic);
        for (const std::string& time : c.times) {
            content += time + " 0\r\n";
        }
        EXPECT_TRUE(File(content));
        EXPECT_EQ(Events().front(), c.first);
        EXPECT_EQ(Events().size(), c.times.size());
    }
}

TEST_F(SongTest, Information) {
    EXPECT_TRUE(Lyk({"*TIfirst", "*AUA&B &&", "*BY C", "*VESPConv 4", "00100 1x", "*DA01/02/98",
                     "*ALalbum", "*TIRock & Roll "}));
    EXPECT_EQ(info.Titolo, "Rock && Roll ");
    EXPECT_EQ(info.Autore, "A&&B &&&&");
    EXPECT_EQ(info.KaraokeBy, " C");
    EXPECT_EQ(info.Versione, "SPConv 4");
    EXPECT_EQ(info.Data, "01/02/98");

    EXPECT_TRUE(Lyk({"*VE4.1", "*DA"}));
    EXPECT_EQ(info.Versione + info.Data + info.Titolo + info.Autore + info.KaraokeBy, "");
    EXPECT_TRUE(Lyk({"*DA01/02/98"}));
    EXPECT_EQ(info.Data, "");
}

TEST_F(SongTest, FirstLine) {
    for (const std::string line : {"Cantabelle1.0", "Cantabelle1.0 by someone\rx\r",
                                   "\xEF\xBB\xBF"
                                   "Cantabelle1.0"}) {
        EXPECT_TRUE(File(line)) << line;
        EXPECT_THAT(happened, ElementsAre("info off", "functions"));
        EXPECT_THAT(msgBox.shown, IsEmpty());
    }
    for (const std::string line : {"", "\r\nCantabelle1.0\r\n", "cantabelle1.0", "Cantabelle1.",
                                   " Cantabelle1.0", "\nCantabelle1.0"}) {
        EXPECT_FALSE(File(line + "\r\n*TIx\r\n00100 1x\r\n")) << line;
        EXPECT_THAT(Messages(), Critical("That's not a Cantabelle1.0 file!")) << line;
        EXPECT_THAT(Events(), IsEmpty());
        EXPECT_EQ(info.Titolo, "");
    }
    EXPECT_FALSE(File(""));
    EXPECT_THAT(Messages(), Critical("That's not a Cantabelle1.0 file!"));
}

TEST_F(SongTest, LoneCarriageReturnsEndLines) {
    EXPECT_TRUE(File("Cantabelle1.0\r*TIx\r\r00100 1a\r00200 1b"));
    EXPECT_EQ(info.Titolo, "x");
    EXPECT_THAT(Events(), ElementsAre("100 page a", "200 page b"));
}

TEST_F(SongTest, NoFile) {
    ASSERT_TRUE(Lyk({"*TIold", "00100 1old"}));
    timeline.UltimoEvento = 1;
    std::filesystem::remove(directory / "song.lyk");
    EXPECT_FALSE(Read());
    EXPECT_THAT(Messages(), Critical("Can't find or open the Karaoke file (" + BasePath() +
                                     ".LYK) for this song!!!"));
    EXPECT_THAT(happened, ElementsAre("info off", "functions"));
    EXPECT_EQ(functionsAfterMessages, 1U);
    EXPECT_EQ(timeline.NumEventi() + timeline.UltimoEvento, 0);
    EXPECT_EQ(info.Titolo, "");
}

TEST_F(SongTest, CannotBeOpened) {
    for (const char* name : {"song.lyk", "song.LYK"}) {
        std::filesystem::create_directory(directory / name);
        EXPECT_FALSE(Read());
        EXPECT_THAT(Messages(), Failure("opening"));
        EXPECT_THAT(happened, ElementsAre("info off", "functions"));
        std::filesystem::remove(directory / name);
    }
    ASSERT_EQ(mkfifo((directory / "song.lyk").c_str(), 0600), 0);
    EXPECT_FALSE(Read());
    EXPECT_THAT(Messages(), Failure("opening"));
}

TEST_F(SongTest, CannotBeRead) {
    // Opens like any regular file, but its first page cannot be read.
    std::filesystem::create_symlink("/proc/self/mem", directory / "song.lyk");
    EXPECT_FALSE(Read());
    EXPECT_THAT(Messages(), Failure("reading"));
    EXPECT_THAT(happened, ElementsAre("info off", "functions"));
}

TEST_F(SongTest, WhatWasReadBeforeAFailureStays) {
    EXPECT_EQ(LeggiRighe("Cantabelle1.0\r\n00000 1a\r\n00050 1b\r\n00060 1c\r\n00070 1half", false,
                         timeline, info, msgBox),
              EsitoLettura::Incompleta);
    EXPECT_THAT(Events(), ElementsAre("0 page a", "50 page b", "60 page c"));
    timeline.Azzera();
    EXPECT_EQ(LeggiRighe("Canta", false, timeline, info, msgBox), EsitoLettura::Incompleta);
    EXPECT_THAT(msgBox.shown, IsEmpty());
}

TEST_F(SongTest, HoldsSoManyEventsAndNoMore) {
    std::string content(Magic);
    for (int i = 0; i < 32'750; ++i) {
        content += "00100 1\r\n";
    }
    EXPECT_TRUE(File(content));
    EXPECT_EQ(timeline.NumEventi(), 32'750);
    EXPECT_FALSE(File(content + "00100 1last"));
    EXPECT_THAT(Messages(), Failure("reading"));
    EXPECT_THAT(happened, ElementsAre("info off", "functions"));
    EXPECT_EQ(timeline.NumEventi(), 32'750);
}

TEST_F(SongTest, AnyLetterCase) {
    for (const char* name : {"song.lyk", "SONG.LYK", "Song.Lyk"}) {
        EXPECT_TRUE(File("Cantabelle1.0\r\n*TI" + std::string(name), name)) << name;
        EXPECT_EQ(info.Titolo, name);
        std::filesystem::remove(directory / name);
    }
}

TEST(Timeline, GrowsInStepsAndNeverShrinks) {
    Timeline timeline;
    EXPECT_EQ(timeline.MaxEventi(), 100);
    const auto fill = [&](std::int16_t upTo) {
        while (timeline.NumEventi() < upTo) {
            const auto next = timeline.NumEventi() + 1;
            ASSERT_TRUE(timeline.InserisciEvento(next, TipoEvento::Colore, std::to_string(next)));
        }
    };
    for (const auto& [events, room] : std::vector<std::pair<std::int16_t, std::int16_t>>{
             {100, 100}, {101, 150}, {150, 150}, {151, 200}, {32'750, 32'750}}) {
        fill(events);
        EXPECT_EQ(timeline.MaxEventi(), room) << events;
        EXPECT_EQ(timeline.Eventi(100).Testo, "100");
    }
    EXPECT_FALSE(timeline.InserisciEvento(1, TipoEvento::Pagina, ""));
    EXPECT_EQ(timeline.Eventi(32'750).Tempo, 32'750);
    timeline.UltimoEvento = 7;
    timeline.Azzera();
    EXPECT_EQ(timeline.NumEventi() + timeline.UltimoEvento, 0);
    EXPECT_EQ(timeline.MaxEventi(), 32'750);
}

}  // namespace
}  // namespace sonnel::test
