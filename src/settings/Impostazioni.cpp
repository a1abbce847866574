#include "settings/Impostazioni.h"

#include "platform/Paths.h"
#include "settings/TestoNumero.h"
#include "settings/basRegistry.h"
#include "ui/basCommon.h"

#include <system_error>
#include <variant>

namespace sonnel {
namespace {

constexpr RegistryRoot Radice = RegistryRoot::CurrentUser;

std::string PercorsoSezione(std::string_view sezione) {
    std::string percorso(PlayerPath);
    if (!sezione.empty()) {
        percorso.append("\\").append(sezione);
    }
    return percorso;
}

/// The settings of one section. Defaults go through the same conversion as what is stored.
class Sezione {
  public:
    Sezione(Registry& registro, std::string_view nome) : registro_(registro), nome_(nome) {}

    std::string Testo(std::string_view chiave, std::string_view predefinito) {
        return LeggiImpostazione(registro_, nome_, chiave, predefinito);
    }
    std::int32_t Numero(std::string_view chiave, std::int32_t predefinito) {
        return Intero(Testo(chiave, TestoNumero(predefinito))).value_or(predefinito);
    }
    bool Interruttore(std::string_view chiave, bool predefinito) {
        return LeggiInterruttore(registro_, nome_, chiave, predefinito);
    }
    /// A switch that any number other than 0 turns on.
    bool Logico(std::string_view chiave, bool predefinito) {
        const auto numero = Decimale(Testo(chiave, TestoLogico(predefinito)));
        return numero ? *numero != 0 : predefinito;
    }
    /// A font size: nothing is drawn in a size of 0 or less or one beyond what fonts come in.
    float Punti(std::string_view chiave, float predefinito) {
        constexpr float Massimo = 2160;
        const float punti = Decimale(Testo(chiave, TestoNumero(predefinito))).value_or(predefinito);
        return punti > 0 && punti <= Massimo ? punti : predefinito;
    }

  private:
    Registry& registro_;
    std::string_view nome_;
};

/// Makes the karaoke directory; loading the library reports one that is still missing.
void CreaDirectory(const std::string& percorso) {
    const std::filesystem::path directory = PathFromUtf8(percorso);
    std::error_code ignorato;
    if (!std::filesystem::is_directory(directory, ignorato)) {
        std::filesystem::create_directory(directory, ignorato);
    }
}

}  // namespace

std::string LeggiImpostazione(Registry& registro, std::string_view sezione, std::string_view chiave,
                              std::string_view predefinito) {
    const RegistryValue valore = LeggiChiave(registro, Radice, PercorsoSezione(sezione), chiave);
    if (const auto* const numero = std::get_if<std::int32_t>(&valore)) {
        return TestoNumero(*numero);
    }
    std::string testo = std::get<std::string>(valore);
    if (testo == ChiaveAssente) {
        return std::string(predefinito);
    }
    testo.resize(testo.find_last_not_of('\0') + 1);
    return testo;
}

bool LeggiInterruttore(Registry& registro, std::string_view sezione, std::string_view chiave,
                       bool predefinito) {
    const auto numero =
        InteroBreve(LeggiImpostazione(registro, sezione, chiave, TestoLogico(predefinito)));
    return numero ? *numero != 0 : predefinito;
}

void SalvaImpostazione(Registry& registro, std::string_view sezione, std::string_view chiave,
                       std::string_view valore) {
    ScriviChiave(registro, Radice, PercorsoSezione(sezione), chiave, std::string(valore));
}

void RimuoviImpostazione(Registry& registro, std::string_view sezione, std::string_view chiave) {
    registro.Remove({Radice, PercorsoSezione(sezione)}, chiave);
}

Config CaricaConfig(Registry& registro, int larghezzaSchermo, std::string_view openDirPredefinita) {
    Config config;
    Sezione colori(registro, "Colori");
    config.ColoreTesto = colori.Numero("Testo", config.ColoreTesto);
    config.ColoreOmbra = colori.Numero("Ombreggiatura", config.ColoreOmbra);
    config.ColoreSelezione = colori.Numero("Selezione", config.ColoreSelezione);
    config.ColoreSfondo = colori.Numero("Sfondo", config.ColoreSfondo);

    Sezione font(registro, "Font");
    config.AutoFont = font.Interruttore("AutoFont", config.AutoFont);
    config.FontName = font.Testo("Nome", config.FontName);
    config.FontSize = font.Punti("Dimensione", config.FontSize);
    config.FontBold = font.Interruttore("Grassetto", config.FontBold);

    Sezione finestra(registro, "Finestra");
    config.WinTop = finestra.Numero("Top", config.WinTop);
    config.WinLeft = finestra.Numero("Left", config.WinLeft);
    config.WinWidth = finestra.Numero("Width", larghezzaSchermo);
    config.WinHeight = finestra.Numero("Height", config.WinHeight);
    config.FullScreen = finestra.Interruttore("FullScreen", config.FullScreen);

    Sezione opzioni(registro, "Opzioni");
    config.Ombra = opzioni.Interruttore("Ombra", config.Ombra);
    config.Compensazione = opzioni.Numero("Compensazione", config.Compensazione);
    config.Autoplay = opzioni.Logico("Autoplay", config.Autoplay);
    config.OpenDir = AggiungiBarra(opzioni.Testo("OpenDir", openDirPredefinita));
    CreaDirectory(config.OpenDir);
    return config;
}

std::filesystem::path DirectoryKaraoke(const std::filesystem::path& dirProgramma, bool scrivibile,
                                       const Environment& ambiente) {
    const std::filesystem::path dati = UserDataDirectory(ambiente);
    std::error_code ignorato;
    const bool installato =
        std::filesystem::is_directory(dirProgramma.parent_path() / "share" / "sonnel", ignorato);
    const bool accanto = (scrivibile && !installato) || dati.empty();
    return (accanto ? dirProgramma : dati / "sonnel") / "Karaoke" / "";
}

}  // namespace sonnel
