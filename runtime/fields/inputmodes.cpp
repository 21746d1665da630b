// SPDX-License-Identifier: MIT
#include <runtime/core/appruntime.h>

QList<InputMode> AppRuntime::inputModes(const QString &catalogue) const
{
    const QStringList fields = catalogue.split(u',');
    QList<InputMode> modes;
    modes.reserve(fields.size() / 2);
    // Whole pairs only. An empty text splits into one empty field, and has no modes.
    for (qsizetype label = 1; label < fields.size(); label += 2)
        modes.append({fields[label - 1], fields[label]});
    return modes;
}
