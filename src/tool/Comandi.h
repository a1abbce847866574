#pragma once

#include "tool/Uscite.h"

#include <cstdint>
#include <string>
#include <vector>

namespace sonnel {

struct Intestazione;

// The commands, each in a file of its own. One that takes many files is called for each of them.
//
// To add one: declare its function here, write it in a file Comando*.cpp, name it with its options
// in Grammatica (Comandi.cpp), and explain it in packaging/sonnel-tool.1 and sonnel-tool.bash (a
// test finds what is missing there). A command reports its result as a Resoconto and writes nothing
// to the outputs itself.

[[nodiscard]] Resoconto ComandoShow(const std::string& file);
[[nodiscard]] Resoconto ComandoHeader(const std::string& file);
[[nodiscard]] Resoconto ComandoSetHeader(const std::string& file, const Intestazione& campi);
[[nodiscard]] Resoconto ComandoMidi(const std::string& file);
[[nodiscard]] Resoconto ComandoCheck(const std::string& file);

/// `ricostruisci`: after a rebuild, whose progress is shown.
[[nodiscard]] Resoconto ComandoIndex(const std::string& directory, bool ricostruisci,
                                     Uscite& uscite);

struct OpzioniTrace {
    std::int32_t intervallo = 20;    ///< ms between the virtual sequencer's reports, at least 1
    std::int32_t compensazione = 0;  ///< tenths of a second
};
[[nodiscard]] Resoconto ComandoTrace(const std::string& brano, const OpzioniTrace& opzioni);

struct OpzioniConvert {
    std::string directory;  ///< of the output; "": beside each file
    bool sovrascrivi = false;
    bool esatta = false;  ///< by the exact reading
};
/// Reports on all files, in their order.
void ComandoConvert(const std::vector<std::string>& file, const OpzioniConvert& opzioni,
                    Uscite& uscite);

/// Adds songs to the library in a directory.
void ComandoAdd(const std::string& directory, const std::vector<std::string>& file, Uscite& uscite);

/// Carries out a command line; returns the exit status.
[[nodiscard]] int EseguiStrumento(int argc, const char* const* argv, Uscite& uscite);

}  // namespace sonnel
