// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>
#include <runtime/strings/utf8.h>

using namespace appruntime_internal;

QByteArray appruntime_internal::utf8Of(const QString &text)
{
    // Most texts hold no surrogate. To find that out costs little, because the compiler takes many units at
    // once: the loop has no branch, and its result is as wide as a unit.
    ushort surrogates = 0;
    for (const QChar unit : text)
        surrogates |= static_cast<ushort>((unit.unicode() & 0xf800) == 0xd800);
    if (surrogates == 0)
        return text.toUtf8();

    QString valid = text;
    QChar *const end = valid.data() + valid.size();
    for (QChar *unit = valid.data(); unit != end; ++unit) {
        if (unit->isHighSurrogate() && unit[1].isLowSurrogate()) // a NUL is behind the last unit
            ++unit;
        else if (unit->isSurrogate())
            *unit = u'?';
    }
    return valid.toUtf8();
}

void AppRuntime::setText(QString &target, const char *text) const
{
    target = QString::fromUtf8(text);
}

QString AppRuntime::mid(const QString &text, int pos, int len) const
{
    return text.mid(qMax(pos, 0), qMax(len, 0)); // an own clamp: -1 is "all that follows" there
}

QString AppRuntime::mid(const char *text, int pos, int len) const
{
    return mid(QString::fromUtf8(text), pos, len);
}

QString AppRuntime::midFrom(const QString &text, int pos) const
{
    return text.mid(qMax(pos, 0));
}

int AppRuntime::length(const QString &text) const
{
    return static_cast<int>(text.size());
}

QChar AppRuntime::charAt(const QString &text, int pos) const
{
    const int from = qMax(pos, 0);
    return from < text.size() ? text[from] : QChar(u' ');
}

int AppRuntime::charCode(QChar character) const
{
    return character.unicode();
}

QString AppRuntime::charText(QChar character) const
{
    return QString(character);
}

QString AppRuntime::fromChars(const QChar *chars, int count) const
{
    return QString(chars, qMax(count, 0)); // a negative size would look for a NUL character
}

QString AppRuntime::fromUtf8(const QByteArray &bytes) const
{
    return QString::fromUtf8(bytes);
}

QByteArray AppRuntime::toUtf8(const QString &text) const
{
    return utf8Of(text);
}
