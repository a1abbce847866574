#pragma once

#include "platform/EventiSistema.h"

namespace sonnel {

/// The busy pointer while it lives; then the pointer that was shown before.
class PuntatoreOccupato {
  public:
    explicit PuntatoreOccupato(EventiSistema& eventi)
        : eventi_(&eventi), prima_(eventi.SetPointer(Pointer::Busy)) {}
    PuntatoreOccupato(const PuntatoreOccupato&) = delete;
    PuntatoreOccupato& operator=(const PuntatoreOccupato&) = delete;
    ~PuntatoreOccupato() { Ripristina(); }

    /// Ends it early, as before a message.
    void Ripristina() {
        if (eventi_ != nullptr) {
            eventi_->SetPointer(prima_);
            eventi_ = nullptr;
        }
    }

  private:
    EventiSistema* eventi_;
    Pointer prima_;
};

}  // namespace sonnel
