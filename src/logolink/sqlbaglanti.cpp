#include "logolink/sqlbaglanti.h"

#include "base/failure.h"
#include "logolink/statements.h"
#include "store/sidefiles.h"

#include <QFile>

#include <array>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr SqlOptions settingsOptions{.commandTimeout = 3, .connectionTimeout = 3};

constexpr int cardCode = 0;
constexpr int cardTitle = 1;

} // namespace

void Sqlbaglanti::yukle()
{
    if (!QFile::exists(sidefile()))
        return; // the first time: the fields show their presets
    const auto failed = endQuietly([this] {
        const QStringList lines = readFirstLines(sidefile(), 5);
        const std::array<TextField *, 5> fields{&sunucu, &kullanici, &sifre, &veritabani, &firma};
        for (qsizetype i = 0; i < 5; ++i) { // those before a missing line stay filled
            if (i == lines.size())
                throw Failure(u"sqlbaglan.kvz dosyasında %1. satır yok."_s.arg(i + 1));
            fields[static_cast<std::size_t>(i)]->setText(lines[i]);
        }
        if (isIncomplete() || firma.text().isEmpty())
            m_program.boxes.show(
                {u"Bağlantı Bilgilerinde Eksikler Var..."_s, u"Dikkat"_s, Icon::Stop});
    });
    if (failed)
        bilgi.setText(failed->description());
}

// The password may be empty: some servers take none.
bool Sqlbaglanti::isIncomplete() const
{
    return sunucu.text().isEmpty() || kullanici.text().isEmpty() || veritabani.text().isEmpty();
}

void Sqlbaglanti::sqltest()
{
    sqlyukle();
    m_program.boxes.show(
        {isConnected() ? u"Bağlantı Sağlandı..."_s : u"Bağlantı Sağlanamadı..."_s, u"Dikkat"_s});
}

void Sqlbaglanti::sqlyukle()
{
    if (isIncomplete())
        return;
    endWithReport(m_program.boxes, [this] {
        const auto work =
            m_program.busy.with(u"SQL Server'a bağlanılıyor (%1)…"_s.arg(sunucu.text()));
        m_connection.reset();
        m_connection = m_program.sqlServer.connect(
            connectionText({sunucu.text(), kullanici.text(), sifre.text(), veritabani.text(), {}}),
            settingsOptions);
        durum.setText(isConnected() ? u"SQL Bağlantı Var"_s : u"SQL Bağlantı Yok"_s);
        if (!isConnected())
            return;
        baslanabilir.setChecked(true);
        firmayukle();
    });
}

void Sqlbaglanti::firmayuklesec()
{
    if (isConnected())
        firmayukle();
    else
        bilgi.setText(u"SQL bağlantısı yok; önce \"SQL Bağlantı Test\"e basın."_s);
}

// A line may be lost at any statement; before there was one nothing is told of it.
void Sqlbaglanti::followLine()
{
    if (m_connection && !isConnected())
        durum.setText(u"SQL Bağlantı Yok"_s);
}

void Sqlbaglanti::firmayukle()
{
    bilgi.setText({});
    firma.setEntries({});
    const auto failed = endQuietly([this] {
        const auto work = m_program.busy.with(u"Firma listesi okunuyor…"_s);
        const SqlRows firms = m_connection->run(firmSelect());
        QStringList entries;
        for (int row = 0; row < firms.rows.size(); ++row)
            entries << firms.value(row, u"NR") + u"- "_s + firms.value(row, u"Name");
        firma.setEntries(entries);
    });
    followLine();
    if (failed)
        bilgi.setText(failed->description());
    else // before the first save there is no firm to go back to
        endQuietly([this] { firma.setText(readSqlSettings(sidefile()).firm); });
}

bool Sqlbaglanti::kaydet()
{
    if (isIncomplete()) {
        m_program.boxes.show(
            {u"Bağlantı Bilgilerini Boş Bırakmayınız..."_s, u"Dikkat"_s, Icon::Stop});
        return false;
    }
    const auto failed = endQuietly([this] {
        writeSqlSettings(sidefile(), {sunucu.text(), kullanici.text(), sifre.text(),
                                      veritabani.text(), firma.text()});
    });
    if (failed)
        bilgi.setText(failed->description());
    return !failed;
}

void Sqlbaglanti::guncellemebaslat()
{
    if (!m_cards || m_cards->isEmpty()) {
        m_program.boxes.show(
            {u"Cari Listesinde Kayıt Bulunamadı..."_s, u"Dikkat"_s, Icon::Exclamation});
        return;
    }
    ilerleme.start(m_cards->rows());
    endWithReport(m_program.boxes, [this] {
        if (!m_connection)
            throw Failure(u"SQL Server bağlantısı yok."_s);
        updateTitles();
        ilerleme.finish();
        m_program.boxes.show({u"Cari Güncelleme Tamamlandı..."_s, u"Dikkat"_s, Icon::Exclamation});
    });
    followLine();
}

void Sqlbaglanti::updateTitles()
{
    const auto work = m_program.busy.with(u"Unvanlar Logo'ya yazılıyor…"_s);
    for (int row = 0; row < m_cards->rows(); ++row) {
        m_connection->run(
            titleUpdate(firma.text(), m_cards->cell(row, cardCode), m_cards->cell(row, cardTitle)));
        ilerleme.setValue(row + 1);
    }
}

void Sqlbaglanti::sqlayarlari()
{
    guncellemePaneli.setChecked(false);
    ayarPaneli.setChecked(true);
}

} // namespace kervan
