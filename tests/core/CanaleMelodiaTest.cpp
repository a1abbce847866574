#include "fakes/DemoSong.h"
#include "fakes/ScriptedMsgBox.h"
#include "fakes/SmfBuilder.h"
#include "generator/Lyk.h"
#include "song/CanaleMelodia.h"
#include "song/LeggiKaraoke.h"

#include <gmock/gmock.h>

namespace sonnel::test {
namespace {

/// Channel, lowest and highest note of the tune, or "none".
std::string Tune(const std::string& midi, const std::string& lyk) {
    Timeline timeline;
    InformazioniBrano info;
    ScriptedMsgBox msgBox;
    (void)LeggiRighe(lyk, true, timeline, info, msgBox);
    const auto found = TrovaMelodia(*ReadSmf(midi), timeline);
    return found ? std::to_string(found->canale) + " " + std::to_string(found->piuBassa) + "-" +
                       std::to_string(found->piuAlta)
                 : "none";
}

TEST(TrovaMelodia, FindsTheTuneOfEveryDemoSong) {
    for (const auto& path : DemoScores()) {
        const DemoSong demo(path);
        // The arranger plays the tune on the first channel.
        EXPECT_THAT(Tune(demo.midi, songs::WriteLyk(demo.score, demo.song)),
                    testing::StartsWith("0 "))
            << path;
    }
}

TEST(TrovaMelodia, NamesNoneWhereNoChannelFits) {
    const auto song = [](int everyMs, int notesAtOnce, int offsetMs, int words) {
        SmfBuilder midi(0, 500);  // a tick a millisecond
        std::string lyk = "Cantabelle1.0\r\n0000001words\r\n";
        for (int word = 0; word < words; ++word) {
            const int tenths = 10 + word * 5;
            lyk += (tenths < 100 ? "000" : "00") + std::to_string(tenths) + "02" +
                   std::to_string(word + 1) + "\r\n";
        }
        for (int ms = 1000 + offsetMs; ms < 1000 + words * 500; ms += everyMs) {
            for (int note = 0; note < notesAtOnce; ++note) {
                midi.Note(static_cast<std::uint32_t>(ms), 90, 60 + note + ms / 500 % 5, 3);
                midi.Note(static_cast<std::uint32_t>(ms), 90, 40, 9);
            }
        }
        return Tune(midi.Bytes(), lyk);
    };
    EXPECT_EQ(song(500, 1, 0, 20), "3 60-64");
    EXPECT_EQ(song(500, 1, 60, 20), "3 60-64");
    EXPECT_EQ(song(125, 1, 0, 20), "none") << "many notes a word";
    EXPECT_EQ(song(1000, 1, 0, 20), "none") << "few words have one";
    EXPECT_EQ(song(500, 3, 0, 20), "none") << "chords";
    EXPECT_EQ(song(500, 1, 200, 20), "none") << "beside the words";
    EXPECT_EQ(song(500, 1, 0, 7), "none") << "too few to tell";
}

}  // namespace
}  // namespace sonnel::test
