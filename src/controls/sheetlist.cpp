#include "controls/sheetlist.h"

#include "base/failure.h"
#include "base/fields.h"
#include "controls/pictures.h"
#include "controls/transferwidgets.h"

#include <QAction>
#include <QLineEdit>
#include <QMenu>
#include <QShortcut>
#include <QStatusBar>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

// The transfer's window, which has a status bar to tell in.
const QWidget *windowOf(const QWidget *part)
{
    while (part->parentWidget() && !part->findChild<QStatusBar *>(u"sb1"_s))
        part = part->parentWidget();
    return part;
}

void showSheets(QLineEdit *box, TextField &name, const QStringList &sheets)
{
    auto *menu = new QMenu(box);
    menu->setObjectName(u"sayfalar"_s);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (const QString &sheet : sheets) {
        QAction *action = menu->addAction(QString(sheet).replace(u'&', u"&&"_s));
        action->setCheckable(true);
        action->setChecked(sheet == name.text());
        QObject::connect(action, &QAction::triggered, box, [box, &name, sheet] {
            name.setText(sheet);
            box->setFocus();
        });
        if (action->isChecked())
            menu->setActiveAction(action);
    }
    if (!menu->activeAction() && !sheets.isEmpty())
        menu->setActiveAction(menu->actions().constFirst());
    menu->popup(box->mapToGlobal(QPoint(0, box->height())));
}

} // namespace

void addSheetList(QLineEdit *box, TextField &name, std::function<QString()> file,
                  std::function<QStringList(const QString &path)> sheetsOf)
{
    QAction *list = box->addAction(picture(u"sheets"_s), QLineEdit::TrailingPosition);
    list->setObjectName(u"sayfalistesi"_s);
    list->setText(u"Dosyanın sayfaları"_s);
    list->setToolTip(u"Dosyanın sayfalarını listeler (Alt+Down)"_s);
    QObject::connect(list, &QAction::triggered, box,
                     [box, &name, file = std::move(file), sheetsOf = std::move(sheetsOf)] {
                         const QString path = file();
                         if (path.isEmpty())
                             return tellBelow(windowOf(box), u"Önce bir dosya açın: sayfaları "
                                                             "ondan listelenir."_s);
                         QStringList sheets;
                         if (const auto failed = passOver([&] { sheets = sheetsOf(path); }))
                             return tellBelow(windowOf(box), failed->headline());
                         showSheets(box, name, sheets);
                     });
    auto *keys = new QShortcut(QKeySequence(u"Alt+Down"_s), box);
    keys->setContext(Qt::WidgetShortcut);
    QObject::connect(keys, &QShortcut::activated, list, &QAction::trigger);
}

} // namespace kervan
