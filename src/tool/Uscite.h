#pragma once

#include <cstddef>
#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

#include <nlohmann/json.hpp>

namespace sonnel {

using Json = nlohmann::ordered_json;

/// What a command has to say about one file.
struct Resoconto {
    Json json;                          ///< its "ok" tells whether all is well
    std::string testo;                  ///< the same for people, every line with its end
    std::vector<std::string> messaggi;  ///< sentences for people, each with the file's name
};

/// How the JSON document is made of what was reported.
enum class Forma { Oggetto, Elenco };

/// What the program says: results on standard output, messages and progress on standard error.
class Uscite {
  public:
    /// `terminale`: standard error is looked at by a person, who gets to see progress.
    Uscite(std::ostream& risultati, std::ostream& messaggi, bool terminale);

    /// Results as one JSON document instead of lines for people.
    void UsaJson() { json_ = true; }
    /// Tells the messages, and the result at once unless it waits for the document.
    void Scrivi(Resoconto resoconto);
    /// Shows how far the work has come, in the place of what was shown before.
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
