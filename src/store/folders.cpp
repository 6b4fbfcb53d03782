#include "store/folders.h"

#include "store/localdb.h"

#include <QDir>

namespace kervan {

QString fullName(const QString &programFolder, const QString &value)
{
    return value.isEmpty() ? value : QDir(programFolder).filePath(value);
}

void loadFolders(LocalDb &db, Folders &folders)
{
    db.forEach(Statement(u"select * from yol where id='1'"), [&] {
        folders = Folders{.ec = db.field(u"ec"),
                          .es = db.field(u"es"),
                          .ef = db.field(u"ef"),
                          .xc = db.field(u"xc"),
                          .xs = db.field(u"xs"),
                          .xf = db.field(u"xf")};
    });
}

} // namespace kervan
