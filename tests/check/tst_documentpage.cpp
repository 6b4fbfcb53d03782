#include "check/screens/documentpage.h"
#include "controls/gridview.h"
#include "controls/theme.h"
#include "support/cells.h"
#include "support/fakes.h"
#include "support/places.h"

#include <QAbstractButton>
#include <QLabel>
#include <QSignalSpy>

using namespace kervan;

class TestDocumentPage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aDocumentIsShownWithWhatIsWrongInIt()
    {
        TestProgram t;
        DocumentPage page(t.dialogs);
        page.resize(900, 300);
        page.QWidget::show();
        const auto view = [&](const QString &name) {
            return page.findChild<GridView *>(name);
        };
        const auto rows = [&](const QString &name) {
            return textOf(static_cast<const Grid &>(*view(name)->model()));
        };
        const auto summary = [&] {
            return page.findChild<QLabel *>(u"belgeOzetSatiri"_s)->text();
        };
        QVERIFY(view(u"belgeSorunlari"_s)->isHidden());

        QByteArray bytes = readBytes(testData(u"fatura/duz-satis/expected.xml"_s));
        bytes.replace("<ARP_CODE>C100<", "<ARP_CODE><").replace("<UNIT_CODE>KRT<", "<UNIT_CODE><");
        writeBytes(t.path(u"a.xml"_s), bytes);
        QSignalSpy shown(&page, &DocumentPage::shown);
        page.show(t.path(u"a.xml"_s));
        QTRY_COMPARE(shown.size(), 1);
        QCOMPARE(rows(u"belgeKayitlari"_s), u"F0001|Satış (8)|05.03.2024|boş|120.01|P30|"
                                            "3 (1 eksik)|74,55|90,60"_s);
        QCOMPARE(rows(u"belgeSorunlari"_s),
                 u"34|VATEXCEPT_REASON değerinde \"&\" var|Genel & muaf"_s);
        QVERIFY(view(u"belgeSorunlari"_s)->isVisible());
        QVERIFY(
            summary().startsWith(u"a.xml: 1 fatura, indirimden önce Kdv'li 90,60, net 74,55, "_s));
        QVERIFY(summary().endsWith(u"1 kayıtta boş alan var, Xml olarak okunamayacak 1 yer var"_s));
        // The empty field is red.
        const auto place =
            view(u"belgeKayitlari"_s)->visualRect(view(u"belgeKayitlari"_s)->model()->index(0, 3));
        const QImage cell = view(u"belgeKayitlari"_s)->viewport()->grab(place).toImage();
        const QColor red = faultText(page.palette());
        bool isRed = false;
        for (int y = 0; y < cell.height(); ++y) {
            for (int x = 0; x < cell.width(); ++x) {
                const QColor c = cell.pixelColor(x, y);
                isRed |= std::abs(c.red() - red.red()) + std::abs(c.green() - red.green()) +
                             std::abs(c.blue() - red.blue()) <
                         120;
            }
        }
        QVERIFY(isRed);

        // An earlier document, of another family, by the button; then one that is none.
        t.dialogs.answers = {testData(u"slips/cafis2/lvButtons_H2.xml"_s), t.path(u"none.xml"_s)};
        page.findChild<QAbstractButton *>(u"belgeac"_s)->click();
        QTRY_COMPARE(shown.size(), 2);
        QCOMPARE(t.dialogs.asked.last().start, t.path(u"a.xml"_s));
        QCOMPARE(rows(u"belgeKayitlari"_s), u"BT000001|15.03.2021|TUTARCI|TUTARCI Kodlu Personel "
                                            "İşlem Yapmıştır|102|1.235,00"_s);
        QVERIFY(view(u"belgeSorunlari"_s)->isHidden());
        page.findChild<QAbstractButton *>(u"belgeac"_s)->click();
        QTRY_COMPARE(shown.size(), 3);
        QCOMPARE(rows(u"belgeKayitlari"_s), QString());
        QVERIFY(summary().startsWith(u"none.xml: okunamadı. "_s));
    }
};

QTEST_MAIN(TestDocumentPage)
#include "tst_documentpage.moc"
