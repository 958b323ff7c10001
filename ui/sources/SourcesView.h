#pragma once

#include "model/AppModel.h"
#include "model/KeyedListModel.h"
#include "ui/sources/SourceRows.h"

#include <QObject>
#include <QPointer>
#include <QString>
#include <QtQml/qqmlregistration.h>

/// What the sources page shows of the model, found anew whenever that changes.
class SourcesView : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(AppModel *model READ model WRITE setModel NOTIFY modelChanged REQUIRED FINAL)
    Q_PROPERTY(KeyedListModel *folders READ folders CONSTANT FINAL)
    Q_PROPERTY(KeyedListModel *exclusions READ exclusions CONSTANT FINAL)
    Q_PROPERTY(QString measureLabel READ measureLabel NOTIFY changed FINAL)
    Q_PROPERTY(QString total READ total NOTIFY changed FINAL)
    Q_PROPERTY(QString faults READ faults NOTIFY changed FINAL)

public:
    explicit SourcesView(QObject *parent = nullptr);

    [[nodiscard]] AppModel *model() const { return m_model; }
    void setModel(AppModel *model);

    /// A SourceRow for each source folder, in their order; none without a model.
    [[nodiscard]] KeyedListModel *folders() { return &m_folders; }
    /// An ExcludeRow for each exclusion, in their order.
    [[nodiscard]] KeyedListModel *exclusions() { return &m_exclusions; }
    [[nodiscard]] QString measureLabel() const { return m_words.measureLabel; }
    /// What all folders take; empty while that isn't known.
    [[nodiscard]] QString total() const { return m_words.total; }
    /// What is wrong with the exclusions; empty when nothing is.
    [[nodiscard]] QString faults() const { return m_words.faults; }

Q_SIGNALS:
    void modelChanged();
    /// Any of the texts has changed.
    void changed();

private:
    struct Words
    {
        QString measureLabel;
        QString total;
        QString faults;

        bool operator==(const Words &) const = default;
    };

    void update();
    [[nodiscard]] QList<SourceRow> sourceRows() const;
    [[nodiscard]] QList<ExcludeRow> excludeRows() const;
    [[nodiscard]] Words words() const;

    QPointer<AppModel> m_model;
    Words m_words;
    KeyedListModel m_folders{QMetaType::fromType<SourceRow>(), "path"};
    KeyedListModel m_exclusions{QMetaType::fromType<ExcludeRow>(), "pattern"};
};
