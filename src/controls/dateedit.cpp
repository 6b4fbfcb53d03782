#include "controls/dateedit.h"

#include "controls/announcing.h"
#include "controls/pictures.h"
#include "controls/theme.h"
#include "text/dates.h"

#include <QAction>
#include <QCalendarWidget>
#include <QClipboard>
#include <QFrame>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QScreen>
#include <QSet>
#include <QStyle>
#include <QToolTip>
#include <QVBoxLayout>

#include <array>
#include <utility>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr QStringView spelling = u"dd.MM.yyyy";
constexpr int roomForSigns = 60; // the warning in front, the calendar behind
constexpr int wholeDate = 6;     // characters, at least

/// The day, month or year of a text that is parted by points, and where it stands.
struct Part
{
    int index = -1;
    qsizetype begin = 0;
    qsizetype end = 0;
    bool isFull() const { return end - begin == (index == 2 ? 4 : 2); }
};

Part partAt(const QString &text, qsizetype position)
{
    const QStringList pieces = text.split(u'.');
    Part part;
    if (pieces.size() != 3)
        return part;
    for (part.index = 0; part.index < 3; ++part.index) {
        part.end = part.begin + pieces[part.index].size();
        if (position <= part.end)
            return part;
        part.begin = part.end + 1;
    }
    return {};
}

// Those that have pictures for captions.
void nameParts(QCalendarWidget *calendar)
{
    calendar->setAccessibleName(u"Takvim"_s);
    const auto name = [calendar](const QString &part, const QString &what) {
        if (auto *widget = calendar->findChild<QWidget *>(part))
            widget->setAccessibleName(what);
    };
    name(u"qt_calendar_prevmonth"_s, u"Önceki ay"_s);
    name(u"qt_calendar_nextmonth"_s, u"Sonraki ay"_s);
    name(u"qt_calendar_yearedit"_s, u"Yıl"_s);
    name(u"qt_calendar_calendarview"_s, u"Günler"_s);
    const auto nameYear = [calendar, name] {
        name(u"qt_calendar_yearbutton"_s, u"Yıl: %1"_s.arg(calendar->yearShown()));
    };
    nameYear();
    QObject::connect(calendar, &QCalendarWidget::currentPageChanged, calendar, nameYear);
}

} // namespace

DateEdit::DateEdit(QWidget *parent)
    : QLineEdit(parent)
    , m_warning(addAction(style()->standardIcon(QStyle::SP_MessageBoxWarning), LeadingPosition))
{
    m_warning->setText(u"Böyle bir tarih yok"_s);
    m_warning->setVisible(false);
    setPlaceholderText(u"gg.aa.yyyy"_s);
    setToolTip(u"Tarih: 07.04.2025, 7.4.25 ya da 070425; takvim için F4"_s);
    setFixedWidth(fontMetrics().horizontalAdvance(u"00.00.0000"_s) + roomForSigns);
    auto *calendar = addAction(picture(u"calendar"_s), TrailingPosition);
    calendar->setText(u"Takvim"_s);
    calendar->setToolTip(u"Takvim (F4)"_s);
    connect(calendar, &QAction::triggered, this, &DateEdit::dropCalendar);
    connect(this, &QLineEdit::editingFinished, this, &DateEdit::takeText);
    connect(this, &QLineEdit::textEdited, this, [this] { mark(false); });
}

void DateEdit::setDate(QDate date)
{
    if (date == m_date)
        return;
    m_date = date;
    mark(false);
    setText(date.toString(spelling));
}

void DateEdit::take(QDate date)
{
    const bool isNew = date != m_date;
    m_date = date;
    if (date.isValid())
        setText(date.toString(spelling));
    mark(!date.isValid());
    if (isNew)
        Q_EMIT dateChanged(date);
}

void DateEdit::takeText()
{
    const int year = (m_date.isValid() ? m_date : QDate::currentDate()).year();
    const QString typed = std::exchange(m_typed, {});
    if (text() == m_date.toString(spelling))
        return;
    auto date = typedDate(text(), year);
    if (!date && typed.size() >= wholeDate) // a whole one, typed amidst the old one
        date = typedDate(typed, year);
    take(date.value_or(QDate()));
}

void DateEdit::mark(bool impossible)
{
    m_warning->setVisible(impossible);
    QPalette colours;
    if (impossible) {
        const QString what = text().isEmpty() ? u"Tarih boş"_s : u"%1: böyle bir tarih yok"_s;
        const QString told = (text().isEmpty() ? what : what.arg(text().left(40))) +
                             u"; liste buna göre süzülmez."_s;
        colours.setColor(QPalette::Text, faultText(QGuiApplication::palette()));
        setAccessibleDescription(told);
        m_warning->setToolTip(told);
        announce(this, told);
        if (isVisible())
            QToolTip::showText(mapToGlobal(QPoint(0, height() / 2)), told, this);
    } else {
        setAccessibleDescription({});
    }
    setPalette(colours);
}

// A text that is a date takes the place of the whole, wherever the cursor stands.
void DateEdit::pasteDate()
{
    const QString pasted = QGuiApplication::clipboard()->text().trimmed();
    if (typedDate(pasted, QDate::currentDate().year()))
        selectAll();
    insert(pasted);
    m_typed.clear();
    mark(false);
}

bool DateEdit::stepPart(int by)
{
    takeText();
    if (!m_date.isValid())
        return false;
    const Part part = partAt(text(), hasSelectedText() ? selectionStart() : cursorPosition());
    const std::array<QDate, 3> stepped{m_date.addDays(by), m_date.addMonths(by),
                                       m_date.addYears(by)};
    take(stepped[static_cast<std::size_t>(part.index)]);
    const Part shown = partAt(text(), part.begin);
    setSelection(static_cast<int>(shown.begin), static_cast<int>(shown.end - shown.begin));
    return true;
}

// A digit that is typed into a part which has all of its own takes the place of those behind the
// cursor; at the end of such a part it begins the next one.
void DateEdit::makeWay()
{
    Part part = partAt(text(), cursorPosition());
    if (hasSelectedText() || part.index < 0)
        return;
    if (part.isFull() && cursorPosition() == part.end && part.index < 2) {
        setCursorPosition(cursorPosition() + 1);
        part = partAt(text(), cursorPosition());
    }
    if (part.isFull())
        setSelection(cursorPosition(), static_cast<int>(part.end) - cursorPosition());
}

void DateEdit::keyPressEvent(QKeyEvent *event)
{
    const bool isUp = event->key() == Qt::Key_Up;
    const bool isDown = event->key() == Qt::Key_Down;
    if (event->key() == Qt::Key_F4 || (isDown && event->modifiers() == Qt::AltModifier))
        return dropCalendar();
    if ((isUp || isDown) && stepPart(isUp ? 1 : -1))
        return;
    if (event->matches(QKeySequence::Paste))
        return pasteDate();
    const QString typed = event->text();
    static const QSet<int> breaking{Qt::Key_Backspace, Qt::Key_Delete, Qt::Key_Left,
                                    Qt::Key_Right,     Qt::Key_Home,   Qt::Key_End};
    if (breaking.contains(event->key()))
        m_typed.clear();
    else if (typed.size() == 1 && typed[0].isPrint())
        m_typed += typed;
    if (typed.size() == 1 && typed[0].isDigit())
        makeWay();
    const bool isMark = typed.size() == 1 && u".,/-"_s.contains(typed[0]);
    if (isMark && !hasSelectedText() && text().mid(cursorPosition(), 1) == u".")
        setCursorPosition(cursorPosition() + 1);
    else
        QLineEdit::keyPressEvent(event);
}

void DateEdit::focusInEvent(QFocusEvent *event)
{
    m_typed.clear();
    m_clickedInto = event->reason() == Qt::MouseFocusReason;
    QLineEdit::focusInEvent(event);
}

void DateEdit::mousePressEvent(QMouseEvent *event)
{
    m_typed.clear();
    m_clickedInto = m_clickedInto || !hasFocus(); // not yet, where the click wakes the window
    QLineEdit::mousePressEvent(event);
}

// The first click chooses the whole date, so that one can be typed; the next sets the cursor.
void DateEdit::mouseReleaseEvent(QMouseEvent *event)
{
    QLineEdit::mouseReleaseEvent(event);
    if (m_clickedInto && !hasSelectedText())
        selectAll();
    m_clickedInto = false;
}

void DateEdit::dropCalendar()
{
    setFocus();
    takeText();
    auto *popup = new QFrame(this, Qt::Popup);
    popup->setAttribute(Qt::WA_DeleteOnClose);
    popup->setFrameShape(QFrame::StyledPanel);
    auto *calendar = new QCalendarWidget;
    calendar->setLocale(QLocale(QLocale::Turkish, QLocale::Turkey));
    calendar->setFirstDayOfWeek(Qt::Monday);
    calendar->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
    calendar->setDateRange(QDate(1900, 1, 1), QDate(2099, 12, 31));
    calendar->setSelectedDate(m_date.isValid() ? m_date : QDate::currentDate());
    nameParts(calendar);
    const auto choose = [this, popup](QDate date) {
        popup->close();
        take(date);
    };
    connect(calendar, &QCalendarWidget::clicked, this, choose);
    connect(calendar, &QCalendarWidget::activated, this, choose);
    auto *column = new QVBoxLayout(popup);
    column->setContentsMargins(1, 1, 1, 1);
    column->addWidget(calendar);
    const QSize size = popup->sizeHint();
    const QRect room = screen()->availableGeometry();
    QPoint place = mapToGlobal(QPoint(0, height()));
    if (place.y() + size.height() > room.bottom())
        place = mapToGlobal(QPoint(0, -size.height()));
    place.setX(qBound(room.left(), place.x(), qMax(room.left(), room.right() - size.width())));
    popup->move(place);
    popup->show();
    calendar->setFocus();
}

} // namespace kervan
