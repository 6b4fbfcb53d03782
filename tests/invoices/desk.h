#pragma once

#include "invoices/columns.h"
#include "invoices/fat.h"
#include "support/cells.h"
#include "support/fakes.h"
#include "support/ruler.h"

namespace kervan {

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
    return ruled(u"@5", 5, h.date, 20, h.person, 28, u"C1", 39, h.title, 80, h.no, 96, h.total, 109,
                 u"0.00", 122, u"18.00", 135, h.grand, 148, h.state);
}

inline QByteArray goods(QStringView code, QStringView quantity = u"1", QStringView price = u"11.80",
                        QStringView amount = u"10.00")
{
    return ruled(u"@6", 31, code, 46, u"Ürün", 97, quantity, 106, price, 124, amount);
}

inline QByteArray collection(QStringView rate, QStringView state = u"0")
{
    return ruled(u"@8", 22, state, 24, rate);
}

/// What opening a file tells when dealer prices are missing; their products stand behind.
inline const QString noPrices = u"Ürünlerde Bayi Fiyatı Olmayan Faturalar Var...\r\n"
                                "Aşagıdaki Ürünlerin Bayi Fiyatlarını Giriniz. Faturayı Yeniden "
                                "Okutunuz...\r\n"_s;

/// A mark for each row: "x" if it is ticked, else "-".
inline QString ticksOf(const Grid &grid)
{
    QString marks;
    for (int row = 0; row < grid.rows(); ++row)
        marks += grid.ticked(row) ? u'x' : u'-';
    return marks;
}

/// The invoice screen over a program folder of its own: units, one person and some prices laid
/// down, Logo within reach, nothing opened yet.
class Desk
{
public:
    TestProgram t;
    Fat fat{t.program};
    Grid &l1 = fat.liste.l1;

    explicit Desk(const QString &prices = u"P1=10 P2=1"_s)
    {
        t.fill(rowsOf(uR"(
insert into firma values (Null,'1','','Merkez','','D1','','120','')
insert into muh values (Null,'','18','','600','','','','391','','')
insert into birim values (Null,'','','PK','PAKET','','','','')
insert into birim values (Null,'','','KRT','KARTON','','','','')
insert into per values (Null,'LP1','S1'))"_s));
        for (const QString &price : prices.split(u' '))
            t.fill({u"insert into urun values ('%1')"_s.arg(
                QString(price).replace(u"="_s, u"','','','"_s))});
        t.reachLogo();
        fat.load();
    }

    void open(const QByteArray &bif)
    {
        writeBytes(t.path(u"kaynak.bif"_s), bif);
        fat.dosyaac(t.path(u"kaynak.bif"_s));
    }
    /// Fills `l3` as an export does for one invoice; what failed at it, if anything.
    std::optional<Failure> liste3yukle(const QString &faturano)
    {
        BifLines lines(t.program, t.path(u"kaynak.bif"_s), {faturano});
        return passOver([&] { lines.liste3yukle(faturano, fat.tanimlar.lbrm, fat.l3); });
    }
    void tick(const QList<int> &rows)
    {
        for (const int row : rows)
            l1.setTicked(row, true);
    }
    QString ticks() const { return ticksOf(l1); }
    void expectDone(bool cashToo = true)
    {
        if (cashToo)
            t.boxes.expectDone(u"Kasa Nakit "_s);
        t.boxes.expectDone();
    }
    /// Exports the ticked rows; the boxes are expected before.
    void exportTo(const QString &name)
    {
        fat.kaydet(t.path(name));
        t.boxes.verify();
    }
    /// Exports them to belge.xml and gives it.
    QByteArray exported()
    {
        expectDone();
        exportTo(u"belge.xml"_s);
        return readBytes(t.path(u"belge.xml"_s));
    }
    /// The cash counter as an export stores it.
    QByteArray storedCounter()
    {
        exported();
        return readBytes(t.path(u"kasacariislemno.kvz"_s)).trimmed();
    }
};

} // namespace kervan
