#include "fakes/SmfBuilder.h"
#include "fakes/TempDirectory.h"
#include "platform/Text.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <string_view>
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

const fs::path Songs(SONNEL_SONGS);
const fs::path Kars(SONNEL_KARS);

/// A directory in which the program runs. The arguments are the shell's.
class ToolTest : public ::testing::Test {
  protected:
    int Run(const std::string& arguments) {
        const std::string command = "cd '" + folder.Path().string() + "' && " + limits +
                                    "SOURCE_DATE_EPOCH=86400 '" SONNEL_TOOL "' " + arguments +
                                    " >'" + (logs / "out").string() + "' 2>'" +
                                    (logs / "err").string() + "'";
        const int status = std::system(command.c_str());
        out = Content(logs / "out");
        err = Content(logs / "err");
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    json Json(const std::string& arguments, int status = 0) {
        EXPECT_EQ(Run("--json " + arguments), status) << arguments << "\n" << err;
        return json::parse(out, nullptr, false);
    }
    void Lyk(const std::string& name, const std::string& body) {
        folder.Write(name, "Cantabelle1.0\r\n" + body);
    }
    static std::string Kar() {
        return SmfBuilder().Tempo(0, 500000).Text(0, 1, "@KMIDI").Text(960, 1, "\\La").Bytes();
    }

    /// What the shell's completion offers for the last of these words.
    std::string Offered(const std::string& words) {
        const std::string script =
            "bash -c 'source " SONNEL_PACKAGING "/sonnel-tool.bash; COMP_WORDS=(" + words +
            "); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _sonnel_tool; echo \" ${COMPREPLY[*]} \"' "
            ">'";
        EXPECT_EQ(std::system((script + (logs / "offered").string() + "'").c_str()), 0);
        return Content(logs / "offered");
    }

    TempDirectory folder;
    TempDirectory logs;
    std::string limits;  ///< of what the program may use, as a command of the shell
    std::string out;
    std::string err;
};

TEST_F(ToolTest, WrongUsageIsToldWithTheUsageLine) {
    for (const char* line : {"", "sing", "show", "show a b", "check", "set-header a --title x",
                             "trace a --report-ms 0", "trace a --report-ms x", "midi --force a"}) {
        EXPECT_EQ(Run(line), 2) << line;
        EXPECT_THAT(err, HasSubstr("Usage: sonnel-tool")) << line;
        EXPECT_EQ(out, "") << line;
    }
    for (const std::string command :
         {"", "show", "header", "set-header", "index", "convert", "midi", "check", "trace"}) {
        EXPECT_EQ(Run(command + " --help"), 0);
        EXPECT_THAT(out, HasSubstr("Usage: sonnel-tool"));
        EXPECT_EQ(Run(command + " --version"), 0) << command;
        EXPECT_THAT(out, ::testing::StartsWith("sonnel-tool ")) << command;
    }
}

TEST_F(ToolTest, ABadFileIsNamedAndTheOthersAreDone) {
    fs::create_directory(folder / "d.lyk");
    fs::create_directory(folder / "d.mid");
    Lyk("ok.lyk", "*TIFine\r\n");
    folder.Write("ok.mid", Kar());
    folder.Write("ok.kar", Kar());
    for (const std::string command : {"header", "check", "midi", "convert --force"}) {
        const std::map<char, std::string> ends{{'m', "mid"}, {'h', "lyk"}, {'c', "lyk"}};
        const std::string end = command == "convert --force" ? "kar" : ends.at(command[0]);
        fs::create_directory(folder / ("d." + end));
        for (const std::string bad : {"none", "d", "\\377"}) {
            std::string arguments = command;
            arguments.append(" \"$(printf '").append(bad).append("').").append(end);
            arguments.append("\" ok.").append(end);
            const json all = Json(arguments, 1);
            ASSERT_EQ(all.size(), 2U) << command << " " << bad << out;
            EXPECT_EQ(all[0]["ok"], false) << command << " " << bad;
            EXPECT_EQ(all[1]["ok"], true) << command << " " << bad;
            EXPECT_EQ(std::count(err.begin(), err.end(), '\n'), 1) << err;
            EXPECT_THAT(err, HasSubstr(bad == "\\377" ? "\xFF" : bad));
        }
    }
    for (const std::string command :
         {"show", "trace", "set-header --title a --author b --album c"}) {
        for (const char* bad : {"none.lyk", "d.lyk"}) {
            EXPECT_EQ(Json(command + " " + bad, 1)["ok"], false) << command << bad;
            EXPECT_THAT(err, HasSubstr(bad)) << command;
        }
    }
    EXPECT_EQ(Run("set-header ok.mid --title a --author b --album c"), 1);
    EXPECT_EQ(Content(folder / "ok.mid"), Kar()) << "music is not taken for words";
}

TEST_F(ToolTest, FilesOfAnyNameArriveWhole) {
    std::string arguments = "convert --output . --";
    const std::vector<std::string> names{" a.kar",    "[a,b].kar", "[a,b]", "{x},y.kar", "%s%%.kar",
                                         "\"é\".KAR", "-n.kar",    "--",    "x=y;.kar",  "[]"};
    for (const std::string& name : names) {
        folder.Write(name, Kar());
        arguments.append(" '").append(name).append("'");
    }
    const json all = Json(arguments + " -N.Kar", 1);
    ASSERT_EQ(all.size(), names.size() + 1) << out;
    for (std::size_t i = 0; i < names.size(); ++i) {
        EXPECT_EQ(all[i]["file"], names[i]);
        EXPECT_EQ(all[i]["ok"], names[i].size() > 5) << "the others are no karaoke files";
    }
    fs::remove(folder / "-n.lyk");
    fs::remove(folder / "-n.mid");
    EXPECT_EQ(Json("convert -- -N.Kar")[0]["lyk"], "-n.lyk") << "named as on the disk";
    EXPECT_EQ(Run("set-header ' a.lyk' --title '[a,b]' --author '[]' --album x"), 0) << err;
    EXPECT_EQ(Json("header ' a.lyk'")[0]["title"], "[a,b]");
}

TEST_F(ToolTest, WorkThatBreaksOffEndsForItsFileOnly) {
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer needs all the address space";
#endif
    folder.Write("big.kar", "");
    fs::resize_file(folder / "big.kar", 400'000'000);
    folder.Write("a.kar", Kar());
    limits = "ulimit -v 200000 && ";
    for (const char* line :
         {"midi big.kar a.kar", "convert big.kar a.kar", "header big.kar a.kar"}) {
        const json all = Json(line, 1);
        ASSERT_EQ(all.size(), 2U) << line << out << err;
        EXPECT_EQ(all[0]["ok"], false) << line;
        EXPECT_THAT(all[0].value("error", ""), HasSubstr("big."));
        EXPECT_EQ(all[1].value("error", ""), "");
        EXPECT_THAT(err, HasSubstr("not enough memory.\n")) << line;
    }
}

TEST_F(ToolTest, ResultsThatCannotBeWrittenAreAFailure) {
    folder.Write("a.kar", Kar());
    for (const std::string line :
         {"midi a.kar", "midi a.kar --json", "index . --json", "convert --help", "--version"}) {
        for (const char* output : {">/dev/full", ">&-"}) {
            // The end of the line, which sends the results to a file, belongs to another command.
            EXPECT_EQ(
                Run(line + " 2>'" + (logs / "told").string() + "' " + output + "; exit $?; :"), 1)
                << line << output;
            EXPECT_THAT(Content(logs / "told"), HasSubstr("Can't write the results")) << line;
        }
    }
}

TEST_F(ToolTest, EveryCommandAndOptionIsExplainedAndOffered) {
    const std::string manual = std::regex_replace(
        Content(fs::path(SONNEL_PACKAGING) / "sonnel-tool.1"), std::regex(R"(\\-)"), "-");
    EXPECT_EQ(Offered("sonnel-tool con"), " convert \n");
    ASSERT_EQ(Run("--help"), 0);
    const std::string help = out.substr(out.find("Subcommands:"));
    ASSERT_THAT(help, HasSubstr("  convert "));
    const std::regex commands("\n  ([a-z-]+)");
    const std::regex options("--[a-z-]+");
    for (std::sregex_iterator command(help.begin(), help.end(), commands), end; command != end;
         ++command) {
        const std::string name = (*command)[1];
        EXPECT_THAT(manual, HasSubstr("\n.BI " + name + " \""));
        EXPECT_THAT(Offered("sonnel-tool \"\""), HasSubstr(" " + name + " "));
        ASSERT_EQ(Run(name + " --help"), 0);
        const std::string offered = Offered("sonnel-tool " + name + " --");
        for (std::sregex_iterator option(out.begin(), out.end(), options); option != end;
             ++option) {
            EXPECT_THAT(manual, HasSubstr(option->str())) << name;
            EXPECT_THAT(offered, HasSubstr(" " + option->str() + " ")) << name;
        }
    }
}

TEST_F(ToolTest, SongsAreShownAndTheirHeadersRewritten) {
    Lyk("a.lyk",
        "*TIRock & Roll\r\n*AUCaf\xE9\r\n00000 1Hello$Eworld\r\n00050 2 5\r\n00060 05\r\n");
    json song = Json("show a.lyk");
    EXPECT_EQ(song["title"], "Rock && Roll");
    EXPECT_EQ(song["author"], "Café");
    EXPECT_EQ(song["events"], json::parse(R"([{"time":30,"kind":1,"text":"Hello\r\nworld"},
        {"time":50,"kind":2,"text":" 5"},{"time":60,"kind":0,"text":"5"}])"));
    folder.Write("b.lyk", "Other\r\n");
    song = Json("show b.lyk", 1);
    EXPECT_EQ(song["messages"], json::parse(R"([{"text":"That's not a Cantabelle1.0 file!",
        "icon":"critical","title":"Sonnel Karaoke Player"}])"));
    EXPECT_EQ(Run("set-header a.lyk --title 'A b' --author '' --album 'Łódź'"), 0) << err;
    EXPECT_EQ(Json("header a.lyk b.lyk"),
              json::parse(R"([{"file":"a.lyk","ok":true,"title":"A b","author":"","album":"Łódź"},
                  {"file":"b.lyk","ok":true,"title":"","author":"","album":"?"}])"));
}

TEST_F(ToolTest, AnIndexIsListedAndRebuilt) {
    const json none = json::parse(R"({"ok":false,"songs":[],"albums":[]})");
    EXPECT_EQ(Json("index nowhere", 1), none);
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
    EXPECT_EQ(std::tuple(all[1]["ok"], all[1]["damaged"]), std::tuple(json(true), json(true)));
    folder.Write("cut.lyk", "Cantabelle1.0\r\n");
    for (const char* const command : {"midi cut.mid", "check cut.lyk", "trace cut.lyk"}) {
        EXPECT_EQ(Run(command), 0);
        EXPECT_EQ(err,
                  "sonnel-tool: cut.mid: the file is damaged; the player plays what it can "
                  "read.\n")
            << command;
    }
}

TEST_F(ToolTest, CheckFindsWhatASingerStumblesOverAndNothingElse) {
    const std::string page = "00100 1Hello$Eworld\r\n";
    const std::vector<std::tuple<std::string, std::set<int>>> cases{
        {page + "00110 2 5\r\n00110 2 5\r\n00120 212\r\n;x\r\n\r\n*ZZ\r\n00130 01\r\n", {}},
        {page + "00090 2 5\r\n00120 212\r\n", {3}},
        {page + "00110 213\r\n", {3}},
        {"00100 2 1\r\n", {2}},
        {page + "00110 2 7\r\n00120 2 6\r\n00130 1Hey\r\n00140 2 3\r\n", {4}},
        {"00100 1a$Eb$Ec$Ed$E$E\r\n00110 1a$Eb$Ec$Ed$Ee\r\n", {3}},
        {page + "10000001Late\r\n1000120204\r\n", {3, 4}},
        {page + "100000 1Late\r\n100002 2 1\r\n1000000 1Late\r\n1234567012\r\n", {3, 4, 5, 6}},
        {page + "99999 0x\r\n10000001Late\r\n100000 1Late\r\n1000000 1Late\r\n", {4, 5, 6}},
        {"09990 01\r\n10000001st verse\r\n", {}},
        {"0000001Text\r\n00001 2 2\r\n00100011999 bottles\r\n001000212\r\n00110 0\r\n99999 0x\r\n",
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
        EXPECT_EQ(found["ok"], lines.empty());
    }
    folder.Write("b.lyk", "cantabelle1.0\r\n");
    EXPECT_EQ(Json("check b.lyk", 1)[0]["findings"].size(), 2U) << "no song, and no music";
    folder.Write("b.mid", "no music");
    EXPECT_THAT(Json("check b.lyk", 1)[0].dump(), HasSubstr("b.mid: this is not a MIDI file"));
    EXPECT_EQ(Run("check '" + Songs.string() + "'/*.lyk"), 0) << out;
}

/// The lines of a text that is coloured up to a character.
json Coloured(const std::string& page, std::size_t count) {
    std::string part(FirstCodePoints(page, count));
    part.erase(part.find_last_not_of(" \r\n") + 1);
    json lines = json::array();
    for (std::size_t begin = 0; begin <= part.size();) {
        const std::size_t end = std::min(part.find("\r\n", begin), part.size());
        lines.push_back(part.substr(begin, end - begin));
        begin = end + 2;
    }
    return lines;
}

TEST_F(ToolTest, TheTraceOfASongFollowsItsEvents) {
    for (const int interval : {20, 70}) {
        const std::string song = "'" + (Songs / "Frere Jacques").string();
        const json events = Json("show " + song + ".lyk'")["events"];
        const json steps = Json("trace " + song + "' --compensation 2 --report-ms " +
                                std::to_string(interval))["steps"];
        ASSERT_EQ(steps.size(), events.size());
        ASSERT_GT(steps.size(), 50U);
        std::string page;
        int before = 0;
        for (std::size_t i = 0; i < steps.size(); ++i) {
            const std::string text = events[i]["text"];
            const int due = (events[i]["time"].get<int>() - 2) * 100;
            before = std::max(before + interval, (due + interval - 1) / interval * interval);
            EXPECT_EQ(steps[i]["ms"], before) << i;
            EXPECT_EQ(steps[i]["kind"], events[i]["kind"]) << i;
            page = events[i]["kind"] == 1 ? text : page;
            const std::size_t count = events[i]["kind"] == 1 ? page.size() : std::stoul(text);
            EXPECT_EQ(steps[i]["lines"], Coloured(page, count)) << i;
        }
    }
}

TEST_F(ToolTest, AConvertedSongHasThePagesAndTheTimesOfItsOriginal) {
    const json all = Json("convert --output . '" + Kars.string() + "'/*.kar");
    ASSERT_EQ(all.size(), 5U);
    for (const json& made : all) {
        const std::string lyk = made["lyk"];
        const std::string mid = made["mid"];
        EXPECT_EQ(Content(folder / mid), Content(made["file"].get<std::string>()));
        const json converted = Json("show '" + lyk + "'");
        EXPECT_EQ(converted["date"], "02/01/70") << "the date follows SOURCE_DATE_EPOCH";
        const json& ours = converted["events"];
        const json original = Json("show '" + (Songs / lyk).string() + "'")["events"];
        ASSERT_EQ(ours.size(), original.size()) << lyk;
        for (std::size_t i = 0; i < ours.size(); ++i) {
            EXPECT_EQ(ours[i]["kind"], original[i]["kind"]) << lyk << ours[i];
            EXPECT_EQ(ours[i]["text"], original[i]["text"]) << lyk;
            EXPECT_NEAR(ours[i]["time"].get<int>(), original[i]["time"].get<int>(), 1) << lyk;
        }
    }
}

TEST_F(ToolTest, ConvertWritesWhatItNamesAndKeepsWhatIsThere) {
    const std::string noKaraoke = SmfBuilder().Tempo(0, 500000).Note(0, 96, 60).Bytes();
    folder.Write("a.kar", Kar());
    folder.Write("b.MID", Kar());
    folder.Write("no.kar", noKaraoke);
    folder.Write("bad.kar", "no MIDI");
    folder.Write("half.kar", Kar());
    fs::create_directory(folder / "half.mid");  // where the music cannot go
    folder.Write("kept.kar", Kar());
    folder.Write("KEPT.lyk", "mine");
    folder.Write("a.mid.txt", "");
    fs::create_directory(folder / "out");
    fs::create_directory(folder / "sub");
    folder.Write("sub/a.kar", Kar());
    const auto before = folder.Names();
    const json all =
        Json("convert a.kar b.MID no.kar bad.kar half.kar kept.kar ./a.kar a.mid.txt", 1);
    const std::vector<std::tuple<bool, std::string, std::string>> wanted{
        {true, "a.lyk", "a.mid"}, {true, "b.lyk", "b.MID"}, {false, "no.lyk", ""}, {false, "", ""},
        {false, "", ""},          {false, "", ""},          {false, "", ""},       {false, "", ""}};
    ASSERT_EQ(all.size(), wanted.size());
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        EXPECT_EQ(std::tuple(all[i]["ok"].get<bool>(), all[i]["lyk"], all[i]["mid"]),
                  std::tuple(std::get<0>(wanted[i]), json(std::get<1>(wanted[i])),
                             json(std::get<2>(wanted[i]))))
            << all[i];
        EXPECT_EQ(all[i]["ok"], all[i]["error"].get<std::string>().empty()) << all[i];
    }
    auto after = before;
    after.insert({"a.lyk", "a.mid", "b.lyk", "no.lyk"});
    EXPECT_EQ(folder.Names(), after);
    EXPECT_EQ(Content(folder / "KEPT.lyk"), "mine");

    EXPECT_EQ(Json("convert kept.kar --force")[0]["lyk"], "KEPT.lyk") << "no twin beside it";
    const json out2 = Json("convert a.kar sub/a.kar b.MID --output out", 1);
    EXPECT_EQ(out2[1]["ok"], false) << "two files of one base name";
    EXPECT_EQ(out2[2]["mid"], "out/b.mid");
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
