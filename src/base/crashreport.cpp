#include "base/crashreport.h"

#include "base/filefault.h"

#include <QCoreApplication>
#include <QDir>
#include <QSysInfo>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <span>
#include <string>

#ifdef Q_OS_WIN
#include <windows.h>
#else
#include <dlfcn.h>
#include <execinfo.h>
#include <fcntl.h>
#include <unistd.h>
#endif

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr int mostPlaces = 40;

// Made ready beforehand: a program that is crashing may not ask for memory.
#ifdef Q_OS_WIN
std::wstring reportPath;
QtMessageHandler messagesBefore = nullptr;
#else
std::string reportPath;
std::array<char, 65536> stack; // for a crash that has used up the program's own
#endif
std::string head;
std::array<char, 8192> report;

struct Text
{
    template<class... Values>
    void add(const char *form, Values... values)
    {
        const int added =
            std::snprintf(report.data() + size, report.size() - size, form, values...);
        size = std::min(size + static_cast<std::size_t>(std::max(added, 0)), report.size() - 1);
    }
    std::size_t size = 0;
};

const char *nameIn(const char *path)
{
    const char *slash = std::strrchr(path, '/');
    const char *back = std::strrchr(path, '\\');
    return std::max({path, slash ? slash + 1 : path, back ? back + 1 : path});
}

// A place as the file that holds it and the distance from its beginning, which the file's own
// build leads back to a line.
void addPlace(Text &text, const void *place)
{
#ifdef Q_OS_WIN
    HMODULE module = nullptr;
    std::array<char, MAX_PATH> file{};
    const char *at = static_cast<const char *>(place);
    if (!GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                                GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                            at, &module))
        return;
    GetModuleFileNameA(module, file.data(), MAX_PATH - 1);
    const auto distance = static_cast<std::size_t>(at - reinterpret_cast<const char *>(module));
    text.add("%s+0x%zx\r\n", nameIn(file.data()), distance);
#else
    Dl_info info{};
    if (!dladdr(place, &info) || !info.dli_fname)
        return;
    const auto distance = static_cast<std::size_t>(static_cast<const char *>(place) -
                                                   static_cast<const char *>(info.dli_fbase));
    text.add("%s+0x%zx\r\n", nameIn(info.dli_fname), distance);
#endif
}

void writeReport(const char *what, unsigned long number, std::span<void *const> places)
{
    Text text;
    text.add("%s%s 0x%lx\r\n", head.c_str(), what, number);
    for (const void *place : places)
        addPlace(text, place);
#ifdef Q_OS_WIN
    const HANDLE file = CreateFileW(reportPath.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    DWORD written = 0;
    if (file != INVALID_HANDLE_VALUE) {
        WriteFile(file, report.data(), static_cast<DWORD>(text.size), &written, nullptr);
        CloseHandle(file);
    }
#else
    const int file = open(reportPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    if (file >= 0) {
        [[maybe_unused]] const ssize_t written = write(file, report.data(), text.size);
        close(file);
    }
#endif
}

#ifdef Q_OS_WIN

// The callers of the place that failed, by the tables that the compiler left for exceptions.
LONG WINAPI onException(EXCEPTION_POINTERS *what)
{
    std::array<void *, mostPlaces> places{};
    std::size_t count = 0;
    CONTEXT at = *what->ContextRecord;
    while (count < places.size() && (at.Rip || count == 0)) {
        places[count++] = reinterpret_cast<void *>(at.Rip);
        DWORD64 base = 0;
        PRUNTIME_FUNCTION function = RtlLookupFunctionEntry(at.Rip, &base, nullptr);
        if (!function) {
            if (count > 1)
                break;
            // One that keeps nothing on the stack, or a jump to nowhere; the stack may be lost too.
            writeReport("exception", what->ExceptionRecord->ExceptionCode, {places.data(), count});
            at.Rip = *reinterpret_cast<const DWORD64 *>(at.Rsp);
            at.Rsp += sizeof(DWORD64);
            continue;
        }
        void *handler = nullptr;
        DWORD64 frame = 0;
        RtlVirtualUnwind(UNW_FLAG_NHANDLER, base, at.Rip, function, &at, &handler, &frame, nullptr);
    }
    writeReport("exception", what->ExceptionRecord->ExceptionCode, {places.data(), count});
    return EXCEPTION_CONTINUE_SEARCH;
}

void onAbort(int number)
{
    std::array<void *, mostPlaces> places{};
    const USHORT count = CaptureStackBackTrace(0, mostPlaces, places.data(), nullptr);
    writeReport("signal", static_cast<unsigned long>(number), {places.data(), count});
}

// Qt's own fatal end is neither an exception nor a signal there.
void onMessage(QtMsgType type, const QMessageLogContext &place, const QString &message)
{
    if (type == QtFatalMsg)
        onAbort(SIGABRT);
    messagesBefore(type, place, message);
}

#else

void onSignal(int number)
{
    std::array<void *, mostPlaces> places{};
    const int count = backtrace(places.data(), mostPlaces);
    writeReport("signal", static_cast<unsigned long>(number),
                {places.data(), static_cast<std::size_t>(count)});
    raise(number); // its own way again, by SA_RESETHAND
}

#endif

} // namespace

void reportCrashes(const QString &programFolder)
{
    const QString path = QDir(programFolder).filePath(crashReportName.toString());
    head = u"%1 %2, Qt %3, %4\r\n"_s
               .arg(QCoreApplication::applicationName(), QCoreApplication::applicationVersion(),
                    QLatin1String(qVersion()), QSysInfo::prettyProductName())
               .toStdString();
#ifdef Q_OS_WIN
    reportPath = systemName(path);
    ULONG kept = 64 * 1024; // of the stack, for a crash that has used it up
    SetThreadStackGuarantee(&kept);
    SetUnhandledExceptionFilter(onException);
    std::signal(SIGABRT, onAbort);
    if (const auto before = qInstallMessageHandler(onMessage); before != onMessage)
        messagesBefore = before;
#else
    reportPath = path.toLocal8Bit().toStdString();
    void *ready = nullptr;
    backtrace(&ready, 1); // loads now what it would load then
    stack_t own{};
    own.ss_sp = stack.data();
    own.ss_size = stack.size();
    sigaltstack(&own, nullptr);
    struct sigaction action
    {
    };
    action.sa_handler = onSignal;
    action.sa_flags = static_cast<int>(SA_ONSTACK | SA_RESETHAND);
    for (const int number : {SIGSEGV, SIGBUS, SIGILL, SIGFPE, SIGABRT})
        sigaction(number, &action, nullptr);
#endif
}

} // namespace kervan
