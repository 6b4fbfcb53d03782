#include "cards/cardfiles.h"

#include "logoxml/document.h"
#include "text/dates.h"

#include <QScopeGuard>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype pieceSize = 262144; // of a document, rendered before it goes to the file

} // namespace

std::optional<QString> askSource(Program &program, const QString &title)
{
    return program.dialogs.openName(
        {.title = title, .filter = u"Text Dosyaları (txt)|*.txt"_s, .start = program.path(u"txt")});
}

QStringList columnOf(const Grid &grid, int column)
{
    QStringList cells;
    cells.reserve(grid.rows());
    for (int row = 0; row < grid.rows(); ++row)
        cells << grid.cell(row, column);
    return cells;
}

QString CreationTime::tarih()
{
    const QDate today = m_clock.now().date();
    if (today != m_date) {
        m_date = today;
        m_spelt = systemDate(today);
    }
    return m_spelt;
}

Sablon cardTemplate(const QString &name, const QList<QByteArray> &placeholders,
                    const XmlChoice &okunurBicim)
{
    return {sablon(name) + "\r\n", placeholders, okunurBicim.values()};
}

void writeCards(const QString &path, const QString &screen, const Sablon &card, int rows,
                ProgressField &progress, const std::function<QStringList(int row)> &valuesOf)
{
    const Belge frame{sablon(screen + u"-karbastex"_s),
                      {},
                      {},
                      "\r\n" + sablon(screen + u"-karsontex"_s),
                      card.spelling()};
    progress.start(rows);
    const auto hide = qScopeGuard([&] { progress.finish(); });
    belgeyaz(frame, DocumentEnd::LineEnd, path, [&](const TakePiece &take) {
        QByteArray piece;
        for (int row = 0; row < rows; ++row) {
            progress.step();
            card.doldur(valuesOf(row), piece);
            if (piece.size() < pieceSize)
                continue;
            take(piece);
            piece.resize(0);
        }
        take(piece);
    });
}

} // namespace kervan
