#include "app/realports.h"

#include "store/folders.h"
#include "transfer/target.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QLibraryInfo>
#include <QLineEdit>
#include <QLocale>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QTranslator>
#include <QVBoxLayout>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype longestMessage = 1200;
constexpr QSize roomForItsFrame(16, 40);

QString titleOf(const Box &box)
{
    return box.title.isEmpty() ? u"Kervan Transfer"_s : box.title;
}

QMessageBox::Icon iconOf(Icon icon)
{
    switch (icon) {
    case Icon::Information:
        return QMessageBox::Information;
    case Icon::Exclamation:
        return QMessageBox::Warning;
    case Icon::Stop:
        return QMessageBox::Critical;
    case Icon::Question:
        return QMessageBox::Question;
    case Icon::None:
        break;
    }
    return QMessageBox::NoIcon;
}

QString linesOf(const Box &box)
{
    return QString(box.text).replace(u"\r\n"_s, u"\n"_s);
}

// A text edit lays out a very long line slowly, so such a line is turned at blanks beforehand.
QString turned(QStringView text)
{
    constexpr qsizetype longestLine = 120;
    QString result;
    result.reserve(text.size() + text.size() / longestLine);
    qsizetype lineStart = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (c == u'\r' && text.sliced(i).startsWith(u"\r\n"))
            continue;
        result += c;
        const bool turn = c == u' ' && result.size() - lineStart >= longestLine;
        if (turn)
            result += u'\n';
        if (turn || c == u'\n')
            lineStart = result.size();
    }
    return result;
}

void showScrolling(const Box &box)
{
    QDialog dialog(QApplication::activeWindow());
    dialog.setWindowTitle(titleOf(box));
    auto *column = new QVBoxLayout(&dialog);
    auto *text = new QPlainTextEdit(turned(box.text));
    text->setReadOnly(true);
    text->setAccessibleName(titleOf(box));
    text->verticalScrollBar()->setAccessibleName(u"Dikey kaydırma"_s);
    text->horizontalScrollBar()->setAccessibleName(u"Yatay kaydırma"_s);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok);
    QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    column->addWidget(text);
    column->addWidget(buttons);
    dialog.resize(720, 420);
    dialog.exec();
}

QString qtFilter(const QString &filter)
{
    QString patterns = filter.section(u'|', 1);
    return u"%1 (%2)"_s.arg(filter.section(u'|', 0, 0), patterns.replace(u';', u' '));
}

// No larger than the desktop, at whose edge its buttons would be out of reach.
std::optional<QString> answerOf(QFileDialog &dialog)
{
    const QSize room = dialog.screen()->availableSize() - roomForItsFrame;
    dialog.resize(dialog.sizeHint().boundedTo(room));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().value(0).isEmpty())
        return std::nullopt;
    return dialog.selectedFiles().constFirst();
}

// Swallows what the user does.
class InputDropper : public QObject
{
public:
    bool eventFilter(QObject *, QEvent *event) override
    {
        switch (event->type()) {
        case QEvent::KeyPress:
        case QEvent::KeyRelease:
        case QEvent::ShortcutOverride:
        case QEvent::Shortcut:
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick:
        case QEvent::Wheel:
        case QEvent::ContextMenu:
        case QEvent::Drop:
            return true;
        default:
            return false;
        }
    }
};

// While work goes on, what is typed and clicked waits. It was meant for what was there then: it
// must neither answer a box that nobody has read nor close the screen behind it.
void dropWaitingInput()
{
    InputDropper dropper;
    QCoreApplication::instance()->installEventFilter(&dropper);
    QCoreApplication::processEvents(QEventLoop::ExcludeSocketNotifiers |
                                    QEventLoop::X11ExcludeTimers); // input alone, as far as it goes
}

// The nearest folder that is there.
QString folderOf(const QString &start)
{
    QFileInfo place(start);
    while (!place.isDir() && place.absolutePath() != place.absoluteFilePath())
        place = QFileInfo(place.absolutePath());
    return place.absoluteFilePath();
}

void tellWhatIsThere(QFileDialog &dialog, const QString &typed)
{
    const auto isThere = [&dialog](const QString &name) {
        return QFileInfo(dialog.directory().filePath(name)).isFile();
    };
    const bool replaces = !typed.isEmpty() && (isThere(typed) || isThere(xmlAdi(typed)));
    dialog.setLabelText(QFileDialog::Accept, replaces ? u"Ü&zerine Yaz"_s : u"&Kaydet"_s);
}

} // namespace

void ScreenBoxes::show(const Box &box)
{
    dropWaitingInput();
    if (box.text.size() > longestMessage)
        return showScrolling(box);
    QMessageBox message(iconOf(box.icon), titleOf(box), linesOf(box), QMessageBox::Ok,
                        QApplication::activeWindow());
    message.setTextFormat(Qt::PlainText);
    message.exec();
}

bool ScreenBoxes::ask(const Box &box)
{
    dropWaitingInput();
    QMessageBox message(iconOf(box.icon), titleOf(box), linesOf(box),
                        QMessageBox::Yes | QMessageBox::No, QApplication::activeWindow());
    message.setTextFormat(Qt::PlainText);
    message.button(QMessageBox::Yes)->setText(u"Evet"_s);
    message.button(QMessageBox::No)->setText(u"Hayır"_s);
    message.setDefaultButton(QMessageBox::No); // what is asked is whether to delete
    return message.exec() == QMessageBox::Yes;
}

std::optional<QString> ScreenDialogs::openName(const FileQuestion &question)
{
    QFileDialog dialog(QApplication::activeWindow(), question.title,
                       fullName(m_folder, question.start), qtFilter(question.filter));
    dialog.setFileMode(QFileDialog::ExistingFile);
    return answerOf(dialog);
}

std::optional<QString> ScreenDialogs::anyName(const FileQuestion &question)
{
    const QString start = fullName(m_folder, question.start);
    QFileDialog dialog(QApplication::activeWindow(), question.title, folderOf(start),
                       qtFilter(question.filter));
    if (!QFileInfo(start).isDir())
        dialog.selectFile(QFileInfo(start).fileName());
    dialog.setLabelText(QFileDialog::Accept, u"&Seç"_s);
    return answerOf(dialog);
}

std::optional<QString> ScreenDialogs::saveName(const FileQuestion &question)
{
    QFileDialog dialog(QApplication::activeWindow(), question.title,
                       folderOf(fullName(m_folder, question.start)), qtFilter(question.filter));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setOption(QFileDialog::DontConfirmOverwrite);
    // The desktop's own dialog has no such field; its list alone shows what is there.
    if (auto *name = dialog.findChild<QLineEdit *>(u"fileNameEdit"_s))
        QObject::connect(name, &QLineEdit::textChanged, &dialog,
                         [&dialog](const QString &typed) { tellWhatIsThere(dialog, typed); });
    return answerOf(dialog);
}

void speakTurkish(QApplication &application)
{
    auto *texts = new QTranslator(&application);
    if (texts->load(u"qtbase_tr"_s, QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QApplication::installTranslator(texts);
    // For the library alone: what the program writes is spelled by helpers of its own.
    QLocale::setDefault(QLocale(QLocale::Turkish, QLocale::Turkey));
}

} // namespace kervan
