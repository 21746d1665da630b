// SPDX-License-Identifier: MIT
#include <support/report.h>

#include <QFile>

namespace
{

/// The helper writes what the system gave it: bytes in the local encoding, and on Windows UTF-8 for wide
/// text.
QString textOf(const QByteArray &bytes)
{
#ifdef Q_OS_WIN
    return QString::fromUtf8(bytes);
#else
    return QString::fromLocal8Bit(bytes);
#endif
}

} // namespace

Report readReport(const QString &fileName)
{
    Report report;
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return report;

    QByteArrayList parts = file.readAll().split('\0');
    parts.removeLast(); // behind the last NUL
    const qsizetype count = parts.takeFirst().toInt();
    for (qsizetype i = 0; i < count; ++i)
        report.arguments.append(textOf(parts.takeFirst()));
    report.directory = textOf(parts.takeFirst());
    report.standardInput = textOf(parts.takeFirst());
    for (const QByteArray &entry : std::as_const(parts))
        report.environment.append(textOf(entry));
    report.started = true;
    return report;
}
