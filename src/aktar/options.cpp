#include "aktar/options.h"

#include "aktar/transfers.h"
#include "base/codepage.h"
#include "base/failure.h"
#include "base/filefault.h"
#include "text/dates.h"

#include <QFile>
#include <QHash>
#include <QStringDecoder>

#include <algorithm>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

const Option *find(const QList<Option> &known, const QString &name)
{
    const auto found = std::ranges::find(known, name, &Option::name);
    return found == known.end() ? nullptr : &*found;
}

QString textOf(const QByteArray &bytes)
{
    QStringDecoder utf8(QStringDecoder::Utf8);
    const QString text = utf8(bytes);
    return utf8.hasError() ? fromTextFile(bytes) : text;
}

QString withoutQuotes(QString value)
{
    if (value.size() >= 2 && value.startsWith(u'"') && value.endsWith(u'"'))
        value = value.sliced(1, value.size() - 2);
    return value;
}

// Of switches, and of options that take one of several words.
void checkWords(const Options &options, const QList<Option> &known)
{
    for (const Option &option : known) {
        if (option.value.isEmpty())
            options.isOn(option.name);
        const QStringList words = option.value.split(u'|');
        for (const QString &value : options.values(option.name)) {
            if (words.size() > 1 && !words.contains(value))
                throw Failure(u"--%1 için \"%2\" olmaz. Olanlar: %3"_s.arg(option.name, value,
                                                                           words.join(u", "_s)));
        }
    }
}

// A section that no command has would never be heard of again.
bool isSection(const QString &name)
{
    return name == u"izle" || findTransfer(name);
}

} // namespace

bool Options::isOn(const QString &name) const
{
    if (!has(name))
        return false;
    const QString said = value(name).toLower();
    if (said == u"hayır" || said == u"hayir" || said == u"0")
        return false;
    if (said.isEmpty() || said == u"evet" || said == u"1")
        return true;
    throw Failure(u"--%1 için \"%2\" olmaz: evet ya da hayır verin."_s.arg(name, value(name)));
}

int Options::number(const QString &name, int otherwise, int least) const
{
    if (!has(name))
        return otherwise;
    bool isNumber = false;
    const int given = value(name).toInt(&isNumber);
    if (!isNumber || given < least)
        throw Failure(u"--%1 için \"%2\" olmaz: %3 ya da daha büyük bir tam sayı verin."_s.arg(
            name, value(name), QString::number(least)));
    return given;
}

QDate dayOf(const QString &option, const QString &value, QDate today)
{
    if (value == u"bugun" || value == u"bugün")
        return today;
    if (value == u"dun" || value == u"dün")
        return today.addDays(-1);
    const auto day = typedDate(value, today.year());
    if (!day)
        throw Failure(u"--%1 için \"%2\" bir gün değil; 07.03.2024 gibi bir gün, bugun ya da dun "
                      "yazın."_s.arg(option, value));
    return *day;
}

void checkOrder(const QString &option, QDate first, QDate last)
{
    if (first > last)
        throw Failure(u"--%1: ilk gün (%2) sonuncudan (%3) sonra."_s.arg(
            option, first.toString(u"dd.MM.yyyy"), last.toString(u"dd.MM.yyyy")));
}

const QList<Option> &commonOptions()
{
    static const QList<Option> options{
        {u"klasor"_s, u"KLASÖR"_s,
         u"program klasörü: veritabanları ve yan dosyalar; verilmezse programın yanı"_s},
        {u"tarif"_s, u"DOSYA"_s, u"her gece aynı olan seçenekler; komut satırı onu ezer"_s},
        {u"hedef"_s, u"BELGE"_s,
         u"yazılacak belge ya da klasörü; içinde {kaynak}, {tarih} ve {saat} kullanılabilir"_s},
        {u"sec"_s, u"SATIRLAR"_s,
         u"hepsi, tarih=GÜN, tarih=GÜN..GÜN, no=NO,NO, e-fatura, e-fatura-degil, yazilmamis; "
         "birkaçı verilirse hepsine uyanlar"_s,
         true},
        {u"yazilmislari-atla"_s, {}, u"hedef klasördeki belgelerde olanları dışarıda bırakır"_s},
        {u"logosuz-yaz"_s,
         {},
         u"Logo'ya sorulamayan müşterilerin faturalarını e-fatura olmadan yazar"_s},
        {u"json"_s, {}, u"her belge için bir JSON satırı yazar"_s},
        {u"okunur-bicim"_s, {}, u"değerleri Logo'nun okuyacağı biçimde yazar (&, <, >)"_s},
        {u"hata-varsa-yazma"_s, {}, u"denetim bir hata bulursa belge yazılmaz"_s},
        {u"uzerine-yaz"_s, {}, u"var olan belgenin üzerine yazar; yoksa ona dokunulmaz"_s},
        {u"evet"_s, {}, u"programın sorularına evet der; yoksa yanıt hayırdır"_s},
        {u"bekle"_s, u"SANİYE"_s,
         u"program klasörü kullanımdaysa en çok bu kadar bekler; verilmezse 0"_s}};
    return options;
}

const QList<Option> &lookOptions()
{
    static const QList<Option> options{
        {u"listele"_s, {}, u"yalnız okur ve listeyi gösterir; hiçbir şey yazmaz"_s},
        {u"bicim"_s, u"tablo|csv|json"_s,
         u"listenin biçimi; verilmezse --json ile json, yoksa tablo"_s},
        {u"denetle"_s, {}, u"yalnız okur ve bulguları gösterir; hiçbir şey yazmaz"_s}};
    return options;
}

const QList<Option> &watchOptions()
{
    static const QList<Option> options{
        {u"aktarim"_s, u"KOMUT"_s, u"gelen dosyalara ne yapılacağı: fatura, cari, ..."_s},
        {u"desen"_s, u"DESEN"_s, u"alınacak dosyaların adı, örneğin *.bif"_s},
        {u"ara"_s, u"SANİYE"_s, u"klasöre bakışların arası; verilmezse 2"_s},
        {u"tek-tur"_s, {}, u"klasördekiler bitince sona erer"_s}};
    return options;
}

// Qt's parser knows no switch that takes a value, and does not say which option lacks its own.
Options readOptions(const QString &command, const QStringList &arguments,
                    const QList<Option> &known)
{
    Options options;
    bool onlySources = false;
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const QString &argument = arguments[i];
        if (onlySources || argument.size() < 2 || !argument.startsWith(u'-')) {
            options.sources << argument;
            continue;
        }
        onlySources = argument == u"--";
        if (onlySources)
            continue;
        const QString name =
            argument.section(u'=', 0, 0).sliced(argument.startsWith(u"--"_s) ? 2 : 1);
        const Option *option = find(known, name);
        if (!option)
            throw Failure(u"\"--%1\" %2 komutunun bir seçeneği değil; bakın: kervan-aktar %2 "
                          "--help"_s.arg(name, command));
        QString value = u"evet"_s; // of a switch, which may be turned off with a value too
        if (argument.contains(u'='))
            value = argument.section(u'=', 1);
        else if (!option->value.isEmpty() && // an empty variable of a script lets the next one in
                 (i + 1 == arguments.size() || arguments[i + 1].startsWith(u"--"_s)))
            throw Failure(
                u"--%1 için değer eksik; bakın: kervan-aktar %2 --help"_s.arg(name, command));
        else if (!option->value.isEmpty())
            value = arguments[++i];
        if (!option->many && options.has(name) && options.value(name) != value)
            throw Failure(u"--%1 iki kez verildi: \"%2\" ve \"%3\". Birini seçin."_s.arg(
                name, options.value(name), value));
        options.give(name, value);
    }
    checkWords(options, known);
    return options;
}

void addRecipe(Options &options, const QString &path, const QStringList &sections,
               const QList<Option> &known)
{
    QFile file(path);
    clearFault();
    if (!file.open(QIODevice::ReadOnly))
        throw fileFailure(path, u"okunamadı"_s, filefault(file, lastFault()));
    const QStringList given = options.names(); // those of the command line
    const QStringList lines = textOf(file.readAll()).split(u'\n');
    QString section;
    QHash<QString, QString> saidIn; // by section and key
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const QString line = lines[i].trimmed();
        const auto fault = [&](const QString &what) {
            return Failure(u"%1, %2. satır: %3"_s.arg(path, QString::number(i + 1), what));
        };
        if (line.isEmpty() || line.startsWith(u'#') || line.startsWith(u';'))
            continue;
        if (line.startsWith(u'[') && line.endsWith(u']')) {
            section = line.sliced(1, line.size() - 2).trimmed();
            if (!isSection(section))
                throw fault(u"\"%1\" bir komut değil."_s.arg(section));
            continue;
        }
        const qsizetype sign = line.indexOf(u'=');
        if (sign < 0)
            throw fault(u"\"anahtar = değer\" olmalı."_s);
        if (!section.isEmpty() && !sections.contains(section))
            continue;
        const QString key = line.first(sign).trimmed();
        if (!find(known, key)) {
            if (section.isEmpty() && find(allOptions(), key))
                continue; // meant for another command
            throw fault(u"\"%1\" %2 komutunun bir seçeneği değil."_s.arg(key, sections.last()));
        }
        const QString value = withoutQuotes(line.sliced(sign + 1).trimmed());
        QString &said = saidIn[section + u'/' + key];
        if (!said.isNull() && said != value && !find(known, key)->many)
            throw fault(
                u"\"%1\" iki kez verildi: \"%2\" ve \"%3\". Birini seçin."_s.arg(key, said, value));
        said = value.isNull() ? u""_s : value;
        if (!given.contains(key))
            options.give(key, value);
    }
    checkWords(options, known);
}

} // namespace kervan
