// SPDX-License-Identifier: MIT
#include "startup.h"

#include <QByteArray>
#include <QtGlobal>

#include <cstdlib>
#include <exception>

namespace
{

/// Gives an environment variable another value for as long as it lives. The target gets it unchanged.
class TemporaryValue
{
public:
    TemporaryValue(const char *name, const char *value)
        : m_name(name)
        , m_wasSet(qEnvironmentVariableIsSet(name))
    {
        if (m_wasSet)
            m_before = qgetenv(name);
        qputenv(name, value);
    }
    ~TemporaryValue()
    {
        if (m_wasSet)
            qputenv(m_name, m_before);
        else
            qunsetenv(m_name);
    }
    Q_DISABLE_COPY_MOVE(TemporaryValue)

private:
    const char *m_name;
    bool m_wasSet;
    QByteArray m_before;
};

void dropMessage(QtMsgType type, const QMessageLogContext &, const QString &)
{
    if (type == QtFatalMsg)
        std::_Exit(0); // Qt would abort
}

/// Qt aborts at a warning when one of these variables says so. It looks at them at the first message of each
/// kind, and an empty value means no.
void neverAbort()
{
    constexpr const char *fatalWarnings = "QT_FATAL_WARNINGS", *fatalCriticals = "QT_FATAL_CRITICALS";
    if (qEnvironmentVariableIsSet(fatalWarnings) || qEnvironmentVariableIsSet(fatalCriticals)) {
        const TemporaryValue noWarnings(fatalWarnings, ""), noCriticals(fatalCriticals, "");
        qWarning("dropped");
        qCritical("dropped");
    }
}

} // namespace

void keepQuiet()
{
    prepareSystem();
    // Qt warns about a locale that is not UTF-8, among other things. Nobody reads it.
    qInstallMessageHandler(dropMessage);
    // When memory is so short that not even the trace can be written, nobody catches the exception.
    std::set_terminate([] { std::_Exit(0); });
    neverAbort();
}

Application makeApplication()
{
    static int argc = 1;
    static char name[] = "launcher";
    static char *argv[] = {name, nullptr};
    const TemporaryValue setting(applicationSetting.name, applicationSetting.value);
    return Application(argc, argv);
}
