#include "tools/ResticForget.h"

#include "state/JSONFile.h"
#include "tools/JSONValues.h"

#include <QJsonArray>
#include <QJsonObject>

namespace {

void addKept(QStringList &arguments, const char *option, const std::optional<qint64> &count)
{
    if (count) {
        arguments << QLatin1String(option) << QString::number(*count);
    }
}

QStringList forgetArguments(const ResticForget::Policy &policy)
{
    // By host alone: a change in the list of sources doesn't begin a new series of versions.
    QStringList arguments{QStringLiteral("forget"), QStringLiteral("--tag"),
                          QStringLiteral("vellomar"), QStringLiteral("--group-by"),
                          QStringLiteral("host")};
    addKept(arguments, "--keep-last", policy.last);
    addKept(arguments, "--keep-hourly", policy.hourly);
    addKept(arguments, "--keep-daily", policy.daily);
    addKept(arguments, "--keep-weekly", policy.weekly);
    return arguments;
}

enum class Fate { kept, removed };

void addVersions(ResticForget::Forecast &forecast, const QJsonValue &versions, Fate fate)
{
    const QJsonArray list = versions.toArray();
    for (const auto entry : list) {
        const QJsonObject version = entry.toObject();
        forecast.newest =
            qMax(forecast.newest, parseResticDate(version.value(QLatin1String("time")).toString()));
        if (fate == Fate::removed) {
            forecast.removed.append(version.value(QLatin1String("id")).toString());
        }
    }
}

} // namespace

std::optional<ResticForget::Forecast>
ResticForget::forecast(const Restic &restic, const Policy &policy, ProcessHandle *handle)
{
    const ProcessResult result =
        restic.run(forgetArguments(policy) +
                       QStringList{QStringLiteral("--dry-run"), QStringLiteral("--json")},
                   handle);
    const auto document = JSONFile::decode(result.standardOutput.toUtf8());
    if (result.status != 0 || !document || !document->isArray()) {
        return std::nullopt;
    }
    // A list of groups, each with the versions that it would keep and remove.
    Forecast forecast;
    const QJsonArray groups = document->array();
    for (const auto group : groups) {
        addVersions(forecast, group.toObject().value(QLatin1String("keep")), Fate::kept);
        addVersions(forecast, group.toObject().value(QLatin1String("remove")), Fate::removed);
    }
    return forecast;
}

bool ResticForget::run(const Restic &restic, const Policy &policy, Prune prune,
                       ProcessHandle *handle)
{
    QStringList arguments = forgetArguments(policy);
    if (prune == Prune::yes) {
        arguments.append(QStringLiteral("--prune"));
    }
    return restic.run(arguments, handle).status == 0;
}
