#include "stocktake/urunform.h"

namespace kervan {

using namespace Qt::StringLiterals;

Urunform::Urunform(Program &program)
    : l1({{u"Sıra"_s, 700, Qt::AlignRight},
          {u"Ürün Kodu"_s, 2200},
          {u"Açıklama"_s, 5000},
          {u"Birim Fiyatı"_s, 1764, Qt::AlignRight},
          {u"Bayi Satış Fiyatı"_s, 1940, Qt::AlignRight}})
    , m_program(program)
{
    l1.setEditable({Kod, Ack, Fiyat, Bfiyat});
}

void Urunform::addEmptyRow()
{
    l1.addRow(QString::number(l1.rows() + 1));
}

void Urunform::yukle()
{
    const Grid::Refill refill(l1);
    l1.clear();
    m_unread = endWithReport(m_program.boxes, [this] { readRows(); });
    if (m_unread) {
        l1.clear();
        return;
    }
    for (int i = 0; i < emptyRows; ++i)
        addEmptyRow();
}

void Urunform::readRows()
{
    LocalDb &db = m_program.db;
    OpenDb open(db, m_program.path(u"data.dbs"));
    db.forEach(Statement(u"select * from urun"), [&] {
        addEmptyRow();
        const int row = l1.rows() - 1;
        l1.setCell(row, Kod, db.field(u"kod"));
        l1.setCell(row, Ack, db.field(u"ack"));
        l1.setCell(row, Fiyat, db.field(u"fiyat"));
        l1.setCell(row, Bfiyat, db.field(u"bfiyat"));
    });
}

void Urunform::satirekle(int currentRow)
{
    if (currentRow == l1.rows() - 1)
        addEmptyRow();
}

bool Urunform::kaydet()
{
    const auto failed = endWithReport(m_program.boxes, [this] {
        if (m_unread)
            throw *m_unread; // what was not read must not be written over
        LocalDb &db = m_program.db;
        OpenDb open(db, m_program.path(u"data.dbs"));
        TogetherInDb together(db);
        db.query(Statement(u"Delete from urun"));
        for (int row = 0; row < l1.rows(); ++row) {
            if (l1.cell(row, Kod).isEmpty())
                continue;
            db.query(Statement(u"insert into urun values ('")
                         .value(l1.cell(row, Kod))
                         .text(u"','")
                         .value(l1.cell(row, Ack))
                         .text(u"','")
                         .value(l1.cell(row, Fiyat))
                         .text(u"','")
                         .value(l1.cell(row, Bfiyat))
                         .text(u"')"));
        }
        together.commit();
    });
    return !failed;
}

} // namespace kervan
