// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

#include <QTest>

#include <atomic>
#include <cstdlib>
#include <functional>

// A sanitizer brings an allocator of its own, which must not be replaced.
#if defined(__SANITIZE_ADDRESS__)
#define REPLACED_ALLOCATOR
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define REPLACED_ALLOCATOR
#endif
#endif

// Only this C library has second names for its allocator, by which ours can pass each call on.
#if defined(__GLIBC__) && !defined(REPLACED_ALLOCATOR)
#define COUNTS_ALLOCATIONS
#endif

using namespace Qt::StringLiterals;

namespace
{

std::atomic<qint64> allocations{0};

constexpr int calls = 10'000;
constexpr qint64 mostAllocations = 10; // a text that grows to its size and stays there

/// A call that is to get along without the heap.
struct Call {
    const char *name;
    std::function<void()> once;
};

qint64 allocationsOf(const std::function<void()> &once)
{
    const qint64 before = allocations;
    for (int i = 0; i < calls; ++i)
        once();
    return allocations - before;
}

} // namespace

#ifdef COUNTS_ALLOCATIONS
// The names are the C library's, and so are the blocks: free() stays its own.
// NOLINTBEGIN(bugprone-reserved-identifier,readability-inconsistent-declaration-parameter-name)
extern "C" {
void *__libc_malloc(size_t size);
void *__libc_calloc(size_t count, size_t size);
void *__libc_realloc(void *block, size_t size);

void *malloc(size_t size)
{
    ++allocations;
    return __libc_malloc(size);
}

void *calloc(size_t count, size_t size)
{
    ++allocations;
    return __libc_calloc(count, size);
}

void *realloc(void *block, size_t size)
{
    ++allocations;
    return __libc_realloc(block, size);
}
}
// NOLINTEND(bugprone-reserved-identifier,readability-inconsistent-declaration-parameter-name)
#endif

/// What is called for every character, field or check of a program's day does without the heap.
class HeapCountTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void countsAllocations();
    void withoutHeap_data();
    void withoutHeap();

private:
    void fillCalls();

    AppRuntime m_runtime{u"TEST"_s};
    char m_noName[1] = "";
    char *m_noWords[2] = {m_noName, nullptr};
    AppRuntime m_scanning{u"TEST"_s, 1, m_noWords};
    const QString m_word = QString(u"北海道 Sapporo ｶﾅ 😀"_s).append(u'x');
    const QString m_long = m_word.repeated(10);
    const QString m_value = QString(u"VARCHA"_s).append(u'R');
    const QString m_number = QString(u"1234567"_s).append(u'8');
    const QString m_record = QString(u"0600000, \"say \"\"hi\"\"\" ,北海道,,x\ty"_s).append(u'z');
    const QStringList m_list{u"MSG_A"_s, u"MSG_B"_s, m_word};
    QStringList m_fields;
    QString m_text;
    CsvRecord m_csv;
    QList<Call> m_calls;
};

void HeapCountTest::fillCalls()
{
    const AppRuntime &r = m_runtime;
    AppRuntime &writing = m_runtime;
    m_calls = {
        {"count",
         [&] {
             (void)r.count(m_list);
         }},
        {"elementAt",
         [&] {
             (void)r.elementAt(m_list, 2);
         }},
        {"elementAt past the end",
         [&] {
             (void)r.elementAt(m_list, 3);
         }},
        {"isSameChar",
         [&] {
             (void)r.isSameChar(u'a', u'b');
         }},
        {"errorWord",
         [&] {
             (void)r.errorWord();
         }},
        {"isSafePathText",
         [&] {
             writing.isSafePathText(m_long);
         }},
        {"lineEnd",
         [&] {
             (void)r.lineEnd();
         }},
        {"normaliseEncodingName",
         [&] {
             writing.normaliseEncodingName(u"UTF-8"_s);
         }},

        {"isCsvKind",
         [&] {
             (void)r.isCsvKind(u"csv"_s);
         }},
        {"splitRecord by commas",
         [&] {
             r.splitRecord(m_fields, m_record, u"CSV"_s);
         }},
        {"splitRecord by tabs",
         [&] {
             r.splitRecord(m_fields, m_record, u"TAB"_s);
         }},
        {"csvField as it is",
         [&] {
             (void)r.csvField(m_csv, m_word, u"CSV"_s);
         }},
        {"splitByCharInto",
         [&] {
             r.splitByCharInto(m_fields, m_record, u',');
         }},
        {"splitQuotedList",
         [&] {
             r.splitQuotedList(m_fields, m_record);
         }},
        {"copyList",
         [&] {
             r.copyList(m_fields, m_list);
         }},
        {"groupThousands of three digits",
         [&] {
             (void)r.groupThousands(u"123"_s);
         }},

        {"formatDateTime of less than a date",
         [&] {
             (void)writing.formatDateTime(u"1234567"_s, 1);
         }},
        {"columnTypeMode",
         [&] {
             (void)writing.columnTypeMode(u"DATE"_s);
         }},
        {"compareTyped as numbers",
         [&] {
             writing.compareTyped(m_text, u"10"_s, u'-', 1, 1, 0, u"9"_s);
         }},
        {"setScanText",
         [&] {
             m_scanning.setScanText(m_long);
         }},
        {"skipToken",
         [&] {
             m_scanning.setScanText(m_long);
             m_scanning.skipToken(u" ,"_s);
         }},
        {"indexOfValue",
         [&] {
             (void)writing.indexOfValue(m_list, m_word);
         }},
        {"setElement",
         [&] {
             writing.messageKeys->resize(1);
             r.setElement(*writing.messageKeys, 0, m_word);
         }},

        {"length",
         [&] {
             (void)r.length(m_word);
         }},
        {"charAt",
         [&] {
             (void)r.charAt(m_word, 3);
         }},
        {"charCode",
         [&] {
             (void)r.charCode(u'a');
         }},
        {"indexOf",
         [&] {
             (void)r.indexOf(m_long, m_word, 1);
         }},
        {"find",
         [&] {
             (void)r.find(m_long, m_value);
         }},
        {"findChar",
         [&] {
             (void)r.findChar(m_long, u'z');
         }},
        {"containsChar",
         [&] {
             (void)r.containsChar(u'z', m_long);
         }},
        {"lastIndexOf",
         [&] {
             (void)r.lastIndexOf(m_long, m_value);
         }},
        {"indexOfAny",
         [&] {
             (void)r.indexOfAny(m_long, u"?*"_s);
         }},
        {"indexOfAny of many",
         [&] {
             (void)r.indexOfAny(m_word, u"!\"#$%&'()=~|{}*+<>?_-^"_s);
         }},
        {"startsWith",
         [&] {
             (void)r.startsWith(m_long, m_word);
         }},
        {"endsWith",
         [&] {
             (void)r.endsWith(m_long, m_word);
         }},
        {"trimmed with nothing to trim",
         [&] {
             (void)r.trimmed(m_word);
         }},
        {"padLeft of a longer text",
         [&] {
             (void)r.padLeft(m_word, 3);
         }},
        {"digitValue",
         [&] {
             (void)r.digitValue(u'7');
         }},
        {"isUpper",
         [&] {
             (void)r.isUpper(u'a');
         }},
        {"isLower",
         [&] {
             (void)r.isLower(u'a');
         }},
        {"isDigit",
         [&] {
             (void)r.isDigit(u'a');
         }},
        {"isLetter",
         [&] {
             (void)r.isLetter(u'a');
         }},
        {"charUpper",
         [&] {
             (void)r.charUpper(u'a');
         }},
        {"charLower",
         [&] {
             (void)r.charLower(u'A');
         }},
        {"charClass",
         [&] {
             (void)r.charClass(u'漢');
         }},
        {"charClassAt",
         [&] {
             (void)r.charClassAt(m_word, 2);
         }},
        {"charDisplayWidth",
         [&] {
             (void)r.charDisplayWidth(u'漢');
         }},
        {"charUnitsAt",
         [&] {
             (void)r.charUnitsAt(m_word, 2);
         }},
        {"isTrailAt",
         [&] {
             (void)r.isTrailAt(m_word, 2);
         }},
        {"clear",
         [&] {
             m_fields.append(m_word);
             r.clear(m_fields);
         }},
        {"maxInt",
         [&] {
             (void)r.maxInt();
         }},

        {"checkIn that fits",
         [&] {
             writing.checkIn(m_value, m_word, m_number, m_value);
         }},
        {"checkIn that fits nothing",
         [&] {
             writing.checkIn(m_value, m_word, m_number);
         }},
        {"charIn",
         [&] {
             (void)r.charIn(u'a', u'b', u'c', u'd');
         }},
        {"intIn",
         [&] {
             (void)r.intIn(1, 2, 3, 4);
         }},
        {"toInt",
         [&] {
             (void)r.toInt(m_number);
         }},
        {"toIntBase",
         [&] {
             (void)r.toIntBase(m_number, 16);
         }},
        {"validInt",
         [&] {
             writing.validInt(m_number, u'-', 0, 1);
         }},
        {"validDouble",
         [&] {
             writing.validDouble(m_number, u'-', 0, 1);
         }},
        {"hexDigitValue",
         [&] {
             (void)r.hexDigitValue(u'f');
         }},
        {"encodePlaceholders of a plain text",
         [&] {
             (void)r.encodePlaceholders(m_number);
         }},
        {"decodePlaceholders of a plain text",
         [&] {
             (void)r.decodePlaceholders(m_number);
         }},
        {"maskText in the open",
         [&] {
             (void)r.maskText(u' ', m_word);
         }},
        {"displayWidth",
         [&] {
             (void)r.displayWidth(m_long);
         }},
        {"displayWidthOf",
         [&] {
             (void)r.displayWidthOf(m_long, 30);
         }},
        {"unitsForWidth",
         [&] {
             (void)r.unitsForWidth(m_long, 30);
         }},
        {"splitsWideChar",
         [&] {
             (void)r.splitsWideChar(m_long, 30);
         }},
        {"characterCount",
         [&] {
             (void)r.characterCount(m_long);
         }},
    };
}

void HeapCountTest::initTestCase()
{
#ifndef COUNTS_ALLOCATIONS
    QSKIP("The allocator of this build cannot be counted");
#endif
}

void HeapCountTest::countsAllocations()
{
    const QString text = m_word;
    QVERIFY(allocationsOf([&] { (void)m_runtime.midFrom(text, 1); }) >= calls);
    QVERIFY(allocationsOf([] { delete new QObject; }) >= calls);
}

void HeapCountTest::withoutHeap_data()
{
    QTest::addColumn<int>("index");
    fillCalls();
    for (int i = 0; i < m_calls.size(); ++i)
        QTest::newRow(m_calls[i].name) << i;
}

void HeapCountTest::withoutHeap()
{
    QFETCH(int, index);
    const qint64 counted = allocationsOf(m_calls[index].once);
    QVERIFY2(counted <= mostAllocations, qPrintable(QString::number(counted)));
}

QTEST_GUILESS_MAIN(HeapCountTest)
#include "tst_heapcount.moc"
