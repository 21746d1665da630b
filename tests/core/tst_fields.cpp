// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>
#include <support/builtwith.h>
#include <support/localtext.h>

#include <QTest>

#include <QDir>

#include <functional>
#include <variant>

using namespace Qt::StringLiterals;

namespace
{

using Owned = std::unique_ptr<QStringList> AppRuntime::*;
using Cursor = std::unique_ptr<ScanCursor> AppRuntime::*;
using Member = std::variant<
    QString AppRuntime::*,
    QChar AppRuntime::*,
    qint32 AppRuntime::*,
    qint64 AppRuntime::*,
    bool AppRuntime::*,
    QStringList AppRuntime::*,
    Owned,
    Cursor,
    std::unique_ptr<VersionInfo> AppRuntime::*>;

/// A field with the value it has in a fresh object; an owned object stands for its being there and empty.
struct Field {
    const char *name;
    Member member;
    QVariant value;
};

Field text(const char *name, QString AppRuntime::*member, const QString &value = QString())
{
    return {name, member, value};
}

Field number(const char *name, qint32 AppRuntime::*member, qint32 value = 0)
{
    return {name, member, value};
}

Field count(const char *name, qint64 AppRuntime::*member, qint64 value = 0)
{
    return {name, member, value};
}

Field character(const char *name, QChar AppRuntime::*member, QChar value)
{
    return {name, member, value};
}

Field flag(const char *name, bool AppRuntime::*member, bool value)
{
    return {name, member, value};
}

QVariant valueOf(const AppRuntime &runtime, const Member &member)
{
    return std::visit(
        [&](auto pointer) -> QVariant {
            const auto &value = runtime.*pointer;
            using Type = std::decay_t<decltype(value)>;
            if constexpr (std::is_same_v<Type, std::unique_ptr<QStringList>>)
                return value ? QVariant(*value) : QVariant();
            else if constexpr (std::is_same_v<Type, std::unique_ptr<ScanCursor>>)
                return value ? QVariant(value->position) : QVariant();
            else if constexpr (std::is_same_v<Type, std::unique_ptr<VersionInfo>>)
                return value ? QVariant(value->versionText) : QVariant();
            else
                return QVariant::fromValue(value);
        },
        member
    );
}

const void *addressOf(const AppRuntime &runtime, const Member &member)
{
    return std::visit([&](auto pointer) -> const void * { return &(runtime.*pointer); }, member);
}

using R = AppRuntime;

/// All fields in the order they are declared in, as they are in `runtime`, built with the name "TEST" and the
/// program path `path`.
QList<Field> fieldsOf(const AppRuntime &runtime, const QString &path)
{
    const bool windows = BuiltWith::windowsRules();
    const bool full = !path.isEmpty();
    const QVariant cursor = full ? QVariant(0) : QVariant();
    return {
        number("sizeSetting", &R::sizeSetting, 12),
        text("spareText1", &R::spareText1),
        character("platformChar", &R::platformChar, BuiltWith::platformChar()),
        character("programKindChar", &R::programKindChar, u'C'),
        text("programName", &R::programName, u"TEST"_s),
        text("pathSeparator", &R::pathSeparator, windows ? u"\\"_s : u"/"_s),
        text("deleteCommand", &R::deleteCommand, windows ? u"DEL"_s : u"RM"_s),
        text(
            "checkMessage",
            &R::checkMessage,
            full ? u"\"p\" not in('"_s + (windows ? u'\\' : u'/') + u"')"_s : QString()
        ),
        flag("convertOk", &R::convertOk, false),
        number("spareInt1", &R::spareInt1),
        text("fontName1", &R::fontName1, u"MS Gothic"_s),
        text("fontName2", &R::fontName2, u"MS Gothic"_s),
        {"version", &R::version, u"000800004"_s},
        {"arguments",
         &R::arguments,
         full ? QStringList{u"one"_s, QString(), throughLocal8Bit(u"三"_s)} : QStringList()},
        count("spareCount1", &R::spareCount1),
        flag("spareFlag1", &R::spareFlag1, true),
        number("spareInt2", &R::spareInt2),
        number("spareInt3", &R::spareInt3),
        text("spareText2", &R::spareText2),
        text("spareText3", &R::spareText3),
        text("spareText4", &R::spareText4),
        text("spareText5", &R::spareText5),
        text("versionLabel", &R::versionLabel, u"37/8.0.4"_s),
        text("serviceName", &R::serviceName, u"Z37QUBLEC"_s),
        number("spareInt4", &R::spareInt4, 65432),
        number("spareInt5", &R::spareInt5, 80),
        count("spareCount2", &R::spareCount2, 25),
        number("spareInt6", &R::spareInt6, 1),
        number("spareInt7", &R::spareInt7, -1),
        character("spareChar1", &R::spareChar1, u'N'),
        character("spareChar2", &R::spareChar2, u' '),
        text("versionPrefix", &R::versionPrefix, u"Z37"_s),
        text("inputTag", &R::inputTag, u"INP"_s),
        text("spareText6", &R::spareText6),
        text("spareText7", &R::spareText7),
        text("spareText8", &R::spareText8),
        text("spareText9", &R::spareText9),
        text("spareText10", &R::spareText10),
        text("spareText11", &R::spareText11),
        text("zeroText", &R::zeroText, u"0"_s),
        {"spareList1", &R::spareList1, QStringList()},
        flag("spareFlag2", &R::spareFlag2, false),
        number("spareInt8", &R::spareInt8, -1),
        count("spareCount3", &R::spareCount3),
        number("spareInt9", &R::spareInt9, -1),
        number("spareInt10", &R::spareInt10),
        count("spareCount4", &R::spareCount4),
        count("spareCount5", &R::spareCount5),
        count("spareCount6", &R::spareCount6),
        count("spareCount7", &R::spareCount7),
        count("spareCount8", &R::spareCount8),
        number("spareInt11", &R::spareInt11),
        number("timeoutShort", &R::timeoutShort, 30),
        count("timeoutLong", &R::timeoutLong, 600),
        text("spareText12", &R::spareText12),
        text("spareText13", &R::spareText13),
        text("spareText14", &R::spareText14),
        text("spareText15", &R::spareText15),
        text("highText4", &R::highText4, u"ZZZZ"_s),
        text("highText2", &R::highText2, u"ZZ"_s),
        text("languageCode", &R::languageCode, u"JA"_s),
        text("spareText16", &R::spareText16),
        text("realMode1", &R::realMode1, u"REAL"_s),
        text("realMode2", &R::realMode2, u"REAL"_s),
        text("hostName", &R::hostName, runtime.queryHostName()),
        text("hostNameUpper", &R::hostNameUpper, runtime.queryHostName().toUpper()),
        text("subdirTag", &R::subdirTag),
        text("spareText18", &R::spareText18),
        text("spareText19", &R::spareText19),
        text("lastError", &R::lastError),
        text("spareText20", &R::spareText20),
        text("spareText21", &R::spareText21),
        text("spareText22", &R::spareText22),
        text("spareText23", &R::spareText23),
        text("spareText24", &R::spareText24),
        text("spareText25", &R::spareText25),
        text("traceFileName", &R::traceFileName, u"_TRACE.TXT"_s),
        text("outputTag", &R::outputTag, u"OT"_s),
        text("spareText26", &R::spareText26),
        text("hostKey", &R::hostKey, runtime.queryHostName().toUpper().replace(u'-', u'_')),
        text("homeDirectory", &R::homeDirectory, windows ? qEnvironmentVariable("SystemDrive") : u"/home"_s),
        text("spareText27", &R::spareText27),
        text("programPath", &R::programPath, path),
        text(
            "programDirectory", &R::programDirectory, full ? (windows ? u"C:\\tools\\"_s : u"/opt/"_s) : u""_s
        ),
        text("spareText28", &R::spareText28),
        text("timeoutText", &R::timeoutText, u"30/600"_s),
        text("startDirectory", &R::startDirectory, QDir::currentPath()),
        text("spareText29", &R::spareText29),
        text("spareText30", &R::spareText30),
        text("spareText31", &R::spareText31),
        text("notText1", &R::notText1, u"NOT"_s),
        text("ngLower", &R::ngLower, u"ng"_s),
        text("ngUpper", &R::ngUpper, u"NG"_s),
        text("spareText32", &R::spareText32),
        text("spareText33", &R::spareText33),
        text("answerA", &R::answerA, u"A"_s),
        text("spareText34", &R::spareText34),
        text("spareText35", &R::spareText35),
        text("spareText36", &R::spareText36),
        text("spareText37", &R::spareText37),
        text("spareText38", &R::spareText38),
        text("spareText39", &R::spareText39),
        text("spareText40", &R::spareText40),
        text("spareText41", &R::spareText41),
        text("spareText42", &R::spareText42),
        text("spareText43", &R::spareText43),
        text("spareText44", &R::spareText44),
        text("spareText45", &R::spareText45),
        text("dateOrder", &R::dateOrder, u"Y"_s),
        text("dateSeparator", &R::dateSeparator, u"-"_s),
        text("highKey", &R::highKey, u"ZZZZ000000"_s),
        text("lowKey", &R::lowKey, u"zzzz800000"_s),
        text("spareText46", &R::spareText46),
        text("spareText47", &R::spareText47),
        text("blankText", &R::blankText, u" "_s),
        text("spareText48", &R::spareText48),
        text("spareText49", &R::spareText49),
        number("spareInt12", &R::spareInt12, 32),
        text("numericModesSigned", &R::numericModesSigned, u"+,{Numeric}.[0-9],-,{Numeric}-.[0-9]"_s),
        text("numericFormats", &R::numericFormats, u",Normal,C,No Comma,Z,Display 0,E,C+Z"_s),
        text(
            "japaneseModes",
            &R::japaneseModes,
            u"/,All,*,All+IME,!,Full All,N,Name[0-9A-Z_(Japanese)],:,File Name(Japanese),J,Japanese Only"_s
        ),
        text("japaneseModeKeys", &R::japaneseModeKeys, u"/*!N:J"_s),
        text(
            "asciiModes",
            &R::asciiModes,
            u",Default(ASCII)[^`~{}]],9,[0-9],A,[0-9A-Z],B,BarCode39,C,[0-9A-Z] or -,D,Date(8),H,ASCII ALL"
            ",I,File Name,M,Name[0-9A-Z_],S,String(ASCII)[^`~{}]],T,DateTime(17),U,Upper(ASCII)[^ `~{}]]"
            ",V,(ASCII)[^ ],Z,[A-Z]"_s
        ),
        text("floatModes", &R::floatModes, u"F,Float"_s),
        text("integerModes", &R::integerModes, u"+,{Numeric}[0-9],-,{Numeric}-[0-9]"_s),
        text("dateTimeModes", &R::dateTimeModes, u"E,DateTime"_s),
        text(
            "displayModesKana",
            &R::displayModesKana,
            u",Normal,I,[^IO],L,[a-z],R,[a-z](Reverse),*,Display *,#,Display *[a-z],X,[^{}],K,Kana"_s
        ),
        text("kanaKey", &R::kanaKey, u"K"_s),
        text(
            "displayModes",
            &R::displayModes,
            u",Normal,I,[^IO],L,[a-z],R,[a-z](Reverse),*,Display *,#,Display *[a-z],X,[^{}]"_s
        ),
        text("notText2", &R::notText2, u"NOT"_s),
        text("spareText50", &R::spareText50),
        count("spareCount9", &R::spareCount9),
        number("spareInt13", &R::spareInt13),
        number("spareInt14", &R::spareInt14, -1),
        {"messageTexts", &R::messageTexts, QStringList()},
        {"messageKeys", &R::messageKeys, QStringList()},
        {"lookupList3", &R::lookupList3, QStringList()},
        {"lookupList4", &R::lookupList4, QStringList()},
        {"lookupList5", &R::lookupList5, QStringList()},
        {"lookupList6", &R::lookupList6, QStringList()},
        {"lookupList7", &R::lookupList7, QStringList()},
        count("spareCount10", &R::spareCount10),
        count("spareCount11", &R::spareCount11, -2),
        number("spareInt15", &R::spareInt15),
        number("spareInt16", &R::spareInt16, 1),
        count("spareCount12", &R::spareCount12, 2),
        number("spareInt17", &R::spareInt17, 1),
        number("spareInt18", &R::spareInt18, 5),
        number("spareInt19", &R::spareInt19, 9),
        {"scanCursor", &R::scanCursor, cursor},
        {"scanSource", &R::scanSource, cursor},
        {"scanDelimiter", &R::scanDelimiter, cursor},
        number("charClassNone", &R::charClassNone, 0),
        number("charClassNarrow", &R::charClassNarrow, 1),
        number("charClassWide", &R::charClassWide, 2),
        number("charClassHalfKana", &R::charClassHalfKana, 3),
        number("charClassHighSurrogate", &R::charClassHighSurrogate, 4),
        number("charClassLowSurrogate", &R::charClassLowSurrogate, 5),
    };
}

} // namespace

class FieldsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void defaults_data();
    void defaults();
    void order();
    void version();
    void scanCursor();
};

void FieldsTest::defaults_data()
{
    QTest::addColumn<bool>("full");
    QTest::newRow("with a command line") << true;
    QTest::newRow("with a name alone") << false;
}

void FieldsTest::defaults()
{
    QFETCH(bool, full);

    const QString path = BuiltWith::windowsRules() ? u"C:\\tools\\prog"_s : u"/opt/prog"_s;
    QList<QByteArray> words = {path.toLocal8Bit(), "one", "", u"三"_s.toLocal8Bit()};
    char *argv[] = {words[0].data(), words[1].data(), words[2].data(), words[3].data(), nullptr};
    const std::unique_ptr<AppRuntime> runtime
        = full ? std::make_unique<AppRuntime>(u"TEST"_s, 4, argv) : std::make_unique<AppRuntime>(u"TEST"_s);

    for (const Field &field : fieldsOf(*runtime, full ? path : QString())) {
        const QVariant value = valueOf(*runtime, field.member);
        QVERIFY2(
            value == field.value,
            qPrintable(
                QLatin1StringView(field.name) + u": "_s + value.toString() + u" for "_s
                + field.value.toString()
            )
        );
    }
}

void FieldsTest::order()
{
    const AppRuntime runtime(u"TEST"_s);
    const QList<Field> fields = fieldsOf(runtime, QString());
    QCOMPARE(fields.size(), 158);
    for (qsizetype i = 1; i < fields.size(); ++i) {
        QVERIFY2(
            std::less<>()(addressOf(runtime, fields[i - 1].member), addressOf(runtime, fields[i].member)),
            fields[i].name
        );
    }
}

void FieldsTest::version()
{
    const AppRuntime runtime(u"TEST"_s);
    QCOMPARE(runtime.version->versionText, u"000800004"_s);
    QCOMPARE(runtime.version->versionNumber, 37);
    QCOMPARE(runtime.version->printVersion, 14);
    QCOMPARE(runtime.version->chartVersion, 2);
    QCOMPARE(runtime.version->runtime, &runtime);
}

void FieldsTest::scanCursor()
{
    char name[] = "test";
    char *argv[] = {name, nullptr};
    const AppRuntime runtime(u"TEST"_s, 1, argv);
    for (const auto *cursor :
         {runtime.scanCursor.get(), runtime.scanSource.get(), runtime.scanDelimiter.get()}) {
        QCOMPARE(cursor->delimiter, u' ');
        QCOMPARE(cursor->reserved1, 0);
        QCOMPARE(cursor->reserved2, 0);
        QCOMPARE(cursor->position, 0);
        QCOMPARE(cursor->text, QString());
    }
    QVERIFY(runtime.scanCursor != runtime.scanSource && runtime.scanSource != runtime.scanDelimiter);
}

QTEST_GUILESS_MAIN(FieldsTest)
#include "tst_fields.moc"
