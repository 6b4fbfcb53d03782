// Hostile texts at every place where a value reaches a statement: Logo's over the real driver to
// the stand-in, the local ones in the real engine. What arrives is one of the designed statements
// with the value that was meant, or nothing at all.

#include "cards/st.h"
#include "invoices/fat.h"
#include "invoices/prices.h"
#include "logolink/statements.h"
#include "odbc/odbcserver.h"
#include "stocktake/urunform.h"
#include "store/definition.h"
#include "store/settings.h"
#include "support/fakes.h"
#include "support/hostile.h"
#include "support/quietports.h"
#include "support/readstatement.h"
#include "support/tds/tdsstandin.h"

#include <QRegularExpression>
#include <QTest>

using namespace kervan;
using namespace Qt::StringLiterals;

namespace {

QString literal(QString text)
{
    return u"'"_s + text.replace(u"'"_s, u"''"_s) + u"'"_s;
}

// A program folder whose boxes nobody sees.
struct Desk
{
    TestProgram t;
    QuietBoxes boxes;
    Program program{t.folder.path(), {}, {}, {}, boxes, t.dialogs, t.clock, t.sqlServer};
    LocalDb &db = program.db;

    QList<QStringList> rows(const QString &table, const QStringList &columns)
    {
        QList<QStringList> all;
        db.forEach(Statement(u"select * from "_s + table), [&] {
            QStringList &row = all.emplaceBack();
            for (const QString &column : columns)
                row << db.field(column);
        });
        return all;
    }
};

enum class Engine { Logo, Local };

// The texts of the current kind, each with what the engine sees of it.
template<class Take>
void forEachText(Engine engine, Take &&take)
{
    QFETCH_GLOBAL(int, kind);
    const HostileTexts &texts = hostileTexts()[kind];
    const bool refused =
        texts.fate == Fate::Refused || (texts.fate == Fate::Halved && engine == Engine::Local);
    for (const QString &text : texts.texts) {
        take(text, refused, meant(text, texts.fate));
        if (QTest::currentTestFailed()) {
            qWarning("with %s", qPrintable(text.left(80)));
            return;
        }
    }
}

} // namespace

class TestStatements : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase_data()
    {
        QTest::addColumn<int>("kind");
        qsizetype count = 0;
        for (int kind = 0; kind < hostileTexts().size(); ++kind) {
            QTest::newRow(hostileTexts()[kind].kind) << kind;
            count += hostileTexts()[kind].texts.size();
        }
        QVERIFY(count >= 200);
    }

    void cleanup() { m_logo.reset(); }

    void logoSeesTheDesignedStatementsWithTheValuesThatWereMeant()
    {
        connectLogo();
        forEachText(Engine::Logo, [&](const QString &text, bool refused, const QString &value) {
            m_logo->run(u"delete from LG_012_CLCARD"_s);
            m_logo->run(u"delete from LG_012_UNITBARCODE"_s);
            m_logo->run(u"insert into LG_012_CLCARD values (1,'BAŞKA','ESKİ',0)"_s);
            m_logo->run(u"insert into LG_012_CLCARD values (2,%1,'ESKİ',1)"_s.arg(literal(value)));
            m_logo->run(u"insert into LG_012_UNITBARCODE values ('BAŞKA',1,1)"_s);
            m_logo->run(u"insert into LG_012_UNITBARCODE values (%1,2,2)"_s.arg(literal(value)));

            const auto card = arrives(cardSelect(u"12- A"_s, text), refused,
                                      u"Select * from LG_012_CLCARD where CODE=?"_s, {value});
            const auto unit = arrives(
                barcodeSelect(u"12- A"_s, text), refused,
                u"Select ITEM.CODE as ITEMKOD, UNIT.CODE as BIRIMKOD from LG_012_UNITBARCODE BAR "
                "WITH(NOLOCK) LEFT OUTER JOIN LG_012_ITEMS ITEM WITH(NOLOCK) ON (BAR.ITEMREF  =  "
                "ITEM.LOGICALREF) LEFT OUTER JOIN LG_012_UNITSETL UNIT WITH(NOLOCK) ON "
                "(BAR.UNITLINEREF = UNIT.LOGICALREF) where BAR.BARCODE=?"_s,
                {value});
            if (!refused) {
                QCOMPARE(card.rows.size(), 1);
                QCOMPARE(card.value(0, u"LOGICALREF"), u"2"_s);
                QCOMPARE(unit.rows.size(), 1);
            }
            const QString update = u"UPDATE LG_012_CLCARD SET DEFINITION_=? where CODE=?"_s;
            arrives(titleUpdate(u"12- A"_s, text, u"YENİ"_s), refused, update, {u"YENİ"_s, value});
            QCOMPARE(titles(), (QStringList{u"ESKİ"_s, refused ? u"ESKİ"_s : u"YENİ"_s}));
            arrives(titleUpdate(u"12- A"_s, u"BAŞKA"_s, text), refused, update,
                    {value, u"BAŞKA"_s});
            QCOMPARE(titles().first(), refused ? u"ESKİ"_s : value);
        });
    }

    // What stands in front of a firm's first "-" gets into the names of its tables.
    void aFirmIsAPartOfATablesNameOrRefused()
    {
        static const QRegularExpression name(
            u"\\ASelect \\* from LG_[\\p{L}\\p{N}_]*_CLCARD where CODE=\\?\\z"_s);
        connectLogo();
        forEachText(Engine::Logo, [&](const QString &text, bool, const QString &) {
            const qsizetype before = m_logo->statements().size();
            passOver([&] { m_connection->run(cardSelect(text, u"C"_s)); });
            const QStringList arrived = m_logo->statements().sliced(before);
            QVERIFY(arrived.size() <= 1);
            for (const QString &statement : arrived)
                QVERIFY(name.match(ReadStatement(statement).fixed).hasMatch());
            QVERIFY(arrived.isEmpty() == cardSelect(text, u"C"_s).breakingValue().has_value());
        });
    }

    void aDefinitionIsOneRowWithItsValuesOrNone()
    {
        Desk d;
        for (const Definition &definition : definitions()) {
            const OpenDb open(d.db, d.program.path(definition.database));
            const TogetherInDb together(d.db); // one wait for the disk
            forEachText(Engine::Local,
                        [&](const QString &text, bool refused, const QString &value) {
                            const auto rows = [&] {
                                return d.rows(definition.table, definition.columns);
                            };
                            d.db.query(Statement(u"delete from "_s + definition.table));
                            const auto plain = [](const QString &column) {
                                return column;
                            };
                            const auto hostile = [&text](const QString &) {
                                return text;
                            };
                            d.db.query(definition.insert(plain));
                            const QStringList first = definition.columns;
                            const QStringList wanted(definition.columns.size(), value);
                            QCOMPARE(failsAt(d.db, definition.insert(hostile)), refused);
                            QCOMPARE(rows(), refused ? QList<QStringList>{first}
                                                     : (QList<QStringList>{first, wanted}));

                            d.db.query(Statement(u"delete from "_s + definition.table));
                            d.db.query(definition.insert(plain));
                            QString id;
                            d.db.forEach(definition.select(), [&] { id = d.db.field(u"id"); });
                            QCOMPARE(failsAt(d.db, definition.update(hostile, id)), refused);
                            QStringList changed = first;
                            for (QString &cell : changed) {
                                const QStringList &written = definition.updateColumns;
                                if (!refused && (written.isEmpty() || written.contains(cell)))
                                    cell = value;
                            }
                            QCOMPARE(rows(), QList<QStringList>{changed});
                            QCOMPARE(failsAt(d.db, definition.update(plain, text)), refused);
                            QCOMPARE(failsAt(d.db, definition.remove(text)), refused);
                            QCOMPARE(rows(), QList<QStringList>{changed});
                            if (definition.sideValue) {
                                const SideValue &side = *definition.sideValue;
                                d.db.query(side.update(u"18"_s));
                                QCOMPARE(failsAt(d.db, side.update(text)), refused);
                                QCOMPARE(d.rows(side.table, {side.column}),
                                         QList<QStringList>{{refused ? u"18"_s : value}});
                            }
                        });
        }
    }

    void whatIsLookedUpIsTheRowThatHoldsIt()
    {
        Desk d;
        Fat fat(d.program);
        St st(d.program);
        const QString data = d.program.path(u"data.dbs");
        forEachText(Engine::Local, [&](const QString &text, bool refused, const QString &value) {
            {
                OtherProgram engine(data); // which takes what the program's own door refuses
                engine.run(u"pragma synchronous=off"_s);
                engine.run(u"begin"_s);
                for (const QString &table : {u"firma"_s, u"muh"_s, u"birim"_s, u"urun"_s})
                    engine.run(u"delete from "_s + table);
                for (const auto &[key, mark] :
                     {std::pair{u"BAŞKA"_s, u"yanlış"_s}, {value, u"doğru"_s}}) {
                    const QString values = u" values ("_s + literal(key) + u",'"_s + mark + u"')"_s;
                    engine.run(u"insert into firma (firma, frno)"_s + values);
                    engine.run(u"insert into muh (kdv, al)"_s + values);
                    engine.run(u"insert into birim (frkod, frno)"_s + values);
                    engine.run(u"insert into urun (kod, bfiyat)"_s + values);
                }
                engine.run(u"commit"_s);
            }
            fat.tanimlar.firma.setText(u"BAŞKA"_s);
            fat.tanimlar.firmasec();
            fat.kdvOrani.setText(u"BAŞKA"_s);
            fat.kdvoranisec();
            st.birimSeti.setText(u"BAŞKA"_s);
            st.birimsetisec();
            fat.tanimlar.firma.setText(text);
            fat.tanimlar.firmasec();
            fat.kdvOrani.setText(text);
            fat.kdvoranisec();
            st.birimSeti.setText(text);
            st.birimsetisec();
            const QString found = refused ? u"yanlış"_s : u"doğru"_s; // the one before stays
            QCOMPARE(fat.tanimlar.firmakayit.frno, found);
            QCOMPARE(fat.muhkayit().al, found);
            QCOMPARE(st.birimNo(), found);
            QCOMPARE(Prices(d.db, data).satisfiyatibul(text), refused ? u"0"_s : u"doğru"_s);
        });
    }

    void pricesAndFoldersKeepWhatIsEntered()
    {
        Desk d;
        QString kept; // of the text before
        forEachText(Engine::Local, [&](const QString &text, bool refused, const QString &value) {
            Urunform form(d.program);
            for (int row = 0; row < 2; ++row) {
                form.satirbul(row == 0 ? u"BAŞKA"_s : u"KOD"_s);
                for (const int column : {Urunform::Ack, Urunform::Fiyat, Urunform::Bfiyat})
                    form.l1.setCell(row, column, row == 0 ? u"1"_s : text);
            }
            QCOMPARE(form.kaydet(), !refused);
            Urunform again(d.program);
            again.yukle();
            QCOMPARE(again.l1.rows(), Urunform::emptyRows + (refused ? 1 : 2));
            QCOMPARE(again.l1.cell(0, Urunform::Kod), u"BAŞKA"_s);
            for (const int column : {Urunform::Ack, Urunform::Fiyat, Urunform::Bfiyat})
                QCOMPARE(again.l1.cell(1, column), refused ? QString() : value);

            Ayr folders(d.program);
            for (TextField &field : folders.fields)
                field.setText(text);
            folders.kaydet();
            Ayr read(d.program);
            read.yukle();
            for (const TextField &field : read.fields)
                QCOMPARE(field.text(), refused ? kept : value);
            kept = read.fields[0].text();
        });
    }

private:
    void connectLogo()
    {
        m_connection.reset();
        m_logo = std::make_unique<TdsStandin>();
        fillLogo(*m_logo, 12);
        m_connection =
            OdbcServer().connect(u"Server=%1;Provider=SQLOLEDB;UID=sa;PWD=%2;database=%3;"_s.arg(
                                     m_logo->server(), TdsStandin::password, TdsStandin::database),
                                 {0, 5});
    }

    // Sends it; nothing arrives of one that is refused.
    SqlRows arrives(const Statement &statement, bool refused, const QString &fixed,
                    const QStringList &values)
    {
        SqlRows rows;
        const qsizetype before = m_logo->statements().size();
        const auto failed = passOver([&] { rows = m_connection->run(statement); });
        const QStringList arrived = m_logo->statements().sliced(before);
        [&] {
            QVERIFY2(failed.has_value() == refused,
                     failed ? qPrintable(failed->description().left(200)) : "");
            QCOMPARE(arrived.size(), refused ? 0 : 1);
            if (refused)
                return;
            const ReadStatement read(arrived.first());
            QVERIFY(read.isOne);
            QCOMPARE(read.fixed, fixed);
            QCOMPARE(read.texts, values);
        }();
        return rows;
    }

    QStringList titles()
    {
        QStringList all;
        for (const QStringList &row :
             m_logo->run(u"select DEFINITION_ from LG_012_CLCARD order by LOGICALREF"_s))
            all << row.first();
        return all;
    }

    static bool failsAt(LocalDb &db, const Statement &statement)
    {
        return passOver([&] { db.query(statement); }).has_value();
    }

    std::unique_ptr<TdsStandin> m_logo;
    std::unique_ptr<SqlConnection> m_connection;
};

QTEST_GUILESS_MAIN(TestStatements)
#include "tst_statements.moc"
