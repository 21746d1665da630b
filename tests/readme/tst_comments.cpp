// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

#include <QTest>

#include <QDir>
#include <QTemporaryDir>

#include <concepts>
#include <vector>

using namespace Qt::StringLiterals;

namespace
{

int expectations = 0;

/// The value as a comment shows it.
template<typename Value> QString shown(const Value &value)
{
    if constexpr (std::same_as<Value, QString>)
        return value;
    else if constexpr (std::same_as<Value, bool>)
        return value ? u"true"_s : u"false"_s;
    else
        return QString::number(value);
}

template<typename Value> void expect(const char *call, const Value &value, const char *documented)
{
    ++expectations;
    QTest::qCompare(shown(value), QString::fromUtf8(documented), call, "the comment", __FILE__, __LINE__);
}

} // namespace

/// The calls in the comments of the headers give what the comments say.
class TestComments : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void examples();
};

void TestComments::examples()
{
    const QTemporaryDir directory;
    QVERIFY(QDir::setCurrent(directory.path()));
    int argc = 1;
    char name[] = "test";
    char *argv[] = {name, nullptr};

#include "examples.inc"

    // Reworded past recognition, an example would be checked no more.
    QVERIFY2(expectations >= 23, qPrintable(QString::number(expectations)));
    QVERIFY(QDir::setCurrent(QDir::rootPath()));
}

QTEST_GUILESS_MAIN(TestComments)

#include "tst_comments.moc"
