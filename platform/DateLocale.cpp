#include "platform/DateLocale.h"

#include <QtGlobal>

QByteArray dateLocale()
{
    for (const char *variable : {"LC_ALL", "LC_TIME", "LANG"}) {
        QByteArray value = qgetenv(variable);
        if (!value.isEmpty()) {
            return value;
        }
    }
    return {};
}
