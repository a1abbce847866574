#pragma once

#include <cstddef>
#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

#include <nlohmann/json.hpp>

namespace sonnel {

using Json = nlohmann::ordered_json;

/// What a command reports about one file.
// The JSON class asserts on moving. NOLINTNEXTLINE(bugprone-exception-escape)
struct Resoconto {
    Json json;                          ///< its "ok" says whether all is well
    std::string testo;                  ///< the same as text, every line with its end
    std::vector<std::string> messaggi;  ///< sentences for standard error, each with the file's name
};

/// How the JSON document is made of what was reported.
enum class Forma { Oggetto, Elenco };

/// The program's outputs: results on standard output, messages and progress on standard error.
class Uscite {
  public:
    /// `terminale`: standard error is a terminal, where progress is shown.
    Uscite(std::ostream& risultati, std::ostream& messaggi, bool terminale);

    /// Results become one JSON document instead of lines of text.
    void UsaJson() { json_ = true; }
    /// Writes the messages, and the result too unless it belongs into the JSON document.
    void Scrivi(Resoconto resoconto);
    /// Shows how far the work is, in place of what was shown before.
    void Avanza(const std::string& testo);
    /// Ends the output. Returns the exit status: 0 when everything reported is well and was
    /// written, else 1.
    [[nodiscard]] int Concludi(Forma forma);

  private:
    void Messaggio(std::string_view frase);
    void TogliAvanzamento();

    std::ostream& risultati_;
    std::ostream& messaggi_;
    bool terminale_;
    bool json_ = false;
    bool tuttoBene_ = true;
    std::size_t avanzamento_ = 0;  ///< width of what is shown
    std::vector<Json> oggetti_;
};

/// A text as one line of a terminal: each control character becomes a blank, CR LF one of them.
[[nodiscard]] std::string SuUnaRiga(std::string_view testo);

}  // namespace sonnel
