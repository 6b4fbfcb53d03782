#include "invoices/screens/fatwindow.h"

#include "controls/binding.h"
#include "controls/gridview.h"
#include "controls/pictures.h"
#include "controls/transferwidgets.h"
#include "invoices/screens/invoicewidgets.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStatusBar>
#include <QToolButton>

namespace kervan {

using namespace Qt::StringLiterals;

FatWindow::FatWindow(Program &program, QWidget *parent)
    : QWidget(parent)
    , m_fat(program)
    , m_strip(new TitleStrip)
{
    setObjectName(u"fat"_s);
    setWindowTitle(u"Fatura Transferi"_s);
    connect(new FileDrop(this), &FileDrop::dropped, this,
            [this](const QString &path) { m_fat.dosyaac(path); });
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(8, 8, 8, 4);
    column->setSpacing(6);
    column->addWidget(m_strip);
    column->addWidget(commands());
    column->addWidget(choices());
    column->addWidget(filters());
    m_l1 = invoiceView(m_fat.liste, [this](int row) { m_fat.satirsec(row); });
    m_l1->setEmptyText(u"\"Fatura Dosyası Aç\" ile bir .bif dosyası seçin ya da dosyayı buraya "
                       "sürükleyin."_s);
    connect(&m_fat.baslik, &TextField::changed, m_l1,
            [this] { m_l1->setEmptyText(u"Listede gösterilecek fatura yok."_s); });
    column->addWidget(invoiceLists(m_l1, lineView(m_fat.l2)), 1);
    column->addWidget(transferStatusBar(u"Fatura Sayısı:"_s, m_fat.liste.satirSayisi, m_fat.bilgi,
                                        m_fat.ilerleme));

    bind(m_strip->caption(), m_fat.baslik);
    m_strip->addNote(valueLabel(u"Label9"_s, m_fat.link.durum));
    letClose(this, m_strip);
    m_fat.load();
    findChild<QPushButton *>(u"chameleonButton5"_s)->setFocus();
}

QPushButton *FatWindow::command(const QString &name, const QString &caption,
                                const QString &pictureName, const QString &keys,
                                void (Fat::*action)())
{
    auto *button = commandButton(this, name, caption, pictureName, keys);
    if (action)
        connect(button, &QAbstractButton::clicked, this, [this, action] { (m_fat.*action)(); });
    return button;
}

QWidget *FatWindow::commands()
{
    auto *bar = new QWidget;
    auto *row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(command(u"chameleonButton5"_s, u"Fatura Dosyası Aç"_s, u"open"_s, u"Ctrl+O"_s,
                           &Fat::dosyaac));
    row->addWidget(
        command(u"chameleonButton2"_s, u"Otomatik Aç"_s, u"reread"_s, u"F5"_s, &Fat::otomatikac));
    row->addSpacing(12);
    row->addWidget(command(u"chameleonButton1"_s, u"Logoya Satış Faturalarını Aktar"_s, u"save"_s,
                           u"Ctrl+S"_s, &Fat::logoyaaktar));
    row->addWidget(command(u"chameleonButton3"_s, u"Logo Xml Otomatik Kaydet"_s, u"autosave"_s,
                           u"Ctrl+Shift+S"_s, &Fat::otomatikkaydet));
    row->addStretch();
    auto *menuButton =
        command(u"lvButtons_H2"_s, u"Fatura Liste Seçim"_s, u"listmenu"_s, u"Ctrl+L"_s, nullptr);
    connect(menuButton, &QAbstractButton::clicked, this, [this, menuButton] {
        Q_EMIT listMenuWanted(menuButton->mapToGlobal(QPoint(0, menuButton->height())));
    });
    row->addWidget(menuButton);
    auto *remove = command(u"chameleonButton6"_s, u"Seçilen Faturaları Sil"_s, u"remove"_s,
                           u"Ctrl+Del"_s, nullptr);
    connect(remove, &QAbstractButton::clicked, this, [this] { m_fat.liste.secilenlerisil(); });
    row->addWidget(remove);
    return bar;
}

QComboBox *FatWindow::choice(const QString &name, ChoiceField &field, void (Fat::*action)(),
                             bool editable)
{
    auto *box = choiceBox(name, field, editable);
    if (action)
        connect(box, &QComboBox::activated, this, [this, action] { (m_fat.*action)(); });
    return box;
}

QWidget *FatWindow::choices()
{
    auto *panel = new QWidget;
    auto *grid = choiceLayout(panel);
    addField(grid, 0, 0, u"Firma Seçimi:"_s, choice(u"c3"_s, m_fat.tanimlar.firma, &Fat::firmasec));
    addField(grid, 0, 2, u"Kdv Oranı:"_s, choice(u"c1"_s, m_fat.kdvOrani, &Fat::kdvoranisec));
    // What a user types is all that this list ever holds.
    addField(grid, 0, 4, u"Birim:"_s, choice(u"c2"_s, m_fat.birimSeti, &Fat::birimsetisec, true));
    auto *kind = choice(u"fatbilgi"_s, m_fat.faturaTuru, &Fat::yenidenoku);
    kind->setAccessibleName(u"Fatura türü"_s);
    kind->setToolTip(u"Fatura türü"_s);
    grid->addWidget(kind, 0, 6, 1, 2);
    addField(grid, 1, 0, u"Ödeme Plan Kodu:"_s,
             choice(u"c5"_s, m_fat.odemePlani, &Fat::odemeplanisec));
    auto *plan = valueLabel(u"odmplnkod"_s, m_fat.odemePlaniKodu);
    plan->setToolTip(u"Belgeye yazılan ödeme planı"_s);
    grid->addWidget(plan, 1, 2, 1, 2);
    addField(grid, 1, 4, u"Fatura Özel Kodu:"_s, choice(u"c4"_s, m_fat.tanimlar.ozelKod));
    auto *staff = choice(u"pers"_s, m_fat.tanimlar.personel, &Fat::yenidenoku);
    staff->setAccessibleName(u"Personel"_s);
    staff->setToolTip(u"Personel listesi: seçim dosyayı yeniden okutur, listeyi süzmez"_s);
    grid->addWidget(staff, 1, 6);
    auto *vat = new QWidget;
    auto *vatRow = new QHBoxLayout(vat);
    vatRow->setContentsMargins(0, 0, 0, 0);
    auto *rate = valueLabel(u"kdyaz"_s, m_fat.tanimlar.genelKdv);
    vatRow->addWidget(labelFor(rate, u"Gen.Kdv:"_s));
    vatRow->addWidget(rate, 1);
    grid->addWidget(vat, 1, 7);
    return panel;
}

QWidget *FatWindow::filters()
{
    auto *panel = new QWidget;
    auto *row = new QHBoxLayout(panel);
    row->setContentsMargins(0, 0, 0, 0);
    InvoiceList &list = m_fat.liste;
    row->addWidget(allRowsBox(list));
    row->addSpacing(16);
    auto *search = new QLineEdit;
    search->setObjectName(u"crara"_s);
    search->addAction(picture(u"search"_s), QLineEdit::LeadingPosition);
    search->setPlaceholderText(u"Enter ile ara"_s);
    search->setMaximumWidth(260);
    bind(search, list.arananUnvan);
    connect(search, &QLineEdit::returnPressed, this,
            [this] { m_l1->markRows(m_fat.liste.unvanara()); });
    row->addWidget(labelFor(search, u"Cari Unvanı:"_s));
    row->addWidget(search);
    row->addStretch();
    auto *range = addDateFilter(row, list, [this] { m_fat.tarihdegisti(); });
    connect(range, &QCheckBox::clicked, this, [this] { m_fat.tariharaligisec(); });
    return panel;
}

} // namespace kervan
