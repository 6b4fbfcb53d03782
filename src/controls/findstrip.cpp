#include "controls/findstrip.h"

#include "controls/announcing.h"
#include "controls/gridview.h"
#include "controls/notestrip.h"
#include "controls/pictures.h"
#include "controls/transferwidgets.h"

#include <QApplication>
#include <QCheckBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QStatusBar>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

QToolButton *flatButton(const QString &pictureName, const QString &name, const QString &what,
                        const QString &keys)
{
    auto *button = new QToolButton;
    button->setObjectName(name);
    button->setIcon(picture(pictureName));
    button->setAccessibleName(what);
    button->setToolTip(u"%1 (%2)"_s.arg(what, keys));
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    return button;
}

QPushButton *push(const QString &name, const QString &caption, const QString &hint)
{
    auto *button = new QPushButton(caption);
    button->setObjectName(name);
    button->setToolTip(hint);
    button->setAutoDefault(true);
    return button;
}

QWidget *line(const QList<QWidget *> &parts, const QWidget *widest)
{
    auto *made = new QWidget;
    auto *row = new QHBoxLayout(made);
    row->setContentsMargins(4, 0, 4, 0);
    for (QWidget *part : parts)
        row->addWidget(part, part == widest ? 1 : 0);
    return made;
}

bool holds(const GridView &list, int row, const Needle &needle, int *where = nullptr)
{
    for (int column = 0; column < list.grid().columnCount(); ++column) {
        if (list.isColumnHidden(column) || !needle.isIn(list.grid().cell(row, column)))
            continue;
        if (where)
            *where = column;
        return true;
    }
    return false;
}

QString grouped(qsizetype count)
{
    return QLocale(QLocale::Turkish).toString(count);
}

} // namespace

FindStrip::FindStrip(QList<GridView *> lists)
    : m_lists(std::move(lists))
    , m_list(m_lists.constFirst())
    , m_search(makeSearch())
    , m_filter(makeFilter())
{
    setObjectName(u"bulserit"_s);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins({});
    column->setSpacing(screenSpacing);
    column->addWidget(m_filter);
    column->addWidget(m_search);
    m_search->hide();
    m_filter->hide();
    hide();
    const auto outdate = [this] {
        m_isStale = true;
    };
    for (GridView *list : std::as_const(m_lists)) {
        list->offerFilter();
        connect(list->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
                &FindStrip::showCount);
        connect(list, &GridView::filterChanged, this, [this, list] { filterChanged(list); });
        connect(list->model(), &QAbstractItemModel::dataChanged, this, outdate);
        connect(list->model(), &QAbstractItemModel::dataChanged, this, &FindStrip::showFilter);
        connect(list->model(), &QAbstractItemModel::modelReset, this, [this] {
            m_isStale = true;
            m_from = 0;
            m_count->setText(m_text->text().isEmpty() ? QString() : u"Enter ile ara"_s);
        });
    }
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget *, QWidget *now) {
        if (const auto at = m_lists.indexOf(now); at >= 0)
            follow(m_lists[at]);
    });
}

QWidget *FindStrip::makeSearch()
{
    m_text = new QLineEdit;
    m_text->setObjectName(u"aranan"_s);
    m_text->setMaximumWidth(320);
    m_text->setPlaceholderText(u"Bütün sütunlarda ara"_s);
    connect(m_text, &QLineEdit::textEdited, this, &FindStrip::type);
    auto *before = flatButton(u"findup"_s, u"onceki"_s, u"Öncekini bul"_s, u"Shift+F3"_s);
    connect(before, &QAbstractButton::clicked, this, [this] { step(-1); });
    auto *next = flatButton(u"finddown"_s, u"sonraki"_s, u"Sonrakini bul"_s, u"F3"_s);
    connect(next, &QAbstractButton::clicked, this, [this] { step(1); });
    m_count = new QLabel;
    m_count->setObjectName(u"bulunan"_s);
    m_count->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_tick = push(u"bulunanlariisaretle"_s, u"&Bulunanları işaretle"_s,
                  u"Bulunan satırları da işaretler, öbür işaretlere dokunmaz (Alt+B)"_s);
    connect(m_tick, &QAbstractButton::clicked, this, &FindStrip::tickHits);
    m_only = new QCheckBox(u"&Süz"_s); // its state is seen in every theme
    m_only->setObjectName(u"suz"_s);
    m_only->setToolTip(u"Yalnız bulunan satırları gösterir (Alt+S)"_s);
    connect(m_only, &QAbstractButton::toggled, this, &FindStrip::filterByText);
    auto *room = new QWidget;
    auto *close = flatButton(u"close"_s, u"bulkapat"_s, u"Aramayı kapat"_s, u"Esc"_s);
    connect(close, &QAbstractButton::clicked, this, &FindStrip::close);
    return line(
        {labelFor(m_text, u"Bul:"_s), m_text, before, next, m_count, m_tick, m_only, room, close},
        room);
}

QWidget *FindStrip::makeFilter()
{
    m_filterText = new CutLabel;
    m_filterText->setObjectName(u"suzmebilgi"_s);
    m_filterText->setTextFormat(Qt::PlainText);
    m_filterText->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    auto *all = push(u"suzmekaldir"_s, u"Süz&meyi kaldır"_s, u"Bütün satırları gösterir (Alt+M)"_s);
    connect(all, &QAbstractButton::clicked, this, [this] {
        for (GridView *list : std::as_const(m_lists))
            list->endFilter();
        m_list->enter();
    });
    return line({m_filterText, all}, m_filterText);
}

void FindStrip::follow(GridView *list)
{
    if (m_list == list)
        return;
    m_list = list;
    m_isStale = true;
    showOnly();
    showCount();
}

// Another page may stand in front of the list that had the focus.
void FindStrip::followWhatIsShown()
{
    if (!m_list->isVisible())
        follow(m_lists.constFirst());
}

void FindStrip::open()
{
    followWhatIsShown();
    show();
    m_search->show();
    m_from = qMax(m_list->currentIndex().row(), 0);
    m_text->setFocus(Qt::ShortcutFocusReason);
    m_text->selectAll();
    if (!m_text->text().isEmpty())
        search();
}

// The first row from where the search began, so that a longer text never goes back and forth.
void FindStrip::type()
{
    m_isStale = true;
    if (isFilteredByText())
        filterByText(true);
    search();
    const auto hit = std::ranges::lower_bound(m_hits, m_from);
    if (!m_hits.isEmpty())
        goToHit(hit == m_hits.end() ? 0 : static_cast<int>(hit - m_hits.begin()));
}

void FindStrip::search()
{
    m_hits.clear();
    const Needle needle(m_text->text());
    for (int row = 0; row < m_list->grid().rows() && !m_text->text().isEmpty(); ++row) {
        if (m_list->isShown(row) && holds(*m_list, row, needle))
            m_hits << row;
    }
    m_isStale = false;
    showCount();
}

void FindStrip::step(int by)
{
    if (m_text->text().isEmpty())
        return open();
    followWhatIsShown();
    if (m_isStale)
        search();
    if (m_hits.isEmpty())
        return announce(this, m_count->text());
    const int here = m_list->currentIndex().row();
    const auto count = static_cast<int>(m_hits.size());
    const auto at = static_cast<int>(std::ranges::lower_bound(m_hits, here) - m_hits.begin());
    const bool isOnHit = at < count && m_hits[at] == here;
    const int next = by > 0 ? at + (isOnHit ? 1 : 0) : at - 1;
    goToHit((next + count) % count);
    Q_EMIT m_list->movedTo(m_list->currentIndex().row());
    announce(this, m_count->text());
}

void FindStrip::goToHit(int hit)
{
    const int row = m_hits[hit];
    int column = 0;
    holds(*m_list, row, Needle(m_text->text()), &column);
    m_list->goTo(row, column);
    showCount();
}

void FindStrip::showCount()
{
    const int here = m_list->currentIndex().row();
    const auto at = std::ranges::lower_bound(m_hits, here);
    QString count;
    if (m_isStale || m_text->text().isEmpty())
        count.clear();
    else if (m_hits.isEmpty())
        count = u"Bulunamadı"_s;
    else if (at == m_hits.end() || *at != here)
        count = u"%1 satır"_s.arg(grouped(m_hits.size()));
    else
        count = u"%1 / %2"_s.arg(grouped(at - m_hits.begin() + 1), grouped(m_hits.size()));
    m_count->setText(count);
    m_count->setAccessibleName(u"Bulunan: %1"_s.arg(count));
    m_tick->setEnabled(!m_hits.isEmpty() && m_list->isTickable());
}

void FindStrip::tickHits()
{
    if (m_isStale)
        search();
    const int before = m_list->grid().tickedCount();
    m_list->grid().setTicked(m_hits, true);
    tellBelow(parentWidget(), u"%1 satır daha işaretlendi, %2 satır zaten işaretliydi."_s
                                  .arg(m_list->grid().tickedCount() - before)
                                  .arg(m_hits.size() - m_list->grid().tickedCount() + before));
}

void FindStrip::filterByText(bool on)
{
    const QString text = m_text->text();
    if (on && !text.isEmpty()) {
        m_asked = u"\"%1\" geçenler"_s.arg(text);
        m_list->filter({m_asked, [list = m_list, needle = Needle(text)](int row) {
                            return holds(*list, row, needle);
                        }});
    } else {
        m_list->endFilter();
    }
    showOnly();
}

bool FindStrip::isFilteredByText() const
{
    return m_list->isFiltered() && m_list->filteredBy() == m_asked;
}

void FindStrip::showOnly()
{
    const QSignalBlocker quiet(m_only);
    m_only->setChecked(isFilteredByText());
}

void FindStrip::filterChanged(GridView *list)
{
    const bool isReread = !list->isFiltered() &&
                          m_fillings.value(list, list->grid().filling()) != list->grid().filling();
    if (list->isFiltered())
        m_fillings[list] = list->grid().filling();
    else
        m_fillings.remove(list);
    if (list == m_list) {
        m_isStale = true;
        showOnly();
        if (!m_search->isHidden())
            search();
    }
    showFilter();
    if (isReread)
        tellBelow(parentWidget(),
                  u"Liste yeniden okundu, süzme kaldırıldı: bütün satırlar görünüyor."_s);
    else
        announce(this, list->isFiltered() ? m_filterText->text() : u"Bütün satırlar görünüyor"_s);
}

void FindStrip::showFilter()
{
    const QString text = filterText();
    m_filterText->setText(text);
    m_filterText->setToolTip(text.toHtmlEscaped());
    m_filter->setVisible(!text.isEmpty());
    setVisible(!text.isEmpty() || !m_search->isHidden());
}

QString FindStrip::filterText() const
{
    const auto filtered =
        m_list->isFiltered()
            ? m_lists.indexOf(m_list)
            : std::ranges::find_if(m_lists, &GridView::isFiltered) - m_lists.begin();
    if (filtered == m_lists.size())
        return {};
    const GridView *list = m_lists[filtered];
    QStringList parts{u"Süzüldü: %1"_s.arg(list->filteredBy()),
                      u"%1 satırdan %2 görünüyor"_s.arg(grouped(list->grid().rows()),
                                                        grouped(list->shownRows()))};
    if (const int ticks = list->hiddenTicks(); ticks > 0)
        parts << u"%1 işaretli satır gizli"_s.arg(grouped(ticks));
    if (list->isTickable())
        parts << u"\"Tümünü Seç\" gizli satırları da kapsar"_s;
    return parts.join(u" • "_s);
}

void FindStrip::close()
{
    for (GridView *list : std::as_const(m_lists))
        list->endFilter();
    m_search->hide();
    showFilter();
    followWhatIsShown();
    m_list->enter();
}

// Else Esc would be the window's, and close the screen.
bool FindStrip::event(QEvent *event)
{
    if (event->type() == QEvent::ShortcutOverride &&
        static_cast<QKeyEvent *>(event)->key() == Qt::Key_Escape) {
        event->accept();
        return true;
    }
    return QWidget::event(event);
}

void FindStrip::keyPressEvent(QKeyEvent *event)
{
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (event->key() == Qt::Key_Escape)
        close();
    else if (isEnter && m_text->hasFocus())
        step(event->modifiers() & Qt::ShiftModifier ? -1 : 1);
    else
        QWidget::keyPressEvent(event);
}

void installFind(QWidget *window)
{
    QList<GridView *> lists;
    for (const QString &name : {u"l1"_s, u"l2"_s}) {
        if (auto *list = window->findChild<GridView *>(name))
            lists << list;
    }
    auto *strip = new FindStrip(lists);
    auto *column = static_cast<QVBoxLayout *>(window->layout());
    column->insertWidget(column->indexOf(window->findChild<QStatusBar *>(u"sb1"_s)), strip);
    const auto key = [window](const QKeySequence &keys, const auto &action) {
        auto *shortcut = new QShortcut(keys, window);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        QObject::connect(shortcut, &QShortcut::activated, window, action);
    };
    key(QKeySequence(u"Ctrl+F"_s), [strip] { strip->open(); });
    key(Qt::Key_F3, [strip] { strip->step(1); });
    key(Qt::SHIFT | Qt::Key_F3, [strip] { strip->step(-1); });
}

} // namespace kervan
