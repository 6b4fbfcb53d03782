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

    TextField Text1;                       ///< server
    TextField Text2{QStringLiteral("sa")}; ///< user
    TextField Text3;                       ///< password
    TextField Text4;                       ///< database
    ChoiceField c1;                        ///< firm line
    CheckField Check1;                     ///< the password is shown
    TextField Label6{QStringLiteral("SQL Bağlantı Yok")};
    CheckField baslanabilir; ///< a connection was opened, so that the update can be started
    CheckField fr1;          ///< the panel of the update is shown
    CheckField fr2;          ///< the panel of the settings is shown
    ProgressField p1;
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
    QString sidefile() const { return m_program.path(u"sqlbaglan.kvz"); }

    Program &m_program;
    QPointer<const Grid> m_cards;
    std::unique_ptr<SqlConnection> m_connection;
};

} // namespace kervan
