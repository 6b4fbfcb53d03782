#include "base/codepage.h"
#include "logoxml/accumulated.h"
#include "logoxml/document.h"
#include "logoxml/template.h"
#include "support/fakes.h"

#include <random>

using namespace kervan;

namespace {

// Placeholders in the order of their filling.
const QStringList &words()
{
    static const QStringList words{
        u"saat"_s,    u"dakika"_s,   u"saniye"_s,      u"yil"_s,         u"ay"_s,
        u"tarih"_s,   u"kasakodu"_s, u"kasaislemno"_s, u"cariunvan"_s,   u"tutar"_s,
        u"carikod"_s, u"islemno"_s,  u"makbuzno"_s,    u"satiselemani"_s};
    return words;
}

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

// Draws values from words, pieces of words and what else a cell may hold.
QStringList drawn(std::mt19937 &random)
{
    static const QStringList others{u"&"_s,   {},        u"ŞĞİ ığş"_s, u"12.50"_s,    u"<"_s,
                                    u">"_s,   u"A.Ş."_s, u" "_s,       u"7.3.2024"_s, u"ЖЖ"_s,
                                    u"MAY"_s, u"KASA"_s, u"\r\n"_s};
    static const QStringList pieces = words() + words() + others;
    QStringList values;
    while (values.size() < words().size()) {
        QString value;
        for (auto left = random() % 4; left > 0; --left)
            value +=
                pieces[static_cast<qsizetype>(random() % pieces.size())].mid(random() % 3 ? 0 : 2);
        values << value;
    }
    return values;
}

} // namespace

class TestLogoXml : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anyTemplateAndWordsGiveThePlainText()
    {
        std::mt19937 random(5);
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
            // The same as slips, of which each filling runs over those before it.
            AccumulatedBody body(text.toLatin1(), bytesOf(finds));
            QString slips;
            for (int slip = 0; slip < 3; ++slip) {
                std::ranges::generate(values, [&] { return draw(3); });
                body.add(values);
                slips = filled(slips + u"\r\n"_s + text, finds, values);
            }
            QVERIFY2(QString::fromLatin1(body.records().join()) == slips,
                     qPrintable(u"slips of "_s + what + values.join(u',')));
        }
    }

    void aSlipBodyIsSearchedAgainForEverySlip()
    {
        const QString slip = u"\r\n"_s + fromCodePage(sablon(u"kasatex"_s));
        // From the third seed on the template's last word is none of the filling's, and stays.
        for (unsigned seed = 1; seed <= 4; ++seed) {
            const QStringList filledWords = seed < 3 ? words() : words().first(words().size() - 1);
            AccumulatedBody body(sablon(u"kasatex"_s), bytesOf(filledWords));
            std::mt19937 random(seed);
            QString plain;
            QByteArray given;
            const auto take = [&given](QByteArrayView piece) {
                given += piece;
            };
            int changed = 0;
            for (int row = 1; row <= 120; ++row) {
                const QStringList values = drawn(random).first(filledWords.size());
                const QString before = plain;
                plain = filled(plain + slip, filledWords, values);
                changed += !plain.startsWith(before);
                body.add(values);
                if (seed % 2 == 0) // what can't change any more goes at once
                    body.handOver(take);
                if (row % 20 == 0)
                    QCOMPARE((given + body.records().join()).split('\n'),
                             toCodePage(plain).split('\n'));
            }
            QVERIFY(changed > 10);
            QCOMPARE(given.isEmpty(), seed % 2 == 1);
            body.handOverAll(take);
            QCOMPARE(given, toCodePage(plain));
        }
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
