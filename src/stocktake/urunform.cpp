#include "stocktake/urunform.h"

#include "text/numbers.h"

#include <QRegularExpression>

namespace kervan {

using namespace Qt::StringLiterals;

std::optional<QString> fiyatoku(const QString &typed)
{
    static const QRegularExpression inThrees(u"^-?\\d{1,3}(\\.\\d{3})+,\\d+$"_s);
    static const QRegularExpression plain(u"^-?(\\d+[.,]?\\d*|[.,]\\d+)$"_s);
    static const QRegularExpression twofold(u"^-?[1-9]\\d{0,2}\\.\\d{3}$"_s);
    QString price = typed.trimmed();
    if (price.isEmpty())
        return price;
    if (inThrees.match(price).hasMatch())
        price.remove(u'.');
    else if (plain.match(price).hasMatch() && !twofold.match(price).hasMatch())
        price.replace(u'.', u',');
    else
        return std::nullopt;
    return number(price) ? std::optional(price) : std::nullopt; // nobody could reckon with it
}

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

int Urunform::satirbul(const QString &kod)
{
    int empty = -1;
    for (int row = 0; row < l1.rows(); ++row) {
        if (l1.cell(row, Kod) == kod)
            return row;
        if (empty < 0 && l1.cell(row, Kod).isEmpty())
            empty = row;
    }
    if (empty < 0) {
        addEmptyRow();
        empty = l1.rows() - 1;
    }
    l1.setCell(empty, Kod, kod);
    return empty;
}

void Urunform::satirekle(int currentRow)
{
    if (currentRow == l1.rows() - 1)
        addEmptyRow();
}

QString Urunform::yapistir(int row, int column, const QString &block)
{
    QStringList lines = QString(block).remove(u'\r').split(u'\n');
    if (lines.last().isEmpty())
        lines.removeLast();
    QList<QStringList> taken;
    for (const QString &line : lines) {
        QStringList cells = line.split(u'\t');
        if (column + cells.size() > l1.columnCount())
            return u"Yapıştırılmadı: pano %1 sütun, burada %2 sütun yer var."_s.arg(cells.size())
                .arg(l1.columnCount() - column);
        for (qsizetype i = 0; i < cells.size(); ++i) {
            const bool isPrice = column + i == Fiyat || column + i == Bfiyat;
            const auto price = isPrice ? fiyatoku(cells[i]) : cells[i];
            if (!price)
                return u"Yapıştırılmadı: %1. satırda \"%2\" bir fiyat değil."_s
                    .arg(taken.size() + 1)
                    .arg(cells[i].left(40));
            cells[i] = *price;
        }
        taken << cells;
    }
    while (l1.rows() < row + taken.size())
        addEmptyRow();
    for (int line = 0; line < taken.size(); ++line) {
        for (int i = 0; i < taken[line].size(); ++i)
            l1.setCell(row + line, column + i, taken[line][i]);
    }
    return {};
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
