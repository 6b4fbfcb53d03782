#include "cards/cardfiles.h"

#include "base/linereader.h"
#include "frame/text/dates.h"
#include "logoxml/document.h"

#include <QScopeGuard>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype pieceSize = 262144; // of a document, rendered before it goes to the file

int lineCount(const QString &path)
{
    LineReader reader(path);
    int count = 0;
    while (reader.next())
        ++count;
    return count;
}

} // namespace

std::optional<QString> askSource(Program &program, const QString &title)
{
    return program.dialogs.openName(
        {.title = title, .filter = u"Text Dosyaları (txt)|*.txt"_s, .start = program.path(u"txt")});
}

std::optional<QString> askTarget(Program &program, const QString &title)
{
    const Folders &folders = program.folders;
    const auto name =
        program.dialogs.saveName({.title = title,
                                  .filter = u"Xml Dosyaları (xml)|*.xml"_s,
                                  .start = ilkKlasor(program.folder, folders.xc, folders.xf)});
    if (!name || name->isEmpty())
        return std::nullopt;
    return xmlAdi(*name);
}

// Read twice, so that the bar has a true maximum.
void walkCards(const QString &path, ProgressField &progress,
               const std::function<void(QStringView line)> &take)
{
    progress.start(0);
    const auto hide = qScopeGuard([&] { progress.finish(); });
    progress.start(lineCount(path));
    LineReader reader(path);
    while (reader.next()) {
        progress.step();
        take(reader.line());
    }
}

QString untouchedField(QStringView field)
{
    return field.toString();
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

Sablon cardTemplate(const QString &name, const QList<QByteArray> &placeholders)
{
    return {sablon(name) + "\r\n", placeholders};
}

void writeCards(const QString &path, const QString &screen, const Sablon &card, int rows,
                ProgressField &progress, const std::function<QStringList(int row)> &valuesOf)
{
    const Belge frame{
        sablon(screen + u"-karbastex"_s), {}, {}, "\r\n" + sablon(screen + u"-karsontex"_s)};
    progress.start(rows);
    const auto hide = qScopeGuard([&] { progress.finish(); });
    belgeyaz(frame, Yol::bir, path, [&](const TakePiece &take) {
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

void tellDone(Boxes &boxes)
{
    boxes.show({u"Xml Dönüşümü Tamamlandı..."_s, u"Tamam"_s, Icon::Information});
}

void addNote(TextField &bilgi, const std::optional<Failure> &failed)
{
    if (failed)
        bilgi.setText((bilgi.text() + u' ' + failed->description()).trimmed());
}

} // namespace kervan
