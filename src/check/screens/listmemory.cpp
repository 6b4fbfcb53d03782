#include "check/screens/listmemory.h"

#include "controls/dateedit.h"
#include "controls/gridview.h"
#include "controls/linkbutton.h"
#include "controls/transferwidgets.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDate>
#include <QEvent>
#include <QFileInfo>
#include <QLineEdit>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr int aboveTheEdge = 10;

QString choiceOf(const QWidget *control)
{
    if (const auto *box = qobject_cast<const QComboBox *>(control))
        return box->currentText();
    if (const auto *date = qobject_cast<const DateEdit *>(control))
        return date->date().toString(Qt::ISODate);
    if (const auto *edit = qobject_cast<const QLineEdit *>(control))
        return edit->text();
    const auto *box = qobject_cast<const QCheckBox *>(control);
    return box && box->isChecked() ? u"1"_s : QString();
}

// As the user does it; what no longer is there to choose is left alone.
void choose(QWidget *control, const QString &choice)
{
    if (choiceOf(control) == choice)
        return;
    if (auto *list = qobject_cast<QComboBox *>(control)) {
        const int index = list->findText(choice, Qt::MatchExactly | Qt::MatchCaseSensitive);
        if (index >= 0) {
            list->setCurrentIndex(index);
            Q_EMIT list->activated(index);
        } else if (list->isEditable()) {
            list->setEditText(choice);
        }
    } else if (auto *date = qobject_cast<DateEdit *>(control)) {
        date->setDate(QDate::fromString(choice, Qt::ISODate));
        Q_EMIT date->dateChanged(date->date());
    } else if (auto *edit = qobject_cast<QLineEdit *>(control)) {
        edit->setText(choice);
    } else if (auto *box = qobject_cast<QCheckBox *>(control)) {
        box->click();
    }
}

// Keeps a link in the middle above the lower edge of an empty list.
class OnEmptyList : public QObject
{
public:
    OnEmptyList(GridView *view, LinkButton *link)
        : QObject(link)
        , m_view(view)
        , m_link(link)
    {
        link->setParent(view->viewport());
        view->viewport()->installEventFilter(this);
        const auto show = [this] {
            m_link->setVisible(m_view->model()->rowCount() == 0);
        };
        connect(view->model(), &QAbstractItemModel::modelReset, this, show);
        connect(view->model(), &QAbstractItemModel::rowsInserted, this, show);
        place();
        show();
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Resize)
            place();
        return QObject::eventFilter(watched, event);
    }

private:
    void place()
    {
        const QSize size = m_link->sizeHint();
        const QRect room = m_view->viewport()->rect();
        m_link->setGeometry((room.width() - size.width()) / 2,
                            qMax(0, room.height() - size.height() - aboveTheEdge), size.width(),
                            size.height());
    }

    GridView *m_view;
    LinkButton *m_link;
};

QList<std::pair<QString, QString>> choicesOf(const QWidget *window, const QStringList &names)
{
    QList<std::pair<QString, QString>> choices;
    for (const QString &name : names)
        choices.append({name, choiceOf(window->findChild<QWidget *>(name))});
    return choices;
}

void chooseAll(const QWidget *window, const QList<std::pair<QString, QString>> &choices)
{
    for (const auto &[name, choice] : choices)
        choose(window->findChild<QWidget *>(name), choice);
}

} // namespace

ListMemory::ListMemory(QWidget *window, QStringList before, QStringList after)
    : QObject(window)
    , m_window(window)
    , m_before(std::move(before))
    , m_after(std::move(after))
    , m_way([] { return 0; })
    , m_read([window](const QString &path, int) {
        Q_EMIT window->findChild<FileDrop *>()->dropped(path);
    })
{
}

void ListMemory::add(Grid &rows, std::function<ListShape()> shape)
{
    m_lists << List{&rows, std::move(shape)};
}

void ListMemory::setFile(std::function<QString()> file, std::function<int()> way)
{
    m_file = std::move(file);
    if (way)
        m_way = std::move(way);
}

void ListMemory::setRead(std::function<void(const QString &path, int way)> read)
{
    m_read = std::move(read);
}

std::optional<LastList> ListMemory::take() const
{
    const auto *list = m_window->findChild<GridView *>(u"l1"_s);
    const QString path = m_file ? m_file() : QString();
    if (path.isEmpty() || list->model()->rowCount() == 0)
        return std::nullopt;
    LastList last{.path = path,
                  .way = m_way(),
                  .before = choicesOf(m_window, m_before),
                  .after = choicesOf(m_window, m_after),
                  .ticks = {}};
    for (const List &each : m_lists) {
        RememberedTicks ticks;
        ticks.take(*each.rows, each.shape());
        last.ticks.append({ticks, each.rows->tickedCount()});
    }
    return last;
}

void ListMemory::offer(const LastList &last)
{
    m_last = last;
    int ticks = 0;
    for (const auto &[remembered, count] : last.ticks)
        ticks += count;
    QString what = QFileInfo(last.path).fileName();
    if (ticks > 0)
        what += u", %1 işaret"_s.arg(ticks);
    m_link = new LinkButton(m_window, u"sonliste"_s, u"Ctrl+Shift+O"_s);
    m_link->setLink(u"Son listeyi aç: %1  (Ctrl+Shift+O)"_s.arg(what),
                    u"Ekran kapanırkenki dosyayı, seçimleri ve işaretleri geri getirir"_s);
    connect(m_link, &QAbstractButton::clicked, this, &ListMemory::bringBack);
    new OnEmptyList(m_window->findChild<GridView *>(u"l1"_s), m_link);
}

void ListMemory::bringBack()
{
    m_link->deleteLater();
    m_link = nullptr;
    const LastList last = std::exchange(m_last, {});
    chooseAll(m_window, last.before);
    m_read(last.path, last.way);
    chooseAll(m_window, last.after);
    for (qsizetype i = 0; i < qMin(last.ticks.size(), m_lists.size()); ++i)
        last.ticks[i].first.giveBack(*m_lists[i].rows, m_lists[i].shape());
}

} // namespace kervan
