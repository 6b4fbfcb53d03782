#include "invoices/duzey/screens/fatduzwindow.h"

#include "controls/binding.h"
#include "controls/gridview.h"
#include "controls/transferwidgets.h"
#include "invoices/screens/invoicewidgets.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStatusBar>

namespace kervan {

using namespace Qt::StringLiterals;

FatduzWindow::FatduzWindow(Program &program, QWidget *parent)
    : QWidget(parent)
    , m_fatduz(program)
{
    setObjectName(u"fatduz"_s);
    setWindowTitle(u"Düzey Fatura Transferi"_s);
    connect(new FileDrop(this), &FileDrop::dropped, this,
            [this](const QString &path) { m_fatduz.dosyaac(path); });
    auto *strip = new TitleStrip;
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(8, 8, 8, 4);
    column->setSpacing(6);
    column->addWidget(strip);
    column->addWidget(commands());
    column->addWidget(choices());
    column->addWidget(filters());
    column->addWidget(lists(), 1);
    column->addWidget(transferStatusBar(u"Fatura Sayısı:"_s, m_fatduz.liste.satirSayisi,
                                        m_fatduz.bilgi, m_fatduz.ilerleme));

    bind(strip->caption(), m_fatduz.baslik);
    strip->addNote(valueLabel(u"Label9"_s, m_fatduz.link.durum));
    letClose(this, strip);
    bindHourglass(this, m_fatduz.bekle);
    m_fatduz.load();
    findChild<QPushButton *>(u"buton1"_s)->setFocus();
}

QPushButton *FatduzWindow::command(const QString &name, const QString &caption,
                                   const QString &pictureName, const QString &keys,
                                   void (Fatduz::*action)())
{
    auto *button = commandButton(this, name, caption, pictureName, keys);
    connect(button, &QAbstractButton::clicked, this, [this, action] { (m_fatduz.*action)(); });
    return button;
}

QWidget *FatduzWindow::commands()
{
    auto *bar = new QWidget;
    auto *row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(
        command(u"buton1"_s, u"Fatura Dosyası Aç"_s, u"open"_s, u"Ctrl+O"_s, &Fatduz::dosyaac));
    row->addSpacing(12);
    row->addWidget(command(u"chameleonButton1"_s, u"Logoya Satış Faturalarını Aktar"_s, u"save"_s,
                           u"Ctrl+S"_s, &Fatduz::logoyaaktar));
    row->addStretch();
    auto *menu = command(u"lvButtons_H2"_s, u"Fatura Liste Seçim"_s, u"listmenu"_s, u"Ctrl+L"_s,
                         &Fatduz::listesec);
    connect(menu, &QAbstractButton::clicked, this,
            [this, menu] { Q_EMIT listMenuWanted(menu->mapToGlobal(QPoint(0, menu->height()))); });
    row->addWidget(menu);
    auto *remove = commandButton(this, u"chameleonButton6"_s, u"Seçilen Faturaları Sil"_s,
                                 u"remove"_s, u"Ctrl+Del"_s);
    connect(remove, &QAbstractButton::clicked, this, [this] { m_fatduz.liste.secilenlerisil(); });
    row->addWidget(remove);
    return bar;
}

QWidget *FatduzWindow::choices()
{
    auto *panel = new QWidget;
    auto *grid = choiceLayout(panel);
    const auto choice = [this](const QString &name, ChoiceField &field, auto action) {
        auto *box = choiceBox(name, field);
        connect(box, &QComboBox::activated, this, [this, action] { (m_fatduz.*action)(); });
        return box;
    };
    addField(grid, 0, 0, u"Firma Seçimi:"_s,
             choice(u"c3"_s, m_fatduz.tanimlar.firma, &Fatduz::firmasec));
    addField(grid, 0, 2, u"Fatura Özel Kodu:"_s, choiceBox(u"c4"_s, m_fatduz.tanimlar.ozelKod));
    auto *kind = choice(u"fatbilgi"_s, m_fatduz.faturaTuru, &Fatduz::yenidenoku);
    kind->setAccessibleName(u"Fatura türü"_s);
    kind->setToolTip(u"Fatura türü: seçim dosyayı yeniden okutur"_s);
    grid->addWidget(kind, 0, 4, 1, 2);
    grid->addWidget(sheetName(), 1, 0, 1, 2);
    auto *staff = choice(u"pers"_s, m_fatduz.tanimlar.personel, &Fatduz::personelsec);
    staff->setAccessibleName(u"Personel"_s);
    staff->setToolTip(u"Personel listesi: seçim dosyayı yeniden okutur, listeyi süzmez"_s);
    grid->addWidget(staff, 1, 2, 1, 2);
    addField(grid, 1, 4, u"Gen.Kdv:"_s, valueLabel(u"kdyaz"_s, m_fatduz.tanimlar.genelKdv));
    return panel;
}

QWidget *FatduzWindow::sheetName()
{
    auto *panel = new QWidget;
    auto *row = new QHBoxLayout(panel);
    row->setContentsMargins(0, 0, 0, 0);
    auto *name = new QLineEdit;
    name->setObjectName(u"Text1"_s);
    bind(name, m_fatduz.sayfaAdi);
    row->addWidget(labelFor(name, u"Exel Sayfa Adı"_s));
    row->addWidget(name, 1);
    const QString what = u"Sayfa adını sakla"_s;
    auto *keep = command(u"lvButtons_H1"_s, what, u"keep"_s, u"Ctrl+D"_s, &Fatduz::sayfanokaydet);
    keep->setText({});
    keep->setAccessibleName(what);
    row->addWidget(keep);
    return panel;
}

QWidget *FatduzWindow::filters()
{
    auto *panel = new QWidget;
    auto *row = new QHBoxLayout(panel);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(allRowsBox(m_fatduz.liste));
    row->addStretch();
    // Only a date starts the filter here; its box alone does nothing.
    addDateFilter(row, m_fatduz.liste, [this] { m_fatduz.tarihdegisti(); });
    return panel;
}

QWidget *FatduzWindow::lists()
{
    GridView *view = invoiceView(m_fatduz.liste, [this](int row) { m_fatduz.satirsec(row); });
    view->setEmptyText(u"\"Fatura Dosyası Aç\" ile bir Excel dosyası seçin ya da dosyayı buraya "
                       "sürükleyin."_s);
    connect(&m_fatduz.baslik, &TextField::changed, view,
            [view] { view->setEmptyText(u"Listede gösterilecek fatura yok."_s); });
    return invoiceLists(view, lineView(m_fatduz.l2));
}

} // namespace kervan
