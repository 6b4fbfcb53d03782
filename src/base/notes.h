#pragma once

#include "base/failure.h"
#include "base/fields.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <QTime>

#include <optional>

namespace kervan {

/// What a screen tells without a box: what failed or is odd, in the order in which it came and none
/// in another's place, and the files that were written. It stands until the next read or write. The
/// field's text is all that failed in one line, each with its reason in front.
class Notes : public TextField
{
    Q_OBJECT

public:
    /// A file that a write left.
    struct Written
    {
        QString path;
        QString what; ///< how many of what: "12 fatura"
        QTime when;
        qsizetype count = 0;
    };

    /// A read or a write begins: what the one before left is gone.
    void begin();
    void add(const std::optional<Failure> &failed);
    /// An empty text is none.
    void add(const QString &text);
    /// One that an added text tells already.
    void setFailed() { m_hasFailed = true; }
    /// What failed before has been done since.
    void takeBack(const std::optional<Failure> &failed);
    /// A document was written with so many of what it holds, or failed.
    void addDocument(const QString &path, const QString &what, qsizetype count, QTime when,
                     const std::optional<Failure> &failed = std::nullopt);

    /// The whole of what failed, a line each.
    QString details() const { return m_details.join(u'\n'); }
    const QList<Written> &written() const { return m_written; }
    /// Whether a step of it ended in a Failure.
    bool hasFailed() const { return m_hasFailed; }

    /// Whether one of them was the fault of the place where a file was to be written.
    bool hasLackedPlace() const { return m_hasLackedPlace; }

    /// What there is instead of what failed, if that is known.
    const QStringList &choices() const { return m_choices; }

    /// The file that the screen holds, where no caption shows it.
    TextField source;

Q_SIGNALS:
    /// The user wants this one of the choices.
    void chosen(const QString &choice);

private:
    void tell(const QString &headline, const QString &details);

    QStringList m_headlines;
    QStringList m_details; // one to each headline
    QList<Written> m_written;
    QStringList m_choices;
    bool m_hasFailed = false;
    bool m_hasLackedPlace = false;
};

} // namespace kervan
