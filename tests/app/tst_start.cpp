#include "app/crashleft.h"
#include "app/folderstate.h"
#include "base/crashreport.h"
#include "base/failure.h"
#include "store/installation.h"
#include "store/sidefiles.h"
#include "support/fakes.h"
#include "support/table.h"

#include <QCoreApplication>
#include <QProcess>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

#include <array>
#include <cstdlib>

using namespace kervan;

namespace {

// NOLINTNEXTLINE(misc-no-recursion): it is meant to end the stack
int deeper(int depth)
{
    std::array<volatile int, 1024> room{};
    room[0] = depth;
    return depth < 0 ? 0 : deeper(depth + 1) + room[0];
}

const QByteArray secret = "Gizli-sifre1";

// What this program does when it is called to crash, with the secret in its hands; a sanitizer
// would end it politely.
#ifdef __GNUC__
[[gnu::no_sanitize("undefined")]]
#endif
int crash(const QString &folder, const QString &how)
{
    reportCrashes(folder);
    const QString text = u"Server=s;UID=sa;PWD="_s + QString::fromLatin1(secret);
    writeLines(folder + u"/sqlbaglan.kvz"_s, {text});
    if (how == u"abort")
        std::abort();
    if (how == u"fatal")
        qFatal("no platform to be had: %s", qPrintable(text));
    if (how == u"thrown")
        throw Failure(text);
    if (how == u"stack")
        return deeper(0);
    volatile int *nowhere = nullptr;
    *nowhere = 1;
    return 0;
}

} // namespace

class TestStart : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aCrashLeavesItsPlaceAndVersionAndIsToldOnce_data()
    {
        QTest::addColumn<QString>("how");
        QTest::newRow("nowhere") << u"nowhere"_s;
        QTest::newRow("abort") << u"abort"_s;
        QTest::newRow("fatal") << u"fatal"_s;
        QTest::newRow("thrown") << u"thrown"_s;
        QTest::newRow("stack") << u"stack"_s;
    }
    void aCrashLeavesItsPlaceAndVersionAndIsToldOnce()
    {
        if (isUnderWine() && fetch("how") == u"stack")
            QSKIP("Wine keeps no room on the stack for a crash that has used it up");
        const QTemporaryDir folder;
        QCOMPARE(leftByCrash(folder.path()), QString());
        QProcess process;
        process.start(QCoreApplication::applicationFilePath(),
                      {u"crash"_s, folder.path(), fetch("how")});
        QVERIFY(process.waitForFinished(20000));
#ifdef Q_OS_WIN
        QVERIFY(process.exitCode() != 0); // 3 of abort(), which counts as a normal end
#else
        QCOMPARE(process.exitStatus(), QProcess::CrashExit);
#endif
        const QString report = leftByCrash(folder.path());
        const QByteArray text = readBytes(report);
        QVERIFY2(text.startsWith("Kervan Transfer 9.99, Qt 6."), text);
        QVERIFY2(text.contains("\r\ntst_start"), text); // and a distance
        QVERIFY2(!text.contains(folder.path().toLocal8Bit()) && !text.contains("platform"), text);
        QVERIFY2(!QByteArray(text).replace('\0', "").contains(secret), text); // in wide letters too
        QVERIFY(QFileInfo(report).fileName().startsWith(u"cokme-2"_s));
        QCOMPARE(leftByCrash(folder.path()), QString());
        QVERIFY(QFile::exists(report));
    }

    void aReportThatCantBeRenamedIsToldOnceAsWell()
    {
        const QTemporaryDir folder;
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, folder.path());
        QCoreApplication::setOrganizationName(u"Deneme"_s);
        const QString report = folder.filePath(u"cokme-raporu.txt"_s);
        const auto crashAt = [&](const QTime &time, bool renamed) {
            writeBytes(report, "Kervan Transfer");
            QFile file(report);
            QVERIFY(file.open(QIODevice::ReadWrite));
            QVERIFY(file.setFileTime({{2024, 3, 7}, time}, QFileDevice::FileModificationTime));
            if (!renamed) // the name is taken
                QVERIFY(
                    QDir(folder.path()).mkdir(time.toString(u"'cokme-20240307-'hhmmss'.txt'"_s)));
        };
        crashAt({9, 5, 3}, false);
        QCOMPARE(leftByCrash(folder.path()), report);
        QCOMPARE(leftByCrash(folder.path()), QString());
        crashAt({9, 6, 0}, false); // another one
        QCOMPARE(leftByCrash(folder.path()), report);
        crashAt({9, 7, 0}, true);
        QCOMPARE(leftByCrash(folder.path()), folder.filePath(u"cokme-20240307-090700.txt"_s));
        QCoreApplication::setOrganizationName({});
    }

    void whatIsWrongWithTheFolderIsToldInOneLine()
    {
        const QTemporaryDir folder;
        QCOMPARE(folderState(folder.path(), {}), QString());
        writeBytes(folder.filePath(u"cokme-raporu.txt"_s), "kervan-aktar 2.21.1");
        const QString told = folderState(folder.path(), u"Yarım kalan aktarım tamamlandı."_s);
        QVERIFY2(told.startsWith(u"kervan-aktar geçen sefer yarıda kapandı; raporu: "_s) &&
                     told.endsWith(u".txt  Yarım kalan aktarım tamamlandı."_s),
                 qPrintable(told));
        const QString gone =
            folder.filePath(u"yok"_s); // nobody can write there, whatever his rights
        QCOMPARE(folderState(gone, {}),
                 u"Program klasörüne yazılamıyor, ayarlar ve numaralar saklanamaz. Yazma hakkınız "
                 "olan bir yere taşıyın ya da bu hakkı isteyin: "_s +
                     QDir::toNativeSeparators(gone));
    }

    void onlyAFolderWithoutDataIsNew()
    {
        const QTemporaryDir folder;
        QVERIFY(isNewFolder(folder.path()));
        install(folder.path());
        QVERIFY(!isNewFolder(folder.path()));
        for (const QString &name : {u"data.dbs"_s, u"fatozkod.dbs"_s})
            QFile::remove(folder.filePath(name));
        QVERIFY(!isNewFolder(folder.path())); // it has lost them
    }

    void aLayingOutThatWasCutShortGoesOn()
    {
        const QTemporaryDir folder;
        install(folder.path());
        const QString kept = folder.filePath(u"data.dbs"_s);
        const QString cut = folder.filePath(u"stokozkod.dbs"_s);
        const QString rest = folder.filePath(u".kervan-kurulum-stokozkod.dbs"_s);
        QVERIFY(QFile::rename(cut, rest)); // killed before it had its name
        QVERIFY(QFile::resize(rest, 100));
        const QByteArray before = readBytes(kept);
        QVERIFY(isNewFolder(folder.path()));
        install(folder.path());
        QVERIFY(!isNewFolder(folder.path()));
        QCOMPARE(readBytes(kept), before);
        QVERIFY(readBytes(cut).startsWith("SQLite format 3") && QFileInfo(cut).size() > 100);
        writeBytes(rest, "x"); // beside its whole file
        QFile::remove(folder.filePath(u"fatozkod.dbs"_s));
        install(folder.path());
        QFile::remove(kept);
        QVERIFY(!isNewFolder(folder.path()));
    }
};

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(u"Kervan Transfer"_s);
    QCoreApplication::setApplicationVersion(u"9.99"_s);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == u"crash")
        return crash(arguments.value(2), arguments.value(3));
    TestStart test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_start.moc"
