#include "tests/support/Installation.h"

#include "tests/support/Files.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

Installation::Installation(const QString &name)
    : m_root(m_folder.path() + u'/' + name)
{
    QDir().mkpath(m_root + QLatin1String("/bin"));
    QDir().mkpath(m_root + QLatin1String("/share/vellomar/bin"));
    QFile::copy(builtProgram(), program());
}

QString Installation::program() const
{
    return m_root + QLatin1String("/bin/vellomar");
}

QString Installation::tool(const QString &name) const
{
    return m_root + QLatin1String("/share/vellomar/bin/") + name;
}

void Installation::addReal(const QString &name)
{
    QFile::remove(tool(name));
    QFile::link(realTool(name), tool(name));
}

void Installation::addCopy(const QString &name)
{
    QFile::remove(tool(name));
    QFile::copy(realTool(name), tool(name));
}

void Installation::addScript(const QString &name, const QByteArray &text)
{
    writeProgram(tool(name), text);
}

void Installation::addWindow()
{
    const QString built = QFileInfo(builtProgram()).path() + QLatin1String("/../");
    QDir().mkpath(m_root + QLatin1String("/lib"));
    for (const QString &part :
         {QStringLiteral("lib/vellomar"), QStringLiteral("share/vellomar/vellomar.svg")}) {
        QFile::link(QDir::cleanPath(built + part), m_root + u'/' + part);
    }
}

QString Installation::realTool(const QString &name)
{
    return QStringLiteral(VELLOMAR_TOOLS "/") + name;
}

QString Installation::builtProgram()
{
    return qEnvironmentVariable("VELLOMAR_PROGRAM", QStringLiteral(VELLOMAR_PROGRAM));
}
