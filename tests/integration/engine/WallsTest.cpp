#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QMap>
#include <QRegularExpression>
#include <QSet>
#include <QStringList>

#include <gtest/gtest.h>

namespace {

/// Where one room stands. Rooms are the folders that docs/architecture.md draws, those of ui/ by
/// themselves.
struct Place
{
    QStringList below;             ///< the rooms that it may include or import
    bool hasWindowToolkit = false; ///< whether more of Qt than Qt Core may be included
};

/// "state platform" as a list.
QStringList words(const char *text)
{
    return QString::fromUtf8(text).split(u' ', Qt::SkipEmptyParts);
}

/// What each room may include, besides itself and the C++ and system headers.
const QMap<QString, Place> &plan()
{
    static const QMap<QString, Place> rooms{
        {QStringLiteral("platform"), {{}}},
        {QStringLiteral("state"), {words("platform")}},
        {QStringLiteral("tools"), {words("platform state")}},
        {QStringLiteral("engine"), {words("platform state tools")}},
        {QStringLiteral("model"), {words("platform state tools engine")}},
        {QStringLiteral("restore"), {words("platform state tools model")}},
        {QStringLiteral("ui/summary"), {words("state model")}},
        {QStringLiteral("ui/design"), {words("state"), true}},
        {QStringLiteral("ui/glance"), {words("state model ui/summary ui/design"), true}},
        {QStringLiteral("ui/sheets"), {words("state model ui/glance ui/design"), true}},
        {QStringLiteral("ui/shell"), {words("state model"), true}},
        {QStringLiteral("ui/window"),
         {words("state model ui/shell ui/design ui/glance ui/sheets"), true}},
        {QStringLiteral("ui/face"),
         {words("state model ui/shell ui/design ui/glance ui/window"), true}},
        // For developers and tests. They put a world of their own behind the model, and so know
        // what the real one is made of.
        {QStringLiteral("ui/prepared"),
         {words("platform state tools engine model ui/glance"), true}},
        {QStringLiteral("ui/gallery"),
         {words("state model ui/prepared ui/design ui/glance ui/sheets ui/window"), true}}};
    return rooms;
}

/// Whatever else stands in ui/ is the room of a page.
bool isPage(const QString &room)
{
    return room.startsWith(QLatin1String("ui/")) && !plan().contains(room);
}

Place placeFor(const QString &room)
{
    return isPage(room) ? Place{words("state model ui/summary ui/glance ui/design"), true}
                        : plan().value(room);
}

/// The room that a path of ours leads to: "ui/shell" of "ui/shell/Licenses.h", "state" of
/// "state/Paths.h". Empty where the path isn't one of ours.
QString roomOf(const QString &path)
{
    const bool isOfTheWindow = path.startsWith(QLatin1String("ui/"));
    const QString room = path.section(u'/', 0, isOfTheWindow ? 1 : 0);
    const bool isOurs = isOfTheWindow || plan().contains(room) || room == QLatin1String("tests") ||
                        room == QLatin1String("bench");
    return path.contains(u'/') && isOurs ? room : QString();
}

/// The room of a QML module: "ui/design" of "Vellomar.Design".
QString roomOfModule(const QString &module)
{
    return QLatin1String("ui/") + module.section(u'.', 1).toLower();
}

QString folderOf(const QString &room)
{
    return QStringLiteral(VELLOMAR_SOURCE_DIR "/") + room;
}

/// Names of the headers of a Qt module, as they stand in an include.
QStringList headersOf(const QString &module)
{
    QStringList names;
    for (const QString &root : QStringLiteral(VELLOMAR_QT_INCLUDES).split(u'|')) {
        QDirIterator files(root + u'/' + module, QDir::Files);
        while (files.hasNext()) {
            names.append(QFileInfo(files.next()).fileName());
        }
    }
    return names;
}

/// Reads every include of our own code and collects what is forbidden, as "file:line: reason".
class Walls : public testing::Test
{
protected:
    void SetUp() override
    {
        core = headersOf(QStringLiteral("QtCore"));
        ASSERT_TRUE(core.contains(QStringLiteral("QString")));
    }

    [[nodiscard]] static QString reasonAgainstRoom(const QString &room, const QString &other)
    {
        const bool mayHavePages =
            room == QLatin1String("ui/window") || room == QLatin1String("ui/gallery");
        const bool isAllowed = other == room || placeFor(room).below.contains(other) ||
                               (mayHavePages && isPage(other));
        return isAllowed ? QString() : room + QLatin1String(" doesn't stand on ") + other;
    }

    [[nodiscard]] QString reasonAgainst(const QString &room, const QString &include) const
    {
        if (const QString other = roomOf(include); !other.isEmpty()) {
            return reasonAgainstRoom(room, other);
        }
        const bool isOfQt = include.startsWith(u'Q') || include.startsWith(QLatin1String("q"));
        if (!isOfQt || placeFor(room).hasWindowToolkit) {
            return {};
        }
        const QString top = include.section(u'/', 0, 0);
        const QString name = include.section(u'/', -1);
        const bool isCore = core.contains(name) && (top == name || top == QLatin1String("QtCore"));
        return isCore ? QString() : include + QLatin1String(" isn't of Qt Core");
    }

    static QString source(const QString &path)
    {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
        return QString::fromUtf8(file.readAll());
    }

    [[nodiscard]] QStringList offences(const QString &room, const QString &path) const
    {
        static const QRegularExpression include(
            QStringLiteral(R"(^\s*#\s*include\s*["<]([^">]+)[">])"));
        static const QRegularExpression import(QStringLiteral(R"(^\s*import\s+(Vellomar\.\w+))"));
        QStringList found;
        const QStringList lines = source(path).split(u'\n');
        for (qsizetype line = 0; line < lines.size(); ++line) {
            QString reason;
            if (const auto match = include.match(lines[line]); match.hasMatch()) {
                reason = reasonAgainst(room, match.captured(1));
            } else if (const auto module = import.match(lines[line]); module.hasMatch()) {
                reason = reasonAgainstRoom(room, roomOfModule(module.captured(1)));
            }
            if (!reason.isEmpty()) {
                found.append(QStringLiteral("%1:%2: ").arg(path).arg(line + 1) + reason);
            }
        }
        return found;
    }

    QStringList core;
};

TEST_F(Walls, eachRoomIncludesOnlyWhatItStandsOn)
{
    QSet<QString> rooms(plan().keyBegin(), plan().keyEnd());
    const QStringList ofTheWindow =
        QDir(folderOf(QStringLiteral("ui"))).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString &folder : ofTheWindow) {
        rooms.insert(QLatin1String("ui/") + folder);
    }
    EXPECT_TRUE(rooms.contains(QStringLiteral("ui/overview")));
    if (!QDir(folderOf(QStringLiteral("restore"))).exists()) {
        rooms.remove(QStringLiteral("restore")); // still to come
    }
    for (const QString &room : std::as_const(rooms)) {
        int count = 0;
        QDirIterator files(
            folderOf(room),
            {QStringLiteral("*.h"), QStringLiteral("*.cpp"), QStringLiteral("*.qml")}, QDir::Files,
            QDirIterator::Subdirectories);
        while (files.hasNext()) {
            ++count;
            for (const QString &offence : offences(room, files.next())) {
                ADD_FAILURE() << offence.toStdString();
            }
        }
        EXPECT_GT(count, 0) << room.toStdString();
    }
}

// Arrows run downwards: no room stands on one that stands on it.
TEST_F(Walls, thePlanHasNoCircle)
{
    for (const auto &[room, place] : plan().asKeyValueRange()) {
        for (const QString &other : place.below) {
            EXPECT_TRUE(plan().contains(other)) << other.toStdString();
            EXPECT_FALSE(plan().value(other).below.contains(room))
                << room.toStdString() << " and " << other.toStdString();
        }
    }
}

// Threads of the pool may read the environment at any time; only the window has to change it, for
// Qt.
TEST_F(Walls, nothingBelowTheWindowChangesTheEnvironment)
{
    static const QRegularExpression change(
        QStringLiteral(R"(\b(q?(un)?setenv|q?putenv|clearenv)\b)"));
    EXPECT_TRUE(change.match(QStringLiteral("    qputenv(\"X\", {});")).hasMatch());
    for (const auto &[room, place] : plan().asKeyValueRange()) {
        if (room.startsWith(QLatin1String("ui/"))) {
            continue;
        }
        QDirIterator files(folderOf(room), {QStringLiteral("*.h"), QStringLiteral("*.cpp")},
                           QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const QString path = files.next();
            // This one is called by main before anything else.
            EXPECT_EQ(change.match(source(path)).hasMatch(),
                      path.endsWith(QLatin1String("/HomeFolder.cpp")))
                << path.toStdString();
        }
    }
}

TEST_F(Walls, eachFaceKeepsTheEnvironmentForItsChildrenBeforeItHasThreads)
{
    const auto expectFirst = [](const char *file, const char *first, const char *then) {
        const QString text = source(folderOf(QString::fromUtf8(file)));
        const qsizetype kept = text.indexOf(QLatin1String(first));
        EXPECT_GE(kept, 0) << file;
        EXPECT_LT(kept, text.indexOf(QLatin1String(then))) << file;
    };
    expectFirst("engine/Headless.cpp", "ChildEnvironment::keep();", "std::thread(");
    expectFirst("ui/face/WindowModule.cpp", "Background::begin();", "Background().run(");
    EXPECT_TRUE(
        source(folderOf(QStringLiteral("model/Background.cpp")))
            .contains(QLatin1String("void Background::begin()\n{\n    ChildEnvironment::keep();")));
}

TEST_F(Walls, theTestItselfSeesAForbiddenInclude)
{
    for (const char *include :
         {"QGuiApplication", "QWidget", "QtQml/QQmlEngine", "QImage", "QtGui/QColor", "QQuickItem",
          "qguiapplication.h", "tools/Restic.h", "engine/Headless.h", "tests/support/Cycle.h"}) {
        EXPECT_FALSE(reasonAgainst(QStringLiteral("state"), QString::fromUtf8(include)).isEmpty())
            << include;
    }
    for (const char *include :
         {"ui/window/Notices.h", "ui/face/WindowFace.h", "tools/Restic.h", "platform/Clock.h"}) {
        EXPECT_FALSE(
            reasonAgainst(QStringLiteral("ui/sheets"), QString::fromUtf8(include)).isEmpty())
            << include;
    }
    EXPECT_FALSE(reasonAgainstRoom(QStringLiteral("ui/design"),
                                   roomOfModule(QStringLiteral("Vellomar.Glance")))
                     .isEmpty());
    EXPECT_TRUE(reasonAgainst(QStringLiteral("ui/sheets"), QStringLiteral("QColor")).isEmpty());
    const QString page = roomOfModule(QStringLiteral("Vellomar.Overview"));
    EXPECT_FALSE(reasonAgainstRoom(QStringLiteral("ui/sheets"), page).isEmpty());
    EXPECT_FALSE(reasonAgainstRoom(page, QStringLiteral("ui/sheets")).isEmpty());
    EXPECT_TRUE(reasonAgainstRoom(QStringLiteral("ui/window"), page).isEmpty());
    for (const char *include : {"QString", "QtCore/QFile", "state/Paths.h", "platform/Clock.h",
                                "vector", "sys/stat.h", "qglobal.h"}) {
        EXPECT_TRUE(reasonAgainst(QStringLiteral("state"), QString::fromUtf8(include)).isEmpty())
            << include;
    }
}

} // namespace
