#include "invoices/cardcheck.h"

#include "base/failure.h"
#include "base/linereader.h"
#include "text/spellings.h"

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

// A code that is padded in the file matches none that is trimmed. A file that can't be read holds
// no code.
bool holdsCode(const QString &path, const QString &kod, qsizetype width)
{
    bool found = false;
    passOver([&] {
        LineReader list(path);
        while (!found && list.next())
            found = list.line().left(width) == kod;
    });
    return found;
}

} // namespace

void CardCheck::carikontrol(const QString &kod)
{
    if (!holdsCode(m_program.path(u"carikontrol.kvz"), kod, 15))
        cariyok = true;
}

void CardCheck::stokkontrol(const QString &kod)
{
    if (!holdsCode(m_program.path(u"stokkontrol.kvz"), kod, 30))
        stokyok = true;
}

void CardCheck::stokkontroloku(const QString &dosyaadi)
{
    durum.setText(u"Stok Kontrolü Yapılıyor"_s);
    passOver([&] {
        LineReader source(dosyaadi);
        while (source.next())
            stokkontrol(cut(source.line(), 20, 9).toString().remove(u' '));
    });
    if (stokyok)
        m_program.boxes.show({u"Faturalarda Daha Önce Aktarılmayan Stoklar Bulunuyor..."_s});
    durum.setText({});
}

} // namespace kervan
