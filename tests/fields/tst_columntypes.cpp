// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

#include <QTest>

#include <limits>
#include <string>
#include <utility>

using namespace Qt::StringLiterals;

class ColumnTypesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void columnTypeMode_data();
    void columnTypeMode();
    void columnTypeModeTakesItsOwnMessage();
    void compareTyped_data();
    void compareTyped();
    void compareTypedOfEveryMode();
    void compareTypedAgainstCodeUnits();
    void compareTypedTakesItsOwnFields();
    void compareTypedWritesIntoItsArguments();

private:
    AppRuntime m_runtime{u"TEST"_s};
};

void ColumnTypesTest::init()
{
    m_runtime.lastError = u"error"_s;
    m_runtime.checkMessage = u"old"_s;
    m_runtime.convertOk = true;
}

void ColumnTypesTest::columnTypeMode_data()
{
    QTest::addColumn<QString>("typeName");
    QTest::addColumn<QString>("mode");
    QTest::addColumn<QString>("message");

    const auto row
        = [](const char *name, const QString &typeName, const QString &mode, const QString &alternatives) {
              QTest::newRow(name
              ) << typeName
                << mode
                << (alternatives.isEmpty() ? u"old"_s : u"\"%1\" not in(%2)"_s.arg(typeName, alternatives));
          };
    const QString texts = u"'CHAR','VARCHAR','VARCHAR2'"_s;
    const QString japanese = u"'NCHAR','NVARCHAR','NVARCHAR2','MCHAR','MVARCHAR'"_s;
    const QString numbers = u"'DECIMAL','INT'"_s;
    const QString floats = u"'FLOAT','DOUBLE'"_s;
    const QString dates = u"'DATETIME','TIMESTAMP','DATE'"_s;

    row("CHAR", u"CHAR"_s, u" "_s, u""_s);
    row("VARCHAR", u"VARCHAR"_s, u" "_s, u""_s);
    row("VARCHAR2", u"VARCHAR2"_s, u" "_s, u""_s);
    row("NCHAR", u"NCHAR"_s, u"/"_s, texts);
    row("NVARCHAR", u"NVARCHAR"_s, u"/"_s, texts);
    row("NVARCHAR2", u"NVARCHAR2"_s, u"/"_s, texts);
    row("MCHAR", u"MCHAR"_s, u"/"_s, texts);
    row("MVARCHAR", u"MVARCHAR"_s, u"/"_s, texts);
    row("DECIMAL", u"DECIMAL"_s, u"-"_s, japanese);
    row("INT", u"INT"_s, u"-"_s, japanese);
    row("FLOAT", u"FLOAT"_s, u"F"_s, numbers);
    row("DOUBLE", u"DOUBLE"_s, u"F"_s, numbers);
    row("DATETIME", u"DATETIME"_s, u"E"_s, floats);
    row("TIMESTAMP", u"TIMESTAMP"_s, u"E"_s, floats);
    row("DATE", u"DATE"_s, u"E"_s, floats);
    row("other type", u"BLOB"_s, u" "_s, dates);
    row("empty name", u""_s, u" "_s, dates);
    row("null name", QString(), u" "_s, dates);
    row("lower case", u"varchar2"_s, u" "_s, dates);
    row("lower case of another line", u"nchar"_s, u" "_s, dates);
    row("mixed case", u"Date"_s, u" "_s, dates);
    row("trailing blank", u"DATE "_s, u" "_s, dates);
    row("leading blank", u" INT"_s, u" "_s, dates);
    row("with a length", u"CHAR(10)"_s, u" "_s, dates);
    row("no such digit", u"VARCHAR3"_s, u" "_s, dates);
    row("no MVARCHAR2", u"MVARCHAR2"_s, u" "_s, dates);
    row("longer whole number", u"INTEGER"_s, u" "_s, dates);
    row("other decimal", u"NUMERIC"_s, u" "_s, dates);
    row("time alone", u"TIME"_s, u" "_s, dates);
    row("beginning of a name", u"DATETIM"_s, u" "_s, dates);
    row("full width", u"ＤＡＴＥ"_s, u" "_s, dates);
    row("NUL behind", u"DATE\0"_s, u" "_s, dates);
}

void ColumnTypesTest::columnTypeMode()
{
    QFETCH(QString, typeName);
    QFETCH(QString, mode);
    QFETCH(QString, message);

    QCOMPARE(m_runtime.columnTypeMode(typeName), mode);
    QCOMPARE(m_runtime.checkMessage, message);
    QCOMPARE(m_runtime.lastError, u"error"_s);
    QVERIFY(m_runtime.convertOk);
}

void ColumnTypesTest::columnTypeModeTakesItsOwnMessage()
{
    m_runtime.checkMessage = u"DATE"_s;
    QCOMPARE(m_runtime.columnTypeMode(m_runtime.checkMessage), u"E"_s);
    QCOMPARE(m_runtime.checkMessage, u"\"DATE\" not in('FLOAT','DOUBLE')"_s);
}

void ColumnTypesTest::compareTyped_data()
{
    QTest::addColumn<QString>("left");
    QTest::addColumn<QChar>("mode");
    QTest::addColumn<QString>("right");
    QTest::addColumn<QString>("relation");
    QTest::addColumn<QString>("message"); // "old" where it stays
    QTest::addColumn<QString>("error");   // "error" where it stays

    const auto text = [](const char *name,
                         const QString &left,
                         const QString &right,
                         const QString &relation,
                         const QString &message) {
        QTest::newRow(name) << left << QChar(u' ') << right << relation << message << u"error"_s;
    };
    const auto number = [](const char *name,
                           const QString &left,
                           const QString &right,
                           const QString &relation,
                           const QString &message) {
        QTest::newRow(name) << left << QChar(u'-') << right << relation << message << u"error"_s;
    };
    const auto noNumber
        = [](const char *name, const QString &left, const QString &right, const QString &culprit) {
              QTest::newRow(name) << left << QChar(u'-') << right << u"?"_s
                                  << u"\"%1\" not in('')"_s.arg(culprit)
                                  << u"not numeric \"%1\""_s.arg(culprit);
          };

    text("equal texts", u"ABC"_s, u"ABC"_s, u"="_s, u"old"_s);
    text("trailing blanks on the left", u"ABC  "_s, u"ABC"_s, u"="_s, u"old"_s);
    text("trailing blanks on the right", u"ABC"_s, u"ABC  "_s, u"="_s, u"old"_s);
    text("trailing control characters", u"ABC\t\r\n\0"_s, u"ABC\u0001\u001f"_s, u"="_s, u"old"_s);
    text("leading blank counts", u" ABC"_s, u"ABC"_s, u"<"_s, u"\" ABC\" not in('ABC')"_s);
    text("blank inside counts", u"A BC"_s, u"ABC"_s, u"<"_s, u"\"A BC\" not in('ABC')"_s);
    text("trimmed texts in the message", u"A \t"_s, u"B \n"_s, u"<"_s, u"\"A\" not in('B')"_s);
    text("ideographic space is kept", u"A\u3000"_s, u"A"_s, u">"_s, u"\"A\u3000\" not in('A')"_s);
    text("no-break space is kept", u"A"_s, u"A\u00a0"_s, u"<"_s, u"\"A\" not in('A\u00a0')"_s);
    text("exclamation mark is kept", u"A!"_s, u"A"_s, u">"_s, u"\"A!\" not in('A')"_s);
    text("lower case is greater", u"abc"_s, u"ABC"_s, u">"_s, u"\"abc\" not in('ABC')"_s);
    text("upper case is less", u"Z"_s, u"a"_s, u"<"_s, u"\"Z\" not in('a')"_s);
    text("beginning is less", u"AB"_s, u"ABC"_s, u"<"_s, u"\"AB\" not in('ABC')"_s);
    text("longer is greater", u"ABC"_s, u"AB"_s, u">"_s, u"\"ABC\" not in('AB')"_s);
    text("longer may be less", u"AAA"_s, u"B"_s, u"<"_s, u"\"AAA\" not in('B')"_s);
    text("numbers as texts", u"10"_s, u"9"_s, u"<"_s, u"\"10\" not in('9')"_s);
    text("leading zero counts", u"007"_s, u"7"_s, u"<"_s, u"\"007\" not in('7')"_s);
    text("empty texts", u""_s, u""_s, u"="_s, u"old"_s);
    text("null texts", QString(), QString(), u"="_s, u"old"_s);
    text("null and empty text", QString(), u""_s, u"="_s, u"old"_s);
    text("blanks only equal the empty text", u"   "_s, u""_s, u"="_s, u"old"_s);
    text("empty text is less", u""_s, u"A"_s, u"<"_s, u"\"\" not in('A')"_s);
    text("empty text on the right", u"A"_s, u" "_s, u">"_s, u"\"A\" not in('')"_s);
    text("half-width kana is greater", u"ｱ"_s, u"ア"_s, u">"_s, u"\"ｱ\" not in('ア')"_s);
    text("pair is less than half-width kana", u"𠮷"_s, u"ｱ"_s, u"<"_s, u"\"𠮷\" not in('ｱ')"_s);
    text("NUL inside counts", u"A\0B"_s, u"AB"_s, u"<"_s, u"\"A"_s + QChar(u'\0') + u"B\" not in('AB')"_s);
    text("no normalisation", u"\u00e9"_s, u"e\u0301"_s, u">"_s, u"\"\u00e9\" not in('e\u0301')"_s);
    text("no local order", u"Ä"_s, u"Z"_s, u">"_s, u"\"Ä\" not in('Z')"_s);
    text("nan as text", u"nan"_s, u"nan"_s, u"="_s, u"old"_s);
    text("no number as text", u"x1"_s, u"1"_s, u">"_s, u"\"x1\" not in('1')"_s);

    number("greater number", u"10"_s, u"9"_s, u">"_s, u"\"9\" not in('')"_s);
    number("less number", u"9"_s, u"10"_s, u"<"_s, u"\"10\" not in('')"_s);
    number("equal numbers", u"9"_s, u"9"_s, u"="_s, u"\"9\" not in('')"_s);
    number("equal in another form", u"007.50"_s, u"7.5"_s, u"="_s, u"\"7.5\" not in('')"_s);
    number("exponent", u"1e3"_s, u"1000"_s, u"="_s, u"\"1000\" not in('')"_s);
    number("plus sign", u"+5"_s, u"5"_s, u"="_s, u"\"5\" not in('')"_s);
    number("negative is less", u"-5"_s, u"-4.5"_s, u"<"_s, u"\"-4.5\" not in('')"_s);
    number("negative zero", u"-0"_s, u"0"_s, u"="_s, u"\"0\" not in('')"_s);
    number("small difference", u"0.1"_s, u"0.1000000001"_s, u"<"_s, u"\"0.1000000001\" not in('')"_s);
    number(
        "difference below the precision",
        u"9007199254740993"_s,
        u"9007199254740992"_s,
        u"="_s,
        u"\"9007199254740992\" not in('')"_s
    );
    number("blanks round a number", u" 10\t"_s, u"10"_s, u"="_s, u"\"10\" not in('')"_s);
    number("blanks stay in the message", u"1"_s, u" 10 "_s, u"<"_s, u"\" 10 \" not in('')"_s);
    number("empty text is zero", u""_s, u"0"_s, u"="_s, u"\"0\" not in('')"_s);
    number("empty text on the right", u"5"_s, u""_s, u">"_s, u"\"5\" not in('')"_s);
    number("empty text above a negative", u""_s, u"-1"_s, u">"_s, u"\"-1\" not in('')"_s);
    number("both empty", u""_s, u""_s, u"="_s, u"old"_s);
    number("both null", QString(), QString(), u"="_s, u"old"_s);
    number("infinities are equal", u"inf"_s, u"INF"_s, u"="_s, u"\"INF\" not in('')"_s);
    number("infinity is greater", u"inf"_s, u"1e308"_s, u">"_s, u"\"1e308\" not in('')"_s);
    number("negative infinity is less", u"-inf"_s, u"-1e308"_s, u"<"_s, u"\"-1e308\" not in('')"_s);
    number("nan against nan", u"nan"_s, u"nan"_s, u"<"_s, u"\"nan\" not in('')"_s);
    number("nan on the left", u"NaN"_s, u"-inf"_s, u"<"_s, u"\"-inf\" not in('')"_s);
    number("nan on the right", u"inf"_s, u"nan"_s, u"<"_s, u"\"nan\" not in('')"_s);
    number("nan against the empty text", u"nan"_s, u""_s, u"<"_s, u"\"nan\" not in('')"_s);

    noNumber("no number on the left", u"x1"_s, u"1"_s, u"x1"_s);
    noNumber("no number on the right", u"1"_s, u"x1"_s, u"x1"_s);
    noNumber("the left is refused first", u"x1"_s, u"y1"_s, u"x1"_s);
    noNumber("no number against the empty text", u""_s, u"y1"_s, u"y1"_s);
    noNumber("equal texts, no numbers", u"A"_s, u"A"_s, u"A"_s);
    noNumber("blanks only", u" "_s, u"0"_s, u" "_s);
    noNumber("blanks only on the right", u"0"_s, u"  "_s, u"  "_s);
    noNumber("thousands separators", u"1,000"_s, u"1"_s, u"1,000"_s);
    noNumber("sign alone", u"-"_s, u"1"_s, u"-"_s);
    noNumber("full-width digit", u"１"_s, u"1"_s, u"１"_s);
    noNumber("hexadecimal", u"1"_s, u"0x10"_s, u"0x10"_s);
    noNumber("too large for a number", u"1e400"_s, u"1"_s, u"1e400"_s);
    noNumber("infinity in full", u"infinity"_s, u"1"_s, u"infinity"_s);
    noNumber("nan with a sign", u"1"_s, u"-nan"_s, u"-nan"_s);
}

void ColumnTypesTest::compareTyped()
{
    QFETCH(QString, left);
    QFETCH(QChar, mode);
    QFETCH(QString, right);
    QFETCH(QString, relation);
    QFETCH(QString, message);
    QFETCH(QString, error);

    // All but 1 counts as not set, and only the flag of the relation found counts.
    const int accepts[]
        = {0, 1, 2, -1, 257, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()};
    const bool numeric = mode == u'-';
    for (const int accept : accepts) {
        for (const int others : {0, 1}) {
            for (const bool converted : {false, true}) {
                m_runtime.checkMessage = u"old"_s;
                m_runtime.lastError = u"error"_s;
                m_runtime.convertOk = converted;
                const auto acceptOf = [&](QStringView itsRelation) {
                    return relation == itsRelation ? accept : others;
                };
                const int expected = relation == u"?" ? 9 : accept == 1 ? 0 : 1;

                QString found = u"#"_s;
                QCOMPARE(
                    m_runtime.compareTyped(
                        found, left, mode, acceptOf(u">"), acceptOf(u"="), acceptOf(u"<"), right
                    ),
                    expected
                );
                QCOMPARE(found, relation);
                QCOMPARE(m_runtime.checkMessage, message);
                QCOMPARE(m_runtime.lastError, error);
                QCOMPARE(m_runtime.convertOk, numeric ? expected != 9 : converted);
            }
        }
    }
}

void ColumnTypesTest::compareTypedOfEveryMode()
{
    QString relation;
    for (int unit = 0; unit <= 0xffff; ++unit) {
        const QChar mode = QChar(static_cast<char16_t>(unit));
        const bool numeric = mode == u'+' || mode == u'-' || mode == u'F';
        m_runtime.compareTyped(relation, u"-10"_s, mode, 1, 1, 1, u"-9"_s);
        // As numbers -10 is less, and also as texts; so look at the words left behind.
        QCOMPARE(relation, u"<"_s);
        QCOMPARE(m_runtime.checkMessage, numeric ? u"\"-9\" not in('')"_s : u"\"-10\" not in('-9')"_s);
        m_runtime.compareTyped(relation, u"10"_s, mode, 1, 1, 1, u"9"_s);
        QCOMPARE(relation, numeric ? u">"_s : u"<"_s);
    }
}

void ColumnTypesTest::compareTypedAgainstCodeUnits()
{
    const QList<QChar> units = {u'a', u'B', u' ', u'\t', u'ｱ', QChar(0xd842), QChar(0xdfb7)};
    QStringList texts = {QString()};
    for (qsizetype begin = 0, length = 0; length < 3; ++length) {
        const qsizetype end = texts.size();
        for (; begin < end; ++begin) {
            for (const QChar unit : units)
                texts.append(texts.at(begin) + unit);
        }
    }
    const auto trimmed = [](const QString &text) {
        std::u16string result = text.toStdU16String();
        while (!result.empty() && result.back() <= u' ')
            result.pop_back();
        return result;
    };

    QString relation;
    for (const QString &left : std::as_const(texts)) {
        const std::u16string a = trimmed(left);
        for (const QString &right : std::as_const(texts)) {
            const std::u16string b = trimmed(right);
            m_runtime.checkMessage = u"old"_s;
            QCOMPARE(m_runtime.compareTyped(relation, left, u'A', 1, 0, 1, right), a == b ? 1 : 0);
            QCOMPARE(relation, a == b ? u"="_s : a > b ? u">"_s : u"<"_s);
            QCOMPARE(
                m_runtime.checkMessage,
                a == b ? u"old"_s
                       : u'"' + QString::fromStdU16String(a) + u"\" not in('"_s + QString::fromStdU16String(b)
                        + u"')"_s
            );
        }
    }
}

void ColumnTypesTest::compareTypedTakesItsOwnFields()
{
    QString relation;
    m_runtime.checkMessage = u"B "_s;
    QCOMPARE(m_runtime.compareTyped(relation, m_runtime.checkMessage, u' ', 1, 0, 0, u"A"_s), 0);
    QCOMPARE(relation, u">"_s);
    QCOMPARE(m_runtime.checkMessage, u"\"B\" not in('A')"_s);

    m_runtime.checkMessage = u"5"_s;
    QCOMPARE(m_runtime.compareTyped(relation, u"x"_s, u'-', 1, 1, 1, m_runtime.checkMessage), 9);
    m_runtime.checkMessage = u"5"_s;
    QCOMPARE(m_runtime.compareTyped(relation, u"7"_s, u'-', 1, 0, 0, m_runtime.checkMessage), 0);
    QCOMPARE(relation, u">"_s);
    QCOMPARE(m_runtime.checkMessage, u"\"5\" not in('')"_s);

    m_runtime.lastError = u"y"_s;
    QCOMPARE(m_runtime.compareTyped(relation, m_runtime.lastError, u'F', 1, 1, 1, u"1"_s), 9);
    QCOMPARE(m_runtime.lastError, u"not numeric \"y\""_s);
}

void ColumnTypesTest::compareTypedWritesIntoItsArguments()
{
    // Only the relation is written, and it may be one of the values.
    QString relation, left = u"A \t"_s, right = u"A  "_s;
    QCOMPARE(m_runtime.compareTyped(relation, left, u' ', 0, 1, 0, right), 0);
    QCOMPARE(left, u"A \t"_s);
    QCOMPARE(right, u"A  "_s);

    QString value = u"10"_s;
    QCOMPARE(m_runtime.compareTyped(value, value, u'-', 1, 0, 0, u"9"_s), 0);
    QCOMPARE(value, u">"_s);
    value = u"10"_s;
    QCOMPARE(m_runtime.compareTyped(value, u"9"_s, u' ', 1, 0, 0, value), 0);
    QCOMPARE(value, u">"_s);
    value = u"10 "_s;
    QCOMPARE(m_runtime.compareTyped(value, value, u' ', 0, 1, 0, value), 0);
    QCOMPARE(value, u"="_s);
    value = u"x"_s;
    QCOMPARE(m_runtime.compareTyped(value, u"1"_s, u'+', 1, 1, 1, value), 9);
    QCOMPARE(value, u"?"_s);
    QCOMPARE(m_runtime.lastError, u"not numeric \"x\""_s);
}

QTEST_GUILESS_MAIN(ColumnTypesTest)
#include "tst_columntypes.moc"
