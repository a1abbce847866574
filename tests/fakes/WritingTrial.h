#pragma once

#include "fakes/TempDirectory.h"
#include "fakes/TracedProcess.h"

#include <algorithm>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace sonnel::test {

/// Kills an operation that writes files at all of its system calls, and lets the disk be full at
/// each of them. The directory holds what is there before; all that is written is below it.
class WritingTrial {
  public:
    /// `run` returns false when it has told that it failed; one that does not `tell` never does.
    WritingTrial(const TempDirectory& root, std::function<bool()> run, bool tells)
        : root_(root), run_(std::move(run)), tells_(tells), before_(Now()) {
        EXPECT_TRUE(run_());
        after_ = Now();
        EXPECT_NE(after_, before_);
    }
    void KillEverywhere() const {
        for (const int stop : StopsThatChangeFiles()) {
            SCOPED_TRACE("killed at stop " + std::to_string(stop));
            Restore();
            TracedProcess(run_).Step(stop);
            ExpectWholeFiles(true);
            (void)run_();
            const Files now = Now();
            EXPECT_TRUE(HoldsAllThatIsNew(now)) << "after another run";
            EXPECT_TRUE(std::none_of(now.begin(), now.end(), IsTemporary)) << "a leftover";
        }
    }
    void FillTheDiskEverywhere() const {
#ifndef __x86_64__
        GTEST_SKIP() << "system calls can be made to fail on another processor only";
#endif
        std::optional<int> status = 0;
        int call = 0;
        for (; status && !::testing::Test::HasFailure(); ++call) {
            SCOPED_TRACE("without room from call " + std::to_string(call) + " on");
            Restore();
            status = OnFullDisk(call, run_);
            ExpectWholeFiles(false);
            const bool done = status.value_or(0) == 0;
            EXPECT_TRUE(done || status == 1) << "it crashed";
            EXPECT_TRUE(!tells_ || done == HoldsAllThatIsNew(Now())) << done;
        }
        EXPECT_GT(call, 2);
    }

  private:
    using Files = std::map<std::string, std::string>;  // by their paths below the root

    /// To be killed at any other stop leaves the same files as at the one of these before it.
    std::vector<int> StopsThatChangeFiles() const {
        Restore();
        std::vector<int> stops;
        Files state;
        TracedProcess process(run_);
        int stop = 0;
        do {
            if (std::exchange(state, Now()) != state) {
                stops.push_back(stop);
            }
            ++stop;
        } while (process.Step());
        EXPECT_GT(stops.size(), 2U);
        return stops;
    }
    Files Now() const {
        Files files;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(root_.Path())) {
            if (entry.is_regular_file()) {
                files[entry.path().lexically_relative(root_.Path())] = Content(entry.path());
            }
        }
        return files;
    }
    void Restore() const {
        for (const auto& [name, content] : Now()) {
            std::filesystem::remove(root_ / name);
        }
        for (const auto& [name, content] : before_) {
            root_.Write(name, content);
        }
    }
    static bool IsTemporary(const Files::value_type& file) {
        return file.first.ends_with(".tmp") || file.first.ends_with(".bak");
    }
    static bool Hold(const Files& files, const std::string& content) {
        return std::any_of(files.begin(), files.end(), [&](const auto& file) {
            return file.second == content && !IsTemporary(file);
        });
    }
    bool HoldsAllThatIsNew(const Files& now) const {
        return std::includes(now.begin(), now.end(), after_.begin(), after_.end());
    }
    void ExpectWholeFiles(bool killed) const {
        const Files now = Now();
        for (const auto& file : now) {
            const auto& [name, content] = file;
            const auto old = before_.find(name);
            // Settings are written one by one.
            const bool whole = Hold(after_, content) ||
                               (old != before_.end() && old->second == content) ||
                               (name.ends_with(".conf") && content.ends_with('\n'));
            EXPECT_TRUE(IsTemporary(file) ? killed : whole) << name << ": " << content;
            // Words without music are no song; music without words is left by a crash only.
            if (name.ends_with(".lyk") || (!killed && old == before_.end())) {
                const std::string other =
                    name.substr(0, name.rfind('.')) + (name.ends_with(".lyk") ? ".mid" : ".lyk");
                EXPECT_TRUE(now.contains(other) || !after_.contains(other)) << "lacks " << other;
            }
        }
        for (const auto& [name, content] : before_) {
            EXPECT_TRUE(now.contains(name) || !after_.contains(name)) << name << " is gone";
            EXPECT_TRUE(Hold(now, content) || !Hold(after_, content)) << name;
        }
    }

    const TempDirectory& root_;
    std::function<bool()> run_;
    bool tells_;
    Files before_;
    Files after_;
};

}  // namespace sonnel::test
