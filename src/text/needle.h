#pragma once

#include <QString>

namespace kervan {

/// A text that is looked for in others without regard to case, by the Turkish letters: "I" is
/// "ı", and "İ" is "i", on every system.
class Needle
{
public:
    explicit Needle(QStringView text);

    /// An empty one is in nothing.
    bool isIn(QStringView text) const;

private:
    QString m_folded;
};

} // namespace kervan
