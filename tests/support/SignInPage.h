#pragma once

#include "tests/support/Daemon.h"

#include <QByteArray>
#include <QStringList>

/// The page on which a user signs in to Google Drive, and a browser that opens it. For its own
/// life, an rclone that this process starts finds both in place of the real ones.
class SignInPage
{
public:
    /// How the sign-in goes: see tests/support/authorisation_server.py.
    enum class Answer { grant, refuse, deny, empty, stall };

    enum class Browser {
        follows,    ///< the user does what the page asks for
        unattended, ///< the page is open and never answered
        broken,     ///< no page opens
    };

    explicit SignInPage(Answer answer = Answer::grant, Browser browser = Browser::follows);
    ~SignInPage();
    SignInPage(const SignInPage &) = delete;
    SignInPage &operator=(const SignInPage &) = delete;
    SignInPage(SignInPage &&) = delete;
    SignInPage &operator=(SignInPage &&) = delete;

    /// Whether the page could be put up; a test that needs it must fail otherwise.
    [[nodiscard]] bool isRunning() const { return m_isRunning; }
    /// Whether this process was started by apart.sh: a connection ends others by their name.
    static bool isApart();
    /// Whether the browser was asked to open the page.
    [[nodiscard]] bool isOpened() const;
    /// What the page and the place with the token were asked so far, a question a line.
    [[nodiscard]] QStringList questions();
    /// The questions of one kind, "page" or "token".
    [[nodiscard]] QStringList questions(const char *kind);

    /// The texts in every token that is given.
    static QByteArray accessToken() { return "access-t0ken-of-the-person"; }
    static QByteArray refreshToken() { return "refresh-t0ken-of-the-person"; }

private:
    void putBrowser(Browser browser);

    Daemon m_server;
    QByteArray m_path; ///< as it was before
    bool m_isRunning = false;
};
