#pragma once

#include <QObject>
#include <QSocketNotifier>

#include <memory>

/// SIGTERM, SIGINT and SIGHUP, handed to the event loop: the program ends by its own way out. From
/// this object's making none of them ends the process by itself. One at a time.
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

    /// From when on there is an event loop to tell. Signals that came before are told then.
    void listen();

Q_SIGNALS:
    void received();

private:
    std::unique_ptr<QSocketNotifier> m_arrivals;
};
