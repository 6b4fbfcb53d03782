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
        const QStringList lines = readAllLines(sidefile(), 5);
        const std::array<TextField *, 5> fields{&Text1, &Text2, &Text3, &Text4, &c1};
        for (qsizetype i = 0; i < 5; ++i) { // those before a missing line stay filled
            if (i == lines.size())
                throw Failure(u"sqlbaglan.kvz dosyasında %1. satır yok."_s.arg(i + 1));
            fields[static_cast<std::size_t>(i)]->setText(lines[i]);
        }
        if (isIncomplete() || c1.text().isEmpty())
            m_program.boxes.show(
                {u"Bağlantı Bilgilerinde Eksikler Var..."_s, u"Dikkat"_s, Icon::Stop});
    });
    if (failed)
        bilgi.setText(failed->description());
}

// An empty password is none of the screen's business.
bool Sqlbaglanti::isIncomplete() const
{
    return Text1.text().isEmpty() || Text2.text().isEmpty() || Text4.text().isEmpty();
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
        m_connection.reset();
        m_connection = m_program.sqlServer.connect(
            connectionText({Text1.text(), Text2.text(), Text3.text(), Text4.text(), {}}),
            settingsOptions);
        Label6.setText(isConnected() ? u"SQL Bağlantı Var"_s : u"SQL Bağlantı Yok"_s);
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
}

void Sqlbaglanti::firmayukle()
{
    bilgi.setText({});
    c1.setEntries({});
    const auto failed = endQuietly([this] {
        const SqlRows firms = m_connection->run(firmSelect());
        QStringList entries;
        for (int row = 0; row < firms.rows.size(); ++row)
            entries << firms.value(row, u"NR") + u"- "_s + firms.value(row, u"Name");
        c1.setEntries(entries);
    });
    if (failed)
        bilgi.setText(failed->description());
    else // before the first save there is no firm to go back to
        endQuietly([this] { c1.setText(readSqlSettings(sidefile()).firm); });
}

bool Sqlbaglanti::kaydet()
{
    if (isIncomplete()) {
        m_program.boxes.show(
            {u"Bağlantı Bilgilerini Boş Bırakmayınız..."_s, u"Dikkat"_s, Icon::Stop});
        return false;
    }
    const auto failed = endQuietly([this] {
        writeSqlSettings(sidefile(),
                         {Text1.text(), Text2.text(), Text3.text(), Text4.text(), c1.text()});
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
    p1.start(m_cards->rows());
    endWithReport(m_program.boxes, [this] {
        if (!m_connection)
            throw Failure(u"SQL Server bağlantısı yok."_s);
        for (int row = 0; row < m_cards->rows(); ++row) {
            m_connection->run(titleUpdate(c1.text(), m_cards->cell(row, cardCode),
                                          m_cards->cell(row, cardTitle)));
            p1.setValue(row + 1);
        }
        p1.finish();
        m_program.boxes.show({u"Cari Güncelleme Tamamlandı..."_s, u"Dikkat"_s, Icon::Exclamation});
    });
}

void Sqlbaglanti::sqlayarlari()
{
    fr1.setChecked(false);
    fr2.setChecked(true);
}

} // namespace kervan
