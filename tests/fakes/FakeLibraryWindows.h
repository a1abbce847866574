#pragma once

#include "library/SincronizzaDB.h"
#include "platform/MsgBox.h"
#include "platform/SystemEvents.h"
#include "ui/basMessage.h"

#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace sonnel::test {

/// The windows that the library's commands work with, and the pointer: what happens to them is
/// kept in one list, in its order.
class FakeLibraryWindows : public ListaBrani, public FinestraMessaggio, public SystemEvents {
  public:
    void AggiornaLista() override { log.emplace_back("list"); }
    void SelezionaBrano(std::int16_t position) override {
        log.push_back("select " + std::to_string(position));
    }
    [[nodiscard]] std::int16_t BranoSelezionato() const override { return selected; }

    void MostraMessaggio(const std::string& text, bool withCancel) override {
        log.push_back("progress " + text + (withCancel ? " Cancel" : ""));
    }
    void ChiudiMessaggio() override { log.emplace_back("close"); }
    [[nodiscard]] bool Annullato() const override { return cancelled; }

    void RunPending() override { onTurn(++turns); }
    void WaitPending(std::chrono::milliseconds /*limit*/) override {}
    Pointer SetPointer(Pointer shown) override {
        if (shown != pointer) {
            log.emplace_back(shown == Pointer::Busy ? "busy" : "normal");
        }
        return std::exchange(pointer, shown);
    }
    void Beep() override {}

    FinestreDB Windows() {
        return {*this, *this,
                [this](bool enabled) { log.emplace_back(enabled ? "enable" : "disable"); }};
    }

    std::vector<std::string> log;
    std::int16_t selected = 0;
    bool cancelled = false;
    int turns = 0;
    std::function<void(int)> onTurn = [](int) {};  ///< called while events run
    Pointer pointer = Pointer::Normal;
};

}  // namespace sonnel::test
