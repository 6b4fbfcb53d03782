#pragma once

#include "base/ports.h"

class QApplication;

namespace kervan {

/// Boxes on the screen. A text too long for a box of the desktop's size is shown in one that
/// scrolls. What was typed or clicked before a box came up is not for it, and is dropped.
class ScreenBoxes : public Boxes
{
public:
    void show(const Box &box) override;
    bool ask(const Box &box) override;
};

/// The file dialogs of the desktop; a relative start lies in the program folder. Saving starts in
/// the folder of its start with an empty name, and overwrites without a question: while the name
/// that is typed belongs to a file, the button says so.
class ScreenDialogs : public FileDialogs
{
public:
    explicit ScreenDialogs(QString programFolder)
        : m_folder(std::move(programFolder))
    {
    }
    std::optional<QString> openName(const FileQuestion &question) override;
    std::optional<QString> saveName(const FileQuestion &question) override;
    std::optional<QString> anyName(const FileQuestion &question) override;

private:
    QString m_folder;
};

/// Turkish texts for the library's own buttons and dialogs, where they are installed.
void speakTurkish(QApplication &application);

} // namespace kervan
