#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace sonnel {

/// Commands of the song selection that are carried out outside it.
class ComandiSelezione {
  public:
    virtual ~ComandiSelezione() = default;
    virtual void ConvertiKar() = 0;
    /// "Update index".
    virtual void SincronizzaDB() = 0;
    /// Appends the song at a position to the queue. Returns a sentence for the user; nothing when
    /// that failed, which a message has reported.
    virtual std::optional<std::string> Accoda(std::int16_t posizione) = 0;
    /// Adds the songs among files and folders and reports what became of them.
    virtual void AggiungiFile(const std::vector<std::filesystem::path>& percorsi) = 0;
};

}  // namespace sonnel
