// SPDX-License-Identifier: MIT
#pragma once

#include <runtime/strings/copyunits.h>

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
        copyUnits(part, element.data());
        return element;
    }

private:
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

/// The bits of the units that are the wanted one, without those of the first `seen` units. The first loop has
/// no branch, so that a compiler makes vector code of it.
inline BlockBits bitsOf(QChar wanted, const QChar *block, qsizetype seen)
{
    std::array<quint8, blockSize> found;
    for (size_t i = 0; i < found.size(); ++i)
        found[i] = block[i] == wanted ? 1 : 0;

    quint64 bits = 0;
    for (int i = 0; i < blockSize; i += 8) {
        // The product has the lowest bits of the eight bytes side by side in its highest byte.
        const auto eight = qFromLittleEndian<quint64>(found.data() + i);
        bits |= (eight * 0x0102040810204080 >> 56) << i;
    }
    return static_cast<BlockBits>(bits >> seen);
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
/// Each part goes through `addPart(filler, part, mayHavePair)`, which adds one text. The last argument is
/// false where no two quotes stand side by side in the part. The text to split may be an element of the list.
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
    struct Block {
        BlockBits ends;  // of parts
        BlockBits pairs; // the second quotes of each two side by side
    };
    const QStringView whole = held.isNull() ? text : held;
    BlockBits inQuotes = 0; // all bits are set where the block begins inside quotes
    BlockBits endsInQuote = 0;
    const auto blockAt = [&](qsizetype position) {
        const QChar *units = whole.data() + position;
        const qsizetype left = whole.size() - position;
        qsizetype seen = 0;
        std::array<QChar, blockSize> rest;
        if (left < blockSize && whole.size() < blockSize) {
            std::copy_n(units, left, rest.begin());
            units = rest.data();
        } else if (left < blockSize) {
            seen = blockSize - left; // no copy: the block begins in the one before
            units -= seen;
        }

        Block block{bitsOf(separator, units, seen), 0};
        if (quote) {
            const BlockBits quotes = bitsOf(*quote, units, seen);
            block.pairs = quotes & (quotes << 1 | endsInQuote);
            endsInQuote = quotes >> (blockSize - 1);
            // Each bit becomes the parity of the quotes up to it.
            BlockBits parity = quotes;
            for (int shift = 1; shift < blockSize; shift *= 2)
                parity ^= parity << shift;
            block.ends &= ~(parity ^ inQuotes);
            inQuotes ^= 0 - (parity >> (blockSize - 1));
        }
        if (left < blockSize) {
            const BlockBits behind = BlockBits(1) << left; // ends the last part, in quotes or not
            block.ends = (block.ends & (behind - 1)) | behind;
        }
        return block;
    };

    qsizetype start = 0;
    bool hasPair = false;
    Block next = blockAt(0);
    for (qsizetype position = 0; position <= whole.size(); position += blockSize) {
        // A block ahead: a processor then looks at the next one while it copies the parts of this one.
        Block block = next;
        if (position + blockSize <= whole.size())
            next = blockAt(position + blockSize);
        hasPair = hasPair || block.pairs != 0;
        for (; block.ends != 0; block.ends &= block.ends - 1) {
            const qsizetype end = position + std::countr_zero(block.ends);
            addPart(filler, whole.sliced(start, end - start), hasPair);
            start = end + 1;
            hasPair = block.pairs != 0;
        }
    }
}

} // namespace appruntime_internal
