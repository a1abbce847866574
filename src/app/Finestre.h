#pragma once

#include "library/CaricaIndice.h"
#include "library/ComandiSelezione.h"
#include "library/SincronizzaDB.h"
#include "library/frmSelectSong.h"
#include "platform/CommonDialog.h"
#include "player/window/AltreFinestre.h"
#include "player/window/frmKaraoke.h"
#include "settings/Opzioni.h"
#include "ui/frmMessage.h"

#include <memory>
#include <optional>
#include <random>

namespace sonnel {

/// All windows of the program and what they share: the settings and the library. The song selection
/// window is created at its first use and then only hidden.
class Finestre final : private AltreFinestre, private ComandiSelezione {
  public:
    /// The doors that the windows use; all must outlive the windows.
    struct Porte {
        Registry& registro;
        MMControl& sequencer;
        MsgBox& msgBox;
        SystemEvents& eventi;
        const Clock& orologio;
        const Screen& schermo;
        Shell& shell;
        CommonDialog& dialoghi;
    };
    Finestre(const Porte& porte, frmKaraoke::Avvio avvio, std::filesystem::path fileCoda);

    [[nodiscard]] frmKaraoke& Principale() { return principale_; }

  private:
    std::optional<FileBrano> ScegliBrano() override;
    void RileggiDB() override;
    void SincronizzaDB() override;
    void MostraOpzioni() override;
    void CaricaLibreria() override;
    std::vector<RigaElenco> ElencoBrani() override;
    [[nodiscard]] std::uint64_t VersioneBrani() const override { return brani_.Versione(); }
    Result<Turno> TurnoDelBrano(std::int16_t posizione) override;
    void ConvertiKar() override;
    std::optional<std::string> Accoda(std::int16_t posizione) override;
    void AggiungiFile(const std::vector<std::filesystem::path>& percorsi) override;

    [[nodiscard]] FinestreDB FinestreLibreria();
    [[nodiscard]] frmSelectSong& Selezione();
    [[nodiscard]] PartiOpzioni Opzioni();

    Porte p_;
    Config config_;
    Timeline timeline_;
    InformazioniBrano informazioni_;
    TabellaBrani brani_;
    std::mt19937 caso_;
    Libreria libreria_;
    frmMessage messaggio_;
    Coda coda_;
    frmKaraoke principale_;
    std::unique_ptr<frmSelectSong> selezione_;
};

}  // namespace sonnel
