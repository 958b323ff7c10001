#pragma once

#include "model/AppModel.h"
#include "ui/prepared/NotedDesktop.h"
#include "ui/prepared/PreparedState.h"

#include <QList>
#include <QString>

#include <functional>
#include <memory>

/// A world that holds a prepared state and nothing else: whatever is done with the model, no real
/// file, setting, key or tool is reached. All work is done at once, except what the state says is
/// under way; what is delayed never happens.
class PreparedWorld
{
public:
    explicit PreparedWorld(const PreparedState &state = {});

    /// What its models find when they look again.
    [[nodiscard]] PreparedState &state() { return *m_state; }
    /// Records the requests to the desktop.
    [[nodiscard]] NotedDesktop &desktop() { return *m_desktop; }
    [[nodiscard]] World world() const;

    /// A model that has started in this world, and has done what the state needs: a launch, or
    /// saving the kit. The desktop's record is empty after that.
    [[nodiscard]] std::unique_ptr<AppModel> model();

    /// Lets a model run into the state's keyring error, or into its result of saving the kit.
    void meetKeyError(AppModel &model);
    void meetKitNotice(AppModel &model);

    /// Lets a model connect what the state says is being connected, or failed to be.
    void meetConnections(AppModel &model);
    /// What is under way comes to its end.
    void finish();
    /// The secret that the server was connected with last.
    [[nodiscard]] QString secret() const;

    /// What is done later than it is asked for.
    struct Held
    {
        int deliveries = 0;                 ///< how many of the coming ones are held
        QList<std::function<void()>> tasks; ///< those that are
        QString secret;
    };

private:
    std::shared_ptr<Held> m_held = std::make_shared<Held>();
    std::shared_ptr<PreparedState> m_state;
    std::shared_ptr<NotedDesktop> m_desktop = std::make_shared<NotedDesktop>();
};
