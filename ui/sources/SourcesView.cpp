#include "ui/sources/SourcesView.h"

#include "state/Paths.h"
#include "ui/sources/SourcesTexts.h"

#include <initializer_list>
#include <optional>

SourcesView::SourcesView(QObject *parent)
    : QObject(parent)
{
    update();
}

void SourcesView::setModel(AppModel *model)
{
    if (m_model == model) {
        return;
    }
    if (m_model) {
        for (QObject *sender : std::initializer_list<QObject *>{
                 m_model, m_model->sources(), m_model->sources()->measurement()}) {
            sender->disconnect(this);
        }
    }
    m_model = model;
    if (model != nullptr) {
        const SourceSelection *const sources = model->sources();
        const Measurement *const measurement = model->sources()->measurement();
        connect(model, &AppModel::configChanged, this, &SourcesView::update);
        connect(sources, &SourceSelection::wrongExcludesChanged, this, &SourcesView::update);
        connect(measurement, &Measurement::sizesChanged, this, &SourcesView::update);
        connect(measurement, &Measurement::measuringChanged, this, &SourcesView::update);
        connect(measurement, &Measurement::soFarChanged, this, &SourcesView::update);
        connect(model, &QObject::destroyed, this, [this] {
            Q_EMIT modelChanged();
            update();
        });
    }
    Q_EMIT modelChanged();
    update();
}

void SourcesView::update()
{
    m_folders.assign(sourceRows());
    m_exclusions.assign(excludeRows());
    if (const Words found = words(); m_words != found) {
        m_words = found;
        Q_EMIT changed();
    }
}

QList<SourceRow> SourcesView::sourceRows() const
{
    QList<SourceRow> rows;
    if (!m_model) {
        return rows;
    }
    const QMap<QString, qint64> &sizes = m_model->sources()->measurement()->sizes();
    for (const QString &path : m_model->config().sources) {
        const auto size = sizes.constFind(path);
        rows.append({.path = path,
                     .name = SourcesTexts::name(path, Paths::home()),
                     .symbol = SourcesTexts::symbol(path, Paths::home()),
                     .size = SourcesTexts::size(size == sizes.cend() ? std::nullopt
                                                                     : std::optional(*size))});
    }
    return rows;
}

QList<ExcludeRow> SourcesView::excludeRows() const
{
    QList<ExcludeRow> rows;
    if (!m_model) {
        return rows;
    }
    const QStringList wrong = m_model->sources()->wrongExcludes();
    for (const QString &pattern : m_model->config().excludes) {
        rows.append({.pattern = pattern,
                     .fault = wrong.contains(pattern) ? SourcesTexts::fault() : QString()});
    }
    return rows;
}

SourcesView::Words SourcesView::words() const
{
    if (!m_model) {
        return {.measureLabel = SourcesTexts::measure(false, 0), .total = {}, .faults = {}};
    }
    SourceSelection *const sources = m_model->sources();
    const Measurement *const measurement = sources->measurement();
    return {.measureLabel = SourcesTexts::measure(measurement->isMeasuring(), measurement->soFar()),
            .total = SourcesTexts::total(measurement->total()),
            .faults = SourcesTexts::faults(sources->wrongExcludes().size())};
}
