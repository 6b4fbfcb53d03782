#include "stocktake/urunform.h"

#include "support/fakes.h"

#include <QFile>

#ifdef Q_OS_UNIX
#include <csignal>
#include <sys/wait.h>
#include <unistd.h>
#endif

using namespace kervan;

namespace {

// The table of prices.
QString prices(TestProgram &t)
{
    return t.rows(u"urun kod ack fiyat bfiyat"_s);
}

void put(Urunform &form, int row, const QStringList &cells)
{
    for (int i = 0; i < cells.size(); ++i)
        form.l1.setCell(row, i + 1, cells[i]);
}

} // namespace

class UrunformTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rowsAreReadInTheirOrderAndThoseWithACodeAreSaved()
    {
        TestProgram t;
        t.fill({u"insert into urun values ('Z','ZEYTİN','1','2')"_s,
                u"insert into urun values ('A','ARMUT','3','4,50')"_s});
        Urunform form(t.program);
        form.yukle();
        QCOMPARE(form.l1.rows(), 12);
        form.satirekle(10); // only the last of ten empty rows takes another one
        form.satirekle(11);
        QCOMPARE(form.l1.rows(), 13);
        QCOMPARE(form.l1.cell(12, Urunform::Sira), u"13"_s);
        QCOMPARE(form.l1.cell(12, Urunform::Kod), QString());
        put(form, 0, {u""_s, u"kodsuz"_s, u"1"_s, u"1"_s});
        put(form, 4, {u"B"_s, u"İKİ KELİME"_s, u""_s, u"12,5"_s});
        QVERIFY(form.kaydet());
        QCOMPARE(prices(t), u"A|ARMUT|3|4,50/B|İKİ KELİME||12,5"_s);
        // An apostrophe stops the save and leaves a shortened table.
        put(form, 4, {u"B"_s, u"baba'nın','x','y'); --"_s});
        put(form, 5, {u"C"_s});
        t.boxes.expect({u"Değerdeki kesme işareti deyimi bozuyor: baba'nın','x','y'); --"_s});
        QVERIFY(!form.kaydet());
        QCOMPARE(prices(t), u"A|ARMUT|3|4,50"_s);
    }

    void aPriceIsTheOneMeant_data()
    {
        QTest::addColumn<QString>("price"); // "-": refused
        for (const auto &[typed, price] :
             {std::pair("", ""),
              {"12,5", "12,5"},
              {"12.5", "12,5"},
              {"1.234,50", "1234,50"},
              {"-1.234.567,8", "-1234567,8"},
              {"1234.5", "1234,5"},
              {"0.125", "0,125"},
              {" 7 ", "7"},
              {".5", ",5"},
              {"1.234", "-"},
              {"1.234.567", "-"},
              {"1,234.50", "-"},
              {"1.23,5", "-"},
              {"1234.567,5", "-"},
              {"1,2,3", "-"},
              {"-", "-"},
              {"12 TL", "-"},
              {"12345678901234567890123456789012345678901234567890123456789012345", "-"}})
            QTest::newRow(typed) << QString::fromUtf8(price);
    }
    void aPriceIsTheOneMeant()
    {
        QFETCH(QString, price);
        QCOMPARE(fiyatoku(QString::fromUtf8(QTest::currentDataTag())).value_or(u"-"_s), price);
    }

    void aBlockOfASpreadsheetIsPastedWholeOrNotAtAll()
    {
        TestProgram t;
        t.fill({u"insert into urun values ('A','ARMUT','3','4')"_s});
        Urunform form(t.program);
        form.yukle();
        QString block;
        for (int i = 0; i < 12; ++i)
            block += u"K%1\tMAL %1\t1.234,50\t%1.5\r\n"_s.arg(i);
        QCOMPARE(form.yapistir(1, Urunform::Kod, block), QString());
        QCOMPARE(form.l1.rows(), 13);
        QCOMPARE(form.l1.cell(12, Urunform::Sira), u"13"_s);
        QCOMPARE(form.yapistir(0, Urunform::Bfiyat, u"9.75"_s), QString());
        // A price that is none, and cells that would lie beyond the grid.
        QVERIFY(form.yapistir(0, Urunform::Kod, u"X\tY\t1\t2\nZ\tW\t3\t1.2.3"_s)
                    .contains(u"2. satırda \"1.2.3\""));
        QVERIFY(form.yapistir(0, Urunform::Fiyat, u"1\t2\t3"_s).contains(u"3 sütun"));
        QVERIFY(form.kaydet());
        const QString rows = prices(t);
        QVERIFY2(rows.startsWith(u"A|ARMUT|3|9,75/K0|MAL 0|1234,50|0,5/K1|"), qPrintable(rows));
        QVERIFY2(rows.endsWith(u"/K11|MAL 11|1234,50|11,5"), qPrintable(rows));
    }

    void aSaveThatIsKilledLeavesTheWholeTable()
    {
#ifdef Q_OS_UNIX
        constexpr int many = 5000;
        TestProgram t;
        Urunform form(t.program);
        for (int row = 0; row < many; ++row) {
            form.l1.addRow({});
            put(form, row, {u"Y%1"_s.arg(row)});
        }
        QVERIFY(form.kaydet());
        for (const int milliseconds : {20, 45, 90}) {
            const pid_t child = fork();
            while (child == 0)
                form.kaydet();
            QTest::qSleep(milliseconds);
            kill(child, SIGKILL);
            waitpid(child, nullptr, 0);
            QCOMPARE(t.rows(u"urun kod"_s).count(u'Y'), many);
        }
#else
        QSKIP("no fork here, so no save to kill");
#endif
    }

    void aDatabaseThatIsMissingOrBrokenIsToldAndLeftAlone()
    {
        TestProgram t;
        const QString path = t.path(u"data.dbs"_s);
        Urunform form(t.program);
        form.yukle();
        put(form, 0, {u"A"_s});
        writeBytes(path, QByteArray(8192, 'x'));
        t.boxes.expect({u"dosya bir veritabanı değil ya da bozuk (file is not a database) "
                        "(Delete from urun)"_s});
        QVERIFY(!form.kaydet());
        QCOMPARE(readBytes(path), QByteArray(8192, 'x'));
    }

    void aTableThatCouldNotBeReadIsNotWrittenOver()
    {
        TestProgram t;
        t.fill({u"insert into urun values ('A','','','5')"_s});
        const QString path = t.path(u"data.dbs"_s);
        QVERIFY(QFile::rename(path, t.path(u"uzakta"_s)));
        Urunform form(t.program);
        const Box box{asTold(path) + u" açılamadı: dosya yok (unable to open database file)"_s};
        t.boxes.expect(box);
        form.yukle();
        QVERIFY(form.l1.isEmpty() && !QFile::exists(path));
        QVERIFY(QFile::rename(t.path(u"uzakta"_s), path));
        t.boxes.expect(box);
        QVERIFY(!form.kaydet());
        QCOMPARE(prices(t), u"A|||5"_s);
    }
};

QTEST_GUILESS_MAIN(UrunformTest)
#include "tst_urunform.moc"
