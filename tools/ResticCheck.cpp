#include "tools/ResticCheck.h"

#include "state/Texts.h"

tl::expected<void, ResticError>
ResticCheck::run(const Restic &restic, const std::optional<Part> &part, ProcessHandle *handle)
{
    QStringList arguments{QStringLiteral("check")};
    if (part) {
        arguments << QStringLiteral("--read-data-subset")
                  << QStringLiteral("%1/%2").arg(part->number).arg(part->count);
    }
    const ProcessResult result = restic.run(arguments, handle);
    if (result.status == 0) {
        return {};
    }
    if (result.standardError.contains(QLatin1String("repository contains errors"))) {
        return tl::unexpected(ResticError{Texts::tr("Il backup contiene dati danneggiati")});
    }
    return tl::unexpected(Restic::describe(result));
}
