#include "fakes/SmfBuilder.h"
#include "platform/midi/Sequence.h"
#include "platform/midi/SmfReader.h"
#include "platform/midi/TempoMap.h"

#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace sonnel::test {
namespace {

using namespace std::string_literals;

std::string Header(int format, int tracks, int division = 480) {
    return "MThd" + SmfBuilder::Big(6, 4) + SmfBuilder::Big(format, 2) +
           SmfBuilder::Big(tracks, 2) + SmfBuilder::Big(division, 2);
}

std::string Chunk(const std::string& name, const std::string& data, int claimedMore = 0) {
    return name + SmfBuilder::Big(static_cast<int>(data.size()) + claimedMore, 4) + data;
}

const std::string kEnd = "\0\xFF\x2F\0"s;
const std::string kNote = "\0\x90\x3C\x40"s;

/// A file of one track.
std::string One(const std::string& track, int claimedMore = 0) {
    return Header(0, 1) + Chunk("MTrk", track, claimedMore);
}

/// Each event as "tick:status", a track as "|".
std::string Outline(const SmfFile& file) {
    std::string text;
    for (const SmfTrack& track : file.tracks) {
        text += text.empty() ? "" : "|";
        for (const SmfEvent& event : track) {
            const int shown = event.status == kMeta ? event.metaType : event.status;
            text += " " + std::to_string(event.tick) + ":" + std::to_string(shown);
        }
    }
    return text + (file.damaged ? " damaged" : "");
}

TEST(SmfReader, ReadsWhatItCanAndReportsDamage) {
    const std::string track = Chunk("MTrk", kNote + kEnd);
    const std::string good = Header(0, 1) + track;
    const std::string cut = Header(1, 2) + Chunk("MTrk", kNote + kEnd, -2) + track;
    const std::string greedy = Header(1, 2) + Chunk("MTrk", kNote + kEnd, 12) + track;
    const std::string longHeader = "MThd" + SmfBuilder::Big(8, 4) + "\0\0\0\1\1\xE0\7\7"s;
    struct Case {
        const char* what;
        std::string bytes;
        std::string outline;
    };
    const std::vector<Case> cases = {
        {"unknown chunks", Header(0, 1) + Chunk("XFIH", "abc") + track, " 0:144 0:47"},
        {"a longer header", longHeader + track, " 0:144 0:47"},
        {"RIFF around it", "RIFF\x30\0\0\0RMIDdata\x24\0\0\0"s + good, " 0:144 0:47"},
        {"running status, one data byte", One("\0\xC0\5\x10\6"s + kEnd), " 0:192 16:192 16:47"},
        {"running status past a text", One(kNote + "\0\xFF\1\1x\x10\x3C\0"s + kEnd),
         " 0:144 0:1 16:144 16:47 damaged"},
        {"no end-of-track mark", One(kNote), " 0:144 damaged"},
        {"a message cut off", One(kNote + "\0\x90\x3C"s), " 0:144 damaged"},
        {"data without a status", One("\0\x3C\x40"s + kEnd), " damaged"},
        {"a status where data belong", One("\0\x90\x3C\xC0"s + kEnd), " 0:144 0:47 damaged"},
        {"a text longer than its track", One(kNote + "\0\xFF\1\5-"s), " 0:144 damaged"},
        {"a length that never ends", One(kNote + "\xFF\xFF\xFF\xFF\xFF"s), " 0:144 damaged"},
        {"a song position in a track", One("\0\xF2\1\2"s + kNote + kEnd), " 0:144 0:47 damaged"},
        {"a track length past the file", One(kNote + kEnd, 1000), " 0:144 0:47 damaged"},
        {"a track length over the next", greedy, " 0:144 0:47| 0:144 0:47 damaged"},
        {"a track length that is too small", cut, " 0:144| 0:144 0:47 damaged"},
        {"fewer tracks than announced", Header(1, 9) + track, " 0:144 0:47 damaged"},
        {"junk at the end", good + "junk", " 0:144 0:47 damaged"},
        {"a division of 0", Header(0, 1, 0) + track, " 0:144 0:47 damaged"},
    };
    for (const Case& c : cases) {
        const auto file = ReadSmf(c.bytes);
        ASSERT_TRUE(file) << c.what;
        EXPECT_EQ(Outline(*file), c.outline) << c.what;
    }
}

TEST(SmfReader, RefusesWhatItCannotRead) {
    const std::vector<std::pair<std::string, SmfError>> cases = {
        {"", SmfError::NotMidi},
        {std::string(5000, 'x'), SmfError::NotMidi},
        {Header(3, 1) + Chunk("MTrk", kEnd), SmfError::Format},
        {Header(1, 1), SmfError::NoTracks},
    };
    for (const auto& [bytes, error] : cases) {
        EXPECT_EQ(ReadSmf(bytes).error().number, static_cast<int>(error));
    }
}

TEST(Sequence, JoinsExclusivePacketsAndTakesEscapes) {
    SmfBuilder song(0, 500);  // a tick is a millisecond
    song.Exclusive(0, "whole\xF7").Exclusive(10, "sp").Exclusive(20, "l", '\xF7');
    song.Exclusive(30, "it\xF7", '\xF7').Exclusive(40, "open").Note(50, 10, 60);
    song.Exclusive(60, "\xF0"s + "escaped\xF7", '\xF7').Exclusive(70, "\xB1\x07\x50", '\xF7');
    song.Text(99, 0x2F, "");
    const Sequence sequence = MakeSequence(*ReadSmf(song.Bytes()), 1000);
    std::string exclusives;
    for (const SequenceEvent& event : sequence.events) {
        if (event.status == kSysEx) {
            const auto data = sequence.Exclusive(event);
            exclusives += std::to_string(event.frame) + std::string(data.begin(), data.end()) + " ";
        }
    }
    EXPECT_EQ(exclusives, "0whole 30split 40open 60escaped ");
    EXPECT_EQ(sequence.events.back().status, 0xB1);
    EXPECT_EQ(sequence.events.back().data2, 0x50);
    EXPECT_EQ(sequence.lengthMs, 70) << "a late end-of-track mark plays no part";
}

TEST(TempoMap, TurnsTicksIntoTime) {
    const int smpte25 = 0xE728;  // 25 frames of 40 ticks: a tick is a millisecond
    const int smpte29 = 0xE364;  // 30000/1001 frames of 100 ticks
    struct Case {
        SmfBuilder song;
        std::uint32_t tick;
        double ms;
    };
    std::vector<Case> cases = {
        {SmfBuilder(1, 480).Track().Tempo(960, 250000).Track().Tempo(480, 1000000), 1440, 1750},
        {SmfBuilder(1, 480).Tempo(480, 0), 960, 1000},
        {SmfBuilder(1, 480).Text(480, 0x51, "\x0F"), 960, 1000},
        {SmfBuilder(1, 480).Tempo(480, 9).Tempo(480, 1000000), 960, 1500},
        {SmfBuilder(1, smpte25).Tempo(0, 9), 1234, 1234},
        {SmfBuilder(1, smpte29), 2997, 999.999},
        {SmfBuilder(1, 1).Tempo(0, 0xFFFFFF), 0xFFFFFFF, 2147483647},
    };
    for (Case& c : cases) {
        c.song.Text(c.tick, 1, "end");
        const Sequence sequence = MakeSequence(*ReadSmf(c.song.Bytes()), 48000);
        EXPECT_EQ(sequence.lengthMs, std::lround(c.ms));
        EXPECT_EQ(sequence.endFrame, std::llround(c.ms * 48));
    }
}

}  // namespace
}  // namespace sonnel::test
