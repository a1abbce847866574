#include "fakes/TempDirectory.h"
#include "library/EliminaBrano.h"

#include <map>
#include <set>

#include <gtest/gtest.h>

namespace sonnel::test {
namespace {

TEST(EliminaFileBrano, TakesTheFilesOfOneSongOnly) {
    const std::set<std::string> files = {
        "tune.lyk",  "tune.mid", "tune.bak", "tune",     "tune.old.mid", "Tune.lyk",  "Tune.mid",
        "old.lyk",   "OLD.MID",  "key.LYK",  "KEY.mid",  "[a]*.lyk",     "a.lyk",     "..lyk",
        "other.mid", "lone.lyk", "LONE.lyk", "LONE.mid", "sonnel.lyk",   "sonnel.snl"};
    const std::map<std::string, std::set<std::string>> deletions = {
        {"tune", {"tune.lyk", "tune.mid", "tune.bak"}},
        {"tune.old", {"tune.old.mid"}},
        {"old", {"old.lyk", "OLD.MID"}},
        {"kEy", {"key.LYK", "KEY.mid"}},
        {"lone", {"lone.lyk"}},
        {"[a]*", {"[a]*.lyk"}},
        {"sonnel", {"sonnel.lyk"}},
        {"*", {}},
        {"", {}},
        {".", {}},
        {"../x", {}}};
    for (const auto& [song, gone] : deletions) {
        const TempDirectory above;
        const std::filesystem::path library = above / "library";
        std::filesystem::create_directories(library);
        above.Write("x.lyk", "");
        std::set<std::string> left = files;
        for (const std::string& file : files) {
            above.Write("library/" + file, "");
        }
        for (const std::string& file : gone) {
            left.erase(file);
        }
        EliminaFileBrano(library, song);
        for (const auto& entry : std::filesystem::directory_iterator(library)) {
            EXPECT_EQ(left.erase(entry.path().filename().string()), 1U) << song << entry;
        }
        EXPECT_TRUE(left.empty()) << song;
        EXPECT_TRUE(exists(above / "x.lyk")) << song;
    }
}

}  // namespace
}  // namespace sonnel::test
