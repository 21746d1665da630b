// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

#include <QTest>

using namespace Qt::StringLiterals;

class ListsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void clearBytes();
    void clearCharacters();
    void clearNumbers();
    void clearUnsignedNumbers();
    void clearTexts();
    void clearReleasesTexts();
    void maxInt();

private:
    template<typename List> void clearAll(const List &elements);

    AppRuntime m_runtime{u"TEST"_s};
};

template<typename List> void ListsTest::clearAll(const List &elements)
{
    m_runtime.checkMessage = u"old"_s;
    m_runtime.lastError = u"error"_s;
    m_runtime.convertOk = true;

    // A list of its own: the buffer stays, with room to spare.
    List own;
    own.reserve(100);
    for (const auto &element : elements)
        own.append(element);
    const auto capacity = own.capacity();
    const auto *buffer = own.constData();
    QVERIFY(capacity >= 100);
    m_runtime.clear(own);
    QVERIFY(own.isEmpty());
    QCOMPARE(own.capacity(), capacity);
    QCOMPARE(own.constData(), buffer);

    // An empty one with room.
    m_runtime.clear(own);
    QVERIFY(own.isEmpty());
    QCOMPARE(own.capacity(), capacity);
    QCOMPARE(own.constData(), buffer);

    // An empty one that is shared stays shared.
    List emptyCopy = own;
    m_runtime.clear(emptyCopy);
    QVERIFY(emptyCopy.isSharedWith(own));
    QCOMPARE(emptyCopy.constData(), buffer);
    emptyCopy = List();

    // A shared one: the other owner keeps everything.
    for (const auto &element : elements)
        own.append(element);
    List shared = own;
    QVERIFY(shared.isSharedWith(own));
    m_runtime.clear(shared);
    QVERIFY(shared.isEmpty());
    QVERIFY(!shared.isSharedWith(own));
    QCOMPARE(shared.capacity(), capacity);
    QCOMPARE(own, elements);
    QCOMPARE(own.capacity(), capacity);
    QCOMPARE(own.constData(), buffer);
    shared.append(elements[0]);
    QCOMPARE(shared.size(), 1);
    QCOMPARE(own, elements);

    // One element, and none at all.
    List single = {elements[0]};
    m_runtime.clear(single);
    QVERIFY(single.isEmpty());
    List none;
    m_runtime.clear(none);
    QVERIFY(none.isEmpty());
    QCOMPARE(none.capacity(), List().capacity());

    QCOMPARE(m_runtime.checkMessage, u"old"_s);
    QCOMPARE(m_runtime.lastError, u"error"_s);
    QVERIFY(m_runtime.convertOk);
}

void ListsTest::clearBytes()
{
    clearAll(QList<quint8>{1, 0, 255});
}

void ListsTest::clearCharacters()
{
    clearAll(QList<QChar>{u'a', u'\0', u'漢'});
}

void ListsTest::clearNumbers()
{
    clearAll(QList<qint32>{1, 0, -1});
}

void ListsTest::clearUnsignedNumbers()
{
    clearAll(QList<quint32>{1, 0, 0xffffffffU});
}

void ListsTest::clearTexts()
{
    clearAll(QStringList{u"a"_s, u""_s, u"漢字"_s});
}

void ListsTest::clearReleasesTexts()
{
    const QString text = QString(10, u'x');
    QStringList list = {text};
    QVERIFY(!text.isDetached());
    m_runtime.clear(list);
    QVERIFY(text.isDetached());
}

void ListsTest::maxInt()
{
    QCOMPARE(m_runtime.maxInt(), 2147483647);
}

QTEST_GUILESS_MAIN(ListsTest)
#include "tst_lists.moc"
