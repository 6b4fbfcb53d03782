#include "aktar/documentname.h"

#include "base/failure.h"
#include "transfer/target.h"

#include <QDir>
#include <QFileInfo>

#include <array>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr std::array<QStringView, 3> placeholders{u"{kaynak}", u"{tarih}", u"{saat}"};

bool isFolderAway(const QString &given)
{
    const QString name = QDir::fromNativeSeparators(given);
    const bool isOfDocument = name.isEmpty() || name.contains(u'{') || name.endsWith(u'/') ||
                              name.endsWith(u".xml"_s, Qt::CaseInsensitive);
    return !isOfDocument && !QFileInfo(name).isDir();
}

} // namespace

void checkDocumentName(QString given)
{
    for (const QStringView word : placeholders)
        given.remove(word.toString());
    if (given.contains(u'{') || given.contains(u'}'))
        throw Failure(u"--hedef içinde bilinmeyen bir { } var: %1. Olanlar: {kaynak}, {tarih}, "
                      "{saat}"_s.arg(given));
}

void checkFolderIsThere(const QString &given)
{
    if (isFolderAway(given))
        throw Failure(
            u"%1 klasörü yok ya da ulaşılamıyor. Belge adı verecekseniz .xml ile bitirin."_s.arg(
                QDir::toNativeSeparators(given)));
}

QString documentNameOf(const QString &given, const QString &source, const QDateTime &now)
{
    QString name = QDir::fromNativeSeparators(given);
    if (name.endsWith(u'/') || QFileInfo(name).isDir() || isFolderAway(given))
        name = QDir(name).filePath(placeholders[0].toString());
    name.replace(placeholders[1].toString(), now.toString(u"yyyyMMdd"_s));
    name.replace(placeholders[2].toString(), now.toString(u"HHmmss"_s));
    name.replace(placeholders[0].toString(), QFileInfo(source).completeBaseName());
    return xmlAdi(QDir::cleanPath(QFileInfo(name).absoluteFilePath()));
}

} // namespace kervan
