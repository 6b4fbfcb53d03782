#include "base/codepage.h"
#include "logoxml/accumulated.h"
#include "logoxml/document.h"
#include "logoxml/template.h"
#include "support/fakes.h"

#include <random>

using namespace kervan;

namespace {

QList<QByteArray> bytesOf(const QStringList &finds)
{
    QList<QByteArray> bytes;
    for (const QString &find : finds)
        bytes << toCodePage(find);
    return bytes;
}

// The plain way: one replacement behind the other over the whole text.
QString filled(QString text, const QStringList &finds, const QStringList &values)
{
    for (qsizetype i = 0; i < finds.size(); ++i)
        text.replace(finds[i], values[i]);
    return text;
}

} // namespace

class TestLogoXml : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anyTemplateAndWordsGiveThePlainText()
    {
        std::mt19937 random(5);
        int handedOver = 0;
        const auto below = [&](unsigned limit) {
            return static_cast<int>(random() % limit);
        };
        for (int round = 0; round < 20000; ++round) {
            // Few letters, so that words contain each other, touch, and arise across borders; in
            // every other round there are no small ones.
            const auto draw = [&](unsigned longest) {
                QString text = round % 2 ? u"aab<aabab<baaa<bb"_s : u"AAB<AABAB<BAAA<BB"_s;
                std::shuffle(text.begin(), text.end(), random);
                return text.first(below(longest + 1));
            };
            const QString text = draw(12);
            QStringList finds, values;
            for (int count = 1 + below(3); count > 0; --count) {
                finds << draw(2) + (round % 2 ? u"ab"_s : u"AB"_s)[below(2)] + draw(1);
                values << draw(3);
            }
            const QString what = text + u" with "_s + finds.join(u',') + u" by "_s;
            QByteArray bytes;
            Sablon(text.toLatin1(), bytesOf(finds)).doldur(values, bytes);
            QVERIFY2(QString::fromLatin1(bytes) == filled(text, finds, values),
                     qPrintable(what + values.join(u',')));
            // The same as slips, of which each filling runs over those before it. In some rounds
            // what can't change any more goes at once.
            AccumulatedBody body(text.toLatin1(), bytesOf(finds));
            QString slips;
            QByteArray given;
            const auto take = [&given](QByteArrayView piece) {
                given += piece;
            };
            for (int slip = 0; slip < 4; ++slip) {
                std::ranges::generate(values, [&] { return draw(3); });
                body.add(values);
                slips = filled(slips + u"\r\n"_s + text, finds, values);
                if (round % 4 < 2)
                    body.handOver(take);
            }
            handedOver += !given.isEmpty() && !body.records().isEmpty();
            QVERIFY2(QString::fromLatin1(given + body.records().join()) == slips,
                     qPrintable(u"slips of "_s + what + values.join(u',')));
            body.handOverAll(take);
            QVERIFY(QString::fromLatin1(given) == slips && body.records().isEmpty());
        }
        QVERIFY(handedOver > 100);
    }

    // A value that spells an element's word stands in the body with marks, and is found by them.
    void aLaterSlipFillsAnElementsWordInAnEarlierValue()
    {
        AccumulatedBody body("<A>ad</A><x>", {"ad", "<x>"}, Values::AsXml);
        body.add(QStringList{u"1"_s, u"<B>2</B>"_s});
        QCOMPARE(spellMarks(body.records().join()), "\r\n<A>1</A><B>2</B>");
        AccumulatedBody second("<x><A>ad</A>", {"<x>", "ad"}, Values::AsXml);
        second.add(QStringList{u"<B>1</B>"_s, u"<x>"_s});
        second.add(QStringList{u"<B>2</B>"_s, u"b"_s});
        QCOMPARE(spellMarks(second.records().join()),
                 "\r\n<B>1</B><A><B>2</B></A>\r\n<B>2</B><A>b</A>");
    }

    void aSlipThatDoublesWithEverySlipIsAFailureThatNamesIt()
    {
        AccumulatedBody body("tutar", {"tutar"});
        body.add(QStringList{u"12"_s});
        body.add(QStringList{u"13"_s});
        body.handOver([](QByteArrayView) {});
        QCOMPARE(failureOf([&] {
                     for (int slip = 0; slip < 25; ++slip)
                         body.add(QStringList{u"tutartutar"_s});
                 }),
                 u"3. kayıt çok büyüdü: değerlerinde şablonun sözcükleri var."_s);
    }

    void aSlipThatSwellsBeyondMeasureIsAFailureAndNoDocument()
    {
        AccumulatedBody body("<A>a</A>", {"a"});
        const QString twice = u"a a"_s;
        for (int row = 0; row < 60; ++row)
            body.add(std::span(&twice, 1));
        QVERIFY(
            failureOf([&] { body.handOverAll([](QByteArrayView) {}); }).startsWith(u"1. kayıt"));
    }

    void aTargetThatCannotBeWrittenKeepsTheOldDocument()
    {
        // 1001003 bytes
        const Belge belge{"H", QByteArrayList(1000, QByteArray(1000, 'x')), " ", "F"};
        const QTemporaryDir folder;
        const auto fails = [&](const QString &name) {
            const QString path = name.isEmpty() ? name : folder.filePath(name);
            return failsNaming(path, [&] { belgeyaz(belge, DocumentEnd::LineEnd, path); });
        };
        QVERIFY(QDir(folder.path()).mkpath(u"klasör/iç"_s));
        QVERIFY(fails(u"yok/a.xml"_s) && fails(u"klasör"_s) && fails({}));
        writeBytes(folder.filePath(u"a.xml"_s), "eski");
        for (const unsigned long room : {0UL, 500'000UL, 1'000'990UL}) {
            bool failed = false;
            if (!onAFullDisk(room, [&] { failed = fails(u"a.xml"_s); }))
                QSKIP("no way to fill a disk here");
            QVERIFY(failed);
            QCOMPARE(readBytes(folder.filePath(u"a.xml"_s)), QByteArray("eski"));
            QCOMPARE(contentOf(folder.path()), u"a.xml|klasör"_s);
        }
    }
};

QTEST_GUILESS_MAIN(TestLogoXml)
#include "tst_logoxml.moc"
