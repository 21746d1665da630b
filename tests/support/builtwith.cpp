// SPDX-License-Identifier: MIT
#include <support/builtwith.h>

QChar BuiltWith::platformChar()
{
    return BUILT_LETTER;
}

bool BuiltWith::windowsRules()
{
    return platformChar() == u'W';
}

QByteArray BuiltWith::banner()
{
    return windowsRules() ? "===( ZBASEWC.EXE )===\n" : "===( ZBASEUC )===\n";
}

QString BuiltWith::launcher()
{
    return QStringLiteral(BUILT_LAUNCHER);
}

QString BuiltWith::helper(const QString &name)
{
    return QStringLiteral(BUILT_HELPERS "/helper_") + name;
}

QString BuiltWith::fakes()
{
    return QStringLiteral(BUILT_FAKES);
}
