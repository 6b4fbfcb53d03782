#pragma once

#ifdef Q_OS_WIN
#include "base/filefault.h"

#include <QString>

#include <windows.h>

namespace kervan {

/// Another program at a file, which lets others do no more than `share` says.
class OpenElsewhere
{
public:
    explicit OpenElsewhere(const QString &path, DWORD share = 0)
        : m_file(CreateFileW(systemName(path).c_str(), GENERIC_READ | GENERIC_WRITE, share, nullptr,
                             OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr))
    {
        if (m_file == INVALID_HANDLE_VALUE)
            qFatal("not opened: %s", qPrintable(path));
    }
    ~OpenElsewhere() { CloseHandle(m_file); }
    OpenElsewhere(const OpenElsewhere &) = delete;
    OpenElsewhere &operator=(const OpenElsewhere &) = delete;

private:
    HANDLE m_file;
};

} // namespace kervan
#endif
