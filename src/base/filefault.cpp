#include "base/filefault.h"

#include <QDir>
#include <QFileInfo>
#include <QThread>

#include <algorithm>
#include <array>
#include <cerrno>

#ifdef Q_OS_WIN
#include <QRegularExpression>

#include <windows.h>
#endif

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

struct Word
{
    int fault;
    QStringView text;
};

constexpr QStringView noRight = u"izin yok";
constexpr QStringView noNetwork = u"ağdaki klasöre ulaşılamıyor";
constexpr QStringView readOnly = u"disk salt okunur";
constexpr QStringView full = u"disk dolu";
constexpr QStringView inUse = u"başka bir programda açık";
constexpr QStringView longName = u"adı çok uzun";
constexpr QStringView unusableLetter = u"dosya adında kullanılamayan bir harf var";
constexpr QStringView tooLarge = u"dosya bu diske sığmayacak kadar büyük";
constexpr QStringView tooMany = u"çok fazla dosya açık";
constexpr QStringView damaged = u"disk hata veriyor";
constexpr QStringView noMemory = u"bellek yetmiyor";

#ifdef Q_OS_WIN
constexpr qsizetype longestName = 255 - 7; // of letters, since a file has seven more while written

constexpr auto words = std::to_array<Word>({
    {ERROR_ACCESS_DENIED, noRight},
    {ERROR_BAD_NETPATH, noNetwork},
    {ERROR_NETNAME_DELETED, noNetwork},
    {ERROR_NETWORK_BUSY, noNetwork},
    {ERROR_DEV_NOT_EXIST, noNetwork},
    {ERROR_UNEXP_NET_ERR, noNetwork},
    {ERROR_BAD_NET_NAME, noNetwork},
    {ERROR_SEM_TIMEOUT, noNetwork},
    {ERROR_NETWORK_UNREACHABLE, noNetwork},
    {ERROR_HOST_UNREACHABLE, noNetwork},
    {ERROR_NETWORK_ACCESS_DENIED, noRight},
    {ERROR_WRITE_PROTECT, readOnly},
    {ERROR_DISK_FULL, full},
    {ERROR_HANDLE_DISK_FULL, full},
    {ERROR_SHARING_VIOLATION, inUse},
    {ERROR_LOCK_VIOLATION, inUse},
    {ERROR_USER_MAPPED_FILE, inUse},
    {ERROR_FILENAME_EXCED_RANGE, longName},
    {ERROR_INVALID_NAME, unusableLetter},
    {ERROR_FILE_TOO_LARGE, tooLarge},
    {ERROR_TOO_MANY_OPEN_FILES, tooMany},
    {ERROR_NOT_READY, u"sürücü hazır değil"},
    {ERROR_CRC, damaged},
    {ERROR_IO_DEVICE, damaged},
    {ERROR_NOT_ENOUGH_MEMORY, noMemory},
});
#else
constexpr auto words = std::to_array<Word>({
    {EACCES, noRight},
    {EPERM, noRight},
    {ENETDOWN, noNetwork},
    {ENETUNREACH, noNetwork},
    {ENETRESET, noNetwork},
    {EHOSTDOWN, noNetwork},
    {EHOSTUNREACH, noNetwork},
    {ENOTCONN, noNetwork},
    {ETIMEDOUT, noNetwork},
    {ESTALE, noNetwork},
    {EROFS, readOnly},
    {ENOSPC, full},
    {EDQUOT, u"diskte size ayrılan yer dolu"},
    {ETXTBSY, inUse},
    {EBUSY, inUse},
    {ENAMETOOLONG, longName},
    {EFBIG, tooLarge},
    {EMFILE, tooMany},
    {ENFILE, tooMany},
    {EIO, damaged},
    {ENOMEM, noMemory},
});
#endif

QStringView wordOf(int fault)
{
    const auto *found = std::ranges::find(words, fault, &Word::fault);
    return found == words.end() ? QStringView() : found->text;
}

} // namespace

bool isOfPlace(int fault)
{
    const QStringView word = wordOf(fault);
    return !word.isEmpty() && word != longName && word != tooLarge && word != unusableLetter;
}

bool isOpenElsewhere([[maybe_unused]] const QString &path)
{
#ifdef Q_OS_WIN
    const HANDLE file = CreateFileW(systemName(path).c_str(), GENERIC_WRITE | DELETE, 0, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return GetLastError() == ERROR_SHARING_VIOLATION;
    CloseHandle(file);
#endif
    return false;
}

bool waitWhileOpen(const QString &path)
{
    constexpr int looks = 20;
    for (int i = 0; i < looks; ++i) {
        if (!isOpenElsewhere(path))
            return true;
        QThread::msleep(50);
    }
    return false;
}

bool isOfOtherMachine(const QString &path)
{
    const QString name = QDir::fromNativeSeparators(path);
#ifdef Q_OS_WIN
    const QString drive = QDir::toNativeSeparators(name.left(3));
    if (GetDriveTypeW(drive.toStdWString().c_str()) == DRIVE_REMOTE)
        return true;
#endif
    return name.startsWith(u"//"_s);
}

void clearFault()
{
#ifdef Q_OS_WIN
    SetLastError(0);
#else
    errno = 0;
#endif
}

int lastFault()
{
#ifdef Q_OS_WIN
    return static_cast<int>(GetLastError());
#else
    return errno;
#endif
}

QString filefault(const QFileDevice &file, int fault)
{
    const QFileInfo info(file.fileName());
    const QStringView word = wordOf(fault);
    if (word == noNetwork) // what is out of reach looks as if it were missing
        return word.toString();
    if (info.isDir())
        return u"bu bir klasör"_s;
    // Another file can't take the place of one that is open; Windows calls that forbidden.
    const bool mayBeHeld = word == noRight || (word.isEmpty() && info.exists());
    if (mayBeHeld && isOpenElsewhere(file.fileName()))
        return inUse.toString();
    // A folder that may not be looked into looks empty, and a name too long is nowhere.
    if (word.isEmpty() && !info.dir().exists())
        return u"klasörü yok"_s;
    if ((word.isEmpty() || word == noRight) && info.isReadable() && !info.isWritable())
        return info.permission(QFile::WriteOwner) ? noRight.toString() : u"dosya salt okunur"_s;
    if (!word.isEmpty())
        return word.toString();
    switch (file.error()) {
    case QFileDevice::PermissionsError:
        return noRight.toString();
    case QFileDevice::ResourceError:
        return u"yer ya da bellek yok"_s;
    case QFileDevice::OpenError:
        if (!info.exists())
            return u"dosya yok"_s;
        break;
    default:
        break;
    }
    return file.errorString(); // in the words of the desktop
}

QString faultOfName([[maybe_unused]] const QString &path)
{
#ifdef Q_OS_WIN
    static const QRegularExpression device(u"^(?:CON|PRN|AUX|NUL|COM[1-9]|LPT[1-9])\\s*(?:\\.|$)"_s,
                                           QRegularExpression::CaseInsensitiveOption);
    const QString name = QFileInfo(path).fileName();
    if (device.match(name).hasMatch())
        return u"bu ad Windows'a ayrılmış"_s;
    if (name.contains(u':'))
        return unusableLetter.toString();
    if (name.size() > longestName) // which the system calls an unusable one
        return longName.toString();
    if (name.endsWith(u'.') || name.endsWith(u' '))
        return u"adın sonunda nokta ya da boşluk olamaz"_s;
#endif
    return {};
}

#ifdef Q_OS_WIN
std::wstring systemName(const QString &path)
{
    QString name = QDir::toNativeSeparators(QDir::cleanPath(QFileInfo(path).absoluteFilePath()));
    if (name.startsWith(u"\\\\"))
        name.replace(0, 1, u"\\\\?\\UNC"_s);
    else
        name.prepend(u"\\\\?\\");
    return name.toStdWString();
}
#endif

Failure fileFailure(const QString &path, const QString &step, const QString &why,
                    const QStringList &choices)
{
    const QString name = QDir::toNativeSeparators(path);
    return Failure::ofFile(u"%1 %2: %3"_s.arg(name, step, why),
                           u"%1, %2: %3"_s.arg(step.first(1).toUpper() + step.sliced(1), why, name),
                           choices);
}

} // namespace kervan
