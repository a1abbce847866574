#include "library/frmResoconto.h"

#include "platform/MsgBox.h"
#include "platform/qt/FitScreen.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QVBoxLayout>

namespace sonnel {
namespace {

// In characters of the dialog's font.
constexpr int Larghezza = 100;
constexpr int Altezza = 20;

}  // namespace

frmResoconto::frmResoconto(const std::string& riepilogo, const std::string& righe, QWidget* parent)
    : QDialog(parent) {
    setWindowTitle(Message::UsualTitle);
    auto* sentenza = new QLabel(QString::fromStdString(riepilogo), this);
    sentenza->setTextFormat(Qt::PlainText);
    sentenza->setWordWrap(true);
    auto* elenco = new QPlainTextEdit(QString::fromStdString(righe).trimmed(), this);
    elenco->setAccessibleName("Files that were not added");
    elenco->setReadOnly(true);
    elenco->setTabChangesFocus(true);
    auto* bottoni = new QDialogButtonBox(QDialogButtonBox::Ok, this);
    connect(bottoni, &QDialogButtonBox::accepted, this, &QDialog::accept);

    auto* colonna = new QVBoxLayout(this);
    colonna->addWidget(sentenza);
    colonna->addWidget(elenco, 1);
    colonna->addWidget(bottoni);
    bottoni->button(QDialogButtonBox::Ok)->setFocus();

    const QFontMetrics lettere = fontMetrics();
    resize(QSize(Larghezza * lettere.averageCharWidth(), Altezza * lettere.lineSpacing())
               .boundedTo(RoomOnScreen(*this)));
}

}  // namespace sonnel
