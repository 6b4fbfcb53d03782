#pragma once

#include "base/sqlserver.h"
#include "store/installation.h"
#include "store/program.h"
#include "support/harness.h"
#include "support/quietports.h"
#include "support/shapes.h"

#include <QDir>

#include <memory>

namespace kervan::fuzz {

/// A moment at which all documents are written.
class StoppedClock : public Clock
{
public:
    QDateTime now() const override { return {QDate(2024, 3, 7), QTime(9, 5, 3)}; }
};

/// File dialogs that are always answered: with the source and the document of an input.
class GivenDialogs : public FileDialogs
{
public:
    QString source = pathOf(u"kaynak.txt"_s);
    QString target = pathOf(u"belge.xml"_s);
    std::optional<QString> openName(const FileQuestion &) override { return source; }
    std::optional<QString> saveName(const FileQuestion &) override { return target; }
    std::optional<QString> anyName(const FileQuestion &) override { return source; }
};

/// Logo, which takes the designed statements alone. What it answers follows from the statement.
class DesignedServer : public SqlServer
{
public:
    std::unique_ptr<SqlConnection> connect(const QString &, const SqlOptions &) override
    {
        return std::make_unique<Connection>();
    }

private:
    class Connection : public SqlConnection
    {
    public:
        bool isOpen() const override { return true; }

    protected:
        SqlRows send(const QString &statement) override
        {
            expectDesigned(statement);
            const QString value = statement.section(u'\'', 1, 1);
            switch (value.size() % 5) {
            case 0:
                return {{u"ITEMKOD"_s, u"BIRIMKOD"_s, u"ACCEPTEINV"_s}, {}};
            case 1:
                return {{u"ACCEPTEINV"_s, u"ITEMKOD"_s, u"BIRIMKOD"_s},
                        {{u"1"_s, value, u"ADET"_s}}};
            default:
                return {{u"ACCEPTEINV"_s, u"ITEMKOD"_s, u"BIRIMKOD"_s},
                        {{u"0"_s, value, {}}, {u"1"_s, {}, value}}};
            }
        }
    };
};

/// Boxes that nobody sees, and how many told of something that is not done; all questions are
/// answered with yes.
class CountedBoxes : public QuietBoxes
{
public:
    int shown = 0;
    void show(const Box &box) override { shown += box.icon == Icon::Information ? 0 : 1; }
};

/// An installed program folder with some definitions, one for all inputs.
class Desk
{
public:
    Desk()
    {
        install(folder());
        const OpenDb open(program.db, program.path(u"data.dbs"));
        for (
            const QString &statement :
            {u"insert into firma values (Null,'1','01','Merkez','KS1','D1','C1','320','120')"_s,
             u"insert into muh values (Null,'611','18','153','600','153i','610','191','391','a','b')"_s,
             u"insert into odm values (Null,'P30','Otuz','','','','','','')"_s,
             u"insert into birim values (Null,'05','KOLI','','KO','','','','')"_s,
             u"insert into birim values (Null,'06','ADET','','AD','','','','')"_s,
             u"insert into per values (Null,'PK','00000101')"_s,
             u"insert into per values (Null,'KRT','101')"_s,
             u"insert into statu values (Null,'Bar','1')"_s,
             u"insert into urun values ('URN000001','','0','4,20')"_s,
             u"insert into urun values ('URN000002','','0','x')"_s})
            program.db.query(Statement(statement));
        layDown();
    }

    /// The side files as every input finds them.
    void layDown()
    {
        program.folders = {};
        program.aktifform.clear();
        for (const QString &name : QDir(folder()).entryList({u"*.kvz"_s, u"*.xml"_s}))
            QFile::remove(pathOf(name));
        store(pathOf(u"sqlbaglan.kvz"_s), "s\r\nu\r\np\r\nd\r\n7- Merkez\r\n");
        store(pathOf(u"kasa.kvz"_s), "K100\r\n");
        store(pathOf(u"kdvmu.kvz"_s), "genel\r\nsatir\r\n");
    }

    CountedBoxes boxes;
    GivenDialogs dialogs;
    StoppedClock clock;
    DesignedServer server;
    Program program{folder(), {}, {}, {}, boxes, dialogs, clock, server};
};

inline Desk &desk()
{
    static Desk *const one = new Desk; // never deleted: the application ends before it
    return *one;
}

} // namespace kervan::fuzz
