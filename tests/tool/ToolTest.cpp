// The real command-line companion, run by the shell.

#include "fakes/SmfBuilder.h"
#include "fakes/TempDirectory.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <regex>
#include <set>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>
#include <sys/wait.h>

namespace sonnel::test {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;
using ::testing::HasSubstr;

/// A directory in which the program runs. The arguments are the shell's.
class ToolTest : public ::testing::Test {
  protected:
    int Run(const std::string& arguments) {
        return Shell("SOURCE_DATE_EPOCH=86400 '" SONNEL_TOOL "' " + arguments);
    }
    /// The exit status of a command; what it prints is in `out` and `err`.
    int Shell(const std::string& command) {
        const std::string line = "cd '" + folder.Path().string() + "' && { " + command + "\n} >'" +
                                 (logs / "out").string() + "' 2>'" + (logs / "err").string() + "'";
        const int status = std::system(line.c_str());
        out = Content(logs / "out");
        err = Content(logs / "err");
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    json Json(const std::string& arguments, int status = 0) {
        EXPECT_EQ(Run("--json " + arguments), status) << arguments << "\n" << err;
        return json::parse(out, nullptr, false);
    }
    void Lyk(const std::string& name, const std::string& body) const {
        folder.Write(name, "Cantabelle1.0\r\n" + body);
    }
    static std::string Kar() {
        return SmfBuilder().Tempo(0, 500000).Text(0, 1, "@KMIDI").Text(960, 1, "\\La").Bytes();
    }

    TempDirectory folder;
    TempDirectory logs;
    std::string out;
    std::string err;
};

TEST_F(ToolTest, WrongUsageIsToldWithTheUsageLine) {
    for (const char* line : {"", "sing", "show a b", "check", "set-header a --title x",
                             "trace a --report-ms 0", "midi --force a"}) {
        EXPECT_EQ(Run(line), 2) << line;
        EXPECT_THAT(err, HasSubstr("Usage: sonnel-tool")) << line;
        EXPECT_EQ(out, "") << line;
    }
    EXPECT_EQ(Run("check --version"), 0);
    EXPECT_THAT(out, ::testing::StartsWith("sonnel-tool "));
}

TEST_F(ToolTest, EveryCommandAndOptionIsInTheManualAndCompleted) {
    const fs::path packaging(SONNEL_PACKAGING);
    const std::string manual =
        std::regex_replace(Content(packaging / "sonnel-tool.1"), std::regex(R"(\\-)"), "-");
    // What the help of a command line explains, each with a blank before and after it.
    const auto explained = [&](const std::string& line, const std::regex& word) {
        EXPECT_EQ(Run(line + " --help"), 0);
        const std::string help = out;
        EXPECT_EQ(Shell("bash -c 'source " + (packaging / "sonnel-tool.bash").string() +
                        "; COMP_WORDS=(sonnel-tool " + line + (line.empty() ? "\"\"" : " --") +
                        "); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _sonnel_tool; echo \" "
                        "${COMPREPLY[*]} \"'"),
                  0);
        std::vector<std::string> words;
        for (std::sregex_iterator found(help.begin(), help.end(), word), end; found != end;
             ++found) {
            words.push_back(found->str(1));
            EXPECT_THAT(manual, HasSubstr(words.back())) << line;
            EXPECT_THAT(out, HasSubstr(" " + words.back() + " ")) << line;
        }
        return words;
    };
    const auto commands = explained("", std::regex("\n  ([a-z][a-z-]*) "));
    EXPECT_THAT(commands, ::testing::Contains("convert"));
    for (const std::string& command : commands) {
        EXPECT_THAT(explained(command, std::regex("(--[a-z-]+)")), ::testing::Contains("--help"));
    }
}

TEST_F(ToolTest, ABadFileIsNamedAndTheOthersAreDone) {
    for (const char* directory : {"d.lyk", "d.mid", "d.kar"}) {
        fs::create_directory(folder / directory);
    }
    Lyk("ok.lyk", "*TIFine\r\n");
    for (const char* name : {"ok.mid", "ok.kar"}) {
        folder.Write(name, Kar());
    }
    const std::vector<std::pair<std::string, std::string>> commands{
        {"header", ".lyk"}, {"check", ".lyk"}, {"midi", ".mid"}, {"convert --force", ".kar"}};
    for (const auto& [command, end] : commands) {
        for (const std::string bad : {"none", "d", "\xFF"}) {
            std::string line = command;
            line.append(" '").append(bad).append(end).append("' ok").append(end);
            const json all = Json(line, 1);
            ASSERT_EQ(all.size(), 2U) << command << " " << bad << out;
            EXPECT_EQ(all[0]["ok"], false) << command << " " << bad;
            EXPECT_EQ(all[1]["ok"], true) << command << " " << bad;
            EXPECT_EQ(std::count(err.begin(), err.end(), '\n'), 1) << err;
            EXPECT_THAT(err, HasSubstr(bad));
        }
    }
    for (const std::string command :
         {"show", "trace", "set-header --title a --author b --album c"}) {
        EXPECT_EQ(Json(command + " none.lyk", 1)["ok"], false) << command;
        EXPECT_THAT(err, HasSubstr("none.lyk")) << command;
    }
    EXPECT_EQ(Run("set-header ok.mid --title a --author b --album c"), 1);
    EXPECT_EQ(Content(folder / "ok.mid"), Kar()) << "music is not taken for words";
}

TEST_F(ToolTest, FilesOfAnyNameArriveWhole) {
    std::string arguments = "convert --output . --";
    const std::vector<std::string> names{" a.kar",   "[a,b].kar", "[a,b]",
                                         "%s%%.kar", "\"é\".KAR", "-n.kar"};
    for (const std::string& name : names) {
        folder.Write(name, Kar());
        arguments.append(" '").append(name).append("'");
    }
    const json all = Json(arguments);
    ASSERT_EQ(all.size(), names.size()) << out;
    for (std::size_t i = 0; i < names.size(); ++i) {
        EXPECT_EQ(all[i]["file"], names[i]);
    }
    folder.Write("caf\xE9.kar", Kar());
    EXPECT_EQ(Json("convert 'caf\xE9.kar'")[0]["lyk"], "café.lyk") << "no UTF-8";
    EXPECT_EQ(Json("convert --force -- -N.Kar")[0]["lyk"], "-n.lyk") << "named as on the disk";
    EXPECT_EQ(Run("set-header ' a.lyk' --title '[a,b]' --author '[]' --album x"), 0) << err;
    EXPECT_EQ(Json("header ' a.lyk'")[0]["title"], "[a,b]");
}

TEST_F(ToolTest, ResultsThatCannotBeWrittenAreAFailure) {
    folder.Write("a.kar", Kar());
    for (const std::string line : {"midi a.kar", "midi a.kar --json", "--version"}) {
        for (const char* output : {" >/dev/full", " >&-"}) {
            EXPECT_EQ(Run(line + output), 1) << line << output;
            EXPECT_THAT(err, HasSubstr("Can't write the results")) << line;
        }
    }
}

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
    fs::permissions(folder / "sonnel.snl", fs::perms::owner_read);
    folder.Write("c.lyk", "*TICe\r\n");
    EXPECT_EQ(Json("index . --rebuild", 1), none) << "it cannot be written";
    EXPECT_THAT(err, HasSubstr("Can't write the file ./sonnel.snl: "));
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
    folder.Write("cut.mid", SmfBuilder(2).Note(0, 480, 60).Bytes());
    EXPECT_EQ(Json("midi cut.mid")[0]["format"], 2);
    for (const char* command : {"check cut.lyk", "trace cut.lyk"}) {
        EXPECT_EQ(Run(command), 1);
        EXPECT_THAT(out + err, HasSubstr("format 2, only formats 0 and 1 can be played"));
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
        for (const char* name : {"a", "A.mid", "a.kar"}) {
            EXPECT_EQ(Json(std::string("check ") + name, lines.empty() ? 0 : 1)[0]["findings"],
                      found["findings"]);
        }
    }
    folder.Write("c.mid", Kar());
    EXPECT_THAT(Json("check c.mid", 1)[0]["findings"].dump(), HasSubstr("it has no words"));
    folder.Write("b.lyk", "cantabelle1.0\r\n");
    EXPECT_EQ(Json("check b.lyk", 1)[0]["findings"].size(), 2U) << "no song, and no music";
    folder.Write("b.mid", "no music");
    EXPECT_THAT(Json("check b.lyk", 1)[0].dump(), HasSubstr("b.mid: this is not a MIDI file"));
    EXPECT_EQ(Run("check '" SONNEL_SONGS "'/*.lyk"), 0) << out;
}

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
    for (const char* name : {"a.kar", "b.MID", "half.kar", "kept.kar", "c.midi", "sub/a.kar"}) {
        folder.Write(name, Kar());
    }
    folder.Write("KEPT.lyk", "mine");
    auto names = folder.Names();
    const json all = Json("convert a.kar b.MID no.kar bad.kar half.kar kept.kar ./a.kar c.midi", 1);
    using Row = std::tuple<json, json, json>;
    const std::vector<Row> wanted{{true, "a.lyk", "a.mid"}, {true, "b.lyk", "b.MID"},
                                  {false, "no.lyk", ""},    {false, "", ""},
                                  {false, "", ""},          {false, "", ""},
                                  {false, "", ""},          {true, "c..lyk", "c..mid"}};
    ASSERT_EQ(all.size(), wanted.size());
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        EXPECT_EQ(Row(all[i]["ok"], all[i]["lyk"], all[i]["mid"]), wanted[i]) << all[i];
        EXPECT_EQ(all[i]["ok"], all[i]["error"].get<std::string>().empty()) << all[i];
    }
    names.insert({"a.lyk", "a.mid", "b.lyk", "no.lyk", "c..lyk", "c..mid"});
    EXPECT_EQ(folder.Names(), names);
    EXPECT_EQ(Content(folder / "KEPT.lyk"), "mine");

    EXPECT_EQ(Json("convert kept.kar --force")[0]["lyk"], "KEPT.lyk") << "no twin beside it";
    const json moved = Json("convert a.kar sub/a.kar b.MID --output out", 1);
    EXPECT_EQ(moved[1]["ok"], false) << "two files of one base name";
    EXPECT_EQ(moved[2]["mid"], "out/b.mid");
    EXPECT_EQ(Content(folder / "out/b.mid"), Kar());
}

TEST_F(ToolTest, TheExactReadingMakesSongsOfAnyFileAndFillsALibrary) {
    const std::string song = SmfBuilder().Text(960, 5, "La ").Text(1440, 5, "la ").Bytes();
    folder.Write("A.midi", song);
    folder.Write("w.rmi", std::string("RIFF\x60\0\0\0RMIDdata", 16) +
                              static_cast<char>(song.size()) + std::string(3, '\0') + song);
    folder.Write("none.mid", SmfBuilder().Note(0, 9, 60).Bytes());
    Lyk("A.lyk", "*TIKept\r\n*ALBest\r\n0000001x\r\n");
    json all = Json("convert --exact A.midi w.rmi none.mid", 1);
    EXPECT_EQ(all[0]["ok"], false) << "it has a LYK";
    EXPECT_EQ(all[1]["words"], "lyric");
    EXPECT_EQ(Content(folder / "w.mid"), song);
    EXPECT_THAT(all[2]["error"], HasSubstr("it has no words."));
    EXPECT_FALSE(fs::exists(folder / "none.lyk"));
    Json("convert --exact --force A.midi");
    EXPECT_EQ(Content(folder / "A.lyk"),
              "Cantabelle1.0 by Sonnel Karaoke Player\r\n*TIKept\r\n*AU\r\n*ALBest\r\n"
              "0000001La la \r\n00010023\r\n00015026\r\n");

    fs::create_directory(folder / "lib");
    Lyk("lone.lyk", "");
    all = Json("add lib A.lyk w.rmi w.rmi lone.lyk none.mid gone.kar A.lyk/x", 1);
    std::string names;
    for (const json& one : all) {
        names += one["name"].get<std::string>() +
                 (one["ok"] == one["error"].get<std::string>().empty() ? ";" : "!");
    }
    EXPECT_EQ(names, "A;w;w;;;;;");
    EXPECT_EQ(std::count(err.begin(), err.end(), '\n'), 4) << err;
    EXPECT_EQ(Content(folder / "lib/sonnel.snl"),
              "[Songs]\r\nA=Kept||Best\r\nw=w||?\r\n[Album]\r\n?=|\r\nBest=|\r\n");
    EXPECT_EQ(Json("add nowhere w.rmi", 1)[0]["ok"], false);
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

    const auto plain = [] { return SmfBuilder().Tempo(0, 500000); };
    const std::vector<std::pair<std::string, SmfBuilder>> refused{
        {"it does not say that it is a karaoke file (@K)", plain().Text(0, 1, "\\a")},
        {"it has no words", plain().Text(0, 1, "@K").Text(0, 1, "a")},
        {"its words are lyric events", plain().Text(0, 1, "@K").Text(0, 5, "a")}};
    for (const auto& [reason, file] : refused) {
        folder.Write("no.kar", file.Bytes());
        const std::string error = Json("convert no.kar --force", 1)[0]["error"];
        EXPECT_THAT(error, HasSubstr("no.kar: " + reason));
        EXPECT_EQ(err, "sonnel-tool: " + error + "\n");
    }
}

}  // namespace
}  // namespace sonnel::test
