#include "tests/support/ScriptedDesktop.h"

#include <algorithm>

void ScriptedDesktop::answer()
{
    for (const auto &answer : std::exchange(m_answers, {})) {
        answer();
    }
}

void ScriptedDesktop::copy(const QString &text)
{
    clipboard = text;
    isConcealed = false;
    ++clipboardChanges;
}

void ScriptedDesktop::pass(std::chrono::milliseconds time)
{
    const auto end = m_now + time;
    while (true) {
        const auto next =
            std::min_element(m_tasks.begin(), m_tasks.end(),
                             [](const auto &a, const auto &b) { return a.first < b.first; });
        if (next == m_tasks.end() || next->first > end) {
            break;
        }
        m_now = next->first;
        const std::function<void()> task = next->second;
        m_tasks.erase(next);
        task();
    }
    m_now = end;
}

void ScriptedDesktop::give(std::function<void()> answer)
{
    if (answersLater) {
        m_answers.append(std::move(answer));
    } else {
        answer();
    }
}

void ScriptedDesktop::forget()
{
    m_tasks.clear();
    m_answers.clear();
}

void ScriptedDesktop::askSavePath(const QString &proposedName, const QString &message,
                                  std::function<void(const std::optional<QString> &)> answer)
{
    savePanels.append(proposedName + u'\n' + message);
    give([this, answer = std::move(answer)] { answer(savePath); });
}

void ScriptedDesktop::askFolder(const FolderQuestion &question,
                                std::function<void(const std::optional<QString> &)> answer)
{
    folderPanels.append(question);
    give([this, answer = std::move(answer)] {
        answer(folders.isEmpty() ? std::nullopt : std::optional(folders.first()));
    });
}

void ScriptedDesktop::askFolders(const FolderQuestion &question,
                                 std::function<void(const QStringList &)> answer)
{
    folderPanels.append(question);
    give([this, answer = std::move(answer)] { answer(folders); });
}

void ScriptedDesktop::print(const QString &text, std::function<void(const Printing &)> answer)
{
    printed.append(text);
    give([this, answer = std::move(answer)] { answer(printing); });
}

qint64 ScriptedDesktop::copyConcealed(const QString &text)
{
    copy(text);
    isConcealed = true;
    return clipboardChanges;
}

qint64 ScriptedDesktop::clipboardChangeCount()
{
    return clipboardChanges;
}

void ScriptedDesktop::clearClipboard()
{
    copy(QString());
}

void ScriptedDesktop::authenticate(OwnerReason reason, std::function<void(Authentication)> answer)
{
    reasons.append(reason);
    give([this, answer = std::move(answer)] { answer(authentication); });
}

void ScriptedDesktop::openPrivacySettings()
{
    ++privacySettingsOpened;
}

void ScriptedDesktop::quit()
{
    ++quits;
}

void ScriptedDesktop::exitNow()
{
    ++exits;
}

bool ScriptedDesktop::hasFullDiskAccess()
{
    ++probes;
    return fullDiskAccess;
}

void ScriptedDesktop::requestNotificationPermission()
{
    ++permissionRequests;
}

bool ScriptedDesktop::startDetached(const QString &program, const QStringList &arguments)
{
    if (onStart) {
        onStart();
    }
    started.append(QStringList{program} + arguments);
    return canStart;
}

void ScriptedDesktop::after(std::chrono::milliseconds delay, std::function<void()> task)
{
    m_tasks.append({m_now + delay, std::move(task)});
}
