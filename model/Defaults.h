#pragma once

#include <QLatin1String>
#include <QVariant>

#include <memory>

/// Where small things are kept from one start to the next, beside the settings. The keys are those
/// of UserDefaults.
class Defaults
{
public:
    /// UserDefaults.
    static std::shared_ptr<Defaults> real();

    Defaults() = default;
    virtual ~Defaults() = default;
    Defaults(const Defaults &) = delete;
    Defaults &operator=(const Defaults &) = delete;
    Defaults(Defaults &&) = delete;
    Defaults &operator=(Defaults &&) = delete;

    /// Invalid when there is none.
    virtual QVariant value(QLatin1String key) = 0;
    virtual void set(QLatin1String key, const QVariant &value) = 0;
    virtual void remove(QLatin1String key) = 0;
};
