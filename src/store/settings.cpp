#include "store/settings.h"

#include "base/failure.h"
#include "store/sidefiles.h"

#include <algorithm>

namespace kervan {

using namespace Qt::StringLiterals;

const QList<ValueDialog> &valueDialogs()
{
    static const QList<ValueDialog> dialogs{
        {u"bankakodu"_s, u"Banka Hesap Kodu"_s, u"Bankahesapkodu:"_s, u"bank.kvz"_s},
        {u"brmset"_s, u"Stok Birim Seti Kodu"_s, u"Birimsetikodu:"_s, u"brmset.kvz"_s},
        {u"kskod"_s, u"Kasa "_s, u"Kasa Kodu:"_s, u"kasa.kvz"_s},
    };
    return dialogs;
}

const ValueDialog &valueDialogOf(QStringView screen)
{
    const auto found = std::ranges::find(valueDialogs(), screen, &ValueDialog::screen);
    Q_ASSERT(found != valueDialogs().cend());
    return *found;
}

ValueSetting::ValueSetting(Program &program, const ValueDialog &dialog)
    : m_program(program)
    , m_dialog(dialog)
{
}

void ValueSetting::yukle()
{
    passOver([this] { kod.setText(readSingleValue(m_program.path(m_dialog.file))); });
}

void ValueSetting::kaydet()
{
    passOver([this] { writeSingleValue(m_program.path(m_dialog.file), kod.text()); });
}

void Kdvmu::yukle()
{
    const QString path = m_program.path(u"kdvmu.kvz");
    passOver([&] { genel.setText(readLines(path, 1)[0]); });
    passOver([&] { satir.setText(readLines(path, 2)[1]); });
}

void Kdvmu::kaydet()
{
    passOver([this] { writeLines(m_program.path(u"kdvmu.kvz"), {genel.text(), satir.text()}); });
}

const std::array<Ayr::Setting, 6> &Ayr::settings()
{
    static const std::array<Setting, 6> all{{
        {u"ec"_s, u"Text1"_s, u"Cari:"_s, true, &Folders::ec},
        {u"es"_s, u"Text2"_s, u"Stok:"_s, true, &Folders::es},
        {u"ef"_s, u"Text3"_s, u"Fatura:"_s, true, &Folders::ef},
        {u"xc"_s, u"Text6"_s, u"Cari:"_s, false, &Folders::xc},
        {u"xs"_s, u"Text5"_s, u"Stok:"_s, false, &Folders::xs},
        {u"xf"_s, u"Text4"_s, u"Fatura:"_s, false, &Folders::xf},
    }};
    return all;
}

void Ayr::yukle()
{
    passOver([this] {
        LocalDb &db = m_program.db;
        OpenDb open(db, m_program.path(u"data.dbs"));
        db.query(Statement(u"select * from yol where id='1'"));
        for (std::size_t i = 0; i < fields.size(); ++i)
            fields[i].setText(db.field(settings()[i].column));
    });
}

void Ayr::gozat(int setting)
{
    const auto index = static_cast<std::size_t>(setting);
    const bool isSource = settings()[index].isSource;
    QString start = fields[index].text();
    if (start.isEmpty())
        start = m_program.path(isSource ? u"txt" : u"logo xml");
    const FileQuestion question{.title = isSource ? QString() : u"Hedef Dosyayı Seçin"_s,
                                .filter = isSource ? u"txt Dosyaları (txt)|*.txt"_s
                                                   : u"Exel Dosyaları (xml)|*.xml"_s,
                                .start = start};
    // A target need not be there yet.
    const auto name =
        isSource ? m_program.dialogs.openName(question) : m_program.dialogs.anyName(question);
    if (name)
        fields[index].setText(*name);
}

void Ayr::kaydet()
{
    passOver([this] {
        OpenDb open(m_program.db, m_program.path(u"data.dbs"));
        Statement update(u"Update yol set ec = '");
        for (std::size_t i = 0; i < fields.size(); ++i) {
            if (i > 0)
                update.text(u"', "_s + settings()[i].column + u" = '"_s);
            update.value(fields[i].text());
        }
        m_program.db.query(update.text(u"' Where id='1'"));
    });
    for (std::size_t i = 0; i < fields.size(); ++i)
        m_program.folders.*settings()[i].value = fields[i].text();
}

} // namespace kervan
