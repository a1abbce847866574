#include "tool/ToolTest.h"

#include <set>
#include <string>
#include <tuple>
#include <vector>

namespace sonnel::test {
namespace {

TEST_F(ToolTest, SongsAreShownAndTheirHeadersRewritten) {
    Lyk("a.lyk",
        "*TIRock & Roll\r\n*AUCaf\xE9\r\n00000 1Hello$Eworld\r\n00050 2 "
        "5\r\n00060 05\r\n");
    const json song = Json("show a.lyk");
    EXPECT_EQ(song["title"], "Rock && Roll");
    EXPECT_EQ(song["author"], "Café");
    EXPECT_EQ(song["events"], json::parse(R"([{"time":30,"kind":1,"text":"Hello\r\nworld"},
        {"time":50,"kind":2,"text":" 5"},{"time":60,"kind":0,"text":"5"}])"));
    folder.Write("b.lyk", "Other\r\n");
    EXPECT_EQ(Json("show b.lyk", 1)["messages"],
              json::parse(R"([{"text":"That's not a Cantabelle1.0 file!",
        "icon":"critical","title":"Sonnel Karaoke Player"}])"));
    EXPECT_EQ(Run("set-header a.lyk --title 'A b' --author '' --album 'Łódź'"), 0) << err;
    EXPECT_EQ(Json("header a.lyk b.lyk"),
              json::parse(
                  R"([{"file":"a.lyk","ok":true,"title":"A b","author":"","album":"Łódź"},
                  {"file":"b.lyk","ok":true,"title":"","author":"","album":"?"}])"));
}

TEST_F(ToolTest, AnIndexIsListedAndRebuilt) {
    const json none = json::parse(R"({"ok":false,"songs":[],"albums":[]})");
    EXPECT_EQ(Json("index nowhere --rebuild", 1), none);
    Lyk("b.lyk", "*TIBi\r\n*ALLive\r\n");
    Lyk("A.lyk", "*TIAh\r\n*AUMe\r\n");
    Lyk("a.lyk", "*TISame\r\n");
    EXPECT_EQ(Json("index .", 1), none);
    const json index = Json("index . --rebuild");
    EXPECT_EQ(index["songs"], json::parse(R"([{"file":"A","title":"Ah","author":"Me","album":"?"},
                  {"file":"b","title":"Bi","author":"","album":"Live"}])"));
    EXPECT_EQ(index["albums"].size(), 2U);
    EXPECT_THAT(err, HasSubstr("a.lyk")) << "what was skipped is named";
    EXPECT_EQ(Json("index ."), index);
}

TEST_F(ToolTest, MidiFilesAreMeasured) {
    SmfBuilder smf;
    smf.Tempo(0, 250000).Text(0, 5, "la").Note(480, 480, 60).Text(960, 16, "no text");
    folder.Write("a.mid", smf.Bytes());
    folder.Write("cut.mid", smf.Truncated(4));
    const json all = Json("midi a.mid cut.mid");
    EXPECT_EQ(all[0], json::parse(R"({"file":"a.mid","ok":true,"format":1,"tracks":1,
        "division":480,"events":6,"notes":1,"tempos":1,"texts":1,"lengthMs":500,"damaged":false,
        "error":""})"));
    EXPECT_EQ(all[1]["damaged"], true);
    Lyk("cut.lyk", "");
    for (const char* command : {"midi cut.mid", "check cut.lyk", "trace cut.lyk"}) {
        EXPECT_EQ(Run(command), 0);
        EXPECT_EQ(err,
                  "sonnel-tool: cut.mid: the file is damaged; the player plays what it can "
                  "read.\n")
            << command;
    }
}

TEST_F(ToolTest, TheTraceOfASongFollowsItsEvents) {
    Lyk("a.lyk", "00002 1La$Eli\r\n00006 22\r\n00013 26\r\n00020 1Fine\r\n00099 24\r\n");
    folder.Write("a.mid", SmfBuilder().Tempo(0, 500000).Note(0, 4800, 60).Bytes());
    EXPECT_EQ(Json("trace a --compensation 2 --report-ms 70")["steps"], json::parse(R"([
        {"ms":0,"kind":1,"lines":["La","li"]},{"ms":420,"kind":2,"lines":["La"]},
        {"ms":1120,"kind":2,"lines":["La","li"]},{"ms":1820,"kind":1,"lines":["Fine"]}])"));
}

TEST_F(ToolTest, CheckFindsWhatASingerStumblesOverAndNothingElse) {
    const std::string page = "00100 1Hello$Eworld\r\n";
    const std::vector<std::tuple<std::string, std::set<int>>> cases{
        {page + "00110 2 5\r\n00110 2 5\r\n00120 212\r\n;x\r\n\r\n*ZZ\r\n00130 "
                "01\r\n",
         {}},
        {page + "00090 2 5\r\n00120 212\r\n", {3}},
        {page + "00110 213\r\n", {3}},
        {"00100 2 1\r\n", {2}},
        {page + "00110 2 7\r\n00120 2 6\r\n00130 1Hey\r\n00140 2 3\r\n", {4}},
        {"00100 1a$Eb$Ec$Ed$E$E\r\n00110 1a$Eb$Ec$Ed$Ee\r\n", {3}},
        {page + "100000 1Late\r\n99999 0x\r\n10000001Late\r\n1000000 1Late\r\n", {3, 5, 6}},
        {"09990 01\r\n10000001st verse\r\n", {}},
        {"0000001Text\r\n00001 2 2\r\n00100011999 bottles\r\n001000212\r\n00110 "
         "0\r\n99999 0x\r\n",
         {}},
        {page + "00110 2 5\n00120 2 7\n\r\n00130 2 8\r\n", {3}},
        {page + "00995 2 5\r\n01001 212\r\n01002 1\r\n", {4}},
    };
    SmfBuilder smf;
    folder.Write("a.MID", smf.Text(0, 1, "").Text(96000, 1, "end").Bytes());
    for (const auto& [body, lines] : cases) {
        Lyk("a.lyk", body);
        const json found = Json("check a.lyk", lines.empty() ? 0 : 1)[0];
        std::set<int> at;
        for (const json& finding : found["findings"]) {
            at.insert(finding["line"].get<int>());
        }
        EXPECT_EQ(at, lines) << body << out;
    }
    folder.Write("b.lyk", "cantabelle1.0\r\n");
    EXPECT_EQ(Json("check b.lyk", 1)[0]["findings"].size(), 2U) << "no song, and no music";
    folder.Write("b.mid", "no music");
    EXPECT_THAT(Json("check b.lyk", 1)[0].dump(), HasSubstr("b.mid: this is not a MIDI file"));
    EXPECT_EQ(Run("check '" SONNEL_SONGS "'/*.lyk"), 0) << out;
}

}  // namespace
}  // namespace sonnel::test
