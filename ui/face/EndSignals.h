#pragma once

#include <QObject>
#include <QSocketNotifier>

#include <memory>

/// Hands SIGTERM, SIGINT and SIGHUP to the event loop, so that the program ends in an orderly way.
/// From the constructor on, none of them ends the process by itself. There is one such object at a
/// time.
class EndSignals : public QObject
{
    Q_OBJECT

public:
    EndSignals();
    ~EndSignals() override;
    EndSignals(const EndSignals &) = delete;
    EndSignals &operator=(const EndSignals &) = delete;
    EndSignals(EndSignals &&) = delete;
    EndSignals &operator=(EndSignals &&) = delete;

    /// To be called when there is an event loop. Reports earlier signals too.
    void listen();

Q_SIGNALS:
    void received();

private:
    std::unique_ptr<QSocketNotifier> m_arrivals;
};
