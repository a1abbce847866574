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

/// An event loop in which every page takes its time to be painted.
class SlowEvents : public ClockedEvents {
  public:
    SlowEvents(ManualClock& clock, double secondsPerTurn)
        : ClockedEvents(clock), clock_(clock), perTurn_(secondsPerTurn) {}
    void RunPending() override {
        ClockedEvents::RunPending();
        clock_.Advance(std::chrono::nanoseconds(static_cast<std::int64_t>(perTurn_ * 1e9)));
    }

  private:
    ManualClock& clock_;
    double perTurn_;
};

struct Machine {
    explicit Machine(double secondsForTenPages) : events(clock, secondsForTenPages / 10) {}
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
    SlowEvents events;
    MemoryRegistro registry;
    ScriptedMsgBox msgBox;
    RecordingPictureBox surface;
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
        Icon icon;
        int beeps;
        std::size_t boxes;
    };
    const std::vector<Case> cases = {
        {0.8, "0", ".8", "Good! System performances are perfect", Icon::Information, 0, 2},
        {1.0, "0", "1.", "just a little compensation!", Icon::Information, 0, 2},
        {1.5, "1", "1.5", "just a little compensation!", Icon::Information, 0, 2},
        {2.6, "2", "2.6", "just a little compensation!", Icon::Information, 0, 2},
        {3.7, "3", "3.7", "almost good", Icon::Information, 0, 2},
        {8.96, "8", "9.", "a bit low", Icon::Information, 0, 2},
        {9.2, "8", "9.2", "too low to let Sonnel", Icon::Critical, 1, 2},
        {20, "19", "20.", "ATTENZIONE!", Icon::Critical, 1, 3},
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
        EXPECT_EQ(told.icon, c.icon) << c.seconds;
        EXPECT_EQ(machine.events.beeps, c.beeps) << c.seconds;
        EXPECT_EQ(machine.events.turns, 11) << "each page is painted";
    }
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
