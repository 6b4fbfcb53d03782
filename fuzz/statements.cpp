// Values on their way into statements: what SQL Server reads is one of the designed shapes with the
// value in its place, and a definition that is inserted is one row that holds it.

#include "logolink/statements.h"
#include "base/failure.h"
#include "stocktake/urunform.h"
#include "store/definition.h"
#include "store/definitionscreen.h"
#include "support/desk.h"
#include "support/readstatement.h"
#include "text/numbers.h"

using namespace kervan;
using namespace Qt::StringLiterals;

namespace {

QString paired(QString text)
{
    return text.replace(u"''"_s, u"'"_s);
}

void askLogo(fuzz::Pieces &pieces)
{
    const QString firm = pieces.text();
    const QString first = pieces.text();
    const QString second = pieces.text();
    const auto connection = fuzz::desk().server.connect({}, {});
    const QList<std::pair<Statement, QStringList>> all{
        {firmSelect(), {}},
        {cardSelect(firm, first), {first}},
        {barcodeSelect(firm, first), {first}},
        {titleUpdate(firm, first, second), {second, first}}};
    for (const auto &each : all) {
        const Statement &statement = each.first;
        const QStringList &values = each.second;
        const auto failed = passOver([&] { connection->run(statement); });
        fuzz::expect(failed.has_value() == statement.breakingValue().has_value(),
                     "a statement is refused or let through for no reason", statement.text());
        if (failed)
            continue;
        const ReadStatement read(statement.text());
        fuzz::expect(read.texts.size() == values.size(), "another count of values",
                     statement.text());
        for (qsizetype i = 0; i < values.size(); ++i)
            fuzz::expectSame(read.texts[i], paired(values[i]), "another value arrives");
    }
}

QList<QStringList> rowsOf(const Definition &definition)
{
    LocalDb &db = fuzz::desk().program.db;
    QList<QStringList> rows;
    db.forEach(definition.select(), [&] {
        QStringList &row = rows.emplaceBack(db.field(u"id"));
        for (const QString &column : definition.columns)
            row << db.field(column);
    });
    return rows;
}

// A row in front, which every statement but its own has to leave as it is.
void define(fuzz::Pieces &pieces)
{
    const QList<Definition> &all = definitions();
    const Definition &definition = all[pieces.choice(static_cast<int>(all.size()))];
    LocalDb &db = fuzz::desk().program.db;
    const OpenDb open(db, fuzz::pathOf(definition.database));
    const TogetherInDb together(db); // kept back from the disk
    for (const QStringList &row : rowsOf(definition))
        db.query(definition.remove(row[0]));
    db.query(definition.insert([](const QString &column) { return column; }));
    const QStringList values = pieces.texts();
    const auto given = [&](const QString &column) {
        return values.value(definition.columns.indexOf(column)).replace(u'\n', u' ');
    };
    const QList<QStringList> before = rowsOf(definition);
    fuzz::expect(before.size() == 1, "not one row in front");
    if (passOver([&] { db.query(definition.insert(given)); })) {
        fuzz::expect(rowsOf(definition) == before, "a refused insert left something");
        return;
    }
    const QList<QStringList> inserted = rowsOf(definition);
    fuzz::expect(inserted.size() == 2 && inserted[0] == before[0], "an insert gave not one row");
    for (qsizetype i = 0; i < definition.columns.size(); ++i)
        fuzz::expectSame(inserted[1][i + 1], given(definition.columns[i]), "another value is kept");

    const auto turned = [&](const QString &column) {
        return values.value(values.size() - 1 - definition.columns.indexOf(column));
    };
    const QString id = inserted[1][0];
    const auto failed = passOver([&] { db.query(definition.update(turned, id)); });
    const QList<QStringList> updated = rowsOf(definition);
    fuzz::expect(updated.size() == 2 && updated[0] == before[0], "an update changed another row");
    fuzz::expect(!failed || updated == inserted, "a refused update changed its row");
    const QStringList &written =
        definition.updateColumns.isEmpty() ? definition.columns : definition.updateColumns;
    for (qsizetype i = 0; i < definition.columns.size() && !failed; ++i) {
        if (written.contains(definition.columns[i]))
            fuzz::expectSame(updated[1][i + 1], turned(definition.columns[i]),
                             "another value is changed");
    }
    // Whatever is passed for the number of a row removes no other one.
    const QString any = values.value(0);
    passOver([&] { db.query(definition.remove(any)); });
    const qsizetype left = rowsOf(definition).size();
    const bool isTold = any.trimmed() == before[0][0] || any.trimmed() == id ||
                        number(any) == number(before[0][0]) || number(any) == number(id);
    fuzz::expect(left == 2 || (left == 1 && isTold) || any.contains(u'.') || any.contains(u'e'),
                 "a remove took another row", any);
}

void keepPrices(fuzz::Pieces &pieces)
{
    const QString typed = pieces.text();
    if (const auto price = fiyatoku(typed)) {
        fuzz::expect(price->isEmpty() || number(*price).has_value(), "a price that is none", typed,
                     *price);
        fuzz::expectSame(fiyatoku(*price).value_or(u"none"_s), *price, "a price's own spelling");
    }
    Urunform form(fuzz::desk().program);
    form.yukle();
    const QString block = pieces.text();
    form.yapistir(static_cast<int>(typed.size()) % (form.l1.rows() + 1), 1 + pieces.choice(4),
                  block);
    QList<QStringList> wanted;
    for (int row = 0; row < form.l1.rows(); ++row) {
        const QString kod = form.l1.cell(row, Urunform::Kod);
        if (!kod.isEmpty())
            wanted << QStringList{kod, form.l1.cell(row, Urunform::Ack),
                                  form.l1.cell(row, Urunform::Fiyat),
                                  form.l1.cell(row, Urunform::Bfiyat)};
    }
    if (form.kaydet()) {
        Urunform again(fuzz::desk().program);
        again.yukle();
        for (qsizetype row = 0; row < wanted.size(); ++row) {
            for (int column = Urunform::Kod; column <= Urunform::Bfiyat; ++column)
                fuzz::expectSame(again.l1.cell(static_cast<int>(row), column),
                                 wanted[row][column - 1], "a price comes back otherwise");
        }
        fuzz::expect(again.l1.rows() == wanted.size() + Urunform::emptyRows,
                     "another count of prices");
    }
    // The table as each input finds it.
    LocalDb &db = fuzz::desk().program.db;
    const OpenDb open(db, fuzz::pathOf(u"data.dbs"_s));
    const TogetherInDb together(db);
    db.query(Statement(u"delete from urun"));
    db.query(Statement(u"insert into urun values ('URN000001','','0','4,20')"));
}

} // namespace

void kervan::fuzz::take(QByteArrayView input)
{
    // The engine gives another letter for those that Unicode calls none.
    if (QString::fromUtf8(input).contains(u'\uFFFF') ||
        QString::fromUtf8(input).contains(u'\uFFFE'))
        return;
    Pieces pieces(input);
    switch (pieces.choice(3)) {
    case 0:
        return askLogo(pieces);
    case 1:
        return define(pieces);
    default:
        return keepPrices(pieces);
    }
}
