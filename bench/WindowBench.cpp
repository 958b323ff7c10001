// What bench/window measures of a window: from outside, and in the same way for every program.
//
// usage: WindowBench first SECONDS COMMAND [WORD…]
// Starts the command on the screen of DISPLAY, and waits for its first painted frame: a top-level
// window that is on the screen and shows more than one flat colour or a gradient. Lets the program
// rest for so many seconds, ends it with all that it started, and prints the milliseconds from the
// start to that frame and the memory at rest in KiB (the proportional share of each of its
// processes, added up).
//
// usage: WindowBench close PROCESS
// Asks the windows of a process to close, as a desktop does when the user clicks on their cross.

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QList>
#include <QMap>
#include <QString>

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <thread>

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <xcb/xcb.h>

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr std::chrono::seconds patience{60};
constexpr milliseconds pause{2};

struct Free
{
    void operator()(void *memory) const { std::free(memory); } // NOLINT(*-no-malloc)
};
template <typename Reply>
using Owned = std::unique_ptr<Reply, Free>;

/// The screen, as seen from outside.
class Watcher
{
public:
    Watcher()
        : m_connection(xcb_connect(nullptr, nullptr))
    {
        if (isConnected()) {
            m_screen = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data;
        }
    }
    ~Watcher() { xcb_disconnect(m_connection); }
    Watcher(const Watcher &) = delete;
    Watcher &operator=(const Watcher &) = delete;
    Watcher(Watcher &&) = delete;
    Watcher &operator=(Watcher &&) = delete;

    [[nodiscard]] bool isConnected() const { return xcb_connection_has_error(m_connection) == 0; }

    [[nodiscard]] QList<xcb_window_t> topLevels() const
    {
        const Owned<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(
            m_connection, xcb_query_tree(m_connection, m_screen->root), nullptr));
        if (!tree) {
            return {};
        }
        const std::span children(xcb_query_tree_children(tree.get()),
                                 static_cast<size_t>(xcb_query_tree_children_length(tree.get())));
        return {children.begin(), children.end()};
    }

    /// Whether a window is on the screen and has something painted on it.
    [[nodiscard]] bool isPainted(xcb_window_t window) const
    {
        // Menus, tips and the windows of toolkits that nobody sees are smaller.
        constexpr int leastWidth = 300;
        constexpr int leastHeight = 200;
        // Letters and symbols give hundreds of these, a gradient none.
        constexpr int leastEdges = 60;
        const Owned<xcb_get_window_attributes_reply_t> attributes(xcb_get_window_attributes_reply(
            m_connection, xcb_get_window_attributes(m_connection, window), nullptr));
        const Owned<xcb_get_geometry_reply_t> place(
            xcb_get_geometry_reply(m_connection, xcb_get_geometry(m_connection, window), nullptr));
        if (!attributes || !place || attributes->map_state != XCB_MAP_STATE_VIEWABLE ||
            place->width < leastWidth || place->height < leastHeight) {
            return false;
        }
        return edges(window, *place) >= leastEdges;
    }

    /// The process that a window belongs to, as it says itself; 0 when it doesn't.
    [[nodiscard]] pid_t processOf(xcb_window_t window) const
    {
        const Owned<xcb_get_property_reply_t> reply(xcb_get_property_reply(
            m_connection,
            xcb_get_property(m_connection, 0, window, atom("_NET_WM_PID"), XCB_ATOM_CARDINAL, 0, 1),
            nullptr));
        if (!reply || xcb_get_property_value_length(reply.get()) != sizeof(quint32)) {
            return 0;
        }
        quint32 process = 0;
        std::memcpy(&process, xcb_get_property_value(reply.get()), sizeof(process));
        return static_cast<pid_t>(process);
    }

    void askToClose(xcb_window_t window) const
    {
        xcb_client_message_event_t event{};
        event.response_type = XCB_CLIENT_MESSAGE;
        event.format = 32;
        event.window = window;
        event.type = atom("WM_PROTOCOLS");
        event.data.data32[0] = atom("WM_DELETE_WINDOW");
        std::array<char, 32> bytes{};
        std::memcpy(bytes.data(), &event, sizeof(event));
        xcb_send_event(m_connection, 0, window, XCB_EVENT_MASK_NO_EVENT, bytes.data());
        // The answer to a later question shows that this request has arrived.
        static_cast<void>(topLevels());
    }

private:
    /// How often the colour jumps from one dot to the next, in some rows of a window.
    [[nodiscard]] int edges(xcb_window_t window, const xcb_get_geometry_reply_t &place) const
    {
        constexpr int rowsApart = 12;
        const int left = std::max<int>(0, -place.x);
        const int right = std::min<int>(place.width, m_screen->width_in_pixels - place.x);
        const int bottom = std::min<int>(place.height, m_screen->height_in_pixels - place.y);
        if (right <= left) {
            return 0;
        }
        QList<xcb_get_image_cookie_t> asked;
        for (int y = std::max<int>(0, -place.y); y < bottom; y += rowsApart) {
            asked.append(xcb_get_image(m_connection, XCB_IMAGE_FORMAT_Z_PIXMAP, window,
                                       static_cast<qint16>(left), static_cast<qint16>(y),
                                       static_cast<quint16>(right - left), 1, ~0U));
        }
        int found = 0;
        for (const xcb_get_image_cookie_t &cookie : std::as_const(asked)) {
            const Owned<xcb_get_image_reply_t> row(
                xcb_get_image_reply(m_connection, cookie, nullptr));
            if (row) {
                found += edges({xcb_get_image_data(row.get()),
                                static_cast<size_t>(xcb_get_image_data_length(row.get()))});
            }
        }
        return found;
    }

    static int edges(std::span<const quint8> row)
    {
        constexpr size_t dotBytes = 4;
        constexpr size_t channels = 3;
        constexpr int jump = 40;
        int found = 0;
        for (size_t at = dotBytes; at + dotBytes <= row.size(); at += dotBytes) {
            for (size_t channel = 0; channel < channels; ++channel) {
                if (std::abs(row[at + channel] - row[at + channel - dotBytes]) > jump) {
                    ++found;
                    break;
                }
            }
        }
        return found;
    }

    [[nodiscard]] xcb_atom_t atom(std::string_view name) const
    {
        const Owned<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
            m_connection,
            xcb_intern_atom(m_connection, 0, static_cast<quint16>(name.size()), name.data()),
            nullptr));
        return reply ? reply->atom : XCB_ATOM_NONE;
    }

    xcb_connection_t *m_connection;
    xcb_screen_t *m_screen = nullptr;
};

QByteArray content(pid_t pid, const char *name)
{
    QFile file(QStringLiteral("/proc/%1/%2").arg(pid).arg(QLatin1String(name)));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// All that came of this process and still runs, nearest first.
QList<pid_t> descendants()
{
    QMap<pid_t, pid_t> parents;
    const QStringList entries = QDir(QStringLiteral("/proc")).entryList(QDir::Dirs);
    for (const QString &entry : entries) {
        const pid_t pid = entry.toInt();
        const QByteArray line = pid > 0 ? content(pid, "stat") : QByteArray();
        if (!line.isEmpty()) {
            parents.insert(pid, line.sliced(line.lastIndexOf(')') + 2).split(' ').value(1).toInt());
        }
    }
    QList<pid_t> found{::getpid()};
    for (qsizetype at = 0; at < found.size(); ++at) {
        found.append(parents.keys(found.at(at)));
    }
    return found.sliced(1);
}

qint64 memoryOf(pid_t pid)
{
    const QList<QByteArray> lines = content(pid, "smaps_rollup").split('\n');
    for (const QByteArray &line : lines) {
        if (line.startsWith("Pss:")) {
            return line.simplified().split(' ').value(1).toLongLong();
        }
    }
    return 0;
}

pid_t start(std::span<char *> command)
{
    const pid_t pid = ::fork();
    if (pid == 0) {
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        ::execvp(command.front(), command.data());
        std::perror(command.front());
        std::_Exit(EXIT_FAILURE);
    }
    return pid;
}

/// Ends all that is left of the program, asking at first.
void endAll()
{
    const Clock::time_point begin = Clock::now();
    constexpr std::chrono::seconds courtesy{5};
    for (const pid_t pid : descendants()) {
        ::kill(pid, SIGTERM);
    }
    while (true) {
        const pid_t gone = ::waitpid(-1, nullptr, WNOHANG);
        if (gone < 0) {
            return;
        }
        if (gone == 0) {
            if (Clock::now() - begin > courtesy) {
                for (const pid_t pid : descendants()) {
                    ::kill(pid, SIGKILL);
                }
            }
            std::this_thread::sleep_for(pause);
        }
    }
}

std::optional<milliseconds> firstFrame(const Watcher &watcher, pid_t pid, Clock::time_point begin)
{
    while (Clock::now() - begin < patience) {
        const QList<xcb_window_t> windows = watcher.topLevels();
        for (const xcb_window_t window : windows) {
            if (watcher.isPainted(window)) {
                return std::chrono::duration_cast<milliseconds>(Clock::now() - begin);
            }
        }
        if (::waitpid(pid, nullptr, WNOHANG) == pid) {
            return std::nullopt;
        }
        std::this_thread::sleep_for(pause);
    }
    return std::nullopt;
}

int measure(const Watcher &watcher, std::chrono::seconds rest, std::span<char *> command)
{
    // What a program starts and leaves behind comes back to this process.
    ::prctl(PR_SET_CHILD_SUBREAPER, 1);
    const Clock::time_point begin = Clock::now();
    const pid_t pid = start(command);
    const std::optional<milliseconds> frame = firstFrame(watcher, pid, begin);
    qint64 memory = 0;
    if (frame) {
        std::this_thread::sleep_for(rest);
        for (const pid_t process : descendants()) {
            memory += memoryOf(process);
        }
    }
    endAll();
    if (!frame || memory == 0) {
        static_cast<void>(std::fprintf(stderr, "%s showed no window\n", command.front()));
        return EXIT_FAILURE;
    }
    static_cast<void>(std::printf("%lld %lld\n", static_cast<long long>(frame->count()),
                                  static_cast<long long>(memory)));
    return EXIT_SUCCESS;
}

int close(const Watcher &watcher, pid_t process)
{
    bool isFound = false;
    const QList<xcb_window_t> windows = watcher.topLevels();
    for (const xcb_window_t window : windows) {
        if (watcher.processOf(window) == process && watcher.isPainted(window)) {
            watcher.askToClose(window);
            isFound = true;
        }
    }
    return isFound ? EXIT_SUCCESS : EXIT_FAILURE;
}

} // namespace

int main(int argc, char *argv[])
{
    const std::span words(argv, static_cast<size_t>(argc));
    const Watcher watcher;
    if (!watcher.isConnected()) {
        static_cast<void>(std::fputs("there is no screen\n", stderr));
        return EXIT_FAILURE;
    }
    if (argc >= 4 && std::string_view(words[1]) == "first") {
        return measure(watcher, std::chrono::seconds(std::atoi(words[2])), // NOLINT(cert-err34-c)
                       std::span(argv, static_cast<size_t>(argc) + 1).subspan(3));
    }
    if (argc == 3 && std::string_view(words[1]) == "close") {
        return close(watcher, std::atoi(words[2])); // NOLINT(cert-err34-c)
    }
    static_cast<void>(std::fputs("usage: WindowBench first SECONDS COMMAND [WORD…]\n"
                                 "       WindowBench close PROCESS\n",
                                 stderr));
    return EXIT_FAILURE;
}
