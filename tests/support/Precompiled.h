#pragma once

// What most tests include anyway, read once for all of them (VELLOMAR_PRECOMPILE). No source
// includes this file, and each still includes what it uses.

#include "engine/Headless.h"
#include "state/AppConfig.h"
#include "state/Paths.h"
#include "state/StatusStore.h"
#include "tests/support/Waiting.h"
#include "tools/ProcessRunner.h"
#include "tools/Rclone.h"
#include "tools/Restic.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QThread>
#include <QTimer>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <functional>
#include <memory>
#include <thread>
