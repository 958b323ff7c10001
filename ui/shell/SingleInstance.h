#pragma once

#include <QList>
#include <QObject>
#include <QSocketNotifier>
#include <QString>

#include <chrono>
#include <memory>

/// Sees to it that one user has one window on one support folder: whoever is started second hands
/// over to the first and ends.
///
/// A lock that the system takes away with the process decides who is first, so that one that
/// crashed is in nobody's way. A socket beside it, in the user's runtime folder or else in the
/// support folder, takes what the others hand over; it listens to nobody but that user.
class SingleInstance : public QObject
{
    Q_OBJECT

public:
    enum class Role {
        first,      ///< this process is the one, from now on
        handedOver, ///< another one is, and brings its window up
        unanswered, ///< another one is, but doesn't answer
    };

    explicit SingleInstance(QObject *parent = nullptr);
    ~SingleInstance() override;
    SingleInstance(const SingleInstance &) = delete;
    SingleInstance &operator=(const SingleInstance &) = delete;
    SingleInstance(SingleInstance &&) = delete;
    SingleInstance &operator=(SingleInstance &&) = delete;

    /// Whether this process is the first, from now on; needs no application yet. Where no lock can
    /// be had at all, each one is.
    bool claim();
    /// Once, when there is an application. Waits for the first one's answer at most `patience`.
    Role begin(std::chrono::milliseconds patience);

Q_SIGNALS:
    /// Another one was started. The token is what the desktop gave it to come to the front with;
    /// empty for none.
    void startedAgain(const QString &token);

private:
    class Visitor;

    void listen();
    void welcome();
    void hear(Visitor *visitor);

    QString m_folder;
    QString m_name;
    int m_lock = -1;
    int m_server = -1;
    std::unique_ptr<QSocketNotifier> m_arrivals;
    QList<Visitor *> m_visitors; ///< children
};
