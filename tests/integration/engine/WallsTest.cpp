#include <QDirIterator>
#include <QFile>
#include <QMap>
#include <QRegularExpression>
#include <QStringList>

#include <gtest/gtest.h>

namespace {

/// What each folder may include, besides itself and the C++ and system headers.
const QMap<QString, QStringList> &arrows()
{
    static const QMap<QString, QStringList> below{
        {QStringLiteral("platform"), {}},
        {QStringLiteral("state"), {QStringLiteral("platform")}},
        {QStringLiteral("tools"), {QStringLiteral("platform"), QStringLiteral("state")}},
        {QStringLiteral("engine"),
         {QStringLiteral("platform"), QStringLiteral("state"), QStringLiteral("tools")}},
        {QStringLiteral("model"),
         {QStringLiteral("platform"), QStringLiteral("state"), QStringLiteral("tools"),
          QStringLiteral("engine")}}};
    return below;
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
        dbus = headersOf(QStringLiteral("QtDBus"));
        ASSERT_TRUE(core.contains(QStringLiteral("QString")));
    }

    [[nodiscard]] QString reasonAgainst(const QString &folder, const QString &include) const
    {
        const QString top = include.section(u'/', 0, 0);
        static const QStringList ours{
            QStringLiteral("ui"),    QStringLiteral("restore"), QStringLiteral("model"),
            QStringLiteral("tests"), QStringLiteral("bench"),   QStringLiteral("platform"),
            QStringLiteral("state"), QStringLiteral("tools"),   QStringLiteral("engine")};
        if (include.contains(u'/') && ours.contains(top)) {
            const bool allowed = top == folder || arrows().value(folder).contains(top);
            return allowed ? QString() : folder + QLatin1String(" stands below ") + top;
        }
        if (!include.startsWith(u'Q') && !include.startsWith(QLatin1String("q"))) {
            return {};
        }
        const QString name = include.section(u'/', -1);
        const bool isCore = core.contains(name) && (top == name || top == QLatin1String("QtCore"));
        const bool isDBus = folder == QLatin1String("platform") && dbus.contains(name);
        return isCore || isDBus ? QString() : include + QLatin1String(" isn't of Qt Core");
    }

    static QString source(const QString &path)
    {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
        return QString::fromUtf8(file.readAll());
    }

    [[nodiscard]] QStringList offences(const QString &folder, const QString &path) const
    {
        static const QRegularExpression form(
            QStringLiteral(R"(^\s*#\s*include\s*["<]([^">]+)[">])"));
        QStringList found;
        const QStringList lines = source(path).split(u'\n');
        for (qsizetype line = 0; line < lines.size(); ++line) {
            const QRegularExpressionMatch include = form.match(lines[line]);
            if (!include.hasMatch()) {
                continue;
            }
            const QString reason = reasonAgainst(folder, include.captured(1));
            if (!reason.isEmpty()) {
                found.append(QStringLiteral("%1:%2: ").arg(path).arg(line + 1) + reason);
            }
        }
        return found;
    }

    QStringList core;
    QStringList dbus;
};

TEST_F(Walls, eachFolderIncludesOnlyWhatStandsBelowItAndNoWindowToolkit)
{
    for (const QString &folder : arrows().keys()) {
        int count = 0;
        QDirIterator files(QStringLiteral(VELLOMAR_SOURCE_DIR "/") + folder,
                           {QStringLiteral("*.h"), QStringLiteral("*.cpp")}, QDir::Files,
                           QDirIterator::Subdirectories);
        while (files.hasNext()) {
            ++count;
            for (const QString &offence : offences(folder, files.next())) {
                ADD_FAILURE() << offence.toStdString();
            }
        }
        EXPECT_GT(count, 5) << folder.toStdString();
    }
}

// Threads of the pool may read the environment at any time; only the window has to change it, for
// Qt.
TEST_F(Walls, nothingBelowTheWindowChangesTheEnvironment)
{
    static const QRegularExpression change(
        QStringLiteral(R"(\b(q?(un)?setenv|q?putenv|clearenv)\b)"));
    EXPECT_TRUE(change.match(QStringLiteral("    qputenv(\"X\", {});")).hasMatch());
    for (const QString &folder : arrows().keys()) {
        QDirIterator files(QStringLiteral(VELLOMAR_SOURCE_DIR "/") + folder,
                           {QStringLiteral("*.h"), QStringLiteral("*.cpp")}, QDir::Files,
                           QDirIterator::Subdirectories);
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
    for (const auto &[face, thread] : {std::pair("engine/Headless.cpp", "std::thread("),
                                       std::pair("ui/face/WindowModule.cpp", "Background::run(")}) {
        const QString text =
            source(QStringLiteral(VELLOMAR_SOURCE_DIR "/") + QString::fromUtf8(face));
        const qsizetype kept = text.indexOf(QLatin1String("ChildEnvironment::keep();"));
        EXPECT_GE(kept, 0) << face;
        EXPECT_LT(kept, text.indexOf(QLatin1String(thread))) << face;
    }
}

TEST_F(Walls, theTestItselfSeesAForbiddenInclude)
{
    for (const char *include :
         {"QGuiApplication", "QWidget", "QtQml/QQmlEngine", "QImage", "QtGui/QColor", "QQuickItem",
          "qguiapplication.h", "tools/Restic.h", "engine/Headless.h", "tests/support/Cycle.h"}) {
        EXPECT_FALSE(reasonAgainst(QStringLiteral("state"), QString::fromUtf8(include)).isEmpty())
            << include;
    }
    for (const char *include : {"QString", "QtCore/QFile", "state/Paths.h", "platform/Clock.h",
                                "vector", "sys/stat.h", "qglobal.h"}) {
        EXPECT_TRUE(reasonAgainst(QStringLiteral("state"), QString::fromUtf8(include)).isEmpty())
            << include;
    }
}

} // namespace
