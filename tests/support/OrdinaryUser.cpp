#include "tests/support/OrdinaryUser.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>

#include <grp.h>
#include <sys/prctl.h>
#include <unistd.h>

namespace {

constexpr uid_t nobody = 65534;

bool give(const QString &path)
{
    return ::lchown(QFile::encodeName(path).constData(), nobody, nobody) == 0;
}

bool giveWhole(const QString &folder)
{
    bool given = give(folder);
    QDirIterator entries(folder,
                         QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                         QDirIterator::Subdirectories);
    while (entries.hasNext()) {
        given = give(entries.next()) && given;
    }
    return given;
}

} // namespace

bool becomeOrdinaryUser(const QStringList &folders)
{
    if (::geteuid() != 0) {
        return true;
    }
    bool done = giveWhole(QDir::homePath());
    for (const QString &folder : folders) {
        done = giveWhole(folder) && done;
    }
    done = done && ::setgroups(0, nullptr) == 0 && ::setresgid(nobody, nobody, nobody) == 0 &&
           ::setresuid(nobody, nobody, nobody) == 0;
    // The leak checker looks into its own process at the end, which this keeps allowed.
    return done && ::prctl(PR_SET_DUMPABLE, 1, 0, 0, 0) == 0;
}
