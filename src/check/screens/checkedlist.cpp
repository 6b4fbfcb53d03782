#include "check/screens/checkedlist.h"

#include "check/screens/findingspage.h"
#include "check/screens/gapspage.h"
#include "check/screens/listmemory.h"
#include "check/screens/reportpage.h"
#include "controls/gridview.h"
#include "controls/transferwidgets.h"

#include <QShortcut>

namespace kervan {

Panes *checkedPanes(const CheckedList &list)
{
    const auto tell = [window = list.window](const QString &text) {
        tellBelow(window, text);
    };
    auto *pane = new CheckPane;
    auto *findings = new FindingsPage(list.checks, {.list = list.rows,
                                                    .view = list.view,
                                                    .shape = list.shape,
                                                    .dialogs = list.dialogs,
                                                    .tell = tell});
    auto *report = new ReportPage(list.report);
    auto *gaps = new GapsPage(list.checks, list.dialogs, tell);
    if (list.lines)
        pane->addPage(list.lines, list.linesTitle, CheckPane::Opening::Open);
    const auto add = [pane](auto *page, const QString &title) {
        pane->addPage(page, title);
        QObject::connect(page, &std::remove_pointer_t<decltype(page)>::titleChanged, pane,
                         [pane, page](const QString &text) { pane->setTitle(page, text); });
    };
    add(findings, QStringLiteral("Denetim"));
    add(report, QStringLiteral("Okuma"));
    add(gaps, QStringLiteral("Eksikler"));
    list.checks.askScreen();
    if (auto *memory = list.window->findChild<ListMemory *>())
        memory->add(list.rows, list.shape);
    QObject::connect(
        gaps, &GapsPage::rereadWanted, list.window,
        [window = list.window, reread = list.reread] { readIntoList(window, reread); });
    const auto step = [&](const QKeySequence &keys, int by) {
        auto *shortcut = new QShortcut(keys, list.window);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        QObject::connect(shortcut, &QShortcut::activated, findings,
                         [findings, by] { findings->goOn(by); });
    };
    step(Qt::Key_F8, 1);
    step(Qt::SHIFT | Qt::Key_F8, -1);
    return new Panes(list.frame, pane, list.linesView, list.memoryKey);
}

} // namespace kervan
