#pragma once

#include <QApplication>

#include <functional>

namespace kervan {

/// The application with a net below all its events: an exception that no procedure has caught (no
/// memory is left, or a fault of the program's own) ends what was being done, is told, and the
/// program lives on.
class NettedApplication : public QApplication
{
public:
    using QApplication::QApplication;

    /// Takes a sentence for the user: what was being done, and what went wrong. While nobody takes
    /// it, an exception ends the program and leaves its report.
    void tellBy(std::function<void(const QString &sentence)> tell) { m_tell = std::move(tell); }

    bool notify(QObject *receiver, QEvent *event) override;

private:
    void told(const QObject *receiver, const QString &what) const noexcept;

    std::function<void(const QString &)> m_tell;
};

} // namespace kervan
