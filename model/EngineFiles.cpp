#include "model/EngineFiles.h"

#include "engine/CycleLock.h"
#include "state/Paths.h"
#include "state/StatusStore.h"

#include <csignal>

namespace {

class SupportFolderFiles final : public EngineFiles
{
public:
    QByteArray statusBytes() override { return StatusStore::statusBytes(); }
    QByteArray historyBytes() override { return StatusStore::historyBytes(); }
    bool isAlive(const RunStatus &status) override { return status.isAlive(); }

    void stop(const RunStatus &status) override
    {
        // Checked again: the process id may belong to a different process by now.
        if (status.isAlive()) {
            ::kill(status.pid, SIGTERM);
        }
    }

    QString folder() override { return Paths::abbreviatedHome(Paths::support()); }
    std::optional<QString> fault() override { return CycleLock::fault(); }
};

} // namespace

std::shared_ptr<EngineFiles> EngineFiles::real()
{
    return std::make_shared<SupportFolderFiles>();
}
