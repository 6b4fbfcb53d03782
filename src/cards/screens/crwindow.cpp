#include "cards/screens/crwindow.h"

#include "cards/cardchecks.h"
#include "check/screens/checkedlist.h"
#include "check/screens/listmemory.h"
#include "controls/flowlayout.h"
#include "controls/gridview.h"
#include "controls/panes.h"
#include "controls/transferwidgets.h"

#include <QLabel>
#include <QPushButton>
#include <QStatusBar>
#include <QTimer>

namespace kervan {

using namespace Qt::StringLiterals;

CrWindow::CrWindow(Program &program, QWidget *parent)
    : QWidget(parent)
    , m_program(program)
    , m_cr(program)
    , m_checks(checksOf(m_cr))
{
    setObjectName(u"cr"_s);
    setWindowTitle(u"Cari Kart Transferi"_s);
    (new ListMemory(this, {}))->setFile([this] { return m_cr.bilgi.source.text(); });
    layOutTransfer(this, {.strip = titleStrip(u"CARİ HESAP AKTARIMI"_s),
                          .notes = &m_cr.bilgi,
                          .panels = {commands(), cards(program)},
                          .statusBar = statusBar(),
                          .firstButton = u"chameleonButton5"_s,
                          .openFile = [this](const QString &path) {
                              m_cr.dosyaac(path);
                          }});
}

QWidget *CrWindow::commands()
{
    auto *bar = new QWidget;
    bar->setObjectName(u"f1"_s);
    auto *row = new FlowLayout(bar);
    const auto add = [&](const QString &name, const QString &caption, const QString &picture,
                         const QString &keys) {
        auto *button = commandButton(this, name, caption, picture, keys);
        row->addWidget(button);
        return button;
    };
    connect(add(u"chameleonButton5"_s, u"Cari Dosyası Aç"_s, u"open"_s, u"Ctrl+O"_s),
            &QAbstractButton::clicked, this,
            [this] { readIntoList(this, [this] { m_cr.dosyaac(); }); });
    row->addSpacing(12);
    connect(add(u"chameleonButton1"_s, u"Logo Xml Kaydet"_s, u"save"_s, u"Ctrl+S"_s),
            &QAbstractButton::clicked, this, [this] { m_cr.xmlkaydet(); });
    connect(add(u"chameleonButton2"_s, u"Logo Güncelleme için Xml  Kaydet"_s, u"autosave"_s,
                u"Ctrl+Shift+S"_s),
            &QAbstractButton::clicked, this, [this] { m_cr.guncellemexmlkaydet(); });
    row->addStretch();
    auto *update = add(u"chameleonButton3"_s, u"Cari Güncelleme"_s, u"update"_s, u"Ctrl+G"_s);
    update->setProperty("writes", true);
    connect(update, &QAbstractButton::clicked, this, [this] {
        if (m_cr.guncellemekontrol())
            Q_EMIT guncellemeWanted();
    });
    return bar;
}

QWidget *CrWindow::cards(Program &program)
{
    auto *view = new GridView(m_cr.l1, u"l1"_s);
    view->setAccessibleName(u"Cari Kart Listesi"_s);
    view->setEmptyText(u"\"Cari Dosyası Aç\" ile bir .txt dosyası seçin ya da dosyayı buraya "
                       "sürükleyin."_s);
    return checkedPanes({.window = this,
                         .rows = m_cr.l1,
                         .view = view,
                         .frame = plainFrame(view),
                         .memoryKey = u"cr/pane"_s,
                         .checks = *m_checks,
                         .report = m_cr.okuma,
                         .program = program,
                         .notes = m_cr.bilgi,
                         .okunurBicim = m_cr.okunurBicim,
                         .shape = [this] { return shapeOf(m_cr); },
                         .reread = [this] { m_cr.caridosyasikoku(); },
                         .listed =
                             [this] {
                                 return ListedRows{.grid = &m_cr.l1,
                                                   .family = DocumentFamily::Accounts,
                                                   .number = shapeOf(m_cr).number};
                             },
                         .written =
                             [this] {
                                 return writtenRows(m_cr.l1, DocumentFamily::Accounts, false,
                                                    shapeOf(m_cr).number, -1);
                             }});
}

QStatusBar *CrWindow::statusBar()
{
    auto *bar =
        transferStatusBar(u"Cari Kart Sayısı:"_s, m_cr.kartSayisi, m_cr.bilgi, m_cr.ilerleme);
    bar->addPermanentWidget(valueLabel(u"sb1_3"_s, u"Tarih:"_s, m_date, Changes::Often));
    bar->addPermanentWidget(valueLabel(u"sb1_4"_s, u"Saat:"_s, m_time, Changes::Often));
    auto *timer = new QTimer(this);
    connect(timer, &QTimer::timeout, this, &CrWindow::showTime);
    timer->start(1000);
    showTime();
    return bar;
}

void CrWindow::showTime()
{
    const QDateTime now = m_program.clock.now();
    m_date.setText(now.toString(u"dd.MM.yyyy"_s));
    m_time.setText(now.toString(u"HH:mm:ss"_s));
}

} // namespace kervan
