#pragma once

#include "library/CaricaIndice.h"
#include "library/ListaBrani.h"
#include "song/LeggiIntestazione.h"

#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <cstdint>
#include <string>

namespace sonnel {

/// The window in which a song's title, author and album are changed and the albums are managed. It
/// shows the song selected in the list. Changes of albums take effect at once; the song itself is
/// not changed here.
class frmInfoBrano final : public QDialog {
  public:
    /// For the song at this position of the table. Library and list must outlive the window.
    frmInfoBrano(const Libreria& libreria, ListaBrani& lista, std::int16_t indiceBrano,
                 QWidget* parent);

    /// How the window was closed: "OK", or "" for Cancel.
    std::string Tag;
    /// The song's fields as typed.
    [[nodiscard]] Intestazione Campi() const;

    void AbilitaBottoni();
    void txt_Change();
    void cmbAlbum_Change();
    void cmbAlbum_Click();
    void cmdInserisciAlbum_Click();
    void cmdRinominaAlbum_Click();
    void cmdEliminaAlbum_Click();
    void cmdOk_Click();
    void cmdAnnulla_Click();
    /// Escape and the close button of the frame act as Cancel.
    void reject() override;
    void setVisible(bool visible) override;

  private:
    int CreaTesti(QVBoxLayout& colonna);
    QWidget* CreaAlbum(int larghezzaEtichette);
    void Disponi();
    void Collega();
    void Form_Load();
    [[nodiscard]] std::string TestoAlbum() const;
    int InserisciVoce(const std::string& album);
    void SelezionaVoce(int voce);

    const Libreria& libreria_;
    ListaBrani& lista_;

    QLineEdit* lblNomefile;
    QLineEdit* txtTitolo;
    QLineEdit* txtAutore;
    QComboBox* cmbAlbum;
    QPushButton* cmdInserisciAlbum;
    QPushButton* cmdRinominaAlbum;
    QPushButton* cmdEliminaAlbum;
    QPushButton* cmdOk;
    QPushButton* cmdAnnulla;

    bool Modificato = false;
    std::int16_t IndiceBrano;
    std::string UltimoAlbum;
    bool voceSelezionata_ = false;  ///< the album box shows an entry that was picked, not typed
};

/// Lets the user change the properties of the song at this position of the table and updates the
/// list, even if the list does not show that song.
void ProprietaBrano(const Libreria& libreria, ListaBrani& lista, std::int16_t posizione,
                    QWidget* parent);

}  // namespace sonnel
