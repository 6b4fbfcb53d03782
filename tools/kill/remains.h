#pragma once

#include "check/documentreader.h"

#include <QHash>
#include <QMap>
#include <QSet>
#include <QString>
#include <QStringList>

namespace kervan {

/// What a program was killed at.
enum class Life { Documents, Settings, Command, Start };

/// Looks at what killed programs left, as the next start finds it, and counts.
class Remains
{
public:
    explicit Remains(QString place);

    /// How documents of this name look when nobody is killed, up to the last one that was told.
    void learn(const QString &name, int told);
    /// Takes the sample records out of the table that is counted.
    void emptyTable();
    /// Behind a kill: `done` is the last number of each word that the program told, `first` the one
    /// that it began with. Gives what is wrong, a sentence each; documents are thrown away behind
    /// that.
    QStringList look(Life life, const QHash<QString, int> &done, int first = 0);
    /// A line for each thing that was counted.
    QStringList counts() const;

private:
    struct Whole
    {
        qint64 records = 0;
        Decimal sum;
    };
    struct Document
    {
        QString name; // without its number
        Whole content;
        QSet<QByteArray> numbers; // of slips
        QString fault;
    };

    static Document read(const QString &path);
    void startAgain(const QString &folder);
    void lookAtDocuments(const QHash<QString, int> &done);
    void lookAtNumbers(const QString &file, const QSet<QByteArray> &numbers);
    void lookAtSettings(const QHash<QString, int> &done);
    void lookAtTable(const QHash<QString, int> &done, int first);
    QStringList leftIn(const QString &folder) const;
    void wrong(const QString &what) { m_wrong << what; }

    QString m_place;
    QHash<QString, Whole> m_known;
    QHash<QByteArray, QString> m_numbers; // each with the document that has it
    QHash<QByteArray, QString>
        m_parted;             // of a counter, the slips that a kill may have parted from it
    bool m_hasPrices = false; // those of a life, at least once
    bool m_isSaved = false;   // all settings
    QStringList m_wrong;
    QMap<QString, int> m_counts;
};

} // namespace kervan
