#pragma once

#include "invoices/columns.h"
#include "invoices/fat.h"
#include "support/fakes.h"
#include "support/ruler.h"

#include <QStringList>

namespace kervan {

using namespace Qt::StringLiterals;

// Records of the invoice file with all that a test doesn't care about filled in.

struct Header
{
    QString no = u"F1"_s;
    QString date = u"20240307"_s;
    QString total = u"100.00"_s;
    QString grand = u"118.00"_s;
    QString state = u"0"_s;
    QString title = u"Deniz Market"_s;
    QString person = u"S1"_s;
};

inline QByteArray header(const Header &h = {})
{
    return Ruler(u"@5")
        .put(5, h.date)
        .put(20, h.person)
        .put(28, u"C1")
        .put(39, h.title)
        .put(80, h.no)
        .put(96, h.total)
        .put(109, u"0.00")
        .put(122, u"18.00")
        .put(135, h.grand)
        .put(148, h.state)
        .line();
}

inline QByteArray goods(QStringView code, QStringView quantity = u"1", QStringView price = u"11.80",
                        QStringView amount = u"10.00")
{
    return Ruler(u"@6")
        .put(31, code)
        .put(46, u"Ürün")
        .put(97, quantity)
        .put(106, price)
        .put(124, amount)
        .line();
}

inline QByteArray collection(QStringView rate, QStringView state = u"0")
{
    return Ruler(u"@8").put(22, state).put(24, rate).line();
}

/// The invoice screen over a program folder of its own: units, one person and some prices laid
/// down, nothing opened yet.
class Desk
{
public:
    TestProgram t;
    Fat fat{t.program};

    explicit Desk(const QStringList &prices = {u"P1=10"_s, u"P2=1"_s})
    {
        QStringList statements{
            u"insert into firma values (Null,'1','','Merkez','','D1','','120','')"_s,
            u"insert into muh values (Null,'','18','','600','','','','391','','')"_s,
            u"insert into birim values (Null,'','','PK','PAKET','','','','')"_s,
            u"insert into birim values (Null,'','','KRT','KARTON','','','','')"_s,
            u"insert into per values (Null,'LP1','S1')"_s,
        };
        for (const QString &price : prices) {
            statements << u"insert into urun values ('%1','','','%2')"_s.arg(
                price.section(u'=', 0, 0), price.section(u'=', 1));
        }
        t.fill(u"data.dbs"_s, statements);
        fat.load();
    }

    Grid &l1() { return fat.liste.l1; }
    void open(const QByteArray &bif)
    {
        const QString path = t.path(u"kaynak.bif"_s);
        writeBytes(path, bif);
        fat.dosyaac(path);
    }
    void set(const QString &column, const QString &value) // a folder value
    {
        t.fill(u"data.dbs"_s, {u"Update yol set %1 = '%2' Where id='1'"_s.arg(column, value)});
        fat.yukle();
    }
    void expectBox(const QString &text, const QString &title = {}, Icon icon = Icon::None)
    {
        t.boxes.expect({text, title, icon});
    }
    void expectDone(bool cashToo = true)
    {
        const QString title = u"Tamam"_s;
        if (cashToo)
            expectBox(u"Kasa Nakit Xml Dönüşümü Tamamlandı..."_s, title, Icon::Information);
        expectBox(u"Xml Dönüşümü Tamamlandı..."_s, title, Icon::Information);
    }
    /// Presses the automatic button with `target` as its name; the boxes are expected before.
    void exportTo(const QString &target)
    {
        set(u"xf"_s, target);
        fat.c3.setText(u"Merkez"_s);
        fat.c1.setText(u"18"_s);
        fat.c2.setText(u"Adet"_s);
        fat.otomatikkaydet();
        t.boxes.verify();
    }
    /// Exports the ticked rows to belge.xml.
    void exportAll(bool cashToo = true)
    {
        expectDone(cashToo);
        exportTo(t.path(u"belge.xml"_s));
    }
    /// The cash counter as an export stores it.
    QByteArray storedCounter()
    {
        exportAll();
        return readBytes(t.path(u"kasacariislemno.kvz"_s));
    }
};

/// Cells of a row, joined by "|".
inline QString cells(const Grid &grid, int row, const QList<int> &columns)
{
    QStringList texts;
    for (const int column : columns)
        texts << grid.cell(row, column);
    return texts.join(u'|');
}

/// One column of all rows, joined by ",".
inline QString column(const Grid &grid, int column)
{
    QStringList texts;
    for (int row = 0; row < grid.rows(); ++row)
        texts << grid.cell(row, column);
    return texts.join(u',');
}

} // namespace kervan
