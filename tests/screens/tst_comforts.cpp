// What spares a user of the frame steps: a file that finds its screen, a list that comes back, the
// choices of yesterday, the sheets of a workbook.

#include "check/screens/listmemory.h"
#include "controls/bigbutton.h"
#include "controls/gridview.h"
#include "controls/linkbutton.h"
#include "frame/fitting.h"
#include "invoices/desk.h"
#include "invoices/duzey/screens/fatduzwindow.h"
#include "invoices/duzeydesk.h"
#include "invoices/screens/fatwindow.h"
#include "slips/screens/slipwindow.h"
#include "support/driving.h"
#include "support/places.h"
#include "support/shownframe.h"
#include "support/table.h"

#include <QComboBox>
#include <QMdiSubWindow>
#include <QMenu>
#include <QSettings>
#include <QStatusBar>

using namespace kervan;

namespace {

/// The frame, with what the samples need laid down.
struct Frame : ShownFrame
{
    Frame()
    {
        t.fill({u"insert into firma values (Null,'1','','Merkez','','D1','','120','')"_s,
                u"insert into firma values (Null,'2','','Şube','','D2','','120','')"_s,
                u"insert into muh values (Null,'','18','','600','','','','391','','')"_s,
                u"insert into odm values (Null,'30','Otuz','','','','','','')"_s,
                u"insert into urun values ('P1','','','10')"_s});
        writeBytes(t.path(u"kasa.kvz"_s), "1");
        window.resize(1366, 768);
        show();
    }
    // A drag of these files over the frame, dropped on a big button or beside all. Whether the
    // pointer shows that they are taken.
    bool dropOn(const QString &button, const QStringList &paths)
    {
        QMimeData mime;
        QList<QUrl> urls;
        for (const QString &path : paths)
            urls << QUrl::fromLocalFile(path);
        mime.setUrls(urls);
        QPoint at(window.width() / 2, window.height() - 40);
        if (!button.isEmpty()) {
            const auto *target = window.findChild<BigButton *>(button);
            at = target->mapTo(&window, target->rect().center());
        }
        QDragEnterEvent enter({2, 2}, Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&window, &enter);
        if (!enter.isAccepted())
            return false;
        QDragMoveEvent move(at, Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&window, &move);
        if (!move.isAccepted()) {
            QDragLeaveEvent leave;
            QApplication::sendEvent(&window, &leave);
            return false;
        }
        QDropEvent event(at, Qt::CopyAction | Qt::MoveAction, &mime, Qt::LeftButton,
                         Qt::ShiftModifier);
        QApplication::sendEvent(&window, &event);
        if (isDropTaken(window) || event.dropAction() != Qt::CopyAction)
            return false; // whoever let go of the file waits for the event, or deletes it
        endDrop(window);
        return true;
    }
    QString lit() const
    {
        QStringList words;
        for (const BigButton *button : window.findChildren<BigButton *>()) {
            if (button->isLit())
                words << button->text();
        }
        words.sort();
        return words.join(u", "_s);
    }
    template<class Window>
    Window *screen()
    {
        return window.findChild<Window *>();
    }
    QComboBox *box(const QString &name) { return window.findChild<QComboBox *>(name); }
    // As the user picks it with the keys.
    void pick(const QString &name, const QString &text)
    {
        QComboBox *list = box(name);
        list->setFocus();
        QTest::keyClick(list, Qt::Key_Home);
        for (int i = 0; i < list->count() && list->currentText() != text; ++i)
            QTest::keyClick(list, Qt::Key_Down);
        QCOMPARE(list->currentText(), text);
    }
    void closeScreen()
    {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
        QTRY_VERIFY(window.findChildren<QMdiSubWindow *>().isEmpty());
    }
    // Invoices of these numbers.
    QString invoices(const QStringList &numbers, const QString &name = u"a.bif"_s)
    {
        QByteArray source;
        for (const QString &number : numbers)
            source += header({.no = number}) + goods(u"P1");
        writeBytes(t.path(name), source);
        return t.path(name);
    }
};

} // namespace

class ComfortsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aFileFindsTheScreensThatItFits_data()
    {
        addTable(uR"(
case                     ; screens
ornek.bif                ; fat
cariler.txt              ; cr
stoklar.txt              ; stoktrf
sayim.txt                ; sayimform
duzey-fatura.xlsx        ; fatduz
duzey-nakit.xlsx         ; carifisduzey
duzey-kredikarti.xlsx    ; carifisduzey
tahsilatlar.xlsx         ; cafis
15032021-00100101.xls    ; cafis2
POSANALIZ-20210315.xlsx  ; cafis3
mey-stok.xls             ; st
denetim-fatura.bif       ; fat
denetim-cariler.txt      ; cr
denetim-stoklar.txt      ; stoktrf
denetim-sayim.txt        ; sayimform
denetim-duzey-fatura.xlsx ; fatduz
denetim-duzey-nakit.xlsx ; carifisduzey
denetim-tahsilatlar.xlsx ; cafis
16032021-00100199.xls    ; cafis2
POSANALIZ-20210316.xlsx  ; cafis3
mey-denetim.xls          ; st
gone.xlsx                ; )"_s);
    }
    void aFileFindsTheScreensThatItFits()
    {
        QCOMPARE(screensFor(samplePath(caseName())).join(u' '), fetch("screens"));
    }

    void aDroppedFileIsReadByItsScreenAndOfSeveralTheFirst()
    {
        Frame frame;
        writeBytes(frame.t.path(u"a.xml"_s), "<?xml version=\"1.0\"?>\r\n<SALES_INVOICES/>\r\n");
        QVERIFY(!frame.dropOn({}, {frame.t.path(u"a.xml"_s)})); // the pointer refuses it
        QVERIFY(!frame.dropOn(u"chameleonButton1"_s, {samplePath(u"ornek.bif"_s)})); // of accounts
        QCOMPARE(frame.lit(), QString());
        const QString first = frame.invoices({u"F1"_s, u"F2"_s});
        QVERIFY(frame.dropOn({}, {first, samplePath(u"cariler.txt"_s)}));
        QCOMPARE(frame.screen<FatWindow>()->fat().liste.l1.rows(), 2);
        QVERIFY(frame.screen<FatWindow>()->isVisible());
        const auto *bar = frame.screen<FatWindow>()->findChild<QStatusBar *>(u"sb1"_s);
        QCOMPARE(bar->currentMessage(), u"2 dosya bırakıldı, yalnız ilki alındı: a.bif"_s);
        QVERIFY(frame.dropOn(u"chameleonButton5"_s, {frame.invoices({u"F3"_s})}));
        QCOMPARE(frame.screen<FatWindow>()->fat().liste.l1.rows(), 1); // it was open already
    }

    void whereSeveralFitTheButtonsLightUpUntilOneIsTaken()
    {
        Frame frame;
        const QString book = frame.t.path(u"a.xlsx"_s);
        writeWorkbook(book, u"Sheet1"_s, bookRows(u"bir|iki\nüç|dört"_s));
        const QString all = u"Düzey  Fatura Aktarım, Düzey Tahsilat Aktarımı, Pos Analizi, "
                            "Seyahat - Veresiyeden Tahsilat Aktarımı"_s;
        QVERIFY(frame.dropOn({}, {book}));
        QCOMPARE(frame.lit(), all);
        QVERIFY(frame.window.findChildren<QMdiSubWindow *>().isEmpty()); // nothing opens by itself
        QTest::keyClick(&frame.window, Qt::Key_Escape);
        QCOMPARE(frame.lit(), QString());
        frame.dropOn({}, {book});
        QTest::mouseClick(frame.window.findChild<QWidget *>(u"resim"_s), Qt::LeftButton);
        QCOMPARE(frame.lit(), QString());
        frame.dropOn({}, {book});
        press(frame.window, u"chameleonButton1"_s); // one that it does not fit opens as ever
        QVERIFY(frame.screen<QWidget>() && frame.window.findChild<QWidget *>(u"cr"_s));
        frame.dropOn({}, {book});
        frame.t.boxes.expect({.text = u"Sayfada 6. alan yok."_s}); // as if it were dropped there
        press(frame.window, u"lvButtons_H5"_s);
        QCOMPARE(frame.screen<FatduzWindow>()->fatduz().dosyaadi(), book);
        QCOMPARE(frame.lit(), QString());
        frame.dropOn(u"lvButtons_H3"_s, {book}); // right where it belongs
        QCOMPARE(frame.screen<SlipWindow>()->screen().dosyayolu(), book);
    }

    void theLastListComesBackWithChoicesAndTicks()
    {
        Frame frame;
        frame.window.open(u"fat");
        QVERIFY(!frame.window.findChild<LinkButton *>(u"sonliste"_s));
        Fat *fat = &frame.screen<FatWindow>()->fat();
        frame.pick(u"c3"_s, u"Şube"_s);
        frame.pick(u"c5"_s, u"30<>Otuz"_s);
        frame.pick(u"fatbilgi"_s, fat->faturaTuru.entries()[2]);
        fat->dosyaac(frame.invoices({u"F1"_s, u"F2"_s, u"F3"_s}));
        fat->liste.l1.setTicked(1, true);
        frame.closeScreen();
        frame.invoices({u"F2"_s, u"F9"_s}); // the file is another by now
        frame.window.open(u"fat");
        fat = &frame.screen<FatWindow>()->fat();
        const auto *link = frame.window.findChild<LinkButton *>(u"sonliste"_s);
        QVERIFY(link->isVisible());
        QCOMPARE(link->text(), u"Son listeyi aç: a.bif, 1 işaret  (Ctrl+Shift+O)"_s);
        QVERIFY(fat->liste.l1.isEmpty() && fat->tanimlar.firma.text().isEmpty());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_O,
                        Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(column(fat->liste.l1, L1::FaturaNumarasi), u"F2,F9"_s);
        QCOMPARE(ticksOf(fat->liste.l1), u"x-"_s);
        QCOMPARE(fat->tanimlar.firmakayit.dkod, u"D2"_s); // by what a pick does
        QCOMPARE(fat->odemePlaniKodu.text(), u"30"_s);
        QCOMPARE(fat->faturaTuru.text(), fat->faturaTuru.entries()[2]);
        QTRY_VERIFY(!frame.window.findChild<LinkButton *>(u"sonliste"_s));
        frame.closeScreen();
        frame.window.open(u"cr"); // another screen has nothing of it
        QVERIFY(!frame.window.findChild<LinkButton *>(u"sonliste"_s));
    }

    void theLastListOfASlipScreenComesBackByItsKind()
    {
        Frame frame;
        frame.window.open(u"carifisduzey");
        auto *slips = &frame.screen<SlipWindow>()->screen();
        slips->sayfaAdi.setText(u"Mart"_s);
        writeWorkbook(frame.t.path(u"a.xlsx"_s), u"Mart"_s,
                      bookRows(u"A|B|C|D|E|F|G|H\n1.1.2021|C1||C2||2.2.2021|1|2"_s));
        slips->dosyaac(slips->form().files[1], frame.t.path(u"a.xlsx"_s));
        slips->l1.setTicked(0, true);
        const QString row = rowOf(slips->l1, 0, DuzeyHareket::IslemNo);
        frame.closeScreen();
        frame.window.open(u"carifisduzey");
        slips = &frame.screen<SlipWindow>()->screen();
        frame.window.findChild<LinkButton *>(u"sonliste"_s)->click();
        QCOMPARE(slips->sayfaAdi.text(), u"Mart"_s);
        QCOMPARE(rowOf(slips->l1, 0, DuzeyHareket::IslemNo), row); // of the cards, not of the cash
        QVERIFY(slips->l1.ticked(0));
    }

    void aWorkbookOfInvoicesComesBackWithItsKindAndDates()
    {
        Frame frame;
        frame.window.open(u"fatduz");
        auto *duzey = &frame.screen<FatduzWindow>()->fatduz();
        DuzeyDesk desk;
        desk.write({{.no = u"F1"_s, .kind = u"SATIŞ İADE"_s, .date = u"@2024-03-01"_s},
                    {.no = u"F2"_s, .kind = u"SATIŞ İADE"_s},
                    {.no = u"F3"_s}});
        duzey->dosyaac(desk.source);
        frame.pick(u"fatbilgi"_s, duzey->faturaTuru.entries()[2]);
        QCOMPARE(column(duzey->liste.l1, L1::FaturaNumarasi), u"F1,F2"_s);
        press(*frame.screen<FatduzWindow>(), u"Check1"_s);
        type(*frame.screen<FatduzWindow>(), u"d1"_s, u"05.03.2024"_s);
        QCOMPARE(column(duzey->liste.l1, L1::FaturaNumarasi), u"F2"_s);
        duzey->liste.l1.setTicked(0, true);
        frame.closeScreen();
        frame.window.open(u"fatduz");
        duzey = &frame.screen<FatduzWindow>()->fatduz();
        frame.window.findChild<LinkButton *>(u"sonliste"_s)->click();
        QCOMPARE(column(duzey->liste.l1, L1::FaturaNumarasi), u"F2"_s);
        QVERIFY(duzey->liste.l1.ticked(0));
    }

    void theChoicesOfTheLastDocumentAreOneButton()
    {
        const QTemporaryDir folder;
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, folder.path());
        QCoreApplication::setOrganizationName(u"Deneme"_s);
        {
            Frame frame;
            frame.window.open(u"fat");
            Fat &fat = frame.screen<FatWindow>()->fat();
            QTest::keyClick(frame.window.focusWidget(), Qt::Key_F9);
            QVERIFY(frame.window.findChild<QStatusBar *>(u"sb1"_s)->currentMessage().startsWith(
                u"Hatırlanan seçim yok"_s));
            QVERIFY(fat.bilgi.text().isEmpty()); // nothing has failed
            frame.pick(u"c3"_s, u"Şube"_s);
            frame.pick(u"c1"_s, u"18"_s);
            frame.pick(u"c5"_s, u"30<>Otuz"_s);
            fat.dosyaac(frame.invoices({u"F1"_s}));
            fat.liste.l1.setAllTicked(true);
            frame.t.boxes.expectDone(u"Kasa Nakit "_s);
            frame.t.boxes.expectDone();
            fat.kaydet(frame.t.path(u"b.xml"_s));
            frame.pick(u"c3"_s, u"Merkez"_s); // of no document
        }
        {
            Frame frame;
            frame.window.open(u"fat");
            Fat &fat = frame.screen<FatWindow>()->fat();
            auto *button = frame.window.findChild<QAbstractButton *>(u"dunku"_s);
            QVERIFY(button->toolTip().contains(u"Firma Şube, Kdv oranı 18"_s));
            press(frame.window, u"dunku"_s);
            QCOMPARE(fat.tanimlar.firmakayit.dkod, u"D2"_s);
            QCOMPARE(fat.kdvOrani.text(), u"18"_s);
            QCOMPARE(fat.odemePlaniKodu.text(), u"30"_s);
            QCOMPARE(frame.box(u"c3"_s)->currentText(), u"Şube"_s);
            QCOMPARE(fat.bilgi.text(), QString());
            // One that was taken away since is told and left.
            frame.pick(u"c3"_s, u"Merkez"_s);
            frame.t.fill({u"delete from odm"_s});
            fat.yukle();
            press(frame.window, u"dunku"_s);
            QCOMPARE(fat.bilgi.text(), u"Ödeme planı \"30<>Otuz\" artık listede yok, seçilmedi."_s);
            QCOMPARE(fat.tanimlar.firma.text(), u"Şube"_s);
            QVERIFY(fat.odemePlani.text().isEmpty());
            QVERIFY(!QDir(frame.t.folder.path()).entryList().contains(u"Deneme"_s));
        }
        QCoreApplication::setOrganizationName({});
    }

    void aSheetIsPickedFromTheFileAndNothingIsReadByIt()
    {
        Frame frame;
        frame.window.open(u"cafis");
        SlipScreen &slips = frame.screen<SlipWindow>()->screen();
        auto *box = frame.window.findChild<QLineEdit *>(u"Text1"_s);
        auto *bar = frame.screen<SlipWindow>()->findChild<QStatusBar *>(u"sb1"_s);
        box->setFocus();
        QTest::keyClick(box, Qt::Key_Down, Qt::AltModifier);
        QVERIFY(bar->currentMessage().startsWith(u"Önce bir dosya açın"_s));
        writeWorkbook(frame.t.path(u"a.xlsx"_s), u"Ocak & Mart"_s, bookRows(u"a|b"_s));
        slips.dosyaac(slips.form().files[0], frame.t.path(u"a.xlsx"_s));
        // The names of a sheet that isn't there are links that fill one in.
        auto *link = frame.window.findChild<LinkButton *>(u"secenek1"_s);
        QVERIFY(link && link->isVisible());
        QCOMPARE(link->text(), u"Ocak & Mart"_s);
        const QString told = slips.bilgi.text();
        link->click();
        QCOMPARE(box->text(), u"Ocak & Mart"_s);
        QCOMPARE(slips.bilgi.text(), told); // nothing was read
        box->setText(u"Sayfa1"_s);
        QTest::keyClick(box, Qt::Key_Down, Qt::AltModifier);
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        QVERIFY(menu);
        QCOMPARE(menu->actions().size(), 1);
        QTest::keyClick(menu, Qt::Key_Return);
        QCOMPARE(box->text(), u"Ocak & Mart"_s);
        QVERIFY(slips.sayfaKaydedilir.isChecked());
        slips.dosyaac(slips.form().files[0], frame.t.path(u"a.xlsx"_s));
        QTRY_VERIFY(!frame.window.findChild<LinkButton *>(u"secenek1"_s)); // it served
    }
};

QTEST_MAIN(ComfortsTest)
#include "tst_comforts.moc"
