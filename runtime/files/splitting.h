// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>
#include <QStringView>
#include <QtEndian>

#include <algorithm>
#include <array>
#include <bit>
#include <functional>
#include <optional>

namespace appruntime_internal
{

/// Makes texts the content of a list, and writes into the texts that it finds there.
///
/// A program splits line after line into one list. Where the texts of the line before have room, nothing is
/// allocated; allocating is most of what splitting costs. Texts and lists that have another owner too are not
/// modified. The destructor drops the elements that nothing was written into.
class ListFiller
{
public:
    explicit ListFiller(QStringList &list)
        : m_list(list)
    {
        // Detaching would share every text with the list's other owner, and none could be written into.
        if (!m_list.isDetached())
            m_list = QStringList();
        m_next = m_list.data();
        m_end = m_next + m_list.size();
    }

    ~ListFiller()
    {
        if (m_next != m_end)
            m_list.resize(m_next - m_list.constData());
    }

    Q_DISABLE_COPY_MOVE(ListFiller)

    /// Makes the part the next element, which stays good until the next call.
    QString &add(QStringView part)
    {
        if (m_next == m_end)
            return append(part);
        QString &element = *m_next++;
        if (element.size() != part.size())
            element.resize(part.size());
        copyUnits(part.begin(), part.size(), element.data());
        return element;
    }

private:
    /// Most parts are so short that calling memcpy() takes longer than copying.
    static void copyUnits(const QChar *from, qsizetype count, QChar *to)
    {
        constexpr qsizetype atOnce = 8;
        if (count < atOnce) {
            for (qsizetype i = 0; i < count; ++i)
                to[i] = from[i];
            return;
        }
        for (qsizetype i = 0; i < count - atOnce; i += atOnce)
            std::copy_n(from + i, atOnce, to + i);
        std::copy_n(from + count - atOnce, atOnce, to + count - atOnce); // overlaps what is copied already
    }

    QString &append(QStringView part)
    {
        m_list.append(part.toString());
        m_next = m_end = m_list.data() + m_list.size();
        return m_list.back();
    }

    QStringList &m_list;
    QString *m_next;
    QString *m_end;
};

/// One bit for each unit of a block, the lowest for the first unit.
using BlockBits = quint32;
constexpr int blockSize = 32;

/// The bits of the units that are the wanted one. The first loop has no branch, so that a compiler makes
/// vector code of it.
inline BlockBits bitsOf(QChar wanted, const QChar *block)
{
    std::array<quint8, blockSize> found;
    for (size_t i = 0; i < found.size(); ++i)
        found[i] = block[i] == wanted ? 1 : 0;

    BlockBits bits = 0;
    for (int i = 0; i < blockSize; i += 8) {
        // The product has the lowest bits of the eight bytes side by side in its highest byte.
        const auto eight = qFromLittleEndian<quint64>(found.data() + i);
        bits |= static_cast<BlockBits>(eight * 0x0102040810204080 >> 56) << i;
    }
    return bits;
}

/// Whether the text is an element of the list, which is about to be changed.
inline bool isElementOf(const QStringList &list, const QString &text)
{
    const std::less<> isBefore;
    return !isBefore(&text, list.constData()) && isBefore(&text, list.constData() + list.size());
}

/// Makes the parts of the text between the separators the content of the list. A separator counts only where
/// the quotes before it are even in number.
///
/// Each part goes through `addPart(filler, part, hasQuotePair)`, which adds one text. The text to split may
/// be an element of the list.
template<typename AddPart>
void splitInto(
    QStringList &list,
    const QString &text,
    QChar separator,
    std::optional<QChar> quote,
    const AddPart &addPart
)
{
    const QString held = isElementOf(list, text) ? text : QString();
    ListFiller filler(list);

    // In blocks, so that no branch depends on a single unit: nobody foresees where a part ends.
    const QStringView whole = held.isNull() ? text : held;
    qsizetype start = 0;
    BlockBits inQuotes = 0; // all bits are set where the block begins inside quotes
    BlockBits endsInQuote = 0;
    bool hasPair = false, isLast = false;
    for (qsizetype position = 0; !isLast; position += blockSize) {
        const QChar *block = whole.data() + position;
        const qsizetype left = whole.size() - position;
        std::array<QChar, blockSize> rest;
        isLast = left < blockSize;
        if (isLast) {
            std::copy_n(block, left, rest.begin());
            block = rest.data();
        }

        BlockBits ends = bitsOf(separator, block);
        BlockBits pairs = 0; // the second quotes of each two side by side
        if (quote) {
            const BlockBits quotes = bitsOf(*quote, block);
            pairs = quotes & (quotes << 1 | endsInQuote);
            endsInQuote = quotes >> (blockSize - 1);
            // Each bit becomes the parity of the quotes up to it.
            BlockBits parity = quotes;
            for (int shift = 1; shift < blockSize; shift *= 2)
                parity ^= parity << shift;
            ends &= ~(parity ^ inQuotes);
            inQuotes ^= 0 - (parity >> (blockSize - 1));
        }
        if (isLast) {
            const BlockBits behind = BlockBits(1) << left; // ends the last part, in quotes or not
            ends = (ends & (behind - 1)) | behind;
        }
        for (; ends != 0; ends &= ends - 1) {
            const BlockBits before = (ends - 1) & ~ends;
            const qsizetype end = position + std::countr_zero(ends);
            addPart(filler, whole.sliced(start, end - start), hasPair || (pairs & before) != 0);
            start = end + 1;
            hasPair = false;
            pairs &= ~before;
        }
        hasPair = hasPair || pairs != 0;
    }
}

} // namespace appruntime_internal
