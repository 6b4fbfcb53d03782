// The windows as users drive them: keys, clicks, a dropped file, and one road with the real boxes
// and dialogs.

#include "app/realports.h"
#include "controls/gridview.h"
#include "invoices/columns.h"
#include "invoices/screens/fatwindow.h"
#include "stocktake/screens/urunwindow.h"
#include "support/fakes.h"
#include "support/ruler.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDateEdit>
#include <QDropEvent>
#include <QFileDialog>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>

using namespace kervan;
using namespace Qt::StringLiterals;

namespace {

QByteArray invoice(QStringView number, QStringView title, QStringView date = u"20240307")
{
    return Ruler(u"@5")
               .put(5, date)
               .put(28, u"120.1")
               .put(39, title)
               .put(80, number)
               .put(96, u"    118.0000")
               .put(109, u"      0.0000")
               .put(122, u"     18.0000")
               .put(135, u"    136.0000")
               .put(148, u"0")
               .line() +
           Ruler(u"@6")
               .put(31, u"KOD")
               .put(46, u"ÜRÜN")
               .put(97, u"    2.00")
               .put(106, u"     59.0000")
               .put(124, u"    118.0000")
               .line();
}

void writeSource(TestProgram &test)
{
    test.fill(u"data.dbs"_s,
              {u"insert into urun values ('KOD','','','50')"_s,
               u"insert into muh values (Null ,'611','18','','600','','','','391','','')"_s,
               u"insert into firma values (Null ,'1','01','MERKEZ','','7','','120.01','')"_s,
               u"insert into firma values (Null ,'2','02','ŞUBE','','8','','120.02','')"_s});
    writeBytes(test.path(u"a.bif"_s), invoice(u"F1", u"IŞIK MARKET") +
                                          invoice(u"F2", u"ÇINAR", u"20240308") +
                                          invoice(u"F3", u"IŞIK BÜFE", u"20240309"));
}

// A window over a read file, shown and active.
struct Desk
{
    Desk()
    {
        writeSource(test);
        fat.yukle();
        window.show();
        fat.dosyaac(test.path(u"a.bif"_s));
        l1 = window.findChild<GridView *>(u"l1"_s);
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
        QTest::mouseClick(l1->viewport(), Qt::LeftButton, {},
                          l1->visualRect(fat.liste.l1.index(row, 1)).center());
    }

    TestProgram test;
    FatWindow window{test.program};
    Fat &fat = window.fat();
    GridView *l1 = nullptr;
};

} // namespace

class WindowsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyControlOfTheInvoiceScreenCarriesItsName();
    void aRowShowsItsLinesByClickAndByKey();
    void blanksTickAndTheClipboardTakesSelectedRows();
    void deleteAsksBeforeRowsGo();
    void theTitleSearchMarksRowsAndLeavesTheTicks();
    void choosingAFirmByKeysFillsTheDocument();
    void theDateFilterFollowsItsBoxAndItsDates();
    void aDroppedFileIsOpenedAsIfPicked();
    void aFailureWithoutABoxIsToldInTheStatusBar();
    void theRoadWithRealBoxesAndDialogs();
    void aVeryLongBoxScrolls();
    void pricesAreTypedInAndSaved();
    void theDownArrowOnTheLastPriceAddsARow();
};

void WindowsTest::everyControlOfTheInvoiceScreenCarriesItsName()
{
    Desk desk;
    QCOMPARE(desk.window.objectName(), u"fat"_s);
    QCOMPARE(desk.window.windowTitle(), u"Fatura Transferi"_s);
    for (const char *name : {"chameleonButton1",
                             "chameleonButton2",
                             "chameleonButton3",
                             "chameleonButton4",
                             "chameleonButton5",
                             "chameleonButton6",
                             "lvButtons_H2",
                             "c1",
                             "c2",
                             "c3",
                             "c4",
                             "c5",
                             "kdyaz",
                             "odmplnkod",
                             "pers",
                             "fatbilgi",
                             "Check1",
                             "Check2",
                             "d1",
                             "d2",
                             "crara",
                             "Label9",
                             "sb1",
                             "pr1",
                             "l1",
                             "l2",
                             "bar1"})
        QVERIFY2(desk.find<QWidget>(name), name);
    QCOMPARE(desk.find<QPushButton>("chameleonButton1")->text(),
             u"Logoya Satış Faturalarını Aktar"_s);
    QCOMPARE(desk.find<QLabel>("Label9")->text(), u"SQL Bağlantı Yok"_s);
    for (const auto *widget : desk.window.findChildren<QAbstractButton *>()) {
        if (!widget->objectName().isEmpty() && widget->text().isEmpty())
            QVERIFY2(!widget->accessibleName().isEmpty(), qPrintable(widget->objectName()));
    }
}

void WindowsTest::aRowShowsItsLinesByClickAndByKey()
{
    Desk desk;
    desk.clickRow(1);
    QCOMPARE(desk.fat.l2.rows(), 1);
    QCOMPARE(desk.fat.l2.cell(0, L2::Tutar), u"118,0000  ()"_s);
    desk.fat.l2.clear();
    QTest::keyClick(desk.l1, Qt::Key_Down);
    QCOMPARE(desk.fat.l2.rows(), 1);
}

void WindowsTest::blanksTickAndTheClipboardTakesSelectedRows()
{
    Desk desk;
    desk.clickRow(0);
    QTest::keyClick(desk.l1, Qt::Key_Down, Qt::ShiftModifier);
    QTest::keyClick(desk.l1, Qt::Key_Space);
    QVERIFY(desk.fat.liste.l1.ticked(0) && desk.fat.liste.l1.ticked(1));
    QVERIFY(!desk.fat.liste.l1.ticked(2));
    QTest::keyClick(desk.l1, Qt::Key_C, Qt::ControlModifier);
    const QStringList lines = QApplication::clipboard()->text().split(u'\n');
    QCOMPARE(lines.size(), 2);
    QVERIFY(lines[1].startsWith(u"120.1\tÇINAR\tF2\t"));
    QTest::mouseClick(desk.find<QCheckBox>("Check2"), Qt::LeftButton, {}, QPoint(8, 8));
    QCOMPARE(desk.fat.liste.l1.tickedCount(), 3);
}

void WindowsTest::deleteAsksBeforeRowsGo()
{
    Desk desk;
    const Box question{u"Faturayı Listeden Silmek İstediğinize Eminmisiniz ?"_s, u"DİKKAT"_s,
                       Icon::Question};
    desk.fat.liste.l1.setTicked(1, true);
    desk.l1->setFocus();
    desk.test.boxes.expectQuestion(question, false);
    QTest::keyClick(desk.l1, Qt::Key_Delete);
    QCOMPARE(desk.fat.liste.l1.rows(), 3);
    desk.test.boxes.expectQuestion(question, true);
    QTest::keyClick(desk.l1, Qt::Key_Delete);
    QCOMPARE(desk.fat.liste.l1.rows(), 2);
    QCOMPARE(desk.fat.liste.l1.cell(1, L1::FaturaNumarasi), u"F3"_s);
    QCOMPARE(desk.find<QLabel>("sb1_2")->text(), u"2"_s);
}

void WindowsTest::theTitleSearchMarksRowsAndLeavesTheTicks()
{
    Desk desk;
    auto *search = desk.find<QLineEdit>("crara");
    search->setFocus();
    QTest::keyClicks(search, u"I"_s);
    QTest::keyClick(search, Qt::Key_Return);
    QList<int> rows;
    for (const QModelIndex &index : desk.l1->selectionModel()->selectedRows())
        rows << index.row();
    std::ranges::sort(rows);
    QCOMPARE(rows, (QList<int>{0, 1, 2})); // ÇINAR holds the letter too
    search->setText(u"IŞIK"_s);
    desk.l1->clearSelection();
    QTest::keyClick(search, Qt::Key_Return);
    QCOMPARE(desk.l1->selectionModel()->selectedRows().size(), 2);
    QCOMPARE(desk.fat.liste.l1.tickedCount(), 0);
}

void WindowsTest::choosingAFirmByKeysFillsTheDocument()
{
    Desk desk;
    desk.fat.liste.l1.setTicked(0, true);
    desk.test.boxes.expect({u"Firma Seçiniz...!"_s, u"Dikkat"_s, Icon::Exclamation});
    QTest::mouseClick(desk.find<QPushButton>("chameleonButton1"), Qt::LeftButton);
    auto *firms = desk.find<QComboBox>("c3");
    QVERIFY(firms->hasFocus());
    QTest::keyClick(firms, Qt::Key_Down);
    QTest::keyClick(firms, Qt::Key_Down);
    QCOMPARE(firms->currentText(), u"ŞUBE"_s);
    desk.test.dialogs.answers << desk.test.path(u"b.xml"_s);
    desk.test.boxes.expect(
        {u"Kasa Nakit Xml Dönüşümü Tamamlandı..."_s, u"Tamam"_s, Icon::Information});
    desk.test.boxes.expect({u"Xml Dönüşümü Tamamlandı..."_s, u"Tamam"_s, Icon::Information});
    QTest::mouseClick(desk.find<QPushButton>("chameleonButton1"), Qt::LeftButton);
    const QByteArray document = readBytes(desk.test.path(u"b.xml"_s));
    QVERIFY(document.contains("<GL_CODE>120.02</GL_CODE>"));
    QVERIFY(document.contains("<SOURCE_WH>8</SOURCE_WH>"));
    QVERIFY(document.contains("<GL_CODE1></GL_CODE1>")); // no accounting row was chosen
}

void WindowsTest::theDateFilterFollowsItsBoxAndItsDates()
{
    Desk desk;
    desk.find<QDateEdit>("d1")->setDate(QDate(2024, 3, 8));
    desk.find<QDateEdit>("d2")->setDate(QDate(2024, 3, 8));
    QCOMPARE(desk.fat.liste.l1.rows(), 3);
    QTest::mouseClick(desk.find<QCheckBox>("Check1"), Qt::LeftButton, {}, QPoint(8, 8));
    QCOMPARE(desk.fat.liste.l1.rows(), 1);
    desk.find<QDateEdit>("d2")->setDate(QDate(2024, 3, 9));
    QCOMPARE(desk.fat.liste.l1.rows(), 2);
    QTest::mouseClick(desk.find<QCheckBox>("Check1"), Qt::LeftButton, {}, QPoint(8, 8));
    QCOMPARE(desk.fat.liste.l1.rows(), 3);
}

void WindowsTest::aDroppedFileIsOpenedAsIfPicked()
{
    Desk desk;
    writeBytes(desk.test.path(u"başka.bif"_s), invoice(u"X9", u"YENİ"));
    QMimeData mime;
    mime.setUrls({QUrl::fromLocalFile(desk.test.path(u"başka.bif"_s))});
    QDragEnterEvent enter({10, 10}, Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&desk.window, &enter);
    QDropEvent drop({10, 10}, Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&desk.window, &drop);
    QCOMPARE(desk.fat.liste.l1.cell(0, L1::FaturaNumarasi), u"X9"_s);
    QCOMPARE(desk.fat.baslik.text(), u"FATURA [başka.bif]"_s);
}

void WindowsTest::aFailureWithoutABoxIsToldInTheStatusBar()
{
    Desk desk;
    desk.fat.dosyaac(desk.test.path(u"yok.bif"_s));
    QCOMPARE(desk.fat.liste.l1.rows(), 0);
    QVERIFY(desk.find<QLabel>("bilgi")->text().contains(u"yok.bif"_s));
}

void WindowsTest::theRoadWithRealBoxesAndDialogs()
{
    TestProgram test;
    writeSource(test);
    ScreenBoxes boxes;
    ScreenDialogs dialogs;
    Program program{.folder = test.folder.path(),
                    .aktifform = {},
                    .folders = {},
                    .db = {},
                    .boxes = boxes,
                    .dialogs = dialogs,
                    .clock = test.clock,
                    .sqlServer = test.sqlServer};
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    FatWindow window(program);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));

    QStringList names{test.path(u"c"_s), test.path(u"a.bif"_s)};
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
    QTest::mouseClick(window.findChild<QPushButton *>(u"chameleonButton5"_s), Qt::LeftButton);
    QCOMPARE(window.fat().liste.l1.rows(), 3);
    window.fat().liste.fattumsec();
    QTest::keyClick(window.findChild<QComboBox *>(u"c3"_s), Qt::Key_Down);
    QTest::mouseClick(window.findChild<QPushButton *>(u"chameleonButton1"_s), Qt::LeftButton);
    QCOMPARE(seen, (QStringList{u"Fatura Dosyası Seçin"_s, u"Fatura Xml Dosyası Kaydet"_s,
                                u"Kasa Nakit Xml Dönüşümü Tamamlandı..."_s,
                                u"Xml Dönüşümü Tamamlandı..."_s}));
    QCOMPARE(readBytes(test.path(u"c.xml"_s)).count("<INVOICE DBOP"), 3);
    QCOMPARE(readBytes(test.path(u"c-KASANAKIT.xml"_s)).count("<SD_TRANSACTION "), 3);
}

void WindowsTest::aVeryLongBoxScrolls()
{
    ScreenBoxes boxes;
    QString text = u"Ürünler...\r\n"_s;
    for (int i = 0; i < 20000; ++i)
        text += u"  URN%1"_s.arg(i);
    QString shown;
    QSize size;
    QTimer::singleShot(50, this, [&] {
        QWidget *modal = QApplication::activeModalWidget();
        shown = modal->findChild<QPlainTextEdit *>()->toPlainText();
        size = modal->size();
        static_cast<QDialog *>(modal)->accept();
    });
    boxes.show({.text = text});
    const QStringList words = shown.simplified().split(u' ');
    QCOMPARE(words, text.simplified().split(u' '));
    QVERIFY(size.height() < 600);
}

void WindowsTest::pricesAreTypedInAndSaved()
{
    TestProgram test;
    UrunWindow window(test.program);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    auto *view = window.findChild<GridView *>(u"l1"_s);
    const auto type = [&](int row, int column, const char *text) {
        view->setCurrentIndex(window.urunform().l1.index(row, column));
        view->setFocus();
        for (const char *letter = text; *letter; ++letter)
            QTest::keyClick(QApplication::focusWidget(), *letter);
    };
    type(0, Urunform::Kod, "KOD1");
    type(0, Urunform::Bfiyat, "1x2,5"); // the letter is not taken
    // The cell is still being edited when the button is reached by its key.
    QTest::keyClick(&window, Qt::Key_S, Qt::ControlModifier);
    QVERIFY(!window.isVisible());
    QCOMPARE(test.rows(u"data.dbs"_s, u"urun"_s, {u"kod"_s, u"bfiyat"_s}),
             QStringList{u"KOD1|12,5"_s});
}

void WindowsTest::theDownArrowOnTheLastPriceAddsARow()
{
    TestProgram test;
    UrunWindow window(test.program);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    auto *view = window.findChild<GridView *>(u"l1"_s);
    view->setCurrentIndex(window.urunform().l1.index(8, Urunform::Kod));
    QTest::keyClick(view, Qt::Key_Down);
    QCOMPARE(window.urunform().l1.rows(), 10);
    QTest::keyClick(view, Qt::Key_Down);
    QCOMPARE(window.urunform().l1.rows(), 11);
    QCOMPARE(view->currentIndex().row(), 10);
    QTest::keyClick(view, Qt::Key_Escape);
    QVERIFY(test.rows(u"data.dbs"_s, u"urun"_s, {u"kod"_s}).isEmpty());
}

QTEST_MAIN(WindowsTest)
#include "tst_windows.moc"
