#include "fakes/TempDirectory.h"
#include "platform/qt/QtShell.h"

#include <QByteArray>
#include <chrono>
#include <thread>

#include <gtest/gtest.h>

namespace sonnel::test {
namespace {

TEST(QtShellTest, TheFirstMixerThatRunsIsStarted) {
    const QByteArray path = qgetenv("PATH");
    const TempDirectory programs;
    qputenv("PATH", programs.Path().c_str());
    const auto install = [&programs](const char* name, const std::string& text) {
        std::filesystem::permissions(programs.Write(name, text), std::filesystem::perms::owner_all);
    };
    QtShell shell;
    EXPECT_FALSE(shell.FindMixer()) << "there is no X server";
    EXPECT_FALSE(shell.Activate({1, "Mixer"}));
    EXPECT_EQ(shell.MixerProgram(), "pavucontrol");
    EXPECT_FALSE(shell.StartMixer()) << "none is installed";

    install("kmix", "#!/there/is/no/such/interpreter\n");
    EXPECT_EQ(shell.MixerProgram(), "kmix");
    EXPECT_FALSE(shell.StartMixer()) << "the one installed does not run";

    install("gnome-control-center", "#!/bin/sh\n[ $# = 1 ] && : >\"$0.$1\"\n");
    EXPECT_TRUE(shell.StartMixer());
    const auto started = programs / "gnome-control-center.sound";
    for (int i = 0; i < 1000 && !std::filesystem::exists(started); ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    EXPECT_TRUE(std::filesystem::exists(started));
    qputenv("PATH", path);
}

}  // namespace
}  // namespace sonnel::test
