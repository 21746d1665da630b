// SPDX-License-Identifier: MIT
#include <support/report.h>

#include <QFile>

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
        report.arguments.append(QString::fromLocal8Bit(parts.takeFirst()));
    report.directory = QString::fromLocal8Bit(parts.takeFirst());
    report.standardInput = QString::fromLatin1(parts.takeFirst());
    report.environment = parts;
    report.started = true;
    return report;
}
