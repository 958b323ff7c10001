#include "state/Paths.h"
#include "tools/Rclone.h"
#include "tools/Tools.h"

#include <QFile>
#include <QRegularExpression>
#include <QUuid>

#include <algorithm>
#include <cstdio>

#include <fcntl.h>
#include <sys/stat.h>

namespace {

// Whether a value holds a character that some reader takes for the end of a line: it could then
// write further keys or sections into the file.
bool hasLineBreak(const QString &value)
{
    return std::any_of(value.cbegin(), value.cend(), [](QChar character) {
        const char16_t code = character.unicode();
        return (code >= 10 && code <= 13) || code == 0x85 || code == 0x2028 || code == 0x2029;
    });
}

// Whether rclone would read quotes or a reference to a different setting in a value. Escaping
// doesn't last: rclone writes the whole file again whenever it changes anything in it.
bool isChangedByRclone(const QString &value)
{
    static const QRegularExpression reference(QStringLiteral(R"(%\([^)]+\)s)"));
    return value.contains(u'`') || value.startsWith(QLatin1String("\"\"\"")) ||
           value.contains(reference);
}

/// A file that has mode 600 from the beginning, and is removed unless it was moved to its place.
class PlainCopy
{
public:
    PlainCopy()
        : m_path(Paths::supportFile(QLatin1String("rclone-") +
                                    QUuid::createUuid().toString(QUuid::WithoutBraces) +
                                    QLatin1String(".conf")))
    {
    }
    ~PlainCopy()
    {
        if (!m_isMoved) {
            ::unlink(QFile::encodeName(m_path).constData());
        }
    }
    PlainCopy(const PlainCopy &) = delete;
    PlainCopy &operator=(const PlainCopy &) = delete;
    PlainCopy(PlainCopy &&) = delete;
    PlainCopy &operator=(PlainCopy &&) = delete;

    [[nodiscard]] const QString &path() const { return m_path; }

    [[nodiscard]] bool write(const QByteArray &content) const
    {
        const int descriptor = ::open(QFile::encodeName(m_path).constData(),
                                      O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR);
        QFile file;
        return descriptor >= 0 &&
               file.open(descriptor, QIODevice::WriteOnly, QFileDevice::AutoCloseHandle) &&
               file.write(content) == content.size() && file.flush();
    }

    bool moveTo(const QString &target)
    {
        m_isMoved = std::rename(QFile::encodeName(m_path).constData(),
                                QFile::encodeName(target).constData()) == 0;
        return m_isMoved;
    }

private:
    QString m_path;
    bool m_isMoved = false;
};

bool encryptCopy(const QString &rclone, const PlainCopy &copy)
{
    const Rclone::ConfigEnvironment environment(copy.path());
    const ProcessResult result = runProcess(
        rclone, {QStringLiteral("config"), QStringLiteral("encryption"), QStringLiteral("set")},
        {.env = environment.variables()});
    // rclone ends with 0 even when it couldn't save the copy or got no key: look at the file.
    return result.status == 0 && Rclone::isEncrypted(copy.path());
}

} // namespace

bool Rclone::store(const QString &name, const QList<std::pair<QString, QString>> &pairs)
{
    const std::optional<QString> rclone = Tools::find(QStringLiteral("rclone"));
    const bool canBeKept = std::none_of(pairs.cbegin(), pairs.cend(), [](const auto &pair) {
        return hasLineBreak(pair.second) || isChangedByRclone(pair.second);
    });
    if (!rclone || !canBeKept) {
        return false;
    }
    const auto shown = run({QStringLiteral("config"), QStringLiteral("show")});
    if (!shown || shown->status != 0) {
        return false;
    }
    QString content = shown->standardOutput + QLatin1String("\n[") + name + QLatin1String("]\n");
    for (const auto &[key, value] : pairs) {
        content += key + QLatin1String(" = ") + value + u'\n';
    }
    PlainCopy copy;
    return copy.write(content.toUtf8()) && (!configKey() || encryptCopy(*rclone, copy)) &&
           copy.moveTo(Paths::supportFile(QStringLiteral("rclone.conf")));
}
