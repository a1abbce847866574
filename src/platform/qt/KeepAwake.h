#pragma once

#include <QObject>
#include <cstdint>
#include <optional>

namespace sonnel {

/// Keeps the screen from going dark, by the desktop's inhibition service on the session bus. Where
/// there is none nothing happens; nothing waits for an answer.
class KeepAwake final : public QObject {
  public:
    void Keep(bool awake);

  private:
    void Inhibit();
    void Release();

    bool wanted_ = false;
    bool asking_ = false;
    std::optional<std::uint32_t> cookie_;  ///< of the inhibition in force
};

}  // namespace sonnel
