#pragma once

#include "store/settings.h"

#include <QDialog>

class QGroupBox;

namespace kervan {

/// The window of a one-value dialog.
class ValueWindow : public QDialog
{
    Q_OBJECT

public:
    ValueWindow(Program &program, const ValueDialog &dialog, QWidget *parent = nullptr);

Q_SIGNALS:
    /// "Kaydet" was pressed with this value.
    void saved(const QString &value);

private:
    ValueSetting m_setting;
};

/// The window of the two exemption texts; not modal.
class KdvmuWindow : public QDialog
{
    Q_OBJECT

public:
    explicit KdvmuWindow(Program &program, QWidget *parent = nullptr);

Q_SIGNALS:
    void saved(const QString &head, const QString &line);

private:
    Kdvmu m_kdvmu;
};

/// The window of the file settings.
class AyrWindow : public QDialog
{
    Q_OBJECT

public:
    explicit AyrWindow(Program &program, QWidget *parent = nullptr);

private:
    /// Three settings, from the first on, of which `kind` tells a listener the sort.
    QGroupBox *frame(const QString &caption, const QString &kind, int first);

    Ayr m_ayr;
};

} // namespace kervan
