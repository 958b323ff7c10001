#include "tests/support/AccessibleTree.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <csignal>

#include <sys/prctl.h>

namespace {

constexpr int patienceMilliseconds = 60000;
const QString waiting = QStringLiteral("--timeout=60");

void start(QProcess &process, const QString &program, const QStringList &arguments)
{
    // Asked, the one ends the bus that it has started.
    process.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGTERM); });
    process.start(program, arguments);
}

void end(QProcess &process)
{
    if (process.state() != QProcess::NotRunning) {
        process.terminate();
        if (!process.waitForFinished(patienceMilliseconds)) {
            process.kill();
            process.waitForFinished(patienceMilliseconds);
        }
    }
}

/// What gdbus prints; absent when it fails.
std::optional<QString> gdbus(const QStringList &arguments)
{
    QProcess process;
    process.start(QStringLiteral("gdbus"), arguments);
    if (!process.waitForFinished(2 * patienceMilliseconds) || process.exitCode() != 0) {
        return std::nullopt;
    }
    return QString::fromUtf8(process.readAllStandardOutput());
}

QStringList strings(const QJsonValue &values)
{
    QStringList result;
    const QJsonArray array = values.toArray();
    for (const QJsonValue &value : array) {
        result.append(value.toString());
    }
    return result;
}

AccessibleObject object(const QJsonObject &values)
{
    const QJsonArray place = values.value(QLatin1String("place")).toArray();
    return {.depth = values.value(QLatin1String("depth")).toInt(),
            .window = values.value(QLatin1String("window")).toString(),
            .role = values.value(QLatin1String("role")).toString(),
            .name = values.value(QLatin1String("name")).toString(),
            .description = values.value(QLatin1String("description")).toString(),
            .text = values.value(QLatin1String("text")).toString(),
            .states = strings(values.value(QLatin1String("states"))),
            .actions = strings(values.value(QLatin1String("actions"))),
            .place = {place.at(0).toInt(), place.at(1).toInt(), place.at(2).toInt(),
                      place.at(3).toInt()}};
}

} // namespace

bool AccessibleObject::is(const char *state) const
{
    return states.contains(QLatin1String(state));
}

QString AccessibleObject::line() const
{
    return QStringLiteral("%1 \"%2\" (%3) [%4] in \"%5\"")
        .arg(role, name, description, states.join(u' '), window);
}

AccessibleTree::AccessibleTree()
{
    m_bus.setStandardErrorFile(QProcess::nullDevice());
    start(m_bus, QStringLiteral("/usr/libexec/at-spi-bus-launcher"),
          {QStringLiteral("--launch-immediately")});
    const QString service = QStringLiteral("org.a11y.Bus");
    if (!gdbus({QStringLiteral("wait"), QStringLiteral("--session"), waiting, service})) {
        return;
    }
    const QString address =
        gdbus({QStringLiteral("call"), QStringLiteral("--session"), QStringLiteral("--dest"),
               service, QStringLiteral("--object-path"), QStringLiteral("/org/a11y/bus"),
               QStringLiteral("--method"), service + QLatin1String(".GetAddress")})
            .value_or(QString())
            .section(u'\'', 1, 1);
    // It is started when it is asked for, but then it is asked before it can answer.
    const QString registry = QStringLiteral("org.a11y.atspi.Registry");
    if (!gdbus({QStringLiteral("wait"), QStringLiteral("--address"), address,
                QStringLiteral("--activate"), registry, waiting, registry})) {
        return;
    }
    qputenv("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1");
    m_isRunning = true;
}

AccessibleTree::~AccessibleTree()
{
    end(m_bus);
    qunsetenv("QT_LINUX_ACCESSIBILITY_ALWAYS_ON");
}

QList<AccessibleObject> AccessibleTree::read(qint64 process)
{
    const QJsonArray objects =
        ask({QString::number(process)}).value(QLatin1String("objects")).toArray();
    QList<AccessibleObject> result;
    for (const QJsonValue &value : objects) {
        result.append(object(value.toObject()));
    }
    return result;
}

std::optional<AccessibleObject> AccessibleTree::find(qint64 process, const QString &role,
                                                     const QString &name)
{
    const bool isBeginning = name.endsWith(u'*');
    const QString wanted = isBeginning ? name.chopped(1) : name;
    const QList<AccessibleObject> objects = read(process);
    for (const AccessibleObject &candidate : objects) {
        if (candidate.role == role &&
            (isBeginning ? candidate.name.startsWith(wanted) : candidate.name == wanted)) {
            return candidate;
        }
    }
    return std::nullopt;
}

bool AccessibleTree::press(qint64 process, const AccessibleObject &object)
{
    return ask({QString::number(process), QStringLiteral("press"), object.role, object.name})
        .value(QLatin1String("done"))
        .toBool();
}

QJsonObject AccessibleTree::ask(const QStringList &question)
{
    QProcess reader;
    reader.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    // Debian's own Python is the one that has the bindings.
    start(reader, QStringLiteral("/usr/bin/python3"),
          QStringList(QStringLiteral(VELLOMAR_SOURCE_DIR "/tests/support/accessible_tree.py")) +
              question);
    reader.waitForFinished(2 * patienceMilliseconds);
    return QJsonDocument::fromJson(reader.readAllStandardOutput()).object();
}
