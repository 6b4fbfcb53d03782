#pragma once

#include <QString>
#include <QStringList>

namespace kervan {

/// A statement as an engine reads it.
struct ReadStatement
{
    explicit ReadStatement(const QString &statement);

    QString fixed;      ///< what stands outside of its texts, a "?" for each of them
    QStringList texts;  ///< with one apostrophe for each pair
    bool isOne = false; ///< every text is closed, and there is no NUL
};

inline ReadStatement::ReadStatement(const QString &statement)
{
    bool inside = false;
    bool isCut = false;
    for (qsizetype i = 0; i < statement.size(); ++i) {
        const QChar c = statement[i];
        isCut = isCut || c.isNull();
        if (c != u'\'') {
            (inside ? texts.last() : fixed) += c;
        } else if (!inside) {
            fixed += u'?';
            texts << QString();
            inside = true;
        } else if (i + 1 < statement.size() && statement[i + 1] == u'\'') {
            texts.last() += statement[i++];
        } else {
            inside = false;
        }
    }
    isOne = !inside && !isCut;
}

} // namespace kervan
