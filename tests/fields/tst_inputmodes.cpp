// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

#include <QTest>

using namespace Qt::StringLiterals;

namespace
{

// Every catalogue; a new one belongs in this table, and is then held to the rules below.
struct Catalogue {
    const char *name;
    QString AppRuntime::*text;
    qsizetype modes;
    bool hasDefault; // a mode for the field that names none
};
const Catalogue catalogues[] = {
    {"numericModesSigned", &AppRuntime::numericModesSigned, 2, false},
    {"numericFormats", &AppRuntime::numericFormats, 4, true},
    {"japaneseModes", &AppRuntime::japaneseModes, 6, false},
    {"asciiModes", &AppRuntime::asciiModes, 14, true},
    {"floatModes", &AppRuntime::floatModes, 1, false},
    {"integerModes", &AppRuntime::integerModes, 2, false},
    {"dateTimeModes", &AppRuntime::dateTimeModes, 1, false},
    {"displayModesKana", &AppRuntime::displayModesKana, 8, true},
    {"displayModes", &AppRuntime::displayModes, 7, true},
};

/// The first rule of the format that the text breaks, in words; empty when it keeps them all.
QString brokenRule(const QString &catalogue)
{
    const QStringList fields = catalogue.split(u',');
    if (fields.size() % 2 != 0)
        return u"odd number of fields"_s;
    QStringList codes;
    for (qsizetype i = 0; i < fields.size(); i += 2) {
        if (fields[i].size() > 1)
            return u"long code "_s + fields[i];
        if (!fields[i].isEmpty() && (fields[i] <= u" "_s || fields[i][0].isSurrogate()))
            return u"code that nobody can type"_s;
        if (codes.contains(fields[i]))
            return u"code twice "_s + fields[i];
        if (fields[i].isEmpty() && i > 0)
            return u"default mode not first"_s;
        if (fields[i + 1].trimmed() != fields[i + 1] || fields[i + 1].isEmpty())
            return u"no label or blanks at its ends"_s;
        codes += fields[i];
    }
    return QString();
}

QString codesOf(const QList<InputMode> &modes)
{
    QString codes;
    for (const InputMode &mode : modes)
        codes += mode.code;
    return codes;
}

} // namespace

class InputModesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void catalogueKeepsTheRules_data();
    void catalogueKeepsTheRules();
    void catalogueThatIsBrokenIsSeen_data();
    void catalogueThatIsBrokenIsSeen();
    void japaneseModeKeysAreTheCodes();
    void displayModesKanaAddsOneMode();
    void inputModesOfTheCatalogues_data();
    void inputModesOfTheCatalogues();
    void inputModes_data();
    void inputModes();

private:
    const AppRuntime m_runtime{u"TEST"_s};
};

void InputModesTest::catalogueKeepsTheRules_data()
{
    QTest::addColumn<QString>("catalogue");
    QTest::addColumn<qsizetype>("modes");
    QTest::addColumn<bool>("hasDefault");

    for (const Catalogue &catalogue : catalogues)
        QTest::newRow(catalogue.name) << m_runtime.*catalogue.text << catalogue.modes << catalogue.hasDefault;
}

void InputModesTest::catalogueKeepsTheRules()
{
    QFETCH(QString, catalogue);
    QFETCH(qsizetype, modes);
    QFETCH(bool, hasDefault);

    QCOMPARE(brokenRule(catalogue), QString());
    const QStringList fields = catalogue.split(u',');
    QCOMPARE(fields.size(), 2 * modes);
    QCOMPARE(catalogue.startsWith(u','), hasDefault);

    // Decoding loses nothing.
    const QList<InputMode> decoded = m_runtime.inputModes(catalogue);
    QCOMPARE(decoded.size(), modes);
    QStringList encoded;
    for (const InputMode &mode : decoded)
        encoded << mode.code << mode.label;
    QCOMPARE(encoded.join(u','), catalogue);
}

void InputModesTest::catalogueThatIsBrokenIsSeen_data()
{
    QTest::addColumn<QString>("catalogue");
    QTest::addColumn<QString>("rule");

    QTest::newRow("empty") << u""_s << u"odd number of fields"_s;
    QTest::newRow("code without label") << u"A,a,B"_s << u"odd number of fields"_s;
    QTest::newRow("comma in a label") << u"A,a,b,B,b"_s << u"odd number of fields"_s;
    QTest::newRow("trailing comma") << u"A,a,"_s << u"odd number of fields"_s;
    QTest::newRow("two-character code") << u"A,a,BC,b"_s << u"long code BC"_s;
    QTest::newRow("surrogate pair as code") << u"😀,a"_s << u"long code 😀"_s;
    QTest::newRow("blank as code") << u"A,a, ,b"_s << u"code that nobody can type"_s;
    QTest::newRow("code twice") << u"A,a,B,b,A,c"_s << u"code twice A"_s;
    QTest::newRow("default twice") << u",a,B,b,,c"_s << u"code twice "_s;
    QTest::newRow("default not first") << u"A,a,,b"_s << u"default mode not first"_s;
    QTest::newRow("empty label") << u"A,,B,b"_s << u"no label or blanks at its ends"_s;
    QTest::newRow("blank behind a comma") << u"A, a"_s << u"no label or blanks at its ends"_s;
}

void InputModesTest::catalogueThatIsBrokenIsSeen()
{
    QFETCH(QString, catalogue);
    QTEST(brokenRule(catalogue), "rule");
}

void InputModesTest::japaneseModeKeysAreTheCodes()
{
    QCOMPARE(codesOf(m_runtime.inputModes(m_runtime.japaneseModes)), m_runtime.japaneseModeKeys);
    QCOMPARE(m_runtime.inputModes(m_runtime.displayModesKana).constLast().code, m_runtime.kanaKey);
    QVERIFY(!codesOf(m_runtime.inputModes(m_runtime.displayModes)).contains(m_runtime.kanaKey));
}

void InputModesTest::displayModesKanaAddsOneMode()
{
    QCOMPARE(m_runtime.displayModesKana, m_runtime.displayModes + u",K,Kana"_s);
    QList<InputMode> modes = m_runtime.inputModes(m_runtime.displayModesKana);
    QCOMPARE(modes.takeLast(), (InputMode{m_runtime.kanaKey, u"Kana"_s}));
    QCOMPARE(modes, m_runtime.inputModes(m_runtime.displayModes));
}

void InputModesTest::inputModesOfTheCatalogues_data()
{
    QTest::addColumn<QString>("catalogue");
    QTest::addColumn<QList<InputMode>>("modes");

    QTest::newRow("numericModesSigned")
        << m_runtime.numericModesSigned
        << QList<InputMode>{{u"+"_s, u"{Numeric}.[0-9]"_s}, {u"-"_s, u"{Numeric}-.[0-9]"_s}};
    QTest::newRow("integerModes"
    ) << m_runtime.integerModes
      << QList<InputMode>{{u"+"_s, u"{Numeric}[0-9]"_s}, {u"-"_s, u"{Numeric}-[0-9]"_s}};
    QTest::newRow("numericFormats"
    ) << m_runtime.numericFormats
      << QList<InputMode>{
             {u""_s, u"Normal"_s}, {u"C"_s, u"No Comma"_s}, {u"Z"_s, u"Display 0"_s}, {u"E"_s, u"C+Z"_s}};
    QTest::newRow("japaneseModes") << m_runtime.japaneseModes
                                   << QList<InputMode>{
                                          {u"/"_s, u"All"_s},
                                          {u"*"_s, u"All+IME"_s},
                                          {u"!"_s, u"Full All"_s},
                                          {u"N"_s, u"Name[0-9A-Z_(Japanese)]"_s},
                                          {u":"_s, u"File Name(Japanese)"_s},
                                          {u"J"_s, u"Japanese Only"_s}};
    QTest::newRow("asciiModes") << m_runtime.asciiModes
                                << QList<InputMode>{
                                       {u""_s, u"Default(ASCII)[^`~{}]]"_s},
                                       {u"9"_s, u"[0-9]"_s},
                                       {u"A"_s, u"[0-9A-Z]"_s},
                                       {u"B"_s, u"BarCode39"_s},
                                       {u"C"_s, u"[0-9A-Z] or -"_s},
                                       {u"D"_s, u"Date(8)"_s},
                                       {u"H"_s, u"ASCII ALL"_s},
                                       {u"I"_s, u"File Name"_s},
                                       {u"M"_s, u"Name[0-9A-Z_]"_s},
                                       {u"S"_s, u"String(ASCII)[^`~{}]]"_s},
                                       {u"T"_s, u"DateTime(17)"_s},
                                       {u"U"_s, u"Upper(ASCII)[^ `~{}]]"_s},
                                       {u"V"_s, u"(ASCII)[^ ]"_s},
                                       {u"Z"_s, u"[A-Z]"_s}};
    QTest::newRow("floatModes") << m_runtime.floatModes << QList<InputMode>{{u"F"_s, u"Float"_s}};
    QTest::newRow("dateTimeModes") << m_runtime.dateTimeModes << QList<InputMode>{{u"E"_s, u"DateTime"_s}};
    const QList<InputMode> display
        = {{u""_s, u"Normal"_s},
           {u"I"_s, u"[^IO]"_s},
           {u"L"_s, u"[a-z]"_s},
           {u"R"_s, u"[a-z](Reverse)"_s},
           {u"*"_s, u"Display *"_s},
           {u"#"_s, u"Display *[a-z]"_s},
           {u"X"_s, u"[^{}]"_s}};
    QTest::newRow("displayModes") << m_runtime.displayModes << display;
    QTest::newRow("displayModesKana")
        << m_runtime.displayModesKana << display + QList<InputMode>{{u"K"_s, u"Kana"_s}};
}

void InputModesTest::inputModesOfTheCatalogues()
{
    QFETCH(QString, catalogue);
    QTEST(m_runtime.inputModes(catalogue), "modes");
}

void InputModesTest::inputModes_data()
{
    QTest::addColumn<QString>("catalogue");
    QTest::addColumn<QList<InputMode>>("modes");

    const auto row = [](const char *name, const QString &catalogue, const QList<InputMode> &modes) {
        QTest::newRow(name) << catalogue << modes;
    };
    row("empty", u""_s, {});
    row("null", QString(), {});
    row("code alone", u"A"_s, {});
    row("one pair", u"A,a"_s, {{u"A"_s, u"a"_s}});
    row("default mode", u",Normal"_s, {{u""_s, u"Normal"_s}});
    row("one comma", u","_s, {{u""_s, u""_s}});
    row("two commas", u",,"_s, {{u""_s, u""_s}});
    row("three commas", u",,,"_s, {{u""_s, u""_s}, {u""_s, u""_s}});
    row("last code without label", u"A,a,B"_s, {{u"A"_s, u"a"_s}});
    row("trailing comma", u"A,a,"_s, {{u"A"_s, u"a"_s}});
    row("empty label", u"A,"_s, {{u"A"_s, u""_s}});
    row("empty label inside", u"A,,B,b"_s, {{u"A"_s, u""_s}, {u"B"_s, u"b"_s}});
    row("blanks count", u" A , a b "_s, {{u" A "_s, u" a b "_s}});
    row("quotes are plain", u"A,\"a,b\""_s, {{u"A"_s, u"\"a"_s}});
    row("long code", u"AB,ab"_s, {{u"AB"_s, u"ab"_s}});
    row("code twice", u"A,a,A,b"_s, {{u"A"_s, u"a"_s}, {u"A"_s, u"b"_s}});
    row("kanji", u"漢,全角"_s, {{u"漢"_s, u"全角"_s}});
    row("full-width comma", u"A，a"_s, {});
    row("lone surrogate", QChar(0xd800) + u",a"_s, {{QString(QChar(0xd800)), u"a"_s}});
    row("NUL", QString(u"\0,a"_s), {{QString(QChar(u'\0')), u"a"_s}});
}

void InputModesTest::inputModes()
{
    QFETCH(QString, catalogue);
    QFETCH(QList<InputMode>, modes);

    AppRuntime runtime(u"TEST"_s);
    runtime.checkMessage = u"old"_s;
    runtime.lastError = u"error"_s;
    runtime.convertOk = true;
    QCOMPARE(runtime.inputModes(catalogue), modes);
    QCOMPARE(runtime.checkMessage, u"old"_s);
    QCOMPARE(runtime.lastError, u"error"_s);
    QVERIFY(runtime.convertOk);
    // A runtime's own catalogues stay what they are.
    for (const Catalogue &known : catalogues)
        QCOMPARE(runtime.*known.text, m_runtime.*known.text);
}

QTEST_GUILESS_MAIN(InputModesTest)
#include "tst_inputmodes.moc"
