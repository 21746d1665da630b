// SPDX-License-Identifier: MIT
#include <QTest>

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace
{

QString contentOf(const QString &fileName)
{
    QFile file(QStringLiteral(SOURCE_FOLDER "/") + fileName);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

/// What the page says of a field.
struct Row {
    QString defaultValue;
    QString setBy;
    QString readBy; ///< Empty in the table of the fields that no member reads.
};

/// The value of an initialiser as the page writes it.
QString shown(const QString &initialiser)
{
    static const QRegularExpression literal(u"^(?:QStringLiteral\\(\\s*\"(.*)\"\\s*\\)|u'(.)')$"_s);
    if (initialiser.isEmpty())
        return u"empty"_s;
    if (initialiser.startsWith("std::make_unique"_L1))
        return u"an empty list"_s;
    const auto match = literal.match(initialiser);
    const QString value = match.hasMatch() ? match.captured(1) + match.captured(2) : initialiser;
    return value == u' ' ? u"a blank"_s : u'`' + value + u'`';
}

/// Name and initialiser of every field of the class, in its order.
QList<std::pair<QString, QString>> fieldsOfClass()
{
    static const QRegularExpression field(
        u"(?<=[ ,])(\\w+)\\{((?:QStringLiteral\\(\\s*(?:\"[^\"\n]*\"\\s*)+\\)|[^{};])*)\\}(?=[,;])"_s
    );
    static const QRegularExpression comment(u" *///?.*"_s);
    QString text = contentOf(u"runtime/core/appruntime.h"_s);
    text.remove(0, text.indexOf("\\name Fields"_L1));
    text.remove(comment);

    QList<std::pair<QString, QString>> fields;
    for (auto found = field.globalMatch(text); found.hasNext();) {
        const auto match = found.next();
        fields.append({match.captured(1), match.captured(2).trimmed()});
    }
    return fields;
}

/// The rows of the page's tables by field; a field in two places comes twice.
QMultiMap<QString, Row> rowsOfPage()
{
    static const QRegularExpression name(u"`(\\w+)`"_s);
    QMultiMap<QString, Row> rows;
    for (const QString &line : contentOf(u"docs/settings.md"_s).split(u'\n')) {
        const QStringList cells = line.split(u" | "_s);
        if (!line.startsWith(u'|') || cells.size() < 3)
            continue;
        const bool unread = cells.size() == 3;
        for (auto found = name.globalMatch(cells[unread ? 2 : 0]); found.hasNext();)
            rows.insert(found.next().captured(1), {cells[1], unread ? QString() : cells[2], cells.value(3)});
    }
    return rows;
}

/// All the runtime's own sources, but for the class with the fields.
QString sources()
{
    QString text = contentOf(u"launcher/main.cpp"_s);
    QDirIterator folders(
        QStringLiteral(SOURCE_FOLDER "/runtime"), {u"*.cpp"_s}, QDir::Files, QDirIterator::Subdirectories
    );
    while (folders.hasNext())
        text += contentOf(folders.next().mid(QStringLiteral(SOURCE_FOLDER "/").size()));
    return text;
}

} // namespace

/// The page with the settings says of every field what the class and the sources say.
class TestSettingsPage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void field_data();
    void field();
    void nothingElse();
};

void TestSettingsPage::field_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("initialiser");
    const auto fields = fieldsOfClass();
    QVERIFY(fields.size() > 150);
    for (const auto &[name, initialiser] : fields)
        QTest::newRow(qPrintable(name)) << name << initialiser;
}

void TestSettingsPage::field()
{
    QFETCH(const QString, name);
    QFETCH(const QString, initialiser);
    static const auto rows = rowsOfPage();
    static const QString code = sources();

    const QList<Row> found = rows.values(name);
    QCOMPARE(found.size(), 1);
    const Row &row = found.first();

    // A long catalogue is described, and what the constructor makes out is not in the class.
    const bool madeOut = row.setBy.contains("onstructor"_L1) || row.setBy.contains("setupPlatform()"_L1)
        || row.defaultValue == "a new cursor"_L1;
    if (!madeOut && initialiser.size() < 80)
        QCOMPARE(row.defaultValue, shown(initialiser));
    if (madeOut && !initialiser.startsWith("std::"_L1) && name != "platformChar"_L1)
        QCOMPARE(initialiser, QString());

    // VersionInfo::writeVersionFile() has a parameter called arguments, and comments name fields that nobody
    // reads.
    const bool used = code.contains(
        QRegularExpression(u"^(?! *//).*\\b"_s + name + u"\\b"_s, QRegularExpression::MultilineOption)
    );
    const bool usedByPage = row.readBy.contains("()"_L1) || row.readBy.contains("launcher"_L1)
        || row.setBy.contains("()"_L1) || row.setBy.contains("onstructor"_L1) || name == "lastError"_L1;
    QCOMPARE(usedByPage, used);
}

void TestSettingsPage::nothingElse()
{
    QStringList ofClass;
    for (const auto &[name, initialiser] : fieldsOfClass())
        ofClass.append(name);
    for (const QString &name : rowsOfPage().keys())
        QVERIFY2(ofClass.contains(name), qPrintable(name));
}

QTEST_GUILESS_MAIN(TestSettingsPage)

#include "tst_settingspage.moc"
