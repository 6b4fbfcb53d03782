#pragma once

#include <QString>
#include <QStringList>

#include <optional>
#include <utility>

namespace kervan {

class Boxes;

/// A step that could not be carried out. Thrown by steps (file, query, missing row, conversion),
/// caught only by the three modes below, so that a search for it lists every swallowed failure.
class Failure
{
public:
    explicit Failure(QString description, QString headline = {}, QStringList choices = {})
        : m_description(std::move(description))
        , m_headline(std::move(headline))
        , m_choices(std::move(choices))
    {
    }
    /// What went wrong, in words for the user: names the file, statement, line or value.
    const QString &description() const { return m_description; }
    /// The same for a line that may be cut short: the reason before the path.
    const QString &headline() const { return m_headline.isEmpty() ? m_description : m_headline; }
    /// What there is instead of what was asked for, such as other sheets of a workbook.
    const QStringList &choices() const { return m_choices; }
    /// Whether a file as a whole is what failed, and no value in it.
    bool isOfFile() const { return m_isOfFile; }
    /// Whether the place is at fault that was to take a file, and not what was to be written: a
    /// full disk, a share that is away.
    bool isOfPlace() const { return m_isOfPlace; }
    void setOfPlace(bool isOfPlace) { m_isOfPlace = isOfPlace; }

    /// The same as one of a file.
    static Failure ofFile(QString description, QString headline, QStringList choices = {})
    {
        Failure failure(std::move(description), std::move(headline), std::move(choices));
        failure.m_isOfFile = true;
        return failure;
    }

private:
    QString m_description;
    QString m_headline;
    QStringList m_choices;
    bool m_isOfFile = false;
    bool m_isOfPlace = false;
};

/// Carries out one step; a failure of it is passed over and given back, and the caller goes on.
template<class Step>
std::optional<Failure> passOver(Step &&step)
{
    try {
        std::forward<Step>(step)();
        return std::nullopt;
    } catch (const Failure &failure) {
        return failure;
    }
}

/// Carries out steps up to the first failure, which ends them without a word. Gives it back.
template<class Steps>
std::optional<Failure> endQuietly(Steps &&steps)
{
    return passOver(std::forward<Steps>(steps));
}

/// Shows the description in a plain box: no icon, the program's name for a title.
void report(Boxes &boxes, const Failure &failure);

/// Carries out steps up to the first failure, which is then reported. Gives it back.
template<class Steps>
std::optional<Failure> endWithReport(Boxes &boxes, Steps &&steps)
{
    auto failed = passOver(std::forward<Steps>(steps));
    if (failed)
        report(boxes, *failed);
    return failed;
}

} // namespace kervan
