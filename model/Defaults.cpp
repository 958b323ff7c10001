#include "model/Defaults.h"

#include "model/UserDefaults.h"

namespace {

class DefaultsFile final : public Defaults
{
public:
    QVariant value(QLatin1String key) override { return UserDefaults::value(key); }
    void set(QLatin1String key, const QVariant &value) override { UserDefaults::set(key, value); }
    void remove(QLatin1String key) override { UserDefaults::remove(key); }
};

} // namespace

std::shared_ptr<Defaults> Defaults::real()
{
    return std::make_shared<DefaultsFile>();
}
