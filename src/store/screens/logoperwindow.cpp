#include "store/screens/logoperwindow.h"

#include "controls/gridview.h"
#include "controls/keyedbutton.h"

#include <QLabel>
#include <QVBoxLayout>

namespace kervan {

using namespace Qt::StringLiterals;

LogoperWindow::LogoperWindow(QWidget *parent)
    : QDialog(parent)
    , l1({{u"Personel Kodu"_s, 2540}, {u"Personel Adı"_s, 4410}})
{
    setObjectName(u"logoper"_s);
    setWindowTitle(u"Logo Personel Listesi"_s);
    auto *note = new QLabel(u"Logo Fatura Girişi Yapılırken Listedeki Personelin Logo'da Tanımlı "
                            "Olması Gerekiyor."_s);
    note->setWordWrap(true);
    auto *close = dialogButton(u"chameleonButton8"_s, u"Kapat"_s, u"Ctrl+W"_s);
    connect(close, &QAbstractButton::clicked, this, &QDialog::reject);
    auto *column = new QVBoxLayout(this);
    auto *view = new GridView(l1, u"l1"_s);
    view->setAccessibleName(windowTitle());
    column->addWidget(view, 1);
    column->addWidget(note);
    column->addWidget(close, 0, Qt::AlignRight);
    setFixedSize(520, 420);
}

} // namespace kervan
