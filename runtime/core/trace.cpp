// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>
#include <runtime/core/traceline.h>

#include <QCalendar>
#include <QDateTime>
#include <QFile>
#include <QStringConverter>
#include <QTextStream>

#include <cstdio>

using namespace appruntime_internal;
using namespace Qt::StringLiterals;

void AppRuntime::writeTrace(const QString &text) const
{
    // Through the C stream, so that what the program prints by other means keeps its place; as bytes, because
    // a text stream would encode them a second time.
    // By an encoder, as the local form is made: toUtf8() would write another substitute for a lone surrogate,
    // and a line in UTF-8 twice where UTF-8 is the local encoding.
    QStringEncoder utf8(QStringEncoder::Utf8, QStringEncoder::Flag::Stateless);
    const QByteArray line = traceLine(text.toLocal8Bit(), utf8(text));
    std::fwrite(line.constData(), 1, static_cast<size_t>(line.size()), stdout);
    std::fflush(stdout);
}

void AppRuntime::writeTraceTagged(int level, const QString &text) const
{
    if (level >= 3)
        return;
    writeTrace((level == 1 ? "AA/"_L1 : "/"_L1) + text);
}

QString AppRuntime::readConsoleLine() const
{
    // Unbuffered, a line is read byte by byte. Any read-ahead would be lost with this call's file object: a
    // pipe cannot take bytes back, and the line after this one may be meant for a program started next.
    QFile input;
    // GCOVR_EXCL_START: no toolkit so far refuses a number, not even that of a closed stream
    if (!input.open(0, QIODevice::ReadOnly | QIODevice::Unbuffered))
        return {};
    // GCOVR_EXCL_STOP
    return QTextStream(input.readLine()).readLine();
}

QString AppRuntime::formatTimestamp(const QDateTime &moment, int withSeparators) const
{
    const QStringView pattern = withSeparators != 0 ? u"yyyy-MM-dd HH:mm:ss.zzz" : u"yyyyMMddHHmmsszzz";
    QString stamp = moment.toString(pattern, QCalendar(QCalendar::System::Gregorian));
    // Newer versions of Qt put a sign before a year of five digits.
    return stamp.startsWith(u'+') ? stamp.sliced(1) : stamp;
}
