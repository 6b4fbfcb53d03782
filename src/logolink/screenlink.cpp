#include "logolink/screenlink.h"

#include "base/failure.h"

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr SqlOptions screenOptions{.commandTimeout = 0, .connectionTimeout = 5};

} // namespace

void ScreenLink::sqlyukle()
{
    endQuietly([this] {
        const SqlSettings settings = readSqlSettings(m_program.path(u"sqlbaglan.kvz"));
        if (!areComplete(settings)) {
            m_program.boxes.show(
                {u"Bağlantı Bilgilerinde Eksikler Var..."_s, u"Dikkat"_s, Icon::Stop});
            return;
        }
        firmakod = settings.firm;
        sqlbaglan(settings);
    });
}

void ScreenLink::sqlbaglan(const SqlSettings &settings)
{
    m_connection.reset();
    const auto failed = passOver([&] {
        const auto work =
            m_program.busy.with(u"SQL Server'a bağlanılıyor (%1)…"_s.arg(settings.server));
        m_connection = m_program.sqlServer.connect(connectionText(settings), screenOptions);
        durum.setText(m_connection->isOpen() ? u"SQL Bağlantı Var"_s : u"SQL Bağlantı Yok"_s);
    });
    if (failed) {
        durum.setText(u"SQL Bağlantı Yok"_s);
        m_program.boxes.show({.text = failed->description()});
    }
}

SqlRows ScreenLink::run(const Statement &statement)
{
    if (!m_connection) {
        m_isUnanswered = true;
        throw Failure(u"SQL Server bağlantısı yok."_s);
    }
    SqlRows rows;
    // Windows live on during a wait, so the screen may be connected anew in the midst of it.
    const auto connection = m_connection;
    const auto failed = passOver([&] { rows = connection->run(statement); });
    if (failed && connection == m_connection && !connection->isOpen())
        durum.setText(u"SQL Bağlantı Yok"_s);
    m_isUnanswered = m_isUnanswered || (failed && !statement.isOfItsValue());
    m_isRefused = m_isRefused || statement.isOfItsValue();
    if (failed)
        throw Failure(*failed);
    return rows;
}

} // namespace kervan
