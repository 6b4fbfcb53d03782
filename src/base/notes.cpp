#include "base/notes.h"

namespace kervan {

using namespace Qt::StringLiterals;

void Notes::begin()
{
    m_headlines.clear();
    m_details.clear();
    m_text.clear();
    m_written.clear();
    m_choices.clear();
    m_hasFailed = false;
    m_hasLackedPlace = false;
    Q_EMIT changed();
}

void Notes::add(const std::optional<Failure> &failed)
{
    if (!failed)
        return;
    m_hasFailed = true;
    m_hasLackedPlace = m_hasLackedPlace || failed->isOfPlace();
    if (!failed->choices().isEmpty())
        m_choices = failed->choices();
    tell(failed->headline(), failed->description());
}

void Notes::add(const QString &text)
{
    if (!text.isEmpty())
        tell(text, text);
}

// Steps that meet the same fault tell it once.
void Notes::tell(const QString &headline, const QString &details)
{
    if (m_details.contains(details))
        return;
    m_details << details;
    m_headlines << headline;
    m_text = m_headlines.join(u" • "_s);
    Q_EMIT changed();
}

void Notes::takeBack(const std::optional<Failure> &failed)
{
    const qsizetype place = failed ? m_details.indexOf(failed->description()) : -1;
    if (place < 0)
        return;
    m_details.removeAt(place);
    m_headlines.removeAt(place);
    m_text = m_headlines.join(u" • "_s);
    Q_EMIT changed();
}

void Notes::addDocument(const QString &path, const QString &what, qsizetype count, QTime when,
                        const std::optional<Failure> &failed)
{
    if (failed)
        return add(failed);
    m_written << Written{path, u"%1 %2"_s.arg(count).arg(what), when, count};
    Q_EMIT changed();
}

} // namespace kervan
