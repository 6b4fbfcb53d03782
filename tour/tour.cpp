#include "tour/tour.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QTableView>
#include <QTest>

namespace kervan {

using namespace Qt::StringLiterals;

Tour::Tour(MainWindow &window, const QString &folder)
    : m_window(window)
    , m_folder(folder)
{
    m_answers.setInterval(50);
    QObject::connect(&m_answers, &QTimer::timeout, [this] { answerModal(); });
    m_answers.start();
}

void Tour::click(QWidget *inside, const char *name)
{
    auto *button = find<QAbstractButton>(inside, name);
    const QPoint onItsBox(qMin(10, button->width() / 2), button->height() / 2);
    QTest::mouseClick(button, Qt::LeftButton, {}, onItsBox);
    QTest::qWait(50);
}

void Tour::choose(const char *action)
{
    find<QAction>(&m_window, action)->trigger();
}

void Tour::choose(QWidget *inside, const char *list, int entry)
{
    auto *box = find<QComboBox>(inside, list);
    box->setFocus();
    QTest::keyClick(box, Qt::Key_Home);
    for (int i = 0; i < entry; ++i)
        QTest::keyClick(box, Qt::Key_Down);
    if (box->currentIndex() == entry) // Home on the shown entry tells nobody
        Q_EMIT box->activated(entry);
}

void Tour::clickRow(QWidget *inside, const char *view, int row, int column)
{
    auto *table = find<QTableView>(inside, view);
    const QPoint place = table->visualRect(table->model()->index(row, column)).center();
    QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, place);
    QTest::qWait(50);
}

void Tour::type(QWidget *inside, const char *edit, const QString &text)
{
    auto *line = find<QLineEdit>(inside, edit);
    line->setFocus();
    line->selectAll();
    for (const QChar letter : text) // keyClicks() knows no Turkish letters
        QTest::sendKeyEvent(QTest::Click, line, Qt::Key_unknown, QString(letter), {});
}

void Tour::picture(QWidget *widget, const QString &name)
{
    QTest::qWait(100);
    const QString file = u"%1-%2.png"_s.arg(++m_pictures, 2, 10, QChar(u'0')).arg(name);
    widget->grab().save(m_folder + u'/' + file);
    m_made << file;
}

// Boxes and file dialogs block the click that brought them up, so a timer answers them.
void Tour::answerModal()
{
    QWidget *modal = QApplication::activeModalWidget();
    if (auto *dialog = qobject_cast<QFileDialog *>(modal)) {
        if (m_nextFile.isEmpty())
            qFatal("the tour did not expect the dialog %s", qPrintable(dialog->windowTitle()));
        if (auto *name = dialog->findChild<QLineEdit *>(u"fileNameEdit"_s))
            name->setText(m_nextFile);
        m_nextFile.clear();
        picture(dialog, u"dosya-penceresi"_s);
        static_cast<QDialog *>(dialog)->accept();
    } else if (auto *box = qobject_cast<QMessageBox *>(modal)) {
        picture(box, u"kutu"_s);
        box->accept();
    }
}

} // namespace kervan
