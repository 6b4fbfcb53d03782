#pragma once

#include <QByteArray>
#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>

#include <list>

namespace kervan {

/// One value of an initialisation file (sections in brackets, key=value lines; names compared
/// without case). Empty if file, section or key is missing; cut to 255 characters; a pair of
/// quotes around the value is dropped.
QString inioku(const QString &section, const QString &key, const QString &path);

/// Sets one value of an initialisation file, which is created if missing; its other lines keep
/// their text, and the file is Windows-1254 with CR LF from then on. Always 0, whatever happened.
int iniyaz(const QString &section, const QString &key, const QString &value, const QString &path);

/// An initialisation file for whoever reads and sets many values: what they get and what is stored
/// is as if each went to the disk by itself, but the file is read once and written once, and a step
/// costs the same however many lines there are.
class IniFile
{
public:
    explicit IniFile(const QString &path);
    IniFile(const IniFile &) = delete;
    IniFile &operator=(const IniFile &) = delete;

    /// As inioku gives it.
    QString value(const QString &section, const QString &key);
    /// As iniyaz sets it, in memory. Of a file that can't be read nothing changes.
    void set(const QString &section, const QString &key, const QString &value);
    /// Writes the file if a value was set; whether what was set is on the disk.
    bool save();

private:
    using Lines = std::list<QString>;
    struct Section
    {
        Lines::iterator last; // of its lines with a text; what is new comes behind it
        QHash<QString, Lines::iterator> keys;
    };

    QByteArray bytes() const;
    void readAgain();
    void index();
    Section *sectionOf(const QString &name);
    void take(Section &section, Lines::iterator line);
    void insert(const QString &name, Section &section, const QString &line);

    QString m_path;
    Lines m_lines;
    QByteArray m_bytes;                 // that would be on the disk, where they are known
    QHash<QString, Section> m_sections; // the first of each name
    QSet<QString> m_unsure;             // names of which another one may have become the first
    bool m_isReadable = false;
    bool m_isIndexed = false;
    bool m_isPlain = false; // what is in memory is what would be read back
    bool m_isChanged = false;
};

} // namespace kervan
