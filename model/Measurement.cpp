#include "model/Measurement.h"

#include "model/SpaceForecast.h"
#include "model/UserDefaults.h"

#include <QMetaType>

#include <utility>

namespace {

bool isNumber(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double:
        return true;
    default:
        return false;
    }
}

/// Sizes measured at an earlier start; none unless all that is kept are numbers.
QMap<QString, qint64> savedSizes(Defaults &defaults)
{
    const QVariant saved = defaults.value(UserDefaults::sourceSizes);
    if (saved.typeId() != QMetaType::QVariantMap) {
        return {};
    }
    const QVariantMap entries = saved.toMap();
    QMap<QString, qint64> sizes;
    for (auto entry = entries.cbegin(); entry != entries.cend(); ++entry) {
        if (!isNumber(entry.value())) {
            return {};
        }
        sizes.insert(entry.key(), entry.value().toLongLong());
    }
    return sizes;
}

QVariantMap stored(const QMap<QString, qint64> &sizes)
{
    QVariantMap entries;
    for (auto size = sizes.cbegin(); size != sizes.cend(); ++size) {
        entries.insert(size.key(), size.value());
    }
    return entries;
}

} // namespace

Measurement::Measurement(World world, Settings &settings, QObject *parent)
    : QObject(parent)
    , m_world(std::move(world))
    , m_settings(settings)
{
    connect(&m_settings, &Settings::changed, this, [this](const AppConfig &before) {
        const AppConfig &now = m_settings.config();
        // A figure of an earlier selection would stand for the new one.
        if (before.sources != now.sources || before.excludes != now.excludes) {
            end();
            setSizes({});
        }
    });
    readSizes();
}

Measurement::~Measurement()
{
    m_underWay.request_stop();
}

void Measurement::readSizes()
{
    // Whatever is measured before they are there counts for more, and so does another selection.
    const std::stop_token stop = m_underWay.get_token();
    m_world.background.runInOrder(
        Background::Lane::Settings, this,
        [defaults = m_world.defaults] { return savedSizes(*defaults); },
        [this, stop](const QMap<QString, qint64> &sizes) {
            if (!stop.stop_requested() && !sizes.isEmpty()) {
                m_sizes = sizes;
                Q_EMIT sizesChanged();
            }
        });
}

std::optional<qint64> Measurement::total() const
{
    return SpaceForecast::sourceTotal(m_settings.config().sources, m_sizes);
}

void Measurement::start()
{
    if (m_isMeasuring) {
        return;
    }
    end();
    setMeasuring(true);
    setSoFar(0);
    m_underWay = std::stop_source();
    const std::stop_token stop = m_underWay.get_token();
    m_world.background.runReporting<Measured>(
        this,
        [disks = m_world.disks, config = m_settings.config(), stop](const auto &report) {
            qint64 before = 0;
            for (const QString &source : config.sources) {
                if (stop.stop_requested()) {
                    return;
                }
                const qint64 size = disks->size(
                    source, config,
                    [&report, before](qint64 bytes) { report(Measured{.soFar = before + bytes}); },
                    stop);
                before += size;
                report(Measured{.soFar = before, .source = source, .size = size});
            }
        },
        [this, stop](const Measured &measured) {
            if (!stop.stop_requested()) {
                take(measured);
            }
        },
        [this, stop] {
            if (!stop.stop_requested()) {
                setMeasuring(false);
            }
        });
}

void Measurement::take(const Measured &measured)
{
    if (!measured.size) {
        setSoFar(measured.soFar);
        return;
    }
    QMap<QString, qint64> sizes = m_sizes;
    sizes.insert(measured.source, *measured.size);
    setSizes(sizes);
}

void Measurement::end()
{
    m_underWay.request_stop();
    setMeasuring(false);
}

void Measurement::setSizes(const QMap<QString, qint64> &sizes)
{
    if (std::exchange(m_sizes, sizes) != sizes) {
        Q_EMIT sizesChanged();
    }
    m_world.background.runInOrder(Background::Lane::Settings,
                                  [defaults = m_world.defaults, kept = stored(m_sizes)] {
                                      defaults->set(UserDefaults::sourceSizes, kept);
                                  });
}

void Measurement::setMeasuring(bool measuring)
{
    if (m_isMeasuring != measuring) {
        m_isMeasuring = measuring;
        Q_EMIT measuringChanged();
    }
}

void Measurement::setSoFar(qint64 bytes)
{
    if (m_soFar != bytes) {
        m_soFar = bytes;
        Q_EMIT soFarChanged();
    }
}
