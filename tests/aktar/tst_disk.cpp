// What a disk does to a transfer: full at every block, read only, gone. Whatever it does, a file is
// the old one or the new one, what is old is told, and the program goes on.

#include "aktar/commandports.h"
#include "aktar/folder.h"
#include "aktar/transfers.h"
#include "stocktake/urunform.h"
#include "store/definition.h"
#include "store/definitionscreen.h"
#include "store/settings.h"
#include "store/sidefiles.h"
#include "support/failing.h"
#include "support/places.h"
#include "support/table.h"

#include <QTest>

using namespace kervan;

namespace {

// A program folder and a folder for documents on a disk of their own, and the work of one screen.
class Desk
{
public:
    Desk()
        : m_disk(m_place.path(), 4096)
    {
        m_boxes.setTell([this](const QString &line) { told << line; });
        if (!isThere())
            return;
        for (const QString &folder : {program(), documents()})
            QDir().mkpath(folder);
        for (const QString &name : QDir(m_sample.folder).entryList(QDir::Files))
            QFile::copy(m_sample.sideFile(name), program() + u'/' + name);
    }

    bool isThere() const { return m_disk.isThere(); }
    const SmallDisk &disk() const { return m_disk; }
    QString program() const { return m_place.filePath(u"program"_s); }
    QString documents() const { return m_place.filePath(u"belge"_s); }
    QString target() const { return documents() + u"/a.xml"_s; }
    Program &atWork() { return m_program; }

    QStringList told;

    // Reads a sample as far as it has to be written.
    OpenScreen open(const QString &command, const QString &source, const QStringList &arguments)
    {
        const Transfer &transfer = *findTransfer(command);
        const Options options = readOptions(command, arguments, optionsOf(transfer));
        OpenScreen screen = transfer.begin(m_program, options);
        screen.open();
        for (const Choice &choice : screen.choices) {
            if (options.has(choice.option))
                choice.of(options.value(choice.option))();
        }
        screen.read(samplePath(source));
        if (screen.ticks)
            screen.list.setAllTicked(true);
        m_names.target = target();
        return screen;
    }

private:
    QTemporaryDir m_place;
    SmallDisk m_disk;
    SampleFolder m_sample;
    LineBoxes m_boxes{true};
    GivenNames m_names;
    Program m_program{program(), {}, {}, {}, m_boxes, m_names, m_sample.clock, m_sample.sqlServer};
};

const QString counters = u"*cariislemno.kvz"_s;

QMap<QString, QByteArray> left(const Desk &desk)
{
    QMap<QString, QByteArray> files = filesOf(desk.documents(), {u"*"_s});
    files.insert(filesOf(desk.program(), {counters, counters + u".*"_s}));
    return files;
}

void addTransfers()
{
    addTable(uR"(
case                   ; command ; source           ; options
invoices and their cash; fatura  ; ornek.bif        ; --firma=MERKEZ ŞUBE|--kdv=18|--plan=30GUN
cash slips             ; nakit   ; tahsilatlar.xlsx ;
bank slips             ; nakit   ; tahsilatlar.xlsx ; --belge=banka
accounts               ; cari    ; cariler.txt      ;
items                  ; stok    ; stoklar.txt      ; --birim-seti=05
counts                 ; sayim   ; sayim.txt        ;)"_s);
}

} // namespace

class DiskTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachDocumentAndCounterIsTheOldOrTheNewOneWhereverTheDiskIsFull_data() { addTransfers(); }
    void eachDocumentAndCounterIsTheOldOrTheNewOneWhereverTheDiskIsFull()
    {
        Desk desk;
        if (!desk.isThere())
            QSKIP("no right to mount a small disk here");
        const QStringList options = fetch("options").split(u'|', Qt::SkipEmptyParts);
        const auto begin = [&] {
            return desk.open(fetch("command"), fetch("source"), options);
        };
        QMap<QString, QByteArray> old{{u"kasacariislemno.kvz"_s, "41\r\n"},
                                      {u"bankacariislemno.kvz"_s, "7\r\n"}};
        const auto lay = [&] {
            for (auto file = old.cbegin(); file != old.cend(); ++file)
                writeBytes((file.key().endsWith(u".kvz") ? desk.program() : desk.documents()) +
                               u'/' + file.key(),
                           file.value());
        };
        lay();
        begin().write();
        const auto wanted = left(desk);
        for (const QString &name : wanted.keys()) {
            if (name.endsWith(u".xml"))
                old[name] = "eski " + name.toUtf8();
        }
        QVERIFY(old.contains(u"a.xml"_s));

        int full = 0;
        for (int blocks = 0;; ++blocks) {
            lay();
            OpenScreen screen = begin();
            desk.disk().leave(blocks);
            screen.write();
            desk.disk().empty();
            const auto now = left(desk);
            QCOMPARE(now.keys(), wanted.keys()); // and no piece of another file
            int kept = 0;
            for (const QString &name : now.keys()) {
                const bool isNew = now[name] == wanted[name];
                QVERIFY2(isNew || now[name] == old[name], qPrintable(name));
                kept += isNew ? 0 : 1;
            }
            if (kept == 0)
                break;
            ++full;
            QVERIFY2(screen.notes.text().contains(u"disk dolu"), qPrintable(screen.notes.text()));
            for (const Notes::Written &document : screen.notes.written()) {
                const QString name = QFileInfo(document.path).fileName();
                QVERIFY2(now[name] == wanted[name], qPrintable(name));
            }
            screen.write(); // there is room now
            QCOMPARE(readBytes(desk.target()), wanted[u"a.xml"_s]);
            QVERIFY(blocks < 900);
        }
        QVERIFY(full > 0);
    }

    void aDiskThatIsReadOnlyOrGoneKeepsTheOldFilesAndIsTold_data() { addTransfers(); }
    void aDiskThatIsReadOnlyOrGoneKeepsTheOldFilesAndIsTold()
    {
        Desk desk;
        if (!desk.isThere())
            QSKIP("no right to mount a small disk here");
        const QStringList options = fetch("options").split(u'|', Qt::SkipEmptyParts);
        writeBytes(desk.target(), "eski");
        const auto before = left(desk);
        OpenScreen screen = desk.open(fetch("command"), fetch("source"), options);
        QVERIFY(desk.disk().makeReadOnly());
        screen.write();
        QVERIFY2(screen.notes.text().contains(u"salt okunur"), qPrintable(screen.notes.text()));
        QVERIFY(desk.disk().makeReadOnly(false));
        QCOMPARE(left(desk), before);
        QVERIFY(QDir().rename(desk.documents(), desk.documents() + u".away"_s));
        screen.write();
        QVERIFY2(screen.notes.text().contains(u"a.xml"), qPrintable(screen.notes.text()));
        QVERIFY(QDir().rename(desk.documents() + u".away"_s, desk.documents()));
        QCOMPARE(readBytes(desk.target()), "eski");
        screen.write();
        QVERIFY(readBytes(desk.target()).size() > 100);
    }

    void aTableAndASideFileAreTheOldOrTheNewOneWhereverTheDiskIsFull()
    {
        Desk desk;
        if (!desk.isThere())
            QSKIP("no right to mount a small disk here");
        Program &program = desk.atWork();
        const auto value = [](int number) {
            return QString::number(number).rightJustified(9000, u'x');
        };
        const auto areOne = [](const QStringList &values) {
            return std::ranges::all_of(values, [&](const QString &v) { return v == values[0]; });
        };
        const auto column = [&](QStringView table, QStringView name) {
            QStringList values;
            const OpenDb open(program.db, program.path(u"data.dbs"));
            program.db.forEach(Statement(u"select * from "_s + table.toString()),
                               [&] { values << program.db.field(name); });
            return values;
        };
        Urunform prices(program);
        prices.yukle();
        DefinitionScreen staff(program, *definitionOf(u"per"));
        staff.yukle();
        Kdvmu texts(program);
        const qsizetype people = staff.l1.rows();
        const QStringList products = column(u"urun", u"kod");
        qsizetype saved = 0;
        bool isFull = true;
        for (int number = 0; isFull; ++number) {
            QVERIFY(number < 500);
            isFull = false;
            for (int row = 0; row < prices.l1.rows(); ++row) {
                prices.l1.setCell(row, Urunform::Fiyat, QString::number(number));
                prices.l1.setCell(row, Urunform::Ack, value(number).left(900));
            }
            staff.yeni();
            staff.text(0).setText(value(number));
            texts.genel.setText(value(number));
            texts.satir.setText(value(number));
            const QStringList before = column(u"urun", u"fiyat");
            desk.told.clear();
            desk.disk().leave(number);
            const bool pricesSaved = prices.kaydet();
            staff.kaydet(-1);
            texts.kaydet();
            desk.disk().empty();

            const QStringList after = column(u"urun", u"fiyat");
            QCOMPARE(column(u"urun", u"kod"), products);
            QCOMPARE(pricesSaved, after != before);
            QVERIFY(pricesSaved ? areOne(after) && after[0] == QString::number(number)
                                : !desk.told.isEmpty());
            isFull |= !pricesSaved;
            const QStringList names = column(u"per", u"kod");
            QVERIFY(names.size() - people == saved || names.size() - people == saved + 1);
            isFull |= names.size() - people == saved;
            saved = names.size() - people;
            QVERIFY(saved == 0 || !isFull || names.last().size() == 9000);
            const auto unread = passOver([&] {
                const QStringList lines = readLines(program.path(u"kdvmu.kvz"), 2);
                QVERIFY(number == 0 || lines[0].size() != 9000 || areOne(lines));
                isFull |= lines[0] != value(number);
            });
            QVERIFY(!unread);
            QVERIFY(filesOf(desk.program(), {u"*.kvz.*"_s, u"*-journal"_s, u"*-wal"_s}).isEmpty());
            OtherProgram other(program.path(u"data.dbs"));
            QCOMPARE(other.run(u"pragma integrity_check"_s), u"ok"_s);
        }
        QVERIFY(saved > 0);
    }

    void aFolderIsLaidOutWholeOrLaterWhereverTheDiskIsFull()
    {
        const QTemporaryDir place;
        const SmallDisk disk(place.path());
        if (!disk.isThere())
            QSKIP("no right to mount a small disk here");
        const QStringList databases{u"data.dbs"_s, u"fatozkod.dbs"_s, u"stokozkod.dbs"_s};
        const auto laidOut = [&] {
            return QDir(place.path()).entryList({u"*.dbs"_s}, QDir::Files | QDir::Hidden);
        };
        bool isFull = true;
        int blocks = 0;
        for (; isFull; ++blocks) {
            QVERIFY(blocks < 100);
            disk.leave(blocks);
            isFull = passOver([&] { install(place.path()); }).has_value();
            disk.empty();
            QCOMPARE(isNewFolder(place.path()), isFull);
            QVERIFY(!isFull || laidOut() != databases);
            install(place.path());
            QVERIFY(!isNewFolder(place.path()));
            QCOMPARE(laidOut(), databases);
            for (const QString &name : databases) {
                OtherProgram other(place.filePath(name));
                QCOMPARE(other.run(u"pragma integrity_check"_s), u"ok"_s);
                QVERIFY(other.run(u"select count(*) from sqlite_master"_s) != u"0");
                QFile::remove(place.filePath(name));
            }
        }
        QVERIFY(blocks > 5);
    }

    void tablesAndSideFilesAreAtWorkAgainBehindAReadOnlyDisk()
    {
        Desk desk;
        if (!desk.isThere())
            QSKIP("no right to mount a small disk here");
        Program &program = desk.atWork();
        Urunform prices(program);
        prices.yukle();
        DefinitionScreen staff(program, *definitionOf(u"per"));
        staff.yukle();
        Kdvmu texts(program);
        prices.l1.setCell(0, Urunform::Fiyat, u"9999"_s);
        staff.yeni();
        staff.text(0).setText(u"YENI"_s);
        texts.genel.setText(u"yeni"_s);
        QVERIFY(desk.disk().makeReadOnly());
        desk.told.clear();
        QVERIFY(!prices.kaydet());
        QVERIFY2(desk.told.join(u'\n').contains(u"salt okunur"), qPrintable(desk.told.join(u'\n')));
        staff.kaydet(-1);
        texts.kaydet();
        QVERIFY(desk.disk().makeReadOnly(false));
        // As soon as it can be written they are at work again.
        QVERIFY(prices.kaydet());
        staff.yeni();
        staff.text(0).setText(u"YENI"_s);
        staff.kaydet(-1);
        texts.kaydet();
        QStringList saved;
        const OpenDb open(program.db, program.path(u"data.dbs"));
        for (const QString &found : {u"urun where fiyat = '9999'"_s, u"per where kod = 'YENI'"_s})
            program.db.forEach(Statement(u"select * from "_s + found), [&] { saved << found; });
        QCOMPARE(saved.size(), 2);
        QCOMPARE(readLines(program.path(u"kdvmu.kvz"), 1), QStringList(u"yeni"_s));
    }
};

QTEST_GUILESS_MAIN(DiskTest)

#include "tst_disk.moc"
