// The windows as users drive them: keys, clicks, a dropped file, and one road with the real boxes
// and dialogs.

#include "app/realports.h"
#include "app/samples.h"
#include "controls/dateedit.h"
#include "controls/gridview.h"
#include "invoices/desk.h"
#include "invoices/screens/fatwindow.h"
#include "stocktake/screens/urunwindow.h"
#include "support/driving.h"
#include "support/places.h"

#include <QAbstractItemView>
#include <QCalendarWidget>
#include <QClipboard>
#include <QComboBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QStatusBar>
#include <QTimer>
#include <QWheelEvent>

using namespace kervan;

namespace {

// The invoice window over a read file, shown and active.
struct Shown
{
    Desk desk;
    Boxes &boxes;
    FileDialogs &dialogs;
    Program program{desk.t.folder.path(), {}, {}, {}, boxes, dialogs, desk.t.clock,
                    desk.t.sqlServer};
    FatWindow window{program};
    Fat &fat = window.fat();
    Grid &l1 = fat.liste.l1;
    GridView *view = find<GridView>("l1");

    explicit Shown(Boxes *realBoxes = nullptr, FileDialogs *realDialogs = nullptr)
        : boxes(realBoxes ? *realBoxes : desk.t.boxes)
        , dialogs(realDialogs ? *realDialogs : desk.t.dialogs)
    {
        desk.t.fill({u"insert into firma values (Null ,'2','02','ŞUBE','','8','','120.02','')"_s});
        desk.open(header({.title = u"IŞIK MARKET"_s}) + goods(u"P1") +
                  header({u"F2"_s, u"20240308"_s}) + goods(u"P1") +
                  header({u"F3"_s, u"20240309"_s}));
        window.load();
        fat.dosyaac(desk.t.path(u"kaynak.bif"_s));
        window.show();
        if (!QTest::qWaitForWindowActive(&window))
            QTest::qFail("the window is not active", __FILE__, __LINE__);
    }
    template<class Widget>
    Widget *find(const char *name)
    {
        return window.findChild<Widget *>(QString::fromUtf8(name));
    }
    void clickRow(int row)
    {
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {},
                          view->visualRect(l1.index(row, 1)).center());
    }
};

} // namespace

class WindowsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rowsAreShownTickedCopiedAndRemovedByKeys()
    {
        Shown s;
        s.clickRow(1);
        QCOMPARE(s.fat.l2.cell(0, L2::Tutar), u"10,0000  (PK)"_s);
        QTest::keyClick(s.view, Qt::Key_Down);
        QVERIFY(s.fat.l2.isEmpty());
        s.clickRow(0);
        QTest::keyClick(s.view, Qt::Key_Down, Qt::ShiftModifier);
        QTest::keyClick(s.view, Qt::Key_Space);
        QVERIFY(s.l1.ticked(0) && s.l1.ticked(1) && !s.l1.ticked(2));
        QTest::keyClick(s.view, Qt::Key_C, Qt::ControlModifier);
        const QStringList lines = QApplication::clipboard()->text().split(u'\n');
        QCOMPARE(lines.size(), 2);
        QVERIFY(lines[1].startsWith(u"C1\tDeniz Market\tF2\t"));
        s.desk.t.boxes.expectWarning(u"Firma Seçiniz...!"_s);
        press(s.window, u"chameleonButton1"_s);
        QVERIFY(s.find<QComboBox>("c3")->hasFocus());
        s.view->setFocus();
        for (const bool yes : {false, true}) {
            s.desk.t.boxes.expectQuestion(u"Faturayı Listeden Silmek İstediğinize Eminmisiniz ?"_s,
                                          yes);
            QTest::keyClick(s.view, Qt::Key_Delete);
            QCOMPARE(s.find<QLabel>("sb1_2")->text(), yes ? u"1"_s : u"3"_s);
        }
        press(s.window, u"Check2"_s);
        QCOMPARE(s.l1.tickedCount(), 1);
        QTest::keyClick(s.view, Qt::Key_Z, Qt::ControlModifier);
        QTest::keyClick(s.view, Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(s.find<QLabel>("sb1_2")->text(), u"3"_s);
        QVERIFY(s.l1.ticked(0) && s.l1.ticked(1) && !s.l1.ticked(2));
    }

    void whatTheDateFilterTakesOutComesBackOnlyWhereItsRowsAreWhole()
    {
        Shown s;
        const auto undo = [&s] {
            QTest::keyClick(s.view, Qt::Key_Z, Qt::ControlModifier);
        };
        s.fat.liste.ilkTarih.setDate({2024, 3, 8});
        s.fat.liste.sonTarih.setDate({2024, 3, 8});
        press(s.window, u"Check1"_s);
        QCOMPARE(s.l1.rows(), 1);
        undo();
        QCOMPARE(s.l1.rows(), 3);
        QCOMPARE(s.l1.cell(0, L1::IslemNo), u"NT000001"_s);
        QTest::keyClick(s.view, Qt::Key_F5); // reads, filters and numbers
        QCOMPARE(s.l1.rows(), 1);
        undo();
        QCOMPARE(s.l1.rows(), 1);
    }

    void theKeysAreTheListsAfterEachCommandThatReads()
    {
        Shown s;
        auto *firms = s.find<QComboBox>("c3");
        const QString path = s.desk.t.path(u"kaynak.bif"_s);
        s.desk.t.dialogs.answers = {path};
        const std::array<std::function<void()>, 3> reads{
            [&] { QTest::keyClick(firms, Qt::Key_O, Qt::ControlModifier); },
            [&] { QTest::keyClick(firms, Qt::Key_F5); },
            [&] { drop(s.window, path); },
        };
        QTest::keyClick(firms, Qt::Key_Down);
        const QString chosen = firms->currentText();
        for (const auto &read : reads) {
            firms->setFocus();
            read();
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
            QCOMPARE(firms->currentText(), chosen);
            QVERIFY(s.view->hasFocus());
        }
        // A choice that reads keeps them: the next arrow goes on choosing.
        auto *kind = s.find<QComboBox>("fatbilgi");
        kind->setFocus();
        QTest::keyClick(kind, Qt::Key_Down);
        QVERIFY(kind->hasFocus());
        // A source without rows leaves them at a button, and at nothing that an arrow changes.
        firms->setFocus();
        drop(s.window, s.desk.t.path(u"yok.bif"_s));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
        QCOMPARE(firms->currentText(), chosen);
    }

    void theLinesAreThoseOfTheRowThatTheMouseTookHoweverItDid()
    {
        Shown s;
        const auto place = [&s](int row) {
            return s.view->visualRect(s.l1.index(row, 1)).center();
        };
        s.clickRow(0);
        QCOMPARE(s.fat.l2.rows(), 1);
        QTest::mouseClick(s.view->viewport(), Qt::RightButton, {}, place(2));
        QCOMPARE(s.view->currentIndex().row(), 2);
        QVERIFY(s.fat.l2.isEmpty()); // it has none
        QTest::mousePress(s.view->viewport(), Qt::LeftButton, {}, place(2));
        QTest::mouseMove(s.view->viewport(), place(1));
        QTest::mouseRelease(s.view->viewport(), Qt::LeftButton, {}, place(1));
        QCOMPARE(s.view->currentIndex().row(), 1);
        QCOMPARE(s.fat.l2.rows(), 1);
        // Ctrl takes a row out of the selection, and a tick box chooses its row.
        const QItemSelectionModel *selection = s.view->selectionModel();
        s.clickRow(0);
        for (const int rows : {2, 1}) {
            QTest::mouseClick(s.view->viewport(), Qt::LeftButton, Qt::ControlModifier, place(1));
            QCOMPARE(selection->selectedRows().size(), rows);
        }
        QTest::mouseClick(s.view->viewport(), Qt::LeftButton, {},
                          s.view->visualRect(s.l1.index(2, 0)).topLeft() +
                              QPoint(12, s.view->rowHeight(2) / 2));
        QVERIFY(s.l1.ticked(2) && selection->isRowSelected(2));
    }

    void theWheelOverAChoiceNotInUseChangesNothing()
    {
        Shown s;
        auto *kind = s.find<QComboBox>("fatbilgi");
        const auto turn = [kind] {
            QWheelEvent wheel({5, 5}, kind->mapToGlobal(QPointF(5, 5)), {0, -120}, {0, -120},
                              Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
            QApplication::sendEvent(kind, &wheel);
            return kind->currentText();
        };
        s.view->setFocus();
        QCOMPARE(turn(), u"10 (Satış Faturaları)"_s);
        kind->setFocus();
        QCOMPARE(turn(), u"20 (Alış Faturaları)"_s);
    }

    void theListFollowsTheSearchTheDatesAndADroppedFile()
    {
        Shown s;
        s.find<QLineEdit>("crara")->setText(u"Deniz"_s);
        QTest::keyClick(s.find<QLineEdit>("crara"), Qt::Key_Return);
        QCOMPARE(s.view->selectionModel()->selectedRows().size(), 2);
        QCOMPARE(s.l1.tickedCount(), 0);
        // Another search is for its own rows alone, and none found is told.
        type(s.window, u"crara"_s, u"MARKET"_s);
        QCOMPARE(s.view->selectionModel()->selectedRows().size(), 1);
        const auto *bar = s.find<QStatusBar>("sb1");
        QCOMPARE(bar->currentMessage(), QString());
        type(s.window, u"crara"_s, u"deniz"_s);
        QVERIFY(!s.view->selectionModel()->hasSelection());
        QVERIFY(bar->currentMessage().startsWith(u"\"deniz\" geçen bir unvan bulunamadı"));
        QVERIFY(s.find<QLineEdit>("crara")->hasFocus());
        press(s.window, u"Check1"_s);
        QCOMPARE(s.l1.rows(), 1);
        type(s.window, u"d2"_s, u"9.3.24"_s);
        QCOMPARE(s.l1.rows(), 3);
        type(s.window, u"d1"_s, u"08.03.2024"_s);
        QCOMPARE(s.l1.rows(), 2);
        // An impossible date stands as it was typed and filters nothing, also not later.
        type(s.window, u"d1"_s, u"31.02.2024"_s);
        QCOMPARE(s.find<QLineEdit>("d1")->text(), u"31.02.2024"_s);
        QVERIFY(s.find<QLineEdit>("d1")->accessibleDescription().startsWith(u"31.02.2024: "));
        QCOMPARE(s.l1.rows(), 2);
        press(s.window, u"chameleonButton2"_s);
        QCOMPARE(s.l1.rows(), 3);
        QVERIFY(s.find<QLabel>("bilgi")->text().startsWith(u"\"İlk Tarih\" bir tarih değil"));
        drop(s.window, s.desk.t.path(u"yok.bif"_s));
        QVERIFY(s.l1.isEmpty());
        // A failure without a box is told in the status bar.
        QVERIFY(s.find<QLabel>("bilgi")->text().contains(u"yok.bif"_s));
    }

    void aDateIsTheOneMeantHoweverItIsEntered_data()
    {
        QTest::addColumn<int>("cursor"); // -1: all is selected
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QDate>("date");
        const QDate meant(2025, 4, 7); // over 07.03.2024
        QTest::newRow("with points") << -1 << u"07.04.2025"_s << meant;
        QTest::newRow("without points") << -1 << u"07042025"_s << meant;
        QTest::newRow("with a short year") << -1 << u"7/4/25"_s << meant;
        QTest::newRow("from the start on, with points") << 0 << u"07.04.2025"_s << meant;
        QTest::newRow("from the start on, without points") << 0 << u"07042025"_s << meant;
        QTest::newRow("from the start on, as short as can be") << 0 << u"7.4.25"_s << meant;
        QTest::newRow("the day's last digit") << 1 << u"9"_s << QDate(2024, 3, 9);
        QTest::newRow("the month") << 3 << u"12"_s << QDate(2024, 12, 7);
        QTest::newRow("the month, in one digit") << 2 << u"4"_s << QDate(2024, 4, 7);
        QTest::newRow("the year") << 6 << u"2025"_s << QDate(2025, 3, 7);
        QTest::newRow("the year's last digit") << 9 << u"5"_s << QDate(2025, 3, 7);
        QTest::newRow("a day stepped by the arrow") << 1 << u"^"_s << QDate(2024, 3, 8);
        QTest::newRow("a month stepped by the arrow") << 4 << u"^"_s << QDate(2024, 4, 7);
        QTest::newRow("a date pasted amidst") << 4 << u"v"_s << meant;
        QTest::newRow("too many digits") << 10 << u"5"_s << QDate();
        QTest::newRow("a whole date behind the month") << 5 << u"07.04.2025"_s << meant;
        QTest::newRow("a whole date within the year") << 7 << u"070425"_s << meant;
        QTest::newRow("words") << -1 << u"yarın"_s << QDate();
    }
    void aDateIsTheOneMeantHoweverItIsEntered()
    {
        QFETCH(int, cursor);
        QFETCH(QString, typed);
        QFETCH(QDate, date);
        Shown s;
        auto *edit = s.find<DateEdit>("d1");
        const QSignalSpy changes(edit, &DateEdit::dateChanged);
        QTest::mouseClick(edit, Qt::LeftButton); // the first click takes it all
        QCOMPARE(edit->selectedText(), u"07.03.2024"_s);
        if (cursor >= 0)
            edit->setCursorPosition(cursor);
        QApplication::clipboard()->setText(u" 2025-04-07 00:00:00\n"_s);
        if (typed == u"^"_s)
            QTest::keyClick(edit, Qt::Key_Up);
        else if (typed == u"v"_s)
            QTest::keyClick(edit, Qt::Key_V, Qt::ControlModifier);
        else
            for (const QChar letter : typed)
                QTest::sendKeyEvent(QTest::Click, edit, Qt::Key_unknown, letter, Qt::NoModifier);
        QTest::keyClick(edit, Qt::Key_Tab);
        QCOMPARE(s.fat.liste.ilkTarih.date(), date);
        QCOMPARE(changes.size(), 1);
        if (date.isValid())
            QCOMPARE(edit->text(), date.toString(u"dd.MM.yyyy"));
    }

    void theCalendarGivesADateAndEscClosesNothingElse()
    {
        Shown s;
        const QSignalSpy closing(&s.window, &FatWindow::closeWanted);
        auto *edit = s.find<DateEdit>("d2");
        for (const auto key : {Qt::Key_Escape, Qt::Key_Return}) {
            QTest::keyClick(edit, Qt::Key_F4);
            QWidget *popup = QApplication::activePopupWidget();
            QVERIFY(popup);
            popup->findChild<QCalendarWidget *>()->setSelectedDate(QDate(2024, 3, 9));
            QTest::keyClick(popup->focusWidget(), key);
            QTRY_VERIFY(!QApplication::activePopupWidget());
            QCOMPARE(edit->text(), key == Qt::Key_Escape ? u"07.03.2024"_s : u"09.03.2024"_s);
        }
        auto *kind = s.find<QComboBox>("fatbilgi");
        kind->showPopup();
        QTest::keyClick(kind->view(), Qt::Key_Escape);
        QTRY_VERIFY(!kind->view()->isVisible());
        QCOMPARE(closing.size(), 0);
        QTest::keyClick(kind, Qt::Key_Escape);
        QCOMPARE(closing.size(), 1);
    }

    void theRoadWithRealBoxesAndDialogs()
    {
        ScreenBoxes boxes;
        const QTemporaryDir elsewhere;
        ScreenDialogs dialogs(elsewhere.path());
        QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        Shown s(&boxes, &dialogs);
        QStringList names{s.desk.t.path(u"c"_s), s.desk.t.path(u"kaynak.bif"_s)};
        QStringList seen;
        QTimer answers;
        connect(&answers, &QTimer::timeout, this, [&] {
            QWidget *modal = QApplication::activeModalWidget();
            if (auto *dialog = qobject_cast<QFileDialog *>(modal)) {
                seen << dialog->windowTitle();
                dialog->findChild<QLineEdit *>(u"fileNameEdit"_s)->setText(names.takeLast());
                static_cast<QDialog *>(dialog)->accept();
            } else if (auto *box = qobject_cast<QMessageBox *>(modal)) {
                seen << box->text();
                box->accept();
            }
        });
        answers.start(20);
        s.l1.clear();
        press(s.window, u"chameleonButton5"_s);
        QCOMPARE(s.l1.rows(), 3);
        s.fat.liste.fattumsec();
        auto *firms = s.find<QComboBox>("c3");
        QTest::keyClick(firms, Qt::Key_Down);
        QTest::keyClick(firms, Qt::Key_Down);
        press(s.window, u"chameleonButton1"_s);
        QCOMPARE(
            seen.join(u'|'),
            u"Fatura Dosyası Seçin|Fatura Xml Dosyası Kaydet|Kasa Nakit Xml Dönüşümü Tamamlandı...|Xml Dönüşümü Tamamlandı..."_s);
        const QByteArray document = readBytes(s.desk.t.path(u"c.xml"_s));
        QCOMPARE(document.count("<GL_CODE>120.02</GL_CODE>"), 3);
        QVERIFY(document.contains("<GL_CODE1></GL_CODE1>")); // no accounting row was chosen
        QCOMPARE(readBytes(s.desk.t.path(u"c-KASANAKIT.xml"_s)).count("<SD_TRANSACTION "), 3);
    }

    void aSaveDialogStartsInTheFolderWithoutANameAndTellsWhatItReplaces_data()
    {
        QTest::addColumn<QString>("start"); // "%1" is the program folder
        QTest::addColumn<QString>("folder");
        QTest::newRow("a folder") << u"%1/logo xml"_s << u"logo xml"_s;
        QTest::newRow("a full name") << u"%1/logo xml/fatura.xml"_s << u"logo xml"_s;
        QTest::newRow("a relative name") << u"logo xml/fatura.xml"_s << u"logo xml"_s;
        QTest::newRow("a folder that is gone") << u"%1/yok/orada da/fatura.xml"_s << u"."_s;
    }
    void aSaveDialogStartsInTheFolderWithoutANameAndTellsWhatItReplaces()
    {
        QFETCH(QString, start);
        QFETCH(QString, folder);
        TestProgram t;
        QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        const QDir wanted(QDir(t.path(folder)).canonicalPath());
        writeBytes(wanted.filePath(u"var.xml"_s), "x");
        if (start.contains(u'%'))
            start = start.arg(t.folder.path());
        QStringList seen;
        QTimer::singleShot(50, this, [&] {
            auto *dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
            auto *name = dialog->findChild<QLineEdit *>(u"fileNameEdit"_s);
            if (!QTest::qWaitForWindowActive(dialog)) // it goes by what has the focus
                seen << u"the dialog is not active"_s;
            seen << QDir(dialog->directory()).canonicalPath() << name->text();
            QVERIFY(QTest::qWaitForWindowActive(dialog)); // a name without the focus is passed over
            name->setFocus();
            for (const QString &typed : {u"var.xml"_s, u"var"_s, u"yeni"_s}) {
                name->setText(typed);
                seen << dialog->labelText(QFileDialog::Accept);
            }
            static_cast<QDialog *>(dialog)->accept();
        });
        ScreenDialogs dialogs(t.folder.path());
        const auto name = dialogs.saveName({u"Kaydet"_s, u"Xml Dosyaları (xml)|*.xml"_s, start});
        QCOMPARE(seen.join(u'|'), wanted.path() + u"||Ü&zerine Yaz|Ü&zerine Yaz|&Kaydet"_s);
        QCOMPARE(QFileInfo(name.value_or(QString())).fileName(), u"yeni"_s);
    }

    void aNameThatIsOnlyRememberedIsChosenFromTheOneThatStands()
    {
        TestProgram t;
        QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        QStringList seen;
        QTimer::singleShot(50, this, [&] {
            auto *dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
            seen << dialog->findChild<QLineEdit *>(u"fileNameEdit"_s)->text()
                 << dialog->labelText(QFileDialog::Accept);
            static_cast<QDialog *>(dialog)->accept();
        });
        ScreenDialogs dialogs(t.folder.path());
        const auto name = dialogs.anyName(
            {u"Hedef"_s, u"Exel Dosyaları (xml)|*.xml"_s, u"logo xml/fatura.xml"_s});
        QCOMPARE(seen.join(u'|'), u"fatura.xml|&Seç"_s);
        QCOMPARE(name, t.path(u"logo xml/fatura.xml"_s)); // which is not there
    }

    void theSamplesHoldNoPlaceOfTheirOwn()
    {
        TestProgram t;
        layOutSamples(samplePath(), t.folder.path());
        QCOMPARE(t.rows(u"yol ec es ef xc xs xf"_s), u"||txt|||logo xml/fatura.xml"_s);
    }

    void aQuestionIsAnsweredByNoUnlessTheUserSaysYes()
    {
        bool isNo = false;
        QTimer::singleShot(50, this, [&] {
            auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
            isNo = box->defaultButton()->text() == u"Hayır";
            QTest::keyClick(box, Qt::Key_Return);
        });
        QVERIFY(!ScreenBoxes().ask({u"Silinsin mi?"_s, u"DİKKAT"_s, Icon::Question}));
        QVERIFY(isNo);
    }

    void pricesAreTypedInAndSavedAndTheDownArrowAddsARow()
    {
        TestProgram t;
        UrunWindow window(t.program);
        const Grid &l1 = window.urunform().l1;
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        auto *view = window.findChild<GridView *>(u"l1"_s);
        view->setCurrentIndex(l1.index(8, Urunform::Kod));
        QTest::keyClick(view, Qt::Key_Down);
        QCOMPARE(l1.rows(), 10);
        QTest::keyClick(view, Qt::Key_Down);
        QCOMPARE(l1.rows(), 11);
        QCOMPARE(view->currentIndex().row(), 10);
        const auto type = [&](int column, const char *text) {
            view->setCurrentIndex(l1.index(10, column));
            view->setFocus();
            for (const char *letter = text; *letter; ++letter)
                QTest::keyClick(QApplication::focusWidget(), *letter);
        };
        type(Urunform::Kod, "KOD1");
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QTRY_COMPARE(l1.cell(10, Urunform::Kod), u"KOD1"_s);
        QTest::keyClick(&window, Qt::Key_Escape);
        QVERIFY(window.isVisible()); // what was typed is not lost by a key
        type(Urunform::Bfiyat, "1.2,3");
        // What is no price stays in edit, however the cell is left, and nothing is saved.
        auto *save = window.findChild<QPushButton *>(u"chameleonButton7"_s);
        const std::array<std::function<void()>, 4> ways{
            [&] { QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return); },
            [&] { QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab); },
            [&] { view->setCurrentIndex(l1.index(3, Urunform::Kod)); },
            [&] { QTest::mouseClick(save, Qt::LeftButton); },
        };
        for (const auto &leave : ways) {
            window.findChild<QLabel *>(u"bilgi"_s)->clear();
            leave();
            QTRY_VERIFY(qobject_cast<QLineEdit *>(QApplication::focusWidget()));
            QTRY_COMPARE(view->currentIndex(), l1.index(10, Urunform::Bfiyat));
            QVERIFY(window.isVisible());
            QVERIFY(window.findChild<QLabel *>(u"bilgi"_s)->text().startsWith(u"\"1.2,3\""));
        }
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
        QTRY_VERIFY(view->hasFocus());
        QCOMPARE(l1.cell(10, Urunform::Bfiyat), QString());
        QCOMPARE(window.findChild<QLabel *>(u"bilgi"_s)->text(), QString()); // nothing is refused
        QApplication::clipboard()->setText(u"A\tB\n"_s);
        view->setCurrentIndex(l1.index(10, Urunform::Ack));
        QTest::keyClick(view, Qt::Key_V, Qt::ControlModifier);
        QVERIFY(window.findChild<QLabel *>(u"bilgi"_s)->text().contains(u"\"B\" bir fiyat değil"));
        type(Urunform::Bfiyat, "1x2.5"); // the letter is not taken, the point is a comma
        // The cell is still being edited when the button is reached by its key.
        QTest::keyClick(&window, Qt::Key_S, Qt::ControlModifier);
        QVERIFY(!window.isVisible());
        QCOMPARE(t.rows(u"urun kod bfiyat"_s), u"KOD1|12,5"_s);
    }
};

QTEST_MAIN(WindowsTest)
#include "tst_windows.moc"
