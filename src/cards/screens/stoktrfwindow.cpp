#include "cards/screens/stoktrfwindow.h"

#include "cards/cardchecks.h"
#include "check/screens/checkedlist.h"
#include "check/screens/listmemory.h"
#include "controls/binding.h"
#include "controls/flowlayout.h"
#include "controls/gridview.h"
#include "controls/panes.h"
#include "controls/transferwidgets.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace kervan {

using namespace Qt::StringLiterals;

StoktrfWindow::StoktrfWindow(Program &program, QWidget *parent)
    : QWidget(parent)
    , m_stoktrf(program)
    , m_checks(checksOf(m_stoktrf))
{
    setObjectName(u"stoktrf"_s);
    setWindowTitle(u"Malzeme Kartları Transfer"_s);
    (new ListMemory(this, {u"c1"_s, u"c2"_s, u"c3"_s, u"c4"_s, u"c5"_s, u"brmseti"_s}))
        ->setFile([this] { return m_stoktrf.bilgi.source.text(); });
    layOutTransfer(this,
                   {.strip = titleStrip(u"STOK KART AKTARIMI"_s),
                    .notes = &m_stoktrf.bilgi,
                    .panels = {commands(), choices(), cards(program)},
                    .statusBar = transferStatusBar(u"Stok Kart Sayısı:"_s, m_stoktrf.kartSayisi,
                                                   m_stoktrf.bilgi, m_stoktrf.ilerleme),
                    .firstButton = u"chameleonButton5"_s,
                    .openFile = [this](const QString &path) {
                        m_stoktrf.dosyaac(path);
                    }});
    m_stoktrf.load();
}

QWidget *StoktrfWindow::commands()
{
    auto *bar = new QWidget;
    auto *row = new FlowLayout(bar);
    auto *open =
        commandButton(this, u"chameleonButton5"_s, u"Stok Dosyası Aç"_s, u"open"_s, u"Ctrl+O"_s);
    connect(open, &QAbstractButton::clicked, this,
            [this] { readIntoList(this, [this] { m_stoktrf.dosyaac(); }); });
    auto *save =
        commandButton(this, u"chameleonButton1"_s, u"Logo Xml Kaydet"_s, u"save"_s, u"Ctrl+S"_s);
    connect(save, &QAbstractButton::clicked, this, [this] { m_stoktrf.xmlkaydet(); });
    auto *mey = commandButton(this, u"meystok"_s, u"Mey Stok Listesi"_s, u"stok"_s, u"Ctrl+M"_s);
    connect(mey, &QAbstractButton::clicked, this, &StoktrfWindow::meyWanted);
    row->addWidget(open);
    row->addSpacing(12);
    row->addWidget(save);
    row->addSpacing(12);
    row->addWidget(mey);
    row->addStretch();
    return bar;
}

QWidget *StoktrfWindow::choices()
{
    auto *panel = new FieldPanel(3);
    const auto put = [&](const QString &caption, QWidget *field) {
        panel->add(labelFor(field, caption), field);
    };
    for (std::size_t i = 0; i < m_stoktrf.ozelKodlar.size(); ++i) {
        auto *list = new QComboBox;
        list->setObjectName(u"c%1"_s.arg(i + 1));
        list->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        list->setMinimumContentsLength(6);
        bind(list, m_stoktrf.ozelKodlar[i]);
        put(i == 0 ? u"Özel Kod"_s : u"Özel Kod %1"_s.arg(i + 1), list);
    }
    auto *unitSet = new QLineEdit;
    unitSet->setObjectName(u"brmseti"_s);
    bind(unitSet, m_stoktrf.brmseti);
    put(u"Stok Birim Seti Kodu"_s, unitSet);
    return panel;
}

QWidget *StoktrfWindow::cards(Program &program)
{
    auto *view = new GridView(m_stoktrf.l1, u"l1"_s);
    view->setAccessibleName(u"Stok Kart Listesi"_s);
    view->setEmptyText(u"\"Stok Dosyası Aç\" ile bir .txt dosyası seçin ya da dosyayı buraya "
                       "sürükleyin."_s);
    return checkedPanes({.window = this,
                         .rows = m_stoktrf.l1,
                         .view = view,
                         .frame = plainFrame(view),
                         .memoryKey = u"stoktrf/pane"_s,
                         .checks = *m_checks,
                         .report = m_stoktrf.okuma,
                         .program = program,
                         .notes = m_stoktrf.bilgi,
                         .okunurBicim = m_stoktrf.okunurBicim,
                         .shape = [this] { return shapeOf(m_stoktrf); },
                         .reread = [this] { m_stoktrf.stokdosyasikoku(); },
                         .listed =
                             [this] {
                                 return ListedRows{.grid = &m_stoktrf.l1,
                                                   .family = DocumentFamily::Items,
                                                   .number = shapeOf(m_stoktrf).number};
                             },
                         .written =
                             [this] {
                                 return writtenRows(m_stoktrf.l1, DocumentFamily::Items, false,
                                                    shapeOf(m_stoktrf).number, -1);
                             }});
}

} // namespace kervan
