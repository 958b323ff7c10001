#include "tools/OneShotSecret.h"

#include "platform/Clock.h"
#include "platform/ExecutablePath.h"
#include "state/Paths.h"
#include "tools/TemporaryName.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUuid>

#include <array>
#include <cstdlib>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>

namespace {

QString pathPrefix()
{
    return Paths::supportFile(QStringLiteral("k-"));
}

/// Whether a path has the name of one of our pipes, directly in the support folder.
bool isNamedAsOurs(const QString &path)
{
    const QString prefix = pathPrefix();
    return path.startsWith(prefix) && path.indexOf(u'/', prefix.size()) < 0;
}

// A second hard link could name a pipe that somebody keeps in a different place.
bool isPipeOfOneName(int descriptor)
{
    struct stat status = {};
    return ::fstat(descriptor, &status) == 0 && S_ISFIFO(status.st_mode) && status.st_nlink == 1;
}

// A link is never ours, so it counts as old, whatever it leads to. Where the file system has no
// creation date the last change stands in for it, so that a pipe in use isn't taken for an old one.
QDateTime creationDate(const QFileInfo &file)
{
    if (file.isSymLink()) {
        return QDateTime::fromMSecsSinceEpoch(0);
    }
    const QDateTime birth = file.birthTime();
    return birth.isValid() ? birth : file.lastModified();
}

// rclone splits the command at blanks outside double quotes; a quote inside them stands twice.
QString quoted(QString path)
{
    return u'"' + path.replace(u'"', QLatin1String("\"\"")) + u'"';
}

bool isPlainCopy(const QString &name)
{
    return name.startsWith(QLatin1String("rclone-")) && name.endsWith(QLatin1String(".conf"));
}

// A pipe, an unencrypted copy of rclone's file, or a file that rclone made while it replaced one of
// these, which may be unencrypted too. While rclone.conf is missing, what rclone left beside it may
// be all that is left of it, and stays.
bool isLeftover(const QString &name)
{
    static const QString inUse = QStringLiteral("rclone.conf");
    static constexpr QLatin1String setAside(".old");
    QString base = withoutTemporaryNumber(name).value_or(QString());
    if (base.endsWith(setAside)) {
        base.chop(setAside.size());
    }
    return name.startsWith(QLatin1String("k-")) || isPlainCopy(name) || isPlainCopy(base) ||
           (base == inUse && QFileInfo::exists(Paths::supportFile(inUse)));
}

} // namespace

OneShotSecret::OneShotSecret(QString path, FileDescriptor descriptor)
    : m_path(std::move(path))
    , m_descriptor(std::move(descriptor))
{
}

std::unique_ptr<OneShotSecret> OneShotSecret::create(const QString &secret)
{
    const QString path = pathPrefix() + QUuid::createUuid().toString(QUuid::WithoutBraces);
    const QByteArray name = QFile::encodeName(path);
    if (::mkfifo(name.constData(), S_IRUSR | S_IWUSR) != 0) {
        return nullptr;
    }
    // Opened for both directions: it doesn't wait for a reader, and the bytes stay.
    FileDescriptor descriptor(::open(name.constData(), O_RDWR | O_NONBLOCK | O_CLOEXEC));
    const QByteArray bytes = secret.toUtf8();
    // From here on the object's destructor removes the pipe.
    std::unique_ptr<OneShotSecret> channel(new OneShotSecret(path, std::move(descriptor)));
    if (!channel->m_descriptor.isOpen() ||
        ::write(channel->m_descriptor.get(), bytes.constData(),
                static_cast<size_t>(bytes.size())) != bytes.size()) {
        return nullptr;
    }
    return channel;
}

OneShotSecret::~OneShotSecret()
{
    m_descriptor.close();
    ::unlink(QFile::encodeName(m_path).constData());
}

std::optional<QString> OneShotSecret::command() const
{
    const std::optional<QString> executable = ownExecutablePath();
    if (!executable) {
        return std::nullopt;
    }
    return quoted(*executable) + QLatin1String(" --secret ") + quoted(m_path);
}

void OneShotSecret::deliver(const QString &path)
{
    // Longer than any key of ours; the rest of a longer secret isn't delivered.
    std::array<char, 1024> buffer{};
    if (!isNamedAsOurs(path)) {
        std::_Exit(EXIT_FAILURE);
    }
    const int descriptor =
        ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC);
    if (descriptor < 0 || !isPipeOfOneName(descriptor)) {
        std::_Exit(EXIT_FAILURE);
    }
    const ssize_t length = ::read(descriptor, buffer.data(), buffer.size());
    if (length < 1 ||
        ::write(STDOUT_FILENO, buffer.data(), static_cast<size_t>(length)) != length) {
        std::_Exit(EXIT_FAILURE);
    }
    std::_Exit(EXIT_SUCCESS);
}

void OneShotSecret::removeStale()
{
    static constexpr qint64 ageLimitSeconds = 60;
    const QDateTime now = Clock::now();
    const QFileInfoList files =
        QDir(Paths::support())
            .entryInfoList(QDir::AllEntries | QDir::System | QDir::Hidden | QDir::NoDotAndDotDot);
    for (const QFileInfo &file : files) {
        if (isLeftover(file.fileName()) &&
            creationDate(file).msecsTo(now) > ageLimitSeconds * 1000) {
            ::unlink(QFile::encodeName(file.filePath()).constData());
        }
    }
}
