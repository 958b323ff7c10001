#pragma once

#include "model/AppModel.h"
#include "ui/prepared/NotedDesktop.h"
#include "ui/prepared/PreparedState.h"

#include <memory>

/// A world that holds a prepared state and nothing else: no file, no setting, no key and no tool is
/// reached from it, whatever is done with the model. All work is done at once, and what takes time
/// by itself never comes.
class PreparedWorld
{
public:
    explicit PreparedWorld(const PreparedState &state = {});

    /// What its models find when they look anew.
    [[nodiscard]] PreparedState &state() { return *m_state; }
    /// What was asked of it.
    [[nodiscard]] NotedDesktop &desktop() { return *m_desktop; }
    [[nodiscard]] World world() const;

    /// A model that has come up in it, and to what can only be seen by doing it: a launch, the
    /// notice of a saved kit. Nothing of that counts as asked.
    [[nodiscard]] std::unique_ptr<AppModel> model();

    /// Lets a model meet with the error of the keyring, and with the outcome of saving the kit,
    /// that the state has.
    void meetKeyError(AppModel &model);
    void meetKitNotice(AppModel &model);

private:
    std::shared_ptr<PreparedState> m_state;
    std::shared_ptr<NotedDesktop> m_desktop = std::make_shared<NotedDesktop>();
};
