// SPDX-License-Identifier: MIT
//
// Makes a tab-separated file of a comma-separated one, both in UTF-8, a record to a line.
//
//     csv_to_tsv prices.csv prices.tsv
//
// One line at a time is held, so that a file may be of any size.
#include <runtime/core/appruntime.h>

#include <QCoreApplication>
#include <QTextStream>

using namespace Qt::StringLiterals;

namespace
{

/// Takes one field list and one line through the whole file; after a few lines neither allocates any more.
qint64 convert(AppRuntime &runtime, TextReadChannel &in, TextWriteChannel &out)
{
    const QString csv = u"CSV"_s, tsv = u"TSV"_s;
    CsvRecord record;
    QStringList fields;
    QString line;
    qint64 records = 0;
    while (in.readLine() == 0) {
        runtime.splitRecord(fields, in.line, csv);
        line.resize(0);
        for (QString &field : fields) {
            field.replace(u'\t', u' '); // a tab always ends a field
            line += runtime.csvField(record, field, tsv) + record.separator;
        }
        line.chop(record.separator.size());
        out.writeLine(line);
        ++records;
    }
    return records;
}

} // namespace

int main(int argc, char **argv)
{
    int qtArgc = 1; // Qt sees the program's name only, the runtime every argument
    const QCoreApplication application(qtArgc, argv);
    AppRuntime runtime(u"CSVTSV"_s, argc, argv);
    const QStringList &words = *runtime.arguments;
    if (runtime.count(words) != 2 || words[0] == words[1]) {
        runtime.writeTrace(u"csv_to_tsv FROM TO"_s);
        return 2;
    }

    TextReadChannel in(&runtime);
    TextWriteChannel out(&runtime);
    if (!in.openRead(words[0], u"UTF-8"_s) || !out.openWrite(words[1], u"OT"_s, u"UTF-8"_s)) {
        runtime.writeTrace(runtime.lastError);
        return 1;
    }
    const qint64 records = convert(runtime, in, out);
    out.stream->flush();
    if (out.stream->status() != QTextStream::Ok) { // a full disk shows nowhere else
        runtime.writeTrace(u"could not write everything to "_s + words[1]);
        return 1;
    }
    runtime.writeTrace(runtime.groupThousands(QString::number(records)) + u" records"_s);
    return 0;
}
