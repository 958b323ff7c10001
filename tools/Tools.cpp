#include "tools/Tools.h"

#include "state/Paths.h"

#include <QFileInfo>
#include <QStringList>

std::optional<QString> Tools::find(const QString &name)
{
    QStringList folders;
    if (const std::optional<QString> resources = Paths::resources()) {
        folders.append(*resources + QLatin1String("/bin/"));
    }
    folders << QStringLiteral("/opt/homebrew/bin/") << QStringLiteral("/usr/local/bin/");
    for (const QString &folder : folders) {
        const QFileInfo file(folder + name);
        if (file.isFile() && file.isExecutable()) {
            return file.filePath();
        }
    }
    return std::nullopt;
}
