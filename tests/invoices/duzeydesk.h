#pragma once

#include "invoices/columns.h"
#include "invoices/duzey/fatduz.h"
#include "support/cells.h"
#include "support/fakes.h"
#include "support/workbooks.h"

namespace kervan {

/// A record with all that a test doesn't care about filled in.
struct Record
{
    QString no = u"F1"_s;
    QString quantity = u"#1"_s;
    QString price = u"#10"_s;
    QString rates = u"|||||"_s; ///< six, parted by "|"
    QString money = {};
    QString kind = u"SATIŞ"_s;
    QString date = u"@2024-03-07"_s;
    QString cari = u"C1"_s;

    QString line() const
    {
        return QStringList{date,    cari,     {},        u"B1"_s, no,    kind,
                           u"U1"_s, quantity, u"ADET"_s, price,   rates, u"#20"_s,
                           u"S1"_s, u"P30"_s, {},        {},      {},    money}
            .join(u'|');
    }
};

/// The Düzey screen over a program folder of its own: a unit, a person and the cash code laid down,
/// Logo within reach, nothing opened yet.
class DuzeyDesk
{
public:
    TestProgram t;
    Fatduz fatduz{t.program};
    Grid &l1 = fatduz.liste.l1;
    QString source = t.path(u"kaynak.xlsx"_s);

    DuzeyDesk()
    {
        t.fill({u"insert into firma values (Null,'1','','Merkez','','D1','','120','')"_s,
                u"insert into birim values (Null,'','','ADT','ADET','','','','')"_s,
                u"insert into per values (Null,'LP1','S1')"_s});
        writeBytes(t.path(u"kasa.kvz"_s), "K100\r\n");
        t.reachLogo();
        fatduz.load();
    }

    /// Writes the records behind a line of captions.
    void write(const QList<Record> &records)
    {
        QString lines = QString(22, u'|') + u"İndirim"_s;
        for (const Record &record : records)
            lines += u'\n' + record.line();
        writeWorkbook(source, u"Sheet1"_s, bookRows(lines));
    }
    void open(const QList<Record> &records)
    {
        write(records);
        fatduz.dosyaac(source);
    }
    /// Expects the plain box that tells why this step fails.
    template<class Step>
    void expectReportOf(Step &&step)
    {
        t.boxes.expect({.text = failureOf(std::forward<Step>(step))});
    }
};

} // namespace kervan
