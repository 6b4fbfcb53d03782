// What no procedure catches ends one step and not the program.

#include "app/lastnet.h"
#include "base/failure.h"
#include "controls/notestrip.h"
#include "support/shownframe.h"

#include <QPushButton>
#include <QTimer>

#include <stdexcept>

using namespace kervan;

#ifdef __SANITIZE_ADDRESS__
// What Qt holds while an exception goes through it is lost: some hundred bytes at each fault.
extern "C" const char *__lsan_default_suppressions(); // NOLINT(bugprone-reserved-identifier)
extern "C" const char *__lsan_default_suppressions()  // NOLINT(bugprone-reserved-identifier)
{
    return "leak:libQt6";
}
#endif

class TestLastNet : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void whatNobodyCatchesIsToldInTheStripOfTheScreenInFront()
    {
        const std::vector<std::pair<std::function<void()>, QString>> faults{
            {[] { throw std::length_error("too long"); }, u"too long"_s},
            {[] { throw Failure(u"okunamadı"_s); }, u"okunamadı"_s},
            {[] { throw 7; }, u"nedeni bilinmiyor"_s}};
        for (const auto &[fault, reason] : faults) {
            ShownFrame s;
            static_cast<NettedApplication *>(qApp)->tellBy(
                [&s](const QString &sentence) { s.window.tellFault(sentence); });
            s.show();
            s.window.open(u"fat"_s);
            auto *strip = s.window.findChild<NoteStrip *>();
            QPushButton button(u"&Ölç"_s, strip->parentWidget());
            connect(&button, &QPushButton::clicked, this, fault);
            button.show();
            QTest::mouseClick(&button, Qt::LeftButton);
            const auto text = [strip] {
                return strip->findChild<CutLabel *>(u"bilgi"_s)->text();
            };
            QVERIFY2(
                text().contains(u"\"Ölç\" yarıda kaldı, beklenmeyen bir hata oldu: "_s + reason),
                qPrintable(text()));
            // The next step runs, and a fault without a caption is told as well.
            QTimer::singleShot(0, this, fault);
            QTRY_VERIFY(text().contains(u"Beklenmeyen bir hata oldu: "_s + reason));
            s.t.dialogs.answers = {std::nullopt};
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_O, Qt::ControlModifier);
            QVERIFY(s.t.dialogs.answers.isEmpty());
        }
    }
};

int main(int argc, char **argv)
{
    NettedApplication application(argc, argv);
    TestLastNet test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_lastnet.moc"
