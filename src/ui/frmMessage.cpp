#include "ui/frmMessage.h"

#include "platform/MsgBox.h"
#include "platform/Numbers.h"
#include "platform/qt/PaintNow.h"
#include "platform/qt/WindowInUse.h"
#include "ui/frmCentraForm.h"

#include <QVBoxLayout>
#include <algorithm>

namespace sonnel {
namespace {

constexpr int LarghezzaMinima = 4800;  // twips
constexpr int AltezzaSenzaAnnulla = 1500;
constexpr int AltezzaConAnnulla = 2250;
constexpr int MargineTesto = 16;  // pixels

}  // namespace

frmMessage::frmMessage(const Screen& schermo)
    : schermo_(schermo), pnlMessage(new QLabel(this)), cmdCancel(new QPushButton("Cancel", this)) {
    setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint);
    setWindowTitle(Message::UsualTitle);
    QFont font = pnlMessage->font();
    font.setFamily("MS Sans Serif");
    pnlMessage->setFont(font);
    pnlMessage->setTextFormat(Qt::PlainText);
    pnlMessage->setAlignment(Qt::AlignCenter);
    pnlMessage->setFrameStyle(QFrame::Panel | QFrame::Raised);
    pnlMessage->setMargin(MargineTesto);
    connect(cmdCancel, &QPushButton::clicked, this, &frmMessage::cmdCancel_Click);

    auto* colonna = new QVBoxLayout(this);
    colonna->addWidget(pnlMessage, 1);
    colonna->addWidget(cmdCancel, 0, Qt::AlignHCenter);
}

void frmMessage::MostraMessaggio(const std::string& testo, bool mostraAnnulla) {
    const bool apri = !isVisible();
    if (apri) {
        Carica();
    }
    pnlMessage->setText(QString::fromStdString(testo));
    if (!mostraAnnulla) {
        cmdCancel->hide();
    }
    Centra(cmdCancel->isHidden() ? AltezzaSenzaAnnulla : AltezzaConAnnulla);
    show();
    // Paint now: the work that follows keeps the event loop busy.
    PaintNow(*this);
}

void frmMessage::Carica() {
    // A child of the active window, so that Cancel works even if that window is modal.
    setParent(WindowInUse(), windowFlags());
    annullato_ = false;
    cmdCancel->setEnabled(true);
    cmdCancel->show();
}

/// Sets the height (twips) and a width that fits the text, and centres the window on the screen.
void frmMessage::Centra(int altezza) {
    const double twips = schermo_.TwipsPerPixel();
    const auto pixel = [twips](double valore) { return RoundHalfEven<int>(valore / twips); };
    setFixedSize(std::max(pixel(LarghezzaMinima), sizeHint().width()), pixel(altezza));
    CentraForm(*this, schermo_);
}

void frmMessage::ChiudiMessaggio() {
    annullato_ = false;
    hide();
    // Otherwise it would be deleted together with that window.
    setParent(nullptr, windowFlags());
}

void frmMessage::cmdCancel_Click() {
    annullato_ = true;
    cmdCancel->setEnabled(false);
}

void frmMessage::reject() {
    if (!cmdCancel->isHidden()) {
        cmdCancel->click();
    }
}

}  // namespace sonnel
