#include "check/valuefaults.h"

#include "base/codepage.h"

#include <algorithm>
#include <optional>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype shownLetters = 60;

bool breaksXml(QChar c)
{
    return c == u'&' || c == u'<' || (c < u' ' && c != u'\t' && c != u'\n' && c != u'\r');
}

QString spelled(QChar c)
{
    return c < u' ' ? u"%1 kodlu denetim karakteri"_s.arg(c.unicode()) : u"\"%1\""_s.arg(c);
}

// Letters that most values have, which need no closer look.
bool isUsual(QChar c)
{
    return c < u'\x7F' || QStringView(u"çğıöşüÇĞİÖŞÜâîû").contains(c);
}

// The first letter that the document can't hold, or where none of its readers looks for one.
struct OddLetter
{
    QString letter;
    bool isLost = false; // it becomes a "?"
};
std::optional<OddLetter> oddLetter(const QString &text)
{
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (isUsual(c))
            continue;
        const bool paired = c.isHighSurrogate() && i + 1 < text.size();
        const QString letter = text.mid(i, paired ? 2 : 1);
        const auto byte = static_cast<unsigned char>(toCodePage(letter).front());
        if (byte == '?')
            return OddLetter{letter, true};
        if (byte >= 0x80 && byte <= 0x9F)
            return OddLetter{letter, false};
    }
    return std::nullopt;
}

} // namespace

QString quoted(const QString &value)
{
    const QString text = value.trimmed();
    return text.size() > shownLetters ? u"\"%1…\""_s.arg(text.left(shownLetters))
                                      : u"\"%1\""_s.arg(text);
}

QString faultOfMarkup(const QString &name, const QString &value, const QString &broken)
{
    const auto *const found = std::ranges::find_if(value, breaksXml);
    if (found == value.end())
        return {};
    return u"%1 %2 içinde %3 var: Logo %4 okuyamaz."_s.arg(
        name, quoted(value), spelled(*found),
        broken.isEmpty() ? u"belgenin hiçbir kaydını"_s : broken);
}

QString faultOfLetters(const QString &name, const QString &value)
{
    const auto odd = oddLetter(value);
    if (!odd)
        return {};
    const QString what =
        odd->isLost ? u"belgede yerine \"?\" yazılır"_s : u"Logo bu işareti başka okuyabilir"_s;
    return u"%1 %2 içinde \"%3\" var, %4."_s.arg(name, quoted(value), odd->letter, what);
}

QString faultOfWords(const Sablon &record, const QList<QByteArray> &placeholders,
                     const QStringList &values)
{
    if (!record.mayChange(values, Sablon::Steps::Later))
        return {};
    QByteArray filled, meant;
    record.doldur(values, filled);
    record.yerlestir(values, meant);
    if (filled == meant)
        return {};
    // Each step that finds something behind its place.
    QStringList faults;
    for (qsizetype step = 1; step < placeholders.size(); ++step) {
        for (qsizetype i = 0; i < step; ++i) {
            if (toCodePage(values[i]).contains(placeholders[step]))
                faults << u"%1 içindeki \"%2\" şablonun sözcüğüdür, belgede yerine %3 yazılır."_s
                              .arg(quoted(values[i]), fromCodePage(placeholders[step]),
                                   quoted(values[step]));
        }
    }
    faults.removeDuplicates();
    return faults.isEmpty()
               ? u"Değerlerde şablonun sözcükleri var, belge listedekinden başka olur."_s
               : faults.join(u' ');
}

QString orAsXml(QString cure)
{
    if (cure.endsWith(u'.'))
        cure.chop(1);
    return cure + u" ya da \"Logo'nun okuyacağı biçimde yaz\"ı işaretleyin."_s;
}

} // namespace kervan
