// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>
#include <runtime/strings/columns.h>

using namespace appruntime_internal;

bool AppRuntime::isUpper(QChar character) const
{
    return character.isUpper();
}

bool AppRuntime::isLower(QChar character) const
{
    return character.isLower();
}

bool AppRuntime::isDigit(QChar character) const
{
    return character.isDigit();
}

bool AppRuntime::isLetter(QChar character) const
{
    return character.isLetter();
}

QChar AppRuntime::charUpper(QChar character) const
{
    return character.toUpper();
}

QChar AppRuntime::charLower(QChar character) const
{
    return character.toLower();
}

int AppRuntime::charClass(QChar character) const
{
    if (character.isLowSurrogate())
        return charClassLowSurrogate;
    if (character.isHighSurrogate())
        return charClassHighSurrogate;
    if (character >= firstHalfKana && character <= lastHalfKana)
        return charClassHalfKana;
    if (character < u'\u0080')
        return charClassNarrow;
    return charClassWide;
}

int AppRuntime::charClassAt(const QString &text, int pos) const
{
    const int from = qMax(pos, 0);
    return from < text.size() ? charClass(text[from]) : charClassNarrow;
}

int AppRuntime::charDisplayWidth(QChar character) const
{
    // By class and not by character: a program that gives two classes one value gets their widths with it.
    const int found = charClass(character);
    if (found == charClassLowSurrogate)
        return 0;
    if (found == charClassHighSurrogate)
        return 2;
    if (found == charClassHalfKana || found == charClassNarrow)
        return 1;
    return 2;
}

int AppRuntime::charUnitsAt(const QString &text, int pos) const
{
    const int from = qMax(pos, 0);
    if (charClassAt(text, from) == charClassHighSurrogate)
        return 2;
    if (from >= text.size())
        return 1;
    int next = from + 1;
    while (next < text.size() && charClass(text[next]) == charClassNone)
        ++next;
    return next - from;
}

bool AppRuntime::isTrailAt(const QString &text, int pos) const
{
    const int from = qMax(pos, 0);
    if (from >= text.size())
        return false;
    const int found = charClass(text[from]);
    return found == charClassLowSurrogate || found == charClassNone;
}
