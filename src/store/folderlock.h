#pragma once

#include <QLockFile>
#include <QString>

#include <chrono>
#include <memory>

namespace kervan {

/// Keeps the windows of a program folder and the command apart, whoever runs them and on whichever
/// machine: counters and side files are theirs one at a time. Windows of several users don't
/// exclude each other. Each holds a file of its own in the folder, and looks for those of the other
/// kind behind that, so that of two that start together at least one steps back.
class FolderLock
{
public:
    enum class Who { Window, Command };

    FolderLock(QString programFolder, Who who);
    ~FolderLock() { release(); }
    FolderLock(const FolderLock &) = delete;
    FolderLock &operator=(const FolderLock &) = delete;

    /// False when the other kind still holds the folder after so long a time. A folder in which no
    /// file can be made is held by nobody.
    bool take(std::chrono::milliseconds patience = std::chrono::milliseconds(0));
    void release();
    /// Whether, once taken, nobody else has the folder: neither the other kind nor other windows.
    bool isAlone() const;
    /// The file that stood in the way at the last try.
    const QString &holder() const { return m_holder; }

private:
    bool takeNow();

    QString m_folder;
    Who m_who;
    std::unique_ptr<QLockFile> m_file;
    QString m_holder;
};

} // namespace kervan
