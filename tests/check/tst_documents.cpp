#include "check/decimal.h"

#include "support/table.h"

#include <QTest>

using namespace kervan;

namespace {

QString shown(std::optional<Decimal> amount)
{
    return amount ? amount->text() : u"yok"_s;
}

} // namespace

class TestDocuments : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void amountsAreReadAsTheyAreSpelled();
    void sumsRoundNothing();
};

void TestDocuments::amountsAreReadAsTheyAreSpelled()
{
    QCOMPARE(shown(Decimal::ofCell(u"1.234,5600")), u"1.234,56"_s);
    QCOMPARE(shown(Decimal::ofCell(u" -,50 ")), u"-0,50"_s);
    QCOMPARE(shown(Decimal::ofCell(u"12.50")), u"1.250,00"_s); // a point groups, as number() has it
    QCOMPARE(shown(Decimal::ofCell(u"0,000012345678901234")), u"0,000012345678901234"_s);
    QCOMPARE(shown(Decimal::ofCell(u"0009999999999999,9")), u"9.999.999.999.999,90"_s);
    for (const char16_t *const none : {u"", u" ", u",", u"-", u"1,2,3", u"12a", u"1-", u",5.0",
                                       u"10000000000000", u"0,0000000000000000001"})
        QCOMPARE(shown(Decimal::ofCell(QStringView(none))), u"yok"_s);

    QCOMPARE(shown(Decimal::ofDocument("1234.5600")), u"1.234,56"_s);
    QCOMPARE(shown(Decimal::ofDocument(".50")), u"0,50"_s);
    QCOMPARE(shown(Decimal::ofDocument("1,5")), u"yok"_s);
    QCOMPARE(shown(Decimal::ofDocument("1.234.5")), u"yok"_s);
}

void TestDocuments::sumsRoundNothing()
{
    Decimal sum;
    for (int i = 0; i < 100'000; ++i)
        sum += *Decimal::ofCell(u"0,1");
    QCOMPARE(sum.text(), u"10.000,00"_s);
    QVERIFY(sum == *Decimal::ofDocument("10000"));
    QVERIFY(sum > *Decimal::ofCell(u"9999,9999999999999999"));
    QVERIFY(*Decimal::ofCell(u"-5") < Decimal());
    QCOMPARE((sum - *Decimal::ofCell(u"10000,000000000000000001")).text(),
             u"-0,000000000000000001"_s);
    QCOMPARE((-sum).text(0), u"-10.000"_s);
    QCOMPARE(Decimal().text(), u"0,00"_s);
}

QTEST_GUILESS_MAIN(TestDocuments)
#include "tst_documents.moc"
