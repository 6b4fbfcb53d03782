#include "stocktake/urunform.h"

#include "base/failure.h"
#include "support/fakes.h"

#include <QFile>
#include <QTest>

using namespace kervan;
using namespace Qt::StringLiterals;

class UrunformTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anEmptyTableOpensAsTenEmptyRows();
    void rowsKeepTheirOrderAndTenEmptyOnesFollow();
    void onlyTheDownArrowOnTheLastRowAddsOne();
    void savingWritesTheRowsWithACodeAndNoOthers();
    void anApostropheStopsTheSaveAndLeavesAShortenedTable();
    void aTableThatCannotBeReadIsNotWrittenOver();
    void aSaveWithoutTheDatabaseShowsTheFailure();

private:
    static QStringList prices(TestProgram &test)
    {
        return test.rows(u"data.dbs"_s, u"urun"_s, {u"kod"_s, u"ack"_s, u"fiyat"_s, u"bfiyat"_s});
    }
    static void put(Urunform &form, int row, const QStringList &cells)
    {
        for (int i = 0; i < cells.size(); ++i)
            form.l1.setCell(row, i + 1, cells[i]);
    }
};

void UrunformTest::anEmptyTableOpensAsTenEmptyRows()
{
    TestProgram test;
    Urunform form(test.program);
    form.yukle();
    QCOMPARE(form.l1.rows(), 10);
    QCOMPARE(form.l1.cell(9, Urunform::Sira), u"10"_s);
    QCOMPARE(form.l1.cell(9, Urunform::Kod), QString());
}

void UrunformTest::rowsKeepTheirOrderAndTenEmptyOnesFollow()
{
    TestProgram test;
    test.fill(u"data.dbs"_s, {u"insert into urun values ('Z','ZEYTİN','1','2')"_s,
                              u"insert into urun values ('A','ARMUT','3','4,50')"_s});
    Urunform form(test.program);
    form.yukle();
    QCOMPARE(form.l1.rows(), 12);
    QCOMPARE(form.l1.cell(0, Urunform::Ack), u"ZEYTİN"_s);
    QCOMPARE(form.l1.cell(1, Urunform::Sira), u"2"_s);
    QCOMPARE(form.l1.cell(1, Urunform::Bfiyat), u"4,50"_s);
    QCOMPARE(form.l1.cell(2, Urunform::Sira), u"3"_s);
}

void UrunformTest::onlyTheDownArrowOnTheLastRowAddsOne()
{
    TestProgram test;
    Urunform form(test.program);
    form.yukle();
    form.satirekle(8);
    QCOMPARE(form.l1.rows(), 10);
    form.satirekle(9);
    QCOMPARE(form.l1.rows(), 11);
    QCOMPARE(form.l1.cell(10, Urunform::Sira), u"11"_s);
}

void UrunformTest::savingWritesTheRowsWithACodeAndNoOthers()
{
    TestProgram test;
    test.fill(u"data.dbs"_s, {u"insert into urun values ('ESKI','','','')"_s});
    Urunform form(test.program);
    form.yukle();
    put(form, 0, {u""_s, u"kodsuz"_s, u"1"_s, u"1"_s});
    put(form, 4, {u"B"_s, u"İKİ KELİME"_s, u""_s, u"12,5"_s});
    put(form, 2, {u"A"_s, u""_s, u"7"_s, u""_s});
    QVERIFY(form.kaydet());
    QCOMPARE(prices(test), (QStringList{u"A||7|"_s, u"B|İKİ KELİME||12,5"_s}));
}

void UrunformTest::anApostropheStopsTheSaveAndLeavesAShortenedTable()
{
    TestProgram test;
    Urunform form(test.program);
    form.yukle();
    put(form, 0, {u"A"_s, u"bir"_s});
    put(form, 1, {u"B"_s, u"baba'nın','x','y'); --"_s});
    put(form, 2, {u"C"_s, u"üç"_s});
    test.boxes.expect(
        {u"Değerdeki kesme işareti deyimi bozuyor: baba'nın','x','y'); --"_s, {}, Icon::None});
    QVERIFY(!form.kaydet());
    QCOMPARE(prices(test), QStringList{u"A|bir||"_s});
}

void UrunformTest::aTableThatCannotBeReadIsNotWrittenOver()
{
    TestProgram test;
    test.fill(u"data.dbs"_s, {u"insert into urun values ('A','','','5')"_s});
    QVERIFY(QFile::rename(test.path(u"data.dbs"_s), test.path(u"uzakta"_s)));
    Urunform form(test.program);
    const Box box{
        test.path(u"data.dbs"_s) + u" açılamadı: unable to open database file"_s, {}, Icon::None};
    test.boxes.expect(box);
    form.yukle();
    QCOMPARE(form.l1.rows(), 0);
    QVERIFY(QFile::rename(test.path(u"uzakta"_s), test.path(u"data.dbs"_s)));
    test.boxes.expect(box);
    QVERIFY(!form.kaydet());
    QCOMPARE(prices(test), QStringList{u"A|||5"_s});
}

void UrunformTest::aSaveWithoutTheDatabaseShowsTheFailure()
{
    TestProgram test;
    Urunform form(test.program);
    form.yukle();
    put(form, 0, {u"A"_s});
    writeBytes(test.path(u"data.dbs"_s), QByteArray(8192, 'x'));
    test.boxes.expect({u"file is not a database (Delete from urun)"_s, {}, Icon::None});
    QVERIFY(!form.kaydet());
    QCOMPARE(readBytes(test.path(u"data.dbs"_s)), QByteArray(8192, 'x'));
}

QTEST_GUILESS_MAIN(UrunformTest)
#include "tst_urunform.moc"
