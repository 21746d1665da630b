// SPDX-License-Identifier: MIT
#include <support/localtext.h>

#include <QStringList>

#ifdef Q_OS_WIN
#include <qt_windows.h>
#endif

QString throughLocal8Bit(const QString &text)
{
    return QString::fromLocal8Bit(text.toLocal8Bit());
}

QByteArray consoleBytes(QByteArray lines)
{
#ifdef Q_OS_WIN
    lines.replace('\n', "\r\n");
#endif
    return lines;
}

QByteArray wordsLine(const QStringList &words)
{
    const QString text = throughLocal8Bit(words.join(u' ')) + u' ';
    const QByteArray local = text.toLocal8Bit(), utf8 = text.toUtf8();
    return local + (local == utf8 ? QByteArray() : '(' + utf8 + ')') + '\n';
}

bool localIsShiftJis()
{
#ifdef Q_OS_WIN
    return GetACP() == 932;
#else
    return false;
#endif
}
