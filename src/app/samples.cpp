#include "app/samples.h"

#include "base/failure.h"
#include "base/sqlserver.h"
#include "stocktake/urunform.h"
#include "store/definitionscreen.h"
#include "store/settings.h"
#include "store/sidefiles.h"

#include <QDir>
#include <QFile>

#include <map>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

using Rows = std::map<std::pair<QString, QString>, QList<QStringList>>; // by database and table

Rows rowsOf(const QString &path)
{
    Rows rows;
    for (const QString &line : readAllLines(path)) {
        const QStringList cells = line.split(u'\t');
        if (cells.size() > 2 && !line.startsWith(u'#'))
            rows[{cells[0], cells[1]}] << cells.sliced(2);
    }
    return rows;
}

// Nobody is there to see a box, and samples are to fit: whatever would show one is a failure.
class NoBoxes : public Boxes
{
public:
    void show(const Box &box) override { throw Failure(box.text); }
    bool ask(const Box &box) override { throw Failure(box.text); }
};

class NoDialogs : public FileDialogs
{
public:
    std::optional<QString> openName(const FileQuestion &) override { return std::nullopt; }
    std::optional<QString> saveName(const FileQuestion &) override { return std::nullopt; }
    std::optional<QString> anyName(const FileQuestion &) override { return std::nullopt; }
};

class NoClock : public Clock
{
public:
    QDateTime now() const override { return {}; }
};

class NoServer : public SqlServer
{
public:
    std::unique_ptr<SqlConnection> connect(const QString &, const SqlOptions &) override
    {
        return nullptr;
    }
};

// The records go in as a user would type them, in the order of the table's columns.
void fillDefinition(Program &program, const Definition &definition, const QList<QStringList> &rows)
{
    DefinitionScreen screen(program, definition);
    screen.yukle();
    if (!screen.l1.isEmpty())
        return;
    for (const QStringList &row : rows) {
        screen.yeni();
        for (int field = 0; field < definition.fields.size(); ++field) {
            const qsizetype at = definition.columns.indexOf(definition.fields[field].column);
            if (definition.fields[field].kind == DefinitionField::Check)
                screen.check(field).setChecked(row.value(at) == u"1");
            else
                screen.text(field).setText(row.value(at));
        }
        screen.kaydet(-1);
    }
    if (screen.l1.rows() != rows.size())
        throw Failure(u"%1 tablosu doldurulamadı."_s.arg(definition.table));
}

void fillPrices(Program &program, const QList<QStringList> &rows)
{
    Urunform form(program);
    form.yukle();
    if (form.l1.rows() > Urunform::emptyRows)
        return;
    for (int row = 0; row < rows.size(); ++row) {
        form.satirekle(form.l1.rows() - 1);
        for (int cell = 0; cell < rows[row].size(); ++cell)
            form.l1.setCell(row, Urunform::Kod + cell, rows[row][cell]);
    }
    form.kaydet();
}

// Relative, so that the folder can be moved; without a target of cari documents save dialogs start
// in "logo xml".
void fillFolders(Program &program)
{
    Ayr ayr(program);
    ayr.yukle();
    for (std::size_t i = 0; i < ayr.fields.size(); ++i) {
        const QString &column = Ayr::settings()[i].column;
        if (!ayr.fields[i].text().isEmpty())
            return;
        if (column == u"ef")
            ayr.fields[i].setText(u"txt"_s);
        else if (column == u"xf")
            ayr.fields[i].setText(u"logo xml/fatura.xml"_s);
    }
    ayr.kaydet();
}

void copyFiles(const QDir &from, const QString &pattern, const QDir &to)
{
    for (const QString &name : from.entryList({pattern}, QDir::Files)) {
        if (to.exists(name))
            continue;
        if (!QFile::copy(from.filePath(name), to.filePath(name)))
            throw Failure(u"%1 kopyalanamadı."_s.arg(name));
        QFile::setPermissions(to.filePath(name), QFile::ReadOwner | QFile::WriteOwner |
                                                     QFile::ReadGroup | QFile::ReadOther);
    }
}

// Those of the checks are of this day and the next, and become those of the day on which they are
// laid out: a list whose dates all lie years back would show nothing else.
const QDate sampleDay(2021, 3, 16);

void copyDated(const QDir &from, const QString &pattern, const QDir &to, QDate day)
{
    for (const QString &name : from.entryList({pattern}, QDir::Files)) {
        if (to.exists(name))
            continue;
        QFile source(from.filePath(name));
        QFile copy(to.filePath(name));
        if (!source.open(QIODevice::ReadOnly) || !copy.open(QIODevice::WriteOnly))
            throw Failure(u"%1 kopyalanamadı."_s.arg(name));
        QByteArray bytes = source.readAll();
        for (const int later : {1, 0})
            bytes.replace(sampleDay.addDays(later).toString(u"yyyyMMdd"_s).toLatin1(),
                          day.addDays(later).toString(u"yyyyMMdd"_s).toLatin1());
        if (copy.write(bytes) != bytes.size())
            throw Failure(u"%1 kopyalanamadı."_s.arg(name));
    }
}

} // namespace

void layOutSamples(const QString &samples, const QString &programFolder, QDate day)
{
    const QDir from(samples);
    const QDir to(programFolder);
    NoBoxes boxes;
    NoDialogs dialogs;
    NoClock clock;
    NoServer server;
    Program program{to.absolutePath(), {}, {}, {}, boxes, dialogs, clock, server};
    const Rows rows = rowsOf(from.filePath(u"tanimlar.txt"_s));
    for (const Definition &definition : definitions()) {
        const auto found = rows.find({definition.database, definition.table});
        if (found != rows.end())
            fillDefinition(program, definition, found->second);
    }
    const auto prices = rows.find({u"data.dbs"_s, u"urun"_s});
    if (prices != rows.end())
        fillPrices(program, prices->second);
    fillFolders(program);
    copyDated(from, u"denetim-*.bif"_s, QDir(to.filePath(u"txt"_s)), day);
    for (const QString &sources : {u"*.bif"_s, u"cariler.txt"_s, u"stoklar.txt"_s, u"sayim.txt"_s,
                                   u"denetim-*.txt"_s, u"*.xlsx"_s, u"[0-9]*.xls"_s})
        copyFiles(from, sources, QDir(to.filePath(u"txt"_s)));
    copyFiles(from, u"mey-*.xls"_s, QDir(to.filePath(u"mey exel"_s)));
    copyFiles(from, u"*.kvz"_s, to);
}

} // namespace kervan
