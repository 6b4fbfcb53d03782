// What the screens tell without a box: the strip below the caption, and sources that do not fit.

#include "base/codepage.h"
#include "cards/screens/crwindow.h"
#include "cards/stoktrf.h"
#include "controls/theme.h"
#include "invoices/fat.h"
#include "stocktake/sayimform.h"
#include "support/driving.h"
#include "support/fakes.h"
#include "support/places.h"
#include "support/ruler.h"

#include <QAccessible>
#include <QApplication>
#include <QDesktopServices>
#include <QLabel>
#include <QPlainTextEdit>
#include <QStatusBar>
#include <QToolButton>
#include <QUrl>

#include <cmath>

using namespace kervan;

namespace {

QStringList alerts;

void takeAccessible(QAccessibleEvent *event)
{
    if (event->type() == QAccessible::Alert)
        alerts << QAccessible::queryAccessibleInterface(event->object())->text(QAccessible::Name);
}

// What somebody who does not see the strip hears; a platform without accessibility sends no alert,
// and the strip's name has to do.
QString heard(QWidget *strip)
{
    if (QAccessible::isActive())
        return alerts.value(alerts.size() - 1);
    return QAccessible::queryAccessibleInterface(strip)->text(QAccessible::Name);
}

// Contrast as the guidelines for accessible content reckon it.
double contrast(const QColor &a, const QColor &b)
{
    const auto luminance = [](const QColor &colour) {
        const auto part = [](double c) {
            return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * part(colour.redF()) + 0.7152 * part(colour.greenF()) +
               0.0722 * part(colour.blueF());
    };
    const auto [dark, bright] = std::minmax({luminance(a), luminance(b)});
    return (bright + 0.05) / (dark + 0.05);
}

// Takes the folders that a link would open.
class Opener : public QObject
{
    Q_OBJECT

public:
    Opener() { QDesktopServices::setUrlHandler(u"file"_s, this, "take"); }
    ~Opener() override { QDesktopServices::unsetUrlHandler(u"file"_s); }
    QStringList folders;

public Q_SLOTS:
    void take(const QUrl &url) { folders << url.toLocalFile(); }
};

QByteArray accounts()
{
    return ruled(u"CR", 3, u"10000101", 11, u"DENİZ MARKET") +
           ruled(u"CR", 3, u"10000102", 11, u"IŞIK BÜFE");
}

QByteArray invoices()
{
    return ruled(u"@5", 5, u"20240307", 28, u"120.1", 39, u"ŞEN", 80, u"F1", 96, u"1", 148, u"0");
}

QByteArray stock()
{
    return ruled(u"000001", 25, u"KHV-100", 79, u"TÜRK KAHVESİ", 119, u"ADET", 125, u"  0.000", 133,
                 u"10");
}

} // namespace

class TestNotes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theStripTellsWhatFailedAndWhatWasWritten_data()
    {
        QTest::addColumn<bool>("dark");
        QTest::newRow("light") << false;
        QTest::newRow("dark") << true;
    }
    void theStripTellsWhatFailedAndWhatWasWritten()
    {
        QFETCH(bool, dark);
        applyTheme(*qApp, dark);
        TestProgram t;
        CrWindow window(t.program);
        const auto find = [&](const char *name) {
            return window.findChild<QWidget *>(QString::fromLatin1(name));
        };
        window.resize(700, 400);
        window.show();
        QVERIFY(!find("serit")->isVisible()); // takes no room while there is nothing to tell
        drop(window, t.path(u"yok.txt"_s));
        auto *text = window.findChild<QLabel *>(u"bilgi"_s);
        QCOMPARE(text->text(), u"Okunamadı, dosya yok: "_s + asTold(t.path(u"yok.txt"_s)));
        QCOMPARE(heard(find("serit")), text->text());
        QVERIFY(text->isVisible() && text->parentWidget()->width() <= window.width());
        const QImage shown = find("arizalar")->grab().toImage();
        QVERIFY(contrast(shown.pixelColor(5, shown.height() / 2),
                         text->palette().color(QPalette::WindowText)) >= 4.5);
        // The other windows have their line on the window itself.
        QVERIFY(contrast(window.palette().color(QPalette::Window),
                         text->palette().color(QPalette::WindowText)) >= 4.5);

        auto *details = window.findChild<QPlainTextEdit *>(u"ayrintilar"_s);
        QVERIFY(!details->isVisible());
        window.findChild<QToolButton *>(u"ayrinti"_s)->click();
        QVERIFY(details->isVisible());
        QCOMPARE(details->toPlainText(), asTold(t.path(u"yok.txt"_s)) + u" okunamadı: dosya yok"_s);
        details->selectAll();
        QCOMPARE(details->textCursor().selectedText(), details->toPlainText());

        writeBytes(t.path(u"cari.txt"_s), accounts());
        drop(window, t.path(u"cari.txt"_s));
        QVERIFY(!find("serit")->isVisible() && !details->isVisible());
        QCOMPARE(window.findChild<QLabel *>(u"dosya"_s)->text(), u"Dosya: cari.txt"_s);
        t.dialogs.answers << t.path(u"belge.xml"_s);
        t.boxes.expectDone();
        window.findChild<QAbstractButton *>(u"chameleonButton1"_s)->click();
        auto *written = window.findChild<QLabel *>(u"yazilan"_s);
        QVERIFY(written->isVisible() && !text->isVisible());
        QCOMPARE(written->text(), u"belge.xml yazıldı: 2 cari kart, 09:05"_s);
        QCOMPARE(heard(find("serit")), written->text());
        Opener opener;
        window.findChild<QToolButton *>(u"klasorac"_s)->click();
        QCOMPARE(opener.folders, QStringList{t.folder.path()});
    }

    void aSourceThatDoesNotFitIsTold_data()
    {
        QTest::addColumn<QString>("screen");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("told");
        const QByteArray utf8 = "\xEF\xBB\xBF";
        const QString text = fromCodePage(accounts());
        const QString ansi = u" Not Defteri'nde \"ANSI\" olarak kaydedip yeniden açın."_s;
        const auto row = [](const char *name, const QString &screen, const QByteArray &bytes,
                            const QString &told) {
            QTest::newRow(name) << screen << bytes << told;
        };
        row("accounts among invoices", u"fat"_s, accounts(),
            u"Bu dosyada fatura satırı yok: cari listesine benziyor."_s);
        row("invoices among accounts", u"cr"_s, invoices(),
            u"Bu dosyada cari satırı yok: fatura dosyasına benziyor."_s);
        row("stock among accounts", u"cr"_s, stock(),
            u"Bu dosyada cari satırı yok: stok listesine benziyor."_s);
        row("accounts among stock", u"stoktrf"_s, accounts(),
            u"Bu dosyada stok satırı yok: cari listesine benziyor."_s);
        row("a count among stock", u"stoktrf"_s, ruled(u"8690000001001", 15, u"12"),
            u"Bu dosyada stok satırı yok: sayım dosyasına benziyor."_s);
        row("a workbook", u"fat"_s, "PK\3\4xx",
            u"Bu dosyada fatura satırı yok: bir Excel dosyası."_s);
        row("a document", u"fat"_s, "<?xml version='1.0'?>\r\n<A/>",
            u"Bu dosyada fatura satırı yok: bir Xml belgesi."_s);
        row("nothing", u"fat"_s, {}, u"Bu dosyada fatura satırı yok: dosya boş."_s);
        row("no mark of UTF-8", u"cr"_s, text.toUtf8(),
            u"Dosya işaretsiz UTF-8 ile kaydedilmiş, Türkçe harfleri bozuk okunur."_s + ansi);
        row("UTF-16", u"fat"_s,
            "\xFF\xFE" + QByteArray(reinterpret_cast<const char *>(text.utf16()), text.size() * 2),
            u"Dosya UTF-16 ile kaydedilmiş, satırları okunamaz."_s + ansi +
                u"\nBu dosyada fatura satırı yok."_s);
        row("letters of another language", u"cr"_s, utf8 + text.toUtf8() + "CR10000103Łódź Żabka",
            u"1 satırda belgeye sığmayan harf var, belgede yerine \"?\" yazılır. İlki: 3. satır, "
            "\"Łódź Żabka\""_s);
        row("UTF-8 with its mark", u"cr"_s, utf8 + text.toUtf8(), {});
        row("accounts", u"cr"_s, accounts(), {});
        row("stock", u"stoktrf"_s, stock(), {});
        row("a sample of accounts", u"cr"_s, readBytes(samplePath(u"cariler.txt"_s)), {});
        row("a sample of stock", u"stoktrf"_s, readBytes(samplePath(u"stoklar.txt"_s)), {});
    }
    void aSourceThatDoesNotFitIsTold()
    {
        QFETCH(QString, screen);
        QFETCH(QByteArray, bytes);
        TestProgram t;
        const QString path = t.path(u"kaynak"_s);
        writeBytes(path, bytes);
        const auto toldBy = [&](auto &&form) {
            form.dosyaac(path);
            return form.bilgi.details();
        };
        QTEST(screen == u"fat"  ? toldBy(Fat(t.program))
              : screen == u"cr" ? toldBy(Cr(t.program))
                                : toldBy(Stoktrf(t.program)),
              "told");
    }
};

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    QAccessible::setActive(true);
    QAccessible::installUpdateHandler(&takeAccessible);
    TestNotes test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_notes.moc"
