#include "ui/shell/SingleInstance.h"

#include "state/Paths.h"

#include <QCryptographicHash>
#include <QDeadlineTimer>
#include <QFile>
#include <QThread>

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

// Qt has no such class. GApplication's needs a session bus, which a login may lack, and identifies
// the program instead of the support folder.

constexpr size_t longestMessage = 4096;
constexpr qsizetype mostVisitors = 8;

/// Whether a folder belongs to this user, and nobody else can write to it.
bool isPrivate(const QString &folder)
{
    struct stat status = {};
    return !folder.isEmpty() && ::stat(QFile::encodeName(folder).constData(), &status) == 0 &&
           S_ISDIR(status.st_mode) && status.st_uid == ::geteuid() &&
           (status.st_mode & (S_IWGRP | S_IWOTH)) == 0;
}

QString meetingFolder()
{
    const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    return isPrivate(runtime) ? runtime : Paths::support();
}

/// Differs for each support folder, as a second home made for a trial may share the runtime folder.
QString meetingName()
{
    const QByteArray hash =
        QCryptographicHash::hash(Paths::support().toUtf8(), QCryptographicHash::Sha256);
    return QLatin1String("vellomar-") + QString::fromLatin1(hash.toHex().first(16));
}

/// The address of a socket in a folder whose path may be too long for an address.
class Address
{
public:
    Address(const QString &folder, const QString &name)
        : m_folder(::open(QFile::encodeName(folder).constData(), O_PATH | O_DIRECTORY | O_CLOEXEC))
    {
        const QByteArray path = QByteArrayLiteral("/proc/self/fd/") + QByteArray::number(m_folder) +
                                '/' + name.toLatin1();
        m_address.sun_family = AF_UNIX;
        std::memcpy(m_address.sun_path, path.constData(),
                    std::min(static_cast<size_t>(path.size()), sizeof(m_address.sun_path) - 1));
    }
    ~Address()
    {
        if (m_folder >= 0) {
            ::close(m_folder);
        }
    }
    Address(const Address &) = delete;
    Address &operator=(const Address &) = delete;
    Address(Address &&) = delete;
    Address &operator=(Address &&) = delete;

    [[nodiscard]] const sockaddr *get() const
    {
        return reinterpret_cast<const sockaddr *>(&m_address);
    }
    [[nodiscard]] static socklen_t size() { return sizeof(sockaddr_un); }

private:
    int m_folder;
    sockaddr_un m_address = {};
};

int makeSocket()
{
    return ::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
}

bool isOurs(int connection)
{
    ucred other = {};
    socklen_t size = sizeof(other);
    return ::getsockopt(connection, SOL_SOCKET, SO_PEERCRED, &other, &size) == 0 &&
           other.uid == ::geteuid();
}

QByteArray startupToken()
{
    QByteArray token = qgetenv("XDG_ACTIVATION_TOKEN");
    if (token.isEmpty()) {
        token = qgetenv("DESKTOP_STARTUP_ID");
    }
    return token.left(longestMessage - 1);
}

/// Hands over to the process that listens; true when it answered.
bool handOver(const QString &folder, const QString &name, const QDeadlineTimer &deadline)
{
    const int connection = makeSocket();
    if (connection < 0) {
        return false;
    }
    const Address address(folder, name);
    // The first byte makes the message non-empty, as an empty one looks like the end of the
    // connection.
    const QByteArray message = '+' + startupToken();
    bool answered = false;
    if (::connect(connection, address.get(), Address::size()) == 0 && isOurs(connection) &&
        ::send(connection, message.constData(), static_cast<size_t>(message.size()),
               MSG_NOSIGNAL) == message.size()) {
        pollfd wait = {connection, POLLIN, 0};
        char answer = 0;
        answered = ::poll(&wait, 1, static_cast<int>(deadline.remainingTime())) == 1 &&
                   ::recv(connection, &answer, 1, 0) == 1;
    }
    ::close(connection);
    return answered;
}

} // namespace

/// A connection from a process that hands over.
class SingleInstance::Visitor : public QObject
{
public:
    Visitor(int connection, QObject *parent)
        : QObject(parent)
        , m_connection(connection)
        , m_words(connection, QSocketNotifier::Read)
    {
    }
    ~Visitor() override
    {
        m_words.setEnabled(false);
        ::close(m_connection);
    }
    Visitor(const Visitor &) = delete;
    Visitor &operator=(const Visitor &) = delete;
    Visitor(Visitor &&) = delete;
    Visitor &operator=(Visitor &&) = delete;

    [[nodiscard]] int connection() const { return m_connection; }
    [[nodiscard]] QSocketNotifier &words() { return m_words; }

private:
    int m_connection;
    QSocketNotifier m_words;
};

SingleInstance::SingleInstance(QObject *parent)
    : QObject(parent)
    , m_folder(meetingFolder())
    , m_name(meetingName())
{
}

SingleInstance::~SingleInstance()
{
    m_arrivals.reset();
    if (m_server >= 0) {
        ::unlink(
            QFile::encodeName(m_folder + u'/' + m_name + QLatin1String(".socket")).constData());
        ::close(m_server);
    }
    // The lock file stays: removing it could remove one that a different process has just locked.
    if (m_lock >= 0) {
        ::close(m_lock);
    }
}

SingleInstance::Role SingleInstance::begin(std::chrono::milliseconds patience)
{
    constexpr unsigned long pauseMilliseconds = 20;
    const QDeadlineTimer deadline(patience);
    // The first process may be about to listen, or about to end.
    do {
        if (claim()) {
            listen();
            return Role::first;
        }
        if (handOver(m_folder, m_name + QLatin1String(".socket"), deadline)) {
            return Role::handedOver;
        }
        QThread::msleep(pauseMilliseconds);
    } while (!deadline.hasExpired());
    return Role::unanswered;
}

bool SingleInstance::claim()
{
    if (m_lock < 0) {
        const QString path = m_folder + u'/' + m_name + QLatin1String(".lock");
        m_lock = ::open(QFile::encodeName(path).constData(),
                        O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, S_IRUSR | S_IWUSR);
    }
    // Only a lock of a different process prevents the start. If no lock can be had at all, the
    // window opens anyway.
    return m_lock < 0 || ::flock(m_lock, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

void SingleInstance::listen()
{
    if (m_lock < 0) {
        return;
    }
    const QString name = m_name + QLatin1String(".socket");
    // The socket of a process that crashed: whoever has the lock may remove it.
    ::unlink(QFile::encodeName(m_folder + u'/' + name).constData());
    const int server = makeSocket();
    if (server < 0) {
        return;
    }
    const Address address(m_folder, name);
    if (::bind(server, address.get(), Address::size()) != 0 ||
        ::listen(server, static_cast<int>(mostVisitors)) != 0) {
        ::close(server);
        return;
    }
    m_server = server;
    m_arrivals = std::make_unique<QSocketNotifier>(m_server, QSocketNotifier::Read);
    connect(m_arrivals.get(), &QSocketNotifier::activated, this, &SingleInstance::welcome);
}

void SingleInstance::welcome()
{
    const int connection = ::accept4(m_server, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
    if (connection < 0) {
        return;
    }
    if (!isOurs(connection)) {
        ::close(connection);
        return;
    }
    // Silent connections are dropped in favour of new ones.
    if (m_visitors.size() == mostVisitors) {
        delete m_visitors.takeFirst();
    }
    auto *visitor = new Visitor(connection, this);
    m_visitors.append(visitor);
    connect(&visitor->words(), &QSocketNotifier::activated, this,
            [this, visitor] { hear(visitor); });
}

void SingleInstance::hear(Visitor *visitor)
{
    std::array<char, longestMessage> message = {};
    const ssize_t size = ::recv(visitor->connection(), message.data(), message.size(), 0);
    if (size > 0) {
        const char answer = '+';
        static_cast<void>(::send(visitor->connection(), &answer, 1, MSG_NOSIGNAL));
    }
    // Called by this notifier, which must exist until the call returns.
    visitor->words().setEnabled(false);
    visitor->deleteLater();
    m_visitors.removeOne(visitor);
    if (size > 0) {
        Q_EMIT startedAgain(QString::fromUtf8(message.data() + 1, size - 1));
    }
}
