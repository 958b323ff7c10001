#include "ui/window/Notices.h"

#include "ui/shell/Licenses.h"

QStringList Notices::names()
{
    return Licenses::names();
}

QString Notices::text(const QString &name)
{
    return Licenses::text(name);
}
