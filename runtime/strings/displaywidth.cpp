// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>
#include <runtime/strings/columns.h>

#include <algorithm>
#include <limits>

using namespace appruntime_internal;

namespace
{

/// Where a walk over a text stands.
struct Walk {
    qsizetype units{0};
    qint64 columns{0};

    /// Takes in the character that starts with this code unit; true when that is a high surrogate, which
    /// takes the next unit with it, whatever it is.
    bool step(QChar unit)
    {
        if (unit.isHighSurrogate()) {
            columns += 2;
            units += 2;
            return true;
        }
        if (!unit.isLowSurrogate())
            columns += isOneColumn(unit.unicode()) ? 1 : 2;
        ++units;
        return false;
    }
};

/// A text of more than a thousand million wide characters has the largest width there is.
int limited(qint64 value)
{
    return static_cast<int>(std::min<qint64>(value, std::numeric_limits<int>::max()));
}

/// Whether every surrogate of the piece has its other half.
bool isWellFormed(QStringView piece)
{
    const char16_t *const units = piece.utf16();
    const int count = static_cast<int>(piece.size());
    const auto isHigh = [](char16_t unit) {
        return (unit & 0xfc00) == 0xd800;
    };
    const auto isLow = [](char16_t unit) {
        return (unit & 0xfc00) == 0xdc00;
    };

    quint16 lone = isLow(units[0]) || isHigh(units[count - 1]) ? 1 : 0;
    for (int i = 0; i + 1 < count; ++i)
        lone = static_cast<quint16>(lone | (isHigh(units[i]) != isLow(units[i + 1]) ? 1 : 0));
    return lone == 0;
}

/// Code units of a piece: enough for the vector code to pay, and so few that a lone surrogate makes only its
/// surroundings slow.
constexpr qsizetype pieceLength = 1024;

/// Columns of a piece where every surrogate has its other half: each of the two counts as one column.
struct PieceColumns {
    int columns;
    bool hasSurrogates;
};

PieceColumns columnsOfPiece(QStringView piece)
{
    const char16_t *const units = piece.utf16();
    const int count = static_cast<int>(piece.size());
    quint16 narrow = 0, surrogates = 0;
    for (int i = 0; i < count; ++i) {
        narrow = static_cast<quint16>(narrow + (isOneColumn(units[i]) ? 1 : 0));
        surrogates = static_cast<quint16>(surrogates + ((units[i] & 0xf800) == 0xd800 ? 1 : 0));
    }
    return {2 * count - narrow - surrogates, surrogates != 0};
}

Q_NEVER_INLINE int columnsOfPieces(QStringView text)
{
    Walk walk;
    while (walk.units < text.size()) {
        qsizetype pieceEnd = std::min(walk.units + pieceLength, text.size());
        if (pieceEnd < text.size() && text[pieceEnd - 1].isHighSurrogate())
            ++pieceEnd;
        const QStringView piece = text.sliced(walk.units, pieceEnd - walk.units);
        const auto [columns, hasSurrogates] = columnsOfPiece(piece);
        if (!hasSurrogates || isWellFormed(piece)) {
            walk.columns += columns;
            walk.units = pieceEnd;
        }
        while (walk.units < pieceEnd)
            walk.step(text[walk.units]);
    }
    return limited(walk.columns);
}

Q_NEVER_INLINE int columnsWithSurrogates(QStringView piece, int columns)
{
    return isWellFormed(piece) ? columns : columnsOfPieces(piece);
}

/// Columns of the whole view. Most texts are one piece without surrogates. All else is behind a call that is
/// the last thing done: then this function saves no registers, which would take a fifth of its time.
int columnsOfText(QStringView text)
{
    if (text.size() > pieceLength)
        return columnsOfPieces(text);
    const auto [columns, hasSurrogates] = columnsOfPiece(text);
    return hasSurrogates ? columnsWithSurrogates(text, columns) : columns;
}

/// The walk up to a limit of columns, which a wide character may pass by one.
Walk walkTo(const AppRuntime &runtime, const QString &text, int columns)
{
    Walk walk;
    while (walk.units < text.size() && walk.columns < columns) {
        if (walk.step(text[walk.units]))
            continue;
        // By default nothing is of the class none. A program that gives another class its value joins those
        // characters to the one before them, at no column of their own.
        while (walk.units < text.size() && runtime.charClass(text[walk.units]) == runtime.charClassNone)
            ++walk.units;
    }
    walk.units = std::min(walk.units, text.size());
    return walk;
}

} // namespace

int AppRuntime::displayWidth(const QString &text) const
{
    return columnsOfText(text);
}

int AppRuntime::displayWidthOf(const QString &text, int units) const
{
    return units > 0 ? columnsOfText(QStringView(text).left(units)) : 0;
}

int AppRuntime::unitsForWidth(const QString &text, int columns) const
{
    return limited(walkTo(*this, text, columns).units);
}

bool AppRuntime::splitsWideChar(const QString &text, int columns) const
{
    const Walk walk = walkTo(*this, text, columns);
    // A negative limit takes in nothing, as 0 does, so nothing can be split.
    return walk.columns > std::max(columns, 0) && walk.units < text.size();
}

int AppRuntime::characterCount(const QString &text) const
{
    qint64 count = 0;
    for (qsizetype position = 0; position < text.size(); ++count) {
        const int kind = charClass(text[position]);
        if (kind == charClassHighSurrogate || kind == charClassLowSurrogate) {
            // Two also for a low surrogate without its high half; entry fields have always counted so.
            position += 2;
            continue;
        }
        // What is of the class none counts with the unit that follows it, or with the end of the text.
        while (position < text.size() && charClass(text[position]) == charClassNone)
            ++position;
        ++position;
    }
    return limited(count);
}
