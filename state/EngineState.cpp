#include "state/EngineState.h"

#include "state/JSONFile.h"
#include "state/JSONReader.h"

namespace {

QJsonObject datesToJSON(const QMap<QString, QDateTime> &dates)
{
    QJsonObject object;
    for (auto date = dates.cbegin(); date != dates.cend(); ++date) {
        object.insert(date.key(), JSONFile::dateText(date.value()));
    }
    return object;
}

std::optional<QMap<QString, QDateTime>> datesFromJSON(const QJsonObject &object)
{
    QMap<QString, QDateTime> dates;
    for (auto entry = object.constBegin(); entry != object.constEnd(); ++entry) {
        const std::optional<QDateTime> date = JSONFile::date(entry.value().toString());
        if (!date) {
            return std::nullopt;
        }
        dates.insert(entry.key(), *date);
    }
    return dates;
}

std::optional<MountedRepository> mountedFromJSON(const std::optional<QJsonObject> &object,
                                                 bool &isGood)
{
    if (!object) {
        return std::nullopt;
    }
    JSONReader reader(*object);
    MountedRepository mounted{reader.text("path"), reader.text("mountPoint")};
    isGood = reader.isGood();
    return mounted;
}

} // namespace

bool EngineState::isCredible(const QDateTime &date, const QDateTime &now)
{
    return date <= now.addDays(1);
}

bool EngineState::isDue(const std::optional<QDateTime> &last, const QDateTime &now,
                        std::chrono::milliseconds interval)
{
    return !last || !isCredible(*last, now) || last->msecsTo(now) > interval.count();
}

bool EngineState::isDue(const QMap<QString, QDateTime> &dates, const QString &destination,
                        const QDateTime &now, std::chrono::milliseconds interval)
{
    const auto last = dates.constFind(destination);
    return isDue(last == dates.constEnd() ? std::nullopt : std::optional(*last), now, interval);
}

QJsonObject EngineState::toJSON() const
{
    QJsonObject object{
        {QStringLiteral("lastPrune"), datesToJSON(lastPrune)},
        {QStringLiteral("lastCheck"), datesToJSON(lastCheck)},
    };
    if (localDisk) {
        object.insert(QStringLiteral("localDisk"),
                      QJsonObject{{QStringLiteral("path"), localDisk->path},
                                  {QStringLiteral("mountPoint"), localDisk->mountPoint}});
    }
    if (!newestVersion.isEmpty()) {
        object.insert(QStringLiteral("newestVersion"), datesToJSON(newestVersion));
    }
    if (lastAlert) {
        object.insert(QStringLiteral("lastAlert"), JSONFile::dateText(*lastAlert));
    }
    return object;
}

std::optional<EngineState> EngineState::fromJSON(const QJsonObject &object)
{
    JSONReader reader(object);
    const auto lastPrune =
        datesFromJSON(reader.optionalObject("lastPrune").value_or(QJsonObject()));
    const auto lastCheck =
        datesFromJSON(reader.optionalObject("lastCheck").value_or(QJsonObject()));
    const auto lastAlert = reader.optionalDate("lastAlert");
    bool isMountedGood = true;
    const auto localDisk = mountedFromJSON(reader.optionalObject("localDisk"), isMountedGood);
    const auto newestVersion =
        datesFromJSON(reader.optionalObject("newestVersion").value_or(QJsonObject()));
    if (!reader.isGood() || !isMountedGood || !lastPrune || !lastCheck || !newestVersion) {
        return std::nullopt;
    }
    return EngineState{*lastPrune, *lastCheck, lastAlert, localDisk, *newestVersion};
}
