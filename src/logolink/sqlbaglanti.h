#pragma once

#include "base/fields.h"
#include "base/grid.h"
#include "base/sqlserver.h"
#include "logolink/sqlsettings.h"
#include "store/program.h"

#include <QPointer>

#include <memory>

namespace kervan {

/// The connection settings and, with the connection that they make, the update of the titles of
/// Logo's current-account cards.
class Sqlbaglanti
{
public:
    /// `cards` is the list of the card screen: code, then title. Null, or gone since, it
    /// stands for an empty one.
    Sqlbaglanti(Program &program, const Grid *cards)
        : m_program(program)
        , m_cards(cards)
    {
    }

    TextField sunucu;
    TextField kullanici{QStringLiteral("sa")};
    TextField sifre;
    TextField veritabani;
    ChoiceField firma; ///< the firm line
    CheckField sifreGoster;
    TextField durum{QStringLiteral("SQL Bağlantı Yok")};
    CheckField baslanabilir;     ///< a connection was opened, so that the update can be started
    CheckField guncellemePaneli; ///< the panel of the update is shown
    CheckField ayarPaneli;       ///< the panel of the settings is shown
    ProgressField ilerleme;
    TextField bilgi; ///< what a step that shows no box failed at

    bool isConnected() const { return m_connection && m_connection->isOpen(); }

    /// What the opening of the screen does: fills the fields from the side file, and warns of
    /// empty ones.
    void yukle();

    // What the user does.
    void sqltest();
    void firmayuklesec();
    /// Writes the side file; false if the screen is to stay.
    bool kaydet();
    void guncellemebaslat();
    void sqlayarlari();

    // Procedures.
    void sqlyukle();
    void firmayukle();

private:
    bool isIncomplete() const;
    void followLine();
    void updateTitles();
    QString sidefile() const { return m_program.path(u"sqlbaglan.kvz"); }

    Program &m_program;
    QPointer<const Grid> m_cards;
    std::unique_ptr<SqlConnection> m_connection;
};

} // namespace kervan
