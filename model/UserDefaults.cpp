#include "model/UserDefaults.h"

#include <QSettings>

namespace {

// Its end writes the file.
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
    Store().setValue(key, value);
}

void UserDefaults::remove(QLatin1String key)
{
    Store().remove(key);
}
