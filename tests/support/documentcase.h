#pragma once

#include "base/codepage.h"
#include "support/fakes.h"
#include "support/places.h"

#include <QDir>
#include <QHash>

namespace kervan {

/// A case of whole documents: a folder of tests/data/<subject> with sources, expected documents and
/// data.txt. Its first line holds choices, key=value parted by ";", of which those named *.kvz are
/// side files with "|" for a line end. Then come statements for a database; "--" is a remark.
class DocumentCase
{
public:
    /// Makes a row of test data of every case.
    static void addAll(const QString &subject)
    {
        QTest::addColumn<QString>("folder");
        for (const QString &folder : foldersOf(subject))
            QTest::newRow(qPrintable(folder.section(u'/', -1))) << folder;
    }
    static QStringList foldersOf(const QString &subject)
    {
        const QDir cases(testData(subject));
        QStringList folders;
        for (const QString &name : cases.entryList(QDir::Dirs | QDir::NoDotAndDotDot))
            folders << cases.filePath(name);
        return folders;
    }
    /// The case of the current row, laid down in a program folder.
    explicit DocumentCase(TestProgram &t, const QString &database = u"data.dbs"_s)
        : DocumentCase(t, database,
                       *static_cast<QString *>(QTest::qData("folder", QMetaType::QString)))
    {
    }
    DocumentCase(TestProgram &t, const QString &database, const QString &folder)
        : m_folder(folder)
    {
        QStringList lines = rowsOf(text(u"data.txt"_s));
        for (const QString &choice : lines.takeFirst().split(u';'))
            m_choices.insert(choice.section(u'=', 0, 0), choice.section(u'=', 1));
        lines.removeIf([](const QString &line) { return line.startsWith(u"--"_s); });
        t.fill(lines, database);
        for (auto it = m_choices.cbegin(); it != m_choices.cend(); ++it) {
            if (it.key().endsWith(u".kvz"))
                writeBytes(t.path(it.key()), toCodePage(it.value()).replace('|', "\r\n"));
        }
    }
    QString operator[](const QString &choice) const { return m_choices[choice]; }
    /// A choice of several values, parted by ",".
    QStringList list(const QString &choice) const
    {
        return m_choices[choice].split(u',', Qt::SkipEmptyParts);
    }
    QString path(const QString &name) const { return m_folder + u'/' + name; }
    QString text(const QString &name) const { return QString::fromUtf8(readBytes(path(name))); }
    /// The expected documents, or side files, by name.
    QStringList expected(const QString &pattern) const
    {
        return QDir(m_folder).entryList({pattern});
    }
    /// Compares the side files that the case holds with those of the program folder.
    void expectSideFiles(const TestProgram &t) const
    {
        for (const QString &name : expected(u"*.kvz"_s))
            expect(t.path(name), name);
    }
    /// Compares by lines, so that the first that differs is told.
    void expect(const QString &written, const QString &name = u"expected.xml"_s) const
    {
        QCOMPARE(readBytes(written).split('\n'), readBytes(path(name)).split('\n'));
    }
    /// Lets Logo take the rows of "efatura", from 1 on, for customers who take e-invoices; there is
    /// one statement a row.
    void markEInvoices(TestProgram &t) const
    {
        t.reachLogo();
        t.sqlServer.answer = [&t, marked = list(u"efatura"_s)](const QString &) -> SqlRows {
            const auto row = QString::number(t.sqlServer.statements.size());
            return {{u"ACCEPTEINV"_s}, {{marked.contains(row) ? u"1"_s : u"0"_s}}};
        };
    }

private:
    QString m_folder;
    QHash<QString, QString> m_choices;
};

} // namespace kervan
