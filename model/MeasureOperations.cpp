#include "model/AppModel.h"

#include "model/Background.h"
#include "model/Disks.h"
#include "model/UserDefaults.h"

namespace {

/// Where a measurement stands.
struct Measured
{
    qint64 soFar = 0;                ///< bytes of all sources
    QString source = {};             ///< the one that is done now
    std::optional<qint64> size = {}; ///< its bytes; absent while it isn't done
};

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
    m_measurement = std::stop_source();
    const std::stop_token stop = m_measurement.get_token();
    const auto measure = [config = m_config, stop](const auto &report) {
        qint64 before = 0;
        for (const QString &source : config.sources) {
            const qint64 size = Disks::real()->size(
                source, config,
                [&report, before](qint64 bytes) { report(Measured{.soFar = before + bytes}); },
                stop);
            before += size;
            report(Measured{.soFar = before, .source = source, .size = size});
        }
    };
    // A figure of an earlier selection would stand for the new one.
    const auto receive = [this, stop](const Measured &measured) {
        if (stop.stop_requested()) {
            return;
        }
        if (!measured.size) {
            assign(m_measuredSoFar, measured.soFar, &AppModel::measuredSoFarChanged);
            return;
        }
        QMap<QString, qint64> sizes = m_sourceSizes;
        sizes.insert(measured.source, *measured.size);
        setSourceSizes(sizes);
    };
    Background().runReporting<Measured>(this, measure, receive, [this, stop] {
        if (!stop.stop_requested()) {
            assign(m_measuring, false, &AppModel::measuringChanged);
        }
    });
}

void AppModel::endMeasurement()
{
    m_measurement.request_stop();
    assign(m_measuring, false, &AppModel::measuringChanged);
}

void AppModel::setSourceSizes(const QMap<QString, qint64> &sizes)
{
    assign(m_sourceSizes, sizes, &AppModel::sourceSizesChanged);
    UserDefaults::set(UserDefaults::sourceSizes, sourceSizesView());
}
