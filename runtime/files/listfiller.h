// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>
#include <QStringView>

#include <algorithm>
#include <utility>

namespace appruntime_internal
{

/// Fills a list with parts of a text, from its first element on, and writes into the texts that it finds
/// there.
///
/// A program splits line after line into one list. Where the texts of the line before have room, nothing is
/// allocated; that is most of what splitting costs. A text that somebody else holds too is left to him. So is
/// the text that is being split, which may be an element of the list: it is held here.
class ListFiller
{
public:
    ListFiller(QStringList &list, QString text)
        : m_list(list)
        , m_text(std::move(text))
    {
        // Detaching would share every text with the list's other owner, and none could be written into.
        if (!m_list.isDetached())
            m_list = QStringList();
        m_texts = m_list.data();
        m_room = m_list.size();
    }

    /// The text to split.
    [[nodiscard]] QStringView text() const
    {
        return m_text;
    }

    /// Makes the part the next element, which stays good until the next call.
    QString &add(QStringView part)
    {
        if (m_used == m_room)
            return grow(part);
        QString &element = m_texts[m_used++];
        if (element.size() != part.size())
            element.resize(part.size());
        std::copy(part.begin(), part.end(), element.data());
        return element;
    }

    /// Drops what is left of the list's former elements.
    void finish()
    {
        if (m_used < m_room)
            m_list.resize(m_used);
    }

private:
    QString &grow(QStringView part)
    {
        m_list.append(part.toString());
        m_texts = m_list.data();
        m_room = m_list.size();
        return m_texts[m_used++];
    }

    QStringList &m_list;
    const QString m_text;
    QString *m_texts{nullptr};
    qsizetype m_room{0};
    qsizetype m_used{0};
};

} // namespace appruntime_internal
