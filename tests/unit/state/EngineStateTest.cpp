#include "state/EngineState.h"

#include "state/JSONFile.h"

#include <gtest/gtest.h>

namespace {

std::optional<EngineState> decoded(const char *text)
{
    const auto document = JSONFile::decode(text);
    return document ? EngineState::fromJSON(document->object()) : std::nullopt;
}

QDateTime date(int day)
{
    return {QDate(2026, 3, day), QTime(10, 0), Qt::UTC};
}

} // namespace

TEST(EngineState, anEmptyOneHasNoAlertKey)
{
    EXPECT_EQ(EngineState().toJSON().keys(),
              QStringList({QStringLiteral("lastCheck"), QStringLiteral("lastPrune")}));
}

TEST(EngineState, comesBackAsItWas)
{
    EngineState state;
    state.lastPrune[QStringLiteral("local")] = date(1);
    state.lastPrune[QStringLiteral("server")] = date(2);
    state.lastCheck[QStringLiteral("drive")] = date(3);
    EXPECT_EQ(EngineState::fromJSON(state.toJSON()), state);
    state.lastAlert = date(4);
    EXPECT_EQ(EngineState::fromJSON(state.toJSON()), state);
    EXPECT_EQ(state.toJSON().value(QLatin1String("lastAlert")),
              QJsonValue(QStringLiteral("2026-03-04T10:00:00Z")));
}

TEST(EngineState, remembersTheDiskAndTheNewestVersions)
{
    EngineState state;
    state.localDisk = {QStringLiteral("/media/disk/a/Vellomar.backup"),
                       QStringLiteral("/media/disk")};
    state.newestVersion[QStringLiteral("rclone:vellomar:a")] = date(5);
    EXPECT_EQ(EngineState::fromJSON(state.toJSON()), state);
    EXPECT_EQ(decoded(R"({"localDisk": null, "newestVersion": null})"), EngineState());
    for (const char *text :
         {R"({"localDisk": "/media"})", R"({"localDisk": {"path": "/media"}})",
          R"({"localDisk": {"path": "/media", "mountPoint": 1}})", R"({"newestVersion": []})",
          R"({"newestVersion": {"a": "yesterday"}})"}) {
        EXPECT_FALSE(decoded(text)) << text;
    }
}

TEST(EngineState, everyKeyMayBeMissingOrNull)
{
    EXPECT_EQ(decoded("{}"), EngineState());
    EXPECT_EQ(decoded(R"({"lastPrune": null, "lastCheck": null, "lastAlert": null})"),
              EngineState());
    EngineState alerted;
    alerted.lastAlert = date(1);
    EXPECT_EQ(decoded(R"({"lastAlert": "2026-03-01T10:00:00Z", "later": 1})"), alerted);
}

TEST(EngineState, aWrongTypeIsAbsent)
{
    for (const char *text :
         {R"({"lastPrune": []})", R"({"lastPrune": "x"})", R"({"lastPrune": {"local": 1}})",
          R"({"lastPrune": {"local": null}})", R"({"lastPrune": {"local": "yesterday"}})",
          R"({"lastCheck": true})", R"({"lastCheck": {"local": "2026-03-01"}})",
          R"({"lastAlert": 7})", R"({"lastAlert": "yesterday"})", R"({"lastAlert": {}})"}) {
        EXPECT_FALSE(decoded(text)) << text;
    }
}
