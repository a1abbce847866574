#include "fakes/DemoSong.h"
#include "generator/Arranger.h"
#include "generator/Lyk.h"
#include "generator/ScoreReader.h"
#include "generator/Smf.h"
#include "platform/Files.h"
#include "platform/LineReader.h"
#include "platform/Numbers.h"
#include "platform/Text.h"

#include <algorithm>
#include <filesystem>
#include <ostream>
#include <set>

#include <gmock/gmock.h>

namespace sonnel::songs {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

// A small score whose parts the cases below spoil one by one.
constexpr std::string_view SmallScore = R"(title Small
author Traditional
time 3/4
[tracks]
flute tune program 74
piano chords
[style plain]
piano x.-
[section intro]
chords C
[section verse]
pickup 4
chords C | F G7 . | C/E |
tune c4 | d4 e f | g4. a8 b4 | c'2 r4 |
[words 1]
One two-_
three four five six seven
[play]
intro style=plain
verse style=plain words=1
)";

struct BrokenScore {
    std::string_view name;
    std::string_view from;
    std::string_view to;
    std::string_view message;
};

void PrintTo(const BrokenScore& broken, std::ostream* out) {
    *out << broken.name;
}

class BrokenScoreTest : public testing::TestWithParam<BrokenScore> {};

TEST_P(BrokenScoreTest, NamesTheLineToMend) {
    std::string text(SmallScore);
    const std::size_t place = text.find(GetParam().from);
    ASSERT_NE(place, std::string::npos);
    text.replace(place, GetParam().from.size(), GetParam().to);
    try {
        (void)ReadScore(text);
        FAIL() << "the score was taken";
    } catch (const ScoreError& error) {
        EXPECT_THAT(error.what(), StartsWith(GetParam().message));
    }
}

INSTANTIATE_TEST_SUITE_P(
    Songs, BrokenScoreTest,
    testing::Values(
        BrokenScore{"BarTooLong", "d4 e f |", "d4 e f8. g |",
                    "line 14: bar 1 of the tune lasts 3.5 quarter notes instead of 3"},
        BrokenScore{"BarTooShort", "d4 e f |", "d4 e |", "line 14: bar 1 of the tune lasts 2 "},
        BrokenScore{"LastBar", "c'2 r4 |", "c'2", "line 14: bar 3 of the tune lasts 2 "},
        BrokenScore{"Pickup", "pickup 4", "pickup 2", "line 14: bar 0 of the tune lasts 1 "},
        BrokenScore{"BarsMissing", "c'2 r4 |", "", "line 14: the tune has 2 bars, the chords 3"},
        BrokenScore{"Note", "d4 e f |", "d4 h f |", "line 14: \"h\" is not a note"},
        BrokenScore{"Duration", "d4 e f |", "d5 e f |", "line 14: \"5\" is not a duration"},
        BrokenScore{"Tie", "d4 e f |", "d4~ e f |", "line 14: a tie joins"},
        BrokenScore{"Chord", "F G7", "F H7", "line 13: \"H7\" is not a chord"},
        BrokenScore{"ChordKind", "F G7", "F G13", "line 13: \"G13\" is not a chord"},
        BrokenScore{"ChordBass", "C/E", "C/", "line 13: \"C/\" is not a chord"},
        BrokenScore{"ChordShare", "F G7 .", "F G7 . . . . .", "line 13: a bar of chords"},
        BrokenScore{"Pattern", "x.-", "x.?", "line 8: \"x.?\" is not a bar of piano"},
        BrokenScore{"PatternTrack", "piano x", "horn x", "line 8: no track or drum \"horn\""},
        BrokenScore{"PageLines", "two-_\n", "two-_ ",
                    "line 16: a page has two to four lines, not 1"},
        BrokenScore{"TooFewWords", " seven", "",
                    "line 15: these words have 7 syllables, the tune of verse has 8 notes"},
        BrokenScore{"TooManyWords", "seven", "se-ven", "line 15: these words have 9 syllables"},
        BrokenScore{"NoRoom", "intro style=plain\n", "",
                    "line 19: there is no room for the pickup"},
        BrokenScore{"Option", "verse style", "verse stile", "line 20: \"stile\""},
        BrokenScore{"NoStyle", "verse style=plain", "verse style=odd",
                    "line 20: there is no style"},
        BrokenScore{"Time", "3/4", "3/5", "line 3: \"3/5\" is not a time signature"},
        BrokenScore{"Header", "author", "autor", "line 2: \"autor\" is unknown"},
        BrokenScore{"Number", "program 74", "program 200", "line 5: \"200\" is not a number"}),
    [](const auto& test) { return std::string(test.param.name); });

TEST(ScoreTest, TheUnspoiltScoreIsTaken) {
    const Arrangement song = Arrange(ReadScore(SmallScore));
    ASSERT_EQ(song.pages.size(), 1U);
    EXPECT_EQ(song.pages[0][0][0].tick, 2 * TicksPerQuarter) << "the pickup is in the bar before";
    EXPECT_EQ(song.pages[0][1][0].tick, 5 * TicksPerQuarter) << "the melisma took a note";
}

// One event of a MIDI file as the tests look at it.
struct Event {
    int tick = 0;
    int status = 0;
    int type = 0;      // of a meta event
    std::string data;  // of a meta event; else the data bytes
};

using Events = std::vector<Event>;

/// Walks the bytes of a MIDI file that must be without a fault.
class Walker {
  public:
    explicit Walker(std::string_view bytes) : rest_(bytes) {}

    /// The tracks, or none when the file is not sound.
    std::vector<Events> Tracks() {
        std::vector<Events> tracks;
        failed_ = Take(10) != std::string_view("MThd\0\0\0\6\0\1", 10);
        const int count = Number(2);
        failed_ = failed_ || Number(2) != TicksPerQuarter;
        while (!rest_.empty() && !failed_) {
            failed_ = Take(4) != "MTrk";
            const int size = Number(4);
            Walker track(Take(static_cast<std::size_t>(size)));
            tracks.push_back(track.TakeEvents());
            failed_ = failed_ || track.failed_;
        }
        return failed_ || static_cast<int>(tracks.size()) != count ? std::vector<Events>() : tracks;
    }

  private:
    std::string_view Take(std::size_t size) {
        failed_ = failed_ || size > rest_.size();
        const std::string_view taken = rest_.substr(0, size);
        rest_.remove_prefix(taken.size());
        return taken;
    }
    int Number(std::size_t size) {
        int value = 0;
        for (const char c : Take(size)) {
            value = value << 8 | static_cast<unsigned char>(c);
        }
        return value;
    }
    int Variable() {
        int value = 0;
        int byte = 0x80;
        for (int i = 0; i < 4 && byte >= 0x80; ++i) {
            byte = Number(1);
            value = value << 7 | (byte & 0x7F);
        }
        failed_ = failed_ || byte >= 0x80;
        return value;
    }
    Events TakeEvents() {
        Events events;
        int now = 0;
        while (!rest_.empty() && !failed_) {
            now += Variable();
            Event event{now, Number(1), 0, ""};
            if (event.status == 0xFF || event.status == 0xF0) {
                event.type = event.status == 0xFF ? Number(1) : 0;
                event.data = Take(static_cast<std::size_t>(Variable()));
            } else {
                failed_ = failed_ || event.status < 0x80;
                event.data = Take((event.status & 0xE0) == 0xC0 ? 1 : 2);
                for (const char c : event.data) {
                    failed_ = failed_ || static_cast<unsigned char>(c) > 0x7F;
                }
            }
            events.push_back(event);
        }
        return events;
    }

    std::string_view rest_;
    bool failed_ = false;
};

/// Milliseconds of a tick by the tempo events of a file's first track.
double TimeOf(int tick, const Events& conductor) {
    double time = 0;
    double tempo = 500'000;
    int from = 0;
    for (const Event& event : conductor) {
        if (event.status == 0xFF && event.type == 0x51 && event.tick < tick) {
            time += (event.tick - from) * tempo / TicksPerQuarter / 1000;
            from = event.tick;
            tempo = 0;
            for (const char c : event.data) {
                tempo = tempo * 256 + static_cast<unsigned char>(c);
            }
        }
    }
    return time + (tick - from) * tempo / TicksPerQuarter / 1000;
}

struct LykEvent {
    int tenths = 0;
    int kind = 0;
    std::string text;
};

std::vector<LykEvent> Body(const std::string& lyk) {
    std::vector<LykEvent> body;
    LineReader lines(lyk);
    while (const auto line = lines.Next()) {
        if (line->starts_with('0')) {
            body.push_back({ReadInteger<int>(line->substr(0, 5)),
                            ReadInteger<int>(line->substr(5, 2)), std::string(line->substr(7))});
        }
    }
    return body;
}

class DemoSongTest : public testing::TestWithParam<std::filesystem::path> {
  protected:
    std::string text = *ReadFile(GetParam());
    Score score = ReadScore(text);
    Arrangement song = Arrange(score);
};

/// What a sequencer would stumble over in a track, or "".
std::string FaultIn(const Events& track) {
    std::set<std::pair<int, char>> sounding;
    for (const Event& event : track) {
        const std::string at = " at " + std::to_string(event.tick);
        const std::pair<int, char> key{event.status & 0x0F, event.data.c_str()[0]};
        if ((event.status == 0xFF && event.type == 0x2F) != (&event == &track.back())) {
            return "end of track" + at;
        }
        if ((event.status & 0xF0) == 0x90 && !sounding.insert(key).second) {
            return "struck while sounding" + at;
        }
        if ((event.status & 0xF0) == 0x80 && sounding.erase(key) == 0) {
            return "released without sounding" + at;
        }
    }
    return sounding.empty() ? "" : "hanging notes";
}

TEST_P(DemoSongTest, MidiIsSound) {
    const std::string midi = WriteMidi(score, song);
    const std::vector<Events> tracks = Walker(midi).Tracks();
    ASSERT_EQ(tracks.size(), score.tracks.size() + 1);
    for (const Events& track : tracks) {
        EXPECT_EQ(FaultIn(track), "");
        EXPECT_EQ(track.front().type, 0x03);
    }
    EXPECT_EQ(midi, WriteMidi(score, Arrange(ReadScore(text)))) << "not twice the same";
}

/// Times of the notes of a file's tune, in milliseconds.
std::vector<double> Onsets(const std::vector<Events>& tracks) {
    std::vector<double> onsets;
    for (const Event& event : tracks.at(1)) {
        if ((event.status & 0xF0) == 0x90) {
            onsets.push_back(TimeOf(event.tick, tracks[0]));
        }
    }
    return onsets;
}

TEST_P(DemoSongTest, EverySyllableIsColouredWithItsNote) {
    const std::vector<double> onsets = Onsets(Walker(WriteMidi(score, song)).Tracks());
    auto onset = onsets.begin();
    int syllables = 0;
    for (const LykEvent& event : Body(WriteLyk(score, song))) {
        if (event.kind == 2) {
            const double time = event.tenths * 100;
            onset = std::find_if(onset, onsets.end(),
                                 [time](double candidate) { return candidate >= time - 50.001; });
            ASSERT_NE(onset, onsets.end()) << event.tenths;
            ASSERT_LE(*onset++, time + 50.001) << event.tenths;
            ++syllables;
        }
    }
    EXPECT_GT(syllables, 80);
}

std::size_t LinesOf(const std::string& page) {
    std::size_t lines = 1;
    for (std::size_t at = 0; (at = page.find("$E", at)) != std::string::npos; ++at) {
        ++lines;
    }
    return lines;
}

/// What the singers would see go wrong between an event and the next, or "". `count` is how much of
/// the page is sung after the first of them, `length` how much there is.
std::string FaultBetween(const LykEvent& event, const LykEvent& next, int count, int length) {
    if (next.tenths < event.tenths || next.tenths > 99999) {
        return "time";
    }
    if (next.kind == 2) {
        const int nextCount = ReadInteger<int>(next.text);
        return nextCount <= count || nextCount > length ? "count" : "";
    }
    const bool pageFits = next.text.empty() || (LinesOf(next.text) >= 2 && LinesOf(next.text) <= 4);
    return count != length ? "page left unsung" : !pageFits ? "lines" : "";
}

TEST_P(DemoSongTest, PagesAndCountsFit) {
    LykEvent last;
    int length = 0;
    int count = 0;
    for (const LykEvent& event : Body(WriteLyk(score, song))) {
        EXPECT_EQ(FaultBetween(last, event, count, length), "") << event.tenths;
        length = event.kind == 1 ? static_cast<int>(CodePoints(event.text)) : length;
        count = event.kind == 1 ? 0 : ReadInteger<int>(event.text);
        last = event;
    }
    EXPECT_EQ(count, length);
}

TEST_P(DemoSongTest, LastsAsLongAsASong) {
    EXPECT_GE(song.Milliseconds(song.endTick), 50'000);
    EXPECT_LE(song.Milliseconds(song.endTick), 120'000);
    EXPECT_GE(song.pages.front().front().front().tick, score.time.BarTicks());
    EXPECT_EQ(score.author, "Traditional");
}

// A converter of karaoke files finds the same words at the same ticks, three lines to a page.
TEST_P(DemoSongTest, KarHoldsTheWords) {
    const std::vector<Events> tracks = Walker(WriteKar(score, song)).Tracks();
    std::string words;
    int lastWord = 0;
    for (const Event& event : tracks[2]) {
        if (event.type == 0x01 && !event.data.starts_with('@')) {
            words += event.data;
            lastWord = event.tick;
        }
    }
    std::string expected;
    for (const LykEvent& event : Body(WriteLyk(score, song))) {
        expected += event.kind == 1 && !event.text.empty() ? "$E" + event.text : "";
    }
    for (std::size_t at = 0; (at = expected.find("$E", at)) != std::string::npos;) {
        expected.replace(at, 2, "/");
    }
    std::replace(words.begin(), words.end(), '\\', '/');
    EXPECT_EQ(FromWindows1252(words), expected);
    EXPECT_EQ(tracks[1][1].data, "@KMIDI KARAOKE FILE");
    for (const Event& event : tracks[0]) {
        EXPECT_TRUE(event.type != 0x51 || event.tick == 0 || event.tick > lastWord);
    }
}

INSTANTIATE_TEST_SUITE_P(Songs, DemoSongTest, testing::ValuesIn(test::DemoScores()),
                         test::TestName);

// A quarter note lasts half a second here, so a tenth is 96 ticks.
Arrangement TwoPages(int secondPage) {
    Arrangement song;
    song.tempos = {{0, 500'000}};
    song.pages = {{{{96 * 5, "Frè", true}, {96 * 8, "re", false}}, {{96 * 30, "Jacques", true}}},
                  {{{96 * secondPage, "Ding", true}, {96 * (secondPage + 2), "dong", true}}}};
    return song;
}

struct PageCase {
    int secondPage;
    std::string_view expected;
};

void PrintTo(const PageCase& page, std::ostream* out) {
    *out << page.secondPage;
}

class PageTest : public testing::TestWithParam<PageCase> {};

TEST_P(PageTest, ComesInTime) {
    const std::string first = "0000001Frère$EJacques\r\n00005023\r\n00008025\r\n000300214\r\n";
    EXPECT_THAT(WriteLyk(Score(), TwoPages(GetParam().secondPage)),
                HasSubstr(first + std::string(GetParam().expected)));
}

INSTANTIATE_TEST_SUITE_P(Songs, PageTest,
                         testing::Values(PageCase{31, "0003101Ding dong\r\n00031024\r\n"},
                                         PageCase{50, "0003101Ding dong\r\n00050024\r\n"},
                                         PageCase{51, "0003101Ding dong\r\n00051024\r\n"},
                                         PageCase{60, "0004001Ding dong\r\n00060024\r\n"},
                                         PageCase{130, "0011001Ding dong\r\n00130024\r\n"},
                                         PageCase{131,
                                                  "0005001\r\n0011101Ding dong\r\n00131024\r\n"}));

TEST(LykTest, ASongTooLongIsRefused) {
    EXPECT_NO_THROW((void)WriteLyk(Score(), TwoPages(99'997)));
    EXPECT_THROW((void)WriteLyk(Score(), TwoPages(99'998)), std::out_of_range);
}

TEST(IndexTest, ListsSongsInOrderAndEveryAlbumOnce) {
    EXPECT_EQ(WriteIndex({{"beta", "B", "Traditional", "Hits"},
                          {"Alpha", "A", "Traditional", "?"},
                          {"Gamma", "C", "", "Hits"}}),
              "[Songs]\r\nAlpha=A|Traditional|?\r\nbeta=B|Traditional|Hits\r\nGamma=C||Hits\r\n"
              "[Album]\r\n?=|\r\nHits=|\r\n");
}

/// The keys struck at a tick by any of the tracks but the tune.
std::multiset<int> StruckAt(const Arrangement& song, int tick) {
    std::multiset<int> keys;
    for (std::size_t track = 1; track < song.tracks.size(); ++track) {
        for (const MidiEvent& event : song.tracks[track].events) {
            if (event.rank == Rank::NoteOn && event.tick == tick) {
                keys.insert(event.bytes[1]);
            }
        }
    }
    return keys;
}

// What a band would hear: tempo by tempo, and a chord that changes under a held pattern.
TEST(ArrangerTest, SlowsDownAndFollowsTheChords) {
    const Arrangement song = Arrange(ReadScore(
        "title T\nauthor A\ntempo 120\n[tracks]\nflute tune\npad chords low 60\nbass bass\n"
        "[style s]\npad x---\nbass R--8\n[section a]\nchords C F/A\ntune c1\n"
        "[play]\na style=s\na style=s slow=60 shift=2\na style=s\n"));
    std::vector<int> tempos;
    for (const TempoChange& change : song.tempos) {
        tempos.push_back(change.microseconds);
    }
    EXPECT_THAT(tempos, ElementsAre(500000, 571429, 666667, 800000, 1000000, 500000));
    EXPECT_NEAR(song.Milliseconds(song.endTick), 2000 + 571.4 + 666.7 + 800 + 1000 + 2000, 1);
    EXPECT_THAT(StruckAt(song, 0), ElementsAre(36, 60, 64, 67));
    EXPECT_THAT(StruckAt(song, 960), ElementsAre(33, 60, 65, 69));
    EXPECT_THAT(StruckAt(song, 1440), ElementsAre(45));
    EXPECT_THAT(StruckAt(song, 1920), ElementsAre(38, 62, 66, 69));
}

}  // namespace

}  // namespace sonnel::songs
