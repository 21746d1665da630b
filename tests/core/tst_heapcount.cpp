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
using Call = std::function<void()>;

qint64 allocationsOf(const Call &once)
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
};

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
    QTest::addColumn<Call>("once");

    const auto row = [](const char *name, const Call &once) {
        QTest::newRow(name) << once;
    };
    const AppRuntime &r = m_runtime;
    row("count", [&] { return r.count(m_list); });
    row("elementAt", [&] { return r.elementAt(m_list, 2); });
    row("elementAt past the end", [&] { return r.elementAt(m_list, 3); });
    row("isSameChar", [&] { return r.isSameChar(u'a', u'b'); });
    row("errorWord", [&] { return r.errorWord(); });
    row("isSafePathText", [&] { m_runtime.isSafePathText(m_long); });
    row("lineEnd", [&] { return r.lineEnd(); });
    row("normaliseEncodingName", [&] { m_runtime.normaliseEncodingName(u"UTF-8"_s); });

    row("isCsvKind", [&] { return r.isCsvKind(u"csv"_s); });
    row("splitRecord by commas", [&] { r.splitRecord(m_fields, m_record, u"CSV"_s); });
    row("splitRecord by tabs", [&] { r.splitRecord(m_fields, m_record, u"TAB"_s); });
    row("csvField as it is", [&] { return r.csvField(m_csv, m_word, u"CSV"_s); });
    row("splitByCharInto", [&] { r.splitByCharInto(m_fields, m_record, u','); });
    row("splitQuotedList", [&] { r.splitQuotedList(m_fields, m_record); });
    row("copyList", [&] { r.copyList(m_fields, m_list); });
    row("groupThousands of three digits", [&] { return r.groupThousands(u"123"_s); });

    row("formatDateTime of less than a date", [&] { return m_runtime.formatDateTime(u"1234567"_s, 1); });
    row("columnTypeMode", [&] { return m_runtime.columnTypeMode(u"DATE"_s); });
    row("compareTyped as numbers", [&] { m_runtime.compareTyped(m_text, u"10"_s, u'-', 1, 1, 0, u"9"_s); });
    row("setScanText", [&] { m_scanning.setScanText(m_long); });
    row("skipToken", [&] {
        m_scanning.setScanText(m_long);
        m_scanning.skipToken(u" ,"_s);
    });
    row("indexOfValue", [&] { return m_runtime.indexOfValue(m_list, m_word); });
    row("setElement", [&] {
        m_runtime.messageKeys->resize(1);
        r.setElement(*m_runtime.messageKeys, 0, m_word);
    });

    row("length", [&] { return r.length(m_word); });
    row("charAt", [&] { return r.charAt(m_word, 3); });
    row("charCode", [&] { return r.charCode(u'a'); });
    row("indexOf", [&] { return r.indexOf(m_long, m_word, 1); });
    row("find", [&] { return r.find(m_long, m_value); });
    row("findChar", [&] { return r.findChar(m_long, u'z'); });
    row("containsChar", [&] { return r.containsChar(u'z', m_long); });
    row("lastIndexOf", [&] { return r.lastIndexOf(m_long, m_value); });
    row("indexOfAny", [&] { return r.indexOfAny(m_long, u"?*"_s); });
    row("indexOfAny of many", [&] { return r.indexOfAny(m_word, u"!\"#$%&'()=~|{}*+<>?_-^"_s); });
    row("startsWith", [&] { return r.startsWith(m_long, m_word); });
    row("endsWith", [&] { return r.endsWith(m_long, m_word); });
    row("trimmed with nothing to trim", [&] { return r.trimmed(m_word); });
    row("padLeft of a longer text", [&] { return r.padLeft(m_word, 3); });
    row("digitValue", [&] { return r.digitValue(u'7'); });
    row("isUpper", [&] { return r.isUpper(u'a'); });
    row("isLower", [&] { return r.isLower(u'a'); });
    row("isDigit", [&] { return r.isDigit(u'a'); });
    row("isLetter", [&] { return r.isLetter(u'a'); });
    row("charUpper", [&] { return r.charUpper(u'a'); });
    row("charLower", [&] { return r.charLower(u'A'); });
    row("charClass", [&] { return r.charClass(u'漢'); });
    row("charClassAt", [&] { return r.charClassAt(m_word, 2); });
    row("charDisplayWidth", [&] { return r.charDisplayWidth(u'漢'); });
    row("charUnitsAt", [&] { return r.charUnitsAt(m_word, 2); });
    row("isTrailAt", [&] { return r.isTrailAt(m_word, 2); });
    row("clear", [&] {
        m_fields.append(m_word);
        r.clear(m_fields);
    });
    row("maxInt", [&] { return r.maxInt(); });

    row("checkIn that fits", [&] { m_runtime.checkIn(m_value, m_word, m_number, m_value); });
    row("checkIn that fits nothing", [&] { m_runtime.checkIn(m_value, m_word, m_number); });
    row("charIn", [&] { return r.charIn(u'a', u'b', u'c', u'd'); });
    row("intIn", [&] { return r.intIn(1, 2, 3, 4); });
    row("toInt", [&] { return r.toInt(m_number); });
    row("toIntBase", [&] { return r.toIntBase(m_number, 16); });
    row("validInt", [&] { m_runtime.validInt(m_number, u'-', 0, 1); });
    row("validDouble", [&] { m_runtime.validDouble(m_number, u'-', 0, 1); });
    row("hexDigitValue", [&] { return r.hexDigitValue(u'f'); });
    row("encodePlaceholders of a plain text", [&] { return r.encodePlaceholders(m_number); });
    row("decodePlaceholders of a plain text", [&] { return r.decodePlaceholders(m_number); });
    row("maskText in the open", [&] { return r.maskText(u' ', m_word); });
    row("displayWidth", [&] { return r.displayWidth(m_long); });
    row("displayWidthOf", [&] { return r.displayWidthOf(m_long, 30); });
    row("unitsForWidth", [&] { return r.unitsForWidth(m_long, 30); });
    row("splitsWideChar", [&] { return r.splitsWideChar(m_long, 30); });
    row("characterCount", [&] { return r.characterCount(m_long); });
}

void HeapCountTest::withoutHeap()
{
    QFETCH(Call, once);
    const qint64 counted = allocationsOf(once);
    QVERIFY2(counted <= mostAllocations, qPrintable(QString::number(counted)));
}

QTEST_GUILESS_MAIN(HeapCountTest)
#include "tst_heapcount.moc"
