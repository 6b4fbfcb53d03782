#include "aktar/command.h"

#include "aktar/filestate.h"
#include "aktar/watching.h"
#include "base/failure.h"
#include "base/leftovers.h"
#include "store/settling.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>

#include <algorithm>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr auto pieceOfWaiting = std::chrono::milliseconds(200);

QString folderOf(const Options &options, const CommandWorld &world)
{
    const QString named = options.value(u"klasor"_s);
    if (named.isEmpty() && options.has(u"klasor"_s))
        throw Failure(u"--klasor boş verildi; program klasörünü yazın ya da hiç vermeyin."_s);
    const QString folder = named.isEmpty() ? world.programFolder : named;
    if (!QFileInfo::exists(QDir(folder).filePath(u"data.dbs"_s)))
        throw Failure(
            u"%1 bir program klasörü değil, içinde data.dbs yok. --klasor ile doğrusunu "
            "verin ya da kervan-kurulum ile kurun."_s.arg(QDir::toNativeSeparators(folder)));
    return QDir(folder).absolutePath();
}

QString optionLines(const QList<Option> &options)
{
    constexpr int column = 28;
    QString lines;
    for (const Option &option : options) {
        const QString name =
            u"  --"_s + option.name + (option.value.isEmpty() ? QString() : u' ' + option.value);
        lines += name.leftJustified(column) + u' ' + option.text + u'\n';
    }
    return lines;
}

// Not every shell makes files of "*.bif". A pattern that no file fits is told.
QStringList expanded(const QStringList &sources,
                     const std::function<void(const QString &line)> &tell)
{
    QStringList files;
    for (const QString &source : sources) {
        const QFileInfo place(source);
        if (!(source.contains(u'*') || source.contains(u'?')) || place.exists()) {
            files << source;
            continue;
        }
        const QStringList names = oldestFirst(place.dir(), {place.fileName()});
        for (const QString &name : names)
            files << place.dir().filePath(name);
        if (names.isEmpty())
            tell(u"kervan-aktar: %1 desenine uyan dosya yok."_s.arg(source));
    }
    return files;
}

Status runTransfer(const Transfer &transfer, const QStringList &arguments,
                   const CommandWorld &world)
{
    const auto &out = world.streams.out;
    const auto &tell = world.streams.tell;
    Status status = Done;
    const auto misused = passOver([&] {
        Options options = readOptions(transfer.command, arguments, optionsOf(transfer));
        const bool asksForForm = options.has(u"bicim"_s); // a recipe may have it for some nights
        const bool asksForJson = options.isOn(u"json"_s);
        if (options.has(u"tarif"_s))
            addRecipe(options, options.value(u"tarif"_s), {transfer.command}, optionsOf(transfer));
        if (asksForForm && !options.isOn(u"listele"_s))
            throw Failure(u"--bicim listenin biçimidir; --listele ile verilir."_s);
        if (asksForForm && asksForJson && options.value(u"bicim"_s) != u"json")
            throw Failure(
                u"--json ile --bicim %1 birlikte verilmez."_s.arg(options.value(u"bicim"_s)));
        // What the command line asks for comes before the form that a recipe names.
        if (!asksForForm && (asksForJson || (options.isOn(u"json"_s) && !options.has(u"bicim"_s))))
            options.give(u"bicim"_s, u"json"_s);
        if (options.sources.isEmpty())
            throw Failure(
                u"Kaynak dosyayı verin; bakın: kervan-aktar %1 --help"_s.arg(transfer.command));
        bool isNoFile = false;
        options.sources = expanded(options.sources, [&](const QString &line) {
            isNoFile = true;
            tell(line);
        });
        OpenFolder folder(options, world);
        Job job(folder.program(), folder.ports(), transfer, options);
        if (!job.onlyReads())
            status = folder.enter(tell);
        if (status != Done)
            return;
        if (isNoFile)
            status = NothingWritten;
        for (qsizetype i = 0; i < options.sources.size(); ++i) {
            const Outcome outcome = job.run(options.sources[i], world.streams);
            status = worse(status, outcome.status);
            if (!options.isOn(u"listele"_s))
                out(options.isOn(u"json"_s) ? jsonOf(outcome) : textOf(outcome));
            if (outcome.status != Barred)
                continue;
            const QStringList left =
                options.sources.sliced(i + 1); // in order, as slips are numbered
            if (!left.isEmpty())
                tell(u"kervan-aktar: Geçilmeyen kaynaklar: "_s + left.join(u", "_s));
            break;
        }
    });
    if (!misused)
        return status;
    tell(u"kervan-aktar: "_s + misused->description());
    return UsedWrongly;
}

} // namespace

OpenFolder::OpenFolder(const Options &options, const CommandWorld &world)
    : m_patience(options.number(u"bekle"_s, 0))
    , m_isEnding(world.isEnding)
    , m_folder(folderOf(options, world))
    , m_lock(m_folder, FolderLock::Who::Command)
    , m_boxes(options.isOn(u"evet"_s))
    , m_program{.folder = m_folder,
                .aktifform = {},
                .folders = {},
                .db = {},
                .boxes = m_boxes,
                .dialogs = m_names,
                .clock = world.clock,
                .sqlServer = world.sqlServer}
{
}

// In short pieces, between which a signal is heard.
bool OpenFolder::wait()
{
    QElapsedTimer waited;
    waited.start();
    while (!m_lock.take(std::min<std::chrono::milliseconds>(m_patience, pieceOfWaiting))) {
        if (m_isEnding() || waited.hasExpired(std::chrono::milliseconds(m_patience).count()))
            return false;
    }
    return true;
}

Status OpenFolder::enter(const std::function<void(const QString &line)> &tell)
{
    if (!wait()) {
        if (m_isEnding())
            return InUse;
        tell(u"kervan-aktar: Program klasörü kullanımda (%1). Pencereyi kapatın ya da --bekle ile "
             "bekleyin."_s.arg(QDir::toNativeSeparators(m_lock.holder())));
        return InUse;
    }
    const auto failed = passOver([&] {
        const QString done = recover(m_folder);
        settle(m_folder);
        sweepLeftovers(m_folder, [](const Leftover &left) {
            return left.whole == journalName && left.isRest();
        });
        if (!done.isEmpty())
            tell(u"kervan-aktar: "_s + done);
    });
    if (!failed)
        return Done;
    m_lock.release();
    tell(u"kervan-aktar: Yarıda kalan aktarım tamamlanamadı, yenisi başlamadı. "_s +
         failed->description());
    return NothingWritten;
}

int runCommand(const QStringList &arguments, const CommandWorld &world)
{
    const auto &out = world.streams.out;
    const auto &tell = world.streams.tell;
    const QString command = arguments.value(0);
    const bool wantsHelp = arguments.contains(u"--help"_s) || arguments.contains(u"-h"_s);
    const Transfer *transfer = findTransfer(command);
    if (command == u"izle") {
        if (!wantsHelp)
            return watchFolder(arguments.sliced(1), world);
        out(helpText(command, u"KLASÖR --tarif TARİF"_s,
                     u"Klasöre gelen dosyaları aktarır; bitenleri aktarilan, olmayanları hatali "
                     "klasörüne taşır."_s,
                     watchOptions(), commonOptions()));
    } else if (transfer && wantsHelp) {
        out(helpText(command, u"KAYNAK... --hedef BELGE"_s, u"Aktarır: "_s + transfer->what,
                     transfer->options + lookOptions(), commonOptions()));
    } else if (transfer) {
        return runTransfer(*transfer, arguments.sliced(1), world);
    } else if (wantsHelp) {
        out(helpText());
    } else {
        tell(command.isEmpty() ? helpText()
                               : u"kervan-aktar: \"%1\" bir komut değil; bakın: kervan-aktar "
                                 "--help"_s.arg(command));
        return UsedWrongly;
    }
    return Done;
}

QString helpText()
{
    QString text = u"kervan-aktar KOMUT KAYNAK... [SEÇENEK...]\n\n"
                   "Kervan Transfer'in aktarımlarını pencere açmadan yapar.\n\nKomutlar:\n"_s;
    for (const Transfer &transfer : transfers())
        text += u"  "_s + transfer.command.leftJustified(16) + transfer.what + u'\n';
    return text + u"  "_s + u"izle"_s.leftJustified(16) +
           u"bir klasöre gelen dosyalar\n\n"
           "Bir komutun seçenekleri: kervan-aktar KOMUT --help\n"
           "Değer almayan bir seçenek =hayir ile kapanır: --listele=hayir\n\n"
           "Bitiş kodları:\n"
           "  0   tamam\n"
           "  1   yazıldı (ya da bakıldı), bulgular var\n"
           "  2   en az bir kaynağın belgesi yazılmadı ya da bakılacak bir şey yok\n"
           "  64  yanlış kullanım\n"
           "  75  kaynağın kusuru olmayan bir engel: klasörler, veritabanı, Logo; sonra yeniden "
           "deneyin\n"
           "  76  klasör kullanımda: pencere açık ya da başka bir kervan-aktar çalışıyor\n"_s;
}

QString helpText(const QString &command, const QString &arguments, const QString &what,
                 const QList<Option> &own, const QList<Option> &common)
{
    QString text = u"kervan-aktar %1 %2 [SEÇENEK...]\n\n%3\n"_s.arg(command, arguments, what);
    if (!own.isEmpty())
        text += u"\nBu komutun seçenekleri:\n"_s + optionLines(own);
    return text + u"\nBütün komutların seçenekleri:\n"_s + optionLines(common);
}

} // namespace kervan
