// The user's choice that values are written as XML asks: by it each document is well-formed, and
// what an XML reader takes from it is, letter by letter, what stands in the document without it.

#include "base/codepage.h"
#include "cards/cr.h"
#include "cards/st.h"
#include "cards/stoktrf.h"
#include "check/documentreader.h"
#include "invoices/desk.h"
#include "invoices/duzeydesk.h"
#include "logoxml/accumulated.h"
#include "logoxml/document.h"
#include "slips/columns.h"
#include "slips/desk.h"
#include "stocktake/sayimform.h"
#include "support/fakes.h"

#include <QXmlStreamReader>

#include <random>

using namespace kervan;

namespace {

// Letters of placeholder words stand between those that XML keeps for itself, and two halves of a
// word on either side of a control character.
const QString hostile = u" &ay<b>\x05;&amp;tu\x01tar <efatura>"_s;

QString refusalOf(const QByteArray &document)
{
    QXmlStreamReader reader(fromCodePage(document));
    while (!reader.atEnd())
        reader.readNext();
    return reader.errorString();
}

QByteArray resolved(QByteArray bytes)
{
    return bytes.replace("&lt;", "<").replace("&gt;", ">").replace("&amp;", "&");
}

QByteArray withoutControls(QByteArray bytes)
{
    bytes.removeIf([](char c) { return c > 0 && c < 32 && c != '\t' && c != '\n' && c != '\r'; });
    return bytes;
}

void expectXml(const QByteArray &asXml, const QByteArray &asItStands)
{
    QVERIFY(asXml.startsWith("<?xml version=\"1.0\" encoding=\"ISO-8859-9\"?>"));
    QVERIFY(!refusalOf(asItStands).isEmpty());
    QCOMPARE(refusalOf(asXml), QString());
    QCOMPARE(resolved(asXml).split('\n'), withoutControls(asItStands).split('\n'));
    const auto none = [](const DocumentRecord &) {
    };
    const DocumentReading read = readDocumentBytes(asXml, none);
    QVERIFY(read.isFine());
    QVERIFY(read.records > 0);
    QCOMPARE(read.problemCount, 0);
}

// Writes without the choice and with it, which stands off at first.
template<class Screen, class Write>
void expectXmlOf(Screen &screen, const QStringList &documents, Write &&write)
{
    QVERIFY(!screen.okunurBicim.isChecked());
    write();
    QByteArrayList asTheyStand;
    for (const QString &document : documents)
        asTheyStand << readBytes(document);
    screen.okunurBicim.setChecked(true);
    write();
    for (qsizetype i = 0; i < documents.size(); ++i)
        expectXml(readBytes(documents[i]), asTheyStand[i]);
}

void addTo(Grid &grid, const QList<int> &columns)
{
    for (int row = 0; row < grid.rows(); ++row) {
        for (const int column : columns)
            grid.setCell(row, column, grid.cell(row, column) + hostile);
    }
}

} // namespace

class TestXmlForm : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fillingsFindTheSameWords()
    {
        std::mt19937 random(7);
        const auto draw = [&](const QByteArrayList &letters, unsigned longest) {
            QByteArray text;
            for (auto count = random() % (longest + 1); count > 0; --count)
                text += letters[static_cast<qsizetype>(random() % 1000) % letters.size()];
            return text;
        };
        const QByteArrayList letters{"a", "b", "m", "p", ";"};
        const QByteArrayList hostiles{"a", "b", "amp", ";", "&", "<", ">", "\x05", "<ab>", "lt"};
        for (int round = 0; round < 3000; ++round) {
            const QByteArray record = "<ab>|" + draw(letters, 12) + "|<ab>";
            QList<QByteArray> finds;
            for (int i = 0; i < 3; ++i)
                finds << "m" + draw({"m", "p"}, 2);
            finds.insert(static_cast<qsizetype>(random() % 4), "<ab>");
            QByteArray one, other;
            for (int i = 0; i < 2; ++i) {
                QStringList values;
                for (const QByteArray &find : std::as_const(finds))
                    values << (find == "<ab>" ? u"<E>1</E>"_s
                                              : QString::fromLatin1(draw(hostiles, 3)));
                one.resize(0);
                other.resize(0);
                Sablon(record, finds).doldur(values, one);
                Sablon(record, finds, Values::AsXml).doldur(values, other);
                QCOMPARE(resolved(spellMarks(other)), withoutControls(one));
            }
            // An element is no word of slips, whose records are filled again and again.
            finds.removeOne("<ab>");
            AccumulatedBody first("|" + record, finds);
            AccumulatedBody second("|" + record, finds, Values::AsXml);
            for (int i = 0; i < 3; ++i) {
                QStringList values;
                for (qsizetype k = 0; k < finds.size(); ++k)
                    values << QString::fromLatin1(draw(hostiles, 2));
                first.add(values);
                second.add(values);
            }
            QCOMPARE(resolved(spellMarks(second.records().join())),
                     withoutControls(first.records().join()));
        }
    }

    void invoicesAndTheirCashSlips()
    {
        Desk d;
        d.t.boxes.expect({noPrices + u"  A&<b>"_s});
        d.open(header({.no = u"F&<1>\x05"_s, .title = u"A & <b> tutar"_s}) + goods(u"A&<b>") +
               header({.no = u"F2"_s, .title = u"\x05ğ & tarih"_s}) + goods(u"P1"));
        d.tick({0, 1});
        d.l1.setCell(1, L1::IndirimToplami, u"1"_s);
        d.fat.odemePlaniKodu.setText(hostile);
        d.fat.tanimlar.kdvmuafiyetgenel = hostile;
        d.fat.tanimlar.kdvmuafiyetsatir = hostile;
        d.l1.setCell(0, L1::EFatura, u"Evet"_s);
        expectXmlOf(d.fat, {d.t.path(u"belge.xml"_s), d.t.path(u"belge-KASANAKIT.xml"_s)},
                    [&] { d.exported(); });
        // What Logo's reader takes for the plan is what was typed, with the words that were filled.
        QString plan;
        readDocument(d.t.path(u"belge.xml"_s), [&](const DocumentRecord &record) {
            plan = fromCodePage(record[DocumentRecord::Plan]);
        });
        QCOMPARE(plan, u" &ay<b>;&amp;tutar "_s); // "<efatura>" is a word of the template
    }

    void duzeyInvoices()
    {
        DuzeyDesk d;
        d.open({{.no = u"F&<1>"_s, .rates = u"#10|||||"_s, .cari = u"C & <fatura no>"_s}});
        d.l1.setTicked(0, true);
        addTo(d.l1, {L1::OdemeTipi, L1::BelgeNumarasi});
        expectXmlOf(d.fatduz, {d.t.path(u"belge.xml"_s)}, [&] {
            d.t.boxes.expectDone();
            d.fatduz.kaydet(d.t.path(u"belge.xml"_s));
        });
    }

    void slips_data() { DocumentCase::addAll(u"slips"_s); }
    void slips()
    {
        TestProgram t;
        const DocumentCase given(t);
        SlipScreen s(t.program, slipForm(given[u"ekran"_s]));
        s.load();
        const QString source = t.path(given[u"dosya"_s]);
        if (source.endsWith(u".txt"))
            writeBytes(source, readBytes(given.path(u"source.txt"_s)));
        else
            writeWorkbook(source, s.sayfaAdi.text(), bookRows(given.text(u"source.txt"_s)));
        t.dialogs.answers = {source};
        press(s, given[u"oku"_s]);
        s.l1.setAllTicked(true);
        s.l2.setAllTicked(true);
        addTo(s.l1, {2, 3, s.l1.columnCount() - 1}); // codes, titles, and what stands last
        addTo(s.l2, {BankaFisi::OzelKod});
        for (const QString &document : given.expected(u"*.xml"_s)) {
            s.okunurBicim.setChecked(false);
            expectXmlOf(s, {t.path(document)}, [&] {
                t.dialogs.answers = {t.path(document)};
                t.boxes.expectDone();
                press(s, QFileInfo(document).baseName());
            });
        }
    }

    void cards()
    {
        TestProgram t;
        const QString target = t.path(u"belge.xml"_s);
        Cr cr(t.program);
        cr.l1.addRow(u"C&<1>"_s);
        cr.l1.setCell(0, Cr::Unvani, hostile);
        cr.l1.setCell(0, Cr::DataReferans, hostile);
        for (const auto save : {&Cr::kaydet, &Cr::kaydetguncelle}) {
            cr.okunurBicim.setChecked(false);
            expectXmlOf(cr, {target}, [&] {
                t.boxes.expectDone();
                (cr.*save)(target);
            });
        }

        Stoktrf stok(t.program);
        stok.l1.addRow(u"1"_s);
        addTo(stok.l1, {Stoktrf::MalzemeKodu, Stoktrf::Aciklama, Stoktrf::Birim});
        stok.brmseti.setText(hostile);
        stok.ozelKodlar[0].setText(u"<&>-x"_s);
        expectXmlOf(stok, {target}, [&] {
            t.boxes.expectDone();
            stok.kaydet(target);
        });

        St st(t.program);
        st.l1.addRow(u"1"_s);
        addTo(st.l1, {St::UrunKodu, St::UrunAdi});
        st.kdvOrani.setText(u"18"_s);
        st.birimSeti.setText(u"ADET"_s);
        expectXmlOf(st, {target}, [&] {
            t.dialogs.answers = {target};
            t.boxes.expectDone();
            st.manualkaydet();
        });
    }

    void aCount()
    {
        TestProgram t;
        Sayimform count(t.program);
        count.l1.addRow(u"1"_s);
        addTo(count.l1, {Sayimform::StokKodu, Sayimform::Birim});
        count.fisno.setText(hostile);
        expectXmlOf(count, {t.path(u"belge.xml"_s)}, [&] {
            t.boxes.expectDone();
            t.dialogs.answers = {t.path(u"belge.xml"_s)};
            count.xmlkaydet();
        });
    }
};

QTEST_GUILESS_MAIN(TestXmlForm)
#include "tst_xmlform.moc"
