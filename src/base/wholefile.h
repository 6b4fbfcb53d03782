#pragma once

#include <QByteArray>
#include <QSaveFile>
#include <QString>

namespace kervan {

/// A file that is written whole or not at all: a full disk, a folder that can't be written or a
/// killed program leaves the old file as it was.
class WholeFile
{
public:
    explicit WholeFile(const QString &path);
    /// Lets its owner alone read the file, from before its first byte. Where the disk knows no
    /// rights, the file is written all the same, and then told as a Failure.
    void keepToOwner();
    void write(QByteArrayView bytes);
    /// Puts the new file in the old one's place. Any failure since the opening is told here, as a
    /// Failure that names the file.
    void commit();

private:
    template<class Step>
    void attempt(Step &&step);

    QSaveFile m_file;
    QString m_nameFault;
    bool m_fine;
    bool m_isKept = true; // to its owner
    int m_fault = 0;      // of the system, once it is no longer fine
};

} // namespace kervan
