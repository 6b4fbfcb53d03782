#pragma once

#include "base/ports.h"

#include <functional>

namespace kervan {

/// A box as a line: its title, its text without line ends.
QString lineOf(const Box &box);

/// Boxes of a program without a window: each is told as one line in its order, and nobody is waited
/// for. A question is answered by what was said beforehand.
class LineBoxes : public Boxes
{
public:
    explicit LineBoxes(bool yes = false)
        : m_yes(yes)
    {
    }
    /// Where the lines go from now on; those before are forgotten.
    void setTell(std::function<void(const QString &line)> tell);
    void setYes(bool yes) { m_yes = yes; }

    void show(const Box &box) override;
    bool ask(const Box &box) override;
    /// The lines so far that are worth a look: all but those that a document is done.
    const QStringList &warnings() const { return m_warnings; }

private:
    std::function<void(const QString &line)> m_tell;
    bool m_yes;
    QStringList m_warnings;
};

/// File dialogs that are answered beforehand. A source is handed to the screen itself, so only a
/// target is ever asked for.
class GivenNames : public FileDialogs
{
public:
    std::optional<QString> target;

    std::optional<QString> openName(const FileQuestion &) override { return std::nullopt; }
    std::optional<QString> saveName(const FileQuestion &) override { return target; }
    std::optional<QString> anyName(const FileQuestion &) override { return std::nullopt; }
};

} // namespace kervan
