#include "invoices/cashslips.h"

#include "base/failure.h"
#include "invoices/columns.h"
#include "logoxml/accumulated.h"
#include "store/sidefiles.h"
#include "text/dates.h"
#include "text/numbers.h"
#include "text/record.h"
#include "transfer/target.h"

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr float cashLimit = 7000;     // a grand total of just as much gets no slip
constexpr qsizetype endingLength = 4; // ".xml", or whatever stands there

} // namespace

double kasacariislemno(const Program &program, std::optional<Failure> &unreadable)
{
    QString stored;
    unreadable = endQuietly([&] { stored = readCounter(program.path(cashCounterFile)); });
    return number(stored).value_or(0);
}

void kasacariislemnokaydet(const Program &program, double counter)
{
    writeSingleValue(program.path(cashCounterFile), toText(counter));
}

std::optional<Failure> faturakasafisnoyaz(const Program &program, Grid &l1)
{
    std::optional<Failure> unreadable;
    double counter = kasacariislemno(program, unreadable);
    const Grid::Refill refill(l1);
    for (int row = 0; row < l1.rows(); ++row) {
        const QString digits = masked(++counter, "000000"_mask);
        l1.setCell(row, L1::IslemNo, u"NT"_s + digits);
        l1.setCell(row, L1::KasaIslemNo, u"KN"_s + digits);
    }
    return unreadable;
}

bool isBelowCashLimit(const Grid &l1, int row)
{
    return toSingleNumber(l1.cell(row, L1::GenelToplam)) < cashLimit;
}

QList<QByteArray> kasaSozcukleri()
{
    return {"saat",        "dakika",    "saniye", "yil",     "ay",      "tarih",    "kasakodu",
            "kasaislemno", "cariunvan", "tutar",  "carikod", "islemno", "makbuzno", "satiselemani"};
}

// In the order of the placeholders. The amount is the whole invoice's, whatever was collected.
QStringList kasaDegerleri(const Grid &l1, int row, const QString &kasakodu, QTime time)
{
    const auto cell = [&](int column) {
        return l1.cell(row, column);
    };
    const QDate date = toDate(cell(L1::FaturaTarihi));
    const QString day = masked(double(date.day()), "00"_mask);
    const QString month = masked(double(date.month()), "00"_mask);
    const QString year = QString::number(date.year());
    return {QString::number(time.hour()),
            QString::number(time.minute()),
            QString::number(time.second()),
            year,
            month,
            day + u'.' + month + u'.' + year,
            kasakodu,
            cell(L1::KasaIslemNo),
            cell(L1::Unvani),
            tutarnoktasil(cell(L1::ToplamTutar)),
            cell(L1::CariKodu),
            cell(L1::IslemNo),
            QString(),
            trimmedField(cell(L1::KasaSatisElemani))};
}

void exeldenkasanakitkaydet(Program &program, const Grid &l1, const QString &kasakodu,
                            const QString &dosya, Notes &notes, Values spelling)
{
    if (dosya.size() < endingLength)
        throw Failure(u"%1 için kasa dosyası adı kurulamadı."_s.arg(dosya));
    AccumulatedBody body(sablon(u"kasatex"_s), kasaSozcukleri(), spelling);
    // The line end in front of the footer belongs to it, not to the last record.
    const Belge frame{sablon(u"kasabastex"_s), {}, {}, "\r\n" + sablon(u"kasasontex"_s), spelling};
    const QString kasa = dosya.chopped(endingLength) + cashDocumentEnd.toString();
    int count = 0;
    belgeyaz(frame, DocumentEnd::AsItStands, kasa, [&](const TakePiece &take) {
        for (int row = 0; row < l1.rows(); ++row) {
            if (!l1.ticked(row) || !isBelowCashLimit(l1, row))
                continue;
            body.add(kasaDegerleri(l1, row, kasakodu, program.clock.now().time()));
            body.handOver(take);
            ++count;
        }
        body.handOverAll(take);
    });
    notes.addDocument(kasa, u"kasa fişi"_s, count, program.clock.now().time());
    program.boxes.show({u"Kasa Nakit Xml Dönüşümü Tamamlandı..."_s, u"Tamam"_s, Icon::Information});
}

} // namespace kervan
