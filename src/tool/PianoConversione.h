#pragma once

#include "song/TestiMidi.h"

#include <filesystem>
#include <string>
#include <unordered_map>
#include <unordered_set>

namespace sonnel {

/// What is to be made of one karaoke file. The song is called like the file without the last four
/// characters of its name or, by the exact reading, without its extension; a name that is not UTF-8
/// counts as Windows-1252.
struct Conversione {
    std::string file;               ///< as it was named
    std::filesystem::path origine;  ///< as it stands on disk
    std::filesystem::path lyk;      ///< to write
    std::filesystem::path mid;      ///< the song's music
    bool copiaMid = false;          ///< the music is a copy of the file, else the file itself
    std::string errore;             ///< why nothing is done; "" when nothing stands in the way
};

/// What became of one karaoke file.
struct EsitoConversione {
    bool lykScritto = false;
    bool midScritto = false;
    bool intestazione = false;  ///< it says that it is a karaoke file
    bool parole = false;        ///< it has a page of words
    bool danneggiato = false;
    int eventi = 0;
    GenereParole genere = GenereParole::Nessuno;  ///< of the exact reading
    std::string errore;                           ///< a sentence with the file's name, or ""
};

/// Decides what each file of a command line becomes, in their order, so that no two of them write
/// the same song.
class PianoConversione {
  public:
    /// `directory`: of all output; "" for each file's own. Files that are there already stand in
    /// the way unless `sovrascrivi`.
    PianoConversione(std::string directory, bool sovrascrivi, bool esatta);

    [[nodiscard]] Conversione Prepara(const std::string& file);

  private:
    struct Cartella {
        std::string nome;                      ///< the same for every way to write its path
        std::unordered_set<std::string> file;  ///< names in folded case
    };

    Cartella& LeggiCartella(const std::filesystem::path& percorso);
    void ScegliUscite(Conversione& conversione);
    [[nodiscard]] bool Occupato(const Cartella& cartella, std::filesystem::path& file) const;

    std::string directory_;
    bool sovrascrivi_;
    bool esatta_;
    std::unordered_map<std::string, Cartella> cartelle_;
    std::unordered_set<std::string> brani_;
};

}  // namespace sonnel
