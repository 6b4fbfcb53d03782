#pragma once

#include <QByteArray>
#include <QHash>

#include <memory>

struct zip;
struct zip_file;

namespace kervan {

/// The parts of a zip archive that is held in memory, each read from start to end.
class ZipPackage
{
public:
    static constexpr qint64 mostUnpacked = 1024LL * 1024 * 1024;    ///< bytes of a part of cells
    static constexpr qint64 mostUnpackedAside = 32LL * 1024 * 1024; ///< bytes of any other part
    /// How many times a part may unpack its packed size, once it is larger than a few megabytes.
    static constexpr qint64 highestRatio = 250;
    static constexpr qint64 ratioMattersFrom = 16LL * 1024 * 1024;

    /// `bytes` stay as they are while the package lives. A Failure tells a damaged archive.
    explicit ZipPackage(const QByteArray &bytes);
    /// A part's name as it is looked for: some programs write "\\" for "/", or other cases.
    static QByteArray plainName(QByteArray name) { return name.replace('\\', '/').toLower(); }

    /// One part while it is read.
    class Part
    {
    public:
        /// The next bytes, at most so many; 0 at the end. A Failure tells damage, protection or a
        /// part beyond the bounds.
        qsizetype read(char *to, qsizetype most);

    private:
        friend class ZipPackage;
        struct Close
        {
            void operator()(zip_file *file) const;
        };
        std::unique_ptr<zip_file, Close> m_file;
        qint64 m_most = 0;
        qint64 m_packed = 0;
        qint64 m_unpacked = 0;
    };

    bool has(const QByteArray &name) const { return m_places.contains(plainName(name)); }
    /// Opens the part of that name, in any case, for so many bytes; one that is missing is a
    /// Failure.
    Part open(const QByteArray &name, qint64 most) const;

private:
    struct Discard
    {
        void operator()(zip *archive) const;
    };
    std::unique_ptr<zip, Discard> m_archive;
    QHash<QByteArray, quint64> m_places; ///< in the archive, by name
};

} // namespace kervan
