#include "store/definition.h"

namespace kervan {

using namespace Qt::StringLiterals;

QString DefinitionColumn::shown(const QString &value) const
{
    if (tickedWord.isEmpty())
        return value;
    return value == u"1" ? tickedWord : QString();
}

Statement SideValue::select() const
{
    return Statement(u"select * from "_s + table);
}

Statement SideValue::update(const QString &value) const
{
    return Statement(u"Update %1 set %2 = '"_s.arg(table, column))
        .value(value)
        .text(u"' Where id ='1'");
}

Statement Definition::select() const
{
    return Statement(u"select * from "_s + table);
}

Statement Definition::insert(const ValueOf &valueOf) const
{
    Statement insert(u"insert into %1 values (Null ,'"_s.arg(table));
    for (const QString &column : columns) {
        if (column != columns.first())
            insert.text(u"','");
        insert.value(valueOf(column));
    }
    return insert.text(u"')");
}

Statement Definition::update(const ValueOf &valueOf, const QString &id) const
{
    const QStringList &written = updateColumns.isEmpty() ? columns : updateColumns;
    Statement update(u"Update %1 %2 "_s.arg(table, setWord));
    for (const QString &column : written) {
        if (column != written.first())
            update.text(u"', ");
        update.text(column + u" = '"_s).value(valueOf(column));
    }
    return update.text(u"' %1 id ='"_s.arg(whereWord)).value(id).text(u"'");
}

Statement Definition::remove(const QString &id) const
{
    return Statement(u"Delete from %1 where id= '"_s.arg(table)).value(id).text(u"'");
}

} // namespace kervan
