#pragma once

#include <QLockFile>
#include <QString>

namespace kervan {

/// Lets one program at a time work in a program folder, for each user of the machine. Installations
/// in other folders are not concerned.
class InstanceLock
{
public:
    explicit InstanceLock(const QString &programFolder);

    /// False while another program holds it. A file that its program left behind, empty or not, is
    /// taken over; where no lock can be made at all there is none to wait for.
    bool take();
    QString path() const { return m_file.fileName(); }

private:
    QLockFile m_file;
};

} // namespace kervan
