#pragma once

#include <QDateTime>
#include <QString>

#include <optional>

namespace kervan {

enum class Icon { None, Information, Exclamation, Stop, Question };

/// What a modal box shows. An empty title stands for the program's own name.
struct Box
{
    QString text;
    QString title = {};
    Icon icon = Icon::None;
};

/// The only door to modal boxes.
class Boxes
{
public:
    virtual ~Boxes() = default;
    /// Shows the box until it is confirmed.
    virtual void show(const Box &box) = 0;
    /// Shows the box with Yes and No; true for Yes.
    virtual bool ask(const Box &box) = 0;
};

/// What a file dialog starts with. `start` is a folder or a full file name; `filter` is one
/// label and its patterns, as in "Bif Dosyaları (bif)|*.bif;*.txt".
struct FileQuestion
{
    QString title;
    QString filter;
    QString start;
};

/// The only door to file dialogs. All give the chosen full name, or nothing on cancel.
class FileDialogs
{
public:
    virtual ~FileDialogs() = default;
    virtual std::optional<QString> openName(const FileQuestion &question) = 0;
    virtual std::optional<QString> saveName(const FileQuestion &question) = 0;
    /// A file that need not be there, and that nothing is done with now.
    virtual std::optional<QString> anyName(const FileQuestion &question) = 0;
};

/// Local date and time of the moment.
class Clock
{
public:
    virtual ~Clock() = default;
    virtual QDateTime now() const = 0;
};

} // namespace kervan
