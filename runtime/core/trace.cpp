// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>
#include <runtime/core/console.h>
#include <runtime/core/traceline.h>

#include <QCalendar>
#include <QDateTime>
#include <QStringConverter>

using namespace appruntime_internal;
using namespace Qt::StringLiterals;

void AppRuntime::writeTrace(const QString &text) const
{
    // By an encoder, as the local form is made: toUtf8() would write another substitute for a lone surrogate,
    // and a line in UTF-8 twice where UTF-8 is the local encoding.
    QStringEncoder utf8(QStringEncoder::Utf8, QStringEncoder::Flag::Stateless);
    writeConsole(traceLine(text.toLocal8Bit(), utf8(text)));
}

void AppRuntime::writeTraceTagged(int level, const QString &text) const
{
    if (level >= 3)
        return;
    writeTrace((level == 1 ? "AA/"_L1 : "/"_L1) + text);
}

QString AppRuntime::readConsoleLine() const
{
    // Byte by byte. What was read beyond the line would be lost: a pipe cannot take bytes back, and the line
    // after this one may be meant for a program started next.
    QByteArray line;
    char byte = 0;
    while (readConsole(byte) && byte != '\n')
        line += byte;
    if (line.endsWith('\r'))
        line.chop(1);
    return QString::fromUtf8(line);
}

QString AppRuntime::formatTimestamp(const QDateTime &moment, int withSeparators) const
{
    const QStringView pattern = withSeparators != 0 ? u"yyyy-MM-dd HH:mm:ss.zzz" : u"yyyyMMddHHmmsszzz";
    QString stamp = moment.toString(pattern, QCalendar(QCalendar::System::Gregorian));
    // Newer versions of Qt put a sign before a year of five digits.
    return stamp.startsWith(u'+') ? stamp.sliced(1) : stamp;
}
