// SPDX-License-Identifier: MIT
// A program whose own functions have the names and the arguments of the runtime's internal helpers. The
// runtime must not call them: names NAME-OF-A-PROGRAM [ITS ARGUMENT...] runs that program, which makes the
// file "started".
#include <runtime/core/appruntime.h>

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QSysInfo>

#include <cstdio>
#include <cstdlib>

[[noreturn]] void called(const char *name)
{
    std::fprintf(stderr, "the runtime calls the program's %s\n", name);
    std::_Exit(1);
}

// clang-format off
QByteArray firstOutputLineOf(const QString &, const QStringList &) { called("firstOutputLineOf"); }
void runBounded(const QString &, const QStringList &, QByteArray *) { called("runBounded"); }
void startTied(QProcess &, const QString &, const QStringList &) { called("startTied"); }
QString systemCommand(const QString &) { called("systemCommand"); }
QString executableOf(const QString &) { called("executableOf"); }
bool isSystemName(QStringView) { called("isSystemName"); }
QString ownCopy(const QString &) { called("ownCopy"); }
QByteArray traceLine(const QByteArray &, const QByteArray &) { called("traceLine"); }
qsizetype indexOfFirst(QStringView, QStringView, qsizetype) { called("indexOfFirst"); }
QStringView withoutLeadingBlanks(QStringView) { called("withoutLeadingBlanks"); }
QStringView withoutTrailingBlanks(QStringView) { called("withoutTrailingBlanks"); }
bool isOneColumn(char16_t) { called("isOneColumn"); }
QString upperCased(const QString &) { called("upperCased"); }
QString lowerCased(const QString &) { called("lowerCased"); }
QByteArray utf8Of(const QString &) { called("utf8Of"); }
qsizetype mendCodePage(char *, qsizetype) { called("mendCodePage"); }
bool moveFile(const QString &, const QString &) { called("moveFile"); }
void writeConsole(const QByteArray &) { called("writeConsole"); }
bool readConsole(char &) { called("readConsole"); }
quint32 bitsOf(QChar, const QChar *) { called("bitsOf"); }
bool isElementOf(const QStringList &, const QString &) { called("isElementOf"); }
int waitedForProcess = 4711;
// clang-format on

class ListFiller
{
public:
    explicit ListFiller(QStringList &);
    ~ListFiller();
    QString &add(QStringView);

private:
    static void copyUnits(const QChar *, qsizetype, QChar *);
    QString &append(QStringView);
};

// clang-format off
ListFiller::ListFiller(QStringList &) { called("ListFiller"); }
ListFiller::~ListFiller() { called("~ListFiller"); }
QString &ListFiller::add(QStringView) { called("ListFiller::add"); }
void ListFiller::copyUnits(const QChar *, qsizetype, QChar *) { called("ListFiller::copyUnits"); }
QString &ListFiller::append(QStringView) { called("ListFiller::append"); }
// clang-format on

namespace
{

void verify(bool holds, const char *what)
{
    if (holds)
        return;
    std::fprintf(stderr, "wrong: %s\n", what);
    std::_Exit(1);
}

} // namespace

int main(int argc, char **argv)
{
    int qtArgc = 1;
    const QCoreApplication application(qtArgc, argv);
    AppRuntime runtime(QStringLiteral("NAMES"), argc, argv);
    runtime.writeTrace(QStringLiteral("traced"));

    const QString machine = QSysInfo::machineHostName();
    verify(runtime.hostName == machine.left(machine.indexOf(QLatin1Char('.'))), "host name");

    QString words;
    for (int i = 1; i < runtime.count(*runtime.arguments); ++i)
        words += (i > 1 ? QStringLiteral(" ") : QString()) + runtime.elementAt(*runtime.arguments, i);
    QFile::remove(QStringLiteral("started"));
    verify(
        runtime.runProgram(runtime.elementAt(*runtime.arguments, 0), words, QString(), true) == 0, "result"
    );
    verify(QFile::exists(QStringLiteral("started")), "program started");
    verify(waitedForProcess == 4711, "variable");

    QStringList fields;
    runtime.splitRecord(fields, QStringLiteral("a, \"b,c\" ,\"d\"\"e\""), QStringLiteral("CSV"));
    verify(
        fields == QStringList({QStringLiteral("a"), QStringLiteral("b,c"), QStringLiteral("d\"e")}), "fields"
    );
    verify(runtime.environmentValue(QStringLiteral("NAMES_UNSET")).isEmpty(), "environment");
    verify(runtime.displayWidth(QStringLiteral("a\u6f22")) == 3, "width");
    verify(runtime.indexOfAny(QStringLiteral("abc"), QStringLiteral("cb"), 0) == 1, "search");
    verify(runtime.toUpper(QStringLiteral("a\u00e9")) == QStringLiteral("A\u00c9"), "capitals");
    verify(runtime.toLower(QStringLiteral("A\u00c9")) == QStringLiteral("a\u00e9"), "small letters");
    verify(!runtime.renameFile(QStringLiteral("missing"), QStringLiteral("new")), "renaming");
    verify(std::freopen("/dev/null", "r", stdin), "no input");
    verify(runtime.readConsoleLine().isEmpty(), "line of the console");
    return 0;
}
