#include "tool/Comandi.h"

#include "platform/Text.h"
#include "song/LeggiIntestazione.h"
#include "tool/Tenta.h"

#include <functional>
#include <iostream>
#include <limits>
#include <utility>

#include <CLI/CLI.hpp>

namespace sonnel {
namespace {

constexpr int UsoSbagliato = 2;

std::string Versione() {
    return "sonnel-tool " + std::to_string(SONNEL_VERSION_MAJOR) + "." +
           std::to_string(SONNEL_VERSION_MINOR) + "." + std::to_string(SONNEL_VERSION_REVISION);
}

/// Put at the end of an argument that looks like a list, which the parser would take apart. No
/// argument can hold this character by itself.
constexpr char FineArgomento = '\0';

std::vector<std::string> Argomenti(int argc, const char* const* argv) {
    std::vector<std::string> argomenti;  // the last one first
    for (int i = argc - 1; i > 0; --i) {
        std::string argomento = argv[i];
        if (argomento.starts_with('[') && argomento.ends_with(']')) {
            argomento += FineArgomento;
        }
        argomenti.push_back(std::move(argomento));
    }
    return argomenti;
}

std::string ErroreUso(const CLI::App* app, const CLI::Error& errore) {
    return std::string("sonnel-tool: ") + errore.what() + ".\n" + app->help();
}

/// What a command reports. An exception becomes its error.
Resoconto Riporta(const std::string& file, const std::function<Resoconto()>& comando) {
    Resoconto resoconto;
    if (const auto errore = Tenta(file, [&] { resoconto = comando(); })) {
        resoconto = {{{"file", file}, {"ok", false}, {"error", *errore}}, "", {*errore}};
    }
    return resoconto;
}

std::string RifiutaSeNonUtf8(const std::string& valore) {
    return IsValidUtf8(valore) ? "" : "the text is not UTF-8";
}

/// What the command line says.
struct Riga {
    bool json = false;
    std::string file;
    std::vector<std::string> elenco;
    Intestazione campi;
    bool ricostruisci = false;
    OpzioniConvert convert;
    OpzioniTrace trace;

    /// Removes the marks from the ends of arguments.
    void TogliFini() {
        for (std::string& nome : elenco) {
            std::erase(nome, FineArgomento);
        }
        for (std::string* testo :
             {&file, &campi.Titolo, &campi.Autore, &campi.Album, &convert.directory}) {
            std::erase(*testo, FineArgomento);
        }
    }
};

/// The grammar of the command line and the command that it chose.
class Grammatica {
  public:
    explicit Grammatica(Uscite& uscite);
    Grammatica(const Grammatica&) = delete;
    Grammatica& operator=(const Grammatica&) = delete;
    ~Grammatica() = default;

    [[nodiscard]] int Esegui(int argc, const char* const* argv);

  private:
    using PerFile = Resoconto (*)(const std::string& file);

    /// A command that reports on one thing.
    CLI::App& UnFile(const std::string& nome, const std::string& scopo, const std::string& cosa,
                     std::function<Resoconto()> comando);
    /// A command that works on many files.
    CLI::App& MoltiFile(const std::string& nome, const std::string& scopo,
                        std::function<void()> comando);
    void PerOgnuno(const std::string& nome, const std::string& scopo, PerFile comando);
    void AggiungiSetHeader();
    void AggiungiIndex();
    void AggiungiConvert();
    void AggiungiAdd();
    void AggiungiTrace();

    Uscite& uscite_;
    Riga riga_;
    CLI::App app_{"Works on karaoke songs as the player Sonnel does."};
    std::function<void()> scelto_;
    Forma forma_ = Forma::Oggetto;
};

Grammatica::Grammatica(Uscite& uscite) : uscite_(uscite) {
    app_.name("sonnel-tool");
    app_.fallthrough();
    app_.require_subcommand(1);
    app_.failure_message(ErroreUso);
    app_.set_version_flag("--version", Versione(), "Print the version and exit");
    app_.add_flag("--json", riga_.json, "Print one JSON document instead of text");
    UnFile("show", "Show what a song says about itself, and its timeline", "FILE.lyk",
           [this] { return ComandoShow(riga_.file); });
    PerOgnuno("header", "Show title, author and album of songs", ComandoHeader);
    AggiungiSetHeader();
    AggiungiIndex();
    AggiungiConvert();
    AggiungiAdd();
    PerOgnuno("midi", "Tell what is in MIDI files", ComandoMidi);
    PerOgnuno("check", "Report what a singer would stumble over", ComandoCheck);
    AggiungiTrace();
}

CLI::App& Grammatica::UnFile(const std::string& nome, const std::string& scopo,
                             const std::string& cosa, std::function<Resoconto()> comando) {
    CLI::App& app = *app_.add_subcommand(nome, scopo);
    app.add_option(cosa, riga_.file)->required();
    app.callback([this, comando = std::move(comando)] {
        forma_ = Forma::Oggetto;
        scelto_ = [this, comando] { uscite_.Scrivi(Riporta(riga_.file, comando)); };
    });
    return app;
}

CLI::App& Grammatica::MoltiFile(const std::string& nome, const std::string& scopo,
                                std::function<void()> comando) {
    CLI::App& app = *app_.add_subcommand(nome, scopo);
    app.add_option("FILE", riga_.elenco)->required();
    app.callback([this, comando = std::move(comando)] {
        forma_ = Forma::Elenco;
        scelto_ = comando;
    });
    return app;
}

void Grammatica::PerOgnuno(const std::string& nome, const std::string& scopo, PerFile comando) {
    MoltiFile(nome, scopo, [this, comando] {
        for (const std::string& file : riga_.elenco) {
            uscite_.Scrivi(Riporta(file, [&] { return comando(file); }));
        }
    });
}

void Grammatica::AggiungiSetHeader() {
    CLI::App& app = UnFile("set-header", "Rewrite title, author and album of a song", "FILE.lyk",
                           [this] { return ComandoSetHeader(riga_.file, riga_.campi); });
    const CLI::Validator utf8(RifiutaSeNonUtf8, "");
    app.add_option("--title", riga_.campi.Titolo)->required()->check(utf8);
    app.add_option("--author", riga_.campi.Autore)->required()->check(utf8);
    app.add_option("--album", riga_.campi.Album, "\"?\" for none")->required()->check(utf8);
}

void Grammatica::AggiungiIndex() {
    CLI::App& app = UnFile("index", "List the index of a library directory", "DIR", [this] {
        return ComandoIndex(riga_.file, riga_.ricostruisci, uscite_);
    });
    app.add_flag("--rebuild", riga_.ricostruisci, "Rebuild it first from the songs that are there");
}

void Grammatica::AggiungiConvert() {
    CLI::App& app = MoltiFile("convert", "Convert karaoke MIDI files into songs",
                              [this] { ComandoConvert(riga_.elenco, riga_.convert, uscite_); });
    app.add_option("--output", riga_.convert.directory,
                   "Directory for the songs instead of each file's own");
    app.add_flag("--force", riga_.convert.sovrascrivi, "Replace songs that are there already");
    app.add_flag("--exact", riga_.convert.esatta,
                 "Read any MIDI file with words, with times by its whole tempo map");
}

void Grammatica::AggiungiAdd() {
    CLI::App& app = *app_.add_subcommand("add", "Add songs to a library and its index");
    app.add_option("DIR", riga_.file)->required();
    app.add_option("FILE", riga_.elenco)->required();
    app.callback([this] {
        forma_ = Forma::Elenco;
        scelto_ = [this] { ComandoAdd(riga_.file, riga_.elenco, uscite_); };
    });
}

void Grammatica::AggiungiTrace() {
    CLI::App& app = UnFile("trace", "Show what the lyrics display would show, and when", "SONG",
                           [this] { return ComandoTrace(riga_.file, riga_.trace); });
    app.add_option("--report-ms", riga_.trace.intervallo,
                   "Milliseconds between two reports of the sequencer")
        ->capture_default_str()
        ->check(CLI::Range(1, std::numeric_limits<std::int32_t>::max()));
    app.add_option("--compensation", riga_.trace.compensazione,
                   "Tenths of a second by which words come early")
        ->capture_default_str();
}

int Grammatica::Esegui(int argc, const char* const* argv) {
    try {
        app_.parse(Argomenti(argc, argv));
    } catch (const CLI::ParseError& errore) {
        return app_.exit(errore) == 0 ? uscite_.Concludi(Forma::Oggetto) : UsoSbagliato;
    }
    riga_.TogliFini();
    if (riga_.json) {
        uscite_.UsaJson();
    }
    scelto_();
    return uscite_.Concludi(forma_);
}

}  // namespace

int EseguiStrumento(int argc, const char* const* argv, Uscite& uscite) {
    return Grammatica(uscite).Esegui(argc, argv);
}

}  // namespace sonnel
