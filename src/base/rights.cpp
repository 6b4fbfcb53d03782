#include "base/rights.h"

#ifdef Q_OS_WIN

#include <QByteArray>

#include <io.h>
#include <windows.h>
// Needs the one above.
#include <aclapi.h>

#include <string>

namespace kervan {

namespace {

// A disk like that of a camera card takes rights without a word and forgets them.
bool keepsRights(const std::wstring &path)
{
    std::wstring volume(path.size() + 2, L'\0');
    DWORD flags = 0;
    return GetVolumePathNameW(path.c_str(), volume.data(), static_cast<DWORD>(volume.size())) &&
           GetVolumeInformationW(volume.c_str(), nullptr, 0, nullptr, nullptr, &flags, nullptr,
                                 0) &&
           (flags & FILE_PERSISTENT_ACLS);
}

// The name that an open file has at the moment; empty if the system doesn't tell.
std::wstring nameOf(int descriptor)
{
    auto *const file = reinterpret_cast<HANDLE>(_get_osfhandle(descriptor));
    std::wstring name(GetFinalPathNameByHandleW(file, nullptr, 0, 0), L'\0');
    name.resize(GetFinalPathNameByHandleW(file, name.data(), static_cast<DWORD>(name.size()), 0));
    return name;
}

// Empty if the system doesn't tell.
QByteArray currentUser()
{
    HANDLE token = nullptr;
    if (!OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &token))
        return {};
    DWORD size = 0;
    GetTokenInformation(token, TokenUser, nullptr, 0, &size);
    QByteArray user(static_cast<qsizetype>(size), '\0');
    const bool isTold = GetTokenInformation(token, TokenUser, user.data(), size, &size);
    CloseHandle(token);
    return isTold ? user : QByteArray();
}

} // namespace

bool keepToUser(int descriptor)
{
    std::wstring name = nameOf(descriptor);
    QByteArray user = currentUser();
    if (name.empty() || user.isEmpty() || !keepsRights(name))
        return false;
    EXPLICIT_ACCESSW all{};
    all.grfAccessPermissions = GENERIC_ALL;
    all.grfAccessMode = SET_ACCESS;
    all.Trustee.TrusteeForm = TRUSTEE_IS_SID;
    all.Trustee.TrusteeType = TRUSTEE_IS_USER;
    all.Trustee.ptstrName =
        static_cast<LPWSTR>(reinterpret_cast<TOKEN_USER *>(user.data())->User.Sid);
    PACL rights = nullptr;
    if (SetEntriesInAclW(1, &all, nullptr, &rights) != ERROR_SUCCESS)
        return false;
    const DWORD fault =
        SetNamedSecurityInfoW(name.data(), SE_FILE_OBJECT,
                              DACL_SECURITY_INFORMATION | PROTECTED_DACL_SECURITY_INFORMATION,
                              nullptr, nullptr, rights, nullptr);
    LocalFree(rights);
    return fault == ERROR_SUCCESS;
}

} // namespace kervan

#endif
