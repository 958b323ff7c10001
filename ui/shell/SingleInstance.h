#pragma once

#include <QList>
#include <QObject>
#include <QSocketNotifier>
#include <QString>

#include <chrono>
#include <memory>

/// Ensures that there is one window for each support folder of a user: a second process hands over
/// to the first and ends.
///
/// The first process holds a lock, which the system releases even when the process crashes. It
/// listens on a socket beside the lock, in the user's runtime folder or else in the support folder;
/// only the same user can connect.
class SingleInstance : public QObject
{
    Q_OBJECT

public:
    enum class Role {
        first,      ///< this process is the first from now on
        handedOver, ///< a different process is the first, and brings its window to the front
        unanswered, ///< a different process is the first, but doesn't answer
    };

    explicit SingleInstance(QObject *parent = nullptr);
    ~SingleInstance() override;
    SingleInstance(const SingleInstance &) = delete;
    SingleInstance &operator=(const SingleInstance &) = delete;
    SingleInstance(SingleInstance &&) = delete;
    SingleInstance &operator=(SingleInstance &&) = delete;

    /// Tries to make this process the first; needs no application object yet. True for every
    /// process where no lock can be had at all.
    bool claim();
    /// To be called once, when there is an application object. Waits for the answer of the first
    /// process, at most `patience`.
    Role begin(std::chrono::milliseconds patience);

Q_SIGNALS:
    /// The program was started a second time. The token is the desktop's permission to come to the
    /// front; empty for none.
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
    QList<Visitor *> m_visitors; ///< children of this object
};
