#include "check/readinessrules.h"

#include "base/filefault.h"
#include "check/listrules.h"
#include "text/numbers.h"
#include "transfer/target.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>

#ifdef Q_OS_WIN
#include <windows.h>
#endif

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

#ifdef Q_OS_WIN
// Windows marks folders as read only that everybody writes into, and tells rights only to whoever
// asks for them. Nothing is written.
bool isWritable(const QFileInfo &folder)
{
    const std::wstring path = QDir::toNativeSeparators(folder.absoluteFilePath()).toStdWString();
    const HANDLE asked = CreateFileW(path.c_str(), FILE_ADD_FILE,
                                     FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                     nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (asked != INVALID_HANDLE_VALUE)
        return CloseHandle(asked) != 0;
    const DWORD why = GetLastError();
    return folder.exists() && why != ERROR_ACCESS_DENIED && why != ERROR_WRITE_PROTECT;
}
#else
bool isWritable(const QFileInfo &folder)
{
    return folder.isWritable();
}
#endif

} // namespace

Rule folderRule(std::function<QString()> target)
{
    return {.name = u"belge klasörü"_s,
            .level = Level::Error,
            .cure = u"Dosya konumları ekranında yazılabilen bir klasör seçin."_s,
            .ofScreen = [target = std::move(target)]() -> QString {
                const QString path = target();
                if (path.isEmpty() || isOfOtherMachine(path))
                    return {};
                QFileInfo folder(path);
                if (!folder.isDir())
                    folder.setFile(folder.path());
                if (!folder.isDir())
                    return u"Belgelerin klasörü yok: %1"_s.arg(folder.filePath());
                return isWritable(folder)
                           ? QString()
                           : u"Belgelerin klasörüne yazılamıyor: %1"_s.arg(folder.filePath());
            }};
}

Rule targetRule(const Program &program)
{
    return folderRule([&program] {
        const Folders &folders = program.folders;
        return fullName(program.folder, ilkKlasor(program.folder, folders.xc, folders.xf));
    });
}

Rule existingFileRule(std::function<QString()> target, ContentOf contentOf)
{
    return {
        .name = u"var olan dosya"_s,
        .cure = u"Eski belge daha aktarılmadıysa önce başka bir yere alın."_s,
        .ofScreen = [target = std::move(target), contentOf = std::move(contentOf)]() -> QString {
            const QString path = target();
            if (path.isEmpty() || isOfOtherMachine(path))
                return {};
            const QFileInfo file(path);
            if (!file.isFile())
                return {};
            QStringList told{file.lastModified().toString(u"dd.MM.yyyy HH:mm"_s)};
            if (const QString content = contentOf ? contentOf(path) : QString(); !content.isEmpty())
                told.prepend(content);
            return u"%1 zaten var (%2), üzerine yazılır."_s.arg(file.fileName(),
                                                                told.join(u", "_s));
        }};
}

Rule databaseRule(const QString &path)
{
    return {.name = u"veritabanı"_s,
            .level = Level::Error,
            .cure = u"Program klasörünü yedekten geri koyun ya da programı yeniden kurun."_s,
            .ofScreen = [path] {
                return QFileInfo::exists(path)
                           ? QString()
                           : u"%1 yok: tanımlar okunamadı."_s.arg(QFileInfo(path).fileName());
            }};
}

Rule definitionsRule(std::function<std::optional<Failure>()> unread)
{
    return {.name = u"tanımlar"_s,
            .level = Level::Error,
            .cure = u"Veritabanını yedekten geri koyun, sonra bu ekranı kapatıp yeniden açın."_s,
            .ofScreen = [unread = std::move(unread)] {
                const auto failed = unread();
                return failed ? u"Tanımlar okunamadı: %1"_s.arg(failed->headline()) : QString();
            }};
}

Rule counterRule(const QString &file, std::function<QString()> stored)
{
    return {.name = u"sayaç"_s,
            .level = Level::Error,
            .cure = u"Dosyanın ilk satırına son verilen numarayı yazın."_s,
            .ofScreen = [file, stored = std::move(stored)] {
                const QString text = stored();
                return text.trimmed().isEmpty() || number(text)
                           ? QString()
                           : u"%1 dosyasındaki %2 bir sayı değil: numaralar 1'den başlar."_s.arg(
                                 file, quoted(text));
            }};
}

Rule counterBehindRule(std::function<QStringList()> warnings)
{
    return {.name = u"sayaç geride"_s,
            .level = Level::Error,
            .cure = u"Sayaç dosyasına belgelerdeki son numarayı yazıp dosyayı yeniden "
                    "okutun: yoksa numaralar ikinci kez verilir."_s,
            .ofScreen = [warnings = std::move(warnings)] {
                return warnings().join(u' ');
            }};
}

Rule programFolderRule(const QString &folder)
{
    return {.name = u"program klasörü"_s,
            .level = Level::Error,
            .cure = u"Klasöre yazma hakkı verin ya da programı yazılabilen bir klasöre taşıyın."_s,
            .ofScreen = [folder] {
                return isWritable(QFileInfo(folder))
                           ? QString()
                           : u"Program klasörüne yazılamıyor: %1"_s.arg(folder);
            }};
}

} // namespace kervan
