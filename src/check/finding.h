#pragma once

#include <QString>

namespace kervan {

enum class Level {
    Warning, ///< worth a look
    Error    ///< Logo will refuse it, or the sums will be wrong
};

/// One thing that a check has to say: of a row, or of the screen where `row` is -1.
struct Finding
{
    QString rule; ///< name of the rule: "birim", "çift numara"
    Level level = Level::Warning;
    QString text; ///< what is wrong, with the value
    QString cure; ///< what to do about it
    int row = -1;
    int column = -1;      ///< of the cell; -1 where it is the whole row
    QString control = {}; ///< object name of the control that leads there, without a row
    QString list = QStringLiteral("l1"); ///< the row's list

    bool operator==(const Finding &) const = default;
};

/// A definition that is missing, told once, with those who need it.
struct Gap
{
    QString kind;      ///< "Birim", "Personel", "Bayi fiyatı"
    QString code;      ///< what the source calls it
    QString name = {}; ///< what it is, where the source tells
    int lines = 0;
    int documents = 0;
    QString screen = {}; ///< word of the screen that gives it, as the frame opens it

    bool operator==(const Gap &) const = default;
};

} // namespace kervan
