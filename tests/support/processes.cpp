// SPDX-License-Identifier: MIT
#include <support/processes.h>

#include <QDir>
#include <QFile>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

qint64 peakKilobytes(qint64 pid)
{
    QFile status(u"/proc/%1/status"_s.arg(pid));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    static const QRegularExpression peak(u"VmHWM:\\s*(\\d+) kB"_s);
    return peak.match(QString::fromLatin1(status.readAll())).captured(1).toLongLong();
}

int openDescriptors()
{
    // The listing's own one is among them every time.
    return static_cast<int>(QDir(u"/proc/self/fd"_s).entryList(QDir::System | QDir::Files).size());
}
