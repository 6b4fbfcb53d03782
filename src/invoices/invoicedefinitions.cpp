#include "invoices/invoicedefinitions.h"

#include "base/failure.h"
#include "store/sidefiles.h"
#include "store/staff.h"

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

enum UnitColumn { Word, Code }; // of lbrm

} // namespace

InvoiceDefinitions::InvoiceDefinitions(Program &program)
    : lbrm({{u"birim"_s}, {u"kod"_s}})
    , persl(perslColumns())
    , m_program(program)
{
}

std::optional<Failure> InvoiceDefinitions::load(const std::function<void()> &tables)
{
    okundu = false;
    okunamayan = endQuietly([&] {
        OpenDb open(m_program.db, m_program.path(u"data.dbs"));
        tables();
    });
    return okunamayan;
}

void InvoiceDefinitions::loadVatRate()
{
    LocalDb &db = m_program.db;
    db.query(Statement(u"select * from kdv"));
    if (!db.atEnd())
        genelKdv.setText(db.field(u"kdv"));
}

void InvoiceDefinitions::loadLists()
{
    LocalDb &db = m_program.db;
    QStringList firms;
    db.forEach(Statement(u"select * from firma"), [&] { firms << db.field(u"firma"); });
    firma.setEntries(firms);

    lbrm.clear();
    db.forEach(Statement(u"select * from birim"),
               [&] { lbrm.setCell(lbrm.addRow(db.field(u"kaskod")), Code, db.field(u"firma")); });

    loadStaff(db, persl);
    QStringList staff{QString()};
    for (int row = 0; row < persl.rows(); ++row)
        staff << persl.cell(row, Persl::Per);
    personel.setEntries(staff);
    okundu = true;

    db.open(m_program.path(u"fatozkod.dbs"));
    QStringList codes{QString()};
    db.forEach(Statement(u"select * from ozkod"), [&] { codes << db.field(u"ozkod"); });
    ozelKod.setEntries(codes);
}

void InvoiceDefinitions::firmasec()
{
    endQuietly([this] {
        LocalDb &db = m_program.db;
        OpenDb open(db, m_program.path(u"data.dbs"));
        db.query(Statement(u"select * from firma where firma='").value(firma.text()).text(u"'"));
        firmakayit = FirmaKayit{.frno = db.field(u"frno"),
                                .frkod = db.field(u"frkod"),
                                .firma = db.field(u"firma"),
                                .kaskod = db.field(u"kaskod"),
                                .dkod = db.field(u"dkod"),
                                .crkod = db.field(u"crkod"),
                                .alkod = db.field(u"alkod"),
                                .satkod = db.field(u"satkod")};
    });
}

void InvoiceDefinitions::kdvmuafiyetyukle()
{
    const QString path = m_program.path(u"kdvmu.kvz");
    passOver([&] { kdvmuafiyetgenel = readLines(path, 1)[0]; });
    passOver([&] { kdvmuafiyetsatir = readLines(path, 2)[1]; });
}

void InvoiceDefinitions::kasakoduoku()
{
    kasakodu = readSingleValue(m_program.path(u"kasa.kvz"));
}

QString birimbul(const Grid &lbrm, const QString &kelime)
{
    for (int row = 0; row < lbrm.rows(); ++row) {
        if (lbrm.cell(row, Word) == kelime)
            return lbrm.cell(row, Code);
    }
    return {};
}

} // namespace kervan
