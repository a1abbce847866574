#include "ui/frmSplash.h"

#include "ui/Titoli.h"

#include <QPainter>
#include <QVBoxLayout>
#include <string>
#include <utility>

namespace sonnel {
namespace {

constexpr QSize Misura(480, 270);
constexpr int Margine = 36;  // left edge of the drawing in the picture
constexpr int DurataAvvio = 5000;

QLabel* Etichetta(const std::string& testo, int pixel, bool grassetto, QWidget* parent) {
    auto* etichetta = new QLabel(QString::fromStdString(testo), parent);
    QFont font = etichetta->font();
    font.setPixelSize(pixel);
    font.setBold(grassetto);
    etichetta->setFont(font);
    etichetta->setStyleSheet("color: #f5f0e6;");
    return etichetta;
}

std::string Versione() {
    return "Version " + std::to_string(SONNEL_VERSION_MAJOR) + "." +
           std::to_string(SONNEL_VERSION_MINOR) + "." + std::to_string(SONNEL_VERSION_REVISION) +
           "beta";
}

}  // namespace

frmSplash::frmSplash(Modo modo, QWidget* parent)
    : QDialog(parent),
      imgLogo(QString(":/splash.svg")),
      lblProductName(Etichetta(std::string(TitoloProgramma), 26, true, this)),
      lblVersion(Etichetta(Versione(), 14, false, this)),
      lblPlatform(Etichetta("for Windows 95", 14, false, this)),
      cmdOk(new QPushButton("&Ok", this)) {
    setAttribute(Qt::WA_QuitOnClose, false);
    setFixedSize(Misura);
    setWindowTitle(QString::fromStdString(std::string(TitoloProgramma)));
    tmrClose.setSingleShot(true);
    connect(&tmrClose, &QTimer::timeout, this, &frmSplash::tmrClose_Timer);
    // No maximise button: the size is fixed.
    setWindowFlags(modo == Modo::Avvio ? Qt::SplashScreen | Qt::FramelessWindowHint
                                       : Qt::Dialog | Qt::CustomizeWindowHint |
                                             Qt::WindowTitleHint | Qt::WindowCloseButtonHint);
    if (modo == Modo::Avvio) {
        tmrClose.start(DurataAvvio);
    }
    cmdOk->setVisible(modo == Modo::Informazioni);
    cmdOk->setDefault(true);
    connect(cmdOk, &QPushButton::clicked, this, &frmSplash::cmdOk_Click);

    auto* fila = new QHBoxLayout;
    fila->addWidget(lblPlatform, 1);
    fila->addWidget(cmdOk);
    auto* colonna = new QVBoxLayout(this);
    colonna->setContentsMargins(Margine, 0, 16, 16);
    colonna->addStretch(1);
    colonna->addWidget(lblProductName);
    colonna->addWidget(lblVersion);
    colonna->addLayout(fila);
}

void frmSplash::cmdOk_Click() {
    done(Accepted);
}

void frmSplash::tmrClose_Timer() {
    done(Accepted);
}

void frmSplash::done(int result) {
    QDialog::done(result);
    // done() can be called more than once.
    if (const auto unload = std::exchange(onUnload, nullptr)) {
        unload();
    }
}

void frmSplash::reject() {
    if (isModal()) {
        QDialog::reject();
    }
}

void frmSplash::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    imgLogo.render(&painter, rect());
}

}  // namespace sonnel
