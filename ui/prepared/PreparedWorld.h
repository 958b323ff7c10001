#pragma once

#include "model/World.h"
#include "ui/prepared/NotedDesktop.h"
#include "ui/prepared/PreparedState.h"

#include <memory>

/// A world that holds a prepared state and nothing else: no file, no setting, no key and no tool is
/// reached from it, whatever is done with it. All work is done at once, and what takes time
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

private:
    std::shared_ptr<PreparedState> m_state;
    std::shared_ptr<NotedDesktop> m_desktop = std::make_shared<NotedDesktop>();
};
