#include "platform/HomeFolder.h"

#include <QByteArray>

#include <pwd.h>
#include <unistd.h>

bool findHomeFolder()
{
    if (!qEnvironmentVariableIsEmpty("HOME")) {
        return true;
    }
    const passwd *const user = ::getpwuid(::getuid());
    return user != nullptr && *user->pw_dir != '\0' && qputenv("HOME", user->pw_dir);
}
