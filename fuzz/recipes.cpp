// The command's options and recipes: what the command line gives stays, and what a recipe gives is
// what its lines say.

#include "aktar/options.h"
#include "aktar/selection.h"
#include "aktar/transfers.h"
#include "base/failure.h"
#include "support/harness.h"

using namespace kervan;
using namespace Qt::StringLiterals;

namespace {

// The values of a key in the lines in front of the first section and below one of them.
QStringList plainValues(const QString &recipe, const QString &section, const QString &key)
{
    QStringList values;
    QString current;
    for (const QString &raw : recipe.split(u'\n')) {
        const QString line = raw.trimmed();
        if (line.startsWith(u'#') || line.startsWith(u';'))
            continue;
        if (line.size() > 1 && line.front() == u'[' && line.back() == u']')
            current = line.mid(1, line.size() - 2).trimmed();
        else if ((current.isEmpty() || current == section) &&
                 line.section(u'=', 0, 0).trimmed() == key && line.contains(u'='))
            values << line.section(u'=', 1).trimmed();
    }
    return values;
}

QString unquoted(const QString &value)
{
    return value.size() > 1 && value.front() == u'"' && value.back() == u'"'
               ? value.mid(1, value.size() - 2)
               : value;
}

void ask(const Options &options, const QList<Option> &known)
{
    for (const Option &option : known) {
        passOver([&] { options.isOn(option.name); });
        passOver([&] {
            fuzz::expect(options.number(option.name, 3, 1) >= 1, "a number below the least");
        });
        passOver([&] { dayOf(option.name, options.value(option.name), QDate(2024, 3, 7)); });
    }
    passOver([&] {
        const Selection selection = selectionOf(options, QDate(2024, 3, 7));
        fuzz::expect(selection.first.isValid() == selection.last.isValid(), "half a range");
        fuzz::expect(!selection.first.isValid() || selection.first <= selection.last,
                     "a range from its end");
    });
}

} // namespace

// A command's number, a recipe, and the arguments.
void kervan::fuzz::take(QByteArrayView input)
{
    Pieces pieces(input);
    const QList<Transfer> &all = transfers();
    const Transfer &transfer = all[pieces.choice(static_cast<int>(all.size()))];
    const QList<Option> known = optionsOf(transfer);
    const QByteArray recipe = pieces.bytes();
    QStringList arguments = pieces.texts();
    arguments.removeAll(QString());
    Options options;
    if (passOver([&] { options = readOptions(transfer.command, arguments, known); }))
        options = Options();
    ask(options, known);
    const Options given = options;
    const QString path = pathOf(u"tarif.ini"_s);
    store(path, recipe);
    const auto failed = passOver([&] { addRecipe(options, path, {transfer.command}, known); });
    expect(!failed || !failed->description().isEmpty(), "a failure without a word");
    for (const QString &name : given.names())
        expect(options.values(name) == given.values(name), "a recipe changed what was given", name);
    const QString text = QString::fromUtf8(recipe);
    if (!failed && text.toUtf8() == recipe && !text.startsWith(u'\uFEFF')) {
        for (const Option &option : known) {
            if (given.has(option.name))
                continue;
            QStringList plain = plainValues(text, transfer.command, option.name);
            for (QString &value : plain)
                value = unquoted(value);
            expectSame(options.values(option.name).join(u'|'), plain.join(u'|'),
                       "a recipe gives other values");
        }
    }
    ask(options, known);
}
