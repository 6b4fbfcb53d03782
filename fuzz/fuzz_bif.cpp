// Reads and exports broken invoice files: fuzz_bif ROUNDS [SEED]
// Each round bends a generated file (bytes changed, cut out, doubled, moved) and takes the whole
// road with it. A crash or a sanitizer's report names the round; the file is kept in the folder
// that is printed. The closing check is that each export left a whole document.

#include "bend.h"
#include "invoices/fat.h"
#include "support/bifgenerator.h"
#include "support/quietdesk.h"

#include <QCoreApplication>
#include <QFile>
#include <QTextStream>

using namespace kervan;
using namespace Qt::StringLiterals;

namespace {

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool isWhole(const QByteArray &document, QByteArrayView start, QByteArrayView end)
{
    return document.startsWith(start) && document.endsWith(end);
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const int rounds = argc > 1 ? atoi(argv[1]) : 1000;
    QRandomGenerator random(argc > 2 ? quint32(atoi(argv[2])) : 1);
    QTextStream out(stdout);
    QuietDesk desk;
    Program &program = desk.program;
    QTemporaryDir &folder = desk.folder;
    writePrices(program.db, program.path(u"data.dbs"), 20);
    const QString source = folder.filePath(u"kaynak.bif"_s);
    out << "Files are bent in " << folder.path() << Qt::endl;
    for (int round = 0; round < rounds; ++round) {
        writeBif(source, {.invoices = 6, .lines = 3, .products = 25, .seed = quint32(round)});
        QByteArray bytes = contents(source);
        bend(bytes, random, {"\r\n", "tutar ay cariunvan"});
        QFile file(source);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            return 2;
        file.close();
        Fat fat(program);
        fat.load();
        fat.dosyaac(source);
        for (int row = 0; row < fat.liste.l1.rows(); ++row)
            fat.satirsec(row);
        fat.liste.fattumsec();
        fat.kaydet(folder.filePath(u"belge.xml"_s));
        if (!isWhole(contents(folder.filePath(u"belge.xml"_s)), "<?xml", "</SALES_INVOICES>\r\n")) {
            out << "round " << round << ": no whole document\n";
            folder.setAutoRemove(false);
            return 1;
        }
    }
    out << rounds << " bent files read and exported\n";
    return 0;
}
