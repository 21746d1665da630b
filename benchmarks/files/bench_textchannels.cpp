// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

#include <benchmark/benchmark.h>

#include <QFile>
#include <QTemporaryDir>
#include <QTextStream>

using namespace Qt::StringLiterals;

namespace
{

constexpr int lineCount = 100'000;

QStringList numbered(const QString &pattern)
{
    QStringList lines;
    for (int i = 0; i < lineCount; ++i)
        lines.append(pattern.arg(i, 7, 10, QChar(u'0')));
    return lines;
}

/// The lines to write: short ASCII ones for 0, records of a table of addresses for 1.
const QStringList &linesOf(benchmark::State &state)
{
    static const QStringList ascii = numbered(u"%1,customer,OPEN"_s);
    static const QStringList japanese
        = numbered(u"01101,\"060  \",\"%1\",\"ﾎﾂｶｲﾄﾞｳ\",\"ｻﾂﾎﾟﾛｼﾁﾕｳｵｳｸ\",\"北海道\",\"札幌市中央区\",0,1"_s);
    state.SetLabel(state.range(0) == 0 ? "ASCII" : "Japanese");
    return state.range(0) == 0 ? ascii : japanese;
}

QString pathOf(const QString &name)
{
    static const QTemporaryDir directory;
    return directory.filePath(name);
}

/// A file that holds the lines.
QString fileOf(benchmark::State &state)
{
    QString name = pathOf(u"in%1.txt"_s.arg(state.range(0)));
    QFile file(name);
    if (file.open(QIODevice::WriteOnly))
        file.write((linesOf(state).join(u'\n') + u'\n').toUtf8());
    return name;
}

/// The work of one iteration, for the figures per second.
void setCounts(benchmark::State &state, const QString &name)
{
    state.SetItemsProcessed(state.iterations() * lineCount);
    state.SetBytesProcessed(state.iterations() * QFile(name).size());
}

void channelReads(benchmark::State &state)
{
    const QString name = fileOf(state);
    AppRuntime runtime(u"BENCH"_s);
    for (auto _ : state) {
        TextReadChannel channel(&runtime);
        channel.openRead(name, u"UTF-8"_s);
        while (channel.readLine() == 0)
            benchmark::DoNotOptimize(channel.line.constData());
    }
    setCounts(state, name);
}
BENCHMARK(channelReads)->Arg(0)->Arg(1);

void textStreamReads(benchmark::State &state)
{
    const QString name = fileOf(state);
    for (auto _ : state) {
        QFile file(name);
        if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
            state.SkipWithError("no file");
        QTextStream stream(&file);
        QString line;
        while (stream.readLineInto(&line))
            benchmark::DoNotOptimize(line.constData());
    }
    setCounts(state, name);
}
BENCHMARK(textStreamReads)->Arg(0)->Arg(1);

void channelWrites(benchmark::State &state)
{
    const QStringList &lines = linesOf(state);
    const QString name = pathOf(u"out.txt"_s);
    AppRuntime runtime(u"BENCH"_s);
    for (auto _ : state) {
        TextWriteChannel channel(&runtime);
        channel.openWrite(name, u"OT"_s, u"UTF-8,U"_s);
        for (const QString &line : lines)
            channel.writeLine(line);
    }
    setCounts(state, name);
}
BENCHMARK(channelWrites)->Arg(0)->Arg(1);

void textStreamWrites(benchmark::State &state)
{
    const QStringList &lines = linesOf(state);
    const QString name = pathOf(u"out.txt"_s);
    for (auto _ : state) {
        QFile file(name);
        if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
            state.SkipWithError("no file");
        QTextStream stream(&file);
        for (const QString &line : lines)
            stream << line << u'\n';
    }
    setCounts(state, name);
}
BENCHMARK(textStreamWrites)->Arg(0)->Arg(1);

} // namespace
