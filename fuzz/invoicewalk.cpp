// The lines of an invoice: the walk of the file, the index over it and a plain search have to give
// the same ones for every number that is in it.

#include "base/codepage.h"
#include "base/failure.h"
#include "invoices/bif.h"
#include "support/harness.h"

using namespace kervan;
using namespace Qt::StringLiterals;

namespace {

// The first run of goods lines from the first line on that bears the number.
QStringList plainWalk(const QStringList &lines, const QString &number)
{
    qsizetype at = 0;
    while (at < lines.size() && fuzz::bare(lines[at].mid(79, 15)) != number)
        ++at;
    while (at < lines.size() && !lines[at].startsWith(u"@6"_s))
        ++at;
    QStringList taken;
    for (; at < lines.size() && lines[at].startsWith(u"@6"_s); ++at)
        taken << lines[at];
    return taken;
}

} // namespace

// A number that is asked for besides those of the file, and the file.
void kervan::fuzz::take(QByteArrayView input)
{
    Pieces pieces(input);
    const QString wanted = pieces.text();
    const QByteArray bytes = shifted(pieces);
    const qsizetype mostNumbers = bytes.size() < 60000 ? 20 : 3;
    if (bytes.startsWith(utf8Mark))
        return;
    const QString path = pathOf(u"kaynak.bif"_s);
    store(path, bytes);
    const QStringList lines = plainLines(bytes);
    QSet<QString> numbers{wanted};
    for (const QString &line : lines) {
        if (numbers.size() < mostNumbers)
            numbers << bare(line.mid(79, 15));
    }
    BifIndex index(path, numbers);
    for (const QString &number : std::as_const(numbers)) {
        const QStringList plain = plainWalk(lines, number);
        QStringList walked;
        walkInvoice(path, number, [&](QStringView line) { walked << line.toString(); });
        expectSame(walked.join(u'\n'), plain.join(u'\n'), "the walk takes other lines");
        QStringList indexed;
        index.walkInvoice(number, [&](QStringView line) { indexed << line.toString(); });
        expectSame(indexed.join(u'\n'), plain.join(u'\n'), "the index takes other lines");
        for (const QString &line : plain) {
            const InvoiceLine cut = cutLine(line);
            expectSame(cut.urunKodu, bare(line.mid(30, 15)), "another product code");
            expectSame(cut.urunAdi, bare(line.mid(45, 50)), "another product name");
        }
    }
}
