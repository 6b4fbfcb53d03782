// Writes the documents of program folders by their windows, as a user does, to hold those of
// kervan-aktar against: kervan-gece-pencere FOLDER...

#include "base/systemclock.h"
#include "cards/screens/crwindow.h"
#include "controls/gridview.h"
#include "invoices/screens/fatwindow.h"
#include "odbc/odbcserver.h"
#include "slips/screens/slipwindow.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDir>

#include <cstdlib>

using namespace kervan;
using namespace Qt::StringLiterals;

namespace {

// Nobody is there to read them; what they say is compared elsewhere.
class NoBoxes : public Boxes
{
public:
    void show(const Box &) override {}
    bool ask(const Box &) override { return false; }
};

class NextName : public FileDialogs
{
public:
    QString name;
    std::optional<QString> openName(const FileQuestion &) override { return name; }
    std::optional<QString> saveName(const FileQuestion &) override { return name; }
    std::optional<QString> anyName(const FileQuestion &) override { return name; }
};

void click(QWidget &window, const QString &name)
{
    if (auto *button = window.findChild<QAbstractButton *>(name))
        button->click();
}

void choose(QWidget &window, const QString &name, int entry)
{
    auto *list = window.findChild<QComboBox *>(name);
    list->setCurrentIndex(entry);
    Q_EMIT list->activated(entry);
}

// Opens, ticks all and writes.
void transfer(QWidget &window, NextName &names, const QString &source, const QString &target,
              const QStringList &buttons)
{
    names.name = source;
    click(window, buttons[0]);
    click(window, buttons[1]);
    names.name = target;
    click(window, buttons[2]);
}

void transferFolder(const QString &folder, SqlServer &sqlServer)
{
    NoBoxes boxes;
    NextName names;
    SystemClock clock;
    Program program{folder + u"/program"_s, {}, {}, {}, boxes, names, clock, sqlServer};
    const auto source = [&](const QString &name) {
        return folder + u"/kaynak/"_s + name;
    };
    const auto target = [&](const QString &name) {
        return folder + u"/pencere/"_s + name;
    };
    QDir(folder).mkpath(u"pencere"_s);
    FatWindow invoices(program);
    invoices.load();
    choose(invoices, u"c3"_s, 0);
    choose(invoices, u"c1"_s, 0);
    choose(invoices, u"c5"_s, 2);
    transfer(invoices, names, source(u"fatura.bif"_s), target(u"fatura.xml"_s),
             {u"chameleonButton5"_s, u"Check2"_s, u"chameleonButton1"_s});
    SlipWindow slips(program, cafis());
    transfer(slips, names, source(u"nakit.xlsx"_s), target(u"nakit.xml"_s),
             {u"buton1"_s, u"Check1"_s, u"buton2"_s});
    CrWindow accounts(program);
    transfer(accounts, names, source(u"cari.txt"_s), target(u"cari.xml"_s),
             {u"chameleonButton5"_s, {}, u"chameleonButton1"_s});
}

} // namespace

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    OdbcServer sqlServer;
    for (const QString &folder : QCoreApplication::arguments().sliced(1))
        transferFolder(QDir(folder).absolutePath(), sqlServer);
    std::_Exit(0); // what still reads documents back is left to end alone
}
