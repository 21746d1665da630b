// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

#include <QTest>

#include <QRegularExpression>

using namespace Qt::StringLiterals;

class UrlCodingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void urlEncode_data();
    void urlEncode();
    void urlDecode_data();
    void urlDecode();
    void urlDecodeOfEveryTwoUnits();
    void urlEncodeAndDecodeByEncodingName_data();
    void urlEncodeAndDecodeByEncodingName();
    void urlEncodeAndDecodeTakeTheMessage();
    void urlEncodeThereAndBack();

private:
    AppRuntime m_runtime{u"TEST"_s};
};

void UrlCodingTest::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    m_runtime.checkMessage = u"old"_s;
    m_runtime.lastError = u"error"_s;
    m_runtime.convertOk = true;
}

void UrlCodingTest::urlEncode_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("encoded");

    const auto row = [](const char *title, const QString &text, const QString &encoded) {
        QTest::newRow(title) << text << encoded;
    };
    row("empty", u""_s, u""_s);
    row("null", QString(), u""_s);
    row("letters", u"abcXYZ019"_s, u"abcXYZ019"_s);
    row("blank", u"a b"_s, u"a%20b"_s);
    row("blank alone", u" "_s, u"%20"_s);
    row("blanks at the ends", u" a b "_s, u"%20a%20b%20"_s);
    row("control characters", u"a\nb\tc"_s, u"a%0Ab%09c"_s);
    row("NUL", QString(u"a\0b"_s), u"a%00b"_s);
    row("kanji", u"\u6f22\u5b57"_s, u"%E6%BC%A2%E5%AD%97"_s);
    row("half-width katakana", u"\uff71"_s, u"%EF%BD%B1"_s);
    row("full-width digits", u"\uff11\uff12"_s, u"%EF%BC%91%EF%BC%92"_s);
    row("surrogate pair", u"\U0002000b"_s, u"%F0%A0%80%8B"_s);
    row("accent", u"\u00e9"_s, u"%C3%A9"_s);
    row("plus stays", u"a+b"_s, u"a+b"_s);
    row("tilde stays", u"~"_s, u"~"_s);
    row("quotes and braces", u"\"<>^`{|}"_s, u"%22%3C%3E%5E%60%7B%7C%7D"_s);
    row("allowed in a path", u"!$&'()*+,;=@/-._~"_s, u"!$&'()*+,;=@/-._~"_s);
    row("backslash", u"a\\b"_s, u"a%5Cb"_s);

    row("per cent sign", u"%"_s, u"%25"_s);
    row("per cent sign at the end", u"100%"_s, u"100%25"_s);
    row("one digit behind", u"%4"_s, u"%254"_s);
    row("no digits behind", u"%zz"_s, u"%25zz"_s);
    row("code stays", u"%20"_s, u"%20"_s);
    row("code of kanji stays, in capitals", u"%e6%bc%a2"_s, u"%E6%BC%A2"_s);
    row("code of no character stays", u"%ff"_s, u"%FF"_s);
    row("code of a per cent sign stays", u"%25"_s, u"%25"_s);
    row("code of a letter becomes the letter", u"a%41b"_s, u"aAb"_s);
    row("code and kanji", u"%20\u6f22"_s, u"%20%E6%BC%A2"_s);
    row("a sign that begins no code takes the others along", u"%41%"_s, u"%2541%25"_s);

    row("brackets in a path", u"a[b]c"_s, u"a[b]c"_s);
    row("brackets in a query", u"a?b[c]=d"_s, u"a?b[c]=d"_s);
    row("query", u"a?b c&d=e"_s, u"a?b%20c&d=e"_s);
    row("second question mark", u"a?b?c"_s, u"a?b?c"_s);
    row("fragment", u"a#b c"_s, u"a#b%20c"_s);
    row("second number sign", u"a#b#c"_s, u"a#b%23c"_s);
    row("path, query and fragment", u"a/b?c=d#e"_s, u"a/b?c=d#e"_s);
    row("empty query", u"?"_s, u"?"_s);
    row("empty fragment", u"#"_s, u"#"_s);
    row("kanji everywhere",
        u"\u3042/\u3044?\u3046=\u3048#\u304a"_s,
        u"%E3%81%82/%E3%81%84?%E3%81%86=%E3%81%88#%E3%81%8A"_s);
    row("relative path", u"../a b"_s, u"../a%20b"_s);

    row("whole URL", u"http://h/a b?c d#e f"_s, u"http://h/a%20b?c%20d#e%20f"_s);
    row("host in capitals", u"HTTP://EXAMPLE.COM/A"_s, u"http://example.com/A"_s);
    row("kanji host", u"http://\u4f8b\u3048.jp/\u9053"_s, u"http://xn--r8jz45g.jp/%E9%81%93"_s);
    row("host in brackets", u"http://[::1]/a"_s, u"http://[::1]/a"_s);
    row("port", u"http://h:80/"_s, u"http://h:80/"_s);
    row("mail", u"mailto:x y@z"_s, u"mailto:x%20y@z"_s);
    row("drive letter is a scheme", u"C:\\a b"_s, u"c:%5Ca%20b"_s);

    row("host's bracket is not closed", u"http://[a"_s, u""_s);
    row("no port", u"http://h:99999/"_s, u""_s);
    row("blank in the host", u"http://ex ample/"_s, u""_s);
    row("time of day", u"12:30"_s, u""_s);
    row("colon alone", u":"_s, u""_s);
}

void UrlCodingTest::urlEncode()
{
    QFETCH(QString, text);
    QFETCH(QString, encoded);

    for (const QString &name : {u"UTF-8"_s, u"SJIS"_s, u"/"_s})
        QCOMPARE(m_runtime.urlEncode(text, name), encoded);
    QCOMPARE(m_runtime.lastError, u"error"_s);
    QVERIFY(m_runtime.convertOk);
}

void UrlCodingTest::urlDecode_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("decoded");

    const auto row = [](const char *title, const QString &text, const QString &decoded) {
        QTest::newRow(title) << text << decoded;
    };
    row("empty", u""_s, u""_s);
    row("null", QString(), u""_s);
    row("no code", u"abc"_s, u"abc"_s);
    row("hiragana", u"%E3%81%82"_s, u"\u3042"_s);
    row("small digits", u"%e3%81%82x"_s, u"\u3042x"_s);
    row("every digit last", u"%40%41%42%43%44%45%46%47%48%49"_s, u"@ABCDEFGHI"_s);
    row("every small letter last", u"%4a%4b%4c%4d%4e%4f"_s, u"JKLMNO"_s);
    row("every capital letter last", u"%4A%4B%4C%4D%4E%4F"_s, u"JKLMNO"_s);
    row("every small letter first",
        u"%c2%a0%c2%b0%d0%90%e3%81%82%f0%a0%80%8b"_s,
        u"\u00a0\u00b0\u0410\u3042\U0002000b"_s);
    row("every capital letter first",
        u"%C2%A0%C2%B0%D0%90%E3%81%82%F0%A0%80%8B"_s,
        u"\u00a0\u00b0\u0410\u3042\U0002000b"_s);
    row("blank", u"a%20b"_s, u"a b"_s);
    row("plus stays", u"a+b"_s, u"a+b"_s);
    row("kanji and its code", u"\u6f22%E6%BC%A2"_s, u"\u6f22\u6f22"_s);
    row("surrogate pair", u"%F0%A0%80%8B"_s, u"\U0002000b"_s);
    row("NUL", u"a%00b"_s, QString(u"a\0b"_s));
    row("decoded once", u"%2541"_s, u"%41"_s);
    row("codes make a code", u"%25%34%31"_s, u"%41"_s);
    row("reserved characters", u"%2F%3f%23%26"_s, u"/?#&"_s);
    row("per cent sign alone", u"%"_s, u"%"_s);
    row("per cent sign at the end", u"a%"_s, u"a%"_s);
    row("one digit at the end", u"a%4"_s, u"a%4"_s);
    row("two digits at the end", u"a%41"_s, u"aA"_s);
    row("no digits", u"%zz"_s, u"\ufffd"_s);
    row("first is no digit", u"%z4%41"_s, u"\ufffdA"_s);
    row("second is no digit", u"%4z%41"_s, u"zA"_s);
    row("neighbours of the digits", u"%3/%3:%3@%3G%3`%3g"_s, u"?:pwpw"_s);
    row("blank for a digit", u"% 4%41"_s, u"\u0004A"_s);
    row("per cent signs for digits", u"%%%%41"_s, u"uA"_s);
    row("first byte of a kana for a digit", u"%4\u3042"_s, u"\u3042"_s);
    row("lone surrogate", u'a' + QString(QChar(0xd800)) + u'b', u"a?b"_s);
    row("lone surrogate for a digit", u"%4"_s + QChar(0xdc00), u"\u007f"_s);
    row("invalid byte", u"a%ffb"_s, u"a\ufffdb"_s);
    row("invalid byte in the middle", u"%E3%81%82%80%E3%81%82"_s, u"\u3042\ufffd\u3042"_s);
    row("surrogate in three bytes", u"%ED%A0%80"_s, u"\ufffd\ufffd\ufffd"_s);
    row("other escapes stay", u"&#37;41 \\x41"_s, u"&#37;41 \\x41"_s);
}

void UrlCodingTest::urlDecode()
{
    QFETCH(QString, text);
    QFETCH(QString, decoded);

    for (const QString &name : {u"UTF-8"_s, u"SJIS"_s, u"/"_s})
        QCOMPARE(m_runtime.urlDecode(text, name), decoded);
    QCOMPARE(m_runtime.lastError, u"error"_s);
    QVERIFY(m_runtime.convertOk);
}

void UrlCodingTest::urlDecodeOfEveryTwoUnits()
{
    const QByteArray digits = "0123456789abcdef";
    const auto valueOf = [&digits](char16_t unit) {
        const qsizetype digit = digits.indexOf(QChar(unit).toLower().toLatin1());
        return digit < 0 ? int(unit) : int(digit);
    };
    for (char16_t first = 0; first < 0x80; ++first) {
        for (char16_t second = 0; second < 0x80; ++second) {
            const QByteArray byte(1, static_cast<char>(valueOf(first) << 4 | valueOf(second)));
            const QString text = QString(u'%') + QChar(first) + QChar(second) + u'x';
            if (m_runtime.urlDecode(text, u"UTF-8"_s) != QString::fromUtf8(byte + 'x'))
                QFAIL(qPrintable(text));
        }
    }
}

void UrlCodingTest::urlEncodeAndDecodeByEncodingName_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("message");

    QTest::newRow("UTF-8") << u"UTF-8"_s << u"\"UTF-8\" not in('/')"_s;
    QTest::newRow("empty") << u""_s << u"\"\" not in('/')"_s;
    QTest::newRow("slash") << u"/"_s << u"old"_s;
    QTest::newRow("EUC-JP") << u"eucjp"_s << u"\"EUCJP\" not in('UTF8','UTF-8','UTF_8','')"_s;
    QTest::newRow("SJIS") << u"sjis"_s << u"\"SJIS\" not in('EUCJP','EUC-JP','EUC_JP')"_s;
    QTest::newRow("unknown") << u"latin1"_s << u"\"LATIN1\" not in('SJIS','SHIFT-JIS','SHIFT_JIS')"_s;
}

void UrlCodingTest::urlEncodeAndDecodeByEncodingName()
{
    QFETCH(QString, name);
    QFETCH(QString, message);

    QCOMPARE(m_runtime.urlEncode(u"a b"_s, name), u"a%20b"_s);
    QCOMPARE(m_runtime.checkMessage, message);
    m_runtime.checkMessage = u"old"_s;
    QCOMPARE(m_runtime.urlDecode(u"a%20b"_s, name), u"a b"_s);
    QCOMPARE(m_runtime.checkMessage, message);
}

void UrlCodingTest::urlEncodeAndDecodeTakeTheMessage()
{
    QCOMPARE(m_runtime.urlEncode(m_runtime.checkMessage = u"a b"_s, u"utf8"_s), u"a%20b"_s);
    QCOMPARE(m_runtime.checkMessage, u"\"utf8\" not in('/')"_s);
    QCOMPARE(m_runtime.urlDecode(m_runtime.checkMessage = u"a%20b"_s, u""_s), u"a b"_s);
    QCOMPARE(m_runtime.checkMessage, u"\"\" not in('/')"_s);
    // And the encoding's name.
    m_runtime.checkMessage = u"sjis"_s;
    QCOMPARE(m_runtime.urlDecode(u"a%20b"_s, m_runtime.checkMessage), u"a b"_s);
    QCOMPARE(m_runtime.checkMessage, u"\"SJIS\" not in('EUCJP','EUC-JP','EUC_JP')"_s);
}

// A path of a character, another, and a letter that keeps them from being read as something else than a path.
void UrlCodingTest::urlEncodeThereAndBack()
{
    const QList<char32_t> special = {0xa0, 0xe9, 0x3042, 0x6f22, 0xff71, 0xfffd, 0x2000b, 0x10fffd};
    QStringList characters;
    for (char32_t c = 0; c < 0x80; ++c)
        characters.append(QString::fromUcs4(&c, 1));
    for (const char32_t c : special)
        characters.append(QString::fromUcs4(&c, 1));
    for (const QString &first : std::as_const(characters)) {
        for (const QString &second : std::as_const(characters)) {
            const QString text = u"/a"_s + first + second;
            const QString encoded = m_runtime.urlEncode(text, QString());
            QVERIFY2(!encoded.contains(QRegularExpression(u"[^!-~]"_s)), qPrintable(text));
            QCOMPARE(m_runtime.urlDecode(encoded, QString()), text);
        }
    }
}

QTEST_GUILESS_MAIN(UrlCodingTest)
#include "tst_urlcoding.moc"
