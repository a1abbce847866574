#include "fakes/FakeShell.h"
#include "fakes/ScriptedMsgBox.h"
#include "player/ControlloVolume.h"

#include <gtest/gtest.h>

namespace sonnel::test {
namespace {

TEST(VolumeControlTest, AMixerIsShownOrThePersonToldWhyNot) {
    const OpenWindow open{7, "Mixer \"1\""};
    const std::string notStarted =
        "An error occured when trying to run the Volume contol (mixer)! If the program is stored "
        "in a different directory or has a different name correct the problem and retry, or run "
        "volume Control manually.";
    const std::string notActivated =
        "Warning! An error occured trying to activate the Volume Control \"Mixer \"1\"\"! Maybe "
        "the program has a different title, so you should run volume Control manually.";
    struct Case {
        std::optional<OpenWindow> mixer;
        std::optional<OpenWindow> opensAtOnce;
        bool works;
        bool activates;
        int starts;
        std::vector<std::uint32_t> activated;
        std::string message;
    };
    const std::vector<Case> cases{{open, {}, false, true, 0, {7}, ""},
                                  {open, {}, true, false, 0, {7}, notActivated},
                                  {{}, {}, true, true, 1, {}, ""},
                                  {{}, open, true, true, 1, {7}, ""},
                                  {{}, open, true, false, 1, {7}, notActivated},
                                  {{}, open, false, true, 1, {}, notStarted}};
    for (const Case& c : cases) {
        SCOPED_TRACE(&c - cases.data());
        FakeShell shell;
        shell.mixer = c.mixer;
        shell.opensAtOnce = c.opensAtOnce;
        shell.works = c.works;
        shell.activates = c.activates;
        ScriptedMsgBox msgBox;
        MostraControlloVolume(shell, msgBox);
        EXPECT_EQ(shell.starts, c.starts);
        EXPECT_EQ(shell.activated, c.activated);
        ASSERT_EQ(msgBox.shown.size(), c.message.empty() ? 0U : 1U);
        for (const Message& shown : msgBox.shown) {
            EXPECT_EQ(shown.text, c.message);
            EXPECT_EQ(shown.icon, Icon::Exclamation);
            EXPECT_EQ(shown.title, "Sonnel Karaoke Player");
        }
    }
}

}  // namespace
}  // namespace sonnel::test
