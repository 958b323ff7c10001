#pragma once

#include "model/AppModel.h"
#include "model/Connections.h"
#include "model/DiskAccess.h"
#include "model/EncryptionKey.h"
#include "model/KeyedListModel.h"
#include "model/LocalFolder.h"
#include "model/Measurement.h"
#include "model/RecoveryKit.h"
#include "model/Repositories.h"
#include "model/RunWatch.h"
#include "model/SourceSelection.h"
#include "ui/summary/OverviewTexts.h"
#include "ui/summary/ProtectionChecks.h"

#include <QtQml/qqml.h>

// Registers the model, its plain values and their enumerations under their QML names.

// NOLINTBEGIN(readability-identifier-naming,cppcoreguidelines-pro-type-member-init): what the
// macros declare

struct AppModelForeign
{
    Q_GADGET
    QML_FOREIGN(AppModel)
    QML_NAMED_ELEMENT(AppModel)
    QML_UNCREATABLE("The program has one, and hands it in.")
};

struct KeyedListModelForeign
{
    Q_GADGET
    QML_FOREIGN(KeyedListModel)
    QML_NAMED_ELEMENT(KeyedListModel)
    QML_UNCREATABLE("Its owner hands it in.")
};

struct ConnectionsForeign
{
    Q_GADGET
    QML_FOREIGN(Connections)
    QML_NAMED_ELEMENT(RemoteConnections) // the short name is QtQml's
    QML_UNCREATABLE("It is a part of the model.")
};

struct DiskAccessForeign
{
    Q_GADGET
    QML_FOREIGN(DiskAccess)
    QML_NAMED_ELEMENT(DiskAccess)
    QML_UNCREATABLE("It is a part of the model.")
};

struct EncryptionKeyForeign
{
    Q_GADGET
    QML_FOREIGN(EncryptionKey)
    QML_NAMED_ELEMENT(EncryptionKey)
    QML_UNCREATABLE("It is a part of the model.")
};

struct LocalFolderForeign
{
    Q_GADGET
    QML_FOREIGN(LocalFolder)
    QML_NAMED_ELEMENT(LocalFolder)
    QML_UNCREATABLE("It is a part of the model.")
};

struct MeasurementForeign
{
    Q_GADGET
    QML_FOREIGN(Measurement)
    QML_NAMED_ELEMENT(Measurement)
    QML_UNCREATABLE("It is a part of the model.")
};

struct RecoveryKitForeign
{
    Q_GADGET
    QML_FOREIGN(RecoveryKit)
    QML_NAMED_ELEMENT(RecoveryKit)
    QML_UNCREATABLE("It is a part of the model.")
};

struct RepositoriesForeign
{
    Q_GADGET
    QML_FOREIGN(Repositories)
    QML_NAMED_ELEMENT(Repositories)
    QML_UNCREATABLE("It is a part of the model.")
};

struct RunWatchForeign
{
    Q_GADGET
    QML_FOREIGN(RunWatch)
    QML_NAMED_ELEMENT(RunWatch)
    QML_UNCREATABLE("It is a part of the model.")
};

struct SourcesForeign
{
    Q_GADGET
    QML_FOREIGN(SourceSelection)
    QML_NAMED_ELEMENT(Sources)
    QML_UNCREATABLE("It is a part of the model.")
};

struct ConnectionForeign
{
    Q_GADGET
    QML_FOREIGN(Connection)
    QML_VALUE_TYPE(connection)
};

struct AppConfigForeign
{
    Q_GADGET
    QML_FOREIGN(AppConfig)
    QML_VALUE_TYPE(appConfig)
};

struct RunStatusForeign
{
    Q_GADGET
    QML_FOREIGN(RunStatus)
    QML_VALUE_TYPE(runStatus)
};

struct RunRecordForeign
{
    Q_GADGET
    QML_FOREIGN(RunRecord)
    QML_VALUE_TYPE(runRecord)
};

struct DestinationStateForeign
{
    Q_GADGET
    QML_FOREIGN(DestinationState)
    QML_VALUE_TYPE(destinationState)
};

struct QuotaForeign
{
    Q_GADGET
    QML_FOREIGN(Rclone::Quota)
    QML_VALUE_TYPE(quota)
};

struct NoticeForeign
{
    Q_GADGET
    QML_FOREIGN(Notice)
    QML_VALUE_TYPE(notice)
};

struct CheckForeign
{
    Q_GADGET
    QML_FOREIGN(ProtectionChecks::Check)
    QML_VALUE_TYPE(protectionCheck)
};

namespace DestinationIDsForeign {
Q_NAMESPACE
QML_FOREIGN_NAMESPACE(DestinationIDs)
QML_NAMED_ELEMENT(DestinationID)
} // namespace DestinationIDsForeign

namespace OutcomesForeign {
Q_NAMESPACE
QML_FOREIGN_NAMESPACE(Outcomes)
QML_NAMED_ELEMENT(Outcome)
} // namespace OutcomesForeign

namespace ServerKindsForeign {
Q_NAMESPACE
QML_FOREIGN_NAMESPACE(ServerKinds)
QML_NAMED_ELEMENT(ServerKind)
} // namespace ServerKindsForeign

namespace TonesForeign {
Q_NAMESPACE
QML_FOREIGN_NAMESPACE(Tones)
QML_NAMED_ELEMENT(Tone)
} // namespace TonesForeign

namespace OverviewTextsForeign {
Q_NAMESPACE
QML_FOREIGN_NAMESPACE(OverviewTexts)
QML_NAMED_ELEMENT(OverviewTexts)
} // namespace OverviewTextsForeign

// NOLINTEND(readability-identifier-naming,cppcoreguidelines-pro-type-member-init)
