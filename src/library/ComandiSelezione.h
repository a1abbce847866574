#pragma once

#include <filesystem>
#include <vector>

namespace sonnel {

/// Commands of the song selection that others carry out.
class ComandiSelezione {
  public:
    virtual ~ComandiSelezione() = default;
    virtual void ConvertiKar() = 0;
    /// "Update index".
    virtual void SincronizzaDB() = 0;
    /// Adds the songs among files and folders and reports what became of them.
    virtual void AggiungiFile(const std::vector<std::filesystem::path>& percorsi) = 0;
};

}  // namespace sonnel
