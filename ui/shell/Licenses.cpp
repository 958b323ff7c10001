#include "ui/shell/Licenses.h"

#include "state/Paths.h"
#include "state/Texts.h"

#include <QDir>
#include <QFile>
#include <QStringDecoder>

namespace {

constexpr QLatin1String suffix(".txt");

QString folder()
{
    const std::optional<QString> resources = Paths::resources();
    return resources ? *resources + QLatin1String("/licenses/") : QString();
}

} // namespace

QStringList Licenses::names()
{
    QStringList names{QStringLiteral("restic"), QStringLiteral("rclone")};
    if (const QString path = folder(); !path.isEmpty()) {
        const QStringList files = QDir(path).entryList({u'*' + suffix}, QDir::Files, QDir::Name);
        for (const QString &file : files) {
            const QString name = file.chopped(suffix.size());
            if (!names.contains(name)) {
                names.append(name);
            }
        }
    }
    return names;
}

QString Licenses::text(const QString &name)
{
    const QString path = folder();
    if (!path.isEmpty() && !name.contains(u'/')) {
        QFile file(path + name + suffix);
        if (file.open(QIODevice::ReadOnly)) {
            QStringDecoder decoder(QStringDecoder::Utf8);
            QString content = decoder(file.readAll());
            if (file.error() == QFileDevice::NoError && !decoder.hasError()) {
                return content;
            }
        }
    }
    return Texts::tr("Licenza non trovata.");
}
