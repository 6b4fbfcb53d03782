#include "base/codepage.h"
#include "logoxml/accumulated.h"
#include "logoxml/document.h"
#include "logoxml/template.h"
#include "support/failing.h"
#include "support/fakes.h"

#include <QTest>

#include <array>
#include <random>

using namespace kervan;
using namespace Qt::StringLiterals;

namespace {

// Placeholders in the order of their filling.
const QStringList headWords =
    u"cari kod|faturano|fatura no|belgeno|belge tarihi|duzenleme tarihi|acknotu|"
    "personel kodu|toplam tutar|toplam indirimler|toplam kdv|genel toplam|fatozkod|"
    "indirimli top tutar|olusturma tarihi|olusturma saati|olusturma dakika|"
    "olusturma saniye|odeme planı kodu|sube kodu|sube alıcılar hesabı|sube depo kodu|"
    "genel kdv|<efatura>|<edurationtipi>|<profileid>|<esatatus>|kdvmuafiyetgenelyazi"_s.split(u'|');
const QStringList lineWords =
    u"urun kodu|miktar|birfyt|indirim|brfytmik|birmfyat*mkt-ind|Kdv|kd tutarı|fatura no|"
    "personel kodu|birim|satkod|satkdkdv|sube depo kodu|kdvmuafiyetsatiryazi|"
    "ekvergitutari"_s.split(u'|');
const QStringList cashWords =
    u"saat|dakika|saniye|yil|ay|tarih|kasakodu|kasaislemno|cariunvan|tutar|carikod|islemno|"
    "makbuzno|satiselemani"_s.split(u'|');

QList<QByteArray> bytesOf(const QStringList &words)
{
    QList<QByteArray> bytes;
    for (const QString &word : words)
        bytes << toCodePage(word);
    return bytes;
}

// The plain way: one replacement behind the other over the whole text.
QString filled(QString text, const QStringList &words, const QStringList &values)
{
    for (qsizetype i = 0; i < words.size(); ++i)
        text.replace(words[i], values[i]);
    return text;
}

// Draws values from words, pieces of words and what else a cell may hold.
class Drawer
{
public:
    Drawer(const QStringList &words, unsigned seed)
        : m_random(seed)
        , m_fragments{u"&"_s,    u""_s,     u"ŞĞİ ığş"_s,  u"12.50"_s,  u"<"_s, u">"_s,
                      u"A.Ş."_s, u" "_s,    u"7.3.2024"_s, u"ЖЖ"_s,     u"?"_s, u"MAY"_s,
                      u"-"_s,    u"KASA"_s, u"\r\n"_s,     u"ticaret"_s}
    {
        for (const QString &word : words) {
            const qsizetype cut = 1 + number(static_cast<int>(word.size()) - 1);
            m_fragments << word << word.left(cut) << word.sliced(cut) << word.toUpper();
        }
    }
    QStringList values(qsizetype count)
    {
        QStringList values;
        while (values.size() < count) {
            QString value;
            for (int pieces = number(4); pieces > 0; --pieces)
                value += m_fragments[number(static_cast<int>(m_fragments.size()))];
            values << value;
        }
        return values;
    }
    int number(int below)
    {
        return below > 0 ? static_cast<int>(m_random() % static_cast<unsigned>(below)) : 0;
    }

private:
    std::mt19937 m_random;
    QStringList m_fragments;
};

} // namespace

class TestLogoXml : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyTemplateHasTheLineEndsOfTheDocument()
    {
        const QString declaration = u"<?xml version=\"1.0\" encoding=\"ISO-8859-9\"?>\r\n"_s;
        QCOMPARE(fromCodePage(sablon(u"baslik"_s)), declaration + u"<SALES_INVOICES>\r\n"_s);
        QCOMPARE(fromCodePage(sablon(u"sonu"_s)), u"</SALES_INVOICES>"_s);
        QCOMPARE(fromCodePage(sablon(u"kalemson"_s)), u"    </TRANSACTIONS>\r\n  </INVOICE>\r\n"_s);
        QCOMPARE(fromCodePage(sablon(u"kasabastex"_s)), declaration + u"<SD_TRANSACTIONS>\r\n"_s);
        QCOMPARE(fromCodePage(sablon(u"kasasontex"_s)), u"</SD_TRANSACTIONS>\r\n"_s);
        const QList<std::pair<QString, int>> lineCounts{
            {u"xl1"_s, 67}, {u"xl2"_s, 30}, {u"xl3"_s, 17}, {u"xl4"_s, 18}, {u"kasatex"_s, 58}};
        for (const auto &[name, count] : lineCounts) {
            QByteArray text = sablon(name);
            const bool open = name == u"kasatex"; // its line end stands in front of each copy
            QCOMPARE(text.endsWith("\r\n"), !open);
            QCOMPARE(text.count("\r\n"), count - open);
            text.replace("\r\n", "");
            QVERIFY(!text.contains('\r') && !text.contains('\n') && !text.contains('\t'));
        }
        QVERIFY(sablon(u"xl1"_s).startsWith("  <INVOICE DBOP=\"INS\" >\r\n    <TYPE>8</TYPE>\r\n"));
        QVERIFY(sablon(u"xl1"_s).contains("<GL_CODE>sube al\xFD"
                                          "c\xFDlar hesab\xFD</GL_CODE>"));
        QVERIFY(sablon(u"kasatex"_s)
                    .contains("            <DISCTRLIST>\r\n            </DISCTRLIST>\r\n"));
    }

    void aFillingIsDoneStepByStepOverTheWholeText()
    {
        QCOMPARE(sablondoldur("a b a", std::array{Fill{"a", "1"}, Fill{"b", ""}}),
                 QByteArray("1  1"));
        // Order decides: the longer word first, and a value is searched by the steps behind it.
        QCOMPARE(sablondoldur("kasaislemno islemno",
                              std::array{Fill{"kasaislemno", "K"}, Fill{"islemno", "N"}}),
                 QByteArray("K N"));
        QCOMPARE(sablondoldur("kasaislemno islemno",
                              std::array{Fill{"islemno", "N"}, Fill{"kasaislemno", "K"}}),
                 QByteArray("kasaN N"));
        const std::array title{Fill{"cariunvan", "tutar & saat"}, Fill{"tutar", "5"}};
        QCOMPARE(sablondoldur("cariunvan tutar", title), QByteArray("5 & saat 5"));
        const std::array back{Fill{"tutar", "5"}, Fill{"cariunvan", "tutar"}};
        QCOMPARE(sablondoldur("cariunvan tutar", back), QByteArray("tutar 5"));
        // A value isn't searched by its own step, and case counts.
        QCOMPARE(sablondoldur("ay AY Ay", std::array{Fill{"ay", "ayay"}}),
                 QByteArray("ayay AY Ay"));
        QCOMPARE(sablondoldur("aaa", std::array{Fill{"aa", "a"}}), QByteArray("aa"));
        // A word that a value and the text around it make together is found too.
        QCOMPARE(sablondoldur("tuxr", std::array{Fill{"x", "ta"}, Fill{"tutar", "5"}}),
                 QByteArray("5"));
        QCOMPARE(sablondoldur("yok", std::array{Fill{"var", "1"}}), QByteArray("yok"));
    }

    void aPreparedTemplateGivesThePlainText_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QStringList>("words");
        QTest::newRow("xl1") << u"xl1"_s << headWords;
        QTest::newRow("xl2") << u"xl2"_s << lineWords;
        QTest::newRow("kasatex") << u"kasatex"_s << cashWords;
    }
    void aPreparedTemplateGivesThePlainText()
    {
        QFETCH(QString, name);
        QFETCH(QStringList, words);
        const QString text = fromCodePage(sablon(name));
        const Sablon prepared(sablon(name), bytesOf(words));
        Drawer drawer(words, 11);
        QString plain;
        QByteArray bytes;
        for (int row = 0; row < 300; ++row) {
            const QStringList values = drawer.values(words.size());
            plain += filled(text, words, values);
            prepared.doldur(values, bytes);
        }
        QCOMPARE(bytes.split('\n'), toCodePage(plain).split('\n'));
        QVERIFY(plain.contains(words.first())); // what came in behind its own step has stayed
    }

    void anyTemplateAndWordsGiveThePlainText()
    {
        // Few letters, so that words contain each other, touch, and arise across borders.
        std::mt19937 random(5);
        const auto below = [&](unsigned limit) {
            return static_cast<int>(random() % limit);
        };
        const auto draw = [&](int shortest, int longest) {
            QString text;
            const int size = shortest + below(static_cast<unsigned>(longest - shortest + 1));
            while (text.size() < size)
                text += u"aab<"_s[below(4)];
            return text;
        };
        for (int round = 0; round < 20000; ++round) {
            const QString text = draw(0, 12);
            QStringList words;
            QStringList values;
            for (int count = 1 + below(3); count > 0; --count) {
                words << draw(0, 2) + u"ab"_s[below(2)] + draw(0, 1);
                values << draw(0, 3);
            }
            QByteArray bytes;
            Sablon(text.toLatin1(), bytesOf(words)).doldur(values, bytes);
            QVERIFY2(QString::fromLatin1(bytes) == filled(text, words, values),
                     qPrintable(text + u" with "_s + words.join(u',') + u" by "_s +
                                values.join(u',') + u" is "_s + QString::fromLatin1(bytes)));
        }
    }

    void aSlipBodyIsSearchedAgainForEverySlip_data()
    {
        QTest::addColumn<unsigned>("seed");
        for (unsigned seed = 1; seed <= 4; ++seed)
            QTest::addRow("seed %u", seed) << seed;
    }
    void aSlipBodyIsSearchedAgainForEverySlip()
    {
        QFETCH(unsigned, seed);
        const QString slip = u"\r\n"_s + fromCodePage(sablon(u"kasatex"_s));
        AccumulatedBody body(sablon(u"kasatex"_s), bytesOf(cashWords));
        Drawer drawer(cashWords, seed);
        QString plain;
        int changed = 0;
        for (int row = 0; row < 120; ++row) {
            const QStringList values = drawer.values(cashWords.size());
            const QString before = plain;
            plain = filled(plain + slip, cashWords, values);
            changed += !plain.startsWith(before);
            body.add(values);
            if (row % 20 == 19)
                QCOMPARE(body.records().join().split('\n'), toCodePage(plain).split('\n'));
        }
        QCOMPARE(body.records().size(), 120);
        QVERIFY(changed > 10);
    }

    void bothRoutesWriteTheirBytes_data()
    {
        QTest::addColumn<QByteArrayList>("body");
        QTest::addColumn<QByteArray>("separator");
        QTest::addColumn<QByteArray>("expected");
        QTest::newRow("joined by a blank, empty at both ends")
            << QByteArrayList{"", "a\r\n", "\xDE", ""} << QByteArray(" ")
            << QByteArray("H\r\n a\r\n \xDE F");
        QTest::newRow("joined by nothing")
            << QByteArrayList{"\r\na", "\r\nb"} << QByteArray() << QByteArray("H\r\n\r\na\r\nbF");
        QTest::newRow("no record") << QByteArrayList{} << QByteArray(" ") << QByteArray("H\r\nF");
        QTest::newRow("one record")
            << QByteArrayList{"&"} << QByteArray(" ") << QByteArray("H\r\n&F");
    }
    void bothRoutesWriteTheirBytes()
    {
        QFETCH(QByteArrayList, body);
        QFETCH(QByteArray, separator);
        QFETCH(QByteArray, expected);
        QTemporaryDir folder;
        const QString path = folder.filePath(u"Fatura Ş.xml"_s);
        writeBytes(path, QByteArray(1000, 'x'));
        belgeyaz({"H\r\n", body, separator, "F"}, Yol::bir, path);
        QCOMPARE(readBytes(path), expected + "\r\n");
        belgeyaz({"H\r\n", body, separator, "F"}, Yol::iki, path);
        QCOMPARE(readBytes(path), expected);
        QCOMPARE(contentOf(folder.path()), QStringList{u"Fatura Ş.xml"_s});
    }

    void aTargetThatCannotBeOpenedLeavesNothingBehind()
    {
        const Belge belge{"H", {"a"}, " ", "F"};
        QTemporaryDir folder;
        QVERIFY(QDir(folder.path()).mkpath(u"klasör/iç"_s));
        for (const QString &name : {u"yok/a.xml"_s, u"klasör"_s}) {
            const QString path = folder.filePath(name);
            QVERIFY(failsNaming(path, [&] { belgeyaz(belge, Yol::bir, path); }));
        }
        QVERIFY_THROWS_EXCEPTION(Failure, belgeyaz(belge, Yol::iki, QString()));
        QCOMPARE(contentOf(folder.path()), QStringList{u"klasör"_s});
    }

    void aFullDiskKeepsTheOldDocument_data()
    {
        QTest::addColumn<int>("room"); // the document has 1001003 bytes
        QTest::newRow("full from the start") << 0;
        QTest::newRow("full in the middle") << 500'000;
        QTest::newRow("full at the last bytes") << 1'000'990;
    }
    void aFullDiskKeepsTheOldDocument()
    {
        QFETCH(int, room);
        const Belge belge{"H", QByteArrayList(1000, QByteArray(1000, 'x')), " ", "F"};
        QTemporaryDir folder;
        const QString path = folder.filePath(u"a.xml"_s);
        writeBytes(path, "eski");
        bool fails = false;
        {
            const FullDisk disk(static_cast<unsigned long>(room));
            if (!disk.works())
                QSKIP("no way to fill a disk here");
            fails = failsNaming(path, [&] { belgeyaz(belge, Yol::bir, path); });
        }
        QCOMPARE(readBytes(path), QByteArray("eski"));
        QVERIFY(fails);
        QCOMPARE(contentOf(folder.path()), QStringList{u"a.xml"_s});
    }

    void aChosenNameEndsInXml()
    {
        QCOMPARE(xmlAdi(u"C:/a.xml"_s), u"C:/a.xml"_s);
        QCOMPARE(xmlAdi(u"a"_s), u"a.xml"_s);
        QCOMPARE(xmlAdi(u"a.XML"_s), u"a.XML.xml"_s);
        QCOMPARE(xmlAdi(u"axml"_s), u"axml.xml"_s);
        QCOMPARE(xmlAdi(u"a.xml.bak"_s), u"a.xml.bak.xml"_s);
        QCOMPARE(xmlAdi(u"xml"_s), u"xml.xml"_s);
    }

    void theStartingFolderIsTestedByOneValueAndTakenFromAnother()
    {
        QCOMPARE(ilkKlasor(u"/kervan"_s, {}, u"/fatura"_s), u"/kervan/logo xml"_s);
        QCOMPARE(ilkKlasor(u"/kervan"_s, u"/cari"_s, u"/fatura"_s), u"/fatura"_s);
        QCOMPARE(ilkKlasor(u"/kervan"_s, u"/cari"_s, {}), QString());
    }
};

QTEST_GUILESS_MAIN(TestLogoXml)
#include "tst_logoxml.moc"
