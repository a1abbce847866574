#include "tool/ToolTest.h"

#include <string>
#include <tuple>
#include <vector>

namespace sonnel::test {
namespace {

TEST_F(ToolTest, AConvertedSongHasThePagesAndTheTimesOfItsOriginal) {
    const json all = Json("convert --output . '" SONNEL_KARS "'/*.kar");
    ASSERT_EQ(all.size(), 5U);
    for (const json& made : all) {
        const std::string lyk = made["lyk"];
        const std::string mid = made["mid"];
        EXPECT_EQ(Content(folder / mid), Content(made["file"].get<std::string>()));
        const json converted = Json("show '" + lyk + "'");
        EXPECT_EQ(converted["date"], "02/01/70") << "the date follows SOURCE_DATE_EPOCH";
        const json& ours = converted["events"];
        const json original = Json("show '" SONNEL_SONGS "/" + lyk + "'")["events"];
        ASSERT_EQ(ours.size(), original.size()) << lyk;
        for (std::size_t i = 0; i < ours.size(); ++i) {
            EXPECT_EQ(ours[i]["kind"], original[i]["kind"]) << lyk << ours[i];
            EXPECT_EQ(ours[i]["text"], original[i]["text"]) << lyk;
            EXPECT_NEAR(ours[i]["time"].get<int>(), original[i]["time"].get<int>(), 1) << lyk;
        }
    }
}

TEST_F(ToolTest, ConvertWritesWhatItNamesAndKeepsWhatIsThere) {
    folder.Write("no.kar", SmfBuilder().Tempo(0, 500000).Note(0, 96, 60).Bytes());
    folder.Write("bad.kar", "no MIDI");
    for (const char* directory : {"half.mid", "out", "sub"}) {
        fs::create_directory(folder / directory);  // one where the music should go
    }
    for (const char* name : {"a.kar", "b.MID", "half.kar", "kept.kar", "a.mid.txt", "sub/a.kar"}) {
        folder.Write(name, Kar());
    }
    folder.Write("KEPT.lyk", "mine");
    auto names = folder.Names();
    const json all =
        Json("convert a.kar b.MID no.kar bad.kar half.kar kept.kar ./a.kar a.mid.txt", 1);
    using Row = std::tuple<json, json, json>;
    const std::vector<Row> wanted{
        {true, "a.lyk", "a.mid"}, {true, "b.lyk", "b.MID"}, {false, "no.lyk", ""}, {false, "", ""},
        {false, "", ""},          {false, "", ""},          {false, "", ""},       {false, "", ""}};
    ASSERT_EQ(all.size(), wanted.size());
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        EXPECT_EQ(Row(all[i]["ok"], all[i]["lyk"], all[i]["mid"]), wanted[i]) << all[i];
        EXPECT_EQ(all[i]["ok"], all[i]["error"].get<std::string>().empty()) << all[i];
    }
    names.insert({"a.lyk", "a.mid", "b.lyk", "no.lyk"});
    EXPECT_EQ(folder.Names(), names);
    EXPECT_EQ(Content(folder / "KEPT.lyk"), "mine");

    EXPECT_EQ(Json("convert kept.kar --force")[0]["lyk"], "KEPT.lyk") << "no twin beside it";
    const json moved = Json("convert a.kar sub/a.kar b.MID --output out", 1);
    EXPECT_EQ(moved[1]["ok"], false) << "two files of one base name";
    EXPECT_EQ(moved[2]["mid"], "out/b.mid");
    EXPECT_EQ(Content(folder / "out/b.mid"), Kar());
}

TEST_F(ToolTest, ConvertTellsOfASongThatThePlayerRefusesOrThatMayMissWords) {
    SmfBuilder song = SmfBuilder().Tempo(0, 500000).Text(0, 1, "@K");
    for (int i = 0; i < 16375; ++i) {
        song.Text(960, 1, "\\a");
    }
    folder.Write("all.kar", song.Bytes());
    folder.Write("more.kar", song.Text(960, 1, "b").Bytes());
    EXPECT_EQ(Json("convert all.kar more.kar")[1]["ok"], true);
    EXPECT_EQ(err,
              "sonnel-tool: more.kar: the player reads at most 32750 events of a song and "
              "refuses this one, which has 32751: split it.\n");

    folder.Write("cut.kar", song.Truncated(4));
    EXPECT_EQ(Json("convert cut.kar")[0]["ok"], true);
    EXPECT_THAT(err, testing::StartsWith(
                         "sonnel-tool: cut.kar: the file is damaged; words may be missing.\n"));
}

}  // namespace
}  // namespace sonnel::test
