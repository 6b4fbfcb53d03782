// What is found in a count, each finding planted in a terminal's file.

#include "stocktake/countchecks.h"

#include "stocktake/sayimform.h"
#include "support/fakes.h"
#include "support/findings.h"
#include "support/ruler.h"

using namespace kervan;

namespace {

// A barcode's stock code is what stands behind 869; of one with an "0" there Logo has no unit, and
// odd ones of "X" and "Y".
SqlRows answered(const QString &statement)
{
    const QStringList columns{u"ITEMKOD"_s, u"BIRIMKOD"_s};
    const QString barcode = statement.section(u'\'', 1, 1);
    if (!barcode.startsWith(u"869"_s))
        return {columns, {}};
    const QString code = barcode.sliced(3);
    const QString unit = code.startsWith(u'0') ? QString()
                         : code == u"X"        ? u"K&L"_s
                         : code == u"Y"        ? u"K‰"_s
                                               : u"KOLİ"_s;
    return {columns, {{code, unit}}};
}

} // namespace

class TestCountChecks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aCountShowsWhatIsPlantedAndACleanOneNothing()
    {
        TestProgram t;
        Sayimform screen(t.program);
        const auto checks = checksOf(screen);
        QCOMPARE(found(*checks), lines(u"hata bağlantı"_s));
        RulesSetOff off;
        off.ask(rulesOf(screen), screen.l1);
        t.reachLogo();
        t.sqlServer.answer = answered;
        screen.load();
        const auto read = [&](const QByteArray &lines) {
            writeBytes(t.path(u"sayim.txt"_s), lines);
            screen.dosyaac(t.path(u"sayim.txt"_s));
        };
        read(ruled(u"869A", 15, u" 1.000") + ruled(u"869B", 15, u"12,5") +
             ruled(u"869C", 15, u"0"));
        QCOMPARE(found(*checks), QStringList());
        QCOMPARE(leftOut(screen.okuma), QStringList());

        const auto statements = t.sqlServer.statements.size();
        screen.fisno.setText(u"S&+TARIH+"_s);
        read(ruled(u"869A", 15, u"1") + ruled(u"111", 15, u"7") + ruled(u"869A", 15, u"1.5") +
             ruled(u"8690", 15, u"-2") + "869D\r\n\r\n" + ruled(u"", 15, u"4") +
             ruled(u"869A&B", 15, u"1x") + ruled(u"869+MIKTAR+", 15, u"12345.") +
             ruled(u"111", 15, u"1"));
        QCOMPARE(found(*checks),
                 lines(u"hata Text1 şablon sözcüğü\nhata Text1 XML işareti\n"
                       "uyari 1:3 çift numara\nhata 2:2 barkod\n"
                       "uyari 3:4 noktalı miktar\nuyari 3:3 çift numara\n"
                       "hata 4:5 birim\nuyari 4:4 eksi tutar\nhata 5:4 tutar okunamıyor\n"
                       "hata 7:2 barkod\nhata 8:4 tutar okunamıyor\nhata 8:3 XML işareti\n"
                       "uyari 9:4 noktalı miktar\nhata 9:0 şablon sözcüğü\nhata 10:2 barkod\n"
                       "eksik Logo'daki barkod 111 2"_s));
        QVERIFY(textOf(*checks, 3, u"noktalı miktar"_s).contains(u"\"1.5\" belgeye \"15\""));
        QCOMPARE(t.sqlServer.statements.size(), statements + 20); // none but the reading's
        QCOMPARE(
            leftOut(screen.okuma),
            lines(u"2 Logo bu barkodu tanımıyor: satır fişe girmez.\n5 Satır kısa: Miktar yok.\n"
                  "6 Satır boş: listede boş bir satır oldu.\n7 Barkod boş.\n"
                  "10 Logo bu barkodu tanımıyor: satır fişe girmez."_s));

        off.ask(rulesOf(screen), screen.l1);
        screen.fisno.setText(u" "_s);
        QCOMPARE(found(*checks).first(2), lines(u"hata Text1 boş numara\nuyari 1:3 çift numara"_s));
        off.ask(rulesOf(screen), screen.l1);
        screen.fisno.setText(u"S‰"_s);
        read(ruled(u"869A‰", 15, u"1") + ruled(u"869X", 15, u"1") + ruled(u"869Y", 15, u"1"));
        QCOMPARE(found(*checks), lines(u"uyari Text1 harf\nuyari 1:3 harf\n"
                                       "hata 2:5 XML işareti\nuyari 3:5 harf"_s));
        off.ask(rulesOf(screen), screen.l1);
        const FolderAway away(t);
        QCOMPARE(found(*checks).first(), u"hata belge klasörü"_s);
        off.ask(rulesOf(screen), screen.l1);
        QCOMPARE(off.missing().join(u", "_s), QString());
    }

    void aReadingThatALookUpEndedTellsItsLine()
    {
        TestProgram t;
        t.reachLogo();
        t.sqlServer.answer = [](const QString &statement) {
            if (statement.contains(u"869B"))
                throw Failure(u"hat koptu"_s);
            return answered(statement);
        };
        Sayimform screen(t.program);
        screen.load();
        t.boxes.expect({u"hat koptu"_s});
        writeBytes(t.path(u"sayim.txt"_s), "869A\r\n869B\r\n869C\r\n");
        screen.dosyaac(t.path(u"sayim.txt"_s));
        QCOMPARE(leftOut(screen.okuma),
                 lines(u"1 Satır kısa: Miktar yok.\n2 Okuma burada bitti."_s));
        QCOMPARE(screen.okuma.entries().last().record, u"hat koptu"_s);
    }
};

QTEST_GUILESS_MAIN(TestCountChecks)
#include "tst_countchecks.moc"
