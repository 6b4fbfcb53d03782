#include "invoices/screens/fatwindow.h"

#include "check/screens/listmemory.h"
#include "controls/binding.h"
#include "controls/flowlayout.h"
#include "controls/gridview.h"
#include "controls/linklabel.h"
#include "controls/pictures.h"
#include "controls/transferwidgets.h"
#include "invoices/cashslips.h"
#include "invoices/columns.h"
#include "invoices/fatchecks.h"
#include "invoices/screens/invoicewidgets.h"
#include "store/sidefiles.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStatusBar>

namespace kervan {

using namespace Qt::StringLiterals;

FatWindow::FatWindow(Program &program, QWidget *parent)
    : QWidget(parent)
    , m_fat(program)
    , m_checks(checksOf(m_fat,
                        {.counterIsShared = [this] { return m_sharesCounter && m_sharesCounter(); },
                         .contentOf = contentKnownBelow(this)}))
    , m_l1(invoiceView(m_fat.liste, u".bif"_s, m_fat.baslik,
                       [this](int row) { m_fat.satirsec(row); }))
{
    setObjectName(u"fat"_s);
    setWindowTitle(u"Fatura Transferi"_s);
    auto *memory = new ListMemory(this, {u"c3"_s, u"c1"_s, u"c2"_s, u"fatbilgi"_s, u"c5"_s, u"c4"_s,
                                         u"pers"_s, u"d1"_s, u"d2"_s, u"Check1"_s});
    memory->setFile([this] { return m_fat.dosyaadi(); });
    layOutTransfer(this,
                   {.strip = strip(),
                    .notes = &m_fat.bilgi,
                    .panels = {commands(), choices(), filters(), lists(program)},
                    .statusBar = transferStatusBar(u"Fatura Sayısı:"_s, m_fat.liste.satirSayisi,
                                                   m_fat.bilgi, m_fat.ilerleme),
                    .firstButton = u"chameleonButton5"_s,
                    .openFile = [this](const QString &path) {
                        m_fat.dosyaac(path);
                    }});
}

TitleStrip *FatWindow::strip()
{
    auto *strip = new TitleStrip;
    bind(strip->caption(), m_fat.baslik);
    strip->addNote(new LinkLabel(u"Label9"_s, m_fat.link.durum));
    return strip;
}

QPushButton *FatWindow::command(const QString &name, const QString &caption,
                                const QString &pictureName, const QString &keys,
                                void (Fat::*action)())
{
    auto *button = commandButton(this, name, caption, pictureName, keys);
    connect(button, &QAbstractButton::clicked, this,
            [this, action] { readIntoList(this, [&] { (m_fat.*action)(); }); });
    return button;
}

QWidget *FatWindow::commands()
{
    auto *bar = new QWidget;
    auto *row = new FlowLayout(bar);
    row->addWidget(command(u"chameleonButton5"_s, u"Fatura Dosyası Aç"_s, u"open"_s, u"Ctrl+O"_s,
                           &Fat::dosyaac));
    row->addWidget(
        command(u"chameleonButton2"_s, u"Otomatik Aç"_s, u"reread"_s, u"F5"_s, &Fat::otomatikac));
    row->addSpacing(12);
    row->addWidget(command(u"chameleonButton1"_s, u"Logoya Satış Faturalarını Aktar"_s, u"save"_s,
                           u"Ctrl+S"_s, &Fat::logoyaaktar));
    row->addWidget(command(u"chameleonButton3"_s, u"Logo Xml Otomatik Kaydet"_s, u"autosave"_s,
                           u"Ctrl+Shift+S"_s, &Fat::otomatikkaydet));
    addListCommands(row, this, m_fat.liste,
                    [this](const QPoint &place) { Q_EMIT listMenuWanted(place); });
    return bar;
}

// Lets the choice of an entry run the action.
QComboBox *FatWindow::chosen(QComboBox *box, void (Fat::*action)())
{
    connect(box, &QComboBox::activated, this, [this, action] { (m_fat.*action)(); });
    return box;
}

QWidget *FatWindow::choices()
{
    auto *panel = new FieldPanel(4);
    InvoiceDefinitions &tanimlar = m_fat.tanimlar;
    addField(panel, u"Firma Seçimi:"_s, chosen(choiceBox(u"c3"_s, tanimlar.firma), &Fat::firmasec));
    addField(panel, u"Kdv Oranı:"_s, chosen(choiceBox(u"c1"_s, m_fat.kdvOrani), &Fat::kdvoranisec));
    // What a user types is all that this list ever holds.
    addField(panel, u"Birim:"_s,
             chosen(choiceBox(u"c2"_s, m_fat.birimSeti, true), &Fat::birimsetisec));
    panel->add(chosen(kindBox(m_fat.faturaTuru), &Fat::yenidenoku));
    addField(panel, u"Ödeme Plan Kodu:"_s,
             chosen(choiceBox(u"c5"_s, m_fat.odemePlani), &Fat::odemeplanisec));
    auto *plan =
        valueLabel(u"odmplnkod"_s, u"Belgeye yazılan ödeme planı:"_s, m_fat.odemePlaniKodu);
    plan->setToolTip(u"Belgeye yazılan ödeme planı"_s);
    auto *beside = new QWidget;
    auto *daily = new QHBoxLayout(beside);
    daily->setContentsMargins(0, 0, 0, 0);
    daily->addWidget(plan, 1);
    daily->addWidget(dailyChoicesButton(this, m_fat.bilgi,
                                        {{u"Firma"_s, tanimlar.firma,
                                          [this] {
                                              m_fat.firmasec();
                                          }},
                                         {u"Kdv oranı"_s, m_fat.kdvOrani,
                                          [this] {
                                              m_fat.kdvoranisec();
                                          }},
                                         {u"Ödeme planı"_s, m_fat.odemePlani, [this] {
                                              m_fat.odemeplanisec();
                                          }}}));
    panel->add(beside);
    addField(panel, u"Fatura Özel Kodu:"_s, choiceBox(u"c4"_s, tanimlar.ozelKod));
    auto *last = new QWidget;
    auto *row = new QHBoxLayout(last);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(chosen(staffBox(tanimlar.personel), &Fat::yenidenoku), 1);
    auto *rate = valueLabel(u"kdyaz"_s, u"Gen.Kdv:"_s, tanimlar.genelKdv);
    row->addWidget(labelFor(rate, u"Gen.Kdv:"_s));
    row->addWidget(rate);
    panel->add(last);
    return panel;
}

QWidget *FatWindow::filters()
{
    auto *panel = new QWidget;
    auto *row = new FlowLayout(panel);
    InvoiceList &list = m_fat.liste;
    row->addWidget(allRowsBox(list));
    row->addSpacing(16);
    auto *search = new QLineEdit;
    search->setObjectName(u"crara"_s);
    auto *start = search->addAction(picture(u"search"_s), QLineEdit::LeadingPosition);
    start->setText(u"Ara"_s);
    start->setToolTip(u"Ara (Enter)"_s);
    connect(start, &QAction::triggered, search, &QLineEdit::returnPressed);
    search->setPlaceholderText(u"Enter ile ara"_s);
    search->setMaximumWidth(260);
    bind(search, list.arananUnvan);
    connect(search, &QLineEdit::returnPressed, this, [this] {
        const QList<int> found = m_fat.liste.unvanara();
        m_l1->markRows(found);
        findChild<QStatusBar *>(u"sb1"_s)->clearMessage();
        if (!found.isEmpty())
            return m_l1->enter(found.first());
        const QString none =
            u"\"%1\" geçen bir unvan bulunamadı. Büyük ve küçük harf ayrı sayılır."_s.arg(
                m_fat.liste.arananUnvan.text());
        tellBelow(this, none);
    });
    row->addPair(labelFor(search, u"Cari Unvanı:"_s), search);
    row->addStretch();
    auto *range = addDateFilter(row, list, [this] { m_fat.tarihdegisti(); });
    connect(range, &QCheckBox::clicked, this, [this] { m_fat.tariharaligisec(); });
    return panel;
}

QWidget *FatWindow::lists(Program &program)
{
    return invoiceLists({.window = this,
                         .rows = m_fat.liste.l1,
                         .view = m_l1,
                         .frame = nullptr,
                         .memoryKey = {},
                         .checks = *m_checks,
                         .report = m_fat.okuma,
                         .program = program,
                         .notes = m_fat.bilgi,
                         .okunurBicim = m_fat.okunurBicim,
                         .shape = [this] { return shapeOf(m_fat); },
                         .reread = [this] { m_fat.otomatikac(); },
                         .listed =
                             [this] {
                                 return listedInvoices(m_fat.liste.l1, m_fat.faturaTuru.text(),
                                                       ListedRows::Sum);
                             },
                         .written =
                             [this] {
                                 return writtenRows(m_fat.liste.l1, DocumentFamily::Invoices, true,
                                                    L1::FaturaNumarasi, L1::ToplamTutar);
                             },
                         .counters = {cashCounterFile.toString()},
                         .belowLimit =
                             [this](int row) {
                                 return isBelowCashLimit(m_fat.liste.l1, row);
                             }},
                        m_fat.l2);
}

} // namespace kervan
