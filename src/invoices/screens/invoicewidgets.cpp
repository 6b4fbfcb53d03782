#include "invoices/screens/invoicewidgets.h"

#include "controls/binding.h"
#include "controls/dateedit.h"
#include "controls/flowlayout.h"
#include "controls/gridview.h"
#include "controls/panes.h"
#include "controls/remembered.h"
#include "controls/transferwidgets.h"
#include "invoices/columns.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QGuiApplication>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

QCheckBox *check(const QString &name, const QString &caption, CheckField &field)
{
    auto *box = new QCheckBox(caption);
    box->setObjectName(name);
    bind(box, field);
    return box;
}

GridView *lineView(Grid &l2)
{
    auto *view = new GridView(l2, u"l2"_s);
    view->setAccessibleName(u"Fatura Kalemleri"_s);
    view->freeze(L2::UrunAdi + 1);
    view->setEmptyText(u"Kalemlerini görmek için listeden bir faturaya tıklayın."_s);
    return view;
}

QComboBox *namedBox(const QString &name, ChoiceField &field, const QString &what,
                    const QString &hint)
{
    auto *box = choiceBox(name, field);
    box->setAccessibleName(what);
    box->setToolTip(hint);
    return box;
}

QWidget *page(GridView *view)
{
    auto *page = new QWidget;
    auto *column = new QVBoxLayout(page);
    column->setContentsMargins({});
    column->addWidget(view);
    return page;
}

QGroupBox *listFrame(const QString &caption, GridView *view)
{
    auto *frame = new QGroupBox(caption);
    auto *column = new QVBoxLayout(frame);
    column->setContentsMargins(4, 0, 4, 1);
    column->addWidget(view);
    return frame;
}

} // namespace

QComboBox *choiceBox(const QString &name, ChoiceField &field, bool editable)
{
    auto *box = new QComboBox;
    box->setObjectName(name);
    box->setEditable(editable);
    box->setInsertPolicy(QComboBox::NoInsert);
    box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    box->setMinimumContentsLength(6); // the layouts give it what there is
    bind(box, field);
    return box;
}

QComboBox *kindBox(ChoiceField &faturaTuru)
{
    return namedBox(u"fatbilgi"_s, faturaTuru, u"Fatura türü"_s,
                    u"Fatura türü: seçim dosyayı yeniden okutur"_s);
}

QComboBox *staffBox(ChoiceField &personel)
{
    return namedBox(u"pers"_s, personel, u"Personel"_s,
                    u"Personel listesi: seçim dosyayı yeniden okutur, listeyi süzmez"_s);
}

void addListCommands(FlowLayout *row, QWidget *window, InvoiceList &list,
                     const std::function<void(const QPoint &place)> &menuWanted)
{
    auto *menu = commandButton(window, u"lvButtons_H2"_s, u"Fatura Liste Seçim"_s, u"listmenu"_s,
                               u"Ctrl+L"_s);
    QObject::connect(menu, &QAbstractButton::clicked, window, [menu, menuWanted] {
        menuWanted(menu->mapToGlobal(QPoint(0, menu->height())));
    });
    auto *remove = commandButton(window, u"chameleonButton6"_s, u"Seçilen Faturaları Sil"_s,
                                 u"remove"_s, u"Ctrl+Del"_s);
    QObject::connect(remove, &QAbstractButton::clicked, window, [&list] { list.secilenlerisil(); });
    row->addStretch();
    row->addWidget(menu);
    row->addWidget(remove);
}

void addField(FieldPanel *panel, const QString &label, QWidget *field)
{
    panel->add(labelFor(field, label), field);
}

QPushButton *dailyChoicesButton(QWidget *window, Notes &notes, const QList<DailyChoice> &choices)
{
    auto *button = commandButton(window, u"dunku"_s, u"Dünkü seçimler"_s, {}, u"F9"_s);
    button->setFocusPolicy(Qt::ClickFocus); // Tab goes on from field to field
    const auto keyOf = [window](const DailyChoice &choice) {
        return u"%1/daily/%2"_s.arg(window->objectName(), choice.name);
    };
    const auto showWhich = [button, choices, keyOf] {
        QStringList parts;
        for (const DailyChoice &choice : choices) {
            const QString text = remembered(keyOf(choice)).toString();
            if (!text.isEmpty())
                parts << u"%1 %2"_s.arg(choice.name, text);
        }
        const QString which = parts.isEmpty()
                                  ? u"Son belgedeki seçimleri yapar; daha belge yazılmadı"_s
                                  : u"Son belgedeki seçimleri yapar: "_s + parts.join(u", "_s);
        button->setToolTip(which.toHtmlEscaped() + u" (F9)"_s);
        button->setAccessibleDescription(which);
    };
    showWhich();
    QObject::connect(&notes, &Notes::changed, button,
                     [&notes, choices, keyOf, showWhich, seen = qsizetype(0)]() mutable {
                         const bool isFirst = std::exchange(seen, notes.written().size()) == 0;
                         if (!isFirst || seen == 0)
                             return;
                         for (const DailyChoice &choice : choices)
                             remember(keyOf(choice), choice.field.text());
                         showWhich();
                     });
    QObject::connect(button, &QAbstractButton::clicked, window, [window, &notes, choices, keyOf] {
        bool isFirst = true; // nothing was remembered yet
        for (const DailyChoice &choice : choices) {
            const QString text = remembered(keyOf(choice)).toString();
            isFirst = isFirst && text.isEmpty();
            if (text.isEmpty() || text == choice.field.text())
                continue;
            if (!choice.field.entries().contains(text)) {
                notes.add(u"%1 \"%2\" artık listede yok, seçilmedi."_s.arg(choice.name, text));
                continue;
            }
            choice.field.setText(text);
            choice.pick();
        }
        if (isFirst)
            tellBelow(window, u"Hatırlanan seçim yok: ilk belge yazıldığında saklanır."_s);
    });
    return button;
}

QCheckBox *allRowsBox(InvoiceList &list)
{
    auto *box = check(u"Check2"_s, u"Tümünü Seç"_s, list.tumunuSec);
    QObject::connect(box, &QCheckBox::toggled, box, [&list] { list.tumunusecdegisti(); });
    return box;
}

QCheckBox *addDateFilter(FlowLayout *row, InvoiceList &list, const std::function<void()> &changed)
{
    auto *range = check(u"Check1"_s, u"Tarih Aralığı Belirle"_s, list.tarihAraligi);
    row->addWidget(range);
    const auto date = [&](const QString &name, const QString &label, DateField &field) {
        auto *edit = new DateEdit;
        edit->setObjectName(name);
        bind(edit, field);
        // An impossible date leaves the list as it is.
        QObject::connect(edit, &DateEdit::dateChanged, edit, [changed](QDate entered) {
            if (entered.isValid())
                changed();
        });
        row->addPair(labelFor(edit, label), edit);
    };
    date(u"d1"_s, u"İlk Tarih"_s, list.ilkTarih);
    date(u"d2"_s, u"Son Tarih"_s, list.sonTarih);
    return range;
}

GridView *invoiceView(InvoiceList &list, const QString &source, TextField &caption,
                      const std::function<void(int row)> &choose)
{
    auto *view = new GridView(list.l1, u"l1"_s);
    view->setAccessibleName(u"Fatura Listesi"_s);
    view->freeze(L1::Unvani + 1);
    view->setCustomerColumn(L1::CariKodu);
    view->setEmptyText(u"\"Fatura Dosyası Aç\" ile bir %1 dosyası seçin ya da dosyayı buraya "
                       "sürükleyin."_s.arg(source));
    QObject::connect(&caption, &TextField::changed, view,
                     [view] { view->setEmptyText(u"Listede gösterilecek fatura yok."_s); });
    QObject::connect(view, &QAbstractItemView::clicked, view,
                     [view, choose](const QModelIndex &index) {
                         // Its tick box alone does not choose a row, and Ctrl takes one out.
                         if (!view->selectionModel()->isSelected(index) &&
                             QGuiApplication::keyboardModifiers() == Qt::NoModifier)
                             view->setCurrentIndex(index);
                         choose(index.row());
                     });
    QObject::connect(view, &GridView::movedTo, view, choose);
    auto *remove = new QShortcut(Qt::Key_Delete, view);
    remove->setContext(Qt::WidgetShortcut);
    QObject::connect(remove, &QShortcut::activated, view, [&list] { list.secilenlerisil(); });
    return view;
}

QWidget *invoiceLists(CheckedList list, Grid &l2)
{
    list.frame = listFrame(u"Fatura Listesi"_s, list.view);
    list.memoryKey = u"invoices/lines"_s;
    list.linesView = lineView(l2);
    list.lines = page(list.linesView);
    list.linesTitle = u"Kalemler"_s;
    return checkedPanes(list);
}

} // namespace kervan
