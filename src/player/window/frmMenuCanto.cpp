#include "player/window/frmMenuCanto.h"

#include <QActionGroup>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMap>
#include <algorithm>
#include <array>
#include <utility>

namespace sonnel {
namespace {

using Melody = Performance::Melody;

constexpr int PassoTempo = 5;      // percent
constexpr int PassoAnticipo = 20;  // ms

struct Voce {
    const char* menu;  ///< "" for the context menu itself
    const char* testo;
    const char* tasti;
    void (*esegui)(Cantante&);
    bool melodia = false;  ///< checked while it is the current melody; in the order of Melody
};

constexpr std::array Voci{
    Voce{"&Key", "&Higher", "Ctrl+Up", [](Cantante& c) { c.CambiaTonalita(1); }},
    Voce{"&Key", "&Lower", "Ctrl+Down", [](Cantante& c) { c.CambiaTonalita(-1); }},
    Voce{"&Tempo", "&Faster", "Ctrl+Right", [](Cantante& c) { c.CambiaTempo(PassoTempo); }},
    Voce{"&Tempo", "&Slower", "Ctrl+Left", [](Cantante& c) { c.CambiaTempo(-PassoTempo); }},
    Voce{"&Melody", "&Normal", "", [](Cantante& c) { c.CambiaMelodia(Melody::Normal); }, true},
    Voce{"&Melody", "&Soft", "", [](Cantante& c) { c.CambiaMelodia(Melody::Soft); }, true},
    Voce{"&Melody", "&Off", "", [](Cantante& c) { c.CambiaMelodia(Melody::Off); }, true},
    Voce{"&Melody", "Ne&xt", "Ctrl+M", [](Cantante& c) { c.ProssimaMelodia(); }},
    Voce{"T&iming", "Words &earlier", "Ctrl+Shift+Right",
         [](Cantante& c) { c.CambiaAnticipo(PassoAnticipo); }},
    Voce{"T&iming", "Words &later", "Ctrl+Shift+Left",
         [](Cantante& c) { c.CambiaAnticipo(-PassoAnticipo); }},
    Voce{"", "Back to the song's &own", "Ctrl+0", [](Cantante& c) { c.Azzera(); }}};

}  // namespace

MenuCanto::MenuCanto(QWidget& finestra, Parti parti)
    : QObject(&finestra), finestra_(finestra), p_(std::move(parti)), menu_(&finestra) {
    CreaVoci();
    connect(&menu_, &QMenu::aboutToShow, this, &MenuCanto::Aggiorna);
    finestra.installEventFilter(this);
}

void MenuCanto::CreaVoci() {
    QMap<QString, QMenu*> menu{{"", &menu_}};
    auto* gruppo = new QActionGroup(this);
    for (const Voce& voce : Voci) {
        QMenu*& dove = menu[voce.menu];
        if (dove == nullptr) {
            dove = menu_.addMenu(voce.menu);
        }
        QAction* azione = dove->addAction(voce.testo, this, [&] {
            voce.esegui(p_.cantante);
            p_.cambiato();
        });
        azione->setShortcut(QKeySequence(voce.tasti));
        finestra_.addAction(azione);  // so that its shortcut works while the menu is closed
        if (voce.melodia) {
            azione->setCheckable(true);
            gruppo->addAction(azione);
            melodie_.append(azione);
        }
    }
    melodia_ = menu["&Melody"];
    estensione_ = menu["&Key"]->addAction("");
    estensione_->setEnabled(false);
    menu_.addSeparator();
    menu_.addActions(p_.altre);
    QAction* avanti = menu_.addAction("&Go on without the focus");
    avanti->setCheckable(true);
    avanti->setChecked(p_.cantante.VaAvanti());
    connect(avanti, &QAction::toggled, this, [this](bool si) { p_.cantante.CambiaVaAvanti(si); });
    p_.altre.append(avanti);
}

/// Enables and checks the items for the open song.
void MenuCanto::Aggiorna() {
    Cantante& cantante = p_.cantante;
    for (QAction* voce : menu_.actions()) {
        voce->setEnabled(cantante.BranoAperto() || p_.altre.contains(voce));
    }
    const auto& melodia = cantante.Melodia();
    melodia_->menuAction()->setEnabled(melodia.has_value());
    melodie_.at(static_cast<int>(cantante.Corrente().melodia))->setChecked(true);
    estensione_->setVisible(melodia.has_value());
    if (melodia) {
        const auto nota = [&cantante](int tasto) {
            return QString::fromStdString(
                NomeNota(std::clamp(tasto + cantante.Corrente().tonalita, 0, 127)));
        };
        estensione_->setText("Tune: " + nota(melodia->piuBassa) + " to " + nota(melodia->piuAlta));
    }
}

bool MenuCanto::eventFilter(QObject* object, QEvent* event) {
    if (event->type() == QEvent::ContextMenu) {
        const auto& richiesta = *static_cast<QContextMenuEvent*>(event);
        menu_.popup(richiesta.reason() == QContextMenuEvent::Mouse
                        ? richiesta.globalPos()
                        : finestra_.mapToGlobal(finestra_.rect().center() / 2));
        return true;
    }
    if (event->type() == QEvent::KeyPress) {
        const auto& tasto = *static_cast<QKeyEvent*>(event);
        const bool qui = std::find(p_.conSpazio.begin(), p_.conSpazio.end(),
                                   finestra_.focusWidget()) != p_.conSpazio.end();
        if (qui && tasto.key() == Qt::Key_Space && tasto.modifiers() == Qt::NoModifier &&
            !tasto.isAutoRepeat()) {
            p_.suonaOPausa();
            return true;
        }
        if (tasto.key() == Qt::Key_F10 && tasto.modifiers() == Qt::ShiftModifier) {
            menu_.popup(finestra_.mapToGlobal(finestra_.rect().center() / 2));
            return true;
        }
    }
    return QObject::eventFilter(object, event);
}

}  // namespace sonnel
