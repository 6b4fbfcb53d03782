#pragma once

#include <QRegularExpression>
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

/// Whether it is one of the four statements that Logo is ever sent. A firm is digits, but whatever
/// a firm's line begins with stays a part of a name.
inline bool isDesigned(const QString &statement)
{
    static const QRegularExpression shape(QStringLiteral(
        "\\A(?:select \\* from L_CAPIFIRM"
        "|Select \\* from LG_[\\p{L}\\p{N}_]*_CLCARD where CODE=\\?"
        "|Select ITEM\\.CODE as ITEMKOD, UNIT\\.CODE as BIRIMKOD from LG_([\\p{L}\\p{N}_]*)"
        "_UNITBARCODE BAR WITH\\(NOLOCK\\) LEFT OUTER JOIN LG_\\1_ITEMS ITEM WITH\\(NOLOCK\\) "
        "ON \\(BAR\\.ITEMREF  =  ITEM\\.LOGICALREF\\) LEFT OUTER JOIN LG_\\1_UNITSETL UNIT "
        "WITH\\(NOLOCK\\) ON \\(BAR\\.UNITLINEREF = UNIT\\.LOGICALREF\\) where BAR\\.BARCODE=\\?"
        "|UPDATE LG_[\\p{L}\\p{N}_]*_CLCARD SET DEFINITION_=\\? where CODE=\\?)\\z"));
    const ReadStatement read(statement);
    return read.isOne && shape.match(read.fixed).hasMatch();
}

} // namespace kervan
