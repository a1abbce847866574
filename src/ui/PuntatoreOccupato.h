#pragma once

#include "platform/SystemEvents.h"

namespace sonnel {

/// Shows the busy pointer during its lifetime; then the pointer from before, or a given one.
class PuntatoreOccupato {
  public:
    explicit PuntatoreOccupato(SystemEvents& eventi)
        : eventi_(&eventi), dopo_(eventi.SetPointer(Pointer::Busy)) {}
    PuntatoreOccupato(SystemEvents& eventi, Pointer dopo) : eventi_(&eventi), dopo_(dopo) {
        eventi.SetPointer(Pointer::Busy);
    }
    PuntatoreOccupato(const PuntatoreOccupato&) = delete;
    PuntatoreOccupato& operator=(const PuntatoreOccupato&) = delete;
    ~PuntatoreOccupato() { Ripristina(); }

    /// Ends it early, for example before a message.
    void Ripristina() {
        if (eventi_ != nullptr) {
            eventi_->SetPointer(dopo_);
            eventi_ = nullptr;
        }
    }

  private:
    SystemEvents* eventi_;
    Pointer dopo_;
};

/// Shows the normal pointer during its lifetime, for a message in the middle of work; then the
/// pointer from before.
class PuntatoreNormale {
  public:
    explicit PuntatoreNormale(SystemEvents& eventi)
        : eventi_(eventi), prima_(eventi.SetPointer(Pointer::Normal)) {}
    PuntatoreNormale(const PuntatoreNormale&) = delete;
    PuntatoreNormale& operator=(const PuntatoreNormale&) = delete;
    ~PuntatoreNormale() { eventi_.SetPointer(prima_); }

  private:
    SystemEvents& eventi_;
    Pointer prima_;
};

}  // namespace sonnel
