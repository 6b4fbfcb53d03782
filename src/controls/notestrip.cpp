#include "controls/notestrip.h"

#include "controls/announcing.h"
#include "controls/flowlayout.h"
#include "controls/linkbutton.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QFontMetrics>
#include <QHBoxLayout>
#include <QPainter>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QStyle>
#include <QToolButton>
#include <QUrl>
#include <QVBoxLayout>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr int shownLines = 4;
constexpr int mostKeys = 9;

QToolButton *smallButton(const QString &name, const QString &caption, const QString &hint)
{
    auto *button = new QToolButton;
    button->setObjectName(name);
    button->setText(caption);
    button->setToolTip(hint);
    button->setFocusPolicy(Qt::TabFocus);
    return button;
}

CutLabel *cutLabel(const QString &name)
{
    auto *label = new CutLabel;
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    return label;
}

QString sentenceOf(const Notes::Written &written)
{
    return u"%1 yazıldı: %2, %3"_s.arg(QFileInfo(written.path).fileName(), written.what,
                                       written.when.toString(u"HH:mm"_s));
}

} // namespace

void showFolderOf(const QString &path, Notes &notes)
{
    const QString folder = QFileInfo(path).absolutePath();
    if (!QDesktopServices::openUrl(QUrl::fromLocalFile(folder)))
        notes.add(u"Klasör açılamadı: %1"_s.arg(folder));
}

QSize CutLabel::minimumSizeHint() const
{
    return {0, QLabel::minimumSizeHint().height()};
}

void CutLabel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const QRect room = contentsRect();
    const QString shown = fontMetrics().elidedText(text(), Qt::ElideRight, room.width());
    style()->drawItemText(&painter, room, Qt::AlignLeft | Qt::AlignVCenter, palette(), isEnabled(),
                          shown, foregroundRole());
}

NoteStrip::NoteStrip(Notes &notes)
    : m_notes(notes)
    , m_text(cutLabel(u"bilgi"_s))
    , m_more(smallButton(u"ayrinti"_s, u"A&yrıntı"_s,
                         u"Metnin tümünü gösterir: seçilip kopyalanabilir"_s))
    , m_details(new QPlainTextEdit)
    , m_choices(new QWidget)
    , m_writtenText(cutLabel(u"yazilan"_s))
    , m_faults(makeFaults())
    , m_written(makeWritten())
{
    setObjectName(u"serit"_s);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(4);
    column->addWidget(m_faults);
    column->addWidget(m_written);
    connect(&m_notes, &Notes::changed, this, &NoteStrip::showNotes);
    showNotes();
}

QFrame *NoteStrip::makeFaults()
{
    m_more->setCheckable(true);
    connect(m_more, &QToolButton::toggled, m_details, &QWidget::setVisible);
    m_details->setObjectName(u"ayrintilar"_s);
    m_details->setAccessibleName(u"Bildirimlerin tümü"_s);
    m_details->verticalScrollBar()->setAccessibleName(u"Dikey kaydırma"_s);
    m_details->setReadOnly(true);
    m_details->setTabChangesFocus(true);
    m_details->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_details->setFixedHeight(m_details->fontMetrics().lineSpacing() * shownLines + 12);
    m_details->hide();
    auto *frame = new QFrame;
    frame->setObjectName(u"arizalar"_s);
    auto *column = new QVBoxLayout(frame);
    column->setContentsMargins(8, 3, 4, 3);
    auto *row = new QHBoxLayout;
    row->addWidget(m_text, 1);
    row->addWidget(m_more);
    column->addLayout(row);
    column->addWidget(m_choices);
    column->addWidget(m_details);
    m_choices->setObjectName(u"secenekler"_s);
    m_choices->hide();
    new FlowLayout(m_choices);
    return frame;
}

QFrame *NoteStrip::makeWritten()
{
    auto *folder =
        smallButton(u"klasorac"_s, u"&Klasörü aç"_s, u"Belgenin durduğu klasörü gösterir"_s);
    connect(folder, &QAbstractButton::clicked, this,
            [this] { showFolderOf(m_notes.written().constFirst().path, m_notes); });
    auto *frame = new QFrame;
    frame->setObjectName(u"yazilanlar"_s);
    auto *row = new QHBoxLayout(frame);
    row->setContentsMargins(8, 3, 4, 3);
    row->addWidget(m_writtenText, 1);
    row->addWidget(folder);
    return frame;
}

void NoteStrip::showNotes()
{
    m_text->setText(m_notes.text());
    m_text->setToolTip(m_notes.details().toHtmlEscaped().replace(u'\n', u"<br>"_s));
    m_details->setPlainText(m_notes.details());
    if (m_notes.text().isEmpty())
        m_more->setChecked(false);
    m_faults->setVisible(!m_notes.text().isEmpty());
    showChoices();

    QStringList sentences;
    QStringList paths;
    for (const Notes::Written &written : m_notes.written()) {
        sentences << sentenceOf(written);
        paths << written.path.toHtmlEscaped();
    }
    m_writtenText->setText(sentences.join(u" • "_s));
    m_writtenText->setToolTip(paths.join(u"<br>"_s));
    m_written->setVisible(!sentences.isEmpty());
    setVisible(!m_notes.text().isEmpty() || !sentences.isEmpty());

    const QString all = (QStringList{m_notes.text()} + sentences).join(u' ').trimmed();
    if (all == std::exchange(m_told, all) || all.isEmpty())
        return;
    setAccessibleName(all);
    announce(this, all);
}

void NoteStrip::showChoices()
{
    const QStringList &choices = m_notes.choices();
    if (choices == m_shownChoices)
        return;
    m_shownChoices = choices;
    qDeleteAll(m_choices->findChildren<QWidget *>(Qt::FindDirectChildrenOnly));
    for (int i = 0; i < choices.size(); ++i) {
        const QString keys = i < mostKeys ? u"Ctrl+Shift+%1"_s.arg(i + 1) : QString();
        auto *link = new LinkButton(parentWidget(), u"secenek%1"_s.arg(i + 1), keys);
        link->setLink(choices[i], u"Yerine bunu yazar"_s);
        connect(link, &QAbstractButton::clicked, this,
                [this, choice = choices[i]] { Q_EMIT m_notes.chosen(choice); });
        m_choices->layout()->addWidget(link);
    }
    m_choices->setVisible(!choices.isEmpty());
}

} // namespace kervan
