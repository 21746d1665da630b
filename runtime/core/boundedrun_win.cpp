// SPDX-License-Identifier: MIT
#include <runtime/core/boundedrun.h>

#include <QProcess>

#include <array>
#include <memory>
#include <vector>

#include <qt_windows.h>

using namespace appruntime_internal;
using namespace Qt::StringLiterals;

namespace
{

/// A job whose only process ends with this program: Windows closes the handles of a program that has ended,
/// however it ended.
///
/// Processes started from within the job do not belong to it, so what a program leaves behind lives on.
class Job
{
public:
    Job()
        : m_handle(CreateJobObjectW(nullptr, nullptr))
    {
        JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
        limits.BasicLimitInformation.LimitFlags
            = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE | JOB_OBJECT_LIMIT_SILENT_BREAKAWAY_OK;
        SetInformationJobObject(m_handle, JobObjectExtendedLimitInformation, &limits, sizeof limits);

        SIZE_T size = 0;
        InitializeProcThreadAttributeList(nullptr, 1, 0, &size);
        m_attributes.resize(size);
        m_startup.lpAttributeList = reinterpret_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(m_attributes.data());
        InitializeProcThreadAttributeList(m_startup.lpAttributeList, 1, 0, &size);
        UpdateProcThreadAttribute(
            m_startup.lpAttributeList,
            0,
            PROC_THREAD_ATTRIBUTE_JOB_LIST,
            &m_handle,
            sizeof m_handle,
            nullptr,
            nullptr
        );
    }
    ~Job()
    {
        DeleteProcThreadAttributeList(m_startup.lpAttributeList);
        CloseHandle(m_handle);
    }
    Q_DISABLE_COPY_MOVE(Job)

    /// Has the process made in the job. Put into it later, it could outlive us if we ended in between.
    void adopt(QProcess::CreateProcessArguments *arguments)
    {
        m_startup.StartupInfo = *arguments->startupInfo;
        m_startup.StartupInfo.cb = sizeof m_startup;
        arguments->startupInfo = &m_startup.StartupInfo;
        arguments->flags |= EXTENDED_STARTUPINFO_PRESENT;
    }

private:
    HANDLE m_handle;
    std::vector<char> m_attributes;
    STARTUPINFOEXW m_startup{};
};

} // namespace

void appruntime_internal::startTied(QProcess &process, const QString &program, const QStringList &arguments)
{
    // Windows completes the name by rules of its own. The process object keeps the job for as long as it
    // lives.
    process.setCreateProcessArgumentsModifier(
        [job = std::make_shared<Job>()](QProcess::CreateProcessArguments *created) { job->adopt(created); }
    );
    process.start(program, arguments, QIODevice::ReadWrite);
}

QString appruntime_internal::systemCommand(const QString &name)
{
    std::array<wchar_t, MAX_PATH> directory{};
    const UINT length = GetSystemDirectoryW(directory.data(), MAX_PATH);
    if (length == 0 || length >= MAX_PATH)
        return {};
    return QString::fromWCharArray(directory.data(), static_cast<qsizetype>(length)) + u'\\' + name
        + u".exe"_s;
}
