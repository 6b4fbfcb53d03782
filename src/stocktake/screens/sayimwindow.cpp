#include "stocktake/screens/sayimwindow.h"

#include "check/screens/checkedlist.h"
#include "check/screens/listmemory.h"
#include "check/screens/listwatch.h"
#include "controls/binding.h"
#include "controls/flowlayout.h"
#include "controls/gridview.h"
#include "controls/linklabel.h"
#include "controls/panes.h"
#include "controls/transferwidgets.h"
#include "stocktake/countchecks.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

// One slip of the rows that Logo knows.
WrittenRows writtenCount(const Sayimform &sayim)
{
    WrittenRows rows;
    rows.family = DocumentFamily::Counts;
    for (int row = 0; row < sayim.l1.rows(); ++row)
        rows.count += sayim.l1.cell(row, Sayimform::StokKodu).isEmpty() ? 0 : 1;
    return rows;
}

} // namespace

SayimWindow::SayimWindow(Program &program, QWidget *parent)
    : QWidget(parent)
    , m_sayimform(program)
    , m_checks(checksOf(m_sayimform))
{
    setObjectName(u"sayimform"_s);
    setWindowTitle(u"Sayım Transferi"_s);
    (new ListMemory(this, {u"Text1"_s}))->setFile([this] {
        return m_sayimform.bilgi.source.text();
    });
    auto *strip = titleStrip(u"SAYIM AKTARIMI"_s);
    strip->addNote(new LinkLabel(u"Label9"_s, m_sayimform.link.durum));
    layOutTransfer(this,
                   {.strip = strip,
                    .notes = &m_sayimform.bilgi,
                    .panels = {commands(), counts(program)},
                    .statusBar = transferStatusBar(u"Sayım Sayısı:"_s, m_sayimform.sayimSayisi,
                                                   m_sayimform.bilgi, m_sayimform.ilerleme),
                    .firstButton = u"chameleonButton5"_s,
                    .openFile = [this](const QString &path) {
                        m_sayimform.dosyaac(path);
                    }});
}

QWidget *SayimWindow::commands()
{
    auto *bar = new QWidget;
    auto *row = new FlowLayout(bar);
    auto *open = commandButton(this, u"chameleonButton5"_s, u"Sayım Text Dosyası Aç"_s, u"open"_s,
                               u"Ctrl+O"_s);
    connect(open, &QAbstractButton::clicked, this,
            [this] { readIntoList(this, [this] { m_sayimform.dosyaac(); }); });
    auto *number = new QLineEdit;
    number->setObjectName(u"Text1"_s);
    number->setMaximumWidth(200);
    bind(number, m_sayimform.fisno);
    auto *save =
        commandButton(this, u"chameleonButton1"_s, u"Logo Xml Kaydet"_s, u"save"_s, u"Ctrl+S"_s);
    connect(save, &QAbstractButton::clicked, this, [this] { m_sayimform.xmlkaydet(); });
    auto *updating = commandButton(this, u"chameleonButton2"_s,
                                   u"Logo Güncelleme için Xml  Kaydet"_s, {}, u"Ctrl+Shift+S"_s);
    updating->setToolTip(u"Bu düğmenin bir işlevi yoktur (Ctrl+Shift+S)"_s);
    row->addWidget(open);
    row->addSpacing(12);
    row->addPair(labelFor(number, u"Fisno"_s), number);
    row->addSpacing(12);
    row->addWidget(save);
    row->addWidget(updating);
    row->addStretch();
    return bar;
}

QWidget *SayimWindow::counts(Program &program)
{
    auto *view = new GridView(m_sayimform.l1, u"l1"_s);
    view->setAccessibleName(u"Sayım Listesi"_s);
    view->setEmptyText(u"\"Sayım Text Dosyası Aç\" ile bir .txt dosyası seçin ya da dosyayı buraya "
                       "sürükleyin."_s);
    auto *panes = checkedPanes({.window = this,
                                .rows = m_sayimform.l1,
                                .view = view,
                                .frame = plainFrame(view),
                                .memoryKey = u"sayimform/pane"_s,
                                .checks = *m_checks,
                                .report = m_sayimform.okuma,
                                .program = program,
                                .notes = m_sayimform.bilgi,
                                .okunurBicim = m_sayimform.okunurBicim,
                                .shape = [this] { return shapeOf(m_sayimform); },
                                .reread = [this] { m_sayimform.sayimdosyasikoku(); },
                                .written =
                                    [this] {
                                        return writtenCount(m_sayimform);
                                    }});
    m_checks->add(writtenRule());
    return panes;
}

// A count is one slip, so it is its number that may be in a document already.
Rule SayimWindow::writtenRule() const
{
    return {.name = u"yazılmış sayım"_s,
            .cure =
                u"Fiş numarasını değiştirin ya da sayım Logo'ya aktarıldıysa yeniden yazmayın."_s,
            .control = u"Text1"_s,
            .ofScreen = [this, watch = findChild<ListWatch *>()] {
                return watch && !m_sayimform.l1.isEmpty()
                           ? watch->documents()
                                 .numbered(DocumentFamily::Counts, {}, m_sayimform.fisno.text())
                                 .sentence
                           : QString();
            }};
}

} // namespace kervan
