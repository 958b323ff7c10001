#include "model/AppModel.h"

#include "model/Background.h"
#include "model/SourceScanner.h"
#include "model/UserDefaults.h"

#include <QFileInfo>

namespace {

/// Where a measurement stands.
struct Measured
{
    qint64 soFar = 0;                ///< bytes of all sources
    QString source = {};             ///< the one that is done now
    std::optional<qint64> size = {}; ///< its bytes; absent while it isn't done
};

QStringList measuredExcludes(const AppConfig &config)
{
    if (!config.localEnabled) {
        return config.excludes;
    }
    // A repository inside a source isn't something to back up, and may itself be named by a link.
    const QString repository = config.repository(DestinationID::local);
    return config.excludes + QStringList{repository, QFileInfo(repository).canonicalFilePath()};
}

} // namespace

void AppModel::measureSources()
{
    if (m_measuring) {
        return;
    }
    checkPermissions();
    if (m_fullDiskAccess) {
        runMeasure();
    } else {
        setAccessRequest(GatedAction::Measure);
    }
}

void AppModel::runMeasure()
{
    if (m_measuring) {
        return;
    }
    assign(m_measuring, true, &AppModel::measuringChanged);
    assign(m_measuredSoFar, qint64{0}, &AppModel::measuredSoFarChanged);
    const auto measure = [sources = m_config.sources,
                          excludes = measuredExcludes(m_config)](const auto &report) {
        qint64 before = 0;
        for (const QString &source : sources) {
            const qint64 size =
                SourceScanner::size(source, excludes, [&report, before](qint64 bytes) {
                    report(Measured{.soFar = before + bytes});
                });
            before += size;
            report(Measured{.soFar = before, .source = source, .size = size});
        }
    };
    const auto receive = [this, sources = m_config.sources,
                          excludes = m_config.excludes](const Measured &measured) {
        if (!measured.size) {
            assign(m_measuredSoFar, measured.soFar, &AppModel::measuredSoFarChanged);
        } else if (m_config.sources == sources && m_config.excludes == excludes) {
            // A figure of an earlier selection would stand for the new one.
            QMap<QString, qint64> sizes = m_sourceSizes;
            sizes.insert(measured.source, *measured.size);
            setSourceSizes(sizes);
        }
    };
    Background::runReporting<Measured>(this, measure, receive, [this] {
        assign(m_measuring, false, &AppModel::measuringChanged);
    });
}

void AppModel::setSourceSizes(const QMap<QString, qint64> &sizes)
{
    assign(m_sourceSizes, sizes, &AppModel::sourceSizesChanged);
    UserDefaults::set(UserDefaults::sourceSizes, sourceSizesView());
}
