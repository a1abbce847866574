#include "player/window/frmTurni.h"

#include "platform/qt/FileDrop.h"

#include <QApplication>
#include <QEvent>
#include <QMenu>
#include <QToolTip>
#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

namespace sonnel {

Turni::Turni(QWidget& finestra, Parti parti)
    : QObject(&finestra),
      p_(std::move(parti)),
      finestra_(finestra),
      prossimo_({p_.coda, p_.registro, p_.sequencer, timer_,
                 [this] {
                     return QApplication::activeModalWidget() != nullptr || !finestra_.isEnabled();
                 },
                 [this] { MostraAnnuncio(); },
                 [this](const Turno& turno) {
                     // One that stays in the queue would begin again and again.
                     if (Togli(turno) && !Suona(turno)) {
                         prossimo_.BranoFinito();  // announces the one after it
                     }
                 }}),
      carta_(new CartaAnnuncio(
          p_.area, p_.barra, p_.config,
          [this]() -> const std::optional<Annuncio>& { return prossimo_.Corrente(); })),
      azione_(new QAction("&Queue...", this)),
      comincia_(new QAction("&Start", this)),
      ferma_(new QAction(this)) {
    azione_->setShortcut(Qt::CTRL | Qt::Key_U);
    comincia_->setShortcut(Qt::CTRL | Qt::Key_F2);
    connect(azione_, &QAction::triggered, this, &Turni::Apri);
    ferma_->setShortcuts({Qt::Key_F3, Qt::Key_F4});
    ferma_->setEnabled(false);
    connect(ferma_, &QAction::triggered, this, [this] { prossimo_.Termina(); });
    finestra.installEventFilter(this);
    p_.cantanti.installEventFilter(this);
    connect(p_.cantanti.AzioneMenu()->menu(), &QMenu::triggered, this, &Turni::MostraAnnuncio);
}

/// The announcement moves between the windows when the lyrics window is shown or hidden, and when
/// the full screen begins or ends.
bool Turni::eventFilter(QObject* oggetto, QEvent* evento) {
    constexpr std::array Cambi{QEvent::Show, QEvent::Hide, QEvent::WindowStateChange};
    if (Corrente() && std::ranges::find(Cambi, evento->type()) != Cambi.end()) {
        QMetaObject::invokeMethod(this, &Turni::MostraAnnuncio, Qt::QueuedConnection);
    }
    return QObject::eventFilter(oggetto, evento);
}

void Turni::Apri() {
    if (coda_ == nullptr) {
        CreaFinestra();
    }
    coda_->Apri();
}

void Turni::CreaFinestra() {
    coda_ = new FinestraCoda({p_.coda, prossimo_, p_.finestre, *comincia_,
                              [this](const Turno& turno) {
                                  (void)Togli(turno);
                                  (void)Suona(turno);
                              },
                              p_.lasciata},
                             &finestra_);
    // The keys for pause and stop work in the queue's window too, where the user works while a song
    // plays.
    for (const char* nome : {"mnuSoundPause", "mnuSoundStop"}) {
        coda_->addAction(finestra_.findChild<QAction*>(nome));
    }
    coda_->addAction(ferma_);
    new FileDrop(
        *coda_, [] { return true; },
        [this](const auto& percorsi) {
            std::vector<FileBrano> brani;
            std::ranges::transform(percorsi, std::back_inserter(brani), BranoDaFile);
            Accoda(brani);
        });
}

/// Shows the announcement over the lyrics, unless the lyrics window shows it.
void Turni::MostraAnnuncio() {
    ferma_->setEnabled(Corrente().has_value());
    carta_->Aggiorna(!p_.cantanti.MostraAnnuncio() || finestra_.isFullScreen());
    p_.cantanti.update();
}

void Turni::Accoda(const std::vector<FileBrano>& brani) {
    std::vector<Error> errori;
    for (const FileBrano& brano : brani) {
        if (auto errore = p_.coda.Aggiungi(TurnoDi(brano))) {
            errori.push_back(*std::move(errore));
        }
    }
    if (errori.size() > 1) {
        const std::size_t altri = errori.size() - 1;
        errori.front().text += " " + std::to_string(altri) +
                               (altri == 1 ? " more song" : " more songs") + " could not be added.";
    }
    if (coda_ != nullptr && coda_->isVisible()) {
        (void)coda_->Riporta(errori.empty() ? std::nullopt : std::optional(errori.front()));
    } else if (!errori.empty()) {
        Avvisa(QString::fromStdString(errori.front().text));
    } else if (!p_.coda.Turni().empty()) {
        Avvisa("Added to the queue: " + QString::fromStdString(p_.coda.Turni().back().titolo));
    }
}

/// A text below the toolbar for some seconds: a message box would pause the song.
void Turni::Avvisa(const QString& testo) {
    const bool inUnaRiga =
        QFontMetrics(QToolTip::font()).horizontalAdvance(testo) < finestra_.width();
    // A long path has no blanks at which it could be broken.
    const QString spezzabile = QString(testo).replace("/", "/\u200B").toHtmlEscaped();
    QToolTip::showText(p_.area.mapToGlobal(p_.barra.geometry().bottomLeft()),
                       QString(inUnaRiga ? "<nobr>%1</nobr>" : "<span>%1</span>").arg(spezzabile),
                       &finestra_);
}

/// A turn leaves the queue when it begins, also when its song then cannot be opened.
bool Turni::Togli(const Turno& turno) {
    const auto errore = p_.coda.Togli(turno.numero);
    if (errore) {
        (void)p_.msgBox.Show({errore->text, Icon::Exclamation});
    }
    return !errore;
}

bool Turni::Suona(const Turno& turno) {
    return p_.riproduzione.SuonaBrano(BranoDaFile(turno.file), turno.tonalita);
}

}  // namespace sonnel
