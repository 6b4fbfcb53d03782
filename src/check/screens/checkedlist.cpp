#include "check/screens/checkedlist.h"

#include "check/rememberedticks.h"
#include "check/screens/documentpage.h"
#include "check/screens/findingspage.h"
#include "check/screens/gapspage.h"
#include "check/screens/listmemory.h"
#include "check/screens/listwatch.h"
#include "check/screens/reportpage.h"
#include "check/screens/totalsline.h"
#include "controls/binding.h"
#include "controls/gridview.h"
#include "controls/transferwidgets.h"

#include <QCheckBox>
#include <QShortcut>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

QCheckBox *xmlBox(XmlChoice &okunurBicim)
{
    auto *box = new QCheckBox(u"Logo'nun okuyacağı biçimde yaz"_s);
    box->setObjectName(u"okunurBicim"_s);
    box->setToolTip(
        u"Değerlerin içindeki &amp;, &lt; ve &gt; Xml'in istediği gibi yazılır, denetim "
        "karakterleri çıkarılır. Kapalıyken değerler olduğu gibi yazılır."_s);
    bind(box, okunurBicim);
    return box;
}

TotalsLine *totalsLine(const CheckedList &list)
{
    auto *line = new TotalsLine(list.window, list.notes);
    Totals &totals = line->addList(list.rows, list.view, list.shape);
    if (list.belowLimit)
        totals.setBelowLimit(list.belowLimit);
    if (list.secondRows)
        line->addList(*list.secondRows, list.linesView, list.secondShape);
    return line;
}

// The ticks as they stand; what was offered before stays an offer.
void rereadWithTicks(const CheckedList &list)
{
    RememberedTicks first, second;
    first.take(list.rows, list.shape());
    if (list.secondRows)
        second.take(*list.secondRows, list.secondShape());
    readIntoList(list.window, list.reread);
    first.giveBack(list.rows, list.shape());
    if (list.secondRows)
        second.giveBack(*list.secondRows, list.secondShape());
}

} // namespace

Panes *checkedPanes(const CheckedList &list)
{
    const auto tell = [window = list.window](const QString &text) {
        tellBelow(window, text);
    };
    auto *pane = new CheckPane;
    auto *findings = new FindingsPage(list.checks, {.screen = list.window,
                                                    .list = list.rows,
                                                    .view = list.view,
                                                    .shape = list.shape,
                                                    .dialogs = list.program.dialogs,
                                                    .tell = tell});
    findings->addToHead(xmlBox(list.okunurBicim));
    auto *report = new ReportPage(list.report);
    auto *gaps = new GapsPage(list.checks, list.program.dialogs, tell);
    auto *document = new DocumentPage(list.program.dialogs);
    if (list.lines)
        pane->addPage(list.lines, list.linesTitle, CheckPane::Opening::Open);
    const auto add = [pane](auto *page, const QString &title) {
        pane->addPage(page, title);
        QObject::connect(page, &std::remove_pointer_t<decltype(page)>::titleChanged, pane,
                         [pane, page](const QString &text) { pane->setTitle(page, text); });
    };
    add(findings, u"Denetim"_s);
    add(report, u"Okuma"_s);
    add(gaps, u"Eksikler"_s);
    pane->addPage(document, u"Belge"_s);
    auto *line = totalsLine(list);
    pane->addToLine(line);
    list.checks.silence(u"XML işareti"_s, list.okunurBicim); // it writes them as XML asks
    new ListWatch(list, findings, document, line);
    list.checks.askScreen();
    if (auto *memory = list.window->findChild<ListMemory *>()) {
        memory->add(list.rows, list.shape);
        if (list.secondRows)
            memory->add(*list.secondRows, list.secondShape);
    }
    QObject::connect(gaps, &GapsPage::rereadWanted, list.window, [list] { rereadWithTicks(list); });
    QObject::connect(findings, &FindingsPage::wanted, pane,
                     [pane, findings, lines = list.lines](FindingsPage::Wanted page) {
                         pane->showPage(page == FindingsPage::Wanted::Lines && lines ? lines
                                                                                     : findings);
                     });
    const auto key = [&](const QKeySequence &keys, const std::function<void()> &action) {
        auto *shortcut = new QShortcut(keys, list.window);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        QObject::connect(shortcut, &QShortcut::activated, pane, action);
    };
    key(Qt::Key_F8, [findings] { findings->goOn(1); });
    key(Qt::SHIFT | Qt::Key_F8, [findings] { findings->goOn(-1); });
    key(Qt::CTRL | Qt::SHIFT | Qt::Key_B, [pane, document] {
        pane->showPage(document);
        document->openDocument();
    });
    return new Panes(list.frame, pane, list.linesView, list.memoryKey);
}

ContentOf contentKnownBelow(const QWidget *window)
{
    return [window](const QString &path) {
        const auto *watch = window->findChild<ListWatch *>();
        return watch ? watch->documents().contentOf(path) : QString();
    };
}

} // namespace kervan
