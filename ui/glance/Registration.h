#pragma once

#include "model/AppModel.h"

#include <QtQml/qqml.h>

// The model and its plain values under the names that QML has for them.

// NOLINTBEGIN(readability-identifier-naming,cppcoreguidelines-pro-type-member-init): what the
// macros declare

struct AppModelForeign
{
    Q_GADGET
    QML_FOREIGN(AppModel)
    QML_NAMED_ELEMENT(AppModel)
    QML_UNCREATABLE("The program has one, and hands it in.")
};

struct ConfigViewForeign
{
    Q_GADGET
    QML_FOREIGN(ConfigView)
    QML_VALUE_TYPE(configView)
};

struct StatusViewForeign
{
    Q_GADGET
    QML_FOREIGN(StatusView)
    QML_VALUE_TYPE(statusView)
};

struct RecordViewForeign
{
    Q_GADGET
    QML_FOREIGN(RecordView)
    QML_VALUE_TYPE(recordView)
};

struct DestinationViewForeign
{
    Q_GADGET
    QML_FOREIGN(DestinationView)
    QML_VALUE_TYPE(destinationView)
};

struct QuotaViewForeign
{
    Q_GADGET
    QML_FOREIGN(QuotaView)
    QML_VALUE_TYPE(quotaView)
};

struct NoticeForeign
{
    Q_GADGET
    QML_FOREIGN(Notice)
    QML_VALUE_TYPE(notice)
};

// NOLINTEND(readability-identifier-naming,cppcoreguidelines-pro-type-member-init)
