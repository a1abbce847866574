#pragma once

#include "player/window/AltreFinestre.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace sonnel::test {

/// Keeps what was asked of library and options, in order.
class OtherWindows : public AltreFinestre {
  public:
    std::optional<FileBrano> ScegliBrano() override {
        called.emplace_back("choose");
        return choice;
    }
    void RileggiDB() override { called.emplace_back("reload"); }
    void SincronizzaDB() override { called.emplace_back("update"); }
    void MostraOpzioni() override {
        called.emplace_back("options");
        options();
    }
    void CaricaLibreria() override { called.emplace_back("load library"); }
    std::vector<RigaElenco> ElencoBrani() override { return songs; }
    std::uint64_t VersioneBrani() const override { return 1; }
    Result<Turno> TurnoDelBrano(std::int16_t position) override {
        return turns.at(static_cast<std::size_t>(position) - 1);
    }

    std::vector<RigaElenco> songs;
    std::vector<Turno> turns;
    std::optional<FileBrano> choice;
    std::function<void()> options = [] {};
    std::vector<std::string> called;
};

}  // namespace sonnel::test
