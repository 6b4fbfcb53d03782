#pragma once

#include "frame/mainwindow.h"
#include "odbc/odbcserver.h"
#include "store/sidefiles.h"
#include "support/driving.h"
#include "support/fakes.h"
#include "support/readstatement.h"
#include "support/tds/tdsstandin.h"

namespace kervan {

/// Boxes that keep what was shown.
class KeptBoxes : public Boxes
{
public:
    QList<Box> shown;
    std::function<void()> whileShown;
    void show(const Box &box) override
    {
        shown << box;
        if (whileShown)
            whileShown();
    }
    bool ask(const Box &) override { return false; }
    /// The texts of the boxes since the last asking, each of which must have the title and icon.
    QStringList taken(const QString &title, Icon icon = Icon::None)
    {
        QStringList texts;
        for (const Box &box : std::exchange(shown, {})) {
            const bool fits = box.title == title && box.icon == icon;
            texts << (fits ? box.text : u"another title or icon: "_s + box.text);
        }
        return texts;
    }
};

/// The program's windows, with the machine's real driver between them and the stand-in. At the end
/// a statement that nobody designed fails the test.
class LogoDesk
{
public:
    TestProgram t;
    KeptBoxes boxes;
    OdbcServer server;
    TdsStandin logo;
    Program program{t.folder.path(), {}, {}, {}, boxes, t.dialogs, t.clock, server};
    MainWindow window{program};

    LogoDesk()
    {
        fillLogo(logo, 12);
        window.show();
    }
    ~LogoDesk()
    {
        for (const QString &statement : logo.statements()) {
            if (!isDesigned(statement))
                QTest::qFail(qPrintable(statement), __FILE__, __LINE__);
        }
    }
    LogoDesk(const LogoDesk &) = delete;
    LogoDesk &operator=(const LogoDesk &) = delete;

    template<class Widget>
    Widget *find(const char *screen, const char *name)
    {
        auto *found = window.findChild<QWidget *>(QString::fromUtf8(screen))
                          ->findChild<Widget *>(QString::fromUtf8(name));
        Q_ASSERT(found);
        return found;
    }
    void click(const char *screen, const char *name)
    {
        press(*window.findChild<QWidget *>(QString::fromUtf8(screen)), QString::fromUtf8(name));
    }
    void saveSettings()
    {
        writeLines(
            t.path(u"sqlbaglan.kvz"_s),
            {logo.server(), u"sa"_s, TdsStandin::password.toString(), u"LOGODB"_s, u"12- A"_s});
    }
};

} // namespace kervan
