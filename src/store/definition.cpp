#include "store/definition.h"

#include "base/failure.h"

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

const QString defaultWord = u"Varsayılan"_s;

QList<GridColumn> columnsOf(const Definition &definition)
{
    QList<GridColumn> columns;
    for (const DefinitionColumn &column : definition.grid)
        columns << GridColumn{column.heading, column.twips};
    return columns;
}

} // namespace

DefinitionScreen::DefinitionScreen(Program &program, const Definition &definition)
    : l1(columnsOf(definition))
    , m_program(program)
    , m_definition(definition)
{
    for (qsizetype i = 0; i < definition.fields.size(); ++i)
        m_fields.push_back(std::make_unique<TextField>());
}

void DefinitionScreen::yukle()
{
    LocalDb &db = m_program.db;
    const Grid::Refill refill(l1);
    l1.clear();
    passOver([&] {
        OpenDb open(db, path());
        db.forEach(Statement(u"select * from "_s + m_definition.table), [&] {
            const int row = l1.addRow({});
            for (int i = 0; i < l1.columnCount(); ++i) {
                const QString &column = m_definition.grid[i].column;
                const QString text = db.field(column);
                const bool isState = column == u"var";
                l1.setCell(row, i, isState ? (text == u"1" ? defaultWord : QString()) : text);
            }
            l1.setTag(row, db.field(u"id"));
        });
    });
    if (!m_definition.hasGeneralVat)
        return;
    passOver([&] {
        OpenDb open(db, path());
        db.query(Statement(u"select * from kdv"));
        genkdv.setText(db.field(u"kdv"));
    });
}

void DefinitionScreen::yeni()
{
    leaveRecord();
    kayitta.setChecked(true);
    durum = u"1"_s;
}

void DefinitionScreen::degistir(int row)
{
    kayitta.setChecked(true);
    passOver([&] {
        for (int i = 0; i < l1.columnCount(); ++i) {
            const QString &column = m_definition.grid[i].column;
            for (qsizetype f = 0; f < m_definition.fields.size(); ++f) {
                if (m_definition.fields[f].column == column)
                    field(static_cast<int>(f)).setText(l1.cell(row, i));
            }
            if (column == u"var")
                c1.setChecked(l1.cell(row, i) == defaultWord);
        }
    });
    durum = u"2"_s;
}

QString DefinitionScreen::valueOf(const QString &column) const
{
    for (qsizetype i = 0; i < m_definition.fields.size(); ++i) {
        const DefinitionField &field = m_definition.fields[i];
        if (field.column != column)
            continue;
        if (field.kind == DefinitionField::Check)
            return c1.isChecked() ? u"1"_s : u"0"_s;
        return m_fields[static_cast<std::size_t>(i)]->text();
    }
    return {};
}

void DefinitionScreen::kaydet(int row)
{
    passOver([&] {
        OpenDb open(m_program.db, path());
        if (durum == u"1") {
            Statement insert(m_definition.insert);
            for (qsizetype i = 0; i < m_definition.insertColumns.size(); ++i)
                insert.text(i == 0 ? u"" : u"','").value(valueOf(m_definition.insertColumns[i]));
            m_program.db.query(insert.text(u"')"));
        } else if (durum == u"2") {
            Statement update(m_definition.update);
            for (qsizetype i = 0; i < m_definition.updateColumns.size(); ++i) {
                const QString &column = m_definition.updateColumns[i];
                if (i > 0)
                    update.text(u"', "_s + column + u" = '"_s);
                update.value(valueOf(column));
            }
            m_program.db.query(update.text(m_definition.updateEnd).value(l1.tag(row)).text(u"'"));
        }
    });
    iptal();
    yukle();
}

void DefinitionScreen::iptal()
{
    kayitta.setChecked(false);
    leaveRecord();
}

void DefinitionScreen::leaveRecord()
{
    for (const auto &field : m_fields)
        field->setText({});
    c1.setChecked(false);
}

void DefinitionScreen::sil(int row)
{
    if (!m_program.boxes.ask(
            {u"Kaydi Silmek İstediğinize Eminmisiniz ?"_s, u"DİKKAT"_s, Icon::Question}))
        return;
    passOver([&] {
        OpenDb open(m_program.db, path());
        m_program.db.query(Statement(m_definition.remove).value(l1.tag(row)).text(u"'"));
    });
    yukle();
}

void DefinitionScreen::genkdvdegisti()
{
    passOver([&] {
        OpenDb open(m_program.db, path());
        m_program.db.query(
            Statement(u"Update kdv set kdv = '").value(genkdv.text()).text(u"' Where id ='1'"));
    });
}

} // namespace kervan
