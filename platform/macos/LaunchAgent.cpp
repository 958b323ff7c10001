#include "platform/PeriodicJob.h"

#include "platform/AtomicFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QXmlStreamWriter>

#include <utility>

namespace {

void writeText(QXmlStreamWriter &xml, const QString &key, const QString &value)
{
    xml.writeTextElement(QStringLiteral("key"), key);
    xml.writeTextElement(QStringLiteral("string"), value);
}

void writeNumber(QXmlStreamWriter &xml, const QString &key, qint64 value)
{
    xml.writeTextElement(QStringLiteral("key"), key);
    xml.writeTextElement(QStringLiteral("integer"), QString::number(value));
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

LaunchAgent::LaunchAgent(const QString &home, const QString &label, unsigned int userID,
                         RunTool runTool)
    : m_label(label)
    , m_path(home + QLatin1String("/Library/LaunchAgents/") + label + QLatin1String(".plist"))
    , m_domain(QLatin1String("gui/") + QString::number(userID))
    , m_service(m_domain + u'/' + label)
    , m_runTool(std::move(runTool))
{
}

void LaunchAgent::establish(const PeriodicJobPlan &plan)
{
    const QByteArray wanted = propertyList(plan);
    if (contentOf(m_path) == wanted && isLoaded()) {
        return;
    }
    QDir().mkpath(QFileInfo(m_path).path());
    // Only this agent writes the file: temporary files beside it are those of a killed process.
    AtomicFile::removeAbandoned(m_path);
    AtomicFile::write(m_path, wanted);
    launchctl({QStringLiteral("bootout"), m_service});
    launchctl({QStringLiteral("bootstrap"), m_domain, m_path});
}

void LaunchAgent::remove()
{
    if (!QFile::exists(m_path)) {
        return;
    }
    launchctl({QStringLiteral("bootout"), m_service});
    QFile::remove(m_path);
}

QByteArray LaunchAgent::propertyList(const PeriodicJobPlan &plan) const
{
    QByteArray list;
    QXmlStreamWriter xml(&list);
    xml.setAutoFormatting(true);
    xml.writeStartDocument();
    xml.writeDTD(QStringLiteral("<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
                                "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">"));
    xml.writeStartElement(QStringLiteral("plist"));
    xml.writeAttribute(QStringLiteral("version"), QStringLiteral("1.0"));
    xml.writeStartElement(QStringLiteral("dict"));
    if (!plan.environment.isEmpty()) {
        xml.writeTextElement(QStringLiteral("key"), QStringLiteral("EnvironmentVariables"));
        xml.writeStartElement(QStringLiteral("dict"));
        for (auto variable = plan.environment.cbegin(); variable != plan.environment.cend();
             ++variable) {
            writeText(xml, variable.key(), variable.value());
        }
        xml.writeEndElement();
    }
    writeText(xml, QStringLiteral("Label"), m_label);
    xml.writeTextElement(QStringLiteral("key"), QStringLiteral("LowPriorityIO"));
    xml.writeEmptyElement(QStringLiteral("true"));
    writeNumber(xml, QStringLiteral("Nice"), 10);
    writeText(xml, QStringLiteral("ProcessType"), QStringLiteral("Background"));
    xml.writeTextElement(QStringLiteral("key"), QStringLiteral("ProgramArguments"));
    xml.writeStartElement(QStringLiteral("array"));
    xml.writeTextElement(QStringLiteral("string"), plan.executable);
    for (const QString &argument : plan.arguments) {
        xml.writeTextElement(QStringLiteral("string"), argument);
    }
    xml.writeEndElement();
    writeText(xml, QStringLiteral("StandardErrorPath"), plan.errorLog);
    writeNumber(xml, QStringLiteral("StartInterval"), plan.intervalSeconds);
    xml.writeEndDocument();
    return list;
}

bool LaunchAgent::isLoaded() const
{
    return m_runTool(QStringLiteral("/bin/launchctl"), {QStringLiteral("print"), m_service})
               .status == 0;
}

void LaunchAgent::launchctl(const QStringList &arguments) const
{
    m_runTool(QStringLiteral("/bin/launchctl"), arguments);
}
