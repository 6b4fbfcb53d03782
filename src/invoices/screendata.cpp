#include "invoices/screendata.h"

#include "base/failure.h"
#include "store/sidefiles.h"

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

// The cell beside the first row that holds the text in its key column.
QString lookedUp(const Grid &grid, int keyColumn, const QString &key, int valueColumn)
{
    for (int row = 0; row < grid.rows(); ++row) {
        if (grid.cell(row, keyColumn) == key)
            return grid.cell(row, valueColumn);
    }
    return {};
}

} // namespace

void loadVatRate(LocalDb &db, TextField &kdyaz)
{
    db.query(Statement(u"select * from kdv"));
    if (!db.atEnd())
        kdyaz.setText(db.field(u"kdv"));
}

void loadFirms(LocalDb &db, ChoiceField &c3)
{
    QStringList firms;
    db.forEach(Statement(u"select * from firma"), [&] { firms << db.field(u"firma"); });
    c3.setEntries(firms);
}

void loadUnits(LocalDb &db, Grid &lbrm)
{
    lbrm.clear();
    db.forEach(Statement(u"select * from birim"),
               [&] { lbrm.setCell(lbrm.addRow(db.field(u"kaskod")), 1, db.field(u"firma")); });
}

void loadStaff(LocalDb &db, ChoiceField &pers, Grid &persl)
{
    persl.clear();
    QStringList staff{QString()};
    db.forEach(Statement(u"select * from per"), [&] {
        staff << db.field(u"per");
        persl.setCell(persl.addRow(db.field(u"kod")), 1, db.field(u"per"));
    });
    pers.setEntries(staff);
}

void loadSpecialCodes(Program &program, ChoiceField &c4)
{
    LocalDb &db = program.db;
    db.open(program.path(u"fatozkod.dbs"));
    QStringList codes{QString()};
    db.forEach(Statement(u"select * from ozkod"), [&] { codes << db.field(u"ozkod"); });
    c4.setEntries(codes);
}

FirmaKayit findFirm(Program &program, const QString &firma)
{
    LocalDb &db = program.db;
    OpenDb open(db, program.path(u"data.dbs"));
    db.query(Statement(u"select * from firma where firma='").value(firma).text(u"'"));
    return FirmaKayit{.frno = db.field(u"frno"),
                      .frkod = db.field(u"frkod"),
                      .firma = db.field(u"firma"),
                      .kaskod = db.field(u"kaskod"),
                      .dkod = db.field(u"dkod"),
                      .crkod = db.field(u"crkod"),
                      .alkod = db.field(u"alkod"),
                      .satkod = db.field(u"satkod")};
}

QString birimbul(const Grid &lbrm, const QString &kelime)
{
    return lookedUp(lbrm, 0, kelime, 1);
}

QString perseslestir(const Grid &persl, const QString &kod)
{
    return lookedUp(persl, 1, kod, 0);
}

void kdvmuafiyetyukle(const Program &program, QString &genel, QString &satir)
{
    const QString path = program.path(u"kdvmu.kvz");
    passOver([&] { genel = readLines(path, 1)[0]; });
    passOver([&] { satir = readLines(path, 2)[1]; });
}

QString kasacariislemno(const Program &program)
{
    QString stored;
    endQuietly([&] { stored = readSingleValue(program.path(u"kasacariislemno.kvz")); });
    return stored;
}

} // namespace kervan
