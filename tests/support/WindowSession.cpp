#include "tests/support/WindowSession.h"

#include "tests/support/Cycle.h"
#include "tests/support/Waiting.h"

#include <csignal>
#include <utility>

#include <sys/prctl.h>

namespace {

constexpr int patienceMilliseconds = 60000;

// The libraries below the window keep some memory to their end.
constexpr const char *leakOptions =
    "suppressions=" VELLOMAR_SOURCE_DIR "/tests/leak-sanitizer.supp:print_suppressions=0";

// At the end threads of those libraries are still ending. The sanitizer, which looks through all
// memory then, would follow theirs to where there is none any more.
constexpr const char *addressOptions = "intercept_tls_get_addr=0";

bool isPanel(const QSize &size)
{
    return size.width() == 330;
}

QRect geometryOf(const QString &window)
{
    QProcess process;
    process.start(QStringLiteral("xdotool"),
                  {QStringLiteral("getwindowgeometry"), QStringLiteral("--shell"), window});
    process.waitForFinished(patienceMilliseconds);
    QMap<QString, int> values;
    const QString output = QString::fromUtf8(process.readAllStandardOutput());
    for (const QString &line : output.split(u'\n')) {
        values.insert(line.section(u'=', 0, 0), line.section(u'=', 1).toInt());
    }
    return {values.value(QStringLiteral("X")), values.value(QStringLiteral("Y")),
            values.value(QStringLiteral("WIDTH")), values.value(QStringLiteral("HEIGHT"))};
}

/// What ImageMagick says of a part of the screen. It takes the picture of all of the screen: of a
/// window that has gone meanwhile it would wait for a click on a different one.
std::optional<QString> pictureOf(const QRect &place, const QString &format)
{
    if (place.isEmpty()) {
        return std::nullopt;
    }
    return ManagedScreen::run(QStringLiteral("import"),
                              {QStringLiteral("-window"), QStringLiteral("root"),
                               QStringLiteral("-crop"),
                               QStringLiteral("%1x%2+%3+%4")
                                   .arg(place.width())
                                   .arg(place.height())
                                   .arg(place.x())
                                   .arg(place.y()),
                               QStringLiteral("-format"), format, QStringLiteral("info:-")});
}

} // namespace

ShownProgram::ShownProgram(QString program)
    : m_program(std::move(program))
{
    qputenv("LSAN_OPTIONS", leakOptions);
    qputenv("ASAN_OPTIONS", addressOptions);
    m_process.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
}

ShownProgram::~ShownProgram()
{
    if (isRunning()) {
        m_process.kill();
        m_process.waitForFinished(patienceMilliseconds);
    }
}

void ShownProgram::start(const QStringList &arguments)
{
    m_process.start(m_program, arguments);
    m_process.waitForStarted(patienceMilliseconds);
}

bool ShownProgram::isRunning()
{
    return m_process.state() != QProcess::NotRunning && !m_process.waitForFinished(0);
}

void ShownProgram::send(int signal) const
{
    ::kill(static_cast<pid_t>(m_process.processId()), signal);
}

int ShownProgram::finish()
{
    if (m_process.state() != QProcess::NotRunning &&
        !m_process.waitForFinished(patienceMilliseconds)) {
        return -1;
    }
    return m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
}

QByteArray ShownProgram::errors()
{
    m_process.waitForReadyRead(0);
    return m_errors += m_process.readAllStandardError();
}

QStringList ShownProgram::found(const QString &title) const
{
    QProcess process;
    process.start(QStringLiteral("xdotool"),
                  {QStringLiteral("search"), QStringLiteral("--all"),
                   QStringLiteral("--onlyvisible"), QStringLiteral("--pid"),
                   QString::number(processId()), QStringLiteral("--name"), u'^' + title + u'$'});
    process.waitForFinished(patienceMilliseconds);
    return QString::fromUtf8(process.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
}

QStringList ShownProgram::windows(const QString &title) const
{
    QStringList numbers = found(title);
    numbers.removeIf([](const QString &number) { return isPanel(geometryOf(number).size()); });
    return numbers;
}

QStringList ShownProgram::panels() const
{
    QStringList numbers = found(mainTitle());
    numbers.removeIf([](const QString &number) { return !isPanel(geometryOf(number).size()); });
    return numbers;
}

bool ShownProgram::shows(const QString &title) const
{
    return eventually([&] { return !windows(title).isEmpty(); });
}

bool ShownProgram::hides(const QString &title) const
{
    return eventually([&] { return windows(title).isEmpty(); });
}

ManagedScreen::ManagedScreen()
{
    m_manager.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
    m_manager.setStandardErrorFile(QProcess::nullDevice());
    m_manager.start(QStringLiteral("openbox"), {QStringLiteral("--sm-disable")});
}

ManagedScreen::~ManagedScreen()
{
    m_manager.kill();
    m_manager.waitForFinished(patienceMilliseconds);
}

bool ManagedScreen::isRunning()
{
    return m_screen.isRunning() && m_manager.waitForStarted(patienceMilliseconds) && eventually([] {
               return run(QStringLiteral("wmctrl"), {QStringLiteral("-m")}).has_value();
           });
}

void WindowSession::SetUp()
{
    ASSERT_TRUE(session.isRunning());
    ASSERT_TRUE(screen.isRunning());
}

void WindowSession::close(const ShownProgram &program)
{
    ASSERT_TRUE(ManagedScreen::close(program.windows().value(0)));
    ASSERT_TRUE(program.hides());
}

void WindowSession::startAgain()
{
    ShownProgram second;
    second.start();
    EXPECT_EQ(second.finish(), 0);
    EXPECT_EQ(second.errors(), "");
}

QRect ManagedScreen::place(const QString &window)
{
    return geometryOf(window);
}

QString ManagedScreen::activeWindow()
{
    return run(QStringLiteral("xdotool"), {QStringLiteral("getactivewindow")}).value_or(QString());
}

bool ManagedScreen::close(const QString &window)
{
    return run(QStringLiteral("wmctrl"), {QStringLiteral("-i"), QStringLiteral("-c"), window})
        .has_value();
}

bool ManagedScreen::press(const QString &keys)
{
    return run(QStringLiteral("xdotool"), {QStringLiteral("key"), keys}).has_value();
}

bool ManagedScreen::click(const QPoint &place)
{
    return run(QStringLiteral("xdotool"),
               {QStringLiteral("mousemove"), QString::number(place.x()), QString::number(place.y()),
                QStringLiteral("click"), QStringLiteral("1")})
        .has_value();
}

std::optional<QString> ManagedScreen::run(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished(patienceMilliseconds) ||
        process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
        return std::nullopt;
    }
    return QString::fromUtf8(process.readAllStandardOutput()).trimmed();
}

std::optional<QString> ManagedScreen::pictureOfFoot(const QString &window)
{
    constexpr int height = 56;
    QRect foot = place(window);
    foot.setTop(foot.bottom() - height + 1);
    return pictureOf(foot, QStringLiteral("%#"));
}

bool ManagedScreen::isPainted(const QString &window)
{
    const auto colours = pictureOf(place(window), QStringLiteral("%k"));
    return colours && colours->toInt() > 100;
}
