#include "model/UserDefaults.h"

#include "state/PrivateFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>

namespace {

// Made beforehand for its owner alone: QSettings would let everybody read what the user saves. An
// existing file keeps its permissions when it is written.
void makePrivate(const QString &path)
{
    const QDir folder = QFileInfo(path).dir();
    if (!folder.exists() && QDir().mkpath(folder.path())) {
        QFile::setPermissions(folder.path(), PrivateFile::ownerOnly | QFileDevice::ExeOwner);
    }
    QFile file(path);
    if (file.exists() || file.open(QIODevice::WriteOnly)) {
        file.setPermissions(PrivateFile::ownerOnly);
    }
}

// The destructor writes the file.
class Store : public QSettings
{
public:
    Store()
        : QSettings(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("Vellomar"),
                    QStringLiteral("Vellomar"))
    {
    }
};

} // namespace

QVariant UserDefaults::value(QLatin1String key)
{
    return Store().value(key);
}

void UserDefaults::set(QLatin1String key, const QVariant &value)
{
    Store store;
    makePrivate(store.fileName());
    store.setValue(key, value);
}

void UserDefaults::remove(QLatin1String key)
{
    Store().remove(key);
}
