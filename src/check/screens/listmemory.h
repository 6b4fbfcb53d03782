#pragma once

#include "check/rememberedticks.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

class QWidget;

namespace kervan {

class LinkButton;

/// What a transfer held when it was closed, for as long as the program runs.
struct LastList
{
    QString path;                              ///< of the source
    int way = 0;                               ///< which of its reads read it, where it has several
    QList<std::pair<QString, QString>> before; ///< choices by their controls' names
    QList<std::pair<QString, QString>> after;  ///< those that a list must be there for
    QList<std::pair<RememberedTicks, int>> ticks; ///< of each list, and how many there are
};

/// Brings the list back that a transfer window had when it was closed last: the choices, the file
/// and the ticks, by what the user's own picks do. It is offered on the empty list and done when
/// the user wants it.
class ListMemory : public QObject
{
    Q_OBJECT

public:
    /// The choices are given by their controls' names, in the order in which they are made before
    /// and after the file is read.
    ListMemory(QWidget *window, QStringList before, QStringList after = {});

    /// A list whose ticks come back.
    void add(Grid &rows, std::function<ListShape()> shape);
    /// Which file the screen holds, and by which of its reads; empty without one.
    void setFile(std::function<QString()> file, std::function<int()> way = nullptr);
    /// Reads a file; without it, it is dropped on the window.
    void setRead(std::function<void(const QString &path, int way)> read);

    /// What there is to bring back; nothing without a file and a list.
    std::optional<LastList> take() const;
    /// Offers it where the list is still empty.
    void offer(const LastList &last);

private:
    struct List
    {
        Grid *rows;
        std::function<ListShape()> shape;
    };
    void bringBack();

    QWidget *m_window;
    QStringList m_before, m_after;
    QList<List> m_lists;
    std::function<QString()> m_file;
    std::function<int()> m_way;
    std::function<void(const QString &path, int way)> m_read;
    LastList m_last;
    LinkButton *m_link = nullptr; // while it is offered
};

} // namespace kervan
