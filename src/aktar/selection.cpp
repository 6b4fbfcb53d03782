#include "aktar/selection.h"

#include "base/failure.h"
#include "text/dates.h"

#include <QDir>
#include <QEventLoop>
#include <QFileInfo>
#include <QTimer>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

Failure none(const QString &said)
{
    return Failure(u"--sec %1: önceki --sec ile birlikte hiçbir satıra uymaz."_s.arg(said));
}

void take(Selection &selection, const QString &said, QDate today)
{
    const QString word = said.section(u'=', 0, 0).trimmed();
    const QString value = said.section(u'=', 1).trimmed();
    if (word == u"tarih" && !value.isEmpty()) {
        const QString last = value.section(u".."_s, 1);
        const QDate from = dayOf(u"sec"_s, value.section(u".."_s, 0, 0).trimmed(), today);
        const QDate to = value.contains(u".."_s) ? dayOf(u"sec"_s, last.trimmed(), today) : from;
        checkOrder(u"sec"_s, from, to);
        const bool isFirst = !selection.first.isValid();
        selection.first = isFirst ? from : std::max(from, selection.first);
        selection.last = isFirst ? to : std::min(to, selection.last);
        if (selection.first > selection.last)
            throw none(said);
    } else if (word == u"no" && !value.isEmpty()) {
        QSet<QString> numbers;
        for (const QString &number : value.split(u',', Qt::SkipEmptyParts))
            numbers << number.trimmed();
        numbers.remove(QString());
        if (numbers.isEmpty()) // which would choose every row
            throw Failure(u"--sec no= numara ister: %1"_s.arg(said));
        if (!selection.numbers.isEmpty())
            numbers &= selection.numbers;
        if (numbers.isEmpty())
            throw none(said);
        selection.numbers = numbers;
    } else if (said == u"e-fatura" || said == u"e-fatura-degil") {
        if (selection.eInvoice && *selection.eInvoice != (said == u"e-fatura"))
            throw none(said);
        selection.eInvoice = said == u"e-fatura";
    } else if (said == u"yazilmamis") {
        selection.unwritten = true;
    } else if (said != u"hepsi") {
        throw Failure(u"--sec için \"%1\" olmaz. Olanlar: hepsi, tarih=GÜN, tarih=GÜN..GÜN, "
                      "no=NO,NO, e-fatura, e-fatura-degil, yazilmamis"_s.arg(said));
    }
}

// A row whose date can't be read is of no day.
bool isWithin(const Selection &selection, const QString &cell)
{
    bool within = false;
    passOver([&] {
        const QDate day = toDate(cell.left(10));
        within = selection.first <= day && day <= selection.last;
    });
    return within;
}

constexpr int lookedAgain = 20; // milliseconds

// A mark for each row, for as far as the documents can be read. They are read in a thread, which is
// waited for; waiting for its next event alone would not end on Windows.
QList<WrittenMark> marksOf(const ListedRows &rows, const QString &folder, QStringList &unread)
{
    WrittenDocuments documents;
    documents.setFolders({folder});
    documents.setRows(rows);
    QEventLoop waiting;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &waiting, [&] {
        if (!documents.isReading())
            waiting.quit();
    });
    timer.start(lookedAgain);
    waiting.exec();
    unread = documents.unread();
    if (!documents.isRead())
        unread << u"%1 klasöründeki belgeleri okumaya bellek yetmedi."_s.arg(
            QDir::toNativeSeparators(folder));
    if (!QFileInfo(folder).isReadable())
        unread << u"%1 okunamadı."_s.arg(QDir::toNativeSeparators(folder));
    return documents.marks();
}

// A row that is left out though what is written is not the very same, or not surely so.
Finding doubtOf(const OpenScreen &screen, int row, const WrittenMark &mark)
{
    return {.rule = u"seçim"_s,
            .text = u"Yazılmış sayıldı, dışarıda bırakıldı. %1"_s.arg(mark.sentence),
            .cure = u"Belgeyle karşılaştırın; yazılması gerekiyorsa --yazilmislari-atla olmadan "
                    "--sec ile seçin."_s,
            .row = row,
            .list = screen.listName};
}

} // namespace

void checkSelection(const OpenScreen &screen, const Selection &selection)
{
    const ListShape shape = screen.shape();
    const auto refuse = [](const QString &what) {
        throw Failure(u"%1 bu aktarımda seçilemez."_s.arg(what));
    };
    if (!screen.ticks && !selection.takesAll())
        throw Failure(u"Bu aktarım listenin hepsini yazar; --sec ve --yazilmislari-atla ile "
                      "kullanılamaz."_s);
    if (selection.first.isValid() && shape.date < 0)
        refuse(u"Tarih"_s);
    if (!selection.numbers.isEmpty() && shape.number < 0)
        refuse(u"Numara"_s);
    if (selection.eInvoice && !screen.eInvoice)
        refuse(u"E-fatura"_s);
    if (selection.unwritten && !screen.listed)
        refuse(u"Yazılmamış olanlar"_s);
}

Selection selectionOf(const Options &options, QDate today)
{
    Selection selection;
    for (const QString &said : options.values(u"sec"_s))
        take(selection, said, today);
    selection.unwritten = selection.unwritten || options.isOn(u"yazilmislari-atla"_s);
    return selection;
}

QStringList missingNumbers(const OpenScreen &screen, const Selection &selection)
{
    QSet<QString> missing = selection.numbers;
    const int column = screen.shape().number;
    for (int row = 0; row < screen.list.rows() && !missing.isEmpty(); ++row)
        missing.remove(screen.list.cell(row, column));
    QStringList sorted = missing.values();
    sorted.sort();
    return sorted;
}

Chosen selectRows(const OpenScreen &screen, const Selection &selection, const QString &folder)
{
    const ListShape shape = screen.shape();
    if (!screen.ticks)
        return {};
    if (selection.eInvoice && screen.unasked() > 0) {
        screen.list.setAllTicked(false);
        return {.lines = {u"%1 müşterinin e-fatura mükellefi olup olmadığı Logo'dan sorulamadı, "
                          "hiçbir satır seçilmedi."_s.arg(screen.unasked())}};
    }
    QStringList unread;
    const QList<WrittenMark> marks =
        selection.unwritten ? marksOf(screen.listed(), folder, unread) : QList<WrittenMark>();
    if (!unread.isEmpty()) { // their rows would be written twice
        screen.list.setAllTicked(false);
        unread << u"Nelerin yazılmış olduğu bilinemiyor, hiçbir satır seçilmedi."_s;
        return {.lines = unread, .isBarred = true};
    }
    const auto isWanted = [&](int row) {
        return (!selection.first.isValid() ||
                isWithin(selection, screen.list.cell(row, shape.date))) &&
               (selection.numbers.isEmpty() ||
                selection.numbers.contains(screen.list.cell(row, shape.number))) &&
               (!selection.eInvoice || screen.eInvoice(row) == *selection.eInvoice);
    };
    Chosen chosen;
    int written = 0;
    screen.list.tickWhere([&](int row) {
        const WrittenMark mark = marks.value(row);
        if (!isWanted(row) || mark.kind == WrittenMark::None)
            return isWanted(row);
        ++written;
        if (mark.kind != WrittenMark::Same)
            chosen.findings << doubtOf(screen, row, mark);
        return false;
    });
    if (written > 0)
        chosen.lines << u"Yazılmış olan %1 satır dışarıda bırakıldı."_s.arg(written);
    return chosen;
}

} // namespace kervan
