#include "fakes/ScriptedDialog.h"
#include "fakes/ScriptedMsgBox.h"
#include "fakes/TempDirectory.h"
#include "library/ApriLykEsterno.h"
#include "library/ElencoBrani.h"
#include "library/EliminaBrano.h"
#include "platform/Text.h"

#include <map>
#include <set>

#include <gmock/gmock.h>

namespace sonnel::test {
namespace {

TabellaBrani Table(std::vector<Brano> songs) {
    TabellaBrani table;
    for (Brano& song : songs) {
        table.InserisciBrano(std::move(song));
    }
    return table;
}

TEST(ElencaBrani, LinesOfTheThreeOrders) {
    const TabellaBrani table = Table({{"b", "alpha", "Bee", "Hits"},
                                      {"c", "Zulu", "Abba", "?"},
                                      {"d", "ALPHA", "Abba", "Zoo"},
                                      {"e", "", "", ""},
                                      {"f", "ZULU", "abba", "?"}});
    const std::map<Ordine, std::vector<std::string>> lines = {
        {Ordine::Titolo,
         {"4  () - ", "3 ALPHA (Abba) - Zoo", "1 alpha (Bee) - Hits", "2 Zulu (Abba) - <None>",
          "5 ZULU (abba) - <None>"}},
        {Ordine::Autore,
         {"4 :  - ", "3 Abba: ALPHA - Zoo", "2 Abba: Zulu - <None>", "5 abba: ZULU - <None>",
          "1 Bee: alpha - Hits"}},
        {Ordine::Album,
         {"4  :  ()", "2 <None> : Zulu (Abba)", "5 <None> : ZULU (abba)", "1 Hits : alpha (Bee)",
          "3 Zoo : ALPHA (Abba)"}}};
    for (const auto& [order, expected] : lines) {
        std::vector<std::string> shown;
        for (const RigaElenco& line : ElencaBrani(table, order, FoldCase)) {
            shown.push_back(std::to_string(line.posizione) + " " + line.testo);
        }
        EXPECT_EQ(shown, expected);
    }
}

TEST(RigaCasuale, EveryLineIsAsLikely) {
    std::mt19937 random(7);  // NOLINT(bugprone-random-generator-seed): the same every time
    std::map<std::size_t, int> picks;
    for (int i = 0; i < 7000; ++i) {
        ++picks[RigaCasuale(7, random)];
        EXPECT_EQ(RigaCasuale(1, random), 0U);
    }
    EXPECT_EQ(picks.size(), 7U);
    for (const auto& [line, count] : picks) {
        EXPECT_LT(line, 7U);
        EXPECT_NEAR(count, 1000, 150);
    }
}

struct Deletion {
    std::string song;
    std::set<std::string> gone;
};

TEST(EliminaFileBrano, TakesTheFilesOfOneSongOnly) {
    const std::set<std::string> files = {
        "tune.lyk", "tune.mid", "tune.bak", "tune",      "tune.old.mid", "tunes.lyk",
        "Tune.lyk", "Tune.mid", "old.lyk",  "OLD.MID",   "oLd.txt",      "key.LYK",
        "KEY.mid",  "[a]*.lyk", "[a]*.Mid", "a.lyk",     ".lyk",         "..lyk",
        "lone.lyk", "LONE.lyk", "LONE.mid", "other.mid", "dir.lyk",      "dir.mid"};
    const std::vector<Deletion> deletions = {{"tune", {"tune.lyk", "tune.mid", "tune.bak"}},
                                             {"tune.old", {"tune.old.mid"}},
                                             {"old", {"old.lyk", "OLD.MID"}},
                                             {"kEy", {"key.LYK", "KEY.mid"}},
                                             {"lone", {"lone.lyk"}},
                                             {"[a]*", {"[a]*.lyk", "[a]*.Mid"}},
                                             {"*", {}},
                                             {"dir", {"dir.lyk", "dir.mid"}},
                                             {"other.mid", {}},
                                             {"", {}},
                                             {".", {}},
                                             {"../library/tune", {}},
                                             {"sub/x", {}}};
    for (const auto& [song, gone] : deletions) {
        const TempDirectory above;
        const std::filesystem::path library = above / "library";
        std::filesystem::create_directories(library / "sub");
        std::filesystem::create_directories(library / "dir.sub");
        std::set<std::string> left = {"sub", "dir.sub"};
        above.Write("library/sub/x.lyk", "");
        for (const std::string& file : files) {
            above.Write("library/" + file, "");
            left.insert(file);
        }
        for (const std::string& file : gone) {
            left.erase(file);
        }
        EliminaFileBrano(library, song);
        std::set<std::string> found;
        for (const auto& entry : std::filesystem::directory_iterator(library)) {
            found.insert(entry.path().filename().string());
        }
        EXPECT_EQ(found, left) << song;
        EXPECT_TRUE(exists(library / "sub" / "x.lyk")) << song;
    }
}

TEST(ApriLykEsterno, GivesThePathOfACompleteSong) {
    const TempDirectory folder;
    for (const char* name :
         {"tune.lyk", "tune.MID", "B\xC3\xA8.LYK", "b\xC3\xA8.mid", "only.lyk"}) {
        folder.Write(name, "");
    }
    const std::string base = folder.Path().string() + "/";
    const std::vector<std::pair<std::string, std::optional<std::string>>> choices = {
        {"tune.lyk", "F=" + base + "tune"},
        {"B\xC3\xA8.LYK", "F=" + base + "B\xC3\xA8"},
        {"only.lyk", std::nullopt},
        {"", std::nullopt}};
    for (const auto& [name, result] : choices) {
        ScriptedDialog dialog;
        ScriptedMsgBox msgBox;
        if (!name.empty()) {
            dialog.files = {{folder / name}};
        }
        EXPECT_EQ(ApriLykEsterno(dialog, msgBox), result) << name;
        ASSERT_EQ(dialog.asked.size(), 1U);
        const FileRequest& asked = dialog.asked[0];
        EXPECT_EQ(asked.title + '|' + asked.extension + '|' + asked.name,
                  "Open a LYK file|lyk|*.lyk");
        EXPECT_TRUE(asked.directory.empty() && asked.mustExist && !asked.several);
        ASSERT_EQ(msgBox.shown.size(), name == "only.lyk" ? 1U : 0U);
        for (const Message& message : msgBox.shown) {
            EXPECT_EQ(message.text,
                      "Can't load the selected song: MID file missing!\r\nTo properly load a "
                      "Karaoke file you need to put the LYK and MID file in the same directory.");
            EXPECT_EQ(message.icon, Icon::Exclamation);
            EXPECT_EQ(message.title, "Sonnel Karaoke Player");
        }
    }
}

}  // namespace
}  // namespace sonnel::test
