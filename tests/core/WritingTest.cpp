// Operations that write files are killed at all of their system calls, and meet a full disk at
// each.

#include "convert/ConvertiKar.h"
#include "fakes/KarScore.h"
#include "fakes/ScriptedDialog.h"
#include "fakes/SongLibrary.h"
#include "library/AggiornaIndice.h"
#include "library/AggiungiBrani.h"
#include "library/RiscriviIntestazione.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/user.h>
#include <sys/wait.h>
#include <unistd.h>

namespace sonnel::test {
namespace {

namespace fs = std::filesystem;
using Work = std::function<bool()>;

/// Does `work` in a process of its own and calls `atStop` with its id before and after each of its
/// system calls, and whether it is before one. Returns 0 when the work is done, 1 when it is not,
/// -1 after a crash.
int Traced(const Work& work, const std::function<void(pid_t, bool)>& atStop) {
    const pid_t child = fork();
    if (child == 0) {
        if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0) {
            _exit(2);  // nobody would see it stop
        }
        (void)raise(SIGSTOP);
        _exit(work() ? 0 : 1);
    }
    int status = 0;
    bool before = false;
    while (waitpid(child, &status, 0) == child && WIFSTOPPED(status)) {
        const long signal = WSTOPSIG(status);
        if (signal == SIGTRAP) {
            atStop(child, before = !before);
        }
        const bool ours = signal == SIGTRAP || signal == SIGSTOP;
        ptrace(PTRACE_SYSCALL, child, nullptr, ours ? 0 : signal);
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

#ifdef __x86_64__

/// Whether the system call that a stopped process is about to make can fail on a full disk.
bool TakesRoom(pid_t child) {
    const std::set<std::uint64_t> makers{SYS_rename, SYS_link, SYS_mkdir};
    const std::set<std::uint64_t> writers{SYS_write, SYS_writev, SYS_fsync, SYS_ftruncate,
                                          SYS_sendfile};
    user_regs_struct call{};
    ptrace(PTRACE_GETREGS, child, nullptr, &call);
    // Not into a pipe, for one: the sanitizers try addresses with those.
    const fs::path file = "/proc/" + std::to_string(child) + "/fd/" + std::to_string(call.rdi);
    return makers.contains(call.orig_rax) ||
           (call.orig_rax == SYS_openat && (call.rdx & O_CREAT) != 0) ||
           (writers.contains(call.orig_rax) && fs::is_regular_file(file));
}

/// Does `work` on a disk that is full from its call number `call` on of those that take room; its
/// status, or nothing when it makes fewer such calls.
std::optional<int> OnFullDisk(int call, const Work& work) {
    bool full = false;
    bool failing = false;
    const int status = Traced(work, [&](pid_t child, bool before) {
        if (before && TakesRoom(child) && call-- <= 0) {
            full = failing = true;
            ptrace(PTRACE_POKEUSER, child, offsetof(user, regs.orig_rax), -1L);  // no call at all
        } else if (std::exchange(failing, false)) {
            ptrace(PTRACE_POKEUSER, child, offsetof(user, regs.rax), long{-ENOSPC});
        }
    });
    return full ? std::optional(status) : std::nullopt;
}

#endif

/// A library with a song, another directory with files to bring into it, and an operation on them.
class WritingTrial : public SongLibrary {
  public:
    using Operation = std::function<bool(WritingTrial&)>;

    explicit WritingTrial(const Operation& operation)
        : run_([this, operation] { return operation(*this); }) {
        Lyk("old.lyk", "*TIOld\r\n*AUAda\r\n*ALHits\r\n");
        directory.Write("old.mid", "old music");
        Index("[Songs]\r\nold=Old|Ada|Hits\r\n[Album]\r\nHits=|\r\n?=|\r\n");
        fs::create_directory(directory / "other");
        Lyk("other/new.lyk", "*TIT\r\n*ALNew\r\n");
        directory.Write("other/new.mid", std::string(100'000, 'x'));
        directory.Write("other/words.mid", KarScore("0 tempo 500000|0 @K|0 @TNew|20 \\la").Bytes());
        directory.Write("new.mid", "an orphan");
        msgBox.whileShown = [this] {  // yes to all questions; what fails is not tried again
            const Buttons buttons = msgBox.shown.back().buttons;
            msgBox.answers = {buttons == Buttons::RetryCancel ? Answer::Cancel
                              : buttons == Buttons::YesNo     ? Answer::Yes
                                                              : Answer::Ok};
        };
        before_ = Now();
        EXPECT_TRUE(run_());
        after_ = Now();
        EXPECT_NE(after_, before_);
    }
    /// Whether the same was reported as the first time, and the index can be updated now.
    bool Done() {
        const std::vector<std::string> shown = Messages();
        usual_ = usual_.empty() ? shown : usual_;
        return !AggiornaIndice(libreria).errore && shown == usual_;
    }
    /// What is on disk at a stop is what a kill leaves there.
    void KillEverywhere() const {
        Put(before_);
        std::vector<Files> left;
        Traced(run_, [&](pid_t /*child*/, bool /*before*/) {
            if (Files now = Now(); left.empty() || now != left.back()) {
                left.push_back(std::move(now));
            }
        });
        EXPECT_GT(left.size(), 2U);
        for (std::size_t i = 0; i < left.size(); ++i) {
            SCOPED_TRACE("killed after change " + std::to_string(i));
            ExpectWholeFiles(left[i], true);
            Put(left[i]);
            (void)run_();
            const Files now = Now();
            EXPECT_TRUE(HoldsAllThatIsNew(now)) << "after another run";
            EXPECT_TRUE(std::none_of(now.begin(), now.end(), IsTemporary)) << "a leftover";
        }
    }
    void FillTheDiskEverywhere() const {
#ifdef __x86_64__
        std::optional<int> status = 0;
        int call = 0;
        for (; status && !::testing::Test::HasFailure(); ++call) {
            SCOPED_TRACE("without room from call " + std::to_string(call) + " on");
            Put(before_);
            status = OnFullDisk(call, run_);
            const Files now = Now();
            ExpectWholeFiles(now, false);
            EXPECT_NE(status, -1) << "it crashed";
            EXPECT_EQ(status.value_or(0) == 0, HoldsAllThatIsNew(now)) << "what it reports";
        }
        EXPECT_GT(call, 2);
#endif
    }

  private:
    using Files = std::map<std::string, std::string>;  // by their paths below the directory

    Files Now() const {
        Files files;
        for (const auto& entry : fs::recursive_directory_iterator(directory.Path())) {
            if (entry.is_regular_file()) {
                files[entry.path().lexically_relative(directory.Path())] = Content(entry.path());
            }
        }
        return files;
    }
    void Put(const Files& files) const {
        for (const auto& [name, content] : Now()) {
            fs::remove(directory / name);
        }
        for (const auto& [name, content] : files) {
            directory.Write(name, content);
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
    void ExpectWholeFiles(const Files& now, bool killed) const {
        for (const auto& file : now) {
            const auto& [name, content] = file;
            const bool old = before_.contains(name);
            const bool whole = Hold(after_, content) || (old && before_.at(name) == content);
            EXPECT_TRUE(IsTemporary(file) ? killed : whole) << name << ": " << content;
            // Words without music are no song; music without words is left by a crash only.
            if (name.ends_with(".lyk") || (!killed && !old)) {
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

    Work run_;
    std::vector<std::string> usual_;
    Files before_;
    Files after_;

  public:
    ScriptedDialog dialog;
};

TEST(Writing, LeavesWholeFilesWhenItIsKilledAndReportsAFullDisk) {
    const std::vector<WritingTrial::Operation> operations{
        [](WritingTrial& t) {
            return !RiscriviIntestazione(t.directory.Path(), "old", {"T", "A", "B"});
        },
        [](WritingTrial& t) {
            t.dialog.files = {{t.directory / "other/new.lyk"}};
            (void)AggiungiBrani(t.libreria, t.dialog, t.windows);
            return t.Done();
        },
        [](WritingTrial& t) {
            t.dialog.files = {{t.directory / "other/words.mid"}};
            const auto today = [](const std::string&) { return "86400"; };
            ConvertiKar(t.libreria, {t.dialog, t.windows, today, [](std::int16_t) {}});
            return t.Done();
        }};
    for (std::size_t i = 0; i < operations.size(); ++i) {
        SCOPED_TRACE("operation " + std::to_string(i));
        const WritingTrial trial(operations[i]);
        trial.KillEverywhere();
        trial.FillTheDiskEverywhere();
    }
}

}  // namespace
}  // namespace sonnel::test
