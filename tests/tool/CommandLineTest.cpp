#include "tool/ToolTest.h"

#include <algorithm>
#include <regex>
#include <string>
#include <utility>
#include <vector>

namespace sonnel::test {
namespace {

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

TEST_F(ToolTest, EveryCommandAndOptionIsExplainedAndOffered) {
    const fs::path packaging(SONNEL_PACKAGING);
    const std::string manual =
        std::regex_replace(Content(packaging / "sonnel-tool.1"), std::regex(R"(\\-)"), "-");
    const auto offered = [&](const std::string& words) {
        Shell("bash -c 'source " + (packaging / "sonnel-tool.bash").string() + "; COMP_WORDS=(" +
              words + "); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _sonnel_tool; " +
              "echo \" ${COMPREPLY[*]} \"'");
        return out;
    };
    EXPECT_EQ(offered("sonnel-tool con"), " convert \n");
    ASSERT_EQ(Run("--help"), 0);
    const std::string help = out.substr(out.find("Subcommands:"));
    ASSERT_THAT(help, HasSubstr("  convert "));
    const std::regex commands("\n  ([a-z-]+)");
    const std::regex options("--[a-z-]+");
    const std::sregex_iterator end;
    for (std::sregex_iterator command(help.begin(), help.end(), commands); command != end;
         ++command) {
        const std::string name = (*command)[1];
        EXPECT_THAT(manual, HasSubstr("\n.BI " + name + " \""));
        EXPECT_THAT(offered("sonnel-tool \"\""), HasSubstr(" " + name + " "));
        ASSERT_EQ(Run(name + " --help"), 0);
        const std::string text = out;
        const std::string all = offered("sonnel-tool " + name + " --");
        for (std::sregex_iterator option(text.begin(), text.end(), options); option != end;
             ++option) {
            EXPECT_THAT(manual, HasSubstr(option->str())) << name;
            EXPECT_THAT(all, HasSubstr(" " + option->str() + " ")) << name;
        }
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
    const std::vector<std::pair<std::string, std::string>> commands{{"header '", ".lyk"},
                                                                    {"check '", ".lyk"},
                                                                    {"midi '", ".mid"},
                                                                    {"convert --force '", ".kar"}};
    for (const auto& [command, end] : commands) {
        for (const std::string bad : {"none", "d", "\xFF"}) {
            const json all =
                Json(std::string(command).append(bad).append(end).append("' ok").append(end), 1);
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
    const json all = Json(arguments, 1);
    ASSERT_EQ(all.size(), names.size()) << out;
    for (std::size_t i = 0; i < names.size(); ++i) {
        EXPECT_EQ(all[i]["file"], names[i]);
        EXPECT_EQ(all[i]["ok"], names[i].size() > 5) << "the others are no karaoke files";
    }
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

}  // namespace
}  // namespace sonnel::test
