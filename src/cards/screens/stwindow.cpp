#include "cards/screens/stwindow.h"

#include "cards/cardchecks.h"
#include "check/screens/checkedlist.h"
#include "check/screens/listmemory.h"
#include "controls/announcing.h"
#include "controls/binding.h"
#include "controls/flowlayout.h"
#include "controls/gridview.h"
#include "controls/panes.h"
#include "controls/transferwidgets.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace kervan {

using namespace Qt::StringLiterals;

StWindow::StWindow(Program &program, QWidget *parent)
    : QWidget(parent)
    , m_st(program)
    , m_checks(checksOf(m_st, contentKnownBelow(this)))
{
    setObjectName(u"st"_s);
    setWindowTitle(u"Stok Kartı Transferi"_s);
    (new ListMemory(this, {u"c1"_s, u"c2"_s, u"c3"_s}))->setFile([this] {
        return m_st.bilgi.source.text();
    });
    layOutTransfer(this, {.strip = titleStrip(u"STOK KART TRANSFERİ"_s),
                          .notes = &m_st.bilgi,
                          .panels = {commands(), choices(), cards(program)},
                          .statusBar = transferStatusBar({}, m_nothing, m_st.bilgi, m_st.ilerleme),
                          .firstButton = u"chameleonButton5"_s,
                          .openFile = [this](const QString &path) {
                              m_st.kontrol(path);
                          }});
    bindHourglass(this, m_st.bekle);
    m_st.load();
}

QWidget *StWindow::commands()
{
    auto *bar = new QWidget;
    auto *row = new FlowLayout(bar);
    auto *open = commandButton(this, u"chameleonButton5"_s, u"Manual Aç"_s, u"open"_s, u"Ctrl+O"_s);
    connect(open, &QAbstractButton::clicked, this,
            [this] { readIntoList(this, [this] { m_st.manualac(); }); });
    auto *automatic = commandButton(this, u"chameleonButton2"_s, u"Otomatik Aç"_s, {}, u"F5"_s);
    automatic->setToolTip(u"Bu düğmenin bir işlevi yoktur (F5)"_s);
    auto *save = commandButton(this, u"chameleonButton1"_s, u"Logo Xml Manual Kaydet"_s, u"save"_s,
                               u"Ctrl+S"_s);
    connect(save, &QAbstractButton::clicked, this, [this] { m_st.manualkaydet(); });
    auto *autosave = commandButton(this, u"chameleonButton3"_s, u"Logo Xml Otomatik Kaydet"_s,
                                   u"autosave"_s, u"Ctrl+Shift+S"_s);
    connect(autosave, &QAbstractButton::clicked, this, [this] { m_st.otomatikkaydet(); });
    row->addWidget(open);
    row->addWidget(automatic);
    row->addSpacing(12);
    row->addWidget(save);
    row->addWidget(autosave);
    row->addStretch();
    return bar;
}

QWidget *StWindow::choices()
{
    auto *bar = new QWidget;
    auto *row = new FlowLayout(bar);
    const auto add = [&](const QString &name, const QString &label, ChoiceField &field) {
        auto *list = new QComboBox;
        list->setObjectName(name);
        list->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        list->setMinimumContentsLength(10);
        list->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        bind(list, field);
        row->addPair(labelFor(list, label), list);
        return list;
    };
    connect(add(u"c1"_s, u"Kdv Oranı:"_s, m_st.kdvOrani), &QComboBox::activated, this,
            [this] { m_st.kdvoranisec(); });
    connect(add(u"c2"_s, u"Birim Seti:"_s, m_st.birimSeti), &QComboBox::activated, this,
            [this] { m_st.birimsetisec(); });
    add(u"c3"_s, u"Statü Seçimi:"_s, m_st.statu);
    auto *count = new QLineEdit;
    count->setObjectName(u"Text1"_s);
    count->setReadOnly(true);
    count->setMaximumWidth(90);
    count->setAlignment(Qt::AlignRight);
    bind(count, m_st.kayitSayisi);
    connect(&m_st.kayitSayisi, &TextField::changed, count,
            [count] { announce(count, u"Kayıt Sayısı: %1"_s.arg(count->text())); });
    row->addPair(labelFor(count, u"Kayıt Sayısı:"_s), count);
    return bar;
}

QWidget *StWindow::cards(Program &program)
{
    auto *frame = new QGroupBox(u"Mey Stok Kart Listesi"_s);
    frame->setObjectName(u"f1"_s);
    auto *view = new GridView(m_st.l1, u"l1"_s);
    view->setAccessibleName(u"Mey Stok Kart Listesi"_s);
    view->setEmptyText(u"\"Manual Aç\" ile bir .xls dosyası seçin ya da dosyayı buraya "
                       "sürükleyin."_s);
    auto *column = new QVBoxLayout(frame);
    column->addWidget(view);
    return checkedPanes({.window = this,
                         .rows = m_st.l1,
                         .view = view,
                         .frame = frame,
                         .memoryKey = u"st/pane"_s,
                         .checks = *m_checks,
                         .report = m_st.okuma,
                         .program = program,
                         .notes = m_st.bilgi,
                         .okunurBicim = m_st.okunurBicim,
                         .shape = [this] { return shapeOf(m_st); },
                         .reread = [this] { m_st.ac(m_st.bilgi.source.text()); },
                         .listed =
                             [this] {
                                 return ListedRows{.grid = &m_st.l1,
                                                   .family = DocumentFamily::Items,
                                                   .number = shapeOf(m_st).number};
                             },
                         .written =
                             [this] {
                                 return writtenRows(m_st.l1, DocumentFamily::Items, false,
                                                    shapeOf(m_st).number, -1);
                             }});
}

} // namespace kervan
