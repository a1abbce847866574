#pragma once

namespace sonnel {

/// Commands of the song selection that others carry out.
class ComandiSelezione {
  public:
    virtual ~ComandiSelezione() = default;
    virtual void ConvertiKar() = 0;
    /// "Update index".
    virtual void SincronizzaDB() = 0;
};

}  // namespace sonnel
