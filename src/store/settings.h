#pragma once

#include "base/fields.h"
#include "store/program.h"

#include <QList>
#include <QString>

#include <array>

namespace kervan {

/// A dialog for one value of the whole program, kept in a side file.
struct ValueDialog
{
    QString screen;
    QString caption;
    QString label;
    QString file;
};

/// `bankakodu`, `brmset` and `kskod`.
const QList<ValueDialog> &valueDialogs();
/// The one of a screen's word.
const ValueDialog &valueDialogOf(QStringView screen);

/// The procedures of a one-value dialog. No step shows its failure.
class ValueSetting
{
public:
    ValueSetting(Program &program, const ValueDialog &dialog);

    const ValueDialog &dialog() const { return m_dialog; }
    TextField kod;

    void yukle();
    void kaydet();

private:
    Program &m_program;
    const ValueDialog &m_dialog;
};

/// The two exemption texts.
class Kdvmu
{
public:
    explicit Kdvmu(Program &program)
        : m_program(program)
    {
    }

    TextField genel; ///< of the invoice head
    TextField satir; ///< of the invoice line

    void yukle();
    void kaydet();

private:
    Program &m_program;
};

/// The six file settings.
class Ayr
{
public:
    /// A setting: its column in `yol`, its control, and whether it is a source.
    struct Setting
    {
        QString column;
        QString control;
        QString label;
        bool isSource;
        QString Folders::*value;
    };
    static const std::array<Setting, 6> &settings();

    explicit Ayr(Program &program)
        : m_program(program)
    {
    }

    std::array<TextField, 6> fields; ///< in the order of settings()

    void yukle();
    /// Asks for a file for the setting; the field takes the name as it stands.
    void gozat(int setting);
    /// Writes the row and takes the values over for the running program, even if writing failed.
    void kaydet();

private:
    Program &m_program;
};

} // namespace kervan
