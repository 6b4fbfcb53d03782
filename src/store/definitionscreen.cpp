#include "store/definitionscreen.h"

#include "base/failure.h"

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

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
    , m_fields(static_cast<std::size_t>(definition.fields.size()))
{
    if (definition.sideValue)
        sideValue.setText(definition.sideValue->preset);
}

void DefinitionScreen::yukle()
{
    LocalDb &db = m_program.db;
    const Grid::Refill refill(l1);
    l1.clear();
    okunamadi = passOver([&] {
        OpenDb open(db, path());
        db.forEach(m_definition.select(), [&] {
            const int row = l1.addRow({});
            for (int i = 0; i < l1.columnCount(); ++i) {
                const DefinitionColumn &column = m_definition.grid[i];
                l1.setCell(row, i, column.shown(db.field(column.column)));
            }
            l1.setTag(row, db.field(u"id"));
        });
    });
    if (!m_definition.sideValue)
        return;
    passOver([&] {
        OpenDb open(db, path());
        db.query(m_definition.sideValue->select());
        sideValue.setText(db.field(m_definition.sideValue->column));
    });
}

void DefinitionScreen::yeni()
{
    emptyRecord();
    kayitta.setChecked(true);
    m_durum = Durum::New;
}

void DefinitionScreen::degistir(int row)
{
    kayitta.setChecked(true);
    passOver([&] {
        for (int i = 0; i < l1.columnCount(); ++i) {
            const DefinitionColumn &column = m_definition.grid[i];
            const QString &cell = l1.cell(row, i);
            for (int f = 0; f < m_definition.fields.size(); ++f) {
                const DefinitionField &field = m_definition.fields[f];
                if (field.column != column.column)
                    continue;
                if (field.kind == DefinitionField::Check)
                    check(f).setChecked(cell == column.tickedWord);
                else
                    text(f).setText(cell);
            }
        }
    });
    m_durum = Durum::Existing;
}

QString DefinitionScreen::valueOf(const QString &column)
{
    for (int f = 0; f < m_definition.fields.size(); ++f) {
        const DefinitionField &field = m_definition.fields[f];
        if (field.column != column)
            continue;
        if (field.kind == DefinitionField::Check)
            return check(f).isChecked() ? u"1"_s : u"0"_s;
        return text(f).text();
    }
    return {};
}

void DefinitionScreen::kaydet(int row)
{
    const auto value = [this](const QString &column) {
        return valueOf(column);
    };
    passOver([&] {
        OpenDb open(m_program.db, path());
        if (m_durum == Durum::New)
            m_program.db.query(m_definition.insert(value));
        else if (m_durum == Durum::Existing)
            m_program.db.query(m_definition.update(value, l1.tag(row)));
    });
    iptal();
    yukle();
}

void DefinitionScreen::iptal()
{
    kayitta.setChecked(false);
    emptyRecord();
}

void DefinitionScreen::emptyRecord()
{
    for (Field &field : m_fields) {
        field.text.setText({});
        field.check.setChecked(false);
    }
}

void DefinitionScreen::sil(int row)
{
    if (!m_program.boxes.ask(
            {u"Kaydi Silmek İstediğinize Eminmisiniz ?"_s, u"DİKKAT"_s, Icon::Question}))
        return;
    passOver([&] {
        OpenDb open(m_program.db, path());
        m_program.db.query(m_definition.remove(l1.tag(row)));
    });
    yukle();
}

void DefinitionScreen::sidevaluetyped()
{
    passOver([&] {
        OpenDb open(m_program.db, path());
        m_program.db.query(m_definition.sideValue->update(sideValue.text()));
    });
}

} // namespace kervan
