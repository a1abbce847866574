#include "fakes/ClockedEvents.h"
#include "fakes/FakeMainWindow.h"
#include "fakes/MemoryRegistro.h"
#include "fakes/RecordingPictureBox.h"
#include "fakes/ScriptedMsgBox.h"
#include "player/Calibratura.h"
#include "settings/Impostazioni.h"

#include <gmock/gmock.h>

namespace sonnel::test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

/// Keeps what is on the surface at every turn of the event loop.
class Watcher : public ClockedEvents {
  public:
    Watcher(ManualClock& clock, const RecordingPictureBox& surface)
        : ClockedEvents(clock), surface_(surface) {}
    void RunPending() override {
        std::string words;
        for (const auto& print : surface_.printed) {
            words += print.text + "|";
        }
        seen.push_back(words + std::to_string(surface_.font.size));
        ClockedEvents::RunPending();
    }
    std::vector<std::string> seen;

  private:
    const RecordingPictureBox& surface_;
};

/// A machine that takes so long to paint ten pages.
struct Machine {
    explicit Machine(double secondsForTenPages) {
        events.perTurn = std::chrono::duration_cast<std::chrono::nanoseconds>(
            std::chrono::duration<double>(secondsForTenPages / 10));
    }
    void Calibrate() {
        Calibratura({config, surface, drawing, layout, registry, msgBox, events, clock, [] {}})
            .EseguiCalibratura();
    }
    std::string Stored() {
        return LeggiImpostazione(registry, "Opzioni", "Compensazione", "nothing");
    }

    Config config;
    Timeline timeline;
    ManualClock clock;
    RecordingPictureBox surface;
    Watcher events{clock, surface};
    MemoryRegistro registry;
    ScriptedMsgBox msgBox;
    FakeMainWindow window;
    ImpaginazioneParole layout{config, timeline, surface, window, msgBox};
    DisegnoParole drawing{config, surface, window, layout};
};

TEST(Calibration, JudgesTheMachineByTheTimeOfTenPages) {
    struct Case {
        double seconds;
        std::string stored;
        std::string firstLine;
        std::string judgement;
        int beeps;
        std::size_t boxes;
    };
    const std::vector<Case> cases = {
        {0.8, "0", ".8", "Good! System performances are perfect", 0, 2},
        {1.0, "0", "1.", "just a little compensation!", 0, 2},
        {1.5, "1", "1.5", "just a little compensation!", 0, 2},
        {2.6, "2", "2.6", "just a little compensation!", 0, 2},
        {3.7, "3", "3.7", "almost good", 0, 2},
        {8.96, "8", "9.", "a bit low", 0, 2},
        {9.2, "8", "9.2", "too low to let Sonnel", 1, 2},
        {20, "19", "20.", "ATTENZIONE!", 1, 3},
    };
    for (const Case& c : cases) {
        Machine machine(c.seconds);
        machine.Calibrate();
        EXPECT_EQ(machine.Stored(), c.stored) << c.seconds;
        EXPECT_EQ(std::to_string(machine.config.Compensazione), c.stored);
        ASSERT_EQ(machine.msgBox.shown.size(), c.boxes) << c.seconds;
        const Message& told = machine.msgBox.shown[1];
        EXPECT_THAT(told.text, StartsWith("Test duration: " + c.firstLine + " seconds.\r\n"));
        EXPECT_THAT(told.text, HasSubstr(c.judgement));
        EXPECT_EQ(told.icon, c.beeps > 0 ? Icon::Critical : Icon::Information) << c.seconds;
        EXPECT_EQ(machine.events.beeps, c.beeps) << c.seconds;
        EXPECT_EQ(machine.events.turns, 11) << "each page is painted";
    }
}

TEST(Calibration, DrawsTenPagesInTheFontOfTheSettings) {
    Machine machine(0.8);
    machine.config.FontSize = 30;
    machine.config.Ombra = 0;
    machine.Calibrate();
    ASSERT_EQ(machine.events.seen.size(), 11U);
    EXPECT_EQ(machine.events.seen[0], "30.000000") << "an empty area first";
    for (int page = 1; page <= 10; ++page) {
        EXPECT_EQ(machine.events.seen.at(static_cast<std::size_t>(page)),
                  "Test page|number " + std::to_string(page) + "|*******|***|30.000000");
    }
    EXPECT_TRUE(machine.surface.printed.empty());
}

TEST(Calibration, DecliningOrMidnightTellsNothing) {
    Machine declined(2);
    declined.msgBox.answers = {Answer::Cancel};
    declined.Calibrate();
    EXPECT_EQ(declined.Stored(), "nothing");
    EXPECT_EQ(declined.config.Compensazione, -1);
    EXPECT_EQ(declined.msgBox.shown.size(), 1U);
    EXPECT_EQ(declined.msgBox.shown[0].buttons, Buttons::OkCancel);

    Machine midnight(10);
    midnight.clock.startOfDay = 86395;
    midnight.Calibrate();
    EXPECT_EQ(midnight.Stored(), "0");
    EXPECT_EQ(midnight.msgBox.shown.size(), 1U);
}

}  // namespace
}  // namespace sonnel::test
