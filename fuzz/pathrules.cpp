// SPDX-License-Identifier: MIT
#include <fuzz/input.h>

#include <runtime/core/appruntime.h>

using namespace Qt::StringLiterals;

namespace
{

void paths(AppRuntime &runtime, const QString &path)
{
    const QString &separator = runtime.pathSeparator;
    const bool explicitPath = path.mid(1, 1) == u":" || path.startsWith(separator)
        || path.startsWith(u'.' + separator) || path.startsWith(u".."_s + separator);
    Fuzz::requireEqual(runtime.isExplicitPath(path), explicitPath, "a path says where its file is");

    const QString resolved = runtime.resolvePath(path);
    const QString folder = explicitPath ? QString() : runtime.tempPath(separator);
    Fuzz::requireEqual(resolved, folder + path, "a bare name is one of the temporary directory");
    Fuzz::require(runtime.isExplicitPath(resolved), "a resolved path says where its file is");
    Fuzz::requireEqual(runtime.resolvePath(resolved), resolved, "and stays");
}

void names(AppRuntime &runtime, const QString &name, const QString &program)
{
    const QString extension = runtime.extensionOf(name);
    if (name.contains(u'.'))
        Fuzz::require(!extension.contains(u'.'), "an extension has no dot");
    Fuzz::requireEqual(extension, name.split(u'.').last().trimmed(), "an extension follows the last dot");

    const bool time = program == u"ZCLOK";
    const QString folder = time ? runtime.subdirPath() + runtime.pathSeparator + u"TMP_"_s + runtime.realMode2
                                : runtime.familyDirectory() + runtime.pathSeparator + u"TMP"_s;
    runtime.checkMessage = u"untouched"_s;
    Fuzz::requireEqual(
        runtime.tempPathFor(name, program), folder + name, "a name stands behind its directory"
    );
    Fuzz::requireEqual(
        runtime.checkMessage,
        time ? u"untouched"_s : u'"' + program + u"\" not in('ZCLOK')"_s,
        "the program is compared"
    );
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    Fuzz::Input input(bytes, size);
    AppRuntime &runtime = Fuzz::runtime();

    runtime.subdirTag = input.text();
    runtime.realMode2 = input.text();
    const QString program = input.flag() ? u"ZCLOK"_s : input.text();
    const QString path = input.text();
    paths(runtime, path);
    paths(runtime, runtime.pathSeparator + path);
    paths(runtime, u'.' + runtime.pathSeparator + path);
    names(runtime, path, program);

    const bool safe = !path.contains(u"../"_s) && !path.contains(u"..\\"_s);
    runtime.lastError = u"before"_s;
    Fuzz::requireEqual(runtime.isSafePathText(path), safe, "a safe text goes up nowhere");
    Fuzz::requireEqual(
        runtime.lastError, safe ? u"before"_s : u"bad QChar (..\\ or ../)"_s, "and any other is refused"
    );
    return 0;
}
