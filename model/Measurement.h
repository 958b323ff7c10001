#pragma once

#include "model/Settings.h"
#include "model/World.h"

#include <QMap>
#include <QObject>
#include <QString>

#include <optional>
#include <stop_token>

/// The sizes of the source folders, and the measuring of them.
class Measurement final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool measuring READ isMeasuring NOTIFY measuringChanged FINAL)
    Q_PROPERTY(qint64 soFar READ soFar NOTIFY soFarChanged FINAL)
    Q_PROPERTY(bool hasTotal READ hasTotal NOTIFY sizesChanged FINAL)
    Q_PROPERTY(qint64 total READ totalOrNone NOTIFY sizesChanged FINAL)

public:
    /// The sizes of an earlier start come a moment later. `settings` outlives this.
    Measurement(World world, Settings &settings, QObject *parent = nullptr);
    ~Measurement() override;
    Q_DISABLE_COPY_MOVE(Measurement)

    /// Bytes of each source folder that was measured, by its path.
    [[nodiscard]] const QMap<QString, qint64> &sizes() const { return m_sizes; }
    [[nodiscard]] bool isMeasuring() const { return m_isMeasuring; }
    /// Bytes counted by the measurement under way.
    [[nodiscard]] qint64 soFar() const { return m_soFar; }

    /// Bytes of all sources together; absent unless there are some and each has been measured.
    [[nodiscard]] std::optional<qint64> total() const;
    [[nodiscard]] bool hasTotal() const { return total().has_value(); }
    [[nodiscard]] qint64 totalOrNone() const { return total().value_or(0); }

    /// Measures the source folders, unless that is under way.
    void start();

Q_SIGNALS:
    void sizesChanged();
    void measuringChanged();
    void soFarChanged();

private:
    /// How far a measurement is.
    struct Measured
    {
        qint64 soFar = 0;                ///< bytes of all sources
        QString source = {};             ///< the one that is done now
        std::optional<qint64> size = {}; ///< its bytes; absent while it isn't done
    };

    void readSizes();
    void end();
    void take(const Measured &measured);
    void setSizes(const QMap<QString, qint64> &sizes);
    void setMeasuring(bool measuring);
    void setSoFar(qint64 bytes);

    const World m_world;
    Settings &m_settings;
    QMap<QString, qint64> m_sizes;
    bool m_isMeasuring = false;
    qint64 m_soFar = 0;
    std::stop_source m_underWay; ///< ends the one under way
};
