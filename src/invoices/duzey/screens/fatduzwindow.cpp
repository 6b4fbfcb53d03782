#include "invoices/duzey/screens/fatduzwindow.h"

#include "check/screens/listmemory.h"
#include "controls/binding.h"
#include "controls/flowlayout.h"
#include "controls/gridview.h"
#include "controls/linklabel.h"
#include "controls/sheetlist.h"
#include "controls/transferwidgets.h"
#include "invoices/columns.h"
#include "invoices/duzey/fatduzchecks.h"
#include "invoices/screens/invoicewidgets.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStatusBar>

namespace kervan {

using namespace Qt::StringLiterals;

FatduzWindow::FatduzWindow(Program &program, QWidget *parent)
    : QWidget(parent)
    , m_fatduz(program)
    , m_checks(checksOf(m_fatduz))
    , m_l1(invoiceView(m_fatduz.liste, u"Excel"_s, m_fatduz.baslik,
                       [this](int row) { m_fatduz.satirsec(row); }))
{
    setObjectName(u"fatduz"_s);
    setWindowTitle(u"Düzey Fatura Transferi"_s);
    // A kind that is chosen without a file fails, and only a date starts the filter.
    auto *memory = new ListMemory(this, {u"c3"_s, u"c4"_s, u"Text1"_s, u"pers"_s},
                                  {u"fatbilgi"_s, u"Check1"_s, u"d1"_s, u"d2"_s});
    memory->setFile([this] { return m_fatduz.dosyaadi(); });
    layOutTransfer(this,
                   {.strip = strip(),
                    .notes = &m_fatduz.bilgi,
                    .panels = {commands(), choices(), filters(), lists(program)},
                    .statusBar = transferStatusBar(u"Fatura Sayısı:"_s, m_fatduz.liste.satirSayisi,
                                                   m_fatduz.bilgi, m_fatduz.ilerleme),
                    .firstButton = u"buton1"_s,
                    .openFile = [this](const QString &path) {
                        m_fatduz.dosyaac(path);
                    }});
    bindHourglass(this, m_fatduz.bekle);
}

TitleStrip *FatduzWindow::strip()
{
    auto *strip = new TitleStrip;
    bind(strip->caption(), m_fatduz.baslik);
    strip->addNote(new LinkLabel(u"Label9"_s, m_fatduz.link.durum));
    return strip;
}

QPushButton *FatduzWindow::command(const QString &name, const QString &caption,
                                   const QString &pictureName, const QString &keys,
                                   void (Fatduz::*action)())
{
    auto *button = commandButton(this, name, caption, pictureName, keys);
    connect(button, &QAbstractButton::clicked, this,
            [this, action] { readIntoList(this, [&] { (m_fatduz.*action)(); }); });
    return button;
}

QWidget *FatduzWindow::commands()
{
    auto *bar = new QWidget;
    auto *row = new FlowLayout(bar);
    row->addWidget(
        command(u"buton1"_s, u"Fatura Dosyası Aç"_s, u"open"_s, u"Ctrl+O"_s, &Fatduz::dosyaac));
    row->addSpacing(12);
    row->addWidget(command(u"chameleonButton1"_s, u"Logoya Satış Faturalarını Aktar"_s, u"save"_s,
                           u"Ctrl+S"_s, &Fatduz::logoyaaktar));
    addListCommands(row, this, m_fatduz.liste, [this](const QPoint &place) {
        m_fatduz.listesec();
        Q_EMIT listMenuWanted(place);
    });
    return bar;
}

QWidget *FatduzWindow::choices()
{
    auto *panel = new FieldPanel(3);
    const auto chosen = [this](QComboBox *box, void (Fatduz::*action)()) {
        connect(box, &QComboBox::activated, this, [this, action] { (m_fatduz.*action)(); });
        return box;
    };
    InvoiceDefinitions &tanimlar = m_fatduz.tanimlar;
    addField(panel, u"Firma Seçimi:"_s,
             chosen(choiceBox(u"c3"_s, tanimlar.firma), &Fatduz::firmasec));
    addField(panel, u"Fatura Özel Kodu:"_s, choiceBox(u"c4"_s, tanimlar.ozelKod));
    panel->add(chosen(kindBox(m_fatduz.faturaTuru), &Fatduz::yenidenoku));
    panel->add(sheetName());
    panel->add(chosen(staffBox(tanimlar.personel), &Fatduz::personelsec));
    auto *last = new QWidget;
    auto *row = new QHBoxLayout(last);
    row->setContentsMargins(0, 0, 0, 0);
    auto *rate = valueLabel(u"kdyaz"_s, u"Gen.Kdv:"_s, tanimlar.genelKdv);
    row->addWidget(labelFor(rate, u"Gen.Kdv:"_s));
    row->addWidget(rate, 1);
    row->addWidget(dailyChoicesButton(this, m_fatduz.bilgi, {{u"Firma"_s, tanimlar.firma, [this] {
                                                                  m_fatduz.firmasec();
                                                              }}}));
    panel->add(last);
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
    addSheetList(
        name, m_fatduz.sayfaAdi, [this] { return m_fatduz.dosyaadi(); }, &readSheetNames);
    connect(&m_fatduz.bilgi, &Notes::chosen, &m_fatduz.sayfaAdi, &TextField::setText);
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
    auto *row = new FlowLayout(panel);
    row->addWidget(allRowsBox(m_fatduz.liste));
    row->addStretch();
    // Only a date starts the filter here; its box alone does nothing.
    addDateFilter(row, m_fatduz.liste, [this] { m_fatduz.tarihdegisti(); });
    return panel;
}

QWidget *FatduzWindow::lists(Program &program)
{
    return invoiceLists({.window = this,
                         .rows = m_fatduz.liste.l1,
                         .view = m_l1,
                         .frame = nullptr,
                         .memoryKey = {},
                         .checks = *m_checks,
                         .report = m_fatduz.okuma,
                         .program = program,
                         .notes = m_fatduz.bilgi,
                         .okunurBicim = m_fatduz.okunurBicim,
                         .shape = [this] { return shapeOf(m_fatduz); },
                         .reread = [this] { m_fatduz.yenidenoku(); },
                         .listed =
                             [this] {
                                 return listedInvoices(m_fatduz.liste.l1,
                                                       m_fatduz.faturaTuru.text(), ListedRows::Net);
                             },
                         .written =
                             [this] {
                                 WrittenRows rows =
                                     writtenRows(m_fatduz.liste.l1, DocumentFamily::Invoices, true,
                                                 L1::FaturaNumarasi, L1::ToplamTutar);
                                 rows.sumIsNet = true;
                                 return rows;
                             }},
                        m_fatduz.l2);
}

} // namespace kervan
